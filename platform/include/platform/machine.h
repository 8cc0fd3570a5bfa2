// What the computer itself is like, as far as the program asks before it runs.
#pragma once

#include <cstdint>

namespace platform {

class Machine {
  public:
    virtual ~Machine() = default;

    /// Whether the processor is an Intel 386, which is too slow.
    [[nodiscard]] virtual bool hasIntel386() const = 0;
    /// Bytes that programs can still have, disk space that stands in for memory included.
    [[nodiscard]] virtual std::uint64_t availableMemory() const = 0;
    /// Bytes that the program has in memory now; 0 where nobody tells.
    [[nodiscard]] virtual std::uint64_t usedMemory() const = 0;
};

} // namespace platform

// The host as it is, and its requests that the program end: the signals that a shell, a closing
// session or a service sends. They are kept until the program asks, and it ends in its own orderly
// way.
#pragma once

#include "platform/machine.h"

#include <cstdint>

namespace platform {

/// Bytes of this process that are in memory; 0 when the host does not tell.
[[nodiscard]] std::uint64_t residentMemory();

class HostMachine final : public Machine {
  public:
    [[nodiscard]] bool hasIntel386() const override { return false; }
    [[nodiscard]] std::uint64_t availableMemory() const override;
    [[nodiscard]] std::uint64_t usedMemory() const override { return residentMemory(); }
};

/// From now on such signals no longer end the process.
void catchTermination();

/// Whether one has come.
[[nodiscard]] bool terminationRequested();

} // namespace platform

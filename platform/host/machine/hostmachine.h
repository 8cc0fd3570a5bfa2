// The host as it is.
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

} // namespace platform

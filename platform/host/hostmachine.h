// The host as it is.
#pragma once

#include "platform/machine.h"

namespace platform {

class HostMachine final : public Machine {
  public:
    [[nodiscard]] bool hasIntel386() const override { return false; }
    [[nodiscard]] std::uint64_t availableMemory() const override;
};

} // namespace platform

// What the headless machine claims to be, so that every case of a start can be seen. It is the same
// everywhere unless told otherwise.
#pragma once

#include "platform/host/machine/hostmachine.h"
#include "platform/host/screen/hostdisplay.h"
#include "platform/machine.h"

#include <cstdint>
#include <optional>

namespace platform {

struct MachineClaims {
    bool intel386 = false;
    std::uint64_t availableMemory = std::uint64_t{64} << 20; ///< bytes
    std::optional<std::uint64_t> freeSpace{}; ///< bytes on every drive; else the host's
    bool sound = true;
    HostDisplay::Driver driver = HostDisplay::Driver::Whole;
};

class ClaimedMachine final : public Machine {
  public:
    explicit ClaimedMachine(const MachineClaims& claims) : claims_(claims) {}
    [[nodiscard]] bool hasIntel386() const override { return claims_.intel386; }
    [[nodiscard]] std::uint64_t availableMemory() const override { return claims_.availableMemory; }
    [[nodiscard]] std::uint64_t usedMemory() const override { return residentMemory(); }

  private:
    MachineClaims claims_;
};

} // namespace platform

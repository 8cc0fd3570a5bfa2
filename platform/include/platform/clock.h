// The program's one source of time.
#pragma once

#include <cstdint>

namespace platform {

inline constexpr int kMsPerSecond = 1000;

class Clock {
  public:
    virtual ~Clock() = default;

    /// Milliseconds since some fixed moment before the program's start. Wraps after 2^32, so only
    /// differences (computed in uint32_t) mean anything.
    [[nodiscard]] virtual std::uint32_t milliseconds() const = 0;

    /// Seconds since 1970; what the random generator is seeded with.
    [[nodiscard]] virtual std::int64_t calendarSeconds() const = 0;

    /// Lets `ms` milliseconds pass, 0 too. What was presented before is seen meanwhile.
    virtual void sleep(std::uint32_t ms) = 0;

    /// To be told that the program was busy for about `ms` milliseconds: a virtual clock moves on
    /// by them, a real one did so by itself.
    virtual void wasBusy(std::uint32_t ms) { static_cast<void>(ms); }

    /// Whether time passes only when it is told to. Who works in the background is waited for then,
    /// so that every run is the same.
    [[nodiscard]] virtual bool isVirtual() const { return false; }
};

} // namespace platform

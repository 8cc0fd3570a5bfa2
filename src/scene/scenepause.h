// The pause of a scene while it is changed, and the time of scenes, which stands still meanwhile:
// what fades by it goes on where it was when the next scene is shown.
#pragma once

#include "omlink.h"
#include "omticks.h"

#include <cstdint>
#include <optional>
#include <utility>

class ScenePause {
  public:
    /// The link tells whether there is a current movie, playing or not.
    explicit ScenePause(OMLinkTo<bool()> movieIsCurrent = {})
        : movieIsCurrent_(std::move(movieIsCurrent)) {}
    [[nodiscard]] bool movieIsCurrent() const { return movieIsCurrent_(); }

    /// A transition begins; they may be nested. Pauses the scene if there is one to be paused.
    void raise(bool thereIsAScene);
    /// A transition ends. The last one ends the pause, unless a movie is current: then the next
    /// call does.
    void lower();
    /// All transitions end.
    void end();
    [[nodiscard]] bool isPaused() const { return pausedSince_.has_value(); }

    /// The time of scenes in whole ticks; never wraps while somebody asks now and then.
    [[nodiscard]] std::int64_t ticks();

  private:
    OMLinkTo<bool()> movieIsCurrent_;
    int level_ = 0;
    OMTickClock clock_;
    std::optional<std::int64_t> pausedSince_; ///< milliseconds of the clock
    std::int64_t pausedMs_ = 0;               ///< in all pauses that are over
};

// Actions that wait, or do nothing.
#pragma once

#include "action.h"
#include "omtask.h"

#include <cstdint>
#include <memory>

class TimedAction : public Action {
  protected:
    using Action::Action;
    TimedAction(const TimedAction& other) : Action(other) {}

    /// Milliseconds that the next run takes.
    [[nodiscard]] virtual std::int64_t nextDelay() = 0;

    void begin() override;
    void end(End) override { task_.reset(); }
    void hold() override;
    void goOn() override;

  private:
    [[nodiscard]] std::int64_t sinceStart() const;

    std::unique_ptr<OMTask> task_; ///< while active
    std::int64_t remainingMs_ = 0; ///< from startMs_ on
    std::uint32_t startMs_ = 0;    ///< of the run, or of its part since the last pause
};

class DelayAction final : public OMSCopied<DelayAction, TimedAction> {
  public:
    DelayAction(int ms, bool interruptible) : OMSCopied(interruptible), ms_(ms) {}
    [[nodiscard]] static std::unique_ptr<Action> create(ActionParameters& parameters);

  protected:
    [[nodiscard]] std::int64_t nextDelay() override { return ms_; }

  private:
    int ms_;
};

/// Every run takes another time, at least the shortest and less than the longest. A longest one
/// that is not longer counts as the shortest.
class RandomDelayAction final : public OMSCopied<RandomDelayAction, TimedAction> {
  public:
    RandomDelayAction(int shortestMs, int longestMs, bool interruptible)
        : OMSCopied(interruptible), shortestMs_(shortestMs), longestMs_(longestMs) {}
    [[nodiscard]] static std::unique_ptr<Action> create(ActionParameters& parameters);

  protected:
    [[nodiscard]] std::int64_t nextDelay() override;

  private:
    int shortestMs_;
    int longestMs_;
};

/// Has finished as soon as it is started.
class EmptyAction final : public OMSCopied<EmptyAction, Action> {
  public:
    using OMSCopied::OMSCopied;
    [[nodiscard]] static std::unique_ptr<Action> create(ActionParameters& parameters);

  protected:
    void begin() override { finish(); }
};

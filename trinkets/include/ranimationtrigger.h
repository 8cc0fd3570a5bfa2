// A clock that raises an event so many times a second. When passes of the program come late it
// makes up for them, so that the rate holds over time.
//
//     t=RAnimationTrigger [framesPerSecond]
#pragma once

#include "omscrptb.h"
#include "omtask.h"

#include <cstdint>
#include <memory>
#include <optional>

class RAnimationTrigger final : public OMSCopied<RAnimationTrigger, OMScriptableObject> {
  public:
    static const OMSClass kClass;
    static constexpr int kDefaultRate = 10;

    RAnimationTrigger() = default;
    /// With the same rate; it stands until it is started.
    RAnimationTrigger(const RAnimationTrigger& other)
        : OMSCopied(other), framesPerSecond_(other.framesPerSecond_) {}

    [[nodiscard]] static std::unique_ptr<OMScriptableObject> createFromScript();

    /// A rate below 1 raises no events; one above 1000 raises one in every pass.
    [[nodiscard]] int framesPerSecond() const { return framesPerSecond_; }
    void setFramesPerSecond(int rate);

    /// The first event comes after one period, counted from now, also when it runs already.
    void start();
    void stop() { task_.reset(); }

  private:
    [[nodiscard]] std::uint32_t periodMs() const;
    void beginPeriod();
    void tick();

    int framesPerSecond_ = kDefaultRate;
    std::uint32_t dueMs_ = 0;
    std::unique_ptr<OMTask> task_; ///< while it runs
};

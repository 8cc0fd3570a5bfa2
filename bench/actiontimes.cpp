#include "actiontimes.h"

#include "mediamachine.h"

#include "actions/delayact.h"
#include "actions/moveact.h"
#include "actions/rcompositeaction.h"
#include "aoimage.h"
#include "omtrinketwindow.h"
#include "ranimation.h"

#include <memory>
#include <stdexcept>
#include <vector>

namespace {

constexpr int kPasses = 200;
constexpr int kFarAway = 1'000'000; // pixels, and milliseconds

std::shared_ptr<AOImage> makeTicker() {
    OMMemCanvas canvas(1, 1, 8);
    std::string problem;
    std::shared_ptr<AOImage> image = AOImage::read(AOPack(canvas, {}, 0), problem);
    if (!image) throw std::runtime_error(problem);
    return image;
}

class Stage {
  public:
    void addDelays() {
        for (std::size_t i = 0; i < kActions; ++i)
            all_.add(std::make_unique<DelayAction>(kFarAway, true));
    }
    void addMoves() {
        constexpr int kFramesPerSecond = 1000; // one in every pass
        ticker_.setFramesPerSecond(kFramesPerSecond);
        ticker_.setRepeatCount(OMAnimation::kLoopForever);
        for (std::size_t i = 0; i < kActions; ++i) {
            trinkets_.push_back(std::make_unique<OMTrinket>(
                window_, OMTrinket::UpdateStyle::Nothing, platform::Rect{0, 0, 8, 8}));
            const MoveAction::Axis axis{MoveAction::Direction::X, 0, 1, 0, kFarAway};
            all_.add(
                std::make_unique<MoveAction>(ticker_, *trinkets_.back(), std::vector{axis}, true));
        }
    }
    void start() {
        machine_.app().begin();
        all_.start();
    }
    void pass() {
        for (int i = 0; i < kPasses; ++i) machine_.app().pass();
        if (!all_.isActive() || (!trinkets_.empty() && trinkets_.back()->x() < kPasses / 2))
            throw std::runtime_error("the actions do not go on");
    }

  private:
    MediaMachine machine_;
    OMTrinketWindow window_{{0, 0, 640, 480}, nullptr, "bench"};
    RAnimation ticker_{window_, makeTicker(), 1, 0, 0};
    std::vector<std::unique_ptr<OMTrinket>> trinkets_;
    RCompositeAction all_{true};
};

double passNanoseconds(void (Stage::*add)()) {
    Stage stage;
    (stage.*add)();
    stage.start();
    return cpuNanoseconds([&] { stage.pass(); }) / kPasses;
}

} // namespace

ActionTimes measureActions(int repetitions) {
    ActionTimes times;
    for (int i = 0; i < repetitions; ++i) {
        times.delayNanoseconds.add(passNanoseconds(&Stage::addDelays));
        times.moveNanoseconds.add(passNanoseconds(&Stage::addMoves));
    }
    return times;
}

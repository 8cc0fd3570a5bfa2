#include "moveact.h"

#include "actionparameters.h"

#include <algorithm>
#include <utility>

MoveAction::MoveAction(RAnimation& animation, OMTrinket& trinket, std::vector<Axis> axes,
                       bool interruptible)
    : OMSCopied(interruptible), animation_(&animation), trinket_(&trinket), axes_(std::move(axes)) {
}

MoveAction::MoveAction(const MoveAction& other)
    : OMSCopied(other), animation_(other.animation_), trinket_(other.trinket_), axes_(other.axes_) {
}

// ---------------------------------------------------------------------------- creation

std::unique_ptr<Action> MoveAction::create(ActionParameters& parameters,
                                           std::initializer_list<Direction> directions) {
    auto* animation = parameters.object<RAnimation>("RAnimation variable name", "animation");
    if (!animation) return nullptr;
    auto* trinket = parameters.object<OMTrinket>("OMTrinket variable name", "trinket");
    if (!trinket) return nullptr;
    std::vector<Axis> axes;
    for (const Direction direction : directions) {
        const std::string name = direction == Direction::X ? "X" : "Y";
        axes.push_back({.direction = direction,
                        .initial = parameters.integer("initial " + name),
                        .velocity = parameters.integer(name + " velocity"),
                        .acceleration = parameters.integer(name + " acceleration"),
                        .final = parameters.integer("final " + name)});
    }
    return std::make_unique<MoveAction>(*animation, *trinket, std::move(axes),
                                        parameters.interruptible());
}

// ---------------------------------------------------------------------------- motion

RAnimation* MoveAction::animation() const { return static_cast<RAnimation*>(animation_.object()); }
OMTrinket* MoveAction::trinket() const { return static_cast<OMTrinket*>(trinket_.object()); }

/// Coming to the final coordinate exactly is not passing it.
void MoveAction::Motion::advance() {
    if (arrived) return;
    constexpr std::int64_t kFar = std::int64_t{1} << 32; // farther than any coordinate
    current = std::clamp(current + velocity, -kFar, kFar);
    velocity = std::clamp(velocity + axis.acceleration, -kFar, kFar);
    arrived = axis.initial < axis.final ? current > axis.final : current < axis.final;
    if (arrived) current = axis.final;
}

void MoveAction::placeTrinket() {
    for (const Motion& motion : motions_) {
        const int coordinate = OMTrinket::nearestPlace(motion.current);
        if (motion.axis.direction == Direction::X)
            trinket()->setX(coordinate);
        else
            trinket()->setY(coordinate);
    }
}

void MoveAction::begin() {
    if (!animation_ || !trinket_) {
        finish();
        return;
    }
    listener_ = animation()->addFrameListener(OMLinkToObj(this, &MoveAction::frame));
    motions_.clear();
    for (const Axis& axis : axes_) motions_.emplace_back(axis);
    animation()->play();
    placeTrinket();
}

void MoveAction::frame(RAnimation::FrameNews news) {
    if (news == RAnimation::FrameNews::AnimationGoes) {
        animation_.watch(nullptr);
        finishLater();
        return;
    }
    for (Motion& motion : motions_) motion.advance();
    if (!trinket_ || std::ranges::all_of(motions_, &Motion::arrived))
        finish();
    else
        placeTrinket();
}

void MoveAction::end(End) {
    if (trinket_) {
        for (Motion& motion : motions_) motion.current = motion.axis.final;
        placeTrinket();
    }
    RAnimation* frames = animation();
    if (!frames) return;
    frames->removeFrameListener(std::exchange(listener_, 0));
    if (!frames->hasFrameListeners()) frames->endPlayback(); // whose end others may wait for
}

void MoveAction::hold() {
    if (animation_) animation()->pause();
}

void MoveAction::goOn() {
    if (animation_) animation()->resume();
}

#include "rcompositeaction.h"

#include "omsclass.h"

#include <algorithm>

namespace {

std::unique_ptr<OMScriptableObject> createCompositeAction() {
    const bool interruptible = oms::nextArgument<std::optional<bool>>().value_or(true);
    return std::make_unique<RCompositeAction>(interruptible);
}

} // namespace

const OMSClass RCompositeAction::kClass{
    "RCompositeAction", &ActionContainer::kClass, {}, &createCompositeAction, "[interruptible]"};

/// All are marked before the first one starts, which may be done at once.
void RCompositeAction::startMembers() {
    forEach([](Member& member) { member.state = State::Due; });
    forEach([this, starting = run()](Member& member) {
        if (isActive() && run() == starting && member.state == State::Due) startMember(member);
    });
}

bool RCompositeAction::isDone() const {
    return std::ranges::none_of(members(), &Member::isUnderWay);
}

void RCompositeAction::childFinished(const Member&) {
    if (isDone()) finish();
}

void RCompositeAction::actionRemoved(Number, bool underWay) {
    if (underWay && isActive() && isDone()) later();
}

void RCompositeAction::goOnLater() {
    if (isDone()) finish();
}

void RCompositeAction::halt() {
    if (!isActive()) return;
    const unsigned halting = run();
    forEach([this, halting](Member& member) {
        if (run() == halting && member.isUnderWay() && member.mayBeHalted()) haltMember(member);
    });
    if (isActive() && run() == halting && isDone()) becomeInactive();
}

void RCompositeAction::hold() {
    ActionContainer::hold();
    forEach([](Member& member) { member.action->pause(); });
}

void RCompositeAction::goOn() {
    ActionContainer::goOn();
    forEach([](Member& member) { member.action->resume(); });
}

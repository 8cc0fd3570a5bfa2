#include "rrandomaction.h"

#include "omrandom.h"
#include "omsclass.h"

#include <utility>

namespace {

constexpr OMSEntry kRRandomActionVocabulary[] = {
    oms::data<&RRandomAction::usesAllBeforeRepeat, &RRandomAction::setUseAllBeforeRepeat>(
        "useAllBeforeRepeat", "1: none comes again before all others"),
};

std::unique_ptr<OMScriptableObject> createRandomAction() {
    const bool useAll = oms::nextArgument<std::optional<bool>>().value_or(false);
    const bool interruptible = oms::nextArgument<std::optional<bool>>().value_or(true);
    return std::make_unique<RRandomAction>(useAll, interruptible);
}

} // namespace

const OMSClass RRandomAction::kClass{"RRandomAction", &ActionContainer::kClass,
                                     kRRandomActionVocabulary, &createRandomAction,
                                     "useall [interruptible]"};

RRandomAction::RRandomAction(const RRandomAction& other)
    : RRandomAction(other.useAllBeforeRepeat_, other.interruptibleByDefault()) {
    takeMembersOf(other);
    for (std::size_t i = 0; i < members().size(); ++i)
        if (std::ranges::find(other.pool_, other.members()[i].number) == other.pool_.end())
            std::erase(pool_, members()[i].number);
}

void RRandomAction::setUseAllBeforeRepeat(bool on) {
    useAllBeforeRepeat_ = on;
    if (!on) refill();
}

void RRandomAction::refill() {
    pool_.clear();
    for (const Member& member : members()) pool_.push_back(member.number);
}

ActionContainer::Number RRandomAction::draw() {
    if (pool_.empty()) refill(); // the last ones that were left are gone
    const auto place = pool_.begin() + OMRandomBelow(static_cast<std::uint32_t>(pool_.size()));
    const Number drawn = *place;
    if (useAllBeforeRepeat_) {
        pool_.erase(place);
        if (pool_.empty()) refill();
    }
    return drawn;
}

void RRandomAction::startMembers() {
    current_ = draw();
    startMember(*find(current_));
}

void RRandomAction::childFinished(const Member& member) {
    if (member.number != current_) return;
    current_ = kNone;
    finish();
}

void RRandomAction::actionRemoved(Number number, bool) {
    std::erase(pool_, number);
    if (number != current_) return;
    current_ = kNone;
    if (isActive()) later();
}

void RRandomAction::goOnLater() {
    if (current_ == kNone) finish();
}

void RRandomAction::halt() {
    if (!isActive()) return;
    Member* member = find(current_);
    if (!member || !member->mayBeHalted()) return;
    const unsigned halting = run();
    current_ = kNone;
    haltMember(*member);
    if (run() == halting) becomeInactive();
}

void RRandomAction::hold() {
    ActionContainer::hold();
    if (const Member* member = find(current_)) member->action->pause();
}

void RRandomAction::goOn() {
    ActionContainer::goOn();
    if (const Member* member = find(current_)) member->action->resume();
}

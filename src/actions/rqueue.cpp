#include "rqueue.h"

#include "omsclass.h"

namespace {

constexpr OMSEntry kRQueueVocabulary[] = {
    oms::data<&RQueue::repeatCount, &RQueue::setRepeatCount>("repeatCount",
                                                             "rounds; -1: without end"),
    oms::method<&RQueue::clearForScript>("clear"),
};

std::unique_ptr<OMScriptableObject> createQueue() {
    const int repeatCount = oms::nextArgument<std::optional<int>>().value_or(1);
    const bool interruptible = oms::nextArgument<std::optional<bool>>().value_or(true);
    return std::make_unique<RQueue>(repeatCount, interruptible);
}

} // namespace

const OMSClass RQueue::kClass{"RQueue", &ActionContainer::kClass, kRQueueVocabulary, &createQueue,
                              "repeatcount [interruptible]"};

void RQueue::startMembers() {
    roundsDone_ = 0;
    cursor_ = members().front().number;
    startAtCursor();
}

void RQueue::startAtCursor() {
    if (Member* member = find(cursor_)) startMember(*member);
}

void RQueue::childFinished(const Member& member) {
    if (member.number == cursor_) advance();
}

void RQueue::advance() {
    if (const Member* next = nextTo(cursor_))
        cursor_ = next->number;
    else if (beginsAnotherRound())
        cursor_ = members().front().number;
    else
        cursor_ = kNone;
    if (cursor_ == kNone)
        finish();
    else
        startAtCursor();
}

bool RQueue::beginsAnotherRound() {
    return repeatCount_ == kForever || ++roundsDone_ < repeatCount_;
}

/// It was the one at the cursor: begins again at the first one, but not inside of whatever made the
/// member go.
void RQueue::actionRemoved(Number number, bool) {
    if (number != cursor_) return;
    cursor_ = members().empty() ? kNone : members().front().number;
    if (isActive()) later();
}

void RQueue::goOnLater() {
    const Member* member = find(cursor_);
    if (!member)
        finish();
    else if (!member->isUnderWay()) // which a halt may have started already
        startAtCursor();
}

void RQueue::halt() {
    if (!isActive()) return;
    const unsigned halting = run();
    bool halted = false;
    for (Member* member = find(cursor_); member && member->mayBeHalted(); member = find(cursor_)) {
        const Member* next = nextTo(cursor_);
        cursor_ = next ? next->number : kNone;
        halted = true;
        haltMember(*member);
        if (!isActive() || run() != halting) return;
    }
    if (cursor_ == kNone)
        becomeInactive();
    else if (halted)
        startAtCursor();
}

void RQueue::clearForScript() {
    halt();
    if (!isActive()) clear();
}

void RQueue::hold() {
    ActionContainer::hold();
    if (const Member* member = find(cursor_)) member->action->pause();
}

void RQueue::goOn() {
    ActionContainer::goOn();
    if (const Member* member = find(cursor_)) member->action->resume();
}

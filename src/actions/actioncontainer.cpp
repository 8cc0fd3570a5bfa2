#include "actioncontainer.h"

#include "omformat.h"
#include "omsarguments.h"
#include "omsclass.h"
#include "reports.h"

#include <algorithm>
#include <utility>

namespace {

constexpr OMSEntry kActionContainerVocabulary[] = {
    oms::readOnly<&ActionContainer::actionCount>("actionCount"),
    oms::readOnly<&ActionContainer::isActive>("isActive"),
    oms::method<&ActionContainer::addFromScript>("add", "variable | type [parameters]"),
};

} // namespace

const OMSClass ActionContainer::kClass{"ActionContainer", &Action::kClass,
                                       kActionContainerVocabulary};

ActionContainer::ActionContainer(const OMSClass& scriptClass, bool interruptible)
    : Action(interruptible), scriptClass_(scriptClass) {}

void ActionContainer::onRetire() {
    later_.reset();
    clear();
    leaveContainers(); // while it has a height
    active_ = false;
}

// ---------------------------------------------------------------------------- members

void ActionContainer::addFromScript() {
    const std::string name = OMSArguments::global().next();
    if (OMScriptableObject* object = named(name)) {
        auto* action = dynamic_cast<Action*>(object);
        if (!action)
            RWarn(OMFormat("Unknown action or container: %s", name.c_str()));
        else if (!add(*action))
            RWarn(OMFormat("%s - cannot add %s", std::string(scriptClass_.name).c_str(),
                           name.c_str()));
        return;
    }
    std::unique_ptr<Action> action = ofType(name, interruptibleByDefault());
    if (action)
        add(std::move(action));
    else
        RWarn(OMFormat("Unknown action or container: %s", name.c_str()));
}

bool ActionContainer::add(Action& action) { return insert(action, nullptr); }

bool ActionContainer::add(std::unique_ptr<Action> action) {
    Action& member = *action;
    return insert(member, std::move(action));
}

bool ActionContainer::insert(Action& action, std::unique_ptr<Action> owned, bool byCopy) {
    if (isGoing()) return false;
    auto* inner = dynamic_cast<ActionContainer*>(&action);
    const bool stubborn = !action.isInterruptible();
    action.memberships_.push_back({this, byCopy});
    members_.push_back({&action, std::move(owned), ++lastNumber_, stubborn, inner});
    if (inner && !rise(inner->height_ + 1)) {
        action.memberships_.pop_back();
        const Member refused = std::move(members_.back());
        members_.pop_back();
        sink();
        return false;
    }
    countStubborn(stubborn ? 1 : 0);
    actionAdded(lastNumber_);
    return true;
}

/// Whether it may be so high, with all containers that it is in. A ring would be higher without
/// end.
bool ActionContainer::rise(int height) {
    if (height <= height_) return true;
    height_ = height;
    return height <= kMaxNesting &&
           std::ranges::all_of(memberships_, [height](const Membership& outer) {
               return outer.container->rise(height + 1);
           });
}

/// As high as its members are, after one of them went.
void ActionContainer::sink() {
    int height = 1;
    for (const Member& member : members_)
        if (member.inner) height = std::max(height, member.inner->height_ + 1);
    if (std::exchange(height_, height) == height) return;
    for (const Membership& outer : memberships_) outer.container->sink();
}

void ActionContainer::forget(Action& member) { erase(member); }

/// In the action's own list.
void ActionContainer::leave(Action& action) {
    std::erase_if(action.memberships_,
                  [this](const Membership& each) { return each.container == this; });
}

/// Everywhere in the list.
void ActionContainer::erase(Action& action) {
    leave(action);
    std::vector<Member> gone;
    const auto isThis = [&](const Member& each) { return each.action == &action; };
    for (Member& each : members_)
        if (isThis(each)) gone.push_back(std::move(each));
    std::erase_if(members_, isThis);
    if (gone.front().inner) sink();
    for (const Member& each : gone) {
        countStubborn(each.stubborn ? -1 : 0);
        if (!isGoing()) actionRemoved(each.number, each.isUnderWay());
    }
} // what was owned goes here

void ActionContainer::clear() {
    std::vector<Member> gone = std::exchange(members_, {});
    for (const Member& each : gone) leave(*each.action);
    countStubborn(-stubborn_);
    sink();
    for (const Member& each : gone)
        if (!isGoing()) actionRemoved(each.number, each.isUnderWay());
}

void ActionContainer::takeMembersOf(const ActionContainer& original) {
    for (const Member& each : original.members_) {
        if (!each.owned)
            insert(*each.action, nullptr, true);
        else if (auto copy = each.action->duplicate())
            add(std::unique_ptr<Action>(static_cast<Action*>(copy.release())));
    }
}

void ActionContainer::countStubborn(int change) {
    const bool before = stubborn_ != 0;
    stubborn_ += change;
    if (before == (stubborn_ != 0)) return;
    for (const Membership& outer : memberships_) outer.container->memberChanged(*this, !before);
}

void ActionContainer::memberChanged(const Action& member, bool stubborn) {
    int change = 0;
    for (Member& each : members_) {
        if (each.action != &member || each.stubborn == stubborn) continue;
        each.stubborn = stubborn;
        change += stubborn ? 1 : -1;
    }
    countStubborn(change);
}

ActionContainer::Member* ActionContainer::nextTo(Number number) {
    const auto found = std::ranges::upper_bound(members_, number, {}, &Member::number);
    return found == members_.end() ? nullptr : &*found;
}

ActionContainer::Member* ActionContainer::find(Number number) {
    Member* found = number == kNone ? nullptr : nextTo(number - 1);
    return found && found->number == number ? found : nullptr;
}

void ActionContainer::forEach(const OMLinkTo<void(Member&)>& visit) {
    const Number last = lastNumber_;
    for (Number number = kNone;;) {
        Member* member = nextTo(number);
        if (!member || member->number > last) return;
        number = member->number;
        visit(*member);
    }
}

// ---------------------------------------------------------------------------- running

void ActionContainer::start() {
    if (isActive())
        RWarn(OMFormat("%s - start method ignored, already running!",
                       std::string(scriptClass_.name).c_str()));
    else
        Action::start();
}

void ActionContainer::pause() {
    sweep([](ActionContainer& part) {
        part.setPaused(part.isActive());
        part.hold();
    });
}

void ActionContainer::resume() {
    sweep([](ActionContainer& part) {
        part.setPaused(false);
        part.goOn();
    });
}

/// From the container that is paused or resumed down through its members, once for each of them,
/// however many ways lead there.
void ActionContainer::sweep(void (*take)(ActionContainer& part)) {
    if (sweepDepth_ == 0) ++lastSweep_;
    if (std::exchange(sweep_, lastSweep_) == lastSweep_) return;
    ++sweepDepth_;
    take(*this);
    --sweepDepth_;
}

void ActionContainer::begin() {
    for (Member& each : members_) each.state = State::Idle;
    if (members_.empty())
        finish();
    else
        startMembers();
}

void ActionContainer::startMember(Member& member) {
    if (startDepth_ == 0) starts_ = 0;
    if (startDepth_ >= kMaxStartDepth || starts_ >= kMaxStarts) {
        member.state = State::Due;
        return later();
    }
    member.state = State::Running;
    setPaused(false);
    ++starts_;
    ++startDepth_;
    member.action->start();
    --startDepth_;
}

/// Wherever it runs here.
void ActionContainer::haltMember(Member& member) {
    if (std::exchange(member.state, State::Idle) != State::Running) return;
    Action& action = *member.action;
    for (Member& each : members_)
        if (each.action == &action && each.state == State::Running) each.state = State::Idle;
    action.halt();
}

bool ActionContainer::runs(const Action& member) const {
    return std::ranges::any_of(members_, [&](const Member& each) {
        return each.action == &member && each.state == State::Running;
    });
}

/// Its end counts wherever it runs here.
void ActionContainer::memberEnded(Action& member) {
    Member* ended = nullptr;
    for (Member& each : members_) {
        if (each.action != &member || each.state != State::Running) continue;
        each.state = State::Idle;
        if (!ended) ended = &each;
    }
    if (ended && isActive()) childFinished(*ended); // else not started here, or halted here
}

void ActionContainer::later() {
    later_ = std::make_unique<OMTask>(
        [this] {
            const std::unique_ptr<OMTask> done = std::move(later_);
            runLater();
        },
        OMTask::kWithScripts);
    if (isPaused()) later_->suspend();
}

/// The starts that were put off, or else what the class wants to go on with.
void ActionContainer::runLater() {
    if (!isActive()) return;
    const auto isDue = [](const Member& member) { return member.state == State::Due; };
    if (std::ranges::none_of(members_, isDue)) return goOnLater();
    forEach([&](Member& member) {
        if (isActive() && isDue(member)) startMember(member);
    });
}

void ActionContainer::becomeInactive() { Action::halt(); }

void ActionContainer::hold() {
    if (later_) later_->suspend();
}

void ActionContainer::goOn() {
    if (later_) later_->resume();
}

#include "actioncontainer.h"

#include "actiontypes.h"
#include "omformat.h"
#include "omsarguments.h"
#include "omsclass.h"
#include "reports.h"

#include <algorithm>
#include <utility>

namespace {

constexpr OMSEntry kVocabulary[] = {
    oms::readOnly<&ActionContainer::actionCount>("actionCount"),
    oms::readOnly<&ActionContainer::isActive>("isActive"),
    oms::method<&ActionContainer::addFromScript>("add", "variable or type [parameters]"),
};

} // namespace

const OMSClass ActionContainer::kClass{"ActionContainer", &Action::kClass, kVocabulary};

ActionContainer::ActionContainer(const OMSClass& scriptClass, bool interruptible)
    : Action(interruptible), scriptClass_(scriptClass) {}

ActionContainer::~ActionContainer() { dissolve(); }

void ActionContainer::dissolve() {
    dissolving_ = true;
    later_.reset();
    clear();
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
    std::unique_ptr<Action> action = ActionTypes::create(name, interruptibleByDefault());
    if (action)
        add(std::move(action));
    else
        RWarn(OMFormat("Unknown action or container: %s", name.c_str()));
}

bool ActionContainer::add(Action& action) {
    if (!fits(action)) return false;
    ActionContainer* before = action.container();
    if (before && before != this) before->remove(action);
    insert(action, nullptr);
    return true;
}

void ActionContainer::add(std::unique_ptr<Action> action) {
    Action& member = *action;
    insert(member, std::move(action));
}

bool ActionContainer::contains(const Action& action) const {
    return std::ranges::any_of(members_,
                               [&](const Member& each) { return each.action == &action; });
}

bool ActionContainer::fits(const Action& action) const {
    if (!mayRepeatMembers() && contains(action)) return false;
    int depth = 0;
    for (const ActionContainer* each = this; each; each = each->container()) {
        if (each == &action) return false;
        ++depth;
    }
    const auto* inner = dynamic_cast<const ActionContainer*>(&action);
    return !inner || depth + inner->height_ <= kMaxNesting;
}

void ActionContainer::insert(Action& action, std::unique_ptr<Action> owned) {
    if (dissolving_) return;
    action.container_ = this;
    const Number number = ++lastNumber_;
    const bool stubborn = !action.isInterruptible();
    members_.push_back(
        {&action, std::move(owned), number, stubborn, dynamic_cast<ActionContainer*>(&action)});
    noteHeight(members_.back());
    countStubborn(stubborn ? 1 : 0);
    actionAdded(number);
}

void ActionContainer::remove(Action& action) {
    if (action.container() == this) erase(action);
}

void ActionContainer::forget(Action& member) { erase(member); }

/// Everywhere in the list.
void ActionContainer::erase(Action& action) {
    action.container_ = nullptr;
    std::vector<Member> gone;
    const auto isThis = [&](const Member& each) { return each.action == &action; };
    for (Member& each : members_)
        if (isThis(each)) gone.push_back(std::move(each));
    std::erase_if(members_, isThis);
    for (const Member& each : gone) {
        noteHeight(each);
        countStubborn(each.stubborn ? -1 : 0);
        if (!dissolving_) actionRemoved(each.number, each.running);
    }
} // what was owned goes here

void ActionContainer::clear() {
    std::vector<Member> gone = std::exchange(members_, {});
    for (const Member& each : gone) each.action->container_ = nullptr;
    countStubborn(-stubborn_);
    for (const Member& each : gone) noteHeight(each);
    for (const Member& each : gone)
        if (!dissolving_) actionRemoved(each.number, each.running);
}

/// After a member came or went. Only containers count.
void ActionContainer::noteHeight(const Member& changed) {
    if (!changed.inner) return;
    for (ActionContainer* each = this; each; each = each->container()) {
        int height = 1;
        for (const Member& member : each->members_)
            if (member.inner) height = std::max(height, member.inner->height_ + 1);
        if (std::exchange(each->height_, height) == height) return;
    }
}

void ActionContainer::countStubborn(int change) {
    const bool before = stubborn_ != 0;
    stubborn_ += change;
    if (before != (stubborn_ != 0) && container()) container()->memberChanged(*this, !before);
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
    const OMSWatch self(this);
    const Number last = lastNumber_;
    for (Number number = kNone; self;) {
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
    setPaused(isActive());
    hold();
}

void ActionContainer::resume() {
    setPaused(false);
    goOn();
}

void ActionContainer::begin() {
    for (Member& each : members_) each.running = each.due = false;
    if (members_.empty())
        finish();
    else
        startMembers();
}

void ActionContainer::startMember(Member& member) {
    member.running = true;
    member.due = startDepth_ >= kMaxStartDepth;
    if (member.due) return later();
    setPaused(false);
    ++startDepth_;
    member.action->start();
    --startDepth_;
}

void ActionContainer::haltMember(Member& member) {
    member.running = false;
    if (!std::exchange(member.due, false)) member.action->halt();
}

void ActionContainer::memberEnded(Action& member) {
    const auto found = std::ranges::find_if(
        members_, [&](const Member& each) { return each.action == &member && each.running; });
    if (found == members_.end()) return; // not started here, or halted here
    found->running = false;
    if (isActive()) childFinished(*found);
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
    if (std::ranges::none_of(members_, &Member::due)) return goOnLater();
    forEach([this](Member& member) {
        if (isActive() && member.due) startMember(member);
    });
}

void ActionContainer::becomeInactive() { Action::halt(); }

void ActionContainer::hold() {
    if (later_) later_->suspend();
}

void ActionContainer::goOn() {
    if (later_) later_->resume();
}

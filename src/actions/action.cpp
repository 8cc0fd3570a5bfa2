#include "action.h"

#include "actioncontainer.h"
#include "omsclass.h"

#include <algorithm>
#include <utility>

namespace {

constexpr OMSEntry kActionVocabulary[] = {
    oms::readOnly<&Action::isInterruptible>("isInterruptible", "1: may be halted with others"),
    oms::method<&Action::halt>("halt"),
    oms::method<&Action::pause>("pause"),
    oms::lasting<&Action::resumeForScript>("resume"),
    oms::lasting<&Action::start>("start"),
    oms::event("finished", "it has come to its end"),
};

} // namespace

const OMSClass Action::kClass{"Action", &OMScriptableObject::kClass, kActionVocabulary};

Action::~Action() { leaveContainers(); }

void Action::leaveContainers() {
    while (!memberships_.empty()) memberships_.back().container->forget(*this);
}

ActionContainer* Action::container() const {
    const auto told = std::ranges::find_if(
        memberships_.rbegin(), memberships_.rend(),
        [this](const Membership& each) { return !each.byCopy || each.container->runs(*this); });
    return told == memberships_.rend() ? nullptr : told->container;
}

void Action::start() {
    const OMSWatch self(this);
    if (active_) {
        active_ = false;
        end(End::Halted);
        if (!self) return;
    }
    finishing_.reset();
    active_ = true;
    paused_ = false;
    ++run_;
    begin();
}

void Action::halt() {
    if (!active_) return;
    const OMSWatch self(this);
    active_ = false;
    end(End::Halted);
    ActionContainer* told = self ? container() : nullptr;
    if (told) told->memberEnded(*this);
    if (self) fireCompletion();
}

void Action::pause() {
    if (!active_ || paused_) return;
    paused_ = true;
    if (finishing_)
        finishing_->suspend();
    else
        hold();
}

void Action::resume() {
    if (!active_ || !paused_) return;
    paused_ = false;
    if (finishing_)
        finishing_->resume();
    else
        goOn();
}

void Action::resumeForScript() {
    const OMSWatch self(this);
    resume();
    if (self && !isActive()) fireCompletion();
}

void Action::finish() {
    if (!active_) return;
    const OMSWatch self(this);
    active_ = false;
    end(End::Finished);
    if (!self) return;
    if (ActionContainer* told = container()) told->memberEnded(*this);
    if (self) fireCompletion();
    if (self) fireEvent("finished");
}

void Action::finishLater() {
    if (!active_) return;
    finishing_ = std::make_unique<OMTask>(
        [this] {
            const std::unique_ptr<OMTask> done = std::move(finishing_);
            finish();
        },
        OMTask::kWithScripts);
    if (paused_) finishing_->suspend();
}

OMLink Action::doneLink() {
    return [watch = std::make_shared<OMSWatch>(this), run = run_] {
        auto* action = static_cast<Action*>(watch->object());
        if (!action || action->run_ != run) return;
        if (action->hasLostObject())
            action->finishLater();
        else
            action->finish();
    };
}

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

void Action::onRetire() {
    halt();
    leaveContainers();
}

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
    if (active_) {
        active_ = false;
        end(End::Halted);
        if (isRetired()) return;
    }
    finishing_.reset();
    active_ = true;
    paused_ = false;
    ++run_;
    begin();
}

void Action::halt() {
    if (!active_) return;
    active_ = false;
    end(End::Halted);
    if (ActionContainer* told = container()) told->memberEnded(*this);
    fireCompletion();
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
    resume();
    if (!isActive()) fireCompletion();
}

void Action::finish() {
    if (!active_) return;
    active_ = false;
    end(End::Finished);
    if (ActionContainer* told = container()) told->memberEnded(*this);
    fireCompletion();
    fireEvent("finished");
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
    return whileActive([this, run = run_] {
        if (run_ != run) return;
        if (hasLostObject())
            finishLater();
        else
            finish();
    });
}

#include "yengine.h"

#include "omapp.h"
#include "omformat.h"
#include "omlog.h"
#include "omplatform.h"
#include "omscall.h"
#include "omscrptb.h"
#include "omunderway.h"
#include "rthread.h"
#include "yheap.h"
#include "yprofile.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {

constexpr std::uint32_t kTickInterval = 100; ///< ms; timers count ticks of more than that
constexpr int kProgramEnd = 1;
constexpr std::string_view kDebugFile = "debug.txt";
constexpr std::string_view kIndent = "    "; ///< of all but the first line of a warning

} // namespace

YEngine* YEngine::current_ = nullptr;

YEngine::YEngine() {
    current_ = this;
    if (OMPlatform().author().wantsProfile()) profile_ = std::make_unique<YProfile>();
    OMScriptableObject::setRetireLink(
        [this](OMScriptableObject& object) { removeRecords(&object); });
    OMSCall::setWarningLink([this](std::string_view text) { warn(text); });
    OMApp* const app = OMApp::getApp();
    if (!app) return;
    app->setAlertedLink([this] { boxWasClosed(); });
    app->setWarningLink([this](std::string_view text) { tellAuthor(text); });
}

YEngine::~YEngine() {
    if (OMApp* app = OMApp::getApp()) {
        app->setAlertedLink(nullptr);
        app->setWarningLink(nullptr);
    }
    OMScriptableObject::setRetireLink(nullptr);
    OMSCall::setWarningLink(nullptr);
    if (profile_) OMPlatform().author().giveProfile(profile_->report());
    current_ = nullptr;
}

void YEngine::add(YThread& thread) {
    if (!task_) task_ = std::make_unique<OMTask>([this] { tick(); }, OMTask::kWithScripts);
    threads_.append(&thread);
}

void YEngine::remove(YThread& thread) {
    threads_.remove(&thread);
    std::erase_if(records_, [&](const auto& record) { return record->thread == &thread; });
    if (switching_ == &thread) switching_ = nullptr;
}

// ---------------------------------------------------------------------------- the tick

bool YEngine::countsForTimers() {
    const std::uint32_t now = OMMilliseconds();
    if (lastCountedTick_ && now - *lastCountedTick_ <= kTickInterval) return false;
    const bool counts = lastCountedTick_.has_value(); // the first call only records the time
    lastCountedTick_ = now;
    return counts;
}

bool YEngine::isHeld() {
    const OMApp* app = OMApp::getApp();
    return app && app->isLeaving();
}

/// What scripts are at is given up when the program is asked to end meanwhile.
void YEngine::boxWasClosed() {
    spend(isHeld() ? kTurnBudget : kLongCost);
    if (isHeld()) threads_.apply([](YThread& thread) { thread.giveUp(); });
}

void YEngine::tick() {
    if (isHeld()) return;
    const OMUnderWay::Run statements(OMUnderWay::Run::Kind::Outermost);
    const bool counts = countsForTimers();
    threads_.apply([&](YThread& thread) {
        if (isSwitching()) return;
        const bool begun = counts && thread.runTimers();
        if (begun && thread.status() != YThread::Status::InterruptEnded) return;
        if (!isSwitching()) thread.turn();
    });
    if (isSwitching()) switchScripts();
}

void YEngine::checkBounds() {
    unchecked_ = 0;
    if (OMPlatform().machine().usedMemory() > kMostMemory) hasTooMuchMemory_ = true;
    if (hasTooMuchMemory_ || OMScriptableObject::count() > kMostObjects) budget_ = 0;
}

std::optional<std::string> YEngine::takeExcess() {
    if (OMScriptableObject::count() > kMostObjects)
        return OMFormat("there are more than %d objects", kMostObjects);
    if (YHeap::current().count() >= YHeap::kMaxVariables)
        return OMFormat("there are %d variables, and there can be no more", YHeap::kMaxVariables);
    if (!std::exchange(hasTooMuchMemory_, false)) return std::nullopt;
    return OMFormat("the game takes more than %d megabytes of memory",
                    static_cast<int>(kMostMemory >> 20));
}

YEngine::Turn::~Turn() {
    if (--engine_.turns_ == 0 && !engine_.hasBudget()) OMPlatform().clock().wasBusy(kFullTurnMs);
}

void YEngine::switchScripts() {
    YThread& thread = *switching_;
    switching_ = nullptr;
    removeAllRecords();
    std::optional<std::string> next = thread.takeWanted();
    if (!next) next = popScript();
    if (!next) {
        thread.unload();
        return;
    }
    thread.loadScript(next->c_str());
    if (!thread.isLoaded()) return;
    thread.run();
    thread.fireStarted();
}

void YEngine::recreateHeap() {
    threads_.apply([](YThread& thread) { thread.loseScript(); });
    removeAllRecords();
    YHeap::recreate();
}

// ---------------------------------------------------------------------------- messages

void YEngine::warn(std::string_view text, const std::string& place) {
    if (warnings_) {
        if (!warnings_->empty()) *warnings_ += '\n';
        warnings_->append(text);
        return;
    }
    place_ = place;
    if (OMApp* app = OMApp::getApp()) app->alert(text);
    place_.clear();
}

/// In the log too, where the box is gone.
void YEngine::tellAuthor(std::string_view warning) const {
    std::string text = place_.empty() ? std::string() : place_ + ": ";
    text += place_.empty() && atWork_ ? atWork_->withTrail(warning) : std::string(warning);
    for (std::size_t end = text.find('\n'); end != text.npos; end = text.find('\n', end + 1))
        if (text.compare(end + 1, kIndent.size(), kIndent) != 0) text.insert(end + 1, kIndent);
    OMLog::write(OMLog::Kind::Warning, text);
    OMPlatform().author().warn(text);
}

void YEngine::quit() {
    if (OMApp* app = OMApp::getApp()) app->stop();
}

void YEngine::endProgram(std::string_view message, const std::string& place) {
    warnings_ = nullptr; // whoever is at work does not come to tell it
    warn(message, place);
    lastLink_();
    OMEndProcess(kProgramEnd);
}

void YEngine::writeDebugLine(std::string_view text) {
    spend(kCommandCost);
    OMPlatform().author().say(text);
    const auto file = OMPlatform().files().open(kDebugFile, platform::OpenMode::Append);
    if (!file) return;
    std::string line(text);
    line += '\n';
    OMAddText(*file, line, kMostDebugBytes);
}

bool YEngine::showTrace(const std::string& message) {
    const int outputs = traceOutputs_;
    if (outputs & kTraceFile) writeDebugLine(message);
    if (outputs & kTraceWindow) {
        spend(kCommandCost);
        window_(message);
    }
    if (!(outputs & kTraceBox)) return true;
    constexpr std::uint32_t kTraceStyle = OMApp::kAlertStyle | platform::boxstyle::kOkCancel;
    OMApp* app = OMApp::getApp();
    const platform::Button button =
        app ? app->box(message, kTraceStyle, "Trace")
            : OMPlatform().dialogs().messageBox(message, "Trace", kTraceStyle);
    return button != platform::Button::Cancel;
}

// ---------------------------------------------------------------------------- handlers

OMLink YEngine::addRecord(eventRecord record) {
    const auto twin = std::find_if(records_.begin(), records_.end(), [&](const auto& listed) {
        return listed->receiver == record.receiver && listed->variable == record.variable &&
               listed->event == record.event;
    });
    auto added = std::make_shared<eventRecord>(std::move(record));
    // A handler attached anew takes the place of the old one, whose link has just been replaced.
    if (twin != records_.end())
        *twin = added;
    else
        records_.push_back(added);
    // The record is kept for the delivery: the handler may discard it.
    return [weak = std::weak_ptr(added)] {
        if (const auto kept = weak.lock()) kept->thread->deliverEvent(*kept);
    };
}

void YEngine::removeRecords(const OMScriptableObject* receiver, std::string_view variable,
                            std::string_view event) {
    std::erase_if(records_, [&](const auto& record) {
        return record->receiver == receiver && record->event == event &&
               (receiver || record->variable == variable);
    });
}

void YEngine::removeRecords(const OMScriptableObject* receiver) {
    std::erase_if(records_, [&](const auto& record) { return record->receiver == receiver; });
}

// ---------------------------------------------------------------------------- scripts, pause

void YEngine::pushScript(const std::string& name) {
    if (threadStack_.size() >= kMostScripts) threadStack_.erase(threadStack_.begin());
    threadStack_.push_back(name);
}

std::optional<std::string> YEngine::popScript() {
    if (threadStack_.empty()) return std::nullopt;
    std::string name = std::move(threadStack_.back());
    threadStack_.pop_back();
    return name;
}

void YEngine::pauseFor(std::uint32_t ms) { pauseDeadline_ = OMMilliseconds() + ms; }

bool YEngine::pauseIsOver() const {
    return !pauseDeadline_ || static_cast<std::int32_t>(OMMilliseconds() - *pauseDeadline_) >= 0;
}

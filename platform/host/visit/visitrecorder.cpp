#include "platform/host/visit/visitrecorder.h"

#include "platform/host/screen/boxbuttons.h"
#include "platform/host/screen/png.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <utility>

namespace platform {

// ---------------------------------------------------------------------------- clock

void RecordedClock::sleep(std::uint32_t ms) {
    real_.sleep(ms);
    VirtualClock::sleep(ms);
    behindMs_ -= ms;
}

void RecordedClock::beginMainLoop() {
    beginLoop();
    lastMs_ = real_.milliseconds();
    behindMs_ = 0;
}

std::uint32_t RecordedClock::catchUp() {
    const std::uint32_t now = real_.milliseconds();
    behindMs_ += now - std::exchange(lastMs_, now);
    const auto ms = static_cast<std::uint32_t>(std::max<std::int64_t>(behindMs_, 1));
    VirtualClock::sleep(ms);
    behindMs_ -= ms;
    return ms;
}

// ---------------------------------------------------------------------------- events

void RecordedEvents::gather() {
    if (person_.releaseWasDropped()) // behind the program's back, as while a box was open
        record({.kind = Message::Kind::MouseUp, .position = pointer_});
    for (Message message; person_.take(message);) record(message);
    for (const auto& wanted : std::exchange(wanted_, {}))
        std::visit([this](const auto& what) { put(what); }, wanted);
}

template <class What>
void RecordedEvents::put(const What& what) {
    const auto now = static_cast<std::uint32_t>(clock_.loopMs());
    visit_.write(now, what);
    add({now, what});
}

void RecordedEvents::record(const Message& message) {
    if (message.kind == Message::Kind::MouseMove || message.isPress()) pointer_ = message.position;
    put(message);
}

bool RecordedEvents::wait(Message& message) {
    while (!take(message)) {
        Message first;
        if (!person_.wait(first)) return false;
        clock_.catchUp();
        record(first);
    }
    return true;
}

/// What the program has not come to yet goes unseen, in both queues.
void RecordedEvents::discardInput() {
    TimedEvents::discardInput();
    person_.discardInput();
}

void RecordedEvents::captureMouse(bool captured) {
    TimedEvents::captureMouse(captured);
    person_.captureMouse(captured);
}

void RecordedEvents::wantPicture() {
    wanted_.push_back(
        TimelineScreenshot{visit_.name() + '-' + std::to_string(++pictures_) + ".png"});
}

void RecordedEvents::meet(const TimelineEvent& event) {
    if (const auto* picture = std::get_if<TimelineScreenshot>(&event.what))
        savePicture(picture->file);
    else if (const auto* run = std::get_if<TimelineRun>(&event.what))
        desk_.runLater(run->line);
}

void RecordedEvents::savePicture(const std::string& name) const {
    const std::string file = (std::filesystem::path(visit_.folder()) / name).string();
    const bool isWritten = writePng(file, display_.shown(), display_.palette());
    std::fprintf(stderr,
                 isWritten ? "zorbet: %s shows the screen\n"
                           : "zorbet: %s cannot be written; see who may write there\n",
                 file.c_str());
}

// ---------------------------------------------------------------------------- boxes

void RecordedDialogs::record(std::string_view button, bool checked) {
    if (machine_.quitWaits() && !events_.quitWaits()) return recordClosing();
    visit_.write(static_cast<std::uint32_t>(clock_.loopMs()),
                 TimelineAnswer{std::string(button), checked, false});
}

void RecordedDialogs::recordClosing() {
    visit_.write(static_cast<std::uint32_t>(clock_.loopMs()), TimelineAnswer{.closesWindow = true});
    events_.closeWindow();
}

Button RecordedDialogs::messageBox(std::string_view text, std::string_view caption,
                                   std::uint32_t style) {
    if (events_.closesBox()) {
        recordClosing();
        const std::span<const Button> buttons = boxButtons(style);
        return buttons[closingButton(buttons)];
    }
    const Button button = person_.messageBox(text, caption, style);
    record(buttonText(button));
    return button;
}

WarningAnswer RecordedDialogs::warning(const WarningRequest& request) {
    if (events_.closesBox()) {
        recordClosing();
        return {.goOn = false, .checked = false};
    }
    const WarningAnswer answer = person_.warning(request);
    record(answer.goOn ? request.goOn : request.stop, answer.checked);
    return answer;
}

std::string RecordedDialogs::openFile(std::string_view title, std::string_view pattern,
                                      std::size_t limit) {
    if (events_.closesBox()) {
        recordClosing();
        return {};
    }
    std::string path = person_.openFile(title, pattern, limit);
    record(path.empty() ? buttonText(Button::Cancel) : std::string_view(path));
    return path;
}

// ---------------------------------------------------------------------------- turns

void VisitRecorder::passEnded() {
    visit_.turn(clock_.catchUp());
    events_.gather();
}

} // namespace platform

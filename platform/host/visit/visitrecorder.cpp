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
    for (; wantedPictures_ > 0; --wantedPictures_) {
        const TimelineScreenshot picture{nextPicture()};
        const auto now = static_cast<std::uint32_t>(clock_.loopMs());
        visit_.write(now, picture);
        add({now, picture});
    }
}

void RecordedEvents::record(const Message& message) {
    if (message.kind == Message::Kind::MouseMove || message.isPress()) pointer_ = message.position;
    const auto now = static_cast<std::uint32_t>(clock_.loopMs());
    visit_.write(now, message);
    add({now, message});
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

std::string RecordedEvents::nextPicture() {
    return visit_.name() + '-' + std::to_string(++pictures_) + ".png";
}

void RecordedEvents::meet(const TimelineEvent& event) {
    const auto* picture = std::get_if<TimelineScreenshot>(&event.what);
    if (!picture) return;
    const std::string file = (std::filesystem::path(visit_.folder()) / picture->file).string();
    const bool isWritten = writePng(file, display_.shown(), display_.palette());
    std::fprintf(stderr,
                 isWritten ? "zorbet: %s shows the screen\n"
                           : "zorbet: %s: no picture could be written\n",
                 file.c_str());
}

// ---------------------------------------------------------------------------- boxes

void RecordedDialogs::record(std::string_view button, bool checked) {
    const bool closes = machine_.quitWaits() && !events_.quitWaits();
    visit_.write(static_cast<std::uint32_t>(clock_.loopMs()),
                 TimelineAnswer{std::string(button), checked, closes});
    if (closes) events_.closeWindow();
}

Button RecordedDialogs::messageBox(std::string_view text, std::string_view caption,
                                   std::uint32_t style) {
    const Button button = person_.messageBox(text, caption, style);
    record(buttonText(button));
    return button;
}

WarningAnswer RecordedDialogs::warning(const WarningRequest& request) {
    const WarningAnswer answer = person_.warning(request);
    record(answer.goOn ? request.goOn : request.stop, answer.checked);
    return answer;
}

std::string RecordedDialogs::openFile(std::string_view title, std::string_view pattern,
                                      std::size_t limit) {
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

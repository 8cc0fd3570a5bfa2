#include "platform/headless/headlessplatform.h"

#include "formats/base/latin1.h"
#include "platform/headless/headlesstextwindow.h"
#include "platform/host/files/secondwall.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <variant>

namespace platform {

namespace {

std::ostream& orElse(std::ostream* chosen, std::ostream& usual) { return chosen ? *chosen : usual; }

Timeline timelineOf(const HeadlessOptions& options) {
    Timeline timeline = options.timeline;
    if (options.speaksTexts)
        timeline.insert(timeline.begin(), {0, Message{.kind = Message::Kind::SpeechOn}});
    if (options.playsByKeys)
        timeline.insert(timeline.begin(), {0, Message{.kind = Message::Kind::KeysOn}});
    return timeline;
}

/// Of screenshots and recordings.
std::vector<std::string> foldersOf(const HeadlessOptions& options) {
    std::vector<std::string> folders;
    if (!options.recordSound.empty()) folders.push_back(nearestFolder(options.recordSound, "."));
    for (const TimelineEvent& event : options.timeline)
        if (const auto* screenshot = std::get_if<TimelineScreenshot>(&event.what))
            folders.push_back(
                nearestFolder(std::filesystem::path(screenshot->file).parent_path(), "."));
    return folders;
}

} // namespace

HeadlessPlatform::HeadlessPlatform(const HeadlessOptions& options)
    : stepMs_(std::max(options.stepMs, 1u)), turns_(options.turns.begin(), options.turns.end()),
      trusted_(options.host.trusted), asked_(foldersOf(options)),
      notes_(orElse(options.notes, std::cerr)), machine_(options.machine),
      notices_(orElse(options.report, std::cout), clock_), desk_(options.profile, notices_, notes_),
      spokenBoxes_(speech_, options.buttons, options.language), files_(options.host),
      modules_(files_, options.host.components, options.resources, options.versionStrings),
      display_(options.screen, clock_, notices_),
      events_(timelineOf(options), options.untilMs, clock_, display_, desk_, notes_),
      dialogs_(options.timeline, clock_, events_, files_, desk_, spokenBoxes_, notices_, notes_),
      recordings_(options.recordSound, notes_), waveOut_(clock_, recordings_),
      movieSpeakers_(clock_, recordings_), movies_(files_, clock_, movieSpeakers_) {
    speech_.setOn(options.speaksTexts);
    display_.setCalm(options.calm);
    display_.setDriver(options.machine.driver);
    waveOut_.setAvailable(options.machine.sound);
    movieSpeakers_.setAvailable(options.machine.sound);
    if (!turns_.empty()) {
        clock_.ignoreBusyTime();
        events_.loseInputInBoxes();
    }
    if (options.breakPoint) breakingFiles_.emplace(files_, *options.breakPoint);
}

Files& HeadlessPlatform::files() {
    if (breakingFiles_) return *breakingFiles_;
    return files_;
}

std::unique_ptr<TextWindow> HeadlessPlatform::openTextWindow(const TextWindowRequest& request,
                                                             TextWindowOwner&) {
    return std::make_unique<HeadlessTextWindow>(request, notices_);
}

void HeadlessPlatform::complain(std::string_view text) {
    notes_ << "zorbet: " << formats::utf8FromLatin1(text) << std::endl;
}

void HeadlessPlatform::closeIn() {
    if (trusted_) return;
    std::vector<std::string> writable = files_.writableFolders();
    writable.insert(writable.end(), asked_.begin(), asked_.end());
    writable.push_back(userStateFolder());
    raiseSecondWall(writable);
}

void HeadlessPlatform::passEnded() {
    desk_.runLines();
    if (turns_.empty()) return clock_.sleep(stepMs_);
    clock_.sleep(turns_.front().ms);
    if (--turns_.front().count == 0) turns_.pop_front();
    if (turns_.empty()) events_.end();
}

void HeadlessPlatform::programEnds(int exitCode) {
    if (endReported_) return;
    endReported_ = true;
    waveOut_.close(); // completes what was recorded
    movieSpeakers_.closeAll();
    const std::string_view cause = events_.quitCause();
    if (exitCode != 0 || cause.empty()) {
        notices_.line("end", {std::to_string(exitCode)});
    } else {
        notices_.line("end", {cause});
    }
}

void HeadlessPlatform::terminate(int exitCode) {
    programEnds(exitCode);
    std::cout.flush();
    std::fflush(nullptr);
    std::_Exit(exitCode);
}

} // namespace platform

// The machine without a person: virtual time, input from a timeline, and a report of everything
// that would have been noticed. A full back end: the program runs on it as it does in its window.
#pragma once

#include "platform/headless/breakingfiles.h"
#include "platform/headless/claimedmachine.h"
#include "platform/headless/headlessdesk.h"
#include "platform/headless/headlessdialogs.h"
#include "platform/headless/headlessdisplay.h"
#include "platform/headless/headlessmoviespeaker.h"
#include "platform/headless/headlessspeech.h"
#include "platform/headless/headlesswaveout.h"
#include "platform/headless/notices.h"
#include "platform/headless/timelineevents.h"
#include "platform/headless/waverecorder.h"
#include "platform/host/faces/hosttypefaces.h"
#include "platform/host/files/hostfiles.h"
#include "platform/host/files/userfolders.h"
#include "platform/host/machine/hostmodules.h"
#include "platform/host/movies/hostmovie.h"
#include "platform/host/speech/spokenboxes.h"
#include "platform/host/visit/timeline.h"
#include "platform/host/visit/virtualclock.h"
#include "platform/platform.h"

#include <cstdint>
#include <deque>
#include <iosfwd>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace platform {

/// What was presented before it sleeps is seen meanwhile.
class HeadlessClock final : public VirtualClock {
  public:
    /// The display must outlive it.
    explicit HeadlessClock(HeadlessDisplay& display) : display_(display) {}
    void sleep(std::uint32_t ms) override {
        display_.flush();
        VirtualClock::sleep(ms);
    }

  private:
    HeadlessDisplay& display_;
};

struct HeadlessOptions {
    HostOptions host{};
    MachineClaims machine{};
    Timeline timeline{};
    std::optional<std::uint32_t>
        untilMs{};              ///< when a quit comes by itself, in the main loop's time
    std::uint32_t stepMs = 1;   ///< time of one pass of the main loop; 0 counts as 1
    std::vector<Turns> turns{}; ///< times of the passes, when they are known; a quit ends them
    bool playsByKeys = false;   ///< from the start
    bool speaksTexts = false;   ///< the same
    bool calm = false;          ///< what flashes is held still
    ButtonLabels buttons{};     ///< as they are spoken
    std::string language{};     ///< of the boxes; a tag, or empty
    ScreenMode screen{};
    std::string recordSound{}; ///< folder for what is played; empty: nothing is recorded
    std::string profile{};     ///< file for where the time of scripts goes; or empty
    std::optional<BreakPoint> breakPoint{}; ///< where the files are to fail
    std::span<const ProgramResource> resources{};
    std::span<const VersionString> versionStrings{};
    std::ostream* report = nullptr; ///< standard output when null
    std::ostream* notes = nullptr;  ///< standard error when null; complaints about the timeline
};

class HeadlessPlatform final : public Platform {
  public:
    explicit HeadlessPlatform(const HeadlessOptions& options);

    [[nodiscard]] VirtualClock& clock() override { return clock_; }
    [[nodiscard]] Display& display() override { return display_; }
    [[nodiscard]] Events& events() override { return events_; }
    [[nodiscard]] Dialogs& dialogs() override { return dialogs_; }
    [[nodiscard]] Files& files() override;
    [[nodiscard]] Modules& modules() override { return modules_; }
    [[nodiscard]] HeadlessWaveOut& waveOut() override { return waveOut_; }
    [[nodiscard]] Typefaces& typefaces() override { return typefaces_; }
    [[nodiscard]] Movies& movies() override { return movies_; }
    [[nodiscard]] Machine& machine() override { return machine_; }
    [[nodiscard]] Speech& speech() override { return speech_; }
    [[nodiscard]] AuthorDesk& author() override { return desk_; }

    /// Its lines go into the report.
    [[nodiscard]] std::unique_ptr<TextWindow> openTextWindow(const TextWindowRequest& request,
                                                             TextWindowOwner& owner) override;

    /// There is nothing to choose.
    void keepSettings(std::string_view) override {}
    void complain(std::string_view text) override;
    [[nodiscard]] std::unique_ptr<File> openLog(std::string_view name, OpenMode mode) override {
        return openUserLog(std::string(name), mode);
    }

    void closeIn() override;
    void mainLoopBegins() override { clock_.beginLoop(); }
    void passEnded() override;
    void programEnds(int exitCode) override;
    [[noreturn]] void terminate(int exitCode) override;

  private:
    std::uint32_t stepMs_;
    std::deque<Turns> turns_; ///< still to come
    bool trusted_;
    std::vector<std::string> asked_; ///< folders for what the player asked for
    std::ostream& notes_;
    ClaimedMachine machine_;
    HeadlessClock clock_{display_};
    Notices notices_;
    HeadlessDesk desk_;
    HeadlessSpeech speech_{notices_};
    SpokenBoxes spokenBoxes_;
    HostFiles files_;
    std::optional<BreakingFiles> breakingFiles_;
    HostModules modules_;
    HostTypefaces typefaces_{files_};
    HeadlessDisplay display_;
    TimelineEvents events_;
    HeadlessDialogs dialogs_;
    WaveFolder recordings_;
    HeadlessWaveOut waveOut_;
    HeadlessMovieSpeakers movieSpeakers_;
    HostMovies movies_;
    bool endReported_ = false;
};

} // namespace platform

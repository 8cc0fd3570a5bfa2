// What the program gets in place of the machine's own while a visit is recorded: everything whose
// times a person or a device makes.
#pragma once

#include "platform/host/movies/hostmovie.h"
#include "platform/host/visit/visitrecorder.h"
#include "platform/sdl/sdldesk.h"
#include "platform/sdl/sdldialogs.h"
#include "platform/sdl/sdldisplay.h"
#include "platform/sdl/sdlevents.h"
#include "platform/sdl/sdlfollower.h"

namespace platform {

class RecordedMachine {
  public:
    /// All must outlive it.
    RecordedMachine(VisitWriter& visit, Clock& clock, SdlEvents& events, SdlDialogs& dialogs,
                    SdlDisplay& display, SdlDesk& desk, SdlSound& sound, Files& files)
        : recorder_(visit, clock, events, dialogs, display, desk),
          waveOut_(recorder_.clock(), sound), speakers_(recorder_.clock(), sound),
          movies_(files, recorder_.clock(), speakers_) {
        events.setPictureLink([this] { recorder_.events().wantPicture(); });
        desk.setLineLink([this](std::string_view line) { recorder_.events().wantLine(line); });
    }
    RecordedMachine& operator=(RecordedMachine&&) = delete;

    [[nodiscard]] Clock& clock() { return recorder_.clock(); }
    [[nodiscard]] Events& events() { return recorder_.events(); }
    [[nodiscard]] Dialogs& dialogs() { return recorder_.dialogs(); }
    [[nodiscard]] WaveOut& waveOut() { return waveOut_; }
    [[nodiscard]] Movies& movies() { return movies_; }

    void mainLoopBegins() { recorder_.mainLoopBegins(); }
    void passEnded() { recorder_.passEnded(); }

  private:
    VisitRecorder recorder_;
    FollowedWaveOut waveOut_;
    FollowedMovieSpeakers speakers_;
    HostMovies movies_;
};

} // namespace platform

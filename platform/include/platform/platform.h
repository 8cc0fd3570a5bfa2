// Everything the program asks of the machine, in one object that is made before all others and
// handed to the framework once. Two back ends implement it; only the program's entry knows which
// one is in use.
#pragma once

#include "platform/authordesk.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/display.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/machine.h"
#include "platform/modules.h"
#include "platform/movies.h"
#include "platform/speech.h"
#include "platform/textwindow.h"
#include "platform/typefaces.h"
#include "platform/waveout.h"

#include <cstdint>
#include <memory>
#include <string_view>

namespace platform {

class Platform {
  public:
    virtual ~Platform() = default;

    [[nodiscard]] virtual Clock& clock() = 0;
    [[nodiscard]] virtual Display& display() = 0;
    [[nodiscard]] virtual Events& events() = 0;
    [[nodiscard]] virtual Dialogs& dialogs() = 0;
    [[nodiscard]] virtual Files& files() = 0;
    [[nodiscard]] virtual Modules& modules() = 0;
    [[nodiscard]] virtual WaveOut& waveOut() = 0;
    [[nodiscard]] virtual Typefaces& typefaces() = 0;
    [[nodiscard]] virtual Movies& movies() = 0;
    [[nodiscard]] virtual Machine& machine() = 0;
    [[nodiscard]] virtual Speech& speech() { return mute_; }
    [[nodiscard]] virtual AuthorDesk& author() { return nobody_; }

    /// Opens a text window above all others, without taking the focus from where it is. Null when
    /// there can be none. The owner must outlive the window, and the window must be gone before the
    /// platform is.
    [[nodiscard]] virtual std::unique_ptr<TextWindow>
    openTextWindow(const TextWindowRequest& request, TextWindowOwner& owner) = 0;

    /// From now on what the player chooses of the machine for this game, such as a full screen, is
    /// kept in the file `path` (in the form of `Files`); what was kept there is applied at once.
    virtual void keepSettings(std::string_view path) = 0;

    /// Tells whoever started the program what no box tells, in a line on standard error. Latin-1.
    virtual void complain(std::string_view text) = 0;

    /// Called when all that the start wants of the machine is open: from the first time on the host
    /// itself keeps the process from changing what is not this game's, as far as it can.
    virtual void closeIn() = 0;

    /// Tells the player what needs no answer: in a box with OK, or, where nobody plays, as
    /// `complain` does. Latin-1.
    virtual void tellPlayer(std::string_view text, std::string_view /*caption*/) { complain(text); }

    /// Opens a log that can be written nowhere else, by its name alone, where the machine keeps
    /// such. Null when there is no such place, or it cannot be opened there.
    [[nodiscard]] virtual std::unique_ptr<File> openLog(std::string_view /*name*/, OpenMode) {
        return nullptr;
    }

    /// Called right before the first pass of a main loop: input that is known beforehand
    /// counts its time from here.
    virtual void mainLoopBegins() = 0;

    /// Called at the end of every pass of the main loop. A virtual clock moves on here; a real one
    /// may let the machine rest for a moment when the pass had nothing to do.
    virtual void passEnded() = 0;

    /// Called when a game has ended: whether it is to begin again, for whoever comes next.
    [[nodiscard]] virtual bool beginsAgain() { return false; }

    /// Called once when the program ends in an orderly way, with its exit code.
    virtual void programEnds(int exitCode) = 0;

    /// Ends the process at once with `exitCode`, after what was recorded has been written out.
    [[noreturn]] virtual void terminate(int exitCode) = 0;

  private:
    AuthorDesk nobody_;
    MuteSpeech mute_;
};

} // namespace platform

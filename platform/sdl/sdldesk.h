// The author's desk in front of a window: warnings are told on standard error, Shift+F2 opens a
// console over the scene, and Shift+F3 has what was saved loaded again. Without an author it is
// nobody's.
#pragma once

#include "platform/host/game/hostdesk.h"
#include "platform/host/game/workshop.h"
#include "platform/host/screen/consolepanel.h"
#include "platform/sdl/sdldisplay.h"
#include "platform/sdl/sdlevents.h"
#include "platform/sdl/sdlplatform.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace platform {

class SdlDesk final : public HostDesk {
  public:
    /// Both must outlive the desk.
    SdlDesk(SdlDisplay& display, SdlEvents& events, const SdlOptions& options);
    ~SdlDesk() override;
    SdlDesk& operator=(SdlDesk&&) = delete;

    /// Who gets the lines that are typed, instead of having them run at the end of the next pass.
    void setLineLink(std::function<void(std::string_view)> link) { lineLink_ = std::move(link); }

    void warn(std::string_view text) override;
    void tell(std::string_view text, bool failed) override;
    void say(std::string_view line) override;
    void setReload(ReloadLink game) override {
        if (workshop_) workshop_->setReload(std::move(game));
    }

    /// Runs the lines that wait, goes on with what is to be loaded again, and brings the console up
    /// to date.
    void passEnded();

  protected:
    void lineRuns(std::string_view line) override;
    void lineHasRun(std::string_view line, std::string_view result) override;

  private:
    bool takeInput(const Message& message);
    void write(std::string_view text, ConsolePanel::Told kind);

    SdlDisplay& display_;
    SdlEvents& events_;
    std::function<void(std::string_view)> lineLink_ = [this](std::string_view line) {
        runLater(line);
    };
    std::optional<ConsolePanel> console_; ///< an author is seated
    std::optional<Workshop> workshop_;
    std::uint32_t lookedMs_ = 0; ///< when the game was asked for the last time
    bool looksAtOnce_ = false;
};

} // namespace platform

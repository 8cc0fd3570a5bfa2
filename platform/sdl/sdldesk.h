// The author's desk in front of a window: warnings are told on standard error, and Shift+F2 opens a
// console over the scene. Without an author it is nobody's.
#pragma once

#include "platform/host/game/hostdesk.h"
#include "platform/host/screen/consolepanel.h"
#include "platform/sdl/sdldisplay.h"
#include "platform/sdl/sdlevents.h"

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
    SdlDesk(SdlDisplay& display, SdlEvents& events, bool isSeated, const std::string& profile);
    ~SdlDesk() override;
    SdlDesk& operator=(SdlDesk&&) = delete;

    /// Who gets the lines that are typed, instead of having them run at the end of the next pass.
    void setLineLink(std::function<void(std::string_view)> link) { lineLink_ = std::move(link); }

    void warn(std::string_view text) override;
    void say(std::string_view line) override;

    /// Runs the lines that wait and brings the console up to date.
    void passEnded();

  protected:
    void lineRuns(std::string_view line) override;
    void lineHasRun(std::string_view line, std::string_view result) override;

  private:
    bool takeInput(const Message& message);

    SdlDisplay& display_;
    SdlEvents& events_;
    std::function<void(std::string_view)> lineLink_ = [this](std::string_view line) {
        runLater(line);
    };
    std::optional<ConsolePanel> console_; ///< an author is seated
    std::uint32_t lookedMs_ = 0;          ///< when the game was asked for the last time
    bool looksAtOnce_ = false;
};

} // namespace platform

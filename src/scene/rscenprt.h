// What a scene's script hears of the application: keys, clicks that meet nothing but the
// background, pauses and the end of the game. It also has the background music in hand.
//
//     port=RScenePort 0         (the language wants a word; any will do)
//
// There may be any number of ports; all hear everything, in the order of their making.
#pragma once

#include "omscrptb.h"
#include "omtrinketwindow.h"

#include <memory>
#include <optional>
#include <string_view>

class RScenePort final : public OMSCopied<RScenePort, OMScriptableObject> {
  public:
    static const OMSClass kClass;

    /// Needs the background music, which must outlive it.
    RScenePort();
    RScenePort(const RScenePort&) : RScenePort() {}
    ~RScenePort() override { retire(); }

    /// Null without the background music.
    [[nodiscard]] static std::unique_ptr<OMScriptableObject> createFromScript();

    /// Whether there is a port at all.
    [[nodiscard]] static bool exists() { return !all_.empty(); }

    // What the application tells all ports. Ports that are made meanwhile are not told.
    static void tellExitting() { tell("exittingGame"); }
    static void tellPaused() { tell("paused"); }
    static void tellResumed() { tell("resumed"); }
    /// Whether a script hears of clicks on the background.
    [[nodiscard]] static bool hearsClicks();
    /// Whether the command is one for the ports, who were told then.
    static bool handleCommand(int command);

    static constexpr int kSpaceCommand = 32;
    static constexpr int kReturnCommand = 59394;

    // The background music.
    [[nodiscard]] int backgroundMusicID() const;
    void setBackgroundMusicID(int id);
    [[nodiscard]] int backgroundMusicVolume() const;
    void setBackgroundMusicVolume(int volume);
    [[nodiscard]] int isBackgroundMusicEnabled() const;
    /// Any value but the present one changes over.
    void setBackgroundMusicEnabled(int value);
    void startBackgroundMusic(std::optional<int> id, std::optional<int> volume,
                              std::optional<int> fadeSeconds);
    void stopBackgroundMusic(int fadeSeconds);
    void pauseBackgroundMusic();
    void resumeBackgroundMusic();

  private:
    void onRetire() override;
    static void tell(std::string_view event);

    static inline OMList<RScenePort> all_; ///< in the order of their making

    /// Of the main window, if there is one. Not of its background: every scene brings another.
    std::optional<OMTrinketInput::ClickTaker> clicks_;
};

// Loads the running scene again when its author wishes (platform::Reload), while this object lives.
//
// Scripts are checked before anything is touched; with a mistake in them the scene goes on. Else it
// begins anew at the end of a tick, where scripts change: its objects, handlers and variables go,
// its sounds end, resources and the texts of its language are read again, and the script is loaded
// and started. The world's
// memory, and the scripts to return to, stay as they are.
#pragma once

#include "yscriptloader.h"

#include "platform/authordesk.h"

#include <cstdint>
#include <optional>
#include <string>

class BackgroundMusic;
class EffectsWindow;
class FontFactory;
class RCursors;
class RGameSounds;
class RGameTexts;
class SpokenTexts;
class RResources;
class YEngine;
class YThread;

class RReload {
  public:
    /// What knows resources by their numbers, and what the old scene leaves on the screen.
    struct Parts {
        RResources& resources;
        RCursors& cursors;
        FontFactory& fonts;
        RGameSounds& sounds;
        BackgroundMusic& music;
        EffectsWindow& window;
        RGameTexts& texts;
        SpokenTexts& spoken;
    };

    /// `thread` runs the scene; its unloaded and started links are this object's. All must outlive
    /// it. `firstScript` is looked at besides the scene's.
    RReload(YEngine& engine, YThread& thread, const Parts& parts, std::string firstScript,
            YScriptLocator locator);
    ~RReload();
    RReload& operator=(RReload&&) = delete;

  private:
    void begin(const platform::Reload& wanted);
    [[nodiscard]] bool scriptsAreInOrder() const;
    void sceneHasGone();
    void readResources();
    void sceneHasBegun();

    YEngine& engine_;
    YThread& thread_;
    Parts parts_;
    std::string firstScript_;
    YScriptLocator locator_;
    platform::Reload wanted_;            ///< resources stay so until they are read
    bool isBeginning_ = false;           ///< until the old scene has gone
    std::optional<std::uint32_t> since_; ///< ms; until the new one has begun
    std::string loaded_;                 ///< what was, for the author
};

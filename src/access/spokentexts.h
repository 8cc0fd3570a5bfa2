// Texts spoken to who cannot read them: what the mark of the keys is on, what is carried and where
// to, and texts that appear. It asks in every pass what is there, so that no script and no class
// has to do anything for it; scripts do not notice it. The person switches it on and off.
#pragma once

#include "access/keyplayer.h"
#include "access/spokennames.h"
#include "omtask.h"

#include "platform/speech.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

class SpokenTexts {
  public:
    /// All must outlive it.
    SpokenTexts(OMApp& app, OMTrinketWindow& window, const KeyPlayer& keys,
                const RGameTexts& texts);
    ~SpokenTexts();
    SpokenTexts& operator=(SpokenTexts&&) = delete;

    /// It is silent there.
    void setInBackground(bool on);
    /// The game's table of names may have changed.
    void readAgain() { names_.readAgain(); }

  private:
    /// A text as it was seen last.
    struct Seen {
        OMSWatch trinket;
        std::string text;
        std::uint32_t sinceMs;
        bool isDone; ///< spoken, or not worth it
    };
    /// What the mark was on.
    struct Told {
        OMSWatch trinket;
        bool isBackground;
        std::size_t part;
        platform::Rect place;
        bool isCarried;
    };

    void setOn(bool on);
    void step();
    void followVoice();
    void followScene();
    void followMark();
    void tellMark(const KeyPlayer::Attention& now, platform::Speech::Turn turn);
    void tellCarried(const KeyPlayer::Attention& now, bool wasCarried);
    void followTexts();
    [[nodiscard]] std::optional<std::string> textOf(OMTrinket& trinket) const;
    [[nodiscard]] bool wasJustSpoken(const std::string& text);
    void speak(const std::string& text, platform::Speech::Turn turn);

    OMApp& app_;
    OMTrinketWindow& window_;
    const KeyPlayer& keys_;
    const RGameTexts& texts_;
    SpokenNames names_;
    bool isInBackground_ = false;
    bool hadVoice_ = false;
    bool toldNoVoice_ = false;
    std::string scene_; ///< the script
    std::optional<Told> told_;
    std::map<const OMTrinket*, Seen> seen_;
    std::map<std::string, std::uint32_t> spokenMs_; ///< when texts were spoken, while it is short
    OMTask task_;
};

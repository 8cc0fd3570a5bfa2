// The progress screen: a panel that shows how far the player has come. It has the levels of
// activities with the one that is current, a check box for levels that change by themselves, the
// locations, and a switch for the music behind the scenes; all of it can be changed by clicks.
//
//     l=RLapTrap location [id [x y] [z]]
//
// `location` is the one that the screen is opened for, by name or number; 0 is the player's current
// one. Without an id, or with -1, the panel is that of the layout (progresslayout.h), which also
// says what else there is and where. What it shows is the world's memory (world/worldmemory.h),
// read when it is opened and after each press.
//
// The parts of the screen belong to it, lie above it, and move, hide and show with it.
#pragma once

#include "ominstalled.h"
#include "omtask.h"
#include "omticks.h"
#include "progress/progresslayout.h"
#include "progress/rlaptrapbutton.h"
#include "progress/rlaptrapworld.h"
#include "ranimation.h"
#include "world/locations.h"

#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class RText;

/// The layouts of the screens that are opened while it lives, in place of the built-in ones.
struct LapTrapLayouts : OMInstalled<LapTrapLayouts> {
    explicit LapTrapLayouts(ProgressLayouts layouts) : all(std::move(layouts)) {}

    ProgressLayouts all;
};

/// What the screen says: sounds that follow each other.
class LapTrapSpeech {
  public:
    LapTrapSpeech() = default;
    ~LapTrapSpeech() { stop(); }
    LapTrapSpeech& operator=(LapTrapSpeech&&) = delete;

    /// When all that was to be said before has ended. OMEffectSounds::kNoSound is silent; without
    /// sounds a failed check, and no effect.
    void say(int sound);
    /// Ends the sound that plays; the others are not played.
    void stop();

  private:
    void next();

    std::deque<int> waiting_;
    std::shared_ptr<int> handle_; ///< of the sound that plays; null while none does
};

class RLapTrap final : public RAnimation {
  public:
    static const OMSClass kClass;

    static constexpr int kLayoutPicture = -1; ///< as the id of the panel
    static constexpr int kHintTicks = 420;    ///< after opening; 60 a second

    /// An empty panel, which cannot be moved by the mouse.
    RLapTrap(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y);
    ~RLapTrap() override;

    [[nodiscard]] static std::unique_ptr<OMScriptableObject> createFromScript();

    /// None.
    [[nodiscard]] std::unique_ptr<OMScriptableObject> duplicate() override { return nullptr; }

    // Of the map button that was clicked last; kNowhere and empty before.
    [[nodiscard]] int selectedLocation() const { return selected_; }
    [[nodiscard]] std::string selectedLocationName() const;

    void setAttribute(Attribute which, int value, int second = 0) override;

  private:
    void onRetire() override;
    struct LevelGroup {
        LevelGroup(int at, BigOleButtonGroup::PressedLink pressed)
            : location(at), buttons(std::move(pressed)) {}

        int location;
        BigOleButtonGroup buttons;
    };

    // Building.
    void open(int location, std::unique_ptr<LapTrapWorld> world);
    void build(const ProgressLayout& layout);
    void buildPart(const ProgressPart& part);
    void buildLevels(const ProgressLevels& levels);
    void buildRefusal(const ProgressPicture& picture);
    void buildName(const ProgressName& name);
    void introduce(const std::string& flag, int sound);
    void startHint(int sound);
    [[nodiscard]] int resolved(int location) const;
    /// One of its parts, which is then owned by it; null, after a failed check where nothing can be
    /// located, without a picture.
    template <class Part, class... Arguments>
    Part* add(const ProgressPicture& picture, Arguments... arguments);
    void adopt(std::unique_ptr<OMTrinket> part, int depth);

    // What is pressed.
    void levelPressed(const LevelGroup& group, int level);
    void checkBoxPressed(AutoLevelCheckBox& box);
    void musicPressed(int button);
    void mapButtonPressed(int location);
    void close();

    [[nodiscard]] bool isFixed(int location);
    void showRefusal();
    void refusalEnded();
    /// While the panel is shown.
    void showParts();
    /// Shows the values that the world has now.
    void refresh();

    int location_ = world::kNowhere;
    int selected_ = world::kNowhere;
    bool inGame_ = false;                 ///< else practice
    std::unique_ptr<LapTrapWorld> world_; ///< null until it is opened
    LapTrapSpeech speech_;

    struct Part {
        std::unique_ptr<OMTrinket> trinket;
        int depth; ///< above the panel
    };
    std::vector<Part> parts_;
    std::vector<int> missing_; ///< pictures that are not there, and were asked for once
    // Some of them.
    std::deque<LevelGroup> levels_;
    std::vector<AutoLevelCheckBox*> checkBoxes_;
    std::vector<MapButton*> mapButtons_;
    BigOleButtonGroup music_;
    RText* name_ = nullptr;
    OMAnimation* refusal_ = nullptr;
    bool refusing_ = false; ///< it plays

    OMTickClock clock_;
    std::unique_ptr<OMTask> hint_; ///< until it was given, or something was pressed
};

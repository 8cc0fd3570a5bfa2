// A character: a figure that stands in its settle pose, plays animations and speaks when it is
// asked to, and fidgets by itself while it has nothing else to do.
//
//     c=RCharacter settlePose x y z        11111 as x or y: the place embedded in each animation
//
// It is a group whose members it owns: a layer for the settle pose, one for what is played, one for
// each fidget and, while speeches are cached, one for each animation of speeches. They are drawn
// from the same place, and those that have their turn are shown.
//
// The event "finished" and the links of those who wait come last in everything: the character may
// be destroyed in them.
#pragma once

#include "fidgetgroup.h"
#include "ommultitrinket.h"
#include "omtask.h"
#include "omticks.h"
#include "speechrecords.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

class OMAnimation;
class RCharacterLayer;

class RCharacter final : public OMMultiTrinket {
  public:
    static const OMSClass kClass;

    static constexpr int kNoSettlePose = -1;

    /// `at` may have the coordinate OMAnimation::kEmbedded. A settle pose that cannot be loaded is
    /// reported, and the character goes without.
    RCharacter(OMTrinketWindow& window, int settlePose, platform::Point at);
    /// Who waits for what it plays is told when all of it is gone.
    ~RCharacter() override;

    /// With the arguments of the script; null without a main window.
    [[nodiscard]] static std::unique_ptr<OMScriptableObject> createFromScript();

    /// Characters cannot be copied.
    [[nodiscard]] std::unique_ptr<OMScriptableObject> duplicate() override { return nullptr; }

    [[nodiscard]] bool animatesSettled() const { return animateSettled_; }
    void setAnimateSettled(bool on);
    [[nodiscard]] int settlePoseId() const { return settlePoseId_; }
    /// kNoSettlePose for none.
    void setSettlePoseId(int id);
    /// An animation or a speech, paused ones too.
    [[nodiscard]] bool isPlaying() const { return playedLayer() != kNone; }

    // What it plays. `done` is called once, in any case: when it has ended, when the character goes
    // meanwhile, and at once when it is refused.

    /// `repeat` times in all: once for 0 and without a number, for ever below 0. Without
    /// `stayVisible` the character hides at the end.
    void playAnim(int id, std::optional<int> repeat, bool stayVisible, OMLink done);
    /// Plays the sequence that has the speech. The first of the RSpeechRecords' listeners is told
    /// for 0 and without `listener`, else the second one. Stays visible without `stayVisible`.
    void playSpeech(int speech, std::optional<bool> stayVisible, std::optional<int> listener,
                    OMLink done);
    /// What plays, or else the settle pose if it moves. No fidget begins until `resume`.
    void pause();
    void resume();
    /// Ends an animation or a speech as if it had come to its end, or a fidget.
    void stop();

    // Fidgets and speeches.

    /// A group that is there gets the new interval.
    void addFidgetGroup(int group, int minimumSeconds, int maximumSeconds,
                        std::optional<bool> noRepeat);
    void addFidget(int group, int animation, std::optional<bool> hidesSettlePose);
    void removeFidgetGroup(int group);
    /// Of speeches with the same id, the one that was added first is played.
    void addSpeechAnim(int animation);

    // For scripts.

    void playAnimForScript(int id, std::optional<int> repeat, std::optional<bool> stayVisible);
    void playSpeechForScript(int speech, std::optional<bool> stayVisible,
                             std::optional<int> listener);
    /// Lasts until the animation or speech ends. Nobody waits for anything else that it does.
    void resumeForScript();
    void setAOCursor(std::optional<int> normal, std::optional<int> grab);

    /// The layers stay.
    void removeAll() override;

  private:
    void onRetire() override;
    struct Playing {
        FidgetGroup* group;
        Fidget fidget;
    };

    static constexpr int kNone = -1; ///< layer

    void moveMembers(int dx, int dy) override;

    // Layers.
    [[nodiscard]] std::unique_ptr<OMAnimation> load(int id) const;
    void addLayer(int index, std::unique_ptr<OMAnimation> animation);
    [[nodiscard]] RCharacterLayer* layer(int index) const;
    [[nodiscard]] int freeLayer(int from) const;
    void show(int index, bool shown);
    void arrange();
    void animateSettlePose();
    /// What `pause` pauses; null when nothing moves.
    [[nodiscard]] RCharacterLayer* movingLayer() const;

    // Animations and speeches.
    [[nodiscard]] int playedLayer() const;
    void begin(int index, int sequence, int repeat, bool stayVisible, OMLink done);
    void ended();
    [[nodiscard]] const RSpeechRecord* findSpeech(int speech) const;
    [[nodiscard]] int speechLayer(int animation);

    // Fidgets.
    [[nodiscard]] FidgetGroup* findGroup(int id) const;
    void runFidgets();
    void beginFidget(FidgetGroup& group);
    void endFidget();

    platform::Point origin_;  ///< from which layers are drawn, when the character has not moved
    platform::Point moved_{}; ///< by so much since
    int settlePoseId_ = kNoSettlePose;
    bool animateSettled_ = false;
    bool paused_ = false;
    bool stayVisible_ = true;
    int animationLayer_ = kNone; ///< while an animation plays
    int speechLayer_ = kNone;    ///< while a speech plays
    int nextFidgetLayer_;
    OMLink done_;
    std::optional<RStreamedSpeech> streamed_;
    std::map<int, std::unique_ptr<RCharacterLayer>> layers_;
    std::map<int, int> cachedSpeeches_; ///< layers, by animation
    std::set<int> shown_;               ///< the layers that are seen while the character is
    std::vector<RSpeechRecord> speeches_;

    OMTickClock clock_;
    std::vector<std::unique_ptr<FidgetGroup>> groups_;
    std::optional<Playing> fidget_;
    std::unique_ptr<OMTask> fidgetTimer_; ///< while there are groups
};

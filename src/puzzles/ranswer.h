// An answer of a puzzle: an animation that the player picks up, drags, and drops on a container.
//
//     a=RGraphicAnswer id z          the base picture at the position embedded in the resource
//     a=RGraphicAnswer id x y z      id -1: no base picture
//
// Where it is made is its home, to which it returns when no container takes it. The container that
// it is in and the puzzle that it belongs to are told when it goes.
#pragma once

#include "omid.h"
#include "ominstalled.h"
#include "omsclass.h"
#include "ranimation.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class RAnswer;
class RContainer;

/// Who hears what the player does with an answer: its puzzle. One that is destroyed first takes
/// itself back.
class AnswerKeeper {
  public:
    virtual void answerPickedUp(RAnswer& answer) = 0;
    /// Positions of the pointer in window pixels.
    virtual void answerDragged(RAnswer& answer, platform::Point position) = 0;
    virtual void answerDropped(RAnswer& answer, platform::Point position) = 0;
    /// Where it may be dropped: parts of containers, in window pixels.
    [[nodiscard]] virtual std::vector<platform::Rect> answerPlaces(const RAnswer& answer) const = 0;
    /// It is being destroyed, or has got another keeper.
    virtual void answerGoes(RAnswer& answer) = 0;

  protected:
    ~AnswerKeeper() = default;
};

/// Sounds of an answer, by the numbers of their resources.
struct AnswerSounds {
    static constexpr std::int16_t kNone = -1;

    std::int16_t goHome = kNone;
    std::int16_t pickUp = kNone;
    std::int16_t snap = kNone;
};

/// What new answers begin with; none without it.
struct RDefaultAnswerSounds : OMInstalled<RDefaultAnswerSounds>, AnswerSounds {};

class RAnswer : public RAnimation {
  public:
    static const OMSClass kClass;

    RAnswer(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y);
    ~RAnswer() override { retire(); }

    // For puzzles and containers.

    [[nodiscard]] AnswerKeeper* keeper() const { return keeper_; }
    /// The one before is told that the answer goes. Null: nobody.
    void setKeeper(AnswerKeeper* keeper);
    /// Null for none.
    [[nodiscard]] RContainer* container() const;
    /// Tells by its events that it has left one container and gets into another. Does not put it
    /// there. What a handler sets meanwhile counts.
    void setContainer(RContainer* container);
    /// Takes back without events what `setContainer` said of one that has not got the answer.
    void syncContainer();
    /// Out of its container, if it is in one, which is told as well as the answer. True when it is
    /// still there then, and in none.
    bool leaveContainer();

    /// What of the drawn rectangle counts for hits and fits, by its insets.
    [[nodiscard]] platform::Rect effectiveRectangle() const;
    [[nodiscard]] bool isHeld() const { return held_; }

    /// The point of it that is to be over a container; window pixels.
    [[nodiscard]] virtual platform::Point aim() const;
    /// Of a member of a group nothing is known.
    [[nodiscard]] HandUse handUse() const override;
    [[nodiscard]] std::optional<std::vector<platform::Rect>> dropPlaces() const override;

    /// It cannot be picked up until `unanchor`.
    virtual void anchor() { setMovable(false); }
    virtual void unanchor() { setMovable(true); }
    /// Anchored for as long as it is in a disabled container, unless it is anchored anyhow. Whoever
    /// anchors or releases it meanwhile decides what it is afterwards.
    void anchorForContainer();
    void endAnchorForContainer();
    /// Unless it is held.
    virtual void goHome();
    /// Has its effective rectangle in the middle of `target`, by way of the left upper corner.
    virtual void snapToRectangle(const platform::Rect& target);

    // For scripts.

    [[nodiscard]] const std::string& attribute() const { return attribute_; }
    void setAttributeText(const std::string& text) { attribute_ = text; }
    /// The attribute, until it is written.
    [[nodiscard]] std::string value() const { return value_.value_or(attribute_); }
    void setValue(const std::string& text) { value_ = text; }
    /// Of the base picture.
    [[nodiscard]] int graphicID() const { return resourceId(); }
    void setGraphicID(int id);

    [[nodiscard]] int extraBottom() const { return extra_.bottom; }
    void setExtraBottom(int pixels) { extra_.bottom = inset(pixels); }
    [[nodiscard]] int extraLeft() const { return extra_.left; }
    void setExtraLeft(int pixels) { extra_.left = inset(pixels); }
    [[nodiscard]] int extraRight() const { return extra_.right; }
    void setExtraRight(int pixels) { extra_.right = inset(pixels); }
    [[nodiscard]] int extraTop() const { return extra_.top; }
    void setExtraTop(int pixels) { extra_.top = inset(pixels); }
    [[nodiscard]] int homeX() const { return home_.x; }
    void setHomeX(int x);
    [[nodiscard]] int homeY() const { return home_.y; }
    void setHomeY(int y);
    [[nodiscard]] bool isUsed() const { return static_cast<bool>(container_); }
    [[nodiscard]] int goHomeSound() const { return sounds_.goHome; }
    void setGoHomeSound(int id) { sounds_.goHome = OMNarrowId(id); }
    [[nodiscard]] int pickUpSound() const { return sounds_.pickUp; }
    void setPickUpSound(int id) { sounds_.pickUp = OMNarrowId(id); }
    [[nodiscard]] int snapSound() const { return sounds_.snap; }
    void setSnapSound(int id) { sounds_.snap = OMNarrowId(id); }

    void setAttribute(Attribute which, int value, int second = 0) override;
    void onBeginDrag(platform::Point point) override;
    void dragBy(int& dx, int& dy) override;
    void onDrop(platform::Point point) override;
    void onReleaseLost() override;

  protected:
    void onRetire() override;
    /// A copy is in no container, and nobody's.
    RAnswer(const RAnswer& other);

    /// For the base picture; kinds may get it in another way.
    [[nodiscard]] static std::shared_ptr<AOImage> imageOf(int id) {
        return AOImage::locateOrBlank(id);
    }
    static constexpr std::string_view kArguments =
        "animation (-1: none) [z] | animation (-1: none) x y z";
    /// How the kinds are created, with the arguments of a script.
    template <class Class>
    [[nodiscard]] static std::unique_ptr<OMScriptableObject> createAnswer() {
        const ScriptArguments arguments = readArguments();
        auto answer = createFrom<Class>(arguments, Class::imageOf(arguments.id));
        if (answer) answer->homeZ_ = answer->z();
        return answer;
    }

  private:
    friend class RContainer; // tells whose list it is in

    [[nodiscard]] static int inset(int pixels);
    static void playSound(int id);
    void moveCorner(platform::Point corner);
    void drop(platform::Point point);

    /// Widths of the margins, not a rectangle in the window.
    platform::Rect extra_{};
    platform::Point home_;       ///< of its corner, when it was set
    platform::Point homeOrigin_; ///< the same place for every frame
    int homeZ_;
    bool held_ = false;
    bool anchoredByContainer_ = false; ///< and by nobody else
    AnswerKeeper* keeper_ = nullptr;
    OMSWatch container_;            ///< as scripts know it
    OMSWatch next_;                 ///< while it changes: where to
    bool changesContainer_ = false; ///< its events are being raised
    RContainer* holder_ = nullptr;  ///< in whose list it is
    unsigned containerChanges_ = 0; ///< a handler of one may make another
    AnswerSounds sounds_;
    std::string attribute_;
    std::optional<std::string> value_; ///< once it was written
};

// Rows that kinds share.
inline constexpr OMSEntry kAnswerTextRows[] = {
    oms::data<&RAnswer::attribute, &RAnswer::setAttributeText>(
        "attribute", "text that attribute containers compare"),
    oms::data<&RAnswer::value, &RAnswer::setValue>(
        "value", "number that containers count; the attribute, until it is written"),
};
inline constexpr OMSEntry kAnswerPictureRows[] = {
    oms::data<&RAnswer::graphicID, &RAnswer::setGraphicID>("graphicID", "its picture; -1: none")
        .of("animation"),
};
/// Containers have them too.
inline constexpr OMSEntry kPlayRows[] = {
    oms::lasting<&RAnimation::play>("playAnimation"),
    oms::method<&RAnimation::endPlayback>("stopAnimation"),
};

/// An answer that is a picture.
class RGraphicAnswer final : public OMSCopied<RGraphicAnswer, RAnswer> {
  public:
    static const OMSClass kClass;

    using OMSCopied::OMSCopied;

    // For scripts.

    /// The point that decides instead of the rectangle whether it is on a container, measured from
    /// its left upper corner in pixels.
    [[nodiscard]] int hotPointX() const { return hotPoint_.x; }
    void setHotPointX(int x) { hotPoint_.x = x; }
    [[nodiscard]] int hotPointY() const { return hotPoint_.y; }
    void setHotPointY(int y) { hotPoint_.y = y; }
    [[nodiscard]] bool isUsingHotPoint() const { return usesHotPoint_; }
    void setUsingHotPoint(bool uses) { usesHotPoint_ = uses; }

    [[nodiscard]] platform::Point aim() const override;

  private:
    bool usesHotPoint_ = false;
    platform::Point hotPoint_{};
};

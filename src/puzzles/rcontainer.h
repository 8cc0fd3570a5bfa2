// A container of a puzzle: a place on the screen onto which the player drops answers. The kinds
// decide which answers they take, where these come to rest, and when the container is full and
// solved.
//
//     c=RValueContainer id z                    with a picture, at its embedded position
//     c=RValueContainer id x y z
//     c=RValueContainer -1 x y width height z   an area without a picture
//
// A container is an animation. Its answers are not its own; whichever goes first, the other is
// told. Wherever it goes its answers go too.
#pragma once

#include "omsclass.h"
#include "ranswer.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Who knows a container: its puzzles. One that is destroyed first takes itself back.
class ContainerKeeper {
  public:
    virtual void containerGoes(RContainer& container) = 0;

  protected:
    ~ContainerKeeper() = default;
};

class RContainer : public RAnimation {
  public:
    static const OMSClass kClass;

    /// How well an answer lies on a container.
    struct Hit {
        bool accepted = false;
        std::int64_t score = 0; ///< larger is better
    };

    RContainer(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y);
    ~RContainer() override { retire(); }

    // For puzzles. Handlers of the events that these raise may destroy the container.

    /// Told when it is destroyed.
    void addKeeper(ContainerKeeper& keeper) { keepers_.push_back(&keeper); }
    void removeKeeper(ContainerKeeper& keeper) { std::erase(keepers_, &keeper); }

    /// The parts of it onto whose middles an answer is dropped for each place that it can get.
    [[nodiscard]] virtual std::vector<platform::Rect> placesFor(const RAnswer& answer) const;
    /// What it thinks of the answer where it lies now, the pointer at `position` (window pixels).
    [[nodiscard]] virtual Hit hitScore(RAnswer& answer, platform::Point position) = 0;
    [[nodiscard]] virtual bool isFull() const = 0;
    [[nodiscard]] virtual bool isSolved() const = 0;
    /// Takes an answer in that is in no container, whether it is accepted or not. Raises
    /// "answerPlaced".
    virtual void placeAnswer(RAnswer& answer);
    /// Lets an answer go, which stays where it is. It may be on its way out of the world, and is
    /// told nothing but that no container has it. Raises "answerRemoved". Nothing happens for one
    /// that is not here.
    void removeAnswer(const RAnswer& answer);
    virtual void answerFliesOn(RAnswer& answer);
    virtual void answerFliesOff(RAnswer& answer);
    virtual void enable();
    virtual void disable();

    [[nodiscard]] bool contains(const RAnswer& answer) const { return answer.holder_ == this; }
    /// Width and height, which count while it has no picture.
    void setArea(platform::Point size);

    // For scripts.

    [[nodiscard]] int answerCount() const { return static_cast<int>(answers_.size()); }
    [[nodiscard]] bool isEnabled() const { return enabled_; }
    void setEnabled(bool enabled) { enabled ? enable() : disable(); }
    [[nodiscard]] bool lockCorrectAnswers() const { return locksCorrect_; }
    void setLockCorrectAnswers(bool locks) { locksCorrect_ = locks; }
    [[nodiscard]] bool rejectIncorrectAnswers() const { return rejectsIncorrect_; }
    void setRejectIncorrectAnswers(bool rejects) { rejectsIncorrect_ = rejects; }
    /// For kinds that count: the right value, or sum of values.
    [[nodiscard]] int value() const { return value_; }
    void setValue(int value) { value_ = value; }
    /// Sum of the values of its answers, those without one left out.
    [[nodiscard]] int answerValue() const;
    /// Whether the second sequence of its animation is shown, where it has one.
    [[nodiscard]] bool isHighlighted() const { return highlighted_; }
    virtual void setHighlighted(bool highlighted);

    [[nodiscard]] platform::Rect boundingRectangle() const override;
    [[nodiscard]] bool containsPoint(platform::Point point) const override;
    /// Answers move along, also in depth.
    void setAttribute(Attribute which, int value, int second = 0) override;

  protected:
    void onRetire() override;
    static constexpr int kDepthOfAnswers = 1; ///< above the container's

    /// A copy is empty.
    RContainer(const RContainer& other);

    static constexpr std::string_view kArguments =
        "animation [z] | animation x y z | -1 x y width height [z]";
    /// How the kinds are created, with the arguments of a script.
    template <class Class>
    [[nodiscard]] static std::unique_ptr<OMScriptableObject> createContainer() {
        const ScriptArguments arguments = readArguments(true);
        auto container = createFrom<Class>(arguments, AOImage::locateOrBlank(arguments.id));
        if (container && arguments.size) container->setArea(*arguments.size);
        return container;
    }

    /// In the order placed, unless the kind has another.
    [[nodiscard]] const std::vector<RAnswer*>& answers() const { return answers_; }
    /// Takes the answer in at that place of the list and raises "answerPlaced". One that is in a
    /// container stays there.
    void insertAnswer(RAnswer& answer, std::size_t index);
    /// The answer has got that place of the list, and nobody knows of it yet.
    virtual void answerEnters(const RAnswer& /*answer*/, std::size_t /*index*/) {}
    /// The answer at that place of the list is about to be taken out. It may be on its way out of
    /// the world and must not be used.
    virtual void answerLeaves(std::size_t /*index*/) {}

    /// What of the answer's effective rectangle lies on the container, in pixels.
    [[nodiscard]] std::int64_t overlapScore(const RAnswer& answer) const;
    /// Anchors all answers of a container that locks what is right.
    void lockIfSolved();

    /// A property of an answer as a text, or none without it.
    [[nodiscard]] static std::optional<std::string> textOf(RAnswer& answer,
                                                           std::string_view property);
    /// A property as a number.
    [[nodiscard]] static std::optional<int> numberOf(RAnswer& answer, std::string_view property);
    static void playSound(int id);

  private:
    /// What it was only because the container is disabled, it is no longer.
    static void release(RAnswer& answer);

    std::vector<ContainerKeeper*> keepers_;
    std::vector<RAnswer*> answers_;
    platform::Point area_{}; ///< width and height of one without a picture
    int value_ = 0;
    bool locksCorrect_ = false;
    bool rejectsIncorrect_ = false;
    bool enabled_ = true;
    bool highlighted_ = false;
};

// Rows that kinds share.
inline constexpr OMSEntry kContainerLookRows[] = {
    oms::data<&RContainer::isHighlighted, &RContainer::setHighlighted>(
        "highlighted", "its second sequence is shown"),
};
inline constexpr OMSEntry kContainerSumRows[] = {
    oms::readOnly<&RContainer::answerValue>("answerValue", "sum of the values of its answers"),
    oms::data<&RContainer::value, &RContainer::setValue>("value", "sum that is right"),
};

// Containers that have their answers in a row, in the order of their places from left to right.
//
// An answer that is placed comes before the first one whose middle lies right of its own middle.
// Then the row is packed from the left edge on. One that is taken out leaves its gap, into which
// the next may be dropped.
#pragma once

#include "rcontainer.h"

#include <string>
#include <vector>

class RowContainer : public RContainer {
  public:
    /// Above the depth of the container.
    [[nodiscard]] int deltaZ() const { return deltaZ_; }
    void setDeltaZ(int depth);
    /// Sound of answers that make room or close a gap.
    [[nodiscard]] int slideSound() const { return slideSound_; }
    void setSlideSound(int id) { slideSound_ = OMNarrowId(id); }

    /// Before, between and behind the answers that are there.
    [[nodiscard]] std::vector<platform::Rect> placesFor(const RAnswer& answer) const override;
    [[nodiscard]] Hit hitScore(RAnswer& answer, platform::Point position) override;
    [[nodiscard]] bool isFull() const override;
    void placeAnswer(RAnswer& answer) override;

  protected:
    using RContainer::RContainer;
    RowContainer(const RowContainer& other) = default;

  private:
    struct Place {
        const RAnswer* answer;
        int left; ///< from the container's left edge
    };

    [[nodiscard]] std::int64_t rowWidth() const;
    [[nodiscard]] std::size_t indexFor(const RAnswer& answer) const;
    [[nodiscard]] std::vector<Place> places() const;
    [[nodiscard]] int makeRoom(std::size_t index, int width);
    void pack();
    [[nodiscard]] bool hasMoved(const std::vector<Place>& before) const;

    int deltaZ_ = kDepthOfAnswers;
    std::int16_t slideSound_ = AnswerSounds::kNone;
};

/// Rows of all kinds.
inline constexpr OMSEntry kRowContainerRows[] = {
    oms::data<&RowContainer::deltaZ, &RowContainer::setDeltaZ>(
        "deltaZ", "depth of answers above the container's"),
    oms::data<&RowContainer::slideSound, &RowContainer::setSlideSound>(
        "slideSound", "sound of answers that move in the row; -1: none")
        .of("sound"),
};

/// Is solved when the attributes, read from left to right, make one of its match strings.
class RHorizontalContainer final : public OMSCopied<RHorizontalContainer, RowContainer> {
  public:
    static const OMSClass kClass;

    using OMSCopied::OMSCopied;

    // For scripts.

    /// What the row reads now.
    [[nodiscard]] std::string answerMatchString() const;
    /// The only match string from now on.
    void setAnswerMatchString(const std::string& text) { matches_ = {text}; }
    void addAnswerMatch(const std::string& text) { matches_.push_back(text); }
    /// Tells the log what they were and forgets them.
    void dumpAnswerMatches();

    [[nodiscard]] bool isSolved() const override;

  private:
    std::vector<std::string> matches_;
};

/// Is solved when the values add up to its own.
class RHorizontalValueContainer final : public OMSCopied<RHorizontalValueContainer, RowContainer> {
  public:
    static const OMSClass kClass;

    using OMSCopied::OMSCopied;

    [[nodiscard]] bool isSolved() const override { return answerValue() == value(); }
};

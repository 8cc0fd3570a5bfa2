// A container in which answers are stacked from the bottom up; solved when their values add up to
// its own. See rcontainer.h.
#pragma once

#include "rcontainer.h"

class RStackingContainer final : public OMSCopied<RStackingContainer, RContainer> {
  public:
    static const OMSClass kClass;

    static constexpr int kAnyCount = -1;

    using OMSCopied::OMSCopied;
    RStackingContainer(const RStackingContainer& other);

    // For scripts.

    /// Sound of answers that fall because one below was taken out.
    [[nodiscard]] int droppedSound() const { return droppedSound_; }
    void setDroppedSound(int id) { droppedSound_ = OMNarrowId(id); }
    /// How many answers it must have to be solved, or kAnyCount.
    [[nodiscard]] int solvedAnswerCount() const { return solvedCount_; }
    void setSolvedAnswerCount(int count) { solvedCount_ = count; }

    [[nodiscard]] Hit hitScore(RAnswer& answer, platform::Point position) override;
    [[nodiscard]] bool isFull() const override;
    [[nodiscard]] bool isSolved() const override;
    void placeAnswer(RAnswer& answer) override;

  protected:
    void answerEnters(const RAnswer& answer, std::size_t index) override;
    void answerLeaves(std::size_t index) override;

  private:
    [[nodiscard]] std::int64_t stackHeight() const;

    int solvedCount_ = kAnyCount;
    std::int16_t droppedSound_ = AnswerSounds::kNone;
    std::vector<int> heights_; ///< of its answers, from the bottom up, as they were when placed
};

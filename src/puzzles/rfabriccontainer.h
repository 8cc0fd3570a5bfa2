// A piece of cloth in segments side by side, which answers cover: each as many as its value says.
// Solved when the right number of segments is covered. See rcontainer.h.
//
// The first frame of its picture shows it bare, each further one a segment more that is covered.
#pragma once

#include "rcontainer.h"

#include <memory>

class RFabricContainer final : public OMSCopied<RFabricContainer, RContainer> {
  public:
    static const OMSClass kClass;

    static constexpr int kPlainSegments = 10; ///< where the picture does not tell
    static constexpr int kNoInfo = -1;

    RFabricContainer(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y);
    RFabricContainer(const RFabricContainer& other);
    ~RFabricContainer() override;

    [[nodiscard]] int segmentCount() const;
    [[nodiscard]] int coveredSegments() const;

    // For scripts.

    /// How many segments are to be covered. A warning, and no effect, above `segmentCount`.
    [[nodiscard]] int correctSegments() const { return correct_; }
    void setCorrectSegments(int segments);
    /// Picture that tells how many segments are covered: its frames are counted as the cloth's.
    [[nodiscard]] int infoAOID() const { return infoId_; }
    void setInfoAOID(int id);
    /// From the container's bottom down to the top of that picture; below 0 from its top up to the
    /// picture's bottom.
    [[nodiscard]] int infoVerticalOffset() const { return infoOffset_; }
    void setInfoVerticalOffset(int pixels);

    [[nodiscard]] Hit hitScore(RAnswer& answer, platform::Point position) override;
    [[nodiscard]] bool isFull() const override { return !freeRun(1); }
    [[nodiscard]] bool isSolved() const override { return coveredSegments() == correct_; }
    void placeAnswer(RAnswer& answer) override;
    void setHighlighted(bool) override {}
    void setAttribute(Attribute which, int value, int second = 0) override;

  protected:
    void onRetire() override;
    void answerEnters(const RAnswer& answer, std::size_t index) override;
    void answerLeaves(std::size_t index) override;

  private:
    /// Segments side by side, counted from 0 on the left.
    struct Run {
        int first;
        int count;
    };

    [[nodiscard]] static int segmentsOf(RAnswer& answer);
    /// The first segment of as many free ones in a row.
    [[nodiscard]] std::optional<int> freeRun(int count) const;
    void showCovered();
    void placeInfo();

    int correct_ = 0;
    int infoId_ = kNoInfo;
    int infoOffset_ = 0;
    std::unique_ptr<OMAnimation> info_;
    std::vector<Run> runs_; ///< of its answers
    Run entering_{0, 0};    ///< of the answer that is being placed
};

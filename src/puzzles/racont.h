// Containers for one answer, which is right or not: the one whose attribute is the container's, or
// the one whose value is. See rcontainer.h.
#pragma once

#include "omtask.h"
#include "rcontainer.h"

#include <memory>

class SingleContainer : public RContainer {
  public:
    [[nodiscard]] Hit hitScore(RAnswer& answer, platform::Point position) final;
    [[nodiscard]] bool isFull() const final { return answers().size() == 1; }
    [[nodiscard]] bool isSolved() const final { return isFull() && isRight(*answers().front()); }
    /// In the middle of where it is to rest, above the container.
    void placeAnswer(RAnswer& answer) final;

  protected:
    using RContainer::RContainer;
    SingleContainer(const SingleContainer& other) = default;

    [[nodiscard]] virtual bool isRight(RAnswer& answer) const = 0;
    /// How well it lies on the container; 0: not at all.
    [[nodiscard]] virtual std::int64_t scoreOf(RAnswer& answer) { return overlapScore(answer); }
    /// Where it is to rest.
    [[nodiscard]] virtual platform::Rect targetFor(RAnswer&) const { return boundingRectangle(); }
};

/// Answers with a hot point are on it where that point is, on request only where its picture has a
/// pixel.
class RAttributeContainer final : public OMSCopied<RAttributeContainer, SingleContainer> {
  public:
    static const OMSClass kClass;

    using OMSCopied::OMSCopied;
    RAttributeContainer(const RAttributeContainer& other);

    // For scripts.

    /// Whether answers come to rest with their left upper corner at the anchor point, not in the
    /// middle.
    [[nodiscard]] bool anchorAnswerAtPoint() const { return anchorsAtPoint_; }
    void setAnchorAnswerAtPoint(bool anchors) { anchorsAtPoint_ = anchors; }
    /// From the container's left upper corner.
    [[nodiscard]] int answerAnchorPointX() const { return anchorPoint_.x; }
    void setAnswerAnchorPointX(int x);
    [[nodiscard]] int answerAnchorPointY() const { return anchorPoint_.y; }
    void setAnswerAnchorPointY(int y);
    /// Name of the property of answers that is compared.
    [[nodiscard]] const std::string& answerProperty() const { return answerProperty_; }
    void setAnswerProperty(const std::string& name) { answerProperty_ = name; }
    [[nodiscard]] const std::string& attribute() const { return attribute_; }
    void setAttributeText(const std::string& text) { attribute_ = text; }
    [[nodiscard]] bool doPixelCompare() const { return comparesPixels_; }
    void setDoPixelCompare(bool compares);

  private:
    /// From the answer's left upper corner; none while it does not use one.
    [[nodiscard]] static std::optional<platform::Point> hotPointOf(RAnswer& answer);
    [[nodiscard]] std::int64_t scoreOf(RAnswer& answer) override;
    [[nodiscard]] platform::Rect targetFor(RAnswer& answer) const override;
    [[nodiscard]] std::int64_t pixelScore(const RAnswer& answer,
                                          std::optional<platform::Point> hotPoint);
    void complain();
    [[nodiscard]] bool isRight(RAnswer& answer) const override {
        return textOf(answer, answerProperty_) == attribute_;
    }

    std::string attribute_;
    std::string answerProperty_ = "attribute";
    bool comparesPixels_ = false;
    bool complained_ = false; ///< of an answer without hot point
    std::unique_ptr<OMTask> complaint_;
    bool anchorsAtPoint_ = false;
    platform::Point anchorPoint_{};
};

class RValueContainer final : public OMSCopied<RValueContainer, SingleContainer> {
  public:
    static const OMSClass kClass;

    using OMSCopied::OMSCopied;

  private:
    [[nodiscard]] bool isRight(RAnswer& answer) const override {
        return numberOf(answer, "value") == value();
    }
};

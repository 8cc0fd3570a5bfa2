// A container for the one answer whose attribute is the container's. Answers with a hot point are
// on it where that point is, on request only where its picture has a pixel. See rcontainer.h.
#pragma once

#include "omtask.h"
#include "singlecontainer.h"

#include <memory>

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

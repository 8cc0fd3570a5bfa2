// A row of answers that is solved when their values add up to its own. See rowcontainer.h.
#pragma once

#include "rowcontainer.h"

class RHorizontalValueContainer final : public RowContainer {
  public:
    static const OMSClass kClass;

    RHorizontalValueContainer(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id,
                              int x, int y)
        : RowContainer(window, std::move(image), id, x, y) {}

    [[nodiscard]] std::unique_ptr<OMScriptableObject> duplicate() override;

    // For scripts.

    /// Sum of the values of its answers.
    [[nodiscard]] int answerValue() const { return sumOfValues(); }
    [[nodiscard]] int value() const { return value_; }
    void setValue(int value) { value_ = value; }

    [[nodiscard]] bool isSolved() const override { return answerValue() == value_; }

  private:
    RHorizontalValueContainer(const RHorizontalValueContainer& other) = default;

    int value_ = 0;
};

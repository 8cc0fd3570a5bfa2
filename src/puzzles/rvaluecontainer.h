// A container for the one answer whose value is the container's. See rcontainer.h.
#pragma once

#include "rcontainer.h"

class RValueContainer final : public RContainer {
  public:
    static const OMSClass kClass;

    using RContainer::RContainer;

    [[nodiscard]] std::unique_ptr<OMScriptableObject> duplicate() override;

    [[nodiscard]] int value() const { return value_; }
    void setValue(int value) { value_ = value; }

    [[nodiscard]] Hit hitScore(RAnswer& answer, platform::Point position) override;
    [[nodiscard]] bool isFull() const override { return answers().size() == 1; }
    [[nodiscard]] bool isSolved() const override { return isFull() && isRight(*answers().front()); }
    void placeAnswer(RAnswer& answer) override;

  private:
    RValueContainer(const RValueContainer& other) = default;

    [[nodiscard]] bool isRight(RAnswer& answer) const {
        return numberOf(answer, "value") == value_;
    }

    int value_ = 0;
};

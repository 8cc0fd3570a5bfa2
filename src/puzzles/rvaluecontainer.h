// A container for the one answer whose value is the container's. See rcontainer.h.
#pragma once

#include "singlecontainer.h"

class RValueContainer final : public SingleContainer {
  public:
    static const OMSClass kClass;

    RValueContainer(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y)
        : SingleContainer(window, std::move(image), id, x, y) {}

    [[nodiscard]] std::unique_ptr<OMScriptableObject> duplicate() override;

    [[nodiscard]] int value() const { return value_; }
    void setValue(int value) { value_ = value; }

  private:
    RValueContainer(const RValueContainer& other) = default;

    [[nodiscard]] bool isRight(RAnswer& answer) const override {
        return numberOf(answer, "value") == value_;
    }

    int value_ = 0;
};

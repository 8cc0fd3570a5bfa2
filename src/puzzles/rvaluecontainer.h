// A container for the one answer whose value is the container's. See rcontainer.h.
#pragma once

#include "singlecontainer.h"

class RValueContainer final : public OMSCopied<RValueContainer, SingleContainer> {
  public:
    static const OMSClass kClass;

    using OMSCopied::OMSCopied;

  private:
    [[nodiscard]] bool isRight(RAnswer& answer) const override {
        return numberOf(answer, "value") == value();
    }
};

// A row of answers that is solved when their values add up to its own. See rowcontainer.h.
#pragma once

#include "rowcontainer.h"

class RHorizontalValueContainer final : public OMSCopied<RHorizontalValueContainer, RowContainer> {
  public:
    static const OMSClass kClass;

    using OMSCopied::OMSCopied;

    [[nodiscard]] bool isSolved() const override { return answerValue() == value(); }
};

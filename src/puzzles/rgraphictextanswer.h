// An answer that is a picture with a text. See ranswer.h for what all answers have.
//
//     a=RGraphicTextAnswer id z
//     a=RGraphicTextAnswer id x y z      id -1: a text without a picture
#pragma once

#include "labelledanswer.h"

class RGraphicTextAnswer final : public OMSCopied<RGraphicTextAnswer, LabelledAnswer> {
  public:
    static const OMSClass kClass;

    RGraphicTextAnswer(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x,
                       int y);

  private:
    static constexpr std::size_t kTexts = 1;
    static constexpr std::size_t kPictures = 0; ///< besides the base picture
};

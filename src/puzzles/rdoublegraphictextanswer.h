// An answer of a base picture with two further pictures and two texts, such as a fraction or a pair
// of things. See ranswer.h for what all answers have.
//
//     a=RDoubleGraphicTextAnswer id z
//     a=RDoubleGraphicTextAnswer id x y z      id -1: no base picture
#pragma once

#include "labelledanswer.h"

class RDoubleGraphicTextAnswer final : public OMSCopied<RDoubleGraphicTextAnswer, LabelledAnswer> {
  public:
    static const OMSClass kClass;

    RDoubleGraphicTextAnswer(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x,
                             int y);

    // For scripts.

    /// Of the further pictures, numbered from 0.
    template <std::size_t kNumber>
    void setPictureID(int id) {
        setPicture(kNumber, pictureOf(id), id);
    }

  private:
    static constexpr std::size_t kTexts = 2;
    static constexpr std::size_t kPictures = 2; ///< besides the base picture

    friend class RAnswer; // asks for the base picture

    [[nodiscard]] static std::shared_ptr<AOImage> imageOf(int id);
    /// Null: none.
    [[nodiscard]] static std::shared_ptr<AOImage> pictureOf(int id);
};

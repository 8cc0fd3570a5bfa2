#include "rgraphictextanswer.h"

#include "omsclass.h"

namespace {

constexpr OMSEntry kRGraphicTextAnswerRows[] = {
    oms::data<&RGraphicTextAnswer::text<0>, &RGraphicTextAnswer::setText<0>>(
        "text", "what is written on it"),
    oms::data<&RGraphicTextAnswer::textColorIndex, &RGraphicTextAnswer::setTextColorIndex>(
        "textColorIndex", "palette index, 0 to 255"),
    oms::data<&RGraphicTextAnswer::textOffsetX<0>, &RGraphicTextAnswer::setTextOffsetX<0>>(
        "textOffsetX", "of the text's box from the picture's corner"),
    oms::data<&RGraphicTextAnswer::textOffsetY<0>, &RGraphicTextAnswer::setTextOffsetY<0>>(
        "textOffsetY", "as textOffsetX"),
    oms::method<&RGraphicTextAnswer::chooseFont>("setFont", "id | face [size [style]]"),
};

constexpr auto kRGraphicTextAnswerVocabulary =
    oms::joined(kRGraphicTextAnswerRows, kAnswerTextRows, kAnswerPictureRows, kPlayRows);

} // namespace

const OMSClass RGraphicTextAnswer::kClass{"RGraphicTextAnswer", &RAnswer::kClass,
                                          kRGraphicTextAnswerVocabulary,
                                          &createAnswer<RGraphicTextAnswer>};

RGraphicTextAnswer::RGraphicTextAnswer(OMTrinketWindow& window, std::shared_ptr<AOImage> image,
                                       int id, int x, int y)
    : OMSCopied(window, std::move(image), id, x, y, "URL has to be installed in RGraphicTextAnswer",
                kTexts, kPictures) {}

#include "rgraphictextanswer.h"

#include "omsclass.h"

namespace {

using Answer = RGraphicTextAnswer;

constexpr OMSEntry kVocabulary[] = {
    oms::data<&RAnswer::attribute, &RAnswer::setAttributeText>(
        "attribute", "text that attribute containers compare"),
    oms::data<&RAnswer::graphicID, &RAnswer::setGraphicID>("graphicID", "its picture; -1: none"),
    oms::data<&Answer::text<0>, &Answer::setText<0>>("text", "what is written on it"),
    oms::data<&Answer::textColorIndex, &Answer::setTextColorIndex>("textColorIndex",
                                                                   "palette index, 0 to 255"),
    oms::data<&Answer::textOffsetX<0>, &Answer::setTextOffsetX<0>>(
        "textOffsetX", "of the text's box from the picture's corner"),
    oms::data<&Answer::textOffsetY<0>, &Answer::setTextOffsetY<0>>("textOffsetY", "as textOffsetX"),
    oms::data<&RAnswer::value, &RAnswer::setValue>(
        "value", "number that containers count; the attribute, until it is written"),
    oms::lasting<&RAnswer::playAnimation>("playAnimation"),
    oms::method<&Answer::chooseFont>("setFont", "id | face size [style]"),
    oms::method<&RAnswer::stopAnimation>("stopAnimation"),
};

constexpr std::size_t kTexts = 1;
constexpr std::size_t kPictures = 0; ///< besides the base picture

} // namespace

const OMSClass RGraphicTextAnswer::kClass{"RGraphicTextAnswer", &RAnswer::kClass, kVocabulary,
                                          &createAnswer<RGraphicTextAnswer>};

RGraphicTextAnswer::RGraphicTextAnswer(OMTrinketWindow& window, std::shared_ptr<AOImage> image,
                                       int id, int x, int y)
    : LabelledAnswer(window, std::move(image), id, x, y,
                     "URL has to be installed in RGraphicTextAnswer", kTexts, kPictures) {}

std::unique_ptr<OMScriptableObject> RGraphicTextAnswer::duplicate() {
    return std::unique_ptr<OMScriptableObject>(new RGraphicTextAnswer(*this));
}

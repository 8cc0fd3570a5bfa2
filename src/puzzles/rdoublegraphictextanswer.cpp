#include "rdoublegraphictextanswer.h"

#include "omdebug.h"
#include "omsclass.h"

namespace {

using Answer = RDoubleGraphicTextAnswer;

constexpr OMSEntry kVocabulary[] = {
    oms::data<&RAnswer::attribute, &RAnswer::setAttributeText>(
        "attribute", "text that attribute containers compare"),
    oms::data<&Answer::pictureID<0>, &Answer::setPictureID<0>>("graphic1ID", "a picture; -1: none"),
    oms::data<&Answer::pictureOffsetZ<0>, &Answer::setPictureOffsetZ<0>>(
        "graphic1OffsetZ", "below 0: behind the base picture; above 0: before the texts"),
    oms::data<&Answer::pictureID<1>, &Answer::setPictureID<1>>("graphic2ID", "a picture; -1: none"),
    oms::data<&Answer::pictureOffsetZ<1>, &Answer::setPictureOffsetZ<1>>("graphic2OffsetZ",
                                                                         "as graphic1OffsetZ"),
    oms::data<&Answer::text<0>, &Answer::setText<0>>("text1", "what is written on it"),
    oms::data<&Answer::text<1>, &Answer::setText<1>>("text2", "what is written on it too"),
    oms::data<&Answer::textColorIndex, &Answer::setTextColorIndex>(
        "textColorIndex", "palette index of both texts, 0 to 255"),
    oms::data<&Answer::textOffsetX<0>, &Answer::setTextOffsetX<0>>(
        "text1OffsetX", "of the text's box from the base picture's corner"),
    oms::data<&Answer::textOffsetY<0>, &Answer::setTextOffsetY<0>>("text1OffsetY",
                                                                   "as text1OffsetX"),
    oms::data<&Answer::textOffsetX<1>, &Answer::setTextOffsetX<1>>("text2OffsetX",
                                                                   "as text1OffsetX"),
    oms::data<&Answer::textOffsetY<1>, &Answer::setTextOffsetY<1>>("text2OffsetY",
                                                                   "as text1OffsetX"),
    oms::data<&RAnswer::value, &RAnswer::setValue>(
        "value", "number that containers count; the attribute, until it is written"),
    oms::method<&Answer::playAnimations>("playAnimations"),
    oms::method<&Answer::chooseFont>("setFont", "id | face size [style]"),
    oms::method<&Answer::stopAnimations>("stopAnimations"),
};

constexpr std::size_t kTexts = 2;
constexpr std::size_t kPictures = 2; ///< besides the base picture

} // namespace

const OMSClass RDoubleGraphicTextAnswer::kClass{"RDoubleGraphicTextAnswer", &RAnswer::kClass,
                                                kVocabulary,
                                                &createAnswer<RDoubleGraphicTextAnswer>};

RDoubleGraphicTextAnswer::RDoubleGraphicTextAnswer(OMTrinketWindow& window,
                                                   std::shared_ptr<AOImage> image, int id, int x,
                                                   int y)
    : LabelledAnswer(window, std::move(image), id, x, y,
                     "URL has to be installed in RDoubleGraphicTextAnswer", kTexts, kPictures) {}

std::unique_ptr<OMScriptableObject> RDoubleGraphicTextAnswer::duplicate() {
    return std::unique_ptr<OMScriptableObject>(new RDoubleGraphicTextAnswer(*this));
}

/// Without a locator it goes without its pictures. The message is not that of other animations.
std::shared_ptr<AOImage> RDoubleGraphicTextAnswer::pictureOf(int id) {
    const bool located = id >= 0 && OMDebug::check(hasSourceLocator(), "url == NULL",
                                                   "SourceURL is not installed in OMAnimation");
    return located ? locate(id) : nullptr;
}

std::shared_ptr<AOImage> RDoubleGraphicTextAnswer::imageOf(int id) {
    std::shared_ptr<AOImage> image = pictureOf(id);
    return image ? image : AOImage::blank();
}

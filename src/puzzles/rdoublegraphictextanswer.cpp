#include "rdoublegraphictextanswer.h"

#include "omdebug.h"
#include "omsclass.h"

namespace {

constexpr OMSEntry kRDoubleGraphicTextAnswerRows[] = {
    oms::data<&RDoubleGraphicTextAnswer::pictureID<0>, &RDoubleGraphicTextAnswer::setPictureID<0>>(
        "graphic1ID", "a picture; -1: none"),
    oms::data<&RDoubleGraphicTextAnswer::pictureOffsetZ<0>,
              &RDoubleGraphicTextAnswer::setPictureOffsetZ<0>>(
        "graphic1OffsetZ", "below 0: behind the base picture; above 0: before the texts"),
    oms::data<&RDoubleGraphicTextAnswer::pictureID<1>, &RDoubleGraphicTextAnswer::setPictureID<1>>(
        "graphic2ID", "a picture; -1: none"),
    oms::data<&RDoubleGraphicTextAnswer::pictureOffsetZ<1>,
              &RDoubleGraphicTextAnswer::setPictureOffsetZ<1>>("graphic2OffsetZ",
                                                               "as graphic1OffsetZ"),
    oms::data<&RDoubleGraphicTextAnswer::text<0>, &RDoubleGraphicTextAnswer::setText<0>>(
        "text1", "what is written on it"),
    oms::data<&RDoubleGraphicTextAnswer::text<1>, &RDoubleGraphicTextAnswer::setText<1>>(
        "text2", "what is written on it too"),
    oms::data<&RDoubleGraphicTextAnswer::textColorIndex,
              &RDoubleGraphicTextAnswer::setTextColorIndex>(
        "textColorIndex", "palette index of both texts, 0 to 255"),
    oms::data<&RDoubleGraphicTextAnswer::textOffsetX<0>,
              &RDoubleGraphicTextAnswer::setTextOffsetX<0>>(
        "text1OffsetX", "of the text's box from the base picture's corner"),
    oms::data<&RDoubleGraphicTextAnswer::textOffsetY<0>,
              &RDoubleGraphicTextAnswer::setTextOffsetY<0>>("text1OffsetY", "as text1OffsetX"),
    oms::data<&RDoubleGraphicTextAnswer::textOffsetX<1>,
              &RDoubleGraphicTextAnswer::setTextOffsetX<1>>("text2OffsetX", "as text1OffsetX"),
    oms::data<&RDoubleGraphicTextAnswer::textOffsetY<1>,
              &RDoubleGraphicTextAnswer::setTextOffsetY<1>>("text2OffsetY", "as text1OffsetX"),
    oms::method<&RDoubleGraphicTextAnswer::playAnimations>("playAnimations"),
    oms::method<&RDoubleGraphicTextAnswer::chooseFont>("setFont", "id | face [size [style]]"),
    oms::method<&RDoubleGraphicTextAnswer::stopAnimations>("stopAnimations"),
};

constexpr auto kRDoubleGraphicTextAnswerVocabulary =
    oms::joined(kRDoubleGraphicTextAnswerRows, kAnswerTextRows);

} // namespace

const OMSClass RDoubleGraphicTextAnswer::kClass{"RDoubleGraphicTextAnswer", &RAnswer::kClass,
                                                kRDoubleGraphicTextAnswerVocabulary,
                                                &createAnswer<RDoubleGraphicTextAnswer>};

RDoubleGraphicTextAnswer::RDoubleGraphicTextAnswer(OMTrinketWindow& window,
                                                   std::shared_ptr<AOImage> image, int id, int x,
                                                   int y)
    : OMSCopied(window, std::move(image), id, x, y,
                "URL has to be installed in RDoubleGraphicTextAnswer", kTexts, kPictures) {}

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

#include "rgraphicanswer.h"

#include "omsclass.h"

namespace {

constexpr OMSEntry kRGraphicAnswerRows[] = {
    oms::data<&RGraphicAnswer::hotPointX, &RGraphicAnswer::setHotPointX>(
        "hotPointX", "of the hot point, from its left edge"),
    oms::data<&RGraphicAnswer::hotPointY, &RGraphicAnswer::setHotPointY>(
        "hotPointY", "of the hot point, from its top edge"),
    oms::data<&RGraphicAnswer::isUsingHotPoint, &RGraphicAnswer::setUsingHotPoint>(
        "isUsingHotPoint", "the hot point decides whether it is on a container"),
    oms::method<&RAnswer::replacePaletteEntry>("replacePaletteEntry", "old new"),
};

constexpr auto kRGraphicAnswerVocabulary =
    oms::joined(kRGraphicAnswerRows, kAnswerTextRows, kAnswerPictureRows, kPlayRows);

} // namespace

const OMSClass RGraphicAnswer::kClass{"RGraphicAnswer", &RAnswer::kClass, kRGraphicAnswerVocabulary,
                                      &createAnswer<RGraphicAnswer>};

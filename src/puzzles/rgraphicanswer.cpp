#include "rgraphicanswer.h"

#include "omsclass.h"

namespace {

constexpr OMSEntry kRGraphicAnswerVocabulary[] = {
    oms::data<&RAnswer::attribute, &RAnswer::setAttributeText>(
        "attribute", "text that attribute containers compare"),
    oms::data<&RAnswer::graphicID, &RAnswer::setGraphicID>("graphicID", "its picture; -1: none"),
    oms::data<&RGraphicAnswer::hotPointX, &RGraphicAnswer::setHotPointX>(
        "hotPointX", "of the hot point, from its left edge"),
    oms::data<&RGraphicAnswer::hotPointY, &RGraphicAnswer::setHotPointY>(
        "hotPointY", "of the hot point, from its top edge"),
    oms::data<&RGraphicAnswer::isUsingHotPoint, &RGraphicAnswer::setUsingHotPoint>(
        "isUsingHotPoint", "the hot point decides whether it is on a container"),
    oms::data<&RAnswer::value, &RAnswer::setValue>(
        "value", "number that containers count; the attribute, until it is written"),
    oms::lasting<&RAnswer::playAnimation>("playAnimation"),
    oms::method<&RAnswer::replacePaletteEntry>("replacePaletteEntry", "old new"),
    oms::method<&RAnswer::stopAnimation>("stopAnimation"),
};

} // namespace

const OMSClass RGraphicAnswer::kClass{"RGraphicAnswer", &RAnswer::kClass, kRGraphicAnswerVocabulary,
                                      &createAnswer<RGraphicAnswer>};

std::unique_ptr<OMScriptableObject> RGraphicAnswer::duplicate() {
    return std::unique_ptr<OMScriptableObject>(new RGraphicAnswer(*this));
}

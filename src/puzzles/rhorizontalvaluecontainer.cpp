#include "rhorizontalvaluecontainer.h"

#include "omsclass.h"

namespace {

constexpr OMSEntry kRHorizontalValueContainerVocabulary[] = {
    oms::readOnly<&RHorizontalValueContainer::answerValue>("answerValue",
                                                           "sum of the values of its answers"),
    oms::data<&RowContainer::deltaZ, &RowContainer::setDeltaZ>(
        "deltaZ", "depth of answers above the container's"),
    oms::data<&RContainer::isHighlighted, &RContainer::setHighlighted>(
        "highlighted", "its second sequence is shown"),
    oms::data<&RowContainer::slideSound, &RowContainer::setSlideSound>(
        "slideSound", "sound of answers that move in the row; -1: none"),
    oms::data<&RHorizontalValueContainer::value, &RHorizontalValueContainer::setValue>(
        "value", "sum that is right"),
    oms::lasting<&RContainer::playAnimation>("playAnimation"),
    oms::method<&RContainer::stopAnimation>("stopAnimation"),
};

} // namespace

const OMSClass RHorizontalValueContainer::kClass{"RHorizontalValueContainer", &RContainer::kClass,
                                                 kRHorizontalValueContainerVocabulary,
                                                 &createContainer<RHorizontalValueContainer>};

std::unique_ptr<OMScriptableObject> RHorizontalValueContainer::duplicate() {
    return std::unique_ptr<OMScriptableObject>(new RHorizontalValueContainer(*this));
}

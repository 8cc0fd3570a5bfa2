#include "rvaluecontainer.h"

#include "omsclass.h"

namespace {

constexpr OMSEntry kRValueContainerVocabulary[] = {
    oms::data<&RValueContainer::value, &RValueContainer::setValue>("value",
                                                                   "of the answer that is right"),
    oms::data<&RContainer::isHighlighted, &RContainer::setHighlighted>(
        "highlighted", "its second sequence is shown"),
    oms::lasting<&RContainer::playAnimation>("playAnimation"),
    oms::method<&RContainer::stopAnimation>("stopAnimation"),
};

} // namespace

const OMSClass RValueContainer::kClass{"RValueContainer", &RContainer::kClass,
                                       kRValueContainerVocabulary,
                                       &createContainer<RValueContainer>};

std::unique_ptr<OMScriptableObject> RValueContainer::duplicate() {
    return std::unique_ptr<OMScriptableObject>(new RValueContainer(*this));
}

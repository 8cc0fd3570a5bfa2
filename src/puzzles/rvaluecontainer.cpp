#include "rvaluecontainer.h"

#include "omsclass.h"

namespace {

constexpr OMSEntry kRValueContainerRows[] = {
    oms::data<&RValueContainer::value, &RValueContainer::setValue>("value",
                                                                   "of the answer that is right"),
};

constexpr auto kRValueContainerVocabulary =
    oms::joined(kRValueContainerRows, kContainerLookRows, kPlayRows);

} // namespace

const OMSClass RValueContainer::kClass{"RValueContainer", &RContainer::kClass,
                                       kRValueContainerVocabulary,
                                       &createContainer<RValueContainer>};

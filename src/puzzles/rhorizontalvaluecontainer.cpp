#include "rhorizontalvaluecontainer.h"

#include "omsclass.h"

namespace {

constexpr auto kRHorizontalValueContainerVocabulary =
    oms::joined(kContainerSumRows, kRowContainerRows, kContainerLookRows, kPlayRows);

} // namespace

const OMSClass RHorizontalValueContainer::kClass{"RHorizontalValueContainer", &RContainer::kClass,
                                                 kRHorizontalValueContainerVocabulary,
                                                 &createContainer<RHorizontalValueContainer>};

#include "rhorizontalcontainer.h"

#include "omlog.h"
#include "omsclass.h"

#include <algorithm>

namespace {

constexpr OMSEntry kRHorizontalContainerVocabulary[] = {
    oms::data<&RHorizontalContainer::answerMatchString,
              &RHorizontalContainer::setAnswerMatchString>(
        "answerMatchString", "the attributes in the row; writing: the only match"),
    oms::data<&RowContainer::deltaZ, &RowContainer::setDeltaZ>(
        "deltaZ", "depth of answers above the container's"),
    oms::data<&RContainer::isHighlighted, &RContainer::setHighlighted>(
        "highlighted", "its second sequence is shown"),
    oms::data<&RowContainer::slideSound, &RowContainer::setSlideSound>(
        "slideSound", "sound of answers that move in the row; -1: none"),
    oms::method<&RHorizontalContainer::addAnswerMatch>("addAnswerMatch", "text"),
    oms::method<&RHorizontalContainer::dumpAnswerMatches>("dumpAnswerMatches"),
    oms::lasting<&RContainer::playAnimation>("playAnimation"),
    oms::method<&RContainer::stopAnimation>("stopAnimation"),
};

} // namespace

const OMSClass RHorizontalContainer::kClass{"RHorizontalContainer", &RContainer::kClass,
                                            kRHorizontalContainerVocabulary,
                                            &createContainer<RHorizontalContainer>};

std::unique_ptr<OMScriptableObject> RHorizontalContainer::duplicate() {
    return std::unique_ptr<OMScriptableObject>(new RHorizontalContainer(*this));
}

std::string RHorizontalContainer::answerMatchString() const {
    std::string row;
    for (RAnswer* answer : answers()) row += textOf(*answer, "attribute").value_or("");
    return row;
}

void RHorizontalContainer::dumpAnswerMatches() {
    for (const std::string& match : matches_)
        OMLog::writef(OMLog::Kind::Message,
                      "RHorizontalContainer: dumpAnswerMatches forgets \"%s\"", match.c_str());
    matches_.clear();
}

bool RHorizontalContainer::isSolved() const {
    return std::ranges::find(matches_, answerMatchString()) != matches_.end();
}

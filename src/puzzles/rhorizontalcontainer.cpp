#include "rhorizontalcontainer.h"

#include "omlog.h"
#include "omsclass.h"

#include <algorithm>

namespace {

constexpr OMSEntry kRHorizontalContainerRows[] = {
    oms::data<&RHorizontalContainer::answerMatchString,
              &RHorizontalContainer::setAnswerMatchString>(
        "answerMatchString", "the attributes in the row; writing: the only match"),
    oms::method<&RHorizontalContainer::addAnswerMatch>("addAnswerMatch", "text"),
    oms::method<&RHorizontalContainer::dumpAnswerMatches>("dumpAnswerMatches"),
};

constexpr auto kRHorizontalContainerVocabulary =
    oms::joined(kRHorizontalContainerRows, kRowContainerRows, kContainerLookRows, kPlayRows);

} // namespace

const OMSClass RHorizontalContainer::kClass{"RHorizontalContainer", &RContainer::kClass,
                                            kRHorizontalContainerVocabulary,
                                            &createContainer<RHorizontalContainer>};

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

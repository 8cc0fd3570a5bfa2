// A row of answers that is solved when their attributes, read from left to right, make one of its
// match strings. See rowcontainer.h.
#pragma once

#include "rowcontainer.h"

#include <string>
#include <vector>

class RHorizontalContainer final : public OMSCopied<RHorizontalContainer, RowContainer> {
  public:
    static const OMSClass kClass;

    using OMSCopied::OMSCopied;

    // For scripts.

    /// What the row reads now.
    [[nodiscard]] std::string answerMatchString() const;
    /// The only match string from now on.
    void setAnswerMatchString(const std::string& text) { matches_ = {text}; }
    void addAnswerMatch(const std::string& text) { matches_.push_back(text); }
    /// Tells the log what they were and forgets them.
    void dumpAnswerMatches();

    [[nodiscard]] bool isSolved() const override;

  private:
    std::vector<std::string> matches_;
};

// Comments by which authors silence the check, of one file:
//
//     ; check skip NAME...     in the next statement's line
//     ; check off NAME...      from here on
//     ; check on NAME...       no more
#pragma once

#include "zorbetmps/check/finding.h"

#include <map>
#include <string_view>
#include <vector>

namespace mps {

class Silences {
  public:
    struct Mistake {
        int line;
        std::string text;
    };

    /// Lines end with CR, or with LF where there is no CR.
    explicit Silences(std::string_view source);

    [[nodiscard]] bool covers(Rule rule, int line) const;
    /// Comments that name no rule.
    [[nodiscard]] const std::vector<Mistake>& mistakes() const { return mistakes_; }

  private:
    struct Range {
        int from;
        int to; ///< the last line
    };
    void read(std::string_view comment, int line);

    std::map<Rule, std::vector<Range>> ranges_;
    std::vector<Rule> skipped_; ///< in the next statement's line
    std::vector<Mistake> mistakes_;
};

} // namespace mps

// The lines of a script's text, for who reads its comments.
#pragma once

#include <string_view>
#include <vector>

namespace mps {

struct ScriptLine {
    int number = 0;        ///< from 1
    std::string_view text; ///< without the blanks in front; of a comment from ";" on

    [[nodiscard]] bool isComment() const { return text.front() == ';'; }
};

/// Those with something in them. Lines end with CR, or with LF where there is no CR.
[[nodiscard]] std::vector<ScriptLine> linesOf(std::string_view source);

} // namespace mps

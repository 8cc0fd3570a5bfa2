// Tables of words without blanks: "WORD : VALUE WORD : VALUE ...". EMPTY is the empty text.
#pragma once

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace testing_support {

inline std::vector<std::pair<std::string, std::string>> wordTable(const std::string& text) {
    std::vector<std::pair<std::string, std::string>> rows;
    std::istringstream in(text);
    for (std::string word, colon, value; in >> word >> colon >> value;)
        rows.emplace_back(word == "EMPTY" ? "" : word, value == "EMPTY" ? "" : value);
    return rows;
}

} // namespace testing_support

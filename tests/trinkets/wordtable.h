// Tables of words without blanks, written as "WORD : VALUE WORD : VALUE ...". The empty text is
// written as EMPTY.
#pragma once

#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace testing_support {

inline std::vector<std::pair<std::string, std::string>> wordTable(const std::string& text) {
    std::vector<std::pair<std::string, std::string>> rows;
    std::istringstream in(text);
    for (std::string word, colon, value; in >> word >> colon >> value;) {
        if (colon != ":") throw std::invalid_argument("no colon behind " + word);
        rows.emplace_back(word == "EMPTY" ? "" : word, value == "EMPTY" ? "" : value);
    }
    return rows;
}

} // namespace testing_support

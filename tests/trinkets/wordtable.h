// Tables that are written as text.
#pragma once

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace testing_support {

using TableRows = std::vector<std::pair<std::string, std::string>>;

inline std::string repeat(int count, const std::string& text) {
    std::string all;
    for (int i = 0; i < count; ++i) all += text;
    return all;
}

/// Words without blanks: "WORD : VALUE WORD : VALUE ...". EMPTY is the empty text.
inline TableRows wordTable(const std::string& text) {
    TableRows rows;
    std::istringstream in(text);
    for (std::string word, colon, value; in >> word >> colon >> value;)
        rows.emplace_back(word == "EMPTY" ? "" : word, value == "EMPTY" ? "" : value);
    return rows;
}

/// Rows of "INPUT => EXPECTED"; an input goes on in the next line, what is expected does so behind
/// another "=>", after `between`.
inline TableRows rowTable(const std::string& text, const char* between = "") {
    TableRows rows;
    std::istringstream in(text);
    bool isComplete = true;
    for (std::string line; std::getline(in >> std::ws, line);) {
        const auto at = std::min(line.find("=>"), line.size());
        if (at > 0 && isComplete) rows.emplace_back();
        if (at > 0) rows.back().first += line.substr(0, at) + (at < line.size() ? "" : " ");
        isComplete = at < line.size();
        if (!isComplete) continue;
        if (at == 0 && !rows.back().second.empty()) rows.back().second += between;
        rows.back().second += line.substr(std::min(at + 3, line.size()));
    }
    return rows;
}

} // namespace testing_support

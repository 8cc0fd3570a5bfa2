#include "zorbetmps/check/scriptlines.h"

#include <algorithm>

namespace mps {

std::vector<ScriptLine> linesOf(std::string_view source) {
    constexpr std::string_view kBlanks = " \t\n";
    std::vector<ScriptLine> lines;
    const char lineEnd = source.find('\r') == source.npos ? '\n' : '\r';
    for (int number = 1; !source.empty(); ++number) {
        const std::size_t end = std::min(source.find(lineEnd), source.size());
        std::string_view text = source.substr(0, end);
        source.remove_prefix(std::min(end + 1, source.size()));
        text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
        if (!text.empty()) lines.push_back({number, text});
    }
    return lines;
}

} // namespace mps

#include "zorbetmps/check/silences.h"

#include "formats/base/latin1.h"

#include <algorithm>
#include <limits>
#include <sstream>

namespace mps {

namespace {

constexpr std::string_view kBlanks = " \t\n";
constexpr int kEndOfFile = std::numeric_limits<int>::max();

} // namespace

Silences::Silences(std::string_view source) {
    const char lineEnd = source.find('\r') == source.npos ? '\n' : '\r';
    for (int line = 1; !source.empty(); ++line) {
        const std::size_t end = std::min(source.find(lineEnd), source.size());
        std::string_view text = source.substr(0, end);
        source.remove_prefix(std::min(end + 1, source.size()));
        text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
        if (text.empty()) continue;
        if (text.front() == ';') {
            read(text.substr(1), line);
            continue;
        }
        for (const Rule rule : skipped_) ranges_[rule].push_back({line, line});
        skipped_.clear();
    }
}

void Silences::read(std::string_view comment, int line) {
    std::istringstream words{std::string(comment)};
    std::string word;
    std::string what;
    if (!(words >> word) || word != "check" || !(words >> what)) return;
    if (what != "skip" && what != "off" && what != "on") return;
    int names = 0;
    for (; words >> word; ++names) {
        const auto rule = ruleNamed(word);
        if (!rule) {
            mistakes_.push_back({line, formats::utf8FromLatin1(word) +
                                           " is no finding's name; zorbet-mps check --help tells "
                                           "them"});
        } else if (what == "skip") {
            skipped_.push_back(*rule);
        } else if (what == "off") {
            ranges_[*rule].push_back({line, kEndOfFile});
        } else {
            for (Range& range : ranges_[*rule])
                if (range.to == kEndOfFile) range.to = line;
        }
    }
    if (names == 0) mistakes_.push_back({line, "the names of the findings are missing"});
}

bool Silences::covers(Rule rule, int line) const {
    const auto found = ranges_.find(rule);
    return found != ranges_.end() && std::ranges::any_of(found->second, [&](const Range& range) {
               return range.from <= line && line <= range.to;
           });
}

} // namespace mps

#include "zorbetmps/check/silences.h"

#include "formats/base/latin1.h"
#include "zorbetmps/check/scriptlines.h"

#include <limits>
#include <sstream>

namespace mps {

namespace {

constexpr int kEndOfFile = std::numeric_limits<int>::max();

} // namespace

Silences::Silences(std::string_view source) {
    for (const ScriptLine& line : linesOf(source)) {
        if (line.isComment()) {
            read(line.text.substr(1), line.number);
            continue;
        }
        for (const Rule rule : skipped_) ranges_[rule].push_back({line.number, line.number});
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

#include "platform/headless/headlessdesk.h"

#include "formats/base/latin1.h"

#include <algorithm>
#include <ostream>

namespace platform {

namespace {

constexpr std::size_t kMostTexts = 10'000; ///< later ones are forgotten

} // namespace

void HeadlessDesk::Texts::add(std::string_view text) {
    if (texts_.size() < kMostTexts) texts_.emplace_back(text);
}

bool HeadlessDesk::Texts::take(std::string_view text) {
    const auto first = texts_.begin() + static_cast<std::ptrdiff_t>(next_);
    const auto found = std::find(first, texts_.end(), text);
    if (found == texts_.end()) return false;
    next_ = static_cast<std::size_t>(found - texts_.begin()) + 1;
    return true;
}

std::string HeadlessDesk::Texts::rest() const {
    std::string rest;
    for (std::size_t i = next_; i < texts_.size(); ++i)
        rest += (rest.empty() ? "" : "\n") + texts_[i];
    return rest;
}

void HeadlessDesk::warn(std::string_view text) {
    if (firstWarning_.empty()) firstWarning_ = text;
    notes_ << formats::utf8FromLatin1(text) << std::endl;
}

void HeadlessDesk::check(const TimelineExpectation& expected) {
    using Kind = TimelineExpectation::Kind;
    const auto tell = [&](bool met, const std::string& what, std::string_view was) {
        if (met)
            notices_.line("expect", {"met", what});
        else
            notices_.line("expect", {"failed", what, was});
    };
    const auto heard = [&](Texts& texts, const char* how) {
        const bool met = texts.take(expected.text);
        tell(met, std::string(how) + ' ' + expected.text, texts.rest());
    };
    switch (expected.kind) {
    case Kind::Said: return heard(said_, "said");
    case Kind::Box: return heard(boxes_, "box");
    case Kind::NoWarnings: return tell(firstWarning_.empty(), "no warnings", firstWarning_);
    case Kind::Variable: {
        const auto value = game() ? game()->value(expected.variable) : std::nullopt;
        return tell(value == expected.text, "variable " + expected.variable + ' ' + expected.text,
                    value.value_or("never set"));
    }
    case Kind::Property: {
        const auto value =
            game() ? game()->property(expected.variable, expected.property) : std::nullopt;
        return tell(value == expected.text,
                    "property " + expected.variable + ' ' + expected.property + ' ' + expected.text,
                    value.value_or("no such property"));
    }
    }
}

} // namespace platform

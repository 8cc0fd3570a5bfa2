#include "zorbetmps/check/arguments.h"

#include <algorithm>

namespace mps {

namespace {

constexpr std::string_view kAnyNumber = "parameters";

/// The words of a text, with brackets and bars as words of their own.
std::vector<std::string_view> wordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    std::size_t at = 0;
    while (at < text.size()) {
        const char c = text[at];
        if (c == ' ' || c == ',') {
            ++at;
        } else if (c == '(') {
            at = std::min(text.find(')', at), text.size() - 1) + 1;
        } else if (c == '[' || c == ']' || c == '|') {
            words.push_back(text.substr(at++, 1));
        } else {
            const std::size_t end = std::min(text.find_first_of(" ,[]|(", at), text.size());
            words.push_back(text.substr(at, end - at));
            at = end;
        }
    }
    return words;
}

bool isLiteral(std::string_view word) {
    return !word.empty() && std::string_view("-\"0123456789").find(word.front()) != word.npos;
}

} // namespace

ArgumentForms::ArgumentForms(std::string_view text) {
    // All ways to go through the words, each with and without what may be missing. `begun` are
    // those of each open bracket, as they were before it.
    std::vector<Form> ways(1);
    std::vector<std::vector<Form>> begun;
    std::vector<std::size_t> group{0}; ///< where the brackets' words begin, in the longest way
    for (const std::string_view word : wordsOf(text)) {
        if (word == "|") {
            forms_.insert(forms_.end(), ways.begin(), ways.end());
            ways.assign(1, {});
        } else if (word == "[") {
            begun.push_back(ways);
            group.push_back(ways.back().names.size());
        } else if (word == "]" && !begun.empty()) {
            ways.insert(ways.begin(), begun.back().begin(), begun.back().end());
            begun.pop_back();
            group.pop_back();
        } else if (word == "..." || word == kAnyNumber) {
            for (Form& way : ways) {
                if (word == kAnyNumber) way.names.push_back(word);
                way.repeated =
                    word == kAnyNumber || begun.empty() ? 1 : way.names.size() - group.back();
            }
        } else {
            for (Form& way : ways) way.names.push_back(word);
        }
    }
    forms_.insert(forms_.end(), ways.begin(), ways.end());
}

bool ArgumentForms::Form::takes(std::size_t count) const {
    if (count <= names.size() || repeated == 0) return count == names.size();
    return (count - names.size()) % repeated == 0;
}

std::string_view ArgumentForms::Form::name(std::size_t argument) const {
    while (argument >= names.size()) argument -= repeated;
    return names[argument];
}

bool ArgumentForms::takes(std::size_t count) const {
    return std::ranges::any_of(forms_, [&](const Form& form) { return form.takes(count); });
}

std::vector<std::string_view> ArgumentForms::names(std::size_t count, std::size_t argument) const {
    std::vector<std::string_view> names;
    for (const Form& form : forms_) {
        if (form.takes(count)) names.push_back(form.name(argument));
    }
    return names;
}

std::vector<std::string_view> ArgumentForms::namesOf(std::span<const std::string_view> given,
                                                     std::size_t argument) const {
    std::vector<std::string_view> names;
    for (const Form& form : forms_) {
        if (!form.takes(given.size())) continue;
        bool isMeant = true;
        for (std::size_t i = 0; i < given.size(); ++i)
            isMeant &= !isLiteral(form.name(i)) || !isLiteral(given[i]) || form.name(i) == given[i];
        if (isMeant) names.push_back(form.name(argument));
    }
    return names;
}

} // namespace mps

#include "zorbetmps/check/finding.h"

#include <algorithm>

namespace mps {

namespace {

using enum Severity;

constexpr RuleAbout kRules[] = {
    {Rule::Syntax, "syntax", Error, "the script cannot be read, or not be run"},
    {Rule::UnknownCommand, "unknown-command", Error, "no statement and no command has this name"},
    {Rule::UnknownScript, "unknown-script", Error, "there is no such script"},
    {Rule::UnknownProcedure, "unknown-procedure", Error, "neither a procedure nor a script", true},
    {Rule::UnknownClass, "unknown-class", Error, "no class, or type of actions, has this name",
     true},
    {Rule::UnknownProperty, "unknown-property", Error, "the object has no such property", true},
    {Rule::UnknownMethod, "unknown-method", Error, "the object has no such method", true},
    {Rule::UnknownEvent, "unknown-event", Error, "the object has no such event", true},
    {Rule::ReadOnly, "read-only", Warning, "the property can only be read", true},
    {Rule::WriteOnly, "write-only", Warning, "the property can only be written", true},
    {Rule::Arguments, "arguments", Warning, "too few words, or too many", true},
    {Rule::WrongKind, "wrong-kind", Warning, "a text where a number is wanted", true},
    {Rule::NoObject, "no-object", Error, "the name holds no object", true},
    {Rule::ObjectAsText, "object-as-text", Warning, "an object where a text is wanted", true},
    {Rule::NeverSet, "never-set", Warning, "a name is read that nothing is stored in", true},
    {Rule::NeverRead, "never-read", Note, "a name is stored in that nothing reads", true},
    {Rule::UnsetValue, "unset-value", Warning, "the value of an assignment is missing or empty",
     true},
    {Rule::WordsLost, "words-lost", Warning, "words that have no effect", true},
    {Rule::NameClash, "name-clash", Warning, "one name means two things", true},
    {Rule::Twice, "twice", Warning, "a procedure is written twice", true},
    {Rule::NestedProcedure, "nested-procedure", Error, "a procedure stands inside another one"},
    {Rule::Condition, "condition", Warning, "a condition that is always true, or always false",
     true},
    {Rule::Precedence, "precedence", Warning, "an expression that means something else"},
    {Rule::Loop, "loop", Warning, "a loop that never runs, or never ends", true},
    {Rule::NeverRuns, "never-runs", Note, "statements that are never reached", true},
    {Rule::AfterDrop, "after-drop", Warning, "an object is used that has been dropped", true},
    {Rule::BeforeMade, "before-made", Warning, "an object is used before it is made", true},
    {Rule::Timer, "timer", Warning, "a timer that is lost, or that loses its handler", true},
    {Rule::Bracket, "bracket", Error, "a bracket where it is a part of a word"},
    {Rule::Indent, "indent", Warning, "lines stand like a body, and are none"},
    {Rule::Resource, "resource", Error, "there is no resource of this kind and number"},
    {Rule::Frame, "frame", Warning, "the animation has no such frame or sequence", true},
    {Rule::QuotedNumber, "quoted-number", Warning, "a number in quotes, which counts as 0"},
    {Rule::TextCut, "text-cut", Warning, "a bar cuts the text, also in quotes"},
    {Rule::Accent, "accent", Warning, "a letter outside of quotes that counts as a blank"},
    {Rule::Letter, "letter", Error, "a letter that Latin-1, and so the game, does not have"},
    {Rule::LineEnds, "line-ends", Error, "lines end in two ways, so that some are one"},
    {Rule::LetterCase, "letter-case", Note, "a file's name has other capitals"},
    {Rule::SameName, "same-name", Warning, "two files whose names differ in letter case only"},
    {Rule::Unreached, "unreached", Note, "a script that no other leads to"},
    {Rule::Silence, "silence", Warning, "a comment that should silence, and does not"},
};

constexpr bool isInOrder() {
    for (std::size_t i = 0; i < std::size(kRules); ++i)
        if (kRules[i].rule != static_cast<Rule>(i)) return false;
    return true;
}
static_assert(isInOrder());

} // namespace

std::span<const RuleAbout> allRules() { return kRules; }

const RuleAbout& aboutRule(Rule rule) { return kRules[static_cast<std::size_t>(rule)]; }

std::optional<Rule> ruleNamed(std::string_view name) {
    const auto* found = std::ranges::find(kRules, name, &RuleAbout::name);
    if (found == std::end(kRules)) return std::nullopt;
    return found->rule;
}

std::string_view severityName(Severity severity) {
    switch (severity) {
    case Error: return "error";
    case Warning: return "warning";
    case Note: break;
    }
    return "note";
}

} // namespace mps

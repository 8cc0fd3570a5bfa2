// What the check of scripts finds: each kind has a stable short name by which authors silence it
// and build servers count it.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace mps {

enum class Severity {
    Error,   ///< cannot work
    Warning, ///< hardly what was meant
    Note,    ///< does no harm, and no good
};

enum class Rule {
    Syntax,
    UnknownCommand,
    UnknownScript,
    UnknownProcedure,
    UnknownClass,
    UnknownProperty,
    UnknownMethod,
    UnknownEvent,
    ReadOnly,
    WriteOnly,
    Arguments,
    WrongKind,
    NoObject,
    ObjectAsText,
    NeverSet,
    NeverRead,
    UnsetValue,
    WordsLost,
    NameClash,
    Twice,
    NestedProcedure,
    Condition,
    Precedence,
    Loop,
    NeverRuns,
    AfterDrop,
    BeforeMade,
    Timer,
    Bracket,
    Indent,
    Resource,
    Frame,
    QuotedNumber,
    TextCut,
    Accent,
    Letter,
    LineEnds,
    LetterCase,
    SameName,
    Unreached,
    Silence,
};

struct RuleAbout {
    Rule rule;
    std::string_view name;
    Severity severity;
    std::string_view about; ///< for the list of all rules
    bool isOfNames = false; ///< it may be wrong when another script includes this one
};

/// In the order of Rule.
[[nodiscard]] std::span<const RuleAbout> allRules();
[[nodiscard]] const RuleAbout& aboutRule(Rule rule);
/// None for a word that is no rule's name.
[[nodiscard]] std::optional<Rule> ruleNamed(std::string_view name);
[[nodiscard]] std::string_view severityName(Severity severity);

struct Finding {
    Rule rule = Rule::Syntax;
    std::string file; ///< a host path
    int line = 0;     ///< from 1; 0: the whole file
    int column = 0;   ///< from 1; 0: the whole line
    std::string text; ///< UTF-8, without control characters

    friend bool operator==(const Finding&, const Finding&) = default;
};

} // namespace mps

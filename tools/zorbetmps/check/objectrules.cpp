// Rules for what is done with objects.
#include "zorbetmps/check/arguments.h"
#include "zorbetmps/check/nearest.h"
#include "zorbetmps/check/scriptrules.h"

#include "actions/actioncontainer.h"
#include "omsclass.h"
#include "ynumber.h"

#include <algorithm>

namespace mps {

namespace {

using Kind = Vocabulary::Kind;

constexpr std::string_view kSynchronously = "}";
constexpr std::string_view kDefault = "default";
constexpr std::string_view kName = "name";
constexpr std::string_view kAdd = "add"; ///< of containers of actions

/// What arguments are called that must be numbers.
constexpr std::string_view kNumbers[] = {
    "x",     "y",       "z",        "dx",           "dy",      "width",      "height", "animation",
    "sound", "font",    "cursor",   "grab-cursor",  "palette", "pose",       "rate",   "low",
    "high",  "index",   "old",      "new",          "slot",    "depth",      "piece",  "left",
    "top",   "right",   "bottom",   "column",       "hole",    "group",      "min",    "max",
    "entry", "size",    "style",    "color",        "length",  "picture",    "handle", "level",
    "ms",    "initial", "velocity", "acceleration", "final",   "repeatCount"};

/// What arguments are called that name an object of the script.
constexpr std::string_view kObjectNames[] = {"answer",  "container", "mover", "character",
                                             "trinket", "map",       "object"};

bool beginsAsNumber(const std::string& text) {
    return !text.empty() && ynumber::looksNumeric(text.front());
}

std::string namesOf(const Vocabulary::Classes& classes) {
    std::string names;
    for (const OMSClass* known : classes)
        names += (names.empty() ? "" : " or ") + std::string(known->name);
    return names;
}

std::string count(std::size_t number, const char* what) {
    return std::to_string(number) + ' ' + what + (number == 1 ? "" : "s");
}

/// The rows of that name that objects of these classes have.
std::vector<const OMSEntry*> rowsOf(const Vocabulary::Classes& classes, std::string_view name) {
    std::vector<const OMSEntry*> rows;
    for (const OMSClass* known : classes)
        if (const OMSEntry* row = Vocabulary::find(*known, name)) rows.push_back(row);
    return rows;
}

bool areAll(const std::vector<const OMSEntry*>& rows, Kind kind) {
    return std::ranges::all_of(rows, [&](const OMSEntry* row) { return row->kind == kind; });
}

bool mayHaveOthers(const Vocabulary::Classes& classes) {
    return std::ranges::any_of(classes,
                               [](const OMSClass* known) { return Vocabulary::isOpen(*known); });
}

} // namespace

std::optional<Vocabulary::Classes> ScriptRules::objectOf(const Statement& statement,
                                                         bool mayBeClass) {
    const Word& word = statement.words.front();
    if (!word.canHold()) {
        tell(Rule::NoObject, statement, word,
             word.isQuoted() ? word.text() + " is a text; the name of an object has no quotes"
                             : word.text() + " is no name, so it holds no object");
        return std::nullopt;
    }
    const WordFacts held = facts_.of(word, statement);
    if (held.isUnset) {
        if (mayBeClass && game_.isComponent(word.text())) return std::nullopt;
        tell(Rule::NoObject, statement, word,
             "nothing is stored in " + word.text() + ", so it holds no object" +
                 nearName(word.text()));
        return std::nullopt;
    }
    if (held.isUnknown) return std::nullopt;
    if (held.classes.empty()) {
        tell(Rule::NoObject, statement, word, word.text() + " never holds an object");
        return std::nullopt;
    }
    return held.classes;
}

std::optional<std::string> ScriptRules::entryNamed(const Statement& statement,
                                                   const Vocabulary::Classes& classes) {
    const Word& word = statement.words[1];
    if (word.isConstant()) return word.value();
    if (!word.isName()) return std::nullopt;
    if (facts_.isUnset(*word.variable)) return word.text();
    if (!rowsOf(classes, word.text()).empty() || word.text() == kName)
        tell(Rule::NameClash, statement, word,
             word.text() +
                 " is a name of the script's own, and what it holds is meant here; write \"" +
                 word.text() + "\"");
    return std::nullopt;
}

void ScriptRules::tellUnknown(const Statement& statement, const Vocabulary::Classes& classes,
                              Kind kind, const std::string& name) {
    const std::string near = vocabulary_.nearEntry(classes, kind, name);
    if (mayHaveOthers(classes) &&
        (near.empty() || vocabulary_.isOfPlayers(name) || facts_.isMentioned(name)))
        return;
    const std::vector<const OMSEntry*> rows = rowsOf(classes, name);
    const Word& word = statement.words[1];
    const std::string object = statement.words.front().text();
    const auto isOther = [&](Kind other) { return !rows.empty() && areAll(rows, other); };
    std::string hint = near;
    if (isOther(Kind::Method)) hint = "; it is a method: play " + object + ' ' + name;
    if (isOther(Kind::Event)) hint = "; it is an event: set " + object + ' ' + name + " PROCEDURE";
    if (isOther(Kind::Data))
        hint = "; it is a property: set " + object + ' ' + name + " VALUE, get " + object + ' ' +
               name + " RESULT";
    const std::string owner = namesOf(classes) + " has no ";
    switch (kind) {
    case Kind::Data:
        tell(Rule::UnknownProperty, statement, word, owner + "property " + name + hint);
        break;
    case Kind::Event:
        tell(Rule::UnknownEvent, statement, word, owner + "event " + name + hint);
        break;
    case Kind::Method:
        tell(Rule::UnknownMethod, statement, word, owner + "method " + name + hint);
        break;
    }
}

void ScriptRules::checkNotObjects(const Statement& statement, std::size_t from, std::size_t to) {
    for (std::size_t i = from; i < to; ++i) {
        const Word& word = statement.words[i];
        if (!word.isName()) continue; // members of a family may hold different things
        const WordFacts held = facts_.of(word, statement);
        if (held.isUnknown || held.holdsValue || !held.procedures.empty() || held.classes.empty())
            continue;
        tell(Rule::ObjectAsText, statement, word,
             word.text() + " holds an object, which has no text; write \"" + word.text() +
                 "\" for its name");
    }
}

void ScriptRules::checkArguments(const Statement& statement, std::size_t from, std::size_t to,
                                 const std::string& what, std::string_view text) {
    const ArgumentForms forms(text);
    const std::size_t given = to - from;
    checkNotObjects(statement, from, to);
    if (!forms.takes(given)) {
        const Word& place = given > 0 ? statement.words[from] : statement.words.front();
        tell(Rule::Arguments, statement, place,
             what + " takes " + (text.empty() ? "no arguments" : std::string(text)) + "; here " +
                 (given == 1 ? "is " : "are ") + count(given, "argument"));
        return;
    }
    for (std::size_t i = 0; i < given; ++i) {
        const Word& word = statement.words[from + i];
        const auto isCalled = [&](std::span<const std::string_view> names) {
            return std::ranges::all_of(forms.names(given, i), [&](std::string_view name) {
                return std::ranges::find(names, name) != names.end();
            });
        };
        const std::string name(forms.names(given, i).front());
        const bool isUnset = word.isName() && facts_.isUnset(*word.variable);
        if (isCalled(kNumbers)) {
            if (word.isConstant() && word.text() != "?" && !word.value().empty() &&
                !beginsAsNumber(word.value()))
                tell(Rule::WrongKind, statement, word,
                     name + " of " + what + " is a number; " + word.text() + " counts as 0");
            else if (isUnset)
                tell(Rule::WrongKind, statement, word,
                     name + " of " + what + " is a number; nothing is stored in " + word.text() +
                         nearName(word.text()));
        } else if (isCalled(kObjectNames) && word.isConstant() && word.isQuoted()) {
            const std::string object = word.value();
            const auto found = facts_.all().find(ScriptFacts::keyOf(object));
            if (found == facts_.all().end() || !found->second.isSet())
                tell(Rule::NoObject, statement, word,
                     "nothing is stored in " + object + ", so it holds no object" +
                         nearName(object));
        }
    }
    checkResources(statement, from, to, text);
}

void ScriptRules::checkConstruction(const Statement& statement, const OMSClass& made) {
    const std::string name(made.name);
    if (!made.create)
        tell(Rule::UnknownClass, statement, statement.words[1],
             name + " objects are made by the program alone");
    else if (statement.words.size() > 2 || !ArgumentForms(made.arguments).takes(0))
        checkArguments(statement, 2, statement.words.size(), name, made.arguments);
}

void ScriptRules::checkSet(const Statement& statement) {
    const std::vector<Word>& words = statement.words;
    const Word& value = words.back();
    const bool isRemoval = words.size() == 2;
    const WordFacts held = facts_.of(value, statement);
    const auto tellNoProcedure = [&] {
        if (isRemoval || held.isUnknown || !held.procedures.empty()) return;
        tell(Rule::UnknownProcedure, statement, value,
             value.text() + " is no procedure" + nearName(value.text()));
    };
    const Word& object = words.front();
    if (object.isName() && facts_.isUnset(*object.variable) &&
        vocabulary_.classNamed(object.text())) {
        tellNoProcedure(); // to be called for each object of the class
        return;
    }
    const auto classes = objectOf(statement, true);
    if (!classes) return;
    const auto name = entryNamed(statement, *classes);
    if (!name) return;
    const std::vector<const OMSEntry*> rows = rowsOf(*classes, *name);
    const bool isHandler = isRemoval || !held.procedures.empty();
    if (rows.empty() || areAll(rows, Kind::Method) || (isHandler && areAll(rows, Kind::Data))) {
        tellUnknown(statement, *classes, isHandler ? Kind::Event : Kind::Data, *name);
        return;
    }
    if (areAll(rows, Kind::Event)) {
        if (words.size() > 3) tellLost(statement, 2, "only the last word is the event's handler");
        tellNoProcedure();
        return;
    }
    if (!areAll(rows, Kind::Data)) return;
    if (std::ranges::all_of(rows, [](const OMSEntry* row) { return !row->set; }))
        tell(Rule::ReadOnly, statement, words[1],
             *name + " of " + namesOf(*classes) + " can only be read");
    const bool hasIndex = rows.front()->help.starts_with('[');
    if (words.size() > 3 && !hasIndex) {
        tellLost(statement, 2,
                 "only the last word is stored; a text with blanks needs quotes, and "
                 "an expression has none");
        return;
    }
    checkNotObjects(statement, 2, words.size());
    const bool isText = value.isConstant() && value.text() != "?" && !beginsAsNumber(value.value());
    if (std::ranges::all_of(rows, [](const OMSEntry* row) { return row->isNumber; }) &&
        (isText || (value.isName() && facts_.isUnset(*value.variable))))
        tell(Rule::WrongKind, statement, value,
             *name + " is a number, and " + value.text() + " counts as 0" +
                 (isText ? "" : nearName(value.text())));
    checkResourceProperty(statement, rows);
    if (std::ranges::all_of(rows, [&](const OMSEntry* row) { return row == rows.front(); }))
        checkFrame(statement, *rows.front());
    checkWord(statement, value);
}

void ScriptRules::checkGet(const Statement& statement) {
    const std::vector<Word>& words = statement.words;
    if (!words.back().canHold())
        tell(Rule::Arguments, statement, words.back(),
             "the last word must be a name, in which the property is stored");
    const bool isOwnName = words[1].text() == kName || words[1].text() == "\"name\"";
    if (isOwnName && words.front().canHold()) return;
    const auto classes = objectOf(statement, false);
    if (!classes) return;
    const auto name = entryNamed(statement, *classes);
    if (!name) return;
    const std::vector<const OMSEntry*> rows = rowsOf(*classes, *name);
    if (rows.empty() || areAll(rows, Kind::Method) || areAll(rows, Kind::Event)) {
        tellUnknown(statement, *classes, Kind::Data, *name);
        return;
    }
    if (std::ranges::all_of(rows, [](const OMSEntry* row) { return !row->get; }))
        tell(Rule::WriteOnly, statement, words[1],
             *name + " of " + namesOf(*classes) + " can only be written");
    if (words.size() > 3 && !rows.front()->help.starts_with('['))
        tellLost(statement, 2, "get has one name for the property, and one for the result");
}

void ScriptRules::checkPlay(const Statement& statement) {
    const std::vector<Word>& words = statement.words;
    std::size_t end = 1;
    while (end < words.size() && words[end].text() != kSynchronously) ++end;
    if (end + 1 < words.size()) tellLost(statement, end + 1, "\"}\" is the last word");
    const auto classes = objectOf(statement, false);
    if (!classes) return;
    if (end == 1) {
        if (rowsOf(*classes, kDefault).empty())
            tell(Rule::UnknownMethod, statement, words.front(),
                 namesOf(*classes) + " has no method default, so nothing is done");
        return;
    }
    const auto name = entryNamed(statement, *classes);
    if (!name) return;
    const std::vector<const OMSEntry*> rows = rowsOf(*classes, *name);
    if (rows.empty() || areAll(rows, Kind::Data) || areAll(rows, Kind::Event)) {
        tellUnknown(statement, *classes, Kind::Method, *name);
        return;
    }
    const std::string_view forms = rows.front()->help;
    if (std::ranges::all_of(rows, [&](const OMSEntry* row) { return row->help == forms; }))
        checkArguments(statement, 2, end, *name, forms);
    if (rows.front() == ActionContainer::kClass.find(kAdd) && end > 2) checkAction(statement, end);
}

/// What is put into a container: an action of a type, or an object by its name.
void ScriptRules::checkAction(const Statement& statement, std::size_t end) {
    const Word& word = statement.words[2];
    const std::string& type = word.isName() ? word.text() : word.value();
    const auto named = facts_.all().find(ScriptFacts::keyOf(type));
    if ((named != facts_.all().end() && named->second.isSet()) ||
        !(word.isName() || word.isConstant()))
        return;
    if (const auto forms = Action::parametersOf(type))
        checkArguments(statement, 3, end, type, *forms);
    else
        tell(Rule::UnknownClass, statement, word,
             "there is no type of actions, and no container, called " + type +
                 didYouMean(type, Action::types()));
}

void ScriptRules::checkCommand(const Statement& statement) {
    const std::string& name = statement.words.front().text();
    if (const std::string_view* forms = vocabulary_.command(name))
        checkArguments(statement, 1, statement.words.size(), name, *forms);
}

} // namespace mps

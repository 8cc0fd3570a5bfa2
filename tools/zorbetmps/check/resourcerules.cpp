// Rules for the numbers of resources.
#include "zorbetmps/check/arguments.h"
#include "zorbetmps/check/resources.h"
#include "zorbetmps/check/scriptrules.h"

#include "omao.h"
#include "omid.h"
#include "omsclass.h"

#include <algorithm>
#include <cmath>

namespace mps {

namespace {

/// What tables call the number of a resource.
struct ResourceWord {
    std::string_view word;
    std::string_view type;
    std::string_view name; ///< in messages
    int least = 1;         ///< the game has a meaning for the numbers from there to -1
};
/// The first of a type is what its resources are called.
constexpr ResourceWord kResourceWords[] = {
    {"animation", "ASEQ", "animation"}, {"picture", "ASEQ", "picture"},
    {"pose", "ASEQ", "animation"},      {"sound", "WAVE", "sound", -1},
    {"font", "NFNT", "font"},           {"palette", "RRGB", "palette"},
    {"cursor", "CURSOR", "cursor", -4}, {"grab-cursor", "CURSOR", "cursor", -4},
};

/// Among the arguments, and as the beginning of a remark.
constexpr std::string_view kNone = "-1";
constexpr std::string_view kNoneRemark = "(-1: ";

/// Properties whose writing changes what an animation shows, or how many frames it has.
constexpr std::string_view kPicture = "graphicID";
constexpr std::string_view kEntryField = "param";

const ResourceWord* resourceWord(std::string_view word) {
    const auto* found = std::ranges::find(kResourceWords, word, &ResourceWord::word);
    return found == std::end(kResourceWords) ? nullptr : found;
}

std::string_view nameOf(std::string_view type) {
    const auto* found = std::ranges::find(kResourceWords, type, &ResourceWord::type);
    return found == std::end(kResourceWords) ? std::string_view() : found->name;
}

std::string withArticle(std::string_view name) {
    return (name.starts_with('a') ? "an " : "a ") + std::string(name);
}

/// What has the number instead, or the nearest number.
std::string hintFor(const GameResources& resources, std::string_view type, int id) {
    for (const std::string_view other : resources.typesOf(id))
        if (const std::string_view name = nameOf(other); !name.empty())
            return "; there is " + withArticle(name) + ' ' + std::to_string(id);
    const auto near = resources.nearest(type, id);
    return near ? "; the nearest one is " + std::to_string(*near) : std::string();
}

std::optional<int> wholeNumber(const Word& word) {
    constexpr double kLargest = 65535; // of what counts of a number
    const auto number = numberOf(word);
    if (!number || std::abs(*number) > kLargest || std::trunc(*number) != *number)
        return std::nullopt;
    return static_cast<int>(*number);
}

} // namespace

/// Of a number that stands there, or of a name that only one number is ever stored in.
std::optional<int> ScriptRules::onlyNumber(const Word& word) const {
    if (!word.isName()) return wholeNumber(word);
    const NameFacts& named = facts_.of(*word.variable);
    if (named.isUnknown || named.isList || named.isMentioned || !named.procedures.empty() ||
        facts_.readsByText())
        return std::nullopt;
    std::optional<int> only;
    for (const Statement* store : named.stores) {
        const bool isPlain = store->opcode == YOpcode::Assign && store->words.size() == 2;
        const auto number = isPlain ? wholeNumber(store->words[1]) : std::nullopt;
        if (!number || (only && *only != *number)) return std::nullopt;
        only = number;
    }
    return only;
}

void ScriptRules::checkResource(const Statement& statement, const Word& word, std::string_view kind,
                                bool mayBeNone) {
    const ResourceWord* wanted = resourceWord(kind);
    const auto number = onlyNumber(word);
    if (!wanted || !number || !game_.resources.areKnown()) return;
    const int id = OMNarrowId(*number);
    const bool isNone = id < 0 && (id >= wanted->least || (id == -1 && mayBeNone));
    if (isNone || game_.resources.has(wanted->type, id)) return;
    tell(Rule::Resource, statement, word,
         "there is no " + std::string(wanted->name) + ' ' + std::to_string(id) +
             (word.isName() ? ", which " + word.text() + " is" : std::string()) +
             (id > 0 ? hintFor(game_.resources, wanted->type, id) : "; numbers begin with 1"));
}

void ScriptRules::checkResources(const Statement& statement, std::size_t from, std::size_t to,
                                 std::string_view text) {
    const ArgumentForms forms(text);
    std::vector<std::string_view> given;
    for (std::size_t i = from; i < to; ++i) given.push_back(statement.words[i].text());
    const bool saysNone = text.find(kNoneRemark) != text.npos;
    for (std::size_t i = 0; i < given.size(); ++i) {
        const std::vector<std::string_view> names = forms.namesOf(given, i);
        const auto kind = std::ranges::find_if(names, resourceWord);
        const bool isNone = given[i] == kNone && std::ranges::find(names, kNone) != names.end();
        if (kind != names.end() && !isNone)
            checkResource(statement, statement.words[from + i], *kind, saysNone);
    }
}

void ScriptRules::checkResourceProperty(const Statement& statement,
                                        const std::vector<const OMSEntry*>& rows) {
    const OMSEntry& first = *rows.front();
    const auto isSame = [&](const OMSEntry* row) { return row->resource == first.resource; };
    const auto mayBeNone = [](const OMSEntry* row) {
        return row->help.find(kNone) != row->help.npos;
    };
    if (std::ranges::all_of(rows, isSame))
        checkResource(statement, statement.words.back(), first.resource,
                      std::ranges::any_of(rows, mayBeNone));
}

// ---------------------------------------------------------------------------- frames

/// The animation that a statement makes an object of, and that stays its animation.
std::optional<int> ScriptRules::animationMade(const Statement& assignment) const {
    const OMSClass* made = facts_.constructed(assignment);
    if (assignment.opcode != YOpcode::Assign || !made || made->find(kPicture)) return std::nullopt;
    const std::vector<Word>& words = assignment.words;
    const ArgumentForms forms(made->arguments);
    for (std::size_t i = 2; i < words.size(); ++i)
        for (const std::string_view name : forms.names(words.size() - 2, i - 2))
            if (const ResourceWord* kind = resourceWord(name); kind && kind->type == "ASEQ")
                return onlyNumber(words[i]);
    return std::nullopt;
}

/// Of all objects that a name may hold.
std::optional<int> ScriptRules::onlyAnimation(const Word& word) const {
    if (!word.canHold() || !facts_.of(*word.variable).isObject()) return std::nullopt;
    std::optional<int> only;
    for (const Statement* store : facts_.of(*word.variable).stores) {
        const auto animation = animationMade(*store);
        if (!animation || (only && *only != *animation)) return std::nullopt;
        only = animation;
    }
    const bool isEdited = std::ranges::any_of(model_.statements(), [](const Statement& other) {
        return other.opcode == YOpcode::Set && other.words.size() > 1 &&
               other.words[1].text().find(kEntryField) != std::string::npos;
    });
    return isEdited ? std::nullopt : only;
}

void ScriptRules::checkFrame(const Statement& statement, const OMSEntry& row) {
    const bool isSequence = &row == OMAnimation::kClass.find("sequence");
    if (!isSequence && &row != OMAnimation::kClass.find("frame")) return;
    const Word& value = statement.words.back();
    const auto number = game_.resources.areKnown() ? onlyNumber(value) : std::nullopt;
    const auto animation = number ? onlyAnimation(statement.words.front()) : std::nullopt;
    const auto frames = animation ? game_.resources.framesOf(*animation) : std::nullopt;
    if (!frames) return;
    const int last = isSequence ? static_cast<int>(frames->size()) : std::ranges::max(*frames);
    if (*number >= 1 && *number <= last) return;
    const std::string many = (last == 1 ? "" : "s") + std::string(isSequence ? "" : " at most");
    tell(Rule::Frame, statement, value,
         "animation " + std::to_string(*animation) + " has " + std::to_string(last) +
             (isSequence ? " sequence" : " frame") + many + ", counted from 1, so " + value.text() +
             " changes nothing");
}

} // namespace mps

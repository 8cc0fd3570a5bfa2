#include "zorbetmps/texts/textflow.h"

#include "zorbetmps/check/arguments.h"

#include "actions/actioncontainer.h"
#include "commands/commands.h"
#include "omsclass.h"
#include "yexpression.h"

#include <algorithm>

namespace mps {

namespace {

/// What shows texts. Of methods and commands it is the argument of that name.
struct TextShower {
    std::string_view owner; ///< a class; empty for a command
    std::string_view entry;
};
constexpr TextShower kTextShowers[] = {
    {"RText", "text"},
    {"RGraphicTextAnswer", "text"},
    {"RDoubleGraphicTextAnswer", "text1"},
    {"RDoubleGraphicTextAnswer", "text2"},
    {"RPuzzle", "setAnswer"},
    {"RPuzzle", "setPuzzleText"},
    {"", "MessageBox"},
};
constexpr std::string_view kShownArgument = "text";
constexpr std::string_view kPropertyAction = "PropertyAction";
constexpr std::size_t kPropertyParameters = 3;   ///< object, property, value
constexpr std::string_view kAddedAction = "add"; ///< of containers of actions
constexpr std::string_view kAuthorsLog = "LogMessage";
constexpr std::string_view kPlaysOn = "}";

std::string_view stemOf(std::string_view name) {
    return name.substr(0, name.find(YVariable::kSeparator));
}

std::string_view withoutQuotes(std::string_view text) { return text.substr(1, text.size() - 2); }

bool isText(const YVariable& leaf) {
    return leaf.kind() == YVariable::Kind::Constant && leaf.text().size() > 1 &&
           YVariable::isQuote(leaf.text().front());
}

std::string of(std::string_view entry, const Word& object) {
    return std::string(entry) + " of " + std::string(stemOf(object.text()));
}

} // namespace

TextFlow::TextFlow(const ScriptModel& model, const ScriptFacts& facts, IsSkipped isSkipped)
    : model_(model), facts_(facts), isSkipped_(std::move(isSkipped)) {
    for (const Statement& statement : model.statements()) look(statement);
    follow();
    for (Found& found : found_) {
        Fate fate;
        (void)follow(found.goal, fate);
        found.use.showers = fate.showers;
        found.use.why = fate.why;
        uses_.push_back(std::move(found.use));
    }
    addLists();
}

void TextFlow::look(const Statement& statement) {
    const std::vector<Word>& words = statement.words;
    switch (statement.opcode) {
    case YOpcode::Assign: return lookAtAssignment(statement);
    case YOpcode::Procedure:
    case YOpcode::Drop:
    case YOpcode::Debug:
    case YOpcode::Yield: return;
    case YOpcode::Say: // to the author
        for (const Word& word : words) send(statement, word, {Goal::Kind::Ignored, {}});
        return;
    case YOpcode::Call: return lookAtCall(statement);
    case YOpcode::Set: return lookAtSet(statement);
    case YOpcode::Play: return lookAtPlay(statement);
    case YOpcode::Get:
        lookAtTarget(statement, words.front());
        workWith(statement, 1, words.size() - 1, "the name of what is got");
        return lookAtTarget(statement, words.back());
    case YOpcode::ForSetUp:
        if (words.size() > 1) lookAtTarget(statement, words.front());
        return workWith(statement, words.size() > 1 ? 1 : 0, words.size(), "counted or compared");
    case YOpcode::Command: {
        const std::string& name = words.front().text();
        const auto rows = RCommands::words();
        const auto row = std::ranges::find(rows, name, &RCommandWords::name);
        const bool isShower = std::ranges::any_of(kTextShowers, [&](const TextShower& shower) {
            return shower.owner.empty() && shower.entry == name;
        });
        if (isShower && row != rows.end())
            return lookAtArguments(statement, 1, words.size(), row->arguments,
                                   {Goal::Kind::Shown, name}, "an argument of " + name);
        if (name == kAuthorsLog)
            for (std::size_t i = 1; i < words.size(); ++i)
                send(statement, words[i], {Goal::Kind::Ignored, {}});
        else
            workWith(statement, 1, words.size(), "an argument of " + name);
        return;
    }
    case YOpcode::Test: return workWith(statement, 0, words.size(), "compared");
    default: workWith(statement, 0, words.size(), "a word of a statement that shows nothing");
    }
}

void TextFlow::lookAtAssignment(const Statement& statement) {
    const std::vector<Word>& words = statement.words;
    lookAtTarget(statement, words.front());
    if (words.size() == 2 && words.front().canHold())
        send(statement, words[1], {Goal::Kind::Name, ScriptFacts::keyOf(words.front().text())});
    else
        workWith(statement, 1, words.size(), "an argument of " + nameOf(statement, 1));
}

void TextFlow::lookAtCall(const Statement& statement) {
    const std::vector<Word>& words = statement.words;
    const WordFacts called = facts_.of(words.front(), statement);
    if (called.isUnknown || called.procedures.empty())
        return workWith(statement, 1, words.size(), "handed to a procedure that is not known here");
    for (const int number : called.procedures) {
        const Procedure& procedure = model_.procedures()[static_cast<std::size_t>(number)];
        const std::vector<Word>& header = model_.statements()[procedure.statement].words;
        for (std::size_t i = 1; i < std::min(words.size(), header.size()); ++i)
            send(statement, words[i], {Goal::Kind::Name, ScriptFacts::keyOf(header[i].text())});
    }
}

void TextFlow::lookAtSet(const Statement& statement) {
    const std::vector<Word>& words = statement.words;
    lookAtTarget(statement, words.front());
    workWith(statement, 1, words.size() - 1, "the name of what is set");
    if (words.size() < 3) return;
    const std::string property = nameOf(statement, 1);
    if (shows(classesOf(statement), property))
        send(statement, words.back(), {Goal::Kind::Shown, of(property, words.front())});
    else
        workWith(statement, words.size() - 1, words.size(), of(property, words.front()));
}

void TextFlow::lookAtPlay(const Statement& statement) {
    const std::vector<Word>& words = statement.words;
    lookAtTarget(statement, words.front());
    std::size_t end = 1;
    while (end < words.size() && words[end].text() != kPlaysOn) ++end;
    if (end < 3) return;
    const std::string method = nameOf(statement, 1);
    workWith(statement, 1, 2, "the name of a method");
    if (method == kAddedAction && nameOf(statement, 2) == kPropertyAction)
        return lookAtAction(statement, end);
    const std::set<const OMSClass*> classes = classesOf(statement);
    const OMSEntry* row = nullptr;
    for (const OMSClass* known : classes) row = known->find(method);
    const std::string why = "an argument of " + method;
    if (row && shows(classes, method))
        lookAtArguments(statement, 2, end, row->help,
                        {Goal::Kind::Shown, of(method, words.front())}, why);
    else
        workWith(statement, 2, end, why);
}

void TextFlow::lookAtAction(const Statement& statement, std::size_t end) {
    const std::size_t value = 2 + kPropertyParameters;
    if (end <= value) return workWith(statement, 2, end, "a word of an action");
    const std::string object = nameOf(statement, 3);
    const std::string property = nameOf(statement, 4);
    const auto named = facts_.all().find(ScriptFacts::keyOf(object));
    const bool isShown = named != facts_.all().end() && shows(named->second.classes, property);
    workWith(statement, 2, value, "a word of an action");
    workWith(statement, value + 1, end, "a word of an action");
    if (isShown)
        send(statement, statement.words[value],
             {Goal::Kind::Shown, property + " of " + std::string(stemOf(object))});
    else
        workWith(statement, value, value + 1, property + " of an object");
}

void TextFlow::lookAtArguments(const Statement& statement, std::size_t from, std::size_t to,
                               std::string_view forms, const Goal& shown, const std::string& why) {
    const ArgumentForms arguments(forms);
    for (std::size_t i = from; i < to; ++i) {
        const std::vector<std::string_view> names = arguments.names(to - from, i - from);
        if (!names.empty() && std::ranges::all_of(names, [](std::string_view name) {
                return name == kShownArgument;
            }))
            send(statement, statement.words[i], shown);
        else
            workWith(statement, i, i + 1, why);
    }
}

void TextFlow::workWith(const Statement& statement, std::size_t from, std::size_t to,
                        const std::string& why) {
    for (std::size_t i = from; i < to; ++i)
        send(statement, statement.words[i], {Goal::Kind::Worked, why});
}

/// Of a name that holds an object or is stored to, only the parts are read.
void TextFlow::lookAtTarget(const Statement& statement, const Word& target) {
    if (target.canHold())
        sendParts(statement, target, *target.variable, "a part of a name");
    else
        send(statement, target, {Goal::Kind::Worked, "the name of an object"});
}

void TextFlow::send(const Statement& statement, const Word& word, const Goal& wanted) {
    const bool isSkipped = wanted.kind == Goal::Kind::Shown && isSkipped_(statement.place);
    const Goal goal = isSkipped ? Goal{Goal::Kind::Worked, "skipped"} : wanted;
    if (const YExpression* expression = word.variable->expression())
        sendNode(statement, word, expression->root(), goal);
    else
        send(statement, word, *word.variable, goal);
}

void TextFlow::sendNode(const Statement& statement, const Word& word, const YExpression::Node& node,
                        const Goal& goal) {
    if (node.leaf) return send(statement, word, *node.leaf, goal);
    const bool joins = node.operation == '+' && node.left;
    const Goal own = joins ? goal
                           : Goal{Goal::Kind::Worked,
                                  isComparison(node.operation) ? "compared" : "computed with"};
    if (node.left) sendNode(statement, word, *node.left, own);
    if (node.right) sendNode(statement, word, *node.right, own);
}

void TextFlow::send(const Statement& statement, const Word& word, const YVariable& leaf,
                    const Goal& goal) {
    if (isText(leaf)) {
        TextUse use{statement.place,
                    word.column,
                    std::string(withoutQuotes(leaf.text())),
                    word.variable->expression() ? word.text() : std::string(),
                    {},
                    {}};
        found_.push_back({std::move(use), goal});
        return;
    }
    switch (leaf.kind()) {
    case YVariable::Kind::Name:
    case YVariable::Kind::Compound:
        goals_.emplace(ScriptFacts::keyOf(leaf.text()), goal);
        sendParts(statement, word, leaf, "a part of a name");
        return;
    case YVariable::Kind::Substring: return sendParts(statement, word, leaf, "cut");
    default: return;
    }
}

void TextFlow::sendParts(const Statement& statement, const Word& word, const YVariable& variable,
                         const std::string& why) {
    const bool isFamily = variable.kind() == YVariable::Kind::Compound;
    if (!isFamily && variable.kind() != YVariable::Kind::Substring) return;
    const std::string_view stem = stemOf(variable.text());
    for (const int part : variable.parts()) {
        if (part == YVariable::kNoPart) continue;
        const YVariable& leaf = model_.heap().get(part);
        if (isFamily && leaf.text() == stem) continue;
        send(statement, Word{&model_.heap().get(part), word.column}, {Goal::Kind::Worked, why});
    }
}

/// The words of lists stand in no statement; they are the values of families.
void TextFlow::addLists() {
    YHeap& heap = model_.heap();
    for (int i = 0; i < heap.count(); ++i) {
        const YVariable& name = heap.get(i);
        for (int element = 1; element <= name.elementCount(); ++element) {
            const int index =
                heap.lookup(name.text() + YVariable::kSeparator + std::to_string(element));
            YScratch scratch;
            if (index >= 0)
                uses_.push_back({{},
                                 0,
                                 std::string(heap.get(index).string(scratch)),
                                 {},
                                 {},
                                 "a word of a list"});
        }
    }
}

void TextFlow::follow() {
    bool changes = true;
    while (changes) {
        changes = false;
        for (const auto& [key, goal] : goals_) changes |= follow(goal, fates_[key]);
    }
}

/// Whether something new came out of it.
bool TextFlow::follow(const Goal& goal, Fate& fate) const {
    const std::size_t showers = fate.showers.size();
    const bool isWorkedWith = !fate.why.empty();
    if (goal.kind == Goal::Kind::Shown) fate.showers.insert(goal.what);
    if (goal.kind == Goal::Kind::Worked && !isWorkedWith) fate.why = goal.what;
    if (const auto next = fates_.find(goal.what);
        goal.kind == Goal::Kind::Name && next != fates_.end()) {
        fate.showers.insert(next->second.showers.begin(), next->second.showers.end());
        if (fate.why.empty()) fate.why = next->second.why;
    }
    return fate.showers.size() != showers || isWorkedWith != !fate.why.empty();
}

/// What a word names by itself: a text in quotes, or a name that holds nothing.
std::string TextFlow::nameOf(const Statement& statement, std::size_t word) const {
    if (word >= statement.words.size()) return {};
    const Word& named = statement.words[word];
    if (named.isConstant()) return named.value();
    return named.isName() && facts_.isUnset(*named.variable) ? named.text() : std::string();
}

std::set<const OMSClass*> TextFlow::classesOf(const Statement& statement) const {
    return facts_.of(statement.words.front(), statement).classes;
}

/// Objects of which nothing is known may be of any class.
bool TextFlow::shows(const std::set<const OMSClass*>& classes, std::string_view entry) const {
    const auto isShower = [&](const OMSClass* known) {
        return std::ranges::any_of(kTextShowers, [&](const TextShower& shower) {
            return shower.entry == entry && !shower.owner.empty() &&
                   (!known || known->name == shower.owner);
        });
    };
    return classes.empty() ? isShower(nullptr) : std::ranges::all_of(classes, isShower);
}

} // namespace mps

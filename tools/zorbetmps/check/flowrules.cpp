// Rules for the flow of a script: conditions, loops, procedures, timers, what is reached.
#include "zorbetmps/check/nearest.h"
#include "zorbetmps/check/scriptrules.h"

#include "omsclass.h"
#include "yexpression.h"

#include <algorithm>

namespace mps {

namespace {

constexpr int kLargestCounter = 32767;
constexpr int kMostCalls = 8; ///< procedures that are followed one into the other

/// Whether a name is always true or always false, since only constants of that kind are stored.
std::optional<bool> alwaysOf(const NameFacts& named) {
    if (named.isUnknown || named.isList || !named.procedures.empty() || named.stores.empty())
        return std::nullopt;
    std::optional<bool> all;
    for (const Statement* store : named.stores) {
        if (store->opcode != YOpcode::Assign || store->words.size() < 2 ||
            !store->words[1].isConstant() || store->words[1].text() == "?")
            return std::nullopt;
        const bool isTrue = !store->words[1].value().starts_with('0');
        if (all && *all != isTrue) return std::nullopt;
        all = isTrue;
    }
    return all;
}

} // namespace

void ScriptRules::checkCondition(const Statement& statement) {
    const std::vector<Word>& words = statement.words;
    if (words.empty()) {
        tell_(Rule::Condition, statement.place, 0, "there is no condition, which counts as true");
        return;
    }
    const Word& word = words.front();
    if (words.size() > 1) {
        const std::string& second = words[1].text();
        const bool isJoined = second == "and" || second == "or" || word.text() == "not";
        tellLost(statement, 1,
                 isJoined ? "there is no \"and\", \"or\" and \"not\"; write (p)*(q), (p)+(q)>0, p=0"
                          : "a condition is one word, without blanks, and its statement stands in "
                            "the next line");
        if (isJoined) return;
    }
    if (word.isConstant() && word.text() != "?") {
        tell(Rule::Condition, statement, word,
             word.text() + " is always " + (word.value().starts_with('0') ? "false" : "true"));
        return;
    }
    if (word.isName()) {
        const NameFacts& named = facts_.of(*word.variable);
        if (!named.isSet())
            tell(Rule::Condition, statement, word,
                 "nothing is stored in " + word.text() + ", which is always true then" +
                     nearName(word.text()));
        else if (const auto outcome = alwaysOf(named))
            tell(Rule::Condition, statement, word,
                 word.text() + " is always " + (*outcome ? "true" : "false") +
                     " here, whatever is stored in it" +
                     (*outcome ? ": only what begins with 0 is false" : ""));
        else if (!named.procedures.empty() && named.stores.empty())
            tell(Rule::Condition, statement, word,
                 word.text() +
                     " is a procedure, which is always true; call it first, and test what "
                     "it has stored");
        return;
    }
    if (!word.variable->expression()) return;
    const Node& root = word.variable->expression()->root();
    const auto isUnset = [&](const Node* node) {
        return node && node->leaf && node->leaf->kind() == YVariable::Kind::Name &&
               facts_.isUnset(*node->leaf);
    };
    if (root.operation == '=' && root.left && root.right && root.left->leaf && root.right->leaf) {
        const YVariable* digit =
            root.left->leaf->text() == "?" ? root.right->leaf : root.left->leaf;
        const bool hasDigit = root.left->leaf->text() == "?" || root.right->leaf->text() == "?";
        if (hasDigit && isNumber(*digit) && (digit->number() < 0 || digit->number() > 9))
            tell(Rule::Condition, statement, word,
                 "? is a digit, so " + word.text() + " is never true");
    }
    const auto isConstant = [](const Node* node) {
        return node && node->leaf && node->leaf->kind() == YVariable::Kind::Constant &&
               node->leaf->text() != "?";
    };
    if (isComparison(root.operation) && (isUnset(root.left) || isConstant(root.left)) &&
        (isUnset(root.right) || isConstant(root.right))) {
        const Node* empty = isUnset(root.left) ? root.left : root.right;
        tell(Rule::Condition, statement, word,
             "the outcome of " + word.text() + " is always the same" +
                 (isUnset(empty) ? ": nothing is stored in " + empty->leaf->text() +
                                       nearName(empty->leaf->text())
                                 : std::string()));
        return;
    }
    checkWord(statement, word);
}

/// Whether a loop's body leaves it for good, with "break" or for another script.
bool ScriptRules::isLeft(const Statement& loop) const {
    const auto& instructions = model_.script().instructions;
    const int end = model_.endOfLoop(loop);
    for (int at = loop.at + 3; at < end; ++at) {
        const YInstruction& instruction = instructions[static_cast<std::size_t>(at)];
        if (YIsJump(instruction.opcode) && instruction.operand >= end) return true;
    }
    return false;
}

/// Whether the statements between two instructions may let time pass, or end the script.
bool ScriptRules::givesWay(int from, int to, int depth) const {
    if (depth > kMostCalls) return true;
    for (const Statement& statement : model_.between(from, to)) {
        switch (statement.opcode) {
        case YOpcode::Wait:
        case YOpcode::Pause:
        case YOpcode::Exit:
        case YOpcode::Relay:
        case YOpcode::Quit: return true;
        case YOpcode::Play:
            if (statement.words.back().text() == "}") return true;
            break;
        case YOpcode::Call: {
            const WordFacts called = facts_.of(statement.words.front(), statement);
            if (called.procedures.empty() || called.isUnknown) return true;
            for (const int number : called.procedures) {
                const Procedure& procedure = model_.procedures()[static_cast<std::size_t>(number)];
                if (givesWay(procedure.entry, procedure.end, depth + 1)) return true;
            }
            break;
        }
        default: break;
        }
    }
    return false;
}

/// Whether what a condition reads may be another value in the next round.
bool ScriptRules::mayChange(const Word& condition, const Statement& loop) const {
    if (condition.text().find_first_of("?$") != std::string::npos) return true;
    const int end = model_.endOfLoop(loop);
    const auto isInLoop = [&](const Statement& statement) {
        return statement.at > loop.at && statement.at < end;
    };
    for (const YVariable* leaf : model_.leaves(*condition.variable)) {
        const NameFacts& named = facts_.of(*leaf);
        if (named.isUnknown || leaf->index() == YHeap::kResult) return true;
        // Handlers and procedures may do their work at any time.
        for (const Statement* store : named.stores)
            if (isInLoop(*store) || store->procedure >= 0) return true;
    }
    for (const Statement& statement : model_.between(loop.at + 1, end))
        if (statement.opcode == YOpcode::Drop) return true;
    return false;
}

void ScriptRules::checkLoop(const Statement& statement) {
    const std::vector<Word>& words = statement.words;
    const bool isQuick = statement.procedure >= 0 ||
                         std::ranges::any_of(model_.statements(), [](const Statement& s) {
                             return s.opcode == YOpcode::Yield && s.words.front().text() == "off";
                         });
    const auto tellEndless = [&](const std::string& why) {
        if (isLeft(statement) || !isQuick ||
            givesWay(statement.at + 1, model_.endOfLoop(statement), 0))
            return;
        tell_(Rule::Loop, statement.place, words.empty() ? 0 : words.front().column,
              why + ", and the loop never gives way: nothing else happens any more");
    };
    if (words.empty()) {
        tellEndless("the loop has no end");
        return;
    }
    const Word& first = words.front();
    if (words.size() == 1) {
        if (first.isConstant() && first.value().starts_with('0'))
            tell(Rule::Loop, statement, first,
                 "the condition is always false, so the loop never runs");
        else if ((first.isConstant() && first.text() != "?") ||
                 (first.isName() && facts_.isUnset(*first.variable)))
            tellEndless(first.text() + " is always true" + nearName(first.text()));
        else if (!mayChange(first, statement))
            tellEndless("nothing in the loop changes " + first.text());
        else
            checkWord(statement, first);
        return;
    }
    if (!first.canHold()) {
        tell(Rule::Loop, statement, first,
             first.text() + " is no name that could count; write for NAME FROM TO");
        return;
    }
    for (std::size_t i = 1; i < std::min<std::size_t>(words.size(), 4); ++i) {
        const Word& word = words[i];
        if (word.isName() && facts_.isUnset(*word.variable))
            tell(Rule::NeverSet, statement, word,
                 "a number is wanted, and nothing is stored in " + word.text() +
                     nearName(word.text()));
        checkWord(statement, word);
    }
    if (words.size() > 4) tellLost(statement, 4, "for takes NAME FROM TO STEP");
    for (const Statement& inner : model_.between(statement.at + 1, model_.endOfLoop(statement)))
        if (inner.opcode == YOpcode::ForSetUp && inner.words.size() > 1 &&
            inner.words.front().variable == first.variable)
            tell(Rule::Loop, inner, inner.words.front(),
                 "the loop around this one counts with " + first.text() + ", too");
    const auto from = numberOf(words[1]);
    const auto to = words.size() > 2 ? numberOf(words[2]) : std::optional(0.0);
    const auto step =
        words.size() > 3 ? numberOf(words[3]) : std::optional(words.size() > 2 ? 1.0 : -1.0);
    if (step == 0) {
        tell(Rule::Loop, statement, words[3], "with the step 0 the loop never ends");
    } else if (from && to && step && (*to - *from) * *step < 0) {
        tell(Rule::Loop, statement, words[1],
             "the loop counts away from its end" +
                 std::string(words.size() == 3 ? "; to count down, write a step of -1" : ""));
    } else if ((from && std::abs(*from) > kLargestCounter) ||
               (to && std::abs(*to) > kLargestCounter)) {
        tell(Rule::Loop, statement, words[1], "loops count from -32768 to 32767");
    }
}

void ScriptRules::checkScriptName(const Statement& statement, const Word& word) {
    std::string name;
    if (word.isConstant()) {
        name = word.value();
    } else if (word.canHold()) {
        for (const YVariable* leaf : model_.leaves(*word.variable)) {
            if (leaf->kind() != YVariable::Kind::Constant && !facts_.isUnset(*leaf)) {
                if (leaf != word.variable)
                    tell(Rule::NameClash, statement, word,
                         "something is stored in " + leaf->text() +
                             ", which changes this name; write \"" + word.text() + "\"");
                return;
            }
        }
        name = word.text();
    } else {
        return;
    }
    if (!game_.hasScript(name))
        tell(Rule::UnknownScript, statement, word,
             "there is no script " + name + game_.nearScript(name));
    else if (const std::string other = game_.otherSpelling(name); !other.empty())
        tell(Rule::LetterCase, statement, word, "the file is called " + other);
}

void ScriptRules::checkCall(const Statement& statement) {
    const std::vector<Word>& words = statement.words;
    const Word& word = words.front();
    checkNotObjects(statement, 1, words.size());
    for (std::size_t i = 1; i < words.size(); ++i) checkWord(statement, words[i]);
    if (!word.canHold()) {
        checkScriptName(statement, word);
        return;
    }
    const WordFacts called = facts_.of(word, statement);
    if (called.isUnset && word.isName()) {
        if (game_.hasScript(word.text())) return;
        std::vector<std::string_view> names;
        for (const Procedure& procedure : model_.procedures())
            names.push_back(procedure.name->text());
        tell(Rule::UnknownProcedure, statement, word,
             "there is neither a procedure " + word.text() + " nor a script of this name" +
                 didYouMean(word.text(), names));
        return;
    }
    if (called.isUnset) {
        checkScriptName(statement, word);
        return;
    }
    if (called.procedures.size() != 1 || called.isUnknown || called.holdsValue) return;
    const Procedure& procedure =
        model_.procedures()[static_cast<std::size_t>(*called.procedures.begin())];
    const std::size_t takes = model_.statements()[procedure.statement].words.size() - 1;
    for (std::size_t i = words.size(); i <= takes; ++i) {
        const Word& parameter = model_.statements()[procedure.statement].words[i];
        const NameFacts& named = facts_.of(*parameter.variable);
        const bool isPassed = std::ranges::any_of(model_.statements(), [&](const Statement& other) {
            return other.opcode == YOpcode::Call && other.words.size() > i &&
                   other.words.front().variable == word.variable;
        });
        if (named.stores.size() == 1 && named.reads > 0 && !isPassed)
            tell(Rule::Arguments, statement, word,
                 "nothing is stored in " + parameter.text() + ", the parameter " +
                     std::to_string(i) + " of " + word.text());
    }
    if (words.size() - 1 > takes)
        tell(Rule::Arguments, statement, words[takes + 1],
             word.text() + " has " + (takes == 0 ? "no" : std::to_string(takes)) +
                 (takes == 1 ? " parameter" : " parameters") + "; what is more has no effect");
}

void ScriptRules::checkTimer(const Statement& statement) {
    const std::vector<Word>& words = statement.words;
    if (words[0].isQuoted())
        tell(Rule::QuotedNumber, statement, words[0],
             words[0].text() + " counts as 0 here; write the number without quotes");
    const WordFacts handler = facts_.of(words[1], statement);
    if (!handler.isUnknown && handler.procedures.empty())
        tell(Rule::UnknownProcedure, statement, words[1],
             words[1].text() + " is no procedure" + nearName(words[1].text()));
    if (words.size() > 2)
        tellLost(statement, 2, "a procedure that is called by a timer gets no values");
    checkWord(statement, words[0]);
}

void ScriptRules::checkProcedures() {
    for (std::size_t i = 0; i < model_.procedures().size(); ++i) {
        const Procedure& procedure = model_.procedures()[i];
        const Statement& header = model_.statements()[procedure.statement];
        const Word& name = header.words.front();
        const NameFacts& named = facts_.of(*procedure.name);
        if (header.procedure >= 0)
            tell(Rule::NestedProcedure, header, name,
                 name.text() + " stands inside another procedure, which ends where this one does; "
                               "move it out of there");
        if (model_.procedureNamed(*procedure.name) != &procedure) {
            tell(Rule::Twice, header, name,
                 "another procedure " + name.text() + " below takes the place of this one");
            continue;
        }
        if (!named.stores.empty()) {
            const Statement& store = *named.stores.front();
            tell(Rule::NameClash, store, store.words.front(),
                 name.text() +
                     " is a procedure, which is lost when something else is stored in it");
        }
        if (!facts_.isUsed(static_cast<int>(i)) && !named.isMentioned && !facts_.readsByText())
            tell(Rule::NeverRuns, header, name,
                 "nothing calls " + name.text() + ", and no event and no timer has it");
    }
}

void ScriptRules::checkReached() {
    const std::vector<bool> reached = model_.reached();
    bool wasReached = true;
    for (const Statement& statement : model_.statements()) {
        if (statement.opcode == YOpcode::Procedure) continue;
        const bool isReached = reached[static_cast<std::size_t>(statement.at)];
        if (!isReached && wasReached)
            tell_(Rule::NeverRuns, statement.place, 0, "what stands before this never comes here");
        wasReached = isReached;
    }
}

/// Uses of an object behind its drop, with nothing between that could be a way around.
void ScriptRules::checkDrops() {
    std::set<const YVariable*> dropped;
    int last = -1;
    for (const Statement& statement : model_.statements()) {
        if (statement.at != last + 1) dropped.clear();
        last = statement.at;
        switch (statement.opcode) {
        case YOpcode::Drop:
            for (const Word& word : statement.words)
                if (word.isName() && facts_.of(*word.variable).isObject())
                    dropped.insert(word.variable);
            break;
        case YOpcode::Assign: dropped.erase(statement.words.front().variable); break;
        case YOpcode::Set:
        case YOpcode::Get:
        case YOpcode::Play:
            if (dropped.contains(statement.words.front().variable))
                tell(Rule::AfterDrop, statement, statement.words.front(),
                     statement.words.front().text() + " was dropped before");
            break;
        case YOpcode::Say:
        case YOpcode::Debug: break;
        default: dropped.clear();
        }
    }
}

/// Objects that the script's beginning uses before they are made.
void ScriptRules::checkOrder() {
    int behindLoop = 0; // the end of the outermost loop that this is in
    for (const Statement& statement : model_.statements()) {
        if (statement.procedure >= 0) continue;
        if (statement.opcode == YOpcode::ForSetUp)
            behindLoop = std::max(behindLoop, model_.endOfLoop(statement));
        const bool isUse = statement.opcode == YOpcode::Set || statement.opcode == YOpcode::Get ||
                           statement.opcode == YOpcode::Play;
        if (!isUse || !statement.words.front().isName()) continue;
        const Word& word = statement.words.front();
        const NameFacts& named = facts_.of(*word.variable);
        const bool isLater = std::ranges::all_of(named.stores, [&](const Statement* store) {
            return store->procedure < 0 && store->at > statement.at && store->at >= behindLoop;
        });
        if (named.isObject() && isLater)
            tell(Rule::BeforeMade, statement, word,
                 word.text() + " holds an object only from line " +
                     std::to_string(named.stores.front()->place.line) + " on");
    }
}

void ScriptRules::checkTimers() {
    const Statement* last = nullptr;
    for (const Statement& statement : model_.statements()) {
        const bool isTimer =
            statement.opcode == YOpcode::Schedule || statement.opcode == YOpcode::Idle;
        if (isTimer && last && last->opcode == statement.opcode && last->at + 1 == statement.at)
            tell(Rule::Timer, statement, statement.words.front(),
                 "there is one timer of this kind, which loses what the line before has set");
        last = &statement;
        if (statement.opcode != YOpcode::Drop || statement.procedure < 0 ||
            !facts_.isHandler(statement.procedure))
            continue;
        const Procedure& procedure =
            model_.procedures()[static_cast<std::size_t>(statement.procedure)];
        for (const Word& word : statement.words)
            if ((word.text() == "idle" || word.text() == "schedule") &&
                !givesWay(statement.at + 1, procedure.end, 0))
                tell(Rule::Timer, statement, word,
                     "this makes the handler the script's main part, and the script stops at its "
                     "end; end it with wait or relay, or drop the timer in the main part");
    }
}

} // namespace mps

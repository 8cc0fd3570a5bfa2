// Rules for values, names and the flow of a script.
#include "zorbetmps/check/nearest.h"
#include "zorbetmps/check/scriptrules.h"

#include "omsclass.h"
#include "yexpression.h"

#include <algorithm>

namespace mps {

namespace {

using Node = YExpression::Node;

constexpr int kLargestCounter = 32767;
constexpr int kMostCalls = 8;        ///< procedures that are followed one into the other
constexpr std::size_t kLongName = 5; ///< which another word is hardly like by chance
constexpr std::string_view kDidYouMean = "; did you mean ";

bool isOneOf(char c, std::string_view all) { return all.find(c) != all.npos; }
bool isComparison(const Node& node) { return isOneOf(node.operation, "=#<>"); }

/// Of the words that begin and end with the same quote, those that a bar cuts.
bool isCutText(const Word& word) {
    const std::string& text = word.text();
    return word.kind() == YVariable::Kind::Substring && word.isQuoted() &&
           text.back() == text.front();
}

bool isNumber(const YVariable& word) {
    return word.kind() == YVariable::Kind::Constant &&
           (word.type() == YVariable::Type::Integer || word.type() == YVariable::Type::Real);
}

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

/// A whole number that stands in the script, perhaps with a minus or in parentheses.
std::optional<double> numberOf(const Word& word) {
    if (isNumber(*word.variable)) return word.variable->number();
    const YExpression* expression = word.variable->expression();
    if (!expression || word.text().find_first_not_of("()-0123456789.") != std::string::npos)
        return std::nullopt;
    YValue value;
    if (expression->evaluate(YHeap::current(), value) != yerror::kNone || !value.isNumber())
        return std::nullopt;
    return value.number();
}

} // namespace

std::string ScriptRules::nearName(std::string_view word) const {
    std::vector<std::string_view> names;
    for (const auto& [name, known] : facts_.all())
        if (known.isSet() && !name.ends_with(YVariable::kSeparator)) names.push_back(name);
    return didYouMean(word, names);
}

void ScriptRules::tellLost(const Statement& statement, std::size_t from, const std::string& why) {
    std::string words;
    for (std::size_t i = from; i < statement.words.size(); ++i)
        words += (words.empty() ? "" : " ") + statement.words[i].text();
    tell(Rule::WordsLost, statement, statement.words[from], words + " has no effect: " + why);
}

void ScriptRules::run() {
    for (const Statement& statement : model_.statements()) check(statement);
    checkProcedures();
    checkNames();
    checkReached();
    checkDrops();
    checkOrder();
    checkTimers();
}

void ScriptRules::check(const Statement& statement) {
    const std::vector<Word>& words = statement.words;
    for (const Word& word : words) checkText(statement, word);
    switch (statement.opcode) {
    case YOpcode::Assign: checkAssignment(statement); return;
    case YOpcode::Test: checkCondition(statement); return;
    case YOpcode::ForSetUp: checkLoop(statement); return;
    case YOpcode::Call: checkCall(statement); return;
    case YOpcode::Idle:
    case YOpcode::Schedule: checkTimer(statement); return;
    case YOpcode::Set: checkSet(statement); return;
    case YOpcode::Get:
        checkGet(statement);
        checkStored(statement, words.back());
        return;
    case YOpcode::Play: checkPlay(statement); return;
    case YOpcode::Command: checkCommand(statement); break;
    case YOpcode::Say:
        checkNotObjects(statement, 0, words.size());
        for (const Word& word : words) {
            if (!word.isName() || !facts_.isUnset(*word.variable)) continue;
            // Words are texts here, so only what looks very much like a name is told.
            const std::string near = nearName(word.text());
            if (word.text().size() >= kLongName && near.size() > kDidYouMean.size() + 1 &&
                distance(word.text(), near.substr(kDidYouMean.size(),
                                                  near.size() - kDidYouMean.size() - 1)) == 1)
                tell(Rule::NeverSet, statement, word, "nothing is stored in " + word.text() + near);
        }
        break;
    case YOpcode::Wait:
    case YOpcode::Exit:
    case YOpcode::Suspend:
    case YOpcode::Resume:
        if (!words.empty())
            tellLost(statement, 0,
                     statement.opcode == YOpcode::Wait
                         ? "wait waits for drop wait; pause takes a number of seconds"
                         : "the statement takes no words");
        return;
    case YOpcode::Pause:
        if (words.front().isQuoted())
            tell(Rule::QuotedNumber, statement, words.front(),
                 words.front().text() + " counts as 0 here; write the number without quotes");
        else if (words.front().isName() && facts_.isUnset(*words.front().variable))
            tell(Rule::NeverSet, statement, words.front(),
                 "nothing is stored in " + words.front().text() + ", so there is no pause" +
                     nearName(words.front().text()));
        if (words.size() > 1) tellLost(statement, 1, "pause takes one number");
        break;
    case YOpcode::Yield:
        if (words.front().isName() && words.front().text() != "on" && words.front().text() != "off")
            tell(Rule::WrongKind, statement, words.front(),
                 "yield takes on or off; " + words.front().text() + " counts as " +
                     (words.front().text().size() == 2 ? "on" : "off"));
        return;
    case YOpcode::Relay:
        checkScriptName(statement, words.front());
        if (words.size() > 1) tellLost(statement, 1, "relay takes the name of one script");
        return;
    case YOpcode::Quit:
        if (!words.empty()) checkScriptName(statement, words.front());
        return;
    case YOpcode::Drop:
        for (std::size_t i = 0; i < words.size(); ++i) {
            const Word& word = words[i];
            if (word.text() == "var" || word.text() == "[" || word.text() == "script") {
                ++i;
                continue;
            }
            constexpr std::string_view kOthers[] = {"trinkets", "wait", "schedule", "idle",
                                                    "stack"};
            if (!word.isName() || !facts_.isUnset(*word.variable) ||
                std::ranges::find(kOthers, word.text()) != std::end(kOthers))
                continue;
            tell(Rule::NeverSet, statement, word,
                 "nothing is stored in " + word.text() + nearName(word.text()));
        }
        return;
    default: return;
    }
    for (const Word& word : words) checkWord(statement, word);
}

// ---------------------------------------------------------------------------- values

/// What can be seen of any word.
void ScriptRules::checkText(const Statement& statement, const Word& word) {
    const std::string& text = word.text();
    if (isCutText(word))
        tell(Rule::TextCut, statement, word,
             "a bar cuts a text, in quotes too, so this is not the whole " + text);
    if (word.isName() && text.find('[') != std::string::npos && text.ends_with(']') &&
        facts_.isUnset(*word.variable)) {
        const std::size_t bracket = text.find('[');
        tell(Rule::Bracket, statement, word,
             "there is no index in brackets; write " + text.substr(0, bracket) + "." +
                 text.substr(bracket + 1, text.size() - bracket - 2));
    }
    const std::size_t comma = text.find(',');
    if (word.isConstant() && !word.isQuoted() && comma != std::string::npos &&
        text.find_first_not_of("0123456789,") == std::string::npos)
        tell(Rule::WrongKind, statement, word,
             text + " counts as " + text.substr(0, comma) + "; a fraction has a point");
}

/// What a statement stores in.
void ScriptRules::checkStored(const Statement& statement, const Word& target) {
    if (target.kind() != YVariable::Kind::Compound) return;
    for (const YVariable* leaf : model_.leaves(*target.variable))
        if (leaf != target.variable && leaf->kind() == YVariable::Kind::Name &&
            facts_.isUnset(*leaf))
            tell(Rule::NeverSet, statement, target,
                 "nothing is stored in " + leaf->text() + ", so what is stored in " +
                     target.text() + " is lost" + nearName(leaf->text()));
}

void ScriptRules::checkAssignment(const Statement& statement) {
    const std::vector<Word>& words = statement.words;
    const Word& target = words.front();
    if (!target.canHold() && target.kind() != YVariable::Kind::Untyped)
        tell(Rule::WordsLost, statement, target,
             "nothing can be stored in " + target.text() + ", which is no name");
    checkStored(statement, target);
    if (words.size() == 1) {
        tell(Rule::UnsetValue, statement, target,
             "there is no value; to empty the name write drop " + target.text());
        return;
    }
    if (const OMSClass* made = facts_.constructed(statement)) {
        checkConstruction(statement, *made);
        return;
    }
    if (facts_.constructsUnknown(statement)) return;
    const Word& value = words[1];
    if (value.isName() && facts_.isUnset(*value.variable)) {
        const std::string nearClass = vocabulary_.nearClass(value.text());
        if (words.size() > 2 || !nearClass.empty())
            tell(Rule::UnknownClass, statement, value,
                 value.text() + " is no class, and nothing is stored in it" + nearClass);
        else
            tell(Rule::UnsetValue, statement, value,
                 "nothing is stored in " + value.text() + nearName(value.text()) +
                     "; a text needs quotes");
        return;
    }
    if (words.size() > 2)
        tellLost(statement, 2,
                 "one word is stored; an expression has no blanks, and a text with "
                 "blanks needs quotes");
    checkWord(statement, value);
}

void ScriptRules::checkWord(const Statement& statement, const Word& word) {
    if (word.variable->expression()) checkExpression(statement, word);
}

void ScriptRules::checkExpression(const Statement& statement, const Word& word) {
    const bool hasParentheses = word.text().find('(') != std::string::npos;
    const auto unset = [&](const Node* node) {
        return node && node->leaf && node->leaf->kind() == YVariable::Kind::Name &&
               facts_.isUnset(*node->leaf);
    };
    const auto tellUnset = [&](const Node* node) {
        const std::string& name = node->leaf->text();
        tell(Rule::NeverSet, statement, word,
             "nothing is stored in " + name + ", so " + word.text() + " cannot be computed" +
                 nearName(name));
    };
    const auto tellPrecedence = [&](const std::string& text) {
        tell(Rule::Precedence, statement, word, text);
    };
    const auto look = [&](const auto& self, const Node& node) -> void {
        if (node.leaf) return;
        if (!isOneOf(node.operation, "=#$~"))
            for (const Node* operand : {node.left, node.right})
                if (operand && operand->leaf && operand->leaf->kind() == YVariable::Kind::Name &&
                    facts_.of(*operand->leaf).isObject())
                    tell(Rule::ObjectAsText, statement, word,
                         operand->leaf->text() +
                             " holds an object, which is neither a number nor a text");
        const auto isWrittenNumber = [](const Node* operand) {
            return operand && operand->leaf && isNumber(*operand->leaf) &&
                   !YVariable::isQuote(operand->leaf->text().front());
        };
        const bool isSum =
            node.operation == '+' && (isWrittenNumber(node.left) || isWrittenNumber(node.right));
        if (isSum || isOneOf(node.operation, "-*/\\%^<>"))
            for (const Node* operand : {node.left, node.right})
                if (unset(operand)) tellUnset(operand);
        if (isOneOf(node.operation, "-*/\\%^"))
            for (const Node* operand : {node.left, node.right}) {
                if (!operand || !operand->leaf ||
                    operand->leaf->kind() != YVariable::Kind::Constant)
                    continue;
                const Word constant{operand->leaf, word.column};
                if (!isNumber(*constant.variable) && constant.text() != "?" &&
                    !ynumber::looksNumeric((constant.value() + ' ').front()))
                    tell(Rule::WrongKind, statement, word,
                         constant.text() + " is no number, so " + word.text() +
                             " cannot be computed");
            }
        if (node.operation == '!')
            tellPrecedence(word.text() + " is always 0; \"does not equal\" is written #");
        if (!hasParentheses && node.left) {
            const Node& left = *node.left;
            const bool isZeroOrOne =
                node.right && node.right->leaf &&
                (node.right->leaf->text() == "0" || node.right->leaf->text() == "1");
            if (isComparison(left) &&
                (isOneOf(node.operation, "+-") || (isComparison(node) && !isZeroOrOne)))
                tellPrecedence("comparisons are no weaker than + and -, and are computed from left "
                               "to right; " +
                               word.text() + " needs parentheses");
            if (node.operation == '^' && isOneOf(left.operation, "*/\\%"))
                tellPrecedence(
                    "a power is no stronger than a product, so the product comes first; " +
                    word.text() + " needs parentheses");
            if (node.operation == '-' && left.leaf && left.leaf->text().size() > 1 &&
                isOneOf(left.leaf->text().back(), "eE") && isNumber(*left.leaf))
                tellPrecedence(word.text() + " is " + left.leaf->text() + " minus " +
                               (node.right && node.right->leaf ? node.right->leaf->text() : "") +
                               "; write such a number with all of its digits");
        }
        if (node.left) self(self, *node.left);
        if (node.right) self(self, *node.right);
    };
    look(look, word.variable->expression()->root());
}

void ScriptRules::checkNames() {
    if (facts_.readsByText()) return;
    for (const auto& [name, known] : facts_.all())
        if (!known.stores.empty() && !known.isUnknown && known.procedures.empty() &&
            name != "RESULT")
            checkName(name, known);
}

void ScriptRules::checkName(const std::string& name, const NameFacts& known) {
    const Statement& first = *known.stores.front();
    const Word& word = first.opcode == YOpcode::Get ? first.words.back() : first.words.front();
    const auto isStored = [&](const Statement* store) {
        return store->opcode == YOpcode::Assign || store->opcode == YOpcode::Get;
    };
    if (known.reads == 0 && !known.isMentioned && known.classes.empty()) {
        if (std::ranges::all_of(known.stores, isStored))
            tell(Rule::NeverRead, first, word, "nothing reads what is stored in " + word.text());
        return;
    }
    // Each store computes with what the name held before, and there is no first one.
    const bool isFamily = name.ends_with(YVariable::kSeparator);
    const auto readsItself = [&](const Statement* store) {
        if (store->opcode != YOpcode::Assign || store->words.size() < 2) return false;
        const YVariable& value = *store->words[1].variable;
        const std::vector<YVariable*> leaves = model_.leaves(value);
        return value.expression() &&
               std::ranges::find(leaves, store->words[0].variable) != leaves.end();
    };
    if (!isFamily && !known.isList && std::ranges::all_of(known.stores, readsItself))
        tell(Rule::NeverSet, first, word,
             "nothing is stored in " + word.text() + " before this computes with it; write " +
                 word.text() + "=0 at the beginning");
}

// ---------------------------------------------------------------------------- the flow

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
    if (isComparison(root) && (isUnset(root.left) || isConstant(root.left)) &&
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
    if (game_.hasScript(name) == false)
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
        if (game_.hasScript(word.text()) != false) return;
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

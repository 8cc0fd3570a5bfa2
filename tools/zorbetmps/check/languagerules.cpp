// Rules for values and names.
#include "zorbetmps/check/nearest.h"
#include "zorbetmps/check/scriptrules.h"

#include "omsclass.h"
#include "yexpression.h"

#include <algorithm>

namespace mps {

namespace {

constexpr std::size_t kLongName = 5; ///< which another word is hardly like by chance

bool isOneOf(char c, std::string_view all) { return all.find(c) != all.npos; }

bool isWrittenNumber(const YVariable* leaf) {
    return isNumber(*leaf) && !YVariable::isQuote(leaf->text().front());
}

/// Of the words that begin and end with the same quote, those that a bar cuts.
bool isCutText(const Word& word) {
    const std::string& text = word.text();
    return word.kind() == YVariable::Kind::Substring && word.isQuoted() &&
           text.back() == text.front();
}

} // namespace

std::string_view ScriptRules::nearestName(std::string_view word) const {
    std::vector<std::string_view> names;
    for (const auto& [name, known] : facts_.all())
        if (known.isSet() && !name.ends_with(YVariable::kSeparator)) names.push_back(name);
    return nearest(word, names);
}

std::string ScriptRules::nearName(std::string_view word) const {
    const std::string_view name = nearestName(word);
    return didYouMean(word, {&name, 1});
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
    case YOpcode::Say: checkSay(statement); break;
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
    case YOpcode::Pause: checkPause(statement); break;
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
    case YOpcode::Drop: checkDropped(statement); return;
    default: return;
    }
    for (const Word& word : words) checkWord(statement, word);
}

void ScriptRules::checkSay(const Statement& statement) {
    checkNotObjects(statement, 0, statement.words.size());
    for (const Word& word : statement.words) {
        if (!word.isName() || !facts_.isUnset(*word.variable)) continue;
        // Words are texts here, so only what looks very much like a name is told.
        if (word.text().size() >= kLongName && distance(word.text(), nearestName(word.text())) == 1)
            tell(Rule::NeverSet, statement, word,
                 "nothing is stored in " + word.text() + nearName(word.text()));
    }
}

void ScriptRules::checkPause(const Statement& statement) {
    const Word& seconds = statement.words.front();
    if (seconds.isQuoted())
        tell(Rule::QuotedNumber, statement, seconds,
             seconds.text() + " counts as 0 here; write the number without quotes");
    else if (seconds.isName() && facts_.isUnset(*seconds.variable))
        tell(Rule::NeverSet, statement, seconds,
             "nothing is stored in " + seconds.text() + ", so there is no pause" +
                 nearName(seconds.text()));
    if (statement.words.size() > 1) tellLost(statement, 1, "pause takes one number");
}

void ScriptRules::checkDropped(const Statement& statement) {
    constexpr std::string_view kOthers[] = {"trinkets", "wait", "schedule", "idle", "stack"};
    for (std::size_t i = 0; i < statement.words.size(); ++i) {
        const Word& word = statement.words[i];
        if (word.text() == "var" || word.text() == "[" || word.text() == "script")
            ++i; // the next word is not read
        else if (word.isName() && facts_.isUnset(*word.variable) &&
                 std::ranges::find(kOthers, word.text()) == std::end(kOthers))
            tell(Rule::NeverSet, statement, word,
                 "nothing is stored in " + word.text() + nearName(word.text()));
    }
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
    const auto look = [&](const auto& self, const Node& node) -> void {
        if (node.leaf) return;
        checkOperands(statement, word, node);
        if (node.operation == '!')
            tell(Rule::Precedence, statement, word,
                 word.text() + " is always 0; \"does not equal\" is written #");
        if (!hasParentheses && node.left) checkPrecedence(statement, word, node);
        if (node.left) self(self, *node.left);
        if (node.right) self(self, *node.right);
    };
    look(look, word.variable->expression()->root());
}

/// Words that are not what their operator computes with.
void ScriptRules::checkOperands(const Statement& statement, const Word& word, const Node& node) {
    std::vector<YVariable*> leaves;
    for (const Node* operand : {node.left, node.right})
        if (operand && operand->leaf) leaves.push_back(operand->leaf);
    const auto isOf = [&](std::string_view operations) {
        return isOneOf(node.operation, operations);
    };
    const bool isSum = node.operation == '+' && std::ranges::any_of(leaves, isWrittenNumber);
    for (const YVariable* leaf : leaves)
        if (!isOf("=#$~")) checkNoObject(statement, word, *leaf);
    for (const YVariable* leaf : leaves)
        if (isSum || isOf("-*/\\%^<>")) checkIsSet(statement, word, *leaf);
    for (YVariable* leaf : leaves)
        if (isOf("-*/\\%^")) checkIsNumber(statement, word, *leaf);
}

void ScriptRules::checkNoObject(const Statement& statement, const Word& word,
                                const YVariable& leaf) {
    if (leaf.kind() == YVariable::Kind::Name && facts_.of(leaf).isObject())
        tell(Rule::ObjectAsText, statement, word,
             leaf.text() + " holds an object, which is neither a number nor a text");
}

void ScriptRules::checkIsSet(const Statement& statement, const Word& word, const YVariable& leaf) {
    if (leaf.kind() == YVariable::Kind::Name && facts_.isUnset(leaf))
        tell(Rule::NeverSet, statement, word,
             "nothing is stored in " + leaf.text() + ", so " + word.text() + " cannot be computed" +
                 nearName(leaf.text()));
}

void ScriptRules::checkIsNumber(const Statement& statement, const Word& word, YVariable& leaf) {
    if (leaf.kind() != YVariable::Kind::Constant || isNumber(leaf) || leaf.text() == "?") return;
    if (!ynumber::looksNumeric((Word{&leaf, word.column}.value() + ' ').front()))
        tell(Rule::WrongKind, statement, word,
             leaf.text() + " is no number, so " + word.text() + " cannot be computed");
}

/// What is computed in another order than it seems; `node` has a left operand.
void ScriptRules::checkPrecedence(const Statement& statement, const Word& word, const Node& node) {
    const Node& left = *node.left;
    const YVariable* right = node.right ? node.right->leaf : nullptr;
    const auto tellIt = [&](const std::string& text) {
        tell(Rule::Precedence, statement, word, text);
    };
    const bool isZeroOrOne = right && (right->text() == "0" || right->text() == "1");
    if (isComparison(left.operation) &&
        (isOneOf(node.operation, "+-") || (isComparison(node.operation) && !isZeroOrOne)))
        tellIt("comparisons are no weaker than + and -, and are computed from left to right; " +
               word.text() + " needs parentheses");
    if (node.operation == '^' && isOneOf(left.operation, "*/\\%"))
        tellIt("a power is no stronger than a product, so the product comes first; " + word.text() +
               " needs parentheses");
    if (node.operation == '-' && left.leaf && left.leaf->text().size() > 1 &&
        isOneOf(left.leaf->text().back(), "eE") && isNumber(*left.leaf))
        tellIt(word.text() + " is " + left.leaf->text() + " minus " + (right ? right->text() : "") +
               "; write such a number with all of its digits");
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

} // namespace mps

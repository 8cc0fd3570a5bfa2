#include "zorbetmps/check/scriptmodel.h"

#include "yexpression.h"

#include <algorithm>

namespace mps {

namespace {

/// What the compiler adds, which no author has written.
bool isWritten(YOpcode opcode) {
    switch (opcode) {
    case YOpcode::End:
    case YOpcode::ForNext:
    case YOpcode::JumpIfFalse:
    case YOpcode::Jump:
    case YOpcode::Nothing:
    case YOpcode::Return:
    case YOpcode::ReturnFromInterrupt:
    case YOpcode::Else: return false;
    default: return true;
    }
}

void addLeaves(const YExpression::Node& node, std::vector<YVariable*>& leaves) {
    if (node.leaf) leaves.push_back(node.leaf);
    if (node.left) addLeaves(*node.left, leaves);
    if (node.right) addLeaves(*node.right, leaves);
}

} // namespace

std::string Word::value() const {
    YScratch scratch;
    return std::string(variable->string(scratch));
}

bool isNumber(const YVariable& word) {
    return word.kind() == YVariable::Kind::Constant &&
           (word.type() == YVariable::Type::Integer || word.type() == YVariable::Type::Real);
}

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

ScriptModel::ScriptModel(const YScript& script, YHeap& heap) : script_(script), heap_(heap) {
    std::vector<std::size_t> open; // procedures that have not returned yet
    for (std::size_t i = 0; i < script.instructions.size(); ++i) {
        const YInstruction& instruction = script.instructions[i];
        const int at = static_cast<int>(i);
        if (instruction.opcode == YOpcode::Return && !open.empty()) {
            procedures_[open.back()].end = at;
            open.pop_back();
        }
        if (!isWritten(instruction.opcode)) continue;
        statements_.push_back(
            {instruction.opcode, at, i < script.lines.size() ? script.lines[i] : YSourceLine{},
             wordsOf(instruction), open.empty() ? -1 : static_cast<int>(open.back())});
        if (instruction.opcode != YOpcode::Procedure) continue;
        procedures_.push_back(
            {statements_.back().words.front().variable, statements_.size() - 1, at + 1, at + 1});
        open.push_back(procedures_.size() - 1);
    }
}

std::vector<Word> ScriptModel::wordsOf(const YInstruction& instruction) const {
    std::vector<Word> words;
    if (!YHasOperands(instruction.opcode)) return words;
    for (auto i = static_cast<std::size_t>(instruction.operand);
         i < script_.operands.size() && script_.operands[i] != YScript::kEndOfList; ++i)
        words.push_back(
            {&heap_.get(script_.operands[i]), i < script_.columns.size() ? script_.columns[i] : 0});
    return words;
}

std::span<const Statement> ScriptModel::between(int from, int to) const {
    const auto begin = std::ranges::lower_bound(statements_, from, {}, &Statement::at);
    const auto end = std::ranges::lower_bound(statements_, to, {}, &Statement::at);
    return {begin, std::max(begin, end)};
}

const Procedure* ScriptModel::procedureNamed(const YVariable& name) const {
    // The last one of a name counts.
    for (auto i = procedures_.size(); i-- > 0;)
        if (procedures_[i].name == &name) return &procedures_[i];
    return nullptr;
}

int ScriptModel::endOfLoop(const Statement& loop) const {
    const auto leave = static_cast<std::size_t>(loop.at) + 2; // behind ForSetUp and ForNext
    return script_.instructions[leave].operand;
}

std::vector<bool> ScriptModel::reached() const {
    std::vector<bool> reached(script_.instructions.size() + 1);
    std::vector<int> todo{0};
    for (const Procedure& procedure : procedures_) todo.push_back(procedure.entry);
    while (!todo.empty()) {
        const int at = todo.back();
        todo.pop_back();
        const auto i = static_cast<std::size_t>(at);
        if (i >= script_.instructions.size() || reached[i]) continue;
        reached[i] = true;
        const YInstruction& instruction = script_.instructions[i];
        switch (instruction.opcode) {
        case YOpcode::End:
        case YOpcode::Return:
        case YOpcode::Exit:
        case YOpcode::Relay:
        case YOpcode::Quit: break;
        case YOpcode::Jump: todo.push_back(instruction.operand); break;
        case YOpcode::JumpIfFalse:
            todo.push_back(instruction.operand);
            todo.push_back(at + 1);
            break;
        case YOpcode::Procedure: {
            const auto own = std::ranges::find(procedures_, at + 1, &Procedure::entry);
            todo.push_back(own->end + 1);
            break;
        }
        default: todo.push_back(at + 1);
        }
    }
    return reached;
}

std::vector<YVariable*> ScriptModel::leaves(const YVariable& word) const {
    std::vector<YVariable*> leaves;
    if (const YExpression* expression = word.expression())
        addLeaves(expression->root(), leaves);
    else
        leaves.push_back(&heap_.get(word.index()));
    const std::size_t direct = leaves.size();
    for (std::size_t i = 0; i < direct; ++i) addParts(*leaves[i], leaves);
    return leaves;
}

void ScriptModel::addParts(YVariable& variable, std::vector<YVariable*>& leaves) const {
    if (variable.kind() != YVariable::Kind::Compound &&
        variable.kind() != YVariable::Kind::Substring)
        return;
    for (const int part : variable.parts()) {
        if (part == YVariable::kNoPart) continue;
        for (YVariable* leaf : this->leaves(heap_.get(part))) leaves.push_back(leaf);
    }
}

} // namespace mps

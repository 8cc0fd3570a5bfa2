// Decoding: what a script's instructions become when it is loaded.
#include "yprogram.h"

#include "omformat.h"
#include "ynumber.h"

using Do = YProgram::Do;

namespace {

constexpr std::string_view kNumericOperators = "+-*/\\%^=#<>";
/// What the operators do on integers, in that order; powers are reals.
constexpr Do kIntegerOperations[] = {Do::Add,      Do::Subtract,  Do::Multiply, Do::Divide,
                                     Do::Quotient, Do::Remainder, Do::Execute,  Do::Equal,
                                     Do::Unequal,  Do::Less,      Do::Greater};

Do realOperation(char operation) {
    switch (operation) {
    case '+': return Do::AddReal;
    case '-': return Do::SubtractReal;
    case '*': return Do::MultiplyReal;
    default: return Do::OperateReal;
    }
}

bool isConstant(const YVariable& leaf) { return leaf.kind() == YVariable::Kind::Constant; }

} // namespace

/// Writes the rows of one expression, for integers and for reals, as far as it has them.
class YProgram::RowBuilder {
  public:
    explicit RowBuilder(int instruction) : instruction_(static_cast<std::uint16_t>(instruction)) {}

    /// False when the tree needs more than numbers.
    bool add(const YExpression::Node& node, int depth) {
        if (depth >= kStack) return false;
        switch (node.operation) {
        case 't': return addLeaf(Do::LoadInteger, Do::LoadReal, 0, *node.leaf);
        case 'z': return false; // see below: only as a left operand
        case '~':
            if (node.right->operation != 't') return false;
            add(Do::LengthInteger, Do::LengthReal, 0, node.right->leaf);
            return true;
        default: return addOperator(node, depth);
        }
    }

    std::vector<Step> reals;
    std::vector<Step> integers;
    bool hasIntegers = true;

  private:
    bool addOperator(const YExpression::Node& node, int depth) {
        const auto which = kNumericOperators.find(node.operation);
        if (which == std::string_view::npos) return false;
        const Do operation = kIntegerOperations[which];
        hasIntegers = hasIntegers && operation != Do::Execute;
        if (node.left->operation == 'z')
            add(Do::Clear, Do::Clear, 0, nullptr);
        else if (!add(*node.left, depth))
            return false;
        const int real = node.operation;
        if (node.right->operation == 't') {
            if (!addLeaf(operation, realOperation(node.operation), real, *node.right->leaf))
                return false;
            if (operation == Do::Remainder) divideByConstant(*node.right->leaf);
            return true;
        }
        add(Do::PushInteger, Do::PushReal, 0, nullptr);
        integers.back().slot = reals.back().slot = static_cast<std::size_t>(depth);
        if (!add(*node.right, depth + 1)) return false;
        add(Do::CombineInteger, Do::CombineReal, real, nullptr);
        integers.back().number = static_cast<int>(operation);
        integers.back().slot = reals.back().slot = static_cast<std::size_t>(depth);
        return true;
    }

    bool addLeaf(Do onIntegers, Do onReals, int real, YVariable& leaf) {
        using Kind = YVariable::Kind;
        if (leaf.kind() == Kind::Substring || leaf.kind() == Kind::Expression) return false;
        if (isConstant(leaf) && !leaf.holdsInteger()) {
            if (!leaf.holdsReal()) return false;
            hasIntegers = false;
        }
        add(onIntegers, onReals, real, &leaf);
        return true;
    }

    void add(Do onIntegers, Do onReals, int real, YVariable* leaf) {
        integers.push_back({onIntegers, instruction_, 0, {leaf}});
        reals.push_back({onReals, instruction_, real, {leaf}});
    }

    void divideByConstant(const YVariable& divisor) {
        if (!isConstant(divisor) || !divisor.holdsInteger() || divisor.heldInteger() <= 1) return;
        Step& step = integers.back();
        step.what = Do::RemainderBy;
        step.number = divisor.heldInteger();
        step.reciprocal = UINT64_MAX / static_cast<std::uint64_t>(step.number) + 1;
    }

    std::uint16_t instruction_;
};

YProgram::YProgram(YHeap& heap, std::unique_ptr<YScript> script) : script_(std::move(script)) {
    operands_.reserve(script_->operands.size());
    for (const std::int16_t index : script_->operands)
        operands_.push_back(index == YScript::kEndOfList ? nullptr : &heap.get(index));
    for (const YInstruction& instruction : script_->instructions) {
        Instruction decoded{instruction.opcode, instruction.operand, 0, nullptr};
        if (YHasOperands(instruction.opcode)) {
            decoded.operands = operands_.data() + static_cast<std::size_t>(instruction.operand);
            while (decoded.operands[decoded.count]) ++decoded.count;
        }
        instructions_.push_back(decoded);
    }
    rows_.assign(instructions_.size(), {kNone, kNone, kNone});
    entries_.resize(instructions_.size());
    for (int i = 0; i < size(); ++i) decode(i);
    for (int i = 0; i < size(); ++i) expect(i, Values::Integers);
}

std::string YProgram::place(const Instruction& code) const {
    if (script_->lines.empty()) return script_->name;
    const auto number = static_cast<std::size_t>(&code - instructions_.data());
    const YSourceLine line = script_->lines[number];
    return OMFormat("%s:%d", script_->files[line.file].c_str(), line.line);
}

std::optional<int> YProgram::handlerOf(std::string_view procedure) const {
    if (!procedure.starts_with('+')) return std::nullopt;
    const int header = ynumber::scanInteger(procedure);
    return isHeader(header) ? std::optional(header + 1) : std::nullopt;
}

const YProgram::Step* YProgram::expect(int instruction, Values values) {
    const auto place = static_cast<std::size_t>(instruction);
    auto row = static_cast<std::size_t>(values);
    while (rows_[place][row] == kNone) ++row; // each has one for any values
    return entries_[place] = &steps_[static_cast<std::size_t>(rows_[place][row])];
}

void YProgram::addStep(Do what, int instruction, YVariable* variable, int number) {
    steps_.push_back({what, static_cast<std::uint16_t>(instruction), number, {variable}});
}

/// The jump after a test is there: the compiler writes it and the reader of precompiled scripts
/// asks for it.
void YProgram::decode(int instruction) {
    const Instruction& code = at(instruction);
    const auto any = [&](Do what, YVariable* variable = nullptr, int number = 0) {
        rows_[static_cast<std::size_t>(instruction)].back() = end();
        addStep(what, instruction, variable, number);
    };
    const auto isExpression = [&](int operand) {
        return code.count > operand &&
               code.operands[operand]->kind() == YVariable::Kind::Expression;
    };
    switch (code.opcode) {
    case YOpcode::ForNext:
        if (code.count < 2) break;
        return any(Do::CountRound, code.operands[0], at(instruction + 1).target);
    case YOpcode::Test: {
        if (!isExpression(0)) break;
        const int jump = at(instruction + 1).target;
        any(Do::TestAny, code.operands[0], jump);
        return addRows(instruction, *code.operands[0]->expression(), nullptr, jump);
    }
    case YOpcode::Assign:
        if (code.count != 2) break;
        if (!isExpression(1)) return any(Do::AssignValue);
        any(Do::AssignAny);
        return addRows(instruction, *code.operands[1]->expression(), code.operands[0], 0);
    case YOpcode::Jump: return any(Do::Jump, nullptr, code.target);
    case YOpcode::Call: return any(Do::Call);
    case YOpcode::Procedure: return any(Do::EnterProcedure);
    case YOpcode::Return: return any(Do::Return);
    default: break;
    }
    any(Do::Execute);
}

/// Rows that store into `target`, or, without one, test and jump.
void YProgram::addRows(int instruction, const YExpression& expression, YVariable* target,
                       int jump) {
    RowBuilder rows(instruction);
    if (!rows.add(expression.root(), 0)) return;
    const auto append = [&](Values values, const std::vector<Step>& row, Do last) {
        rows_[static_cast<std::size_t>(instruction)][static_cast<std::size_t>(values)] = end();
        steps_.insert(steps_.end(), row.begin(), row.end());
        addStep(last, instruction, target, jump);
    };
    if (rows.hasIntegers)
        append(Values::Integers, rows.integers, target ? Do::StoreInteger : Do::TestInteger);
    append(Values::Reals, rows.reals, target ? Do::StoreReal : Do::TestReal);
}

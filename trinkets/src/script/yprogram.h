// A script as a thread runs it. Each instruction has its operands at hand, and steps that carry it
// out: one that has the thread execute the instruction by its opcode, whatever it is, or, where the
// operands allow it, several that do the same on numbers alone.
//
// An expression becomes a row of steps for a machine with one accumulator and a small stack, first
// for integers and then for reals, which end by storing or testing the accumulator. A row gives up
// before it changed anything when a value is none of its numbers; the instruction then begins with
// the next more general way until a result fits the quicker one again. All ways give the same
// values.
#pragma once

#include "yexpression.h"
#include "yscript.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct YProgramInstruction {
    YOpcode opcode;
    std::int16_t target; ///< jumps
    std::int16_t count;  ///< operands
    YVariable* const* operands;
};

/// What a step does.
enum class YDo : std::uint8_t {
    Execute, ///< the instruction, by its opcode
    Jump,
    Call,
    EnterProcedure,
    Return,
    CountRound, ///< a ForNext of a counted loop, and the jump that follows
    AssignValue,
    AssignAny, ///< an expression of any values
    TestAny,   ///< the same, and the jump that follows
    Clear,     ///< the accumulator is 0
    // On integers: the accumulator with the step's variable, or with what was put aside.
    LoadInteger,
    LengthInteger, ///< of the text of the variable
    PushInteger,   ///< puts the accumulator aside
    Add,
    Subtract,
    Multiply,
    Divide,
    Quotient,
    Remainder,
    Equal,
    Unequal,
    Less,
    Greater,
    RemainderBy,    ///< a constant above 1, of which the step has `reciprocal` and `number`
    CombineInteger, ///< what was put aside with the accumulator, by the operation `number`
    StoreInteger,
    TestInteger,
    // On reals.
    LoadReal,
    LengthReal,
    PushReal,
    AddReal,
    SubtractReal,
    MultiplyReal,
    OperateReal, ///< the operation `number` with the variable
    CombineReal,
    StoreReal,
    TestReal,
};

struct YProgramStep {
    YDo what;
    std::uint16_t instruction;
    std::int32_t number;
    union {
        YVariable* variable;
        std::uint64_t reciprocal; ///< 2^64 / number, rounded up
        std::size_t slot;         ///< where a value is put aside
    };
};

class YProgram {
  public:
    using Do = YDo;
    using Step = YProgramStep;
    using Instruction = YProgramInstruction;

    /// Values that can be put aside; deeper expressions have no rows of steps.
    static constexpr int kStack = 16;

    YProgram(YHeap& heap, std::unique_ptr<YScript> script);
    YProgram& operator=(YProgram&&) = delete;

    /// Of instructions, the End behind the last one too.
    [[nodiscard]] int size() const { return static_cast<int>(instructions_.size()); }
    [[nodiscard]] const Instruction& at(int instruction) const {
        return instructions_[static_cast<std::size_t>(instruction)];
    }
    /// File and line of an instruction as far as they are known.
    [[nodiscard]] std::string place(const Instruction& code) const;
    /// Whether a procedure can be there: its header, and an instruction behind it.
    [[nodiscard]] bool isHeader(int instruction) const {
        return instruction >= 0 && instruction < size() - 1;
    }
    /// Where an event or a timer begins the procedure that a text ("+" and its header) stands for;
    /// none for any other text.
    [[nodiscard]] std::optional<int> handlerOf(std::string_view procedure) const;
    /// For each instruction the step to begin with.
    [[nodiscard]] const Step* const* entries() const { return entries_.data(); }

    /// What the operands and the result of an expression are.
    enum class Values : std::uint8_t { Integers, Reals, Any };
    static constexpr std::size_t kValues = 3;
    /// From now on the instruction begins with the row for such values, or with the next more
    /// general one that it has. Gives the step to begin with.
    const Step* expect(int instruction, Values values);

  private:
    class RowBuilder;
    /// Where the rows of an instruction begin, by Values; kNone for those that it has not.
    using Rows = std::array<std::int32_t, kValues>;
    static constexpr std::int32_t kNone = -1;

    void decode(int instruction);
    void addStep(Do what, int instruction, YVariable* variable = nullptr, int number = 0);
    void addRows(int instruction, const YExpression& expression, YVariable* target, int jump);
    [[nodiscard]] std::int32_t end() const { return static_cast<std::int32_t>(steps_.size()); }

    std::unique_ptr<YScript> script_;
    std::vector<YVariable*> operands_; ///< parallel to the script's operand words
    std::vector<Instruction> instructions_;
    std::vector<Step> steps_;
    std::vector<Rows> rows_;
    std::vector<const Step*> entries_;
};

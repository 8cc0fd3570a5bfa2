// A script as a thread runs it. Each instruction has its operands at hand, and steps that carry it
// out: one that has the thread execute the instruction by its opcode, whatever it is, or, where the
// operands allow it, several that do the same on numbers alone.
//
// An expression becomes a row of steps for a machine with one accumulator and a small stack, first
// for integers and then for reals, which end by storing or testing the accumulator. A row gives up
// before it changed anything when a value is none of its numbers; the instruction then has the next
// more general row until a result fits the quicker one again. All rows give the same values.
//
// The rows in use lie one behind the other in the order of the instructions, so that the next
// instruction is the next step: no table is asked. The other rows are kept aside, and are copied
// over the one in use.
#pragma once

#include "yexpression.h"
#include "yscript.h"

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
    // On integers: the accumulator with the step's variable, or with what was put aside.
    Clear,
    LoadInteger,
    LoadSum,         ///< the variable and `number`
    LengthInteger,   ///< of the text of the variable
    PushInteger,     ///< puts the accumulator aside
    PushLoadInteger, ///< the same, to place `number`, and loads
    Add,
    AddNumber, ///< `number`
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
    TestInteger, ///< and the jump that follows, to `number`
    TestEqual,   ///< the accumulator against the variable, and the jump
    TestUnequal,
    TestLess,
    TestGreater,
    // On reals.
    ClearReal,
    LoadReal,
    LoadSumReal,
    LengthReal,
    PushReal,
    PushLoadReal,
    AddReal,
    AddNumberReal,
    SubtractReal,
    MultiplyReal,
    DivideReal,
    OperateReal, ///< the operation `number` with the variable
    CombineReal,
    StoreReal, ///< `number`: see ynumber::throughText
    TestReal,
    TestEqualReal,
    TestUnequalReal,
    TestLessReal,
    TestGreaterReal,
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
    /// An instruction as its author might have written it.
    [[nodiscard]] static std::string statement(const Instruction& code);
    /// Whether a procedure can be there: its header, and an instruction behind it.
    [[nodiscard]] bool isHeader(int instruction) const {
        return instruction >= 0 && instruction < size() - 1;
    }
    /// Where an event or a timer begins the procedure that a text ("+" and its header) stands for;
    /// none for any other text.
    [[nodiscard]] std::optional<int> handlerOf(std::string_view procedure) const;
    /// The step that an instruction begins with. Behind its last one is the next instruction's.
    [[nodiscard]] Step* start(int instruction) {
        return &steps_[static_cast<std::size_t>(starts_[static_cast<std::size_t>(instruction)])];
    }

    /// What the operands and the result of an expression are.
    enum class Values : std::uint8_t { Integers, Reals, Any };
    /// From now on the instruction has the row for such values, or the next more general one that
    /// there is. Gives the step to begin with.
    Step* expect(int instruction, Values values);

  private:
    class RowBuilder;
    using Row = std::vector<Step>;
    /// Of one instruction. Those of numbers are equally long, or empty where there is none.
    struct Rows {
        Row integers;
        Row reals;
        Step any;
    };

    [[nodiscard]] Rows decode(int instruction) const;

    std::unique_ptr<YScript> script_;
    std::vector<YVariable*> operands_; ///< parallel to the script's operand words
    std::vector<Instruction> instructions_;
    std::vector<Step> steps_; ///< the rows in use
    std::vector<std::int32_t> starts_;
    std::vector<Rows> rows_;
};

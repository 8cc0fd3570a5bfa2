// A compiled script: instructions and their operand words, as the compiler makes them or a
// precompiled file stores them, and where each instruction stands in the sources.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The numbers are those of precompiled files.
enum class YOpcode : std::uint8_t {
    End = 0,
    Call = 6,
    Procedure = 7,
    ForSetUp = 8,
    ForNext = 9,
    JumpIfFalse = 10,
    Jump = 11,
    Test = 12,
    Nothing = 13,
    Say = 14,
    Return = 15,
    ReturnFromInterrupt = 16, ///< a name for traces only
    Else = 17,                ///< only while compiling
    Assign = 18,
    Drop = 19,
    Command = 21,
    Wait = 22,
    Idle = 23,
    Schedule = 24,
    Exit = 25,
    Suspend = 26,
    Resume = 27,
    Pause = 28,
    Debug = 29,
    Set = 35,
    Get = 36,
    Yield = 37,
    Play = 40,
    Relay = 45,
    Quit = 46,
};

/// What traces call an instruction; empty for those that have no name.
[[nodiscard]] std::string_view YTraceName(YOpcode opcode);
/// Whether the operand is an instruction to jump to.
[[nodiscard]] inline bool YIsJump(YOpcode opcode) {
    return opcode == YOpcode::Jump || opcode == YOpcode::JumpIfFalse;
}
/// Whether the operand is a list of operand words.
[[nodiscard]] bool YHasOperands(YOpcode opcode);
/// The least number of operand words that an instruction can do with.
[[nodiscard]] int YMinOperands(YOpcode opcode);

struct YInstruction {
    YOpcode opcode = YOpcode::End;
    std::int16_t operand = 0; ///< start of the operand list, instruction to jump to, or nothing
};

struct YSourceLine {
    std::uint16_t file = 0; ///< index into YScript::files
    std::uint16_t line = 0; ///< from 1
};

struct YScript {
    static constexpr int kMaxInstructions = 8000;
    static constexpr int kMaxOperandWords = 20000;
    static constexpr std::int16_t kEndOfList = -1;

    std::string name;                       ///< of the file that was read
    std::vector<YInstruction> instructions; ///< an End follows the last one
    std::vector<std::int16_t> operands;     ///< heap indices; the first three are 0, 1, 2
    std::vector<YSourceLine> lines;         ///< one an instruction; empty for precompiled scripts
    std::vector<std::string> files;         ///< the script and what it includes
    /// In which each operand stands, from 1; empty when nobody has asked for them.
    std::vector<std::uint16_t> columns;
};

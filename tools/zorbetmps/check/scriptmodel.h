// A compiled script as its statements, each with its words and where they stand, and its
// procedures. It looks at the script and at the heap that it was compiled into, and goes before
// both.
#pragma once

#include "yheap.h"
#include "yscript.h"

#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace mps {

struct Word {
    YVariable* variable = nullptr;
    int column = 0; ///< from 1

    [[nodiscard]] YVariable::Kind kind() const { return variable->kind(); }
    /// As it stands in the script, quotes and all.
    [[nodiscard]] const std::string& text() const { return variable->text(); }
    [[nodiscard]] bool isName() const { return kind() == YVariable::Kind::Name; }
    [[nodiscard]] bool isConstant() const { return kind() == YVariable::Kind::Constant; }
    /// A name, or one of a family.
    [[nodiscard]] bool canHold() const { return isName() || kind() == YVariable::Kind::Compound; }
    /// The value of a constant, without quotes.
    [[nodiscard]] std::string value() const;
    [[nodiscard]] bool isQuoted() const {
        return !text().empty() && YVariable::isQuote(text().front());
    }
};

/// Whether the word is a number that stands in the script, with or without quotes.
[[nodiscard]] bool isNumber(const YVariable& word);
/// A number that stands in the script, perhaps with a minus or in parentheses.
[[nodiscard]] std::optional<double> numberOf(const Word& word);
/// Of the operators of expressions.
[[nodiscard]] inline bool isComparison(char operation) {
    return std::string_view("=#<>").find(operation) != std::string_view::npos;
}

struct Statement {
    YOpcode opcode = YOpcode::Nothing;
    int at = 0; ///< its instruction
    YSourceLine place;
    std::vector<Word> words;
    int procedure = -1; ///< that it stands in, of ScriptModel::procedures
};

struct Procedure {
    YVariable* name = nullptr;
    std::size_t statement = 0; ///< its header, of ScriptModel::statements
    int entry = 0;             ///< its first instruction
    int end = 0;               ///< its return
};

class ScriptModel {
  public:
    ScriptModel(const YScript& script, YHeap& heap);

    [[nodiscard]] const YScript& script() const { return script_; }
    [[nodiscard]] YHeap& heap() const { return heap_; }
    /// What the author has written, in the order of the text: no jumps, and a loop once.
    [[nodiscard]] std::span<const Statement> statements() const { return statements_; }
    [[nodiscard]] std::span<const Procedure> procedures() const { return procedures_; }
    /// Those that stand between two instructions.
    [[nodiscard]] std::span<const Statement> between(int from, int to) const;
    /// Null for what is no procedure of the script.
    [[nodiscard]] const Procedure* procedureNamed(const YVariable& name) const;

    /// The instruction behind a loop's last, by its ForSetUp.
    [[nodiscard]] int endOfLoop(const Statement& loop) const;
    /// Whether instructions can be reached from the script's beginning or from one of its
    /// procedures.
    [[nodiscard]] std::vector<bool> reached() const;

    /// The variables that reading a word reads: leaves of its expression, and all their parts.
    [[nodiscard]] std::vector<YVariable*> leaves(const YVariable& word) const;

  private:
    [[nodiscard]] std::vector<Word> wordsOf(const YInstruction& instruction) const;
    void addParts(YVariable& variable, std::vector<YVariable*>& leaves) const;

    const YScript& script_;
    YHeap& heap_;
    std::vector<Statement> statements_;
    std::vector<Procedure> procedures_;
};

} // namespace mps

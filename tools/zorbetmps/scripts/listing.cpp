#include "zorbetmps/scripts/listing.h"

#include "formats/base/latin1.h"

#include "omformat.h"
#include "yexpression.h"
#include "yheap.h"
#include "yscript.h"

#include <iomanip>
#include <sstream>
#include <string_view>

namespace mps {

namespace {

constexpr int kNumberWidth = 5;
constexpr int kPlaceWidth = 6;
constexpr int kKeywordWidth = 14;
constexpr int kKindWidth = 11;

constexpr std::string_view kKinds[] = {"name", "constant",   "family",
                                       "part", "expression", "unknown"};
constexpr std::string_view kTypes[] = {"empty", "object", "text", "integer", "real"};

/// One word, also for what no author writes.
std::string keywordOf(YOpcode opcode) {
    switch (opcode) {
    case YOpcode::End: return "end";
    case YOpcode::Procedure: return "procedure";
    case YOpcode::ForNext: return "for-next";
    case YOpcode::JumpIfFalse: return "jump-if-false";
    case YOpcode::Jump: return "jump";
    case YOpcode::Test: return "if";
    case YOpcode::Nothing: return "nothing";
    case YOpcode::Return: return "return";
    case YOpcode::ReturnFromInterrupt: return "return-from-interrupt";
    case YOpcode::Assign: return "assign";
    case YOpcode::Command: return "command";
    default: break;
    }
    const std::string_view name = YTraceName(opcode);
    return name.empty() ? "unknown-" + std::to_string(static_cast<int>(opcode)) : std::string(name);
}

/// A word in one line.
std::string shownWord(std::string_view latin1) {
    if (latin1.empty()) return "(empty)";
    std::string shown;
    for (const char c : latin1) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isControl = byte < 0x20 || (byte >= 0x7F && byte < 0xA0);
        shown += isControl ? OMFormat("\\x%02X", static_cast<unsigned>(byte))
                           : formats::utf8FromLatin1({&c, 1});
    }
    return shown;
}

class Listing {
  public:
    Listing(const YScript& script, YHeap& heap, SourceLines lines)
        : script_(script), heap_(heap), lines_(lines) {}

    std::string print() {
        out_ << std::left << "instructions\n";
        for (std::size_t at = 0; at < script_.instructions.size(); ++at) printInstruction(at);
        out_ << "variables\n";
        for (int index = 0; index < heap_.count(); ++index) printVariable(heap_.get(index));
        return out_.str();
    }

  private:
    void printNumber(std::size_t number) {
        out_ << std::right << std::setw(kNumberWidth) << number << std::left;
    }

    void printInstruction(std::size_t at) {
        const YInstruction& instruction = script_.instructions[at];
        printNumber(at);
        if (lines_ == SourceLines::Shown)
            out_ << ' ' << std::right << std::setw(kPlaceWidth) << placeOf(at) << std::left;
        const std::string keyword = keywordOf(instruction.opcode);
        const std::string words = wordsOf(instruction);
        out_ << "  ";
        if (!words.empty()) out_ << std::setw(kKeywordWidth);
        out_ << keyword << words << '\n';
    }

    /// Of what is included with the name of its file.
    std::string placeOf(std::size_t at) const {
        const bool isWritten = script_.instructions[at].opcode != YOpcode::End;
        if (!isWritten || at >= script_.lines.size()) return "-";
        const YSourceLine& place = script_.lines[at];
        const std::string line = std::to_string(place.line);
        return place.file == 0 ? line : shownWord(script_.files[place.file]) + ':' + line;
    }

    std::string wordsOf(const YInstruction& instruction) const {
        if (YIsJump(instruction.opcode)) return " -> " + std::to_string(instruction.operand);
        std::string words;
        if (!YHasOperands(instruction.opcode)) return words;
        for (auto i = static_cast<std::size_t>(instruction.operand);
             i < script_.operands.size() && script_.operands[i] != YScript::kEndOfList; ++i)
            words += ' ' + shownWord(heap_.get(script_.operands[i]).text());
        return words;
    }

    void printVariable(YVariable& variable) {
        printNumber(static_cast<std::size_t>(variable.index()));
        out_ << "  " << std::setw(kKindWidth) << kKinds[static_cast<std::size_t>(variable.kind())]
             << ' ' << shownWord(variable.text());
        if (variable.kind() == YVariable::Kind::Name && variable.isDefined()) {
            YScratch scratch;
            out_ << " = " << kTypes[static_cast<std::size_t>(variable.type())] << ' '
                 << shownWord(variable.string(scratch));
        }
        if (variable.kind() == YVariable::Kind::Constant)
            out_ << "  " << kTypes[static_cast<std::size_t>(variable.type())];
        if (variable.expression()) out_ << "  " << variable.expression()->shape();
        if (!variable.parts().empty()) out_ << " of";
        for (const int part : variable.parts())
            out_ << ' ' << (part == YVariable::kNoPart ? "-" : shownWord(heap_.get(part).text()));
        if (variable.elementCount() > 0) out_ << "  elements " << variable.elementCount();
        if (variable.ownership() == YVariable::Ownership::Reference) out_ << "  marked &";
        if (variable.ownership() == YVariable::Ownership::Alias) out_ << "  alias";
        out_ << '\n';
    }

    const YScript& script_;
    YHeap& heap_;
    SourceLines lines_;
    std::ostringstream out_;
};

} // namespace

std::string listing(const YScript& script, YHeap& heap, SourceLines lines) {
    return Listing(script, heap, lines).print();
}

} // namespace mps

// Puts precompiled scripts together: from hand-made records, or from what the compiler made.
#pragma once

#include "yexpression.h"
#include "yheap.h"
#include "yscript.h"

#include <cstdint>
#include <string>
#include <vector>

namespace testing_support {

struct PrecompiledBuilder {
    struct Variable {
        int kind = 0;
        int type = 0;
        std::int32_t integer = 0;
        std::string real{};
        std::int32_t alias = 0;
        std::int32_t ownership = 0;
        std::int32_t length = -1;
        std::int32_t elements = 0;
        std::string text{};
        std::string value{};
        std::vector<int> parts{};
        bool hasParts = false; ///< although they are none
    };
    struct Instruction {
        int opcode;
        int operand;
    };

    std::vector<Instruction> code;
    std::vector<int> operands{0, 1, 2};
    std::vector<Variable> variables; ///< from index 3 on

    /// Adds an instruction with a list of operand words.
    PrecompiledBuilder& add(int opcode, const std::vector<int>& words) {
        code.push_back({opcode, static_cast<int>(operands.size())});
        operands.insert(operands.end(), words.begin(), words.end());
        operands.push_back(-1);
        return *this;
    }
    /// Its index.
    int name(const std::string& text) {
        variables.push_back({.text = text});
        return static_cast<int>(variables.size()) + 2;
    }
    int constant(const std::string& text) {
        const int index = name(text);
        variables.back().kind = 1;
        variables.back().type = 2;
        return index;
    }
    int with(Variable variable) {
        variables.push_back(std::move(variable));
        return static_cast<int>(variables.size()) + 2;
    }

    /// Everything that a compilation left, as an author's tool would store it.
    static PrecompiledBuilder from(const YScript& script, YHeap& heap) {
        PrecompiledBuilder file;
        for (const YInstruction& instruction : script.instructions)
            file.code.push_back({static_cast<int>(instruction.opcode), instruction.operand});
        file.operands.assign(script.operands.begin(), script.operands.end());
        for (int index = YHeap::kPredefined; index < heap.count(); ++index)
            file.variables.push_back(record(heap.get(index)));
        return file;
    }

    [[nodiscard]] std::string build(bool swapped = false) const {
        std::string out(1, swapped ? '\1' : '\2');
        const auto number = [&](std::int64_t value, int bytes) {
            for (int i = 0; i < bytes; ++i)
                out += static_cast<char>(value >> 8 * (swapped ? bytes - 1 - i : i));
        };
        const auto text = [&](const std::string& bytes) {
            number(bytes.empty() ? -1 : static_cast<std::int64_t>(bytes.size()), 4);
            out += bytes;
        };
        number(static_cast<std::int64_t>(code.size()), 4);
        for (const Instruction& instruction : code) {
            number(instruction.opcode, 1);
            number(instruction.operand, 2);
        }
        number(static_cast<std::int64_t>(operands.size()), 4);
        for (const int word : operands) number(word, 2);
        number(static_cast<std::int64_t>(variables.size()) + 3, 4);
        for (const Variable& v : variables) {
            number(v.kind, 4);
            number(v.type, 4);
            if (v.type == 3) number(v.integer, 4);
            if (v.type == 4) {
                number(static_cast<std::int64_t>(v.real.size()), 2);
                out += v.real;
            }
            for (const std::int32_t field : {v.alias, v.ownership, v.length, v.elements})
                number(field, 4);
            text(v.text);
            text(v.value);
            const bool none = v.parts.empty() && !v.hasParts;
            number(none ? -1 : static_cast<std::int64_t>(v.parts.size()), 4);
            for (const int part : v.parts) number(part, 2);
        }
        return out;
    }

  private:
    static Variable record(const YVariable& variable) {
        Variable record{.kind = static_cast<int>(variable.kind()),
                        .type = static_cast<int>(variable.type()),
                        .ownership = static_cast<int>(variable.ownership()),
                        .elements = variable.elementCount(),
                        .text = variable.text(),
                        .parts = variable.parts()};
        char buffer[ynumber::kBufferSize];
        if (variable.holdsInteger()) record.integer = variable.heldInteger();
        if (variable.holdsReal()) record.real = ynumber::format(variable.heldReal(), buffer);
        if (variable.kind() == YVariable::Kind::Name && variable.isDefined()) {
            YScratch scratch;
            record.value = variable.string(scratch);
            record.length = static_cast<std::int32_t>(record.value.size());
        }
        if (!record.parts.empty()) record.length = static_cast<std::int32_t>(record.parts.size());
        if (variable.expression()) record.value = variable.expression()->shape();
        return record;
    }
};

} // namespace testing_support

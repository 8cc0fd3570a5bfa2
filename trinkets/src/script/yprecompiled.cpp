#include "yprecompiled.h"

#include "formats/base/bytes.h"
#include "yexpression.h"
#include "ynumber.h"

#include <algorithm>
#include <optional>
#include <span>

namespace {

constexpr std::uint8_t kSwapped = 1;
constexpr std::uint8_t kLittleEndian = 2;
constexpr std::int32_t kNone = -1;
constexpr int kSubstringParts = 3;
constexpr std::size_t kMaxText = 65535;

/// The fields of a variable as they are stored.
struct StoredVariable {
    std::int32_t kind = 0;
    std::int32_t type = 0;
    std::int32_t integer = 0; ///< only of that type
    std::string_view real;    ///< the same
    std::int32_t alias = 0;
    std::int32_t ownership = 0;
    std::int32_t length = 0;
    std::int32_t elements = 0;
    std::string_view name;
    std::string_view value;
    std::optional<std::vector<int>> parts;
};

/// Numbers in the byte order of the file. After a failure the rest is not read.
class Input {
  public:
    explicit Input(std::string_view bytes)
        : reader_(std::as_bytes(std::span(bytes))), swap_(reader_.u8() == kSwapped) {}

    void opcode(YOpcode& value) { value = static_cast<YOpcode>(reader_.u8()); }
    void i16(std::int16_t& value) {
        const std::uint16_t v = reader_.u16();
        value = static_cast<std::int16_t>(swap_ ? static_cast<std::uint16_t>(v << 8 | v >> 8) : v);
    }
    void i32(std::int32_t& value) {
        const std::uint32_t v = reader_.u32();
        value = static_cast<std::int32_t>(
            swap_ ? v << 24 | (v & 0xFF00) << 8 | (v >> 8 & 0xFF00) | v >> 24 : v);
    }
    /// Makes room for as many records of `size` bytes as are stored, at most `limit`.
    template <class Records>
    void room(Records& records, std::size_t size, int limit) {
        std::int32_t count = 0;
        i32(count);
        broken_ |= count < 0 || count > limit ||
                   static_cast<std::size_t>(count) > reader_.remaining() / size;
        records.resize(ok() ? static_cast<std::size_t>(count) : 0);
    }
    void shortText(std::string_view& text) {
        std::int16_t length = 0;
        i16(length);
        take(text, length);
    }
    void text(std::string_view& text) {
        std::int32_t length = 0;
        i32(length);
        take(text, length);
    }
    void parts(std::optional<std::vector<int>>& parts) {
        std::int32_t count = 0;
        i32(count);
        broken_ |= count < kNone || count > YHeap::kMaxOperand;
        if (count == kNone || !ok()) return;
        parts.emplace();
        for (std::int16_t part = 0; count > 0 && ok(); --count) {
            i16(part);
            parts->push_back(part);
        }
    }
    [[nodiscard]] bool ok() const { return reader_.ok() && !broken_; }

  private:
    void take(std::string_view& text, std::int32_t length) {
        if (length == kNone) return;
        broken_ |= length < 0 || static_cast<std::size_t>(length) > kMaxText;
        if (ok()) text = reader_.text(static_cast<std::size_t>(length));
    }

    formats::ByteReader reader_;
    bool swap_;
    bool broken_ = false;
};

/// The same, little-endian, the other way.
class Output {
  public:
    Output() { writer_.u8(kLittleEndian); }

    void opcode(YOpcode value) { writer_.u8(static_cast<std::uint8_t>(value)); }
    void i16(std::int16_t value) { writer_.u16(value); }
    void i32(std::int32_t value) { writer_.u32(value); }
    template <class Records>
    void room(const Records& records, std::size_t, int) {
        writer_.u32(std::ssize(records));
    }
    void shortText(std::string_view text) { writer_.u16(std::ssize(text)).text(text); }
    void text(std::string_view text) {
        writer_.u32(text.empty() ? kNone : std::ssize(text)).text(text);
    }
    void parts(const std::optional<std::vector<int>>& parts) {
        writer_.u32(parts ? std::ssize(*parts) : kNone);
        if (!parts) return;
        for (const int part : *parts) writer_.u16(part);
    }
    [[nodiscard]] std::string bytes() const {
        return {writer_.bytes().begin(), writer_.bytes().end()};
    }

  private:
    formats::ByteWriter writer_;
};

// What follows what, in both directions.

template <class Stream, class Instructions, class Operands>
void passCode(Stream& stream, Instructions& instructions, Operands& operands) {
    stream.room(instructions, 3, YScript::kMaxInstructions + 1);
    for (auto& instruction : instructions) {
        stream.opcode(instruction.opcode);
        stream.i16(instruction.operand);
    }
    stream.room(operands, 2, YScript::kMaxOperandWords);
    for (auto& operand : operands) stream.i16(operand);
}

template <class Stream, class Variable>
void passVariable(Stream& stream, Variable& variable) {
    stream.i32(variable.kind);
    stream.i32(variable.type);
    if (variable.type == static_cast<int>(YVariable::Type::Integer)) stream.i32(variable.integer);
    if (variable.type == static_cast<int>(YVariable::Type::Real)) stream.shortText(variable.real);
    stream.i32(variable.alias);
    stream.i32(variable.ownership);
    stream.i32(variable.length);
    stream.i32(variable.elements);
    stream.text(variable.name);
    stream.text(variable.value);
    stream.parts(variable.parts);
}

bool readCode(Input& in, YScript& script) {
    passCode(in, script.instructions, script.operands); // an unknown opcode ends the script
    // The stepping stops at an End, so there is one.
    script.instructions.push_back({YOpcode::End, 0});
    script.operands.push_back(YScript::kEndOfList);
    return in.ok();
}

/// Instructions of one statement rely on each other.
bool fitsTogether(const YScript& script, std::size_t at) {
    const YInstruction& instruction = script.instructions[at];
    const auto size = static_cast<std::int16_t>(script.instructions.size());
    if (YIsJump(instruction.opcode)) return instruction.operand >= 0 && instruction.operand < size;
    if (!YHasOperands(instruction.opcode)) return true;
    if (instruction.operand < 0 ||
        static_cast<std::size_t>(instruction.operand) >= script.operands.size())
        return false;
    const auto start = script.operands.begin() + instruction.operand;
    const auto end = std::find(start, script.operands.end(), YScript::kEndOfList);
    if (end - start < YMinOperands(instruction.opcode)) return false;
    const auto isFollowedBy = [&](std::size_t distance, YOpcode opcode) {
        return at + distance < script.instructions.size() &&
               script.instructions[at + distance].opcode == opcode;
    };
    switch (instruction.opcode) {
    case YOpcode::ForSetUp: return isFollowedBy(1, YOpcode::ForNext);
    case YOpcode::ForNext:
    case YOpcode::Test: return isFollowedBy(1, YOpcode::JumpIfFalse);
    default: return true;
    }
}

bool isSound(const YScript& script, int variables) {
    const auto known = [&](std::int16_t word) {
        return word == YScript::kEndOfList || (word >= 0 && word < variables);
    };
    if (!std::all_of(script.operands.begin(), script.operands.end(), known)) return false;
    for (std::size_t at = 0; at < script.instructions.size(); ++at)
        if (!fitsTogether(script, at)) return false;
    return true;
}

} // namespace

/// Variables of a heap as they are stored; the one place outside YVariable that sets its fields.
class YStoredVariables {
  public:
    explicit YStoredVariables(YHeap& heap) : heap_(heap) {}

    bool readAll(Input& in) {
        std::int32_t count = 0;
        in.i32(count);
        if (!in.ok() || count < YHeap::kPredefined || count > YHeap::kMaxOperand + 1) return false;
        for (int index = YHeap::kPredefined; index < count; ++index)
            if (!read(in)) return false;
        for (int index = YHeap::kPredefined; index < count; ++index)
            if (!check(heap_.get(index))) return false;
        // Expressions last: their leaves must all be sound.
        for (int index = YHeap::kPredefined; index < count; ++index)
            if (!buildExpression(heap_.get(index))) return false;
        return isShallow(count);
    }

    void writeAll(Output& out) const {
        out.i32(heap_.count());
        for (int index = YHeap::kPredefined; index < heap_.count(); ++index)
            write(heap_.get(index), out);
    }

    /// A predefined variable that is not as it is in a new heap; null without.
    [[nodiscard]] const YVariable* changedPredefined() const {
        YHeap fresh;
        for (int index = 0; index < YHeap::kPredefined; ++index) {
            const YVariable& variable = heap_.get(index);
            YScratch left;
            YScratch right;
            if (variable.ownership_ != Ownership::Owner ||
                variable.type_ != fresh.get(index).type_ ||
                variable.string(left) != fresh.get(index).string(right))
                return &variable;
        }
        return nullptr;
    }

  private:
    using Kind = YVariable::Kind;
    using Ownership = YVariable::Ownership;
    using Type = YVariable::Type;

    bool read(Input& in) {
        StoredVariable stored;
        passVariable(in, stored);
        if (!in.ok() || stored.kind < 0 || stored.kind > static_cast<int>(Kind::Expression) ||
            stored.type < 0 || stored.type > static_cast<int>(Type::Real) ||
            stored.ownership < -1 || stored.ownership > 1 || stored.elements < 0)
            return false;

        YVariable& variable = heap_.create(stored.name);
        variable.kind_ = static_cast<Kind>(stored.kind);
        variable.type_ = static_cast<Type>(stored.type);
        if (variable.type_ == Type::Object) { // objects are not stored
            variable.type_ = Type::Empty;
            if (variable.kind_ == Kind::Constant) variable.kind_ = Kind::Name;
        }
        if (variable.type_ == Type::Integer) variable.value_.integer = stored.integer;
        if (variable.type_ == Type::Real) variable.value_.real = ynumber::scan(stored.real);
        variable.alias_ = stored.alias;
        variable.ownership_ = static_cast<Ownership>(stored.ownership);
        variable.length_ = stored.length;
        variable.elementCount_ = stored.elements;
        variable.valueString_ = stored.value;
        if (!stored.parts) return true;
        const std::int32_t expected =
            variable.kind_ == Kind::Substring ? kSubstringParts : stored.length;
        variable.parts_ = *std::move(stored.parts);
        return std::ssize(variable.parts_) == expected;
    }

    static void write(const YVariable& variable, Output& out) {
        char buffer[ynumber::kBufferSize];
        StoredVariable stored{.kind = static_cast<int>(variable.kind_),
                              .type = static_cast<int>(variable.type_),
                              .alias = variable.alias_,
                              .ownership = static_cast<int>(variable.ownership_),
                              .length = variable.length_,
                              .elements = variable.elementCount_,
                              .name = variable.text_};
        if (variable.type_ == Type::Integer) stored.integer = variable.value_.integer;
        if (variable.type_ == Type::Real)
            stored.real = ynumber::format(variable.value_.real, buffer);
        if (variable.type_ != Type::Empty) stored.value = variable.valueString_;
        if (variable.expression_) stored.value = variable.expression_->shape();
        if (!variable.parts_.empty()) stored.parts = variable.parts_;
        passVariable(out, stored);
    }

    /// Makes one variable what the rest of the engine relies on.
    bool check(YVariable& variable) {
        const auto known = [&](int part) { return part >= 0 && part < heap_.count(); };
        if (isAlias(variable) ? !known(variable.alias_) : variable.alias_ < 0) return false;
        switch (variable.kind_) {
        case Kind::Name:
            variable.parts_.clear();
            checkName(variable);
            return true;
        case Kind::Constant:
            variable.parts_.clear();
            if (variable.text_.empty()) return false;
            variable.classify();
            return variable.kind_ == Kind::Constant;
        case Kind::Compound:
            variable.type_ = Type::Empty;
            return !variable.parts_.empty() && variable.text_.find('.') != std::string::npos &&
                   std::all_of(variable.parts_.begin(), variable.parts_.end(), known);
        case Kind::Substring:
            variable.type_ = Type::Empty;
            variable.length_ = std::count(variable.text_.begin(), variable.text_.end(), '|') > 1
                                   ? kSubstringParts
                                   : kSubstringParts - 1;
            return variable.parts_.size() == kSubstringParts &&
                   std::all_of(variable.parts_.begin(), variable.parts_.end(),
                               [&](int part) { return part == YVariable::kNoPart || known(part); });
        case Kind::Expression:
            variable.type_ = Type::Empty;
            return std::all_of(variable.parts_.begin(), variable.parts_.end(), known);
        case Kind::Untyped: break;
        }
        return false;
    }

    /// A number without a text of its own has an unknown length.
    void checkName(YVariable& variable) {
        const bool hasText = variable.length_ != YVariable::kUnknownLength;
        if (isAlias(variable)) variable.type_ = Type::Empty;
        if (variable.type_ == Type::String || (variable.isDefined() && hasText)) {
            variable.storeText(variable.valueString_);
        } else {
            variable.length_ = YVariable::kUnknownLength;
            variable.canonical_ = true;
        }
        heap_.noteFamily(variable);
    }

    [[nodiscard]] static bool isAlias(const YVariable& variable) {
        return variable.ownership_ == YVariable::Ownership::Alias && variable.alias_ != 0;
    }

    bool buildExpression(YVariable& variable) {
        if (variable.kind_ != Kind::Expression) return true;
        variable.expression_ = YExpression::build(heap_, variable.valueString_, variable.parts_);
        return variable.expression_ != nullptr;
    }

    /// A compiler makes parts before what they are parts of; a file could make a ring of them, or
    /// a chain too long to be followed. Aliases lead on like parts.
    bool isShallow(int count) {
        std::vector<int> depths(static_cast<std::size_t>(count), kNewDepth);
        std::vector<std::pair<int, std::size_t>> path;
        for (int start = YHeap::kPredefined; start < count; ++start) {
            if (depths[static_cast<std::size_t>(start)] == kNewDepth) path.emplace_back(start, 0);
            while (!path.empty()) {
                auto& [index, next] = path.back();
                int& depth = depths[static_cast<std::size_t>(index)];
                if (next == 0) depth = kOpenDepth;
                const std::vector<int> links = linksOf(heap_.get(index));
                if (next == links.size()) {
                    depth = 1;
                    for (const int link : links)
                        depth = std::max(depth, 1 + depths[static_cast<std::size_t>(link)]);
                    if (depth > kMaxPartDepth) return false;
                    path.pop_back();
                    continue;
                }
                const int link = links[next++];
                const int known = depths[static_cast<std::size_t>(link)];
                if (known == kOpenDepth || path.size() > kMaxPartDepth) return false;
                if (known == kNewDepth) path.emplace_back(link, 0);
            }
        }
        return true;
    }

    [[nodiscard]] static std::vector<int> linksOf(const YVariable& variable) {
        std::vector<int> links;
        for (const int part : variable.parts_)
            if (part != YVariable::kNoPart) links.push_back(part);
        if (isAlias(variable)) links.push_back(variable.alias_);
        return links;
    }

    static constexpr int kMaxPartDepth = 200;
    static constexpr int kNewDepth = 0;
    static constexpr int kOpenDepth = -1;

    YHeap& heap_;
};

std::unique_ptr<YScript> YReadPrecompiled(YHeap& heap, std::string_view bytes) {
    Input in(bytes);
    auto script = std::make_unique<YScript>();
    if (!readCode(in, *script)) return nullptr;
    if (!YStoredVariables(heap).readAll(in)) return nullptr;
    if (!isSound(*script, heap.count())) return nullptr;
    return script;
}

namespace {

std::string writeForm(const YScript& script, YHeap& heap) {
    Output out;
    const std::span instructions(script.instructions.data(), script.instructions.size() - 1);
    passCode(out, instructions, script.operands); // reading adds the End
    YStoredVariables(heap).writeAll(out);
    return out.bytes();
}

} // namespace

formats::Result<std::string> YWritePrecompiled(const YScript& script, YHeap& heap) {
    const auto refuse = [](std::string why) {
        return formats::Result<std::string>{{}, std::move(why)};
    };
    if (const YVariable* variable = YStoredVariables(heap).changedPredefined())
        return refuse(variable->text() + " has a value, or the mark &, before the script runs");
    if (heap.count() > YHeap::kMaxOperand + 1)
        return refuse(std::to_string(heap.count()) + " different words are more than " +
                      std::to_string(YHeap::kMaxOperand + 1));
    std::string bytes = writeForm(script, heap);
    if (bytes.size() > kYMaxPrecompiledSize)
        return refuse(std::to_string(bytes.size()) + " bytes are more than " +
                      std::to_string(kYMaxPrecompiledSize));
    // Other bounds are those of who reads it.
    YHeap again;
    const auto same = YReadPrecompiled(again, bytes);
    if (!same) return refuse("its words stand in each other too deeply");
    same->operands.pop_back(); // which reading adds, too
    if (writeForm(*same, again) != bytes) return refuse("it would not be read as it is");
    return {std::move(bytes), {}};
}

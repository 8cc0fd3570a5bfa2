#include "yprecompiled.h"

#include "formats/base/bytes.h"
#include "yexpression.h"
#include "ynumber.h"

#include <algorithm>
#include <optional>
#include <span>

namespace {

constexpr std::uint8_t kSwapped = 1;
constexpr std::int32_t kNone = -1;
constexpr int kSubstringParts = 3;
constexpr std::size_t kMaxText = 65535;

/// Numbers in the byte order of the file.
class Input {
  public:
    explicit Input(std::string_view bytes)
        : reader_(std::as_bytes(std::span(bytes))), swap_(reader_.u8() == kSwapped) {}

    std::uint8_t u8() { return reader_.u8(); }
    std::int16_t i16() {
        const std::uint16_t value = reader_.u16();
        return static_cast<std::int16_t>(swap_ ? static_cast<std::uint16_t>(value << 8 | value >> 8)
                                               : value);
    }
    std::int32_t i32() {
        const std::uint32_t v = reader_.u32();
        return static_cast<std::int32_t>(
            swap_ ? v << 24 | (v & 0xFF00) << 8 | (v >> 8 & 0xFF00) | v >> 24 : v);
    }
    /// A count that cannot be more than `size`-byte records are left for.
    std::optional<int> count(std::size_t size, int limit) {
        const std::int32_t value = i32();
        if (!ok() || value < 0 || value > limit ||
            static_cast<std::size_t>(value) > reader_.remaining() / size)
            return std::nullopt;
        return value;
    }
    std::optional<std::string_view> text(std::int32_t length) {
        if (length == kNone) return std::string_view();
        if (length < 0 || static_cast<std::size_t>(length) > kMaxText) return std::nullopt;
        const std::string_view bytes = reader_.text(static_cast<std::size_t>(length));
        if (!ok()) return std::nullopt;
        return bytes;
    }
    [[nodiscard]] bool ok() const { return reader_.ok(); }

  private:
    formats::ByteReader reader_;
    bool swap_;
};

bool readCode(Input& in, YScript& script) {
    const auto instructions = in.count(3, YScript::kMaxInstructions + 1);
    if (!instructions) return false;
    for (int i = 0; i < *instructions; ++i) {
        const auto opcode = static_cast<YOpcode>(in.u8()); // an unknown one ends the script
        script.instructions.push_back({opcode, in.i16()});
    }
    // The stepping stops at an End, so there is one.
    script.instructions.push_back({YOpcode::End, 0});
    const auto operands = in.count(2, YScript::kMaxOperandWords);
    if (!operands) return false;
    for (int i = 0; i < *operands; ++i) script.operands.push_back(in.i16());
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

/// Reads variables into a heap; the one place outside YVariable that sets its fields.
class YVariableReader {
  public:
    YVariableReader(YHeap& heap, Input& in) : heap_(heap), in_(in) {}

    bool readAll() {
        const std::int32_t count = in_.i32();
        if (!in_.ok() || count < YHeap::kPredefined || count > YHeap::kMaxOperand + 1) return false;
        for (int index = YHeap::kPredefined; index < count; ++index)
            if (!readVariable()) return false;
        for (int index = YHeap::kPredefined; index < count; ++index)
            if (!check(heap_.get(index))) return false;
        // Expressions last: their leaves must all be sound.
        for (int index = YHeap::kPredefined; index < count; ++index)
            if (!buildExpression(heap_.get(index))) return false;
        return isShallow(count);
    }

  private:
    using Kind = YVariable::Kind;
    using Type = YVariable::Type;

    bool readVariable() {
        const std::int32_t kind = in_.i32();
        const std::int32_t type = in_.i32();
        if (!in_.ok() || kind < 0 || kind > static_cast<int>(Kind::Expression) || type < 0 ||
            type > static_cast<int>(Type::Real))
            return false;
        YVariable::Value value{};
        if (!readValue(static_cast<Type>(type), value)) return false;
        const std::int32_t alias = in_.i32();
        const std::int32_t ownership = in_.i32();
        const std::int32_t length = in_.i32();
        const std::int32_t elements = in_.i32();
        const auto name = in_.text(in_.i32());
        const auto text = in_.text(in_.i32());
        if (!in_.ok() || !name || !text || ownership < -1 || ownership > 1 || elements < 0)
            return false;

        YVariable& variable = heap_.create(*name);
        variable.kind_ = static_cast<Kind>(kind);
        variable.type_ = static_cast<Type>(type);
        variable.value_ = value;
        variable.alias_ = alias;
        variable.ownership_ = static_cast<YVariable::Ownership>(ownership);
        variable.length_ = length;
        variable.elementCount_ = elements;
        variable.valueString_ = *text;
        return readParts(variable);
    }

    bool readValue(Type type, YVariable::Value& value) {
        if (type == Type::Integer) value.integer = in_.i32();
        if (type == Type::Real) {
            const auto text = in_.text(in_.i16());
            if (!text) return false;
            value.real = ynumber::scan(*text);
        }
        return in_.ok();
    }

    bool readParts(YVariable& variable) {
        const std::int32_t count = in_.i32();
        if (count == kNone) return in_.ok();
        const std::int32_t expected =
            variable.kind_ == Kind::Substring ? kSubstringParts : variable.length_;
        if (!in_.ok() || count != expected || count < 0 || count > YHeap::kMaxOperand) return false;
        for (int i = 0; i < count && in_.ok(); ++i) variable.parts_.push_back(in_.i16());
        return in_.ok();
    }

    /// Makes one variable what the rest of the engine relies on.
    bool check(YVariable& variable) {
        const auto known = [&](int part) { return part >= 0 && part < heap_.count(); };
        if (variable.type_ == Type::Object) { // objects are not stored
            variable.type_ = Type::Empty;
            if (variable.kind_ == Kind::Constant) variable.kind_ = Kind::Name;
        }
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
    Input& in_;
};

std::unique_ptr<YScript> YReadPrecompiled(YHeap& heap, std::string_view bytes) {
    Input in(bytes);
    auto script = std::make_unique<YScript>();
    if (!readCode(in, *script)) return nullptr;
    if (!YVariableReader(heap, in).readAll()) return nullptr;
    if (!isSound(*script, heap.count())) return nullptr;
    return script;
}

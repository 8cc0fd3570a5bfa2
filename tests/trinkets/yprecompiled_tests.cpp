#include "omsclass.h"
#include "yprecompiled.h"

#include "omscrptb.h"
#include "scriptfixture.h"
#include "ycompiler.h"
#include "yexpression.h"
#include "yheap.h"
#include "yscript.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::ScriptTest;
using testing_support::TextStream;
using testing_support::withLineEnds;

constexpr int kSay = 14;
constexpr int kAssign = 18;

constexpr const char* kScript = "count=0\n"
                                "names=[anna \"bert b\" 3\n"
                                "half=0.5\n"
                                "s=\"abcdef\"\n"
                                "procedure bump step\n[\ncount=count+step\n]\n"
                                "for i 1 3\n[\ncall bump i*2\nitem.i=count\n]\n"
                                "say count item.2 names.2 names.3 half*3 s|2|3 -count\n"
                                "if count=12\n[\nsay \"a dozen\"\n]\nelse\nsay no\n";
constexpr const char* kSaid = "12 6 bert b 3 1.5 bcd -12\na dozen\n";

/// Puts precompiled scripts together: from hand-made records, or from what the compiler made.
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

class YPrecompiled : public ScriptTest {
  protected:
    /// Loads the file as a script and lets it run, slowly; what it says.
    std::string runFile(const std::string& bytes, int passes = 100) {
        machine.files().put("test.mps", bytes);
        load("test.mps", [](std::string_view) { return std::make_unique<TextStream>(""); });
        pass(passes);
        return said();
    }
    std::string compiled(const std::string& text, bool swapped = false) {
        YHeap heap;
        YCompiler compiler(heap, nullptr);
        const auto script = compiler.compile("test.mps", withLineEnds(text));
        EXPECT_TRUE(script);
        return PrecompiledBuilder::from(*script, heap).build(swapped);
    }
    /// Whether the file can be used at all.
    static bool isSound(const PrecompiledBuilder& file) {
        YHeap heap;
        return YReadPrecompiled(heap, file.build()) != nullptr;
    }
};

TEST_F(YPrecompiled, RunsAsTheScriptItWasMadeFrom) {
    start(kScript, 100);
    EXPECT_EQ(said(), kSaid);
    EXPECT_EQ(runFile(compiled(kScript)), kSaid);
    EXPECT_EQ(runFile(compiled(kScript, true)), kSaid);
    EXPECT_THAT(boxes(), IsEmpty());
    EXPECT_EQ(thread->scriptName(), "test.mps");
    EXPECT_EQ(runFile(compiled(kScript) + "more bytes"), kSaid);
}

TEST_F(YPrecompiled, TakesTheTableOfVariablesForItself) {
    put("other.mps", "x=1\nwait\n");
    load("other.mps"); // cannot go on without its variables
    int unloaded = 0;
    thread->setUnloadedLink([&] { ++unloaded; });
    machine.files().put("test.mps", compiled(kScript));
    YThread second(*engine, "test.mps");
    second.run();
    pass(100);
    EXPECT_EQ(said(), kSaid);
    EXPECT_FALSE(thread->isLoaded());
    EXPECT_EQ(unloaded, 1);
    thread->setUnloadedLink(nullptr);
}

// Any byte may be wrong: the file is refused or it runs, but nothing else breaks.
TEST_F(YPrecompiled, DamagedFilesAreRefused) {
    const std::string whole = compiled(kScript);
    for (std::size_t size = 1; size < whole.size(); ++size) {
        runFile(whole.substr(0, size), 0);
        ASSERT_FALSE(thread->isLoaded()) << size;
        ASSERT_THAT(boxes(), ElementsAre("test.mps: damaged precompiled script")) << size;
        std::string flipped = whole;
        constexpr int kChanges[] = {0x01, 0x80, 0xFF};
        flipped[size] = static_cast<char>(flipped[size] ^ kChanges[size % std::size(kChanges)]);
        runFile(flipped, 40);
        boxes();
    }
    EXPECT_EQ(runFile(whole), kSaid) << "the engine goes on";
    const std::string none(8, '\0'); // instructions and operands
    YHeap heap;
    EXPECT_TRUE(YReadPrecompiled(heap, "\2" + none + std::string("\3\0\0\0", 4)));
    for (const std::string& bytes :
         {"\2" + none + std::string("\2\0\0\0", 4), "\2" + none + std::string("\xFF\x7F\0\0", 4),
          std::string("\2\xFF\xFF\xFF\x7F"), std::string("\2\xFF\xFF\xFF\xFF"),
          "\2" + none.substr(4) + "\xFF\xFF\xFF\x7F"}) {
        YHeap other;
        EXPECT_FALSE(YReadPrecompiled(other, bytes));
    }
}

TEST_F(YPrecompiled, ValuesHaveTheirStoredTextsOrTheirNumbers) {
    PrecompiledBuilder file;
    const int all[] = {
        file.with({.type = 3, .integer = 7, .length = 3, .text = "stored", .value = "007"}),
        file.with({.type = 3, .integer = -5, .text = "computed", .value = "stale"}),
        file.with({.type = 4, .real = "0.25", .text = "real"}),
        file.with({.type = 2, .length = 0, .text = "blank"}),
        file.with({.type = 0, .text = "unset", .value = "stale"}),
        file.with({.type = 1, .text = "object"}),
        file.with({.kind = 1, .type = 1, .text = "constant"}), // reads back as an empty name
        file.with({.kind = 2, .length = 1, .text = "a.computed", .parts = {4}}),
    };
    for (const int index : all) file.add(kSay, {index});
    EXPECT_EQ(runFile(file.build()), "007\n-5\n0.25\n\nunset\nobject\nconstant\na.-5\n");
}

TEST_F(YPrecompiled, AliasesStandForOtherVariables) {
    PrecompiledBuilder file;
    const int target = file.name("target");
    const int alias = file.with({.alias = target, .ownership = -1, .text = "alias"});
    const int second = file.with({.alias = alias, .ownership = -1, .text = "second"});
    const int five = file.constant("5");
    file.add(kAssign, {second, five}).add(kSay, {target, alias, second});
    file.add(kAssign, {target, file.constant("6")}).add(kSay, {alias});
    file.add(19, {alias}).add(kSay, {target, alias});
    file.code.push_back({99, 0}); // an unknown instruction ends the script
    file.add(kSay, {alias});
    EXPECT_EQ(runFile(file.build()), "5 5 5\n6\ntarget target\n");
    EXPECT_EQ(thread->status(), YThread::Status::Blocked);
}

TEST_F(YPrecompiled, AnAliasFollowsTheObjectThatIsAssigned) {
    static constexpr OMSClass kThing{
        "Thing", &OMScriptableObject::kClass, {}, &oms::create<OMScriptableObject>};
    OMSRegistry::global().registerClass(kThing);
    PrecompiledBuilder file;
    const int a = file.name("a");
    const int b = file.name("b");
    const int alias = file.with({.alias = a, .ownership = -1, .text = "alias"});
    const int thing = file.name("Thing");
    const int one = file.constant("1");
    file.add(kAssign, {a, thing, one}).add(kAssign, {b, thing, one});
    file.add(kAssign, {alias, b});
    runFile(file.build());
    YHeap& heap = YHeap::current();
    EXPECT_EQ(heap.get(alias).object(), heap.get(b).object()) << "pointed at b now";
    EXPECT_NE(heap.get(a).object(), nullptr) << "and not written through";
    EXPECT_NE(heap.get(a).object(), heap.get(b).object());
}

TEST_F(YPrecompiled, ChecksWhatRefersToWhat) {
    using Variable = PrecompiledBuilder::Variable;
    const auto file = [](std::vector<Variable> variables) {
        PrecompiledBuilder made;
        made.variables = std::move(variables);
        return made;
    };
    const auto part = [](int kind, int other) {
        const std::vector<int> parts =
            kind == 3 ? std::vector{other, other, -1} : std::vector{other};
        return Variable{.kind = kind,
                        .length = static_cast<int>(parts.size()),
                        .text = kind == 2 ? "a.b" : "a|b",
                        .value = kind == 4 ? "s~t" : "",
                        .parts = parts};
    };
    const auto shape = [](const char* value) {
        return Variable{.kind = 4, .length = 1, .text = "e", .value = value, .parts = {0}};
    };
    const auto alias = [](int target) {
        return Variable{.alias = target, .ownership = -1, .text = "alias"};
    };
    std::vector<Variable> chain{{.text = "end"}};
    std::vector<Variable> longChain = chain;
    for (int i = 0; i < 150; ++i) chain.push_back(part(3, 3 + i));
    for (int i = 0; i < 5000; ++i) longChain.push_back(part(3, 3 + i));
    const struct {
        const char* name;
        PrecompiledBuilder file;
        bool sound;
    } rows[] = {
        {"no variables", {}, true},
        {"alias of itself", file({alias(3)}), false},
        {"aliases of each other", file({alias(4), alias(3)}), false},
        {"alias of nothing", file({alias(9)}), false},
        {"alias of an alias", file({alias(4), alias(5), {.text = "x"}}), true},
        {"family of a plain name",
         file({{.alias = 4, .elements = 2, .text = "x"}, {.text = "x.2"}}), true},
        {"compound part of itself", file({part(2, 3)}), false},
        {"expressions of each other", file({part(4, 4), part(4, 3)}), false},
        {"ring through an alias", file({part(3, 4), alias(3)}), false},
        {"negative part", file({part(4, -1)}), false},
        {"deep", file(chain), true},
        {"too deep", file(longChain), false},
        {"compound without a dot", file({{.kind = 2, .length = 1, .text = "ab", .parts = {0}}}),
         false},
        {"constant that is none", file({{.kind = 1, .type = 2, .text = "abc"}}), false},
        {"shape without leaves",
         file({{.kind = 4, .length = 0, .text = "e", .value = "s+tt", .hasParts = true}}), false},
        {"no shape", file({shape("")}), false},
        {"strange shape", file({shape("sxt")}), false},
        {"cut shape", file({shape("s+t")}), false},
        {"left out on the right", file({shape("s-zt")}), true},
        {"unclassified", file({{.kind = 5, .text = "x"}}), false},
        {"unknown ownership", file({{.ownership = 2, .text = "x"}}), false},
        {"parts that are not as many as said",
         file({{.kind = 2, .length = 3, .text = "a.b", .parts = {0}}}), false},
        {"names with parts", file({{.length = 1, .text = "x", .parts = {99}}}), true},
    };
    for (const auto& row : rows) EXPECT_EQ(isSound(row.file), row.sound) << row.name;
}

TEST_F(YPrecompiled, ChecksInstructions) {
    const auto file = [](std::vector<PrecompiledBuilder::Instruction> code) {
        PrecompiledBuilder made;
        made.operands = {0, 1, 2, -1, 2};
        made.code = std::move(code);
        return made;
    };
    const struct {
        const char* name;
        PrecompiledBuilder file;
        bool sound;
    } rows[] = {
        {"list without an end", file({{kSay, 4}}), true},
        {"list outside", file({{kSay, 6}}), false},
        {"jump to the end", file({{11, 1}}), true},
        {"jump outside", file({{11, 2}}), false},
        {"test without its jump", file({{12, 0}, {kSay, 0}}), false},
        {"test with its jump", file({{12, 0}, {10, 2}}), true},
        {"loop without its test", file({{8, 0}, {10, 2}}), false},
        {"assignment without a name", file({{kAssign, 3}}), false},
        {"instructions without operands", file({{13, -7}, {15, 999}, {0, 44}}), true},
        {"unknown instructions", file({{16, -1}, {99, -1}, {255, 3000}}), true},
    };
    for (const auto& row : rows) EXPECT_EQ(isSound(row.file), row.sound) << row.name;

    PrecompiledBuilder words = file({});
    words.operands = {3};
    EXPECT_FALSE(isSound(words)) << "an operand that is no variable";
}

} // namespace

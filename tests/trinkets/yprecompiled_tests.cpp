// Precompiled scripts: what is made of them, and that none of their bytes can do harm.
#include "yprecompiled.h"

#include "scriptfixture.h"
#include "wordtable.h"
#include "ycompiler.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using namespace testing_support;

constexpr int kSay = 14;

constexpr const char* kScript = "count=0\n"
                                "names=[anna \"bert b\" 3\n"
                                "half=0.5\n"
                                "s=\"abcdef\"\n"
                                "procedure bump step\n[\ncount=count+step\n]\n"
                                "for i 1 3\n[\ncall bump i*2\nitem.i=count\n]\n"
                                "say count item.2 names.2 names.3 half*3 s|2|3 -count\n"
                                "if count=12\n[\nsay \"a dozen\"\n]\nelse\nsay no\n";
constexpr const char* kSaid = "12 6 bert b 3 1.5 bcd -12\na dozen\n";

/// Puts precompiled scripts together from hand-made records.
struct PrecompiledBuilder {
    struct Variable {
        std::string text;
        std::int32_t kind = 0, type = 0, integer = 0, alias = 0, ownership = 0, length = -1,
                     elements = 0;
        std::string real, value;
        std::vector<int> parts;
        bool hasParts = false; ///< although they are none
    };
    static constexpr std::string_view kFields = "ktiaole";
    static constexpr std::int32_t Variable::*kNumbers[] = {
        &Variable::kind,      &Variable::type,   &Variable::integer, &Variable::alias,
        &Variable::ownership, &Variable::length, &Variable::elements};
    std::vector<std::pair<int, int>> code; ///< opcodes with their operands
    std::vector<int> operands{0, 1, 2};
    std::vector<Variable> variables; ///< from index 3 on

    /// A variable of words: its text, then, each with its letter, what of it is not as usual.
    PrecompiledBuilder& variable(const std::string& words) {
        std::istringstream in(words);
        Variable v;
        in >> v.text;
        for (std::string word; in >> word;) {
            const std::string what = word.substr(1);
            const auto field = kFields.find(word[0]);
            if (field < kFields.size())
                v.*kNumbers[field] = std::atoi(what.c_str());
            else if (word[0] == 'p')
                v.parts.push_back(std::atoi(what.c_str()));
            else
                (word[0] == 'r' ? v.real : v.value) = what;
            v.hasParts |= word[0] == 'P';
        }
        variables.push_back(v);
        return *this;
    }

    [[nodiscard]] std::string build(bool swapped = false) const {
        formats::ByteWriter out(swapped ? std::endian::big : std::endian::little);
        const auto text = [&](const std::string& bytes) {
            out.u32(bytes.empty() ? -1 : std::ssize(bytes)).text(bytes);
        };
        out.u8(swapped ? 1 : 2).u32(std::ssize(code));
        for (const auto& [opcode, operand] : code) out.u8(opcode).u16(operand);
        out.u32(std::ssize(operands));
        for (const int word : operands) out.u16(word);
        out.u32(std::ssize(variables) + 3);
        for (const Variable& v : variables) {
            out.u32(v.kind).u32(v.type);
            if (v.type == 3) out.u32(v.integer);
            if (v.type == 4) out.u16(std::ssize(v.real)).text(v.real);
            for (const std::int32_t field : {v.alias, v.ownership, v.length, v.elements})
                out.u32(field);
            text(v.text);
            text(v.value);
            out.u32(v.parts.empty() && !v.hasParts ? -1 : std::ssize(v.parts));
            for (const int part : v.parts) out.u16(part);
        }
        return toText(toBytes(out.bytes()));
    }
    [[nodiscard]] bool isSound() const {
        YHeap heap;
        return YReadPrecompiled(heap, build()) != nullptr;
    }
};

class YPrecompiled : public ScriptTest {
  protected:
    /// Loads the file as a script and lets it run, slowly; what it says.
    std::string runFile(const std::string& bytes, int passes = 100) {
        machine.files().put("test.mps", bytes);
        load("test.mps", [](std::string_view) { return textStream(""); });
        pass(passes);
        return said();
    }
    /// The stored form, or why there is none.
    static std::string compiled(const std::string& text) {
        YHeap heap;
        YCompiler compiler(heap, nullptr);
        const auto script = compiler.compile("test.mps", withLineEnds(text));
        const auto written = YWritePrecompiled(*script, heap);
        return written.ok() ? written.value : written.refusal;
    }
};

TEST_F(YPrecompiled, WhatCannotBeStoredIsNotWritten) {
    const auto lines = [](int count, auto line) {
        std::string text;
        for (int i = 0; i < count; ++i) text += line(i) + "\n";
        return text;
    };
    const auto nested = [&](int count) { // each has the one before as its last part
        std::string word = "a|b";
        return lines(count, [&](int) { return "say " + (word = "a|b|" + word); });
    };
    const auto families = [&](int count) { // 15 parts each, which are new
        return lines(count, [n = 0](int) mutable {
            std::string name = "say a";
            for (int i = 0; i < 15; ++i) name += ".b" + std::to_string(n++);
            return name;
        });
    };
    EXPECT_EQ(compiled("RESULT=&x\n"), "RESULT has a value, or the mark &, before the script runs");
    EXPECT_EQ(compiled("procedure SYSTEM\nsay 1\n").substr(0, 6), "SYSTEM");
    EXPECT_EQ(compiled(nested(150)).front(), '\2');
    EXPECT_EQ(compiled(nested(250)), "its words stand in each other too deeply");
    EXPECT_EQ(compiled(families(2047)).front(), '\2');
    EXPECT_EQ(compiled(families(2048)), "32771 different words are more than 32768");
    // A family that is named before its name, and goes on then.
    EXPECT_EQ(compiled("say n.3\nn=[a b\nsay n.4 n.5\nx=&n\nsay a+b 1.5 '' n||2\n")[0], '\2');
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
    EXPECT_EQ(runFile(whole + "more bytes"), kSaid) << "the engine goes on";
    const std::string none(8, '\0'); // instructions and operands
    for (const std::string& bytes :
         {none + std::string("\3\0\0\0", 4), none + std::string("\2\0\0\0", 4),
          none + std::string("\xFF\x7F\0\0", 4), std::string("\xFF\xFF\xFF\x7F"),
          std::string("\xFF\xFF\xFF\xFF"), none.substr(4) + "\xFF\xFF\xFF\x7F"}) {
        YHeap heap;
        const bool isSound = bytes.find('\3') < bytes.size();
        EXPECT_EQ(YReadPrecompiled(heap, "\2" + bytes) != nullptr, isSound);
    }
}

TEST_F(YPrecompiled, ValuesHaveTheirStoredTextsOrTheirNumbers) {
    PrecompiledBuilder file;
    for (const char* words : {"stored t3 i7 l3 v007", "computed t3 i-5 vstale", "real t4 r0.25",
                              "blank t2 l0", "unset vstale", "object t1", "constant k1 t1",
                              "a.computed k2 l1 p4"}) { // a constant reads back as an empty name
        file.code.emplace_back(kSay, static_cast<int>(file.operands.size()));
        file.operands.insert(file.operands.end(), {static_cast<int>(file.code.size()) + 2, -1});
        file.variable(words);
    }
    for (const bool swapped : {false, true})
        EXPECT_EQ(runFile(file.build(swapped)), "007\n-5\n0.25\n\nunset\nobject\nconstant\na.-5\n");
}

TEST_F(YPrecompiled, ChecksWhatRefersToWhat) {
    for (const auto& [variables, sound] : rowTable(R"(
    alias a3 o-1 => no
    alias a4 o-1 / alias a3 o-1 => no
    alias a9 o-1 => no
    alias a4 o-1 / alias a5 o-1 / x => yes
    x a4 e2 / x.2 => yes
    a.b k2 l1 p3 => no
    e k4 l1 vs~t p4 / e k4 l1 vs~t p3 => no
    a|b k3 l3 p4 p4 p-1 / alias a3 o-1 => no
    e k4 l1 vs~t p-1 => no
    ab k2 l1 p0 => no
    abc k1 t2 => no
    e k4 l0 vs+tt P => no
    e k4 l1 p0 => no
    e k4 l1 vsxt p0 => no
    e k4 l1 vs+t p0 => no
    e k4 l1 vs-zt p0 => yes
    x k5 => no
    object t1 / x k5 => no
    x o2 => no
    a.b k2 l3 p0 => no
    x l1 p99 => yes)")) {
        PrecompiledBuilder file;
        std::istringstream in(variables);
        for (std::string one; std::getline(in, one, '/');) file.variable(one);
        EXPECT_EQ(file.isSound(), sound == "yes") << variables;
    }
    PrecompiledBuilder chain;
    chain.variable("end");
    for (int i = 0; i < 5000; ++i) {
        const std::string before = std::to_string(3 + i);
        chain.variable("a|b k3 l3 p" + before + " p" + before + " p-1");
        EXPECT_TRUE(i != 150 || chain.isSound());
    }
    EXPECT_FALSE(chain.isSound()) << "too deep";
}

TEST_F(YPrecompiled, ChecksInstructions) {
    PrecompiledBuilder file;
    for (const auto& [code, sound] : rowTable(R"(
    14 4 => yes - a list without an end
    14 6 => no - outside
    11 1 => yes - a jump to the end
    11 2 => no
    12 0 14 0 => no - a test without its jump
    12 0 10 2 => yes
    8 0 10 2 => no - a loop without its test
    18 3 => no - an assignment without a name
    13 -7 15 999 0 44 => yes - no operands
    16 -1 99 -1 255 3000 => yes - unknown)")) {
        file.operands = {0, 1, 2, -1, 2};
        file.code.clear();
        std::istringstream in(code);
        for (int opcode, operand; in >> opcode >> operand;) file.code.emplace_back(opcode, operand);
        EXPECT_EQ(file.isSound(), sound[0] == 'y') << code;
    }
    file = {};
    file.operands = {3};
    EXPECT_FALSE(file.isSound()) << "an operand that is no variable";
}

} // namespace

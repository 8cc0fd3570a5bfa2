#include "omsclass.h"
#include "yprecompiled.h"

#include "omscrptb.h"
#include "precompiledbuilder.h"
#include "scriptfixture.h"
#include "ycompiler.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::PrecompiledBuilder;
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
    put("broken.mps", "left=1\nright=2\nx=(\n");
    load("broken.mps"); // its names stay
    EXPECT_EQ(boxes().size(), 1U);
    machine.files().put("test.mps", compiled(kScript));
    const auto runBeside = [&] {
        YThread second(*engine, "test.mps");
        second.run();
        pass(100);
        return said();
    };
    EXPECT_EQ(runBeside(), kSaid);

    // Another thread cannot go on without its variables.
    put("other.mps", "x=1\nsay other\nwait\n");
    load("other.mps");
    int unloaded = 0;
    thread->setUnloadedLink([&] { ++unloaded; });
    EXPECT_EQ(runBeside(), kSaid);
    EXPECT_FALSE(thread->isLoaded());
    EXPECT_EQ(unloaded, 1);
    thread->setUnloadedLink(nullptr);
}

TEST_F(YPrecompiled, DamagedFilesAreRefused) {
    const std::string whole = compiled(kScript);
    for (std::size_t size = 1; size < whole.size(); ++size) {
        runFile(whole.substr(0, size), 0);
        ASSERT_FALSE(thread->isLoaded()) << size;
        ASSERT_THAT(boxes(), ElementsAre("test.mps: damaged precompiled script")) << size;
    }
    start("x=1\nsay x\n");
    EXPECT_EQ(said(), "1\n") << "the engine goes on";
}

// Any byte may be wrong: the file is refused or it runs, but nothing else breaks.
TEST_F(YPrecompiled, SurvivesFlippedBytes) {
    const std::string whole = compiled(kScript);
    for (std::size_t at = 1; at < whole.size(); ++at) {
        std::string flipped = whole;
        constexpr int kChanges[] = {0x01, 0x80, 0xFF};
        flipped[at] = static_cast<char>(flipped[at] ^ kChanges[at % std::size(kChanges)]);
        runFile(flipped, 40);
        boxes();
    }
    EXPECT_EQ(runFile(whole), kSaid);
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

TEST_F(YPrecompiled, CountsAreComparedWithWhatIsThere) {
    const auto reads = [](const std::string& bytes) {
        YHeap heap;
        return YReadPrecompiled(heap, bytes) != nullptr;
    };
    const std::string none(8, '\0'); // instructions and operands
    EXPECT_TRUE(reads("\2" + none + std::string("\3\0\0\0", 4)));
    EXPECT_FALSE(reads("\2" + none + std::string("\2\0\0\0", 4)));
    EXPECT_FALSE(reads("\2" + none + std::string("\xFF\x7F\0\0", 4)));
    EXPECT_FALSE(reads("\2\xFF\xFF\xFF\x7F"));
    EXPECT_FALSE(reads("\2\xFF\xFF\xFF\xFF"));
    EXPECT_FALSE(reads("\2" + none.substr(4) + "\xFF\xFF\xFF\x7F"));
}

} // namespace

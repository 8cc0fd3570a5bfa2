// What scripts do: statements, objects and their handlers, timers, other scripts, and the trace.
#include "omsclass.h"
#include "scriptfixture.h"
#include "wordtable.h"
#include "yinspection.h"

#include <gmock/gmock.h>

#include <random>

namespace {

using testing::ElementsAre;
using testing::ExitedWithCode;
using testing::IsEmpty;
using namespace testing_support;

/// Something with every kind of property, which tells what is done to it.
struct Lamp : OMScriptableObject {
    static std::unique_ptr<OMScriptableObject> create() {
        auto lamp = std::make_unique<Lamp>();
        for (OMSArguments& more = OMSArguments::global(); more.hasNext();)
            lamp->note_ += (lamp->note_.empty() ? "" : ",") + more.next();
        return lamp->note_ == "broken" ? nullptr : std::move(lamp);
    }
    Lamp() { ++alive; }
    Lamp(const Lamp& other) : OMScriptableObject(other), note_(other.note_) { ++alive; }
    ~Lamp() override { --alive; }
    std::unique_ptr<OMScriptableObject> duplicate() override {
        return std::make_unique<Lamp>(*this);
    }
    static const OMSClass kClass;

    // Script hooks.
    bool flag() const { return flag_; }
    void setFlag(bool flag) { flag_ = flag; }
    double real() const { return real_; }
    void setReal(double real) { real_ = real; }
    platform::Rect area() const { return {1, -2, 30, 40}; }
    int level() const { return level_; }
    void setLevel(int level) {
        level_ = level;
        if (level > 100) warmUp();
    }
    std::string note() const { return note_; }
    std::string arguments() const {
        std::string all;
        for (OMSArguments& list = OMSArguments::global(); list.hasNext();)
            all += "[" + list.next() + "]";
        return all;
    }
    void turnOn() { note_ = "on"; }
    void blink(std::optional<int> times, std::optional<std::string> color) {
        note_ = std::to_string(times.value_or(-1)) + color.value_or("none");
    }
    void finish() { fireCompletion(); }
    void start() {}
    void warmUp() {
        fireEvent("hot");
        fireEvent("smoke");
    }
    void storm() {
        for (int i = 0; i < 100; ++i) fireEvent("smoke");
        fireEvent("hot");
    }

    inline static int alive = 0;

  private:
    int level_ = 0;
    bool flag_ = false;
    double real_ = 0;
    std::string note_;
};

constexpr OMSEntry kVocabulary[] = {
    oms::data<&Lamp::level, &Lamp::setLevel>("level", "brightness"),
    oms::data<&Lamp::flag, &Lamp::setFlag>("flag", "0 or 1"),
    oms::data<&Lamp::real, &Lamp::setReal>("real", "any number"),
    oms::readOnly<&Lamp::area>("area", "a rectangle"),
    oms::readOnly<&Lamp::note>("note", "any text"),
    oms::readOnly<&Lamp::arguments>("arguments", "what it was asked with"),
    oms::method<&Lamp::turnOn>("default"),
    oms::method<&Lamp::blink>("blink", "[times] [color]"),
    oms::method<&Lamp::finish>("finish", "at once"),
    oms::lasting<&Lamp::start>("start", "finishes later"),
    oms::method<&Lamp::warmUp>("warmUp", "fires"),
    oms::method<&Lamp::storm>("storm", "fires often"),
    oms::event("hot"),
    oms::event("smoke"),
    oms::event("hit"),
};
const OMSClass Lamp::kClass{"Lamp", &OMScriptableObject::kClass, kVocabulary, &Lamp::create};

/// Scripts are written with "; " between their lines.
std::string lines(std::string text) {
    for (std::size_t at; (at = text.find("; ")) != std::string::npos;) text.replace(at, 2, "\n");
    return text;
}

class Scripts : public ScriptTest {
  protected:
    Scripts() {
        Lamp::alive = 0;
        OMSRegistry::global().registerClass(Lamp::kClass);
        YCommands::add("Hit", [] {
            if (auto* hit = OMScriptableObject::named("a")) hit->fireEvent("hit");
        });
        YCommands::add("Alive", [] { OMScriptableObject::setResult(Lamp::alive); });
        YCommands::add("Third", [] { OMScriptableObject::setResult(1.0 / 3); });
    }
    ~Scripts() override {
        if (thread) thread->unload();
        EXPECT_EQ(Lamp::alive, 0);
    }
    /// What was said since the last call, with "/" for line ends, and "!" before each box.
    std::string heard() {
        std::string all = said();
        for (const std::string& box : boxes()) all += "!" + box;
        std::replace(all.begin(), all.end(), '\n', '/');
        return all;
    }
    std::string outcome(const std::string& text, int passes = 3) {
        run(lines(text), passes);
        return heard();
    }
    /// Rows of "SCRIPT => HEARD".
    void expectAll(const char* table, const std::string& before = {},
                   const std::string& behind = {}) {
        for (const auto& [script, expected] : rowTable(table))
            EXPECT_EQ(play(before + script + behind), expected) << script;
    }
    virtual std::string play(const std::string& text) { return outcome(text); }
    Lamp& lamp(const char* name = "a") {
        return *static_cast<Lamp*>(OMScriptableObject::named(name));
    }
};

TEST_F(Scripts, StatementsDoTheirWork) {
    expectAll(R"x(
    for i 10 1 -2; say i; for i 1 10 4; say i; for i 1 4 2; say i; say i => 10/8/6/4/2/1/5/9/1/3/5/
    n=0; for i 3 1; [; say i; n=n+1; if n=4; break; ]; for i 1.6 3.5; say i => 3/4/5/6/2/3/
    k=7; for item.k 1 2; say item.7; for i 1 3; [; say i; i=9; ] => 1/2/1/2/3/
    n=3; for n; [; say n; n=n-1; ]; for; [; n=n+1; if n=3; [; break; ]; say n; ]; say end n
    => 3/2/1/1/2/end 3/
    for i 1 2; [; for j 1 3; [; if j=2; continue; say i*10+j; ]; ] => 11/13/21/23/
    for i 1 3; [; for j 1 3; [; if j=2; break; say i*10+j; ]; if i=2; break; ]; say e => 11/21/e/
    for i 1 2; [; if i=1; [; for j 1 2; say j; ]; else; say e; ] => 1/2/e/
    for i 32766 40000; say i; say end i; for i 70000 70001; say i
    => 32766/32767/end -32768/4464/4465/
    n=0; for i 32766 32767 2; [; say i; n=n+1; if n=3; break; ] => 32766/-32768/-32766/
    procedure p n; [; for i 1 2; [; call p n; ]; ]; call p 1; say never
    => !test.mps:4: counted loops are nested too deep

    procedure p a b c; say a b c; call p 1+1 'two words' x; b='old'; call p 1
    => 2 two words x/1 old x/
    procedure p a b; say a b; item.2='x'; i=2; call p item.i; i=3; a=1; b=2; call p b a => x b/2 2/
    call p 3; wait; procedure p n; [; say n; if n>0; call p n-1; say n; ] => 3/2/1/0/0/0/0/0/
    procedure pq a; say a; f='pq'; g='f'; call g 7; l.1='pq'; i=1; call l.i 9; call 'p'+'q' 1
    => 7/9/1/
    n=0; call p; say end n; procedure p; [; n=n+1; if n<2047; call p; ] => end 2047/
    n=0; call p; say end n; procedure p; [; n=n+1; if n<2048; call p; ]
    => !test.mps:9: sp < (YTSTACK-1)
    call p; say never; procedure p; [; drop stack; ] => !test.mps:4: sp
    x='+99999'; call x; say never => !test.mps:3: call of a procedure that does not exist

    x=1 2 3; say x; x=1/3; say x x*3; x=3; x=x; x=x+x; say x
    => 1/0.333333333333333 0.999999999999999/6/
    x='abcdef'; x=x|3; x=x|2|2; say x; 5=6; 'a'=7; say 5 'a' => de/5 a/
    s=s|2*'x'; say s; say 'a ring' item.s => s|2*'x'/a ring /
    x=999999999*10; y=x+1; say x y; x=0-1000000000; say x x+1; x=2^2000; y=0-x; say x y y+1
    => 9999999990 9999999991/-1000000000 -999999999/inf 0-x 1/
    x=1; x=; say x; x=y; say x => x/y/!x=/is equivalent to/drop x!Variable y is empty
    z=z; x=item.i; say; say '' x '' 'y  z'; Third; say RESULT RESULT*3
    => / item.i  y  z/0.333333333333333 0.999999999999999/

    x=1; y=2; item.3=4; i=3; drop x item.i; say x y item.3; drop 5 'a'; say 5 'a' => x 2 item.3/5 a/
    n.1=1; n.22=2; n.1.1=3; n=4; n.a=5; x=2; drop [ n x; say n.1 n.22 n.1.1 n x => n.1 n.22 3 4 x/
    x=1; v='x'; drop var v; say x v; x=1; drop x [; drop var; drop script; say x => x x/x/)x");
    put("y", "say in y\n");
    EXPECT_EQ(outcome("x='y'; y='x'; call x", 10), "in y/") << "a ring ends at one of its names";
    const std::string a(100, 'a'), x(255, 'x'); // what passes 255 characters is left out
    EXPECT_EQ(outcome("say '" + a + "' '" + a + "' '" + a + "' end; say '" + x + "' y; say '" + x +
                      "x' y"),
              a + " " + a + " end/" + x + "/y/");
}

// How lines, words and included files are read.
TEST_F(Scripts, StatementsAreWhatTheirLinesSay) {
    const std::pair<const char*, const char*> scripts[] = {{"a", "say a1; include b; say a2"},
                                                           {"b", "say b"},
                                                           {"empty", ""},
                                                           {"open", "[; say o"},
                                                           {"close", "]"},
                                                           {"if", "if x; say i"},
                                                           {"fails", "; call z; say never"}};
    for (const auto& [name, text] : scripts) put(name, lines(text));
    expectAll(R"x(
    for i 0 3; [; a=i%2; b=i\2; if a; say 1; else; if b; say 2; else; say 3; ] => 3/1/2/1/
    for i 0 3; [; a=i%2; b=i\2; if a; if b; say 1; else; say 2; ] => 2/1/
    c=1; if c; [; say 1; ]; ; ;no;   else; [; ]; say 2; include b say x; say 3 => 1/2/b/3/
    say "a b" 'c "d' a=b a=a; say=2; say say => a b c "d 0 1/2/
    ifx 1; Say 3 => !ifx is undefined!Say is undefined!Keyword "ifx" is undefined
    => !Keyword "Say" is undefined
    procedure p; [; ]; x=[ one "two words" 3 p 1+1 last]; x=[more; for i 1 7; say x.i
    => one/two words/3/+1/2/last]/more/
    say 1; include a; say 2; x=0; include if; else; say e; include if; elsewhere=1; say elsewhere
    => 1/a1/b/a2/2/e/1/
    for x 0 1; [; if x; include b; if x; include empty; say 2; ] => b/2/
    for x 0 1; [; if x; include open; say 2; include close; say 3; ] => 3/o/2/3/
    z='+99999'; say 1; include fails => 1/!fails:2: call of a procedure that does not exist)x");
    EXPECT_EQ(outcome("say a\tb\x7Fz\xE9z \xE9 'caf\xE9'" + std::string("\0e", 2)),
              "a b z z caf\xE9 e/");
    for (const char* text : {"yield off\nsay a b\nsay c\n", "yield off\r\nsay a b\r\nsay c\r\n",
                             "yield off\rsay a\nb\rsay c"}) { // a blank where CR ends lines
        machine.files().put("test.mps", text);
        load("test.mps");
        pass(3);
        EXPECT_EQ(heard(), "a b/c/");
    }
    EXPECT_THAT(failures, IsEmpty());
    outcome("x=; x=1");
    EXPECT_THAT(failures, ElementsAre("Assignment to nothing"));
}

TEST_F(Scripts, OnlyALeadingZeroIsFalse) {
    for (const auto& [condition, answer] : wordTable(R"(
    1 : yes 0 : no 0.5 : no 007 : no -0 : no -1 : yes "" : yes y : no z : yes word : yes
    "0x" : no x=0 : yes 1/2 : no 1/3*3 : yes (y) : no t|2 : no 0\0 : no EMPTY : yes
    item.x : no "a"*2 : yes)"))
        EXPECT_EQ(outcome("x=0; y=0.25; z=-0.25; t='a0'; item.0='0'; if " + condition +
                          "; say yes; else; say no; "),
                  answer + "/")
            << condition;
}

TEST_F(Scripts, YieldChoosesThePace) {
    put("test.mps",
        lines("say 1; yield off; say 2; say 3; yield on; say 4; say 5; yield x; say 6"));
    load("test.mps");
    for (const char* turn : {"1/", "", "2/3/", "4/", "5/", "", "6/"}) {
        pass(1);
        EXPECT_EQ(heard(), turn);
    }
}

TEST_F(Scripts, ALoopWithoutEndLeavesTimeToOthers) {
    run("for\nx=\n", 2); // the first pass has the yield
    EXPECT_EQ(boxes().size(), 100u);
    pass(2);
    EXPECT_EQ(boxes().size(), 200u);
    run("for\nsay x\n", 2);
    EXPECT_NEAR(static_cast<double>(said().size()), 20'000, 100) << "lines of a letter";
}

// Without a trace, and until it is blocked, a thread takes expressions as rows of steps for
// integers or reals, and changes its mind when values do. One statement at a time it takes them by
// the rules.
TEST_F(Scripts, ExpressionsOfNumbersAreAsTheRulesHaveThem) {
    constexpr int kExpressions = 300;
    const char* const names[] = {"a", "b", "item.k", "(~c)", "3", "0.25", "2147483647", "1000003"};
    constexpr std::string_view kOperators = "+-*/\\%^=#<>";
    std::mt19937 random(99);
    const auto word = [&](auto&& self, int depth) -> std::string {
        if (depth == 0 || random() % 4 == 0) return names[random() % std::size(names)];
        const char operation = kOperators[random() % kOperators.size()];
        const bool isSign = operation == '-' && random() % 3 == 0;
        return "(" + (isSign ? "" : self(self, depth - 1)) + operation + self(self, depth - 1) +
               ")";
    };
    std::string text = "k=4; n=5; ";
    int count = 0;
    for (const char* value :
         {"0", "1", "-1", "7", "-12", "2000000000", "-2000000000", "1999999999", "0.5", "-2.25",
          "1e10", "0.00001", "123456789.125", "\"x\"", "\"07\""})
        text += "v." + std::to_string(count++) + "=" + value + "; ";
    text += "for round 1 6; [; ";
    for (int i = 0; i < kExpressions; ++i) {
        const std::string condition = word(word, 3), expression = condition + "+0";
        text += "n=(n*7+3)%" + std::to_string(count) +
                "; a=v.n; item.4=v.n; c=v.n; n=(n+round)%13; b=v.n; x=" + expression +
                "; t=0; if " + condition + "; t=1; say x t; ";
    }
    text = lines(text + "]; wait; ");
    run(text);
    const std::string byRows = said();
    start(text, 60 * kExpressions * 2);
    const std::string byRules = said();
    EXPECT_EQ(std::ranges::count(byRules, '\n'), 6 * kExpressions);
    EXPECT_EQ(byRows, byRules);
}

TEST_F(Scripts, VariablesOwnWhatTheyConstruct) {
    expectAll(R"x(
    c=1; => 1/
    a=5; => 0/
    drop a; => 0/
    b=a; => 2/
    b=&a; n='b'; drop var n; => 1/
    b=&a; drop b; => 0/
    i=1; item.i=Lamp 2; drop item.1; => 1/
    item.1=Lamp 2; item.2=Lamp 3; item.1.1=Lamp 4; drop [ item; => 2/
    b=Lamp 2; c=&a; drop trinkets; => 0/
    c=&a; c=Lamp 2; c=0; => 1/
    b=Lamp broken; say b; b=lamp 1; say b; b=Lamp;
    => 0/lamp/2/!Variable lamp is empty!Constructor Lamp has no parameters
    b=&a; c=&b; drop a; say a b c; => a b c/0/
    set a hit p; Hit; say a RECEIVER; procedure p; [; drop RECEIVER; ]; => a RECEIVER/0/
    procedure p; [; get RECEIVER note n; say n; ]; set Lamp born p; c=Lamp 2; b=a; set Lamp born;
    d=Lamp 3; => 2/1/4/
    procedure p; [; drop RECEIVER; ]; set Lamp born p; c=Lamp 2; say c; b=5; b=a; say b; => 0/b/1/
    )x",
              "a=Lamp 1; ", "Alive; say RESULT");
    thread->unload();
    EXPECT_EQ(Lamp::alive, 0);
}

TEST_F(Scripts, ObjectsAreSetAskedAndPlayed) {
    expectAll(R"x(
    x=4; set a level x*2+1; get a level r; say r; set a note 5; get a note r; say r => 9/1/
    for i 1 2; [; set a level 99999999999*(i-1); set a flag 2*(i-1); set a real i/10; get a level r;
    get a flag s; get a real t; get a area u; say r s t u; ]; set a flag true; get a flag s; say s
    => 0 0 0.1 1 -2 30 40/2147483647 1 0.2 1 -2 30 40/0/
    i=1; item.i=Lamp in 2 1+2 item.k; get item.i note r; say r; get a name r; say r
    => in,2,3,item.k/a/
    i=2; get a arguments word 1+1 item.i r; say r => [word][2][item.2]/
    r=1; get a blink r; get a sound r; set a sound 1; set a blink 5; say r
    => 1/!Property blink not found!Property sound not found!Property sound not found
    => !Procedure 5 not found
    set b level 5; get b level r; play b
    => !b is not a trinket,/so "set" won't work here!b is not a trinket,/so "get" won't work here
    => !b is not a trinket
    set Lamp level 5 => !Property level not found
    play a; get a note n; say n; play a blink; get a note n; say n => on/-1none/
    play a blink 1+1 'dark red' more; get a note n; say n => 2dark red/
    play a blink '' red; get a note n; say n; play a finish }; say on => -1red/on/
    play a jump; play a level; play a jump }; say on
    => on/!Method jump not found!Method level not found!Method jump not found
    b=&a; set b hot p; set a hit p; Hit; procedure p; [; get RECEIVER name r; say r; ]
    => b/!RECEIVER event name b/does not match/trinket real name a
    => !Found eventRec holding the same trinket under the name a
    set Lamp born p; b=Lamp 2; procedure p; [; get RECEIVER name r; say r; ] => /)x",
              "a=Lamp 1; ");
}

TEST_F(Scripts, ASynchronousPlayWaitsForTheObjectOrItsEnd) {
    const std::string handler = "; procedure p; [; say hit; ]";
    EXPECT_EQ(outcome("a=Lamp 1; set a hit p; play a start }; say done" + handler), "");
    EXPECT_EQ(thread->status(), YThread::Status::Blocked);
    const auto after = [&](auto deed) {
        deed();
        pass(1);
        return heard();
    };
    const auto hit = [&] { lamp().fireEvent("hit"); };
    const auto finish = [&] { lamp().finish(); };
    EXPECT_EQ(after(hit), "") << "no events meanwhile";
    EXPECT_EQ(after(finish), "done/");
    EXPECT_EQ(after(hit), "hit/");
    EXPECT_EQ(after(finish), "") << "the link fires once";
    run(lines("a=Lamp 1; b=&a; play b start }; say done"));
    EXPECT_EQ(after([&] { delete &lamp(); }), "done/");
}

TEST_F(Scripts, HandlersAreCalledReplacedAndRefused) {
    const std::string handlers = "; procedure p; [; say P; ]; procedure q; [; say Q; ]";
    expectAll(R"x(
    set a hit p; set a hit q; Hit; set a hit; Hit; set a hit p; Hit; a=0 => Q/P/
    set a hit p; suspend; Hit; resume; say one; Hit; a=0 => one/P/
    set a jump p; set a level p; set a blink p; x='+99999999999'; set a hit x; x='+500';
    set a hit x; Hit => !Event jump not found!Event level not found!Event blink not found
    => !Event hit not found!Event hit not found
    set a hot p; set a level 200; get a level r; say r; play a warmUp; set a hot; play a warmUp;
    set a level 300 => 200/!Setting property "level"/caused event "hot" (ignored)/
    => !Invoking method "warmUp"/caused event "hot" (ignored)/)x",
              "a=Lamp 1; ", handlers);
    EXPECT_THAT(engine->records(), IsEmpty());
    EXPECT_THAT(failures, IsEmpty());
    const std::string storm = outcome("a=Lamp 1; set a hot p; play a storm" + handlers);
    EXPECT_TRUE(storm.starts_with("!Invoking method \"storm\"/caused event \"smoke\"")) << storm;
    EXPECT_EQ(storm.size(), 981U);
    run(lines("a=Lamp 1; set a hit p; Hit; say never; procedure p; [; Hit; ]"));
    const auto nested = boxes();
    EXPECT_EQ(nested.size(), static_cast<std::size_t>(YEngine::kMaxDeliveries));
    EXPECT_EQ(nested.back(), "test.mps:8: events are nested too deep");
    EXPECT_FALSE(thread->isRunning());
    EXPECT_EQ(said(), "");
}

TEST_F(Scripts, HandlersRunAtOnceAndMayWait) {
    EXPECT_EQ(outcome("a=Lamp 1; set a hit p; Hit; say three; wait; say never; procedure p; [; "
                      "get RECEIVER note n; call q n; say back; ]; procedure q what; [; "
                      "say two what; ]"),
              "two 1/back/three/");
    lamp().fireEvent("hit");
    EXPECT_EQ(heard(), "two 1/back/") << "without a pass of the main loop";
    EXPECT_TRUE(thread->isWaiting());

    EXPECT_EQ(outcome("a=Lamp 1; set a hit p; set a hot q; for k 1 3; [; wait; say k; ]; say end; "
                      "procedure p; [; for i 5 9; [; say in; wait; ]; ]; procedure q; [; say Q; "
                      "drop wait; ]"),
              "");
    for (const char* round : {"1/", "2/", "3/end/"}) {
        lamp().fireEvent("hit");
        pass(2);
        EXPECT_EQ(heard(), "in/");
        lamp().fireEvent("hot"); // ends the first handler, and its loop
        pass(2);
        EXPECT_EQ(heard(), "Q/" + std::string(round) + "!Nested interrupt on a's event");
    }
}

class Timers : public Scripts {
  protected:
    /// What is heard, each with the number of its pass; the first of `tickMs` is number 1.
    std::string play(const std::string& script) override {
        if (thread) thread->unload();
        thread.reset();
        engine = nullptr;
        engine = std::make_unique<YEngine>();
        machine.clock().now = from;
        run(lines(script), 0);
        std::string all;
        for (int i = -2; i <= passes; ++i) {
            pass(1, i > 0 ? tickMs : 1);
            if (i == 0) machine.clock().now = from + static_cast<std::uint32_t>(tickMs);
            if (const std::string now = heard(); !now.empty()) all += std::to_string(i) + ":" + now;
        }
        return all;
    }
    int tickMs = 1;
    int passes = 2000;
    std::uint32_t from = 0;
};

TEST_F(Timers, CountTicks) {
    const std::string handlers =
        "; wait; procedure p; [; say P RECEIVER; ]; procedure q; [; say Q; ]";
    tickMs = 101; // a tick is more than a tenth of a second
    passes = 60;
    expectAll(R"x(
    schedule 1 p => 10:P schedule/
    schedule 2 p => 19:P schedule/
    schedule 0.1 p => 1:P schedule/
    schedule 1.2 p => 11:P schedule/
    half=0.5; schedule half*2 p => 10:P schedule/
    schedule -1 p => 1:P schedule/
    schedule 0 p; schedule word p =>
    schedule 1 p; drop schedule =>
    schedule 1 p; suspend =>
    schedule 1 p; schedule 2 q => 19:Q/
    schedule 1 q; idle 1 p => 10:Q/20:P idle/30:P idle/40:P idle/50:P idle/60:P idle/
    n=0; idle 2 r; wait; procedure r; [; n=n+1; say n; if n=3; [; drop idle; ]; ]
    => 20:1/39:2/58:3/!test.mps:5: sp
    schedule 1 word; idle 1 5; schedule 1 '+9999'; idle 1 '+99999999999'
    => -1:!Procedure word not found!Procedure 5 not found!Procedure '+9999' not found
    => !Procedure '+99999999999' not found)x",
              {}, handlers);
    passes = 1100;
    for (const auto& [ms, pass] : {std::pair(100, "20"), {50, "30"}, {1, "1010"}, {101, "10"}}) {
        tickMs = ms;
        from = ms == 101 ? 0xFFFFFF00U : 0;
        EXPECT_EQ(play("schedule 1 p" + handlers), std::string(pass) + ":P schedule/");
    }
}

TEST_F(Timers, PausesAreNineTenthsOfTheirSeconds) {
    expectAll(R"x(
    half=0.5; pause half; say half; pause 1; say on => 451:0.5/1351:on/
    pause 0.001; say on; pause 2.0005; say on => 0:on/1802:on/
    pause -5; say on; pause 0; pause word; say on => 0:on/on/
    schedule 0.1 p; pause 1; say main; procedure p; [; say P; pause 0.1; say Q; ]
    => 101:P/192:Q/193:main/
    schedule 0.1 p; pause 0.5; say main; procedure p; [; say P; pause 1; say Q; ]
    => 101:P/1002:Q/1003:main/
    schedule 0.1 p; pause 0.5; say main; wait; procedure p; [; say P; wait; say Q; ] => 101:P/)x");
}

class Loads : public Scripts {
  protected:
    Loads() {
        const auto add = [&](const char* name, const char* text) { put(name, lines(text)); };
        add("a.mps", "yield off; say a; x=left; relay 'b.mps'; say never");
        add("b.mps", "yield off; say b x; n=1");
        add("sub.mps", "yield off; say sub; exit; say never");
        add("forgets.mps", "yield off; what='stack'; drop script what; exit");
        add("includes.mps", "include none");
        add("includesbinary", "include binary");
        machine.files().put("binary", "\2" + std::string(70000, ';'));
        add("relays.mps", "relay gone");
        add("inc", "say included");
    }
};

TEST_F(Loads, ScriptsReplaceCallAndLeaveEachOther) {
    load("a.mps");
    pass(8);
    EXPECT_EQ(heard(), "a/b x/!Variable left is empty") << "with fresh variables";
    EXPECT_EQ(outcome("say main count; call 'sub.mps'; say never", 2), "main count/");
    EXPECT_THAT(engine->threadStack(), ElementsAre("test.mps"));
    pass(2);
    EXPECT_THAT(engine->threadStack(), IsEmpty());
    pass(2);
    EXPECT_EQ(heard(), "sub/main count/") << "from its start";
    for (const char* text : {"x=1; exit; say never", "call 'forgets.mps'"}) {
        EXPECT_EQ(outcome(text, 10), "");
        EXPECT_EQ(value("x"), "<none>");
        EXPECT_TRUE(app->isRunning() && !thread->isLoaded());
    }
    EXPECT_EQ(outcome("quit 'b.mps'", 2), "");
    EXPECT_EQ(thread->scriptName(), "b.mps");
    EXPECT_FALSE(app->isRunning());
    EXPECT_EQ(outcome("quit; say never"), "");
    EXPECT_FALSE(thread->isLoaded());
}

TEST_F(Loads, ScriptsAreFoundByHandByALocatorOrNotAtAll) {
    for (const char* chosen : {"b.mps", ""}) {
        machine.dialogs().chosen = chosen;
        load(nullptr);
        pass(3);
        EXPECT_EQ(heard(), *chosen ? "b x/" : "");
        EXPECT_EQ(machine.dialogs().asked.back(), "Script *.mps 128");
    }
    load("far.mps", [](std::string_view name) {
        return textStream("say from " + std::string(name) + "\rinclude inc\r");
    });
    pass(5);
    EXPECT_EQ(heard(), "from far.mps/included/");
    start("say 1\n;" + std::string(65535 - 7, 'x')); // the largest one
    EXPECT_EQ(heard(), "1/");
    start("");
    EXPECT_TRUE(thread->isLoaded()) << "an empty one is a script";

    expectAll(R"x(
    say 1; say "open  ; say 2 => !Unquote say "open  ...!3: "open
    Boop; pause => !Boop is undefined!3: pause
    say 1; include test.mps => !3: test.mps)x"); // itself, on and on
    EXPECT_FALSE(thread->isLoaded());
}

using LoadsDeath = Loads;

TEST_F(LoadsDeath, UnreadableScriptsEndTheProgram) {
    const auto nothing = [](std::string_view) { return std::unique_ptr<OMIStream>(); };
    const auto huge = [](std::string_view) { return textStream(std::string(65536, ';')); };
    const std::tuple<const char*, YScriptLocator, const char*> rows[] = {
        {"none.mps", nothing, "unknown script"},
        {"far.mps", huge, "Script too long"},
        {"includes.mps", nullptr, "can't find none"},
        {"includesbinary", nullptr, "Script too long"},
    };
    for (const auto& [name, locator, message] : rows)
        EXPECT_EXIT(load(name, locator), ExitedWithCode(1), message) << name;
    load("relays.mps");
    EXPECT_EXIT(pass(3), ExitedWithCode(1), "can't find gone");
}

struct Traced : Scripts {
    std::string play(const std::string& text) override {
        const std::string own = "debug/on//test.mps/";
        const std::string all = outcome("debug f; " + text);
        EXPECT_TRUE(all.starts_with(own));
        return all.substr(own.size());
    }
};

TEST_F(Traced, EveryStatementTellsWhatItDid) {
    expectAll(R"x(
    x=1; debug on; x=2; wait => assignment/x=2: x was [1] now [2]/wait//
    i=3; debug on; item.i=5; wait
    => assignment/item.i=5: item.i(item.3) was [item.3] now [5]/wait//
    x=1; debug on; if x; wait => check condition/condition [x] is true///wait//
    x=0; debug on; if x; [; ]; say a b
    => check condition/condition [x] is false/jumping/to say a b/a b/say//
    debug on; if; wait => check condition/eternal loop///wait//
    debug on; for i 1 2; [; ]; wait => for/counter i: from 1 to 2 by 1/
    => loop iteration/counter i=1 target=2///jumping/to loop iteration i 1 2/
    => loop iteration/counter i=2 target=2///jumping/to loop iteration i 1 2/
    => loop iteration/counter i=3 target=2/jumping/leaving a loop nested 0 jumping to wait /wait//
    n=1; debug on; for n; [; break; ]; wait
    => for/loop while [n] is true/loop iteration/condition [n] is true///jumping/to wait /wait//
    procedure p a b; [; ]; debug on; x=5; call p x+1 y z; wait
    => assignment/x=5: x was [x] now [5]/call/procedure p=2/
    => procedure header/Args: a <- x+1 [6] b <- y [y] /return from procedure/at pc = 7/wait//
    n=2; procedure p; [; ]; debug on; schedule n p; idle 0.25 p; wait
    => schedule/p (pc=4) in n [2.0] seconds/idle/p (pc=4) on 0.25 [0.2] idle seconds/wait//
    a=Lamp 1; i=2; item.2=7; debug on; set a level 5; set a level i; set a level item.i; wait
    => set/a: property "level" <- [5]/set/a: property "level" <- i=[2]/
    => set/a: property "level" <- item.i(item.2)=[7]/wait//
    a=Lamp 1; procedure p; [; ]; debug on; set a color 5; set a hit p; set a hit; set a level p; wait
    => set/a: "color" is not a property/set/"hit" for a will trigger procedure [+3]/
    => set/remove the "hit" handler for a/set/"level" for a not found/wait//
    => !Property color not found!Event level not found
    a=Lamp 1; r=1; debug on; get a level r; wait
    => get/Property "level" of a: r was [1] now [0]/wait//
    a=Lamp 1; debug on; play a blink 3; play a jump; play b; play a }; drop r; wait
    => play/method "blink" for [a]/play/method "jump" for [a] not found/play/b is not a trinket/
    => play/default method for [a]/synchronously/drop/r was [r]  /wait//!Method jump not found
    a=Lamp 1; set a hit p; debug on; Hit; wait; procedure p; [; x=1; call q; ]; procedure q; [; ]
    => assignment/x=1: x was [x] now [1]//[interrupt]/call/procedure q=11//[interrupt]/
    => procedure header/Args: //[interrupt]/return from procedure/at pc = 10//[interrupt]/
    => return from interrupt//run-time call//wait//
    debug on; suspend; resume; pause 0.5 => suspend/suspended/resume/resumed/pause/0.5 seconds/)x");
}

TEST_F(Scripts, TheTraceGoesWhereAndWhileItIsAsked) {
    start(lines("debug f; debug on; x=1; debug off; x=2"));
    EXPECT_EQ(heard(), "debug/on//test.mps/assignment/x=1: x was [x] now [1]/");
    std::string window;
    engine->setTraceWindow([&](std::string_view) { window += "w"; });
    for (const std::string letters : {"m", "f", "w", "mfw", "none"}) {
        window.clear();
        run("debug " + letters + "\ndebug on\n");
        const std::string seen =
            (boxes().empty() ? "" : "m") + std::string(said().empty() ? "" : "f") + window;
        EXPECT_EQ(seen, letters == "none" ? "" : letters);
    }
    machine.dialogs().answer = platform::Button::Cancel; // ends it; the first output is the box
    EXPECT_EQ(outcome("debug m; debug on; x=1; x=2"), "!debug/on//test.mps");
    EXPECT_EQ(value("x"), "2");
}

TEST_F(Scripts, WhoLooksAtThemFromOutsideLeavesNothingBehind) {
    run(lines("a=Lamp on; b=&a; n=5; long.1=a; word=7; wait; procedure p; set a level 2"));
    YInspection game;
    std::string seen;
    for (const auto& [name, type, value] : game.variables())
        seen += name + ' ' + type + ' ' + value + '/';
    EXPECT_EQ(seen, "SYSTEM text WIN/a Lamp /b Lamp (a second name)/long.1 Lamp /n number 5/"
                    "p procedure test.mps:8/word number 7/");
    seen.clear();
    for (const auto& [name, value] : game.properties("a")) seen += name + ' ' + value + '/';
    EXPECT_EQ(seen, "area 1 -2 30 40/arguments /flag 0/level 0/note on/real 0/");
    EXPECT_TRUE(game.properties("n").empty() && game.properties("nobody").empty());
    const int words = YHeap::current().count();
    for (const char* line : {"n*8+word", "nobody", "set a level 30", "say word|2|4 \"text\" n.q.r",
                             "get a level n", "play a blink 3", "Hit 1 2", "set a hit p", "(n"}) {
        game.run(line);
        EXPECT_EQ(YHeap::current().count(), words) << line;
    }
    EXPECT_EQ(game.run("n"), "30");
    // The name of an element stays, and with it what is made of words behind it.
    EXPECT_EQ(game.run("word|crew.7|q"), game.run("word|crew.7|q"));
    EXPECT_GT(YHeap::current().count(), words);
}

TEST_F(Scripts, AScriptBeginsAnewWithItsVariablesIfWanted) {
    run("a=1\nb=text\nitem.1=0.5\nlamp=Lamp 1\nwas=old\nhow=4\ngone=3\nwait");
    put("test.mps", "yield off\na=0\nb=0\nitem.1=0\nlamp=7\nwas=Lamp 3\nset was hit how\nwait\n"
                    "procedure how\n[\n]");
    for (const auto& [keeps, values] : {std::pair{true, "1text0.57"}, {false, "0007"}}) {
        thread->beginAnew(keeps);
        pass(3);
        EXPECT_EQ(value("a") + value("b") + value("item.1") + value("lamp"), values);
        EXPECT_EQ(value("was") + value("how") + value("gone"), "\xA5+8<none>");
    }
}

TEST_F(Scripts, AScriptWithMistakesIsToldAndCanBeginOnceTheyAreMended) {
    const std::string mistake = "test.mps:2: ";
    put("test.mps", "a=1\nif a [\n");
    EXPECT_EQ(YCheckScript("test.mps", nullptr).at(0).substr(0, mistake.size()), mistake);
    EXPECT_EQ(YCheckScript("no.mps", nullptr).size(), 1U);
    EXPECT_EQ(value("a"), "<none>");
    start("if a [\n");
    EXPECT_EQ(boxes().size(), 1U);
    put("test.mps", "a=5");
    EXPECT_TRUE(YCheckScript("test.mps", nullptr).empty());
    thread->beginAnew(false);
    pass(3);
    EXPECT_EQ(value("a"), "5");
}

} // namespace

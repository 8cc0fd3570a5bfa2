#include "yexpression.h"

#include "omscrptb.h"
#include "wordtable.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using testing_support::wordTable;

class YExpressions : public testing::Test {
  protected:
    void set(std::string_view name, std::string_view value) {
        heap.get(heap.intern(name)).setString(value);
    }
    /// The word's string form; "error N" when it does not compile.
    std::string read(std::string_view word) {
        int error = yerror::kNone;
        const int index = heap.internOperand(word, error);
        if (error != yerror::kNone) return "error " + std::to_string(error);
        YScratch scratch;
        return std::string(heap.get(index).string(scratch));
    }
    /// The error of evaluating a word that compiles.
    int errorOf(std::string_view word) {
        int error = yerror::kNone;
        const YVariable& variable = heap.get(heap.internOperand(word, error));
        EXPECT_EQ(error, yerror::kNone) << word;
        if (!variable.expression()) return -1;
        YValue value;
        return variable.expression()->evaluate(heap, value);
    }
    std::string compiled(std::string_view word) {
        const auto form = YExpression::compile(heap, word);
        if (form.error != yerror::kNone) return "error " + std::to_string(form.error);
        std::string text = form.shape;
        for (const int leaf : form.leaves) text += " " + heap.get(leaf).text();
        return text;
    }

    YHeap heap;
};

TEST_F(YExpressions, CompileToShapesAndLeaves) {
    const std::pair<const char*, const char*> rows[] = {
        {"a=b+c", "s+ts=tt a b c"},    {"a+b*c", "s+s*ttt a b c"},
        {"(a+b)*c", "s*ts+tt a b c"},  {"-5", "s-tz 5"},
        {"~a+b", "s+ts~t a b"},        {"-~a", "s-s~tz a"},
        {"$a=b", "s=ts$t a b"},        {"\"a+b\"+'c(d'", "s+tt \"a+b\" 'c(d'"},
        {"(a+\")\")", "s+tt a \")\""}, {"a.(i+1)+2", "s+tt a.(i+1) 2"},
        {"s|(i+1)|2", "t s|(i+1)|2"},  {"a\\b%c@d!e", "s!ts@ts%ts\\tt a b c d e"},
    };
    for (const auto& [word, form] : rows) EXPECT_EQ(compiled(word), form) << word;
    for (const char* word : {"a)", "(a", "(a)b", "\"a", "a+'b"})
        EXPECT_EQ(compiled(word), "error 1") << word;
    for (const char* word : {"3--2", "a+", "a+-b", "~", "~~a", "a~b", "a*~b", "()", "a+()", "--"})
        EXPECT_EQ(compiled(word), "error 3") << word;
}

TEST_F(YExpressions, Evaluate) {
    set("name", "anna");
    set("zero", "0007");
    set("i", "2");
    set("item.2", "second");
    set("s", "abcdef");
    set("big", "2000000000");
    const std::string order = R"(
        2+3*4 : 14     10-4-3 : 3       2^3^2 : 64     (2+3)*4 : 20     1+2=3 : 1
        1=2+3 : 3      3<2+5 : 5        100/10/2 : 5   7-2<4+1 : 1)";
    const std::string numbers = R"(
        -5 : -5        7\2 : 3          -7\2 : -3      -7%2 : -1        7/2 : 3.5
        6/2 : 3        2/3*3 : 2        0.1+0.2 : 0.3  7.9\2.9 : 3      7.9%4 : 3
        (0-2)^3 : -8   0^0 : 1          (0-3)\2 : -1   (0-3)%2 : -1     9!3 : 0
        2^2000 : inf   zero+0 : 7       2^0.5 : 1.4142135623731         1/3 : 0.333333333333333
        big+1 : 2000000001              big*big*big : 8e+27)";
    const std::string comparisons = R"(
        1=1.0 : 1      1#2 : 1          2<10 : 1       2>10 : 0         "10"<"9" : 0
        "A"="a" : 0    ""="" : 1        "1"="1.0" : 1  "1x"="1.0" : 1   name="anna" : 1
        "a"=1 : 0      "ab"<"abc" : 1   unset="unset" : 1               "abc"<"abd" : 1)";
    const std::string texts = R"(
        name+1 : anna1 1+name : 1anna   "1"+"2" : 3    "b"@"abc" : 2    "x"@"abc" : 0
        ""@"abc" : 1   23@12345 : 2     ~12345 : 5     ~zero : 4        ~1/3 : 17
        ~12+1 : 3      ~"" : 0          "a"!"b" : 0    ~s|3 : 4         s|2|2+"x" : bcx
        "ab"+"cd" : abcd                item.(i)+"!" : second!)";
    const std::string refused = R"(
        name-1 : name-1                 name\2 : name\2                2/name : 2/name
        name%2 : name%2                 name^2 : name^2                5/0 : 5/0)";
    for (const auto& [word, value] : wordTable(order + numbers + comparisons + texts + refused))
        EXPECT_EQ(read(word), value) << word;
    EXPECT_EQ(read("\"\xE9\">\"z\""), "1");
}

TEST_F(YExpressions, DollarReadsWhatATextNames) {
    const auto texts = wordTable(R"(
        v : score        score : 12      w : score+1     i : 2         item.2 : two
        e : item.i       sel : score|2   lit : "quoted"  indirect : $v bad : 5/0
        broken : (a      none : EMPTY)");
    for (const auto& [name, text] : texts) set(name, text);
    const auto rows = wordTable(R"(
        $v+1 : 13        $w : 13         $e : two        $sel : 2      $lit : quoted
        $indirect : 12   $bad : 5/0      $none : EMPTY   $7 : 7        $broken : $broken
        $unknown : unknown               $("sc"+"ore") : 12)");
    for (const auto& [word, value] : rows) EXPECT_EQ(read(word), value) << word;
}

TEST_F(YExpressions, RunTimeErrorsHaveCodes) {
    const std::string longText(64, 'x');
    set("long", longText);
    set("less", longText.substr(1));
    set("text", "abc");
    const std::pair<const char*, int> rows[] = {
        {"long+long", yerror::kTooLong},    {"1\\0", yerror::kIntegerDivision},
        {"1%0", yerror::kIntegerDivision},  {"1\\0.9", yerror::kIntegerDivision},
        {"1/0.00009", yerror::kRealDomain}, {"1/0.0002", yerror::kNone},
        {"(0-2)^0.5", yerror::kRealDomain}, {"text*1", yerror::kNotANumber},
        {"text/0", yerror::kNotANumber},    {"1+(text*1)", yerror::kNotANumber},
    };
    for (const auto& [word, error] : rows) EXPECT_EQ(errorOf(word), error) << word;
    EXPECT_EQ(read("long+long"), "long+long");
    EXPECT_EQ(read("long+less").size(), 127U);
}

TEST_F(YExpressions, ObjectsCompareAsNothing) {
    OMScriptableObject a;
    OMScriptableObject b;
    heap.get(heap.intern("a")).setReference(&a);
    heap.get(heap.intern("b")).setReference(&b);
    for (const char* word : {"a=a", "a#b", "a+b", "a-b", "a@b", "a!b", "a<b", "a=\"x\""})
        EXPECT_EQ(read(word), "0") << word;
    EXPECT_EQ(read("~a+\"x\""), "1x");
    EXPECT_EQ(errorOf("a*2"), yerror::kNotANumber);
    heap.get(heap.intern("a")).makeEmpty();
    heap.get(heap.intern("b")).makeEmpty();
}

TEST_F(YExpressions, TooLargeWordsAreRefused) {
    const std::string parentheses = std::string(10000, '(') + "a" + std::string(10000, ')');
    std::string operands = "a";
    std::string elements = "a";
    for (int i = 0; i < 10000; ++i) operands += "+a";
    for (int i = 0; i < 999; ++i) elements += "+a";
    set("a", "1");
    EXPECT_EQ(read(parentheses), "error 8");
    EXPECT_EQ(read(operands), "error 8");
    EXPECT_EQ(read(elements), "1000");
    EXPECT_EQ(read(std::string(40, '(') + "a+1" + std::string(40, ')')), "2");
    EXPECT_EQ(read(std::string(10000, '(')), "error 1");
    EXPECT_EQ(read(std::string(10000, '-') + "a"), "error 3");
}

TEST_F(YExpressions, EndlessIndirectionsEnd) {
    for (const auto& [name, text] : wordTable("v : $v p : $q q : $p n : x+$n s : item.t t : $s"))
        set(name, text);
    EXPECT_EQ(read("$v"), "$v");
    EXPECT_EQ(read("$p").front(), '$');
    EXPECT_EQ(read("$n").front(), 'x');
    (void)read("$s"); // no crash
    (void)read("item.($s)+1");
}

} // namespace

// Words of scripts: numbers and their texts, expressions, names, and what names hold.
#include "omscrptb.h"
#include "wordtable.h"
#include "yexpression.h"
#include "yheap.h"
#include "ynumber.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

namespace {

using testing_support::repeat;
using testing_support::wordTable;
using Type = YVariable::Type;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Of every kind that scripts meet, and where rounding is decided.
double randomDouble(std::mt19937_64& random, int kind) {
    const auto real = [&](double from, double to) {
        return std::uniform_real_distribution<>(from, to)(random);
    };
    const auto digits = [&] { return static_cast<double>(random() % 800'000'000'000'000); };
    const auto below = [&](unsigned limit) { return static_cast<double>(random() % limit); };
    const auto any = std::bit_cast<double>(random());
    double power = std::pow(10.0, below(24) - 6);
    switch (kind) {
    case 0: return std::isfinite(any) ? any : 0;
    case 1: return std::exp(real(-12, 36));
    case 2: return digits() / std::pow(10.0, below(20)); // what texts hold
    case 3:
        for (auto steps = random() % 4; steps > 0; --steps)
            power = std::nextafter(power, random() % 2 ? 0 : 1e300);
        return power;
    case 4: return -(1e14 + digits() + 0.5) / std::pow(2.0, below(3)); // halfway
    default: return std::floor(real(-3e9, 3e9)) / 3;
    }
}

TEST(Numbers, HaveTheTextOfFifteenDigitsAndTheValueOfTheirText) {
    int scale = 0; // of whatever number was before
    const auto check = [&scale](double value) {
        char printed[64];
        char buffer[ynumber::kBufferSize];
        std::snprintf(printed, sizeof printed, "%.15g", value);
        ASSERT_EQ(ynumber::format(value, buffer), printed);
        ASSERT_EQ(ynumber::throughText(value), std::strtod(printed, nullptr)) << printed;
        ASSERT_EQ(ynumber::throughText(value, scale), ynumber::throughText(value));
    };
    std::mt19937_64 random{20240611};
    for (int i = 0; i < 60000; ++i) check(randomDouble(random, i % 6));
    for (const double edge : {1e-4, 1e15})
        for (const double near : {edge, std::nextafter(edge, 0), std::nextafter(edge, 2e15)})
            check(near);
    for (const double value :
         {0.0, 999999999999999.5, 99999999999999.95, 9.999999999999995, 0.9999999999999995, 5e-324,
          1e308, -kInfinity, 1.7976931348623157e308})
        check(value);
    EXPECT_TRUE(std::isnan(ynumber::throughText(std::nan(""))));
    char buffer[ynumber::kBufferSize];
    EXPECT_EQ(ynumber::format(std::int32_t{-2147483647 - 1}, buffer), "-2147483648");
}

TEST(Numbers, AreScannedAsFarAsTheyGo) {
    std::mt19937 random(7);
    const auto digits = [&](unsigned least) {
        std::string text;
        for (auto count = least + random() % 12; count > 0; --count)
            text += static_cast<char>('0' + random() % 10);
        return text;
    };
    for (int i = 0; i < 20000; ++i) {
        std::string text = random() % 3 == 0 ? "-" : "";
        text += digits(1);
        if (random() % 2) text += "." + digits(0);
        if (random() % 4 == 0) text += (random() % 2 ? "e-" : "e") + std::to_string(random() % 30);
        ASSERT_EQ(ynumber::scan(text), std::strtod(text.c_str(), nullptr)) << text;
    }
    for (const auto& [text, value] : wordTable(R"(
        EMPTY : 0 abc : 0 +5 : 5 007 : 7 3.25x : 3.25 .5 : 0.5 5. : 5 -.5 : -0.5 1E-2 : 0.01 1e : 1
        1e+ : 1 . : 0 - : 0 +-5 : 0 --5 : 0 inf : 0 nan : 0 -inf : 0 0x10 : 0 1,5 : 1 1e-400 : 0
        1e400 : inf)"))
        EXPECT_EQ(ynumber::scan(text), std::strtod(value.c_str(), nullptr)) << text;
    EXPECT_EQ(ynumber::scan(" \t12 13"), 12);
    EXPECT_EQ(ynumber::scan("-1" + std::string(400, '0')), -kInfinity);
    for (const auto& [text, value] : wordTable(R"(
        EMPTY : 0 -12 : -12 +12 : 12 12x : 12 1.9 : 1 1e3 : 1 - : 0 2147483647 : 2147483647
        2147483648 : 2147483647 -2147483648 : -2147483648 -99999999999999999999 : -2147483648)"))
        EXPECT_EQ(std::to_string(ynumber::scanInteger(text)), value) << text;
    EXPECT_EQ(ynumber::scanInteger(" 12"), 12);
}

TEST(Numbers, AreCutOrRoundedDown) {
    for (const auto& [value, truncated, rounded] : {std::tuple(2.5, 2, 2),
                                                    {2.6, 2, 3},
                                                    {-2.4, -2, -2},
                                                    {-2.5, -2, -3},
                                                    {std::nan(""), 0, 0},
                                                    {3e9, 2147483647, 2147483647},
                                                    {-3e9, -2147483647 - 1, -2147483647 - 1}}) {
        EXPECT_EQ(ynumber::truncate(value), truncated) << value;
        EXPECT_EQ(ynumber::roundTieDown(value), rounded) << value;
    }
}

class Words : public testing::Test {
  protected:
    YVariable& var(std::string_view text) { return heap.get(heap.intern(text)); }
    static std::string text(const YVariable& variable) {
        YScratch scratch;
        return std::string(variable.string(scratch));
    }
    void set(std::string_view name, std::string_view value) { var(name).setString(value); }
    void setAll(const char* table) {
        for (const auto& [name, value] : wordTable(table)) set(name, value);
    }
    /// What the word reads as; "error N" when it does not compile.
    std::string read(std::string_view word) {
        int error = yerror::kNone;
        const int index = heap.internOperand(word, error);
        return error ? "error" + std::to_string(error) : text(heap.get(index));
    }
    void expectAll(const char* table) {
        for (const auto& [word, value] : wordTable(table)) EXPECT_EQ(read(word), value) << word;
    }

    YHeap heap;
};

TEST_F(Words, ExpressionsAreComputed) {
    setAll(R"(name : anna zero : 0007 i : 2 item.2 : second s : abcdef big : 2000000000)");
    expectAll(R"x(
        2+3*4 : 14 10-4-3 : 3 2^3^2 : 64 (2+3)*4 : 20 1+2=3 : 1 1=2+3 : 3 3<2+5 : 5 100/10/2 : 5
        7-2<4+1 : 1 -5 : -5 -~"ab" : -2 7\2 : 3 -7\2 : -3 -7%2 : -1 7/2 : 3.5 6/2 : 3 2/3*3 : 2
        0.1+0.2 : 0.3 7.9\2.9 : 3 7.9%4 : 3 (0-2)^3 : -8 0^0 : 1 (0-3)\2 : -1 (0-3)%2 : -1 9!3 : 0
        2^2000 : inf zero+0 : 7 2^0.5 : 1.4142135623731 1/3 : 0.333333333333333
        big+1 : 2000000001 big*big*big : 8e+27

        1=1.0 : 1 1#2 : 1 2<10 : 1 2>10 : 0 "10"<"9" : 0 "A"="a" : 0 ""="" : 1 "1"="1.0" : 1
        "1x"="1.0" : 1 name="anna" : 1 "a"=1 : 0 "ab"<"abc" : 1 unset="unset" : 1
        "abc"<"abd" : 1 "abc">"abd" : 0 "a"#"b" : 1 "a"#"a" : 0

        name+1 : anna1 1+name : 1anna "1"+"2" : 3 "b"@"abc" : 2 "x"@"abc" : 0 ""@"abc" : 1
        23@12345 : 2 ~12345 : 5 ~zero : 4 ~1/3 : 17 ~12+1 : 3 ~"" : 0 "a"!"b" : 0 ~s|3 : 4
        s|2|2+"x" : bcx "ab"+"cd" : abcd "a+b"+'c(d' : a+bc(d ("a"+")") : a)
        item.(i)+"!" : second!  item.(i+0)+2 : second2

        name-1 : name-1 name\2 : name\2 2/name : 2/name name%2 : name%2 name^2 : name^2 5/0 : 5/0
        name*1 : name*1 1+(name*1) : 1+(name*1) 1\0 : 1\0 1%0 : 1%0 1\0.9 : 1\0.9 1/0.0002 : 5000
        1/0.00009 : 1/0.00009 (0-2)^0.5 : (0-2)^0.5

        a) : error1 (a : error1 (a)b : error1 "a : error1 a+'b : error1 3--2 : error3 a+ : error3
        a+-b : error3 ~ : ~ ~~a : error3 a~b : error3 a*~b : error3 () : error3 a+() : error3
        -- : error3)x");
    EXPECT_EQ(read("\"\xE9\">\"z\""), "1");
    set("long", std::string(64, 'x'));
    set("less", std::string(63, 'x'));
    EXPECT_EQ(read("long+long"), "long+long") << "128 characters";
    EXPECT_EQ(read("long+less").size(), 127U);
}

TEST_F(Words, ADollarReadsWhatATextNames) {
    setAll(R"(v : score score : 12 w : score+1 i : 2 item.2 : two e : item.i sel : score|2
        lit : "quoted" indirect : $v bad : 5/0 broken : (a none : EMPTY)");
    expectAll(R"($v+1 : 13 $w : 13 $e : two $sel : 2 $lit : quoted $indirect : 12 $bad : 5/0
        $none : EMPTY $7 : 7 $broken : $broken $unknown : unknown $("sc"+"ore") : 12
        $v=12 : 1 )");
    setAll("v : $v p : $q q : $p n : x+$n s : item.t t : $s"); // leads nowhere
    EXPECT_EQ(read("$v").front(), '$');
    EXPECT_EQ(read("$p").front(), '$');
    EXPECT_EQ(read("$n").front(), 'x');
    for (const char* word : {"$s", "item.($s)+1"}) (void)read(word); // no crash
}

TEST_F(Words, ObjectsCompareAsNothing) {
    OMScriptableObject a, b;
    var("a").setReference(&a);
    var("b").setReference(&b);
    expectAll(R"(a=a : 0 a#b : 0 a+b : 0 a-b : 0 a@b : 0 a!b : 0 a<b : 0 a="x" : 0 ~a+"x" : 1x
        a*2 : a*2)");
    for (const char* name : {"a", "b"}) var(name).makeEmpty();
}

TEST_F(Words, TooLargeOnesAreRefused) {
    const auto nested = [&](int depth) { return repeat(depth, "(") + "1+1" + repeat(depth, ")"); };
    for (const auto& [word, value] : {std::pair(nested(10000), "error8"),
                                      {"1" + repeat(1000, "+1"), "error8"},
                                      {"1" + repeat(999, "+1"), "1000"},
                                      {nested(40), "2"},
                                      {repeat(10000, "("), "error1"},
                                      {repeat(10000, "-") + "a", "error3"}})
        EXPECT_EQ(read(word), value) << word.size();
    for (const char* more : {"|1", ".a"}) (void)text(var("s" + repeat(20000, more))); // no crash
}

TEST_F(Words, TextsAreTypedByTheirFirstByteAndKept) {
    const std::pair<Type, const char*> rows[] = {
        {Type::String, "abc : 0 x5 : 0 EMPTY : 0"},
        {Type::Integer, "007 : 7 1e3 : 1000 +5 : 5 -x : 0 2000000000 : 2e9"},
        {Type::Real, "2.50 : 2.5 2000000001 : 2000000001 -2000000000 : -2e9 00000000005 : 5"},
    };
    YVariable& x = var("x");
    for (const auto& [type, texts] : rows)
        for (const auto& [written, number] : wordTable(texts)) {
            x.setString(written);
            EXPECT_EQ(x.type(), type) << written;
            EXPECT_EQ(x.number(), std::stod(number)) << written;
            EXPECT_EQ(text(x), written);
        }
    x.setReal(6.0);
    EXPECT_EQ(x.type(), Type::Integer);
    x.setReal(0.1 + 0.2);
    EXPECT_EQ(text(x), "0.3");
    EXPECT_EQ(x.number(), 0.3) << "what expressions compute with is what the text says";
    x.setNumberAsText(-999999999);
    EXPECT_EQ(x.type(), Type::Integer);
    x.setNumberAsText(-1000000000);
    EXPECT_EQ(x.type(), Type::Real) << "a text of eleven characters";
}

TEST_F(Words, PartsOfTextsAreSelected) {
    setAll("s : abcdef two : 2 neg : -3 half : 2.5 list.2 : second");
    expectAll(R"(
        s|2 : bcdef s|6 : f s|7 : EMPTY s|0 : abcdef s|neg : abcdef s| : abcdef s|2|3 : bcd
        s|5|9 : ef s|2|0 : EMPTY s|2|neg : EMPTY s|0|2 : ab s||2 : ef s||0 : EMPTY s||99 : abcdef
        s|| : EMPTY 1234|2 : 234 |2 : EMPTY s|half|1 : b unset|3 : set list.two|2 : econd
        s|two|(two*2) : bcde)");
    EXPECT_EQ(text(var("s|-3")), "abcdef") << "a name built at run time, not a word";
}

TEST_F(Words, FamilyNamesFollowTheirParts) {
    const auto written = [&](std::string_view i, std::string_view value) {
        set("i", i);
        var("item.i").resolve().setString(value);
    };
    written("2", "two");
    written("02", "another");
    var("i").setInteger(3);
    setAll("j : 5 grid.4.5 : there");
    expectAll("item.2 : two item.02 : another item.i : item.3 grid.(i+1).j : there a. : a.");
    written("j", "onwards"); // one family name leads to another
    setAll(R"(b : c c : b q : it"s)");
    expectAll(R"(item.5 : onwards a.q : a.it"s)"); // no word that could be compiled
    EXPECT_EQ(read("a.b").substr(0, 2), "a.") << "a.b is a.c is a.b";
    EXPECT_EQ(var("a.b").object(), nullptr);
    set("long", std::string(300, 'x'));
    EXPECT_EQ(read("a.long").size(), 255U) << "names end at the size of a computed text";
    for (int i = 0; i < 5000; ++i) {
        var("n").setInteger(i);
        var("item.n").resolve().setInteger(i);
    }
    var("n").setInteger(4500); // past the remembered ones
    for (const char* member :
         {"some.7", "some.3", "some.x", "somes.8", "some.1.9", "huge.99999999999"})
        var(member);
    for (const char* name : {"some", "huge"}) heap.appendElement(var(name), "new");
    expectAll("item.4999 : 4999 item.0 : 0 item.n : 4500 some.8 : new huge.2147483647 : new");
}

} // namespace

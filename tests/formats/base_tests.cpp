// Numbers out of bytes and words out of texts, however short they are.
#include "formats/base/bytes.h"
#include "formats/base/latin1.h"
#include "formats/base/scanner.h"

#include <gtest/gtest.h>

using formats::ByteReader;
using formats::TextScanner;

namespace {

TEST(ByteReader, FailsForGoodPastTheEnd) {
    const formats::Bytes bytes = formats::ByteWriter().u16(-0x7EFE).u16(-1).u32(-2).take();
    ByteReader reader(bytes);
    EXPECT_EQ(reader.u16(), 0x8102);
    EXPECT_EQ(reader.i16(), -1);
    EXPECT_EQ(reader.i32(), -2);
    EXPECT_EQ(reader.remaining(), 0U);
    reader.seek(bytes.size());
    EXPECT_TRUE(reader.ok());
    reader.seek(bytes.size() + 1);
    EXPECT_FALSE(reader.ok());
    reader.seek(0);
    EXPECT_EQ(reader.u8(), 0) << "for good";
    ByteReader half(bytes);
    half.skip(bytes.size() - 1);
    EXPECT_TRUE(half.ok() && half.u16() == 0 && !half.ok()) << "no half numbers";
    ByteReader huge(bytes);
    huge.skip(1);
    EXPECT_TRUE(huge.text(SIZE_MAX).empty() && !huge.ok());
}

TEST(TextScanner, ReadsLinesAndNumbersAsAuthorsWriteThem) {
    TextScanner scanner("one\rtwo\r\n\n \t \nfive is long\nsix");
    for (const char* line : {"one", "two", "five is "}) EXPECT_EQ(scanner.line(8), line);
    EXPECT_EQ(scanner.lineNumber(), 5);
    EXPECT_EQ(scanner.line(8), "six");
    EXPECT_TRUE(scanner.line(8).empty() && scanner.atEnd());
    const struct {
        std::string_view text;
        std::optional<int> number;
        std::string_view rest;
    } rows[] = {{"12 x", 12, "x"},
                {" \t-7x", -7, "x"},
                {"+5", 5, ""},
                {"+-5", {}, "+-5"},
                {"2147483647", 2147483647, ""},
                {"x1", {}, "x1"},
                {"+", {}, "+"},
                {"2147483648 y", {}, "y"}};
    for (const auto& [text, number, rest] : rows) {
        TextScanner words(text);
        EXPECT_EQ(words.number(), number) << text;
        EXPECT_EQ(words.word(), rest) << text;
    }
    TextScanner literals("  AO:5 Sound");
    EXPECT_FALSE(literals.literal("ao:"));
    EXPECT_TRUE(literals.literal("AO:") && literals.number() == 5 && !literals.literal("Sounds"));
    EXPECT_EQ(literals.word(), "Sound");
}

TEST(Latin1, IgnoresTheCaseOfLetters) {
    using namespace formats;
    EXPECT_TRUE(equalIgnoringCase("SOM\xC7O.RSC", "som\xE7o.rsc"));
    EXPECT_FALSE(equalIgnoringCase("som\xD7.rsc", "som\xF7.rsc")) << "no letters";
    EXPECT_FALSE(equalIgnoringCase("a", "ab"));
    EXPECT_EQ(lowerLatin1("A[Z\xC0\xDF"), "a[z\xE0\xDF");
    EXPECT_EQ(lowerAscii("A[Z\xC0") + upperAscii("\xE0z{a"), "a[z\xC0\xE0Z{A");
}

} // namespace

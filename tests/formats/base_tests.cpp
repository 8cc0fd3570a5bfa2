// Numbers out of bytes and words out of texts, however short they are.
#include "formats/base/bytes.h"
#include "formats/base/latin1.h"
#include "formats/base/scanner.h"

#include <gtest/gtest.h>

using formats::ByteReader;
using formats::TextScanner;

namespace {

TEST(ByteReader, ReadsLittleEndianNumbersAndFailsForGoodPastTheEnd) {
    const formats::Bytes bytes =
        formats::ByteWriter().u8(0x81).u16(-0x7EFE).u16(-1).u32(0x92345678).u32(-2).take();
    ByteReader reader(bytes);
    EXPECT_EQ(reader.u8(), 0x81);
    EXPECT_EQ(reader.u16(), 0x8102);
    EXPECT_EQ(reader.i16(), -1);
    EXPECT_EQ(reader.u32(), 0x92345678U);
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
    EXPECT_EQ(half.u16(), 0) << "no half numbers";
    EXPECT_FALSE(half.ok());
    ByteReader huge(bytes);
    huge.skip(1);
    EXPECT_EQ(huge.text(SIZE_MAX), "");
    EXPECT_FALSE(huge.ok());
}

TEST(TextScanner, SplitsLinesHoweverTheyEnd) {
    TextScanner scanner("one\rtwo\r\n\n \t \nfive is long\nsix");
    EXPECT_EQ(scanner.line(8), "one");
    EXPECT_EQ(scanner.line(8), "two");
    EXPECT_EQ(scanner.line(8), "five is ");
    EXPECT_EQ(scanner.lineNumber(), 5);
    EXPECT_EQ(scanner.line(8), "six");
    EXPECT_EQ(scanner.line(8), "");
    EXPECT_TRUE(scanner.atEnd());
}

TEST(TextScanner, ReadsNumbersAsAuthorsWriteThem) {
    struct Row {
        std::string_view text;
        std::optional<int> number;
        std::string_view rest;
    };
    const Row rows[] = {
        {"12 x", 12, "x"},
        {" \t-7x", -7, "x"},
        {"+5", 5, ""},
        {"+-5", std::nullopt, "+-5"},
        {"x1", std::nullopt, "x1"},
        {"2147483647", 2147483647, ""},
        {"2147483648 y", std::nullopt, "y"},
    };
    for (const Row& row : rows) {
        TextScanner scanner(row.text);
        EXPECT_EQ(scanner.number(), row.number) << row.text;
        EXPECT_EQ(scanner.word(), row.rest) << row.text;
    }
    TextScanner literals("  AO:5 Sound");
    EXPECT_FALSE(literals.literal("ao:"));
    EXPECT_TRUE(literals.literal("AO:"));
    EXPECT_EQ(literals.number(), 5);
    EXPECT_FALSE(literals.literal("Sounds"));
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

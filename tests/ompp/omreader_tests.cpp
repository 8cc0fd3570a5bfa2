// Numbers out of bytes and words out of texts, however short they are.
#include "memoryfiles.h"

#include "omreader.h"

#include <gtest/gtest.h>

using testing_support::Bytes;
using testing_support::toBytes;

namespace {

TEST(OMReader, ReadsLittleEndianNumbersAndFailsForGoodPastTheEnd) {
    const Bytes bytes = toBytes("\x81\x02\x81\xFF\xFF\x78\x56\x34\x92\xFE\xFF\xFF\xFF");
    OMReader reader(bytes);
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

    OMReader half(bytes);
    half.skip(bytes.size() - 1);
    EXPECT_EQ(half.u16(), 0) << "no half numbers";
    EXPECT_FALSE(half.ok());
    OMReader huge(bytes);
    huge.skip(1);
    EXPECT_EQ(huge.text(SIZE_MAX), "");
    EXPECT_FALSE(huge.ok());
}

TEST(OMScanner, SplitsLinesHoweverTheyEnd) {
    OMScanner scanner("one\rtwo\r\n\n \t \nfive is long\nsix");
    EXPECT_EQ(scanner.line(8), "one");
    EXPECT_EQ(scanner.line(8), "two");
    EXPECT_EQ(scanner.line(8), "five is ");
    EXPECT_EQ(scanner.lineNumber(), 5);
    EXPECT_EQ(scanner.line(8), "six");
    EXPECT_EQ(scanner.line(8), "");
    EXPECT_TRUE(scanner.atEnd());
}

TEST(OMScanner, ReadsNumbersAsAuthorsWriteThem) {
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
        OMScanner scanner(row.text);
        EXPECT_EQ(scanner.number(), row.number) << row.text;
        EXPECT_EQ(scanner.word(), row.rest) << row.text;
    }
    OMScanner literals("  AO:5 Sound");
    EXPECT_FALSE(literals.literal("ao:"));
    EXPECT_TRUE(literals.literal("AO:"));
    EXPECT_EQ(literals.number(), 5);
    EXPECT_FALSE(literals.literal("Sounds"));
    EXPECT_EQ(literals.word(), "Sound");
}

} // namespace

#include "ynumber.h"

#include "wordtable.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

namespace {

std::string printed(double value) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.15g", value);
    return buffer;
}

/// Doubles of every kind that scripts meet, and the places where rounding is decided.
class Doubles {
  public:
    double next() {
        switch (count_++ % 6) {
        case 0: return any();
        case 1: return std::exp(std::uniform_real_distribution<>(-12, 36)(random_));
        case 2: return decimal();
        case 3: return nearPowerOfTen();
        case 4: return -tie();
        default: return std::floor(std::uniform_real_distribution<>(-3e9, 3e9)(random_)) / 3;
        }
    }

  private:
    double any() {
        for (;;) {
            const double value = std::bit_cast<double>(random_());
            if (std::isfinite(value)) return value;
        }
    }
    double decimal() { // what texts hold
        const auto digits = static_cast<double>(random_() % 1'000'000'000'000'000);
        return digits / std::pow(10.0, static_cast<double>(random_() % 20));
    }
    double nearPowerOfTen() {
        double value = std::pow(10.0, static_cast<double>(random_() % 24) - 6);
        for (auto steps = random_() % 4; steps > 0; --steps)
            value = std::nextafter(value, random_() % 2 ? 0 : 1e300);
        return value;
    }
    /// Halfway between two numbers of fifteen digits, exactly where a double can be.
    double tie() {
        const auto digits =
            static_cast<double>(100'000'000'000'000 + random_() % 800'000'000'000'000);
        return (digits + 0.5) / std::pow(2.0, static_cast<double>(random_() % 3));
    }

    std::mt19937_64 random_{20240611};
    unsigned count_ = 0;
};

TEST(YNumber, FormatsAsPrintf) {
    Doubles doubles;
    char buffer[ynumber::kBufferSize];
    for (int i = 0; i < 20000; ++i) {
        const double value = doubles.next();
        ASSERT_EQ(ynumber::format(value, buffer), printed(value));
    }
    EXPECT_EQ(ynumber::format(std::int32_t{-2147483647 - 1}, buffer), "-2147483648");
}

// The arithmetic short cut must lose exactly what writing and reading a number loses.
TEST(YNumber, ThroughTextIsWritingAndReading) {
    Doubles doubles;
    for (int i = 0; i < 60000; ++i) {
        const double value = doubles.next();
        ASSERT_EQ(ynumber::throughText(value), std::strtod(printed(value).c_str(), nullptr))
            << std::hexfloat << value;
    }
    constexpr double kLeast = 1e-4; // without an exponent
    constexpr double kMost = 1e15;
    const double edges[] = {0.0,
                            kLeast,
                            std::nextafter(kLeast, 0),
                            kMost,
                            std::nextafter(kMost, 0),
                            std::nextafter(kMost, 2 * kMost),
                            999999999999999.5,
                            99999999999999.95,
                            9.999999999999995,
                            0.9999999999999995,
                            5e-324,
                            1e308};
    for (const double value : edges)
        EXPECT_EQ(ynumber::throughText(value), std::strtod(printed(value).c_str(), nullptr))
            << std::hexfloat << value;
    EXPECT_EQ(ynumber::throughText(std::numeric_limits<double>::max()),
              std::numeric_limits<double>::infinity())
        << "fifteen digits round it up";
    EXPECT_EQ(ynumber::throughText(-std::numeric_limits<double>::infinity()),
              -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(ynumber::throughText(std::nan(""))));
}

TEST(YNumber, ScansDecimalTexts) {
    const std::pair<const char*, double> rows[] = {
        {"", 0},         {"abc", 0},  {"+5", 5},   {"007", 7},    {" \t12", 12},  {"12 13", 12},
        {"3.25x", 3.25}, {".5", 0.5}, {"5.", 5},   {"-.5", -0.5}, {"1E-2", 0.01}, {"1e", 1},
        {"1e+", 1},      {".", 0},    {"-", 0},    {"+-5", 0},    {"--5", 0},     {"inf", 0},
        {"nan", 0},      {"-inf", 0}, {"0x10", 0}, {"1,5", 1},    {"1e-400", 0},
    };
    for (const auto& [text, value] : rows) EXPECT_EQ(ynumber::scan(text), value) << text;
    const std::string zeros(400, '0');
    EXPECT_EQ(ynumber::scan("00." + zeros + "1"), 0);
    EXPECT_EQ(ynumber::scan("-1" + zeros), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(ynumber::scan("1e400"), std::numeric_limits<double>::infinity());
}

TEST(YNumber, ScansWhatStrtodScans) {
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
}

TEST(YNumber, ScansIntegersByTheirLeadingDigits) {
    const auto rows = testing_support::wordTable(R"(
        EMPTY : 0     -12 : -12     +12 : 12     12x : 12     1.9 : 1     1e3 : 1     - : 0
        2147483647 : 2147483647                  2147483648 : 2147483647
        -2147483648 : -2147483648                -99999999999999999999 : -2147483648)");
    for (const auto& [text, value] : rows)
        EXPECT_EQ(std::to_string(ynumber::scanInteger(text)), value) << text;
    EXPECT_EQ(ynumber::scanInteger(" 12"), 12);
}

TEST(YNumber, RoundsAndTruncates) {
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
    const struct {
        double value;
        std::int32_t truncated;
        std::int32_t rounded; ///< ties go down
    } rows[] = {
        {2.4, 2, 2},          {2.5, 2, 2},    {2.6, 2, 3},         {-2.4, -2, -2},
        {-2.5, -2, -3},       {-2.6, -2, -3}, {3e9, kMost, kMost}, {-3e9, kLeast, kLeast},
        {std::nan(""), 0, 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ynumber::truncate(row.value), row.truncated) << row.value;
        EXPECT_EQ(ynumber::roundTieDown(row.value), row.rounded) << row.value;
    }
}

} // namespace

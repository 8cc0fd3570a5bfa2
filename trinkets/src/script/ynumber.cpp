#include "ynumber.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>

namespace ynumber {

namespace {

constexpr int kDigits = 15; ///< significant digits of "%.15g"
/// All of them are exact.
constexpr std::array<double, 20> kPowersOfTen = [] {
    std::array<double, 20> powers{};
    double power = 1;
    for (auto& entry : powers) {
        entry = power;
        power *= 10;
    }
    return powers;
}();

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view withoutBlanks(std::string_view text) {
    while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
    return text;
}

/// from_chars with a sign and without the words for infinity and the like.
double scanDecimal(std::string_view text) {
    bool negative = false;
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    if (text.empty() || !(isDigit(text.front()) || text.front() == '.')) return 0.0;
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::result_out_of_range) {
        // Too large, unless the exponent or the zeros in front say that it is too small.
        const std::string_view read(text.data(), static_cast<std::size_t>(end - text.data()));
        const auto exponent = read.find_first_of("eE");
        const auto significant = read.find_first_not_of('0');
        const bool tiny = exponent != std::string_view::npos ? read[exponent + 1] == '-'
                                                             : read[significant] == '.';
        value = tiny ? 0.0 : std::numeric_limits<double>::infinity();
    } else if (error != std::errc()) {
        return 0.0;
    }
    return negative ? -value : value;
}

double throughPrintedText(double value) {
    if (!std::isfinite(value)) return value;
    char buffer[kBufferSize];
    return scanDecimal(format(value, buffer));
}

} // namespace

double scan(std::string_view text) {
    text = withoutBlanks(text);
    // Most texts are short whole numbers.
    if (text.size() <= 9) {
        std::int32_t value = 0;
        std::size_t i = 0;
        const bool negative = !text.empty() && text[0] == '-';
        if (negative) i = 1;
        const std::size_t first = i;
        for (; i < text.size() && isDigit(text[i]); ++i) value = value * 10 + (text[i] - '0');
        if (i == text.size() && i > first) return negative ? -double(value) : double(value);
    }
    return scanDecimal(text);
}

std::int32_t scanInteger(std::string_view text) {
    text = withoutBlanks(text);
    bool negative = false;
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    constexpr std::int64_t kTooLarge = std::int64_t{1} << 32;
    std::int64_t value = 0;
    for (const char c : text) {
        if (!isDigit(c)) break;
        if (value < kTooLarge) value = value * 10 + (c - '0');
    }
    return truncate(static_cast<double>(negative ? -value : value));
}

std::string_view format(std::int32_t value, char* buffer) {
    const auto result = std::to_chars(buffer, buffer + kBufferSize, value);
    return {buffer, static_cast<std::size_t>(result.ptr - buffer)};
}

std::string_view format(double value, char* buffer) {
    const auto result =
        std::to_chars(buffer, buffer + kBufferSize, value, std::chars_format::general, kDigits);
    return {buffer, static_cast<std::size_t>(result.ptr - buffer)};
}

double throughText(double value) {
    int scale = 0;
    return throughText(value, scale);
}

// Rounds to fifteen digits without writing them out: the value times a power of ten that leaves
// fifteen digits before the point is rounded to a whole number. That number and the power are exact
// as doubles, so one division gives the nearest double again. The product is rounded itself, to a
// multiple of 1/8 or less: only where it ends in a half does it matter what was lost.
double throughText(double value, int& scale) {
    constexpr double kLargest = 1e15; // whole numbers below have at most fifteen digits
    constexpr double kLeast = 1e14;   // and these as many
    constexpr double kSmallest = 1e-4;
    constexpr double kToWhole = 6755399441055744; // 1.5 * 2^52: adding it leaves no fraction
    double power = kPowersOfTen[static_cast<std::size_t>(scale)];
    double product = value * power;
    if (double size = std::fabs(product); !(size >= kLeast && size < kLargest)) [[unlikely]] {
        size = std::fabs(value);
        if (!(size >= kSmallest && size < kLargest))
            return value == 0 ? value : throughPrintedText(value);
        // An estimate of the decimal exponent that is never too large and at most one too small.
        const int binary = static_cast<int>(std::bit_cast<std::uint64_t>(size) >> 52) - 1023;
        scale = kDigits - 1 - ((binary * 1233) >> 12);
        if (size * kPowersOfTen[static_cast<std::size_t>(scale)] >= kLargest) --scale;
        power = kPowersOfTen[static_cast<std::size_t>(scale)];
        product = value * power;
    }
    double digits = (product + kToWhole) - kToWhole; // to the nearest, half to even
    if (std::fabs(product - digits) == 0.5) [[unlikely]] {
        const double lost = std::fma(value, power, -product);
        if (lost != 0) digits = lost > 0 ? product + 0.5 : product - 0.5;
    }
    return digits / power;
}

std::int32_t truncate(double value) {
    constexpr double kMin = std::numeric_limits<std::int32_t>::min();
    constexpr double kMax = std::numeric_limits<std::int32_t>::max();
    if (std::isnan(value)) return 0;
    if (value <= kMin) return std::numeric_limits<std::int32_t>::min();
    if (value >= kMax) return std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(value);
}

std::int32_t roundTieDown(double value) {
    const double lower = std::floor(value);
    return truncate(value - lower > 0.5 ? lower + 1 : lower);
}

} // namespace ynumber

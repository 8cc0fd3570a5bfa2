#include "ynumber.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>

namespace ynumber {

namespace {

constexpr int kDigits = 15; ///< significant digits of "%.15g"
constexpr std::array<std::uint64_t, 20> kPowersOfTen = [] {
    std::array<std::uint64_t, 20> powers{};
    std::uint64_t power = 1;
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

// Rounds to fifteen digits without writing them out: the value times a power of ten that leaves
// fifteen digits before the point is computed exactly in 128 bits and rounded to even; both that
// integer and the power are exact as doubles, so one division gives the nearest double again.
double throughText(double value) {
    constexpr double kLargest = 1e15; // whole numbers below have at most fifteen digits
    constexpr double kSmallest = 1e-4;
    const double size = std::fabs(value);
    if (!(size >= kSmallest && size < kLargest))
        return value == 0 ? value : throughPrintedText(value);
    if (value == static_cast<double>(static_cast<std::int64_t>(value))) return value;

    const auto bits = std::bit_cast<std::uint64_t>(size);
    const int exponent = static_cast<int>(bits >> 52) - 1075; // size = mantissa * 2^exponent
    const std::uint64_t mantissa =
        (bits & ((std::uint64_t{1} << 52) - 1)) | (std::uint64_t{1} << 52);
    const int shift = -exponent; // 3 to 66 here

    // An estimate of the decimal exponent that is never too large and at most one too small.
    int decimal = ((exponent + 52) * 1233) >> 12;
    __extension__ using Wide = unsigned __int128;
    for (int power = kDigits - 1 - decimal; power >= 0; --power) {
        const Wide product = Wide{mantissa} * kPowersOfTen[static_cast<std::size_t>(power)];
        auto digits = static_cast<std::uint64_t>(product >> shift);
        if (digits >= kPowersOfTen[kDigits]) continue; // one digit too many
        const Wide rest = product & ((Wide{1} << shift) - 1);
        const Wide half = Wide{1} << (shift - 1);
        if (rest > half || (rest == half && (digits & 1))) ++digits;
        const double rounded = static_cast<double>(digits) /
                               static_cast<double>(kPowersOfTen[static_cast<std::size_t>(power)]);
        return value < 0 ? -rounded : rounded;
    }
    return throughPrintedText(value);
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

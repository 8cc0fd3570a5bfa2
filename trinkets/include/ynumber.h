// Numbers of the script language: how a text becomes a number and a number a text. Everything that
// crosses between the two goes through here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ynumber {

/// Whole values from -kIntegerLimit to kIntegerLimit are kept as integers.
inline constexpr double kIntegerLimit = 2e9;
/// Texts of this many bytes and more stay real numbers whatever their value.
inline constexpr std::size_t kRealTextLength = 11;
/// Room that `format` needs.
inline constexpr std::size_t kBufferSize = 32;

/// Whether a text is taken for a number: it starts with a digit, ".", "-" or "+".
[[nodiscard]] inline bool looksNumeric(char first) {
    return (first >= '0' && first <= '9') || first == '.' || first == '-' || first == '+';
}
[[nodiscard]] inline bool looksNumeric(std::string_view text) {
    return !text.empty() && looksNumeric(text.front());
}

/// The decimal number that `text` starts with, after blanks: sign, digits, fraction, exponent. 0
/// when there is none.
[[nodiscard]] double scan(std::string_view text);

/// Sign and leading decimal digits after blanks; 0 without digits. Stops at the ends of int32.
[[nodiscard]] std::int32_t scanInteger(std::string_view text);

/// "%ld" and "%.15g" into `buffer` of kBufferSize bytes; the result lies in it.
[[nodiscard]] std::string_view format(std::int32_t value, char* buffer);
[[nodiscard]] std::string_view format(double value, char* buffer);

/// What is left of a real that is written with "%.15g" and read again.
[[nodiscard]] double throughText(double value);
/// The same, quicker for numbers of about the same size one after the other. `scale` is kept
/// between them, 0 at first: the power of ten by which the last one had fifteen digits before its
/// point.
[[nodiscard]] double throughText(double value, int& scale);

/// Whether a whole number of this value is kept as an integer when its text is `textLength` bytes
/// long (0 for a freshly computed one).
[[nodiscard]] inline bool isIntegral(double value, std::size_t textLength) {
    return textLength < kRealTextLength && value >= -kIntegerLimit && value <= kIntegerLimit &&
           value == static_cast<double>(static_cast<std::int32_t>(value));
}

/// Integers whose text has fewer than kRealTextLength bytes.
[[nodiscard]] inline bool hasShortText(std::int32_t value) { return value > -1000000000; }

/// Towards zero; values outside int32 stop at its ends, no number gives 0.
[[nodiscard]] std::int32_t truncate(double value);

/// To the nearer whole number, a tie to the lower one; limits as for `truncate`.
[[nodiscard]] std::int32_t roundTieDown(double value);

} // namespace ynumber

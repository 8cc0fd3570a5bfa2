// The border between the program's texts, which are Latin-1 bytes, and the host's, which are UTF-8;
// and the comparison of names without regard to letter case.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

[[nodiscard]] std::string utf8FromLatin1(std::string_view latin1);

/// The characters of a UTF-8 text; none when it is not well-formed UTF-8.
[[nodiscard]] std::optional<std::u32string> decodeUtf8(std::string_view utf8);

/// None when a character lies beyond 0xFF.
[[nodiscard]] std::optional<std::string> latin1FromCharacters(std::u32string_view characters);

/// None when the text is not UTF-8 or has characters that Latin-1 lacks.
[[nodiscard]] std::optional<std::string> latin1FromUtf8(std::string_view utf8);

/// The capital of a Latin-1 letter; every other byte as it is (also 0xDF and 0xFF, whose capitals
/// lie outside of Latin-1).
[[nodiscard]] unsigned char upperLatin1(char byte);

[[nodiscard]] bool equalIgnoringCase(std::string_view a, std::string_view b);

/// Order of names without regard to case; names that differ in case only are ordered by their
/// bytes.
[[nodiscard]] bool lessIgnoringCase(std::string_view a, std::string_view b);

} // namespace platform

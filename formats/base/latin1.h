// The border between the program's texts, which are Latin-1 bytes, and the host's, which are UTF-8;
// and the comparison of names without regard to letter case.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace formats {

[[nodiscard]] std::string utf8FromLatin1(std::string_view latin1);

/// The characters of a UTF-8 text; none when it is not well-formed UTF-8.
[[nodiscard]] std::optional<std::u32string> decodeUtf8(std::string_view utf8);

/// None when a character lies beyond 0xFF.
[[nodiscard]] std::optional<std::string> latin1FromCharacters(std::u32string_view characters);

/// None when the text is not UTF-8 or has characters that Latin-1 lacks.
[[nodiscard]] std::optional<std::string> latin1FromUtf8(std::string_view utf8);

/// The text of an author's file as UTF-8, without the mark in front; what is none is Latin-1.
[[nodiscard]] std::string utf8FromAuthor(std::string text);

/// A letter that Latin-1 lacks, and the line, from 1, that it stands in.
struct LackedLetter {
    int line;
    std::string utf8;
};

/// What the text of an author's file means in Latin-1: one that has the mark of UTF-8 in front, or
/// is UTF-8 beyond ASCII, means its letters; any other text is Latin-1 as it is. A letter that
/// Latin-1 lacks becomes "?" and is added to `lacked`.
[[nodiscard]] std::string latin1FromAuthor(std::string text, std::vector<LackedLetter>& lacked);

/// The capital of a letter; every other byte as it is, also the two small letters whose capitals
/// lie beyond Latin-1.
[[nodiscard]] constexpr char upperLatin1(char c) {
    const auto code = static_cast<unsigned char>(c);
    const bool small = (code >= 'a' && code <= 'z') || (code >= 0xE0 && code <= 0xFE);
    return small && code != 0xF7 ? static_cast<char>(code - 0x20) : c;
}

[[nodiscard]] constexpr char lowerLatin1(char c) {
    const auto code = static_cast<unsigned char>(c);
    const bool capital = (code >= 'A' && code <= 'Z') || (code >= 0xC0 && code <= 0xDE);
    return capital && code != 0xD7 ? static_cast<char>(code + 0x20) : c;
}

[[nodiscard]] std::string lowerLatin1(std::string_view text);
/// Only A to Z and a to z change: for texts that may be UTF-8.
[[nodiscard]] std::string lowerAscii(std::string_view text);
[[nodiscard]] std::string upperAscii(std::string_view text);
[[nodiscard]] constexpr bool isAsciiLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// Of Latin-1, as all names of files are.
[[nodiscard]] bool equalIgnoringCase(std::string_view a, std::string_view b);

/// Order of names without regard to case; names that differ in case only are ordered by their
/// bytes.
[[nodiscard]] bool lessIgnoringCase(std::string_view a, std::string_view b);

} // namespace formats

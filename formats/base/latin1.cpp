#include "formats/base/latin1.h"

#include <algorithm>
#include <compare>
#include <cstddef>
#include <utility>

namespace formats {

namespace {

unsigned char byteOf(char c) { return static_cast<unsigned char>(c); }

struct Decoded {
    char32_t character;
    std::size_t length; ///< bytes, 0 when they are not well-formed
};

/// The length that a lead byte announces and the least character that needs it; 0 for other bytes.
struct Lead {
    std::size_t length;
    char32_t least;
};

Lead leadOf(unsigned char byte) {
    if (byte < 0x80) return {1, 0};
    if (byte >= 0xC2 && byte < 0xE0) return {2, 0x80};
    if (byte >= 0xE0 && byte < 0xF0) return {3, 0x800};
    if (byte >= 0xF0 && byte < 0xF5) return {4, 0x10000};
    return {0, 0};
}

Decoded decodeFirst(std::string_view text) {
    const auto [length, least] = leadOf(byteOf(text[0]));
    if (length == 0 || length > text.size()) return {0, 0};
    if (length == 1) return {byteOf(text[0]), 1};
    char32_t character = byteOf(text[0]) & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteOf(text[i]) & 0xC0) != 0x80) return {0, 0};
        character = (character << 6) | (byteOf(text[i]) & 0x3Fu);
    }
    const bool surrogate = character >= 0xD800 && character < 0xE000;
    if (character < least || character > 0x10FFFF || surrogate) return {0, 0};
    return {character, length};
}

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = decodeFirst(text).length;
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

void dropMark(std::string& text) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    if (text.starts_with(kMark)) text.erase(0, kMark.size());
}

template <class Letter>
std::string eachOf(std::string_view text, Letter letter) {
    std::string changed(text);
    std::ranges::transform(changed, changed.begin(), letter);
    return changed;
}

} // namespace

std::string utf8FromLatin1(std::string_view latin1) {
    std::string utf8;
    utf8.reserve(latin1.size());
    for (const char c : latin1) {
        if (byteOf(c) < 0x80) {
            utf8 += c;
        } else {
            utf8 += static_cast<char>(0xC0 | (byteOf(c) >> 6));
            utf8 += static_cast<char>(0x80 | (byteOf(c) & 0x3F));
        }
    }
    return utf8;
}

std::optional<std::u32string> decodeUtf8(std::string_view utf8) {
    std::u32string characters;
    while (!utf8.empty()) {
        const auto [character, length] = decodeFirst(utf8);
        if (length == 0) return std::nullopt;
        characters += character;
        utf8.remove_prefix(length);
    }
    return characters;
}

std::optional<std::string> latin1FromCharacters(std::u32string_view characters) {
    std::string latin1;
    for (const char32_t character : characters) {
        if (character > 0xFF) return std::nullopt;
        latin1 += static_cast<char>(character);
    }
    return latin1;
}

std::optional<std::string> latin1FromUtf8(std::string_view utf8) {
    const auto characters = decodeUtf8(utf8);
    return characters ? latin1FromCharacters(*characters) : std::nullopt;
}

std::string utf8FromAuthor(std::string text) {
    dropMark(text);
    return isUtf8(text) ? std::move(text) : utf8FromLatin1(text);
}

std::string latin1FromAuthor(std::string text, std::vector<LackedLetter>& lacked) {
    dropMark(text);
    if (std::ranges::all_of(text, [](char c) { return byteOf(c) < 0x80; }) || !isUtf8(text))
        return text;
    std::string latin1;
    int line = 1;
    for (std::string_view rest = text; !rest.empty();) {
        const auto [character, length] = decodeFirst(rest);
        if (character > 0xFF) lacked.push_back({line, std::string(rest.substr(0, length))});
        latin1 += character > 0xFF ? '?' : static_cast<char>(character);
        rest.remove_prefix(length);
        if (character == '\n' || (character == '\r' && !rest.starts_with('\n'))) ++line;
    }
    return latin1;
}

std::string lowerLatin1(std::string_view text) {
    return eachOf(text, [](char c) { return lowerLatin1(c); });
}

std::string lowerAscii(std::string_view text) {
    return eachOf(text, [](char c) { return isAsciiLetter(c) ? lowerLatin1(c) : c; });
}

std::string upperAscii(std::string_view text) {
    return eachOf(text, [](char c) { return isAsciiLetter(c) ? upperLatin1(c) : c; });
}

bool equalIgnoringCase(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, upperLatin1, upperLatin1);
}

bool lessIgnoringCase(std::string_view a, std::string_view b) {
    const auto order = [](char left, char right) {
        return byteOf(upperLatin1(left)) <=> byteOf(upperLatin1(right));
    };
    const auto folded =
        std::lexicographical_compare_three_way(a.begin(), a.end(), b.begin(), b.end(), order);
    return folded != 0 ? folded < 0 : a < b;
}

} // namespace formats

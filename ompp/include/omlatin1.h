// Letters of Latin-1.
#pragma once

/// Every other character as it is, also the two small letters whose capitals lie beyond Latin-1.
[[nodiscard]] constexpr char OMUpperLatin1(char c) {
    const auto code = static_cast<unsigned char>(c);
    const bool small = (code >= 'a' && code <= 'z') || (code >= 0xE0 && code <= 0xFE);
    return small && code != 0xF7 ? static_cast<char>(code - 0x20) : c;
}

[[nodiscard]] constexpr char OMLowerLatin1(char c) {
    const auto code = static_cast<unsigned char>(c);
    const bool capital = (code >= 'A' && code <= 'Z') || (code >= 0xC0 && code <= 0xDE);
    return capital && code != 0xD7 ? static_cast<char>(code + 0x20) : c;
}

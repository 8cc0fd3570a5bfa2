// Bitmap font resources for tests, put together word by word.
#pragma once

#include "bytewriter.h"
#include "memoryfiles.h"

#include <map>
#include <string>
#include <vector>

namespace testing_support {

/// "#" is ink. All characters of a font have as many rows.
struct NFNTCharacter {
    std::vector<std::string> rows; ///< empty: no picture
    int offset = 0;
    int advance = 0;
};

struct NFNTFont {
    int firstChar = 0;
    int lastChar = 127;
    int kern = 0;
    int ascent = 0;
    int descent = 0;
    int leading = 0;
    bool bigEndian = false;
    std::map<int, NFNTCharacter> characters; ///< by their codes; others are missing

    [[nodiscard]] Bytes bytes() const {
        const int entries = lastChar - firstChar + 3;
        const int height = ascent + descent;
        std::vector<std::string> strike(static_cast<std::size_t>(height));
        std::vector<int> locations;
        for (int code = 0; code < entries; ++code) {
            locations.push_back(static_cast<int>(strike.front().size()));
            const auto found = characters.find(code);
            if (found == characters.end() || found->second.rows.empty()) continue;
            for (std::size_t y = 0; y < strike.size(); ++y) strike[y] += found->second.rows[y];
        }
        const int words = (static_cast<int>(strike.front().size()) + 15) / 16;
        ByteWriter out(bigEndian);
        out.u16(0x9000);
        const int offsets = 26 + height * words * 2 + entries * 2;
        for (const int value : {firstChar, lastChar, 0, kern, -descent, 0, height,
                                (offsets - 16) / 2, ascent, descent, leading, words})
            out.u16(value);
        for (std::string& row : strike) {
            row.resize(static_cast<std::size_t>(words * 16), '.');
            for (std::size_t at = 0; at < row.size(); at += 8) {
                int bits = 0;
                for (std::size_t bit = at; bit < at + 8; ++bit) bits = bits * 2 + (row[bit] == '#');
                out.u8(bits);
            }
        }
        for (const int location : locations) out.u16(location);
        for (int code = 0; code < entries; ++code) {
            const auto found = characters.find(code);
            out.u8(found == characters.end() ? 0xFF : found->second.offset);
            out.u8(found == characters.end() ? 0xFF : found->second.advance);
        }
        return out.bytes();
    }
};

/// Four rows: A of three columns, B of ten, C without a picture, D that begins left of the pen;
/// 126, a dot, stands in for what is missing.
inline NFNTFont smallFont() {
    NFNTFont font;
    font.kern = -1;
    font.ascent = 3;
    font.descent = 1;
    font.leading = 2;
    font.characters['A'] = {{".#.", "#.#", "###", "#.#"}, 1, 4};
    font.characters['B'] = {{"##########", "#........#", "#.######.#", "##########"}, 3, 13};
    font.characters['C'] = {{}, 1, 5};
    font.characters['D'] = {{"#", "#", "#", "#"}, 0, 2};
    font.characters[126] = {{"..", "..", "##", ".."}, 1, 3};
    return font;
}

} // namespace testing_support

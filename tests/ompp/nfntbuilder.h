// Bitmap font resources for tests, out of pictures of letters.
#pragma once

#include "formats/font/nfnt.h"
#include "memoryfiles.h"

namespace testing_support {

/// "#" is ink. All characters of a font have as many rows.
struct NFNTCharacter {
    std::vector<std::string> rows; ///< empty: no picture
    int offset = 0;                ///< from the kern, which is that of the leftmost
    int advance = 0;
};

struct NFNTFont {
    int lastChar = 127;
    int kern = 0;
    int ascent = 0;
    int descent = 0;
    int leading = 0;
    bool bigEndian = false;
    std::map<int, NFNTCharacter> characters; ///< by their codes; others are missing

    [[nodiscard]] Bytes bytes() const {
        formats::font::Font font{bigEndian, 0, lastChar, ascent, descent, leading, {}};
        for (const auto& [code, character] : characters) {
            if (code > lastChar) continue;
            const auto& rows = character.rows;
            auto& glyph = font.glyphs[code];
            glyph = {character.advance,
                     kern + character.offset,
                     ascent,
                     0,
                     static_cast<int>(rows.size()),
                     {}};
            if (!rows.empty()) glyph.width = static_cast<int>(rows.front().size());
            for (const std::string& row : rows)
                for (const char pixel : row) glyph.ink.push_back(pixel == '#');
        }
        return toBytes(formats::font::write(font).value);
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

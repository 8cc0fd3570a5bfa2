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
    int kern = 0, ascent = 0, descent = 0, leading = 0;
    bool bigEndian = false;
    std::map<int, NFNTCharacter> characters{}; ///< by their codes; others are missing

    [[nodiscard]] Bytes bytes() const {
        formats::font::Font font{bigEndian, 0, lastChar, ascent, descent, leading, {}};
        for (const auto& [code, character] : characters) {
            if (code > lastChar) continue;
            const auto& [rows, offset, advance] = character;
            const auto width = rows.empty() ? 0 : static_cast<int>(rows.front().size());
            auto& glyph = font.glyphs[code];
            glyph = {advance, kern + offset, ascent, width, static_cast<int>(rows.size()), {}};
            for (const std::string& row : rows)
                for (const char pixel : row) glyph.ink.push_back(pixel == '#');
        }
        return toBytes(formats::font::write(font).value);
    }
};

/// Four rows: A of three columns; 126, a dot, stands in for what is missing.
inline NFNTFont smallFont() {
    return {.kern = -1,
            .ascent = 3,
            .descent = 1,
            .leading = 2,
            .characters = {{'A', {{".#.", "#.#", "###", "#.#"}, 1, 4}},
                           {126, {{"..", "..", "##", ".."}, 1, 3}}}};
}

} // namespace testing_support

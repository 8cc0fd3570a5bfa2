// Fonts for the tests of the tools.
#pragma once

#include "filesystem.h"

#include <string>

namespace testfonts {

/// Two characters, 1 and 3; the first one reaches to the left of the pen and below the baseline.
inline const std::string kSmallBdf = "STARTFONT 2.1\n"
                                     "FONT small\n"
                                     "SIZE 3 72 72\n"
                                     "FONTBOUNDINGBOX 4 3 -1 -1\n"
                                     "STARTPROPERTIES 2\n"
                                     "FONT_ASCENT 2\n"
                                     "FONT_DESCENT 1\n"
                                     "ENDPROPERTIES\n"
                                     "CHARS 2\n"
                                     "STARTCHAR hook\n"
                                     "ENCODING 1\n"
                                     "SWIDTH 1000 0\n"
                                     "DWIDTH 4 0\n"
                                     "BBX 3 3 -1 -1\n"
                                     "BITMAP\n"
                                     "E0\n"
                                     "A0\n"
                                     "20\n"
                                     "ENDCHAR\n"
                                     "STARTCHAR dash\n"
                                     "ENCODING 3\n"
                                     "DWIDTH 3 0\n"
                                     "BBX 2 1 1 0\n"
                                     "BITMAP\n"
                                     "C0\n"
                                     "ENDCHAR\n"
                                     "ENDFONT\n";

/// What it is packed to; the example of docs/formats.md.
inline const rsc::Bytes kSmallNfnt = {
    0x00, 0x90, 0, 0, 5, 0, 4, 0,       // type, first and last character, widest advance
    0xFF, 0xFF, 0xFF, 0xFF, 4, 0, 3, 0, // kernMax, -descent, columns and rows
    16, 0, 2, 0, 1, 0, 0, 0, 1, 0,      // owTLoc, ascent, descent, leading, words
                                        // a row
    0xE6, 0x00, 0xBE, 0x00, 0x20, 0x00, // the strike: hook, dash and box
    0, 0, 0, 0, 3, 0, 3, 0, 5, 0, 7, 0, 7, 0, 7, 0, // columns
    0xFF, 0xFF, 0, 4, 0xFF, 0xFF, 2, 3,             // offsets and widths of 0 to 3,
    2, 4, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF        // of the box and what lies behind it
};

/// A face of 64 units an em with rectangles as characters: "A" from (0, 0) to (16, 32), advance 24,
/// and "B" from (-4, -8) to (4, 8), advance 16. Ascent 48, descent 16, line gap 8.
inline rsc::Bytes smallFace() {
    struct Table {
        std::string tag;
        rsc::Bytes data;
    };
    const auto words = [](std::initializer_list<int> values) {
        formats::ByteWriter data(std::endian::big);
        for (const int value : values) data.u16(value);
        return data.take();
    };
    const auto rectangle = [&](int left, int bottom, int right, int top) {
        rsc::Bytes data =
            words({1, left, bottom, right, top, 3, 0}); // one outline of points 0 to 3
        data.insert(data.end(), 4, 1);                  // all on the curve
        const rsc::Bytes steps =
            words({left, 0, right - left, 0, bottom, top - bottom, 0, bottom - top});
        data.insert(data.end(), steps.begin(), steps.end());
        return data;
    };
    rsc::Bytes shapes = rectangle(0, 0, 16, 32);
    const int half = static_cast<int>(shapes.size()) / 2;
    const rsc::Bytes second = rectangle(-4, -8, 4, 8);
    shapes.insert(shapes.end(), second.begin(), second.end());
    const Table tables[] = {
        {"cmap", words({0, 1, 3, 1, 0, 12, 6, 14, 0, 65, 2, 1, 2})},
        {"glyf", shapes},
        {"head", words({1, 0, 1, 0, 0,  0,  0x5F0F, 0x3CF5, 0, 64, 0, 0, 0, 0,
                        0, 0, 0, 0, -4, -8, 16,     32,     0, 8,  2, 0, 0})},
        {"hhea", words({1, 0, 48, -16, 8, 24, 0, 0, 16, 1, 0, 0, 0, 0, 0, 0, 0, 3})},
        {"hmtx", words({10, 0, 24, 0, 16, -4})},
        {"loca", words({0, 0, half, half * 2})},
        {"maxp", words({1, 0, 3, 4, 1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0})},
    };
    rsc::Bytes face = words({1, 0, std::size(tables), 64, 2, 48});
    rsc::Bytes data;
    for (const Table& table : tables) {
        const int offset = static_cast<int>(12 + std::size(tables) * 16 + data.size());
        face.insert(face.end(), table.tag.begin(), table.tag.end());
        const int size = static_cast<int>(table.data.size());
        const rsc::Bytes entry = words({0, 0, 0, offset, 0, size});
        face.insert(face.end(), entry.begin(), entry.end());
        data.insert(data.end(), table.data.begin(), table.data.end());
        data.resize((data.size() + 3) / 4 * 4);
    }
    face.insert(face.end(), data.begin(), data.end());
    return face;
}

} // namespace testfonts

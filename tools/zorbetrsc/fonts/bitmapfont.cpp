#include "fonts/bitmapfont.h"

#include <algorithm>

namespace rsc {

std::optional<InkBox> inkBox(const Glyph& glyph) {
    InkBox box{glyph.width, glyph.height, 0, 0};
    for (int y = 0; y < glyph.height; ++y) {
        for (int x = 0; x < glyph.width; ++x) {
            if (!glyph.ink[glyph.at(x, y)]) continue;
            box.left = std::min(box.left, x);
            box.right = std::max(box.right, x + 1);
            box.top = std::min(box.top, y);
            box.bottom = y + 1;
        }
    }
    if (box.right == 0) return std::nullopt;
    return box;
}

void embolden(Glyph& glyph) {
    ++glyph.advance;
    if (glyph.width == 0) return;
    Glyph bold = glyph;
    ++bold.width;
    bold.ink.assign(bold.at(0, bold.height), false);
    for (int y = 0; y < glyph.height; ++y) {
        for (int x = 0; x < glyph.width; ++x) {
            if (!glyph.ink[glyph.at(x, y)]) continue;
            bold.ink[bold.at(x, y)] = true;
            bold.ink[bold.at(x + 1, y)] = true;
        }
    }
    glyph = std::move(bold);
}

} // namespace rsc

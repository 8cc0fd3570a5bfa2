#include "fonts/fontbuilder.h"

#include "fonts/bdf.h"
#include "fonts/facefont.h"

#include <algorithm>
#include <array>

namespace rsc {

namespace {

constexpr int kHighestCode = kLatin1Codes - 1;
/// Code of the stand-in of fonts that reach so far that it finds no room behind the others.
constexpr int kHighestStandIn = kHighestCode - 1;

constexpr int kHighestBox = 255; ///< so that its width fits into a byte

/// Whether texts have characters of this code.
bool isPrintable(int code) {
    return (code >= 0x20 && code <= 0x7E) || (code >= 0xA0 && code <= kHighestCode);
}

/// A frame of these sides.
Glyph boxGlyph(int left, int width, int height, int advance) {
    Glyph box{advance, left, height, width, height, {}};
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            box.ink.push_back(x == 0 || y == 0 || x == width - 1 || y == height - 1);
    return box;
}

/// A box in the place of a capital, or as high as all characters when the font has no capitals.
Glyph drawnStandIn(const BitmapFont& font) {
    constexpr std::array kModels = {'H', 'X', 'A', '0'};
    for (const char model : kModels) {
        const auto found = font.glyphs.find(model);
        const auto ink = found == font.glyphs.end() ? std::nullopt : inkBox(found->second);
        if (!ink) continue;
        const Glyph& glyph = found->second;
        const int height = glyph.top - ink->top;
        if (height > 0 && height <= kLargestGlyph)
            return boxGlyph(glyph.left + ink->left, ink->right - ink->left, height, glyph.advance);
    }
    const int height = std::clamp(font.ascent, 1, kHighestBox);
    const int width = height * 2 / 3 + 1;
    return boxGlyph(1, width, height, width + 2);
}

/// The font's own picture for missing characters, unless texts have that character: then nobody
/// would see that one is missing.
Glyph standInOf(const BitmapFont& font, const FontPlan& plan) {
    const auto own = font.defaultCode ? font.glyphs.find(*font.defaultCode) : font.glyphs.end();
    const bool serves =
        own != font.glyphs.end() && (!isPrintable(own->first) || !plan.keeps(own->first));
    return serves ? own->second : drawnStandIn(font);
}

/// So many rows that nothing is cut off.
void growLines(formats::font::Font& font) {
    for (const auto& [code, glyph] : font.glyphs) {
        const auto ink = inkBox(glyph);
        if (!ink) continue;
        font.ascent = std::max(font.ascent, glyph.top - ink->top);
        font.descent = std::max(font.descent, ink->bottom - glyph.top);
    }
}

/// The sign for "unknown character", which no text of the game can hold.
constexpr int kStandInCode = 0xFFFD;

BitmapFont bitmapFontOf(formats::font::Font font) {
    BitmapFont result{font.ascent, font.descent, font.leading, {}, {}};
    if (font.hasPureStandIn()) {
        auto standIn = font.glyphs.extract(font.standInCode());
        standIn.key() = kStandInCode;
        font.glyphs.insert(std::move(standIn));
        result.defaultCode = kStandInCode;
    }
    result.glyphs = std::move(font.glyphs);
    return result;
}

} // namespace

Bytes buildFont(const FontPlan& plan, ByteSpan file) {
    const BitmapFont given = plan.face ? renderFace(file, *plan.face) : readBdf(file);
    formats::font::Font font;
    font.bigEndian = plan.bigEndian;
    font.ascent = given.ascent;
    font.descent = given.descent;
    font.leading = plan.leading.value_or(given.leading);
    for (const auto& [code, glyph] : given.glyphs)
        if (code < kLatin1Codes && plan.keeps(code)) font.glyphs.emplace(code, glyph);
    if (font.glyphs.empty())
        throw Refusal("the font has none of the characters that are to be kept");
    const int standIn = std::min(font.glyphs.rbegin()->first + 1, kHighestStandIn);
    font.lastChar = standIn + 1;
    font.glyphs.emplace(standIn, standInOf(given, plan)); // unless the font has its own there
    growLines(font);
    return valueOf(formats::font::write(font));
}

std::optional<UnpackedResource> unpackFont(ByteSpan resource, int id, const std::string& name) {
    const formats::font::Font font = valueOf(formats::font::read(resource));
    const std::string number = std::to_string(id);
    const std::string file = name + ".bdf";
    FontPlan plan;
    plan.bigEndian = font.bigEndian;
    plan.leading = font.leading;
    UnpackedResource result;
    result.lines = "    font " + number + " " + file + "\n";
    if (font.bigEndian) result.lines += "        bytes big\n";
    if (font.leading != 0) result.lines += "        leading " + std::to_string(font.leading) + "\n";
    const std::string text = writeBdf(bitmapFontOf(font), "NFNT-" + number);
    result.files.push_back({file, Bytes(text.begin(), text.end())});
    try {
        result.packed = buildFont(plan, result.files.front().data);
        return result;
    } catch (const Refusal&) { // what only other tools make
        return std::nullopt;
    }
}

} // namespace rsc

#include "fonts/fontunpacker.h"

#include "fonts/bdf.h"
#include "fonts/fontbuilder.h"

namespace rsc {

namespace {

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

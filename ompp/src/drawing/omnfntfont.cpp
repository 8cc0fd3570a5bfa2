#include "omnfntfont.h"

#include "formats/font/nfnt.h"
#include "omdebug.h"
#include "omistream.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace {

/// A character as its record tells it; its bits are those of the strike.
std::optional<OMGlyph> findGlyph(std::span<const std::byte> record,
                                 const formats::font::Header& header, int code) {
    const auto character = formats::font::findCharacter(record, header, code);
    if (!character) return std::nullopt;
    const int end = std::min(character->to, static_cast<int>(8 * header.rowBytes));
    OMGlyph glyph;
    glyph.firstBit = character->from;
    glyph.left = character->left;
    glyph.width = std::max(end - character->from, 0);
    glyph.advance = character->advance;
    return glyph;
}

/// Whether a row of a picture has ink.
bool hasInk(const OMGlyph& glyph, const std::uint8_t* row) {
    for (int bit = glyph.firstBit; bit < glyph.firstBit + glyph.width;) {
        if (bit % 8 == 0 && row[bit / 8] == 0)
            bit += 8;
        else if (row[bit / 8] & 0x80 >> bit % 8)
            return true;
        else
            ++bit;
    }
    return false;
}

/// Takes the rows without ink off the top and the bottom: most characters are lower than a line.
void trim(OMGlyph& glyph) {
    const auto row = [&](int y) { return glyph.bits + glyph.stride * static_cast<std::size_t>(y); };
    while (glyph.height > 0 && !hasInk(glyph, row(glyph.height - 1))) --glyph.height;
    while (glyph.height > 0 && !hasInk(glyph, row(0))) {
        glyph.bits += glyph.stride;
        --glyph.top;
        --glyph.height;
    }
}

} // namespace

OMNFNTFont::OMNFNTFont(OMIStream& source) : OMFont("NFNT") {
    OMDebug::requireApp("OMNFNTFont");
    if (!OMDebug::check(source.isWhole(), "!source->isCached()",
                        "OMNFNTFont::OMNFNTFont - OMIStream source must be cached!"))
        return;
    read(source.readAll());
}

void OMNFNTFont::read(std::span<const std::byte> record) {
    const auto header = formats::font::readHeader(record);
    if (!header || !header->fits(record.size())) return;
    empty_ = false;
    ascent_ = header->ascent;
    descent_ = header->descent;
    leading_ = header->leading;
    measureLine();

    const std::size_t stride = (header->rowBytes + 3) / 4 * 4;
    strike_.resize(stride * header->rows + 1);
    for (std::size_t row = 0; row < header->rows && stride > 0; ++row)
        std::memcpy(&strike_[row * stride],
                    &record[formats::font::kHeaderSize + row * header->rowBytes], header->rowBytes);

    const auto standIn = findGlyph(record, *header, (header->lastChar & 0xFF) - 1);
    const int height =
        std::clamp(ascent_ + descent_, 0, static_cast<int>(header->rows)); // all that is drawn
    for (std::size_t code = 0; code < kCodes; ++code) {
        std::optional<OMGlyph> glyph = findGlyph(record, *header, static_cast<int>(code));
        if (!glyph) glyph = standIn;
        if (!glyph) continue;
        glyph->bits = strike_.data();
        glyph->stride = stride;
        glyph->top = ascent_;
        glyph->height = height;
        trim(*glyph);
        glyphs_[code] = *glyph;
    }
}

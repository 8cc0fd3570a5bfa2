#include "omnfntfont.h"

#include "formats/base/bytes.h"
#include "omdebug.h"
#include "omistream.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <optional>

namespace {

constexpr std::size_t kStrikeHeaderSize = 26;
constexpr std::size_t kOffsetField = 16; ///< owTLoc counts from here
constexpr std::size_t kWord = 2;
constexpr std::size_t kOrderByte = 1; ///< part of the font type
constexpr std::byte kLittleEndian{0x80};
constexpr int kMissing = 0xFF; ///< both bytes of the offset table

/// The fields that count.
struct StrikeHeader {
    int lastChar = 0;
    std::size_t entries = 0; ///< of each table
    int kern = 0;
    std::size_t rows = 0;
    std::size_t offsets = 0; ///< where the offset table begins
    int ascent = 0;
    int descent = 0;
    int leading = 0;
    std::size_t rowBytes = 0;
};

std::endian orderOf(std::span<const std::byte> record) {
    return (record[kOrderByte] & kLittleEndian) == std::byte{0} ? std::endian::big
                                                                : std::endian::little;
}

/// None when the record does not hold what its header says.
std::optional<StrikeHeader> readHeader(std::span<const std::byte> record) {
    if (record.size() < kStrikeHeaderSize) return std::nullopt;
    formats::ByteReader reader(record, orderOf(record));
    StrikeHeader header;
    reader.skip(kWord);
    const int firstChar = reader.i16();
    header.lastChar = reader.i16();
    reader.skip(kWord);
    header.kern = reader.i16();
    reader.skip(2 * kWord);
    header.rows = reader.u16();
    header.offsets = kOffsetField + kWord * reader.u16();
    header.ascent = reader.i16();
    header.descent = reader.i16();
    header.leading = reader.i16();
    header.rowBytes = kWord * reader.u16();
    const int entries = header.lastChar - firstChar + 3;
    if (entries <= 0) return std::nullopt;
    header.entries = static_cast<std::size_t>(entries);
    const std::size_t table = header.entries * kWord;
    const bool fits = header.offsets >= kStrikeHeaderSize + table &&
                      header.offsets + table <= record.size() &&
                      kStrikeHeaderSize + header.rows * header.rowBytes <= record.size();
    return fits ? std::optional(header) : std::nullopt;
}

/// The characters of a record by their codes; none where one is missing.
class Characters {
  public:
    Characters(std::span<const std::byte> record, const StrikeHeader& header)
        : record_(record), header_(header), order_(orderOf(record)) {}

    [[nodiscard]] std::optional<OMGlyph> find(int number) const {
        // The picture ends at the location behind its own.
        const auto code = static_cast<std::size_t>(number);
        if (number < 0 || code + 1 >= header_.entries) return std::nullopt;
        formats::ByteReader table(record_);
        table.seek(header_.offsets + code * kWord);
        const int offset = table.u8();
        const int advance = table.u8();
        if (offset == kMissing && advance == kMissing) return std::nullopt;
        const int from = location(code);
        const int to = std::min(location(code + 1), static_cast<int>(8 * header_.rowBytes));
        OMGlyph glyph;
        glyph.firstBit = from;
        glyph.left = header_.kern + offset;
        glyph.width = std::max(to - from, 0);
        glyph.advance = advance;
        return glyph;
    }

  private:
    [[nodiscard]] int location(std::size_t code) const {
        formats::ByteReader table(record_, order_);
        table.seek(header_.offsets - (header_.entries - code) * kWord);
        return table.u16();
    }

    std::span<const std::byte> record_;
    const StrikeHeader& header_;
    std::endian order_;
};

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
    const std::optional<StrikeHeader> header = readHeader(record);
    if (!header) return;
    empty_ = false;
    ascent_ = header->ascent;
    descent_ = header->descent;
    leading_ = header->leading;
    measureLine();

    const std::size_t stride = (header->rowBytes + 3) / 4 * 4;
    strike_.resize(stride * header->rows + 1);
    for (std::size_t row = 0; row < header->rows && stride > 0; ++row)
        std::memcpy(&strike_[row * stride], &record[kStrikeHeaderSize + row * header->rowBytes],
                    header->rowBytes);

    const Characters characters(record, *header);
    const std::optional<OMGlyph> standIn = characters.find((header->lastChar & 0xFF) - 1);
    const int height =
        std::clamp(ascent_ + descent_, 0, static_cast<int>(header->rows)); // all that is drawn
    for (std::size_t code = 0; code < kCodes; ++code) {
        std::optional<OMGlyph> glyph = characters.find(static_cast<int>(code));
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

#include "formats/font/nfnt.h"

#include <algorithm>
#include <climits>
#include <limits>

namespace formats::font {

namespace {

constexpr std::int64_t kFontType = 0x9000;
constexpr std::byte kLittleEndianMark{0x80}; ///< in the second byte
constexpr std::size_t kOffsetField = 16;     ///< the place of the offset table counts from here
constexpr int kEntriesBehindLast = 2;        ///< of the tables
constexpr int kBitsOfAWord = 16;
constexpr int kLargestOffset = 255;
constexpr int kMissing = 0xFF; ///< offset and advance
constexpr int kMostWords = std::numeric_limits<std::int16_t>::max();
constexpr int kLeastWord = std::numeric_limits<std::int16_t>::min();

struct Limits {
    std::string what;
    int value = 0;
    int smallest = 0;
    int largest = 0;
};

class FontWriter {
  public:
    explicit FontWriter(const Font& font)
        : font_(font), extent_(horizontalExtent(font.glyphs)), height_(font.ascent + font.descent),
          out_(font.bigEndian ? std::endian::big : std::endian::little) {}

    Result<Bytes> write() {
        measure();
        if (!refusal_.empty()) return {{}, refusal_};
        putHeader();
        putStrike();
        for (const int location : locations_) out_.u16(location);
        putOffsets();
        return {refusal_.empty() ? out_.take() : Bytes(), refusal_};
    }

  private:
    void refuse(const std::string& text) {
        if (refusal_.empty()) refusal_ = text;
    }
    /// Refuses a value that its field cannot hold.
    int checked(const Limits& limits) {
        if (limits.value < limits.smallest || limits.value > limits.largest)
            refuse(limits.what + " is " + std::to_string(limits.value) + ", allowed is " +
                   std::to_string(limits.smallest) + " to " + std::to_string(limits.largest));
        return limits.value;
    }

    [[nodiscard]] int entryCount() const { return font_.lastChar + 1 + kEntriesBehindLast; }

    /// Places the pictures in the strike and checks that all fits.
    void measure() {
        checked({"the number of rows", height_, 0, kMostWords});
        for (int code = 0; code < entryCount() && refusal_.empty(); ++code) {
            locations_.push_back(checked({"the width of all pictures", column_, 0, kMostWords}));
            const auto glyph = font_.glyphs.find(code);
            if (glyph != font_.glyphs.end()) column_ += glyph->second.width;
        }
        if (!refusal_.empty()) return;
        rowWords_ = (column_ + kBitsOfAWord - 1) / kBitsOfAWord;
        words_ = static_cast<std::int64_t>(kHeaderSize - kOffsetField) / 2 + entryCount() +
                 std::int64_t{rowWords_} * height_;
        if (words_ > kMostWords)
            refuse("the font is too large: its pictures, side by side, have " +
                   std::to_string(column_) + "x" + std::to_string(height_) + " pixels");
    }

    void putHeader() {
        int largestAdvance = 0;
        for (const auto& [code, glyph] : font_.glyphs)
            largestAdvance = std::max(largestAdvance, glyph.advance);
        out_.u16(kFontType).u16(0).u16(font_.lastChar).u16(largestAdvance);
        out_.u16(checked({"the left edge of the pictures", extent_.left, kLeastWord, 0}));
        out_.u16(-checked({"the descent", font_.descent, -kMostWords, kMostWords}));
        out_.u16(checked({"the width of the pictures laid upon each other",
                          extent_.right - extent_.left, 0, kMostWords}));
        out_.u16(height_).u16(words_);
        out_.u16(checked({"the ascent", font_.ascent, kLeastWord, kMostWords}));
        out_.u16(font_.descent);
        out_.u16(checked({"the leading", font_.leading, kLeastWord, kMostWords}));
        out_.u16(rowWords_);
    }

    void putStrike() {
        const std::size_t rowBytes = static_cast<std::size_t>(rowWords_) * 2;
        Bytes strike(rowBytes * static_cast<std::size_t>(height_));
        for (const auto& [code, glyph] : font_.glyphs) {
            const int left = locations_[static_cast<std::size_t>(code)];
            const int down = font_.ascent - glyph.top; // from the strike's first row
            for (int y = std::max(0, -down); y < std::min(glyph.height, height_ - down); ++y) {
                const std::size_t row = static_cast<std::size_t>(y + down) * rowBytes;
                for (int x = 0; x < glyph.width; ++x) {
                    if (!glyph.ink[glyph.at(x, y)]) continue;
                    const int column = left + x;
                    strike[row + static_cast<std::size_t>(column / CHAR_BIT)] |=
                        0x80 >> column % CHAR_BIT;
                }
            }
        }
        out_.block(strike);
    }

    void putOffsets() {
        for (int code = 0; code < entryCount(); ++code) {
            const auto found = font_.glyphs.find(code);
            if (found == font_.glyphs.end()) {
                out_.u8(kMissing).u8(kMissing);
                continue;
            }
            const Glyph& glyph = found->second;
            const std::string name = " of character " + std::to_string(code);
            const int offset = checked({"the distance" + name + " from the leftmost edge of all",
                                        glyph.left - extent_.left, 0, kLargestOffset});
            const int width = checked({"the width" + name, glyph.advance, 0, kLargestOffset});
            if (offset == kMissing && width == kMissing)
                refuse("the character " + std::to_string(code) +
                       " would count as missing: both its width and its distance from the leftmost "
                       "edge of all are 255");
            out_.u8(offset).u8(width);
        }
    }

    const Font& font_;
    Extent extent_;
    int height_;
    int column_ = 0; ///< of the strike, behind the pictures placed so far
    int rowWords_ = 0;
    std::int64_t words_ = 0;     ///< to the offset table
    std::vector<int> locations_; ///< of all entries
    std::string refusal_;
    ByteWriter out_;
};

/// Adds a character to a font that is read; false when its picture lies outside of the strike or
/// upon the ones before, which end at `column`.
bool addGlyph(Font& font, std::span<const std::byte> record, const Header& header, int code,
              int& column) {
    const auto character = findCharacter(record, header, code);
    if (!character) return true;
    const auto [left, advance, from, to] = *character;
    if (from > to || to > static_cast<int>(header.rowBytes) * CHAR_BIT || from < column)
        return false;
    column = to; // so that all of them together are no larger than the strike
    Glyph glyph{advance, left, font.ascent, to - from, static_cast<int>(header.rows), {}};
    if (glyph.width == 0) glyph.height = 0;
    for (std::size_t y = 0; y < static_cast<std::size_t>(glyph.height); ++y)
        for (auto x = static_cast<std::size_t>(from); x < static_cast<std::size_t>(to); ++x) {
            const std::byte bits = record[kHeaderSize + y * header.rowBytes + x / CHAR_BIT];
            glyph.ink.push_back((bits & std::byte{0x80} >> x % CHAR_BIT) != std::byte{0});
        }
    font.glyphs.emplace(code, std::move(glyph));
    return true;
}

/// Why a record of so many bytes is none that `read` takes; empty when it is one.
std::string whyRefused(const Header& header, std::size_t size) {
    if (header.firstChar < 0 || header.firstChar > header.lastChar || header.lastChar >= kCodes)
        return "damaged font: its characters are " + std::to_string(header.firstChar) + " to " +
               std::to_string(header.lastChar);
    const int rows = static_cast<int>(header.rows);
    if (rows > kMostWords || header.ascent + header.descent > rows)
        return "damaged font: its characters have more rows than its pictures";
    const bool hasTables = header.hasTablesBehindHead();
    if (header.strikeEnd() <= size && !hasTables) return "damaged font: its tables lie in its head";
    return header.fits(size) ? "" : "the font is cut off";
}

} // namespace

std::optional<Header> readHeader(std::span<const std::byte> record) {
    if (record.size() < kHeaderSize) return std::nullopt;
    const bool little = (record[1] & kLittleEndianMark) != std::byte{0};
    Header header;
    header.order = little ? std::endian::little : std::endian::big;
    ByteReader reader(record, header.order);
    reader.skip(2); // type
    header.firstChar = reader.i16();
    header.lastChar = reader.i16();
    reader.skip(2); // largest advance
    header.kern = reader.i16();
    reader.skip(4); // descent, columns
    header.rows = reader.u16();
    header.offsets = kOffsetField + std::size_t{2} * reader.u16();
    header.ascent = reader.i16();
    header.descent = reader.i16();
    header.leading = reader.i16();
    header.rowBytes = std::size_t{2} * reader.u16();
    return header;
}

std::optional<Character> findCharacter(std::span<const std::byte> record, const Header& header,
                                       int code) {
    // The picture ends at the location behind its own.
    const auto index = static_cast<std::size_t>(code);
    if (code < 0 || index + 1 >= header.entries()) return std::nullopt;
    ByteReader reader(record, header.order);
    reader.seek(header.offsets + 2 * index);
    Character character;
    const int offset = reader.u8();
    character.left = header.kern + offset;
    character.advance = reader.u8();
    if (offset == kMissing && character.advance == kMissing) return std::nullopt;
    reader.seek(header.locations() + 2 * index);
    character.from = reader.u16();
    character.to = reader.u16();
    return character;
}

Extent horizontalExtent(const std::map<int, Glyph>& glyphs) {
    Extent extent;
    for (const auto& [code, glyph] : glyphs) {
        extent.left = std::min(extent.left, glyph.left);
        extent.right = std::max(extent.right, glyph.left + glyph.width);
    }
    return extent;
}

Result<Bytes> write(const Font& font) { return FontWriter(font).write(); }

Result<Font> read(ByteSpan bytes) {
    const auto record = std::as_bytes(bytes);
    const std::optional<Header> header = readHeader(record);
    if (!header) return {{}, "the font is cut off"};
    if (std::string refusal = whyRefused(*header, bytes.size()); !refusal.empty())
        return {{}, std::move(refusal)};
    Font font{header->order == std::endian::big,
              header->firstChar,
              header->lastChar,
              header->ascent,
              header->descent,
              header->leading,
              {}};
    int column = 0;
    for (int code = 0; code <= font.lastChar - font.firstChar; ++code)
        if (!addGlyph(font, record, *header, code, column))
            return {{},
                    "damaged font: the picture of character " + std::to_string(code) +
                        " lies outside of the others' row"};
    return {std::move(font), {}};
}

} // namespace formats::font

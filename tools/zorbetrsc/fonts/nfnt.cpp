#include "fonts/nfnt.h"

#include "manifest/words.h"

#include <algorithm>
#include <climits>

namespace rsc {

namespace {

constexpr std::size_t kFontType = 0x9000;
constexpr std::uint8_t kLittleEndianMark = 0x80; ///< in the second byte
constexpr std::size_t kHeaderSize = 26;
constexpr std::size_t kTableOffsetField = 16;
constexpr std::size_t kTableOffsetWord = kTableOffsetField / 2;
constexpr int kEntriesBehindLast = 2; ///< of the tables
constexpr int kBitsOfAWord = 16;
constexpr std::size_t kAbsent = 0xFFFF; ///< offset and width

struct Limits {
    std::string what;
    int value = 0;
    int smallest = 0;
    int largest = 0;
};

/// Refuses a value that its field cannot hold.
int checked(const Limits& limits) {
    if (limits.value < limits.smallest || limits.value > limits.largest)
        throw Refusal(limits.what + " is " + std::to_string(limits.value) + ", allowed is " +
                      std::to_string(limits.smallest) + " to " + std::to_string(limits.largest));
    return limits.value;
}

class NfntWriter {
  public:
    explicit NfntWriter(const Nfnt& font)
        : font_(font), extent_(horizontalExtent(font.glyphs)), height_(font.ascent + font.descent) {
    }

    Bytes write() {
        measure();
        putHeader();
        putStrike();
        for (const int location : locations_) putWord(location);
        putWidths();
        return std::move(out_);
    }

  private:
    [[nodiscard]] std::size_t entryCount() const {
        return static_cast<std::size_t>(font_.lastChar + 1 + kEntriesBehindLast);
    }

    /// Places the pictures in the strike and checks that all fits.
    void measure() {
        checked({"the number of rows", height_, 0, kLargestInt16});
        for (std::size_t code = 0; code < entryCount(); ++code) {
            locations_.push_back(checked({"the width of all pictures", column_, 0, kLargestInt16}));
            const auto glyph = font_.glyphs.find(static_cast<int>(code));
            if (glyph != font_.glyphs.end()) column_ += glyph->second.width;
        }
        rowWords_ = (column_ + kBitsOfAWord - 1) / kBitsOfAWord;
        const auto words = (kHeaderSize - kTableOffsetField) / 2 + entryCount() +
                           static_cast<std::size_t>(rowWords_) * static_cast<std::size_t>(height_);
        if (words > static_cast<std::size_t>(kLargestInt16))
            throw Refusal("the font is too large: its pictures, side by side, have " +
                          std::to_string(column_) + "x" + std::to_string(height_) + " pixels");
        tableOffset_ = static_cast<int>(words);
    }

    void putWord(int value) {
        const auto word = static_cast<std::size_t>(static_cast<std::uint16_t>(value));
        if (font_.bigEndian) {
            put8(out_, word >> 8);
            put8(out_, word);
        } else {
            put16(out_, word);
        }
    }

    void putHeader() {
        int largestAdvance = 0;
        for (const auto& [code, glyph] : font_.glyphs)
            largestAdvance = std::max(largestAdvance, glyph.advance);
        putWord(static_cast<int>(kFontType));
        putWord(0); // firstChar
        putWord(font_.lastChar);
        putWord(largestAdvance);
        putWord(checked({"the left edge of the pictures", extent_.left, kSmallestInt16, 0}));
        putWord(-checked({"the descent", font_.descent, -kLargestInt16, kLargestInt16}));
        putWord(checked({"the width of the pictures laid upon each other",
                         extent_.right - extent_.left, 0, kLargestInt16}));
        putWord(height_);
        putWord(tableOffset_);
        putWord(checked({"the ascent", font_.ascent, kSmallestInt16, kLargestInt16}));
        putWord(font_.descent);
        putWord(checked({"the leading", font_.leading, kSmallestInt16, kLargestInt16}));
        putWord(rowWords_);
    }

    void putStrike() {
        const std::size_t rowBytes = static_cast<std::size_t>(rowWords_) * 2;
        const std::size_t start = out_.size();
        out_.resize(start + rowBytes * static_cast<std::size_t>(height_));
        for (const auto& [code, glyph] : font_.glyphs) {
            const int left = locations_[static_cast<std::size_t>(code)];
            const int down = font_.ascent - glyph.top; // from the strike's first row
            for (int y = std::max(0, -down); y < std::min(glyph.height, height_ - down); ++y) {
                const std::size_t row = start + static_cast<std::size_t>(y + down) * rowBytes;
                for (int x = 0; x < glyph.width; ++x) {
                    if (!glyph.ink[glyph.at(x, y)]) continue;
                    const int column = left + x;
                    out_[row + static_cast<std::size_t>(column / CHAR_BIT)] |=
                        0x80 >> column % CHAR_BIT;
                }
            }
        }
    }

    void putWidths() {
        for (std::size_t code = 0; code < entryCount(); ++code) {
            const auto found = font_.glyphs.find(static_cast<int>(code));
            if (found == font_.glyphs.end()) {
                put16(out_, kAbsent);
                continue;
            }
            const Glyph& glyph = found->second;
            const std::string name = " of character " + std::to_string(code);
            const int offset = checked({"the distance" + name + " from the leftmost edge of all",
                                        glyph.left - extent_.left, 0, kLargestByte});
            const int width = checked({"the width" + name, glyph.advance, 0, kLargestByte});
            if (offset == kLargestByte && width == kLargestByte)
                throw Refusal("the character " + std::to_string(code) +
                              " would count as missing: both its width and its distance from the "
                              "leftmost edge of all are 255");
            put8(out_, static_cast<std::size_t>(offset));
            put8(out_, static_cast<std::size_t>(width));
        }
    }

    const Nfnt& font_;
    Extent extent_;
    int height_;
    int column_ = 0; ///< of the strike, behind the pictures placed so far
    int rowWords_ = 0;
    int tableOffset_ = 0;        ///< owTLoc
    std::vector<int> locations_; ///< of all entries
    Bytes out_;
};

class NfntReader {
  public:
    explicit NfntReader(ByteSpan bytes)
        : bytes_(bytes), reader_(bytes, "the font is cut off", isBigEndian(bytes)) {}

    Nfnt read() {
        readHeader();
        checkStrike();
        const auto entries =
            static_cast<std::size_t>(font_.lastChar - font_.firstChar + 1 + kEntriesBehindLast);
        const std::size_t widths = kTableOffsetField + reader_.u16(kTableOffsetField) * 2U;
        if (widths < kHeaderSize + entries * 2)
            throw Refusal("damaged font: its tables lie in its head");
        locations_ = widths - entries * 2;
        (void)reader_.slice(widths, entries * 2);
        for (std::size_t code = 0; code + kEntriesBehindLast < entries; ++code)
            readGlyph(static_cast<int>(code), reader_.slice(widths + code * 2, 2));
        return std::move(font_);
    }

  private:
    static bool isBigEndian(ByteSpan bytes) {
        return bytes.size() < 2 || (bytes[1] & kLittleEndianMark) == 0;
    }

    void readHeader() {
        (void)reader_.slice(0, kHeaderSize);
        font_.bigEndian = isBigEndian(bytes_);
        font_.firstChar = reader_.s16(2);
        font_.lastChar = reader_.s16(4);
        kernMax_ = reader_.s16(8);
        height_ = reader_.s16(14);
        font_.ascent = reader_.s16(18);
        font_.descent = reader_.s16(20);
        font_.leading = reader_.s16(22);
        rowBytes_ = reader_.u16(24) * std::size_t{2};
        if (font_.firstChar < 0 || font_.firstChar > font_.lastChar ||
            font_.lastChar >= kLatin1Codes)
            throw Refusal("damaged font: its characters are " + std::to_string(font_.firstChar) +
                          " to " + std::to_string(font_.lastChar));
    }

    void checkStrike() {
        if (height_ < 0 || font_.ascent + font_.descent > height_)
            throw Refusal("damaged font: its characters have more rows than its pictures");
        (void)reader_.slice(kHeaderSize, rowBytes_ * static_cast<std::size_t>(height_));
    }

    void readGlyph(int code, ByteSpan entry) {
        const std::size_t at = locations_ + static_cast<std::size_t>(code) * 2;
        const std::size_t first = reader_.u16(at);
        const std::size_t end = reader_.u16(at + 2);
        if (entry[0] == kLargestByte && entry[1] == kLargestByte) return;
        if (first > end || end > rowBytes_ * CHAR_BIT || first < column_)
            throw Refusal("damaged font: the picture of character " + std::to_string(code) +
                          " lies outside of the others' row");
        column_ = end; // so that all of them together are no larger than the strike
        Glyph glyph{entry[1],     kernMax_ + entry[0],
                    font_.ascent, static_cast<int>(end - first),
                    height_,      {}};
        if (glyph.width == 0) glyph.height = 0;
        for (std::size_t y = 0; y < static_cast<std::size_t>(glyph.height); ++y)
            for (std::size_t x = first; x < end; ++x) glyph.ink.push_back(isInk(x, y));
        font_.glyphs.emplace(code, std::move(glyph));
    }

    [[nodiscard]] bool isInk(std::size_t x, std::size_t y) const {
        const auto byte = bytes_[kHeaderSize + y * rowBytes_ + x / CHAR_BIT];
        return (byte & 0x80 >> x % CHAR_BIT) != 0;
    }

    ByteSpan bytes_;
    ByteReader reader_;
    int kernMax_ = 0;
    int height_ = 0; ///< rows of the strike
    std::size_t rowBytes_ = 0;
    std::size_t locations_ = 0; ///< where the location table lies
    std::size_t column_ = 0;    ///< behind the pictures that were read
    Nfnt font_;
};

} // namespace

Bytes writeNfnt(const Nfnt& font) { return NfntWriter(font).write(); }

Nfnt readNfnt(ByteSpan bytes) { return NfntReader(bytes).read(); }

} // namespace rsc

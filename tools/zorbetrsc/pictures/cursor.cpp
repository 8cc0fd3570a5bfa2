#include "pictures/cursor.h"

#include <algorithm>
#include <map>

namespace rsc {

namespace {

constexpr std::size_t kDirectoryHead = 6;
constexpr std::size_t kDirectoryEntry = 16;
constexpr std::size_t kCursorKind = 2;
constexpr std::size_t kBitmapHeader = 40;
constexpr std::size_t kColourSize = 4;
constexpr std::size_t kMostColours = 256;
constexpr int kSizeOfZero = 256; ///< what a side of 0 in the directory stands for
constexpr std::size_t kIndexBits = 8;
constexpr std::size_t kColourBits = 24;

/// Bytes of a row, filled up.
std::size_t rowBytes(std::size_t pixels, std::size_t bits) { return (pixels * bits + 31) / 32 * 4; }

std::uint32_t keyOf(platform::Rgb colour) {
    return std::uint32_t{colour.red} << 16 | std::uint32_t{colour.green} << 8 | colour.blue;
}

void putColour(Bytes& out, platform::Rgb colour) {
    put8(out, colour.blue);
    put8(out, colour.green);
    put8(out, colour.red);
}

class CursorBuilder {
  public:
    explicit CursorBuilder(const Picture& picture)
        : picture_(picture), width_(static_cast<std::size_t>(picture.width())),
          height_(static_cast<std::size_t>(picture.height())) {
        gatherColours();
    }

    Bytes build(HotSpot hotSpot) const {
        const Bytes image = buildImage();
        Bytes out;
        put16(out, 0);
        put16(out, kCursorKind);
        put16(out, 1);
        put8(out, width_);
        put8(out, height_);
        put8(out, hasTable() ? colours_.size() : 0);
        put8(out, 0);
        put16(out, static_cast<std::size_t>(hotSpot.x));
        put16(out, static_cast<std::size_t>(hotSpot.y));
        put32(out, image.size());
        put32(out, kDirectoryHead + kDirectoryEntry);
        out.insert(out.end(), image.begin(), image.end());
        return out;
    }

  private:
    [[nodiscard]] bool hasTable() const { return colours_.size() <= kMostColours; }

    /// The colours in the order in which they appear; behind transparent pixels there is black.
    void gatherColours() {
        for (std::size_t i = 0; i < picture_.size(); ++i) {
            const platform::Rgb colour = colourOf(i);
            if (numbers_.try_emplace(keyOf(colour), colours_.size()).second)
                colours_.push_back(colour);
        }
    }

    [[nodiscard]] platform::Rgb colourOf(std::size_t i) const {
        const Pixel pixel = picture_.pixel(i);
        return pixel.opaque() ? pixel.colour : platform::Rgb{0, 0, 0};
    }

    [[nodiscard]] Bytes buildImage() const {
        const std::size_t bits = hasTable() ? kIndexBits : kColourBits;
        const std::size_t colourPart = rowBytes(width_, bits) * height_;
        const std::size_t mask = rowBytes(width_, 1) * height_;
        Bytes out;
        put32(out, kBitmapHeader);
        put32(out, width_);
        put32(out, height_ * 2);
        put16(out, 1); // planes
        put16(out, bits);
        put32(out, 0); // not compressed
        put32(out, colourPart + mask);
        put32(out, 0);
        put32(out, 0);
        put32(out, hasTable() ? colours_.size() : 0);
        put32(out, 0);
        if (hasTable()) {
            for (const platform::Rgb colour : colours_) {
                putColour(out, colour);
                put8(out, 0);
            }
        }
        for (std::size_t y = height_; y-- > 0;) putRow(out, y);
        for (std::size_t y = height_; y-- > 0;) putMaskRow(out, y);
        return out;
    }

    void putRow(Bytes& out, std::size_t y) const {
        const std::size_t start = out.size();
        for (std::size_t i = y * width_; i < (y + 1) * width_; ++i) {
            if (hasTable())
                put8(out, numbers_.at(keyOf(colourOf(i))));
            else
                putColour(out, colourOf(i));
        }
        out.resize(start + rowBytes(width_, hasTable() ? kIndexBits : kColourBits));
    }

    void putMaskRow(Bytes& out, std::size_t y) const {
        const std::size_t start = out.size();
        out.resize(start + rowBytes(width_, 1));
        for (std::size_t x = 0; x < width_; ++x)
            if (!picture_.pixel(y * width_ + x).opaque()) out[start + x / 8] |= 0x80 >> x % 8;
    }

    const Picture& picture_;
    std::size_t width_;
    std::size_t height_;
    std::vector<platform::Rgb> colours_;
    std::map<std::uint32_t, std::size_t> numbers_; ///< of the colours
};

/// Reads one picture of a cursor file.
class ImageReader {
  public:
    explicit ImageReader(const CursorEntry& entry)
        : reader_(entry.image, "the cursor's picture is cut off"),
          width_(static_cast<std::size_t>(entry.width)),
          height_(static_cast<std::size_t>(entry.height)) {}

    std::optional<std::vector<Pixel>> read() {
        const std::size_t header = reader_.u32(0);
        bits_ = reader_.u16(14);
        const bool isPlain = header == kBitmapHeader && reader_.u32(4) == width_ &&
                             reader_.u32(8) == height_ * 2 && reader_.u32(16) == 0 &&
                             (bits_ == kIndexBits || bits_ == kColourBits);
        if (!isPlain) return std::nullopt;
        const std::size_t used = reader_.u32(32);
        colourCount_ = bits_ == kColourBits ? used : used == 0 ? kMostColours : used;
        if (colourCount_ > kMostColours) return std::nullopt;
        pixels_ = kBitmapHeader + colourCount_ * kColourSize;
        mask_ = pixels_ + rowBytes(width_, bits_) * height_;
        (void)reader_.slice(mask_, rowBytes(width_, 1) * height_);
        std::vector<Pixel> pixels;
        for (std::size_t y = height_; y-- > 0;)
            for (std::size_t x = 0; x < width_; ++x) pixels.push_back(pixel(x, y));
        return pixels;
    }

  private:
    /// Rows count from the bottom.
    [[nodiscard]] Pixel pixel(std::size_t x, std::size_t y) const {
        const std::uint8_t mask = reader_.u8(mask_ + y * rowBytes(width_, 1) + x / 8);
        if ((mask & 0x80 >> x % 8) != 0) return {{0, 0, 0}, 0};
        const std::size_t row = pixels_ + y * rowBytes(width_, bits_);
        if (bits_ == kColourBits) return {colour(row + x * 3), 255};
        const std::size_t index = reader_.u8(row + x);
        if (index >= colourCount_)
            throw Refusal("damaged cursor: a pixel lies outside of its colours");
        return {colour(kBitmapHeader + index * kColourSize), 255};
    }

    [[nodiscard]] platform::Rgb colour(std::size_t at) const {
        return {reader_.u8(at + 2), reader_.u8(at + 1), reader_.u8(at)};
    }

    ByteReader reader_;
    std::size_t width_;
    std::size_t height_;
    std::size_t bits_ = 0;
    std::size_t colourCount_ = 0;
    std::size_t pixels_ = 0; ///< where they begin, as the mask
    std::size_t mask_ = 0;
};

} // namespace

Bytes buildCursor(const Picture& picture, HotSpot hotSpot) {
    const std::string size =
        std::to_string(picture.width()) + "x" + std::to_string(picture.height());
    if (picture.width() > kLargestCursor || picture.height() > kLargestCursor)
        throw Refusal("the picture has " + size + " pixels, a cursor at most " +
                      std::to_string(kLargestCursor) + "x" + std::to_string(kLargestCursor));
    if (hotSpot.x >= picture.width() || hotSpot.y >= picture.height())
        throw Refusal("the hot spot " + std::to_string(hotSpot.x) + " " +
                      std::to_string(hotSpot.y) + " lies outside of the picture, which has " +
                      size + " pixels");
    return CursorBuilder(picture).build(hotSpot);
}

bool isCursorFile(ByteSpan bytes) {
    constexpr std::uint8_t kStart[] = {0, 0, kCursorKind, 0};
    return bytes.size() >= kDirectoryHead && std::ranges::equal(bytes.first(4), kStart);
}

CursorFile readCursorFile(ByteSpan bytes) {
    const ByteReader reader(bytes, "the cursor is cut off");
    const std::size_t count = reader.u16(4);
    if (!isCursorFile(bytes) || count == 0) throw Refusal("no cursor file");
    CursorFile file;
    file.length = kDirectoryHead + count * kDirectoryEntry;
    (void)reader.slice(0, file.length);
    for (std::size_t at = kDirectoryHead; file.entries.size() < count; at += kDirectoryEntry) {
        const auto side = [&](std::size_t value) {
            return value == 0 ? kSizeOfZero : static_cast<int>(value);
        };
        const std::size_t length = reader.u32(at + 8);
        const std::size_t offset = reader.u32(at + 12);
        file.entries.push_back({side(reader.u8(at)), side(reader.u8(at + 1)),
                                HotSpot{reader.u16(at + 4), reader.u16(at + 6)},
                                reader.slice(offset, length)});
        file.length = std::max(file.length, offset + length);
    }
    return file;
}

std::optional<std::vector<Pixel>> cursorPixels(const CursorEntry& entry) {
    return ImageReader(entry).read();
}

} // namespace rsc

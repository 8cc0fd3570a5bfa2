#include "formats/picture/cursor.h"

#include "formats/picture/dib.h"

#include <algorithm>
#include <array>
#include <map>

namespace formats::picture {

namespace {

constexpr int kCursorKind = 2; ///< icons are 1
constexpr std::size_t kDirectoryHead = 6;
constexpr std::size_t kDirectoryEntry = 16;
constexpr int kUsualSide = 32; ///< pixels
constexpr std::size_t kMostColours = 256;
constexpr int kIndexDepth = 8;
constexpr int kColourDepth = 24;
constexpr int kMaskDepth = 1;
constexpr std::uint32_t kOpaque = 0xFF000000;
constexpr std::uint32_t kColourBits = 0x00FFFFFF;

std::uint32_t numberAt(ByteSpan row, std::size_t at, std::size_t count) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < count; ++i) value |= std::uint32_t{row[at + i]} << 8 * i;
    return value;
}

/// Pixels of less than a byte begin at its highest bits.
std::uint32_t valueAt(ByteSpan row, int x, int depth) {
    const auto column = static_cast<std::size_t>(x);
    const auto bits = static_cast<std::size_t>(depth);
    if (depth >= 8) return numberAt(row, column * (bits / 8), bits / 8);
    const std::size_t place = column * bits;
    return std::uint32_t{row[place / 8]} >> (8 - bits - place % 8) & ((1U << bits) - 1);
}

/// The parts of a picture, in the bytes that were read.
struct Parts {
    int width = 0;
    int height = 0;
    int depth = 0;
    std::uint32_t colourCount =
        0; ///< of the table; deep pictures may bring one that is passed over
    ByteSpan table;
    ByteSpan colours;
    ByteSpan mask;

    [[nodiscard]] ByteSpan rowOf(ByteSpan rows, int rowDepth, int y) const {
        const std::size_t size = dibRowSize(width, rowDepth);
        return rows.subspan(static_cast<std::size_t>(height - 1 - y) * size, size);
    }
    [[nodiscard]] ByteSpan colourRow(int y) const { return rowOf(colours, depth, y); }
    [[nodiscard]] ByteSpan maskRow(int y) const { return rowOf(mask, kMaskDepth, y); }

    /// Index to colour; what a short table leaves out is black.
    [[nodiscard]] std::array<std::uint32_t, kMostColours> tableColours() const {
        std::array<std::uint32_t, kMostColours> all{};
        if (depth > kIndexDepth) return all;
        for (std::size_t i = 0; i < table.size() / kTableEntry; ++i)
            all[i] = numberAt(table, i * kTableEntry, 3);
        return all;
    }
};

enum class PartsFault { None, Unknown, HeaderCut, Cut };

/// Entries of the colour table.
std::optional<std::uint32_t> tableEntries(int depth, std::uint32_t used) {
    switch (depth) {
    case 1:
    case 4:
    case 8: {
        const std::uint32_t all = 1U << depth;
        if (used > all) return std::nullopt;
        return used == 0 ? all : used;
    }
    case 24:
    case 32: return used;
    default: return std::nullopt;
    }
}

bool isCursorSide(int side) { return side >= 1 && side <= kLargestCursorSide; }

PartsFault readParts(ByteSpan bytes, Parts& parts) {
    ByteReader reader(bytes);
    const auto header = readDibHeader(reader);
    if (!header) return reader.ok() ? PartsFault::Unknown : PartsFault::HeaderCut;
    const auto entries = tableEntries(header->depth, header->colours);
    parts.width = header->width;
    parts.height = header->height / 2;
    parts.depth = header->depth;
    if (!entries || header->compression != kUncompressed || header->height % 2 != 0 ||
        !isCursorSide(parts.width) || !isCursorSide(parts.height))
        return PartsFault::Unknown;
    parts.colourCount = *entries;
    const auto take = [&](std::size_t count) { return asNumbers(reader.bytes(count)); };
    const auto rows = static_cast<std::size_t>(parts.height);
    parts.table = take(*entries * kTableEntry);
    parts.colours = take(rows * dibRowSize(parts.width, parts.depth));
    parts.mask = take(rows * dibRowSize(parts.width, kMaskDepth));
    return reader.ok() ? PartsFault::None : PartsFault::Cut;
}

struct Found {
    Parts parts;
    HotSpot hotSpot;
};

/// The one that is shown. Only headers are looked at, for a directory may name as many large
/// pictures as it likes.
std::optional<Found> findPicture(ByteSpan bytes) {
    ByteReader directory(bytes);
    if (directory.u16() != 0 || directory.u16() != kCursorKind) return std::nullopt;
    std::optional<Found> first;
    for (int count = directory.u16(); count > 0; --count) {
        Found found;
        directory.skip(4); // sides, which the picture says itself, and colours
        found.hotSpot.x = directory.u16();
        found.hotSpot.y = directory.u16();
        const std::size_t size = directory.u32();
        const std::size_t offset = directory.u32();
        if (!directory.ok()) break;
        if (offset > bytes.size() || size > bytes.size() - offset) continue;
        if (readParts(bytes.subspan(offset, size), found.parts) != PartsFault::None) continue;
        if (found.parts.width == kUsualSide && found.parts.height == kUsualSide) return found;
        if (!first) first = found;
    }
    return first;
}

/// `pixels` are colours with the alpha of the picture.
void applyMask(const Parts& parts, CursorPixels& pixels) {
    auto pixel = pixels.begin();
    for (int y = 0; y < parts.height; ++y) {
        const ByteSpan mask = parts.maskRow(y);
        for (int x = 0; x < parts.width; ++x, ++pixel) {
            const std::uint32_t colour = *pixel & kColourBits;
            if (valueAt(mask, x, kMaskDepth) == 0)
                *pixel = colour | kOpaque;
            else
                *pixel = colour == 0 ? 0 : kOpaque;
        }
    }
}

void applyAlpha(CursorPixels& pixels) {
    constexpr std::uint32_t kHalf = 0x80000000;
    for (std::uint32_t& pixel : pixels) pixel = pixel >= kHalf ? pixel | kOpaque : 0;
}

CursorPixels pixelsOf(const Parts& parts) {
    CursorPixels pixels;
    pixels.reserve(static_cast<std::size_t>(parts.width) * static_cast<std::size_t>(parts.height));
    const auto table = parts.tableColours();
    for (int y = 0; y < parts.height; ++y) {
        const ByteSpan row = parts.colourRow(y);
        for (int x = 0; x < parts.width; ++x) {
            const std::uint32_t value = valueAt(row, x, parts.depth);
            pixels.push_back(parts.depth <= kIndexDepth ? table[value] : value);
        }
    }
    const bool hasAlpha =
        std::ranges::any_of(pixels, [](std::uint32_t pixel) { return pixel > kColourBits; });
    if (hasAlpha)
        applyAlpha(pixels);
    else
        applyMask(parts, pixels);
    return pixels;
}

class CursorWriter {
  public:
    explicit CursorWriter(const Cursor& cursor) : cursor_(cursor) {
        for (const std::uint32_t pixel : cursor.pixels)
            if (numbers_.try_emplace(colourOf(pixel), colours_.size()).second)
                colours_.push_back(colourOf(pixel));
    }

    Bytes write() const {
        const Bytes image = writeImage();
        ByteWriter out;
        out.u16(0).u16(kCursorKind).u16(1);
        out.u8(cursor_.width).u8(cursor_.height).u8(tableSize()).u8(0);
        out.u16(cursor_.hotSpot.x).u16(cursor_.hotSpot.y).u32(std::ssize(image));
        out.u32(kDirectoryHead + kDirectoryEntry).block(image);
        return out.take();
    }

  private:
    [[nodiscard]] bool hasTable() const { return colours_.size() <= kMostColours; }
    [[nodiscard]] int tableSize() const {
        return hasTable() ? static_cast<int>(colours_.size()) : 0;
    }
    [[nodiscard]] int depth() const { return hasTable() ? kIndexDepth : kColourDepth; }

    /// Behind transparent pixels there is black.
    static std::uint32_t colourOf(std::uint32_t pixel) {
        return pixel >= kOpaque ? pixel & kColourBits : 0;
    }

    [[nodiscard]] Bytes writeImage() const {
        const std::size_t rowSize = dibRowSize(cursor_.width, depth());
        const std::size_t maskSize = dibRowSize(cursor_.width, kMaskDepth);
        ByteWriter out;
        writeDibHeader(out,
                       {.width = cursor_.width,
                        .height = cursor_.height * 2,
                        .depth = depth(),
                        .colours = static_cast<std::uint32_t>(tableSize())},
                       (rowSize + maskSize) * static_cast<std::size_t>(cursor_.height));
        if (hasTable())
            for (const std::uint32_t colour : colours_) out.u32(colour);
        for (int y = cursor_.height - 1; y >= 0; --y) out.block(colourRow(y, rowSize));
        for (int y = cursor_.height - 1; y >= 0; --y) out.block(maskRow(y, maskSize));
        return out.take();
    }

    [[nodiscard]] std::size_t at(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(cursor_.width) +
               static_cast<std::size_t>(x);
    }

    [[nodiscard]] Bytes colourRow(int y, std::size_t size) const {
        ByteWriter row;
        for (int x = 0; x < cursor_.width; ++x) {
            const std::uint32_t colour = colourOf(cursor_.pixels[at(x, y)]);
            if (hasTable())
                row.u8(static_cast<std::int64_t>(numbers_.at(colour)));
            else
                row.u16(colour & 0xFFFF).u8(colour >> 16);
        }
        return row.padTo(size).take();
    }

    [[nodiscard]] Bytes maskRow(int y, std::size_t size) const {
        Bytes row(size);
        for (int x = 0; x < cursor_.width; ++x)
            if (cursor_.pixels[at(x, y)] < kOpaque)
                row[static_cast<std::size_t>(x / 8)] |= static_cast<std::uint8_t>(0x80 >> x % 8);
        return row;
    }

    const Cursor& cursor_;
    std::vector<std::uint32_t> colours_; ///< in the order in which they appear
    std::map<std::uint32_t, std::size_t> numbers_;
};

} // namespace

std::optional<Cursor> readCursor(ByteSpan bytes) {
    const auto found = findPicture(bytes);
    if (!found) return std::nullopt;
    const Parts& parts = found->parts;
    const HotSpot inside{std::min(found->hotSpot.x, parts.width - 1),
                         std::min(found->hotSpot.y, parts.height - 1)};
    return Cursor{parts.width, parts.height, inside, pixelsOf(parts)};
}

bool isCursorFile(ByteSpan bytes) {
    constexpr std::uint8_t kStart[] = {0, 0, kCursorKind, 0};
    return bytes.size() >= kDirectoryHead && std::ranges::equal(bytes.first(4), kStart);
}

Result<CursorFile> readCursorFile(ByteSpan bytes) {
    constexpr const char* kCutOff = "the cursor is cut off";
    ByteReader reader(bytes);
    reader.skip(4);
    const std::size_t count = reader.u16();
    if (!reader.ok()) return {{}, kCutOff};
    if (!isCursorFile(bytes) || count == 0) return {{}, "no cursor file"};
    CursorFile file;
    file.length = kDirectoryHead + count * kDirectoryEntry;
    while (file.entries.size() < count) {
        CursorEntry entry;
        const int width = reader.u8();
        const int height = reader.u8();
        entry.width = width == 0 ? kLargestCursorSide : width;
        entry.height = height == 0 ? kLargestCursorSide : height;
        reader.skip(2); // colours
        entry.hotSpot.x = reader.u16();
        entry.hotSpot.y = reader.u16();
        const std::size_t length = reader.u32();
        const std::size_t offset = reader.u32();
        if (!reader.ok() || offset > bytes.size() || length > bytes.size() - offset)
            return {{}, kCutOff};
        entry.image = bytes.subspan(offset, length);
        file.length = std::max(file.length, offset + length);
        file.entries.push_back(entry);
    }
    return {std::move(file), {}};
}

Result<std::optional<CursorPixels>> plainPixels(const CursorEntry& entry) {
    Parts parts;
    const PartsFault fault = readParts(entry.image, parts);
    const bool isPlain = parts.width == entry.width && parts.height == entry.height &&
                         (parts.depth == kIndexDepth || parts.depth == kColourDepth) &&
                         parts.colourCount <= kMostColours;
    if (fault == PartsFault::HeaderCut || (fault == PartsFault::Cut && isPlain))
        return {{}, "the cursor's picture is cut off"};
    if (fault != PartsFault::None || !isPlain) return {};
    const auto table = parts.tableColours();
    CursorPixels pixels;
    for (int y = 0; y < parts.height; ++y)
        for (int x = 0; x < parts.width; ++x) {
            const std::uint32_t value = valueAt(parts.colourRow(y), x, parts.depth);
            const bool isIndex = parts.depth == kIndexDepth;
            if (valueAt(parts.maskRow(y), x, kMaskDepth) != 0)
                pixels.push_back(0);
            else if (isIndex && value >= parts.colourCount)
                return {{}, "damaged cursor: a pixel lies outside of its colours"};
            else
                pixels.push_back((isIndex ? table[value] : value) | kOpaque);
        }
    return {std::move(pixels), {}};
}

Bytes writeCursor(const Cursor& cursor) { return CursorWriter(cursor).write(); }

} // namespace formats::picture

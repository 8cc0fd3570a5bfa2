#include "aopack.h"

#include "aoimage.h"
#include "aorow.h"
#include "omapp.h"
#include "omcanvas.h"
#include "omformat.h"

#include <algorithm>
#include <array>
#include <span>

namespace {

constexpr int kRate = 8; ///< frames a second
constexpr std::size_t kSmallestFrame = 32;
/// Held at once, then the frame for ever.
constexpr std::array<AOEntry, 4> kSequence{
    {{0, 0, AOEntry::kHold, 0}, {0, 0, 0, 0}, {0, 0, AOEntry::kLoop, 0}, {0, 0, AOEntry::kEnd, 0}}};

class Writer {
  public:
    explicit Writer(std::vector<std::byte>& out) : out_(out) {}
    void byte(int value) { out_.push_back(static_cast<std::byte>(value)); }
    void word(int value) {
        byte(value & 0xFF);
        byte(value >> 8 & 0xFF);
    }
    void zeroes(int count) { out_.insert(out_.end(), static_cast<std::size_t>(count), {}); }

  private:
    std::vector<std::byte>& out_;
};

void writeTables(Writer& out) {
    constexpr int kReserved = 4;
    constexpr int kFrameOffset = 4; ///< of the only frame: 0
    constexpr int kPlacement = 4;   ///< at 0, 0, depth 0
    out.word(1);                    // sequence
    out.word(1);                    // frame
    out.byte(kRate);
    out.byte(0); // not swapped
    out.zeroes(kReserved + kFrameOffset + kPlacement);
    out.word(static_cast<int>(kSequence.size()));
    for (const AOEntry& entry : kSequence)
        for (const std::int16_t field : {entry.dx, entry.dy, entry.code, entry.argument})
            out.word(field);
}

} // namespace

std::vector<std::byte> AOPack(OMCanvas& canvas, const platform::Rect& area,
                              std::uint8_t transparent) {
    if (canvas.depth() != 8) {
        OMApp::getApp()->alert(OMFormat("Can't pack from a %d-bit canvas.", canvas.depth()));
        return {};
    }
    const OMPixels pixels = canvas.pixels();
    const platform::Rect shown =
        platform::intersection(area.empty() ? canvas.bounds() : area, pixels.area);
    if (shown.empty()) return {};
    const auto width = static_cast<std::size_t>(shown.width());
    std::vector<std::uint8_t> rows;
    rows.reserve(std::max(width * static_cast<std::size_t>(shown.height()) * 2, kSmallestFrame));
    for (int y = shown.top; y < shown.bottom; ++y)
        aorow::encodeRow({pixels.at(shown.left, y), width}, transparent, rows);

    std::vector<std::byte> resource;
    Writer out(resource);
    writeTables(out);
    out.word(0);
    out.word(shown.width());
    out.word(shown.height());
    const auto bytes = std::as_bytes(std::span(rows));
    resource.insert(resource.end(), bytes.begin(), bytes.end());
    return resource;
}

// A damaged `NFNT` resource, whose font draws texts. Whatever the bytes are: all depths get ink at
// the same pixels, every character's ink lies in its box, and the same record in the other byte
// order is the same font.
#include "fuzzmachine.h"

#include "memorystream.h"
#include "ommemcanvas.h"
#include "omnfntfont.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
#include <utility>

namespace {

using fuzzing::Bytes;
using fuzzing::expect;
using platform::Rect;

constexpr int kWidth = 90;
constexpr int kHeight = 40;
constexpr int kBaseline = 22;
constexpr int kInk = 9;
constexpr std::size_t kHeader = 26;

using Picture = std::vector<bool>;

/// Which pixels of a canvas a text changes.
template <int kBytes>
Picture ink(OMFont& font, std::string_view text, int x) {
    OMMemCanvas canvas(kWidth, kHeight, kBytes * 8);
    canvas.setFont(&font);
    canvas.setTextColor(OMColor(kInk));
    canvas.drawText(x, kBaseline, text);
    canvas.setFont(nullptr);
    Picture picture;
    for (int y = 0; y < kHeight; ++y)
        for (int column = 0; column < kWidth; ++column) {
            const std::uint8_t* pixel = canvas.pixels().at(column, y);
            picture.push_back(std::any_of(pixel, pixel + kBytes, [](int byte) { return byte; }));
        }
    return picture;
}

void checkBox(OMFont& font, unsigned char code) {
    constexpr int kPen = 20;
    const std::string text(1, static_cast<char>(code));
    const Picture picture = ink<1>(font, text, kPen);
    const Rect extent = font.textExtent(text);
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x) {
            if (!picture[static_cast<std::size_t>(y * kWidth + x)]) continue;
            expect(x >= kPen + extent.left && x < kPen + extent.right &&
                       y >= kBaseline + extent.top && y < kBaseline + extent.bottom,
                   "ink lies in the character's box");
        }
}

int wordAt(const Bytes& record, std::size_t at, bool big) {
    const int first = static_cast<int>(record[at]);
    const int second = static_cast<int>(record[at + 1]);
    return static_cast<std::int16_t>(big ? first << 8 | second : second << 8 | first);
}

/// The record in the other byte order; none when its location table lies in the strike too.
std::optional<Bytes> turned(Bytes record) {
    const bool big = (record[1] & std::byte{0x80}) == std::byte{0};
    const auto unsignedAt = [&](std::size_t at) {
        return static_cast<std::size_t>(static_cast<std::uint16_t>(wordAt(record, at, big)));
    };
    const auto entries =
        static_cast<std::size_t>(wordAt(record, 4, big) - wordAt(record, 2, big) + 3);
    const std::size_t locations = 16 + 2 * unsignedAt(16) - 2 * entries;
    if (locations < kHeader + unsignedAt(14) * 2 * unsignedAt(24)) return std::nullopt;
    for (std::size_t at = 2; at < kHeader; at += 2) std::swap(record[at], record[at + 1]);
    for (std::size_t i = 0; i < entries; ++i)
        std::swap(record[locations + 2 * i], record[locations + 2 * i + 1]);
    record[1] ^= std::byte{0x80};
    return record;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::World world;
    world.makeApp();
    fuzzing::Choices choices(data, size);
    std::string text;
    for (int i = 0; i < 6; ++i) text += static_cast<char>(choices.byte());
    const int x = choices.byte() - 100;
    const Bytes record = choices.rest();
    testing_support::MemoryStream stream(record);
    OMNFNTFont font(stream);
    const Picture picture = ink<1>(font, text, x);
    expect(picture == ink<2>(font, text, x) && picture == ink<3>(font, text, x) &&
               picture == ink<4>(font, text, x),
           "all depths look alike");
    int width = 0;
    for (const char c : text) width += font.textWidth(std::string_view(&c, 1));
    expect(width == font.textWidth(text), "a text is as wide as its characters");
    checkBox(font, static_cast<unsigned char>(text.front()));
    if (font.isEmpty()) {
        expect(std::ranges::none_of(picture, std::identity()), "an empty font draws nothing");
        return 0;
    }
    if (std::optional<Bytes> other = turned(record)) {
        testing_support::MemoryStream otherStream(*std::move(other));
        OMNFNTFont same(otherStream);
        expect(!same.isEmpty() && same.lineHeight() == font.lineHeight() &&
                   same.textWidth(text) == width && picture == ink<1>(same, text, x),
               "both byte orders are the same font");
    }
    return 0;
}

// A damaged `CURSOR` resource, of which a cursor is made. Whatever the bytes are, it is the arrow
// or a whole picture whose hot spot lies inside, and bytes behind the resource change nothing.
#include "fuzzmachine.h"

#include "omcursor.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace {

using fuzzing::Bytes;
using fuzzing::expect;
using platform::CursorImage;

constexpr int kId = 9;
constexpr std::size_t kPadding = 48;

/// None for the arrow.
std::optional<CursorImage> read(testing_support::MemoryDisplay& display, const Bytes& resource) {
    display.cursorImages.clear();
    const OMCursor cursor(kId, resource);
    const bool isArrow = cursor.id() == kOMCursorArrow;
    expect(isArrow == display.cursorImages.empty(), "what is no picture is the arrow");
    if (isArrow) return std::nullopt;
    expect(cursor.id() == kId, "a picture has its resource's number");
    return display.cursorImages.at(kId);
}

void checkImage(const CursorImage& image) {
    expect(image.isWhole(), "a picture has all its pixels");
    const platform::Point spot = image.hotSpot;
    expect(spot.x >= 0 && spot.x < image.width && spot.y >= 0 && spot.y < image.height,
           "the hot spot lies inside the picture");
    expect(std::ranges::all_of(
               image.pixels, [](std::uint32_t pixel) { return pixel == 0 || pixel >> 24 == 255; }),
           "a pixel is opaque or nothing");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::World world;
    auto& display = dynamic_cast<testing_support::MemoryDisplay&>(world.machine.display());
    Bytes resource = fuzzing::Choices(data, size).rest();
    const std::optional<CursorImage> image = read(display, resource);
    if (!image) return 0;
    checkImage(*image);
    // What is picked may differ: another picture of the directory may lie in the padding.
    resource.resize(resource.size() + kPadding, std::byte{0xA5});
    const std::optional<CursorImage> padded = read(display, resource);
    expect(padded.has_value(), "padding spoils no picture");
    checkImage(*padded);
    return 0;
}

#include "aopack.h"

#include "formats/animation/animation.h"
#include "formats/animation/row.h"
#include "omapp.h"
#include "omcanvas.h"
#include "omformat.h"

#include <span>

namespace animation = formats::animation;

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
    formats::Bytes rows;
    rows.reserve(width * static_cast<std::size_t>(shown.height()) * 2);
    for (int y = shown.top; y < shown.bottom; ++y)
        animation::encodeRow({pixels.at(shown.left, y), width}, transparent, rows);

    animation::Animation still;
    still.framesPerSecond = animation::kStillRate;
    still.frames = {{shown.width(), shown.height(), rows}};
    still.sequences = {animation::stillSequence()};
    const formats::Bytes resource = animation::write(still);
    const auto bytes = std::as_bytes(std::span(resource));
    return {bytes.begin(), bytes.end()};
}

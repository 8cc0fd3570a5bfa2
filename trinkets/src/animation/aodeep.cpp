#include "aodeep.h"

#include "omcanvas.h"
#include "omdebug.h"

#include <algorithm>
#include <climits>

namespace {

constexpr int kFewestBytes = 2;
constexpr int kMostBytes = 4;

bool canBeDeep(int bytesPerPixel) {
    return OMDebug::check(bytesPerPixel >= kFewestBytes, "bytesPerPixel < 2",
                          "Use GDI to do 8-bit graphics.") &&
           OMDebug::check(bytesPerPixel <= kMostBytes, "bytesPerPixel > 4",
                          "This is one deep canvas.");
}

} // namespace

AOPixelTable AOPixelsOf(const OMDevicePalette& colors, const OMCanvas& canvas) {
    AOPixelTable pixels{};
    std::transform(colors.begin(), colors.end(), pixels.begin(), [&canvas](platform::Rgb color) {
        return canvas.pixelValue(OMColor::fromRgb8(color));
    });
    return pixels;
}

AODeepFrames::AODeepFrames(std::shared_ptr<const AOImage> image, const AOPixelTable& pixels,
                           int bytesPerPixel)
    : image_(canBeDeep(bytesPerPixel) ? std::move(image) : nullptr), pixels_(pixels),
      bytesPerPixel_(bytesPerPixel) {}

const AOFrame& AODeepFrames::frame(int index) {
    static const AOFrame kNone;
    if (!image_ || index < 0 || index >= image_->frameCount()) return kNone;
    if (const AOFrame* known = frames_.find(index)) return *known;
    ++converted_;
    return frames_.keep(index, image_->unpackedFrame(index, pixels_, bytesPerPixel_));
}

std::shared_ptr<AODeepFrames> AOPaletteRecord::framesOf(std::shared_ptr<const AOImage> image,
                                                        const OMCanvas& canvas) {
    const Key key{image.get(), canvas.depth()};
    // An image that is listed here lives as long as its frames do, so no other can have its place.
    if (const auto found = frames_.find(key); found != frames_.end())
        if (std::shared_ptr<AODeepFrames> frames = found->second.lock()) return frames;
    std::erase_if(frames_, [](const auto& entry) { return entry.second.expired(); });
    auto frames = std::make_shared<AODeepFrames>(std::move(image), AOPixelsOf(colors_, canvas),
                                                 canvas.depth() / CHAR_BIT);
    frames_[key] = frames;
    return frames;
}

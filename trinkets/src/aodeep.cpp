#include "aodeep.h"

#include "aoplacement.h"
#include "aorow.h"
#include "omdebug.h"
#include "ommemcanvas.h"

#include <algorithm>
#include <cstring>

using platform::Point;

namespace {

constexpr int kFewestBytes = 2;
constexpr int kMostBytes = 4;
constexpr int kBitsPerByte = 8;

bool canBeDeep(int bytesPerPixel) {
    return OMDebug::check(bytesPerPixel >= kFewestBytes, "bytesPerPixel < 2",
                          "Use GDI to do 8-bit graphics.") &&
           OMDebug::check(bytesPerPixel <= kMostBytes, "bytesPerPixel > 4",
                          "This is one deep canvas.");
}

template <int kBytes>
void fillPixels(std::uint8_t* at, std::ptrdiff_t step, const std::uint8_t* pixel, int count) {
    std::array<std::uint8_t, kBytes> value;
    std::memcpy(value.data(), pixel, kBytes);
    if (step == kBytes)
        for (int i = 0; i < count; ++i) std::memcpy(at + i * kBytes, value.data(), kBytes);
    else
        for (int i = 0; i < count; ++i) std::memcpy(at + i * step, value.data(), kBytes);
}

template <int kBytes>
void copyPixels(std::uint8_t* at, std::ptrdiff_t step, const std::uint8_t* from, int count) {
    if (step == kBytes)
        std::memcpy(at, from, static_cast<std::size_t>(count) * kBytes);
    else
        for (int i = 0; i < count; ++i) std::memcpy(at + i * step, from + i * kBytes, kBytes);
}

} // namespace

AOPixelTable AOPixelsOf(const OMDevicePalette& colors, const OMCanvas& canvas) {
    AOPixelTable pixels{};
    std::transform(colors.begin(), colors.end(), pixels.begin(), [&canvas](platform::Rgb color) {
        return canvas.pixelValue(OMColor::fromRgb8(color));
    });
    return pixels;
}

// One frame

AODeepFrame::AODeepFrame(const AOFrame& frame, const AOPixelTable& pixels, int bytesPerPixel) {
    if (!canBeDeep(bytesPerPixel)) return;
    width_ = frame.width();
    height_ = frame.height();
    bytesPerPixel_ = bytesPerPixel;
    for (int row = 0; row < frame.packedRows(); ++row) addRow(frame.packedRow(row), pixels);
}

void AODeepFrame::addRow(std::span<const std::uint8_t> row, const AOPixelTable& pixels) {
    aorow::RowReader reader(row, width_);
    aorow::RowRun run;
    int column = 0;
    while (reader.next(run)) {
        if (run.kind != aorow::RowRun::Kind::Clear && run.length > 0) {
            const bool fill = run.kind == aorow::RowRun::Kind::Fill;
            runs_.push_back({column, run.length, static_cast<std::uint32_t>(pixels_.size()), fill});
            const int stored = fill ? 1 : run.length;
            for (const std::uint8_t colour : run.colours.first(static_cast<std::size_t>(stored)))
                addPixel(pixels[colour]);
        }
        column += run.length;
    }
    rowEnds_.push_back(static_cast<std::uint32_t>(runs_.size()));
}

void AODeepFrame::addPixel(std::uint32_t pixel) {
    for (int byte = 0; byte < bytesPerPixel_; ++byte)
        pixels_.push_back(static_cast<std::uint8_t>(pixel >> kBitsPerByte * byte));
}

void AODeepFrame::draw(OMMemCanvas& canvas, const OMRegion& clip, Point at, int direction) const {
    const AOTurn* turn = AOTurnOf(direction);
    const OMPixels pixels = canvas.pixels();
    if (!canBeDeep(pixels.bytesPerPixel) || pixels.bytesPerPixel != bytesPerPixel_ || !turn) return;
    const int across = turn->swapAxes ? height_ : width_;
    const int down = turn->swapAxes ? width_ : height_;
    const OMRegion region = canvas.clipped({at.x, at.y, at.x + across, at.y + down}, &clip);
    if (region.isEmpty()) return;
    for (const platform::Rect area : region.rectangles()) {
        const AOLines lines = AOLinesOf(pixels, area, at, *turn, width_, height_);
        switch (bytesPerPixel_) {
        case 2: drawLines<2>(lines); break;
        case 3: drawLines<3>(lines); break;
        default: drawLines<4>(lines); break;
        }
    }
    canvas.changed(region);
}

template <int kBytes>
void AODeepFrame::drawLines(AOLines lines) const {
    const int end = std::min(lines.end, static_cast<int>(rowEnds_.size()));
    for (int row = lines.first; row < end; ++row, lines.at += lines.nextRow) {
        const auto at = static_cast<std::size_t>(row);
        for (std::size_t i = row == 0 ? 0 : rowEnds_[at - 1]; i < rowEnds_[at]; ++i) {
            const Run& run = runs_[i];
            const int place = run.column - lines.skip;
            const int from = std::max(place, 0);
            const int count = std::min(place + run.length, lines.count) - from;
            if (count <= 0) continue;
            std::uint8_t* to = lines.at + from * lines.step;
            const std::uint8_t* source = pixels_.data() + run.pixels;
            if (run.fill)
                fillPixels<kBytes>(to, lines.step, source, count);
            else
                copyPixels<kBytes>(to, lines.step, source + (from - place) * kBytes, count);
        }
    }
}

// All frames of an image

AODeepFrames::AODeepFrames(std::shared_ptr<const AOImage> image, const AOPixelTable& pixels,
                           int bytesPerPixel)
    : image_(std::move(image)), pixels_(pixels), bytesPerPixel_(bytesPerPixel),
      frames_(static_cast<std::size_t>(image_->frameCount())) {}

const AODeepFrame& AODeepFrames::frame(int index) {
    static const AODeepFrame kNone;
    if (index < 0 || index >= static_cast<int>(frames_.size())) return kNone;
    std::unique_ptr<AODeepFrame>& frame = frames_[static_cast<std::size_t>(index)];
    if (!frame) {
        frame = std::make_unique<AODeepFrame>(image_->frame(index), pixels_, bytesPerPixel_);
        ++converted_;
    }
    return *frame;
}

std::shared_ptr<AODeepFrames> AOPaletteRecord::framesOf(std::shared_ptr<const AOImage> image,
                                                        const OMCanvas& canvas) {
    const Key key{image.get(), canvas.depth()};
    // An image that is listed here lives as long as its frames do, so no other can have its place.
    if (const auto found = frames_.find(key); found != frames_.end())
        if (std::shared_ptr<AODeepFrames> frames = found->second.lock()) return frames;
    std::erase_if(frames_, [](const auto& entry) { return entry.second.expired(); });
    auto frames = std::make_shared<AODeepFrames>(std::move(image), AOPixelsOf(colors_, canvas),
                                                 canvas.depth() / kBitsPerByte);
    frames_[key] = frames;
    return frames;
}

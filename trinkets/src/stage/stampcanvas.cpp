#include "stampcanvas.h"

#include "ommemcanvas.h"

#include <algorithm>
#include <cstring>

using platform::Point;
using platform::Rect;

namespace {

template <class Function>
void forEachPixel(const Rect& area, Function function) {
    for (int y = area.top; y < area.bottom; ++y)
        for (int x = area.left; x < area.right; ++x) function(Point{x, y});
}

void fillBytes(OMMemCanvas& canvas, int value) {
    const OMPixels pixels = canvas.pixels();
    const auto row = static_cast<std::size_t>(pixels.area.width()) *
                     static_cast<std::size_t>(pixels.bytesPerPixel);
    for (int y = pixels.area.top; y < pixels.area.bottom; ++y)
        std::memset(pixels.at(pixels.area.left, y), value, row);
}

} // namespace

StampCanvas::StampCanvas(const void* key, const Rect& area, int bytesPerPixel)
    : key_(key), area_(area), bytesPerPixel_(static_cast<std::size_t>(bytesPerPixel)) {
    const auto count =
        static_cast<std::size_t>(area.width()) * static_cast<std::size_t>(area.height());
    opaque_.resize(count);
    below_.resize(count * bytesPerPixel_);
}

std::size_t StampCanvas::index(Point at) const {
    return static_cast<std::size_t>(at.y - area_.top) * static_cast<std::size_t>(area_.width()) +
           static_cast<std::size_t>(at.x - area_.left);
}

bool StampCanvas::isOpaque(Point at) const { return OMContains(area_, at) && opaque_[index(at)]; }

std::uint8_t* StampCanvas::below(Point at) { return below_.data() + index(at) * bytesPerPixel_; }

void StampCanvas::paint(OMMemCanvas& picture, const OMStampPainter& painter, Point corner) {
    // What comes out alike on two different grounds is painted; the rest shines through.
    OMMemCanvas dark(area_.width(), area_.height(), picture.depth());
    OMMemCanvas bright(area_.width(), area_.height(), picture.depth());
    fillBytes(bright, 0xFF);
    const Point at{corner.x - area_.left, corner.y - area_.top};
    for (OMMemCanvas* ground : {&dark, &bright}) {
        ground->setPalette(picture.getPalette());
        painter(*ground, at);
    }
    const OMPixels first = dark.pixels();
    const OMPixels second = bright.pixels();
    const OMPixels target = picture.pixels();
    forEachPixel(area_, [&](Point pixel) {
        const std::uint8_t* painted = first.at(pixel.x - area_.left, pixel.y - area_.top);
        const std::uint8_t* again = second.at(pixel.x - area_.left, pixel.y - area_.top);
        if (std::memcmp(painted, again, bytesPerPixel_) != 0) return;
        std::uint8_t* shown = target.at(pixel.x, pixel.y);
        opaque_[index(pixel)] = 1;
        std::memcpy(below(pixel), shown, bytesPerPixel_);
        std::memcpy(shown, painted, bytesPerPixel_);
    });
    picture.changed(OMRegion(area_));
}

void StampCanvas::giveUpTo(const StampCanvas& other) {
    forEachPixel(platform::intersection(area_, other.area_), [&](Point pixel) {
        if (other.isOpaque(pixel)) opaque_[index(pixel)] = 0;
    });
}

// The list

std::optional<Rect> StampList::stamp(OMMemCanvas& picture, const void* key, const Rect& rectangle,
                                     const OMStampPainter& painter) {
    const Rect area = platform::intersection(rectangle, picture.bounds());
    if (area.empty()) return std::nullopt;
    StampCanvas& made = stamps_.emplace_back(key, area, picture.depth() / 8);
    made.paint(picture, painter, {rectangle.left, rectangle.top});
    bytes_ += made.size();
    while (bytes_ > kMaxBytes) dropOldest();
    return area;
}

std::optional<Rect> StampList::unstamp(OMMemCanvas& picture, const void* key) {
    for (std::size_t i = stamps_.size(); i-- > 0;) {
        if (stamps_[i].key() != key) continue;
        const Rect area = stamps_[i].area();
        takeOut(picture, i);
        return area;
    }
    return std::nullopt;
}

void StampList::paintOver(OMMemCanvas& picture, const Rect& rectangle,
                          const OMStampPainter& painter) {
    const Point corner{rectangle.left, rectangle.top};
    if (stamps_.empty()) return painter(picture, corner);
    const Rect area = platform::intersection(rectangle, picture.bounds());
    if (area.empty()) return;
    StampCanvas painted(nullptr, area, picture.depth() / 8);
    painted.paint(picture, painter, corner);
    for (StampCanvas& stamp : stamps_) stamp.giveUpTo(painted);
}

void StampList::takeOut(OMMemCanvas& picture, std::size_t which) {
    StampCanvas& stamp = stamps_[which];
    const OMPixels target = picture.pixels();
    const auto bytes = static_cast<std::size_t>(target.bytesPerPixel);
    forEachPixel(stamp.area(), [&](Point pixel) {
        if (!stamp.isOpaque(pixel)) return;
        StampCanvas* above = covering(which + 1, pixel);
        std::uint8_t* heir = above ? above->below(pixel) : target.at(pixel.x, pixel.y);
        std::memcpy(heir, stamp.below(pixel), bytes);
    });
    picture.changed(OMRegion(stamp.area()));
    bytes_ -= stamp.size();
    stamps_.erase(stamps_.begin() + static_cast<std::ptrdiff_t>(which));
}

StampCanvas* StampList::covering(std::size_t from, Point at) {
    for (std::size_t i = from; i < stamps_.size(); ++i)
        if (stamps_[i].isOpaque(at)) return &stamps_[i];
    return nullptr;
}

void StampList::forget(const void* key) {
    for (StampCanvas& stamp : stamps_)
        if (stamp.key() == key) stamp.forgetKey();
    // Nobody takes out what lies at the bottom and has no object.
    while (!stamps_.empty() && !stamps_.front().key()) dropOldest();
}

void StampList::dropOldest() {
    bytes_ -= stamps_.front().size();
    stamps_.pop_front();
}

void StampList::clear() {
    stamps_.clear();
    bytes_ = 0;
}

#include "aobackground.h"

#include <algorithm>

namespace {

constexpr int kDepth = 8;
constexpr int kBlack = 0; ///< palette index

} // namespace

AOBackground::AOBackground(int width, int height, std::shared_ptr<const AOImage> image)
    : canvas_(width, height, kDepth) {
    setImage(std::move(image));
}

void AOBackground::setImage(std::shared_ptr<const AOImage> image) {
    image_ = std::move(image);
    canvas_.setColor(OMColor(kBlack));
    canvas_.fillRect(canvas_.bounds());
    const AOSequence& sequence = image_->sequence(0);
    const auto entry = std::find_if(sequence.begin(), sequence.end(),
                                    [](const AOEntry& e) { return e.isFrame(); });
    if (entry == sequence.end()) return;
    const AOImage::Placement& place = image_->embedded();
    image_->frame(entry->code)
        .draw(canvas_, OMRegion(canvas_.bounds()), {place.x + entry->dx, place.y + entry->dy}, 0);
}

OMRegion AOBackground::paint(OMMemCanvas& backBuffer, const OMRegion& dirty) {
    OMRegion covered = dirty;
    covered.intersect(canvas_.bounds());
    const platform::Rect box = covered.boundingBox();
    backBuffer.blt(canvas_, box.left, box.top, box.width(), box.height(), box.left, box.top,
                   OMRasterOp::SrcCopy, &covered);
    return covered;
}

#include "aobackground.h"

#include "aodeep.h"
#include "formats/animation/animation.h"
#include "omapp.h"

#include <algorithm>
#include <utility>

AOBackground::AOBackground(int width, int height, std::shared_ptr<const AOImage> image)
    : canvas_(width, height, OMApp::bufferDepth()) {
    if (AOPaletteRecord::current())
        canvas_.setPalette(OMPaletteFromDevice(AOPaletteRecord::current()->colors()));
    setImage(std::move(image));
}

void AOBackground::setImage(std::shared_ptr<const AOImage> image) {
    image_ = std::move(image);
    awaitsPalette_ = canvas_.depth() > OMCanvas::kIndexedDepth;
    drawImage();
}

void AOBackground::setPalette(const OMPalette& colors) {
    canvas_.setPalette(colors);
    if (std::exchange(awaitsPalette_, false)) drawImage();
}

OMMemCanvas* AOBackground::picture() {
    awaitsPalette_ = false; // what is painted there now must stay
    return &canvas_;
}

void AOBackground::drawImage() {
    const OMRegion all(canvas_.bounds());
    canvas_.setColor(OMColor(OMColor::kBlack));
    canvas_.fillRegion(all);
    const AOSequence& sequence = image_->sequences()[0];
    const auto entry = std::find_if(sequence.begin(), sequence.end(),
                                    [](const AOEntry& e) { return e.isFrame(); });
    if (entry == sequence.end()) return;
    const AOImage::Placement& place = image_->embedded();
    const platform::Point at{place.x + entry->dx, place.y + entry->dy};
    const bool deep = canvas_.depth() > OMCanvas::kIndexedDepth;
    image_
        ->unpackedFrame(entry->code,
                        deep ? AOPixelsOf(canvas_.devicePalette(), canvas_) : kAOIndexPixels,
                        canvas_.pixels().bytesPerPixel)
        .draw(canvas_, all, at, 0);
}

OMRegion AOBackground::paint(OMMemCanvas& backBuffer, const OMRegion& dirty) {
    OMRegion covered = dirty;
    covered.intersect(canvas_.bounds());
    const platform::Rect box = covered.boundingBox();
    backBuffer.blt(canvas_, box.left, box.top, box.width(), box.height(), box.left, box.top,
                   OMRasterOp::SrcCopy, &covered);
    return covered;
}

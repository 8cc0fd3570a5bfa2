#include "aopicture.h"

#include "omdebug.h"
#include "ommemcanvas.h"

#include <climits>

using platform::Point;

void AOPicture::setImage(std::shared_ptr<AOImage> image) {
    image_ = std::move(image);
    frame_ = kNoFrame;
    deepFrames_.reset();
}

void AOPicture::draw(OMMemCanvas& canvas, const OMRegion& clip, Point at) {
    if (canvas.depth() == OMCanvas::kIndexedDepth)
        image_->frame(frame_).draw(canvas, clip, at, direction_);
    else if (AODeepFrames* frames = deepFrames(canvas))
        frames->frame(frame_).draw(canvas, clip, at, direction_);
}

bool AOPicture::hit(Point point, Point at) const {
    const AOFrame& shown = deepFrames_ ? deepFrames_->frame(frame_) : image_->frame(frame_);
    return shown.hit(point, at, direction_);
}

bool AOPicture::setPalette(std::shared_ptr<AOPaletteRecord> palette) {
    if (!OMDebug::check(palette != nullptr, "!aoPalette", "aoPalette is zero")) return false;
    if (palette == palette_) return false;
    palette_ = std::move(palette);
    deepFrames_.reset();
    return true;
}

void AOPicture::prepare(const OMCanvas& canvas) {
    if (canvas.depth() == OMCanvas::kIndexedDepth) return;
    if (AODeepFrames* frames = deepFrames(canvas)) (void)frames->frame(frame_);
}

AODeepFrames* AOPicture::deepFrames(const OMCanvas& canvas) {
    // Where the window has 8 bits there is no record until it is drawn on a deeper canvas.
    if (!palette_) palette_ = AOPaletteRecord::current();
    if (!OMDebug::check(palette_ != nullptr, "!aoPalette", "aoPalette is zero")) return nullptr;
    if (!deepFrames_ || deepFrames_->bytesPerPixel() * CHAR_BIT != canvas.depth())
        deepFrames_ = palette_->framesOf(image_, canvas);
    return deepFrames_.get();
}

void AOPicture::recolour(const AOColorMap& map) {
    image_ = image_->recoloured(map);
    deepFrames_.reset();
}

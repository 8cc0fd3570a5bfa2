// The colours of an animation: its palette record for deep canvases, and changes of indices.

#include "omao.h"

#include "omapp.h"
#include "omdebug.h"
#include "omformat.h"
#include "omtrinketwindow.h"

#include <numeric>

namespace {

AOColorMap sameColors() {
    AOColorMap map{};
    std::iota(map.begin(), map.end(), std::uint8_t{0});
    return map;
}

} // namespace

void OMAnimation::fetchPalette() {
    OMDebug::require(AOPaletteRecord::current() != nullptr, "!currentAOPalette",
                     "currentAOPalette is zero");
    palette_ = AOPaletteRecord::current();
}

void OMAnimation::setPalette(std::shared_ptr<AOPaletteRecord> palette) {
    if (!OMDebug::check(palette != nullptr, "!aoPalette", "aoPalette is zero")) return;
    if (palette == palette_) return;
    palette_ = std::move(palette);
    deepFrames_.reset();
    pictureChanges();
}

AODeepFrames* OMAnimation::deepFrames(const OMCanvas& canvas) {
    // An animation of an 8-bit window has no record until it is painted on a deeper canvas.
    if (!palette_) palette_ = AOPaletteRecord::current();
    if (!OMDebug::check(palette_ != nullptr, "!aoPalette", "aoPalette is zero")) return nullptr;
    if (!deepFrames_ || deepFrames_->bytesPerPixel() * 8 != canvas.depth())
        deepFrames_ = palette_->framesOf(image_, canvas);
    return deepFrames_.get();
}

// Indices

int OMAnimation::windowDepth() const {
    return window() ? window()->backBuffer().depth() : OMCanvas::kIndexedDepth;
}

void OMAnimation::replaceColorIndex(std::uint8_t from, std::uint8_t to) {
    if (const int depth = windowDepth(); depth != OMCanvas::kIndexedDepth)
        return OMApp::getApp()->alert(
            OMFormat("Can't replace color indices in a %d-bit canvas.", depth));
    AOColorMap map = sameColors();
    map[from] = to;
    recolour(map);
}

void OMAnimation::swapColorIndices(std::uint8_t first, std::uint8_t second) {
    if (const int depth = windowDepth(); depth != OMCanvas::kIndexedDepth)
        return OMApp::getApp()->alert(
            OMFormat("Can't swap color indices in a %d-bit canvas.", depth));
    AOColorMap map = sameColors();
    std::swap(map[first], map[second]);
    recolour(map);
}

/// The image may be that of others, who keep their colours.
void OMAnimation::recolour(const AOColorMap& map) {
    image_ = image_->recoloured(map);
    deepFrames_.reset();
    pictureChanges();
}

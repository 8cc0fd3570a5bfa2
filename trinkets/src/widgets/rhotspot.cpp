#include "rhotspot.h"

#include "ommemcanvas.h"
#include "omsarea.h"
#include "omsclass.h"
#include "omtrinketwindow.h"

namespace {

constexpr OMSEntry kRHotSpotVocabulary[] = {
    oms::data<&RHotSpot::outlined, &RHotSpot::setOutlined>("outlined", "its outline is drawn"),
    oms::data<&RHotSpot::userData, &RHotSpot::setUserData>("userData", "free value for scripts"),
    oms::method<&RHotSpot::setAOCursor>("setAOCursor", "[cursor [grab-cursor]]"),
};

// Fixed colours, so that one of them can be told from any picture below.
constexpr int kWhite = 255;

void frame(OMCanvas& canvas, const platform::Rect& area, int color) {
    if (area.empty()) return;
    canvas.setFrameColor(OMColor(color));
    canvas.frameRect(area);
}

} // namespace

const OMSClass RHotSpot::kClass{"RHotSpot", &OMTrinket::kClass, kRHotSpotVocabulary,
                                &OMSArea::create<RHotSpot>, OMSArea::kArguments};

RHotSpot::RHotSpot(OMTrinketWindow& window, const platform::Rect& area)
    : OMSCopied(window, UpdateStyle::Regions, area) {}

void RHotSpot::setOutlined(int on) {
    if (outlined_ == (on != 0)) return;
    outlined_ = on != 0;
    markWhole();
}

void RHotSpot::setAOCursor(std::optional<int> normal, std::optional<int> grab) {
    OMSetCursors(*this, normal, grab, "Cursor URL is not installed in RHotSpot");
}

void RHotSpot::paint(OMMemCanvas& canvas, const OMRegion& clip) {
    if (!outlined_) return;
    platform::Rect area = boundingRectangle();
    canvas.setClipRegion(clip);
    frame(canvas, area, kWhite);
    area = {area.left + 1, area.top + 1, area.right - 1, area.bottom - 1};
    frame(canvas, area, OMColor::kBlack);
    canvas.removeClipRegion();
}

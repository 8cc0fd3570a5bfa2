#include "rfabriccontainer.h"

#include "omsbirths.h"
#include "omsclass.h"
#include "omtrinketwindow.h"
#include "reports.h"

#include <algorithm>
#include <numeric>

using platform::Rect;

namespace {

constexpr OMSEntry kRFabricContainerVocabulary[] = {
    oms::data<&RFabricContainer::correctSegments, &RFabricContainer::setCorrectSegments>(
        "correctSegments", "segments to be covered"),
    oms::data<&RFabricContainer::infoAOID, &RFabricContainer::setInfoAOID>(
        "infoAOID", "picture that tells how many are covered; -1: none")
        .of("animation"),
    oms::data<&RFabricContainer::infoVerticalOffset, &RFabricContainer::setInfoVerticalOffset>(
        "infoVerticalOffset", "pixels from the container to that picture; below 0: above it"),
    oms::method<&RContainer::replacePaletteEntry>("replacePaletteEntry", "old new"),
};

constexpr int kMostSegments = 1000; ///< of one answer
constexpr int kInfoDepth = 1;       ///< above the container
constexpr int kFarthestInfo = 10'000;

} // namespace

const OMSClass RFabricContainer::kClass{"RFabricContainer", &RContainer::kClass,
                                        kRFabricContainerVocabulary,
                                        &createContainer<RFabricContainer>, kArguments};

RFabricContainer::RFabricContainer(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id,
                                   int x, int y)
    : OMSCopied(window, std::move(image), id, x, y) {
    pause();
}

RFabricContainer::RFabricContainer(const RFabricContainer& other)
    : OMSCopied(other), correct_(other.correct_), infoOffset_(other.infoOffset_) {
    setInfoAOID(other.infoId_);
    showCovered();
}

RFabricContainer::~RFabricContainer() { retire(); }

void RFabricContainer::onRetire() {
    info_.reset();
    RContainer::onRetire();
}

// ---------------------------------------------------------------------------- segments

int RFabricContainer::segmentCount() const {
    const int frames = frameCount();
    return frames < 2 ? kPlainSegments : frames - 1;
}

int RFabricContainer::coveredSegments() const {
    return std::accumulate(runs_.begin(), runs_.end(), 0,
                           [](int sum, const Run& run) { return sum + run.count; });
}

int RFabricContainer::segmentsOf(RAnswer& answer) {
    return std::clamp(numberOf(answer, "value").value_or(1), 1, kMostSegments);
}

std::optional<int> RFabricContainer::freeRun(int count) const {
    std::vector<bool> covered(static_cast<std::size_t>(segmentCount()));
    for (const Run& run : runs_)
        for (int i = run.first; i < run.first + run.count && i < segmentCount(); ++i)
            covered[static_cast<std::size_t>(i)] = true;
    const auto first =
        std::search_n(covered.begin(), covered.end(), static_cast<std::ptrdiff_t>(count), false);
    if (first == covered.end()) return std::nullopt;
    return static_cast<int>(first - covered.begin());
}

RContainer::Hit RFabricContainer::hitScore(RAnswer& answer, platform::Point) {
    const std::int64_t score = overlapScore(answer);
    const int segments = segmentsOf(answer);
    const bool right = coveredSegments() + segments <= correct_;
    return {isEnabled() && score > 0 && freeRun(segments) && (!rejectIncorrectAnswers() || right),
            score};
}

/// One that a script places where there is no room lies over the others.
void RFabricContainer::placeAnswer(RAnswer& answer) {
    const Rect area = boundingRectangle();
    const int segments = segmentsOf(answer);
    const int all = segmentCount();
    entering_ = {freeRun(segments).value_or(std::max(all - segments, 0)), segments};
    const auto edge = [&](int segment) {
        return area.left +
               static_cast<int>(std::int64_t{area.width()} * std::min(segment, all) / all);
    };
    answer.snapToRectangle(
        {edge(entering_.first), area.top, edge(entering_.first + entering_.count), area.bottom});
    answer.setZ(depthAbove(kDepthOfAnswers));
    RContainer::placeAnswer(answer);
    lockIfSolved();
}

void RFabricContainer::answerEnters(const RAnswer&, std::size_t index) {
    runs_.insert(runs_.begin() + static_cast<std::ptrdiff_t>(index), entering_);
    showCovered();
}

void RFabricContainer::answerLeaves(std::size_t index) {
    runs_.erase(runs_.begin() + static_cast<std::ptrdiff_t>(index));
    showCovered();
}

void RFabricContainer::setCorrectSegments(int segments) {
    if (segments < 0 || segments > segmentCount())
        return RWarn("RFabricContainer: correctSegments out of range");
    correct_ = segments;
}

// ---------------------------------------------------------------------------- pictures

void RFabricContainer::showCovered() {
    const int frame = 1 + coveredSegments();
    setFrameNumber(std::min(frame, frameCount()));
    if (info_) info_->setFrameNumber(std::min(frame, info_->frameCount()));
    placeInfo(); // its frames may differ in size
}

void RFabricContainer::setInfoAOID(int id) {
    const OMSBirths births; // of the picture
    infoId_ = id;
    info_ = id < 0 || !window() ? nullptr : OMAnimation::create(id, 0, 0, *window());
    if (!info_) return;
    info_->pause();
    info_->setMovable(false);
    info_->setTouchy(false);
    info_->setVisible(isVisible());
    info_->setZ(depthAbove(kInfoDepth));
    showCovered();
}

void RFabricContainer::setInfoVerticalOffset(int pixels) {
    infoOffset_ = std::clamp(pixels, -kFarthestInfo, kFarthestInfo);
    placeInfo();
}

void RFabricContainer::placeInfo() {
    if (!info_) return;
    const Rect area = boundingRectangle();
    const int y =
        infoOffset_ < 0 ? area.top + infoOffset_ - info_->height() : area.bottom + infoOffset_;
    info_->place(area.left + (area.width() - info_->width()) / 2, y);
}

void RFabricContainer::setAttribute(Attribute which, int value, int second) {
    RContainer::setAttribute(which, value, second);
    if (!info_) return;
    if (which == Attribute::Z) info_->setZ(depthAbove(kInfoDepth));
    if (which == Attribute::Visible) info_->setVisible(isVisible());
    placeInfo();
}

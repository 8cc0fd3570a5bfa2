#include "omao.h"

#include "formats/animation/animation.h"
#include "omapp.h"
#include "omdebug.h"
#include "omformat.h"
#include "omid.h"
#include "omlog.h"
#include "omsbirths.h"
#include "omsclass.h"
#include "omtrinketwindow.h"

#include <numeric>

using platform::Point;
using platform::Rect;

namespace {

constexpr OMSEntry kOMAnimationVocabulary[] = {
    oms::data<&AOPlayer::frameNumber, &AOPlayer::setFrameNumber>(
        "frame", "number of the frame shown, counted in its sequence; writing shows another"),
    oms::data<&AOPlayer::sequenceNumber, &AOPlayer::setSequenceNumber>(
        "sequence", "number of the sequence; writing restarts"),
    oms::data<&OMAnimation::drawDirection, &OMAnimation::setDrawDirection>("drawDirection",
                                                                           "0 to 7"),
    oms::data<&OMAnimation::param, &OMAnimation::setParam>(
        "param", "[index] field of the current entry: 0 or 1 code, 2 dx, 3 dy, 4 argument"),
    oms::data<&AOPlayer::isSoundOn, &AOPlayer::setSoundOn>("soundOn", "sound entries play"),
    oms::lasting<&AOPlayer::forever>("forever"),
    oms::method<&OMAnimation::stamp>("stamp"),
    oms::method<&OMAnimation::unstamp>("unstamp"),
    oms::event("paused", "finished or held, after the sounds it waits for"),
    oms::event("special", "a notification marker was reached"),
};

/// The field that scripts number so; null for any other number.
std::int16_t AOEntry::*fieldOf(int number) {
    switch (number) {
    case 0:
    case 1: return &AOEntry::code;
    case 2: return &AOEntry::dx;
    case 3: return &AOEntry::dy;
    case 4: return &AOEntry::argument;
    default: return nullptr;
    }
}

constexpr int kNoResource = 0; ///< id

Rect originOf(const AOImage& image, int x, int y) {
    constexpr int kEmbedded = OMAnimation::kEmbedded;
    const int left = OMTrinket::nearestPlace(x == kEmbedded ? image.embedded().x : x);
    const int top = OMTrinket::nearestPlace(y == kEmbedded ? image.embedded().y : y);
    return {left, top, left, top};
}

} // namespace

const OMSClass OMAnimation::kClass{"OMAnimation", &OMTrinket::kClass, kOMAnimationVocabulary};

AOPlayer& AOPlayer::of(OMScriptableObject& animation) {
    return static_cast<OMAnimation&>(animation);
}

OMAnimation::OMAnimation(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x,
                         int y)
    : OMSCopied(window, UpdateStyle::Regions, originOf(*image, x, y)), id_(OMNarrowId(id)),
      picture_(std::move(image)) {
    playAnew(picture_.image().sequences(), picture_.image().framesPerSecond());
    if (windowDepth() != OMCanvas::kIndexedDepth)
        OMDebug::require(AOPaletteRecord::current() != nullptr, "!currentAOPalette",
                         "currentAOPalette is zero");
    picture_.prepare(window.backBuffer());
    OMTrinket::setAttribute(Attribute::Z, picture_.image().embedded().depth);
}

void OMAnimation::onRetire() {
    leave();
    OMTrinket::onRetire();
}

void OMAnimation::changeImage(std::shared_ptr<AOImage> image, int id) {
    pictureChanges();
    const Point from = origin();
    setBounds({from.x, from.y, from.x, from.y});
    shownOffset_ = {};
    const bool isRateSet = framesPerSecond() != picture_.image().framesPerSecond();
    id_ = OMNarrowId(id);
    picture_.setImage(std::move(image));
    playAnew(picture_.image().sequences(),
             isRateSet ? framesPerSecond() : picture_.image().framesPerSecond());
    if (window()) picture_.prepare(window()->backBuffer());
    fireCompletion();
}

// Creation

std::unique_ptr<OMAnimation> OMAnimation::create(int id, int x, int y, OMTrinketWindow& window) {
    std::shared_ptr<AOImage> image = AOImage::locate(id);
    if (!image) return nullptr;
    auto animation = make<OMAnimation>(window, std::move(image), id, {x, y});
    OMSBirths births;
    births.add(*animation, kClass);
    return animation;
}

std::unique_ptr<OMAnimation> OMAnimation::createFromImage(std::span<const std::byte> resource,
                                                          int x, int y, OMTrinketWindow& window) {
    std::string problem;
    std::shared_ptr<AOImage> image = AOImage::read(resource, problem);
    if (!image) {
        OMLog::writef(OMLog::Kind::Error, "A picture in memory cannot be an animation: %s",
                      problem.c_str());
        return nullptr;
    }
    return std::make_unique<OMAnimation>(window, std::move(image), kNoResource, x, y);
}

OMAnimation::ScriptArguments OMAnimation::readArguments(bool withSize) {
    // Numbers of arguments.
    constexpr std::size_t kLongForm = 4;
    constexpr std::size_t kFormWithSize = 5;
    OMSArguments& list = OMSArguments::global();
    ScriptArguments arguments{OMTrinketWindow::mainWindow(), list.nextInteger()};
    if (list.count() >= kLongForm) {
        arguments.x = list.nextInteger();
        arguments.y = list.nextInteger();
    }
    if (withSize && list.count() >= kFormWithSize) {
        const int width = list.nextInteger();
        arguments.size = {width, list.nextInteger()};
    }
    if (list.hasNext()) arguments.z = list.nextInteger();
    return arguments;
}

// Playing

void OMAnimation::endPlayback() {
    stop();
    fireCompletion();
}

Point OMAnimation::origin() const {
    return {corner().x - shownOffset_.x, corner().y - shownOffset_.y};
}

void OMAnimation::showEntry(const AOEntry& entry) {
    const Point from = origin();
    const Rect after = AOBounds(picture_.image().frameSize(entry.code),
                                {from.x + entry.dx, from.y + entry.dy}, drawDirection());
    if (entry.code != picture_.frame() || after != frameRectangle()) pictureChanges();
    setBounds(after);
    picture_.setFrame(entry.code);
    shownOffset_ = {entry.dx, entry.dy};
}

void OMAnimation::tellFinished() {
    // A handler may have it played again and wait for that.
    const OMLink completion = takeCompletion();
    const OMLink finished = playLinks().finished;
    finished();
    fireEvent("paused");
    completion();
}

std::string OMAnimation::param() const {
    const auto field = fieldOf(OMSArguments::global().nextInteger());
    return field ? oms::toText(int{currentEntry().*field}) : std::string();
}

void OMAnimation::setParam(int value) {
    const auto field = fieldOf(OMSArguments::global().nextInteger());
    if (!field) return;
    AOEntry entry = currentEntry();
    entry.*field = static_cast<std::int16_t>(value);
    setCurrentEntry(entry);
}

// Drawing

void OMAnimation::setDrawDirection(int direction) {
    if (direction == drawDirection()) return;
    pictureChanges();
    picture_.setDirection(direction);
    setBounds(AOBounds(picture_.image().frameSize(picture_.frame()), corner(), direction));
}

void OMAnimation::paint(OMMemCanvas& canvas, const OMRegion& clip) { draw(canvas, clip, corner()); }

void OMAnimation::paintAt(OMMemCanvas& canvas, Point at) {
    draw(canvas, OMRegion(canvas.bounds()), at);
}

void OMAnimation::stamp() {
    if (!window()) return;
    window()->stamp(*this, boundingRectangle(),
                    [this](OMMemCanvas& canvas, Point at) { paintAt(canvas, at); });
}

void OMAnimation::unstamp() {
    if (window()) window()->unstamp(*this);
}

bool OMAnimation::containsPoint(Point point) const { return picture_.hit(point, corner()); }

// Colours

int OMAnimation::windowDepth() const {
    return window() ? window()->backBuffer().depth() : OMCanvas::kIndexedDepth;
}

void OMAnimation::setPalette(std::shared_ptr<AOPaletteRecord> palette) {
    if (picture_.setPalette(std::move(palette))) pictureChanges();
}

void OMAnimation::replaceColorIndex(std::uint8_t from, std::uint8_t to) {
    recolour("replace", from, to, false);
}

void OMAnimation::swapColorIndices(std::uint8_t first, std::uint8_t second) {
    recolour("swap", first, second, true);
}

void OMAnimation::recolour(const char* what, std::uint8_t first, std::uint8_t second, bool both) {
    if (const int depth = windowDepth(); depth != OMCanvas::kIndexedDepth)
        return OMApp::getApp()->alert(
            OMFormat("Can't %s color indices in a %d-bit canvas.", what, depth));
    AOColorMap map{};
    std::iota(map.begin(), map.end(), std::uint8_t{0});
    map[first] = second;
    if (both) map[second] = first;
    picture_.recolour(map);
    pictureChanges();
}

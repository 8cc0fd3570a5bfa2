#include "rmap.h"

#include "omao.h"
#include "omeffectsounds.h"
#include "omformat.h"
#include "omlog.h"
#include "omplatform.h"
#include "omsbirths.h"
#include "omsclass.h"
#include "omtrinketwindow.h"
#include "reports.h"

#include <algorithm>
#include <utility>

using platform::Point;
using platform::Rect;

namespace {

constexpr OMSEntry kRMapVocabulary[] = {
    oms::data<&RMap::cellsH, &RMap::setCellsH>("cellsH", "columns"),
    oms::data<&RMap::cellSizeH, &RMap::setCellSizeH>("cellSizeH", "width of a cell in pixels"),
    oms::data<&RMap::cellSizeV, &RMap::setCellSizeV>("cellSizeV", "height of a cell in pixels"),
    oms::data<&RMap::cellsV, &RMap::setCellsV>("cellsV", "rows"),
    oms::data<&RMap::directionGraphicID, &RMap::setDirectionGraphicID>(
        "directionGraphicID", "[direction] mark of the trail; -1: none")
        .of("animation"),
    oms::data<&RMap::finishGraphicID, &RMap::setFinishGraphicID>("finishGraphicID",
                                                                 "mark of the finish; -1: none")
        .of("animation"),
    oms::data<&RMap::finishX, &RMap::setFinishX>("finishX", "column of the finish"),
    oms::data<&RMap::finishY, &RMap::setFinishY>("finishY", "row of the finish"),
    oms::data<&RMap::mapGraphicID, &RMap::setMapGraphicID>("mapGraphicID",
                                                           "picture of the map; -1: none")
        .of("animation"),
    oms::data<&RMap::moveDelay, &RMap::setMoveDelay>("moveDelay", "milliseconds between steps"),
    oms::data<&RMap::offMapSoundID, &RMap::setOffMapSoundID>(
        "offMapSoundID", "sound of running off the board; -1: none")
        .of("sound"),
    oms::data<&RMap::startGraphicID, &RMap::setStartGraphicID>("startGraphicID",
                                                               "mark of the start; -1: none")
        .of("animation"),
    oms::data<&RMap::startX, &RMap::setStartX>("startX", "column of the start"),
    oms::data<&RMap::startY, &RMap::setStartY>("startY", "row of the start"),
    oms::data<&RMap::trapSoundID, &RMap::setTrapSoundID>("trapSoundID",
                                                         "[trap] sound of a trap; -1: none")
        .of("sound"),
    oms::method<&RMap::addMove>("addMove", "direction length"),
    oms::method<&RMap::clearMoves>("clearMoves"),
    oms::method<&RMap::interruptMove>("interruptMove"),
    oms::lasting<&RMap::moveForScript>("move"),
    oms::method<&RMap::pause>("pause"),
    oms::lasting<&RMap::resumeForScript>("resume"),
    oms::method<&RMap::setTerrain>("setTerrain", "text"),
    oms::event("finished", "a run has ended"),
};

constexpr int kMapDepth = 0; ///< above the group's
constexpr int kMarkerDepth = 1;
constexpr int kFrameOfOldTrail = 2;

int lengthOf(int pixels) { return std::clamp(pixels, 0, RMap::kLargestCell); }

int cellWithin(int number) { return std::clamp(number, -RMap::kFarthestCell, RMap::kFarthestCell); }

/// Where a length lies in the middle of a cell.
int centred(int origin, int cell, int cellSize, int length) {
    return OMTrinket::nearestPlace(origin + std::int64_t{cell} * cellSize +
                                   (cellSize - length) / 2);
}

/// The entry that the next argument numbers; null without.
template <class Ids>
auto* numbered(Ids& ids) {
    const auto index = oms::nextArgument<std::optional<int>>();
    const bool exists = index && *index >= 0 && *index < std::ssize(ids);
    return exists ? &ids[static_cast<std::size_t>(*index)] : nullptr;
}

template <class Ids>
std::string numberedText(Ids& ids) {
    const int* id = numbered(ids);
    return id ? oms::toText(*id) : std::string();
}

} // namespace

/// A walk that is under way.
struct RMap::Run {
    OMTask task;
    OMLink done;
    std::uint32_t lastMs; ///< when the last step was due; at first the start
    std::optional<std::uint32_t> pausedMs;
};

const OMSClass RMap::kClass{"RMap", &OMMultiTrinket::kClass, kRMapVocabulary,
                            &RMap::createFromScript, "x y [z]"};

// ---------------------------------------------------------------------------- life

RMap::RMap(OMTrinketWindow& window) : OMSCopied(window) {
    directionIds_.fill(kNone);
    trapSoundIds_.fill(kNone);
}

RMap::RMap(const RMap& other)
    : OMSCopied(other), board_(other.board_), walk_(other.walk_), start_(other.start_),
      finish_(other.finish_), cellWidth_(other.cellWidth_), cellHeight_(other.cellHeight_),
      moveDelay_(other.moveDelay_), mapId_(other.mapId_), startId_(other.startId_),
      finishId_(other.finishId_), offMapSoundId_(other.offMapSoundId_),
      directionIds_(other.directionIds_), trapSoundIds_(other.trapSoundIds_),
      origin_(other.origin_) {
    walk_.stop();
    putMap();
    putMarker(kStartSlot, startId_, start_);
    putMarker(kFinishSlot, finishId_, finish_);
}

RMap::~RMap() { retire(); }

void RMap::onRetire() {
    if (run_) addCompletionLink(stop()); // which is called when nobody finds the map any more
    for (const auto& graphic : graphics_)
        if (graphic) graphic->retire();
    OMMultiTrinket::onRetire();
}

std::unique_ptr<OMScriptableObject> RMap::createFromScript() {
    OMTrinketWindow* window = OMTrinketWindow::mainWindow();
    if (!window) return nullptr;
    OMSArguments& arguments = OMSArguments::global();
    auto map = std::make_unique<RMap>(*window);
    const int x = arguments.nextInteger();
    const int y = arguments.nextInteger();
    map->place(x, y);
    if (arguments.hasNext()) map->setZ(arguments.nextInteger());
    return map;
}

// ---------------------------------------------------------------------------- the run

void RMap::move(OMLink done) {
    if (walk_.queued() == 0) {
        raiseFinished(done);
        return;
    }
    const OMLink stopped = stop();
    run_.reset(
        new Run{{[this] { tick(); }, OMTask::kWithScripts}, std::move(done), OMMilliseconds(), {}});
    walk_.begin(start_);
    beginTrail();
    OMLog::writef(OMLog::Kind::Message, "Map starting moves, moves in queue: %d",
                  static_cast<int>(walk_.queued()));
    takeMove();
    stopped(); // with the new run in order, which it may stop
}

void RMap::interruptMove() {
    const OMLink done = stop();
    done();
}

void RMap::pause() {
    if (!run_ || run_->pausedMs) return;
    run_->pausedMs = OMMilliseconds();
    run_->task.suspend();
}

void RMap::resume() {
    if (!run_ || !run_->pausedMs) return;
    run_->lastMs += OMMilliseconds() - *run_->pausedMs;
    run_->pausedMs.reset();
    run_->task.resume();
}

/// Who waited for the run already goes on waiting.
void RMap::resumeForScript() {
    resume();
    if (run_)
        run_->done = OMBothLinks(std::move(run_->done), takeCompletion());
    else
        fireCompletion();
}

void RMap::tick() {
    const std::uint32_t now = OMMilliseconds();
    const auto delay = static_cast<std::uint32_t>(std::max(moveDelay_, 0));
    if (now - run_->lastMs < delay) return;
    run_->lastMs = delay > 0 ? run_->lastMs + delay : now;
    makeStep();
}

void RMap::makeStep() {
    const OMSBirths births; // of the mark that it leaves
    if (walk_.isMoving()) {
        walk_.step();
        if (!board_.contains(walk_.cell())) {
            OMEffectSounds::playIfAny(offMapSoundId_, "soundURL == NULL",
                                      "Sound URL is not installed in RMap");
            return finish("Ran off the board!");
        }
        if (const int trap = board_.trapAt(walk_.cell()); trap > 0) {
            OMEffectSounds::playIfAny(trapSoundIds_[static_cast<std::size_t>(trap)],
                                      "soundURLEx == NULL",
                                      "Extended Sound URL is not installed in RMap");
            return finish(OMFormat("Hit trap %d", trap));
        }
        leaveMark();
    }
    if (!walk_.isMoving() && !takeMove())
        finish(walk_.cell() == finish_ ? "Hit the finish!" : "Didn't hit anything...");
}

bool RMap::takeMove() {
    while (const auto move = walk_.takeMove()) {
        OMLog::writef(OMLog::Kind::Message, "Next move: direction %d, length %d", move->direction,
                      move->length);
        if (walk_.isMoving()) return true;
    }
    return false;
}

OMLink RMap::stop() {
    walk_.stop();
    const std::unique_ptr<Run> run = std::move(run_);
    return run ? std::move(run->done) : nullptr;
}

void RMap::finish(std::string_view report) {
    const OMLink done = stop();
    OMLog::write(OMLog::Kind::Message, report);
    raiseFinished(done);
}

void RMap::raiseFinished(const OMLink& done) {
    const OMLink waiting = done;
    fireEvent("finished"); // which may be the end of the map, but not of those who wait
    waiting();
}

// ---------------------------------------------------------------------------- the pictures

/// The trail of the run before stays, in its second frame; the one before that goes.
void RMap::beginTrail() {
    for (int i = 0; i < kTrailLength; ++i) {
        OMAnimation* mark = graphics_[static_cast<std::size_t>(trail_ + i)].get();
        if (!mark) continue;
        mark->setFrameNumber(kFrameOfOldTrail);
        mark->pause();
    }
    trail_ = trail_ == kFirstTrail ? kSecondTrail : kFirstTrail;
    for (int i = 0; i < kTrailLength; ++i) clearSlot(trail_ + i);
    nextMark_ = 0;
}

void RMap::leaveMark() {
    const int id = directionIds_[static_cast<std::size_t>(walk_.direction())];
    if (id == kNone) return;
    const int slot = trail_ + nextMark_;
    nextMark_ = (nextMark_ + 1) % kTrailLength;
    putMarker(slot, id, walk_.cell());
}

void RMap::clearSlot(int slot) {
    std::unique_ptr<OMAnimation>& graphic = graphics_[static_cast<std::size_t>(slot)];
    if (!graphic) return;
    graphic.reset();
    if (memberCount() == 0) setBounds({origin_.x, origin_.y, origin_.x, origin_.y});
}

OMAnimation* RMap::makeGraphic(int slot, int id) {
    clearSlot(slot);
    if (id == kNone || !window()) return nullptr;
    std::unique_ptr<OMAnimation>& graphic = graphics_[static_cast<std::size_t>(slot)];
    graphic = OMAnimation::create(id, 0, 0, *window());
    return graphic.get();
}

void RMap::putMap() {
    const OMSBirths births;
    OMAnimation* picture = makeGraphic(kMapSlot, mapId_);
    if (!picture) return;
    picture->place(origin_.x, origin_.y);
    add(*picture, kMapSlot, kMapDepth);
}

void RMap::putMarker(int slot, int id, MapCell cell) {
    const OMSBirths births;
    OMAnimation* marker = makeGraphic(slot, id);
    if (!marker) return;
    placeOn(*marker, cell);
    add(*marker, slot, kMarkerDepth);
}

void RMap::placeOn(OMAnimation& graphic, MapCell cell) const {
    graphic.place(centred(origin_.x, cell.x, cellWidth_, graphic.width()),
                  centred(origin_.y, cell.y, cellHeight_, graphic.height()));
}

void RMap::placeMarkers() {
    if (graphics_[kStartSlot]) placeOn(*graphics_[kStartSlot], start_);
    if (graphics_[kFinishSlot]) placeOn(*graphics_[kFinishSlot], finish_);
}

/// The first cell moves along, whatever members there are.
void RMap::setAttribute(Attribute which, int value, int second) {
    const Rect before = boundingRectangle();
    OMMultiTrinket::setAttribute(which, value, second);
    if (which != Attribute::X && which != Attribute::Y && which != Attribute::XY) return;
    const Rect after = OMTrinket::boundingRectangle(); // members may be kept from moving so far
    origin_ = {OMTrinket::nearestPlace(std::int64_t{origin_.x} + after.left - before.left),
               OMTrinket::nearestPlace(std::int64_t{origin_.y} + after.top - before.top)};
}

// ---------------------------------------------------------------------------- for scripts

void RMap::setCellSizeH(int pixels) {
    cellWidth_ = lengthOf(pixels);
    placeMarkers();
}

void RMap::setCellSizeV(int pixels) {
    cellHeight_ = lengthOf(pixels);
    placeMarkers();
}

void RMap::setStartX(int column) {
    start_.x = cellWithin(column);
    placeMarkers();
}

void RMap::setStartY(int row) {
    start_.y = cellWithin(row);
    placeMarkers();
}

void RMap::setFinishX(int column) {
    finish_.x = cellWithin(column);
    placeMarkers();
}

void RMap::setFinishY(int row) {
    finish_.y = cellWithin(row);
    placeMarkers();
}

void RMap::setMapGraphicID(int id) {
    mapId_ = id;
    putMap();
}

void RMap::setStartGraphicID(int id) {
    startId_ = id;
    putMarker(kStartSlot, id, start_);
}

void RMap::setFinishGraphicID(int id) {
    finishId_ = id;
    putMarker(kFinishSlot, id, finish_);
}

std::string RMap::directionGraphicID() const { return numberedText(directionIds_); }

void RMap::setDirectionGraphicID(int id) {
    if (int* entry = numbered(directionIds_)) *entry = id;
}

std::string RMap::trapSoundID() const { return numberedText(trapSoundIds_); }

void RMap::setTrapSoundID(int id) {
    if (int* entry = numbered(trapSoundIds_)) *entry = id;
}

void RMap::addMove(int direction, int length) {
    if (MapWalk::isDirection(direction))
        walk_.add({direction, length});
    else
        RWarn(OMFormat("RMap: unknown direction %d, they go from 0 to 7", direction));
}

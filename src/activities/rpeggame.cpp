#include "rpeggame.h"

#include "omao.h"
#include "omrandom.h"
#include "omregion.h"
#include "omsbirths.h"
#include "omsclass.h"
#include "omtrinketwindow.h"

#include <algorithm>
#include <utility>

using platform::Point;
using platform::Rect;

namespace {

constexpr OMSEntry kRPegGameVocabulary[] = {
    oms::data<&RPegGame::pegID, &RPegGame::setPegID>("pegID", "picture of the pegs; -1: none")
        .of("animation"),
    oms::data<&RPegGame::pegMovingZ, &RPegGame::setPegMovingZ>("pegMovingZ",
                                                               "depth of a peg while it is held"),
    oms::data<&RPegGame::pegX, &RPegGame::setPegX>("pegX", "[hole] left edge of a peg there"),
    oms::data<&RPegGame::pegY, &RPegGame::setPegY>("pegY", "[hole] top edge of a peg there"),
    oms::data<&RPegGame::pegsLeftForSolved, &RPegGame::setPegsLeftForSolved>(
        "pegsLeftForSolved", "most pegs that may remain"),
    oms::method<&RPegGame::fill>("fill"),
    oms::method<&RPegGame::removePeg>("removePeg", "[hole]"),
    oms::method<&RPegGame::reset>("reset"),
    oms::event("solved", "no jump is left, and few enough pegs are"),
    oms::event("noMoreMoves", "no jump is left, but too many pegs are"),
};

constexpr int kFirstHole = 1;

/// The next argument as the number of a hole.
std::optional<int> holeArgument() {
    const auto hole = oms::nextArgument<std::optional<int>>();
    return hole && PegBoard::isHole(*hole) ? hole : std::nullopt;
}

} // namespace

/// Tells the game what the player does with it.
class RPegGame::Peg final : public OMAnimation {
  public:
    Peg(RPegGame& game, OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int in)
        : OMAnimation(window, std::move(image), id, kEmbedded, kEmbedded), hole(in), game_(game) {}

    int hole;

    [[nodiscard]] bool isHeld() const { return held_; }

    [[nodiscard]] HandUse handUse() const override { return HandUse::Drag; }
    [[nodiscard]] std::optional<std::vector<Rect>> dropPlaces() const override {
        return game_.placesFor(*this);
    }
    void onMouseDown(Point point) override {
        OMAnimation::onMouseDown(point);
        if (isRetired()) return;
        held_ = true;
        game_.pegHeld(*this);
    }
    void onMouseUp(Point point) override {
        OMAnimation::onMouseUp(point);
        letGo();
    }
    void onReleaseLost() override {
        OMAnimation::onReleaseLost();
        letGo();
    }

  private:
    void letGo() {
        if (std::exchange(held_, false) && !isRetired()) game_.pegDropped(*this);
    }

    RPegGame& game_;
    bool held_ = false;
};

const OMSClass RPegGame::kClass{"RPegGame", &OMScriptableObject::kClass, kRPegGameVocabulary,
                                &RPegGame::createFromScript, "[z]"};

RPegGame::RPegGame(int restingZ) : restingZ_(restingZ), movingZ_(restingZ) {}

RPegGame::~RPegGame() { retire(); }

void RPegGame::onRetire() {
    for (const auto& peg : pegs_)
        if (peg) peg->retire();
}

std::unique_ptr<OMScriptableObject> RPegGame::createFromScript() {
    return std::make_unique<RPegGame>(OMSArguments::global().nextInteger());
}

// ---------------------------------------------------------------------------- pegs and holes

std::unique_ptr<RPegGame::Peg>& RPegGame::pegIn(int hole) {
    return pegs_[static_cast<std::size_t>(hole - kFirstHole)];
}

Point& RPegGame::placeOf(int hole) { return places_[static_cast<std::size_t>(hole - kFirstHole)]; }

bool RPegGame::makePeg(int hole) {
    if (!AOImage::canLocate()) return false;
    OMTrinketWindow* window = OMTrinketWindow::mainWindow();
    std::shared_ptr<AOImage> image =
        window && pegId_ != kNoGraphic ? AOImage::locate(pegId_) : nullptr;
    if (!image) return false;
    pegIn(hole) = std::make_unique<Peg>(*this, *window, std::move(image), pegId_, hole);
    board_.setPeg(hole, true);
    Peg& peg = *pegIn(hole);
    OMSBirths births;
    births.add(peg, Peg::kClass);
    if (pegSize_.x == 0) pegSize_ = {peg.width(), peg.height()};
    putInPlace(peg);
    return true;
}

void RPegGame::takePeg(int hole) {
    pegIn(hole).reset();
    board_.setPeg(hole, false);
}

void RPegGame::putInPlace(Peg& peg) {
    const Point place = placeOf(peg.hole);
    peg.place(place.x, place.y);
    peg.setZ(restingZ_);
}

/// One complaint of a missing picture is enough.
void RPegGame::fill() {
    const OMSBirths births;
    for (int hole = kFirstHole; hole <= PegBoard::kHoles; ++hole)
        if (!board_.hasPeg(hole) && !makePeg(hole)) return;
}

void RPegGame::removePeg(std::optional<int> hole) {
    if (hole && !PegBoard::isHole(*hole)) {
        startHole_ = kFirstHole;
        return;
    }
    startHole_ = hole ? *hole : kFirstHole + static_cast<int>(OMRandomBelow(PegBoard::kHoles));
    takePeg(startHole_);
}

void RPegGame::reset() {
    const OMSBirths births;
    fill();
    takePeg(startHole_);
}

std::string RPegGame::pegX() const {
    const auto hole = holeArgument();
    return hole ? oms::toText(places_[static_cast<std::size_t>(*hole - kFirstHole)].x)
                : std::string();
}

std::string RPegGame::pegY() const {
    const auto hole = holeArgument();
    return hole ? oms::toText(places_[static_cast<std::size_t>(*hole - kFirstHole)].y)
                : std::string();
}

void RPegGame::setPegX(int x) { moveHole(&Point::x, x); }

void RPegGame::setPegY(int y) { moveHole(&Point::y, y); }

/// A peg at rest moves along.
void RPegGame::moveHole(int Point::*axis, int value) {
    const auto hole = holeArgument();
    if (!hole) return;
    placeOf(*hole).*axis = OMTrinket::nearestPlace(value);
    if (Peg* peg = pegIn(*hole).get(); peg && !peg->isHeld()) putInPlace(*peg);
}

// ---------------------------------------------------------------------------- the player

void RPegGame::pegHeld(Peg& peg) { peg.setZ(movingZ_); }

std::vector<Rect> RPegGame::placesFor(const Peg& peg) const {
    std::vector<Rect> places;
    for (int hole = kFirstHole; hole <= PegBoard::kHoles; ++hole) {
        if (!board_.legalJump(peg.hole, hole)) continue;
        const Point at = places_[static_cast<std::size_t>(hole - kFirstHole)];
        places.push_back({at.x, at.y, at.x + peg.width(), at.y + peg.height()});
    }
    return places;
}

/// The first one that it lies on.
std::optional<int> RPegGame::holeUnder(const Peg& peg) {
    for (int hole = kFirstHole; hole <= PegBoard::kHoles; ++hole) {
        const Point place = placeOf(hole);
        if (OMOverlap({place.x, place.y, place.x + pegSize_.x, place.y + pegSize_.y},
                      peg.boundingRectangle()))
            return hole;
    }
    return std::nullopt;
}

void RPegGame::pegDropped(Peg& peg) {
    if (jump(peg) && !board_.hasLegalJump())
        fireEvent(board_.pegCount() > leftForSolved_ ? "noMoreMoves" : "solved");
    if (!peg.isRetired()) putInPlace(peg);
}

/// Whether it has come to another hole, over one whose peg goes.
bool RPegGame::jump(const Peg& peg) {
    const auto hole = holeUnder(peg);
    const auto jump = hole ? board_.legalJump(peg.hole, *hole) : std::nullopt;
    if (!jump) return false;
    takePeg(jump->over);
    std::unique_ptr<Peg> moved = std::move(pegIn(jump->from));
    board_.setPeg(jump->from, false);
    board_.setPeg(jump->to, true);
    moved->hole = jump->to;
    pegIn(jump->to) = std::move(moved);
    return true;
}

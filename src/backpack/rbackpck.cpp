#include "rbackpck.h"

#include "omformat.h"
#include "omsbirths.h"
#include "omsclass.h"
#include "omtrinketwindow.h"
#include "reports.h"
#include "world/worldmemory.h"

#include <algorithm>
#include <string>
#include <utility>

using platform::Point;
using platform::Rect;
using world::kNoItem;

// ---------------------------------------------------------------------------- PressArea

/// A part of the window that is pressed as a button is, where the picture of the panel has its
/// button painted in.
class PressArea final : public OMTrinket {
  public:
    /// `pressed` is called when the mouse button goes up over the area on which it went down, while
    /// that is shown. The area may be destroyed in it.
    PressArea(OMTrinketWindow& window, const Rect& area, OMLink pressed)
        : OMTrinket(window, UpdateStyle::Nothing, area), pressed_(std::move(pressed)) {
        setMovable(false);
    }

    [[nodiscard]] HandUse handUse() const override { return HandUse::Click; }
    void onMouseDown(Point point) override {
        OMTrinket::onMouseDown(point);
        if (isRetired()) return;
        held_ = true;
        setMouseCapture(true);
    }
    void onMouseUp(Point point) override {
        OMTrinket::onMouseUp(point);
        if (!held_) return;
        onReleaseLost();
        // It may have been hidden meanwhile, or the next scene be on its way.
        const bool counts = isShown() && window()->isPresenting() && containsPoint(point);
        const OMLink pressed = pressed_;
        if (counts) pressed();
    }
    void onReleaseLost() override {
        held_ = false;
        setMouseCapture(false);
    }

  private:
    OMLink pressed_;
    bool held_ = false;
};

// ---------------------------------------------------------------------------- RBackPack

namespace {

constexpr OMSEntry kRBackPackVocabulary[] = {
    oms::readOnly<&RBackPack::droppedObjectIndex>(
        "droppedObjectIndex", "slot of what was dropped outside last; -1: none"),
    oms::readOnly<&RBackPack::droppedObjectX>("droppedObjectX", "where that was"),
    oms::readOnly<&RBackPack::droppedObjectY>("droppedObjectY"),
    oms::readOnly<&RBackPack::droppedObjectW>("droppedObjectW"),
    oms::readOnly<&RBackPack::droppedObjectH>("droppedObjectH"),
    oms::method<&RBackPack::addObject>("addObject", "item"),
    oms::method<&RBackPack::removeObject>("removeObject", "slot"),
    oms::event("objectDropped", "a thing was dropped outside of the panel"),
    oms::event("closed", "the close button was used"),
};

// The panel, in pixels from its left upper corner.
constexpr int kColumns = 4;
constexpr Point kCellSize{36, 28};
constexpr Point kFirstCell{16, 74};
constexpr Rect kCloseButton{80, 18, 100, 48};

constexpr int kDepthOfThings = 1; ///< above the panel
constexpr int kCursor = 29;
constexpr int kGrabCursor = 28;

// Items, and the resources of their animations.
constexpr int kFirstGem = 13;
constexpr int kLastItem = 28;
constexpr int kFirstGlyphAnimation = 1013; ///< of item 1, out of the row
constexpr int kGlyphAnimations = 1000;
constexpr int kGemAnimations = 11000;
constexpr int kNumbersOfColour = 4;

constexpr int animationOf(int item) {
    if (item == 1) return kFirstGlyphAnimation;
    if (item < kFirstGem) return kGlyphAnimations + item;
    const int gem = item - kFirstGem;
    return kGemAnimations + kNumbersOfColour * (gem % kNumbersOfColour) + gem / kNumbersOfColour;
}

Point cellOf(int slot) {
    return {kFirstCell.x + kCellSize.x * (slot % kColumns),
            kFirstCell.y + kCellSize.y * (slot / kColumns)};
}

/// Null when nobody plays.
world::Player* carrier() {
    world::WorldMemory* memory = world::WorldMemory::current();
    return memory ? memory->currentPlayer() : nullptr;
}

/// What cannot be done. False.
bool refuse(const std::string& message) {
    RTell(message);
    return false;
}

} // namespace

/// Tells the panel when it is let go.
class RBackPack::Thing final : public OMAnimation {
  public:
    Thing(RBackPack& panel, OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id,
          int slot)
        : OMAnimation(window, std::move(image), id, 0, 0), panel_(panel), slot_(slot) {}

    [[nodiscard]] HandUse handUse() const override { return HandUse::Drag; }
    void onDrop(Point point) override {
        OMAnimation::onDrop(point);
        if (!isRetired()) panel_.thingDropped(slot_);
    }
    void onReleaseLost() override { panel_.thingDropped(slot_); }

  private:
    RBackPack& panel_;
    int slot_;
};

const OMSClass RBackPack::kClass{"RBackPack", &RAnimation::kClass, kRBackPackVocabulary,
                                 &RBackPack::createFromScript, "animation x y [z]"};

RBackPack::RBackPack(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y)
    : RAnimation(window, std::move(image), id, x, y) {
    fill();
    makeCloseButton();
}

RBackPack::~RBackPack() { retire(); }

void RBackPack::onRetire() {
    closeButton_.reset();
    for (const auto& thing : things_)
        if (thing) thing->retire();
    RAnimation::onRetire();
}

std::unique_ptr<OMScriptableObject> RBackPack::createFromScript() {
    OMSArguments& list = OMSArguments::global();
    OMTrinketWindow* window = OMTrinketWindow::mainWindow();
    const int id = list.nextInteger();
    const int x = list.nextInteger();
    const int y = list.nextInteger();
    const auto z = list.hasNext() ? std::optional(list.nextInteger()) : std::nullopt;
    if (!window) return nullptr;
    auto panel = make<RBackPack>(
        *window, AOImage::canLocate() ? AOImage::locateOrBlank(id) : AOImage::blank(), id, {x, y});
    if (z) panel->setZ(*z);
    return panel;
}

// ---------------------------------------------------------------------------- what is in it

void RBackPack::fill() {
    const world::Player* player = carrier();
    if (!player) return;
    int slot = 0;
    for (const std::int32_t item : world::Numbers<kSlots>(player->record().backpack)) {
        if (item != kNoItem) showItem(item, slot);
        ++slot;
    }
}

/// The slot that is asked for, if it is free.
std::optional<int> RBackPack::slotFor(int slot) const {
    if (slot == kFirstFree) {
        const auto free = std::ranges::find_if(things_, [](const auto& thing) { return !thing; });
        if (free != things_.end()) return static_cast<int>(free - things_.begin());
        RTell("RBackPack: Backpack is full.");
        return std::nullopt;
    }
    if (slot < 0 || slot >= kSlots) {
        RTell(OMFormat("RBackPack: Invalid slot index: %d", slot));
        return std::nullopt;
    }
    if (things_[static_cast<std::size_t>(slot)]) {
        RTell(OMFormat("RBackPack: Slot %d is taken.", slot));
        return std::nullopt;
    }
    return slot;
}

bool RBackPack::showItem(int item, int wanted) {
    if (item < kNoItem || item > kLastItem)
        return refuse(OMFormat("RBackPack: invalid object: %d", item));
    if (item == kNoItem) return refuse(OMFormat("RBackPack: object %d animation not found.", item));
    const std::optional<int> slot = slotFor(wanted);
    if (!slot || !window() || !AOImage::canLocate()) return false;
    const int id = animationOf(item);
    std::shared_ptr<AOImage> image = AOImage::locate(id);
    if (!image) return refuse(OMFormat("RBackPack: object %d animation not found.", item));
    auto thing = std::make_unique<Thing>(*this, *window(), std::move(image), id, *slot);
    OMSBirths births;
    births.add(*thing, Thing::kClass);
    putInCell(*thing, *slot);
    thing->setZ(depthAbove(kDepthOfThings));
    thing->setVisible(isVisible());
    things_[static_cast<std::size_t>(*slot)] = std::move(thing);
    OMSetCursors(*things_[static_cast<std::size_t>(*slot)], kCursor, kGrabCursor,
                 "Cursor URL is not installed in RBackPack");
    return true;
}

void RBackPack::putInCell(Thing& thing, int slot) {
    const Rect panel = boundingRectangle();
    const Point cell = cellOf(slot);
    thing.place(panel.left + cell.x + (kCellSize.x - thing.width()) / 2,
                panel.top + cell.y + (kCellSize.y - thing.height()) / 2);
}

void RBackPack::addObject(int item) {
    const OMSBirths births; // told when the world has the item, too
    if (!showItem(item, kFirstFree)) return;
    if (world::Player* player = carrier()) world::addItem(player->record().backpack, item);
}

void RBackPack::removeObject(int slot) {
    if (slot < 0 || slot >= kSlots)
        return RTell(OMFormat("RBackPack: Invalid slot index: %d", slot));
    std::unique_ptr<Thing>& thing = things_[static_cast<std::size_t>(slot)];
    if (!thing) return RTell(OMFormat("RBackPack: No object in slot %d", slot));
    thing.reset();
    if (world::Player* player = carrier())
        player->record().backpack[static_cast<std::size_t>(slot)] = kNoItem;
}

// ---------------------------------------------------------------------------- the player

void RBackPack::thingDropped(int slot) {
    Thing* thing = things_[static_cast<std::size_t>(slot)].get();
    const Rect place = thing->boundingRectangle();
    if (thing->isShown() && !OMOverlap(place, boundingRectangle())) {
        droppedSlot_ = slot;
        dropped_ = place;
        fireEvent("objectDropped");
    }
    if (!thing->isRetired()) putInCell(*thing, slot);
}

void RBackPack::makeCloseButton() {
    if (!window()) return;
    const Rect panel = boundingRectangle();
    closeButton_ = std::make_unique<PressArea>(
        *window(),
        Rect{panel.left + kCloseButton.left, panel.top + kCloseButton.top,
             panel.left + kCloseButton.right, panel.top + kCloseButton.bottom},
        [this] { close(); });
    closeButton_->setZ(depthAbove(kDepthOfThings));
}

void RBackPack::close() {
    setVisible(false);
    closeButton_.reset();
    fireEvent("closed");
}

void RBackPack::setAttribute(Attribute which, int value, int second) {
    const Rect before = boundingRectangle();
    RAnimation::setAttribute(which, value, second);
    const Rect after = boundingRectangle();
    const auto follow = [&](OMTrinket& part) {
        part.offset(after.left - before.left, after.top - before.top);
        if (which == Attribute::Z) part.setZ(depthAbove(kDepthOfThings));
        if (which == Attribute::Visible) part.setVisible(isVisible());
    };
    for (const std::unique_ptr<Thing>& thing : things_)
        if (thing) follow(*thing);
    // One that was closed can be opened again.
    if (which == Attribute::Visible && isVisible() && !closeButton_) makeCloseButton();
    if (closeButton_) follow(*closeButton_);
}

// The backpack: a panel that shows what the current player carries, each thing as a small animation
// in a cell. The player can drag a thing out of it; it springs back unless the script takes it.
//
//     b=RBackPack id x y [z]
//
// What is in it is the player's backpack in the world's memory, slot for slot.
#pragma once

#include "ranimation.h"
#include "world/playerrecord.h"

#include <array>
#include <memory>
#include <optional>

class PressArea;

class RBackPack final : public RAnimation {
  public:
    static const OMSClass kClass;

    static constexpr int kSlots = world::kBackpackSlots;

    RBackPack(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y);
    ~RBackPack() override;

    [[nodiscard]] static std::unique_ptr<OMScriptableObject> createFromScript();

    /// None.
    [[nodiscard]] std::unique_ptr<OMScriptableObject> duplicate() override { return nullptr; }

    // For scripts. What cannot be done is told in a box, and nothing changes.

    // Of the thing that was dropped outside of the panel last: its slot, and where that was.
    [[nodiscard]] int droppedObjectIndex() const { return droppedSlot_; }
    [[nodiscard]] int droppedObjectX() const { return dropped_.left; }
    [[nodiscard]] int droppedObjectY() const { return dropped_.top; }
    [[nodiscard]] int droppedObjectW() const { return dropped_.width(); }
    [[nodiscard]] int droppedObjectH() const { return dropped_.height(); }
    /// Into the first free slot, and into the player's backpack.
    void addObject(int item);
    /// Out of a slot, and out of the player's backpack.
    void removeObject(int slot);

    /// Things and close button move along, and are seen while the panel is.
    void setAttribute(Attribute which, int value, int second = 0) override;

  private:
    void onRetire() override;
    class Thing;

    static constexpr int kFirstFree = -1; ///< instead of a slot
    static constexpr int kNone = -1;

    void fill();
    bool showItem(int item, int slot);
    [[nodiscard]] std::optional<int> slotFor(int slot) const;
    void putInCell(Thing& thing, int slot);
    void thingDropped(int slot);
    void makeCloseButton();
    void close();

    std::array<std::unique_ptr<Thing>, kSlots> things_;
    std::unique_ptr<PressArea> closeButton_;
    int droppedSlot_ = kNone;
    platform::Rect dropped_{};
};

// A dialog over the scene: a background picture, further pictures, and push buttons with a value
// each. While it is there, clicks beside it go nowhere.
//
//     d=RDialog background z
//
// It is a group (OMMultiTrinket); its members are its own. They lie one above its depth.
#pragma once

#include "omlink.h"
#include "ommultitrinket.h"
#include "omtrinketwindow.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

class OMAnimation;
class RHotSpot;
class RPButton;

class RDialog final : public OMMultiTrinket {
  public:
    static const OMSClass kClass;

    // Slots of its members.
    static constexpr int kHotSpotSlot = 1; ///< covers the window
    static constexpr int kBackgroundSlot = 2;
    static constexpr int kGraphicSlot = 3;
    static constexpr int kButtonSlot = 4;

    /// Without such a resource it has no background.
    RDialog(OMTrinketWindow& window, int backgroundId, int z);
    ~RDialog() override;

    [[nodiscard]] static std::unique_ptr<OMScriptableObject> createFromScript();

    /// None.
    [[nodiscard]] std::unique_ptr<OMScriptableObject> duplicate() override { return nullptr; }

    /// Called with a button's value after the event, unless that was the end of the dialog.
    void setButtonLink(OMLinkTo<void(int value)> link) { buttonLink_ = std::move(link); }

    // For scripts.

    /// The value of the button pressed last; empty before.
    [[nodiscard]] std::string selectedButton() const;
    // At the place embedded in the resource; nothing without such a resource.
    void addButton(int id, int value);
    void addGraphic(int id);

  private:
    void onRetire() override;
    void addPicture(int id, int slot);
    void buttonPressed(int value);

    std::optional<int> selected_;
    OMLinkTo<void(int)> buttonLink_;
    std::optional<OMTrinketInput::ClickTaker> clicks_;
    std::unique_ptr<RHotSpot> hotSpot_;
    std::vector<std::unique_ptr<OMAnimation>> pictures_;
    std::vector<std::unique_ptr<RPButton>> buttons_;
};

#include "rdialog.h"

#include "omao.h"
#include "omid.h"
#include "omsbirths.h"
#include "omsclass.h"
#include "rhotspot.h"
#include "rpbutton.h"

namespace {

constexpr OMSEntry kRDialogVocabulary[] = {
    oms::readOnly<&RDialog::selectedButton>("selectedButton",
                                            "value of the button pressed last; empty before"),
    oms::method<&RDialog::addButton>("addButton", "animation value"),
    oms::method<&RDialog::addGraphic>("addGraphic", "animation"),
    oms::event("buttonPressed", "a button was clicked"),
};

constexpr int kDepthOfMembers = 1; ///< above the dialog's

/// At its embedded place; null, after a failed check where nothing can be located, without.
template <class Class>
std::unique_ptr<Class> createEmbedded(int id, OMTrinketWindow& window) {
    std::shared_ptr<AOImage> image = AOImage::canLocate() ? AOImage::locate(id) : nullptr;
    if (!image) return nullptr;
    auto made = std::make_unique<Class>(window, std::move(image), id, OMAnimation::kEmbedded,
                                        OMAnimation::kEmbedded);
    OMSBirths births;
    births.add(*made, Class::kClass);
    return made;
}

} // namespace

const OMSClass RDialog::kClass{"RDialog", &OMMultiTrinket::kClass, kRDialogVocabulary,
                               &RDialog::createFromScript, "animation z"};

RDialog::RDialog(OMTrinketWindow& window, int backgroundId, int z)
    : OMMultiTrinket(window), clicks_(std::in_place, window, nullptr) {
    OMSBirths births;
    setMovable(false); // or its buttons would take it along
    setZ(z);
    hotSpot_ = std::make_unique<RHotSpot>(window, window.backBuffer().bounds());
    births.add(*hotSpot_, RHotSpot::kClass);
    add(*hotSpot_, kHotSpotSlot, kDepthOfMembers); // first, so that it lies below the others
    addPicture(backgroundId, kBackgroundSlot);
}

RDialog::~RDialog() { retire(); }

void RDialog::onRetire() {
    for (const auto& button : buttons_) button->retire();
    for (const auto& picture : pictures_) picture->retire();
    hotSpot_->retire();
    clicks_.reset();
    OMMultiTrinket::onRetire();
}

std::unique_ptr<OMScriptableObject> RDialog::createFromScript() {
    OMTrinketWindow* window = OMTrinketWindow::mainWindow();
    if (!window) return nullptr;
    const int background = OMNarrowId(OMSArguments::global().nextInteger());
    const int z = OMSArguments::global().nextInteger();
    return std::make_unique<RDialog>(*window, background, z);
}

std::string RDialog::selectedButton() const {
    return selected_ ? oms::toText(*selected_) : std::string();
}

void RDialog::addPicture(int id, int slot) {
    if (!window()) return;
    std::unique_ptr<OMAnimation> picture = createEmbedded<OMAnimation>(id, *window());
    if (!picture) return;
    add(*picture, slot, kDepthOfMembers);
    pictures_.push_back(std::move(picture));
}

void RDialog::addGraphic(int id) {
    const OMSBirths births;
    const std::size_t before = pictures_.size();
    addPicture(id, kGraphicSlot);
    // Not by its touchiness, which follows that of the dialog.
    if (pictures_.size() > before)
        pictures_.back()->setEventMask(pictures_.back()->eventMask() | kIgnoreMouseDown);
}

void RDialog::addButton(int id, int value) {
    if (!window()) return;
    const OMSBirths births;
    std::unique_ptr<RPButton> button = createEmbedded<RPButton>(id, *window());
    if (!button) return;
    button->setHitLink([this, value] { buttonPressed(value); });
    add(*button, kButtonSlot, kDepthOfMembers);
    buttons_.push_back(std::move(button));
}

void RDialog::buttonPressed(int value) {
    selected_ = value;
    fireEvent("buttonPressed");
    if (isRetired()) return;
    const auto link = buttonLink_;
    link(value);
}

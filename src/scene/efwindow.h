// The game's window: a trinket window that covers the change of scenes. The screen goes black and
// is not updated while the next scene is made, its background and palette are installed, and then
// it is shown in one step.
#pragma once

#include "aobackground.h"
#include "aodeep.h"
#include "omtrinketwindow.h"
#include "scene/scenepause.h"

#include <memory>

class OMIStream;

class EffectsWindow : public OMTrinketWindow {
  public:
    using Locator = OMLinkTo<std::unique_ptr<OMIStream>(int id)>;
    using PaletteFilter = OMLinkTo<void(OMPalette&)>;

    static constexpr int kWidth = 640;
    static constexpr int kHeight = 480;

    /// The window's upper left corner in screen pixels. `pause` lasts as long as a transition.
    EffectsWindow(platform::Point corner, std::string_view title, ScenePause* pause = nullptr);
    /// The colours that animations know on deeper screens go with it.
    ~EffectsWindow() override { AOPaletteRecord::setCurrent(nullptr); }

    // Where pictures (`ASEQ`) and palettes (`RRGB`) come from, and who may change the colours
    // before they are set.
    void setBackgroundLocator(Locator locator) { backgroundLocator_ = std::move(locator); }
    void setPaletteLocator(Locator locator) { paletteLocator_ = std::move(locator); }
    void setPaletteFilter(PaletteFilter filter) { paletteFilter_ = std::move(filter); }
    /// What the filter makes of colours; all palettes of the game go through it.
    void filterPalette(OMPalette& colors) const { paletteFilter_(colors); }

    /// Blackens the window and stops showing; nobody hears clicks until the display or the end of
    /// the transition.
    void goToBlack();
    /// Shows everything, also while the window rests; input that waits is dropped.
    void displayScreen();
    /// As displayScreen, but only what changes from now on is shown.
    void endTransitionQuickly();

    /// The wait cursor, goToBlack, then the pause of the scene.
    void startTransition();
    /// Ends with displayScreen or quickly, then ends the pause and puts the cursor back.
    void endTransition(bool quickly);

    /// Whoever began them is gone: ends all transitions that are under way, and shows everything.
    void abandonTransitions();

    /// Makes everything composed so far part of the background picture.
    void freezeScreen();

    /// Installs a background picture and a palette; true when the picture was found. Without the
    /// palette the old colours stay.
    bool restorePalette(int imageId, int paletteId);
    /// In addition attaches a copy of `object` to the background when the picture was found.
    bool restorePalette(int imageId, int paletteId, OMScriptableObject& object);

    /// While disabled, a double click counts as a press.
    void setDoubleClicksEnabled(bool enabled) { doubleClicksDisabled_ = !enabled; }

    void doubleClick(platform::Point point) override;
    /// Without effect while the wait cursor of a transition is shown.
    void showCursor(int id) override;

  protected:
    /// What comes during a transition is shown when it ends.
    void putCursor(std::shared_ptr<const OMCursor> cursor) override;
    /// Not while the window is black.
    [[nodiscard]] bool hearsPresses() const override { return isPresenting(); }

  private:
    [[nodiscard]] AOBackground* picture();
    void update();
    void setBackgroundDeaf(bool deaf);
    void installPicture(std::shared_ptr<const AOImage> image);
    void installPalette(int id);
    void showWaitCursor();
    void restoreCursor();

    Locator backgroundLocator_;
    Locator paletteLocator_;
    PaletteFilter paletteFilter_;
    bool doubleClicksDisabled_ = false;
    bool updating_ = false;                       ///< in a cycle of `update`
    ScenePause* pause_;                           ///< null: none
    std::shared_ptr<const OMCursor> savedCursor_; ///< while the wait cursor is shown
};

/// The game's filter: lifts entries 10 to 245 (formats/picture/palette.h) and leaves the others.
void RLiftPalette(OMPalette& colors);

// The trinket window: the list of trinkets in the order of their depth, the back buffer that they
// are composed in, and the bookkeeping of what must be composed and shown anew. The way of mouse
// and keys to the trinkets is its OMTrinketInput.
//
// Redrawing is one cycle in the idle time of the main loop: trinkets step, the areas that changed
// are painted from the bottom up into the back buffer, and only those are copied to the screen. A
// window that flips pages has its back buffer behind the screen instead: the two change places, so
// there are two pages, each with its own record of what it has not caught up with.
#pragma once

#include "ommemcanvas.h"
#include "omtbackground.h"
#include "omtrinket.h"
#include "omtrinketinput.h"
#include "omwindow.h"
#include "omwndcanvas.h"
#include "stampcanvas.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

class OMTCursor;

class OMTrinketWindow : public OMWindow {
  public:
    using MouseLink = OMTrinket::MouseLink;
    using CursorLocator = OMLinkTo<std::shared_ptr<const OMCursor>(int id)>;

    static constexpr int kLowestDepth = -32767; ///< what is below is neither drawn nor hit at first

    /// How what was composed gets on the screen.
    enum class Showing : std::uint8_t {
        Copying,
        Flipping, ///< by flipping two pages where the screen can, else as Copying
    };

    using Input = OMTrinketInput::Kind;

    /// Called at fixed points of the idle cycle, and before input is handled.
    struct Hooks {
        OMLink first;
        OMLink beforeAnimation;
        OMLink afterAnimation;
        OMLink beforeTrinkets; ///< after the background was painted
        OMLink afterTrinkets;
        OMLink afterPresent;
        OMLink last;
        OMLinkTo<void(Input)> input;
    };

    /// Told of every move of the pointer, with the cursor that hears it.
    struct CursorMove {
        MouseLink link;
        const OMTCursor* instance = nullptr;
    };

    /// While there is any, somebody else draws straight onto the window's canvas: the window has no
    /// idle cycles by itself and the mouse cursor is hidden. What it presents all the same is to be
    /// drawn over again. May outlive the window.
    class Rest {
      public:
        explicit Rest(OMTrinketWindow& window);
        ~Rest();
        Rest& operator=(Rest&&) = delete;

      private:
        OMTrinketWindow& window_;
        std::weak_ptr<int> count_; ///< goes with the window
    };

    /// `rectangle` in screen pixels; the background may be null. The first window that is made
    /// becomes the main window. Only one window flips, in exclusive mode and from the screen's
    /// corner on. Fatal without an application.
    OMTrinketWindow(const platform::Rect& rectangle, std::unique_ptr<OMTBackground> background,
                    std::string_view title, Showing showing = Showing::Copying);
    ~OMTrinketWindow() override;

    /// Null when there is none.
    [[nodiscard]] static OMTrinketWindow* mainWindow() { return main_; }

    [[nodiscard]] OMWndCanvas& canvas() { return canvas_; }
    [[nodiscard]] OMMemCanvas& backBuffer() { return backBuffer_; }
    [[nodiscard]] OMTBackground* background() { return background_.get(); }
    [[nodiscard]] Hooks& hooks() { return hooks_; }

    // Trinkets.

    /// The topmost trinket for which the predicate holds, or null.
    template <class Predicate>
    [[nodiscard]] OMTrinket* findTrinket(Predicate predicate) const {
        return trinkets_.findLast(predicate);
    }
    [[nodiscard]] std::size_t trinketCount() const { return trinkets_.count(); }
    [[nodiscard]] int minimumDepth() const { return minimumDepth_; }
    void setMinimumDepth(int z);
    [[nodiscard]] std::uint32_t defaultEventMask() const { return defaultEventMask_; }
    void setDefaultEventMask(std::uint32_t mask) { defaultEventMask_ = mask; }

    // Redrawing.

    /// Destroys the old background.
    void setBackground(std::unique_ptr<OMTBackground> background);
    /// Takes entries 10 to 245 over. With `reset`, an 8-bit window whose colours change is
    /// blackened first, so that the picture is never seen in the wrong colours.
    void setPalette(const OMPalette& colors, bool reset);
    /// Composes and shows all anew.
    void invalidateAll();
    /// Composes a rectangle anew.
    void invalidate(const platform::Rect& rectangle);
    /// What the next composition covers at least.
    [[nodiscard]] const OMRegion& dirtyRegion() const { return pages_[page_].compose; }
    /// Paints what is dirty into the back buffer.
    void compose();
    /// Shows what was composed since the last time. A screen that was lost is taken back first;
    /// while another program has it, nothing is shown.
    void present();
    /// Takes a lost screen back, to be composed and shown anew in the next cycle. True when it had
    /// been lost and is there again.
    bool restoreScreen();
    [[nodiscard]] bool isFlipping() const { return pagesInUse_ > 1; }
    /// Whether somebody else draws on its canvas; see Rest.
    [[nodiscard]] bool isResting() const { return *rests_ > 0; }
    /// How often the window has shown something; wraps.
    [[nodiscard]] std::uint32_t presentations() const { return presentations_; }

    [[nodiscard]] bool isPresenting() const { return presenting_; }
    /// While off, what is composed is not shown; the next cycle after switching on shows it.
    void setPresenting(bool on) {
        presenting_ = on;
        needRedraw();
    }
    /// Presents in every cycle even while presenting is off.
    void setPresentAlways(bool always) { presentAlways_ = always; }
    void setBackgroundPainting(bool on) { backgroundPainting_ = on; }
    /// Diagnosis: areas about to be shown are coloured for that many milliseconds; 0 is off.
    [[nodiscard]] int flashDelay() const { return flashDelayMs_; }
    void setFlashDelay(int ms) { flashDelayMs_ = ms; }

    // The background picture, and stamps in it.

    /// Paints into the background for good, also over stamps. `rectangle` is what the painter
    /// covers. Nothing happens without a background picture.
    void paintIntoBackground(const platform::Rect& rectangle, const OMStampPainter& painter);
    /// Paints a trinket's picture into the background, under all trinkets, so that it can be taken
    /// out again. It stays when the trinket is gone. False without a background picture there.
    bool stamp(const OMTrinket& trinket, const platform::Rect& rectangle,
               const OMStampPainter& painter);
    /// Takes the trinket's latest stamp out again; false when it has none.
    bool unstamp(const OMTrinket& trinket);
    /// They become part of the picture, or went with it. A new background does it itself; who gives
    /// the background another picture calls this.
    void dropStamps() { stamps_.clear(); }
    [[nodiscard]] std::size_t stampCount() const { return stamps_.count(); }

    // Input.

    /// What the mouse and the keys do in it.
    [[nodiscard]] OMTrinketInput& input() { return input_; }
    [[nodiscard]] const OMTrinketInput& input() const { return input_; }

    // Cursors, by number.

    /// Where they come from, installed by the game at start-up. Without it there are only the
    /// platform's own.
    static void setCursorLocator(CursorLocator locator) { cursorLocator_ = std::move(locator); }
    [[nodiscard]] static bool hasCursorLocator() { return static_cast<bool>(cursorLocator_); }
    /// The arrow when there is no such cursor; never null.
    [[nodiscard]] static std::shared_ptr<const OMCursor> findCursor(int id);
    /// Shows the cursor of a trinket or of the game; without effect while an OMTCursor is current.
    virtual void showCursor(int id);
    /// The OMTCursor that is current, or null, and the link that tells it of moves.
    [[nodiscard]] OMTCursor* managedCursor() const { return managedCursor_; }
    [[nodiscard]] CursorMove& cursorMove() { return cursorMove_; }

    // The time of animations, in milliseconds.

    [[nodiscard]] std::uint32_t clock() const;
    void resetClock();
    void beginPause() { pausing_ = true; }
    /// Without effect unless a pause has begun.
    void addPauseTime(std::uint32_t ms);
    void endPause() { pausing_ = false; }

    // Called by the application.

    void mouseDown(platform::Point point) override { input_.mouseDown(point); }
    void mouseUp(platform::Point point) override { input_.mouseUp(point); }
    /// Lets go of what is held. Who has the mouse hears of it in the next idle time.
    void mouseReleaseLost() override { input_.mouseReleaseLost(); }
    void mouseMove(platform::Point point) override { input_.mouseMove(point); }
    void doubleClick(platform::Point point) override { input_.doubleClick(point); }
    void key(const platform::KeyPress& press) override { input_.key(press); }
    void expose() override;
    void idle() override;

  protected:
    /// An idle cycle, also while the window rests.
    void cycle();
    /// What every cursor goes through on its way to the screen.
    virtual void putCursor(std::shared_ptr<const OMCursor> cursor);
    /// Whether presses and double clicks go to trinkets, background and default links.
    [[nodiscard]] virtual bool hearsPresses() const { return true; }

  private:
    friend class OMTCursor;
    friend class OMTrinket;
    friend class OMTrinketInput;

    struct Page {
        OMRegion compose; ///< must be composed anew in the back buffer
        OMRegion present; ///< was composed but not yet shown
        /// What the background painted on the other page beyond that page's dirty region.
        OMRegion overpainted;
    };

    // For the trinkets.
    void add(OMTrinket& trinket);
    void remove(OMTrinket& trinket);
    void resort(OMTrinket& trinket);
    [[nodiscard]] int indexOf(const OMTrinket& trinket) const;
    void needRedraw() { needsRedraw_ = true; }
    void addDirty(std::size_t page, const OMRegion& region);
    void addUnshown(const platform::Rect& rectangle);
    void wake();
    void stepTrinkets();
    void collectChanges();
    void paintBackground();
    void paintTrinkets();
    [[nodiscard]] OMMemCanvas* backgroundPicture();
    void countFrame();
    void copyToScreen(const OMRegion& region);
    void flipPages();
    [[nodiscard]] std::size_t nextPage() const { return (page_ + 1) % kOMPages; }
    void drawOnScreen(const OMRegion& region, int index);
    void flash(const OMRegion& region);

    static OMTrinketWindow* main_;
    static CursorLocator cursorLocator_;

    OMWndCanvas canvas_;
    OMMemCanvas backBuffer_;
    std::unique_ptr<OMTBackground> background_;
    StampList stamps_;
    OMList<OMTrinket> trinkets_; ///< ascending z
    Hooks hooks_;

    std::array<Page, kOMPages> pages_;
    std::size_t pagesInUse_ = 1; ///< each catches up with every change
    std::size_t page_ = 0;       ///< the one that is composed now
    std::uint32_t cycles_ = 0;   ///< in which trinkets stepped
    bool needsRedraw_ = true;
    bool backgroundPainting_ = true;
    bool presenting_ = true;
    bool presentAlways_ = false;
    std::shared_ptr<int> rests_ = std::make_shared<int>(0); ///< how many there are
    int flashDelayMs_ = 0;
    int minimumDepth_ = kLowestDepth;
    std::uint32_t defaultEventMask_ = 0;
    std::uint32_t presentations_ = 0;
    long frames_ = 0; ///< shown since the last report
    std::uint32_t lastReportMs_;

    OMTCursor* managedCursor_ = nullptr;
    CursorMove cursorMove_;
    OMTrinketInput input_{*this};

    std::uint32_t timeBase_;
    std::uint32_t pauseMs_ = 0;
    bool pausing_ = false;
};

/// What `setAOCursor` of scripts does: sets a trinket's cursors to those that the locator has for
/// the numbers, the arrow where it has none, and shows the one that belongs under the pointer.
/// Without `grab` both are the same, without `normal` they are the game's defaults. A failed check
/// with `message`, and no effect, without a locator.
void OMSetCursors(OMTrinket& trinket, std::optional<int> normal, std::optional<int> grab,
                  const char* message);

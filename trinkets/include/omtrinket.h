// A trinket: an object that is seen in a trinket window. It has a place, a bounding rectangle, a
// depth `z` (larger is nearer), and paints itself into the window's back buffer.
//
// A trinket never paints when it changes. It notes what it covered before, page by page, and the
// window composes anew what that and its new place make dirty, in its next idle time.
//
// The window lists trinkets but does not own them. A trinket that outlives its window stays usable
// but is seen nowhere.
#pragma once

#include "omlink.h"
#include "omregion.h"
#include "omscrptb.h"

#include "platform/events.h"
#include "platform/geometry.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class OMMemCanvas;
class OMMultiTrinket;
class OMTrinketWindow;

/// How many pages a window can flip between; dirty areas are kept for each.
inline constexpr std::size_t kOMPages = 2;

class OMTrinket : public OMScriptableObject {
  public:
    static const OMSClass kClass;

    using MouseLink = OMLinkTo<void(platform::Point)>; ///< window pixels

    /// What a changed trinket repaints.
    enum class UpdateStyle : std::uint8_t {
        Regions,   ///< exactly what it covered before and what it covers now
        Rectangle, ///< the bounding box of both
        Nothing,   ///< it has no picture of its own
    };
    enum class MouseState : std::uint8_t {
        Held = 0, ///< by a pressed button
        Idle = 1,
        Captured = 2,
        CapturedFlying = 3, ///< captured, while the fly-over of all trinkets goes on
    };
    /// Selectors of `setAttribute`.
    enum class Attribute : std::uint8_t { X, Y, XY, Z, Visible, Movable, Touchy };

    // Bits of the event mask: what a trinket does not hear. One that ignores the mouse button going
    // down is not found under the pointer at all.
    static constexpr std::uint32_t kIgnoreMouseDown = 0x01;
    static constexpr std::uint32_t kIgnoreMouseUp = 0x02;
    static constexpr std::uint32_t kIgnoreMouseMove = 0x04;
    static constexpr std::uint32_t kIgnoreDoubleClick = 0x08;
    static constexpr std::uint32_t kIgnoreKeys = 0x20;
    static constexpr std::uint32_t kNoFlyOn = 0x80;
    static constexpr std::uint32_t kNoFlyOff = 0x100;

    /// Depths of the reserved layers that lie above all scenes.
    static constexpr std::array<int, 3> kTopLayers{32765, 32766, 32767};
    /// Places farther from the window's corner than this are moved to this distance (pixels).
    static constexpr int kFarthest = 1 << 28;
    static constexpr int nearestPlace(std::int64_t pixels) {
        return static_cast<int>(std::clamp<std::int64_t>(pixels, -kFarthest, kFarthest));
    }

    /// A notification for each thing that the owner of a trinket may want to hear of. An owner that
    /// is destroyed before the trinket takes its links back.
    struct Links {
        OMLink focusLost;
        MouseLink mouseDown;
        MouseLink mouseUp;
        MouseLink mouseMove;
        MouseLink doubleClick;
        MouseLink beginDrag;
        OMLinkTo<void(int dx, int dy)> drag; ///< after every step of a drag
        MouseLink drop;
        OMLink flyOn;
        OMLink flyOff;
        OMLinkTo<void(const platform::KeyPress&)> key;
    };

    /// Lines at which a dropped trinket comes to rest, if it is movable. A step of 0 leaves its
    /// axis alone.
    struct SnapGrid {
        int stepX = 0;
        int stepY = 0;
        platform::Point origin{};
    };

    /// Enters the window's list at depth 0, above all others there.
    OMTrinket(OMTrinketWindow& window, UpdateStyle style, const platform::Rect& bounds);
    ~OMTrinket() override { retire(); }

    // Queries.

    /// Null once the window is gone, or the trinket is.
    [[nodiscard]] OMTrinketWindow* window() const { return window_; }
    /// What it covers now, in window pixels.
    [[nodiscard]] virtual platform::Rect boundingRectangle() const { return bounds_; }
    [[nodiscard]] int x() const { return boundingRectangle().left; }
    [[nodiscard]] int y() const { return boundingRectangle().top; }
    [[nodiscard]] int z() const { return z_; }
    /// The depth so many above its own, or the last one that there is.
    [[nodiscard]] int depthAbove(std::int64_t depth) const;
    [[nodiscard]] bool isVisible() const { return visible_; }
    [[nodiscard]] bool isMovable() const { return movable_; }
    [[nodiscard]] bool isTouchy() const { return touchy_; }
    [[nodiscard]] const std::string& tag() const { return tag_; }
    [[nodiscard]] std::uint32_t eventMask() const { return eventMask_; }
    [[nodiscard]] MouseState mouseState() const { return mouseState_; }
    [[nodiscard]] int cursor() const { return cursor_; }
    [[nodiscard]] int grabCursor() const { return grabCursor_; }
    /// Visible and not below the window's minimum depth.
    [[nodiscard]] bool isShown() const;
    /// Position in the window's list, counted from the bottom; -1 when it is not listed.
    [[nodiscard]] int indexInWindow() const;
    /// The hit test proper; positions in window pixels.
    [[nodiscard]] virtual bool containsPoint(platform::Point point) const;
    /// The group that it moves with, or null.
    [[nodiscard]] OMMultiTrinket* group() const { return group_; }
    /// Whether the bounding rectangles overlap.
    [[nodiscard]] bool intersects(const OMTrinket& other) const;

    // For who plays without a mouse.

    /// What its class does with a press of the button, besides what scripts and owners hear of it.
    enum class HandUse : std::uint8_t {
        None,
        Click, ///< something, by a press and a release
        Drag,  ///< something, by what is between them
    };
    [[nodiscard]] virtual HandUse handUse() const { return HandUse::None; }
    /// Its parts that are clicked each by itself, in window pixels.
    [[nodiscard]] virtual std::vector<platform::Rect> clickPlaces() const;
    /// Where it would lie when it is let go at places that mean something, in window pixels; its
    /// place now need not be one of them. None: nobody knows, it may be anywhere.
    [[nodiscard]] virtual std::optional<std::vector<platform::Rect>> dropPlaces() const {
        return std::nullopt;
    }

    // Changes. All go through setAttribute; `second` is y for XY.

    virtual void setAttribute(Attribute which, int value, int second = 0);
    void setX(int x) { setAttribute(Attribute::X, x); }
    void setY(int y) { setAttribute(Attribute::Y, y); }
    void place(int x, int y) { setAttribute(Attribute::XY, x, y); }
    void offset(int dx, int dy);
    void setZ(int z) { setAttribute(Attribute::Z, z); }
    void setVisible(bool visible) { setAttribute(Attribute::Visible, visible); }
    void setMovable(bool movable) { setAttribute(Attribute::Movable, movable); }
    void setTouchy(bool touchy) { setAttribute(Attribute::Touchy, touchy); }
    void setTag(const std::string& tag) { tag_ = tag; }
    /// Layer 0, 1 or 2 of the reserved ones.
    void setTopLayer(std::size_t layer) { setZ(kTopLayers.at(layer)); }
    void setEventMask(std::uint32_t mask) { eventMask_ = mask; }
    /// Cursors by number (see OMTrinketWindow::setCursorLocator), shown while the pointer is over
    /// it and while it is held.
    virtual void setCursors(int normal, int grab);
    [[nodiscard]] Links& links() { return links_; }

    // Repainting.

    /// To be called before a change of what is seen: what it covers now will be painted again.
    void markChanged();
    /// The whole of it is painted again, wherever it is then.
    void markWhole();
    /// Has the window compose its rectangle anew.
    void invalidate();
    /// Paints what of it lies in `clip`; the window calls it from the bottom up.
    virtual void paint(OMMemCanvas&, const OMRegion& /*clip*/) {}

    /// Called in every idle cycle of the window with its clock in milliseconds.
    virtual void step(std::uint32_t /*clock*/) {}

    // What the window tells; an heir that overrides one calls its base, which calls the link, or
    // hands on to the group that it belongs to. A trinket may be destroyed in any of them.

    virtual void onMouseDown(platform::Point point);
    virtual void onMouseUp(platform::Point point);
    virtual void onMouseMove(platform::Point point);
    /// The release of the button never came; what was held is not any more, and who has captured
    /// the mouse gives it back.
    virtual void onReleaseLost() {}
    virtual void onDoubleClick(platform::Point point);
    virtual void onBeginDrag(platform::Point point);
    /// Moves it with the mouse, inside its corral. `dx` and `dy` become what it really moved.
    virtual void dragBy(int& dx, int& dy);
    virtual void onDrop(platform::Point point);
    virtual void onFlyOn();
    virtual void onFlyOff();
    virtual void onKey(const platform::KeyPress& press);
    virtual void onFocusLost();
    /// Shows its cursor.
    virtual void setCursor();

    /// All mouse messages go to this trinket until it is released, wherever the pointer is.
    void setMouseCapture(bool on, bool withFlyOver = false);

    // Dragging.

    [[nodiscard]] bool isCorralled() const { return corralled_; }
    void setCorralled(bool corralled) { corralled_ = corralled; }
    [[nodiscard]] const platform::Rect& corral() const { return corral_; }
    void setCorral(const platform::Rect& corral) { corral_ = corral; }
    [[nodiscard]] const SnapGrid& snapGrid() const { return snapGrid_; }
    void setSnapGrid(const SnapGrid& grid) { snapGrid_ = grid; }
    /// Drops snap only where the trinket meets this rectangle, which moves along with it; while it
    /// is empty they snap everywhere.
    void setDragBounds(const platform::Rect& bounds) { dragBounds_ = bounds; }
    [[nodiscard]] const platform::Rect& dragBounds() const { return dragBounds_; }
    void clearOvershoot();

    /// The switch for all corrals at once; on at first.
    static void setCorralNormalization(bool on) { corralNormalization_ = on; }

    // What new trinkets begin with.
    static constexpr int defaultCursor = -1;
    static constexpr int defaultGrabCursor = -1;

  protected:
    void onRetire() override;
    /// A copy lies in the same window, idle, above the others of its depth.
    OMTrinket(const OMTrinket& other);

    /// Replaces the rectangle without marking anything; see markChanged.
    void setBounds(const platform::Rect& bounds) { bounds_ = bounds; }

  private:
    friend class OMMultiTrinket; // takes trinkets in
    friend class OMTrinketInput;
    friend class OMTrinketWindow;

    enum class Change : std::uint8_t { None, Changed, Whole };
    /// What the window's page still shows of the trinket.
    struct PageState {
        Change change = Change::None;
        bool painted = false;
        OMRegion before; ///< what it covered there, when that has changed since
    };

    void enterWindow();
    /// For good: its group keeps what it has of the mouse.
    void leaveGroup();
    void moveTo(std::int64_t x, std::int64_t y);
    void changeDepth(int z);
    void changeVisibility(bool visible);
    void reappear();
    /// Above all others of its depth.
    void comeForward();
    /// Has the pages composed anew where they show it.
    void erase();
    /// Adds what must be painted again to `dirty`; from then on the page is up to date.
    void takeChanges(std::size_t page, OMRegion& dirty);
    void snap();

    static inline bool corralNormalization_ = true;

    OMTrinketWindow* window_;
    OMMultiTrinket* group_ = nullptr;
    UpdateStyle updateStyle_;
    std::uint32_t steppedIn_ = 0; ///< the window's cycle
    std::array<PageState, kOMPages> pages_;
    MouseState mouseState_ = MouseState::Idle;
    std::uint32_t eventMask_;
    platform::Rect bounds_;
    int z_ = 0;
    bool visible_ = true;
    bool movable_ = true;
    bool touchy_ = true;
    std::string tag_;
    int cursor_ = defaultCursor;
    int grabCursor_ = defaultGrabCursor;
    Links links_;

    bool corralled_ = true;
    platform::Rect corral_;
    platform::Rect dragBounds_{};
    SnapGrid snapGrid_;
    /// Where the mouse would have put it beyond the edge of the corral, while it waits there.
    std::optional<int> overshootX_;
    std::optional<int> overshootY_;
};

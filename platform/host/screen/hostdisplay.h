// The screen in two copies, for every back end: the one that the program draws on, and the one that
// a person sees, which follows only where it was told to. The palette belongs to what is seen. A
// back end adds where it is really shown.
#pragma once

#include "platform/cursor.h"
#include "platform/display.h"
#include "platform/host/screen/calmpicture.h"

#include <array>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace platform {

class HostDisplay : public Display {
  public:
    static constexpr int kMaxBacks = 8;     ///< surfaces behind the screen
    static constexpr int kMaxSide = 0x4000; ///< pixels of an exclusive screen

    /// What can be done for exclusive screens.
    enum class Driver : std::uint8_t {
        Whole,
        FixedMode, ///< no screen of another size or depth
        None,
    };

    /// Starts black, with the fixed colours in its palette. Sizes below 1 count as 1, depths
    /// between those that surfaces have are rounded up.
    explicit HostDisplay(const ScreenMode& mode);

    [[nodiscard]] ScreenMode mode() const override { return mode_; }
    [[nodiscard]] Surface& screen() override { return drawn_; }
    void present(const Rect& area) override;
    void setPalette(int first, std::span<const Rgb> colours) override;
    [[nodiscard]] const std::array<Rgb, kPaletteSize>& palette() const override { return palette_; }

    /// Whole at first.
    void setDriver(Driver driver) { driver_ = driver; }
    [[nodiscard]] bool hasDriver() const override { return driver_ != Driver::None; }
    [[nodiscard]] bool canBeExclusive(const ScreenMode& mode) const override;
    bool enterExclusive(const ScreenMode& mode) override;
    void leaveExclusive() override;
    [[nodiscard]] bool isExclusive() const override { return desktop_.has_value(); }
    bool makeFlipChain(int backs) override;
    [[nodiscard]] Surface* back() override { return backs_.empty() ? nullptr : &backs_.front(); }
    FlipResult flip() override;
    [[nodiscard]] bool isLost() const override { return lost_; }
    bool restore() override;

    // Cursors that have nothing but their number, for back ends that show none.
    [[nodiscard]] std::unique_ptr<Cursor> makeCursor(int id) override;
    [[nodiscard]] std::unique_ptr<Cursor> makeCursor(int id, const CursorImage& image) override;

    void setMark(const std::optional<Mark>& mark) override;

    /// What the program shows, with the mark.
    [[nodiscard]] const Surface& shown() const { return marked_ ? *marked_ : shown_; }

    /// What a person sees of it: the same, but 32 bits deep where the display is calm.
    [[nodiscard]] const Surface& seen() const { return calm_ ? calm_->picture() : shown(); }

    /// Holds still what flashes, or no longer does; at once. Off at first.
    void setCalm(bool on);
    [[nodiscard]] bool isCalm() const { return calm_.has_value(); }
    /// Whether part of what is shown waits until it may be seen.
    [[nodiscard]] bool isBehind() const { return calm_ && calm_->isBehind(); }

    /// Another program got the foreground, or it came back: an exclusive screen is lost then.
    void setInForeground(bool inForeground);

  protected:
    /// Part of what is seen has changed; it is not empty.
    virtual void shownChanged(const Rect&) {}
    /// What is seen has another size, or exclusive mode began or ended.
    virtual void modeChanged() {}

    /// To be called with the time whenever what is shown comes to be seen, and as long as it waits
    /// to be; the part of the calm picture that changed, or empty.
    Rect calmDown(std::uint32_t nowMs);

  private:
    void tellChange(const Rect& part);
    void change(const ScreenMode& mode);
    void blacken();
    /// Draws the mark into what is seen, where there is one.
    void drawMark();

    Driver driver_ = Driver::Whole;
    ScreenMode mode_;
    std::optional<ScreenMode> desktop_; ///< in exclusive mode: what comes back
    Surface drawn_;
    std::vector<Surface> backs_; ///< the next to be shown first
    Surface shown_;
    std::optional<Mark> mark_;
    std::optional<Surface> marked_; ///< what is shown, with the mark over it
    std::array<Rgb, kPaletteSize> palette_;
    std::optional<CalmPicture> calm_;
    bool inForeground_ = true;
    bool lost_ = false;
};

} // namespace platform

// The screen as the program sees it: one rectangle of pixels of a fixed size and depth, with a
// palette when it has 8 bits, whatever the real monitor is.
//
// In exclusive mode the program has the screen for itself, in a size and depth of its own choice,
// and may put surfaces behind it that are shown by flipping. Such a screen can be lost to another
// program: its pixels are gone then, and nothing is shown until it is restored.
#pragma once

#include "platform/geometry.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace platform {

class Cursor;
struct CursorImage;

struct Rgb {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    friend bool operator==(const Rgb&, const Rgb&) = default;
};

inline constexpr int kPaletteSize = 256;
/// Palette entries below kFirstFreeColour and from kFirstHighStaticColour on are fixed.
inline constexpr int kFirstFreeColour = 10;
inline constexpr int kFirstHighStaticColour = 246;

/// The twenty fixed colours at their palette positions (0 to 9 and 246 to 255); the other entries
/// are black.
[[nodiscard]] const std::array<Rgb, kPaletteSize>& staticPalette();

struct ScreenMode {
    int width = 640;
    int height = 480;
    int depth = 8; ///< bits a pixel: 1 to 32; surfaces exist from 8 on
    friend bool operator==(const ScreenMode&, const ScreenMode&) = default;
};

/// A block of pixels, top row first, rows padded to 4 bytes. 16-bit pixels are 5-5-5
/// (0RRRRRGGGGGBBBBB), 24- and 32-bit pixels are stored blue, green, red.
class Surface {
  public:
    /// Width and height at least 1; depth 8, 16, 24 or 32. All pixels start at 0.
    Surface(int width, int height, int depth);

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }
    [[nodiscard]] int depth() const { return depth_; }
    [[nodiscard]] int bytesPerPixel() const { return depth_ / 8; }
    [[nodiscard]] std::size_t stride() const { return stride_; } ///< bytes from row to row
    [[nodiscard]] Rect bounds() const { return {0, 0, width_, height_}; }

    [[nodiscard]] std::uint8_t* row(int y) { return pixels_.data() + stride_ * index(y); }
    [[nodiscard]] const std::uint8_t* row(int y) const {
        return pixels_.data() + stride_ * index(y);
    }

  private:
    static std::size_t index(int y) { return static_cast<std::size_t>(y); }

    int width_;
    int height_;
    int depth_;
    std::size_t stride_;
    std::vector<std::uint8_t> pixels_;
};

enum class FlipResult : std::uint8_t {
    Shown,
    Busy,   ///< the device still draws; try again
    Lost,   ///< restore the screen first
    NoChain ///< there is nothing behind the screen
};

/// A frame around what a key would click, for who plays without a mouse.
struct Mark {
    Rect around;           ///< screen pixels
    bool isBright = false; ///< the one or the other of its two looks, in black and white
    friend bool operator==(const Mark&, const Mark&) = default;
};

class Display {
  public:
    virtual ~Display() = default;

    [[nodiscard]] virtual ScreenMode mode() const = 0;

    /// The pixels that the program draws; they become visible by `present`. Owned by the display.
    /// Its depth is mode().depth, or 8 when that is less.
    [[nodiscard]] virtual Surface& screen() = 0;

    /// Shows the part `area` of the screen (clipped to it).
    virtual void present(const Rect& area) = 0;

    /// Sets palette entries from `first` on. The fixed entries keep their colours. Takes effect at
    /// once on what is shown; without effect on screens deeper than 8 bits.
    virtual void setPalette(int first, std::span<const Rgb> colours) = 0;
    [[nodiscard]] virtual const std::array<Rgb, kPaletteSize>& palette() const = 0;

    /// Draws the mark over all that a person sees, in place of the one before; the pixels of
    /// `screen` stay as they are. Without one there is none.
    virtual void setMark(const std::optional<Mark>& mark) = 0;

    // Exclusive mode. Entering and leaving it make a new, black screen with the fixed colours.

    /// Whether there is a driver for exclusive screens at all.
    [[nodiscard]] virtual bool hasDriver() const = 0;
    /// Whether the screen can have that size and depth in exclusive mode.
    [[nodiscard]] virtual bool canBeExclusive(const ScreenMode& mode) const = 0;
    /// False, and nothing changes, when it cannot.
    virtual bool enterExclusive(const ScreenMode& mode) = 0;
    /// Back to the screen that was there before; without effect outside of exclusive mode.
    virtual void leaveExclusive() = 0;
    [[nodiscard]] virtual bool isExclusive() const = 0;

    /// Puts `backs` black surfaces behind the screen, in place of earlier ones. False outside of
    /// exclusive mode.
    virtual bool makeFlipChain(int backs) = 0;
    /// The surface that the next flip shows; null when there is none behind the screen.
    [[nodiscard]] virtual Surface* back() = 0;
    /// The screen goes behind all others, the next surface becomes the screen and is shown whole.
    virtual FlipResult flip() = 0;
    [[nodiscard]] virtual bool isLost() const = 0;
    /// Takes a lost screen and what is behind it back, all black; false while another program still
    /// has it.
    virtual bool restore() = 0;

    /// Title of the main window, Latin-1.
    virtual void setTitle(std::string_view title) = 0;

    // Cursors, see cursor.h.

    /// One of the platform's own: -1 arrow, -2 wait, -3 text beam, -4 cross; others are arrows, and
    /// so is one that the machine does not have. Never null.
    [[nodiscard]] virtual std::unique_ptr<Cursor> makeCursor(int id) = 0;
    /// A picture, known as `id`. Null when no cursor can be made of it.
    [[nodiscard]] virtual std::unique_ptr<Cursor> makeCursor(int id, const CursorImage& image) = 0;
    /// Shows one that this display made.
    virtual void setCursor(const Cursor& cursor) = 0;
    /// Whether the cursor is seen at all; it is at first. One that is set while it is hidden is
    /// seen when it comes back.
    virtual void showCursor(bool on) = 0;
};

} // namespace platform

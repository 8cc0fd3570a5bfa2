// A drawing surface of 8, 16, 24 or 32 bits a pixel with a palette, drawing colours and an optional
// clip region. Its heirs say where the pixels are: OMMemCanvas has its own, OMWndCanvas draws on a
// part of the screen.
//
// Every operation clips to the canvas and to its clip region first, then works on whole rows of the
// rectangles that are left, and at last reports the region it changed, once.
#pragma once

#include "omcolor.h"
#include "ompalette.h"
#include "ompixels.h"
#include "omregion.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

class OMBitmap;
class OMFont;

class OMCanvas {
  public:
    static constexpr int kIndexedDepth = 8; ///< bits; pixels are palette indices

    /// Whether canvases are surfaces of the screen's own depth, or bitmaps of any; the application
    /// decides it when it begins.
    [[nodiscard]] static bool areSurfaces() { return surfaces_; }
    static void setSurfaces(bool on) { surfaces_ = on; }

    virtual ~OMCanvas();
    OMCanvas& operator=(OMCanvas&&) = delete;

    [[nodiscard]] virtual int width() const = 0;
    [[nodiscard]] virtual int height() const = 0;
    [[nodiscard]] platform::Rect bounds() const { return {0, 0, width(), height()}; }
    [[nodiscard]] int depth() const { return depth_; } ///< bits a pixel

    // Colours. The pen fills; a canvas without pen colour fills nothing.

    [[nodiscard]] const std::optional<OMColor>& color() const { return color_; }
    void setColor(const std::optional<OMColor>& color) { color_ = color; }
    void setTextColor(const OMColor& color) { textColor_ = color; }
    void setFrameColor(const OMColor& color) { frameColor_ = color; }

    /// The pixel that shows `color`: with 8 bits its index or the nearest palette entry, else its
    /// components or those of its palette entry packed as the depth wants it.
    [[nodiscard]] std::uint32_t pixelValue(const OMColor& color) const;

    /// Which pixels a keyed copy from this canvas leaves out; none at first.
    void setKeyColor(const std::optional<OMColor>& color) { keyColor_ = color; }

    // Clipping. No clip region means no clipping; an empty one hides everything.

    void setClipRegion(OMRegion region) { clip_ = std::move(region); }
    void removeClipRegion() { clip_.reset(); }

    /// What of `area` an operation may touch: inside the pixels that exist, the clip region and
    /// `extraClip` where present. For those who draw through `pixels`.
    [[nodiscard]] OMRegion clipped(const platform::Rect& area,
                                   const OMRegion* extraClip = nullptr) const;

    // Palette. Entries 0 to 9 and 246 to 255 are the platform's whatever is set.

    /// Takes entries 10 to 245 over (see OMGamePalette) and applies the palette to the device.
    void setPalette(const OMPalette& colors);
    [[nodiscard]] OMPalette getPalette() const { return OMPaletteFromDevice(palette_); }
    /// Black after a failed check unless 0 <= index <= 255.
    [[nodiscard]] OMColor getPaletteEntry(int index) const;
    [[nodiscard]] const OMDevicePalette& devicePalette() const { return palette_; }
    /// Makes the device use this canvas's palette.
    virtual void applyPalette() {}

    // Drawing, in canvas coordinates.

    /// Copies a rectangle of `source`, which may be this canvas, also overlapping. Source and
    /// destination are clipped together and keep their common size. 8-bit pixels become deeper ones
    /// through the source's palette. Refused with a failed check: deeper pixels to 8 bits, and
    /// unclipped copies between memory canvases of different depth.
    void blt(OMCanvas& source, int sourceX, int sourceY, int width, int height, int x, int y,
             OMRasterOp operation = OMRasterOp::SrcCopy, const OMRegion* extraClip = nullptr);

    /// Draws a picture; with transparent drawing on, without its invisible pixels. Refused with a
    /// failed check: deeper pictures on 8 bits.
    void draw(int x, int y, OMBitmap& bitmap);
    void setTransparentDrawing(bool on) { transparentDrawing_ = on; }

    void fillRect(const platform::Rect& area);
    void fillRegion(const OMRegion& region);
    /// The outermost pixels of the area, one pixel wide, in the frame colour.
    void frameRect(const platform::Rect& area);
    void frameRegion(const OMRegion& region);

    // Text

    /// The system font unless another one is set.
    [[nodiscard]] OMFont& font();
    /// Not owned: it must live as long as it is set (see OMTextScope). Null: the system font.
    void setFont(OMFont* font) { font_ = font; }
    /// Draws a line of Latin-1 text in the text colour, its pen at x on the baseline, and leaves
    /// every pixel that is not ink as it was.
    void drawText(int x, int baseline, std::string_view text);

    // Direct access, for those who bring their own pixels.

    [[nodiscard]] virtual OMPixels pixels() = 0;
    /// To be called with what was written through `pixels`; a canvas on the screen shows it now.
    void changed(const OMRegion& region);
    /// Pixels changed since the canvas was made, each as often as it was; what a canvas on the
    /// screen has shown. Tells tests that nothing is repainted in vain.
    [[nodiscard]] std::uint64_t changedPixels() const { return changedPixels_; }

  protected:
    /// 8, 16, 24 or 32 bits; any other depth becomes 8 after a failed check. Fatal without
    /// application.
    explicit OMCanvas(int depth);

    /// The part of `bounds` of which there are pixels.
    [[nodiscard]] virtual platform::Rect visibleArea() const { return bounds(); }
    /// Whether the pixels are the canvas's own and not the screen's.
    [[nodiscard]] virtual bool isMemory() const = 0;
    /// Called after every change, with a region that is not empty.
    virtual void show(const OMRegion&) {}

  private:
    void fill(const OMRegion& region, const OMColor& color);

    static inline bool surfaces_ = false;

    std::optional<OMRegion> clip_;
    int depth_;
    std::optional<OMColor> color_ = OMColor();
    OMColor textColor_;
    OMColor frameColor_;
    std::optional<OMColor> keyColor_;
    bool transparentDrawing_ = false;
    OMDevicePalette palette_;
    OMFont* font_ = nullptr;
    std::unique_ptr<OMFont> systemFont_; ///< made when it is needed
    std::uint64_t changedPixels_ = 0;
};

/// How a canvas draws text for the length of a scope: in a font, null for the system font, and only
/// in a region.
class OMTextScope {
  public:
    OMTextScope(OMCanvas& canvas, OMFont* font, OMRegion clip) : canvas_(canvas) {
        canvas.setFont(font);
        canvas.setClipRegion(std::move(clip));
    }
    ~OMTextScope() {
        canvas_.setFont(nullptr);
        canvas_.removeClipRegion();
    }
    OMTextScope& operator=(OMTextScope&&) = delete;

  private:
    OMCanvas& canvas_;
};

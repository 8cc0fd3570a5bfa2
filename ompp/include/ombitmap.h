// A picture that was read from a BMP file or a `BITMAP` resource, 8, 16, 24 or 32 bits a pixel
// (formats/picture/bitmap.h). Canvases draw it whole or without the pixels of its invisible colour.
#pragma once

#include "omcolor.h"
#include "ompalette.h"
#include "ompixels.h"

#include "platform/display.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

class OMIStream;

class OMBitmap {
  public:
    static constexpr int kInvisibleIndex = 252;            ///< of 8-bit pictures at first
    static constexpr OMColor kInvisibleBlue{0, 0, 0xFF00}; ///< of the others

    /// Reads the picture from where the stream begins; the stream must be a whole one. Null after a
    /// failed check when it is no picture of these kinds, compressed or cut short. Fatal
    /// without application.
    [[nodiscard]] static std::unique_ptr<OMBitmap> createInstance(OMIStream& stream);

    [[nodiscard]] int width() const { return surface_.width(); }
    [[nodiscard]] int height() const { return surface_.height(); }
    [[nodiscard]] int bitsPerPixel() const { return surface_.depth(); }

    /// Whether the picture has a colour table; it is copied into `palette` then. Entries 0 to 9 and
    /// 246 to 255 are the platform's.
    bool getPalette(OMPalette& palette) const;
    /// Null when the picture has no colour table.
    [[nodiscard]] const OMDevicePalette* devicePalette() const {
        return palette_ ? &*palette_ : nullptr;
    }

    /// An index for 8-bit pictures, an RGB colour for the others; anything else fails a check and
    /// changes nothing.
    void setInvisibleColor(const OMColor& color);
    [[nodiscard]] const OMColor& invisibleColor() const { return invisible_; }

    /// For canvases.
    [[nodiscard]] OMPixels pixels();
    /// Row y of the mask: a bit a pixel, the first the highest of its byte; 1 is invisible. Built
    /// when it is first asked for, valid until the invisible colour changes.
    [[nodiscard]] const std::uint8_t* maskRow(int y);

  private:
    OMBitmap(platform::Surface surface, std::optional<OMDevicePalette> palette);

    void buildMask();
    [[nodiscard]] std::uint32_t invisiblePixel() const;

    platform::Surface surface_;
    std::optional<OMDevicePalette> palette_;
    OMColor invisible_;
    std::vector<std::uint8_t> mask_; ///< empty until it is built
    std::size_t maskStride_;
};

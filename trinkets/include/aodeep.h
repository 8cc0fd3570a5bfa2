// Frames of animations on canvases of 16, 24 and 32 bits: each is converted once, through the
// colours of a palette record, and drawn from what came out of it. Animations that show the same
// image with the same record at the same depth share their converted frames.
#pragma once

#include "aoimage.h"
#include "ompalette.h"

#include <map>
#include <memory>
#include <utility>

class OMCanvas;

/// The pixels that a palette's colours are on `canvas`, which is deeper than 8 bits.
[[nodiscard]] AOPixelTable AOPixelsOf(const OMDevicePalette& colors, const OMCanvas& canvas);

/// The converted frames of an image, each made when it is asked for the first time.
class AODeepFrames {
  public:
    /// Without frames, after a failed check, unless there are 2 to 4 bytes a pixel.
    AODeepFrames(std::shared_ptr<const AOImage> image, const AOPixelTable& pixels,
                 int bytesPerPixel);

    /// An empty frame for a number that has none. Lives until another one is asked for.
    [[nodiscard]] const AOFrame& frame(int index);
    [[nodiscard]] int bytesPerPixel() const { return bytesPerPixel_; }
    /// How many frames have been converted.
    [[nodiscard]] int converted() const { return converted_; }

  private:
    std::shared_ptr<const AOImage> image_; ///< null: without frames
    AOPixelTable pixels_;
    int bytesPerPixel_;
    AOFrameCache frames_;
    int converted_ = 0;
};

/// The colours that animations are converted with. Animations keep the record that was current when
/// they were made.
class AOPaletteRecord {
  public:
    explicit AOPaletteRecord(const OMDevicePalette& colors) : colors_(colors) {}

    /// Null until there is one.
    [[nodiscard]] static const std::shared_ptr<AOPaletteRecord>& current() { return current_; }
    static void setCurrent(std::shared_ptr<AOPaletteRecord> record) {
        current_ = std::move(record);
    }

    [[nodiscard]] const OMDevicePalette& colors() const { return colors_; }
    /// The frames of an image for canvases as deep as this one, which has more than 8 bits; shared
    /// by all who hold them.
    [[nodiscard]] std::shared_ptr<AODeepFrames> framesOf(std::shared_ptr<const AOImage> image,
                                                         const OMCanvas& canvas);

  private:
    using Key = std::pair<const AOImage*, int>; ///< and the depth

    static inline std::shared_ptr<AOPaletteRecord> current_;

    OMDevicePalette colors_;
    std::map<Key, std::weak_ptr<AODeepFrames>> frames_;
};

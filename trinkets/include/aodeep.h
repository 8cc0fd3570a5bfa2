// Frames of animations on canvases of 16, 24 and 32 bits: each is converted once, through the
// colours of a palette record, and drawn from what came out of it.
//
// A converted frame is again a list of runs, so that it takes about as many bytes as its pixels
// that are not of one colour, and that what is transparent costs nothing. Animations that show the
// same image with the same record at the same depth share their converted frames.
#pragma once

#include "aoimage.h"
#include "ompalette.h"

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <utility>
#include <vector>

class OMCanvas;
class OMMemCanvas;

/// The pixel of each colour index at some depth.
using AOPixelTable = std::array<std::uint32_t, platform::kPaletteSize>;

/// The pixels that a palette's colours are on `canvas`, which is deeper than 8 bits.
[[nodiscard]] AOPixelTable AOPixelsOf(const OMDevicePalette& colors, const OMCanvas& canvas);

/// One converted frame.
class AODeepFrame {
  public:
    /// An empty one.
    AODeepFrame() = default;
    /// Empty, after a failed check, unless there are 2 to 4 bytes a pixel.
    AODeepFrame(const AOFrame& frame, const AOPixelTable& pixels, int bytesPerPixel);

    /// As AOFrame::draw, on a canvas with as many bytes a pixel. On a canvas of 8 bits a check
    /// fails; neither it nor any other is drawn on.
    void draw(OMMemCanvas& canvas, const OMRegion& clip, platform::Point at, int direction) const;

  private:
    /// Opaque pixels of a row.
    struct Run {
        int column = 0;
        int length = 0;
        std::uint32_t pixels = 0; ///< offset in `pixels_`
        bool fill = false;        ///< one pixel there stands for all
    };
    void addRow(std::span<const std::uint8_t> row, const AOPixelTable& pixels);
    void addPixel(std::uint32_t pixel);
    template <int kBytes>
    void drawLines(AOLines lines) const;

    int width_ = 0;
    int height_ = 0;
    int bytesPerPixel_ = 0;
    std::vector<std::uint32_t> rowEnds_; ///< in `runs_`, of the rows that have data
    std::vector<Run> runs_;
    std::vector<std::uint8_t> pixels_;
};

/// The converted frames of an image, each made when it is asked for the first time.
class AODeepFrames {
  public:
    AODeepFrames(std::shared_ptr<const AOImage> image, const AOPixelTable& pixels,
                 int bytesPerPixel);

    /// An empty frame for a number that has none.
    [[nodiscard]] const AODeepFrame& frame(int index);
    [[nodiscard]] int bytesPerPixel() const { return bytesPerPixel_; }
    /// How many frames have been converted.
    [[nodiscard]] int converted() const { return converted_; }

  private:
    std::shared_ptr<const AOImage> image_;
    AOPixelTable pixels_;
    int bytesPerPixel_;
    std::vector<std::unique_ptr<AODeepFrame>> frames_; ///< by number; null: not asked for yet
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

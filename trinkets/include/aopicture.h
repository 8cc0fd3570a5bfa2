// What one trinket shows of an image: a frame in one of the eight directions, in its own colours.
#pragma once

#include "aodeep.h"
#include "aoimage.h"

#include <memory>

class AOPicture {
  public:
    static constexpr int kNoFrame = -1;

    explicit AOPicture(std::shared_ptr<AOImage> image) : image_(std::move(image)) {}

    [[nodiscard]] const AOImage& image() const { return *image_; }
    /// Without a frame, in the same direction.
    void setImage(std::shared_ptr<AOImage> image);
    [[nodiscard]] int frame() const { return frame_; }
    /// One that the image has not is empty.
    void setFrame(int frame) { frame_ = frame; }
    [[nodiscard]] int direction() const { return direction_; }
    void setDirection(int direction) { direction_ = direction; }

    /// With its left upper corner at `at`.
    void draw(OMMemCanvas& canvas, const OMRegion& clip, platform::Point at);
    /// Whether `point` is opaque when it is drawn at `at`.
    [[nodiscard]] bool hit(platform::Point point, platform::Point at) const;

    /// For canvases deeper than 8 bits. Null fails a check; false when nothing changes.
    bool setPalette(std::shared_ptr<AOPaletteRecord> palette);
    [[nodiscard]] const std::shared_ptr<AOPaletteRecord>& palette() const { return palette_; }
    /// What such a canvas will show is made now, not when it is drawn.
    void prepare(const OMCanvas& canvas);
    /// For canvases of 8 bits. Others who have the image keep their colours.
    void recolour(const AOColorMap& map);

  private:
    /// Null after a failed check.
    [[nodiscard]] AODeepFrames* deepFrames(const OMCanvas& canvas);

    std::shared_ptr<AOImage> image_;
    int frame_ = kNoFrame;
    int direction_ = 0;
    std::shared_ptr<AOPaletteRecord> palette_;
    std::shared_ptr<AODeepFrames> deepFrames_; ///< null until they are needed
};

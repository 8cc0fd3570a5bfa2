// The background picture of a scene: one frame of an animation resource, kept unpacked in a canvas
// of the window's size so that any part of it is a plain copy.
#pragma once

#include "aoimage.h"
#include "ommemcanvas.h"
#include "omscrptb.h"
#include "omtbackground.h"

#include <memory>

class AOBackground : public OMTBackground {
  public:
    /// Size in pixels.
    AOBackground(int width, int height, std::shared_ptr<const AOImage> image);

    /// Replaces the picture: the first frame of the image's first sequence, at its embedded place,
    /// on black.
    void setImage(std::shared_ptr<const AOImage> image);
    [[nodiscard]] const std::shared_ptr<const AOImage>& image() const { return image_; }

    OMRegion paint(OMMemCanvas& backBuffer, const OMRegion& dirty) override;
    void setPalette(const OMPalette& colors) override { canvas_.setPalette(colors); }
    [[nodiscard]] OMMemCanvas* picture() override { return &canvas_; }

    /// Keeps an object with the background (the exit picture of a scene), in place of an earlier
    /// one; null detaches.
    void attach(std::unique_ptr<OMScriptableObject> object) { attached_ = std::move(object); }
    [[nodiscard]] OMScriptableObject* attached() const { return attached_.get(); }

  private:
    OMMemCanvas canvas_;
    std::shared_ptr<const AOImage> image_;
    std::unique_ptr<OMScriptableObject> attached_;
};

// The background picture of a scene: one frame of an animation resource, kept unpacked in a canvas
// of the window's size so that any part of it is a plain copy. The canvas is as deep as the
// window's back buffer.
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
    /// on black. Where the screen is deeper than 8 bits it has the colours set before, and gets
    /// those of the next setPalette unless somebody paints on it first.
    void setImage(std::shared_ptr<const AOImage> image);
    [[nodiscard]] const std::shared_ptr<const AOImage>& image() const { return image_; }

    OMRegion paint(OMMemCanvas& backBuffer, const OMRegion& dirty) override;
    void setPalette(const OMPalette& colors) override;
    [[nodiscard]] OMMemCanvas* picture() override;

    /// Keeps an object with the background (the exit picture of a scene), in place of an earlier
    /// one; null detaches.
    void attach(std::unique_ptr<OMScriptableObject> object) { attached_ = std::move(object); }
    [[nodiscard]] OMScriptableObject* attached() const { return attached_.get(); }

  private:
    void drawImage();

    OMMemCanvas canvas_;
    std::shared_ptr<const AOImage> image_;
    bool awaitsPalette_ = false; ///< shows only the image, in colours that are not its own yet
    std::unique_ptr<OMScriptableObject> attached_;
};

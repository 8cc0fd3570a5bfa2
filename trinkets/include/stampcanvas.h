// Stamps: pictures of objects that were painted into a background and can be taken out again, in
// any order.
//
// A stamp keeps its own pixels and, of those that are opaque, what was below when it came. Where a
// later stamp covers it, taking it out hands what was below on to that one; elsewhere the
// background gets it back. Where others have painted over it, it has no pixels any more.
#pragma once

#include "omlink.h"

#include "platform/geometry.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

class OMMemCanvas;

/// Paints an object with its left upper corner at a point of a canvas.
using OMStampPainter = OMLinkTo<void(OMMemCanvas&, platform::Point)>;

/// One stamp.
class StampCanvas {
  public:
    /// `area` in pixels of the picture that it was painted into.
    StampCanvas(const void* key, const platform::Rect& area, int bytesPerPixel);

    [[nodiscard]] const void* key() const { return key_; }
    void forgetKey() { key_ = nullptr; }
    [[nodiscard]] const platform::Rect& area() const { return area_; }
    [[nodiscard]] std::size_t size() const { return below_.size() + opaque_.size(); } ///< bytes

    [[nodiscard]] bool isOpaque(platform::Point at) const;
    /// What was below an opaque pixel.
    [[nodiscard]] std::uint8_t* below(platform::Point at);

    /// Finds out which pixels the painter paints, puts them into the picture and keeps what was
    /// there. `corner` is the object's place in the picture.
    void paint(OMMemCanvas& picture, const OMStampPainter& painter, platform::Point corner);
    /// `other` was painted over it for good: pixels that are opaque there are no longer its own.
    void giveUpTo(const StampCanvas& other);

  private:
    [[nodiscard]] std::size_t index(platform::Point at) const;

    const void* key_;
    platform::Rect area_;
    std::size_t bytesPerPixel_;
    std::vector<std::uint8_t> opaque_; ///< 1 for each pixel that was painted
    std::vector<std::uint8_t> below_;
};

/// The stamps of one picture, the oldest first.
class StampList {
  public:
    /// Records beyond that many bytes make the oldest stamps part of the picture.
    static constexpr std::size_t kMaxBytes = std::size_t{1} << 26;

    /// Both return the area that changed; none when nothing did. An object may have any number of
    /// stamps, of which the latest is taken out.
    std::optional<platform::Rect> stamp(OMMemCanvas& picture, const void* key,
                                        const platform::Rect& rectangle,
                                        const OMStampPainter& painter);
    std::optional<platform::Rect> unstamp(OMMemCanvas& picture, const void* key);
    /// Paints over whatever stamps there are, to stay when they are taken out.
    void paintOver(OMMemCanvas& picture, const platform::Rect& rectangle,
                   const OMStampPainter& painter);

    /// The object is gone; its stamps stay.
    void forget(const void* key);
    /// All stamps become part of the picture.
    void clear();
    [[nodiscard]] std::size_t count() const { return stamps_.size(); }

  private:
    void takeOut(OMMemCanvas& picture, std::size_t which);
    /// The first stamp from there on that is opaque at a point, or null.
    StampCanvas* covering(std::size_t from, platform::Point at);
    void dropOldest();

    std::deque<StampCanvas> stamps_;
    std::size_t bytes_ = 0;
};

// A region: any set of pixels of the plane, kept as rectangles. Regions say what must be repainted
// and what must be shown.
//
// A value type. A region of one rectangle, by far the most frequent one, is held without allocation
// and its operations return early; so is the empty region. The library that does the set operations
// is known to the implementation only.
//
// Two regions of the same pixels have the same rectangles: bands from the top down, in a band from
// left to right, none touching another in its band.
#pragma once

#include "platform/geometry.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <span>

// Rectangles are half-open. An empty rectangle has no pixels: it overlaps nothing, contains nothing
// and is contained by nothing.

[[nodiscard]] inline bool OMOverlap(const platform::Rect& a, const platform::Rect& b) {
    return !platform::intersection(a, b).empty();
}

[[nodiscard]] inline bool OMContains(const platform::Rect& outer, const platform::Rect& inner) {
    return !inner.empty() && platform::intersection(outer, inner) == inner;
}

[[nodiscard]] constexpr bool OMContains(const platform::Rect& rectangle, platform::Point point) {
    return point.x >= rectangle.left && point.x < rectangle.right && point.y >= rectangle.top &&
           point.y < rectangle.bottom;
}

class OMRegion {
  public:
    class Rectangles;

    /// Ellipses and polygons are made inside these bounds only; what lies beyond is moved to their
    /// edge.
    static constexpr platform::Rect kShapeBounds{-0x8000, -0x8000, 0x7FFF, 0x7FFF};

    OMRegion() noexcept; ///< empty
    OMRegion(const platform::Rect& rectangle) noexcept;
    OMRegion(const OMRegion& other);
    OMRegion(OMRegion&& other) noexcept;
    OMRegion& operator=(const OMRegion& other);
    OMRegion& operator=(OMRegion&& other) noexcept;
    OMRegion& operator=(const platform::Rect& rectangle) noexcept;
    ~OMRegion();

    /// The pixels whose centre lies in the ellipse that touches the four edges of `bounds`.
    [[nodiscard]] static OMRegion ellipse(const platform::Rect& bounds);
    /// The pixels whose centre lies inside an odd number of turns of the closed polygon. Corners
    /// are corners of pixels, so that the four corners of a rectangle make the rectangle. Fewer
    /// than three corners make the empty region.
    [[nodiscard]] static OMRegion polygon(std::span<const platform::Point> corners);

    [[nodiscard]] bool isEmpty() const noexcept;
    /// The smallest rectangle around all pixels; 0, 0, 0, 0 for the empty region.
    [[nodiscard]] platform::Rect boundingBox() const noexcept;
    [[nodiscard]] bool contains(platform::Point point) const noexcept;
    [[nodiscard]] bool contains(const platform::Rect& rectangle) const noexcept;
    [[nodiscard]] bool intersects(const platform::Rect& rectangle) const noexcept;
    [[nodiscard]] std::size_t pixelCount() const noexcept;

    /// The rectangles, for a range-for. Valid until the region changes.
    [[nodiscard]] Rectangles rectangles() const noexcept;

    void clear() noexcept;
    void unite(const platform::Rect& rectangle);
    void unite(const OMRegion& other);
    void intersect(const platform::Rect& rectangle);
    void intersect(const OMRegion& other);
    void subtract(const OMRegion& other);
    void offset(int dx, int dy); ///< what leaves the range of int is lost

    /// The same pixels.
    friend bool operator==(const OMRegion& a, const OMRegion& b) noexcept;

  private:
    // A platform rectangle and a pointer to the list of rectangles of a region with several.
    static constexpr std::size_t kSize = sizeof(platform::Rect) + sizeof(void*);
    struct Access; // the implementation's view of the storage

    alignas(void*) std::byte storage_[kSize];
};

/// A view of a region's rectangles.
class OMRegion::Rectangles {
  public:
    class Iterator {
      public:
        explicit Iterator(const std::byte* at) : at_(at) {}
        [[nodiscard]] platform::Rect operator*() const {
            platform::Rect rectangle;
            std::memcpy(&rectangle, at_, sizeof rectangle);
            return rectangle;
        }
        Iterator& operator++() {
            at_ += sizeof(platform::Rect);
            return *this;
        }
        friend bool operator==(const Iterator&, const Iterator&) = default;

      private:
        const std::byte* at_;
    };

    Rectangles(const std::byte* first, std::size_t count) : first_(first), count_(count) {}

    [[nodiscard]] std::size_t size() const { return count_; }
    [[nodiscard]] Iterator begin() const { return Iterator(first_); }
    [[nodiscard]] Iterator end() const {
        return Iterator(first_ + count_ * sizeof(platform::Rect));
    }

  private:
    const std::byte* first_;
    std::size_t count_;
};

#include "omregion.h"

#include <pixman.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <new>
#include <vector>

using platform::Point;
using platform::Rect;

// What the header promises about the storage and about reading rectangles out of it.
static_assert(sizeof(pixman_box32_t) == sizeof(Rect));
static_assert(offsetof(pixman_box32_t, x1) == offsetof(Rect, left));
static_assert(offsetof(pixman_box32_t, y1) == offsetof(Rect, top));
static_assert(offsetof(pixman_box32_t, x2) == offsetof(Rect, right));
static_assert(offsetof(pixman_box32_t, y2) == offsetof(Rect, bottom));
static_assert(sizeof(pixman_region32_t) == sizeof(Rect) + sizeof(void*));
static_assert(alignof(pixman_region32_t) <= alignof(void*));

struct OMRegion::Access {
    static pixman_region32_t* of(OMRegion& region) {
        return std::launder(reinterpret_cast<pixman_region32_t*>(region.storage_));
    }
    static const pixman_region32_t* of(const OMRegion& region) {
        return std::launder(reinterpret_cast<const pixman_region32_t*>(region.storage_));
    }
    static void begin(OMRegion& region) { ::new (region.storage_) pixman_region32_t{}; }

    /// For a region that holds nothing to free.
    static void setRectangle(OMRegion& region, const Rect& rectangle) {
        if (rectangle.empty()) {
            pixman_region32_init(of(region));
            return;
        }
        const pixman_box32_t box{rectangle.left, rectangle.top, rectangle.right, rectangle.bottom};
        pixman_region32_init_with_extents(of(region), &box);
    }

    static OMRegion fromBoxes(const std::vector<pixman_box32_t>& boxes);
};

namespace {

/// The library's operations fail for want of memory only.
void require(pixman_bool_t done) {
    if (!done) throw std::bad_alloc();
}

unsigned length(int from, int to) {
    return static_cast<unsigned>(to) - static_cast<unsigned>(from);
}

Point insideShapeBounds(Point point) {
    const Rect& bounds = OMRegion::kShapeBounds;
    return {std::clamp(point.x, bounds.left, bounds.right),
            std::clamp(point.y, bounds.top, bounds.bottom)};
}

std::int64_t ceilingOf(std::int64_t dividend, std::int64_t divisor) {
    return dividend / divisor + (dividend % divisor > 0 ? 1 : 0);
}

/// An edge of a polygon, from its upper to its lower end.
struct Edge {
    Point top;
    Point bottom;

    [[nodiscard]] bool crosses(int y) const { return top.y <= y && y < bottom.y; }
    /// The first pixel of row `y` whose centre is not left of the edge.
    [[nodiscard]] int firstPixel(int y) const {
        const std::int64_t height = bottom.y - top.y;
        const std::int64_t along = (2 * (y - top.y) + 1) * std::int64_t{bottom.x - top.x};
        return top.x + static_cast<int>(ceilingOf(along - height, 2 * height));
    }
};

std::vector<Edge> edgesOf(std::span<const Point> corners) {
    std::vector<Edge> edges;
    Point previous = insideShapeBounds(corners.back());
    for (const Point& corner : corners) {
        const Point here = insideShapeBounds(corner);
        if (previous.y < here.y) edges.push_back({previous, here});
        if (here.y < previous.y) edges.push_back({here, previous});
        previous = here;
    }
    return edges;
}

void addRow(std::vector<pixman_box32_t>& boxes, int y, int left, int right) {
    if (left < right) boxes.push_back({left, y, right, y + 1});
}

} // namespace

OMRegion OMRegion::Access::fromBoxes(const std::vector<pixman_box32_t>& boxes) {
    OMRegion region;
    if (boxes.empty()) return region;
    require(pixman_region32_init_rects(of(region), boxes.data(), static_cast<int>(boxes.size())));
    return region;
}

OMRegion::OMRegion() noexcept {
    Access::begin(*this);
    pixman_region32_init(Access::of(*this));
}

OMRegion::OMRegion(const Rect& rectangle) noexcept {
    Access::begin(*this);
    Access::setRectangle(*this, rectangle);
}

OMRegion::OMRegion(const OMRegion& other) : OMRegion() { *this = other; }

OMRegion::OMRegion(OMRegion&& other) noexcept : OMRegion() { *this = std::move(other); }

OMRegion& OMRegion::operator=(const OMRegion& other) {
    require(pixman_region32_copy(Access::of(*this), Access::of(other)));
    return *this;
}

OMRegion& OMRegion::operator=(OMRegion&& other) noexcept {
    // The library's structure may be moved bit by bit: it has no pointers into itself.
    std::swap(*Access::of(*this), *Access::of(other));
    if (this != &other) other.clear();
    return *this;
}

OMRegion& OMRegion::operator=(const Rect& rectangle) noexcept {
    pixman_region32_fini(Access::of(*this));
    Access::setRectangle(*this, rectangle);
    return *this;
}

OMRegion::~OMRegion() { pixman_region32_fini(Access::of(*this)); }

OMRegion OMRegion::ellipse(const Rect& bounds) {
    const Point topLeft = insideShapeBounds({bounds.left, bounds.top});
    const Point bottomRight = insideShapeBounds({bounds.right, bounds.bottom});
    const int width = bottomRight.x - topLeft.x;
    const int height = bottomRight.y - topLeft.y;
    if (width <= 0 || height <= 0) return {};
    std::vector<pixman_box32_t> boxes;
    for (int y = 0; y < height; ++y) {
        // Distances of pixel centres from the axes are counted in half pixels.
        const double fromAxis = 2.0 * y + 1 - height;
        const double half = width * std::sqrt((height - fromAxis) * (height + fromAxis)) / height;
        const int inset = (width - static_cast<int>(half)) / 2;
        addRow(boxes, topLeft.y + y, topLeft.x + inset, bottomRight.x - inset);
    }
    return Access::fromBoxes(boxes);
}

OMRegion OMRegion::polygon(std::span<const Point> corners) {
    if (corners.size() < 3) return {};
    const std::vector<Edge> edges = edgesOf(corners);
    if (edges.empty()) return {};
    int top = kShapeBounds.bottom;
    int bottom = kShapeBounds.top;
    for (const Edge& edge : edges) {
        top = std::min(top, edge.top.y);
        bottom = std::max(bottom, edge.bottom.y);
    }
    std::vector<pixman_box32_t> boxes;
    std::vector<int> crossings;
    for (int y = top; y < bottom; ++y) {
        crossings.clear();
        for (const Edge& edge : edges)
            if (edge.crosses(y)) crossings.push_back(edge.firstPixel(y));
        std::sort(crossings.begin(), crossings.end());
        for (std::size_t i = 0; i + 1 < crossings.size(); i += 2)
            addRow(boxes, y, crossings[i], crossings[i + 1]);
    }
    return Access::fromBoxes(boxes);
}

bool OMRegion::isEmpty() const noexcept { return !pixman_region32_not_empty(Access::of(*this)); }

Rect OMRegion::boundingBox() const noexcept {
    if (isEmpty()) return {};
    const pixman_box32_t& box = Access::of(*this)->extents;
    return {box.x1, box.y1, box.x2, box.y2};
}

bool OMRegion::contains(Point point) const noexcept {
    return pixman_region32_contains_point(Access::of(*this), point.x, point.y, nullptr);
}

bool OMRegion::contains(const Rect& rectangle) const noexcept {
    if (rectangle.empty()) return false;
    const pixman_box32_t box{rectangle.left, rectangle.top, rectangle.right, rectangle.bottom};
    return pixman_region32_contains_rectangle(Access::of(*this), &box) == PIXMAN_REGION_IN;
}

bool OMRegion::intersects(const Rect& rectangle) const noexcept {
    if (rectangle.empty()) return false;
    const pixman_box32_t box{rectangle.left, rectangle.top, rectangle.right, rectangle.bottom};
    return pixman_region32_contains_rectangle(Access::of(*this), &box) != PIXMAN_REGION_OUT;
}

std::size_t OMRegion::pixelCount() const noexcept {
    std::size_t count = 0;
    for (const Rect& rectangle : rectangles())
        count += std::size_t{length(rectangle.left, rectangle.right)} *
                 length(rectangle.top, rectangle.bottom);
    return count;
}

OMRegion::Rectangles OMRegion::rectangles() const noexcept {
    int count = 0;
    const pixman_box32_t* boxes = pixman_region32_rectangles(Access::of(*this), &count);
    return {reinterpret_cast<const std::byte*>(boxes), static_cast<std::size_t>(count)};
}

void OMRegion::clear() noexcept { pixman_region32_clear(Access::of(*this)); }

void OMRegion::unite(const Rect& rectangle) {
    if (rectangle.empty()) return;
    unite(OMRegion(rectangle));
}

void OMRegion::unite(const OMRegion& other) {
    pixman_region32_t* region = Access::of(*this);
    require(pixman_region32_union(region, region, Access::of(other)));
}

void OMRegion::intersect(const Rect& rectangle) { intersect(OMRegion(rectangle)); }

void OMRegion::intersect(const OMRegion& other) {
    pixman_region32_t* region = Access::of(*this);
    require(pixman_region32_intersect(region, region, Access::of(other)));
}

void OMRegion::subtract(const OMRegion& other) {
    pixman_region32_t* region = Access::of(*this);
    require(pixman_region32_subtract(region, region, Access::of(other)));
}

void OMRegion::offset(int dx, int dy) {
    // What would leave the range of coordinates goes first: the library's sums would wrap.
    constexpr int kLeast = std::numeric_limits<int>::min();
    constexpr int kMost = std::numeric_limits<int>::max();
    intersect(Rect{kLeast - std::min(dx, 0), kLeast - std::min(dy, 0), kMost - std::max(dx, 0),
                   kMost - std::max(dy, 0)});
    pixman_region32_translate(Access::of(*this), dx, dy);
}

bool operator==(const OMRegion& a, const OMRegion& b) noexcept {
    // Empty regions may carry different left-over extents.
    if (a.isEmpty() || b.isEmpty()) return a.isEmpty() && b.isEmpty();
    return pixman_region32_equal(OMRegion::Access::of(a), OMRegion::Access::of(b));
}

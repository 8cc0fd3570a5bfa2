// Regions against a model that is too simple to be wrong: a bitmap of a small plane.
#include "omregion.h"

#include <gtest/gtest.h>

#include <bitset>
#include <limits>
#include <random>
#include <vector>

using platform::Point;
using platform::Rect;

namespace {

constexpr int kSide = 40;   // of the plane that the model knows, from -kOrigin on
constexpr int kOrigin = 10; // so that places left of and above 0 take part
constexpr Rect kPlane{-kOrigin, -kOrigin, kSide - kOrigin, kSide - kOrigin};

class RegionModel {
  public:
    RegionModel() = default;
    explicit RegionModel(const Rect& rectangle) {
        for (int y = std::max(rectangle.top, kPlane.top); y < rectangle.bottom; ++y)
            for (int x = std::max(rectangle.left, kPlane.left); x < rectangle.right; ++x)
                set({x, y});
    }
    explicit RegionModel(const OMRegion& region) {
        for (const Rect& rectangle : region.rectangles()) bits |= RegionModel(rectangle).bits;
    }

    void set(Point at) {
        if (OMContains(kPlane, at)) bits.set(place(at));
    }
    [[nodiscard]] bool has(Point at) const { return OMContains(kPlane, at) && bits[place(at)]; }

    [[nodiscard]] RegionModel moved(int dx, int dy) const {
        RegionModel result;
        forEachPixel([&](Point at) {
            if (has(at)) result.set({at.x + dx, at.y + dy});
        });
        return result;
    }
    [[nodiscard]] Rect boundingBox() const {
        Rect box{kPlane.right, kPlane.bottom, kPlane.left, kPlane.top};
        forEachPixel([&](Point at) {
            if (!has(at)) return;
            box = {std::min(box.left, at.x), std::min(box.top, at.y), std::max(box.right, at.x + 1),
                   std::max(box.bottom, at.y + 1)};
        });
        return bits.any() ? box : Rect{};
    }

    template <class Function>
    static void forEachPixel(Function function) {
        for (int y = kPlane.top; y < kPlane.bottom; ++y)
            for (int x = kPlane.left; x < kPlane.right; ++x) function(Point{x, y});
    }

    std::bitset<kSide * kSide> bits;

  private:
    static std::size_t place(Point at) {
        return static_cast<std::size_t>((at.y + kOrigin) * kSide + at.x + kOrigin);
    }
};

std::string picture(const RegionModel& model) {
    std::string text;
    for (int y = kPlane.top; y < kPlane.bottom; ++y) {
        for (int x = kPlane.left; x < kPlane.right; ++x) text += model.has({x, y}) ? '#' : '.';
        text += '\n';
    }
    return text;
}

/// Everything that a region tells about itself agrees with the model.
void expectSame(const OMRegion& region, const RegionModel& model) {
    ASSERT_EQ(picture(RegionModel(region)), picture(model));
    EXPECT_EQ(region.pixelCount(), model.bits.count());
    EXPECT_EQ(region.isEmpty(), model.bits.none());
    EXPECT_EQ(region.boundingBox(), model.boundingBox());
}

class Random {
  public:
    int below(int limit) { return std::uniform_int_distribution(0, limit - 1)(engine_); }
    Rect rectangle() {
        const int left = kPlane.left + below(kSide - 1);
        const int top = kPlane.top + below(kSide - 1);
        return {left, top, left + below(std::min(15, kPlane.right - left + 1)),
                top + below(std::min(15, kPlane.bottom - top + 1))};
    }

  private:
    std::mt19937 engine_{20240607};
};

struct Pair {
    OMRegion region;
    RegionModel model;

    void unite(const Rect& rectangle) {
        region.unite(rectangle);
        model.bits |= RegionModel(rectangle).bits;
    }
};

void combineAtRandom(Random& random, Pair& one, const Pair& other) {
    switch (random.below(6)) {
    case 0:
        one.region.unite(other.region);
        one.model.bits |= other.model.bits;
        break;
    case 1:
        one.region.intersect(other.region);
        one.model.bits &= other.model.bits;
        break;
    case 2:
        one.region.subtract(other.region);
        one.model.bits &= ~other.model.bits;
        break;
    case 3: {
        const Rect rectangle = random.rectangle();
        one.region.subtract(rectangle);
        one.model.bits &= ~RegionModel(rectangle).bits;
        break;
    }
    case 4: {
        // There and back inside the plane, so that nothing falls off the model's edge.
        const int dx = random.below(9) - 4;
        const int dy = random.below(9) - 4;
        one.region.intersect(kPlane);
        one.region.offset(dx, dy);
        one.region.intersect(kPlane);
        one.model = one.model.moved(dx, dy);
        break;
    }
    default: one.unite(random.rectangle());
    }
}

TEST(OMRegion, setOperationsMatchABitmap) {
    Random random;
    std::vector<Pair> pairs(4);
    for (int step = 0; step < 4000; ++step) {
        Pair& one = pairs[static_cast<std::size_t>(random.below(4))];
        const Pair& other = pairs[static_cast<std::size_t>(random.below(4))]; // may be `one`
        combineAtRandom(random, one, other);
        expectSame(one.region, one.model);
        EXPECT_EQ(one.region == other.region, one.model.bits == other.model.bits);
        const Rect rectangle = random.rectangle();
        const auto common = RegionModel(rectangle).bits & one.model.bits;
        EXPECT_EQ(one.region.intersects(rectangle), common.any());
        EXPECT_EQ(one.region.contains(rectangle),
                  common.any() && common == RegionModel(rectangle).bits);
        const Point corner{rectangle.left, rectangle.top};
        EXPECT_EQ(one.region.contains(corner), one.model.has(corner));
        if (HasFatalFailure()) FAIL() << "step " << step;
    }
}

TEST(OMRegion, emptyRegionsAreEqualWhereverTheyBecameEmpty) {
    OMRegion apart(Rect{0, 0, 5, 5});
    apart.intersect(Rect{7, 7, 9, 9});
    OMRegion& self = apart;
    apart = self;
    for (const OMRegion& empty : {apart, OMRegion(Rect{4, 4, 4, 9}), OMRegion(Rect{9, 9, 1, 1}),
                                  OMRegion::ellipse({3, 3, 3, 9})}) {
        EXPECT_EQ(empty, OMRegion());
        EXPECT_EQ(empty.boundingBox(), Rect{});
        EXPECT_FALSE(empty.contains(Point{0, 0}));
        EXPECT_FALSE(empty.intersects(Rect{-100, -100, 100, 100}));
    }
    EXPECT_FALSE(OMRegion(Rect{0, 0, 9, 9}).intersects(Rect{3, 3, 1, 1}));
}

TEST(OMRegion, extremePlacesAreClampedAndNotWrapped) {
    constexpr int kLeast = std::numeric_limits<int>::min();
    constexpr int kMost = std::numeric_limits<int>::max();
    const OMRegion all(Rect{kLeast, kLeast, kMost, kMost});
    EXPECT_TRUE(all.contains(Point{0, 0}));
    EXPECT_GT(all.pixelCount(), std::size_t{1} << 62);
    OMRegion region(Rect{10, 10, 20, 20});
    region.offset(kMost, 0);
    EXPECT_TRUE(region.isEmpty());
    region = Rect{-10, 10, 20, 20};
    region.unite(Rect{-20, 12, -15, 14});
    region.offset(kMost - 5, kLeast);
    OMRegion expected(Rect{kMost - 15, kLeast + 10, kMost, kLeast + 20});
    expected.unite(Rect{kMost - 25, kLeast + 12, kMost - 20, kLeast + 14});
    EXPECT_EQ(region, expected);
    EXPECT_TRUE(OMRegion::ellipse({kLeast, kLeast, kMost, kMost}).contains(Point{0, 0}));
    const Point corners[] = {{kLeast, kLeast}, {kMost, kLeast}, {kMost, kMost}, {kLeast, kMost}};
    EXPECT_EQ(OMRegion::polygon(corners), OMRegion(OMRegion::kShapeBounds));
}

TEST(OMRegion, ellipsesHoldThePixelsWhoseCentreIsInside) {
    for (int width = 1; width <= 24; ++width)
        for (int height = 1; height <= 24; ++height) {
            RegionModel expected;
            RegionModel::forEachPixel([&](Point at) {
                const int across = (2 * (at.x + 7) + 1 - width) * height;
                const int down = (2 * (at.y - 3) + 1 - height) * width;
                if (across * across + down * down <= width * width * height * height)
                    expected.set(at);
            });
            SCOPED_TRACE(std::to_string(width) + " x " + std::to_string(height));
            expectSame(OMRegion::ellipse({-7, 3, -7 + width, 3 + height}), expected);
        }
}

/// Whether a ray to the left of the pixel's centre crosses the outline an odd number of times.
bool isInside(const std::vector<Point>& corners, Point at) {
    const double x = at.x + 0.5;
    const double y = at.y + 0.5;
    bool inside = false;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Point& a = corners[i];
        const Point& b = corners[(i + 1) % corners.size()];
        if ((a.y > y) == (b.y > y)) continue;
        const double crossing = a.x + (y - a.y) * (b.x - a.x) / (b.y - a.y);
        // A centre on the outline belongs to the pixel right of it.
        if (crossing <= x + 1e-9) inside = !inside;
    }
    return inside;
}

TEST(OMRegion, polygonsHoldThePixelsInsideAnOddNumberOfTurns) {
    Random random;
    for (int round = 0; round < 200; ++round) {
        std::vector<Point> corners(static_cast<std::size_t>(random.below(8)));
        for (Point& corner : corners)
            corner = {kPlane.left + random.below(kSide), kPlane.top + random.below(kSide)};
        RegionModel expected;
        RegionModel::forEachPixel([&](Point at) {
            if (isInside(corners, at)) expected.set(at);
        });
        expectSame(OMRegion::polygon(corners), expected);
    }
    const Point line[] = {{2, 3}, {8, 3}, {5, 3}};
    EXPECT_TRUE(OMRegion::polygon(line).isEmpty());
}

} // namespace

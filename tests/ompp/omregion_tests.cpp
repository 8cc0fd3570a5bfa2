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

constexpr int kSide = 40; // of the plane, which begins at -10, -10
constexpr Rect kPlane{-10, -10, kSide - 10, kSide - 10};
using PlaneModel = std::bitset<kSide * kSide>;

PlaneModel::reference at(PlaneModel& model, Point point) {
    return model[static_cast<std::size_t>((point.y + 10) * kSide + point.x + 10)];
}

/// The pixels of the plane for which `holds` does.
template <class Holds>
PlaneModel modelOf(Holds holds) {
    PlaneModel model;
    for (int y = kPlane.top; y < kPlane.bottom; ++y)
        for (int x = kPlane.left; x < kPlane.right; ++x)
            if (holds(Point{x, y})) at(model, {x, y}) = true;
    return model;
}
PlaneModel modelOf(const Rect& rectangle) {
    return modelOf([&](Point point) { return OMContains(rectangle, point); });
}

/// Everything that a region tells about itself agrees with the model.
void expectSame(const OMRegion& region, const PlaneModel& model) {
    PlaneModel pixels;
    Rect box{kSide, kSide, -kSide, -kSide};
    for (const Rect& each : region.rectangles()) {
        pixels ^= modelOf(each); // they do not overlap
        box = {std::min(box.left, each.left), std::min(box.top, each.top),
               std::max(box.right, each.right), std::max(box.bottom, each.bottom)};
    }
    ASSERT_EQ(pixels, model);
    EXPECT_EQ(region.pixelCount(), model.count());
    EXPECT_EQ(region.isEmpty(), model.none());
    EXPECT_EQ(region.boundingBox(), model.none() ? Rect{} : box);
}

struct OMRegions : testing::Test {
    int below(int limit) { return std::uniform_int_distribution(0, limit - 1)(engine); }
    Point point() { return {kPlane.left + below(kSide), kPlane.top + below(kSide)}; }
    Rect rectangle() {
        const auto [x, y] = point();
        return {x, y, std::min(x + below(15), kPlane.right),
                std::min(y + below(15), kPlane.bottom)};
    }
    std::mt19937 engine{20240607};
};

TEST_F(OMRegions, SetOperationsMatchABitmap) {
    std::vector<std::pair<OMRegion, PlaneModel>> pairs(4);
    for (int step = 0; step < 4000 && !HasFatalFailure(); ++step) {
        auto& [region, model] = pairs.at(static_cast<std::size_t>(below(4)));
        const auto& [other, otherModel] = pairs.at(static_cast<std::size_t>(below(4))); // or itself
        const Rect area = rectangle();
        const Point by{below(9) - 4, below(9) - 4};
        switch (below(6)) {
        case 0: region.unite(other), model |= otherModel; break;
        case 1: region.intersect(other), model &= otherModel; break;
        case 2: region.subtract(other), model &= ~otherModel; break;
        case 3: region.subtract(area), model &= ~modelOf(area); break;
        case 4:
            region.offset(by.x, by.y);
            region.intersect(kPlane); // the model knows no other pixels
            model = modelOf([&, before = model](Point place) mutable {
                const Point from{place.x - by.x, place.y - by.y};
                return OMContains(kPlane, from) && at(before, from);
            });
            break;
        default: region.unite(area), model |= modelOf(area);
        }
        SCOPED_TRACE(step);
        expectSame(region, model);
        EXPECT_EQ(region == other, model == otherModel);
        const Rect asked = rectangle();
        const PlaneModel common = modelOf(asked) & model;
        EXPECT_EQ(region.intersects(asked), common.any());
        EXPECT_EQ(region.contains(asked), common.any() && common == modelOf(asked));
        const Point place = point();
        EXPECT_EQ(region.contains(place), at(model, place));
    }
}

TEST_F(OMRegions, EmptyOnesAreEqualAndExtremePlacesAreClampedAndNotWrapped) {
    EXPECT_EQ(OMRegion(Rect{9, 9, 1, 1}), OMRegion::ellipse({3, 3, 3, 9}));
    constexpr int kLeast = std::numeric_limits<int>::min();
    constexpr int kMost = std::numeric_limits<int>::max();
    EXPECT_GT(OMRegion(Rect{kLeast, kLeast, kMost, kMost}).pixelCount(), std::size_t{1} << 62);
    OMRegion region(Rect{-10, 10, 20, 20});
    region.unite(Rect{-20, 12, -15, 14});
    region.offset(kMost - 5, kLeast);
    OMRegion expected(Rect{kMost - 15, kLeast + 10, kMost, kLeast + 20});
    expected.unite(Rect{kMost - 25, kLeast + 12, kMost - 20, kLeast + 14});
    EXPECT_EQ(region, expected);
    EXPECT_TRUE(OMRegion::ellipse({kLeast, kLeast, kMost, kMost}).contains(Point{0, 0}));
    const Point corners[] = {{kLeast, kLeast}, {kMost, kLeast}, {kMost, kMost}, {kLeast, kMost}};
    EXPECT_EQ(OMRegion::polygon(corners), OMRegion(OMRegion::kShapeBounds));
}

TEST_F(OMRegions, ShapesHoldThePixelsWhoseCentreIsInside) {
    for (int width = 1; width <= 24; ++width)
        for (int height = 1; height <= 24; ++height)
            expectSame(OMRegion::ellipse({-7, 3, -7 + width, 3 + height}), modelOf([&](Point at) {
                           const int across = (2 * (at.x + 7) + 1 - width) * height;
                           const int down = (2 * (at.y - 3) + 1 - height) * width;
                           return across * across + down * down <= width * width * height * height;
                       }));
    for (int round = 0; round < 200; ++round) {
        std::vector<Point> corners(static_cast<std::size_t>(below(8)));
        for (Point& corner : corners) corner = point();
        // A ray to the left of the centre crosses the outline an odd number of times.
        expectSame(OMRegion::polygon(corners), modelOf([&](Point at) {
                       bool inside = false;
                       for (std::size_t i = 0; i < corners.size(); ++i) {
                           const Point& a = corners[i];
                           const Point& b = corners[(i + 1) % corners.size()];
                           if ((a.y > at.y) == (b.y > at.y)) continue;
                           const double slope = 1.0 * (b.x - a.x) / (b.y - a.y);
                           inside ^= a.x + (at.y + 0.5 - a.y) * slope <= at.x + 0.5 + 1e-9;
                       }
                       return inside;
                   }));
    }
}

} // namespace

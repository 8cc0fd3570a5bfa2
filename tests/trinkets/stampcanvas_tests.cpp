// Stamps in a background picture.
#include "trinkets/windowfixture.h"

#include <algorithm>
#include <array>
#include <set>

using namespace testing_support;
using platform::Point;
using platform::Rect;

namespace {

/// A background with a picture that is striped, so that every row can be told from the others.
class StripedCanvas : public OMTBackground {
  public:
    explicit StripedCanvas(const Rect& bounds) : canvas_(bounds.width(), bounds.height(), 8) {
        for (int y = 0; y < canvas_.height(); ++y) {
            canvas_.setColor(OMColor(100 + y));
            canvas_.fillRect({0, y, canvas_.width(), y + 1});
        }
    }
    OMRegion paint(OMMemCanvas& backBuffer, const OMRegion& dirty) override {
        const Rect all = canvas_.bounds();
        backBuffer.blt(canvas_, 0, 0, all.width(), all.height(), 0, 0, OMRasterOp::SrcCopy, &dirty);
        return dirty;
    }
    OMMemCanvas* picture() override { return &canvas_; }

  private:
    OMMemCanvas canvas_;
};

/// A block of `size` pixels with a hole in its middle column.
OMStampPainter ring(int color, int size) {
    return [color, size](OMMemCanvas& canvas, Point at) {
        OMRegion shape(Rect{at.x, at.y, at.x + size, at.y + size});
        shape.subtract(Rect{at.x + size / 2, at.y, at.x + size / 2 + 1, at.y + size});
        canvas.setColor(OMColor(color));
        canvas.fillRegion(shape);
    };
}

struct StampTest : WindowTest {
    StampTest() {
        window.setBackground(std::make_unique<StripedCanvas>(window.backBuffer().bounds()));
    }
    bool stamp(const Tile& tile, int color, Point at, int size = 11) {
        return window.stamp(tile, {at.x, at.y, at.x + size, at.y + size}, ring(color, size));
    }
    std::string picture() { return pixelsOf(*window.background()->picture(), {0, 0, 100, 80}); }

    Tile a{window, {70, 0, 80, 10}, 10};
    Tile b{window, {70, 10, 80, 20}, 11};
    Tile c{window, {70, 20, 80, 30}, 12};
};

TEST_F(StampTest, OverlappingOnesAreTakenAwayInAnyOrderFromUnderWhatIsPainted) {
    const Tile* tiles[] = {&a, &b, &c};
    const Point places[] = {{10, 10}, {14, 12}, {8, 15}};
    std::array<std::size_t, 3> order{0, 1, 2};
    do {
        window.setBackground(std::make_unique<StripedCanvas>(window.backBuffer().bounds()));
        for (std::size_t i = 0; i < 3; ++i) stamp(*tiles[i], 40 + static_cast<int>(i), places[i]);
        window.paintIntoBackground({12, 8, 23, 19}, ring(43, 11));
        std::set<std::size_t> there{0, 1, 2};
        for (const std::size_t gone : order) {
            EXPECT_TRUE(window.unstamp(*tiles[gone]));
            there.erase(gone);
            StripedCanvas fresh({0, 0, 100, 80});
            for (const std::size_t i : there)
                ring(40 + static_cast<int>(i), 11)(*fresh.picture(), places[i]);
            ring(43, 11)(*fresh.picture(), {12, 8});
            EXPECT_EQ(picture(), pixelsOf(*fresh.picture(), {0, 0, 100, 80})) << gone;
        }
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(StampTest, StayWhenTheirObjectIsGone) {
    auto dying = std::make_unique<Tile>(window, Rect{0, 0, 1, 1}, 1);
    stamp(*dying, 41, {14, 12});
    const std::string left = picture();
    stamp(a, 40, {10, 10});
    const std::string one = picture();
    stamp(a, 42, {12, 10});
    dying.reset();
    Tile other(window, {0, 0, 1, 1}, 1); // perhaps at the same address
    EXPECT_FALSE(window.unstamp(other));
    EXPECT_TRUE(window.unstamp(a)); // its last one first
    EXPECT_EQ(picture(), one);
    EXPECT_TRUE(window.unstamp(a));
    EXPECT_EQ(picture(), left);
}

TEST_F(StampTest, AreCutAtTheEdgesOfThePicture) {
    const std::string empty = picture();
    EXPECT_TRUE(stamp(a, 40, {-5, 75}));
    EXPECT_EQ(pixelsOf(*window.background()->picture(), {1, 79, 4, 80}), "(((/");
    EXPECT_FALSE(stamp(b, 41, {100, 0}));
    EXPECT_FALSE(stamp(b, 41, {-11, 0}));
    EXPECT_TRUE(window.unstamp(a));
    EXPECT_EQ(picture(), empty);
}

TEST_F(StampTest, TooManyBecomePartOfThePictureAndAllGoWithIt) {
    const auto large = [&] {
        return window.stamp(a, {0, 0, 100, 80}, [](OMMemCanvas& canvas, Point) {
            canvas.setColor(OMColor(50));
            canvas.fillRect(canvas.bounds());
        });
    };
    const std::size_t fitting = StampList::kMaxBytes / (2 * 8000);
    for (std::size_t i = 0; i < fitting + 5; ++i) ASSERT_TRUE(large());
    EXPECT_EQ(window.stampCount(), fitting);
    while (window.unstamp(a)) continue;
    EXPECT_EQ(pixelsOf(*window.background()->picture(), {0, 79, 3, 80}), "222/");
    stamp(a, 40, {10, 10});
    window.setBackground(std::make_unique<StripedCanvas>(window.backBuffer().bounds()));
    EXPECT_FALSE(window.unstamp(a));
    window.setBackground(nullptr);
    EXPECT_FALSE(stamp(a, 40, {10, 10}));
}

} // namespace

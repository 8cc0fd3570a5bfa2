// Windows on surfaces: two pages that are flipped, deep back buffers, and screens that are lost.
#include "trinkets/flippingfixture.h"

#include <algorithm>
#include <random>

using namespace testing_support;
using platform::Rect;
using Showing = OMTrinketWindow::Showing;

namespace {

constexpr int kStripes = 20;

/// Paints whole rows, more than it must.
struct Striped : OMTBackground {
    OMRegion paint(OMMemCanvas& canvas, const OMRegion& dirty) override {
        OMRegion rows;
        for (const Rect& part : dirty.rectangles())
            rows.unite(Rect{0, part.top, kFlippingWidth, part.bottom});
        canvas.setColor(OMColor(kStripes));
        canvas.fillRegion(rows);
        return rows;
    }
};

class FlippingWindowTest : public SurfaceTest {
  protected:
    FlippingWindowTest() { open(Showing::Flipping); }

    /// Pixels that a cycle composes.
    std::size_t composedInCycle() {
        OMRegion composed;
        window->hooks().beforeTrinkets = [&] { composed = window->dirtyRegion(); };
        cycle();
        window->hooks().beforeTrinkets = nullptr;
        return composed.pixelCount();
    }
    int flipsOf(int cycles) {
        int flips = 0;
        window->hooks().afterPresent = [&] { ++flips; };
        for (int i = 0; i < cycles; ++i) cycle();
        window->hooks().afterPresent = nullptr;
        return flips;
    }
};

TEST_F(FlippingWindowTest, EachPageCatchesUpWithTheChangesThatItMissedAndNoMore) {
    ASSERT_TRUE(window->isFlipping());
    Tile tile(*window, {0, 0, 10, 10}, 10);
    EXPECT_EQ(composedInCycle(), 8000u); // both pages are new
    EXPECT_EQ(seenPixel(5, 5), 10);
    tile.place(20, 0);
    EXPECT_EQ(composedInCycle(), 8000u);
    EXPECT_EQ(seenPixel(25, 5), 10);
    EXPECT_EQ(seenPixel(5, 5), 0);
    tile.place(40, 0); // the other page still shows it in its first place
    EXPECT_EQ(composedInCycle(), 200u);
    EXPECT_EQ(seenPixel(5, 5), 0);
    EXPECT_EQ(seenPixel(45, 5), 10);
    tile.place(42, 0); // and this one in its second
    EXPECT_EQ(composedInCycle(), 200u);
    EXPECT_EQ(seenPixel(25, 5), 0);
    EXPECT_EQ(composedInCycle(), 0u);
    EXPECT_EQ(flipsOf(3), 0) << "a page that is up to date stays";
}

TEST_F(FlippingWindowTest, ABackgroundThatPaintsMoreThanItMustComesToRest) {
    window->setBackground(std::make_unique<Striped>());
    Tile left(*window, {0, 0, 10, 10}, 10);
    Tile right(*window, {90, 0, 100, 10}, 11);
    Tile far(*window, {50, 60, 60, 70}, 12);
    cycle();
    left.setY(1);
    cycle();
    left.setY(2);
    EXPECT_EQ(composedInCycle(), 1200u); // rows 0 to 12
    far.setX(51);
    EXPECT_EQ(composedInCycle(), 2200u); // what this page missed, and its own
    far.setX(52);
    EXPECT_EQ(composedInCycle(), 2100u); // and what was painted on the other beyond that
    far.setX(53);
    EXPECT_EQ(composedInCycle(), 1000u) << "the rows above are not painted again and again";
    EXPECT_EQ(seenPixel(95, 5), 11);
}

TEST_F(FlippingWindowTest, NothingIsShownOnALostScreen) {
    Tile tile(*window, {0, 0, 10, 10}, 10);
    cycle();
    machine.display().setInForeground(false);
    tile.offset(5, 0);
    EXPECT_EQ(flipsOf(3), 0) << "another program has the screen";
    EXPECT_TRUE(takeFailures().empty());
    EXPECT_FALSE(window->restoreScreen());
    machine.display().setInForeground(true);
    EXPECT_TRUE(window->restoreScreen());
    cycle();
    EXPECT_EQ(seenPixel(12, 5), 10);
}

TEST_F(FlippingWindowTest, TheEndTakesTheBackBufferFromBehindTheScreen) {
    ASSERT_NE(machine.display().back(), nullptr);
    OMTrinketWindow second({0, 0, 100, 80}, nullptr, "", Showing::Flipping);
    EXPECT_FALSE(second.isFlipping()) << "there is one chain";
    window.reset();
    EXPECT_EQ(machine.display().back(), nullptr);
    open(Showing::Flipping);
    EXPECT_TRUE(window->isFlipping());
    window.emplace(Rect{10, 0, 100, 80}, nullptr, "", Showing::Flipping);
    EXPECT_FALSE(window->isFlipping()) << "pages lie at the corner of the screen";
    EXPECT_TRUE(takeFailures().empty());
}

// A model: whatever happens, what is seen is what all trinkets painted afresh would look like.

class ModelTest : public SurfaceTest,
                  public testing::WithParamInterface<std::tuple<Showing, bool>> {
  protected:
    using Tiles = std::vector<std::unique_ptr<Tile>>;

    int below(int limit) { return static_cast<int>(random() % static_cast<std::uint32_t>(limit)); }
    void change(Tiles& tiles) {
        const auto which = static_cast<std::size_t>(below(static_cast<int>(tiles.size())));
        std::unique_ptr<Tile>& tile = tiles[which];
        switch (below(11)) {
        case 0: tile->setVisible(!tile->isVisible()); return;
        case 1: tile->setZ(below(4)); return;
        case 2:
            tile.reset();
            tile = make();
            return;
        case 3: window->setMinimumDepth(below(3)); return;
        case 4: window->setPresenting(below(3) != 0); return;
        case 5: tile->markWhole(); return;
        case 6: window->invalidate({below(90), below(70), below(120), below(100)}); return;
        case 7: window->setFlashDelay(below(2)); return;
        case 8: // lost and given back unnoticed
            machine.display().setInForeground(false);
            machine.display().setInForeground(true);
            window->invalidate({0, 0, 1, 1});
            return;
        default: tile->place(below(120) - 20, below(100) - 20); return;
        }
    }
    std::unique_ptr<Tile> make() {
        const int x = below(100) - 10;
        const int y = below(80) - 10;
        const auto style =
            below(2) == 0 ? OMTrinket::UpdateStyle::Regions : OMTrinket::UpdateStyle::Rectangle;
        return std::make_unique<Tile>(*window, Rect{x, y, x + 1 + below(40), y + 1 + below(40)},
                                      10 + below(200), style);
    }
    /// The colour that the model has at a point.
    int expectedPixel(int x, int y) {
        OMTrinket* top = window->findTrinket([&](const OMTrinket& trinket) {
            return trinket.isShown() && trinket.containsPoint({x, y});
        });
        const int ground = window->background() ? kStripes : 0;
        return top ? static_cast<Tile*>(top)->color() : ground;
    }
    int differences() {
        int count = 0;
        for (int y = 0; y < kFlippingHeight; ++y)
            for (int x = 0; x < kFlippingWidth; ++x)
                count += seenPixel(x, y) != expectedPixel(x, y);
        return count;
    }

    std::minstd_rand random{20};
};

TEST_P(ModelTest, WhatIsSeenIsWhatAllTrinketsTogetherLookLike) {
    const auto [showing, striped] = GetParam();
    open(showing);
    if (striped) window->setBackground(std::make_unique<Striped>());
    Tiles tiles;
    for (int i = 0; i < 8; ++i) tiles.push_back(make());
    for (int round = 0; round < 600; ++round) {
        for (int i = below(4); i >= 0; --i) change(tiles);
        cycle();
        if (!window->isPresenting()) continue;
        ASSERT_EQ(differences(), 0) << "round " << round;
    }
}

INSTANTIATE_TEST_SUITE_P(OneAndTwoPages, ModelTest,
                         testing::Combine(testing::Values(Showing::Copying, Showing::Flipping),
                                          testing::Bool()));

} // namespace

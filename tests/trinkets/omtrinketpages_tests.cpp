// Windows on surfaces: two pages that are flipped, deep back buffers, and screens that are lost.
#include "trinkets/flippingfixture.h"

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

    /// Pixels that a cycle composes, and whether it shows a page.
    std::pair<std::size_t, bool> work() {
        std::pair<std::size_t, bool> done;
        window->hooks().beforeTrinkets = [&] { done.first = window->dirtyRegion().pixelCount(); };
        window->hooks().afterPresent = [&] { done.second = true; };
        cycle();
        window->hooks() = {};
        return done;
    }
};

TEST_F(FlippingWindowTest, EachPageCatchesUpWithTheChangesThatItMissedAndNoMore) {
    ASSERT_TRUE(window->isFlipping());
    EXPECT_FALSE(OMTrinketWindow({0, 0, 100, 80}, nullptr, "", Showing::Flipping).isFlipping())
        << "there is one chain";
    Tile tile(*window, {0, 0, 10, 10}, 10);
    // Both pages are new; then the other page still shows it in its first place, and this one in
    // its second.
    for (const auto& [x, pixels] : {std::pair(0, 8000u), {20, 8000u}, {40, 200u}, {42, 200u}}) {
        tile.place(x, 0);
        EXPECT_EQ(work(), std::pair(std::size_t{pixels}, true));
        for (int at = 1; at < 100; at += 2)
            EXPECT_EQ(seenPixel(at, 5) == 10, at >= x && at < x + 10);
    }
    EXPECT_EQ(work(), std::pair(std::size_t{0}, false)) << "a page that is up to date stays";
    machine.display().setInForeground(false);
    tile.offset(5, 0);
    EXPECT_FALSE(work().second) << "another program has the screen";
    EXPECT_FALSE(window->restoreScreen());
    machine.display().setInForeground(true);
    EXPECT_TRUE(window->restoreScreen());
    EXPECT_TRUE(work().second);
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
    /// Pixels that are not of the topmost tile's colour.
    int differences() {
        int count = 0;
        for (int y = 0; y < kFlippingHeight; ++y)
            for (int x = 0; x < kFlippingWidth; ++x) {
                const auto* top = window->findTrinket([&](const OMTrinket& trinket) {
                    return trinket.isShown() && trinket.containsPoint({x, y});
                });
                const int ground = window->background() ? kStripes : 0;
                count += seenPixel(x, y) != (top ? static_cast<const Tile*>(top)->color() : ground);
            }
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

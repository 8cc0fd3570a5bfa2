// Dialogs: what they swallow while they are there, their buttons, and who hears of them.
#include "dialog/rdialog.h"

#include "src/gamefixture.h"

#include "omtbackground.h"
#include "rhotspot.h"
#include "rpbutton.h"
#include "scene/rscenprt.h"

#include <algorithm>
#include <array>
#include <functional>
#include <numeric>

using namespace testing_support;
using platform::Point;
using platform::Rect;
using Strings = std::vector<std::string>;

namespace {

// Pictures, with their places.
constexpr int kDialogPanel = 70; ///< 200 x 100 at 100, 50
constexpr int kYes = 71;         ///< button, 40 x 20 at 110, 120
constexpr int kNo = 72;          ///< the same at 200, 120
constexpr int kGraphic = 73;     ///< 30 x 30 at 190, 110, over a part of the second button
constexpr int kMissing = 99;

constexpr Point kOnPanel{290, 60};
constexpr Point kOnYes{115, 125};
constexpr Point kOnNo{235, 130};
constexpr Point kOnGraphic{193, 112};
constexpr Point kOnGraphicAndNo{205, 125};
constexpr Point kBeside{500, 400};

class DialogTest : public GameObjectTest {
  protected:
    DialogTest() {
        addPicture(kDialogPanel, 200, 100, 'p', 100, 50);
        addButton(kYes, 110);
        addButton(kNo, 200);
        addPicture(kGraphic, 30, 30, 'g', 190, 110);
    }
    void addButton(int id, int x) {
        AseqBuilder builder;
        builder.x = x;
        builder.y = 120;
        builder.block(40, 20, 'u').block(40, 20, 'd').sequence({entry(0, 9), entry(1, 9)});
        pictures[id] = builder;
    }
    std::unique_ptr<RDialog> dialog(const std::string& words = "70 20") {
        auto made = make<RDialog>(words);
        play(*made, "addButton", "71 5");
        play(*made, "addButton", "72 -8");
        play(*made, "addGraphic", "73");
        return made;
    }
    static std::string selected(RDialog& dialog) { return get(dialog, "selectedButton"); }
};

TEST_F(DialogTest, ButtonsTellTheirValues) {
    auto d = dialog();
    d->attachHandler("buttonPressed", [&] { heard.push_back("event " + selected(*d)); });
    d->setButtonLink([this](int value) { heard.push_back("link " + std::to_string(value)); });
    EXPECT_EQ(selected(*d), "") << "none was pressed yet";
    click(kOnYes);
    click(kOnNo);
    click(kOnYes);
    EXPECT_EQ(takeHeard(),
              (Strings{"event 5", "link 5", "event -8", "link -8", "event 5", "link 5"}));
    drag(kOnNo, kBeside);
    click(kOnPanel);
    click(kBeside);
    EXPECT_EQ(takeHeard(), Strings{}) << "no button was pressed";
    EXPECT_EQ(selected(*d), "5");
}

TEST_F(DialogTest, ItsPartsLieOneAboveIt) {
    auto d = dialog("65606 20"); // numbers of resources have 16 bits
    for (const auto& [slot, at] : {std::pair{RDialog::kHotSpotSlot, kBeside},
                                   {RDialog::kBackgroundSlot, kOnPanel},
                                   {RDialog::kButtonSlot, kOnYes}}) {
        ASSERT_TRUE(d->member(slot)) << slot;
        EXPECT_EQ(d->member(slot)->z(), 21);
        EXPECT_EQ(window.input().hitTest(at), d->member(slot)) << slot;
    }
    EXPECT_EQ(d->member(RDialog::kHotSpotSlot)->boundingRectangle(), (Rect{0, 0, 640, 480}));
    EXPECT_EQ(placeOf(*d->member(RDialog::kGraphicSlot)), "190,110");
    for (const bool touchy : {true, false, true}) { // which its members follow
        d->setTouchy(touchy);
        const OMTrinket* background = touchy ? d->member(RDialog::kBackgroundSlot) : nullptr;
        EXPECT_EQ(window.input().hitTest(kOnGraphic), background) << "graphics are not clicked";
        EXPECT_EQ(dynamic_cast<RPButton*>(window.input().hitTest(kOnGraphicAndNo)) != nullptr,
                  touchy);
    }
    drag(kOnPanel, kBeside);
    drag(kBeside, kOnPanel);
    EXPECT_EQ(placeOf(*d->member(RDialog::kBackgroundSlot)), "100,50") << "it cannot be dragged";
    d->setZ(40);
    EXPECT_EQ(window.input().hitTest(kOnYes), d->member(RDialog::kButtonSlot));
    EXPECT_EQ(window.input().hitTest(kOnPanel)->z(), 41);
    const std::size_t before = window.trinketCount();
    d.reset();
    EXPECT_EQ(window.trinketCount(), before - 6) << "its members went with it";
}

TEST_F(DialogTest, ClicksBesideItGoNowhere) {
    Strings& log = heard;
    RHotSpot below(window, {400, 300, 600, 450});
    RHotSpot above(window, {10, 10, 30, 30});
    for (auto [spot, z] : {std::pair{&below, 20}, {&above, 22}}) {
        spot->takeClass(RHotSpot::kClass);
        spot->setZ(z);
    }
    below.attachHandler("mouseDown", [&] { log.emplace_back("below"); });
    above.attachHandler("mouseDown", [&] { log.emplace_back("above"); });
    window.input().defaults().mouseDown = [&](Point) { log.emplace_back("window"); };
    window.input().defaults().doubleClick = [&](Point) { log.emplace_back("twice"); };
    constexpr Point kOnAbove{15, 15};
    constexpr Point kOnScenery{5, 400};
    const auto clickAll = [&] {
        for (const Point& at : {kBeside, kOnAbove, kOnScenery}) click(at);
        window.doubleClick(kOnScenery);
        window.mouseUp(kOnScenery);
        return takeHeard();
    };
    const Strings without{"below", "above", "window", "twice"};
    EXPECT_EQ(clickAll(), without);
    auto d = dialog();
    EXPECT_EQ(clickAll(), Strings{"above"});
    d->setVisible(false);
    click(kOnScenery);
    EXPECT_EQ(takeHeard(), Strings{}) << "a hidden one takes them, too";
    d->setVisible(true);
    d.reset();
    EXPECT_EQ(clickAll(), without);
}

TEST_F(DialogTest, ThePortsHearOfTheBackgroundAgain) {
    // Two ports and two dialogs are made in turn and go in every order.
    window.input().defaults().mouseDown = [this](Point) { heard.emplace_back("window"); };
    std::array<int, 4> order{};
    std::iota(order.begin(), order.end(), 0);
    do {
        std::string told;
        for (const int i : order) told += std::to_string(i);
        SCOPED_TRACE(told);
        std::array<std::unique_ptr<OMScriptableObject>, 4> objects;
        for (std::size_t i = 0; i < objects.size(); ++i) {
            if (i % 2 == 1) {
                auto hidden = dialog(); // or its hot spot would take the clicks
                hidden->setVisible(false);
                objects[i] = std::move(hidden);
                continue;
            }
            objects[i] = std::make_unique<RScenePort>();
            objects[i]->takeClass(RScenePort::kClass);
            listen(*objects[i], "backgroundClicked");
        }
        const auto expected = [&] {
            if (objects[1] || objects[3]) return Strings{};
            const auto ports =
                static_cast<std::size_t>((objects[0] ? 1 : 0) + (objects[2] ? 1 : 0));
            return ports > 0 ? Strings(ports, "backgroundClicked") : Strings{"window"};
        };
        for (const int i : order) {
            click(kBeside);
            EXPECT_EQ(takeHeard(), expected());
            objects[static_cast<std::size_t>(i)].reset();
        }
        click(kBeside);
        EXPECT_EQ(takeHeard(), Strings{"window"});
    } while (std::ranges::next_permutation(order).found);
}

TEST_F(DialogTest, HandlersThatDropIt) {
    auto d = dialog();
    window.input().defaults().mouseDown = nullptr;
    d->setButtonLink([this](int) { heard.emplace_back("link"); });
    d->attachHandler("buttonPressed", [&] { d.reset(); });
    click(kOnYes);
    EXPECT_FALSE(d);
    EXPECT_EQ(takeHeard(), Strings{}) << "its link is not called";
    EXPECT_EQ(window.trinketCount(), 0u);
    d = dialog();
    d->setButtonLink([&](int) { d.reset(); });
    listen(*d, "buttonPressed");
    click(kOnNo);
    EXPECT_FALSE(d);
    EXPECT_EQ(takeHeard(), Strings{"buttonPressed"});
    // One dialog opens the next.
    d = dialog();
    d->attachHandler("buttonPressed", [&] {
        d.reset();
        d = dialog();
    });
    click(kOnYes);
    EXPECT_EQ(selected(*d), "");
    click(kOnNo);
    EXPECT_EQ(selected(*d), "-8");
}

TEST_F(DialogTest, WhatIsMissing) {
    auto d = make<RDialog>("99 3");
    play(*d, "addButton", "99 1");
    play(*d, "addGraphic", "99");
    EXPECT_EQ(d->memberCount(), 1u) << "it swallows clicks all the same";
    EXPECT_EQ(takeFailures(), Strings{});
    AOImage::setSourceLocator(nullptr);
    d = make<RDialog>("70 3");
    EXPECT_EQ(takeFailures(), Strings{"SourceURL is not installed in OMAnimation"});
    play(*d, "addButton", "71 1");
    play(*d, "addGraphic", "73");
    EXPECT_EQ(takeFailures(), Strings(2, "SourceURL is not installed in OMAnimation"));
    EXPECT_EQ(d->memberCount(), 1u);
}

} // namespace

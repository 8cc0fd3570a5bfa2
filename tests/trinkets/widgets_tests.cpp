// Texts, triggers, buttons, clocks and lists: what is hard to see from a script.
#include "../ompp/nfntbuilder.h"
#include "trinkets/windowfixture.h"

#include "omeffectsounds.h"
#include "omnfntfont.h"
#include "ranimationtrigger.h"
#include "rpbutton.h"
#include "rsellist.h"
#include "rtext.h"
#include "rtrigger.h"
#include "selectionlist.h"
#include "textblock.h"

#include <algorithm>
#include <functional>
#include <random>

using namespace testing_support;
using platform::Point;
using platform::Rect;
using MouseState = OMTrinket::MouseState;

namespace {

using Strings = std::vector<std::string>;

// Lines

/// Every character is three pixels wide, the blank two, and W five.
class LinesTest : public OMAppTest {
  protected:
    LinesTest() {
        NFNTFont description;
        description.ascent = 1;
        for (int code = ' '; code < 127; ++code)
            description.characters[code] = {{}, 0, code == ' ' ? 2 : code == 'W' ? 5 : 3};
        MemoryStream stream(description.bytes());
        font = std::make_unique<OMNFNTFont>(stream);
    }
    Strings lines(std::string_view text, std::optional<int> width) {
        Strings result;
        for (const std::string_view line : OMLinesOf(text, *font, width)) result.emplace_back(line);
        return result;
    }
    std::unique_ptr<OMNFNTFont> font;
};

TEST_F(LinesTest, AreBrokenBetweenWords) {
    const struct {
        std::string_view text;
        std::optional<int> width;
        Strings lines;
    } rows[] = {
        {"", 10, {""}},
        {"ab cd\ref\r\ngh\n", std::nullopt, {"ab cd", "ef", "gh", ""}},
        {"ab cd ef", 14, {"ab cd", "ef"}},
        {"ab    cd", 9, {"ab", "cd"}},   // the blanks go
        {"  ab cd", 10, {"  ab", "cd"}}, // those in front stay
        {"ab ", 6, {"ab "}},             // and those that hang over
        {"abcdef", 9, {"abc", "def"}},   // a word that is wider than the line
        {"ab cdefgh", 9, {"ab", "cde", "fgh"}},
        {"WW aW", 10, {"WW", "aW"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(lines(row.text, row.width), row.lines)
            << row.text << " in " << row.width.value_or(-1);
}

// Objects in a window

/// Plays nothing; the test says when a sound has ended.
struct EffectSounds final : OMEffectSounds {
    int playEffect(int id, OMLink done) override {
        if (id == missing) {
            if (onMissing) onMissing();
            return kNotPlaying;
        }
        played.push_back(id);
        links.push_back(std::move(done));
        return static_cast<int>(links.size()) - 1;
    }
    void endEffect(int handle) override {
        ended.push_back(handle);
        finish(handle); // as the game's sounds do
    }
    void finish(int handle) {
        const OMLink link = std::exchange(links.at(static_cast<std::size_t>(handle)), nullptr);
        link();
    }
    int missing = 99;
    std::function<void()> onMissing; ///< such as a box
    std::vector<int> played;
    std::vector<int> ended;
    std::vector<OMLink> links;
};

class DisplayObjectTest : public WindowTest {
  protected:
    DisplayObjectTest() {
        AseqBuilder builder;
        AOSequence all;
        for (std::int16_t i = 0; i < 8; ++i) {
            builder.block(20, 10, static_cast<char>('a' + i));
            all.push_back({0, 0, i, 100});
        }
        image = builder.sequence(all).image();
    }
    template <class Class>
    std::unique_ptr<Class> make(std::initializer_list<const char*> events) {
        auto object = std::make_unique<Class>(window, image, 1, 10, 10);
        object->takeClass(Class::kClass);
        for (const char* event : events)
            object->attachHandler(event, [this, event] { heard.emplace_back(event); });
        return object;
    }
    Strings take() { return std::exchange(heard, {}); }

    std::shared_ptr<AOImage> image;
    EffectSounds sounds;
    Strings heard;
};

TEST_F(DisplayObjectTest, ATriggerIsTurnedUntilTheReleaseIsLost) {
    auto trigger = make<RTrigger>({"mouseDown", "mouseUp", "clicked", "fired"});
    trigger->setSfxID(7);
    trigger->setFrameNumber(2);
    window.mouseDown({15, 15});
    std::vector<int> frames;
    for (const auto& [x, delta] : {std::pair(50, 10), {24, 10}, {4, -5}, {0, 0}}) {
        trigger->setFramePixelDelta(delta);
        window.mouseMove({x, 70}); // the pointer need not stay on it
        frames.push_back(trigger->frameNumber());
    }
    EXPECT_EQ(frames, (std::vector<int>{5, 2, 4, 2})) << "nine pixels are no frame";
    EXPECT_EQ(sounds.played, std::vector<int>{7});
    window.mouseReleaseLost();
    window.idle();
    EXPECT_EQ(trigger->mouseState(), MouseState::Idle);
    EXPECT_EQ(take(), Strings{"mouseDown"});
}

TEST_F(DisplayObjectTest, AButtonIsHitWhereItIsThereAndTheReleaseArrives) {
    auto button = make<RPButton>({"hit"});
    const auto pressed = [&](const std::function<void()>& meanwhile) {
        window.mouseDown({15, 15});
        meanwhile();
        window.mouseUp({15, 15});
        window.idle();
        button->setEnabled(true);
        button->setVisible(true);
        window.setPresenting(true);
        EXPECT_EQ(button->frameNumber(), 1);
        return take().size();
    };
    const auto lost = [&] { window.mouseReleaseLost(); };
    EXPECT_EQ(pressed([&] { button->press(); }), 1u);
    EXPECT_EQ(pressed([&] { button->setEnabled(false); }), 0u);
    EXPECT_EQ(pressed([&] { button->setVisible(false); }), 0u);
    EXPECT_EQ(pressed([&] { window.setPresenting(false); }), 0u) << "the screen is black";
    EXPECT_EQ(pressed(lost), 0u);
    button->setClickSoundID(sounds.missing);
    EXPECT_EQ(pressed([] {}), 1u) << "at once";
    sounds.onMissing = lost; // by the box that tells so
    EXPECT_EQ(pressed([] {}), 0u);
    button->setHitLink([this] { heard.emplace_back("link"); });
    sounds.onMissing = nullptr;
    EXPECT_EQ(pressed([] {}), 1u) << "the link in place of the event";
    button->setClickSoundID(5);
    button->press();
    button.reset();
    EXPECT_EQ(sounds.ended, std::vector<int>{0}) << "its click goes with it";
}

TEST_F(DisplayObjectTest, AClockMakesUpForLatePasses) {
    RAnimationTrigger clock;
    clock.takeClass(RAnimationTrigger::kClass);
    int frames = 0;
    clock.attachHandler("newFrame", [&] { ++frames; });
    const auto framesOf = [&](int passes, int ms) {
        frames = 0;
        machine.clock().now += static_cast<std::uint32_t>(ms);
        for (int i = 0; i < passes; ++i) app->pass();
        return frames;
    };
    machine.clock().now = 0xFFFFFF00; // wraps soon
    clock.setFramesPerSecond(4);
    clock.start();
    EXPECT_EQ(framesOf(2, 1010), 2) << "far too late: one in each pass";
    EXPECT_EQ(framesOf(8, 0), 2) << "until it has made up for that";
    EXPECT_EQ(framesOf(1, 239), 0);
    EXPECT_EQ(framesOf(1, 2), 1);
    clock.setFramesPerSecond(5000);
    EXPECT_EQ(framesOf(2, 250), 2) << "one a pass";
    clock.setFramesPerSecond(-1);
    machine.clock().now += 1000;
    clock.setFramesPerSecond(10);
    EXPECT_EQ(framesOf(1, 0), 0) << "a pause is not made up for";
}

// The selection list's mouse

TEST_F(DisplayObjectTest, TheListIsPickedFromByTheMouse) {
    RSelList list(window, {0, 0, 80, 60});
    list.takeClass(RSelList::kClass);
    list.attachHandler("entrySelected", [&] { heard.push_back(list.currentEntry()); });
    for (const char* name : {"Ana", "Bia", "Caio", "Davi"}) list.addListEntry(name);
    const int height = 8 + 2 + 1; // of a line of the system font here
    const auto line = [&](int number) { return Point{40, 2 + number * height + height / 2}; };
    list.addChar("c");
    window.mouseDown(line(1));
    EXPECT_EQ(list.currentEntry(), "Bia");
    EXPECT_EQ(list.list().typed(), "");
    window.doubleClick(line(2));
    EXPECT_EQ(take(), Strings{"Caio"});
    window.doubleClick(line(3)); // beyond the three visible ones
    list.addChar("z");
    window.mouseDown(line(1));
    window.doubleClick(line(1));
    EXPECT_EQ(list.currentEntry(), "Z") << "what is typed is not left by accident";
    EXPECT_EQ(take(), Strings{});
    const auto copy = list.duplicate();
    static_cast<RSelList&>(*copy).deleteEntry();
    EXPECT_EQ(static_cast<RSelList&>(*copy).list().count(), list.list().count() - 1);
}

TEST_F(DisplayObjectTest, WithoutSourcesNothingChanges) {
    RText text(window, {0, 0, RText::kFitting, RText::kFitting});
    text.chooseFont("12", std::nullopt, std::nullopt);
    RSelList list(window, {0, 0, 80, 60});
    list.setTextFontID(12);
    list.setTextFont("Lumo");
    text.setColorIndex(256);
    EXPECT_EQ(text.colorIndex(), 0);
    OMEffectSounds::setCurrent(nullptr);
    auto button = make<RPButton>({});
    button->setClickSoundID(5);
    button->press();
    auto trigger = make<RTrigger>({});
    trigger->setSfxID(5);
    window.mouseDown({15, 15});
    window.mouseMove({16, 15});
    EXPECT_EQ(takeFailures(),
              (Strings{"URL has to be installed in RText", "URL has to be installed in RSelList",
                       "URL has to be installed in RSelList", "OMColor::set - invalid index!",
                       "Sound URL has to be installed in OMAnimation",
                       "Extended Sound URL is not installed in RTrigger"}));
}

TEST(SelectionList, StaysInOrderWhateverIsDone) {
    std::mt19937 engine{2026};
    const auto random = [&](int most) { return std::uniform_int_distribution(0, most)(engine); };
    SelectionList list;
    for (int step = 0; step < 20000; ++step) {
        const std::string name(1, static_cast<char>('A' + random(2)));
        switch (random(9)) {
        case 0: list.insert(name + static_cast<char>('a' + random(2))); break;
        case 1: list.remove(); break;
        case 2: list.takeBack(); break;
        case 3: list.startNew(); break;
        case 4: list.move(random(2) - 1); break;
        case 5: list.scroll(random(8) - 4); break;
        case 6: list.highlight(std::string_view(name)); break;
        case 7: list.setVisibleLines(random(6)); break;
        default: list.type(static_cast<char>(random(9) == 0 ? ' ' : 'a' + random(2))); break;
        }
        ASSERT_LE(list.count(), SelectionList::kMaxEntries);
        for (int i = 1; i < list.count(); ++i) ASSERT_LE(list.entry(i - 1), list.entry(i)) << step;
        ASSERT_GE(list.highlighted(), 0);
        ASSERT_LT(list.highlighted(), std::max(list.count(), 1));
        ASSERT_GE(list.firstVisible(), 0);
        ASSERT_TRUE(list.isNew() ? list.current() == list.typed()
                                 : list.current().starts_with(list.typed()))
            << step;
        ASSERT_EQ(list.mode() == SelectionList::Mode::Browsing,
                  list.typed().empty() && !list.isNew())
            << step;
    }
}

} // namespace

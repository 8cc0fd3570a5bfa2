// Texts, triggers, buttons, clocks and the keyboard of scripts: what is hard to see from a script.
#include "../ompp/nfntbuilder.h"
#include "trinkets/windowfixture.h"

#include "omeffectsounds.h"
#include "omnfntfont.h"
#include "ranimationtrigger.h"
#include "rkbdinp.h"
#include "rpbutton.h"
#include "rsellist.h"
#include "rtext.h"
#include "rtrigger.h"
#include "textlayout.h"

using namespace testing_support;
using platform::Key;
using platform::Point;
using platform::Rect;
using MouseState = OMTrinket::MouseState;

namespace {

using Strings = std::vector<std::string>;

// Lines

/// Every character is three pixels wide, the blank two, and W five.
class LinesTest : public ApplicationTest {
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
    struct Row {
        std::string_view text;
        std::optional<int> width;
        Strings lines;
    };
    const Row rows[] = {
        {"", std::nullopt, {""}},
        {"", 10, {""}},
        {"ab cd\ref\r\ngh\n", std::nullopt, {"ab cd", "ef", "gh", ""}},
        {"ab cd ef", 14, {"ab cd", "ef"}},
        {"ab cd ef", 13, {"ab", "cd", "ef"}},
        {"ab    cd", 9, {"ab", "cd"}},   // the blanks go
        {"  ab cd", 10, {"  ab", "cd"}}, // those in front stay
        {"ab ", 6, {"ab "}},             // and those that hang over
        {"abcdef", 9, {"abc", "def"}},   // a word that is wider than the line
        {"ab cdefgh", 9, {"ab", "cde", "fgh"}},
        {"abc", 0, {"a", "b", "c"}},
        {"abc", -5, {"a", "b", "c"}},
        {"sub-mar-ine", 21, {"sub-", "mar-ine"}},
        {"a\n\nb", 9, {"a", "", "b"}},
        {"WW aW", 10, {"WW", "aW"}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(lines(row.text, row.width), row.lines)
            << row.text << " in " << row.width.value_or(-1);
}

// Objects in a window

/// Plays nothing; the test says when a sound has ended.
struct EffectSounds final : OMEffectSounds {
    EffectSounds() { setCurrent(this); }
    ~EffectSounds() override { setCurrent(nullptr); }
    int playEffect(int id, OMLink done) override {
        if (id == missing) return kNotPlaying;
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
    std::vector<int> played;
    std::vector<int> ended;
    std::vector<OMLink> links;
};

class DisplayObjectTest : public WindowTest {
  protected:
    DisplayObjectTest() {
        const auto frame = [](int number) {
            return AOEntry{0, 0, static_cast<std::int16_t>(number), 100};
        };
        AseqBuilder builder;
        for (const char color : {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h'})
            builder.block(20, 10, color);
        AOSequence all;
        for (int i = 0; i < 8; ++i) all.push_back(frame(i));
        all.push_back({0, 0, AOEntry::kLoop, 0});
        all.push_back({0, 0, AOEntry::kEnd, 0});
        builder.sequence(all);
        image = builder.image();
    }
    template <class Class>
    std::unique_ptr<Class> make(std::initializer_list<const char*> events) {
        auto object = std::make_unique<Class>(window, image, 1, 10, 10);
        object->declareProperties();
        for (const char* event : events)
            object->attachHandler(event, [this, event] { heard.emplace_back(event); });
        return object;
    }
    Strings take() { return std::exchange(heard, {}); }

    std::shared_ptr<AOImage> image;
    EffectSounds sounds;
    Strings heard;
};

TEST_F(DisplayObjectTest, ATriggerFollowsThePointerBetweenItsEnds) {
    auto trigger = make<RTrigger>({"mouseDown", "mouseUp", "clicked", "fired"});
    trigger->setCursors(-3, -4);
    trigger->setSfxID(7);
    trigger->setFrameNumber(2);
    window.mouseDown({15, 15});
    EXPECT_EQ(machine.display().cursor, -4);
    EXPECT_EQ(trigger->mouseState(), MouseState::Captured);
    EXPECT_EQ(sounds.played, std::vector<int>{}) << "only a drag sounds";
    window.mouseMove({50, 70}); // the pointer need not stay on it
    EXPECT_EQ(trigger->frameNumber(), 5);
    EXPECT_EQ(trigger->x(), 10) << "it does not move";
    window.mouseMove({24, 15});
    EXPECT_EQ(trigger->frameNumber(), 2) << "nine pixels are no frame";
    window.mouseUp({24, 15});
    EXPECT_EQ(machine.display().cursor, -3);
    EXPECT_EQ(trigger->mouseState(), MouseState::Idle);
    EXPECT_EQ(sounds.played, std::vector<int>{7});
    EXPECT_EQ(take(), (Strings{"mouseDown", "clicked", "mouseUp"}));

    window.mouseDown({15, 15});
    window.mouseMove({90, 15});
    EXPECT_EQ(trigger->frameNumber(), 8);
    window.mouseMove({15 - 40, 15});
    EXPECT_EQ(trigger->frameNumber(), 1);
    window.mouseUp({15 - 40, 15});
    EXPECT_EQ(take(), (Strings{"mouseDown", "fired", "mouseUp"}));
    EXPECT_EQ(sounds.played, (std::vector<int>{7, 7}));

    trigger->setFramePixelDelta(-5);
    window.mouseDown({25, 15});
    window.mouseMove({14, 15});
    EXPECT_EQ(trigger->frameNumber(), 3);
    trigger->setFramePixelDelta(0);
    window.mouseMove({0, 15});
    EXPECT_EQ(trigger->frameNumber(), 1) << "back where it was";
    window.mouseReleaseLost();
    EXPECT_EQ(trigger->mouseState(), MouseState::Idle);
    EXPECT_EQ(take(), Strings{"mouseDown"});
}

TEST_F(DisplayObjectTest, AnObjectMayGoInItsOwnEvents) {
    for (const char* event : {"mouseDown", "clicked", "mouseUp"}) {
        auto trigger = make<RTrigger>({});
        trigger->attachHandler(event, [&] { trigger.reset(); });
        window.mouseDown({15, 15});
        window.mouseUp({15, 15});
        EXPECT_EQ(trigger, nullptr) << event;
    }
    auto button = make<RPButton>({});
    button->attachHandler("hit", [&] { button.reset(); });
    window.mouseDown({15, 15});
    window.mouseUp({15, 15});
    EXPECT_EQ(button, nullptr);
    RAnimationTrigger* clock = new RAnimationTrigger;
    clock->declareProperties();
    clock->attachHandler("newFrame", [clock] { delete clock; });
    clock->start();
    machine.clock().now += 100;
    app.pass();
    app.pass();
}

TEST_F(DisplayObjectTest, AButtonIsHitWhenItsClickHasEnded) {
    auto button = make<RPButton>({"hit"});
    button->setCursors(-3, -4);
    EXPECT_EQ(button->frameNumber(), 1);
    window.mouseDown({15, 15});
    EXPECT_EQ(button->frameNumber(), 2);
    EXPECT_EQ(machine.display().cursor, -4);
    window.mouseMove({50, 50});
    EXPECT_EQ(button->frameNumber(), 1);
    EXPECT_EQ(machine.display().cursor, -3);
    window.mouseUp({50, 50});
    EXPECT_EQ(take(), Strings{});
    window.mouseDown({15, 15});
    window.mouseMove({50, 50});
    window.mouseMove({12, 12});
    EXPECT_EQ(button->frameNumber(), 2);
    window.mouseUp({12, 12});
    EXPECT_EQ(button->frameNumber(), 1);
    EXPECT_EQ(take(), Strings{"hit"}) << "without a sound at once";

    button->setClickSoundID(5);
    window.mouseDown({15, 15});
    window.mouseUp({15, 15});
    EXPECT_EQ(take(), Strings{});
    sounds.finish(0);
    EXPECT_EQ(take(), Strings{"hit"});
    sounds.finish(0);
    EXPECT_EQ(take(), Strings{});

    // Pressed again while it sounds: the first sound is ended, one hit comes with the second.
    window.mouseDown({15, 15});
    window.mouseUp({15, 15});
    window.mouseDown({15, 15});
    EXPECT_EQ(sounds.ended, std::vector<int>{1});
    EXPECT_EQ(take(), Strings{});
    window.mouseUp({15, 15});
    sounds.finish(2);
    EXPECT_EQ(take(), Strings{"hit"});
    // A sound that has ended before the release delays nothing.
    window.mouseDown({15, 15});
    sounds.finish(3);
    EXPECT_EQ(take(), Strings{});
    window.mouseUp({15, 15});
    EXPECT_EQ(take(), Strings{"hit"});

    button->setClickSoundID(sounds.missing);
    button->setHitLink([this] { heard.emplace_back("link"); });
    window.mouseDown({15, 15});
    window.mouseUp({15, 15});
    EXPECT_EQ(take(), Strings{"link"});
    button->setEnabled(false);
    window.mouseDown({15, 15});
    EXPECT_EQ(button->frameNumber(), 1);
    window.mouseUp({15, 15});
    EXPECT_EQ(take(), Strings{});
    button->setEnabled(true);
    window.mouseDown({15, 15});
    window.mouseReleaseLost();
    EXPECT_EQ(button->frameNumber(), 1);
    EXPECT_EQ(window.mouseTarget(), nullptr);
    EXPECT_EQ(take(), Strings{});
    button->setClickSoundID(5);
    button->press();
    button.reset();
    EXPECT_EQ(sounds.ended.back(), 4) << "its click goes with it";
}

TEST_F(DisplayObjectTest, AHitIsOwedUntilItIsRaised) {
    auto button = make<RPButton>({"hit"});
    button->setClickSoundID(5);
    window.mouseDown({15, 15});
    window.mouseUp({15, 15});
    button->setClickSoundID(RPButton::kNoSound);
    button->press(); // ends the sound that the hit waits for
    EXPECT_EQ(take(), Strings{});
    cycle();
    EXPECT_EQ(take(), Strings{"hit"});
    cycle();
    EXPECT_EQ(take(), Strings{});

    const auto released = [&](const std::function<void()>& meanwhile) {
        window.mouseDown({15, 15});
        meanwhile();
        window.mouseUp({15, 15});
        button->setEnabled(true);
        button->setVisible(true);
        window.setPresenting(true);
        return take();
    };
    EXPECT_EQ(released([&] { button->press(); }), Strings{"hit"});
    EXPECT_EQ(released([&] { button->setEnabled(false); }), Strings{});
    EXPECT_EQ(released([&] { button->setVisible(false); }), Strings{});
    EXPECT_EQ(released([&] { window.setPresenting(false); }), Strings{}) << "the screen is black";
}

TEST_F(DisplayObjectTest, AButtonLooksPressedForAWhileWhenAScriptPressesIt) {
    auto button = make<RPButton>({"hit"});
    button->setPlayDelay(5);
    button->press();
    for (int i = 0; i < 5; ++i) cycle();
    EXPECT_EQ(button->frameNumber(), 2);
    cycle();
    EXPECT_EQ(button->frameNumber(), 1);
    button->setPlayDelay(-1);
    button->press();
    cycle();
    EXPECT_EQ(button->frameNumber(), 1);
    EXPECT_EQ(take(), Strings{});
}

TEST_F(DisplayObjectTest, AClockMakesUpForLatePasses) {
    RAnimationTrigger clock;
    clock.declareProperties();
    int frames = 0;
    clock.attachHandler("newFrame", [&] { ++frames; });
    clock.setFramesPerSecond(4);
    machine.clock().now = 0xFFFFFF00; // wraps soon
    clock.start();
    int late = 0;
    for (int passed = 0; passed < 10000; passed += late) {
        late = passed % 3 == 0 ? 1 : 97;
        machine.clock().now += static_cast<std::uint32_t>(late);
        app.pass();
    }
    EXPECT_EQ(frames, 40);
    // Far too late: one in each pass until it has made up for that.
    frames = 0;
    machine.clock().now += 1000;
    for (int i = 0; i < 10; ++i) app.pass();
    EXPECT_EQ(frames, 4);
    clock.stop();
    machine.clock().now += 1000;
    app.pass();
    EXPECT_EQ(frames, 4);
    clock.setFramesPerSecond(0);
    clock.start();
    machine.clock().now += 1000;
    app.pass();
    EXPECT_EQ(frames, 4);
    clock.setFramesPerSecond(5000);
    app.pass();
    app.pass();
    EXPECT_EQ(frames, 6) << "one a pass";
    clock.setFramesPerSecond(-1);
    machine.clock().now += 1000;
    clock.setFramesPerSecond(10);
    app.pass();
    EXPECT_EQ(frames, 6) << "a pause is not made up for";
}

// Keyboard

TEST(RKbdInp, namesEveryKey) {
    struct Row {
        int code;
        bool control;
        const char* name;
    };
    const Row rows[] = {{'a', false, "a"},
                        {' ', false, " "},
                        {0xE9, false, "\xE9"},
                        {static_cast<int>(Key::Backspace), false, "Backspace"},
                        {static_cast<int>(Key::Pause), false, "Pause"},
                        {static_cast<int>(Key::PageUp), false, "PageUp"},
                        {static_cast<int>(Key::Home), false, "Home"},
                        {static_cast<int>(Key::Down), false, "Down"},
                        {static_cast<int>(Key::Delete), false, "Delete"},
                        {static_cast<int>(Key::F1), false, "F1"},
                        {static_cast<int>(Key::F12), false, "F12"},
                        {1, true, "Ctrl-A"},
                        {26, true, "Ctrl-Z"},
                        {'5', true, "Ctrl-5"},
                        {static_cast<int>(Key::F1), true, "Ctrl-F1"}};
    for (const Row& row : rows)
        EXPECT_EQ(RKbdInp::nameOf({static_cast<std::uint16_t>(row.code), row.control}), row.name);
}

TEST_F(DisplayObjectTest, TheLastKeyboardHearsTheKeys) {
    const auto listen = [this](RKbdInp& keyboard, const char* name) {
        keyboard.declareProperties();
        keyboard.attachHandler("keyPressed",
                               [this, &keyboard, name] { heard.push_back(name + keyboard.key()); });
    };
    RKbdInp first;
    listen(first, "first ");
    auto second = std::make_unique<RKbdInp>();
    listen(*second, "second ");
    window.key({'x'});
    second.reset();
    window.key({'y'});
    EXPECT_EQ(take(), (Strings{"second x", "first y"}));
    // A trinket with the focus comes before it.
    auto button = make<RPButton>({});
    window.setFocus(*button);
    window.key({'z'});
    EXPECT_EQ(take(), Strings{});
}

// The selection list's mouse

TEST_F(DisplayObjectTest, TheListIsPickedFromByTheMouse) {
    RSelList list(window, {0, 0, 80, 60});
    list.declareProperties();
    list.attachHandler("entrySelected", [&] { heard.push_back(list.currentEntry()); });
    for (const char* name : {"Ana", "Bia", "Caio", "Davi"}) list.addListEntry(name);
    const int height = 8 + 2 + 1; // of a line of the system font here
    const auto line = [&](int number) { return Point{40, 2 + number * height + height / 2}; };
    window.mouseDown(line(1));
    window.mouseUp(line(1));
    EXPECT_EQ(list.currentEntry(), "Bia");
    list.addChar("c");
    window.mouseDown(line(0));
    EXPECT_EQ(list.currentEntry(), "Ana");
    EXPECT_EQ(list.list().typed(), "");
    window.doubleClick(line(2));
    EXPECT_EQ(take(), Strings{"Caio"});
    window.doubleClick(line(3)); // beyond the three visible ones
    EXPECT_EQ(take(), Strings{});
    list.addChar("z");
    window.mouseDown(line(1));
    window.doubleClick(line(1));
    EXPECT_EQ(list.currentEntry(), "Z") << "what is typed is not left by accident";
    EXPECT_EQ(take(), Strings{});
    list.deleteEntry();
    list.attachHandler("entrySelected", [&] { list.deleteEntry(); });
    window.doubleClick(line(0));
    EXPECT_EQ(list.deletedEntry(), "Caio") << "the view has stayed where Z was typed";
}

TEST_F(DisplayObjectTest, WithoutSourcesNothingChanges) {
    RText text(window, {0, 0}, RText::kFitting, RText::kFitting);
    text.setText("abc");
    EXPECT_EQ(text.textWidth(), 3 * 5);
    EXPECT_EQ(text.textHeight(), 10);
    text.chooseFont("12", std::nullopt, std::nullopt);
    RSelList list(window, {0, 0, 80, 60});
    list.setTextFontID(12);
    list.setTextFont("Lumo");
    text.setColorIndex(256);
    EXPECT_EQ(text.colorIndex(), 0);
    list.setNormalTextColor(-1);
    EXPECT_EQ(list.normalTextColor(), 3);
    OMEffectSounds::setCurrent(nullptr);
    auto button = make<RPButton>({});
    button->setClickSoundID(5);
    button->press();
    auto trigger = make<RTrigger>({});
    trigger->setSfxID(5);
    window.mouseDown({15, 15});
    window.mouseMove({16, 15});
    EXPECT_EQ(
        takeFailures(),
        (Strings{"URL has to be installed in RText", "URL has to be installed in RSelList",
                 "URL has to be installed in RSelList", "OMColor::set - invalid index!",
                 "OMColor::set - invalid index!", "Sound URL has to be installed in OMAnimation",
                 "Extended Sound URL is not installed in RTrigger"}));
}

} // namespace

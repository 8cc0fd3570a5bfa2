// Menu commands, keys that are commands, the exit screen.
#include "commands/menucommands.h"

#include "startup/carriedtexts.h"
#include "trinkets/windowfixture.h"

#include "rkbdinp.h"
#include "scene/efwindow.h"
#include "scene/rscenprt.h"

using platform::Message;

namespace {

constexpr auto kEnter = static_cast<std::uint16_t>(platform::Key::Enter);
constexpr std::uint16_t kControlQ = 17;

class MenuCommandsTest : public testing_support::OMAppTest {
  protected:
    MenuCommandsTest() {
        app->begin();
        carryTexts(machine);
        port.takeClass(RScenePort::kClass);
        for (const std::string event : {"spacebarPressed", "returnPressed", "paused", "resumed"})
            port.attachHandler(event, [this, event] { told += event + " "; });
        keys.takeClass(RKbdInp::kClass);
        keys.attachHandler("keyPressed", [this] { told += "key<" + keys.key() + "> "; });
    }
    std::string send(const Message& message) {
        machine.events().queue.push_back(message);
        app->pass();
        return std::exchange(told, {});
    }
    std::string press(std::uint16_t code, bool control = false) {
        return send({.kind = Message::Kind::Key, .key = {code, control}});
    }
    std::string command(int number) {
        return send({.kind = Message::Kind::Command, .command = number});
    }

    std::string told;
    EffectsWindow window{{0, 0}, "Game"};
    RScenePort port;
    RKbdInp keys;
    RMenuCommands menu{*app, window};
};

TEST_F(MenuCommandsTest, KeysAreCommandsAsLongAsNobodyTypes) {
    EXPECT_EQ(press(' ') + press(kEnter), "spacebarPressed key< > returnPressed key<Enter> ");
    EXPECT_EQ(press(' ', true) + press(kEnter, true), "key<Ctrl- > key<Ctrl-Enter> ");
    EXPECT_EQ(press('q') + press(kControlQ), "key<q> key<\x11> ");
    EXPECT_EQ(command(32) + command(59394), "spacebarPressed returnPressed ");

    testing_support::Tile name(window, {0, 0, 20, 20}, 't');
    name.links().key = [this](const platform::KeyPress& key) {
        told += "typed<" + RKbdInp::nameOf(key) + "> ";
    };
    window.input().setFocus(name);
    EXPECT_EQ(press(' ') + press(kEnter) + press(kControlQ, true),
              "typed< > typed<Enter> typed<Ctrl-Q> ");
    EXPECT_EQ(command(32), "spacebarPressed ") << "the menu is always there";
    window.input().clearFocus();
    EXPECT_EQ(press(' '), "spacebarPressed key< > ");
}

TEST_F(MenuCommandsTest, TheExitScreenAsksUnlessAHandlerOfPausedHasEndedTheGame) {
    int ends = 0;
    app->setStopLink([&] { ++ends; });
    machine.dialogs().answer = platform::Button::No;
    EXPECT_EQ(press(kControlQ, true), "paused resumed key<Ctrl-Q> ");
    port.attachHandler("paused", [this] { app->stop(); });
    EXPECT_EQ(press(kControlQ, true), "") << "the key has done its work";
    app->stop();
    EXPECT_EQ(machine.dialogs().boxes.size(), 1u);
    EXPECT_EQ(ends, 1);
}

TEST_F(MenuCommandsTest, TheOtherCommandsGoToTheLogAndToTheWindow) {
    std::string delays;
    for (const int ms : {0, 10, 3, 150, -500}) {
        window.setFlashDelay(ms);
        command(59411);
        delays += std::to_string(window.flashDelay()) + ' ';
    }
    EXPECT_EQ(delays, "10 0 7 0 100 ");
    command(59408);
    EXPECT_NE(files.text("zorbelog.txt").find("Debug Level changed to ERROR"), std::string::npos);
    command(59410);
    EXPECT_EQ(command(59412), "");
}

} // namespace

// The debug window: its lines, its size, its coming and going.
#include "frameworkfixture.h"

#include "omdebugwindow.h"

namespace {

/// To which the test does what a person would do; it shows itself in `seen`.
struct Native final : platform::TextWindow {
    Native(const platform::Rect& where, platform::TextWindowOwner& itsOwner, std::string& text)
        : owner(itsOwner), place(where), seen(text) {}
    int lineHeight() const override { return 20; }
    platform::Rect rectangle() const override { return place; }
    bool isMinimised() const override { return minimised; }
    void move(platform::Point to) override {
        place = platform::shifted(place, to.x - place.left, to.y - place.top);
    }
    void show(std::span<const std::string> lines, std::size_t fresh) override {
        seen = std::to_string(fresh) + ":";
        for (const std::string& line : lines) seen += line + "/";
    }
    platform::TextWindowOwner& owner;
    platform::Rect place;
    std::string& seen;
    bool minimised = false;
};

using OMDebugWindowTest = testing_support::OMAppTest;

TEST_F(OMDebugWindowTest, ShowsTheNewestLinesThatItHasRoomFor) {
    std::string seen;
    Native* native = nullptr;
    OMDebugWindow window;
    const auto shown = [&](std::string_view text) {
        window.showText(text);
        return std::exchange(seen, {});
    };
    const auto resized = [&](int height) {
        native->place.bottom = native->place.top + height;
        native->owner.resized();
        return std::exchange(seen, {});
    };
    window.move(7, 8);
    EXPECT_EQ(shown("lost"), "") << "it cannot be opened";
    EXPECT_EQ(window.position(), platform::Rect{});
    machine.openWindow = [&](const platform::TextWindowRequest& request,
                             platform::TextWindowOwner& owner) {
        EXPECT_EQ(request.className + request.title, "OMDebugWindowOMDebug");
        auto made = std::make_unique<Native>(request.rectangle, owner, seen);
        native = made.get();
        return made;
    };
    EXPECT_EQ(shown("if\nx>5 is true\n\n[interrupt]"), "1:if/x>5 is true//[interrupt]/");
    EXPECT_EQ(shown("a\n"), "1:if/x>5 is true//[interrupt]/a/");
    EXPECT_EQ(window.position(), (platform::Rect{50, 50, 350, 450}));
    window.move(-10, 20);
    EXPECT_EQ(window.position(), (platform::Rect{-10, 20, 290, 420}));
    for (int i = 0; i < 15; ++i) shown("b");
    EXPECT_EQ(shown("c").substr(0, 6), "1:x>5 ") << "of 20 lines the 21st goes";
    EXPECT_EQ(resized(79), "0:b/b/c/");
    resized(400);
    EXPECT_EQ(shown("d"), "1:b/b/c/d/") << "what was dropped is gone";
    EXPECT_EQ(resized(19), "0:");
    EXPECT_EQ(shown("no room"), "0:");
    resized(20);
    EXPECT_EQ(shown("e"), "1:e/");
    EXPECT_EQ(shown("f"), "1:f/");
    native->minimised = true;
    EXPECT_EQ(shown("g"), "");
    native->owner.damaged();
    EXPECT_EQ(seen, "");
    native->minimised = false;
    native->owner.damaged();
    EXPECT_EQ(seen, "0:g/");

    window.destroy();
    window.destroy();
    EXPECT_EQ(shown("new"), "1:new/");
    native->owner.closed();
    app.reset();
    EXPECT_EXIT(window.show("text"), testing::ExitedWithCode(255),
                "OMDebugWindowCreate - must have an OMApp instance before using OMDebugWindow!");
    app.emplace(OMApp::DisplayMode::PopUp, OMColor(), platform::Rect{0, 0, 640, 480}, 8);
    EXPECT_EQ(shown("newest"), "1:newest/");
    app.reset();
    EXPECT_EQ(shown("open already"), "1:newest/open already/");
}

} // namespace

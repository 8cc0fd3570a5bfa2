// The panel of what makes a game easier to play: what keys and clicks choose in it.
#include "platform/host/screen/comfortpanel.h"

#include <gtest/gtest.h>
#include <set>

namespace platform {
namespace {

constexpr Rect kScreen{0, 0, 640, 480};

TEST(ComfortPanel, KeysAndClicksChooseWhatTheyAreOn) {
    std::size_t keys = 0, pointer = 0;
    const auto setting = [](const char* label, std::vector<std::string> choices,
                            std::size_t& value) {
        return ComfortSetting{label, std::move(choices), [&value] { return value; },
                              [&value](std::size_t index) { value = index; }};
    };
    ComfortPanel panel(
        "How?",
        {setting("Keys", {"No", "Yes"}, keys), setting("Pointer", {"1", "2", "3"}, pointer)},
        "Back", kScreen);
    const auto code = [](Key key) { return static_cast<std::uint16_t>(key); };
    const std::uint16_t left = code(Key::Left), right = code(Key::Right), up = code(Key::Up);
    const std::pair<std::vector<std::uint16_t>, const char*> rows[] = {
        {{}, "Keys: No"},
        {{left}, "Keys: No"},
        {{right, right}, "Keys: Yes"},
        {{' '}, "Keys: No"},
        {{code(Key::Down), code(Key::Enter), right, right}, "Pointer: 3"},
        {{left}, "Pointer: 2"},
        {{' ', ' '}, "Pointer: 1"},
        {{code(Key::Tab), right}, "Back"},
        {{up, up}, "Keys: No"},
        {{up}, "Back"},
    };
    for (const auto& [pressed, focus] : rows) {
        for (const std::uint16_t key : pressed)
            panel.handle({.kind = Message::Kind::Key, .key = {.code = key}});
        EXPECT_EQ(panel.focusText(), focus);
    }
    const Rect place = panel.place();
    EXPECT_EQ(intersection(place, kScreen), place);
    // Down the middle, where rows are beside their choices, and at last the button is.
    std::set<std::string> seen;
    for (Point at{place.left + place.width() / 2, place.top}; !panel.isClosed(); at.y += 4) {
        ASSERT_LT(at.y, place.bottom);
        for (const auto kind : {Message::Kind::MouseDown, Message::Kind::MouseUp})
            panel.handle({.kind = kind, .position = at});
        seen.insert(panel.focusText());
    }
    EXPECT_EQ(seen, (std::set<std::string>{"Keys: No", "Keys: Yes", "Pointer: 1", "Pointer: 2",
                                           "Pointer: 3", "Back"}));
}

} // namespace
} // namespace platform

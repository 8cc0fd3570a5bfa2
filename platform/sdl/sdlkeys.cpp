#include "platform/sdl/sdlkeys.h"

#include "formats/base/latin1.h"

#include <algorithm>
#include <array>

namespace platform {

namespace {

struct KeyRow {
    SDL_Keycode sdl;
    Key key;
};

constexpr std::array kKeys{
    KeyRow{SDLK_BACKSPACE, Key::Backspace},
    KeyRow{SDLK_TAB, Key::Tab},
    KeyRow{SDLK_RETURN, Key::Enter},
    KeyRow{SDLK_KP_ENTER, Key::Enter},
    KeyRow{SDLK_PAUSE, Key::Pause},
    KeyRow{SDLK_ESCAPE, Key::Esc},
    KeyRow{SDLK_PAGEUP, Key::PageUp},
    KeyRow{SDLK_PAGEDOWN, Key::PageDown},
    KeyRow{SDLK_END, Key::End},
    KeyRow{SDLK_HOME, Key::Home},
    KeyRow{SDLK_LEFT, Key::Left},
    KeyRow{SDLK_UP, Key::Up},
    KeyRow{SDLK_RIGHT, Key::Right},
    KeyRow{SDLK_DOWN, Key::Down},
    KeyRow{SDLK_INSERT, Key::Insert},
    KeyRow{SDLK_DELETE, Key::Delete},
    KeyRow{SDLK_F1, Key::F1},
    KeyRow{SDLK_F2, Key::F2},
    KeyRow{SDLK_F3, Key::F3},
    KeyRow{SDLK_F4, Key::F4},
    KeyRow{SDLK_F5, Key::F5},
    KeyRow{SDLK_F6, Key::F6},
    KeyRow{SDLK_F7, Key::F7},
    KeyRow{SDLK_F8, Key::F8},
    KeyRow{SDLK_F9, Key::F9},
    KeyRow{SDLK_F10, Key::F10},
    KeyRow{SDLK_F11, Key::F11},
    KeyRow{SDLK_F12, Key::F12},
};

/// The keys of the number block, which are digits (and come as text) while Num Lock is on.
constexpr std::array kNumberBlock{
    KeyRow{SDLK_KP_9, Key::PageUp}, KeyRow{SDLK_KP_3, Key::PageDown},
    KeyRow{SDLK_KP_1, Key::End},    KeyRow{SDLK_KP_7, Key::Home},
    KeyRow{SDLK_KP_4, Key::Left},   KeyRow{SDLK_KP_8, Key::Up},
    KeyRow{SDLK_KP_6, Key::Right},  KeyRow{SDLK_KP_2, Key::Down},
    KeyRow{SDLK_KP_0, Key::Insert}, KeyRow{SDLK_KP_PERIOD, Key::Delete},
};

std::optional<std::uint16_t> namedKey(const SDL_Keysym& key) {
    const auto row = std::ranges::find(kKeys, key.sym, &KeyRow::sdl);
    if (row != kKeys.end()) return static_cast<std::uint16_t>(row->key);
    if ((key.mod & KMOD_NUM) != 0) return std::nullopt;
    const auto block = std::ranges::find(kNumberBlock, key.sym, &KeyRow::sdl);
    if (block != kNumberBlock.end()) return static_cast<std::uint16_t>(block->key);
    return std::nullopt;
}

/// Characters bring no text while Control is held.
std::optional<std::uint16_t> controlledCharacter(SDL_Keycode sym) {
    if (sym >= SDLK_a && sym <= SDLK_z) return static_cast<std::uint16_t>(sym - SDLK_a + 1);
    if (sym >= 0x20 && sym <= 0xFF) return static_cast<std::uint16_t>(sym);
    return std::nullopt;
}

} // namespace

std::optional<KeyPress> keyPressOf(const SDL_Keysym& key) {
    const bool control = (key.mod & KMOD_CTRL) != 0;
    const bool shift = (key.mod & KMOD_SHIFT) != 0;
    if (const auto code = namedKey(key)) return KeyPress{*code, control, shift};
    // Control with Alt is how some layouts write further characters.
    if (!control || (key.mod & KMOD_ALT) != 0) return std::nullopt;
    const auto code = controlledCharacter(key.sym);
    return code ? std::optional(KeyPress{*code, true}) : std::nullopt;
}

std::uint16_t keyOf(SDL_Keycode key) {
    if (const auto code = namedKey({.sym = key, .mod = KMOD_NUM})) return *code;
    return key >= 0x20 && key <= 0xFF ? static_cast<std::uint16_t>(key) : std::uint16_t{0};
}

std::vector<KeyPress> keyPressesOf(std::string_view utf8) {
    std::vector<KeyPress> presses;
    for (const char32_t character : formats::decodeUtf8(utf8).value_or(U"")) {
        if (character >= 0x20 && character <= 0xFF) {
            presses.push_back({static_cast<std::uint16_t>(character), false});
        }
    }
    return presses;
}

} // namespace platform

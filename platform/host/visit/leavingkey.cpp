#include "platform/host/visit/leavingkey.h"

#include "platform/host/visit/timeline.h"

#include <utility>

namespace platform {

namespace {

/// Takes the word away when the text begins with it.
bool takeWord(std::string_view& text, std::string_view word) {
    if (!text.starts_with(word)) return false;
    text.remove_prefix(word.size());
    return true;
}

std::uint16_t smallLetter(std::uint16_t code) {
    return code >= 'A' && code <= 'Z' ? static_cast<std::uint16_t>(code - 'A' + 'a') : code;
}

bool isFunctionKey(Key key) { return key >= Key::F1 && key <= Key::F12; }

/// Those of the window system, some of which it does not give away even to who asks.
bool isKeptByWindows(const LeavingKey& key) {
    const auto named = static_cast<Key>(key.code);
    if (key.control && key.alt)
        return isFunctionKey(named) || named == Key::Backspace || named == Key::Delete;
    if (!key.alt) return false;
    return named == Key::Tab || named == Key::F4 || named == Key::Esc || key.code == ' ';
}

} // namespace

std::optional<LeavingKey> parseLeavingKey(std::string_view text) {
    LeavingKey key{.control = false, .alt = false};
    const std::pair<std::string_view, bool*> kModifiers[] = {
        {"Ctrl-", &key.control}, {"Alt-", &key.alt}, {"Shift-", &key.shift}};
    for (bool taken = true; taken;) {
        taken = false;
        for (const auto& [word, isHeld] : kModifiers)
            if (!*isHeld && takeWord(text, word)) taken = *isHeld = true;
    }
    const auto code = keyNamed(text);
    if (!code || (!key.control && !key.alt)) return std::nullopt;
    key.code = smallLetter(*code);
    return isKeptByWindows(key) ? std::nullopt : std::optional(key);
}

} // namespace platform

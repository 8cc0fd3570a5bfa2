// What reaches the program from outside: one queue of messages, each with its time.
#pragma once

#include "platform/geometry.h"

#include <cstdint>

namespace platform {

/// Codes of the keys that are no characters. Characters stand for themselves as Latin-1 codes
/// 0x20 to 0xFF; with the Control key held a letter arrives as 1 to 26.
enum class Key : std::uint16_t {
    Backspace = 0xE800,
    Tab,
    Enter,
    Pause,
    Esc,
    PageUp,
    PageDown,
    End,
    Home,
    Left,
    Up,
    Right,
    Down,
    Insert,
    Delete,
    F1,
    F2,
    F3,
    F4,
    F5,
    F6,
    F7,
    F8,
    F9,
    F10,
    F11,
    F12,
};

struct KeyPress {
    std::uint16_t code = 0; ///< a Latin-1 character, a control character or a `Key`
    bool control = false;   ///< the Control key was held
    bool shift = false;     ///< the Shift key was held; told of keys that are no characters
};

/// The entry of the window's menu that tells the program's name and version.
inline constexpr int kAboutCommand = 59393;

struct Message {
    enum class Kind : std::uint8_t {
        Null, ///< nothing for the program; counts as a message all the same
        MouseDown,
        MouseUp,
        MouseMove,
        DoubleClick,
        Key,
        Command,    ///< a menu command
        Background, ///< the application lost the foreground
        Foreground, ///< the application got the foreground back
        Expose,     ///< what the window shows was damaged and must be painted again
        KeysOn,     ///< the person wants to play with keys alone
        KeysOff,    ///< that ends; it is so at first
        SpeechOn,   ///< the person wants to hear texts
        SpeechOff,  ///< that ends; it is so at first
        Quit,       ///< the window was closed or the session ends
    };
    Kind kind = Kind::Null;
    std::uint32_t timeMs = 0; ///< `Clock::milliseconds` when it happened
    Point position{};         ///< mouse messages: screen pixels
    KeyPress key{};           ///< Key
    int command = 0;          ///< Command

    [[nodiscard]] bool isPress() const {
        return kind == Kind::MouseDown || kind == Kind::DoubleClick;
    }
};

class Events {
  public:
    virtual ~Events() = default;

    /// Takes the oldest message; false when there is none. Never waits.
    virtual bool take(Message& message) = 0;

    /// Takes the oldest message, waiting until there is one. In a back end whose input is known
    /// beforehand time moves on to the next message; false when none will ever come.
    virtual bool wait(Message& message) = 0;

    /// Drops every mouse and key message that is waiting and releases the mouse capture.
    virtual void discardInput() = 0;

    /// Whether the release of a button, whose press the program has taken, was among the input that
    /// was dropped since the last call: nothing else will tell of it. Boxes drop input too.
    virtual bool releaseWasDropped() = 0;

    /// Whether the end of the program was asked for and it has not been told yet, as while a box is
    /// open. It is true for good once the host has asked.
    [[nodiscard]] virtual bool quitWaits() = 0;

    /// While captured, mouse messages arrive even when the pointer leaves the window.
    virtual void captureMouse(bool captured) = 0;
};

} // namespace platform

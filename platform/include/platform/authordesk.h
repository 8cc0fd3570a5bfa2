// Where the game's author sits, when that is who plays: what they are told of the game while it
// runs, and what they may ask of it. The game answers.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// What can be asked of the running game. Names and values are Latin-1, and letter case of names
/// counts, as in scripts.
class Inspection {
  public:
    virtual ~Inspection() = default;

    /// Of a variable of the running script; none when it has not been set.
    [[nodiscard]] virtual std::optional<std::string> value(std::string_view variable) const = 0;
    /// Of the object that a variable holds; none when it holds none, or one without such a
    /// property.
    [[nodiscard]] virtual std::optional<std::string> property(std::string_view variable,
                                                              std::string_view name) const = 0;
};

/// What the game is to load again: the scripts of its running scene in any case.
struct Reload {
    bool resources = false;      ///< its libraries, maps and movies, too
    bool keepsVariables = false; ///< numbers and texts of the scene get their old values
};
/// The game does it at its next turn, or tells why not.
using ReloadLink = std::function<void(const Reload&)>;

/// Nobody sits at this one.
class AuthorDesk {
  public:
    virtual ~AuthorDesk() = default;

    /// A warning with its place in the scripts: several lines.
    virtual void warn(std::string_view /*text*/) {}
    /// What came of something that the author asked for: a line.
    virtual void tell(std::string_view /*text*/) {}
    /// A line that a script says.
    virtual void say(std::string_view /*line*/) {}
    /// Whether the author wants to know where the time of scripts goes, and what that came to:
    /// lines of YProfile::report.
    [[nodiscard]] virtual bool wantsProfile() const { return false; }
    virtual void giveProfile(std::string_view /*report*/) {}
    /// Null when the game is gone; it must outlive its time here.
    virtual void setInspection(const Inspection* /*game*/) {}
    /// How the game is told to load again; null when it is gone. Called between its turns only.
    virtual void setReload(ReloadLink /*game*/) {}
};

} // namespace platform

// Where the game's author sits, when that is who plays: what they are told of the game while it
// runs, and what they may ask of it. The game answers.
#pragma once

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

/// Nobody sits at this one.
class AuthorDesk {
  public:
    virtual ~AuthorDesk() = default;

    /// A warning with its place in the scripts: several lines.
    virtual void warn(std::string_view /*text*/) {}
    /// A line that a script says.
    virtual void say(std::string_view /*line*/) {}
    /// Whether the author wants to know where the time of scripts goes, and what that came to:
    /// lines of YProfile::report.
    [[nodiscard]] virtual bool wantsProfile() const { return false; }
    virtual void giveProfile(std::string_view /*report*/) {}
    /// Null when the game is gone; it must outlive its time here.
    virtual void setInspection(const Inspection* /*game*/) {}
};

} // namespace platform

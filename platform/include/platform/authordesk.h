// Where the game's author sits, when that is who plays: what they are told of the game while it
// runs, and what they may ask of it. The game answers.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A variable that holds something.
struct InspectedVariable {
    std::string name;
    std::string type;  ///< "number", "text", "procedure", or the class of its object
    std::string value; ///< of a procedure where it is, of an object that it has another owner

    bool operator==(const InspectedVariable&) const = default;
};

struct InspectedProperty {
    std::string name;
    std::string value;

    bool operator==(const InspectedProperty&) const = default;
};

/// What can be asked of the running game. Names and values are Latin-1, and letter case of names
/// counts, as in scripts. Asking changes nothing that scripts could notice.
class Inspection {
  public:
    virtual ~Inspection() = default;

    /// Of a variable of the running script; none when it has not been set.
    [[nodiscard]] virtual std::optional<std::string> value(std::string_view variable) const = 0;
    /// Of the object that a variable holds; none when it holds none, or one without such a
    /// property.
    [[nodiscard]] virtual std::optional<std::string> property(std::string_view variable,
                                                              std::string_view name) const = 0;

    /// All of the running script, by name; long values are cut.
    [[nodiscard]] virtual std::vector<InspectedVariable> variables() const = 0;
    /// What can be read of the object that a variable holds, by name; long values are cut. Nothing
    /// when it holds none.
    [[nodiscard]] virtual std::vector<InspectedProperty>
    properties(std::string_view variable) const = 0;

    /// Carries out a statement as if it stood in the running script, or reads an expression. To be
    /// called between two passes of the main loop. What came of it, in one line: the value, "done",
    /// or what is wrong.
    virtual std::string run(std::string_view line) = 0;
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
    /// What came of something that the author asked for, Latin-1; `failed` when nothing did, which
    /// they must not overlook.
    virtual void tell(std::string_view /*text*/, bool /*failed*/) {}
    /// A line that a script says.
    virtual void say(std::string_view /*line*/) {}
    /// Whether the author wants to know where the time of scripts goes, and what that came to:
    /// lines of YProfile::report.
    [[nodiscard]] virtual bool wantsProfile() const { return false; }
    virtual void giveProfile(std::string_view /*report*/) {}
    /// Null when the game is gone; it must outlive its time here.
    virtual void setInspection(Inspection* /*game*/) {}
    /// How the game is told to load again; null when it is gone. Called between its turns only.
    virtual void setReload(ReloadLink /*game*/) {}
};

} // namespace platform

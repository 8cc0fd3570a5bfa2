// What happens to a program from outside, written down: beforehand, or by who recorded a visit. One
// event a line, or a few of them, each 100 ms behind the other:
//
//     500 move 320 240         also down, up and double; screen pixels
//     600 click 320 240        move, down and up
//     700 drag 9 9 50 50 90 9  move to the first place and down there, move to each further one, up
//     800 key a                one character or a name (Backspace, F1, ...), or several; "Ctrl-"
//                              may go before, and "Shift-" before a name
//     850 keys on              the person plays with keys alone from now on; also off
//     860 speech on            the person hears texts from now on; also off
//     900 command 59396        a menu command, 0 to 65535
//     950 answer Sair          for the next box; "checked" before it ticks the check box
//     950 close                the window is closed while the next box is open
//     1000 background          also foreground; expose: the window must be painted again; nothing
//     1200 screenshot a.png    what is on the screen now
//     1250 expect said TEXT    what must be so now: said, or shown in a box, since the last such
//     line; 1250 expect box TEXT     the value of a variable or of a property; that no warning came
//     1250 expect variable NAME VALUE
//     1250 expect property NAME PROPERTY VALUE
//     1250 expect no warnings
//     1280 run x=5             a line of the script language, carried out at the end of the pass
//     1300 quit
//
// Lines without a time say what the visit begins with:
//
//     seed 7                   of the random numbers
//     step 10                  milliseconds of a turn
//     scene harbour            the script
//     language en              of the game's texts
//     data 1F00A0              bytes of the data file at the start, further lines have further
//                              bytes; without bytes there is none
//     turns 1*37 2 16*2        milliseconds that the clock goes on behind the turns of the main
//     loop:
//                              37 times 1, once 2, twice 16; further lines have further turns.
//                              After the last one a quit comes
//
// Times are milliseconds since the main loop began. Blank lines and lines that start with "#" are
// skipped. Texts are UTF-8; a text that is not well-formed UTF-8 counts as Latin-1.
#pragma once

#include "platform/events.h"

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace platform {

/// The code of a key by its name in input files, or of a character, UTF-8; none without such.
[[nodiscard]] std::optional<std::uint16_t> keyNamed(std::string_view name);

struct TimelineAnswer {
    std::string button; ///< text of a button, or the path for an open-file dialog; Latin-1
    bool checked = false;
    bool closesWindow = false; ///< instead: the box is closed with the window
};

struct TimelineScreenshot {
    std::string file; ///< host path name, relative to the process's working folder
};

/// What must be so at that time.
struct TimelineExpectation {
    enum class Kind { Said, Box, Variable, Property, NoWarnings };
    Kind kind = Kind::Said;
    std::string variable; ///< Latin-1, as the others
    std::string property;
    std::string text; ///< what was said or shown, or the value
};

/// A line of the script language that is carried out.
struct TimelineRun {
    std::string line; ///< Latin-1
};

struct TimelineEvent {
    std::uint32_t timeMs = 0;
    std::variant<Message, TimelineAnswer, TimelineScreenshot, TimelineExpectation, TimelineRun>
        what;
};

/// In order of time; events of equal time in the order of the file.
using Timeline = std::vector<TimelineEvent>;

/// So many turns of the main loop behind which the clock goes on by as much.
struct Turns {
    std::uint32_t ms = 0;
    std::uint32_t count = 1;
};

/// A whole input file: what happens, and what the visit begins with where the file says so.
struct Visit {
    Timeline timeline;
    std::vector<Turns> turns;
    std::optional<std::string> data; ///< of the data file; empty: there is none
    std::optional<std::uint32_t> seed;
    std::optional<std::uint32_t> stepMs; ///< 1 to kMostStepMs
    std::string scene;                   ///< a script; empty: the game's first one
    std::string language;                ///< a tag of the game's; empty: its own
};

inline constexpr std::uint32_t kMostStepMs = 60'000;

struct TimelineError {
    int line = 0; ///< counted from 1
    std::string text;
};

/// Reads the whole input; stops at the first line that cannot be read.
[[nodiscard]] std::variant<Visit, TimelineError> parseVisit(std::istream& input);

/// What can be recorded of an event.
using Happening = std::variant<Message, TimelineAnswer, TimelineScreenshot, TimelineRun>;

/// The lines that parseVisit reads as these, without their ends.
[[nodiscard]] std::string lineOf(std::uint32_t timeMs, const Happening& what);
[[nodiscard]] std::string lineOf(std::span<const Turns> turns);
/// Several lines.
[[nodiscard]] std::string dataLines(std::string_view bytes);

} // namespace platform

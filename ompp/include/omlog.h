// The log file "zorbelog.txt": a plain text file that every part of the program adds lines to. It
// is opened and closed for every write, in the current directory or, where that cannot be written,
// in the home directory, or else where the platform keeps such logs. A line that can be written in
// none of these places is lost.
#pragma once

#include "omformat.h"

#include "platform/files.h"

#include <cstdint>
#include <string_view>

namespace OMLog {

inline constexpr std::string_view kFileName = "zorbelog.txt";
inline constexpr std::uint64_t kMostBytes = std::uint64_t{16}
                                            << 20; ///< what comes later is left out

enum class Kind { Error = 0, Warning = 1, Message = 2 };

/// What is written in front of errors and warnings; the level never suppresses a line.
enum Level : int { kNone = 0, kErrors = 1, kWarnings = 2, kAll = 3 };

/// Adds one line: the kind's prefix as the level has it, the text, a line feed.
void write(Kind kind, std::string_view text);

/// As write, with the text formatted as printf does.
template <class... Arguments>
void writef(Kind kind, const char* format, Arguments... arguments) {
    write(kind, OMFormat(format, arguments...));
}

/// Empties the log and writes the heading.
void start();
/// Writes the closing line.
void close();

/// Where the log is written when the current directory refuses it: a path that ends in a backslash.
void setFallbackDirectory(std::string_view directory);

/// Stores any number; outside 0 to 3 no level name is written.
void setLevel(int level);

/// Menu commands 59407 to 59410 set the levels 0 to 3; false for any other command.
bool handleCommand(int command);

} // namespace OMLog

/// Adds a text to the end of a file that was opened for it, unless the file would get longer than
/// `most` bytes. The last thing in a file that is full says so. False when it could not be written.
bool OMAddText(platform::File& file, std::string_view text, std::uint64_t most);

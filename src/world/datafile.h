// The bytes of the data file, in which globals and players are kept between runs.
//
//     global section   a line with the name and a line with the value of each global
//                      "GLOBAL_END"
//     each player      2,980 bytes: the numbers in the order of PlayerRecord, little-endian
//                      a line with the name and a line with the value of each stored property
//                      "PLAYER_END"
//
// A line ends with a line feed and has at most 1,022 bytes before it. What cannot stand in a line
// is changed or left out when the file is composed, so that it can always be read again: line feeds
// in values become blanks, longer values are cut, and properties whose names do not fit are not
// stored.
//
// A file may be cut off or changed anywhere. What is there of it is read.
#pragma once

#include "omlink.h"
#include "player.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace world {

using Players = std::vector<std::unique_ptr<Player>>;

namespace datafile {

/// A value as it comes back from the file.
[[nodiscard]] std::string asStored(std::string_view value);

[[nodiscard]] std::string compose(const Properties& globals, const Players& players);

// Both tell whether the file is whole: whether what was read ends as it should. An empty file is.

/// Sets the globals that there are from the global section; other names are passed over.
bool readGlobals(std::string_view bytes, const Properties& globals);

/// Appends the players of the file, who get copies of `templates`. Names that a player has no
/// property of are told to `unknown`.
bool readPlayers(std::string_view bytes, const Properties& templates, Players& players,
                 const OMLinkTo<void(std::string_view)>& unknown);

} // namespace datafile

} // namespace world

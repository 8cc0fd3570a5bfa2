// The tables of words in the pages of the documentation, which are printed from those of the
// classes. In a page they stand between marks:
//
//     <!-- words: RHotSpot properties -->
//     | Name | Value | Access | Meaning |
//     |---|---|---|---|
//     | `outlined` | yes or no | read/write | its outline is drawn. At first 0 |
//     <!-- end -->
//
// Names, their order, access and arguments are the class's; all other cells are the author's, and
// stay with their word. A mark may name several classes. Between "words: commands" and its end it
// is the headings of the commands that are printed: "### `Scene PICTURE [PALETTE]`".
#pragma once

#include <iosfwd>
#include <string>

namespace mps {

/// Compares the pages below a folder with the words that there are, and with `write` prints them
/// anew. Tells what is out of date, and what was left out with its text, a line each; true when
/// nothing is wrong any more.
bool renewPages(const std::string& folder, bool write, std::ostream& out);

} // namespace mps

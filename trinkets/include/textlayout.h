// How a text becomes lines: at its line breaks (LF, CR or CR LF) and, in a box, between its words.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

class OMFont;

/// The lines of a text, from the top down; at least one. With a width (pixels) a line goes on as
/// long as its next word fits; the blanks where it is broken are left out. A word ends before a
/// blank or behind a hyphen; one that is wider than a line is broken between its characters, of
/// which each line has at least one. The parts are those of `text`.
[[nodiscard]] std::vector<std::string_view> OMLinesOf(std::string_view text, const OMFont& font,
                                                      std::optional<int> width);

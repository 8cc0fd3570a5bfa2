// The configuration file: sections in brackets, "key=value" lines, ";" comments. Names are compared
// without regard to case.
#pragma once

#include <string>
#include <string_view>

/// The value of a key, at most `limit` characters; empty when the file, the section or the key is
/// missing. Blanks around the value and one pair of quotes around all of it do not count.
[[nodiscard]] std::string RReadIni(std::string_view path, std::string_view section,
                                   std::string_view key, std::size_t limit);

// The layout of scripts: every line stays a line with the words that it has.
//
// Bodies and what stands between brackets are indented, brackets stand below their statement; there
// is one blank between words, none at the end of a line; blank lines come one at a time, none at
// either end of the file; all lines end as most of them do. Comments stand as what follows them.
// What is in quotes, and what counts as a blank but is none to the eye (letters with accents, a LF
// where lines end with CR), is left as it is.
#pragma once

#include <string>

namespace mps {

/// The bytes of a script's file, UTF-8 or Latin-1, that compiles.
[[nodiscard]] std::string laidOut(const std::string& bytes);

} // namespace mps

// The words of a manifest's lines about fonts.
#pragma once

#include "manifest/plans.h"
#include "manifest/words.h"

namespace rsc {

/// The rest of a "font" line, behind the id: the name of a BDF file, or that of a face and its
/// style. `line` is the line's number.
[[nodiscard]] FontPlan parseFont(WordReader& words, int line);

/// The rest of the lines that may stand below. "chars" lines add to each other.
void parseChars(WordReader& words, FontPlan& font);
void parseLeading(WordReader& words, FontPlan& font);
void parseByteOrder(WordReader& words, FontPlan& font);

} // namespace rsc

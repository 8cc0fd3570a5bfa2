// What a catalogue becomes when the game's texts have changed.
#pragma once

#include "formats/texts/catalogue.h"
#include "zorbetmps/texts/drawntexts.h"

#include <string>

namespace mps {

/// A catalogue with nothing translated, for the language of that tag; without one a template, which
/// has only texts that were taken.
[[nodiscard]] formats::texts::Catalogue
emptyCatalogue(const DrawnTexts& texts, const std::string& project, const std::string& language);

struct RenewedCatalogue {
    formats::texts::Catalogue catalogue;
    int fresh = 0; ///< texts that it did not have
    int fuzzy = 0; ///< of these: with the translation of one that is gone and was much like it
    int gone = 0;  ///< texts that became obsolete
};

/// Translations and notes stay with their texts. An entry that somebody added stays as long as its
/// text stands in quotes in a script, or, with a context, in one that is loaded as this script.
[[nodiscard]] RenewedCatalogue renewed(const DrawnTexts& texts,
                                       const formats::texts::Catalogue& old,
                                       const std::string& project, const std::string& language);

/// Whether an entry's context is one of the scripts that a text is loaded with, or none.
[[nodiscard]] bool isOf(const formats::texts::Entry& entry, const DrawnText& text);

} // namespace mps

// Catalogues of translated texts: the .po files of GNU gettext ("The Format of PO Files" in its
// manual), which many programs for translators open.
//
//     #. said by Tilli                  a remark for the translator
//     #: scripts/harbour.mps:12         where the text stands
//     #, fuzzy                          not sure yet: counts as not translated
//     msgctxt "scripts/harbour.mps"     where it means something of its own; may be left out
//     msgid "Bom dia!"
//     msgstr "Good morning!"
//
// Texts are UTF-8, in quotes, with \n, \t, \r, \" and \\, and may go on in quotes in the next
// lines. The entry with the empty msgid is the file's head. Entries behind "#~" are not used any
// more. Plurals are refused: no text of a script has one.
#pragma once

#include "formats/base/result.h"

#include <string>
#include <string_view>
#include <vector>

namespace formats::texts {

struct Entry {
    std::string context; ///< empty: wherever the text stands
    std::string text;    ///< as the script has it
    std::string translation;
    std::string remark;                ///< of the program, lines parted by "\n"
    std::string notes;                 ///< of people, the same
    std::vector<std::string> places{}; ///< "FILE:LINE"
    bool isFuzzy = false;
    bool isObsolete = false;
    int line = 0; ///< of the file that was read, from 1

    [[nodiscard]] bool isTranslated() const {
        return !translation.empty() && !isFuzzy && !isObsolete;
    }
};

/// The head is an entry, too, as it is in the file.
using Catalogue = std::vector<Entry>;

/// In the order of the file. The refusal begins with "LINE: ".
[[nodiscard]] Result<Catalogue> readCatalogue(std::string_view utf8);

[[nodiscard]] std::string writeCatalogue(const Catalogue& catalogue);

} // namespace formats::texts

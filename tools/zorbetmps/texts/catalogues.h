// The catalogues of a game, "languages/LANGUAGE.po" in its folder, and what they lack.
#pragma once

#include "formats/texts/catalogue.h"
#include "zorbetmps/texts/drawntexts.h"

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

namespace mps {

/// Its place, whether it is there or not.
[[nodiscard]] std::filesystem::path cataloguePath(const std::string& folder,
                                                  const std::string& language);

/// Of one that is there; the refusal says which file it is.
[[nodiscard]] formats::Result<formats::texts::Catalogue>
readCatalogueFile(const std::filesystem::path& path, const std::string& shownPath);

struct CataloguesReport {
    std::vector<std::string> counts;   ///< a line for each catalogue: how many texts are translated
    std::vector<std::string> problems; ///< what is to be done before the game is complete
    std::vector<std::string> remarks;  ///< what is to be looked at
};

[[nodiscard]] CataloguesReport checkCatalogues(const std::string& folder, const DrawnTexts& texts);

} // namespace mps

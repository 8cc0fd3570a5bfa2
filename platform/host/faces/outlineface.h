// One face of an outline font, its characters turned into pictures as they are asked for.
#pragma once

#include "platform/typefaces.h"

#include <memory>
#include <string>

struct FT_LibraryRec_;

namespace platform {

/// The library that reads font files; null when it cannot be used.
using FontLibrary = std::shared_ptr<FT_LibraryRec_>;
[[nodiscard]] FontLibrary openFontLibrary();

struct FontFile {
    std::string path; ///< of the host
    int face = 0;     ///< its number in the file
    int weight = 0;   ///< the larger, the bolder
    bool bold = false;
    bool italic = false;
};

/// A style that the file does not have is made from its outlines. Null when the file cannot be
/// read.
[[nodiscard]] std::unique_ptr<Typeface>
openOutlineFace(const FontLibrary& library, const FontFile& file, const TypefaceRequest& request);

} // namespace platform

// The palettes of all libraries that are unpacked together, and which of them an animation's
// pictures are shown in.
#pragma once

#include "filesystem.h"
#include "library/nelibrary.h"
#include "pictures/palette.h"

namespace rsc {

/// A library that was read, and what the files made of it are called.
struct GivenLibrary {
    std::filesystem::path path;
    std::string name;   ///< of the file, as a manifest writes it
    std::string folder; ///< below the output folder, where its files go
    NeLibrary library;
};

struct GivenPalette {
    const GivenLibrary* library = nullptr; ///< null: stands for one that is missing
    int id = 0;
    Colours shown{};

    /// What the manifest calls it.
    [[nodiscard]] std::string name() const;
};

class PaletteStock {
  public:
    /// `wanted` is the id of the palette for all pictures, when it was asked for; refused when
    /// there is none of this id. The libraries must outlive the stock.
    PaletteStock(const std::vector<GivenLibrary>& libraries, std::optional<int> wanted);

    [[nodiscard]] const std::vector<GivenPalette>& palettes() const { return palettes_; }
    /// The palette of this id in this library; null when it has none that can be used.
    [[nodiscard]] const GivenPalette* find(const GivenLibrary& library, int id) const;
    /// What fits an animation: the wanted one, one of its id, one of its library, any.
    [[nodiscard]] const GivenPalette& fitting(const GivenLibrary& library, int id) const;

    /// The lines of a manifest that define them all, and the pictures named there.
    [[nodiscard]] std::string lines() const;
    [[nodiscard]] std::vector<OutputFile> pictures() const;

  private:
    void addPalettes(const GivenLibrary& library);

    std::vector<GivenPalette> palettes_; ///< of each id of a library only one
    const GivenPalette* wanted_ = nullptr;
    GivenPalette greys_; ///< for libraries without a palette
};

} // namespace rsc

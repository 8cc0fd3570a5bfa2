// What is told to authors of colours that get lost: in palettes whose pictures have more than they
// hold, and in pictures that the palette was not made for.
#pragma once

#include "manifest/plans.h"
#include "pictures/animationbuilder.h"
#include "refusal.h"

#include <optional>
#include <set>
#include <string>
#include <utility>

namespace rsc {

struct ColourfulPicture {
    std::string file; ///< as the manifest names it
    std::size_t colours = 0;
};

class ColourWarnings {
  public:
    /// Both must outlive it.
    ColourWarnings(const Manifest& manifest, std::vector<Warning>& warnings)
        : manifest_(manifest), warnings_(warnings) {}

    /// The palette's pictures have more colours than it holds; `most` has the most of them.
    void warnOfPalette(const PalettePlan& palette, std::size_t colours,
                       const ColourfulPicture& most);

    /// For the pictures of an animation that has this palette, or none.
    [[nodiscard]] ColourWatch watch(std::optional<PaletteIndex> palette);

  private:
    [[nodiscard]] bool sharesEntries(const PalettePlan& palette) const;
    void warnOfLoss(std::optional<PaletteIndex> index, const FileName& file,
                    const ColourLoss& loss);
    [[nodiscard]] std::string remedyFor(const PalettePlan& palette, const FileName& file) const;

    const Manifest& manifest_;
    std::vector<Warning>& warnings_;
    std::set<int> overfull_; ///< lines of palettes that were told of
    std::set<std::pair<std::optional<PaletteIndex>, std::string>> told_; ///< palettes and files
};

} // namespace rsc

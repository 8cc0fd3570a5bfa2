#include "pictures/colourwarnings.h"

#include "manifest/words.h"
#include "text.h"

#include <algorithm>

namespace rsc {

namespace {

/// What a component may be off, of 255. Palettes show nearly all colours within two steps.
constexpr int kSlightly = 8;
/// The same where it is known that many colours share an entry: more is plainly another colour.
constexpr int kPlainly = 32;
constexpr std::size_t kFewPixels = 1000; ///< there, one of so many pixels does not count

std::string reducedLine(const PalettePlan& palette) {
    return "; if that is meant, write \"palette " + asName(palette.name).value_or(palette.name) +
           " reduced\"";
}

} // namespace

void ColourWarnings::warnOfPalette(const PalettePlan& palette, std::size_t colours,
                                   const ColourfulPicture& most) {
    overfull_.insert(palette.line);
    warnings_.push_back({"the pictures of the palette " + rsc::inQuotes(palette.name) + " have " +
                             std::to_string(colours) + " colours besides black and white (" +
                             most.file + " alone " + std::to_string(most.colours) +
                             "), a palette holds " + std::to_string(Palette::kGameColours) +
                             ": the others become the nearest of these" + reducedLine(palette),
                         palette.line});
}

/// Whether it is known, or was told, that many colours share an entry.
bool ColourWarnings::sharesEntries(const PalettePlan& palette) const {
    return palette.isReduced || overfull_.contains(palette.line);
}

ColourWatch ColourWarnings::watch(std::optional<PaletteIndex> palette) {
    const bool shares = palette && sharesEntries(manifest_.palettes[*palette]);
    return {shares ? kPlainly : kSlightly,
            [this, palette](const FileName& file, const ColourLoss& loss) {
                warnOfLoss(palette, file, loss);
            }};
}

void ColourWarnings::warnOfLoss(std::optional<PaletteIndex> index, const FileName& file,
                                const ColourLoss& loss) {
    const PalettePlan* palette = index ? &manifest_.palettes[*index] : nullptr;
    const bool shares = palette && sharesEntries(*palette);
    if (shares && loss.lostPixels * kFewPixels <= loss.pixels) return;
    if (!told_.insert({index, file.path}).second) return;
    const std::string why =
        loss.isIndexed
            ? "the entries 0 to 9 and 246 to 255 are fixed colours: draw with 10 to 245, or write "
              "\"remap\" below the animation"
            : "the palette " + rsc::inQuotes(palette->name) +
                  " has nothing like them: " + remedyFor(*palette, file);
    warnings_.push_back({file.path + ": " + std::to_string(loss.lost) + " of its " +
                             counted(loss.colours, "colour") + " (" +
                             std::to_string(loss.lostPixels) + " of " +
                             counted(loss.pixels, "pixel") + ") become others, " + why,
                         file.line});
}

std::string ColourWarnings::remedyFor(const PalettePlan& palette, const FileName& file) const {
    const bool isOneOfThem =
        std::ranges::find(palette.pictures, file.path, &FileName::path) != palette.pictures.end();
    const std::string meant = sharesEntries(palette) ? std::string() : reducedLine(palette);
    if (isOneOfThem)
        return "its pictures have too many, divide them among several palettes" + meant;
    if (palette.indexed) return "draw it in the palette's colours" + meant;
    return "name it in a \"from\" line of the palette" + meant;
}

} // namespace rsc

#include "pictures/palettestock.h"

#include "pictures/picture.h"
#include "refusal.h"

#include <algorithm>
#include <numeric>
#include <set>

namespace rsc {

namespace {

constexpr int kSide = 16; ///< pixels: a palette's picture is a square of all its colours

Bytes paletteAsPng(const Colours& shown) {
    Bytes indices(shown.size());
    std::iota(indices.begin(), indices.end(), std::uint8_t{0});
    std::vector<Pixel> palette;
    for (const platform::Rgb colour : shown) palette.push_back({colour});
    return writeIndexedPng(kSide, kSide, indices, palette);
}

Colours greys() {
    Colours colours = platform::staticPalette();
    for (std::size_t i = platform::kFirstFreeColour; i < platform::kFirstHighStaticColour; ++i) {
        const auto grey = static_cast<std::uint8_t>(i);
        colours[i] = {grey, grey, grey};
    }
    return colours;
}

std::string fileOf(const GivenPalette& palette) {
    return palette.library->folder + "/palette-" + std::to_string(palette.id) + ".png";
}

} // namespace

std::string GivenPalette::name() const { return library->folder + "-" + std::to_string(id); }

PaletteStock::PaletteStock(const std::vector<GivenLibrary>& libraries, std::optional<int> wanted) {
    greys_.shown = greys();
    for (const GivenLibrary& library : libraries) addPalettes(library);
    if (!wanted) return;
    const auto found = std::ranges::find(palettes_, *wanted, &GivenPalette::id);
    if (found == palettes_.end())
        throw Refusal("there is no palette RRGB " + std::to_string(*wanted) +
                      " in these libraries");
    wanted_ = &*found;
}

void PaletteStock::addPalettes(const GivenLibrary& library) {
    std::set<std::size_t> offsets; // two that are the same bytes look the same
    std::set<int> ids;
    for (const ResourceEntry& entry : library.library.entries()) {
        if (entry.type != "RRGB" || !entry.name.empty() || entry.id == 0) continue;
        const auto palette = Palette::fromResource(library.library.data(entry));
        if (palette && ids.insert(entry.id).second && offsets.insert(entry.offset).second)
            palettes_.push_back({&library, entry.id, palette->shown()});
    }
}

const GivenPalette* PaletteStock::find(const GivenLibrary& library, int id) const {
    const auto found = std::ranges::find_if(palettes_, [&](const GivenPalette& palette) {
        return palette.library == &library && palette.id == id;
    });
    return found == palettes_.end() ? nullptr : &*found;
}

const GivenPalette& PaletteStock::fitting(const GivenLibrary& library, int id) const {
    if (wanted_) return *wanted_;
    if (const GivenPalette* own = find(library, id)) return *own;
    if (const auto same = std::ranges::find(palettes_, id, &GivenPalette::id);
        same != palettes_.end())
        return *same;
    if (const auto first = std::ranges::find(palettes_, &library, &GivenPalette::library);
        first != palettes_.end())
        return *first;
    return palettes_.empty() ? greys_ : palettes_.front();
}

std::string PaletteStock::lines() const {
    std::string lines;
    for (const GivenPalette& palette : palettes_)
        lines += "palette " + palette.name() + "\n    indexed " + fileOf(palette) + "\n\n";
    return lines;
}

std::vector<OutputFile> PaletteStock::pictures() const {
    std::vector<OutputFile> files;
    for (const GivenPalette& palette : palettes_)
        files.push_back({fileOf(palette), paletteAsPng(palette.shown)});
    return files;
}

} // namespace rsc

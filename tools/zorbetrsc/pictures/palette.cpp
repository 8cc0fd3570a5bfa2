#include "pictures/palette.h"

#include "formats/picture/palette.h"
#include "pictures/palettelift.h"
#include "pictures/picture.h"
#include "pictures/quantizer.h"
#include "refusal.h"

#include <algorithm>
#include <utility>

namespace rsc {

namespace {

using platform::kFirstFreeColour;
using platform::kFirstHighStaticColour;
using platform::kPaletteSize;
using platform::Rgb;

constexpr std::size_t kMostCounted = std::size_t{1} << 20; ///< that are counted or remembered
constexpr Rgb kPureBlack{0, 0, 0};
constexpr Rgb kPureWhite{255, 255, 255};

int brightness(Rgb colour) { return 3 * colour.red + 6 * colour.green + colour.blue; }

std::uint32_t packed(Rgb colour) {
    return std::uint32_t{colour.red} << 16 | std::uint32_t{colour.green} << 8 | colour.blue;
}

Rgb unpacked(std::uint32_t colour) {
    return {static_cast<std::uint8_t>(colour >> 16), static_cast<std::uint8_t>(colour >> 8),
            static_cast<std::uint8_t>(colour)};
}

Rgb dropBits(Rgb colour, int bits) {
    return unpacked(packed(colour) & ((0xFFU << bits & 0xFFU) * 0x010101U));
}

Rgb toStore(Rgb wanted, ColourStorage storage) {
    return storage == ColourStorage::Movie ? movieColourToStore(wanted) : colourToStore(wanted);
}

} // namespace

Palette Palette::fromColours(const Colours& wanted, ColourStorage storage) {
    Palette palette;
    palette.stored_ = palette.shown_ = platform::staticPalette();
    for (std::size_t i = kFirstFreeColour; i < kFirstHighStaticColour; ++i) {
        const bool isAsBefore = i > kFirstFreeColour && wanted[i] == wanted[i - 1];
        palette.stored_[i] = isAsBefore ? palette.stored_[i - 1] : toStore(wanted[i], storage);
        palette.shown_[i] = liftColour(palette.stored_[i]);
    }
    return palette;
}

Palette Palette::fromIndexed(const Picture& picture, ColourStorage storage) {
    if (!picture.isIndexed())
        throw Refusal("the picture is not indexed: save it as a PNG with a palette of its own");
    Colours wanted{};
    const std::size_t count = std::min<std::size_t>(picture.palette().size(), kPaletteSize);
    for (std::size_t i = 0; i < count; ++i) wanted[i] = picture.palette()[i].colour;
    return fromColours(wanted, storage);
}

std::optional<Palette> Palette::fromResource(formats::ByteSpan resource) {
    const auto given = formats::picture::readPalette(resource);
    if (!given) return std::nullopt;
    Palette palette;
    palette.stored_ = palette.shown_ = platform::staticPalette();
    for (std::size_t i = kFirstFreeColour; i < kFirstHighStaticColour; ++i) {
        const auto& [red, green, blue] = (*given)[i];
        palette.stored_[i] = {red, green, blue};
        palette.shown_[i] = liftColour(palette.stored_[i]);
    }
    return palette;
}

std::uint8_t Palette::nearest(Rgb colour) const {
    std::uint8_t best = kBlack;
    int bestDistance = colourDistance(colour, shown_[kBlack]);
    const auto consider = [&](std::uint8_t index) {
        const int distance = colourDistance(colour, shown_[index]);
        if (distance >= bestDistance) return;
        bestDistance = distance;
        best = index;
    };
    consider(kWhite);
    for (int i = kFirstFreeColour; i < kFirstHighStaticColour; ++i)
        consider(static_cast<std::uint8_t>(i));
    return best;
}

formats::Bytes Palette::resource() const {
    formats::picture::Palette palette;
    std::ranges::transform(stored_, palette.begin(), [](Rgb colour) {
        return formats::picture::Colour{colour.red, colour.green, colour.blue};
    });
    return formats::picture::writePalette(palette);
}

bool PaletteMaker::ByComponents::operator()(Rgb a, Rgb b) const { return packed(a) < packed(b); }

void PaletteMaker::add(const Picture& picture) {
    // sorting all pixels is far quicker than looking each of them up
    std::vector<std::uint32_t> pixels;
    pixels.reserve(picture.size());
    for (std::size_t i = 0; i < picture.size(); ++i) {
        const Pixel pixel = picture.pixel(i);
        if (pixel.opaque()) pixels.push_back(packed(pixel.colour));
    }
    std::ranges::sort(pixels);
    for (auto at = pixels.begin(); at != pixels.end();) {
        const auto next = std::upper_bound(at, pixels.end(), *at);
        const Rgb colour = unpacked(*at);
        if (colour != kPureBlack && colour != kPureWhite)
            histogram_[dropBits(colour, droppedBits_)] += static_cast<unsigned>(next - at);
        at = next;
    }
    while (histogram_.size() > kMostCounted) coarsen();
}

/// Keeps the colours of a long film from filling the memory.
void PaletteMaker::coarsen() {
    ++droppedBits_;
    Histogram coarser;
    for (const auto& [colour, count] : histogram_) coarser[dropBits(colour, droppedBits_)] += count;
    histogram_ = std::move(coarser);
}

std::uint8_t ColourLookup::nearest(Rgb colour) {
    if (known_.size() > kMostCounted) known_.clear();
    const auto [entry, isNew] = known_.try_emplace(packed(colour));
    if (isNew) entry->second = palette_.nearest(colour);
    return entry->second;
}

ColourLoss ColourLookup::lossOf(std::vector<Rgb> pixels, int tolerance) {
    std::ranges::sort(pixels, {}, packed);
    ColourLoss loss;
    loss.pixels = pixels.size();
    for (auto at = pixels.begin(); at != pixels.end(); ++loss.colours) {
        const auto next = std::ranges::upper_bound(at, pixels.end(), packed(*at), {}, packed);
        const bool isReachable = std::max({at->red, at->green, at->blue}) >= kDarkestValue;
        if (isReachable && componentDistance(*at, palette_.shown()[nearest(*at)]) > tolerance) {
            ++loss.lost;
            loss.lostPixels += static_cast<std::size_t>(next - at);
        }
        at = next;
    }
    return loss;
}

Palette PaletteMaker::make(ColourStorage storage) const {
    Colours wanted{};
    std::ranges::copy(choose(gathered()), wanted.begin() + kFirstFreeColour);
    return Palette::fromColours(wanted, storage);
}

/// Brings colours that are darker than any game colour to what the screen can show, so that they do
/// not use up entries which would all look alike; the darkest of them are black.
PaletteMaker::Histogram PaletteMaker::gathered() const {
    Histogram reachable;
    for (const auto& [colour, count] : histogram_) {
        if (std::max({colour.red, colour.green, colour.blue}) >= kDarkestValue) {
            reachable[colour] += count;
            continue;
        }
        const Rgb shown = liftColour(colourToStore(colour));
        if (colourDistance(colour, shown) < colourDistance(colour, kPureBlack))
            reachable[shown] += count;
    }
    return reachable;
}

std::vector<Rgb> PaletteMaker::choose(const Histogram& histogram) {
    std::vector<ColourCount> counts;
    std::vector<Rgb> chosen;
    for (const auto& [colour, count] : histogram) {
        counts.push_back({colour, count});
        chosen.push_back(colour);
    }
    if (std::ssize(chosen) > Palette::kGameColours)
        chosen = reduceColours(counts, Palette::kGameColours);
    std::ranges::sort(chosen, [](Rgb a, Rgb b) {
        return std::pair(brightness(a), packed(a)) < std::pair(brightness(b), packed(b));
    });
    return chosen;
}

} // namespace rsc

// The 256 colours of a scene: what a palette resource (type RRGB) stores and what the screen shows
// after the program has lifted the game colours. Entries 0 to 9 and 246 to 255 are the platform's
// fixed colours, whatever a resource holds there.
#pragma once

#include "formats/base/bytes.h"
#include "platform/display.h"

#include <array>
#include <map>
#include <optional>
#include <unordered_map>
#include <vector>

namespace rsc {

class Picture;

using Colours = std::array<platform::Rgb, platform::kPaletteSize>;

/// What colours are stored in: a palette resource has 8 bits a component, a movie 6.
enum class ColourStorage : std::uint8_t { Resource, Movie };

class Palette {
  public:
    static constexpr std::uint8_t kBlack = 0;
    static constexpr std::uint8_t kWhite = 255;
    static constexpr int kGameColours =
        platform::kFirstHighStaticColour - platform::kFirstFreeColour;

    /// Entries 10 to 245 become what comes nearest to these colours on the screen.
    static Palette fromColours(const Colours& wanted,
                               ColourStorage storage = ColourStorage::Resource);
    /// The palette of an indexed picture, entry by entry; refuses any other.
    static Palette fromIndexed(const Picture& picture,
                               ColourStorage storage = ColourStorage::Resource);

    /// The palette that a resource stores; none when it is too short.
    static std::optional<Palette> fromResource(formats::ByteSpan resource);

    [[nodiscard]] const Colours& stored() const { return stored_; }
    [[nodiscard]] const Colours& shown() const { return shown_; }

    /// The entry that looks most like `colour`, out of black, white and the game colours.
    [[nodiscard]] std::uint8_t nearest(platform::Rgb colour) const;

    [[nodiscard]] formats::Bytes resource() const;

  private:
    Colours stored_{};
    Colours shown_{};
};

/// What of a picture a palette cannot show.
struct ColourLoss {
    std::size_t colours = 0;    ///< of the picture
    std::size_t lost = 0;       ///< of these
    std::size_t pixels = 0;     ///< of the picture
    std::size_t lostPixels = 0; ///< that have a lost colour
    bool isIndexed = false;     ///< indices are kept, and lost are those of fixed colours
};

/// Palette::nearest, remembering colours that were looked up before.
class ColourLookup {
  public:
    explicit ColourLookup(const Palette& palette) : palette_(palette) {}

    [[nodiscard]] std::uint8_t nearest(platform::Rgb colour);

    /// Colours are lost when the screen shows one in their place that differs by more than
    /// `tolerance` in a component; those that are too dark for any palette do not count.
    [[nodiscard]] ColourLoss lossOf(std::vector<platform::Rgb> pixels, int tolerance);

  private:
    Palette palette_;
    std::unordered_map<std::uint32_t, std::uint8_t> known_;
};

/// Makes the palette that serves the opaque pixels of some pictures best. Their black and white are
/// fixed colours and take no entry.
class PaletteMaker {
  public:
    void add(const Picture& picture);
    /// Colours that want an entry of their own.
    [[nodiscard]] std::size_t count() const { return gathered().size(); }
    /// Refused when there are too many colours and no quantizer.
    [[nodiscard]] Palette make(ColourStorage storage = ColourStorage::Resource) const;

  private:
    struct ByComponents {
        bool operator()(platform::Rgb a, platform::Rgb b) const;
    };
    using Histogram = std::map<platform::Rgb, unsigned, ByComponents>;

    void coarsen();
    [[nodiscard]] Histogram gathered() const;
    static std::vector<platform::Rgb> choose(const Histogram& histogram);

    Histogram histogram_;
    int droppedBits_ = 0; ///< lowest bits of each component that no longer count
};

} // namespace rsc

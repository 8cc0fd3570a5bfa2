// What a manifest asks for: the libraries to build, the palettes to make and what goes where.
#pragma once

#include "fonts/bitmapfont.h"
#include "formats/animation/animation.h"
#include "formats/picture/cursor.h"
#include "platform/display.h"

#include <bitset>
#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace rsc {

/// A file named in the manifest, as written there.
struct FileName {
    std::string path;
    int line = 0;
};

struct PalettePlan {
    std::string name;
    int line = 0;
    bool isReduced = false;          ///< it is known that its pictures have more colours than it
    std::vector<FileName> pictures;  ///< made from these,
    std::optional<FileName> indexed; ///< or taken from this one
};

using PaletteIndex = std::size_t; ///< of Manifest::palettes

/// Which pixels of an animation's pictures are transparent.
struct Transparency {
    enum class Kind : std::uint8_t { Alpha, None, Index, Colour };
    Kind kind = Kind::Alpha;
    int index = 0;
    platform::Rgb colour; ///< besides the pixels with an alpha below 50 %
};

struct FramePlan {
    FileName file;
    int dx = 0;
    int dy = 0;
};

struct SequencePlan {
    int line = 0;
    formats::animation::Sequence entries; ///< codes count the frames as listed, from 0
};

struct AnimationPlan {
    std::optional<PaletteIndex> palette; ///< for truecolour pictures
    std::optional<int> rate;
    int x = 0;
    int y = 0;
    int depth = 0;
    bool crop = true;
    bool remap = false; ///< treat indexed pictures as truecolour ones
    Transparency transparency;
    std::vector<FramePlan> frames;
    std::vector<SequencePlan> sequences;
};

struct ColoursPlan {
    PaletteIndex palette = 0;
};

/// How a face is drawn.
struct FaceStyle {
    int size = 0; ///< pixels of the em square
    bool bold = false;
    bool italic = false;
};

struct FontPlan {
    FileName file;
    std::optional<FaceStyle> face; ///< none: a BDF file
    bool bigEndian = false;
    std::optional<std::bitset<kLatin1Codes>> chars; ///< none: all
    std::optional<int> leading;                     ///< none: the font's own

    [[nodiscard]] bool keeps(int code) const {
        return !chars || (code < kLatin1Codes && chars->test(static_cast<std::size_t>(code)));
    }
};

struct CursorPlan {
    FileName file;
    formats::picture::HotSpot hotSpot;
};

struct SoundPlan {
    FileName file;
    std::optional<int> rate; ///< samples a second; none: the file's own, when the game has it
};

struct PlainFilePlan {
    FileName file;
    bool isUnchecked = false; ///< a sound that is packed whatever the game makes of it
};

/// The resource of this number, counted from 1, in the table of the library's layout.
struct PartPlan {
    int number = 0;
    FileName file;
};

struct ResourcePlan {
    std::string type;     ///< a part has neither type
    std::uint16_t id = 0; ///< nor id
    int line = 0;
    std::variant<PlainFilePlan, ColoursPlan, AnimationPlan, FontPlan, CursorPlan, SoundPlan,
                 PartPlan>
        content;
};

struct LibraryPlan {
    std::string name; ///< of the file, lower case
    int line = 0;
    std::optional<FileName> layout; ///< of a library made elsewhere
    std::vector<ResourcePlan> resources;
};

struct Manifest {
    std::optional<std::string> mapIdentifier; ///< none: no map is written
    int mapLine = 0;
    int audioMapLine = 0; ///< 0: no audio map is written
    std::vector<PalettePlan> palettes;
    std::vector<LibraryPlan> libraries;
};

/// The rules that need the whole manifest: a block must have what it is for. Refuses the first
/// fault with its line.
void checkManifest(const Manifest& manifest);

} // namespace rsc

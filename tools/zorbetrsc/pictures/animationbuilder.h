// Turns the pictures and sequences of a manifest's animation into an ASEQ resource: colours become
// palette indices, frames are cropped to their opaque pixels, equal frames are stored once, and the
// steps are moved by what cropping and the frames' own offsets have shifted.
#pragma once

#include "manifest/plans.h"
#include "pictures/palette.h"

#include <functional>

namespace rsc {

class Picture;

/// Loads the picture that a manifest names.
using PictureLoader = std::function<Picture(const FileName&)>;

/// Is told of every picture that loses colours; see ColourLookup::lossOf.
struct ColourWatch {
    int tolerance = 0;
    std::function<void(const FileName&, const ColourLoss&)> onLoss; ///< empty: nobody watches
};

/// `palette` may be absent; truecolour pictures are refused then.
[[nodiscard]] formats::Bytes buildAnimation(const AnimationPlan& plan, const Palette* palette,
                                            const PictureLoader& load,
                                            const ColourWatch& watch = {});

} // namespace rsc

// The notation of a sequence in a manifest, one word a step:
//
//     3  5-8  8-5            show a frame, or one after the other (counted from 1)
//     hold  loop  end        stop at the current frame; go back to the first step; end
//     sound 101              play a sound
//     marker 500             tell the scripts (code -500)
//     code -7                any other code
//
// Frames, markers and codes may be followed, without blanks, by an offset "@dx,dy" and an argument
// ":n" (a frame's duration in ms); the other words by an offset.
#pragma once

#include "formats/animation/animation.h"
#include "manifest/words.h"

namespace rsc {

/// Reads the rest of a line as a sequence and adds the end entry when it is not written. Refuses
/// one that shows no frame, loops before the first frame or goes on behind its end.
[[nodiscard]] formats::animation::Sequence parseSequence(WordReader& words);

/// A sequence in this notation. Reading it gives the same entries, unless it is one of those that
/// are refused.
[[nodiscard]] std::string formatSequence(const formats::animation::Sequence& sequence);

} // namespace rsc

// Animation resources (type ASEQ): packed frames and the sequences that play them. All numbers are
// little-endian unless the swap flag is set, which is read but never written:
//
//     0   int16   number of sequences
//     2   int16   number of frames
//     4   uint8   frames per second; 0: every frame step carries its own duration
//     5   uint8   swap flag: the 16- and 32-bit numbers are big-endian
//     6   4 bytes 0
//     10  int32   for each frame its offset in the frame data
//     +   4 bytes embedded place: low bytes of x and y, their high 4 bits (x low), depth
//     +           for each sequence its number of entries (int16) and the entries of four int16:
//                 dx, dy, code, argument
//     +           the frame data; a frame is 0, width, height (int16 each) and its packed rows
#pragma once

#include "bytes.h"

#include <vector>

namespace rsc {

/// What an entry of a sequence does; 0 and above: it shows that frame.
namespace entrycode {
inline constexpr int kEnd = -1;
inline constexpr int kLoop = -2;
inline constexpr int kHold = -4;
inline constexpr int kSound = -101;      ///< the argument is the sound's id
inline constexpr int kLastMarker = -500; ///< this and below: the scripts are told
} // namespace entrycode

inline constexpr int kSmallestPlace = -2047;
inline constexpr int kLargestPlace = 2048;
inline constexpr int kLargestInt16 = 32767;
inline constexpr int kSmallestInt16 = -32768;

struct AseqFrame {
    int width = 0;
    int height = 0;
    ByteSpan rows; ///< packed, top row first; kept by whoever made the frame
};

struct AseqEntry {
    int dx = 0;
    int dy = 0;
    int code = 0;
    int argument = 0; ///< of a frame: duration in ms
    friend bool operator==(const AseqEntry&, const AseqEntry&) = default;
};

using AseqSequence = std::vector<AseqEntry>;

struct Aseq {
    int framesPerSecond = 0;
    int x = 0;
    int y = 0;
    int depth = 0;
    std::vector<AseqFrame> frames;
    std::vector<AseqSequence> sequences; ///< each with its end entry
};

/// The resource's bytes. Refuses what its fields cannot hold.
[[nodiscard]] Bytes writeAseq(const Aseq& aseq);

/// Reads a resource of either byte order, bytes behind the last frame ignored; the frames' rows lie
/// in `bytes`. Refuses what an author would want to know: data cut off, damaged rows, frames that
/// overlap (they may be the same), entries that show no existing frame, sequences without an end.
[[nodiscard]] Aseq readAseq(ByteSpan bytes);

} // namespace rsc

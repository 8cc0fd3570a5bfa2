// Animation resources (type `ASEQ`): packed frames and the sequences that play them. All numbers
// are little-endian unless the swap flag is set.
//
//     offset      size
//      0          int16        number of sequences
//      2          int16        number of frames
//      4          uint8        frames per second; 0: each frame entry carries its own duration
//      5          uint8        swap flag: not 0 when the numbers are big-endian
//      6          4            reserved
//     10          int32 each   offset of each frame in the frame data
//      then       4            embedded place: low bytes of x and y, high four bits of both (those
//                              of x low), depth; above 2048 a coordinate stands for 2048 less it
//      then, each sequence     int16 number of entries, then 8 bytes an entry: dx, dy, code,
//                              argument
//      then       frame data; a frame is int16 0, width, height, then its packed rows
#pragma once

#include "formats/base/bytes.h"
#include "formats/base/result.h"

#include <bit>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace formats::animation {

/// One entry of a sequence. Codes from 0 on show the frame of that number at an offset of dx, dy.
struct Entry {
    std::int16_t dx = 0; ///< pixels
    std::int16_t dy = 0;
    std::int16_t code = 0;
    std::int16_t argument = 0; ///< frames: milliseconds; sounds: resource id

    static constexpr std::int16_t kEnd = -1;
    static constexpr std::int16_t kLoop = -2;
    static constexpr std::int16_t kHold = -4;
    static constexpr std::int16_t kSound = -101;
    /// Codes up to this one are notification markers; any other negative code is passed.
    static constexpr std::int16_t kFirstMarker = -500;

    [[nodiscard]] bool isFrame() const { return code >= 0; }
    friend bool operator==(const Entry&, const Entry&) = default;
};

using Sequence = std::vector<Entry>;

struct Frame {
    int width = 0;
    int height = 0;
    ByteSpan rows; ///< packed (row.h), top row first; kept by whoever made the frame
};

/// Embedded coordinates have 12 bits; above the largest one they mean it less themselves.
inline constexpr int kLargestPlace = 2048;
inline constexpr int kSmallestPlace = -2047;

struct Animation {
    int framesPerSecond = 0;
    int x = 0; ///< where it is embedded
    int y = 0;
    int depth = 0;
    std::vector<Frame> frames;
    std::vector<Sequence> sequences; ///< each with its end entry
};

/// A resource as it stands: sequences may lack their end, and show frames that do not exist; frames
/// may have negative sizes, lie across each other, or outside of the resource (without rows, whose
/// data() is null then). The rows of each go on to the end of the resource.
struct StoredAnimation : Animation {
    ByteSpan frameData;
};

/// Reads what can be played, in either byte order; the rows lie in `bytes`. None when the tables do
/// not fit into the resource.
[[nodiscard]] Result<StoredAnimation> read(ByteSpan bytes);

/// The same for who wants to know whether it is whole: rows that are damaged, frames that are empty
/// or overlap (they may be the same), entries that show no frame and sequences without an end are
/// problems, too. The rows of a frame end with its last one.
[[nodiscard]] Result<Animation> readWhole(ByteSpan bytes);

/// Why the fields of a resource cannot hold an animation; empty when they can.
[[nodiscard]] std::string whyNotStored(const Animation& animation);

/// The bytes of a resource; of what whyNotStored tells, the low bits.
[[nodiscard]] Bytes write(const Animation& animation, std::endian order = std::endian::little);

/// Rate and only sequence of a still picture: held at once, then the frame for ever.
inline constexpr int kStillRate = 8;
[[nodiscard]] Sequence stillSequence();

} // namespace formats::animation

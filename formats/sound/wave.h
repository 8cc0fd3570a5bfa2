// Sounds: `WAVE` resources. Two families are read: RIFF WAVE files, which we write too, and the
// classic Macintosh sound resource (as its platform's manuals publish it).
//
//     RIFF WAVE (little-endian)         "RIFF", size, "WAVE", then chunks of tag, size and data,
//                                       padded to an even place: "fmt " within the first 1,024
//                                       bytes, "data" after it
//       "fmt "                          coding (16 bits, 1: plain samples), channels (16), samples
//                                       a second (32), bytes a second (32), bytes of a sample of
//                                       all channels (16), bits of a sample (16); in an extensible
//                                       format, of 40 bytes, the coding that it stands for at 24
//     Macintosh (big-endian), format 1  1, synthesizers, synthesizer, its options (32 bits),
//                                       commands, command, param1, param2 (32 bits), sound header
//     Macintosh, format 2               2, reference count, commands, command, param1, param2,
//                                       sound header
//     sound header                      pointer (32), length (32), rate (16.16), loop start (32),
//                                       loop end (32), encoding (8), base frequency (8); then the
//                                       samples, or in an extended header the frame count (32) and
//                                       the samples at offset 64
#pragma once

#include "formats/base/bytes.h"

#include <array>

namespace formats::sound {

/// The rates of RIFF WAVE files for which the program is made, in samples a second.
inline constexpr std::array<int, 5> kRates = {22050, 22000, 22255, 11025, 11127};

struct Header {
    std::size_t dataOffset = 0; ///< of the first sample in the resource
    std::size_t dataLength = 0; ///< bytes; never more than the resource holds
    int sampleRate = 0;         ///< samples a second, as written: may be one that nothing plays
};

/// What is unusual about a header.
enum class Fault : std::uint8_t {
    SampleRate,
    Channels,
    Bits,
    Synthesizers,
    Synthesizer,
    Options,
    Commands,
    Command,
    Parameter1,
    Parameter2,
    Encoding
};

/// All that is said of a resource's samples.
struct Facts {
    enum class Kind : std::uint8_t { Unknown, Riff, Macintosh };
    static constexpr int kPcm = 1; ///< coding of plain samples

    Kind kind = Kind::Unknown;
    bool hasFormat = true; ///< false: a RIFF WAVE file without "fmt ", of which no more is read
    Header header;
    std::size_t claimedLength = 0; ///< bytes of samples, as written
    int coding = kPcm; ///< format tag, of an extensible format the one that it stands for
    int channels = 1;
    int bits = 8; ///< of a sample
    std::vector<Fault> faults;
};

/// Reads the head of a resource of so many bytes.
[[nodiscard]] Facts examine(const ReadAt& read, std::size_t length);
[[nodiscard]] Facts examine(ByteSpan resource);

/// Of plain samples.
struct Format {
    int rate = kRates[0]; ///< samples a second
    int channels = 1;
    int bits = 8;
};

/// What stands before so many bytes of samples in a RIFF WAVE file. Behind an odd number of them
/// stands a pad byte.
[[nodiscard]] Bytes riffHead(const Format& format, std::uint32_t dataSize);

/// A RIFF WAVE file with these samples, 8-bit mono.
[[nodiscard]] Bytes writeRiff(ByteSpan samples, int rate);

/// The bytes of the RIFF WAVE file that a resource begins with, as its header says, at most what is
/// there. It must be such a file.
[[nodiscard]] std::size_t riffLength(ByteSpan resource);

} // namespace formats::sound

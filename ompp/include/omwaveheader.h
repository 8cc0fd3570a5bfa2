// What the beginning of a sound resource says about its samples. Two families are read: RIFF WAVE
// files and the classic Macintosh sound resource.
//
//     RIFF WAVE (little-endian)         "RIFF", size, "WAVE", then chunks of tag, size and data:
//                                       "fmt " within the first 1,024 bytes, "data" after it
//     Macintosh (big-endian), format 1  1, synthesizers, synthesizer, its options (32 bits),
//                                       commands, command, param1, param2 (32 bits), sound header
//     Macintosh, format 2               2, reference count, commands, command, param1, param2,
//                                       sound header
//     sound header                      pointer (32), length (32), rate (16.16), loop start (32),
//                                       loop end (32), encoding (8), base frequency (8); then the
//                                       samples, or in an extended header the frame count (32) and
//                                       the samples at offset 64
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

class OMIStream;

/// The rates of RIFF WAVE files for which the program is made, in samples a second.
inline constexpr std::array<int, 5> kOMWaveRates = {22050, 22000, 22255, 11025, 11127};

struct OMWaveHeader {
    std::size_t dataOffset = 0; ///< of the first sample in the stream
    std::size_t dataLength = 0; ///< bytes; never more than the stream holds
    int sampleRate = 0;         ///< samples a second, as written: may be one that nothing plays
};

/// What is unusual about a header. The program goes on all the same, with what it read.
enum class OMWaveFault : std::uint8_t {
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

/// All that is said of a resource's samples, for those who want to know it without playing them.
struct OMWaveFacts {
    enum class Kind : std::uint8_t { Unknown, Riff, Macintosh };
    static constexpr int kPcm = 1; ///< coding of plain samples

    Kind kind = Kind::Unknown;
    bool hasFormat = true; ///< false: a RIFF WAVE file of which the program would end
    OMWaveHeader header;
    std::size_t claimedLength = 0; ///< bytes of samples, as written
    int coding = kPcm; ///< format tag, of an extensible format the one that it stands for
    int channels = 1;
    int bits = 8; ///< of a sample
    std::vector<OMWaveFault> faults;
};

/// Fails no check.
[[nodiscard]] OMWaveFacts OMExamineWave(std::span<const std::byte> resource);

/// Reads the header wherever the stream stands. An unknown header gives a length of 0. Unusual
/// values fail checks and are taken as they are; a RIFF WAVE file without format is a fatal error.
[[nodiscard]] OMWaveHeader OMReadWaveHeader(OMIStream& stream);

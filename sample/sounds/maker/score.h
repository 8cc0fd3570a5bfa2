// A score as it was read: instruments, and voices whose notes are placed in time.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

inline constexpr int kSampleRate = 22050;
inline constexpr std::int64_t kTicksPerBeat = 48000; ///< a millisecond at tempo 60 is 48

/// How a tone sounds. Times are milliseconds, levels percent.
struct Instrument {
    std::string name;
    std::vector<int> wave{100}; ///< levels of the harmonics
    std::vector<int> strike;    ///< those of the beginning, when they are others
    int strikeMs = 0;           ///< by when half of the strike has turned into the wave
    int sharpness = 0;          ///< of noise; 0: a tone
    int attackMs = 5;
    int decayMs = 0; ///< half-life of the way down to `sustain`; 0: stays loud
    int sustain = 0;
    int releaseMs = 60;
    int vibratoCents = 0;
    int vibratoTenths = 50; ///< tenths of a hertz, here and below
    int vibratoAfterMs = 0;
    int tremolo = 0;
    int tremoloTenths = 50;
    int slideCents = 0; ///< a note begins so far off
    int slideMs = 0;
};

struct Note {
    std::int64_t start; ///< in ticks
    std::int64_t length;
    std::int64_t pitch; ///< relative to a4, in fixedmath's unit
    std::int64_t endPitch;
    int volume; ///< percent
};

struct Voice {
    std::size_t instrument; ///< index
    int volume;
    std::vector<Note> notes;
    std::int64_t end = 0; ///< ticks
};

struct Score {
    int tempo = 120;       ///< beats a minute
    std::int64_t loop = 0; ///< length in ticks; 0: plays once
    int peak = 64;         ///< of the samples, from 128 on
    int lowpassHz = 6000;
    int echoMs = 0;
    int echo = 0; ///< percent
    std::vector<Instrument> instruments;
    std::vector<Voice> voices;
};

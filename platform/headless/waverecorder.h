// Keeps what a wave-out device played: one RIFF WAVE file, 8-bit mono, for every opening of the
// device in which data was played.
//
// The files are named NNN-RATE.wav, counted from 001. They grow on the disk while they are played
// and get their lengths when they are finished.
#pragma once

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iosfwd>
#include <span>
#include <string>

namespace platform {

class WaveRecorder {
  public:
    /// `folder` is a host name and is made when it is missing; with an empty one nothing is kept.
    /// A file that cannot be written is told once on `notes`.
    WaveRecorder(std::string folder, std::ostream& notes);
    ~WaveRecorder() { finish(); }
    WaveRecorder(const WaveRecorder&) = delete;
    WaveRecorder& operator=(const WaveRecorder&) = delete;

    /// Adds played samples; the first ones after `finish` begin a new file.
    void play(std::span<const std::uint8_t> samples, int rate);
    /// Completes the current file, if any.
    void finish();

  private:
    void begin(int rate);
    void complain();

    std::string folder_;
    std::ostream& notes_;
    std::string name_;   ///< of the current file
    std::ofstream file_; ///< open while something is being recorded
    std::uint64_t bytes_ = 0;
    int rate_ = 0;
    int files_ = 0;
};

} // namespace platform

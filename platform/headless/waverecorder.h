// Keeps what a device played: one RIFF WAVE file for every opening of the device in which data was
// played.
//
// The files of a run lie in one folder and are named NNN-RATE.wav, counted from 001. They grow on
// the disk while they are played and get their lengths when they are finished.
#pragma once

#include "platform/host/sound/soundsink.h"

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iosfwd>
#include <span>
#include <string>

namespace platform {

/// Where the recordings of all devices go.
class WaveFolder {
  public:
    /// `folder` is a host name and is made when it is missing; with an empty one nothing is kept.
    /// A file that cannot be written is told once on `notes`.
    WaveFolder(std::string folder, std::ostream& notes);

    [[nodiscard]] bool isUsed() const { return !folder_.empty(); }
    /// The path of the next file; makes the folder.
    [[nodiscard]] std::string nextFile(int rate);
    /// Tells it, and nothing more is kept: recordings with holes would be worse than none.
    void complain(const std::string& file);

  private:
    std::string folder_;
    std::ostream& notes_;
    int files_ = 0;
};

/// The recordings of one device.
class WaveRecorder final : public SoundSink {
  public:
    /// The folder must outlive it.
    explicit WaveRecorder(WaveFolder& folder) : folder_(folder) {}
    ~WaveRecorder() override { finish(); }
    WaveRecorder& operator=(WaveRecorder&&) = delete;

    /// Adds played samples; the first ones after `finish` begin a new file of that format.
    void play(std::span<const std::uint8_t> samples, const SoundFormat& format) override;
    /// Completes the current file, if any.
    void finish() override;

  private:
    void begin(const SoundFormat& format);
    void complain();

    WaveFolder& folder_;
    std::string name_;   ///< of the current file
    std::ofstream file_; ///< open while something is being recorded
    SoundFormat format_;
    std::uint64_t bytes_ = 0;
};

} // namespace platform

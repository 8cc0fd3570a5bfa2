// A sound out of an input stream, RIFF WAVE or Macintosh sound resource, played by the sound engine
// (see omwaveengine.h). Any number of them may play at once.
//
// Its life: unloaded, loaded, playing, finishing (its end was mixed but is still to be heard),
// finished. It can be paused while it plays or finishes, and stopped at any time.
#pragma once

#include "omsound.h"
#include "omwavemix.h"
#include "omwavesamples.h"

#include <cstdint>
#include <deque>

class OMIStream;
class OMWaveEngine;

class OMWaveSound final : public OMSound {
  public:
    static constexpr std::int64_t kWholeLength = -1;

    /// Reads the header at once, and the samples too with `loadNow`. The stream belongs to the
    /// caller, outlives the sound and is not read by anybody else meanwhile. Fatal without a sound
    /// engine.
    OMWaveSound(OMIStream& stream, bool loadNow);
    ~OMWaveSound() override;

    [[nodiscard]] std::string_view className() const override { return "OMWaveSound"; }

    /// False when the device is not available, when there is nothing to play, and when the link of
    /// an earlier play destroyed the sound. One that its link has playing again goes on so.
    bool play(bool asynchronous) override;
    /// False when its link destroyed it or had it play again.
    bool stop() override;
    /// Stops the sound; false when that failed or there is nothing to play.
    bool load() override;
    void unload() override;
    void setVolume(int volume) override;
    [[nodiscard]] int sampleRate() const override { return header_.sampleRate; }
    void pause() override;
    void resume() override;

    /// The part to be played, in bytes from the first sample; kWholeLength is all of the data. What
    /// lies outside the data fails a check and is cut.
    void setPlayPosition(std::int64_t start, std::int64_t length);
    [[nodiscard]] std::int64_t playStart() const { return start_; }
    [[nodiscard]] std::int64_t playEnd() const { return end_; } ///< inclusive
    [[nodiscard]] std::int64_t dataLength() const { return dataLength_; }

  protected:
    void waitUntilAllSoundsEnd() override;

  private:
    friend class OMWaveEngine;

    /// What the sound put into one queued buffer, always from that buffer's first byte on.
    struct Contribution {
        int slot;
        OMWaveSamples::Chunk samples;
        std::int64_t position; ///< of the samples
        int completedPlays;    ///< before them
    };

    [[nodiscard]] bool isEmptyWindow() const { return end_ < start_; }
    [[nodiscard]] std::int64_t clampedStart(std::int64_t start) const;
    [[nodiscard]] std::int64_t clampedLength(std::int64_t length) const;

    // For the engine.
    [[nodiscard]] const OMWaveMix::VolumeTable* volumeTable() const {
        return volume_ == kFullVolume ? nullptr : &table_;
    }
    /// The next samples to be mixed, at least one.
    OMWaveSamples::Chunk nextChunk();
    [[nodiscard]] std::size_t chunkSizeAt(std::int64_t position) const;
    /// The samples were mixed into the buffer `slot`. Whether the end was passed.
    bool advance(int slot, OMWaveSamples::Chunk samples);
    /// The oldest queued buffer has left the queue.
    void bufferPlayed();
    /// Goes back to the oldest queued buffer.
    void rewind();
    void notifyStartedOnce();
    void notifyFinishedIfStarted();
    /// Reads one block ahead of the mixer; false when there is no room or nothing left to read.
    bool readAhead();

    OMWaveEngine& engine_;
    formats::sound::Header header_;
    std::int64_t dataLength_;
    std::int64_t start_ = 0; ///< of the play window
    std::int64_t end_;       ///< inclusive; before the start when the window is empty
    OMWaveSamples samples_;
    OMWaveMix::VolumeTable table_{};
    std::int64_t position_ = 0;              ///< of the next samples to be mixed
    std::deque<Contribution> contributions_; ///< one for each queued buffer, oldest first
    int latencySkip_ = 0;                    ///< queued buffers before the first contribution
    bool startsNext_ = false;                ///< nothing was mixed since the start or resume
    bool resumesNext_ = false;               ///< as startsNext_, and it is a resume
};

// Speakers of movies that nobody hears: they play by the virtual clock and have what they played
// recorded, each in a file of its own.
#pragma once

#include "platform/headless/virtualclock.h"
#include "platform/headless/waverecorder.h"
#include "platform/host/moviespeaker.h"

#include <vector>

namespace platform {

class HeadlessMovieSpeaker;

class HeadlessMovieSpeakers final : public MovieSpeakers {
  public:
    /// Both must outlive the speakers, and this must too.
    HeadlessMovieSpeakers(const VirtualClock& clock, WaveFolder& recordings)
        : clock_(clock), recordings_(recordings) {}

    /// Without a device no opening succeeds; there is one at first.
    void setAvailable(bool available) { available_ = available; }
    [[nodiscard]] std::unique_ptr<MovieSpeaker> make() override;
    /// Completes what was recorded.
    void closeAll();

  private:
    friend class HeadlessMovieSpeaker;

    const VirtualClock& clock_;
    WaveFolder& recordings_;
    bool available_ = true;
    std::vector<HeadlessMovieSpeaker*> speakers_; ///< all there are
};

class HeadlessMovieSpeaker final : public MovieSpeaker {
  public:
    explicit HeadlessMovieSpeaker(HeadlessMovieSpeakers& owner);
    ~HeadlessMovieSpeaker() override;
    HeadlessMovieSpeaker(const HeadlessMovieSpeaker&) = delete;
    HeadlessMovieSpeaker& operator=(const HeadlessMovieSpeaker&) = delete;

    bool open(const SoundFormat& format) override;
    void close() override;
    void write(std::span<const std::uint8_t> samples) override;
    [[nodiscard]] std::size_t bytesQueued() override;
    void pause() override;
    void restart() override;
    void drop() override;

  private:
    void poll();

    HeadlessMovieSpeakers& owner_;
    WaveRecorder recorder_;
    SoundFormat format_; ///< of rate 0: closed
    bool paused_ = false;
    std::uint64_t polledMs_ = 0;
    std::uint64_t due_ = 0; ///< thousandths of samples that time has passed but no whole one yet
    std::vector<std::uint8_t> queue_;
    std::size_t played_ = 0; ///< bytes of the queue
};

} // namespace platform

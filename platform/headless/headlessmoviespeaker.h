// Speakers of movies that nobody hears: they play by the virtual clock and have what they played
// recorded, each in a file of its own.
#pragma once

#include "platform/headless/waverecorder.h"
#include "platform/host/sound/clockedmoviespeaker.h"

#include <vector>

namespace platform {

class HeadlessMovieSpeaker;

class HeadlessMovieSpeakers final : public MovieSpeakers {
  public:
    /// Both must outlive the speakers, and this must too.
    HeadlessMovieSpeakers(const Clock& clock, WaveFolder& recordings)
        : clock_(clock), recordings_(recordings) {}

    /// Without a device no opening succeeds; there is one at first.
    void setAvailable(bool available) { available_ = available; }
    [[nodiscard]] std::unique_ptr<MovieSpeaker> make() override;
    /// Completes what was recorded.
    void closeAll();

  private:
    friend class HeadlessMovieSpeaker;

    const Clock& clock_;
    WaveFolder& recordings_;
    bool available_ = true;
    std::vector<HeadlessMovieSpeaker*> speakers_; ///< all there are
};

class HeadlessMovieSpeaker final : public ClockedMovieSpeaker {
  public:
    explicit HeadlessMovieSpeaker(HeadlessMovieSpeakers& owner);
    ~HeadlessMovieSpeaker() override;
    HeadlessMovieSpeaker& operator=(HeadlessMovieSpeaker&&) = delete;

    bool open(const SoundFormat& format) override;

  private:
    HeadlessMovieSpeakers& owner_;
    WaveRecorder recorder_;
};

} // namespace platform

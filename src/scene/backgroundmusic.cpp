#include "scene/backgroundmusic.h"

#include "omid.h"
#include "omwaveengine.h"
#include "sound/streamsound.h"

#include <algorithm>

namespace {

constexpr int kSilent = 0;
constexpr std::uint32_t kMusicPriority = 110; ///< before the sound engine mixes

int clampedVolume(int volume) { return std::clamp(volume, kSilent, OMSound::kFullVolume); }

} // namespace

BackgroundMusic::BackgroundMusic(ScenePause& scene)
    : scene_(scene), volume_(OMSound::kFullVolume) {}

BackgroundMusic::~BackgroundMusic() = default;

// Settings

void BackgroundMusic::setId(int id) {
    if (OMNarrowId(id) != id_) start(id, volume_, 0);
}

void BackgroundMusic::setVolume(int volume) {
    volume_ = clampedVolume(volume);
    fade_.reset();
    if (music_) music_->sound.setVolume(volume_);
}

void BackgroundMusic::setEnabled(bool enabled) {
    if (enabled == enabled_) return;
    enabled_ = enabled;
    if (enabled)
        start(id_, volume_, 0);
    else
        deleteSound();
}

// The sound

void BackgroundMusic::start(int id, int volume, int fadeSeconds) {
    id = OMNarrowId(id);
    if (id != id_) deleteSound();
    id_ = id;
    volume_ = clampedVolume(volume);
    if (!enabled_) return;
    if (!music_) createSound();
    if (!music_) return;
    if (fadeSeconds > 0) {
        beginFade(kSilent, volume_, fadeSeconds, false);
        music_->sound.setVolume(kSilent);
    } else {
        setVolume(volume_);
    }
    if (pauses_ > 0)
        hold();
    else if (held_ && !scene_.movieIsCurrent())
        release();
    play();
}

void BackgroundMusic::play() {
    if (playing_) return;
    playing_ = music_->sound.play(true);
    if (!playing_ && OMWaveEngine::require().isYielded()) awaitDevice();
}

void BackgroundMusic::awaitDevice() {
    holdFade();
    if (waiting_) return;
    const auto look = [this] {
        if (OMWaveEngine::require().isYielded()) return;
        waiting_.reset();
        if (!held_) releaseFade();
        play();
    };
    waiting_ = std::make_unique<OMTask>(look, kMusicPriority);
}

void BackgroundMusic::createSound() {
    if (id_ == kNoMusic) return;
    music_ =
        RSoundStreams::load(id_, kOMIStreamBuffered, "Stream URL is not installed in RScenePort");
    if (!music_) return;
    music_->sound.setPlayCount(kOMSoundPlayForever);
    music_->sound.setFinishedLink([this] { playing_ = false; });
}

void BackgroundMusic::deleteSound() {
    fade_.reset();
    waiting_.reset();
    music_.reset();
    playing_ = held_ = false;
}

void BackgroundMusic::forgetPauses() {
    while (pauses_ > 0) resume();
}

void BackgroundMusic::readAgain() {
    if (!music_) return;
    const bool ends = fade_ && fade_->thenStop;
    deleteSound();
    if (!ends) start(id_, volume_, 0);
}

void BackgroundMusic::stop(int fadeSeconds) {
    if (!music_) return;
    if (fadeSeconds <= 0)
        deleteSound();
    else
        beginFade(fade_ ? fade_->to : music_->sound.volume(), kSilent, fadeSeconds, true);
}

// Pauses

void BackgroundMusic::pause() {
    ++pauses_;
    hold();
}

void BackgroundMusic::hold() {
    if (!music_) return;
    held_ = true;
    holdFade();
    music_->sound.pause();
}

void BackgroundMusic::resume() {
    pauses_ = std::max(pauses_ - 1, 0);
    if (pauses_ == 0 && held_ && !scene_.movieIsCurrent()) release();
}

void BackgroundMusic::release() {
    held_ = false;
    releaseFade();
    music_->sound.resume();
    play(); // one that found no device when it was started
}

// Fades

void BackgroundMusic::holdFade() {
    if (fade_ && !fade_->heldSince) fade_->heldSince = scene_.ticks();
}

void BackgroundMusic::releaseFade() {
    if (!fade_ || !fade_->heldSince) return;
    fade_->start += scene_.ticks() - *fade_->heldSince;
    fade_->heldSince.reset();
}

void BackgroundMusic::beginFade(int from, int to, int seconds, bool thenStop) {
    const std::int64_t now = scene_.ticks();
    fade_.reset(new Fade{.from = from,
                         .to = to,
                         .thenStop = thenStop,
                         .start = now,
                         .duration = std::int64_t{seconds} * kOMTicksPerSecond,
                         .heldSince = held_ ? std::optional(now) : std::nullopt,
                         .task = {[this] { fade(); }, kMusicPriority}});
}

void BackgroundMusic::fade() {
    const Fade& now = *fade_;
    if (now.heldSince || scene_.isPaused()) return;
    const std::int64_t passed = scene_.ticks() - now.start;
    const auto volume = static_cast<int>(now.from + passed * (now.to - now.from) / now.duration);
    const bool over = now.to > now.from ? volume >= now.to : volume <= now.to;
    if (over && now.thenStop) return deleteSound();
    music_->sound.setVolume(over ? now.to : volume);
    if (over) fade_.reset();
}

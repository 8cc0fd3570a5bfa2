#include "platform/host/movies/hostmovie.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace platform {

namespace {

constexpr int kBlock = 4; ///< pixels of the pictures in the file
constexpr int kMostSkipped = 4;
constexpr double kTicksPerSecond = 100'000; ///< of frame times

std::uint32_t limited(std::uint64_t value) {
    return static_cast<std::uint32_t>(
        std::min<std::uint64_t>(value, std::numeric_limits<std::uint32_t>::max()));
}

} // namespace

HostMovie::HostMovie(MovieParts parts, const Clock& clock, std::uint32_t start)
    : facts_(parts.facts), file_(std::move(parts.file)), frames_(std::move(parts.frames)),
      sound_(std::move(parts.sound)), clock_(clock), time_(clock),
      picture_(facts_.width, facts_.shownHeight(), 8),
      changed_(facts_.width, facts_.shownHeight(), kBlock, facts_.doubled ? 2 * kBlock : kBlock) {
    decode();
    frameMs_ = 0; // counts as opening
    openMs_ = clock.milliseconds() - start;
}

void HostMovie::run(bool on) {
    time_.run(on);
    if (sound_) sound_->run(on);
}

bool HostMovie::wait() {
    if (!time_.runs()) return true;
    time_.update();
    if (sound_) sound_->poll();
    if (time_.late(frame_, facts_.frameTime) >= 0) return false;
    file_->readAhead();
    return true;
}

/// Decodes the current frame, the decoder's next one.
void HostMovie::decode() {
    const std::uint32_t start = clock_.milliseconds();
    const MoviePalette before = frames_->palette();
    frames_->next();
    if (frames_->palette() != before) newPalette_ = true;
    addSound();
    frameMs_ += clock_.milliseconds() - start;
}

void HostMovie::addSound() {
    if (!sound_) return;
    const double due = seconds(frame_);
    const auto late = static_cast<double>(time_.late(frame_, facts_.frameTime));
    sound_->add(frames_->sound(), frame_, due, due + late / kTicksPerSecond);
}

double HostMovie::seconds(int frame) const {
    return static_cast<double>(std::int64_t{frame} * facts_.frameTime) / kTicksPerSecond;
}

void HostMovie::doFrame() {
    if (std::exchange(done_, true)) return;
    const std::uint32_t start = clock_.milliseconds();
    hidden_ = mustSkip();
    changed_.putBack();
    takePicture();
    if (hidden_) {
        ++skipped_;
        ++skippedInARow_;
    } else {
        ++played_;
        skippedInARow_ = 0;
    }
    frameMs_ += clock_.milliseconds() - start;
}

bool HostMovie::mustSkip() const {
    const bool mayBeSkipped = sound_ && time_.runs() && frame_ + 1 < facts_.frames;
    return mayBeSkipped && skippedInARow_ < kMostSkipped &&
           time_.late(frame_, facts_.frameTime) > facts_.frameTime;
}

void HostMovie::takePicture() {
    for (int y = 0; y < facts_.height; ++y) compareRow(y, frames_->row(y));
    if (std::exchange(whole_, false)) changed_.markAll();
}

/// Takes a line over and marks its blocks that are other than before.
void HostMovie::compareRow(int y, const std::uint8_t* line) {
    const auto size = static_cast<std::size_t>(facts_.width);
    std::uint8_t* const shown = picture_.row(facts_.doubled ? 2 * y : y);
    if (std::memcmp(shown, line, size) == 0) return;
    for (int column = 0; column < changed_.columns(); ++column) {
        const auto left = static_cast<std::size_t>(column * kBlock);
        const std::size_t count = std::min<std::size_t>(kBlock, size - left);
        if (std::memcmp(shown + left, line + left, count) != 0) changed_.mark(column, y / kBlock);
    }
    std::memcpy(shown, line, size);
    if (facts_.doubled) std::memcpy(picture_.row(2 * y + 1), line, size);
}

std::optional<Rect> HostMovie::takeChanged() {
    if (hidden_) return std::nullopt;
    return changed_.take();
}

void HostMovie::nextFrame() {
    if (frame_ + 1 >= facts_.frames) return;
    endFrame();
    ++frame_;
    done_ = false;
    decode();
}

void HostMovie::goTo(int frame) {
    endFrame();
    frame_ = std::clamp(frame, 0, facts_.frames - 1);
    if (sound_) sound_->drop();
    decodeUntil(frame_);
    if (sound_) sound_->goOn(seconds(frame_));
    time_.setBase(frame_);
    done_ = hidden_ = false;
    whole_ = newPalette_ = true;
    skippedInARow_ = 0;
    decode();
}

/// Has `frame` be the decoder's next one. Sound may come far ahead of its frame, so that of all
/// frames on the way counts.
void HostMovie::decodeUntil(int frame) {
    if (frames_->frame() >= frame) {
        frames_->rewind();
        if (sound_) sound_->rewind();
    }
    while (frames_->frame() + 1 < frame) {
        frames_->next();
        const int passed = frames_->frame();
        if (sound_) sound_->pass(frames_->sound(), passed, seconds(passed), seconds(frame));
    }
}

void HostMovie::addBlitTime(std::uint32_t ms) {
    blitMs_ += ms;
    frameMs_ += ms;
}

/// Counts the time of the current frame.
void HostMovie::endFrame() { slowest_.add(std::exchange(frameMs_, 0), frame_); }

void HostMovie::SlowestFrames::add(std::uint32_t ms, int frame) {
    const auto number = static_cast<std::uint32_t>(frame);
    if (ms > first.ms)
        second = std::exchange(first, {ms, number});
    else if (ms > second.ms)
        second = {ms, number};
}

MovieSummary HostMovie::summary() const {
    MovieSummary summary{};
    const auto set = [&summary](MovieFact fact, std::uint64_t value) {
        summary[static_cast<std::size_t>(fact)] = limited(value);
    };
    SlowestFrames slowest = slowest_;
    slowest.add(frameMs_, frame_);
    const std::uint64_t deviceMs = std::uint64_t{file_->readMs()} + file_->readAheadMs();
    set(MovieFact::PlaybackTime, time_.total());
    set(MovieFact::FrameTime, static_cast<std::uint32_t>(facts_.frameTime));
    set(MovieFact::OpenTime, openMs_);
    set(MovieFact::FramesPlayed, played_);
    set(MovieFact::FramesSkipped, skipped_);
    set(MovieFact::SoundSkips, sound_ ? sound_->skips() : 0);
    set(MovieFact::BlitTime, blitMs_);
    set(MovieFact::ReadTime, file_->readMs());
    set(MovieFact::DecompressTime, frames_->decodeMs());
    set(MovieFact::ReadAheadTime, file_->readAheadMs());
    set(MovieFact::ReadSpeed, deviceMs > 0 ? file_->bytesRead() * 1000 / deviceMs : 0);
    set(MovieFact::SlowestTime, slowest.first.ms);
    set(MovieFact::SecondSlowestTime, slowest.second.ms);
    set(MovieFact::SlowestFrame, slowest.first.frame);
    set(MovieFact::SecondSlowestFrame, slowest.second.frame);
    set(MovieFact::AverageFrameSize, frames_->size() / static_cast<std::uint64_t>(facts_.frames));
    set(MovieFact::HighestMemory, highestMemory());
    set(MovieFact::ExtraMemory, file_->extraMemory());
    set(MovieFact::HighestExtraUse, file_->highestExtraUse());
    return summary;
}

/// Bytes.
std::uint64_t HostMovie::highestMemory() const {
    const std::uint64_t shown =
        std::uint64_t{picture_.stride()} * static_cast<std::uint64_t>(picture_.height());
    return shown + changed_.memory() + file_->memory() + frames_->highestMemory() +
           (sound_ ? sound_->highestMemory() : 0);
}

std::unique_ptr<Movie> HostMovies::open(const MovieRequest& request) {
    const std::uint32_t start = clock_.milliseconds();
    std::unique_ptr<File> file = files_.open(request.path, OpenMode::Read);
    if (!file) return nullptr;
    const auto facts = MovieFacts::read(*file);
    if (!facts) return nullptr;
    MovieParts parts;
    parts.facts = *facts;
    parts.file = std::make_unique<MovieFile>(
        std::move(file), MovieFile::Request{request.preload, request.extraBuffer}, clock_);
    parts.frames = MovieFrames::open(*parts.file, *facts, clock_);
    if (!parts.frames) return nullptr;
    if (facts->track) {
        const auto format = *facts->header.sound(*facts->track);
        parts.sound.emplace(SoundFormat{format.rate, format.bits, format.channels},
                            parts.frames->lastFrameWithSound(), speakers_.make());
    }
    return std::make_unique<HostMovie>(std::move(parts), clock_, start);
}

} // namespace platform

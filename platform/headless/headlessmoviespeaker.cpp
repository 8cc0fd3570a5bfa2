#include "platform/headless/headlessmoviespeaker.h"

#include <algorithm>

namespace platform {

std::unique_ptr<MovieSpeaker> HeadlessMovieSpeakers::make() {
    return std::make_unique<HeadlessMovieSpeaker>(*this);
}

void HeadlessMovieSpeakers::closeAll() {
    for (HeadlessMovieSpeaker* speaker : speakers_) speaker->close();
}

HeadlessMovieSpeaker::HeadlessMovieSpeaker(HeadlessMovieSpeakers& owner)
    : ClockedMovieSpeaker(owner.clock_, &recorder_), owner_(owner), recorder_(owner.recordings_) {
    owner_.speakers_.push_back(this);
}

HeadlessMovieSpeaker::~HeadlessMovieSpeaker() {
    close();
    std::erase(owner_.speakers_, this);
}

bool HeadlessMovieSpeaker::open(const SoundFormat& format) {
    close();
    return owner_.available_ && ClockedMovieSpeaker::open(format);
}

} // namespace platform

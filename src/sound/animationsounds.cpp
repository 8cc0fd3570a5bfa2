#include "sound/animationsounds.h"

#include "resources/resources.h"
#include "sound/streamsound.h"

#include <algorithm>
#include <utility>

struct RAnimationSounds::Record {
    const AOVoice* voice; ///< only compared
    int id;
    OMLink done; ///< while it plays
    RStreamSound source;
    OMWaveSound& sound = source.sound;

    Record(const AOVoice& owner, int soundId, std::unique_ptr<OMIStream> stream)
        : voice(&owner), id(soundId), source(std::move(stream)) {
        sound.setFinishedLink([this] { end(); });
    }

    void end() {
        const OMLink ended = std::exchange(done, nullptr);
        ended(); // the record may go
    }
};

RAnimationSounds::RAnimationSounds(RResources& resources) : resources_(resources) {}

RAnimationSounds::~RAnimationSounds() = default;

RAnimationSounds::Record* RAnimationSounds::find(const AOVoice& voice, int id) const {
    const auto found = std::ranges::find_if(
        records_, [&](const auto& record) { return record->voice == &voice && record->id == id; });
    return found == records_.end() ? nullptr : found->get();
}

RAnimationSounds::Start RAnimationSounds::play(AOVoice& voice, int id, OMLink done) {
    Record* record = find(voice, id);
    if (!record) {
        std::unique_ptr<OMIStream> stream = resources_.loadSound(id);
        if (!stream) return Start::Never;
        records_.push_back(std::make_unique<Record>(voice, id, std::move(stream)));
        record = records_.back().get();
    }
    record->end();
    record->sound.stop();
    record->sound.resume(); // it may have been paused
    record->done = std::move(done);
    if (record->sound.play(true)) return Start::Plays;
    record->done = nullptr;
    return Start::NotNow;
}

void RAnimationSounds::stop(AOVoice& voice) {
    for (const auto& record : records_) {
        if (record->voice != &voice) continue;
        record->done = nullptr;
        record->sound.stop();
    }
}

void RAnimationSounds::pause(AOVoice& voice) {
    for (const auto& record : records_)
        if (record->voice == &voice) record->sound.pause();
}

void RAnimationSounds::resume(AOVoice& voice) {
    for (const auto& record : records_)
        if (record->voice == &voice) record->sound.resume();
}

void RAnimationSounds::forget(AOVoice& voice) {
    std::erase_if(records_, [&](const auto& record) { return record->voice == &voice; });
}

#include "sound/animationsounds.h"

#include "omao.h"
#include "resources/resources.h"
#include "sound/streamsound.h"

#include <algorithm>
#include <utility>

struct RAnimationSounds::Record {
    const OMAnimation* animation; ///< only compared
    int id;
    OMLink done; ///< while it plays
    RStreamSound source;
    OMWaveSound& sound = source.sound;

    Record(const OMAnimation& owner, int soundId, std::unique_ptr<OMIStream> stream)
        : animation(&owner), id(soundId), source(std::move(stream)) {
        sound.setFinishedLink([this] { end(); });
    }

    void end() {
        const OMLink ended = std::exchange(done, nullptr);
        ended(); // the record may go
    }
};

RAnimationSounds::RAnimationSounds(RResources& resources) : resources_(resources) {}

RAnimationSounds::~RAnimationSounds() = default;

RAnimationSounds::Record* RAnimationSounds::find(const OMAnimation& animation, int id) const {
    const auto found = std::ranges::find_if(records_, [&](const auto& record) {
        return record->animation == &animation && record->id == id;
    });
    return found == records_.end() ? nullptr : found->get();
}

RAnimationSounds::Start RAnimationSounds::play(OMAnimation& animation, int id, OMLink done) {
    Record* record = find(animation, id);
    if (!record) {
        std::unique_ptr<OMIStream> stream = resources_.loadSound(id);
        if (!stream) return Start::Never;
        records_.push_back(std::make_unique<Record>(animation, id, std::move(stream)));
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

void RAnimationSounds::stop(OMAnimation& animation) {
    for (const auto& record : records_) {
        if (record->animation != &animation) continue;
        record->done = nullptr;
        record->sound.stop();
    }
}

void RAnimationSounds::pause(OMAnimation& animation) {
    for (const auto& record : records_)
        if (record->animation == &animation) record->sound.pause();
}

void RAnimationSounds::resume(OMAnimation& animation) {
    for (const auto& record : records_)
        if (record->animation == &animation) record->sound.resume();
}

void RAnimationSounds::forget(OMAnimation& animation) {
    std::erase_if(records_, [&](const auto& record) { return record->animation == &animation; });
}

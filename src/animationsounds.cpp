#include "animationsounds.h"

#include "omao.h"
#include "omwavesound.h"
#include "resources.h"

#include <algorithm>
#include <utility>

struct RAnimationSounds::Record {
    const OMAnimation* animation; ///< only compared
    int id;
    OMLink done;
    std::unique_ptr<OMIStream> stream;
    OMWaveSound sound;

    Record(const OMAnimation& owner, int soundId, OMLink link, std::unique_ptr<OMIStream> source)
        : animation(&owner), id(soundId), done(std::move(link)), stream(std::move(source)),
          sound(*stream, true) {}
};

RAnimationSounds::RAnimationSounds(RResources& resources) : resources_(resources) {
    OMAnimation::setSounds(this);
}

RAnimationSounds::~RAnimationSounds() { OMAnimation::setSounds(nullptr); }

bool RAnimationSounds::play(OMAnimation& animation, int id, OMLink done) {
    const auto same = std::ranges::find_if(records_, [&](const auto& record) {
        return record->animation == &animation && record->id == id;
    });
    if (same != records_.end()) finished(same->get());

    std::unique_ptr<OMIStream> stream = resources_.loadSound(id);
    if (!stream) return false;
    records_.push_back(std::make_unique<Record>(animation, id, std::move(done), std::move(stream)));
    Record* record = records_.back().get();
    record->sound.setFinishedLink([this, record] { finished(record); });
    if (record->sound.play(true)) return true;
    take(record);
    return false;
}

void RAnimationSounds::stop(OMAnimation& animation) {
    std::erase_if(records_, [&](const auto& record) { return record->animation == &animation; });
}

void RAnimationSounds::finished(const Record* record) {
    if (const std::unique_ptr<Record> ended = take(record)) ended->done();
}

std::unique_ptr<RAnimationSounds::Record> RAnimationSounds::take(const Record* record) {
    const auto found =
        std::ranges::find(records_, record, [](const auto& listed) { return listed.get(); });
    if (found == records_.end()) return nullptr;
    std::unique_ptr<Record> taken = std::move(*found);
    records_.erase(found);
    return taken;
}

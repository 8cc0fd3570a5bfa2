#include "sound/gamesounds.h"

#include "omid.h"
#include "resources/resources.h"
#include "sound/streamsound.h"
#include "yengine.h"

#include <algorithm>
#include <utility>

/// Members in the order of their making: the sound goes before its link.
struct RGameSounds::Record {
    int handle;
    OMLink done;
    RStreamSound source;
    OMWaveSound& sound = source.sound;

    Record(int number, OMLink link, std::unique_ptr<OMIStream> stream)
        : handle(number), done(std::move(link)), source(std::move(stream)) {}
};

RGameSounds::RGameSounds(RResources& resources) : resources_(resources) {}

RGameSounds::~RGameSounds() = default;

RGameSounds::Record* RGameSounds::find(int handle) const {
    const auto found = std::ranges::find_if(
        records_, [&](const auto& record) { return record->handle == handle; });
    return found == records_.end() ? nullptr : found->get();
}

int RGameSounds::play(int id, OMLink done, bool loop) {
    if (OMNarrowId(id) == OMNarrowId(kNoSoundId)) return kNoSound;
    std::unique_ptr<OMIStream> stream = resources_.load(id, "WAVE", kOMIStreamCache);
    if (!stream) return kNoSound;
    YEngine::charge(YEngine::kSoundCost);
    const int handle = nextHandle_++;
    records_.push_back(
        std::make_unique<Record>(handle, loop ? nullptr : std::move(done), std::move(stream)));
    OMWaveSound& sound = records_.back()->sound;
    sound.setPlayCount(loop ? kOMSoundPlayForever : 1);
    if (!loop) sound.setFinishedLink([this, handle] { finished(handle); });
    if (!sound.play(true)) remove(handle);
    return handle;
}

int RGameSounds::playEffect(int id, OMLink done) {
    const int handle = play(id, std::move(done), false);
    return find(handle) ? handle : kNotPlaying;
}

void RGameSounds::finished(int handle) {
    if (Record* record = find(handle)) {
        const OMLink done = std::exchange(record->done, nullptr); // the sound may be killed in it
        done();
    }
    remove(handle);
}

void RGameSounds::remove(int handle) {
    const auto found = std::ranges::find_if(
        records_, [&](const auto& record) { return record->handle == handle; });
    if (found == records_.end()) return;
    const std::unique_ptr<Record> record = std::move(*found); // goes when the table is in order
    records_.erase(found);
}

void RGameSounds::kill(int handle) {
    if (Record* record = find(handle)) record->sound.stop();
    finished(handle); // also one that nobody has heard yet
}

void RGameSounds::pause(int handle) {
    if (Record* record = find(handle)) record->sound.pause();
}

void RGameSounds::resume(int handle) {
    if (Record* record = find(handle)) record->sound.resume();
}

void RGameSounds::endAll() {
    const auto ended = std::move(records_); // go when the table is in order
    records_.clear();
}

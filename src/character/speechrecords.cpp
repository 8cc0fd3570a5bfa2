#include "speechrecords.h"

#include "formats/animation/animation.h"
#include "omao.h"

#include <map>
#include <utility>

namespace {

struct Memory {
    std::map<int, std::vector<RSpeechRecord>> speeches; ///< by animation
    std::multimap<std::pair<int, int>, int> sounds;     ///< by animation and sequence, from 1
    std::map<int, int> streams;                         ///< how many want a sound streamed
    RSpeechRecords::SoundLink begin;
    RSpeechRecords::SoundLink end;
};

Memory& memory() {
    static Memory memory;
    return memory;
}

std::vector<RSpeechRecord> speechesIn(const AOImage& image, int animation) {
    std::vector<RSpeechRecord> speeches;
    for (int sequence = 0; sequence < image.sequenceCount(); ++sequence)
        for (const AOEntry& entry : image.sequence(sequence))
            if (entry.code == AOEntry::kSound)
                speeches.push_back({entry.argument, animation, sequence});
    return speeches;
}

} // namespace

const std::vector<RSpeechRecord>* RSpeechRecords::of(int animation) {
    auto& known = memory().speeches;
    const auto found = known.find(animation);
    if (found != known.end()) return &found->second;
    const std::shared_ptr<AOImage> image = OMAnimation::locate(animation);
    if (!image) return nullptr;
    return &known.emplace(animation, speechesIn(*image, animation)).first->second;
}

void RSpeechRecords::addSequenceSound(const formats::map::SequenceSound& sound) {
    memory().sounds.emplace(std::pair(sound.animation, sound.sequence), sound.sound);
}

void RSpeechRecords::setStreamLinks(SoundLink begin, SoundLink end) {
    memory().begin = std::move(begin);
    memory().end = std::move(end);
}

void RSpeechRecords::clear() { memory() = {}; }

RStreamedSpeech::RStreamedSpeech(int animation, int sequence) {
    Memory& all = memory();
    const auto [first, last] = all.sounds.equal_range({animation, sequence + 1});
    for (auto row = first; row != last; ++row) {
        sounds_.push_back(row->second);
        if (all.streams[row->second]++ == 0) all.begin(row->second);
    }
}

RStreamedSpeech::~RStreamedSpeech() {
    Memory& all = memory();
    for (const int sound : sounds_) {
        const auto stream = all.streams.find(sound);
        if (stream == all.streams.end() || --stream->second > 0) continue;
        all.streams.erase(stream);
        all.end(sound);
    }
}

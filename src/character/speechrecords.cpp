#include "speechrecords.h"

#include "aoimage.h"
#include "formats/animation/animation.h"

#include <utility>

namespace {

std::vector<RSpeechRecord> speechesIn(const AOImage& image, int animation) {
    std::vector<RSpeechRecord> speeches;
    for (int sequence = 0; sequence < image.sequences().count(); ++sequence)
        for (const AOEntry& entry : image.sequences()[sequence])
            if (entry.code == AOEntry::kSound)
                speeches.push_back({entry.argument, animation, sequence});
    return speeches;
}

} // namespace

RSpeechRecords::RSpeechRecords(SoundLink begin, SoundLink end)
    : begin_(std::move(begin)), end_(std::move(end)) {}

const std::vector<RSpeechRecord>* RSpeechRecords::of(int animation) {
    const auto found = speeches_.find(animation);
    if (found != speeches_.end()) return &found->second;
    const std::shared_ptr<AOImage> image = AOImage::locate(animation);
    if (!image) return nullptr;
    return &speeches_.emplace(animation, speechesIn(*image, animation)).first->second;
}

void RSpeechRecords::forgetResources() {
    speeches_.clear();
    sounds_.clear();
}

void RSpeechRecords::addSequenceSound(const formats::map::SequenceSound& sound) {
    sounds_.emplace(std::pair(sound.animation, sound.sequence), sound.sound);
}

RStreamedSpeech::RStreamedSpeech(int animation, int sequence) {
    RSpeechRecords* all = RSpeechRecords::current();
    if (!all) return;
    const auto [first, last] = all->sounds_.equal_range({animation, sequence + 1});
    for (auto row = first; row != last; ++row) {
        sounds_.push_back(row->second);
        if (all->streams_[row->second]++ == 0) all->begin_(row->second);
    }
}

RStreamedSpeech::~RStreamedSpeech() {
    RSpeechRecords* all = RSpeechRecords::current();
    if (!all) return;
    for (const int sound : sounds_) {
        const auto stream = all->streams_.find(sound);
        if (stream == all->streams_.end() || --stream->second > 0) continue;
        all->streams_.erase(stream);
        all->end_(sound);
    }
}

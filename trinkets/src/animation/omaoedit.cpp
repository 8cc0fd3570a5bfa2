// How the sequences of an animation are changed while it lives.

#include "omao.h"

#include "formats/animation/animation.h"
#include "omdebug.h"

#include <algorithm>

namespace {

bool isSequence(int index, int count) {
    return OMDebug::check(index >= 0 && index < count, "(seq < 0) || (seq >= numberOfSequences)",
                          "Invalid sequence");
}

constexpr const char* kInvalidPosition = "Invalid sequence position";

} // namespace

// Sequences

AOSequence& OMAnimation::editableEntries() {
    Sequence& sequence = sequences_[static_cast<std::size_t>(sequence_)];
    if (!sequence.own) sequence.own = std::make_unique<AOSequence>(entriesOf(sequence));
    return *sequence.own;
}

int OMAnimation::addSequence(AOSequence entries) {
    if (entries.empty() || entries.back().code != AOEntry::kEnd)
        entries.push_back({0, 0, AOEntry::kEnd, 0});
    sequences_.push_back({0, std::make_unique<AOSequence>(std::move(entries))});
    return sequenceCount() - 1;
}

void OMAnimation::deleteSequence(int index) {
    if (index == kCurrent) index = sequence_;
    if (!isSequence(index, sequenceCount())) return;
    sequences_.erase(sequences_.begin() + index);
    if (index > sequence_) return;
    if (index < sequence_) {
        --sequence_;
        return;
    }
    sequence_ = std::clamp(sequence_, 0, std::max(sequenceCount() - 1, 0));
    goTo(0);
}

// Entries

std::optional<AOEntry> OMAnimation::entryAt(int position) const {
    if (!OMDebug::check(position >= 0 && position <= sequenceLength(),
                        "(pos < 0) || (pos > lastSeqPos)", kInvalidPosition))
        return std::nullopt;
    return at(position);
}

void OMAnimation::replaceEntry(const AOEntry& entry, int position) {
    if (position == kCurrent) position = current_;
    if (!OMDebug::check(position >= 0 && position < sequenceLength(),
                        "(pos < 0) || (pos >= lastSeqPos)", kInvalidPosition))
        return;
    Sequence& sequence = sequences_[static_cast<std::size_t>(sequence_)];
    if (!sequence.own) return replaceInImage(sequence.inImage, position, entry);
    (*sequence.own)[static_cast<std::size_t>(position)] = entry;
    entryReplaced(position);
}

/// All animations that use that sequence of the image show the new frame at once.
void OMAnimation::replaceInImage(int sequence, int position, const AOEntry& entry) {
    image_->replaceEntry(sequence, position, entry);
    OMListLocator<OMAnimation> locator(all_);
    while (OMAnimation* animation = locator.next()) {
        if (!animation->image_->sharesSequences(*image_) || animation->sequences_.empty()) continue;
        const Sequence& its = animation->sequences_[static_cast<std::size_t>(animation->sequence_)];
        if (!its.own && its.inImage == sequence) animation->entryReplaced(position);
    }
}

void OMAnimation::entryReplaced(int position) {
    if (position != shown_ || !at(position).isFrame()) return;
    const int current = current_;
    show(position);
    current_ = current;
}

/// The entry that playback goes on with: in a step the one behind the entry that runs.
int OMAnimation::nextPosition() const {
    return stepping_ && position_ == current_ ? position_ + 1 : position_;
}

void OMAnimation::insertEntry(const AOEntry& entry, int position) {
    if (!isSequence(sequence_, sequenceCount()) ||
        !OMDebug::check(position >= 0 && position <= sequenceLength(),
                        "(pos < 0) || (pos > lastSeqPos)", kInvalidPosition))
        return;
    AOSequence& own = editableEntries();
    own.insert(own.begin() + position, entry);
    // An entry in front of the next one is played; the frame shown stays.
    if (position < nextPosition()) ++position_;
    if (position <= shown_) ++shown_;
    if (position <= current_) ++current_;
}

void OMAnimation::deletePosition(int position) {
    if (position == kCurrent) position = current_;
    if (!OMDebug::check(position >= 0 && position < sequenceLength(),
                        "(pos < 0) || (pos >= lastSeqPos)", kInvalidPosition))
        return;
    AOSequence& own = editableEntries();
    own.erase(own.begin() + position);
    if (position == shown_) {
        const int next = nextPosition() - (position < nextPosition() ? 1 : 0);
        goTo(position);
        position_ = std::max(position_, next);
        return;
    }
    // In a step, what comes next must not be taken for the entry that is gone.
    if (position == position_) ++jumps_;
    if (position < position_) --position_;
    if (position < shown_) --shown_;
    if (position < current_) --current_;
}

// Sounds

std::optional<OMAnimation::NextSound> OMAnimation::nextSound(int position) {
    int frames = 0;
    for (int i = 0; i < sequenceLength(); ++i) {
        const AOEntry entry = at(i);
        frames += entry.isFrame() ? 1 : 0;
        if (i > position && entry.code == AOEntry::kSound)
            return NextSound{&soundRecord(entry.argument), entry.argument, frames, i};
    }
    return std::nullopt;
}

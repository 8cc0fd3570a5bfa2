#include "aosequences.h"

#include "formats/animation/animation.h"
#include "omdebug.h"

namespace {

constexpr AOEntry kEndEntry{0, 0, AOEntry::kEnd, 0};

} // namespace

AOSequences::AOSequences(std::vector<AOSequence> sequences) {
    for (AOSequence& entries : sequences) add(std::move(entries));
    for (Sequence& each : all_) each.isOwn = false;
}

AOSequences::AOSequences(const AOSequences& other) : all_(other.all_) {
    for (Sequence& each : all_)
        if (each.isOwn) each.entries = std::make_shared<AOSequence>(*each.entries);
}

const AOSequence& AOSequences::operator[](int index) const {
    static const AOSequence kNone{kEndEntry};
    return index >= 0 && index < count() ? *all_[static_cast<std::size_t>(index)].entries : kNone;
}

bool AOSequences::has(int index) const {
    return OMDebug::check(index >= 0 && index < count(), "(seq < 0) || (seq >= numberOfSequences)",
                          "Invalid sequence");
}

bool AOSequences::hasEntry(int index, int position, bool orEnd) const {
    const auto end = std::ssize((*this)[index]) - (orEnd ? 0 : 1);
    return OMDebug::check(position >= 0 && position < end,
                          orEnd ? "(pos < 0) || (pos > lastSeqPos)"
                                : "(pos < 0) || (pos >= lastSeqPos)",
                          "Invalid sequence position");
}

AOSequence& AOSequences::own(int index) {
    Sequence& sequence = all_[static_cast<std::size_t>(index)];
    if (!std::exchange(sequence.isOwn, true))
        sequence.entries = std::make_shared<AOSequence>(*sequence.entries);
    return *sequence.entries;
}

void AOSequences::add(AOSequence entries) {
    if (entries.empty() || entries.back().code != AOEntry::kEnd) entries.push_back(kEndEntry);
    all_.push_back({std::make_shared<AOSequence>(std::move(entries)), true});
}

bool AOSequences::remove(int index) {
    if (!has(index)) return false;
    all_.erase(all_.begin() + index);
    return true;
}

bool AOSequences::insert(int index, int position, const AOEntry& entry) {
    if (!has(index) || !hasEntry(index, position, true)) return false;
    AOSequence& entries = own(index);
    entries.insert(entries.begin() + position, entry);
    return true;
}

bool AOSequences::erase(int index, int position) {
    if (!hasEntry(index, position)) return false;
    AOSequence& entries = own(index);
    entries.erase(entries.begin() + position);
    return true;
}

bool AOSequences::replace(int index, int position, const AOEntry& entry) {
    if (!hasEntry(index, position)) return false;
    (*all_[static_cast<std::size_t>(index)].entries)[static_cast<std::size_t>(position)] = entry;
    return true;
}

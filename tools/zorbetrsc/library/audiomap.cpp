#include "library/audiomap.h"

#include "formats/animation/animation.h"
#include "refusal.h"

namespace rsc {

using formats::animation::Entry;

void AudioMap::add(int id, ByteSpan animation) {
    int sequence = 0;
    for (const formats::animation::Sequence& entries :
         readOrRefuse(formats::animation::readWhole, animation).sequences) {
        ++sequence;
        for (const Entry& entry : entries) {
            if (entry.code != Entry::kSound) continue;
            if (!lines_.insert({id, sequence, entry.argument}).second) continue;
            text_ += "AO: " + std::to_string(id) + "\tSequence: " + std::to_string(sequence) +
                     "\tSound: " + std::to_string(entry.argument) + "\n";
        }
    }
}

} // namespace rsc

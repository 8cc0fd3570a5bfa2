#include "library/audiomap.h"

#include "formats/animation/animation.h"
#include "refusal.h"

namespace rsc {

using formats::animation::Entry;

void AudioMap::add(int id, ByteSpan animation) {
    int sequence = 0;
    for (const formats::animation::Sequence& entries :
         valueOf(formats::animation::readWhole(animation)).sequences) {
        ++sequence;
        for (const Entry& entry : entries) {
            if (entry.code != Entry::kSound) continue;
            const formats::map::SequenceSound sound{id, sequence, entry.argument};
            if (known_.insert(sound).second) sounds_.push_back(sound);
        }
    }
}

} // namespace rsc

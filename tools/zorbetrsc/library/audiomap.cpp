#include "library/audiomap.h"

#include "pictures/aseq.h"

namespace rsc {

void AudioMap::add(int id, ByteSpan animation) {
    int sequence = 0;
    for (const AseqSequence& entries : readAseq(animation).sequences) {
        ++sequence;
        for (const AseqEntry& entry : entries) {
            if (entry.code != entrycode::kSound) continue;
            const formats::map::SequenceSound sound{id, sequence, entry.argument};
            if (known_.insert(sound).second) sounds_.push_back(sound);
        }
    }
}

} // namespace rsc

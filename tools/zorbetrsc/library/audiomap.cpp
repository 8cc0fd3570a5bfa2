#include "library/audiomap.h"

#include "pictures/aseq.h"

namespace rsc {

void AudioMap::add(int id, ByteSpan animation) {
    int sequence = 0;
    for (const AseqSequence& entries : readAseq(animation).sequences) {
        ++sequence;
        for (const AseqEntry& entry : entries) {
            if (entry.code != entrycode::kSound) continue;
            if (!lines_.insert({id, sequence, entry.argument}).second) continue;
            text_ += "AO: " + std::to_string(id) + "\tSequence: " + std::to_string(sequence) +
                     "\tSound: " + std::to_string(entry.argument) + "\n";
        }
    }
}

} // namespace rsc

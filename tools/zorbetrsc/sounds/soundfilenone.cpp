// Stands in for the reader of sound files where libsndfile was not found.
#include "sounds/soundfile.h"

#include "refusal.h"

namespace rsc {

bool canReadSounds() { return false; }

SoundSamples readSoundFile(ByteSpan) {
    throw Refusal("the sound must be converted, and this program was built without libsndfile "
                  "(package libsndfile1-dev): install it and build anew, or export the sound as a "
                  "WAVE file of 8 bits, mono, with 22050 or 11025 samples a second");
}

} // namespace rsc

// What goes into the text file "audio.map".
#pragma once

#include "filesystem.h"
#include "formats/map/audiomap.h"

#include <set>

namespace rsc {

using formats::map::kAudioMapName;

/// Collects the sound steps of animations, in the order in which they are added.
class AudioMap {
  public:
    /// Adds the sounds of an animation resource; a line that is there already is left out.
    /// Sequences count from 1, as for scripts. Refuses an animation that cannot be read.
    void add(int id, ByteSpan animation);

    [[nodiscard]] std::string text() const { return formats::map::writeAudioMap(sounds_); }

  private:
    std::set<formats::map::SequenceSound> known_;
    std::vector<formats::map::SequenceSound> sounds_;
};

} // namespace rsc

// The text file "audio.map": tells the program which sounds belong to which sequence of an
// animation, one line for each.
#pragma once

#include "bytes.h"

#include <set>
#include <string>
#include <string_view>
#include <tuple>

namespace rsc {

inline constexpr std::string_view kAudioMapName = "audio.map";

/// Collects the sound steps of animations, in the order in which they are added.
class AudioMap {
  public:
    /// Adds the sounds of an animation resource; a line that is there already is left out.
    /// Sequences count from 1, as for scripts. Refuses an animation that cannot be read.
    void add(int id, ByteSpan animation);

    [[nodiscard]] const std::string& text() const { return text_; }

  private:
    std::set<std::tuple<int, int, int>> lines_; ///< animation, sequence, sound
    std::string text_;
};

} // namespace rsc

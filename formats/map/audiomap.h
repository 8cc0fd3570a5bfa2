// The text "audio.map": says which sounds belong to which sequence of an animation, a line for
// each:
//
//     AO: 2001	Sequence: 3	Sound: 101
#pragma once

#include "formats/map/resourcemap.h"

namespace formats::map {

inline constexpr std::string_view kAudioMapName = "audio.map";

struct SequenceSound {
    int animation = 0; ///< resource id
    int sequence = 0;  ///< from 1
    int sound = 0;     ///< resource id

    auto operator<=>(const SequenceSound&) const = default;
};

/// Animations and sequences beyond 16 bits make no sense.
[[nodiscard]] std::vector<SequenceSound> readAudioMap(std::string_view text,
                                                      const Problem& problem);

[[nodiscard]] std::string writeAudioMap(std::span<const SequenceSound> sounds);

} // namespace formats::map

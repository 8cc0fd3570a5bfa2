// What goes into "resource.map" and "audio.map", and the checks of it.
#pragma once

#include "filesystem.h"
#include "formats/map/audiomap.h"
#include "formats/map/resourcemap.h"

#include <set>

namespace rsc {

using formats::map::kAudioMapName;
using formats::map::kResourceMapName;
using MapLibrary = formats::map::Library;

/// A library's file name in lower case, as maps and manifests take it; refused when it is none.
[[nodiscard]] std::string checkedLibraryName(std::string_view text);

/// Refuses a text that cannot identify a map.
void checkMapIdentifier(std::string_view text);

/// A map's lines hold types of exactly four characters.
[[nodiscard]] bool fitsMap(std::string_view type);

/// All libraries but one stand in the map: "cursors.rsc" is for types that do not fit. The program
/// looks for those there of its own accord, and reads that one's own table only when no map names
/// it.
[[nodiscard]] bool isMapped(std::string_view library);

/// Refuses a resource of this type in a library of this name, which its map could not lead to.
void checkMappable(std::string_view library, std::string_view type);

struct ResourceMapText {
    std::string identifier;
    std::vector<MapLibrary> libraries;
};

/// What a map says to the program, which leaves out what makes no sense.
[[nodiscard]] ResourceMapText readResourceMap(std::string_view text);

/// The text of a map. All types must fit; refused when there are too many resources of one type.
[[nodiscard]] std::string buildResourceMap(std::string_view identifier,
                                           std::span<const MapLibrary> libraries);

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

// A stream over one resource of a 16-bit library.
#pragma once

#include "omistreamonfile.h"

#include <vector>

class OMIStreamDLL16 final : public OMIStreamOnFile {
  public:
    /// The library is found through the search path. Empty, after a failed check, when a parameter
    /// is wrong (id below 1, an empty name, a buffer mode below -1) or there is no such resource.
    OMIStreamDLL16(int id, std::string_view type, std::string_view fileName, int bufferMode,
                   std::span<std::byte> buffer = {});
    OMIStreamDLL16(const OMIStreamDLL16&) = default;

    [[nodiscard]] std::string_view className() const override { return "OMIStreamDLL16"; }

    /// The types of a library, and the ids of one type; nothing when it cannot be read.
    [[nodiscard]] static std::vector<std::string> getResTypes(std::string_view fileName);
    [[nodiscard]] static std::vector<int> getResIDs(std::string_view fileName,
                                                    std::string_view type);

    /// Keeps headers, resource table and an open file of a library until as many uncacheInfo; not
    /// for a library that is cached in memory.
    static void cacheInfo(std::string_view fileName);
    static void uncacheInfo(std::string_view fileName);
};

// A stream over a plain file.
#pragma once

#include "omistreamonfile.h"

class OMIStreamFile final : public OMIStreamOnFile {
  public:
    /// The file is found through the search path. Empty, after a failed check, when a parameter is
    /// wrong (an empty name, a buffer mode below -1) or the file cannot be opened.
    OMIStreamFile(std::string_view fileName, int bufferMode, std::span<std::byte> buffer = {});
    /// The copy of a stream that was filled is filled too, with the bytes of the other's last fill.
    OMIStreamFile(const OMIStreamFile& other);

    [[nodiscard]] std::string_view className() const override { return "OMIStreamFile"; }

    /// Bytes of a file, of its copy when it is cached; none when it cannot be opened.
    [[nodiscard]] static std::optional<std::uint64_t> getInfo(std::string_view fileName);
};

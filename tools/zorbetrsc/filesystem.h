// Whole files in and out.
#pragma once

#include "formats/base/bytes.h"
#include "refusal.h"

#include <filesystem>
#include <string>
#include <vector>

namespace rsc {

using Bytes = formats::Bytes;
using ByteSpan = formats::ByteSpan;

/// Bytes of the largest file that the tool reads or writes: 1 GiB.
inline constexpr std::size_t kLargestFile = std::size_t{1} << 30;

/// Refuses what cannot be read or is larger than the tool takes; the text does not name the file.
[[nodiscard]] Bytes readWholeFile(const std::filesystem::path& path);

struct OutputFile {
    std::string name; ///< in the output folder; may lie in a folder of it
    Bytes data;
};

/// Writes all files beside their final names first and renames them once all are there, so that a
/// failure leaves the files as they were. Makes folders that are missing.
void writeFiles(const std::filesystem::path& folder, const std::vector<OutputFile>& files);

/// What a resource is unpacked to.
struct UnpackedResource {
    std::string lines;             ///< of the manifest, below a library
    std::vector<OutputFile> files; ///< that the lines name
    Bytes packed;                  ///< what packing them gives
};

} // namespace rsc

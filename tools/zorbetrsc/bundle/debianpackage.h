// Debian packages (deb(5)), written with the library libarchive: no program of Debian is needed for
// them, and the same files give the same bytes.
#pragma once

#include "bundle/bundlefile.h"

#include <cstdint>
#include <string>
#include <vector>

namespace rsc {

/// Seconds since 1970, of all files.
using Stamp = std::int64_t;

[[nodiscard]] bool canMakePackages(); ///< false in a build without libarchive

/// The file of a package with these paragraphs of control(5) and these files, whose names begin at
/// the root of the system: "usr/games/pond".
[[nodiscard]] Bytes makePackage(const std::string& control, std::vector<BundleFile> files,
                                Stamp stamp);

/// As gzip(1) makes it, without name and time.
[[nodiscard]] Bytes compressed(const Bytes& data);

} // namespace rsc

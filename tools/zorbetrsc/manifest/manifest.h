// Reading a manifest's text, which docs/formats.md describes. No other file is opened.
#pragma once

#include "manifest/plans.h"

#include <string_view>

namespace rsc {

/// Reads a manifest; the first fault is refused with its line. `defaultIdentifier` names the map
/// when the manifest does not.
[[nodiscard]] Manifest parseManifest(std::string_view text, std::string_view defaultIdentifier);

} // namespace rsc

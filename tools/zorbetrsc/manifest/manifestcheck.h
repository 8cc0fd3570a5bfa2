// Rules that need the whole manifest: a block must have what it is for.
#pragma once

#include "manifest/manifest.h"

namespace rsc {

/// Refuses the first fault with its line.
void checkManifest(const Manifest& manifest);

} // namespace rsc

// What a Debian package of a game holds, and what it says of itself.
#pragma once

#include "bundle/debianpackage.h"
#include "bundle/engine.h"
#include "bundle/gamefiles.h"

namespace rsc {

/// The package's file. It has the engine inside, so that a player needs no other package, and the
/// game runs on what its author tried it with.
[[nodiscard]] BundleFile makeGamePackage(const BundledGame& game, const GameFiles& files,
                                         const Engine& engine, Stamp stamp);

} // namespace rsc

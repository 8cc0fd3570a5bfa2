// The engine that goes with a game: its program, without what only its makers look at, and what it
// needs of the system.
#pragma once

#include "filesystem.h"

#include <string>
#include <string_view>
#include <vector>

namespace rsc {

/// A shared library of the system.
struct NeededLibrary {
    std::string file;    ///< "libpng16.so.16"
    std::string package; ///< Debian's; empty when it is not known
    std::string atLeast; ///< version of the package; empty: any
};

struct Engine {
    Bytes program;
    std::string machine;      ///< as "uname -m" tells it: "x86_64"
    std::string architecture; ///< as Debian calls it: "amd64"
    std::vector<NeededLibrary> needs;
};

/// Of a 64-bit ELF program (elf(5)), from which the tables of symbols and of debuggers are taken
/// out. Refuses everything else.
[[nodiscard]] Engine readEngine(const Bytes& program);

} // namespace rsc

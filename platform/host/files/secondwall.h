// A second wall behind the fence, where the kernel offers one (Landlock): should a damaged file
// ever bring the program to do what it must not, the kernel still keeps it from writing elsewhere
// and from running what a game brought. Reading, devices, sockets and fonts are as before.
#pragma once

#include <string>
#include <vector>

namespace platform {

/// The version of the kernel's interface, 0 where it has none.
[[nodiscard]] int secondWallVersion();

/// From now on this process, and what it starts, writes only in `writable` (folders of the host,
/// and what lies below), to devices and in the caches of fonts and drivers, and executes only what
/// the system has installed, the program itself and `programs`. For the calling thread and those
/// that it starts; cannot be taken back. Folders that are not there do not count. False where there
/// is no wall, or it could not be raised.
bool raiseSecondWall(const std::vector<std::string>& writable,
                     const std::vector<std::string>& programs = {});

} // namespace platform

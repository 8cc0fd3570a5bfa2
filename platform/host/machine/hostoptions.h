// Where the program's files lie on the host. Host path names; relative ones start from the working
// folder of the process.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

struct HostOptions {
    std::string content;     ///< current directory of the program; the working folder when empty
    std::string cd;          ///< drive D:; no such drive when empty
    std::string home;        ///< home directory; a folder of the user's data folder when empty
    bool trusted = false;    ///< the game may open all of the host's files
    bool components = false; ///< and bring native code
    std::optional<std::uint64_t> freeSpace{}; ///< bytes that every drive claims; else the host's
};

} // namespace platform

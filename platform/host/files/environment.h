// The variables of the player's environment.
#pragma once

#include <cstdlib>
#include <string>

namespace platform {

/// "" when it is not set.
inline std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

} // namespace platform

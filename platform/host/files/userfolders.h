// Where the program keeps what belongs to a user of the host, by the rules of XDG base directories.
// Host path names; the folders need not be there.
#pragma once

#include "platform/files.h"

#include <cstdlib>
#include <memory>
#include <string>

namespace platform {

/// A variable of the user's environment; "" when it is not set.
inline std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

/// "zorbet" in the user's folder for data, for states, for configuration.
[[nodiscard]] std::string userDataFolder();
[[nodiscard]] std::string userStateFolder();
[[nodiscard]] std::string userConfigurationFolder();

/// Opens a log that can be written nowhere else, in the folder for states, which is made when it is
/// missing. Null when it cannot be.
[[nodiscard]] std::unique_ptr<File> openUserLog(const std::string& name, OpenMode mode);

} // namespace platform

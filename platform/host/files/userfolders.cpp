#include "platform/host/files/userfolders.h"

#include "platform/host/files/hostfile.h"

#include <fcntl.h>
#include <filesystem>
#include <system_error>

namespace platform {

namespace {

/// The variable names the folder of all programs, which else has a place below the user's own.
std::string userFolder(const char* variable, const char* usual) {
    const std::string all = environment(variable);
    if (all.starts_with('/')) return all + "/zorbet"; // others are to be ignored by the XDG rules
    const std::string user = environment("HOME");
    return (user.empty() ? "." : user) + usual + "/zorbet";
}

} // namespace

std::string userDataFolder() { return userFolder("XDG_DATA_HOME", "/.local/share"); }

std::string userStateFolder() { return userFolder("XDG_STATE_HOME", "/.local/state"); }

// What a player without a home permits lies where no game can write.
std::string userConfigurationFolder() {
    const std::string all = environment("XDG_CONFIG_HOME");
    return (all.starts_with('/') ? all : environment("HOME") + "/.config") + "/zorbet";
}

std::unique_ptr<File> openUserLog(const std::string& name, OpenMode mode) {
    std::error_code error; // a folder that cannot be made shows when the file cannot be
    std::filesystem::create_directories(userStateFolder(), error);
    const Descriptor folder(::open(userStateFolder().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    return folder.isOpen() ? openHostFile(folder, name, mode, false) : nullptr;
}

} // namespace platform

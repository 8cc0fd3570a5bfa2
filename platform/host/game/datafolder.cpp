#include "platform/host/game/datafolder.h"

#include "platform/host/files/userfolders.h"
#include "platform/host/game/gameinfo.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSave = "ZORBET.DAT";
constexpr std::string_view kSaves = "ZORBET."; // the copies of the file too

/// Beside the folders of the games, where none can write: a file for each identifier, which holds
/// the real path of the game that has it. No identifier begins with a dot.
constexpr std::string_view kOwners = ".games";

} // namespace

std::string gameDataFolder(const std::string& identifier) {
    return userDataFolder() + '/' + identifier;
}

std::string claimDataFolder(const std::string& identifier, const std::string& content) {
    std::error_code error;
    const std::string game = fs::canonical(content.empty() ? "." : content, error).string();
    const std::string folder = gameDataFolder(identifier);
    if (error) return folder; // no game is there, which whoever looks for its files tells

    const fs::path owners = fs::path(userDataFolder()) / kOwners;
    std::ifstream claim(owners / identifier, std::ios::binary);
    const std::string owner{std::istreambuf_iterator<char>(claim), {}};
    if (owner == game) return folder;
    if (owner.starts_with('/') && fs::is_directory(owner, error) &&
        readGameInfo(owner).identifier == identifier)
        return folder + '@' + pathDigest(game);
    fs::create_directories(owners, error);
    std::ofstream(owners / identifier, std::ios::binary) << game;
    return folder;
}

void moveOldSaves(const std::string& identifier) {
    std::error_code error;
    const fs::path from = userDataFolder();
    const fs::path to = gameDataFolder(identifier);
    if (!fs::is_regular_file(from / kSave, error) || fs::exists(to / kSave, error)) return;
    fs::create_directories(to, error);
    // The file itself goes last: until then a move that was interrupted begins again.
    for (fs::directory_iterator entry(from, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        std::error_code failed;
        if (name.starts_with(kSaves) && name != kSave && entry->is_regular_file(failed))
            fs::rename(entry->path(), to / name, failed);
    }
    fs::rename(from / kSave, to / kSave, error);
}

} // namespace platform

#include "zorbetmps/check/includes.h"

#include "formats/base/latin1.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace mps {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kScriptFolders[] = {"", "scripts\\"};

fs::path folderOf(const std::string& script) {
    const fs::path folder = fs::path(script).parent_path();
    return folder.empty() ? "." : folder;
}

} // namespace

Includes::Includes(const std::string& script) {
    const fs::path own = folderOf(script);
    folders_.push_back(folder(own.string()));
    folders_.push_back(folder((own / "..").lexically_normal().string()));
}

Includes::Folder Includes::folder(const std::string& given) {
    std::error_code error;
    const fs::path real = fs::weakly_canonical(given, error);
    return {given, real.string(),
            std::make_unique<platform::HostFiles>(platform::HostOptions{.content = given})};
}

std::optional<std::string> Includes::find(std::string_view name) const {
    for (const Folder& folder : folders_) {
        for (const std::string_view subfolder : kScriptFolders) {
            const std::string path = std::string(subfolder) + std::string(name);
            if (folder.files->exists(path)) return shownPath(folder, *folder.files->hostPath(path));
        }
    }
    return std::nullopt;
}

std::vector<std::string> Includes::scripts() const {
    std::vector<std::string> names;
    for (const Folder& folder : folders_)
        for (const std::string_view subfolder : kScriptFolders)
            for (const platform::DirectoryEntry& entry :
                 folder.files->list(subfolder.empty() ? "." : subfolder))
                if (!entry.isDirectory && formats::lowerAscii(entry.name).ends_with(".mps"))
                    names.push_back(entry.name);
    return names;
}

std::string Includes::shownPath(const Folder& folder, const std::string& hostPath) {
    const fs::path inside = fs::path(hostPath).lexically_relative(folder.real);
    if (inside.empty() || *inside.begin() == "..") return hostPath;
    return (fs::path(folder.given) / inside).lexically_normal().string();
}

std::optional<std::string> readHostFile(const std::string& path, std::size_t limit,
                                        std::string& why) {
    std::error_code error;
    const bool isFolder = fs::is_directory(path, error);
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    std::string bytes;
    char block[1 << 14];
    while (!isFolder && file && bytes.size() <= limit) {
        file.read(block,
                  static_cast<std::streamsize>(std::min(sizeof block, limit + 1 - bytes.size())));
        bytes.append(block, static_cast<std::size_t>(file.gcount()));
    }
    if (isFolder || file.bad() || !file.is_open()) {
        why = "cannot be read: " + std::generic_category().message(isFolder ? EISDIR : errno);
        return std::nullopt;
    }
    return bytes;
}

} // namespace mps

#include "manifest/givenfiles.h"

#include "filesystem.h"
#include "formats/base/latin1.h"
#include "library/maps.h"
#include "text.h"

#include <algorithm>

namespace rsc {

namespace {

namespace fs = std::filesystem;

bool isMap(const fs::path& path) {
    const std::string name = formats::lowerAscii(path.filename().string());
    return name == kResourceMapName || name == kAudioMapName;
}

} // namespace

std::vector<LibraryFile> readLibraryFiles(const std::vector<fs::path>& paths) {
    std::vector<LibraryFile> files;
    for (const fs::path& path : paths) {
        if (isMap(path)) continue;
        onPath(path, [&] {
            LibraryFile file{path, checkedLibraryName(path.filename().string()),
                             readWholeFile(path)};
            if (std::ranges::find(files, file.name, &LibraryFile::name) != files.end())
                throw Refusal("there are two libraries of this name");
            files.push_back(std::move(file));
        });
    }
    if (files.empty()) throw Refusal("no library is named, only maps");
    return files;
}

std::optional<std::string> readBeside(const std::vector<LibraryFile>& libraries,
                                      std::string_view name) {
    const fs::path folder = fs::absolute(libraries.front().path).parent_path();
    const auto isElsewhere = [&](const LibraryFile& file) {
        return fs::absolute(file.path).parent_path() != folder;
    };
    if (std::ranges::any_of(libraries, isElsewhere)) return std::nullopt;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        if (formats::lowerAscii(entry.path().filename().string()) != name) continue;
        const Bytes bytes = onPath(entry.path(), [&] { return readWholeFile(entry.path()); });
        return std::string(bytes.begin(), bytes.end());
    }
    return std::nullopt;
}

} // namespace rsc

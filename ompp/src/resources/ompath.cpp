#include "ompath.h"

#include "formats/base/latin1.h"
#include "omdebug.h"
#include "omplatform.h"

#include <algorithm>

namespace {

struct SearchPath {
    std::vector<OMPathDirectory> directories;
    bool strict = false;
};

SearchPath& searchPath() {
    static SearchPath thePath;
    return thePath;
}

} // namespace

std::mutex& OMIOSection() {
    static auto& section = *new std::mutex; // workers may hold it while the process ends
    return section;
}

std::string OMPathWithBackslash(std::string_view path) {
    std::string result(path);
    if (!result.ends_with('\\') && !result.ends_with('/')) result += '\\';
    return result;
}

OMPathDirectory::OMPathDirectory(std::string_view path, bool cacheListing)
    : path_(OMPathWithBackslash(path)), listingCached_(cacheListing) {
    if (!cacheListing) return;
    for (const platform::DirectoryEntry& entry : OMPlatform().files().list(path_))
        if (!entry.isDirectory) names_.push_back(formats::lowerLatin1(entry.name));
    std::sort(names_.begin(), names_.end());
}

bool OMPathDirectory::holds(std::string_view name) const {
    if (!listingCached_) return OMPlatform().files().exists(path_ + std::string(name));
    return std::binary_search(names_.begin(), names_.end(), formats::lowerLatin1(name));
}

void OMPathAddDirectory(std::string_view path, bool cacheListing) {
    OMPathDirectory directory(path, cacheListing); // listing it may take long
    const std::lock_guard section(OMIOSection());
    searchPath().directories.push_back(std::move(directory));
}

void OMPathListAgain() {
    std::vector<OMPathDirectory> directories;
    for (const OMPathDirectory& old : searchPath().directories)
        directories.emplace_back(old.path(), old.isListingCached());
    const std::lock_guard section(OMIOSection());
    searchPath().directories = std::move(directories);
}

void OMPathSetStrict(bool strict) {
    const std::lock_guard section(OMIOSection());
    searchPath().strict = strict;
}

void OMPathClear() {
    const std::lock_guard section(OMIOSection());
    searchPath() = SearchPath();
}

std::optional<std::string> OMPathResolveFilename(std::string_view name) {
    if (!OMDebug::check(!name.empty(), "filename == NULL",
                        "OMPathResolveFilename - invalid filename!"))
        return std::nullopt;
    const auto& [directories, strict] = searchPath();
    if (name.find_first_of(":\\") != std::string_view::npos || directories.empty())
        return std::string(name);

    // When not strict the search ends at the last directory, found or not.
    const auto end = strict ? directories.end() : directories.end() - 1;
    const auto found =
        std::find_if(directories.begin(), end,
                     [&](const OMPathDirectory& directory) { return directory.holds(name); });
    if (found == directories.end()) return std::nullopt;
    return found->path() + std::string(name);
}

std::unique_ptr<platform::File> OMPathOpen(std::string_view name) {
    const std::optional<std::string> path = OMPathResolveFilename(name);
    if (path) return OMPlatform().files().open(*path, platform::OpenMode::Read);
    platform::Files::setLastRefusal(std::make_error_code(std::errc::no_such_file_or_directory));
    return nullptr;
}

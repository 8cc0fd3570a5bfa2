#include "platform/host/game/workshop.h"

#include "formats/base/latin1.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <span>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace platform {

namespace {

namespace fs = std::filesystem;

/// A save has come to its end when nothing came for so long.
constexpr std::chrono::milliseconds kQuiet{200};
constexpr std::string_view kPackedFolder = "RSC";
constexpr std::string_view kScriptsFolder = "scripts";
constexpr std::string_view kManifest = ".manifest";
constexpr std::array<std::string_view, 2> kLibraries = {".rsc", ".map"};
constexpr std::array<std::string_view, 3> kPlayed = {".mps", ".smk", ".po"};
constexpr std::string_view kMade = "library"; ///< begins a line that names one
constexpr std::string_view kBetweenWords = " \t\r\v\f";

std::string extensionOf(const fs::path& path) {
    return formats::lowerAscii(path.extension().string());
}

bool isOneOf(std::span<const std::string_view> extensions, const fs::path& path) {
    return std::ranges::find(extensions, extensionOf(path)) != extensions.end();
}

/// The folder of that name in any case, as the game finds it; else as it would be made.
fs::path folderIn(const fs::path& parent, std::string_view name) {
    std::error_code error;
    if (fs::exists(parent / name, error)) return parent / name;
    std::set<fs::path> alike;
    fs::directory_iterator entry(parent, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error))
        if (formats::lowerAscii(entry->path().filename().string()) == formats::lowerAscii(name))
            alike.insert(entry->path());
    return alike.empty() ? parent / name : *alike.begin();
}

std::string millisecondsSince(std::chrono::steady_clock::time_point begin) {
    const auto passed = std::chrono::steady_clock::now() - begin;
    return std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(passed).count()) +
           " ms";
}

fs::path withoutLinks(const fs::path& path) {
    std::error_code error;
    const fs::path canonical = fs::weakly_canonical(path, error);
    return error ? path.lexically_normal() : canonical;
}

/// The words of a manifest's line; a quotation mark without its partner stands for one that is yet
/// to come.
std::vector<std::string> wordsOf(std::string_view line) {
    std::vector<std::string> words;
    for (;;) {
        const std::size_t start = line.find_first_not_of(kBetweenWords);
        if (start == std::string_view::npos || line[start] == '#') return words;
        line.remove_prefix(start);
        const bool quoted = line.front() == '"';
        if (quoted) line.remove_prefix(1);
        const std::string_view word =
            line.substr(0, quoted ? line.find('"') : line.find_first_of(kBetweenWords));
        words.emplace_back(word);
        line.remove_prefix(std::min(word.size() + (quoted ? 1 : 0), line.size()));
    }
}

} // namespace

Workshop::Workshop(const WorkshopOptions& options, Tell tell)
    : tell_(std::move(tell)), folder_(withoutLinks(fs::absolute(options.game))),
      packer_(options.packer), atOnce_(options.atOnce) {
    const Path libraries = folderIn(folder_, kPackedFolder);
    packedName_ = libraries.filename().string();
    packed_ = withoutLinks(libraries);
    watch_.add(folder_, FolderWatch::Depth::Tree);
    for (const Path& root : {folder_, folder_.parent_path(), options.cd})
        if (!root.empty()) watchPlayed(fs::absolute(root));
    readManifests();
}

/// What a folder has of scripts and libraries; a link to a folder is as good as one.
void Workshop::watchPlayed(const Path& root) {
    for (const std::string_view name : {kPackedFolder, kScriptsFolder}) {
        const Path folder = withoutLinks(folderIn(root, name));
        searched_.insert(folder);
        watch_.add(folder, FolderWatch::Depth::Folder);
    }
}

// What is saved

void Workshop::readManifests() {
    std::error_code error;
    fs::directory_iterator entry(folder_, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error))
        if (extensionOf(entry->path()) == kManifest) readManifest(entry->path());
}

/// Any word may be a file's name, but for those of what is made; what is none is never saved. So it
/// makes no difference whether the manifest is in order.
void Workshop::readManifest(const Path& path) {
    std::error_code error;
    std::ifstream file;
    if (fs::is_regular_file(path, error)) file.open(path, std::ios::binary);
    if (!file.is_open()) {
        manifests_.erase(path);
        return;
    }
    const std::string text = formats::utf8FromAuthor(
        std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()));
    Manifest& manifest = manifests_[path];
    manifest.named.clear();
    for (std::string_view rest = text; !rest.empty();) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::vector<std::string> words = wordsOf(rest.substr(0, end));
        if (!words.empty() && words.front() != kMade)
            for (const std::string& word : words) {
                const Path named = (folder_ / word).lexically_normal();
                manifest.named.insert({named, withoutLinks(named)});
            }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    std::set<Path> folders;
    for (const Path& named : manifest.named) folders.insert(named.parent_path());
    for (const Path& folder : folders) watchNamed(folder);
}

/// A folder that is yet to be made comes in the next one above.
void Workshop::watchNamed(Path folder) {
    std::error_code error;
    while (!fs::is_directory(folder, error) && folder.has_relative_path())
        folder = folder.parent_path();
    watch_.add(folder, FolderWatch::Depth::Folder);
}

void Workshop::look() {
    if (const std::string problem = watch_.takeProblem(); !problem.empty())
        tell_(problem + ". Shift+F3 loads again all the same", true);
    const FolderWatch::Changes changes = watch_.take();
    bool counts = changes.anything;
    if (changes.anything) takeAnything();
    for (const Path& path : changes.paths) counts = take(path) || counts;
    if (!counts) return;
    lastChange_ = Clock::now();
    if (atOnce_ && !wish_) wish_ = false;
}

/// Whether it is anything of the game's.
bool Workshop::take(const Path& path) {
    if (packing_ && path.parent_path() == packed_) return false; // our own doing
    bool counts = isOneOf(kPlayed, path);
    if (isOneOf(kLibraries, path) && searched_.contains(path.parent_path()))
        counts = resourcesAreDue_ = true; // elsewhere the game may copy some by itself
    if (path.parent_path() == folder_ && extensionOf(path) == kManifest) {
        readManifest(path);
        if (const auto manifest = manifests_.find(path); manifest != manifests_.end())
            counts = manifest->second.isDue = true;
    }
    for (auto& [name, manifest] : manifests_) counts = takeNamed(path, manifest) || counts;
    return counts;
}

/// Of a folder all that is named in it.
bool Workshop::takeNamed(const Path& path, Manifest& manifest) {
    bool counts = false;
    for (auto named = manifest.named.lower_bound(path);
         named != manifest.named.end() && isInFolder(*named, path); ++named) {
        counts = manifest.isDue = true;
        if (*named != path) watchNamed(named->parent_path());
    }
    return counts;
}

void Workshop::takeAnything() {
    manifests_.clear();
    readManifests();
    for (auto& [name, manifest] : manifests_) manifest.isDue = true;
    resourcesAreDue_ = true;
}

bool Workshop::isQuiet() const { return !lastChange_ || Clock::now() - *lastChange_ >= kQuiet; }

// What is to be done

void Workshop::askToLoad(bool keepsVariables) {
    wish_ = keepsVariables;
    if (watch_.isBlind()) takeAnything();
}

void Workshop::work() {
    look();
    if (packing_) return endPacking();
    if (!wish_ || !game_ || !isQuiet()) return;
    const auto due = std::ranges::find_if(manifests_, [](const auto& m) { return m.second.isDue; });
    if (due != manifests_.end())
        pack(due->first);
    else
        load();
}

void Workshop::pack(const Path& manifest) {
    packedManifest_ = manifest;
    packingBegan_ = Clock::now();
    manifests_[manifest].isDue = false; // what is saved from now on may come too late
    packing_.emplace(std::vector<std::string>{packer_.string(), "pack",
                                              manifest.filename().string(), "-o", packedName_},
                     folder_);
}

/// A manifest that could not be packed stays due, but is not packed again before anything else is
/// saved, or that is asked for.
void Workshop::endPacking() {
    const std::optional<std::string> end = packing_->ended();
    if (!end) return;
    look(); // while it is known who wrote the libraries
    std::string told = packing_->printed();
    packing_.reset();
    while (told.ends_with('\n')) told.pop_back();
    if (!told.empty()) tell_(told, !end->empty());
    const std::string name = packedManifest_.filename().string();
    if (end->empty()) {
        resourcesAreDue_ = true;
        tell_(name + " was packed in " + millisecondsSince(packingBegan_), false);
        return;
    }
    if (const auto packed = manifests_.find(packedManifest_); packed != manifests_.end())
        packed->second.isDue = true;
    if (!lastChange_ || *lastChange_ < packingBegan_) wish_.reset();
    tell_(name + " could not be packed, " + whyNot(*end) + ". The scene goes on as it was", true);
}

std::string Workshop::whyNot(const std::string& end) const {
    std::error_code unknown;
    if (fs::exists(packer_, unknown)) return end;
    return "as " + packer_.string() + " is not there: install the whole program, or pack by hand";
}

void Workshop::load() {
    const Reload reload{.resources = std::exchange(resourcesAreDue_, false),
                        .keepsVariables = *std::exchange(wish_, std::nullopt)};
    game_(reload);
}

} // namespace platform

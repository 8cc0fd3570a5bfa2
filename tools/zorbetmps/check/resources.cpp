#include "zorbetmps/check/resources.h"

#include "fonts/bdf.h"
#include "formats/animation/animation.h"
#include "formats/base/latin1.h"
#include "formats/font/nfnt.h"
#include "formats/map/resourcemap.h"
#include "manifest/manifest.h"
#include "platform/host/files/hostfiles.h"
#include "refusal.h"
#include "zorbetmps/check/includes.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace mps {

namespace {

using formats::library::Index;

constexpr std::string_view kFolders[] = {"RSC\\", "..\\RSC\\"};
constexpr std::string_view kLibraryMark = ".rsc";
constexpr std::string_view kManifest = "resources.manifest";
constexpr std::string_view kAnimation = "ASEQ";
constexpr std::string_view kFont = "NFNT";
constexpr std::size_t kLargestMap = std::size_t{4} << 20;        ///< of maps and manifests
constexpr std::size_t kLargestAnimation = std::size_t{64} << 20; ///< bytes
constexpr std::size_t kLargestFont = std::size_t{1} << 20;       ///< also as a BDF file

formats::ReadAt readAtOf(platform::File& file) {
    return [&file](std::uint64_t place, std::span<std::byte> buffer) {
        return file.seek(place) ? file.read(buffer) : 0;
    };
}

std::vector<int> framesIn(const std::vector<formats::animation::Sequence>& sequences) {
    std::vector<int> frames;
    for (const formats::animation::Sequence& sequence : sequences)
        frames.push_back(
            static_cast<int>(std::ranges::count_if(sequence, &formats::animation::Entry::isFrame)));
    return frames;
}

/// None for a file of the author's, which is packed as it is.
std::optional<std::vector<int>> framesIn(const rsc::ResourcePlan& plan) {
    const auto* animation = std::get_if<rsc::AnimationPlan>(&plan.content);
    if (!animation) return std::nullopt;
    if (animation->sequences.empty()) return framesIn({formats::animation::stillSequence()});
    std::vector<formats::animation::Sequence> sequences;
    for (const rsc::SequencePlan& sequence : animation->sequences)
        sequences.push_back(sequence.entries);
    return framesIn(sequences);
}

/// What is shown for letters that are missing is none of them.
std::bitset<256> lettersOf(const std::map<int, formats::font::Glyph>& glyphs, int standIn) {
    std::bitset<256> letters;
    for (const auto& [code, glyph] : glyphs)
        if (code >= 0 && code < formats::font::kCodes && code != standIn)
            letters.set(static_cast<std::size_t>(code));
    return letters;
}

/// None for what is no font in a BDF file that can be read.
std::optional<std::bitset<256>> lettersOf(const rsc::ResourcePlan& plan,
                                          const std::string& folder) {
    const auto* font = std::get_if<rsc::FontPlan>(&plan.content);
    if (!font || font->face) return std::nullopt;
    std::string why;
    const auto file =
        readHostFile((std::filesystem::path(folder) / font->file.path).string(), kLargestFont, why);
    if (!file) return std::nullopt;
    try {
        const rsc::BitmapFont drawn = rsc::readBdf(formats::Bytes(file->begin(), file->end()));
        std::bitset<256> letters = lettersOf(drawn.glyphs, drawn.defaultCode.value_or(-1));
        if (font->chars) letters &= *font->chars;
        return letters;
    } catch (const rsc::Refusal&) {
        return std::nullopt; // zorbet-rsc tells why
    }
}

void addMost(std::vector<int>& most, const std::vector<int>& frames) {
    most.resize(std::max(most.size(), frames.size()));
    for (std::size_t i = 0; i < frames.size(); ++i) most[i] = std::max(most[i], frames[i]);
}

} // namespace

GameResources::GameResources(const std::string& folder)
    : files_(std::make_unique<platform::HostFiles>(
          platform::HostOptions{.content = folder.empty() ? "." : folder})) {
    bool hasOwn = false;
    for (const std::string_view each : kFolders)
        hasOwn |= readLibraries(std::string(each)) && each == kFolders[0];
    if (!hasOwn) readManifest(folder);
}

/// Whether there are any.
bool GameResources::readLibraries(const std::string& folder) {
    std::set<std::string> libraries;
    for (const platform::DirectoryEntry& entry : files_->list(folder)) {
        const std::string name = formats::lowerLatin1(entry.name);
        if (entry.isDirectory || name.find(kLibraryMark) == name.npos) continue;
        readLibrary(folder + entry.name);
        libraries.insert(name);
    }
    readMap(folder, libraries);
    return !libraries.empty();
}

void GameResources::readLibrary(const std::string& path) {
    const auto file = files_->open(path, platform::OpenMode::Read);
    const auto index = file ? Index::read(readAtOf(*file), file->size()) : std::nullopt;
    if (!index || index->isDamaged() || index->hasNameTable()) {
        known_ = false;
        return;
    }
    for (const std::string& type : index->types())
        for (const int id : index->ids(type)) {
            ids_[type].insert(id);
            if (type == kAnimation) animations_.emplace(id, Stored{path, *index->find(id, type)});
            if (type == kFont) fonts_.emplace(id, Stored{path, *index->find(id, type)});
        }
}

/// A map tells of libraries that lie elsewhere, on the CD.
void GameResources::readMap(const std::string& folder, const std::set<std::string>& libraries) {
    const auto text = platform::readFile(
        *files_, folder + std::string(formats::map::kResourceMapName), kLargestMap);
    if (!text) return;
    formats::map::ResourceMap map(*text, [](int, const char*) {});
    for (formats::map::Library library; map.next(library);)
        for (const formats::map::Resource& resource : library.resources)
            if (!libraries.contains(library.name)) ids_[resource.type].insert(resource.id);
}

void GameResources::readManifest(const std::string& folder) {
    const auto text = platform::readFile(*files_, kManifest, kLargestMap);
    if (!text) return;
    try {
        for (const rsc::LibraryPlan& library : rsc::parseManifest(*text, "GAME").libraries) {
            known_ &= !library.layout; // most of it comes from elsewhere
            for (const rsc::ResourcePlan& resource : library.resources) {
                ids_[resource.type].insert(resource.id);
                if (const auto frames = framesIn(resource)) planned_.emplace(resource.id, *frames);
                if (const auto letters = lettersOf(resource, folder))
                    plannedFonts_.push_back({resource.id, *letters});
            }
        }
    } catch (const rsc::Refusal&) {
        known_ = false; // zorbet-rsc tells why
    }
}

std::optional<formats::Bytes> GameResources::bytesOf(const Stored& stored, std::size_t most) const {
    const auto file = files_->open(stored.library, platform::OpenMode::Read);
    if (!file || stored.place.length > most) return std::nullopt;
    formats::Bytes bytes(stored.place.length);
    bytes.resize(readAtOf(*file)(stored.place.offset, std::as_writable_bytes(std::span(bytes))));
    return bytes;
}

bool GameResources::has(std::string_view type, int id) const {
    const auto ids = ids_.find(type);
    return ids != ids_.end() && ids->second.contains(id);
}

std::vector<std::string_view> GameResources::typesOf(int id) const {
    std::vector<std::string_view> types;
    for (const auto& [type, ids] : ids_)
        if (ids.contains(id)) types.push_back(type);
    return types;
}

std::optional<int> GameResources::nearest(std::string_view type, int id) const {
    const auto ids = ids_.find(type);
    if (ids == ids_.end()) return std::nullopt;
    return *std::ranges::min_element(ids->second, {},
                                     [id](int other) { return std::abs(other - id); });
}

std::optional<std::vector<int>> GameResources::framesOf(int animation) const {
    std::vector<int> most;
    const auto [stored, storedEnd] = animations_.equal_range(animation);
    const auto [planned, plannedEnd] = planned_.equal_range(animation);
    for (auto at = planned; at != plannedEnd; ++at) addMost(most, at->second);
    for (auto at = stored; at != storedEnd; ++at) {
        const auto bytes = bytesOf(at->second, kLargestAnimation);
        if (!bytes) return std::nullopt;
        const auto read = formats::animation::read(*bytes);
        if (!read.ok()) return std::nullopt;
        addMost(most, framesIn(read.value.sequences));
    }
    if (most.empty()) return std::nullopt;
    return most;
}

std::vector<GameFont> GameResources::fonts() const {
    std::vector<GameFont> fonts = plannedFonts_;
    for (const auto& [id, stored] : fonts_) {
        const auto bytes = bytesOf(stored, kLargestFont);
        if (!bytes) continue;
        if (const auto font = formats::font::read(*bytes); font.ok())
            fonts.push_back({id, lettersOf(font.value.glyphs, font.value.standInCode())});
    }
    return fonts;
}

} // namespace mps

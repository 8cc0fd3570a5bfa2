#include "resources/resources.h"

#include "formats/base/latin1.h"
#include "omapp.h"
#include "omcachedfile.h"
#include "omformat.h"
#include "omistreamdll16.h"
#include "omlog.h"
#include "omopenlibrary.h"
#include "ompath.h"
#include "omplatform.h"
#include "omresmgr.h"
#include "omresourcelog.h"
#include "resources/mapproblems.h"
#include "yengine.h"

#include <algorithm>
#include <span>

namespace {

using formats::map::SequenceSound;

constexpr std::string_view kScripts = "scripts\\";
constexpr std::string_view kResourceFolder = "RSC\\";
constexpr std::string_view kParent = "..\\";
constexpr std::string_view kResourceFileMark = ".rsc";
constexpr std::size_t kMaxMapSize = std::size_t{4}
                                    << 20; ///< bytes; 400,000 resources, 50 full types

/// `otherwise` is what happens when it is there and cannot be read.
std::optional<std::string> readText(const std::string& path, const char* otherwise) {
    std::optional<std::string> text = platform::readFile(OMPlatform().files(), path, kMaxMapSize);
    if (!text) OMLogUnreadable(path, otherwise);
    return text;
}

constexpr std::size_t kComparedAtOnce = 65536; ///< bytes

/// Whether a copy of `source` may be made at `path`: where nothing lies, or what a copy left behind
/// when the program ended in its midst, the beginning of that same file. A map can name a file as
/// it likes, even as the player's saved games are named.
bool isFreeForCopy(const std::string& path, const std::string& source) {
    const auto old = OMPlatform().files().open(path, platform::OpenMode::Read);
    if (!old) return true;
    const auto file = OMPathOpen(source);
    if (!file || old->size() > file->size()) return false;
    std::vector<std::byte> left(kComparedAtOnce);
    std::vector<std::byte> right(kComparedAtOnce);
    while (const std::size_t count = old->read(left)) {
        const auto part = std::span(right).first(count);
        if (file->read(part) != count || !std::equal(part.begin(), part.end(), left.begin()))
            return false;
    }
    return true;
}

} // namespace

RResources::StartUp
RResources::start(std::string_view cdDrive,
                  const OMLinkTo<void(const SequenceSound&)>& addSequenceSound) {
    roots_ = {"", std::string(kParent)};
    if (!cdDrive.empty()) roots_.push_back(OMPathWithBackslash(cdDrive));
    findFiles(addSequenceSound);
    return files_.empty() ? StartUp::NoResourceFile : StartUp::Ready;
}

void RResources::findFiles(const OMLinkTo<void(const SequenceSound&)>& addSequenceSound) {
    OMOpenLibrary::setKeepOpen(true);
    OMPathSetStrict(true);
    for (const std::string& root : roots_) addDirectories(root);
    mapIdentifiers_.clear();
    if (!files_.empty()) readSequenceSounds(addSequenceSound);
}

void RResources::readAgain(const OMLinkTo<void(const SequenceSound&)>& addSequenceSound) {
    std::vector<FileState> states;
    for (const FileRecord& record : files_) states.push_back(stateOf(record));
    forgetFiles();
    findFiles(addSequenceSound);
    for (const FileState& state : states) restore(state);
}

RResources::FileState RResources::stateOf(const FileRecord& record) {
    const OMCachedFile* copy = OMCachedFile::find(record.name);
    return {record, copy != nullptr, copy && !copy->isComplete(), copy && copy->isOnDisk()};
}

void RResources::restore(const FileState& state) {
    FileRecord* record = find(state.record.name);
    if (!record) return;
    if (state.record.active && !record->active) OMResMgrActivate(record->name);
    if (!state.record.active && record->active) OMResMgrDeactivate(record->name);
    *record = state.record;
    if (state.isCached) makeCopy(*record, state.inBackground, state.toHardDrive);
}

void RResources::addDirectories(const std::string& root) {
    const std::string resources = root + std::string(kResourceFolder);
    OMPathAddDirectory(root + std::string(kScripts), true);
    OMPathAddDirectory(resources, true);
    if (!readMap(resources + std::string(formats::map::kResourceMapName))) scanDirectory(resources);
}

bool RResources::readMap(const std::string& path) {
    const std::optional<std::string> text = readText(path, "The folder is scanned instead");
    if (!text) return false;
    formats::map::ResourceMap map(*text, MapProblems(path));
    if (!map.isUsable()) return false; // the directory is scanned instead
    const std::string& identifier = map.identifier();
    if (std::find(mapIdentifiers_.begin(), mapIdentifiers_.end(), identifier) !=
        mapIdentifiers_.end())
        return true;
    mapIdentifiers_.push_back(identifier);
    for (formats::map::Library library; map.next(library);) registerBlock(library);
    return true;
}

/// `name` is in lower case and not known yet.
void RResources::addFile(const std::string& name) {
    places_.emplace(name, files_.size());
    files_.push_back({name});
}

void RResources::registerBlock(const formats::map::Library& library) {
    if (find(library.name)) return;
    addFile(library.name);
    std::vector<OMResMgrEntry> entries;
    entries.reserve(library.resources.size());
    for (const formats::map::Resource& resource : library.resources)
        entries.push_back({resource.id, resource.type});
    OMResMgrUseDLL16(library.name, entries, true);
}

void RResources::scanDirectory(const std::string& directory) {
    for (const platform::DirectoryEntry& entry : OMPlatform().files().list(directory)) {
        const std::string name = formats::lowerLatin1(entry.name);
        if (!entry.isDirectory && name.find(kResourceFileMark) != std::string::npos) scanFile(name);
    }
}

void RResources::scanFile(const std::string& name) {
    if (name.size() > formats::map::kMaxFileName) {
        OMLog::writef(OMLog::Kind::Error,
                      "%s is left out, as its name has more than 15 characters: rename it",
                      name.c_str());
        return;
    }
    if (!find(name)) {
        addFile(name);
        OMResMgrUseDLL16(name, false);
    }
    activateDLL(name, false);
}

void RResources::readSequenceSounds(const OMLinkTo<void(const SequenceSound&)>& addSequenceSound) {
    const std::optional<std::string> path = OMPathResolveFilename(formats::map::kAudioMapName);
    if (!path) return;
    const std::optional<std::string> text = readText(*path, "Speeches have no sounds");
    if (!text) return;
    for (const SequenceSound& sound : formats::map::readAudioMap(*text, MapProblems(*path)))
        addSequenceSound(sound);
}

void RResources::shutDown() {
    forgetFiles();
    streamedSounds_.clear();
}

void RResources::forgetFiles() {
    for (const FileRecord& record : files_) {
        if (OMCachedFile::isCached(record.name)) OMCachedFile::uncache(record.name);
        if (record.active) OMResMgrDeactivate(record.name);
        OMResMgrStopUsing(record.name, true);
    }
    files_.clear();
    places_.clear();
    OMCachedFile::clear();
    OMResMgrClear();
    OMPathClear();
    OMLibraryInfo::clear();
    OMOpenLibrary::setKeepOpen(false);
}

void RResources::activateDLL(const std::string& name, bool permanent) {
    FileRecord* record = find(name);
    if (!record || record->active) return;
    OMResMgrActivate(record->name);
    record->active = true;
    record->activatedPermanently = permanent;
    OMLog::writef(OMLog::Kind::Message, "Activating DLL %s%s", record->name.c_str(),
                  permanent ? " permanently" : " temporarily");
}

void RResources::deactivateDLL(const std::string& name) {
    FileRecord* record = find(name);
    if (record && record->active && !record->activatedPermanently) deactivate(*record);
}

void RResources::deactivateAllDLLs(bool force) {
    for (FileRecord& record : files_)
        if (record.active && (force || !record.activatedPermanently)) deactivate(record);
}

void RResources::deactivate(FileRecord& record) {
    OMResMgrDeactivate(record.name);
    record.active = false;
    OMLog::writef(OMLog::Kind::Message, "Deactivating DLL %s", record.name.c_str());
}

void RResources::cacheDLL(const std::string& name, bool inBackground, bool permanently,
                          bool toHardDrive) {
    FileRecord* record = find(name);
    if (!record || OMCachedFile::isCached(record->name)) return;
    if (!makeCopy(*record, inBackground, toHardDrive)) return;
    record->cachedPermanently = permanently;
    OMLog::writef(OMLog::Kind::Message, "Caching DLL %s%s%s%s", record->name.c_str(),
                  inBackground ? " in the background" : " immediately",
                  permanently ? " permanently" : " temporarily",
                  toHardDrive ? " to the Hard Drive" : " to memory");
}

bool RResources::makeCopy(const FileRecord& record, bool inBackground, bool toHardDrive) const {
    const std::string& name = record.name;
    const std::string copy = homeDirectory_ + name;
    if (toHardDrive &&
        (name.find_first_of("\\/:") != std::string::npos || !isFreeForCopy(copy, name))) {
        OMLog::writef(OMLog::Kind::Error, "%s is not copied to %s: move the file that lies there",
                      name.c_str(), copy.c_str());
        return false;
    }
    if (inBackground && toHardDrive)
        OMCachedFile::cacheInBkgd(name, copy, nullptr, 0, false);
    else if (inBackground)
        OMCachedFile::cacheInBkgd(name, nullptr, 0, false);
    else if (toHardDrive)
        OMCachedFile::cache(name, copy);
    else
        OMCachedFile::cache(name);
    return true;
}

void RResources::uncacheDLL(const std::string& name) {
    const FileRecord* record = find(name);
    if (record && OMCachedFile::isCached(record->name) && !record->cachedPermanently)
        uncache(*record);
}

void RResources::uncacheAllDLLs(bool force) {
    for (const FileRecord& record : files_)
        if (OMCachedFile::isCached(record.name) && (force || !record.cachedPermanently))
            uncache(record);
}

void RResources::uncache(const FileRecord& record) {
    OMCachedFile::uncache(record.name);
    OMLog::writef(OMLog::Kind::Message, "Uncaching DLL %s", record.name.c_str());
}

std::unique_ptr<OMIStream> RResources::loadSound(int id) {
    const bool streamed = streamedSounds_.contains(OMNarrowId(id));
    return load(id, "WAVE", streamed ? kOMIStreamBuffered : kOMIStreamCache);
}

std::unique_ptr<OMIStream> RResources::load(int id, std::string_view type, int bufferMode) {
    const std::string typeText(type);
    if (id <= 0) {
        report(OMFormat("Bad %s resource id: %d", typeText.c_str(), id));
        return nullptr;
    }
    if (!OMResMgrGetIStreamInfo(id, type)) {
        report(OMFormat("%s resource %d not found.", typeText.c_str(), id));
        return nullptr;
    }
    YEngine::charge(YEngine::kLoadCost);
    std::unique_ptr<OMIStream> stream = OMResMgrGetIStream(id, type, bufferMode);
    const int now = static_cast<int>(OMMilliseconds());
    const auto* library = dynamic_cast<const OMIStreamDLL16*>(stream.get());
    if (library)
        OMLog::writef(OMLog::Kind::Message,
                      "Loading %s resource %d from file %s(%s), current ms: %d", typeText.c_str(),
                      id, library->fileName().c_str(),
                      OMCachedFile::isCached(library->fileName()) ? "Cached" : "CD", now);
    else
        OMLog::writef(OMLog::Kind::Message, "Loading %s resource %d, current ms: %d",
                      typeText.c_str(), id, now);
    if (stream && stream->length() == 0)
        OMLog::writef(OMLog::Kind::Error,
                      "%s resource %d is empty, or not in %s, where its map has it. Make the map "
                      "anew with zorbet-rsc",
                      typeText.c_str(), id, library ? library->fileName().c_str() : "the program");
    return stream;
}

void RResources::report(const std::string& text) {
    if (OMApp* app = OMApp::getApp()) app->alert(text);
    OMLog::write(OMLog::Kind::Error, text);
}

RResources::FileRecord* RResources::find(std::string_view name) {
    const auto place = places_.find(formats::lowerLatin1(name));
    return place == places_.end() ? nullptr : &files_[place->second];
}

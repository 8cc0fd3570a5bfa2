#include "omopenlibrary.h"

#include "formats/base/latin1.h"
#include "omcachedfile.h"
#include "omdebug.h"
#include "omformat.h"
#include "omlog.h"
#include "ompath.h"

#include <algorithm>
#include <set>
#include <vector>

namespace {

struct State {
    std::string name;
    std::unique_ptr<platform::File> file; ///< null when a stream took it over, and with `info`
    OMLibraryInfo* info = nullptr;        ///< has file and table instead of this, when there is one
    std::optional<formats::library::Index> ownLibrary;
    bool keepOpen = false;

    [[nodiscard]] const formats::library::Index* library() const {
        if (info) return &info->library();
        return ownLibrary ? &*ownLibrary : nullptr;
    }
    [[nodiscard]] bool holds(std::string_view other) const {
        return library() && formats::equalIgnoringCase(name, other);
    }
    void release() {
        info = nullptr;
        ownLibrary.reset();
        file.reset();
    }
};

State& state() {
    static State theState;
    return theState;
}

/// Once for each library, however often it is opened.
void logOnce(std::string_view name, std::string_view problem) {
    static std::set<std::string, std::less<>> told;
    if (!told.insert(formats::lowerLatin1(name).append(problem)).second) return;
    OMLog::write(OMLog::Kind::Error,
                 std::string("Resource library ").append(name).append(" ").append(problem));
}

void openState(std::string_view name) {
    OMCachedFile::setMovedLink(&OMOpenLibrary::forget); // nothing is to be forgotten before
    State& open = state();
    open.release();
    const OMCachedFile* cached = OMCachedFile::find(name);
    if (cached)
        OMDebug::check(cached->instanceCount() > 0, "cachedFile->getInstanceCount() == 0",
                       OMFormat("OMIStreamDLL16::openDLL - instance count for cached file %s is "
                                "zero!",
                                std::string(name).c_str()));
    const bool inMemory = cached && cached->isComplete() && !cached->isOnDisk();
    open.name = name;
    if (!inMemory) open.info = OMLibraryInfo::find(name);
    if (open.info) return;
    std::unique_ptr<platform::File> file = OMCachedFile::open(name);
    if (!file) {
        logOnce(name, "cannot be opened: " + platform::Files::lastRefusal().message());
        return;
    }
    auto library = OMOpenLibrary::parse(name, *file);
    if (!library) return;
    open.file = std::move(file);
    open.ownLibrary = std::move(library);
}

std::vector<std::unique_ptr<OMLibraryInfo>>& infos() {
    static std::vector<std::unique_ptr<OMLibraryInfo>> theInfos;
    return theInfos;
}

} // namespace

std::optional<formats::library::Index> OMReadLibrary(platform::File& file) {
    return formats::library::Index::read(
        [&](std::uint64_t place, std::span<std::byte> buffer) {
            return file.seek(place) ? file.read(buffer) : 0;
        },
        file.size());
}

std::optional<formats::library::Index> OMOpenLibrary::parse(std::string_view name,
                                                            platform::File& file) {
    auto library = OMReadLibrary(file);
    if (!OMDebug::check(library.has_value(), "!valid", "OMIStreamDLL16IsValidDLL - invalid file!"))
        logOnce(name, "has no header of one, nothing in it is found: pack it anew");
    else if (library->hasNameTable())
        logOnce(name, "has a name table and cannot be read: pack it anew");
    else if (library->isDamaged())
        logOnce(name, "is damaged, part of it is left out: pack it anew");
    return library;
}

OMOpenLibrary::OMOpenLibrary(std::string_view name) {
    State& open = state();
    if (!open.holds(name))
        openState(name);
    else if (!open.file && !open.info)
        open.file = OMCachedFile::open(name);
    library_ = open.library();
}

OMOpenLibrary::~OMOpenLibrary() {
    if (!state().keepOpen) state().release();
}

void OMOpenLibrary::setKeepOpen(bool keepOpen) {
    state().keepOpen = keepOpen;
    if (!keepOpen) state().release();
}

platform::File* OMOpenLibrary::handle(std::string_view name) {
    const State& open = state();
    if (open.holds(name) && !open.info) return open.file.get();
    OMLibraryInfo* info = OMLibraryInfo::find(name);
    return info ? info->file() : nullptr;
}

std::unique_ptr<platform::File> OMOpenLibrary::takeHandle(std::string_view name) {
    return state().holds(name) ? std::move(state().file) : nullptr;
}

void OMOpenLibrary::forget(std::string_view name) {
    release(name);
    if (OMLibraryInfo* info = OMLibraryInfo::find(name)) info->closeFile();
}

void OMOpenLibrary::release(std::string_view name) {
    if (state().holds(name)) state().release();
}

bool OMLibraryInfo::keep(std::string_view name) {
    OMCachedFile::setMovedLink(&OMOpenLibrary::forget);
    if (OMLibraryInfo* info = find(name)) {
        ++info->useCount_;
        return true;
    }
    std::unique_ptr<platform::File> file = OMCachedFile::open(name);
    if (!file) return false;
    auto library = OMOpenLibrary::parse(name, *file);
    if (!library) return false;
    infos().push_back(std::make_unique<OMLibraryInfo>(name, *std::move(library), std::move(file)));
    return true;
}

bool OMLibraryInfo::drop(std::string_view name) {
    OMLibraryInfo* info = find(name);
    if (!info) return false;
    if (--info->useCount_ == 0)
        std::erase_if(infos(), [&](const auto& kept) { return kept.get() == info; });
    return true;
}

OMLibraryInfo* OMLibraryInfo::find(std::string_view name) {
    for (const auto& info : infos())
        if (formats::equalIgnoringCase(info->name_, name)) return info.get();
    return nullptr;
}

OMLibraryInfo::~OMLibraryInfo() { OMOpenLibrary::release(name_); }

void OMLibraryInfo::clear() { infos().clear(); }

platform::File* OMLibraryInfo::file() {
    if (!file_) file_ = OMCachedFile::open(name_);
    return file_.get();
}

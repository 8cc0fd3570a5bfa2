#include "omres.h"

#include "omdebug.h"
#include "omopenlibrary.h"
#include "ompath.h"
#include "omplatform.h"

#include <algorithm>

OMResFile::OMResFile() : isProgram_(true) { OMDebug::requireApp("OMResFile"); }

OMResFile::OMResFile(std::string_view name) : isProgram_(false) {
    OMDebug::requireApp("OMResFile");
    load(name);
}

void OMResFile::load(std::string_view name) {
    error_ = Error::NotFound;
    const std::optional<std::string> path = OMPathResolveFilename(name);
    if (!path || !OMPlatform().files().exists(*path)) return;
    error_ = Error::CannotLoad;
    std::unique_ptr<platform::File> file =
        OMPlatform().files().open(*path, platform::OpenMode::Read);
    if (!file) return;
    library_ = OMReadLibrary(*file);
    if (!library_) return;
    file_ = std::move(file);
    path_ = *path;
    error_ = Error::None;
}

OMResFile::~OMResFile() {
    OMDebug::check(attached_.empty() && leftLoaded_.empty(), "resList.getCount() != 0",
                   "OMResFile::~OMResFile - cannot delete an OMResFile with OMRes instances still "
                   "attached to it!");
    for (OMRes* resource : attached_) resource->file_ = nullptr;
}

OMResFile& OMResFile::program() {
    static auto& file = *new OMResFile; // resources left locked outlive everything
    return file;
}

std::vector<std::string> OMResFile::getResTypes() const {
    if (library_) return library_->types();
    std::vector<std::string> types;
    if (!isProgram_) return types;
    for (const platform::ResourceName& name : OMPlatform().modules().resourceNames())
        if (std::ranges::find(types, name.type) == types.end()) types.push_back(name.type);
    return types;
}

std::vector<int> OMResFile::getResIDs(std::string_view type) const {
    if (library_) return library_->ids(type);
    std::vector<int> ids;
    if (!isProgram_) return ids;
    for (const platform::ResourceName& name : OMPlatform().modules().resourceNames())
        if (name.type == type) ids.push_back(name.id);
    return ids;
}

std::optional<OMResFile::Loaded> OMResFile::loadResource(int id, std::string_view type) {
    if (isProgram_) {
        const auto bytes = OMPlatform().modules().resource(type, id);
        return bytes ? std::optional(Loaded{*bytes, nullptr}) : std::nullopt;
    }
    const auto place = library_ ? library_->find(id, type) : std::nullopt;
    return place ? readResource(*place) : std::nullopt;
}

std::optional<OMResFile::Loaded>
OMResFile::readResource(const formats::library::Index::Place& place) {
    auto memory = std::make_unique_for_overwrite<std::byte[]>(place.length);
    if (!file_->seek(place.offset)) return std::nullopt;
    const std::size_t got = file_->read({memory.get(), place.length});
    const std::span<const std::byte> bytes(memory.get(), got);
    return Loaded{bytes, std::move(memory)};
}

OMRes::OMRes(int id, std::string_view type, OMResFile* file) : file_(file) {
    OMDebug::requireApp("OMRes");
    if (!file_) file_ = &OMResFile::program();
    file_->attached_.push_back(this);
    loaded_ = file_->loadResource(id, type);
    if (loaded_) status_ = Status::Ok;
}

OMRes::~OMRes() {
    OMDebug::check(!isLocked(), "lockCount > 0", "OMRes::~OMRes - instance is still locked!");
    if (!file_) return;
    std::erase(file_->attached_, this);
    if (isLocked()) file_->leftLoaded_.push_back(*std::move(loaded_));
}

const std::byte* OMRes::lock() {
    if (!loaded_) {
        status_ = Status::CannotLock;
        return nullptr;
    }
    ++lockCount_;
    return loaded_->bytes.data();
}

void OMRes::unlock() {
    if (OMDebug::check(isLocked(), "lockCount < 0", "OMRes::unlock - too many unlocks!"))
        --lockCount_;
    else
        status_ = Status::CannotUnlock;
}

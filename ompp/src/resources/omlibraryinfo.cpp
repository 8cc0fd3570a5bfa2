#include "omlibraryinfo.h"

#include "formats/base/latin1.h"
#include "omcachedfile.h"
#include "omopenlibrary.h"
#include "ompath.h"

#include <algorithm>
#include <vector>

namespace {

std::vector<std::unique_ptr<OMLibraryInfo>>& infos() {
    static std::vector<std::unique_ptr<OMLibraryInfo>> theInfos;
    return theInfos;
}

} // namespace

bool OMLibraryInfo::keep(std::string_view name) {
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

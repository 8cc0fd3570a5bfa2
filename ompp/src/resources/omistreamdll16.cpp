#include "omistreamdll16.h"

#include "omdebug.h"
#include "omformat.h"
#include "omopenlibrary.h"

namespace {

std::optional<formats::library::Index::Place> findResource(int id, std::string_view type,
                                                           std::string_view fileName) {
    const OMOpenLibrary open(fileName);
    return open.library() ? open.library()->find(id, type) : std::nullopt;
}

} // namespace

OMIStreamDLL16::OMIStreamDLL16(int id, std::string_view type, std::string_view fileName,
                               int bufferMode, std::span<std::byte> buffer)
    : OMIStreamOnFile(fileName, bufferMode, buffer) {
    const bool valid =
        id > 0 && !type.empty() && !fileName.empty() && bufferMode >= kOMIStreamCache;
    if (!OMDebug::check(valid, "!ok", "OMIStreamDLL16::OMIStreamDLL16 - invalid parameter!"))
        return;
    const OMCachedFile* cached = OMCachedFile::prepare(fileName);
    if (const auto place = findResource(id, type, fileName)) {
        setExtent(place->offset, place->length);
        useCopy(cached, {"OMIStreamDLL16::OMIStreamDLL16 - instances of memory cached DLL's must "
                         "use kOMIStreamCache!",
                         "OMIStreamDLL16::OMIStreamDLL16 - instances of cached DLL's cannot use a "
                         "user defined buffer!"});
        return;
    }
    OMDebug::check(false, "streamInfo.status == 0",
                   OMFormat("OMIStreamDLL16::OMIStreamDLL16 - resource (id %d type %s) not found "
                            "in %s!",
                            id, std::string(type).c_str(), this->fileName().c_str()));
}

std::vector<std::string> OMIStreamDLL16::getResTypes(std::string_view fileName) {
    const OMOpenLibrary open(fileName);
    return open.library() ? open.library()->types() : std::vector<std::string>();
}

std::vector<int> OMIStreamDLL16::getResIDs(std::string_view fileName, std::string_view type) {
    const OMOpenLibrary open(fileName);
    return open.library() ? open.library()->ids(type) : std::vector<int>();
}

void OMIStreamDLL16::cacheInfo(std::string_view fileName) {
    const std::string name(fileName);
    const OMCachedFile* cached = OMCachedFile::find(fileName);
    if (!OMDebug::check(!cached || cached->isOnDisk(), "cachedFile->isMemoryCached()",
                        OMFormat("OMIStreamDLL16::cacheInfo - memory cached file %s is not "
                                 "allowed!",
                                 name.c_str())))
        return;
    OMDebug::check(OMLibraryInfo::keep(fileName), "!opened",
                   OMFormat("OMIStreamDLL16::cacheInfo - error opening %s!", name.c_str()));
}

void OMIStreamDLL16::uncacheInfo(std::string_view fileName) {
    OMDebug::check(OMLibraryInfo::drop(fileName), "info == NULL",
                   OMFormat("OMIStreamDLL16::uncacheInfo - info is not being cached for file %s!",
                            std::string(fileName).c_str()));
}

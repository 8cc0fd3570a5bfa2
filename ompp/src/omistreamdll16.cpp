#include "omistreamdll16.h"

#include "omdebug.h"
#include "omformat.h"
#include "omopenlibrary.h"

namespace {

std::optional<OMNELibrary::Place> findResource(int id, std::string_view type,
                                               std::string_view fileName) {
    const OMOpenLibrary open(fileName);
    return open.library() ? open.library()->find(id, type) : std::nullopt;
}

} // namespace

OMIStreamDLL16::OMIStreamDLL16(int id, std::string_view type, std::string_view fileName,
                               int bufferMode, std::span<std::byte> buffer)
    : OMIStreamOnFile(fileName, bufferMode, buffer), id_(id), type_(type) {
    const bool valid =
        id > 0 && !type.empty() && !fileName.empty() && bufferMode >= kOMIStreamCache;
    if (!OMDebug::check(valid, "!ok", "OMIStreamDLL16::OMIStreamDLL16 - invalid parameter!"))
        return;
    if (const auto place = findResource(id, type, fileName)) {
        setExtent(place->offset, place->length);
        return;
    }
    OMDebug::check(false, "streamInfo.status == 0",
                   OMFormat("OMIStreamDLL16::OMIStreamDLL16 - resource (id %d type %s) not found "
                            "in %s!",
                            id, type_.c_str(), this->fileName().c_str()));
}

std::vector<std::string> OMIStreamDLL16::getResTypes(std::string_view fileName) {
    const OMOpenLibrary open(fileName);
    return open.library() ? open.library()->types() : std::vector<std::string>();
}

std::vector<int> OMIStreamDLL16::getResIDs(std::string_view fileName, std::string_view type) {
    const OMOpenLibrary open(fileName);
    return open.library() ? open.library()->ids(type) : std::vector<int>();
}

#include "omistreamfile.h"

#include "omdebug.h"
#include "omformat.h"

OMIStreamFile::OMIStreamFile(std::string_view fileName, int bufferMode, std::span<std::byte> buffer)
    : OMIStreamOnFile(fileName, bufferMode, buffer) {
    const bool valid = !fileName.empty() && bufferMode >= kOMIStreamCache;
    if (!OMDebug::check(valid, "!ok", "OMIStreamFile::OMIStreamFile - invalid parameter!")) return;
    const OMCachedFile* cached = OMCachedFile::prepare(fileName);
    if (const auto size = getInfo(fileName)) {
        setExtent(0, static_cast<std::size_t>(*size));
        useCopy(cached, {"OMIStreamFile::OMIStreamFile - instances of memory cached files must use "
                         "kOMIStreamCache!",
                         "OMIStreamFile::OMIStreamFile - instances of cached files cannot use a "
                         "user defined buffer!"});
        return;
    }
    OMDebug::check(
        false, "!opened",
        OMFormat("OMIStreamFile::OMIStreamFile - opening %s failed!", this->fileName().c_str()));
}

OMIStreamFile::OMIStreamFile(const OMIStreamFile& other) : OMIStreamOnFile(other) {
    if (other.isCommitted() && current().empty()) fill();
}

std::optional<std::uint64_t> OMIStreamFile::getInfo(std::string_view fileName) {
    if (const OMCachedFile* cached = OMCachedFile::find(fileName))
        OMDebug::check(cached->instanceCount() > 0, "cachedFile->getInstanceCount() == 0",
                       OMFormat("OMIStreamFile::getInfo - instance count for cached file %s is "
                                "zero!",
                                std::string(fileName).c_str()));
    const std::unique_ptr<platform::File> file = OMCachedFile::open(fileName);
    return file ? std::optional(file->size()) : std::nullopt;
}

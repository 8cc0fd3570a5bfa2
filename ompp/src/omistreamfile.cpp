#include "omistreamfile.h"

#include "omdebug.h"
#include "omformat.h"
#include "ompath.h"

OMIStreamFile::OMIStreamFile(std::string_view fileName, int bufferMode, std::span<std::byte> buffer)
    : OMIStreamOnFile(fileName, bufferMode, buffer) {
    const bool valid = !fileName.empty() && bufferMode >= kOMIStreamCache;
    if (!OMDebug::check(valid, "!ok", "OMIStreamFile::OMIStreamFile - invalid parameter!")) return;
    if (const auto file = OMPathOpen(fileName)) {
        setExtent(0, static_cast<std::size_t>(file->size()));
        return;
    }
    OMDebug::check(
        false, "!opened",
        OMFormat("OMIStreamFile::OMIStreamFile - opening %s failed!", this->fileName().c_str()));
}

OMIStreamFile::OMIStreamFile(const OMIStreamFile& other) : OMIStreamOnFile(other) {
    if (other.isCommitted()) fill();
}

#include "omistreamonfile.h"

#include "omdebug.h"
#include "omopenlibrary.h"

#include <algorithm>

OMIStreamOnFile::OMIStreamOnFile(std::string_view fileName, int bufferMode,
                                 std::span<std::byte> buffer)
    : OMIStream(bufferMode, buffer), fileName_(fileName) {}

OMIStreamOnFile::OMIStreamOnFile(const OMIStreamOnFile& other)
    : OMIStream(other), fileName_(other.fileName_), offset_(other.offset_), copy_(other.copy_) {}

void OMIStreamOnFile::setExtent(std::uint64_t offset, std::size_t length) {
    offset_ = offset;
    setLength(length);
}

void OMIStreamOnFile::useCopy(const OMCachedFile* cached, const CopyTexts& texts) {
    if (!cached) return;
    copy_ = cached->copy();
    if (!isMemoryCached()) return;
    OMDebug::check(isWhole(), "bufferSize != kOMIStreamCache", texts.mustBeWhole);
    OMDebug::check(!hasUserBuffer(), "buffer != NULL", texts.noUserBuffer);
    const std::span<const std::byte> bytes = copy_->bytes();
    setMemory(
        bytes.subspan(static_cast<std::size_t>(std::min<std::uint64_t>(offset_, bytes.size()))));
}

// A chunked stream takes the open library's file over, for it may need it long after another
// library was opened. A whole one is done with it before anybody else comes.
bool OMIStreamOnFile::openSource() {
    if (isWhole()) {
        file_ = OMOpenLibrary::handle(fileName_);
    } else {
        owned_ = OMOpenLibrary::takeHandle(fileName_);
        file_ = owned_.get();
    }
    if (file_) return true;
    owned_ = OMCachedFile::open(fileName_);
    file_ = owned_.get();
    return file_ != nullptr;
}

std::size_t OMIStreamOnFile::readSource(std::size_t position, std::span<std::byte> buffer) {
    return file_->seek(offset_ + position) ? file_->read(buffer) : 0;
}

void OMIStreamOnFile::closeSource() {
    file_ = nullptr;
    owned_.reset();
}

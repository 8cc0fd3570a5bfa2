#include "omistreamonfile.h"

#include "omopenlibrary.h"
#include "ompath.h"

OMIStreamOnFile::OMIStreamOnFile(std::string_view fileName, int bufferMode,
                                 std::span<std::byte> buffer)
    : OMIStream(bufferMode, buffer), fileName_(fileName) {}

OMIStreamOnFile::OMIStreamOnFile(const OMIStreamOnFile& other)
    : OMIStream(other), fileName_(other.fileName_), offset_(other.offset_) {}

void OMIStreamOnFile::setExtent(std::uint64_t offset, std::size_t length) {
    offset_ = offset;
    setLength(length);
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
    owned_ = OMPathOpen(fileName_);
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

#include "omistreamres.h"

#include "omdebug.h"
#include "omformat.h"

#include <algorithm>

OMIStreamRes::OMIStreamRes(int id, std::string_view type, OMResFile* file, int bufferMode,
                           std::span<std::byte> buffer)
    : OMIStream(bufferMode, buffer) {
    const bool valid = id > 0 && !type.empty() && bufferMode >= kOMIStreamCache;
    if (!OMDebug::check(valid, "!ok", "OMIStreamRes::OMIStreamRes - invalid parameter!")) return;
    resource_ = std::make_shared<OMRes>(id, type, file);
    setLength(resource_->size());
    if (resource_->status() == OMRes::Status::Ok) return;
    const std::string place = file ? file->path() : std::string();
    OMDebug::check(false, "streamInfo.status == 0",
                   OMFormat("OMIStreamRes::OMIStreamRes - resource (id %d type %s) not found in "
                            "%s!",
                            id, std::string(type).c_str(), place.c_str()));
}

OMIStreamRes::OMIStreamRes(const OMIStreamRes& other)
    : OMIStream(other), resource_(other.resource_) {}

OMIStreamRes::~OMIStreamRes() { OMIStreamRes::closeSource(); }

bool OMIStreamRes::openSource() {
    bytes_ = resource_->lock();
    return bytes_ != nullptr;
}

std::size_t OMIStreamRes::readSource(std::size_t position, std::span<std::byte> buffer) {
    if (position >= resource_->size()) return 0;
    const std::size_t count = std::min(buffer.size(), resource_->size() - position);
    std::copy_n(bytes_ + position, count, buffer.begin());
    return count;
}

void OMIStreamRes::closeSource() {
    if (bytes_) resource_->unlock();
    bytes_ = nullptr;
}

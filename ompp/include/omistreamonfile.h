// What the streams that read out of a file share: the open file and the place where the stream's
// bytes begin in it.
//
// A file that is cached is read from its copy: a stream over a memory copy points straight into it,
// one over a disk copy opens that instead of the source. Both keep the copy as long as they live.
#pragma once

#include "omcachedfile.h"
#include "omistream.h"

#include "platform/files.h"

#include <memory>
#include <string>

class OMIStreamOnFile : public OMIStream {
  public:
    /// As given, not resolved through the search path.
    [[nodiscard]] const std::string& fileName() const { return fileName_; }
    [[nodiscard]] bool isMemoryCached() const { return copy_ && copy_->isInMemory(); }

  protected:
    /// What the checks of an heir say.
    struct CopyTexts {
        std::string_view mustBeWhole;
        std::string_view noUserBuffer;
    };

    OMIStreamOnFile(std::string_view fileName, int bufferMode, std::span<std::byte> buffer);
    OMIStreamOnFile(const OMIStreamOnFile& other);

    /// The stream is the `length` bytes of the file from `offset` on.
    void setExtent(std::uint64_t offset, std::size_t length);
    /// Reads that extent from a complete copy; nothing when `cached` is null. A memory copy can
    /// only be read whole and not into the caller's buffer: after a failed check it is all the
    /// same.
    void useCopy(const OMCachedFile* cached, const CopyTexts& texts);

    bool openSource() override;
    std::size_t readSource(std::size_t position, std::span<std::byte> buffer) override;
    void closeSource() override;

  private:
    std::string fileName_;
    std::uint64_t offset_ = 0;
    std::shared_ptr<const OMFileCopy> copy_; ///< null: the source is read
    std::unique_ptr<platform::File> owned_;
    platform::File* file_ = nullptr; ///< null when closed; else owned_ or the open library's file
};

// What the streams that read out of a file share: the open file and the place where the stream's
// bytes begin in it.
#pragma once

#include "omistream.h"

#include "platform/files.h"

#include <memory>
#include <string>

class OMIStreamOnFile : public OMIStream {
  public:
    /// As given, not resolved through the search path.
    [[nodiscard]] const std::string& fileName() const { return fileName_; }

  protected:
    OMIStreamOnFile(std::string_view fileName, int bufferMode, std::span<std::byte> buffer);
    OMIStreamOnFile(const OMIStreamOnFile& other);

    /// The stream is the `length` bytes of the file from `offset` on.
    void setExtent(std::uint64_t offset, std::size_t length);

    bool openSource() override;
    std::size_t readSource(std::size_t position, std::span<std::byte> buffer) override;
    void closeSource() override;

  private:
    std::string fileName_;
    std::uint64_t offset_ = 0;
    std::unique_ptr<platform::File> owned_;
    platform::File* file_ = nullptr; ///< null when closed; else owned_ or the open library's file
};

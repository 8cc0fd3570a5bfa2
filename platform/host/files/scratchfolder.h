// A folder of its own in the host's place for temporary files, gone with all that is in it when the
// object goes. Host path names.
#pragma once

#include <filesystem>

namespace platform {

class ScratchFolder {
  public:
    /// Throws std::filesystem::filesystem_error when none can be made.
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder& operator=(ScratchFolder&&) = delete;

    /// Absolute, without links.
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

} // namespace platform

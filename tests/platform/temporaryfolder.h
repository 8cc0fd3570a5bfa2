// A folder of its own for a test, gone with everything in it at the test's end.
#pragma once

#include "platform/host/files/scratchfolder.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

class TemporaryFolder {
  public:
    [[nodiscard]] std::string path(const std::string& name = "") const {
        return name.empty() ? path_.string() : (path_ / name).string();
    }
    void make(const std::string& name, const std::string& bytes) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::ofstream(path_ / name, std::ios::binary) << bytes;
    }
    void makeFolder(const std::string& name) const {
        std::filesystem::create_directories(path_ / name);
    }
    [[nodiscard]] std::string contents(const std::string& name) const {
        std::ifstream file(path_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

  private:
    platform::ScratchFolder folder_;
    const std::filesystem::path& path_ = folder_.path();
};

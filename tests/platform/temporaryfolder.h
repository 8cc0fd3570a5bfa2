// A folder of its own for a test, gone with everything in it at the test's end.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "zorbet-test-XXXXXX").string();
        if (!::mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
        path_ = std::filesystem::canonical(name);
    }
    ~TemporaryFolder() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }
    TemporaryFolder& operator=(TemporaryFolder&&) = delete;

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
    std::filesystem::path path_;
};

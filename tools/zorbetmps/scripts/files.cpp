#include "zorbetmps/scripts/files.h"

#include "formats/base/latin1.h"
#include "zorbetmps/check/scriptcheck.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <memory>
#include <system_error>

namespace mps {

namespace {

namespace fs = std::filesystem;

constexpr const char* kBeside = ".new";

/// A file beside its name, which goes unless it was renamed.
class BesideFile {
  public:
    explicit BesideFile(const fs::path& path) {
        std::error_code error;
        path_ = fs::weakly_canonical(path, error);
        if (error) path_ = path;
        beside_ = path_;
        beside_ += kBeside;
    }
    BesideFile& operator=(BesideFile&&) = delete;
    ~BesideFile() {
        std::error_code ignored;
        if (isThere_) fs::remove(beside_, ignored);
    }

    /// Why it cannot be written, or nothing.
    std::string write(const std::string& bytes) {
        std::error_code error;
        fs::create_directories(path_.parent_path(), error);
        if (error) return path_.parent_path().string() + ": cannot be made: " + error.message();
        errno = 0;
        std::ofstream out(beside_, std::ios::binary | std::ios::trunc);
        isThere_ = out.is_open();
        out << bytes;
        out.close();
        if (!out)
            return beside_.string() +
                   ": cannot be written: " + std::generic_category().message(errno);
        if (const auto old = fs::status(path_, error); fs::is_regular_file(old))
            fs::permissions(beside_, old.permissions(), error);
        return {};
    }

    /// The same for its name.
    std::string rename() {
        std::error_code error;
        fs::rename(beside_, path_, error);
        if (error) return path_.string() + ": cannot be replaced: " + error.message();
        isThere_ = false;
        return {};
    }

  private:
    fs::path path_;
    fs::path beside_;
    bool isThere_ = false;
};

} // namespace

std::vector<std::string> scriptsIn(const std::string& folder) {
    std::vector<std::string> scripts;
    std::error_code error;
    for (fs::recursive_directory_iterator walk(
             folder, fs::directory_options::skip_permission_denied, error);
         !error && walk != fs::recursive_directory_iterator(); walk.increment(error))
        if (std::error_code unknown;
            walk->is_regular_file(unknown) &&
            formats::lowerAscii(walk->path().extension().string()) == kScriptExtension)
            scripts.push_back(walk->path().string());
    std::ranges::sort(scripts);
    return scripts;
}

std::string writeFiles(const std::vector<WrittenFile>& files) {
    std::vector<std::unique_ptr<BesideFile>> all;
    for (const WrittenFile& file : files) {
        all.push_back(std::make_unique<BesideFile>(file.path));
        if (std::string why = all.back()->write(file.bytes); !why.empty()) return why;
    }
    for (const auto& file : all)
        if (std::string why = file->rename(); !why.empty()) return why;
    return {};
}

} // namespace mps

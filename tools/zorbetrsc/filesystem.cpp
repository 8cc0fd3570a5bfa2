#include "filesystem.h"

#include <cerrno>
#include <fstream>
#include <system_error>

namespace rsc {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kBeside = ".new";

char* asChars(std::uint8_t* bytes) { return reinterpret_cast<char*>(bytes); }
const char* asChars(const std::uint8_t* bytes) { return reinterpret_cast<const char*>(bytes); }

/// Why the system could not do the last thing that it was asked for.
std::string lastError() { return std::generic_category().message(errno); }

/// Files that lie beside their names; those that are still there at the end are removed.
class BesideFiles {
  public:
    explicit BesideFiles(const fs::path& folder) : folder_(folder) {}
    BesideFiles& operator=(BesideFiles&&) = delete;
    ~BesideFiles() {
        std::error_code ignored;
        for (const std::string& name : names_) fs::remove(beside(name), ignored);
    }

    void write(const OutputFile& file) {
        std::error_code error;
        fs::create_directories(beside(file.name).parent_path(), error);
        if (error) throw Refusal(file.name + ": its folder cannot be made: " + error.message());
        names_.push_back(file.name);
        std::ofstream out(beside(file.name), std::ios::binary | std::ios::trunc);
        out.write(asChars(file.data.data()), std::ssize(file.data));
        out.close();
        if (!out) throw Refusal(beside(file.name).string() + ": cannot be written: " + lastError());
    }

    void renameAll() {
        for (const std::string& name : names_) {
            std::error_code error;
            fs::rename(beside(name), folder_ / name, error);
            if (error)
                throw Refusal((folder_ / name).string() +
                              ": cannot be replaced: " + error.message());
        }
    }

  private:
    [[nodiscard]] fs::path beside(const std::string& name) const {
        return folder_ / (name + std::string(kBeside));
    }

    const fs::path& folder_;
    std::vector<std::string> names_;
};

} // namespace

Bytes readWholeFile(const fs::path& path) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error) throw Refusal("cannot be read: " + error.message());
    if (size > kLargestFile) throw Refusal("is larger than 1 GiB");
    std::ifstream in(path, std::ios::binary);
    Bytes data(size);
    in.read(asChars(data.data()), std::ssize(data));
    if (!in) throw Refusal("cannot be read: " + lastError());
    return data;
}

void writeFiles(const fs::path& folder, const std::vector<OutputFile>& files) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) throw Refusal(folder.string() + ": cannot be made: " + error.message());
    BesideFiles beside(folder);
    for (const OutputFile& file : files) beside.write(file);
    beside.renameAll();
}

} // namespace rsc

// Resources of modules. A module is a file that carries resources under a type and a number; the
// program itself is one too. OMResFile is an open module, OMRes is one of its resources.
//
// The program's own resources are those of the platform's modules. Module files are read as 16-bit
// libraries, so that one format serves on every host. Main thread only.
#pragma once

#include "formats/library/index.h"
#include "platform/files.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class OMRes;

class OMResFile {
  public:
    enum class Error {
        None = 0,
        CannotLoad = 5, ///< the file is there, but is no module
        NotFound = 7,
    };

    /// The program's own module.
    OMResFile();
    /// A module file, which is found through the search path.
    explicit OMResFile(std::string_view name);
    ~OMResFile();
    OMResFile& operator=(OMResFile&&) = delete;

    /// A module that could not be loaded has no resources.
    [[nodiscard]] Error error() const { return error_; }
    /// Empty for the program's own module and for one that could not be loaded.
    [[nodiscard]] const std::string& path() const { return path_; }

    [[nodiscard]] std::vector<std::string> getResTypes() const;
    [[nodiscard]] std::vector<int> getResIDs(std::string_view type) const;

    /// The module that stands for "none given", made when it is asked for first.
    [[nodiscard]] static OMResFile& program();

  private:
    friend class OMRes;

    /// Bytes of a resource: the program's live for ever, those of a file as long as the memory.
    struct Loaded {
        std::span<const std::byte> bytes;
        std::unique_ptr<std::byte[]> memory;
    };

    void load(std::string_view name);
    [[nodiscard]] std::optional<Loaded> loadResource(int id, std::string_view type);
    [[nodiscard]] std::optional<Loaded> readResource(const formats::library::Index::Place& place);

    bool isProgram_;
    Error error_ = Error::None;
    std::string path_;
    std::unique_ptr<platform::File> file_;
    std::optional<formats::library::Index> library_;
    std::vector<OMRes*> attached_;
    std::vector<Loaded> leftLoaded_; ///< of resources that were locked when they were destroyed
};

class OMRes {
  public:
    enum class Status {
        Ok = 0,
        NotLoaded = 1, ///< there is no such resource
        CannotLock = 3,
        CannotUnlock = 4,
    };

    /// Finds and loads a resource of `file`, of the program when it is null.
    OMRes(int id, std::string_view type, OMResFile* file = nullptr);
    /// A resource that is still locked stays loaded, with its module.
    ~OMRes();
    OMRes& operator=(OMRes&&) = delete;

    [[nodiscard]] Status status() const { return status_; }
    [[nodiscard]] std::size_t size() const { return loaded_ ? loaded_->bytes.size() : 0; }
    [[nodiscard]] bool isLocked() const { return lockCount_ > 0; }

    /// The bytes, which stay until as many unlocks; null when nothing is loaded.
    [[nodiscard]] const std::byte* lock();
    void unlock();

  private:
    friend class OMResFile;

    OMResFile* file_; ///< null when the module is gone
    std::optional<OMResFile::Loaded> loaded_;
    Status status_ = Status::NotLoaded;
    int lockCount_ = 0;
};

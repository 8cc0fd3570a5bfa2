// The 16-bit library that was used last: open, with its resource table parsed, so that loading many
// resources of one library opens and parses it once. There is one for the process.
//
// It is released after every operation unless it is to be kept open. A library that is cached is
// read from its copy; one whose information is kept (OMLibraryInfo) is neither opened nor parsed.
#pragma once

#include "formats/library/index.h"
#include "platform/files.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// None when the file is no library.
[[nodiscard]] std::optional<formats::library::Index> OMReadLibrary(platform::File& file);

/// One operation on a library, which is open at least as long as this object lives.
class OMOpenLibrary {
  public:
    /// Opens the library unless it is the one that is open (names compared without case). Another
    /// one is released first.
    explicit OMOpenLibrary(std::string_view name);
    ~OMOpenLibrary();
    OMOpenLibrary& operator=(OMOpenLibrary&&) = delete;

    /// Null when the file could not be opened or is no library (the latter after a failed check).
    [[nodiscard]] const formats::library::Index* library() const { return library_; }

    /// While set, the library stays open until another is needed; clearing it releases the library.
    /// Not set at the beginning.
    static void setKeepOpen(bool keepOpen);

    /// Reads the table of a library; none after a failed check when the file is none. What cannot
    /// be read of it is logged.
    [[nodiscard]] static std::optional<formats::library::Index> parse(std::string_view name,
                                                                      platform::File& file);

    /// The open file of the library of that name, or the one that its information keeps; null when
    /// there is neither.
    [[nodiscard]] static platform::File* handle(std::string_view name);
    /// As handle, but the file is the caller's from now on; null also when it cannot be given away.
    /// The parsed table stays.
    [[nodiscard]] static std::unique_ptr<platform::File> takeHandle(std::string_view name);

    /// The bytes of a file come from another place from now on: nobody uses its open file again.
    static void forget(std::string_view name);
    /// Releases the library of that name when it is the one that is open.
    static void release(std::string_view name);

  private:
    const formats::library::Index* library_ = nullptr;
};

/// A library whose headers and resource table are kept, together with an open file, because
/// somebody knows that it is used again and again. Requests count. Main thread only.
class OMLibraryInfo {
  public:
    /// Keeps a library that can be opened; it need not be kept yet. False when it cannot be opened
    /// or is no library.
    static bool keep(std::string_view name);
    /// Takes one request back; false when the library is not kept.
    static bool drop(std::string_view name);
    /// What is kept of a library (names compared without case) or null.
    [[nodiscard]] static OMLibraryInfo* find(std::string_view name);
    static void clear();

    OMLibraryInfo(std::string_view name, formats::library::Index library,
                  std::unique_ptr<platform::File> file)
        : name_(name), library_(std::move(library)), file_(std::move(file)) {}
    /// Nobody holds on to the library open now.
    ~OMLibraryInfo();
    OMLibraryInfo& operator=(OMLibraryInfo&&) = delete;

    [[nodiscard]] const formats::library::Index& library() const { return library_; }
    /// The open file, opened again when it was closed; null when that is impossible.
    [[nodiscard]] platform::File* file();
    /// Its bytes come from another place from now on.
    void closeFile() { file_.reset(); }

  private:
    std::string name_;
    formats::library::Index library_;
    std::unique_ptr<platform::File> file_;
    int useCount_ = 1;
};

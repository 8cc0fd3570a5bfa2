// Libraries whose headers and resource table are kept, together with an open file, because somebody
// knows that they are used again and again. Requests count. Main thread only.
#pragma once

#include "formats/library/index.h"
#include "platform/files.h"

#include <memory>
#include <string>
#include <string_view>

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
    OMLibraryInfo(const OMLibraryInfo&) = delete;
    OMLibraryInfo& operator=(const OMLibraryInfo&) = delete;

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

#include "outputfile.h"

#include "omlog.h"
#include "omplatform.h"

#include <span>

namespace {

constexpr const char* kTooMuch =
    "scripts have written all that they may in one run (64 megabytes, 1000 files)";

} // namespace

void ROutputFile::open(const std::string& path) {
    file_.reset();
    path_ = path;
    const bool mayOpen = files_ < kMostFiles && bytes_ < kMostBytes;
    if (mayOpen) file_ = OMPlatform().files().open(path, platform::OpenMode::Write);
    if (file_) {
        ++files_;
        return;
    }
    const std::string why = mayOpen ? platform::Files::lastRefusal().message() : kTooMuch;
    OMLog::writef(
        OMLog::Kind::Error,
        "OpenFile: %s cannot be written: %s. WriteToFile does nothing until a file is open",
        path.c_str(), why.c_str());
}

void ROutputFile::write(std::string_view text) {
    if (!file_) return;
    bytes_ += text.size();
    const bool fits = bytes_ <= kMostBytes;
    if (fits && file_->write(std::as_bytes(std::span(text)))) return;
    const std::string why = fits ? platform::Files::lastRefusal().message() : kTooMuch;
    OMLog::writef(OMLog::Kind::Error,
                  "WriteToFile: %s is not complete: %s. WriteToFile does nothing until a file is "
                  "opened again",
                  path_.c_str(), why.c_str());
    file_.reset();
}

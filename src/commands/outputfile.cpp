#include "commands/outputfile.h"

#include "formats/base/latin1.h"
#include "omlog.h"
#include "ompath.h"
#include "omplatform.h"

#include <algorithm>
#include <span>

namespace {

constexpr std::string_view kSaves[] = {"ZORBET.DAT", "ZORBET.BAK",   "ZORBET.BAD",
                                       "ZORBET.NEW", "ZORBET.OTHER", "ZORBET.TMP"};
constexpr const char* kTooMuch =
    "scripts have written all that they may in one run (64 megabytes, 1000 new files)";

/// ZORBET.DAT and the files that are kept beside it, wherever they lie.
bool isSave(const std::string& fullPath) {
    const std::string name = fullPath.substr(fullPath.rfind('\\') + 1);
    return std::ranges::any_of(kSaves, [&](std::string_view save) {
        return formats::equalIgnoringCase(std::string_view(name).substr(0, save.size()), save);
    });
}

} // namespace

void ROutputFile::open(const std::string& path) {
    file_.reset();
    path_ = path;
    platform::Files& files = OMPlatform().files();
    if (isSave(files.fullPath(path))) return tellNotOpen("saved games are the program's");
    const bool isNew = !files.exists(path);
    if ((isNew && files_ >= kMostFiles) || bytes_ >= kMostBytes) return tellNotOpen(kTooMuch);
    file_ = files.open(path, platform::OpenMode::Write);
    if (!file_) return tellNotOpen(platform::Files::lastRefusal().message());
    if (isNew) ++files_;
}

void ROutputFile::tellNotOpen(const std::string& why) const {
    OMLog::writef(
        OMLog::Kind::Error,
        "OpenFile: %s cannot be written: %s. WriteToFile does nothing until a file is open",
        path_.c_str(), why.c_str());
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

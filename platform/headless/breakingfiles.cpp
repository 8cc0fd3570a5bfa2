#include "platform/headless/breakingfiles.h"

#include "formats/base/latin1.h"

#include <cstdlib>
#include <utility>

namespace platform {

namespace {

bool liesIn(std::string_view path, std::string_view folder) {
    if (!formats::equalIgnoringCase(path.substr(0, folder.size()), folder)) return false;
    return path.size() == folder.size() || folder.ends_with('\\') || path[folder.size()] == '\\';
}

} // namespace

/// A file that is open for writing and counts.
class BreakingFiles::BreakingFile final : public File {
  public:
    BreakingFile(BreakingFiles& all, std::unique_ptr<File> file)
        : all_(all), file_(std::move(file)) {}

    std::size_t read(std::span<std::byte> buffer) override { return file_->read(buffer); }
    bool write(std::span<const std::byte> bytes) override {
        if (!all_.isChosen()) return file_->write(bytes);
        file_->write(bytes.first(all_.storedBytes(bytes.size())));
        return !all_.breaks();
    }
    bool flush() override { return !all_.fails() && file_->flush(); }
    bool seek(std::uint64_t position) override { return file_->seek(position); }
    [[nodiscard]] std::uint64_t size() const override { return file_->size(); }

  private:
    BreakingFiles& all_;
    std::unique_ptr<File> file_;
};

BreakingFiles::BreakingFiles(Files& files, BreakPoint point)
    : files_(files), point_(std::move(point)) {}

std::unique_ptr<File> BreakingFiles::open(std::string_view path, OpenMode mode) {
    const bool reads = mode == OpenMode::Read || mode == OpenMode::ReadSequential;
    if (reads || !counts(path)) return files_.open(path, mode);
    if (fails()) return nullptr;
    auto file = files_.open(path, mode);
    if (!file) return nullptr;
    return std::make_unique<BreakingFile>(*this, std::move(file));
}

bool BreakingFiles::remove(std::string_view path) {
    if (counts(path) && fails()) return false;
    return files_.remove(path);
}

bool BreakingFiles::rename(std::string_view from, std::string_view to) {
    if (counts(from) && fails()) return false;
    return files_.rename(from, to);
}

bool BreakingFiles::flushFolder(std::string_view path) {
    if (counts(path) && fails()) return false;
    return files_.flushFolder(path);
}

bool BreakingFiles::counts(std::string_view path) const {
    const std::string full = files_.fullPath(path);
    if (!liesIn(full, files_.homeDirectory())) return false;
    const std::string_view name = std::string_view(full).substr(full.rfind('\\') + 1);
    return point_.spared.empty() || !formats::equalIgnoringCase(name, point_.spared);
}

bool BreakingFiles::fails() { return isChosen() && breaks(); }

bool BreakingFiles::breaks() const {
    if (point_.how == BreakHow::Kill) std::_Exit(kKilledExit);
    setLastRefusal(std::make_error_code(point_.how == BreakHow::Full ? std::errc::no_space_on_device
                                                                     : std::errc::io_error));
    return true;
}

std::size_t BreakingFiles::storedBytes(std::size_t size) const {
    switch (point_.how) {
    case BreakHow::Error: return 0;
    case BreakHow::Full: return size > 0 ? size - 1 : 0;
    case BreakHow::Short:
    case BreakHow::Kill: return size / 2;
    }
    return 0;
}

} // namespace platform

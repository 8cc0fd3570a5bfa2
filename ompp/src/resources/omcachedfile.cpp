// The records of cached files, copying at once, and what a complete copy gives to its readers.
// Background copies: omcachedfiletask.cpp for the main thread, omcachedfilethread.cpp for
// the worker.
#include "omcachedfile.h"

#include "formats/base/latin1.h"
#include "omdebug.h"
#include "omformat.h"
#include "ompath.h"
#include "omplatform.h"

#include <algorithm>
#include <bit>

namespace {

constexpr std::size_t kPiece = 65536;           ///< bytes of one read of a disk copy made at once
constexpr std::size_t kFirstChunkSize = 8192;   ///< bytes of one step
constexpr std::size_t kLargestChunk = 1U << 24; ///< a larger step would stop the program
constexpr std::uint64_t kMaxMemoryCopy = 1U << 31; ///< bytes; no resource library is larger

platform::Files& files() { return OMPlatform().files(); }

bool checkName(std::string_view name, const char* operation) {
    return OMDebug::check(!name.empty(), "filename == NULL",
                          OMFormat("OMCachedFile::%s - illegal filename!", operation));
}

/// The record of a file; null, after a failed check of `operation`, when there is none.
OMCachedFile* require(std::string_view name, const char* operation, const char* problem) {
    if (!checkName(name, operation)) return nullptr;
    OMCachedFile* file = OMCachedFile::find(name);
    if (!file)
        OMDebug::check(
            false, "cachedFile == NULL",
            OMFormat("OMCachedFile::%s - %s %s", operation, std::string(name).c_str(), problem));
    return file;
}

bool isDrivePath(std::string_view path) {
    return path.size() >= 2 && formats::isAsciiLetter(path[0]) && path[1] == ':';
}

/// A memory copy as a file; keeps the memory, but does not count as a stream that uses it.
class MemoryFile final : public platform::File {
  public:
    explicit MemoryFile(const OMFileCopy& copy) : pages_(copy.pages), bytes_(copy.bytes()) {}

    std::size_t read(std::span<std::byte> buffer) override {
        const std::size_t count = std::min(buffer.size(), bytes_.size() - position_);
        std::ranges::copy(bytes_.subspan(position_, count), buffer.begin());
        position_ += count;
        return count;
    }
    bool write(std::span<const std::byte>) override { return false; }
    bool flush() override { return true; }
    bool seek(std::uint64_t position) override {
        position_ = static_cast<std::size_t>(std::min<std::uint64_t>(position, bytes_.size()));
        return true;
    }
    [[nodiscard]] std::uint64_t size() const override { return bytes_.size(); }

  private:
    std::shared_ptr<const OMPages> pages_;
    std::span<const std::byte> bytes_;
    std::size_t position_ = 0;
};

} // namespace

// Lives until the process ends, however it ends: a worker may still look at its record.
OMCachedFile::Lists& OMCachedFile::lists() {
    static auto& theLists = *new Lists;
    return theLists;
}

OMCachedFile::OMCachedFile(std::string_view name, std::optional<std::string> destination,
                           OMLink completion, int priority)
    : completion_(std::move(completion)), priority_(priority), sourceName_(name),
      destination_(std::move(destination)), chunkSize_(kFirstChunkSize) {
    OMDebug::requireApp("OMCachedFile");
    OMAtSuddenEnd(&OMCachedFile::removeCopies);
}

/// A worker may still write into a file that is gone.
void OMCachedFile::removeCopies() {
    for (const auto& file : lists().records)
        if (file->destinationMade_) files().remove(*file->destination_);
}

OMCachedFile::~OMCachedFile() {
    if (instanceCount_ > 0 || usageCount() > 0)
        OMDebug::check(
            false, "(instanceCount > 0) || (usageCount > 0)",
            OMFormat("OMCachedFile::~OMCachedFile - %s is still being used!", sourceName_.c_str()));
    if (isRunning()) stopWorker();
    closeFiles();
    movedLink_(sourceName_);
    // Only a file that this record has made: the copy of somebody else may stand in its place.
    if (destinationMade_) files().remove(*destination_);
}

OMCachedFile* OMCachedFile::cache(std::string_view name) { return cacheNow(name, std::nullopt); }

OMCachedFile* OMCachedFile::cache(std::string_view name, std::string_view destination) {
    return cacheNow(name, std::string(destination));
}

OMCachedFile* OMCachedFile::cacheNow(std::string_view name,
                                     std::optional<std::string> destination) {
    if (!checkName(name, "cache")) return nullptr;
    OMCachedFile* file = find(name);
    if (file) {
        file->finishNow();
    } else {
        file = new OMCachedFile(name, std::move(destination), nullptr, 0);
        lists().records.emplace_back(file);
        if (file->copyNow())
            file->becomeComplete();
        else
            file->failed_ = true;
    }
    if (!file->failed_) ++file->instanceCount_;
    return conclude(*file) ? find(name) : nullptr;
}

void OMCachedFile::cacheInBkgd(std::string_view name, OMLink completion, int priority,
                               bool startNow) {
    beginInBkgd(name, std::nullopt, std::move(completion), priority, startNow);
}

void OMCachedFile::cacheInBkgd(std::string_view name, std::string_view destination,
                               OMLink completion, int priority, bool startNow) {
    beginInBkgd(name, std::string(destination), std::move(completion), priority, startNow);
}

void OMCachedFile::beginInBkgd(std::string_view name, std::optional<std::string> destination,
                               OMLink completion, int priority, bool startNow) {
    if (!checkName(name, "cacheInBkgd") || isCached(name)) return;
    auto* file = new OMCachedFile(name, std::move(destination), std::move(completion), priority);
    lists().records.emplace_back(file);
    if (!file->startWorker())
        file->failed_ = true;
    else if (startNow)
        file->step();
    conclude(*file);
}

bool OMCachedFile::conclude(OMCachedFile& file) {
    if (file.failed_) {
        destroy(file);
        return false;
    }
    if (file.complete_) {
        // Once only, and the link may destroy the record.
        const OMLink link = std::exchange(file.completion_, OMLink());
        link();
    }
    return true;
}

void OMCachedFile::uncache(std::string_view name) {
    OMCachedFile* file = require(name, "uncache", "has not been cached!");
    if (!file) return;
    if (file->instanceCount_ > 0) --file->instanceCount_;
    if (file->instanceCount_ > 0) return;
    if (file->usageCount() == 0)
        destroy(*file);
    else
        OMDebug::check(
            false, "cachedFile->getUsageCount() != 0",
            OMFormat("OMCachedFile::uncache - %s is still being used!", file->sourceName_.c_str()));
}

bool OMCachedFile::isCached(std::string_view name) { return find(name) != nullptr; }

OMCachedFile* OMCachedFile::find(std::string_view name) {
    for (const auto& file : lists().records)
        if (formats::equalIgnoringCase(file->sourceName_, name)) return file.get();
    return nullptr;
}

void OMCachedFile::clear() {
    auto& records = lists().records;
    while (!records.empty()) destroy(*records.back());
}

void OMCachedFile::destroy(OMCachedFile& file) {
    leaveBackground(file);
    auto& records = lists().records;
    const auto place =
        std::ranges::find(records, &file, [](const auto& record) { return record.get(); });
    const std::unique_ptr<OMCachedFile> last = std::move(*place);
    records.erase(place);
}

std::size_t OMCachedFile::getBufferSize(std::string_view name) {
    OMCachedFile* file = require(name, "getBufferSize", "is not a cached file!");
    if (!file) return 0;
    file->settle();
    return file->chunkSize_;
}

void OMCachedFile::setBufferSize(std::string_view name, std::size_t size) {
    OMCachedFile* file = require(name, "setBufferSize", "is not a cached file!");
    if (!file) return;
    file->changeChunkSize(size);
    conclude(*file);
}

OMCachedFile* OMCachedFile::prepare(std::string_view name) {
    OMCachedFile* file = find(name);
    return file && file->instanceCount_ == 0 ? cache(name) : file;
}

std::unique_ptr<platform::File> OMCachedFile::open(std::string_view name) {
    const OMCachedFile* file = find(name);
    if (file && file->complete_)
        if (auto copy = file->openCopy()) return copy;
    return OMPathOpen(name);
}

std::unique_ptr<platform::File> OMCachedFile::openCopy() const {
    if (isOnDisk()) return files().open(*destination_, platform::OpenMode::Read);
    return std::make_unique<MemoryFile>(*copy_);
}

bool OMCachedFile::openFiles() {
    const bool opened = openSource() && (isOnDisk() ? openDestination() : allocateMemory());
    if (!opened) closeFiles();
    return opened;
}

bool OMCachedFile::openSource() {
    const std::optional<std::string> path = OMPathResolveFilename(sourceName_);
    if (!path) return false;
    const std::string full = files().fullPath(*path);
    if (!isDrivePath(full)) return false;
    if (isOnDisk() && formats::equalIgnoringCase(full, files().fullPath(*destination_)))
        return false;
    source_ = files().open(*path, platform::OpenMode::ReadSequential);
    if (!source_) return false;
    remaining_ = copy_->size = source_->size();
    sectorSize_ = std::bit_ceil(std::max<std::size_t>(1, files().sectorSize(full[0])));
    // Lets the drive start before it is measured by its steps.
    const OMPages sector(sectorSize_);
    if (sector.isThere()) source_->read(sector.bytes().first(sectorSize_));
    return source_->seek(0);
}

bool OMCachedFile::openDestination() {
    destinationFile_ = files().open(*destination_, platform::OpenMode::WriteThrough);
    if (destinationFile_) destinationMade_ = true;
    return destinationFile_ != nullptr;
}

/// Whole sectors, and at least one.
bool OMCachedFile::allocateMemory() {
    if (copy_->size > kMaxMemoryCopy) return false;
    const auto size = std::max<std::size_t>(1, static_cast<std::size_t>(copy_->size));
    auto pages = std::make_shared<OMPages>(size, sectorSize_);
    if (!pages->isThere()) return false;
    copy_->pages = std::move(pages);
    cursor_ = 0;
    return true;
}

void OMCachedFile::closeFiles() {
    source_.reset();
    destinationFile_.reset();
}

bool OMCachedFile::destinationHasSize() const {
    const auto file = files().open(*destination_, platform::OpenMode::Read);
    return file && file->size() == copy_->size;
}

std::size_t OMCachedFile::roundToSectors(std::size_t size) const {
    std::size_t rounded = sectorSize_;
    while (rounded < std::min(size, kLargestChunk)) rounded *= 2;
    return rounded;
}

bool OMCachedFile::copyNow() {
    const bool copied = isOnDisk() ? copyToDisk() : copyToMemory();
    closeFiles();
    return copied;
}

bool OMCachedFile::copyToMemory() {
    if (!OMDebug::check(
            openFiles(), "!opened",
            OMFormat("OMCachedFile::OMCachedFile - opening %s failed!", sourceName_.c_str())))
        return false;
    const std::size_t got = source_->read(copy_->pages->bytes());
    return OMDebug::check(got >= copy_->size, "!ok", "OMCachedFile::OMCachedFile - I/O error!");
}

bool OMCachedFile::copyToDisk() {
    if (!OMDebug::check(openFiles(), "!opened",
                        OMFormat("OMCachedFile::OMCachedFile - opening %s or %s failed!",
                                 sourceName_.c_str(), destination_->c_str())))
        return false;
    const OMPages piece(kPiece, sectorSize_);
    bool ok = piece.isThere();
    while (ok && remaining_ > 0) {
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(kPiece, remaining_));
        ok = source_->read(piece.bytes().first(kPiece)) >= count &&
             destinationFile_->write(piece.bytes().first(count));
        remaining_ -= count;
    }
    if (!OMDebug::check(ok, "!ok", "OMCachedFile::OMCachedFile - I/O error!")) return false;
    closeFiles();
    return OMDebug::check(destinationHasSize(), "dstFileSize != srcFileSize",
                          "OMCachedFile::OMCachedFile - source and destination file sizes don't "
                          "match!");
}

/// From now on everybody reads the copy, also who still has the source open.
void OMCachedFile::becomeComplete() {
    complete_ = true;
    movedLink_(sourceName_);
}

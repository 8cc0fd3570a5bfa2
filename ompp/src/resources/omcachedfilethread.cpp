// The worker's side of a background copy. It touches nothing but its own record, its own files and
// its own buffers, and only between the go event and the step-done event.
#include "omcachedfile.h"

#include "omformat.h"
#include "ompath.h"

#include <algorithm>

namespace {

constexpr std::string_view kIoError = "I/O error!";

} // namespace

void OMCachedFile::ioThread() {
    for (;;) {
        go_.wait();
        if (state_ == State::Failed || state_ == State::Complete) break;
        ioAct();
        stepDone_.signal();
    }
    stepDone_.signal();
}

void OMCachedFile::ioAct() {
    switch (state_) {
    case State::NotStarted: ioOpen(); return;
    case State::ReadChunk: isOnDisk() ? ioReadDisk() : ioReadMemory(); return;
    case State::WriteChunk: ioWrite(); return;
    case State::Finish: ioFinish(); return;
    default: return; // a state that is the main thread's to move on
    }
}

void OMCachedFile::ioOpen() {
    const std::lock_guard section(OMIOSection());
    bool opened = openFiles();
    if (opened) {
        chunkSize_ = roundToSectors(chunkSize_);
        if (isOnDisk()) {
            transfer_ = OMPages(chunkSize_);
            opened = transfer_.isThere();
        }
    }
    if (opened) {
        state_ = State::Opened;
        return;
    }
    ioFail("!opened", isOnDisk() ? OMFormat("opening %s or %s failed!", sourceName_.c_str(),
                                            destination_->c_str())
                                 : OMFormat("opening %s failed!", sourceName_.c_str()));
}

void OMCachedFile::ioReadDisk() {
    const std::size_t expected =
        static_cast<std::size_t>(std::min<std::uint64_t>(chunkSize_, remaining_));
    if (source_->read(transfer_.bytes().first(chunkSize_)) >= expected)
        state_ = State::ChunkRead;
    else
        ioFail("!ok", kIoError);
}

// The last part is read sector by sector: it must not pass the end of the memory by more.
void OMCachedFile::ioReadMemory() {
    const std::size_t size = remaining_ >= chunkSize_ ? chunkSize_ : sectorSize_;
    const std::size_t expected =
        static_cast<std::size_t>(std::min<std::uint64_t>(size, remaining_));
    if (source_->read(copy_->pages->bytes().subspan(cursor_, size)) < expected) {
        ioFail("!ok", kIoError);
        return;
    }
    cursor_ += expected;
    remaining_ -= expected;
    state_ = State::ChunkRead;
}

void OMCachedFile::ioWrite() {
    const std::size_t count =
        static_cast<std::size_t>(std::min<std::uint64_t>(chunkSize_, remaining_));
    if (!destinationFile_->write(transfer_.bytes().first(count))) {
        ioFail("!ok", kIoError);
        return;
    }
    remaining_ -= count;
    state_ = State::ChunkWritten;
}

void OMCachedFile::ioFinish() {
    transfer_ = OMPages();
    closeFiles();
    if (isOnDisk() && !destinationHasSize())
        ioFail("thisCachedFile->dstFileSize != thisCachedFile->srcFileSize",
               "source and destination file sizes don't match!");
    else
        state_ = State::Finished;
}

void OMCachedFile::ioFail(std::string_view condition, std::string_view problem) {
    const std::string place = isOnDisk() ? "IOThreadDiskCache" : "IOThreadMemCache";
    workerFailure_ = {condition, "OMCachedFile::" + place + " - " + std::string(problem)};
    transfer_ = OMPages();
    closeFiles();
    state_ = State::Failed;
}

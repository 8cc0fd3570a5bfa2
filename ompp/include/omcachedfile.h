// Copies of whole files, made because the files lie on a slow drive: in memory or on the hard disk,
// at once or in the background while the program goes on. Streams and libraries read the copy as
// soon as it is complete; a copy that cannot be made leaves them reading the source.
//
// A background copy has a worker thread of its own, but the main thread decides the pace: it moves
// the copy on by one step in each run of a task. The two alternate strictly. The main thread looks
// at what they share only after it took the step-done event and before it signals go, the worker
// only in between:
//
//     1 worker opens the files -> 2 -> 3 worker reads a chunk -> 4 -> (disk: 5 worker writes it
//     -> 6) -> 3 again while bytes remain, then 7 worker closes and checks -> 8 -> 9
//
// The main thread makes the moves out of 2, 4, 6 and 8, the worker the others. A worker that fails
// says so by state 0; in 0 and 9 it ends.
//
// Everything here is called on the main thread. All refusals and failures are failed non-fatal
// checks and nothing more; those of a worker are told on the main thread with its next step.
#pragma once

#include "omevent.h"
#include "omlink.h"
#include "ompages.h"
#include "omtask.h"

#include "platform/files.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

/// The bytes of a complete copy as streams see them. A stream keeps one as long as it lives: the
/// copy stays meanwhile when it is uncached, and the memory stays even when the record is
/// destroyed.
struct OMFileCopy {
    std::shared_ptr<OMPages> pages; ///< null for copies on the disk
    std::uint64_t size = 0;         ///< bytes of the file

    [[nodiscard]] bool isInMemory() const { return pages != nullptr; }
    [[nodiscard]] std::span<const std::byte> bytes() const {
        return pages ? pages->bytes().first(static_cast<std::size_t>(size))
                     : std::span<std::byte>();
    }
};

class OMCachedFile {
  public:
    /// Asks for a copy and makes it now. A file that has a record already is asked for once more,
    /// and its background copy is completed. Null when the copy cannot be made.
    static OMCachedFile* cache(std::string_view name);
    /// As above, on the disk at `destination`, where any other file is replaced.
    static OMCachedFile* cache(std::string_view name, std::string_view destination);

    /// Begins a copy in the background, which nobody has asked for yet; nothing when there is a
    /// record already. `completion` is called when the copy is complete. Of several files the one
    /// with the smallest priority is copied first, among equals the one that came first. The first
    /// step is made by the task, or here with `startNow`.
    static void cacheInBkgd(std::string_view name, OMLink completion, int priority, bool startNow);
    static void cacheInBkgd(std::string_view name, std::string_view destination, OMLink completion,
                            int priority, bool startNow);

    /// Takes one request back. With the last one the copy goes, unless streams still use it: then
    /// it stays until it is uncached again.
    static void uncache(std::string_view name);
    /// Whether there is a record, be the copy complete or not.
    [[nodiscard]] static bool isCached(std::string_view name);
    /// The record of a source file (names compared without case) or null.
    [[nodiscard]] static OMCachedFile* find(std::string_view name);
    /// Destroys all records, those in use too.
    static void clear();

    // Bytes of one step of a background copy; 0 for a file without a record. A running copy rounds
    // a new size up to a power-of-two multiple of the sector size, at most 16 MB. Both wait for the
    // end of the step that is under way.
    [[nodiscard]] static std::size_t getBufferSize(std::string_view name);
    static void setBufferSize(std::string_view name, std::size_t size);

    /// Opens for reading what a stream of that name reads: the copy when it is complete, else the
    /// source. Null when there is neither. The one place that decides where bytes come from.
    [[nodiscard]] static std::unique_ptr<platform::File> open(std::string_view name);
    /// Before a stream opens a file: completes a copy that nobody has asked for, and asks for it.
    /// The record with a complete copy, or null when the source is to be read.
    static OMCachedFile* prepare(std::string_view name);
    /// Called with the name of a file whose bytes come from another place from now on.
    static void setMovedLink(OMLinkTo<void(std::string_view)> link) {
        movedLink_ = std::move(link);
    }

    // While background copies are suspended, the task passes all of them over, so that the drive
    // serves only what somebody waits for. Suspensions count.
    static void suspendBkgd() { ++suspensions_; }
    static void resumeBkgd() { --suspensions_; }

    ~OMCachedFile();
    OMCachedFile& operator=(OMCachedFile&&) = delete;

    [[nodiscard]] bool isComplete() const { return complete_; }
    [[nodiscard]] bool isOnDisk() const { return destination_.has_value(); }
    [[nodiscard]] int instanceCount() const { return instanceCount_; }
    /// Streams that read the copy.
    [[nodiscard]] int usageCount() const { return static_cast<int>(copy_.use_count()) - 1; }
    /// For a stream to keep; only of a complete copy.
    [[nodiscard]] std::shared_ptr<const OMFileCopy> copy() const { return copy_; }

  private:
    enum class State : std::uint8_t {
        Failed = 0,
        NotStarted = 1,
        Opened = 2,
        ReadChunk = 3,
        ChunkRead = 4,
        WriteChunk = 5,
        ChunkWritten = 6,
        Finish = 7,
        Finished = 8,
        Complete = 9,
    };
    /// A check that failed on the worker.
    struct WorkerFailure {
        std::string_view condition;
        std::string message;
    };

    /// The records of all cached files, and those whose background copy is under way.
    struct Lists {
        std::vector<std::unique_ptr<OMCachedFile>> records;
        std::vector<OMCachedFile*> background; ///< in the order in which they are copied
        std::unique_ptr<OMTask> task;          ///< while there are background copies
    };
    static Lists& lists();

    OMCachedFile(std::string_view name, std::optional<std::string> destination, OMLink completion,
                 int priority);

    static OMCachedFile* cacheNow(std::string_view name, std::optional<std::string> destination);
    static void beginInBkgd(std::string_view name, std::optional<std::string> destination,
                            OMLink completion, int priority, bool startNow);
    static void destroy(OMCachedFile& file);
    static void removeCopies();
    /// After steps: destroys a record that failed, calls the link of one that is complete; false
    /// when it failed.
    static bool conclude(OMCachedFile& file);

    // Opening and reading, on either thread.
    [[nodiscard]] bool openFiles();
    [[nodiscard]] bool openSource();
    [[nodiscard]] bool openDestination();
    [[nodiscard]] bool allocateMemory();
    void closeFiles();
    [[nodiscard]] bool destinationHasSize() const;
    [[nodiscard]] std::size_t roundToSectors(std::size_t size) const;

    // Copying at once.
    [[nodiscard]] bool copyNow();
    [[nodiscard]] bool copyToMemory();
    [[nodiscard]] bool copyToDisk();
    void becomeComplete();
    [[nodiscard]] std::unique_ptr<platform::File> openCopy() const;

    // The main thread's side of a background copy.
    static void runTask();
    static void leaveBackground(const OMCachedFile& file);
    [[nodiscard]] bool startWorker();
    [[nodiscard]] bool isRunning() const { return worker_.joinable(); }
    void step();
    [[nodiscard]] State nextState() const;
    void endWorker(bool failed);
    void stopWorker();
    void tellWorkerFailure();
    /// Waits for the end of the step under way; what is shared is the main thread's afterwards.
    void settle();
    void finishNow();
    void changeChunkSize(std::size_t size);
    [[nodiscard]] bool changeTransferBuffer(std::size_t size);

    // The worker's side.
    void ioThread();
    void ioAct();
    void ioOpen();
    void ioReadDisk();
    void ioReadMemory();
    void ioWrite();
    void ioFinish();
    void ioFail(std::string_view condition, std::string_view problem);

    static inline int suspensions_ = 0;
    static inline OMLinkTo<void(std::string_view)> movedLink_;

    OMLink completion_;
    int priority_;
    bool complete_ = false;
    bool failed_ = false;
    std::uint64_t remaining_ = 0; ///< bytes still to copy
    std::string sourceName_;      ///< as given
    std::unique_ptr<platform::File> source_;
    int instanceCount_ = 0;
    std::shared_ptr<OMFileCopy> copy_ = std::make_shared<OMFileCopy>();
    std::size_t cursor_ = 0;                 ///< place in a memory copy of the next read
    std::optional<std::string> destination_; ///< disk copies only
    std::unique_ptr<platform::File> destinationFile_;
    std::atomic<bool> destinationMade_ =
        false; ///< the file there is this record's, and goes with it
    OMPages transfer_;
    State state_ = State::NotStarted;
    std::size_t chunkSize_;
    OMEvent go_;
    OMEvent stepDone_{true};
    std::thread worker_;
    bool started_ = false; ///< go was signalled; the main thread's
    std::size_t sectorSize_ = 0;
    std::optional<WorkerFailure> workerFailure_;
};

// The main thread's side of background copies: one step of one file in each run of a task, and what
// cannot wait for the task.
#include "omcachedfile.h"

#include "omdebug.h"
#include "omplatform.h"

#include <algorithm>
#include <system_error>

namespace {

constexpr std::uint32_t kTaskPriority = 1;  ///< in each pass before the scripts
constexpr std::size_t kUrgentChunk = 65536; ///< bytes of one step when somebody waits

} // namespace

bool OMCachedFile::startWorker() {
    try {
        worker_ = std::thread([this] { ioThread(); });
    } catch (const std::system_error&) { // the machine has no threads left
        return false;
    }
    auto& [records, background, task] = lists();
    const auto place =
        std::ranges::upper_bound(background, priority_, {}, &OMCachedFile::priority_);
    background.insert(place, this);
    if (!task) task = std::make_unique<OMTask>(&OMCachedFile::runTask, kTaskPriority);
    return true;
}

void OMCachedFile::runTask() {
    if (suspensions_ > 0) return;
    const auto& background = lists().background;
    if (background.empty()) return;
    OMCachedFile& file = *background.front();
    file.step();
    conclude(file);
}

void OMCachedFile::leaveBackground(const OMCachedFile& file) {
    auto& [records, background, task] = lists();
    std::erase(background, &file);
    if (background.empty()) task.reset();
}

void OMCachedFile::step() {
    if (OMPlatform().clock().isVirtual())
        stepDone_.wait();
    else if (!stepDone_.poll())
        return;
    tellWorkerFailure();
    const State next = nextState();
    state_ = next;
    started_ = true;
    const bool failed = next == State::Failed;
    if (failed) stepDone_.signal(); // for the wait at the end: the worker has nothing to do
    go_.signal();
    if (failed || next == State::Complete) endWorker(failed);
}

OMCachedFile::State OMCachedFile::nextState() const {
    const State next = remaining_ > 0 ? State::ReadChunk : State::Finish;
    switch (state_) {
    case State::Opened: return State::ReadChunk;
    case State::ChunkRead: return isOnDisk() ? State::WriteChunk : next;
    case State::ChunkWritten: return next;
    case State::Finished: return State::Complete;
    default: return state_;
    }
}

void OMCachedFile::endWorker(bool failed) {
    leaveBackground(*this);
    stepDone_.wait();
    worker_.join();
    if (failed)
        failed_ = true;
    else
        becomeComplete();
}

void OMCachedFile::stopWorker() {
    stepDone_.wait();
    tellWorkerFailure();
    state_ = State::Complete;
    go_.signal();
    stepDone_.wait();
    worker_.join();
}

void OMCachedFile::tellWorkerFailure() {
    if (!workerFailure_) return;
    const WorkerFailure failure = *std::exchange(workerFailure_, std::nullopt);
    OMDebug::check(false, failure.condition, failure.message);
}

void OMCachedFile::settle() {
    if (!isRunning()) return;
    stepDone_.wait();
    stepDone_.signal(); // for the next step to take
}

void OMCachedFile::finishNow() {
    if (!isRunning()) return;
    settle();
    const std::size_t usualChunk = chunkSize_;
    if (usualChunk < kUrgentChunk) changeChunkSize(kUrgentChunk);
    while (isRunning()) {
        settle();
        step();
    }
    chunkSize_ = usualChunk;
}

void OMCachedFile::changeChunkSize(std::size_t size) {
    if (isRunning() && !started_) {
        if (size == chunkSize_) return; // nobody else uses it before the first step
        step();
    }
    settle();
    if (size == chunkSize_) return;
    if (!isRunning() || state_ == State::Failed) {
        chunkSize_ = size;
    } else {
        const std::size_t rounded = roundToSectors(size);
        if (!isOnDisk() || changeTransferBuffer(rounded)) chunkSize_ = rounded;
    }
    if (isRunning()) step();
}

/// False when the old buffer stays.
bool OMCachedFile::changeTransferBuffer(std::size_t size) {
    // What was read into the old buffer has to be written out of it.
    if (state_ == State::ChunkRead) {
        step();
        settle();
    }
    if (!transfer_.isThere()) return true; // failed, or all is copied
    OMPages buffer(size);
    if (!buffer.isThere()) return false;
    transfer_ = std::move(buffer);
    return true;
}

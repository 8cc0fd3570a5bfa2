// A signal from one thread to another that resets itself: each signal lets one wait through. A
// signal that nobody waits for is kept; a second one on top of it is lost.
#pragma once

#include <condition_variable>
#include <mutex>
#include <utility>

class OMEvent {
  public:
    explicit OMEvent(bool signalled = false) : signalled_(signalled) {}

    void signal() {
        {
            const std::lock_guard lock(mutex_);
            signalled_ = true;
        }
        condition_.notify_one();
    }

    /// Waits without limit and takes the signal.
    void wait() {
        std::unique_lock lock(mutex_);
        condition_.wait(lock, [this] { return signalled_; });
        signalled_ = false;
    }

    /// Takes the signal if there is one; never waits.
    [[nodiscard]] bool poll() {
        const std::lock_guard lock(mutex_);
        return std::exchange(signalled_, false);
    }

  private:
    std::mutex mutex_;
    std::condition_variable condition_;
    bool signalled_;
};

// What must not happen in the middle of something: the memory of an object goes only when no
// function of it can be running any more.
//
// The application holds an OMUnderWay around every message, every idle cycle of a window and every
// task, and the script engine around every statement; what is called from there may put an action
// off until the outermost of them ends. Main thread only.
#pragma once

#include "omlink.h"

#include <cstddef>

class OMUnderWay {
  public:
    OMUnderWay() { ++depth_; }
    ~OMUnderWay() {
        if (--depth_ == ground_ && waiting() > kept_) runWaiting();
    }
    OMUnderWay(const OMUnderWay&) = delete;
    OMUnderWay& operator=(const OMUnderWay&) = delete;

    /// Runs the action when nothing is under way any more, which may be at once; in the order of
    /// the calls.
    static void afterwards(OMLink action);

    /// While it exists, what was under way when it was made does not count: for a loop that lives
    /// long and is in the middle of nothing between its rounds. What waits already goes on waiting.
    class Ground {
      public:
        Ground() : outerGround_(ground_), outerKept_(kept_) {
            ground_ = depth_;
            kept_ = waiting();
        }
        ~Ground() {
            ground_ = outerGround_;
            kept_ = outerKept_;
        }
        Ground(const Ground&) = delete;
        Ground& operator=(const Ground&) = delete;

      private:
        int outerGround_;
        std::size_t outerKept_;
    };

  private:
    [[nodiscard]] static std::size_t waiting();
    static void runWaiting();

    static inline int depth_ = 0;
    static inline int ground_ = 0;       ///< the depth at which nothing is under way
    static inline std::size_t kept_ = 0; ///< how many actions wait for what is below the ground
};

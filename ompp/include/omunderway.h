// What must not happen in the middle of something: the memory of an object goes only when no
// function of it can be running any more.
//
// The application holds an OMUnderWay around every message and every task, the trinket window
// around its input and its idle cycles, and the script engine around every statement; what is
// called from there may put an action off until the outermost of them ends. Main thread only.
#pragma once

#include "omlink.h"

#include <cstdint>
#include <vector>

class OMUnderWay {
  public:
    /// Something that goes from one step to the next and is in the middle of nothing between them,
    /// such as a handler of a script, with an OMUnderWay around each step. What came into being in
    /// such a run is not known to those who started the run: it needs to wait for the end of the
    /// step only.
    class Run {
      public:
        enum class Kind : std::uint8_t {
            Nested,    ///< inside of what may be in the middle of anything
            Outermost, ///< nobody around it is in the middle of anything that could go
        };
        explicit Run(Kind kind);
        ~Run();
        Run& operator=(Run&&) = delete;

      private:
        friend class OMUnderWay;

        void carryOut();

        Kind kind_;
        std::uint64_t number_;
        int depth_; ///< of what is under way around it
        Run* outer_;
        std::vector<OMLink> waiting_;
    };

    OMUnderWay() { ++depth_; }
    ~OMUnderWay() {
        if (--depth_ == run_->depth_ && !run_->waiting_.empty()) run_->carryOut();
    }
    OMUnderWay& operator=(OMUnderWay&&) = delete;

    /// The number of the run that goes on now.
    [[nodiscard]] static std::uint64_t run() { return run_->number_; }
    /// Has the action done when nothing is under way in the run of that number, or, when that is
    /// over, in the outermost one; which may be at once.
    static void afterwards(std::uint64_t run, OMLink action);

  private:
    static inline int depth_ = 0;
    static inline std::uint64_t runs_ = 0;
    static Run* run_; ///< the innermost; never null
};

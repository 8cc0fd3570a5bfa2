// Where a thread is in its script: the instruction that comes next, the procedures and the counted
// loops around it, and what an interrupt puts aside of that.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// What an interrupt puts aside.
struct YContext {
    int pc = 0;            ///< the instruction that comes next
    bool condition = true; ///< what the last test gave
    bool waiting = false;
    bool pausing = false; ///< waiting for the pause deadline
    int callDepth = 0;
    int loopDepth = -1;
};

class YFlow : public YContext {
  public:
    static constexpr int YTSTACK = 2048;   ///< return stack; one entry fewer is usable
    static constexpr int kLoopStack = 128; ///< counted loops

    struct CountedLoop {
        std::int16_t value;
        std::int16_t direction; ///< +1, -1, or 0 after the last round
        std::int16_t target;
        std::int16_t step;
        std::int16_t exit;
    };
    /// Where a return leads.
    enum class Return : std::uint8_t { Nowhere, ToCaller, FromInterrupt };

    // Procedures.
    /// False when too many are under way.
    [[nodiscard]] bool call(int procedure);
    /// The call that led here, -1 when no procedure is under way.
    [[nodiscard]] int caller() const {
        return callDepth == 0 ? -1 : returnStack_[static_cast<std::size_t>(callDepth - 1)] - 1;
    }
    [[nodiscard]] Return returnFromProcedure();
    /// No procedure is under way any more, nor is one where an interrupt leads back.
    void forgetCalls() { callDepth = saved_.callDepth = 0; }

    // Counted loops.
    /// The innermost one.
    [[nodiscard]] bool inLoop() const { return loopDepth >= 0; }
    [[nodiscard]] const CountedLoop& loop() const {
        return loops_[static_cast<std::size_t>(loopDepth)];
    }
    /// False when they are nested too deep. The first round is begun as each is.
    [[nodiscard]] bool beginLoop(std::int16_t from, std::int16_t to, std::int16_t step,
                                 std::int16_t exit);
    /// Moves the innermost loop on by its step. Whether there is a round to do.
    [[nodiscard]] bool nextRound();
    /// Whether that leaves the innermost loop.
    bool jump(int target) {
        pc = target;
        if (!inLoop() || loop().exit != target) return false;
        --loopDepth;
        return true;
    }
    /// Goes on behind a test.
    void decide(bool result, int next, int otherwise) {
        condition = result;
        pc = next;
        if (!result) jump(otherwise);
    }

    /// Nor does it wait where an interrupt leads back.
    void stopWaiting() { waiting = pausing = saved_.waiting = saved_.pausing = false; }

    // The interrupt, one at a time.
    [[nodiscard]] bool inInterrupt() const { return inInterrupt_; }
    void beginInterrupt(int handler);
    void endInterrupt();
    /// Stays where it is, and is in no later one's way.
    void forgetInterrupt() { inInterrupt_ = false; }

  private:
    bool inInterrupt_ = false;
    int nestedCalls_ = 0; ///< procedures under way since the interrupt began
    YContext saved_;
    std::array<std::int16_t, YTSTACK> returnStack_{};
    std::array<CountedLoop, kLoopStack> loops_{};
};

inline bool YFlow::call(int procedure) {
    if (callDepth >= YTSTACK - 1) return false;
    returnStack_[static_cast<std::size_t>(callDepth++)] = static_cast<std::int16_t>(pc);
    if (inInterrupt_) ++nestedCalls_;
    pc = procedure;
    return true;
}

inline YFlow::Return YFlow::returnFromProcedure() {
    if (inInterrupt_ && nestedCalls_ == 0) {
        endInterrupt();
        return Return::FromInterrupt;
    }
    if (callDepth == 0) return Return::Nowhere;
    if (inInterrupt_) --nestedCalls_;
    pc = returnStack_[static_cast<std::size_t>(--callDepth)];
    return Return::ToCaller;
}

inline bool YFlow::beginLoop(std::int16_t from, std::int16_t to, std::int16_t step,
                             std::int16_t exit) {
    if (loopDepth + 1 >= kLoopStack) return false;
    const auto before = static_cast<std::int16_t>(from - step);
    const std::int16_t direction = from < to ? 1 : -1;
    loops_[static_cast<std::size_t>(++loopDepth)] = {before, direction, to, step, exit};
    return true;
}

inline bool YFlow::nextRound() {
    CountedLoop& loop = loops_[static_cast<std::size_t>(loopDepth)];
    loop.value = static_cast<std::int16_t>(loop.value + loop.step);
    if (loop.direction == 0) return false;
    if (loop.value == loop.target) {
        loop.direction = 0;
        return true;
    }
    return loop.direction > 0 ? loop.value < loop.target : loop.value > loop.target;
}

inline void YFlow::beginInterrupt(int handler) {
    saved_ = *this;
    waiting = pausing = false;
    inInterrupt_ = true;
    nestedCalls_ = 0;
    pc = handler;
}

inline void YFlow::endInterrupt() {
    YContext::operator=(saved_);
    inInterrupt_ = false;
}

// Where a thread is in its script: the instruction that comes next, the procedures and the counted
// loops around it, and what an interrupt puts aside of that.
#pragma once

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

    /// False when too many procedures are under way.
    [[nodiscard]] bool call(int procedure) {
        if (callDepth >= YTSTACK - 1) return false;
        returnStack_[callDepth++] = static_cast<std::int16_t>(pc);
        if (inInterrupt_) ++nestedCalls_;
        pc = procedure;
        return true;
    }
    /// The call that led here, -1 when no procedure is under way.
    [[nodiscard]] int caller() const {
        return callDepth > 0 ? returnStack_[callDepth - 1] - 1 : -1;
    }
    /// Whether a return ends the interrupt, and not a procedure.
    [[nodiscard]] bool isHandlerItself() const { return inInterrupt_ && nestedCalls_ == 0; }
    /// False when no procedure is under way.
    [[nodiscard]] bool returnToCaller() {
        if (callDepth == 0) return false;
        if (inInterrupt_) --nestedCalls_;
        pc = returnStack_[--callDepth];
        return true;
    }
    /// Visits the calls that led here, the last one first, as far as the interrupt.
    template <class Visit>
    void eachCaller(Visit visit) const {
        const int outermost = inInterrupt_ ? saved_.callDepth : 0;
        for (int depth = callDepth; depth > outermost; --depth) visit(returnStack_[depth - 1] - 1);
    }
    /// No procedure is under way any more, nor is one where the interrupt leads back.
    void forgetCalls() { callDepth = saved_.callDepth = 0; }

    [[nodiscard]] bool inLoop() const { return loopDepth >= 0; }
    /// The innermost one.
    [[nodiscard]] const CountedLoop& loop() const { return loops_[loopDepth]; }
    /// False when they are nested too deep. Its first round begins as all do, with `nextRound`.
    [[nodiscard]] bool beginLoop(CountedLoop loop) {
        if (loopDepth + 1 >= kLoopStack) return false;
        loop.direction = loop.value < loop.target ? 1 : -1;
        loop.value = static_cast<std::int16_t>(loop.value - loop.step);
        loops_[++loopDepth] = loop;
        return true;
    }
    /// Moves the innermost loop on by its step. Whether there is a round to do.
    [[nodiscard]] bool nextRound() {
        CountedLoop& loop = loops_[loopDepth];
        loop.value = static_cast<std::int16_t>(loop.value + loop.step);
        if (loop.direction == 0) return false;
        if (loop.value != loop.target)
            return loop.direction > 0 ? loop.value < loop.target : loop.value > loop.target;
        loop.direction = 0;
        return true;
    }

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

    /// Nor does it wait where the interrupt leads back.
    void stopWaiting() { waiting = pausing = saved_.waiting = saved_.pausing = false; }

    [[nodiscard]] bool inInterrupt() const { return inInterrupt_; }
    /// The instruction that the last interrupt began with.
    [[nodiscard]] int handler() const { return handler_; }
    void beginInterrupt(int handler) {
        saved_ = *this;
        waiting = pausing = false;
        inInterrupt_ = true;
        nestedCalls_ = 0;
        pc = handler_ = handler;
    }
    void endInterrupt() {
        YContext::operator=(saved_);
        inInterrupt_ = false;
    }
    /// Stays where it is, in no later one's way.
    void forgetInterrupt() { inInterrupt_ = false; }

  private:
    bool inInterrupt_ = false;
    int handler_ = 0;
    int nestedCalls_ = 0; ///< procedures under way since the interrupt began
    YContext saved_;
    std::int16_t returnStack_[YTSTACK] = {};
    CountedLoop loops_[kLoopStack] = {};
};

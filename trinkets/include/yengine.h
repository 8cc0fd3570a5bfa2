// What all script threads share: the threads themselves, the handlers that scripts attached, the
// scripts to return to, the pause deadline, and the tick that the main loop runs in every pass.
#pragma once

#include "omlink.h"
#include "omlist.h"
#include "omtask.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class OMScriptableObject;
class YProfile;
class YThread;

/// One attached handler.
struct eventRecord {
    YThread* thread;
    int handler;                  ///< instruction to begin with
    OMScriptableObject* receiver; ///< null for a handler attached to a class, and for timers
    std::string variable;         ///< the script variable through which it was attached
    std::string event;
};

class YEngine {
  public:
    /// Outputs of the trace, added up.
    enum TraceOutput : int { kTraceBox = 1, kTraceFile = 2, kTraceWindow = 4 };
    /// Events fired by handlers of events may be nested this deep; deeper ones are refused.
    static constexpr int kMaxDeliveries = 64;
    // What a thread may do in one turn, so that a loop without end leaves time to everybody else.
    // An instruction costs 1, what takes longer costs more.
    static constexpr int kTurnBudget = 20'000'000;
    static constexpr int kObjectCost = 20;       ///< `set`, `get` and `play`
    static constexpr int kCreationCost = 100;    ///< of an object
    static constexpr int kCommandCost = 2'000;   ///< and a line of "debug.txt" or the debug window
    static constexpr int kLoadCost = 2'000;      ///< of a resource
    static constexpr int kSoundCost = 20'000;    ///< of a sound that begins
    static constexpr int kPictureCost = 100'000; ///< of the whole picture, shown or read
    static constexpr int kLongCost = 200'000;    ///< of a box, or a frame of a movie
    // What a game may have, far above what any needs. A script that wants more is stopped.
    static constexpr int kMostObjects = 100'000;
    static constexpr std::uint64_t kMostMemory = std::uint64_t{2} << 30; ///< bytes, of the program
    static constexpr std::size_t kMostScripts = 1'000; ///< to return to; the oldest are forgotten
    static constexpr std::uint64_t kMostDebugBytes = std::uint64_t{64} << 20; ///< of "debug.txt"

    /// About what a turn that uses all of that takes on a slow machine, which a virtual clock
    /// counts.
    static constexpr std::uint32_t kFullTurnMs = 500;

    /// While one lives a thread has its turn. One inside another, as of a handler that a statement
    /// calls, belongs to the same turn and spends of the same budget.
    class Turn {
      public:
        explicit Turn(YEngine& engine) : engine_(engine) {
            if (engine_.turns_++ == 0) engine_.budget_ = kTurnBudget;
        }
        ~Turn();
        Turn& operator=(Turn&&) = delete;

      private:
        YEngine& engine_;
    };

    /// While one lives its thread's statements are at work, and warnings are theirs. With
    /// `warnings` they are added there, a line each, and nobody is shown a box.
    class AtWork {
      public:
        AtWork(YEngine& engine, const YThread& thread, std::string* warnings = nullptr)
            : engine_(engine), before_(std::exchange(engine.atWork_, &thread)),
              warningsBefore_(std::exchange(engine.warnings_, warnings)) {}
        ~AtWork() {
            engine_.atWork_ = before_;
            engine_.warnings_ = warningsBefore_;
        }
        AtWork& operator=(AtWork&&) = delete;

      private:
        YEngine& engine_;
        const YThread* before_;
        std::string* warningsBefore_;
    };

    YEngine();
    ~YEngine();
    YEngine& operator=(YEngine&&) = delete;

    /// The one engine, or null before it is made.
    [[nodiscard]] static YEngine* current() { return current_; }

    /// A thread joins, and goes.
    void add(YThread& thread);
    void remove(YThread& thread);
    /// The game's; null without one.
    [[nodiscard]] YThread* firstThread() const { return threads_.first(); }

    /// The function that the main loop calls in every pass.
    void tick();

    // The budget.

    /// Takes the cost of something from the budget of the turn. With nothing left the threads give
    /// way after the statement that they are in.
    void spend(int cost) {
        budget_ = std::max(budget_ - cost, 0);
        if ((unchecked_ += cost) >= kCheckedCost) checkBounds();
    }
    /// The same for those who do not know whether a script asked for it.
    static void charge(int cost) {
        if (current_) current_->spend(cost);
    }
    /// The same for an instruction.
    void spendOne() { --budget_; }
    /// For a loop that keeps the budget itself for a while.
    [[nodiscard]] int budget() const { return budget_; }
    void setBudget(int budget) { budget_ = budget; }
    [[nodiscard]] bool hasBudget() const { return budget_ > 0; }

    /// What there is too much of, for whoever is at work: an unfinished sentence. Told once.
    [[nodiscard]] std::optional<std::string> takeExcess();

    /// A warning to the script's author in the application's alert box. `place` is where it belongs
    /// when no thread is at work there: "FILE:LINE".
    void warn(std::string_view text, const std::string& place = {});
    /// Asks the application to end.
    void quit();
    /// Shows a message, calls the last link, and ends the program with exit code 1.
    [[noreturn]] void endProgram(std::string_view message, const std::string& place = {});
    /// What must be done before the program ends so, in the middle of everything.
    void setLastLink(OMLink link) { lastLink_ = std::move(link); }
    /// Adds a line to "debug.txt".
    void writeDebugLine(std::string_view text);

    /// Replaces the table of variables. Threads whose scripts refer to the old one lose them.
    void recreateHeap();

    // Handlers.
    /// Gives what delivers the event for as long as the record stays.
    OMLink addRecord(eventRecord record);
    /// With an event name only the records of that event. A null receiver means handlers of the
    /// class that `variable` names.
    void removeRecords(const OMScriptableObject* receiver, std::string_view variable,
                       std::string_view event);
    void removeRecords(const OMScriptableObject* receiver);
    void removeAllRecords() { records_.clear(); }
    [[nodiscard]] const std::vector<std::shared_ptr<eventRecord>>& records() const {
        return records_;
    }

    // The scripts to return to.
    void pushScript(const std::string& name);
    [[nodiscard]] std::optional<std::string> popScript();
    void emptyThreadStack() { threadStack_.clear(); }
    [[nodiscard]] const std::vector<std::string>& threadStack() const { return threadStack_; }

    // The pause, one for all threads.
    void pauseFor(std::uint32_t ms);
    [[nodiscard]] bool pauseIsOver() const;

    // Switching to another script, done at the end of the tick.
    void requestSwitch(YThread& thread) { switching_ = &thread; }
    [[nodiscard]] bool isSwitching() const { return switching_ != nullptr; }
    /// Whether scripts neither go on nor hear events, until they are told that the game ends: that
    /// was asked for while a box was open.
    [[nodiscard]] static bool isHeld();

    /// Of all statements; null when nobody wants one.
    [[nodiscard]] YProfile* profile() { return profile_.get(); }

    void setTraceOutputs(int outputs) { traceOutputs_ = outputs; }
    void setTraceWindow(OMLinkTo<void(std::string_view)> window) { window_ = std::move(window); }
    /// Shows one trace message; false when the person asked for no more.
    bool showTrace(const std::string& message);

    /// Levels of events being delivered.
    int deliveries = 0;

  private:
    static constexpr int kCheckedCost = 200'000; ///< the memory is looked at when so much is spent

    void boxWasClosed();
    void tellAuthor(std::string_view warning) const;
    bool countsForTimers();
    void checkBounds();
    void switchScripts();

    OMLink lastLink_;
    static YEngine* current_;

    OMList<YThread> threads_;
    std::unique_ptr<YProfile> profile_;
    const YThread* atWork_ = nullptr;
    std::string* warnings_ = nullptr; ///< where those of who is at work go instead
    std::string place_;               ///< of the warning that is shown
    std::unique_ptr<OMTask> task_;    ///< made with the first thread
    std::vector<std::shared_ptr<eventRecord>> records_;
    std::vector<std::string> threadStack_;
    std::optional<std::uint32_t> pauseDeadline_;
    std::optional<std::uint32_t> lastCountedTick_;
    int turns_ = 0; ///< inside each other
    int budget_ = 0;
    int unchecked_ = 0;
    bool hasTooMuchMemory_ = false;
    YThread* switching_ = nullptr;
    int traceOutputs_ = kTraceBox;
    OMLinkTo<void(std::string_view)> window_;
};

// A script thread: steps through one compiled script, with a return stack for procedures, a stack
// of counted loops and two timers, and receives the events of objects as interrupts.
//
// A thread gives way to the main loop after each statement (its pace at first), or only when it is
// blocked: waiting, pausing, playing synchronously, at the end of the script, or when another
// script was asked for.
#pragma once

#include "omlink.h"
#include "rvar.h"
#include "yflow.h"
#include "yscript.h"
#include "yscriptloader.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class YProgram;
class YValue;
struct YProgramInstruction;
struct YProgramStep;
class OMScriptableObject;
class YEngine;
struct eventRecord;

class YThread {
  public:
    /// What came of the last turn, or of the handler or timer that ran last.
    enum class Status : std::uint8_t {
        Ready,          ///< it can go on
        Blocked,        ///< it stays where it is
        InterruptEnded, ///< a handler has ended, or the event was refused
    };

    /// Loads the script and, when that worked, joins the engine's threads; the creator sets it
    /// running. See loadScript for the name.
    YThread(YEngine& engine, const char* name, YScriptLocator locator = nullptr);
    ~YThread();
    YThread(const YThread&) = delete;
    YThread& operator=(const YThread&) = delete;

    [[nodiscard]] bool isLoaded() const { return program_ != nullptr; }
    [[nodiscard]] bool isRunning() const { return running_; }
    [[nodiscard]] bool isWaiting() const { return flow_.waiting; }
    [[nodiscard]] Status status() const { return status_; }
    [[nodiscard]] const std::string& scriptName() const { return scriptName_; }

    /// Unloads the current script and compiles the named one. Null lets a person choose a file; an
    /// empty name leaves the thread without a script. A script that cannot be read ends the
    /// program; one that does not compile is shown and leaves the thread without a script.
    void loadScript(const char* name);
    /// Stops the thread and discards every handler and every variable of the script.
    void unload();
    void run();
    void stop();

    /// Asks for another script at the end of the tick, unless it is the current one.
    void switchToScript(const std::string& name);
    /// As switchToScript; the current one is returned to by `exit`.
    void callScript(const std::string& name);

    /// Runs a handler at once, until it is done or blocked. Does nothing while a switch is
    /// requested.
    void deliverEvent(const eventRecord& event);

    void setUnloadedLink(OMLink link) { unloadedLink_ = std::move(link); }
    void setYieldLink(OMLink link) { yieldLink_ = std::move(link); }
    void setStartedLink(OMLink link) { startedLink_ = std::move(link); }
    void setEndReachedLink(OMLink link) { endReachedLink_ = std::move(link); }
    void fireStarted() { startedLink_(); }

    // What the engine does with a thread.

    /// One turn in the tick: until the thread has to give way.
    void turn();
    /// On a counting tick. True when a handler was begun.
    bool runTimers();
    /// The name of the script that was asked for; none when it is the one to return to.
    [[nodiscard]] std::optional<std::string> takeWanted();
    /// Leaves everything as it is, so that only handlers run.
    void giveUp();
    /// The variables go: leaves the thread without a script, and tells. It may be gone then.
    void loseScript();

  private:
    using Instruction = YProgramInstruction;

    /// How long a thread runs in its turn.
    enum class Pace : std::uint8_t { OneStatement, UntilBlocked };
    /// The script to load at the end of the tick: by its name, by a variable that holds it, or,
    /// with neither, the one to return to.
    struct Wanted {
        std::string name;
        YVariable* variable = nullptr;
    };
    struct Timer {
        int procedure = 0; ///< instruction to run, 0 for none
        int interval = 0;  ///< counted ticks
        int elapsed = 0;
    };

    static constexpr std::uint8_t kHalted = 1;  ///< leave the loop after this instruction
    static constexpr std::uint8_t kCareful = 2; ///< tracing, or an end notification to arm again

    // Turns, interrupts and timers (rthread.cpp).
    void discardScript();
    bool fireTimer(Timer& timer, const char* name, bool isSchedule);
    bool step(const eventRecord* event, Pace pace);
    bool enterInterrupt(const eventRecord& event);
    void endInterrupt();
    void endPause();

    // The loop (rthreadrun.cpp).
    void runInstructions();
    void runSteps();
    void runOne();
    void carryOut(const YProgramStep& step);
    void assignAny(int instruction);
    [[nodiscard]] bool testAny(int instruction);
    void expectLike(int instruction, const YValue& value);
    void execute(const Instruction& code);
    void noteOpcode(YOpcode opcode);
    void fireEndReached(YOpcode opcode);
    void halt() { attention_ |= kHalted; }
    void setHalted(bool halted);
    /// To be called when tracing or the end notification changes.
    void updateCare();
    void setStatus(Status status);
    void requestSwitch(YVariable* script);
    /// A warning with the place of the statement that runs.
    void report(std::string_view what);
    void reportAndStop(std::string_view what);

    // Control flow (rthreadrun.cpp).
    void call(const Instruction& code);
    void callProcedure(const Instruction& code, std::int32_t header);
    /// Whether a procedure can be there: its header, and an instruction behind it.
    [[nodiscard]] bool isHeader(std::int32_t instruction) const;
    void enterProcedure(const Instruction& code);
    void returnFromProcedure();
    void setUpLoop(const Instruction& code);
    void nextRound(const Instruction& code);
    void jump(int target);
    [[nodiscard]] bool isTrue(const Instruction& code);

    // Statements (rthreadstatements.cpp).
    void assign(const Instruction& code);
    void assignValue(const Instruction& code);
    void construct(YVariable& target, const Instruction& code);
    void say(const Instruction& code);
    void drop(const Instruction& code);
    void dropVariable(YVariable& word);
    void runCommand(const Instruction& code);
    /// Where an event or a timer begins the procedure that a text ("+" and its header) stands for;
    /// none for any other text.
    [[nodiscard]] std::optional<int> handlerOf(std::string_view procedure) const;
    void setTimer(Timer& timer, const Instruction& code, const char* format);
    void pause(const Instruction& code);
    void setDebug(const Instruction& code);
    void setYield(const Instruction& code);
    void pushArguments(const Instruction& code, int from, int to);

    // Statements with objects (rthreadobjects.cpp).
    void set(const Instruction& code);
    void removeHandler(YVariable& word, OMScriptableObject* object, std::string_view event);
    void attachHandler(YVariable& word, OMScriptableObject* object, std::string_view event,
                       std::string_view procedure);
    void setProperty(const Instruction& code, OMScriptableObject& object, std::string_view name,
                     std::string_view value);
    void get(const Instruction& code);
    std::string nameOfReceiver(OMScriptableObject& object);
    void play(const Instruction& code);

    // The trace (rthreadtrace.cpp). `detail` texts are made only while tracing.
    void trace(const Instruction& code);
    template <class... Arguments>
    void detail(const char* format, Arguments... arguments);

    YEngine& engine_;
    YScriptLocator locator_;
    OMLink unloadedLink_;
    OMLink yieldLink_;
    OMLink startedLink_;
    OMLink endReachedLink_;

    std::string scriptName_;
    std::unique_ptr<YProgram> program_; ///< null without a script

    std::uint8_t attention_ = 0; ///< kHalted, kCareful
    bool running_ = false;
    int loads_ = 0; ///< tells a script from the next one
    bool eventsEnabled_ = true;
    bool tracing_ = false;
    bool endPending_ = true; ///< the end-reached link is due at the next end
    YOpcode endFiredBy_ = YOpcode::End;
    Status status_ = Status::Ready;
    Pace pace_ = Pace::OneStatement;
    std::shared_ptr<bool> playing_; ///< a synchronous play is in progress
    Timer schedule_;
    Timer idle_;
    Wanted wanted_;

    YFlow flow_;
    std::string detail_;
};

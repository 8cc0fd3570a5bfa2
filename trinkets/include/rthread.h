// A script thread: steps through one compiled script, with a return stack for procedures, a stack
// of counted loops and two timers, and receives the events of objects as interrupts.
//
// A thread gives way to the main loop after each statement (its pace at first), or only when it is
// blocked: waiting, pausing, playing synchronously, at the end of the script, or when another
// script was asked for.
#pragma once

#include "omlink.h"
#include "yflow.h"
#include "yscript.h"
#include "yscriptloader.h"
#include "ytrace.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

class YKeptVariables;
class YProgram;
class YStatement;
class YVariable;
struct YProgramInstruction;
struct YProgramStep;
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
    YThread& operator=(YThread&&) = delete;

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
    void run() { running_ = isLoaded(); }
    void stop();

    /// Asks for another script at the end of the tick, unless it is the current one.
    void switchToScript(const std::string& name);
    /// As switchToScript; the current one is returned to by `exit`.
    void callScript(const std::string& name);

    /// Begins the current script anew at the end of the tick, as its file is by then; also one that
    /// could not be compiled. With `keepsVariables` those that it has then get their numbers and
    /// texts back as soon as it gives way.
    void beginAnew(bool keepsVariables);

    /// Runs a handler at once, until it is done or blocked. Does nothing while a switch is
    /// requested.
    void deliverEvent(const eventRecord& event);

    void setUnloadedLink(OMLink link) { unloadedLink_ = std::move(link); }
    void setYieldLink(OMLink link) { yieldLink_ = std::move(link); }
    void setStartedLink(OMLink link) { startedLink_ = std::move(link); }
    void setEndReachedLink(OMLink link) { endReachedLink_ = std::move(link); }
    void fireStarted() { startedLink_(); }

    /// Carries out a statement that stands in no script, for somebody outside: the only instruction
    /// of `line`, which none that leads to another place in the script may be. A `play` is not
    /// waited for. Gives the warnings that came of it, a line each.
    std::string runLine(const YProgram& line);

    /// A warning with where the thread is: the statement at work, and, a line each, the calls that
    /// led there and the event that the handler is of.
    [[nodiscard]] std::string withTrail(std::string_view warning) const;

    /// Where an event or a timer begins the procedure that a text stands for; none for any other
    /// text.
    [[nodiscard]] std::optional<int> handlerOf(std::string_view procedure) const;
    /// File and line of the procedure that a text stands for; empty for any other text.
    [[nodiscard]] std::string placeOf(std::string_view procedure) const;

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
        void count() { ++elapsed; }
        [[nodiscard]] bool isDue() const { return procedure != 0 && elapsed > interval; }

        int procedure = 0; ///< instruction to run, 0 for none
        int interval = 0;  ///< counted ticks
        int elapsed = 0;
    };

    // Life, turns, interrupts and timers (rthread.cpp).
    void join();
    void discardScript();
    void giveVariablesBack();
    bool step(const eventRecord* event, Pace pace);
    bool enterInterrupt(const eventRecord& event);
    [[nodiscard]] std::string interruptText() const;
    void endPause();
    bool beginTimer(int procedure, const char* name);
    void requestSwitch(YVariable* script);
    /// Whether each statement is looked at: for a trace, a profile, or an end notification that has
    /// to be armed again.
    [[nodiscard]] bool isCareful() const { return trace_.isOn() || !endPending_ || isProfiled_; }
    /// Of the statement, for a profile.
    [[nodiscard]] std::string stackOf(const Instruction& code) const;
    void setStatus(Status status);
    void fireEndReached(YOpcode opcode);
    /// With a warning that tells the place of the statement that runs.
    void reportAndStop(std::string_view what);

    // The loop, and control flow (rthreadrun.cpp).
    void runInstructions();
    void runSteps();
    void runOne();
    YProgramStep* carryOut(YProgramStep step);
    void call(const Instruction& code);
    void callProcedure(const Instruction& code, std::int32_t header);
    void enterProcedure(const Instruction& code);
    void returnFromProcedure();
    void setUpLoop(const Instruction& code);
    void nextRound(const Instruction& code);

    // Statements (rthreadstatements.cpp).
    void execute(const Instruction& code);
    [[nodiscard]] YStatement statement(const Instruction& code);
    void drop(const Instruction& code);
    void setTimer(Timer& timer, const Instruction& code, const char* format);
    void pause(const Instruction& code);
    void setDebug(const Instruction& code);
    void setYield(const Instruction& code);

    YEngine& engine_;
    const bool isProfiled_;
    YScriptLocator locator_;
    OMLink unloadedLink_;
    OMLink yieldLink_;
    OMLink startedLink_;
    OMLink endReachedLink_;

    std::string scriptName_;
    std::unique_ptr<YProgram> program_;    ///< null without a script
    const YProgram* line_ = nullptr;       ///< that is carried out beside it
    int loads_ = 0;                        ///< tells a script from the next one
    std::unique_ptr<YKeptVariables> kept_; ///< until the script gives way
    YFlow flow_;
    YTrace trace_;

    bool joined_ = false; ///< the engine's threads
    bool halted_ = false; ///< to leave the loop after this instruction
    bool running_ = false;
    bool eventsEnabled_ = true;
    bool endPending_ = true;            ///< the end-reached link is due at the next end
    YOpcode endFiredBy_ = YOpcode::End; ///< another instruction arms the link again
    Status status_ = Status::Ready;
    Pace pace_ = Pace::OneStatement;
    std::shared_ptr<bool> playing_; ///< a synchronous play is in progress
    Timer schedule_;
    Timer idle_;
    Wanted wanted_;
};

// A script thread: steps through one compiled script, with a return stack for procedures, a stack
// of counted loops and two timers, and receives the events of objects as interrupts.
//
// A thread gives way to the main loop after each statement (its pace at first), or only when it is
// blocked: waiting, pausing, playing synchronously, at the end of the script, or when another
// script was asked for.
#pragma once

#include "omlink.h"
#include "rvar.h"
#include "ycompiler.h"
#include "yscript.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class OMIStream;
class OMScriptableObject;
class YEngine;
struct eventRecord;

/// Turns a script's name into a stream; null when there is no such script.
using YScriptLocator = OMLinkTo<std::unique_ptr<OMIStream>(std::string_view name)>;

class YThread {
  public:
    static constexpr int YTSTACK = 2048;   ///< return stack; one entry fewer is usable
    static constexpr int kLoopStack = 128; ///< counted loops
    static constexpr int kStatusBlocked = 333;
    static constexpr int kStatusInterruptEnded = 777; ///< or the event was refused

    /// Loads the script and, when that worked, joins the engine's threads; the creator sets it
    /// running. See loadScript for the name.
    YThread(YEngine& engine, const char* name, YScriptLocator locator = nullptr);
    ~YThread();
    YThread(const YThread&) = delete;
    YThread& operator=(const YThread&) = delete;

    [[nodiscard]] bool isLoaded() const { return loaded_; }
    [[nodiscard]] bool isRunning() const { return running_; }
    [[nodiscard]] bool isWaiting() const { return waiting_; }
    [[nodiscard]] int status() const { return status_; }
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

  private:
    friend class YEngine;

    /// How an instruction is carried out when nobody traces: by its opcode, or in a way of its own
    /// where its operands allow a shorter one.
    enum class Way : std::uint8_t {
        Plain,
        CountedRound, ///< ForNext of a counted loop, with the jump that follows
        Jump,
        AssignExpression, ///< an expression
        AssignValue,      ///< a variable, constant or selector
        TestExpression,   ///< with the jump that follows
        Call,
        EnterProcedure,
        Return,
        Debug, ///< carefully, so that the trace begins with it
    };
    /// An instruction with its operands at hand.
    struct Code {
        YOpcode opcode;
        Way way;
        std::int16_t target; ///< jumps
        std::int16_t count;  ///< operands
        YVariable* const* operands;
    };
    struct CountedLoop {
        std::int16_t value;
        std::int16_t direction; ///< +1, -1, or 0 after the last round
        std::int16_t target;
        std::int16_t step;
        std::int16_t exit;
    };
    /// What an interrupt puts aside.
    struct Context {
        int pc = 0;
        bool waiting = false;
        int callDepth = 0;
        bool condition = true;
        bool pausing = false; ///< waiting for the pause deadline
        int loopDepth = -1;
    };
    struct Timer {
        int procedure = 0; ///< instruction to run, 0 for none
        int interval = 0;  ///< counted ticks
        int elapsed = 0;
    };

    static constexpr std::uint8_t kHalted = 1;  ///< leave runInstructions after this instruction
    static constexpr std::uint8_t kCareful = 2; ///< tracing, or an end notification to arm again

    // Loading (rthreadload.cpp).
    void discardScript();
    void link(std::unique_ptr<YScript> script);
    YCompiler::Source readSource(const std::string& name);
    YCompiler::Source readText(const std::string& name);
    void compile(const std::string& name, std::string text);
    void loadPrecompiled(const std::string& name, std::string_view bytes);

    // Stepping (rthread.cpp).
    void turn();
    bool runTimers();
    bool fireTimer(Timer& timer, const char* name, bool isSchedule);
    bool step(const eventRecord* event);
    bool enterInterrupt(const eventRecord& event);
    void runInstructions();
    void runCarefully();
    [[nodiscard]] static Way wayOf(const Code& code);
    void execute(const Code& code);
    void noteOpcode(YOpcode opcode);
    void fireEndReached(YOpcode opcode);
    void halt() { attention_ |= kHalted; }
    void setHalted(bool halted);
    /// To be called when tracing or the end notification changes.
    void updateCare();
    void setStatus(int status);
    /// Leaves everything as it is, so that only handlers run.
    void giveUp();
    [[nodiscard]] Context context() const {
        return {pc_, waiting_, callDepth_, condition_, pausing_, loopDepth_};
    }
    void restore(const Context& context);
    void endPause();
    void requestSwitch(YVariable* script);
    /// A warning with the place of the statement that runs.
    void report(std::string_view what);
    void reportAndStop(std::string_view what);

    // Control flow.
    void call(const Code& code);
    void callProcedure(const Code& code, std::int32_t header);
    /// Whether a procedure can be there: its header, and an instruction behind it.
    [[nodiscard]] bool isHeader(std::int32_t instruction) const {
        return instruction >= 0 && instruction < static_cast<std::int32_t>(code_.size()) - 1;
    }
    void enterProcedure(const Code& code);
    void returnFromProcedure();
    void setUpLoop(const Code& code);
    void nextRound(const Code& code);
    [[nodiscard]] bool countRound(CountedLoop& loop, YVariable& counter);
    void jump(int target);
    void decideJump();
    [[nodiscard]] bool isTrue(const Code& code);

    // Statements (rstatements.cpp).
    void assign(const Code& code);
    void assignExpression(const Code& code);
    void assignValue(const Code& code);
    void construct(YVariable& target, const Code& code);
    void say(const Code& code);
    void drop(const Code& code);
    void dropVariable(YVariable& word);
    void runCommand(const Code& code);
    /// Where an event or a timer begins the procedure that a text ("+" and its header) stands for;
    /// none for any other text.
    [[nodiscard]] std::optional<int> handlerOf(std::string_view procedure) const;
    void setTimer(Timer& timer, const Code& code, const char* format);
    void pause(const Code& code);
    void setDebug(const Code& code);
    void setYield(const Code& code);
    void pushArguments(const Code& code, int from, int to);

    // Statements with objects (robjstat.cpp).
    void set(const Code& code);
    void removeHandler(YVariable& word, OMScriptableObject* object, std::string_view event);
    void attachHandler(YVariable& word, OMScriptableObject* object, std::string_view event,
                       std::string_view procedure);
    void setProperty(const Code& code, OMScriptableObject& object, std::string_view name,
                     std::string_view value);
    void get(const Code& code);
    std::string nameOfReceiver(OMScriptableObject& object);
    void play(const Code& code);

    // The trace (ytrace.cpp). `detail` texts are made only while tracing.
    void trace(const Code& code);
    template <class... Arguments>
    void detail(const char* format, Arguments... arguments);

    YEngine& engine_;
    YScriptLocator locator_;
    OMLink unloadedLink_;
    OMLink yieldLink_;
    OMLink startedLink_;
    OMLink endReachedLink_;

    std::string scriptName_;
    std::unique_ptr<YScript> script_;
    std::vector<YVariable*> operandVariables_; ///< parallel to the script's operand words
    std::vector<Code> code_;

    // What the stepping reads in every instruction.
    int pc_ = 0;
    std::uint8_t attention_ = 0; ///< kHalted, kCareful
    bool condition_ = true;

    bool running_ = false;
    bool loaded_ = false;
    int loads_ = 0; ///< tells a script from the next one
    bool waiting_ = false;
    bool pausing_ = false;
    bool eventsEnabled_ = true;
    bool inInterrupt_ = false;
    bool tracing_ = false;
    bool endPending_ = true; ///< the end-reached link is due at the next end
    YOpcode endFiredBy_ = YOpcode::End;
    int status_ = 0;
    int pace_ = 0; ///< 0: one statement a turn; 1: until blocked
    int nestedCalls_ = 0;
    Context saved_;
    std::shared_ptr<bool> playing_; ///< a synchronous play is in progress
    Timer schedule_;
    Timer idle_;
    YVariable* switchTo_ = nullptr; ///< script to load at the end of the tick, by variable
    std::string switchName_;        ///< the same, by name

    int callDepth_ = 0;
    int loopDepth_ = -1;
    std::array<std::int16_t, YTSTACK> returnStack_{};
    std::array<CountedLoop, kLoopStack> loops_{};
    std::string detail_;
};

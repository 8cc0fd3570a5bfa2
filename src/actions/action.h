// Actions: things that take their time and tell when they are done. Scripts put them into
// containers, which start, pause, resume and halt them together.
//
// An action is idle, active, and idle again when it has finished or was halted; it may be started
// again at any time. What it does is in the hooks `begin`, `end`, `hold` and `goOn` of its class.
//
// It may be a member of several containers, and several times of one. Its end is told to one of
// them (Action::container).
#pragma once

#include "omscrptb.h"
#include "omtask.h"

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

class ActionContainer;
class ActionParameters;

class Action : public OMScriptableObject {
  public:
    static const OMSClass kClass;

    explicit Action(bool interruptible) : interruptible_(interruptible) {}
    /// One of a type that scripts name, of the arguments that are in the argument list.
    /// `interruptible` is what they leave open. Null, after a warning, when they do not do, and
    /// when there is no such type.
    [[nodiscard]] static std::unique_ptr<Action> ofType(std::string_view type, bool interruptible);
    /// All types that scripts name.
    [[nodiscard]] static std::vector<std::string_view> types();
    /// The forms of a type's parameters, as in the tables of classes; none when there is no such
    /// type.
    [[nodiscard]] static std::optional<std::string_view> parametersOf(std::string_view type);
    ~Action() override { retire(); }
    /// Every kind of action can be copied. The copy is idle, and in no container.
    [[nodiscard]] std::unique_ptr<OMScriptableObject> duplicate() override = 0;

    /// Begins, from the start if it is active already.
    virtual void start();
    /// Ends without "finished". Who waits for it waits no longer; a container goes on.
    virtual void halt();
    virtual void pause();
    virtual void resume();
    /// Lasts until the action is done. On an idle one there is nothing to wait for.
    void resumeForScript();
    [[nodiscard]] virtual bool isActive() const { return active_; }
    /// Whether it may be halted together with others.
    [[nodiscard]] virtual bool isInterruptible() const { return interruptible_; }

    /// Who is told of its end: of the containers that have it, the one that added it last. One that
    /// has it as the copy of another container added nothing, and is told only while it has it
    /// running. Null without any.
    [[nodiscard]] ActionContainer* container() const;

  protected:
    enum class End : std::uint8_t { Finished, Halted };

    /// Halts it; then it leaves its containers.
    void onRetire() override;
    Action(const Action& other) : OMScriptableObject(other), interruptible_(other.interruptible_) {}

    /// Begins the work. May finish at once.
    virtual void begin() = 0;
    /// Lets go of what it worked with.
    virtual void end(End) {}
    virtual void hold() {}
    virtual void goOn() {}

    /// The work is done: tells the container, whoever waits, and the scripts. Without effect on an
    /// idle one.
    void finish();
    /// The same in the next pass of the main loop: for when an object goes that it worked with, in
    /// whose end nobody wants to be told of anything else.
    void finishLater();
    /// A link to `finish` for others to call, or to `finishLater` when they go. It does nothing
    /// when the action was halted, finished or started anew meanwhile, or is gone.
    [[nodiscard]] OMLink doneLink();
    /// Whether the object that it works with is gone.
    [[nodiscard]] virtual bool hasLostObject() const { return false; }
    [[nodiscard]] bool isPaused() const { return paused_; }
    void setPaused(bool paused) { paused_ = paused; }
    /// The number of its latest start.
    [[nodiscard]] unsigned run() const { return run_; }
    /// What `add` gives to members when their arguments do not tell.
    [[nodiscard]] bool interruptibleByDefault() const { return interruptible_; }
    void leaveContainers();

  private:
    friend class ActionContainer;

    struct Membership {
        ActionContainer* container;
        bool byCopy; ///< of a container that has it
    };

    std::vector<Membership> memberships_; ///< in the order in which they came
    unsigned run_ = 0;                    ///< counts the starts
    bool interruptible_;
    bool active_ = false;
    bool paused_ = false;
    std::unique_ptr<OMTask> finishing_; ///< what finishLater has put off
};

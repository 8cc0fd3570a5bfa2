// Actions that consist of others: the members are started in the manner of the container, and when
// they are done, it has finished itself.
//
// A container owns what its "add" creates, which goes when the container lets it go. It knows the
// actions that scripts own by the name of their variable, and lets them go when they go. Either may
// be a member of further containers, and several times of one; their end is told to one of these
// (Action::container). Rings are refused: they would be nested without end.
//
// A copy has copies of the members that the container owns, and the others themselves.
//
// Members come and go while the container runs, in handlers of events of all kinds. So members are
// known by numbers that grow in the order in which they were added, and are looked up anew after
// every call into one.
#pragma once

#include "action.h"
#include "omtask.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

class ActionContainer : public Action {
  public:
    static const OMSClass kClass;
    /// Containers in containers: deeper ones are refused.
    static constexpr int kMaxNesting = 32;
    // Members that are started inside the starts of others: deeper ones, and those behind so many,
    // start in the next pass of the main loop.
    static constexpr int kMaxStartDepth = 100;
    static constexpr int kMaxStarts = 10'000;

    ~ActionContainer() override { retire(); }

    /// What `add` of scripts does: the name of a variable with an action, or a type and its
    /// arguments, from the argument list.
    void addFromScript();
    /// Takes a member in. Somebody else owns it. False when it contains this container, or when
    /// they would be nested too deep.
    bool add(Action& action);
    bool add(std::unique_ptr<Action> action);
    /// Lets all go.
    void clear();
    [[nodiscard]] int actionCount() const { return static_cast<int>(members_.size()); }

    /// With a warning, and no effect, while it is active.
    void start() override;
    // Both reach the members whatever was done before, which may have been paused by themselves.
    void pause() override;
    void resume() override;
    /// Whether all members are.
    [[nodiscard]] bool isInterruptible() const override { return stubborn_ == 0; }

    // For actions only.
    /// Whether it was started here, and has not ended since.
    [[nodiscard]] bool runs(const Action& member) const;
    /// It has finished, or somebody else has halted it.
    void memberEnded(Action& member);
    /// The member is being destroyed.
    void forget(Action& member);

  protected:
    using Number = unsigned; ///< of a member
    static constexpr Number kNone = 0;

    enum class State : std::uint8_t {
        Idle,
        Due,     ///< to be started: in this call, or in the next pass
        Running, ///< started here, and has not ended since
    };

    /// An action that is here twice is two members.
    struct Member {
        Action* action;
        std::unique_ptr<Action> owned; ///< null when somebody else owns it
        Number number;
        bool stubborn;          ///< it may not be interrupted
        ActionContainer* inner; ///< the action if it is a container, else null
        State state = State::Idle;

        [[nodiscard]] bool isUnderWay() const { return state != State::Idle; }
        /// Whether it may be halted: also when it has ended long ago, and another container was
        /// told.
        [[nodiscard]] bool mayBeHalted() const {
            return action->isInterruptible() || (state == State::Running && !action->isActive());
        }
    };

    ActionContainer(const OMSClass& scriptClass, bool interruptible);
    void onRetire() override;

    /// Begins with the first member, at least one.
    virtual void startMembers() = 0;
    /// A member that was started here is done.
    virtual void childFinished(const Member& member) = 0;
    virtual void actionAdded(Number) {}
    /// It is not in the list any more. It may have been under way.
    virtual void actionRemoved(Number, bool /*underWay*/) {}
    /// The rest of what was put off by `later`.
    virtual void goOnLater() = 0;

    /// For duplicates, which have none yet. They are in the same order.
    void takeMembersOf(const ActionContainer& original);

    [[nodiscard]] const std::vector<Member>& members() const { return members_; }
    [[nodiscard]] Member* find(Number number);
    /// The first one behind `number`; null without.
    [[nodiscard]] Member* nextTo(Number number);
    /// Those that are there now, in order, unless they go meanwhile.
    void forEach(const OMLinkTo<void(Member&)>& visit);
    /// At once, or in the next pass where starts are nested too deep. The member, or the container
    /// itself, may be gone afterwards.
    void startMember(Member& member);
    void haltMember(Member& member);
    /// In the next pass of the main loop, if the container is still active then.
    void later();
    /// Idle, without "finished".
    void becomeInactive();

    void begin() final;
    void end(End) final { later_.reset(); }
    void hold() override;
    void goOn() override;

  private:
    bool insert(Action& action, std::unique_ptr<Action> owned, bool byCopy = false);
    void leave(Action& action);
    void erase(Action& action);
    [[nodiscard]] bool rise(int height);
    void sink();
    void runLater();
    void sweep(void (*take)(ActionContainer& part));
    void countStubborn(int change);
    void memberChanged(const Action& member, bool stubborn);

    const OMSClass& scriptClass_;
    // Of starts of members, one inside the other.
    static inline int startDepth_ = 0;
    static inline int starts_ = 0; ///< in the outermost one
    // Of pauses and resumes.
    static inline int sweepDepth_ = 0;
    static inline unsigned lastSweep_ = 0;

    std::vector<Member> members_; ///< ascending numbers
    Number lastNumber_ = kNone;
    int stubborn_ = 0;   ///< members that may not be interrupted
    int height_ = 1;     ///< levels of containers from here down
    unsigned sweep_ = 0; ///< the latest one that it took part in
    std::unique_ptr<OMTask> later_;
};

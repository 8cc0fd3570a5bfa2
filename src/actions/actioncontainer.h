// Actions that consist of others: the members are started in the manner of the container, and when
// they are done, it has finished itself.
//
// A container owns what its "add" creates, and knows actions that scripts own by the name of their
// variable. An action is a member of one container at most, and leaves it when it goes.
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
    /// Members that are started inside the starts of others: deeper ones start in the next pass of
    /// the main loop.
    static constexpr int kMaxStartDepth = 100;

    ~ActionContainer() override;

    /// What `add` of scripts does: the name of a variable with an action, or a type and its
    /// arguments, from the argument list.
    void addFromScript();
    /// Takes a member in. Somebody else owns it. False when it contains this container, when they
    /// would be nested too deep, or when it is here already and must not be twice.
    bool add(Action& action);
    void add(std::unique_ptr<Action> action);
    /// Lets a member go; one that is owned is destroyed.
    void remove(Action& action);
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
    /// It has finished, or somebody else has halted it.
    void memberEnded(Action& member);
    /// The member is being destroyed.
    void forget(Action& member);

  protected:
    using Number = unsigned; ///< of a member
    static constexpr Number kNone = 0;

    struct Member {
        Action* action;
        std::unique_ptr<Action> owned; ///< null when somebody else owns it
        Number number;
        bool stubborn;          ///< it may not be interrupted
        ActionContainer* inner; ///< the action if it is a container, else null
        bool running = false;   ///< started here, and not finished since
        bool due = false;       ///< it is to start in the next pass
    };

    ActionContainer(const OMSClass& scriptClass, bool interruptible);
    /// Destructors of the classes call it first.
    void dissolve();

    /// Begins with the first member, at least one.
    virtual void startMembers() = 0;
    /// A member that was started here is done.
    virtual void childFinished(const Member& member) = 0;
    virtual void actionAdded(Number) {}
    /// It is not in the list any more. It may have been running.
    virtual void actionRemoved(Number, bool /*running*/) {}
    /// The rest of what was put off by `later`.
    virtual void goOnLater() = 0;
    [[nodiscard]] virtual bool mayRepeatMembers() const { return true; }

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
    [[nodiscard]] bool contains(const Action& action) const;
    [[nodiscard]] bool fits(const Action& action) const;
    void insert(Action& action, std::unique_ptr<Action> owned);
    void erase(Action& action);
    void noteHeight(const Member& changed);
    void runLater();
    void countStubborn(int change);
    void memberChanged(const Action& member, bool stubborn);

    const OMSClass& scriptClass_;
    static inline int startDepth_ = 0; ///< of starts of members, one inside the other

    std::vector<Member> members_; ///< ascending numbers
    Number lastNumber_ = kNone;
    int stubborn_ = 0; ///< members that may not be interrupted
    int height_ = 1;   ///< levels of containers from here down
    bool dissolving_ = false;
    std::unique_ptr<OMTask> later_;
};

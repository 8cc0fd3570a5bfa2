// One member after the other, and all of it several times if asked for.
//
//     q=RQueue [repeatCount [interruptible]]
#pragma once

#include "actioncontainer.h"

class RQueue final : public OMSCopied<RQueue, ActionContainer> {
  public:
    static const OMSClass kClass;
    static constexpr int kForever = -1; ///< repeat count

    RQueue(int repeatCount, bool interruptible) : OMSCopied(kClass, interruptible) {
        setRepeatCount(repeatCount);
    }
    RQueue(const RQueue& other) : RQueue(other.repeatCount_, other.interruptibleByDefault()) {
        takeMembersOf(other);
    }

    /// Passes over the members that may be interrupted; goes on with the first that may not.
    void halt() override;

    [[nodiscard]] int repeatCount() const { return repeatCount_; }
    void setRepeatCount(int count) { repeatCount_ = count == 0 ? 1 : count; }
    /// Halts, and lets all members go if that has ended it.
    void clearForScript();

  protected:
    void startMembers() override;
    void childFinished(const Member& member) override;
    void actionRemoved(Number number, bool underWay) override;
    void goOnLater() override;
    void hold() override;
    void goOn() override;

  private:
    void advance();
    void startAtCursor();
    [[nodiscard]] bool beginsAnotherRound();

    int roundsDone_ = 0;
    int repeatCount_ = 1;
    Number cursor_ = kNone; ///< the member that runs or runs next; none at the end
};

// All members at once: it has finished when all of them have.
//
//     c=RCompositeAction [interruptible]
#pragma once

#include "actioncontainer.h"

class RCompositeAction final : public OMSCopied<RCompositeAction, ActionContainer> {
  public:
    static const OMSClass kClass;

    explicit RCompositeAction(bool interruptible) : OMSCopied(kClass, interruptible) {}
    RCompositeAction(const RCompositeAction& other)
        : RCompositeAction(other.interruptibleByDefault()) {
        takeMembersOf(other);
    }

    /// Those that may not be interrupted run on, and it is active until they are done.
    void halt() override;

  protected:
    void startMembers() override;
    void childFinished(const Member& member) override;
    void actionRemoved(Number number, bool underWay) override;
    void goOnLater() override;
    void hold() override;
    void goOn() override;

  private:
    [[nodiscard]] bool isDone() const;
};

// One of its members, drawn anew at every start.
//
//     r=RRandomAction [useAllBeforeRepeat [interruptible]]
#pragma once

#include "actioncontainer.h"

#include <vector>

class RRandomAction final : public OMSCopied<RRandomAction, ActionContainer> {
  public:
    static const OMSClass kClass;

    RRandomAction(bool useAllBeforeRepeat, bool interruptible)
        : OMSCopied(kClass, interruptible), useAllBeforeRepeat_(useAllBeforeRepeat) {}
    /// The same members are left to be drawn.
    RRandomAction(const RRandomAction& other);

    /// Without effect on a member that may not be interrupted.
    void halt() override;

    /// Whether a member comes again only when all others had their turn.
    [[nodiscard]] bool usesAllBeforeRepeat() const { return useAllBeforeRepeat_; }
    void setUseAllBeforeRepeat(bool on);

  protected:
    void startMembers() override;
    void childFinished(const Member& member) override;
    void actionAdded(Number number) override { pool_.push_back(number); }
    void actionRemoved(Number number, bool underWay) override;
    void goOnLater() override;
    void hold() override;
    void goOn() override;

  private:
    [[nodiscard]] Number draw();
    void refill();

    bool useAllBeforeRepeat_;
    Number current_ = kNone;
    std::vector<Number> pool_; ///< members that may be drawn
};

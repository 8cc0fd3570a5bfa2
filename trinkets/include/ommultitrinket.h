// A trinket that groups others and moves them as one. It has no picture and no place of its own:
// it is where its members are, and what a member hears of the mouse becomes an event of the group.
//
//     g=OMMultiTrinket z
//
// A group does not own its members. Whichever goes first, the other stays as it is; a member that
// goes while it is held, or under the pointer, leaves that to its group. A trinket is in
// one group at most; a group may be the member of another one, but not of itself.
#pragma once

#include "omtrinket.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

class OMMultiTrinket : public OMSCopied<OMMultiTrinket, OMTrinket> {
  public:
    static const OMSClass kClass;

    explicit OMMultiTrinket(OMTrinketWindow& window);
    /// A group of the same kind without members, at the place of this one.
    OMMultiTrinket(const OMMultiTrinket& other);
    ~OMMultiTrinket() override { retire(); }

    /// With the arguments of the script; null without a main window.
    [[nodiscard]] static std::unique_ptr<OMScriptableObject> createFromScript();

    // Members.

    /// Takes a trinket in, out of the group that it was in. It lies `depth` above the group, and
    /// gets what the group has: visibility, touchiness, movability, corral, snap grid, cursors.
    /// One that is not `shown` is invisible until showMember. Owners find it again by its slot.
    /// False, and nothing changes, for a trinket that is the group or contains it, and for one of
    /// another window.
    bool add(OMTrinket& trinket, int slot, int depth = 0, bool shown = true);
    /// Whether the member is seen while the group is. For others than members nothing happens.
    void showMember(const OMTrinket& trinket, bool shown);
    /// Lets a trinket go as it is.
    void remove(const OMTrinket& trinket);
    virtual void removeAll();
    [[nodiscard]] std::size_t memberCount() const { return members_.size(); }
    /// The first member with that slot, or null.
    [[nodiscard]] OMTrinket* member(int slot) const;

    // For scripts.

    [[nodiscard]] int height() const { return boundingRectangle().height(); }
    [[nodiscard]] int width() const { return boundingRectangle().width(); }
    [[nodiscard]] const std::string& userData() const { return userData_; }
    void setUserData(const std::string& text) { userData_ = text; }
    /// By the name of its variable. The slot is the next free number from 0 on.
    void addTrinket(const std::string& variable, std::optional<int> depth);

    /// The union of the visible members; while none is visible, of all that are shown with the
    /// group, so that a hidden group keeps its place; nothing, where it last was, without members.
    [[nodiscard]] platform::Rect boundingRectangle() const override;
    /// Whether a visible member does.
    [[nodiscard]] bool containsPoint(platform::Point point) const override;
    /// Members follow in all attributes.
    void setAttribute(Attribute which, int value, int second = 0) override;
    void setCursors(int normal, int grab) override;

    // What a member was told: raises the group's event, unless it is masked, then calls its link.

    void memberMouseDown(platform::Point point);
    void memberMouseUp(platform::Point point);
    void memberDoubleClick(platform::Point point);
    void memberFlyOn();
    void memberFlyOff();

  protected:
    void onRetire() override;
    /// The group has moved by so many pixels.
    virtual void moveMembers(int dx, int dy);

  private:
    struct Member {
        OMTrinket* trinket;
        int slot;
        int depth;  ///< relative to the group's
        bool shown; ///< while the group is
    };

    [[nodiscard]] bool accepts(const OMTrinket& trinket) const;
    [[nodiscard]] int freeSlot() const;
    void adopt(const Member& member) const;
    void raiseMember(const Member& member) const;
    /// False when a handler destroyed the group.
    bool raise(std::string_view event, std::uint32_t ignoring);

    std::vector<Member> members_;
    std::string userData_;
};

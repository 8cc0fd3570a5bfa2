// Playing with keys alone: a mark is moved over all that can be clicked, and what it is on is
// clicked, or taken, carried and let go, as by a hand with a mouse. Scripts hear of the mouse only.
// The person switches it on and off.
//
// While a script or a trinket takes keys as text, or for its own ends, they are its own until Tab
// is pressed, and again from the next letter on.
#pragma once

#include "access/keyhand.h"
#include "omkeytargets.h"
#include "omtask.h"

#include "platform/display.h"
#include "platform/events.h"

#include <cstdint>
#include <optional>
#include <vector>

class KeyPlayer {
  public:
    /// `hearsBackground` tells whether a click on the background does something. Application and
    /// window must outlive it.
    KeyPlayer(OMApp& app, OMTrinketWindow& window, OMLinkTo<bool()> hearsBackground);
    ~KeyPlayer();
    KeyPlayer& operator=(KeyPlayer&&) = delete;

    /// What the person is at, for who tells it in another way.
    struct Attention {
        OMTrinket* trinket = nullptr; ///< null: the background
        std::size_t part = 0;         ///< of its click places
        platform::Rect place{};       ///< of the mark
        bool isCarried = false;
        bool isChosen = false; ///< a key has brought the mark there, and not the scene
    };
    /// None while there is no mark.
    [[nodiscard]] std::optional<Attention> attention() const;
    /// Whether what was carried last was put back, and not let go where it was.
    [[nodiscard]] bool wasPutBack() const { return wasPutBack_; }

  private:
    /// What the mark is on.
    struct Marked {
        OMSWatch trinket;
        bool isBackground;
        std::size_t part;
        platform::Rect found;  ///< where it was before the pointer was on it
        platform::Rect place;  ///< where it was seen last; window pixels, as all here
        platform::Point point; ///< where the pointer is on it
    };
    /// What is held, and was taken by the pointer at `grip`.
    struct Carried {
        OMSWatch trinket;
        platform::Rect home;
        platform::Point grip;
        platform::Rect place; ///< where it lies, or is about to
    };

    // Messages and keys; true for those that nobody else gets.
    bool take(const platform::Message& message);
    bool takeKey(const platform::KeyPress& key);
    bool takeMarkKey(const platform::KeyPress& key);
    bool takeCarryKey(const platform::KeyPress& key);
    void setOn(bool on);

    void step();
    void stepMark();
    void stepCarried();
    void showMark();

    /// Whether the scene can be played now: it is seen, and nobody else has the screen.
    [[nodiscard]] bool isPlayable() const;
    /// Whether somebody takes keys for text, or as a script likes.
    [[nodiscard]] bool hasListener() const;

    // The mark.
    [[nodiscard]] std::vector<OMKeyTarget> targets() const;
    [[nodiscard]] bool isOnTarget();
    void mark(const OMKeyTarget& target);
    void markNearest();
    void markNext(int step);
    void markTowards(OMDirection direction);
    void begin();

    // What is carried.
    void takeUp(OMTrinket& trinket);
    [[nodiscard]] std::vector<platform::Rect> places(const OMTrinket& trinket) const;
    void carryTo(const platform::Rect& place);
    void letGo();

    OMApp& app_;
    OMTrinketWindow& window_;
    OMLinkTo<bool()> hearsBackground_;
    KeyHand hand_;
    bool on_ = false;
    bool typing_ = true; ///< whoever listens gets the keys
    bool hadListener_ = false;
    std::optional<Marked> marked_;
    platform::Rect lastPlace_{}; ///< of the mark; empty when a scene begins
    std::uint32_t lookedMs_ = 0; ///< when targets were last looked for in vain
    bool hasFollowed_ = false;   ///< in the last pass, what it is on
    std::optional<Carried> carried_;
    bool isChosen_ = false; ///< the place of the mark, by a key
    bool wasPutBack_ = false;
    OMTask task_;
};

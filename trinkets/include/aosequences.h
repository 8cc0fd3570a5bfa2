// The sequences of an animation: little programs whose entries show frames, play sounds, go round,
// hold and tell.
//
// Those of a resource are shared by all who play it. The first edit of one makes an own copy of it,
// which others do not see. An entry that is replaced in a sequence without such a copy is replaced
// for all.
#pragma once

#include <memory>
#include <vector>

namespace formats::animation {
struct Entry;
}

/// Who looks into one includes formats/animation/animation.h.
using AOEntry = formats::animation::Entry;

/// Always ends with an entry of code kEnd.
using AOSequence = std::vector<AOEntry>;

class AOSequences {
  public:
    AOSequences() = default;
    /// To be shared. Missing ends are added, here and below.
    explicit AOSequences(std::vector<AOSequence> sequences);
    /// Shares what is shared, and has copies of the other's own ones.
    AOSequences(const AOSequences& other);
    AOSequences& operator=(AOSequences&&) = default;

    [[nodiscard]] int count() const { return static_cast<int>(all_.size()); }
    /// A sequence without entries where there is none.
    [[nodiscard]] const AOSequence& operator[](int index) const;

    // Wrong indices and positions fail a check: nothing changes then, and false comes back. The end
    // stays.

    [[nodiscard]] bool has(int index) const;
    [[nodiscard]] bool hasEntry(int index, int position, bool orEnd = false) const;
    void add(AOSequence entries);
    bool remove(int index);
    /// Before the entry at `position`, which may be the end.
    bool insert(int index, int position, const AOEntry& entry);
    bool erase(int index, int position);
    bool replace(int index, int position, const AOEntry& entry);
    /// The own copy, made now if there is none. The index exists.
    [[nodiscard]] AOSequence& own(int index);

  private:
    struct Sequence {
        std::shared_ptr<AOSequence> entries;
        bool isOwn;
    };

    std::vector<Sequence> all_;
};

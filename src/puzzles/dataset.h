// The alternative contents of one puzzle: numbered entries, each of which is one complete variant.
#pragma once

#include "omrandom.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

struct DSAnswer {
    std::string attribute;
    std::string text; ///< or the number of a picture
};

struct DSContainer {
    std::string attribute;
};

struct DSText {
    static constexpr int kUnbounded = -1; ///< as width and height

    std::uint16_t number = 0; ///< of the author's own; nothing depends on it
    int x = 0;
    int y = 0;
    int width = kUnbounded;
    int height = kUnbounded;
    int z = 0;
    std::string text;
    int flag = 1; ///< see RPuzzle
};

struct DSGraphic {
    static constexpr int kNoPlace = 11111; ///< as x and y: the one embedded in the resource

    int x = kNoPlace;
    int y = kNoPlace;
    int z = 0;
    std::uint16_t resourceId = 0;
};

/// Records are in the order in which they were added.
struct DSEntry {
    std::vector<DSAnswer> answers;
    std::vector<DSContainer> containers;
    std::vector<DSText> texts;
    std::vector<DSGraphic> graphics;
};

class DataSet {
  public:
    static constexpr int kMaxEntries = 1000;

    /// Numbers count from 1 to kMaxEntries. Empty entries are added until there are so many.
    [[nodiscard]] DSEntry& entry(int number) {
        const auto count = static_cast<std::size_t>(number);
        if (entries_.size() < count) entries_.resize(count);
        return entries_[count - 1];
    }
    [[nodiscard]] bool isEmpty() const { return entries_.empty(); }
    /// Each with the same probability. Not for an empty set.
    [[nodiscard]] const DSEntry& randomEntry() const {
        return entries_[OMRandomBelow(static_cast<std::uint32_t>(entries_.size()))];
    }

  private:
    std::vector<DSEntry> entries_;
};

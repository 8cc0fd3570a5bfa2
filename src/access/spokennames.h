// What things on the screen are called when they are spoken: a name of the game's own table, a text
// that a script has put into `userData`, the texts that the thing shows, or the word for its kind.
//
// The table is "spoken.txt" in the game's folder, in UTF-8. Texts are in the language of the
// scripts, and translated as those are:
//
//     door=the door to the garden      a thing in the variable of that name
//     RPButton 3001=go back            all things of a class with that animation
//     ASEQ 3002=the hedgehog           all things with that animation
//     [harbour beach]                  from here on in the scripts harbour.mps and beach.mps only
//     ring.1=the red ring
#pragma once

#include "omtrinketwindow.h"
#include "texts/gametexts.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

class SpokenNames {
  public:
    static constexpr const char* kTable = "spoken.txt";
    static constexpr std::size_t kMostTable = std::size_t{1} << 20; ///< bytes

    /// Both must outlive the names.
    SpokenNames(const OMTrinketWindow& window, const RGameTexts& texts);

    /// The table may have changed.
    void readAgain();

    /// Never empty. Latin-1, as all here.
    [[nodiscard]] std::string nameOf(const OMTrinket& trinket, std::size_t part) const;
    /// Of the table; empty without one there.
    [[nodiscard]] std::string tableName(const OMTrinket& trinket) const;
    [[nodiscard]] std::string backgroundName() const;
    /// Of what lies at the middle of a place, without what is carried there; empty when nothing
    /// does that has a name or is a container.
    [[nodiscard]] std::string nameUnder(const platform::Rect& place,
                                        const OMTrinket* carried) const;

  private:
    [[nodiscard]] std::string given(const OMTrinket& trinket, std::size_t part) const;
    [[nodiscard]] std::string tableEntry(std::string_view what) const;
    [[nodiscard]] std::string textsOn(const OMTrinket& trinket) const;

    const OMTrinketWindow& window_;
    const RGameTexts& texts_;
    std::map<std::string, std::string, std::less<>> table_; ///< by "script\nwhat", in lower case
};

/// The text in one line, without blanks at its ends.
[[nodiscard]] std::string RSpokenLine(std::string_view text);

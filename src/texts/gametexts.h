// The texts of the game in the player's language. Scripts have them in the game's own language, the
// first one of "game.ini"; for each other one there may be a catalogue "languages\LANGUAGE.po",
// with the translations by the texts as they stand in quotes in the scripts. What has none stays as
// it is.
//
// Scripts get the translations when they are loaded, so a new language counts from the next one on.
#pragma once

#include "ytexts.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>

class RGameTexts final : public YTexts {
  public:
    /// `language` is a tag of "game.ini", or empty.
    explicit RGameTexts(std::string language);

    [[nodiscard]] const std::string& language() const { return language_; }
    void setLanguage(const std::string& language);
    /// The catalogue may have changed.
    void readAgain();

    [[nodiscard]] const std::string* meaningOf(std::string_view text,
                                               std::string_view script) const override;

  private:
    [[nodiscard]] static std::string keyOf(std::string_view script, std::string_view text);

    std::string language_;
    std::map<std::string, std::string, std::less<>> meanings_; ///< Latin-1
};

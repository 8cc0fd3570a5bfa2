// What the texts in quotes of scripts mean to the player. The game installs it when it speaks
// another language than its scripts do.
#pragma once

#include "ominstalled.h"

#include <string>
#include <string_view>

class YTexts : public OMInstalled<YTexts> {
  public:
    virtual ~YTexts() = default;

    /// Of a text in a script, both Latin-1; null: what it says. It stays as long as the texts do.
    [[nodiscard]] virtual const std::string* meaningOf(std::string_view text,
                                                       std::string_view script) const = 0;
};

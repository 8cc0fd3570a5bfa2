// Reads scores. What a score looks like is told in sample/sounds/README.md.
//
// A score is read line by line. The first word says what the line is; words that no keyword starts
// are notes of the last voice.
#pragma once

#include "score.h"

#include <stdexcept>
#include <string>
#include <string_view>

/// What is wrong with a score, and in which line.
class ScoreFault : public std::runtime_error {
  public:
    ScoreFault(int line, const std::string& text) : std::runtime_error(text), line_(line) {}
    [[nodiscard]] int line() const { return line_; }

  private:
    int line_;
};

/// Throws ScoreFault.
[[nodiscard]] Score readScore(std::string_view text);

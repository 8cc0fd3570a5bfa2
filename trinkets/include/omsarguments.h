// The one list of argument texts that the engine fills before a constructor, a property access, a
// method or a command, and that the callee reads in order.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

class OMSArguments {
  public:
    [[nodiscard]] static OMSArguments& global();

    void clear();
    void push(std::string_view text) { texts_.emplace_back(text); }
    void rewind() { next_ = 0; }

    [[nodiscard]] std::size_t count() const { return texts_.size(); }
    [[nodiscard]] bool hasNext() const { return next_ < texts_.size(); }
    [[nodiscard]] std::size_t remaining() const { return texts_.size() - next_; }
    /// The next text, or an empty one when none is left.
    std::string next();
    /// The next text's leading digits as a number, 0 without any.
    int nextInteger();

  private:
    std::vector<std::string> texts_;
    std::size_t next_ = 0;
};

/// Optional sign and leading decimal digits after blanks; 0 without digits. Numbers that do not fit
/// stop at the ends of the range.
[[nodiscard]] int OMSToInteger(std::string_view text);

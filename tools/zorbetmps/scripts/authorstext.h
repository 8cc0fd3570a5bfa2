// A script's text in the game's letters, each with the bytes of the author's file that it comes
// from.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mps {

class AuthorsText {
  public:
    /// The bytes, UTF-8 or Latin-1, must outlive it.
    explicit AuthorsText(std::string_view bytes);

    /// As the game reads them.
    [[nodiscard]] std::string_view letters() const { return letters_; }
    /// Of the letters from `begin` on and before `end`.
    [[nodiscard]] std::string_view bytes(std::size_t begin, std::size_t end) const;
    /// The mark of UTF-8 in front, if there is one.
    [[nodiscard]] std::string_view mark() const { return mark_; }

  private:
    std::string letters_;
    std::string_view mark_;
    std::string_view bytes_;          ///< behind the mark
    std::vector<std::size_t> starts_; ///< of each letter, and the end; empty when all have one byte
};

} // namespace mps

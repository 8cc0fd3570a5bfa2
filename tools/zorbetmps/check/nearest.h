// The word that was probably meant.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace mps {

/// How many letters must be changed, left out, put in or exchanged with their neighbour; letter
/// case counts little: words that differ in nothing else have the distance 1.
[[nodiscard]] int distance(std::string_view one, std::string_view other);

/// Of the words the nearest one, if it is near enough for a slip of the fingers; empty without. The
/// word itself does not count.
[[nodiscard]] std::string_view nearest(std::string_view word,
                                       std::span<const std::string_view> words);

/// "; did you mean WORD?", or nothing.
[[nodiscard]] std::string didYouMean(std::string_view word,
                                     std::span<const std::string_view> words);

} // namespace mps

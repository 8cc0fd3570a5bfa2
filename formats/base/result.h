// What reading or writing a format gives.
#pragma once

#include <string>

namespace formats {

/// A value, or why there is none: a text for the author, which says what to do where that is not
/// plain.
template <class Value>
struct Result {
    Value value;
    std::string refusal; ///< empty: there is one

    [[nodiscard]] bool ok() const { return refusal.empty(); }
};

} // namespace formats

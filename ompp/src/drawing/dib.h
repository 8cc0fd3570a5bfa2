// The device-independent bitmap that pictures and cursors have inside.
#pragma once

#include <cstddef>
#include <cstdint>

namespace dib {

inline constexpr std::uint32_t kInfoHeader = 40; ///< its bytes; other headers are not known
inline constexpr std::uint32_t kUncompressed = 0;
inline constexpr std::size_t kTableEntry = 4; ///< blue, green, red, unused

} // namespace dib

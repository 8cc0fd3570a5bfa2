// Resource libraries (".rsc"): 16-bit modules (segmented "NE" executables, as the platform's maker
// publishes them) that hold nothing but resources.
//
//   0x00  MZ header, 64 bytes: "MZ"; 0x18 u16 at least 0x40; 0x3C u32 place of the NE header
//   0x40  a five-byte DOS program that ends at once
//   0x50  NE header, 64 bytes: "NE"; 0x24 u16 place of the resource table, 0x26 u16 of the table
//         that follows it, both counted from here
//   0x90  resource table:
//           u16 shift            offsets and lengths below count units of 1 << shift bytes
//           per type: u16 type   0 ends the types; bit 15 set: number of a standard type, clear:
//                                place in this table of the type's name (u8 length, characters)
//                     u16 count, 4 bytes
//                     count x    u16 offset, u16 length, u16 flags, u16 id (bit 15 set: a number,
//                                clear: place of a name, as for types), 4 bytes
//           the names, and an empty one
//         resident names, imported names, entry table, non-resident names
//         the resources, each at a multiple of the unit and padded to one with zeros
//
// These are the places that we write; others have the NE header and the tables elsewhere.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace formats::library {

inline constexpr std::size_t kHeaderSize = 64; ///< bytes of either header
inline constexpr std::uint16_t kMzSignature = 0x5A4D;
inline constexpr std::uint16_t kNeSignature = 0x454E;
inline constexpr std::size_t kRelocationsAt = 0x18;
inline constexpr std::uint16_t kFirstNewRelocations = 0x40; ///< older programs have no NE header
inline constexpr std::size_t kNeHeaderAt = 0x3C;
inline constexpr std::size_t kTableAt = 0x24; ///< in the NE header; behind it where the table ends

inline constexpr std::size_t kWrittenNeHeader = 0x50;
inline constexpr std::size_t kWrittenTable = kWrittenNeHeader + kHeaderSize;

inline constexpr std::size_t kTypeRecordSize = 8;
inline constexpr std::size_t kResourceRecordSize = 12;
inline constexpr std::uint16_t kNumberMark = 0x8000;    ///< of types and ids
inline constexpr std::uint16_t kNameTableType = 0x800F; ///< types and ids stand in another table
inline constexpr int kLargestId = 0x7FFF;
inline constexpr int kSmallestShift = 4; ///< that we write
inline constexpr int kLargestShift = 15; ///< reaches 2 GB, more than these libraries hold

/// "BITMAP", "CURSOR", … for the number of a standard type; empty for other numbers. Cursors and
/// icons are the group types 12 and 14.
[[nodiscard]] std::string_view standardTypeName(int number);

/// The number of a standard type, none for other names.
[[nodiscard]] std::optional<std::uint16_t> standardTypeNumber(std::string_view name);

/// Number of a standard type's name or of the form "#N" for any other number; none when the type is
/// stored by its name.
[[nodiscard]] std::optional<std::uint16_t> typeNumber(std::string_view type);

/// Four printable characters without blanks, a standard type's name, or "#1" to "#32767".
[[nodiscard]] bool isResourceType(std::string_view type);

/// What the name of a library's file says as the name of its module.
[[nodiscard]] std::string moduleNameOf(std::string_view fileName);

} // namespace formats::library

// Precompiled scripts: a compiled script and the variables it refers to, as one binary file.
//
//     u8   version: 2 little-endian, 1 every number of more than one byte swapped
//     i32  number of instructions, then each: u8 opcode, i16 operand; the End may be left out
//     i32  number of operand words, then each: i16
//     i32  number of variables V, then V - 3 variables (the first three are predefined):
//          i32 kind, i32 type
//          type 3: i32 value; type 4: i16 length and the value as "%.15g"
//          i32 alias, i32 ownership, i32 length, i32 element count
//          name: i32 length (-1 for none) and the bytes; value text: the same
//          parts: i32 count (-1 for none) and i16 each
//
// Everything in such a file is checked before it is used.
#pragma once

#include "formats/base/result.h"
#include "yheap.h"
#include "yscript.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

inline constexpr std::size_t kYMaxPrecompiledSize = std::size_t{16} << 20; ///< bytes

[[nodiscard]] inline bool YIsPrecompiled(std::string_view bytes) {
    return !bytes.empty() && (bytes[0] == 1 || bytes[0] == 2);
}

/// Fills a fresh heap with the script's variables. Null when the file is damaged; the heap is then
/// not fit for use.
[[nodiscard]] std::unique_ptr<YScript> YReadPrecompiled(YHeap& heap, std::string_view bytes);

/// A script that was just compiled, with its heap, little-endian. It runs the same, but that the
/// places of its instructions are not stored. The error is why the form cannot hold it, for
/// authors: it has too many words, or changes one of the predefined variables before it runs.
[[nodiscard]] formats::Result<std::string> YWritePrecompiled(const YScript& script, YHeap& heap);

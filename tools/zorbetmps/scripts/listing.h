// A compiled script as a text for people: its instructions and its variables.
#pragma once

#include <string>

class YHeap;
struct YScript;

namespace mps {

enum class SourceLines { Shown, Left };

/// UTF-8. An instruction is a line with its number, the line of the script that it comes from ("-"
/// when nobody knows), its keyword, and its words, or "-> N" for the instruction that it jumps to.
/// A variable is a line with its number, kind and word, and what else is known of it. Scripts that
/// do the same in the same order have the same listing without lines.
[[nodiscard]] std::string listing(const YScript& script, YHeap& heap, SourceLines lines);

} // namespace mps

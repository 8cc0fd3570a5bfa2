// What a fuzz target expects of the program.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace fuzzing {

/// Stops libFuzzer, which then keeps the input.
inline void expect(bool holds, const char* rule) {
    if (holds) return;
    std::fprintf(stderr, "Broken: %s\n", rule);
    std::abort();
}

} // namespace fuzzing

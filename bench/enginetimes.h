// Times that concern our engine alone.
#pragma once

#include "samplescript.h"

#include "cputime.h"

struct CompileTimes {
    SampleScript script;
    std::size_t instructions = 0;
    Samples nanoseconds;
};

/// Compiles the sample script again and again, each time with nothing known beforehand.
[[nodiscard]] CompileTimes measureCompiling(int repetitions);

/// Nanoseconds from firing an object's event to the end of its handler of two statements.
[[nodiscard]] Samples measureEvents(int repetitions);

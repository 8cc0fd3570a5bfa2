// A script such as a large scene has, made by rule: about 60 KB of mixed statements.
#pragma once

#include <string>

struct SampleScript {
    std::string text; ///< lines end with CR
    int lines = 0;
};

[[nodiscard]] SampleScript makeSampleScript();
/// The commands that the sample script calls; they do nothing.
void registerSampleCommands();

// The loops that are measured, each written in the three languages as a person who knows the
// language would write it.
#pragma once

#include "scriptlanguage.h"

#include <span>
#include <string_view>

struct ScriptLoop {
    std::string_view name;
    LoopSource zorbet;
    LoopSource tcl;
    LoopSource lua;
};

[[nodiscard]] std::span<const ScriptLoop> scriptLoops();

// All words of the game's classes and commands, for tools and documents.
#pragma once

#include "commands/commandtable.h"

#include <span>
#include <vector>

struct OMSClass;

/// The classes that scripts can create, in the order of their names.
[[nodiscard]] std::span<const OMSClass* const> RGameClasses();
[[nodiscard]] std::vector<RCommandWords> RGameCommands();

/// The classes, registered while it lives.
class RScriptClasses {
  public:
    RScriptClasses();
    ~RScriptClasses();
    RScriptClasses(const RScriptClasses&) = delete;
    RScriptClasses& operator=(const RScriptClasses&) = delete;
};

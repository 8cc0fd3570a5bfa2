// All classes of the game, for the program, tools and documents.
#pragma once

#include <span>

struct OMSClass;

/// The classes that scripts can create, in the order of their names.
[[nodiscard]] std::span<const OMSClass* const> RGameClasses();

/// The classes, registered while it lives.
class RScriptClasses {
  public:
    RScriptClasses();
    ~RScriptClasses();
    RScriptClasses& operator=(RScriptClasses&&) = delete;
};

// The types of actions that scripts name when they add one to a container.
#pragma once

#include <memory>
#include <string_view>

class Action;

/// Makes an action of the arguments that are in the argument list. `interruptible` is what they
/// leave open. Null, after a warning, when they do not do, and when there is no such type.
[[nodiscard]] std::unique_ptr<Action> RCreateAction(std::string_view type, bool interruptible);

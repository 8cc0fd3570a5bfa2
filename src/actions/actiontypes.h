// The types of actions that scripts name when they add one to a container.
#pragma once

#include <memory>
#include <string_view>

class Action;

class ActionTypes {
  public:
    /// Makes an action of the arguments that are in the argument list. `interruptible` is what
    /// they leave open. Null, after a warning, when they do not do.
    using Factory = std::unique_ptr<Action> (*)(bool interruptible);

    /// Ignored without name or factory. The name must outlive the entry; of equal names the first
    /// one counts.
    static void add(std::string_view name, Factory factory);
    static void clear();
    /// Null also when there is no such type.
    [[nodiscard]] static std::unique_ptr<Action> create(std::string_view name, bool interruptible);
};

/// The types of the game are known while it lives.
class RActionTypes {
  public:
    RActionTypes();
    ~RActionTypes() { ActionTypes::clear(); }
    RActionTypes(const RActionTypes&) = delete;
    RActionTypes& operator=(const RActionTypes&) = delete;
};

// Actions that do one thing to an object and have finished then: call a method, set a property.
#pragma once

#include "action.h"

#include <memory>
#include <string>
#include <vector>

class VerbAction final : public OMSCopied<VerbAction, Action> {
  public:
    VerbAction(OMScriptableObject& object, std::string verb, std::vector<std::string> arguments,
               bool interruptible);
    [[nodiscard]] static std::unique_ptr<Action> create(bool interruptible);

  protected:
    /// What it does goes on: it is not halted.
    void onRetire() override { leaveContainers(); }
    void begin() override;

  private:
    OMSWatch object_;
    std::string verb_;
    std::vector<std::string> arguments_;
};

class PropertyAction final : public OMSCopied<PropertyAction, Action> {
  public:
    PropertyAction(OMScriptableObject& object, std::string property, std::string value,
                   bool interruptible);
    [[nodiscard]] static std::unique_ptr<Action> create(bool interruptible);

  protected:
    /// What it does goes on: it is not halted.
    void onRetire() override { leaveContainers(); }
    void begin() override;

  private:
    OMSWatch object_;
    std::string property_;
    std::string value_;
};

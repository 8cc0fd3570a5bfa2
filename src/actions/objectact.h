// Actions that do one thing to an object and have finished then: call a method, set a property.
#pragma once

#include "action.h"

#include <memory>
#include <string>
#include <vector>

class ObjectAction : public Action {
  protected:
    ObjectAction(OMScriptableObject& object, bool interruptible)
        : Action(interruptible), object_(&object) {}
    ObjectAction(const ObjectAction& other) = default;

    virtual void act(OMScriptableObject& object) = 0;

    /// What it does goes on: it is not halted.
    void onRetire() override { leaveContainers(); }
    /// An object that is gone has nothing to do.
    void begin() final;

  private:
    OMSWatch object_;
};

class VerbAction final : public OMSCopied<VerbAction, ObjectAction> {
  public:
    VerbAction(OMScriptableObject& object, std::string verb, std::vector<std::string> arguments,
               bool interruptible);
    [[nodiscard]] static std::unique_ptr<Action> create(ActionParameters& parameters);

  private:
    void act(OMScriptableObject& object) override;

    std::string verb_;
    std::vector<std::string> arguments_;
};

class PropertyAction final : public OMSCopied<PropertyAction, ObjectAction> {
  public:
    PropertyAction(OMScriptableObject& object, std::string property, std::string value,
                   bool interruptible);
    [[nodiscard]] static std::unique_ptr<Action> create(ActionParameters& parameters);

  private:
    void act(OMScriptableObject& object) override;

    std::string property_;
    std::string value_;
};

#include "objectact.h"

#include "actionparameters.h"
#include "omsarguments.h"

#include <utility>

void ObjectAction::begin() {
    if (OMScriptableObject* object = object_.object()) act(*object);
    finish();
}

// ---------------------------------------------------------------------------- VerbAction

VerbAction::VerbAction(OMScriptableObject& object, std::string verb,
                       std::vector<std::string> arguments, bool interruptible)
    : OMSCopied(object, interruptible), verb_(std::move(verb)), arguments_(std::move(arguments)) {}

std::unique_ptr<Action> VerbAction::create(ActionParameters& parameters) {
    auto* object = parameters.object<OMScriptableObject>("object variable name");
    if (!object) return nullptr;
    const bool interruptible = parameters.interruptible();
    std::string verb = parameters.text("verb");
    std::vector<std::string> arguments;
    while (parameters.count() > 0) arguments.push_back(OMSArguments::global().next());
    if (!arguments.empty()) parameters.mention(", parameters: ");
    for (const std::string& argument : arguments) parameters.mention(argument + " ");
    return std::make_unique<VerbAction>(*object, std::move(verb), std::move(arguments),
                                        interruptible);
}

void VerbAction::act(OMScriptableObject& object) {
    OMSArguments& list = OMSArguments::global();
    list.clear();
    for (const std::string& argument : arguments_) list.push(argument);
    if (!object.invoke(verb_)) RWarn(OMFormat("VerbAction, verb not supported: %s", verb_.c_str()));
}

// ---------------------------------------------------------------------------- PropertyAction

PropertyAction::PropertyAction(OMScriptableObject& object, std::string property, std::string value,
                               bool interruptible)
    : OMSCopied(object, interruptible), property_(std::move(property)), value_(std::move(value)) {}

std::unique_ptr<Action> PropertyAction::create(ActionParameters& parameters) {
    auto* object = parameters.object<OMScriptableObject>("object variable name");
    if (!object) return nullptr;
    std::string property = parameters.text("property");
    std::string value = parameters.text("value");
    return std::make_unique<PropertyAction>(*object, std::move(property), std::move(value),
                                            parameters.interruptible());
}

void PropertyAction::act(OMScriptableObject& object) {
    OMSArguments::global().clear();
    if (!object.setProperty(property_, value_))
        RWarn(OMFormat("PropertyAction, property not found: %s", property_.c_str()));
}

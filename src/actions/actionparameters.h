// The parameters of an action that a script adds, read in a fixed order out of the argument list.
// What was read becomes the text of a report, so that a log tells what is created:
//
//     ActionParameters parameters("DelayAction", byDefault, ", ");
//     const int ms = parameters.integer("delayTime (in ms)");
//     const bool interruptible = parameters.interruptible();
//     parameters.report(); // Creating DelayAction, delayTime (in ms): 500, interruptible: 1
//
// Parameters with a default may be left out from the end on.
#pragma once

#include "omformat.h"
#include "omscrptb.h"
#include "reports.h"

#include <cstddef>
#include <string>
#include <string_view>

class ActionParameters {
  public:
    /// `separator` stands between the type and the first parameter. `interruptible` is what counts
    /// when the script does not tell.
    ActionParameters(std::string_view type, bool interruptible, std::string_view separator);

    /// Those that were not read yet.
    [[nodiscard]] std::size_t count() const;
    /// With a warning when there are fewer.
    [[nodiscard]] bool areAtLeast(std::size_t needed) const;

    [[nodiscard]] int integer(std::string_view label);
    [[nodiscard]] int integer(std::string_view label, int byDefault, std::string_view shownDefault);
    [[nodiscard]] bool flag(std::string_view label, bool byDefault);
    [[nodiscard]] std::string text(std::string_view label);
    /// The last one of every action but VerbAction.
    [[nodiscard]] bool interruptible(std::string_view label = "interruptible",
                                     std::string_view shownDefault = ": (container specified)");

    /// The object that the named variable holds, of that class; null after the warning
    /// "TYPE - unknown KIND: NAME".
    template <class Object>
    [[nodiscard]] Object* object(std::string_view label, const char* kind = "object") {
        const std::string name = text(label);
        auto* found = dynamic_cast<Object*>(OMScriptableObject::named(name));
        if (!found) RWarn(OMFormat("%s - unknown %s: %s", type_.c_str(), kind, name.c_str()));
        return found;
    }

    /// Text that only the report needs.
    void mention(std::string_view text) { report_ += text; }
    void report() const;

  private:
    void label(std::string_view label);
    [[nodiscard]] bool isGiven() const;

    std::string type_;
    bool interruptible_;
    std::string report_;
    std::string separator_; ///< before the next label
};

#include "actionparameters.h"

#include "omsarguments.h"
#include "omsexception.h"

#include <utility>

ActionParameters::ActionParameters(std::string_view type, bool interruptible,
                                   std::string_view separator)
    : type_(type), interruptible_(interruptible), report_("Creating " + type_),
      separator_(separator) {}

std::size_t ActionParameters::count() const { return OMSArguments::global().remaining(); }

bool ActionParameters::areAtLeast(std::size_t needed) const {
    if (count() >= needed) return true;
    RWarn(type_ + " - not enough parameters");
    return false;
}

void ActionParameters::label(std::string_view label) {
    report_ += std::exchange(separator_, ", ");
    report_ += label;
}

bool ActionParameters::isGiven() const { return OMSArguments::global().hasNext(); }

int ActionParameters::integer(std::string_view name) {
    const int value = OMSArguments::global().nextInteger();
    label(name);
    report_ += ": " + std::to_string(value);
    return value;
}

int ActionParameters::integer(std::string_view name, int byDefault, std::string_view shownDefault) {
    if (isGiven()) return integer(name);
    label(name);
    report_.append(": (").append(shownDefault).append(")");
    return byDefault;
}

bool ActionParameters::flag(std::string_view name, bool byDefault) {
    return integer(name, byDefault ? 1 : 0, byDefault ? "TRUE" : "FALSE") != 0;
}

std::string ActionParameters::text(std::string_view name) {
    std::string value = OMSArguments::global().next();
    label(name);
    report_ += ": " + value;
    return value;
}

bool ActionParameters::interruptible(std::string_view name, std::string_view shownDefault) {
    if (isGiven()) return integer(name) != 0;
    label(name);
    report_ += shownDefault;
    return interruptible_;
}

void ActionParameters::report() const { OMSobExceptionMessage(report_).report(); }

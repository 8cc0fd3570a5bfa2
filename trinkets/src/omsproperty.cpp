#include "omsproperty.h"

#include "omscrptb.h"

bool OMSDataProperty::set(std::string_view value) {
    if (!setter_) return false;
    const OMSSetter setter = setter_; // the property may go while its setter runs
    setter(value);
    return true;
}

std::optional<std::string> OMSDataProperty::get() {
    if (!getter_) return std::nullopt;
    const OMSGetter getter = getter_;
    return getter();
}

bool OMSMethodProperty::run() {
    if (!method_) return false;
    const OMSMethod method = method_;
    method();
    return true;
}

void OMSEventProperty::attach(OMLink handler, OMLink second) {
    handler_ = std::move(handler);
    second_ = std::move(second);
}

bool OMSEventProperty::run() {
    if (!handler_ && !second_) return false;
    if (OMSCall::isRunning()) {
        OMSCall::warn();
        return false;
    }
    const OMLink handler = handler_;
    const OMLink second = second_;
    handler();
    second();
    return true;
}

#include "omsproperty.h"

#include "omscall.h"
#include "omsclass.h"
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

OMSEntryProperty::OMSEntryProperty(OMScriptableObject& object, const OMSEntry& row)
    : OMScriptableObjectProperty(row.kind, row.name), object_(object), row_(row) {}

/// Writes to what is only read are accepted and ignored.
bool OMSEntryProperty::set(std::string_view value) {
    const OMSEntry& row = row_; // the property may go while its setter runs
    if (row.set) row.set(object_, value);
    return row.kind == Kind::Data;
}

std::optional<std::string> OMSEntryProperty::get() {
    return row_.get ? std::optional(row_.get(object_)) : std::nullopt;
}

bool OMSEntryProperty::run() {
    if (!row_.run) return false;
    row_.run(object_);
    return true;
}

bool OMSEntryProperty::lasts() const { return row_.lasting; }

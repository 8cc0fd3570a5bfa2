#include "property.h"

#include "omlog.h"
#include "omsarguments.h"

#include <utility>

namespace world {

namespace {

Property::Access accessOf(const OMSGetter& getter, const OMSSetter& setter) {
    if (!setter) return Property::Access::Read;
    return getter ? Property::Access::Both : Property::Access::Write;
}

} // namespace

LinkedProperty::LinkedProperty(std::string_view name, bool persistent, OMSGetter getter,
                               OMSSetter setter)
    : Property(name, persistent, accessOf(getter, setter)), getter_(std::move(getter)),
      setter_(std::move(setter)) {}

std::unique_ptr<Property> LinkedProperty::clone() const {
    return std::make_unique<LinkedProperty>(*this);
}

std::unique_ptr<Property> IntProperty::clone() const {
    return std::make_unique<IntProperty>(*this);
}

std::string IntProperty::text() const {
    if (name() == kWatchedName)
        OMLog::writef(OMLog::Kind::Message, "Querying CStatueDataset, value is %d", value_);
    return std::to_string(value_);
}

void IntProperty::setText(std::string_view text) {
    const int value = OMSToInteger(text);
    if (name() == kWatchedName)
        OMLog::writef(OMLog::Kind::Message, "Setting CStatueDataset to %d", value);
    value_ = value;
}

std::unique_ptr<Property> StringProperty::clone() const {
    return std::make_unique<StringProperty>(*this);
}

} // namespace world

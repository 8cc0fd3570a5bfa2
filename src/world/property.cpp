#include "property.h"

#include "omlog.h"
#include "omsarguments.h"

namespace world {

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

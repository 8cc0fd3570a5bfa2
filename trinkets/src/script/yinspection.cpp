#include "yinspection.h"

#include "omplatform.h"
#include "omsarguments.h"
#include "omscrptb.h"
#include "omunderway.h"
#include "yheap.h"
#include "ystatement.h"

namespace {

YVariable* namedVariable(std::string_view name) {
    YHeap& heap = YHeap::current();
    const int index = heap.lookup(name);
    return index < 0 ? nullptr : &heap.get(index).resolve();
}

} // namespace

YInspection::YInspection() { OMPlatform().author().setInspection(this); }

YInspection::~YInspection() { OMPlatform().author().setInspection(nullptr); }

std::optional<std::string> YInspection::value(std::string_view variable) const {
    YVariable* const found = namedVariable(variable);
    if (!found || !found->isDefined()) return std::nullopt;
    return textOf(*found);
}

std::optional<std::string> YInspection::property(std::string_view variable,
                                                 std::string_view name) const {
    YVariable* const found = namedVariable(variable);
    OMScriptableObject* const object = found ? found->object() : nullptr;
    if (!object || !object->hasProperty(name)) return std::nullopt;
    const OMUnderWay underWay;
    OMSArguments::global().clear();
    return object->getProperty(name);
}

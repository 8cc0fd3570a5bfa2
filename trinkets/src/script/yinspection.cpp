#include "yinspection.h"

#include "omplatform.h"
#include "omsarguments.h"
#include "omscrptb.h"
#include "omunderway.h"
#include "rthread.h"
#include "yengine.h"
#include "yheap.h"
#include "yline.h"
#include "ystatement.h"

#include <algorithm>

namespace {

YVariable* namedVariable(std::string_view name) {
    YHeap& heap = YHeap::current();
    const int index = heap.lookup(name);
    return index < 0 ? nullptr : &heap.get(index).resolve();
}

/// The game's thread, when it has a script.
YThread* loadedThread() {
    YEngine* const engine = YEngine::current();
    YThread* const thread = engine ? engine->firstThread() : nullptr;
    return thread && thread->isLoaded() ? thread : nullptr;
}

std::optional<std::string> readProperty(OMScriptableObject& object, std::string_view name) {
    const OMUnderWay underWay;
    OMSArguments::global().clear();
    return object.getProperty(name);
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
    return readProperty(*object, name);
}

std::vector<platform::InspectedVariable> YInspection::variables() const {
    std::vector<platform::InspectedVariable> all;
    const YThread* const thread = loadedThread();
    YHeap& heap = YHeap::current();
    for (int index = 0; index < heap.count(); ++index) {
        YVariable& variable = heap.get(index);
        if (variable.kind() != YVariable::Kind::Name || !variable.isDefined()) continue;
        all.push_back(
            {variable.text(), yvalue::typeOf(variable, thread), yvalue::shown(variable, thread)});
    }
    std::ranges::sort(all, {}, &platform::InspectedVariable::name);
    return all;
}

std::vector<platform::InspectedProperty> YInspection::properties(std::string_view variable) const {
    std::vector<platform::InspectedProperty> all;
    YVariable* const found = namedVariable(variable);
    OMScriptableObject* const object = found ? found->object() : nullptr;
    if (!object) return all;
    for (const std::string_view name : object->readableNames())
        if (auto value = readProperty(*object, name))
            all.push_back({std::string(name), yvalue::cut(*std::move(value))});
    std::ranges::sort(all, {}, &platform::InspectedProperty::name);
    return all;
}

std::string YInspection::run(std::string_view line) {
    YThread* const thread = loadedThread();
    if (!thread) return "there is no script that it could belong to";
    return YLine(*YEngine::current(), *thread).run(line);
}

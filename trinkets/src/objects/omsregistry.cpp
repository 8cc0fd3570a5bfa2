#include "omsregistry.h"

#include "formats/base/latin1.h"
#include "omdebug.h"
#include "omlog.h"
#include "omplatform.h"
#include "omsarguments.h"
#include "omsbirths.h"
#include "omsclass.h"
#include "omsexception.h"

#include <algorithm>

namespace {

constexpr std::string_view kComponentExtension = ".lrn";

/// The extension belongs to the last part of a path.
std::size_t extensionOf(std::string_view name) {
    const auto dot = name.rfind('.');
    const auto folder = name.find_last_of("\\/:");
    return dot == std::string_view::npos || (folder != std::string_view::npos && folder > dot)
               ? std::string_view::npos
               : dot;
}

bool hasComponentExtension(std::string_view name) {
    if (name.size() <= kComponentExtension.size()) return false;
    return formats::equalIgnoringCase(name.substr(name.size() - kComponentExtension.size()),
                                      kComponentExtension);
}

} // namespace

OMSR::OMSR(const OMSClass& scriptClass) : class_(scriptClass) {}

// The handler may lie in the library, which is unloaded last.
OMSR::~OMSR() { bornHandler_ = nullptr; }

std::string_view OMSR::name() const { return class_.name; }

OMSRegistry& OMSRegistry::global() {
    static OMSRegistry registry;
    return registry;
}

OMSRegistry::OMSRegistry() = default;
OMSRegistry::~OMSRegistry() = default;

// ---------------------------------------------------------------------------- classes

void OMSRegistry::registerClass(const OMSClass& scriptClass) {
    if (!find(scriptClass.name)) classes_.push_back(std::make_unique<OMSR>(scriptClass));
}

void OMSRegistry::unregisterClass(std::string_view name) {
    const auto found = std::ranges::find(classes_, name, &OMSR::name);
    if (found == classes_.end()) return;
    classes_.erase(found); // the name may go with it
    if (classes_.empty()) lastUnregistered();
}

void OMSRegistry::unregisterAll() {
    if (classes_.empty()) return;
    while (!classes_.empty()) classes_.pop_back();
    lastUnregistered();
}

void OMSRegistry::lastUnregistered() {
    OMSArguments::global().clear();
    hook_ = nullptr;
    OMSobException::clearCurrent();
    OMSobException::setNotification(nullptr);
}

OMSR* OMSRegistry::findEntry(std::string_view name) const {
    const auto found = std::find_if(classes_.begin(), classes_.end(),
                                    [&](const auto& entry) { return entry->name() == name; });
    return found == classes_.end() ? nullptr : found->get();
}

const OMSR* OMSRegistry::find(std::string_view name) const { return findEntry(name); }

bool OMSRegistry::isClass(std::string_view name) {
    return find(name) || (componentLoading_ && loadComponent(name));
}

bool OMSRegistry::attachClassHandler(std::string_view name, OMLink handler) {
    OMSR* entry = findEntry(name);
    if (!entry) return false;
    entry->bornHandler_ = std::move(handler);
    return true;
}

std::unique_ptr<OMScriptableObject> OMSRegistry::create(std::string_view name) {
    const OMSR* entry = isClass(name) ? findEntry(name) : nullptr;
    if (!entry) return nullptr;
    const OMSClass& scriptClass = entry->scriptClass();
    OMSArguments::global().rewind();
    const OMUnderWay underWay;
    OMScriptableObject* object = nullptr; // handlers may destroy it behind the owner's back
    {
        const OMSBirths parts;
        object = scriptClass.create ? scriptClass.create().release() : nullptr;
        if (!object) return nullptr;
        if (!object->class_) object->takeClass(scriptClass);
        object->born();
        if (!object->isRetired()) hook_(*object);
    }
    return std::unique_ptr<OMScriptableObject>(object->isRetired() ? nullptr : object);
}

void OMSRegistry::callBornHandler(const OMSR& entry) {
    const OMLink handler = entry.bornHandler_;
    handler();
}

// ---------------------------------------------------------------------------- components

void OMSRegistry::setComponentLoading(bool enabled) {
    componentLoading_ = enabled;
    missingComponents_.clear();
}

OMSR* OMSRegistry::loadComponent(std::string_view name) {
    if (missingComponents_.contains(std::string(name))) return nullptr;
    const std::size_t extension = extensionOf(name);
    const std::string className(name.substr(0, extension));
    std::string file(name);
    if (extension == std::string_view::npos) file += kComponentExtension;
    platform::Modules& modules = OMPlatform().modules();
    const std::shared_ptr<platform::Library> library = modules.load(file);
    if (!library) {
        if (const std::string why = modules.loadError(); !why.empty())
            OMLog::writef(OMLog::Kind::Error, "%s is not loaded: %s", file.c_str(), why.c_str());
        missingComponents_.emplace(name);
        return nullptr;
    }
    const std::size_t before = classes_.size();
    if (const auto entryPoint = library->entry(kComponentEntry)) entryPoint();
    // It may have had other components loaded.
    for (std::size_t added = before; added < classes_.size(); ++added)
        if (!classes_[added]->library_) classes_[added]->library_ = library;
    OMSR* registered = findEntry(className);
    OMDebug::require(registered != nullptr, "!registryEntry", "Component registration failure");
    return registered;
}

void OMSRegistry::loadAllComponents() {
    platform::Files& files = OMPlatform().files();
    for (const platform::DirectoryEntry& file : files.list(files.currentDirectory())) {
        if (file.isDirectory || !hasComponentExtension(file.name)) continue;
        if (!find(file.name.substr(0, extensionOf(file.name)))) loadComponent(file.name);
    }
}

// The registry of script classes, from which `x=ClassName args...` creates objects, and the
// component libraries that can add classes to it at run time.
#pragma once

#include "omlink.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

class OMScriptableObject;
struct OMSClass;

namespace platform {
class Library;
}

/// One registered class.
class OMSR {
  public:
    explicit OMSR(const OMSClass& scriptClass);
    ~OMSR();

    [[nodiscard]] const OMSClass& scriptClass() const { return class_; }
    [[nodiscard]] std::string_view name() const;

  private:
    friend class OMSRegistry;
    const OMSClass& class_;
    OMLink bornHandler_; ///< called for every object of the class
    /// The component that registered it and perhaps others, or none.
    std::shared_ptr<platform::Library> library_;
};

class OMSRegistry {
  public:
    /// What a component library exports: a function without arguments that registers its classes.
    static constexpr const char* kComponentEntry = "OMRegisterComponent";

    [[nodiscard]] static OMSRegistry& global();
    OMSRegistry();
    ~OMSRegistry();

    /// A class that scripts make objects of, or whose objects the program makes and announces. It
    /// must outlive its registration. One of a name that is already registered changes nothing.
    void registerClass(const OMSClass& scriptClass);
    /// Removing the last class frees the argument list, the hooks and the current error object.
    void unregisterClass(std::string_view name);
    void unregisterAll();

    [[nodiscard]] const OMSR* find(std::string_view name) const;
    /// As find, loading the component "NAME.lrn" when component loading is enabled. Fatal when the
    /// component does not register the class.
    bool isClass(std::string_view name);

    /// Replaces the handler of a class; an empty link removes it. False for an unknown class.
    bool attachClassHandler(std::string_view name, OMLink handler);

    /// Creates an object with the arguments that are in the argument list. Null when the class is
    /// unknown or refuses, or when a handler of its birth destroyed it.
    std::unique_ptr<OMScriptableObject> create(std::string_view name);

    /// Called after any object was created.
    void setCreationHook(OMLinkTo<void(OMScriptableObject&)> hook) { hook_ = std::move(hook); }

    void setComponentLoading(bool enabled);
    /// Loads every "*.lrn" of the current directory.
    void loadAllComponents();

  private:
    friend class OMScriptableObject;
    OMSR* findEntry(std::string_view name) const;
    OMSR* loadComponent(std::string_view name);
    void callBornHandler(const OMSR& entry);
    void lastUnregistered();

    std::vector<std::unique_ptr<OMSR>> classes_;
    OMLinkTo<void(OMScriptableObject&)> hook_;
    bool componentLoading_ = false;
    std::unordered_set<std::string> missingComponents_; ///< names looked for in vain
};

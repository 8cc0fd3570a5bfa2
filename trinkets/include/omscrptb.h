// Scriptable objects: the base of everything that a script can create, configure, start or listen
// to.
//
// An object carries named properties of three kinds (omsproperty.h): those of its class, told once
// in the class's table (omsclass.h), and those that were added to this object alone.
//
// Events are fired synchronously from inside the object's code, and a handler may destroy any
// object, also the one that fires. So an object goes in two steps. `delete`, which is what its
// owner's unique_ptr does, retires it: it leaves all lists, windows, devices and variables and is
// heard no more. Its memory goes when nothing is under way any more (omunderway.h). Until then its
// functions may run to their ends: a retired object has no window, no handlers and no links, and
// what is done to it shows nowhere. Only what would do something to others asks `isRetired`.
#pragma once

#include "omlink.h"
#include "omlist.h"
#include "omsproperty.h"
#include "omunderway.h"

#include <initializer_list>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class OMScriptableObject;
class OMSR;
struct OMSClass;
struct OMSEntry;

/// Refers to an object for a longer time than one call, and is null when that has gone.
class OMSWatch {
  public:
    OMSWatch() = default;
    explicit OMSWatch(OMScriptableObject* object) { watch(object); }
    ~OMSWatch() { watch(nullptr); }
    /// Watches the same object.
    OMSWatch(const OMSWatch& other) : OMSWatch(other.object_) {}
    OMSWatch& operator=(const OMSWatch&) = delete;

    void watch(OMScriptableObject* object);
    [[nodiscard]] OMScriptableObject* object() const { return object_; }
    /// False once the object has retired.
    [[nodiscard]] explicit operator bool() const { return object_ != nullptr; }

  private:
    friend class OMScriptableObject;
    OMScriptableObject* object_ = nullptr;
    OMSWatch* next_ = nullptr;
};

class OMScriptableObject {
  public:
    /// Why the last get, set, invoke or attach failed.
    enum class Status { Ok = 0, Absent = 1, Refused = 2 };

    /// What every object has: the event "born".
    static const OMSClass kClass;

    OMScriptableObject() { ++count_; }
    /// A class that overrides onRetire has a destructor that calls `retire`, for objects that are
    /// not deleted: members, and those on the stack.
    virtual ~OMScriptableObject() { retire(); }
    OMScriptableObject& operator=(const OMScriptableObject&) = delete;

    /// Retires the object; the destructor runs and the memory goes when nothing is under way.
    static void operator delete(OMScriptableObject* object, std::destroying_delete_t);
    // Its counterparts, which do what the global ones do.
    static void* operator new(std::size_t bytes);
    static void operator delete(void* memory);
    /// The first part of its end, once: onRetire; then every script variable that still refers to
    /// it is empty and its handlers are discarded. An owner whose parts must not be seen or heard
    /// after its own end retires them in its onRetire.
    void retire();
    /// Whether that has begun.
    [[nodiscard]] bool isGoing() const { return life_ != Life::Active; }
    [[nodiscard]] bool isRetired() const { return life_ == Life::Retired; }

    /// Who keeps something for objects forgets it then; installed by the engine.
    static void setRetireLink(OMLinkTo<void(OMScriptableObject&)> link) {
        retireLink_ = std::move(link);
    }
    /// A link that calls this one as long as the object has not retired.
    [[nodiscard]] OMLink whileActive(OMLink link);

    /// How many there are of all classes that have not retired.
    [[nodiscard]] static int count() { return count_; }

    /// A new object equal to this one, owned by the caller; null where a class cannot be copied.
    /// What a class provides; callers use makeDuplicate.
    [[nodiscard]] virtual std::unique_ptr<OMScriptableObject> duplicate();
    /// A duplicate with this object's class and that class's properties, announced as born. Null,
    /// with the status Refused, where the class cannot be copied; null, with the status Ok, when a
    /// handler of its birth destroyed it.
    [[nodiscard]] std::unique_ptr<OMScriptableObject> makeDuplicate();
    /// Adds what not every object of the class has. Run once, when the object is created by its
    /// class or announced as born.
    virtual void declareProperties() {}

    // Properties of this object alone, which come before those of its class. Names must outlive the
    // object; a name that was added before is replaced. Without a setter, writes are accepted and
    // ignored.
    void addDataProperty(std::string_view name, OMSSetter setter, OMSGetter getter);
    void addMethod(std::string_view name, OMSMethod method);
    void addDefaultMethod(OMSMethod method) { addMethod(kDefaultMethod, std::move(method)); }
    void addEvent(std::string_view name);
    void addEntry(const OMSEntry& row);
    /// Takes an added property away, which may be running. A name that is none changes nothing.
    void removeProperty(std::string_view name);

    // Use. Each leaves its outcome in `status`.
    bool fireEvent(std::string_view name);
    bool setProperty(std::string_view name, std::string_view value);
    /// None when there is no such property or nothing came back. The text "undefined" is returned,
    /// with the status Refused.
    std::optional<std::string> getProperty(std::string_view name);
    /// Runs a method with the arguments that are in the argument list.
    bool invoke(std::string_view method);
    /// Fills the argument list first.
    bool invoke(std::string_view method, std::initializer_list<std::string_view> arguments);
    bool attachHandler(std::string_view event, OMLink handler, OMLink second = nullptr);
    [[nodiscard]] bool hasProperty(std::string_view name) const;
    /// Whether there is a handler of that event.
    [[nodiscard]] bool isHeard(std::string_view event) const;
    /// What can be read, each time with nothing changed by that; as long as the object lives.
    [[nodiscard]] std::vector<std::string_view> readableNames() const;

    /// Whether the method may go on with its work after the call, and tells its end by
    /// fireCompletion. False also when there is no such method.
    [[nodiscard]] bool methodLasts(std::string_view method);
    /// The link that those wait for who started a lasting method; replaces what was there.
    void setCompletionLink(OMLink link) { completion_ = std::move(link); }
    /// As above, beside what was there: who waited already goes on waiting.
    void addCompletionLink(OMLink link);
    /// Called by the object when the work of a method is finished. Fires the link once.
    void fireCompletion();
    /// The link, which is called no more: for those who tell others before they call it.
    [[nodiscard]] OMLink takeCompletion() { return std::exchange(completion_, nullptr); }

    /// Of the object's class in the registry; null while it has none.
    [[nodiscard]] const OMSR* classEntry() const;
    /// The object is of that class from now on. For objects that the program makes itself; creation
    /// through the registry does it.
    void takeClass(const OMSClass& scriptClass);
    /// The object becomes the last-born one, takes the registered class of that name if it has none
    /// yet, and the class's handler is called. For such objects too; see OMSBirths.
    void announceBorn(std::string_view className);
    /// Its owner is the program, not a variable: scripts refer to it, and cannot destroy it.
    void leaveToProgram() { isOfProgram_ = true; }
    [[nodiscard]] bool isOfProgram() const { return isOfProgram_; }

    static constexpr std::string_view kDefaultMethod = "default";
    static constexpr std::string_view kUndefined = "undefined";

    /// The object that last fired an event, and the one most recently announced as born; null when
    /// it is gone.
    static OMScriptableObject* lastPass;
    static OMScriptableObject* lastBorn;
    [[nodiscard]] static Status status() { return status_; }

    /// The object held by the script variable of exactly that name, or null. `mark` makes the
    /// variable a non-owning one.
    [[nodiscard]] static OMScriptableObject* named(std::string_view variable, bool mark = false);

    // Handing values back to scripts through RESULT.
    static void setResult(int value);
    static void setResult(double value);
    static void setResult(std::string_view value);

  protected:
    /// For duplicates: class and properties come anew (makeDuplicate), so that they belong to the
    /// new object; handlers and watchers stay with the original.
    OMScriptableObject(const OMScriptableObject&) : OMScriptableObject() {}

    /// Leaves what the class has put the object into; calls its base's last.
    virtual void onRetire() {}

  private:
    friend class OMSWatch;
    friend class OMSRegistry;
    friend class YHeap;
    friend class YVariable;

    [[nodiscard]] OMScriptableObjectProperty* added(std::string_view name) const;
    [[nodiscard]] const OMSEntry* classRow(std::string_view name) const;
    template <class Use>
    auto with(std::string_view name, Use use);
    void add(std::unique_ptr<OMScriptableObjectProperty> property);
    void born();

    static Status status_;
    static inline int count_ = 0;
    static inline OMLinkTo<void(OMScriptableObject&)> retireLink_;
    int holders_ = 0; ///< script variables that refer to it

    /// What was added, and the events of the class that have had handlers.
    std::vector<std::unique_ptr<OMScriptableObjectProperty>> properties_;
    OMLink completion_;
    const OMSClass* class_ = nullptr;
    bool isOfProgram_ = false;
    std::uint64_t bornIn_ = OMUnderWay::run(); ///< the run of statements
    enum class Life : std::uint8_t { Active, Retiring, Retired } life_ = Life::Active;
    OMSWatch* watches_ = nullptr;
};

/// Base of a class whose copy constructor makes the duplicates:
/// `class RLamp final : public OMSCopied<RLamp, OMTrinket>`.
template <class Self, class Base>
class OMSCopied : public Base {
  public:
    using Base::Base;

    [[nodiscard]] std::unique_ptr<OMScriptableObject> duplicate() override {
        return std::make_unique<Self>(static_cast<const Self&>(*this));
    }
};

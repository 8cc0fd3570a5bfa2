#include "omscrptb.h"

#include "omapp.h"
#include "omdebug.h"
#include "omsarguments.h"
#include "omsbirths.h"
#include "omscall.h"
#include "omsclass.h"
#include "omsregistry.h"
#include "yheap.h"

#include <algorithm>

namespace {

constexpr OMSEntry kOMScriptableObjectVocabulary[] = {
    oms::event("born"),
};

} // namespace

const OMSClass OMScriptableObject::kClass{"", nullptr, kOMScriptableObjectVocabulary};

OMScriptableObject* OMScriptableObject::lastPass = nullptr;
OMScriptableObject* OMScriptableObject::lastBorn = nullptr;
OMScriptableObject::Status OMScriptableObject::status_ = Status::Ok;

// ---------------------------------------------------------------------------- watching

void OMSWatch::watch(OMScriptableObject* object) {
    if (object_) {
        OMSWatch** link = &object_->watches_;
        while (*link != this) link = &(*link)->next_;
        *link = next_;
    }
    object_ = object && !object->isRetired() ? object : nullptr;
    if (!object_) return;
    next_ = object_->watches_;
    object_->watches_ = this;
}

// ---------------------------------------------------------------------------- life

void OMScriptableObject::operator delete(OMScriptableObject* object, std::destroying_delete_t) {
    {
        const OMUnderWay retiring;
        object->retire();
    }
    OMUnderWay::afterwards(object->bornIn_, [object] {
        void* const memory = dynamic_cast<void*>(object);
        object->~OMScriptableObject();
        ::operator delete(memory);
    });
}

void* OMScriptableObject::operator new(std::size_t bytes) { return ::operator new(bytes); }

void OMScriptableObject::operator delete(void* memory) { ::operator delete(memory); }

void OMScriptableObject::retire() {
    if (life_ != Life::Active) return;
    life_ = Life::Retiring;
    onRetire();
    life_ = Life::Retired;
    --count_;
    for (OMSWatch* watch = std::exchange(watches_, nullptr); watch; watch = watch->next_)
        watch->object_ = nullptr;
    if (lastPass == this) lastPass = nullptr;
    if (lastBorn == this) lastBorn = nullptr;
    retireLink_(*this);
    if (holders_ > 0) YHeap::current().forget(this, false);
    fireCompletion(); // nobody waits for an object that is gone
}

OMLink OMScriptableObject::whileActive(OMLink link) {
    return [watch = std::make_shared<OMSWatch>(this), link = std::move(link)] {
        if (*watch) link();
    };
}

std::unique_ptr<OMScriptableObject> OMScriptableObject::duplicate() { return nullptr; }

std::unique_ptr<OMScriptableObject> OMScriptableObject::makeDuplicate() {
    const OMUnderWay underWay;
    OMScriptableObject* copy = nullptr; // its birth, and that of its parts, may be its end
    {
        const OMSBirths parts;
        copy = duplicate().release();
        status_ = copy ? Status::Ok : Status::Refused;
        if (!copy) return nullptr;
        if (class_) copy->takeClass(*class_);
        copy->born();
    }
    status_ = Status::Ok;
    return std::unique_ptr<OMScriptableObject>(copy->isRetired() ? nullptr : copy);
}

void OMScriptableObject::addCompletionLink(OMLink link) {
    setCompletionLink(OMBothLinks(takeCompletion(), std::move(link)));
}

void OMScriptableObject::fireCompletion() {
    const OMLink link = takeCompletion();
    link();
}

const OMSR* OMScriptableObject::classEntry() const {
    return class_ ? OMSRegistry::global().find(class_->name) : nullptr;
}

void OMScriptableObject::takeClass(const OMSClass& scriptClass) {
    class_ = &scriptClass;
    declareProperties();
}

void OMScriptableObject::announceBorn(std::string_view className) {
    const OMSR* entry = class_ ? nullptr : OMSRegistry::global().find(className);
    if (entry) takeClass(entry->scriptClass());
    born();
}

/// The class's handler may destroy the object.
void OMScriptableObject::born() {
    lastBorn = this;
    if (const OMSR* entry = classEntry()) OMSRegistry::global().callBornHandler(*entry);
}

// ---------------------------------------------------------------------------- properties

OMScriptableObjectProperty* OMScriptableObject::added(std::string_view name) const {
    const auto found = std::find_if(properties_.begin(), properties_.end(),
                                    [&](const auto& listed) { return listed->name() == name; });
    return found == properties_.end() ? nullptr : found->get();
}

const OMSEntry* OMScriptableObject::classRow(std::string_view name) const {
    return (class_ ? *class_ : kClass).find(name);
}

bool OMScriptableObject::isHeard(std::string_view event) const {
    const OMScriptableObjectProperty* property = added(event);
    return property && property->isHeard();
}

bool OMScriptableObject::hasProperty(std::string_view name) const {
    return added(name) || classRow(name);
}

std::vector<std::string_view> OMScriptableObject::readableNames() const {
    std::vector<std::string_view> names;
    std::vector<std::string_view> seen; // also what hides a property of the base
    const auto note = [&](std::string_view name, bool isReadable) {
        if (std::ranges::find(seen, name) != seen.end()) return;
        seen.push_back(name);
        if (isReadable) names.push_back(name);
    };
    for (const auto& own : properties_)
        note(own->name(), own->kind() == OMScriptableObjectProperty::Kind::Data);
    for (const OMSClass* from = class_; from; from = from->base)
        for (const OMSEntry& row : from->vocabulary) note(row.name, row.get && !row.isSerial);
    return names;
}

void OMScriptableObject::add(std::unique_ptr<OMScriptableObjectProperty> property) {
    const auto twin = std::find_if(properties_.begin(), properties_.end(), [&](const auto& listed) {
        return listed->name() == property->name();
    });
    if (twin != properties_.end())
        *twin = std::move(property);
    else
        properties_.push_back(std::move(property));
}

void OMScriptableObject::addDataProperty(std::string_view name, OMSSetter setter,
                                         OMSGetter getter) {
    if (!setter) setter = [](std::string_view) {};
    add(std::make_unique<OMSDataProperty>(name, std::move(setter), std::move(getter)));
}

void OMScriptableObject::addMethod(std::string_view name, OMSMethod method) {
    add(std::make_unique<OMSMethodProperty>(name, std::move(method)));
}

void OMScriptableObject::addEvent(std::string_view name) {
    add(std::make_unique<OMSEventProperty>(name));
}

void OMScriptableObject::addEntry(const OMSEntry& row) {
    if (row.kind == OMScriptableObjectProperty::Kind::Event)
        addEvent(row.name);
    else
        add(std::make_unique<OMSEntryProperty>(*this, row));
}

void OMScriptableObject::removeProperty(std::string_view name) {
    std::erase_if(properties_, [&](const auto& listed) { return listed->name() == name; });
}

// ---------------------------------------------------------------------------- use

/// What `use` makes of the property of that name; nothing (false, null), with the status Absent,
/// when there is none.
template <class Use>
auto OMScriptableObject::with(std::string_view name, Use use) {
    const OMUnderWay underWay;
    status_ = Status::Ok;
    if (OMScriptableObjectProperty* own = added(name)) return use(*own);
    if (const OMSEntry* row = classRow(name)) {
        OMSEntryProperty property(*this, *row);
        return use(property);
    }
    status_ = Status::Absent;
    return decltype(use(std::declval<OMScriptableObjectProperty&>())){};
}

bool OMScriptableObject::fireEvent(std::string_view name) {
    return with(name, [&](OMScriptableObjectProperty& event) {
        if (isRetired() || event.kind() != OMScriptableObjectProperty::Kind::Event) {
            status_ = Status::Absent;
            return false;
        }
        lastPass = this;
        if (OMSCall::isRunning()) OMSCall::noteIgnored(name);
        return event.run();
    });
}

// What runs inside may use other objects; the status is that of this use.

bool OMScriptableObject::setProperty(std::string_view name, std::string_view value) {
    OMSArguments::global().rewind();
    return with(name, [&](OMScriptableObjectProperty& data) {
        const bool done = data.set(value);
        status_ = done ? Status::Ok : Status::Refused;
        return done;
    });
}

std::optional<std::string> OMScriptableObject::getProperty(std::string_view name) {
    OMSArguments::global().rewind();
    return with(name, [&](OMScriptableObjectProperty& data) {
        std::optional<std::string> value = data.get();
        status_ = !value || *value == kUndefined ? Status::Refused : Status::Ok;
        return value;
    });
}

bool OMScriptableObject::invoke(std::string_view method) {
    OMSArguments::global().rewind();
    return with(method, [&](OMScriptableObjectProperty& found) {
        // An event is fired by its own rules, not called.
        const bool done = found.kind() == OMScriptableObjectProperty::Kind::Method && found.run();
        status_ = done ? Status::Ok : Status::Refused;
        return done;
    });
}

bool OMScriptableObject::invoke(std::string_view method,
                                std::initializer_list<std::string_view> arguments) {
    OMSArguments& list = OMSArguments::global();
    list.clear();
    for (const std::string_view argument : arguments) list.push(argument);
    return invoke(method);
}

bool OMScriptableObject::methodLasts(std::string_view method) {
    return with(method, [](OMScriptableObjectProperty& found) { return found.lasts(); });
}

bool OMScriptableObject::attachHandler(std::string_view event, OMLink handler, OMLink second) {
    constexpr auto kEvent = OMScriptableObjectProperty::Kind::Event;
    OMScriptableObjectProperty* found = added(event);
    if (!found) {
        const OMSEntry* row = classRow(event);
        if (row && row->kind == kEvent) addEvent(row->name);
        found = added(event);
    }
    if (!found || found->kind() != kEvent) {
        status_ = Status::Absent;
        return false;
    }
    static_cast<OMSEventProperty*>(found)->attach(std::move(handler), std::move(second));
    status_ = Status::Ok;
    return true;
}

OMScriptableObject* OMScriptableObject::named(std::string_view variable, bool mark) {
    YHeap& heap = YHeap::current();
    const int index = heap.lookup(variable);
    if (index < 0) return nullptr;
    OMScriptableObject* object = heap.get(index).object();
    if (object && mark) heap.get(index).resolve().markReference();
    return object;
}

void OMScriptableObject::setResult(int value) {
    YHeap::current().get(YHeap::kResult).setInteger(value);
}

void OMScriptableObject::setResult(double value) {
    YHeap::current().get(YHeap::kResult).setReal(value);
}

void OMScriptableObject::setResult(std::string_view value) {
    YHeap::current().get(YHeap::kResult).setString(value);
}

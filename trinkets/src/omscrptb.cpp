#include "omscrptb.h"

#include "omapp.h"
#include "omdebug.h"
#include "omformat.h"
#include "omsarguments.h"
#include "omsclass.h"
#include "omsregistry.h"
#include "rvar.h"
#include "yengine.h"

#include <algorithm>

namespace {

constexpr std::string_view kBorn = "born";
constexpr std::size_t kMaxCallContext = 980;

struct CallState {
    bool running = false;
    std::string context;
};

CallState& callState() {
    static CallState state;
    return state;
}

} // namespace

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
    object_ = object;
    if (!object_) return;
    next_ = object_->watches_;
    object_->watches_ = this;
}

// ---------------------------------------------------------------------------- life

OMScriptableObject::OMScriptableObject() { addEvent(kBorn); }

OMScriptableObject::OMScriptableObject(const OMScriptableObject&) : OMScriptableObject() {}

OMScriptableObject::~OMScriptableObject() {
    for (OMSWatch* watch = watches_; watch; watch = watch->next_) watch->object_ = nullptr;
    if (lastPass == this) lastPass = nullptr;
    if (lastBorn == this) lastBorn = nullptr;
    if (YEngine* engine = YEngine::current()) {
        engine->removeRecords(this);
        YHeap::current().forget(this, false);
    }
    fireCompletion(); // nobody waits for an object that is gone
}

std::unique_ptr<OMScriptableObject> OMScriptableObject::duplicate() { return nullptr; }

std::unique_ptr<OMScriptableObject> OMScriptableObject::makeDuplicate() {
    std::unique_ptr<OMScriptableObject> copy = duplicate();
    if (!copy) return nullptr;
    OMSWatch watch(copy.release()); // its birth may be its end
    watch.object()->class_ = class_;
    if (class_) watch.object()->declareProperties();
    watch.object()->born();
    return std::unique_ptr<OMScriptableObject>(watch.object());
}

void OMScriptableObject::fireCompletion() {
    const OMLink link = takeCompletion();
    link();
}

void OMScriptableObject::announceBorn(std::string_view className) {
    if (!class_) {
        class_ = OMSRegistry::global().find(className);
        if (class_) declareProperties();
    }
    born();
}

/// The class's handler may destroy the object.
void OMScriptableObject::born() {
    lastBorn = this;
    if (class_) OMSRegistry::global().callBornHandler(*class_);
}

// ---------------------------------------------------------------------------- declaring

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

void OMScriptableObject::removeProperty(std::string_view name) {
    std::erase_if(properties_, [&](const auto& listed) { return listed->name() == name; });
}

void OMScriptableObject::declareRows(const OMSEntry* rows, std::size_t count) {
    for (const OMSEntry* row = rows; row != rows + count; ++row) {
        switch (row->kind) {
        case OMScriptableObjectProperty::Kind::Event: addEvent(row->name); break;
        case OMScriptableObjectProperty::Kind::Method:
            addMethod(row->name, [this, row] { runMethod(*row); });
            break;
        case OMScriptableObjectProperty::Kind::Data:
            addDataProperty(row->name,
                            row->set ? OMSSetter([this, set = row->set](std::string_view value) {
                                set(*this, value);
                            })
                                     : OMSSetter(),
                            row->get ? OMSGetter([this, get = row->get] { return get(*this); })
                                     : OMSGetter());
            break;
        }
    }
}

/// What is done when the call returns is finished then, for those who wait for it.
void OMScriptableObject::runMethod(const OMSEntry& row) {
    const OMSWatch self(this);
    row.run(*this);
    if (self && !row.lasting) fireCompletion();
}

// ---------------------------------------------------------------------------- use

OMScriptableObjectProperty* OMScriptableObject::property(std::string_view name) const {
    const auto found = std::find_if(properties_.begin(), properties_.end(),
                                    [&](const auto& listed) { return listed->name() == name; });
    return found == properties_.end() ? nullptr : found->get();
}

bool OMScriptableObject::fireEvent(std::string_view name) {
    OMScriptableObjectProperty* event = property(name);
    if (!event || event->kind() != OMScriptableObjectProperty::Kind::Event) {
        status_ = Status::Absent;
        return false;
    }
    status_ = Status::Ok;
    lastPass = this;
    if (OMSCall::isRunning()) OMSCall::noteIgnored(name);
    return event->run();
}

bool OMScriptableObject::setProperty(std::string_view name, std::string_view value) {
    OMSArguments::global().rewind();
    OMScriptableObjectProperty* data = property(name);
    const bool done = data && data->set(value);
    status_ = done ? Status::Ok : data ? Status::Refused : Status::Absent;
    return done;
}

std::optional<std::string> OMScriptableObject::getProperty(std::string_view name) {
    OMSArguments::global().rewind();
    OMScriptableObjectProperty* data = property(name);
    if (!data) {
        status_ = Status::Absent;
        return std::nullopt;
    }
    std::optional<std::string> value = data->get();
    status_ = !value || *value == kUndefined ? Status::Refused : Status::Ok;
    return value;
}

bool OMScriptableObject::invoke(std::string_view method) {
    OMSArguments::global().rewind();
    OMScriptableObjectProperty* found = property(method);
    if (!found) {
        status_ = Status::Absent;
        return false;
    }
    // An event is fired by its own rules, not called.
    const bool done = found->kind() == OMScriptableObjectProperty::Kind::Method && found->run();
    status_ = done ? Status::Ok : Status::Refused;
    return done;
}

bool OMScriptableObject::invoke(std::string_view method,
                                std::initializer_list<std::string_view> arguments) {
    OMSArguments& list = OMSArguments::global();
    list.clear();
    for (const std::string_view argument : arguments) list.push(argument);
    return invoke(method);
}

bool OMScriptableObject::attachHandler(std::string_view event, OMLink handler, OMLink second) {
    OMScriptableObjectProperty* found = property(event);
    if (!found || found->kind() != OMScriptableObjectProperty::Kind::Event) {
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

// ---------------------------------------------------------------------------- calls from scripts

OMSCall::OMSCall(Kind kind, std::string_view name)
    : outer_(callState().running), outerContext_(std::move(callState().context)) {
    const int length = static_cast<int>(name.size());
    callState().running = true;
    callState().context = kind == Kind::SettingProperty
                              ? OMFormat("Setting property \"%.*s\"\ncaused ", length, name.data())
                              : OMFormat("Invoking method \"%.*s\"\ncaused ", length, name.data());
}

OMSCall::~OMSCall() {
    callState().running = outer_;
    callState().context = std::move(outerContext_);
}

bool OMSCall::isRunning() { return callState().running; }

void OMSCall::noteIgnored(std::string_view event) {
    std::string& context = callState().context;
    if (context.size() >= kMaxCallContext) return;
    context += OMFormat("event \"%.*s\" (ignored)\n", static_cast<int>(event.size()), event.data());
    if (context.size() > kMaxCallContext) context.resize(kMaxCallContext);
}

void OMSCall::warn() {
    const std::string text = std::exchange(callState().context, {});
    if (YEngine* engine = YEngine::current()) engine->warn(text);
}

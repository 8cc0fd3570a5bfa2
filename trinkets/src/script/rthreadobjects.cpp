// The statements that use objects: set, get and play.
#include "omformat.h"
#include "omsarguments.h"
#include "omscall.h"
#include "omscrptb.h"
#include "omsregistry.h"
#include "rthread.h"
#include "rthreaddetail.h"
#include "yengine.h"

namespace {

constexpr std::string_view kNameProperty = "name";
constexpr std::string_view kSynchronously = "}";

} // namespace

// ---------------------------------------------------------------------------- set

void YThread::set(const Instruction& code) {
    engine_.spend(YEngine::kObjectCost);
    YVariable& word = *code.operands[0];
    OMScriptableObject* object = word.object();
    if (!object && !OMSRegistry::global().isClass(word.text())) {
        if (tracing_)
            detail("%s is not a trinket", word.text().c_str());
        else
            engine_.warn(
                OMFormat("%s is not a trinket,\nso \"set\" won't work here", word.text().c_str()));
        return;
    }
    const std::string name = textOf(*code.operands[1]);
    if (code.count == 2) {
        removeHandler(word, object, name);
        return;
    }
    pushArguments(code, 2, code.count - 1);
    const std::string value = textOf(*code.operands[code.count - 1]);
    if (value.starts_with('+'))
        attachHandler(word, object, name, value);
    else if (object)
        setProperty(code, *object, name, value);
    else
        engine_.warn(OMFormat("Property %s not found", name.c_str()));
}

void YThread::removeHandler(YVariable& word, OMScriptableObject* object, std::string_view event) {
    engine_.removeRecords(object, word.text(), event);
    if (object)
        object->attachHandler(event, nullptr, nullptr);
    else
        OMSRegistry::global().attachClassHandler(word.text(), nullptr);
    detail("remove the \"%s\" handler for %s", std::string(event).c_str(), word.text().c_str());
}

void YThread::attachHandler(YVariable& word, OMScriptableObject* object, std::string_view event,
                            std::string_view procedure) {
    const std::string name(event);
    const std::optional<int> handler = handlerOf(procedure);
    bool attached = false;
    if (handler && (!object || object->hasProperty(event))) {
        const std::string& variable = word.resolve().text();
        const std::weak_ptr<eventRecord> record =
            engine_.addRecord({this, *handler, object, variable, name});
        const OMLink deliver = [record] {
            // The record is kept for the delivery: the handler may discard it.
            if (const auto kept = record.lock()) kept->thread->deliverEvent(*kept);
        };
        attached = object ? object->attachHandler(event, deliver)
                          : OMSRegistry::global().attachClassHandler(word.text(), deliver);
        if (!attached) engine_.removeRecords(object, variable, event);
    }
    if (attached)
        detail("\"%s\" for %s will trigger procedure [%s]", name.c_str(), word.text().c_str(),
               std::string(procedure).c_str());
    else if (tracing_)
        detail("\"%s\" for %s not found", name.c_str(), word.text().c_str());
    if (!attached) engine_.warn(OMFormat("Event %s not found", name.c_str()));
}

void YThread::setProperty(const Instruction& code, OMScriptableObject& object,
                          std::string_view name, std::string_view value) {
    const std::string property(name);
    const std::string text(value);
    bool done = false;
    {
        const OMSCall call(OMSCall::Kind::SettingProperty, name);
        done = object.setProperty(name, value);
    }
    if (!done) {
        const bool absent = OMScriptableObject::status() == OMScriptableObject::Status::Absent;
        engine_.warn(absent ? OMFormat("Property %s not found", property.c_str())
                            : OMFormat("Procedure %s not found", text.c_str()));
    }
    if (!tracing_) return;
    const char* variable = code.operands[0]->text().c_str();
    YVariable& last = *code.operands[code.count - 1];
    if (!done) {
        detail("%s: \"%s\" is not a property", variable, property.c_str());
    } else if (last.kind() == YVariable::Kind::Constant) {
        detail("%s: property \"%s\" <- [%s]", variable, property.c_str(), text.c_str());
    } else if (&last.resolve() == &last) {
        detail("%s: property \"%s\" <- %s=[%s]", variable, property.c_str(), last.text().c_str(),
               text.c_str());
    } else {
        detail("%s: property \"%s\" <- %s(%s)=[%s]", variable, property.c_str(),
               last.text().c_str(), last.resolve().text().c_str(), text.c_str());
    }
}

// ---------------------------------------------------------------------------- get

void YThread::get(const Instruction& code) {
    engine_.spend(YEngine::kObjectCost);
    YVariable& word = *code.operands[0];
    YVariable& result = code.operands[code.count - 1]->resolve();
    const std::string name = textOf(*code.operands[1]);
    const std::string before = tracing_ ? textOf(result) : std::string();
    OMScriptableObject* object = word.object();
    // Any variable but RECEIVER knows its own name.
    const bool ownName = name == kNameProperty && word.index() != YHeap::kReceiver;
    if (!object && !ownName) {
        engine_.warn(
            OMFormat("%s is not a trinket,\nso \"get\" won't work here", word.text().c_str()));
        return;
    }
    pushArguments(code, 2, code.count - 1);
    std::optional<std::string> value;
    if (ownName)
        value = word.resolve().text();
    else if (name == kNameProperty)
        value = nameOfReceiver(*object);
    else
        value = object->getProperty(name);
    const char* property = name.c_str();
    if (!value) {
        engine_.warn(OMFormat("Property %s not found", property));
        detail("Property \"%s\" of %s not found", property, word.text().c_str());
        return;
    }
    result.setString(*value);
    if (tracing_)
        detail("Property \"%s\" of %s: %s was [%s] now [%s]", property, word.text().c_str(),
               result.text().c_str(), before.c_str(), textOf(result).c_str());
}

/// The name under which a handler was attached to the object.
std::string YThread::nameOfReceiver(OMScriptableObject& object) {
    const YVariable* owner = YHeap::current().holderOf(&object);
    const std::string ownName = owner ? owner->text() : std::string();
    const eventRecord* first = nullptr;
    bool mismatch = false;
    // Showing a warning runs no script, so the records stay as they are.
    for (const auto& record : engine_.records()) {
        if (record->receiver != &object) continue;
        if (!first) {
            first = record.get();
            mismatch = first->variable != ownName;
            if (mismatch)
                engine_.warn(
                    OMFormat("RECEIVER event name %s\ndoes not match\ntrinket real name %s",
                             first->variable.c_str(), ownName.c_str()));
        } else if (mismatch) {
            engine_.warn(OMFormat("Found eventRec holding the same trinket under the name %s",
                                  record->variable.c_str()));
        }
    }
    return first ? first->variable : ownName;
}

// ---------------------------------------------------------------------------- play

void YThread::play(const Instruction& code) {
    engine_.spend(YEngine::kObjectCost);
    YVariable& word = *code.operands[0];
    OMScriptableObject* object = word.object();
    if (!object) {
        if (tracing_)
            detail("%s is not a trinket", word.text().c_str());
        else
            engine_.warn(OMFormat("%s is not a trinket", word.text().c_str()));
        return;
    }
    int end = 1;
    while (end < code.count && code.operands[end]->text() != kSynchronously) ++end;
    const bool synchronous = end < code.count;
    const bool named = end > 1;
    const std::string method =
        named ? textOf(*code.operands[1]) : std::string(OMScriptableObject::kDefaultMethod);
    pushArguments(code, 2, end);
    if (named)
        detail("method \"%s\" for [%s]", method.c_str(), word.text().c_str());
    else
        detail("default method for [%s]", word.text().c_str());

    // What is done when the call returns is finished then.
    if (synchronous && object->methodLasts(method)) {
        *playing_ = true;
        const std::weak_ptr<bool> playing = playing_;
        object->addCompletionLink([playing] {
            if (const auto flag = playing.lock()) *flag = false;
        });
    }
    bool done = false;
    {
        const OMSCall call(OMSCall::Kind::InvokingMethod, method);
        done = object->invoke(method);
    }
    if (!done) {
        detail(" not found");
        if (named) engine_.warn(OMFormat("Method %s not found", method.c_str()));
    }
    // An object that is gone will not tell that it is finished.
    if (synchronous && (object->isRetired() || !done)) *playing_ = false;
    if (synchronous) detail("\nsynchronously");
    if (*playing_) setStatus(Status::Blocked);
}

#include "ystatement.h"

#include "omsarguments.h"
#include "omscall.h"
#include "omsclass.h"
#include "omscrptb.h"
#include "omsregistry.h"
#include "omunderway.h"
#include "rthread.h"
#include "yengine.h"
#include "ykeyword.h"
#include "ytrace.h"

namespace {

constexpr std::size_t kMaxSayLength = 255;
constexpr std::string_view kNameProperty = "name";
constexpr std::string_view kSynchronously = "}";

/// A word of the script with the variable that it means, for the trace.
std::string nameOf(const YVariable& word, const YVariable& meant) {
    return &word == &meant ? word.text() : word.text() + '(' + meant.text() + ')';
}

} // namespace

void YStatement::report(const std::string& what) {
    engine_.warn(program_.place(code_) + ": " + what);
}

void YStatement::pushArguments(int from, int to) {
    OMSArguments& arguments = OMSArguments::global();
    arguments.clear();
    for (int i = from; i < to; ++i) {
        YScratch scratch;
        arguments.push(operand(i).string(scratch));
    }
}

void YStatement::assign() {
    const OMUnderWay underWay;
    YVariable& name = word();
    YVariable& target = name.resolve();
    const std::string before = trace_.isOn() ? textOf(target) : std::string();
    YVariable* const value = code_.count < 2 ? nullptr : code_.operands[1];
    OMScriptableObject* const taken = value ? value->object() : nullptr;
    // An alias is pointed at the object's holder instead of being written through.
    YVariable& written = taken && name.ownership() == YVariable::Ownership::Alias ? name : target;
    OMScriptableObject* const lost = written.object();
    if (lost && lost != taken && written.ownership() == YVariable::Ownership::Owner)
        engine_.removeRecords(lost);
    if (!value) {
        engine_.warn(
            OMFormat("%s=\nis equivalent to\ndrop %s", name.text().c_str(), name.text().c_str()));
        target.makeEmpty();
    } else {
        const bool unsetName = value->kind() == YVariable::Kind::Name && !value->isDefined();
        const bool marked = name.kind() == YVariable::Kind::Compound &&
                            name.ownership() == YVariable::Ownership::Reference;
        if (unsetName && OMSRegistry::global().isClass(value->text())) {
            construct(target);
        } else if (taken && marked) {
            target.setReference(taken);
        } else if (taken) {
            const std::string copied(taken->classEntry() ? taken->classEntry()->name() : "It");
            if (!written.copyFrom(*value))
                report(OMFormat("%s cannot be copied, so %s is empty now.\n"
                                "For a second name of it write %s=&%s",
                                copied.c_str(), written.text().c_str(), name.text().c_str(),
                                value->text().c_str()));
        } else if (&value->resolve() != &target) {
            if (unsetName) engine_.warn(OMFormat("Variable %s is empty", value->text().c_str()));
            YScratch scratch;
            target.setString(value->string(scratch));
        }
    }
    if (!trace_.isOn()) return;
    const std::string source = code_.count > 1 ? operand(1).text() : std::string();
    trace_.detail("%s=%s: %s was [%s] now [%s]", name.text().c_str(), source.c_str(),
                  nameOf(name, target).c_str(), before.c_str(), textOf(target).c_str());
}

void YStatement::construct(YVariable& target) {
    const std::string& className = operand(1).text();
    if (code_.count == 2)
        engine_.warn(OMFormat("Constructor %s has no parameters", className.c_str()));
    engine_.spend(YEngine::kCreationCost);
    pushArguments(2, code_.count);
    std::unique_ptr<OMScriptableObject> object = OMSRegistry::global().create(className);
    const OMSR* entry = OMSRegistry::global().find(className);
    if (entry && !entry->scriptClass().create)
        report(className + " objects are made by the program alone");
    if (object)
        target.setObject(std::move(object));
    else
        target.setInteger(0);
}

bool YStatement::isTrue() {
    if (code_.count == 0) {
        trace_.detail("eternal loop");
        return true;
    }
    YVariable& operand = word();
    YScratch scratch;
    const bool result = !operand.string(scratch).starts_with('0');
    trace_.detail("condition [%s] is %s", operand.text().c_str(), result ? "true" : "false");
    return result;
}

void YStatement::runCommand() {
    const std::string& name = word().text();
    const YKeyword* command = YCommands::find(name);
    if (!command) {
        engine_.warn(OMFormat("Keyword \"%s\" is undefined", name.c_str()));
        return;
    }
    pushArguments(1, code_.count);
    engine_.spend(YEngine::kCommandCost);
    command->invoke();
}

void YStatement::say() {
    std::string line;
    std::size_t blank = 0; // before the next word
    for (int i = 0; i < code_.count; ++i) {
        YScratch scratch;
        const std::string_view word = operand(i).string(scratch);
        if (line.size() + blank + word.size() > kMaxSayLength) continue;
        line.append(blank, ' ');
        line += word;
        blank = 1;
    }
    engine_.writeDebugLine(line);
}

int YStatement::drop(int number) {
    const std::string& word = operand(number).text();
    if (word == "trinkets") {
        YHeap::current().emptyOwners();
    } else if (word != "[" && word != "var" && word != "script") {
        dropVariable(operand(number));
    } else if (++number < code_.count) {
        YVariable& named = operand(number);
        if (word == "[") {
            YHeap::current().emptyFamily(named.text());
        } else if (word == "script") {
            if (textOf(named) == "stack") engine_.emptyThreadStack();
        } else if (const int index = YHeap::current().lookup(textOf(named)); index >= 0) {
            YHeap::current().get(index).makeEmpty();
        }
    }
    return number;
}

void YStatement::dropVariable(YVariable& word) {
    YVariable& variable = word.resolve();
    const std::string before = trace_.isOn() ? textOf(variable) : std::string();
    OMScriptableObject* object = variable.object();
    if (object && !object->isOfProgram()) {
        engine_.removeRecords(object);
        YHeap::current().forget(object, true);
    } else {
        variable.makeEmpty();
        if (object)
            report(OMFormat("The object in %s is the program's own and stays.\n"
                            "Only the name is dropped",
                            word.text().c_str()));
    }
    trace_.detail("%s was [%s]  ", word.text().c_str(), before.c_str());
}

// ---------------------------------------------------------------------------- objects

/// The first word holds no object.
void YStatement::refuse(const char* consequence) {
    const std::string what = word().text() + " is not a trinket";
    if (trace_.isOn())
        trace_.detail("%s", what.c_str());
    else
        engine_.warn(what + consequence);
}

void YStatement::set() {
    engine_.spend(YEngine::kObjectCost);
    OMScriptableObject* object = word().object();
    if (!object && !OMSRegistry::global().isClass(word().text())) {
        refuse(",\nso \"set\" won't work here");
        return;
    }
    const std::string name = textOf(operand(1));
    if (code_.count == 2) {
        removeHandler(object, name);
        return;
    }
    pushArguments(2, code_.count - 1);
    const std::string value = textOf(last());
    if (value.starts_with('+'))
        attachHandler(object, name, value);
    else if (object)
        setProperty(*object, name, value);
    else
        engine_.warn(OMFormat("Property %s not found", name.c_str()));
}

void YStatement::removeHandler(OMScriptableObject* object, const std::string& event) {
    engine_.removeRecords(object, word().text(), event);
    if (object)
        object->attachHandler(event, nullptr, nullptr);
    else
        OMSRegistry::global().attachClassHandler(word().text(), nullptr);
    trace_.detail("remove the \"%s\" handler for %s", event.c_str(), word().text().c_str());
}

void YStatement::attachHandler(OMScriptableObject* object, const std::string& event,
                               const std::string& procedure) {
    const std::optional<int> handler = thread_.handlerOf(procedure);
    bool attached = false;
    if (handler && (!object || object->hasProperty(event))) {
        const std::string& variable = word().resolve().text();
        const OMLink deliver = engine_.addRecord({&thread_, *handler, object, variable, event});
        attached = object ? object->attachHandler(event, deliver)
                          : OMSRegistry::global().attachClassHandler(word().text(), deliver);
        if (!attached) engine_.removeRecords(object, variable, event);
    }
    if (attached) {
        trace_.detail("\"%s\" for %s will trigger procedure [%s]", event.c_str(),
                      word().text().c_str(), procedure.c_str());
    } else {
        trace_.detail("\"%s\" for %s not found", event.c_str(), word().text().c_str());
        engine_.warn(OMFormat("Event %s not found", event.c_str()));
    }
}

void YStatement::setProperty(OMScriptableObject& object, const std::string& name,
                             const std::string& value) {
    bool done = false;
    {
        const OMSCall call(OMSCall::Kind::SettingProperty, name);
        done = object.setProperty(name, value);
    }
    if (!done) {
        const bool absent = OMScriptableObject::status() == OMScriptableObject::Status::Absent;
        engine_.warn(absent ? OMFormat("Property %s not found", name.c_str())
                            : OMFormat("Procedure %s not found", value.c_str()));
    }
    if (!trace_.isOn()) return;
    const char* variable = word().text().c_str();
    YVariable& from = last();
    const bool isConstant = from.kind() == YVariable::Kind::Constant;
    const std::string source = isConstant ? "" : nameOf(from, from.resolve()) + '=';
    if (done)
        trace_.detail("%s: property \"%s\" <- %s[%s]", variable, name.c_str(), source.c_str(),
                      value.c_str());
    else
        trace_.detail("%s: \"%s\" is not a property", variable, name.c_str());
}

void YStatement::get() {
    engine_.spend(YEngine::kObjectCost);
    YVariable& result = last().resolve();
    const std::string name = textOf(operand(1));
    const std::string before = trace_.isOn() ? textOf(result) : std::string();
    OMScriptableObject* object = word().object();
    // Any variable but RECEIVER knows its own name.
    const bool ownName = name == kNameProperty && word().index() != YHeap::kReceiver;
    if (!object && !ownName) {
        engine_.warn(
            OMFormat("%s is not a trinket,\nso \"get\" won't work here", word().text().c_str()));
        return;
    }
    pushArguments(2, code_.count - 1);
    std::optional<std::string> value;
    if (ownName)
        value = word().resolve().text();
    else if (name == kNameProperty)
        value = nameOfReceiver(*object);
    else
        value = object->getProperty(name);
    const char* property = name.c_str();
    if (!value) {
        engine_.warn(OMFormat("Property %s not found", property));
        trace_.detail("Property \"%s\" of %s not found", property, word().text().c_str());
        return;
    }
    result.setString(*value);
    if (trace_.isOn())
        trace_.detail("Property \"%s\" of %s: %s was [%s] now [%s]", property,
                      word().text().c_str(), result.text().c_str(), before.c_str(),
                      textOf(result).c_str());
}

/// The name under which a handler was attached to the object.
std::string YStatement::nameOfReceiver(OMScriptableObject& object) {
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

void YStatement::play(const std::shared_ptr<bool>& playing) {
    engine_.spend(YEngine::kObjectCost);
    OMScriptableObject* object = word().object();
    if (!object) {
        refuse("");
        return;
    }
    int end = 1;
    while (end < code_.count && operand(end).text() != kSynchronously) ++end;
    const bool synchronous = end < code_.count;
    const bool named = end > 1;
    const std::string method =
        named ? textOf(operand(1)) : std::string(OMScriptableObject::kDefaultMethod);
    pushArguments(2, end);
    if (named)
        trace_.detail("method \"%s\" for [%s]", method.c_str(), word().text().c_str());
    else
        trace_.detail("default method for [%s]", word().text().c_str());

    // What is done when the call returns is finished then.
    if (synchronous && object->methodLasts(method)) {
        *playing = true;
        object->addCompletionLink([weak = std::weak_ptr(playing)] {
            if (const auto flag = weak.lock()) *flag = false;
        });
    }
    bool done = false;
    {
        const OMSCall call(OMSCall::Kind::InvokingMethod, method);
        done = object->invoke(method);
    }
    if (!done) {
        trace_.detail(" not found");
        if (named) engine_.warn(OMFormat("Method %s not found", method.c_str()));
    }
    // An object that is gone will not tell that it is finished.
    if (synchronous && (object->isRetired() || !done)) *playing = false;
    if (synchronous) trace_.detail("\nsynchronously");
}

#include "zorbetmps/check/namefacts.h"

#include "omsclass.h"
#include "yexpression.h"

#include <algorithm>

namespace mps {

namespace {

const NameFacts kNothing{};

/// Characters that end a name in a text: blanks, and what stands between names in the words of
/// actions.
constexpr std::string_view kNameEnds = " \t,;:\"'";

template <class Value>
bool addAll(std::set<Value>& to, const std::set<Value>& from) {
    const std::size_t before = to.size();
    to.insert(from.begin(), from.end());
    return to.size() != before;
}

bool setFlag(bool& flag, bool value) {
    const bool changes = value && !flag;
    flag |= value;
    return changes;
}

} // namespace

std::string ScriptFacts::keyOf(std::string_view name) {
    const std::size_t dot = name.find(YVariable::kSeparator);
    return std::string(name.substr(0, dot == name.npos ? dot : dot + 1));
}

ScriptFacts::ScriptFacts(const ScriptModel& model, ClassNamed classNamed, IsComponent isComponent)
    : model_(model), classNamed_(std::move(classNamed)), isComponent_(std::move(isComponent)),
      receivers_(model.procedures().size()) {
    NameFacts& system = facts(model.heap().get(YHeap::kSystem));
    system.holdsValue = system.isUnknown = true;
    NameFacts& result = facts(model.heap().get(YHeap::kResult));
    result.holdsValue = result.isList = true;
    facts(model.heap().get(YHeap::kReceiver)).isUnknown = true;
    for (std::size_t i = 0; i < model.procedures().size(); ++i) {
        const YVariable& name = *model.procedures()[i].name;
        if (model.procedureNamed(name) == &model.procedures()[i])
            facts(name).procedures.insert(static_cast<int>(i));
    }
    for (int i = 0; i < model.heap().count(); ++i) {
        const YVariable& word = model.heap().get(i);
        // Lists are filled while the script is read.
        if (word.elementCount() > 0) {
            NameFacts& family = names_[word.text() + YVariable::kSeparator];
            family.isList = family.holdsValue = true;
        }
        if (word.kind() == YVariable::Kind::Constant && YVariable::isQuote(word.text().front()))
            mention(word.text());
        if (word.expression() && word.expression()->shape().find('$') != std::string::npos)
            readsByText_ = true;
    }
    for (const Statement& statement : model.statements()) look(statement);
    bool changes = true;
    while (changes) {
        changes = false;
        for (const Statement& statement : model.statements()) changes |= follow(statement);
    }
}

NameFacts& ScriptFacts::facts(const YVariable& name) { return names_[keyOf(name.text())]; }

const NameFacts& ScriptFacts::of(const YVariable& name) const {
    const auto found = names_.find(keyOf(name.text()));
    return found == names_.end() ? kNothing : found->second;
}

bool ScriptFacts::isUnset(const YVariable& name) const { return !of(name).isSet(); }

bool ScriptFacts::isUsed(int procedure) const { return used_.contains(procedure); }

bool ScriptFacts::isMentioned(std::string_view name) const {
    const auto found = names_.find(keyOf(name));
    return found != names_.end() && found->second.isMentioned;
}

void ScriptFacts::mention(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t end = std::min(text.find_first_of(kNameEnds, at), text.size());
        if (end > at) {
            const auto named = names_.try_emplace(keyOf(text.substr(at, end - at))).first;
            named->second.isMentioned = true;
        }
        at = end + 1;
    }
}

bool ScriptFacts::isHandler(int procedure) const { return handlers_.contains(procedure); }

void ScriptFacts::read(const Word& word) {
    for (const YVariable* leaf : model_.leaves(*word.variable)) {
        if (leaf->kind() != YVariable::Kind::Name && leaf->kind() != YVariable::Kind::Compound)
            continue;
        NameFacts& named = facts(*leaf);
        ++named.reads;
        addAll(used_, named.procedures);
    }
}

void ScriptFacts::store(const Word& word, const Statement& statement) {
    if (!word.canHold()) return;
    facts(*word.variable).stores.push_back(&statement);
    if (word.kind() != YVariable::Kind::Compound) return;
    for (const YVariable* leaf : model_.leaves(*word.variable))
        if (leaf != word.variable && leaf->kind() != YVariable::Kind::Constant)
            ++facts(*leaf).reads;
}

void ScriptFacts::look(const Statement& statement) {
    const std::vector<Word>& words = statement.words;
    const auto readAll = [&](std::size_t from, std::size_t to) {
        for (std::size_t i = from; i < to; ++i) read(words[i]);
    };
    switch (statement.opcode) {
    case YOpcode::Assign: lookAtAssignment(statement); return;
    case YOpcode::Procedure:
        for (std::size_t i = 1; i < words.size(); ++i) {
            store(words[i], statement);
            facts(*words[i].variable).holdsValue = true;
        }
        return;
    case YOpcode::ForSetUp:
        if (words.size() < 2) {
            readAll(0, words.size());
        } else {
            store(words[0], statement);
            facts(*words[0].variable).holdsValue = true;
            readAll(1, words.size());
        }
        return;
    case YOpcode::Get:
        readAll(0, words.size() - 1);
        store(words.back(), statement);
        facts(*words.back().variable).holdsValue = true;
        return;
    case YOpcode::Command: readAll(1, words.size()); return;
    case YOpcode::Drop:
        for (const Word& word : words) readsByText_ |= word.text() == "var";
        for (const Word& word : words)
            if (word.kind() == YVariable::Kind::Compound) read(word);
        return;
    case YOpcode::Debug:
    case YOpcode::Yield: return;
    default: readAll(0, words.size());
    }
}

void ScriptFacts::lookAtAssignment(const Statement& statement) {
    if (statement.words.size() > 1) store(statement.words.front(), statement);
    for (std::size_t i = 1; i < statement.words.size(); ++i) read(statement.words[i]);
}

const OMSClass* ScriptFacts::constructed(const Statement& assignment) const {
    if (assignment.words.size() < 2 || !assignment.words[1].isName()) return nullptr;
    const YVariable& value = *assignment.words[1].variable;
    return isUnset(value) ? classNamed_(value.text()) : nullptr;
}

bool ScriptFacts::constructsUnknown(const Statement& assignment) const {
    if (assignment.words.size() < 2 || !assignment.words[1].isName()) return false;
    const YVariable& value = *assignment.words[1].variable;
    return isUnset(value) && isComponent_(value.text());
}

WordFacts ScriptFacts::of(const Word& word, const Statement& statement) const {
    WordFacts result;
    if (!word.canHold()) {
        result.holdsValue = true;
        result.isUnknown = word.kind() != YVariable::Kind::Constant;
        return result;
    }
    if (word.variable->index() == YHeap::kReceiver) {
        if (statement.procedure < 0) {
            result.isUnknown = true;
            return result;
        }
        const Receiver& receiver = receivers_[static_cast<std::size_t>(statement.procedure)];
        result.isUnknown = receiver.isUnknown || receiver.classes.empty();
        result.classes = receiver.classes;
        return result;
    }
    const NameFacts& named = of(*word.variable);
    result.isUnset = !named.isSet();
    result.isUnknown = named.isUnknown;
    result.holdsValue = named.holdsValue;
    result.classes = named.classes;
    result.procedures = named.procedures;
    return result;
}

/// Whether something new came out of the statement.
bool ScriptFacts::follow(const Statement& statement) {
    const std::vector<Word>& words = statement.words;
    switch (statement.opcode) {
    case YOpcode::Assign: {
        NameFacts& target = facts(*words.front().variable);
        if (words.size() < 2) return false;
        if (constructsUnknown(statement)) return setFlag(target.isUnknown, true);
        if (const OMSClass* made = constructed(statement)) {
            // When it cannot be made the name holds 0, which is no reason to use it as a number.
            return target.classes.insert(made).second;
        }
        const WordFacts value = of(words[1], statement);
        // A class that is misspelt, probably.
        if (value.isUnset && words.size() > 2) return setFlag(target.isUnknown, true);
        bool changes = addAll(target.classes, value.classes);
        changes |= addAll(target.procedures, value.procedures);
        changes |= setFlag(target.holdsValue, value.holdsValue || value.isUnset);
        return setFlag(target.isUnknown, value.isUnknown && words[1].canHold()) || changes;
    }
    case YOpcode::Set: return followHandler(statement);
    case YOpcode::Call: return followCall(statement);
    case YOpcode::Idle:
    case YOpcode::Schedule: {
        const WordFacts handler = of(words[1], statement);
        addAll(handlers_, handler.procedures);
        return addAll(used_, handler.procedures);
    }
    default: return false;
    }
}

bool ScriptFacts::followCall(const Statement& statement) {
    const std::vector<Word>& words = statement.words;
    if (!words.front().canHold()) return false;
    const WordFacts called = of(words.front(), statement);
    bool changes = addAll(used_, called.procedures);
    for (const int number : called.procedures) {
        const Procedure& procedure = model_.procedures()[static_cast<std::size_t>(number)];
        const std::vector<Word>& header = model_.statements()[procedure.statement].words;
        // Its text is passed, and the call is what is wrong then.
        for (std::size_t i = 1; i < std::min(words.size(), header.size()); ++i)
            if (words[i].canHold() && !of(words[i], statement).classes.empty())
                changes |= setFlag(facts(*header[i].variable).isUnknown, true);
    }
    if (statement.procedure < 0) return receive(called.procedures, {}, true) || changes;
    const Receiver from = receivers_[static_cast<std::size_t>(statement.procedure)];
    return receive(called.procedures, from.classes, from.isUnknown) || changes;
}

bool ScriptFacts::followHandler(const Statement& statement) {
    if (statement.words.size() < 3) return false;
    const WordFacts handler = of(statement.words.back(), statement);
    if (handler.procedures.empty()) return false;
    bool changes = addAll(used_, handler.procedures);
    addAll(handlers_, handler.procedures);
    const Word& object = statement.words.front();
    WordFacts owner = of(object, statement);
    if (owner.isUnset)
        if (const OMSClass* born = classNamed_(object.text())) owner.classes = {born};
    return receive(handler.procedures, owner.classes, owner.isUnknown || owner.classes.empty()) ||
           changes;
}

bool ScriptFacts::receive(const std::set<int>& procedures, const std::set<const OMSClass*>& classes,
                          bool isUnknown) {
    bool changes = false;
    for (const int procedure : procedures) {
        Receiver& receiver = receivers_[static_cast<std::size_t>(procedure)];
        changes |= addAll(receiver.classes, classes);
        changes |= setFlag(receiver.isUnknown, isUnknown);
    }
    return changes;
}

} // namespace mps

#include "zorbetmps/words.h"

#include "commands/commands.h"
#include "commands/vocabulary.h"
#include "omsclass.h"
#include "ycompiler.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string_view>

namespace mps {

namespace {

using Kind = OMScriptableObjectProperty::Kind;

std::string_view kindOf(const OMSEntry& row) {
    switch (row.kind) {
    case Kind::Method: return "method";
    case Kind::Event: return "event";
    case Kind::Data: break;
    }
    return "property";
}

using Json = nlohmann::ordered_json;

Json wordsOf(const OMSClass& known) {
    Json words = Json::array();
    for (const auto& rows : {known.vocabulary, known.passing})
        for (const OMSEntry& row : rows) {
            Json& word = words.emplace_back(
                Json{{"kind", kindOf(row)}, {"name", row.name}, {"help", row.help}});
            if (row.kind == Kind::Data) word["access"] = accessOf(row);
            if (rows.data() == known.passing.data()) word["passing"] = true;
        }
    return words;
}

void tell(std::ostream& out, const OMSClass& known) {
    out << "class " << (known.name.empty() ? "object" : known.name);
    if (known.base) out << ' ' << (known.base->name.empty() ? "object" : known.base->name);
    out << '\n';
    if (known.create) {
        out << "constructor " << known.name;
        if (!known.arguments.empty()) out << "  " << known.arguments;
        out << '\n';
    }
    for (const auto& rows : {known.vocabulary, known.passing})
        for (const OMSEntry& row : rows) {
            out << kindOf(row) << ' ' << row.name << (row.kind == Kind::Data ? " " : "")
                << accessOf(row);
            if (!row.help.empty()) out << "  " << row.help;
            out << '\n';
        }
}

} // namespace

std::vector<const OMSClass*> allClasses() {
    std::vector<const OMSClass*> all;
    for (const OMSClass* known : RGameClasses()) {
        std::vector<const OMSClass*> line;
        for (const OMSClass* from = known; from; from = from->base)
            if (std::ranges::find(all, from) == all.end()) line.push_back(from);
        all.insert(all.end(), line.rbegin(), line.rend());
    }
    return all;
}

std::string_view accessOf(const OMSEntry& row) {
    if (row.kind != Kind::Data) return "";
    return !row.set ? "read" : !row.get ? "write" : "read/write";
}

bool tellWords(const std::vector<std::string>& classes, std::ostream& out, std::ostream& errors) {
    const std::vector<const OMSClass*> all = allClasses();
    bool known = true;
    for (const std::string& name : classes) {
        const auto found = std::ranges::find(all, name, &OMSClass::name);
        if (found != all.end())
            tell(out, **found);
        else
            errors << "zorbet-mps words: there is no class " << name
                   << "; without a class it tells all\n";
        known &= found != all.end();
    }
    if (!classes.empty()) return known;
    for (const OMSClass* one : all) tell(out, *one);
    for (const RCommandWords& command : RCommands::words()) {
        out << "command " << command.name;
        if (!command.arguments.empty()) out << "  " << command.arguments;
        out << '\n';
    }
    return true;
}

void tellWordsJson(std::ostream& out) {
    Json classes = Json::array();
    for (const OMSClass* known : allClasses()) {
        Json& one = classes.emplace_back(Json{{"name", known->name}});
        if (known->base) one["base"] = known->base->name;
        if (known->create) one["arguments"] = known->arguments;
        one["words"] = wordsOf(*known);
    }
    Json commands = Json::array();
    for (const RCommandWords& command : RCommands::words())
        commands.push_back({{"name", command.name}, {"arguments", command.arguments}});
    constexpr int kIndent = 1;
    const Json all{
        {"classes", classes}, {"commands", commands}, {"keywords", YCompiler::keywords()}};
    out << all.dump(kIndent) << '\n';
}

} // namespace mps

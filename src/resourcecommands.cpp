#include "resourcecommands.h"

#include "omsarguments.h"
#include "resources.h"
#include "ykeyword.h"

namespace {

OMSArguments& arguments() { return OMSArguments::global(); }

/// An argument that is left out counts as 0.
bool nextFlag() { return arguments().nextInteger() != 0; }

} // namespace

struct RResourceCommands::Row {
    std::string_view name;
    void (RResourceCommands::*run)();
};

constexpr RResourceCommands::Row RResourceCommands::kRows[] = {
    {"ActivateDLL", &RResourceCommands::activateDLL},
    {"CacheDLL", &RResourceCommands::cacheDLL},
    {"DeactivateAllDLLs", &RResourceCommands::deactivateAllDLLs},
    {"DeactivateDLL", &RResourceCommands::deactivateDLL},
    {"UncacheAllDLLs", &RResourceCommands::uncacheAllDLLs},
    {"UncacheDLL", &RResourceCommands::uncacheDLL},
};

RResourceCommands::RResourceCommands(RResources& resources) : resources_(resources) {
    for (const Row& row : kRows) YCommands::add(row.name, OMLinkToObj(this, row.run));
}

void RResourceCommands::registerNames() {
    for (const Row& row : kRows) YCommands::add(row.name, nullptr);
}

void RResourceCommands::activateDLL() {
    const std::string name = arguments().next();
    resources_.activateDLL(name, nextFlag());
}

void RResourceCommands::cacheDLL() {
    const std::string name = arguments().next();
    RResources::CacheOptions options;
    options.inBackground = nextFlag();
    options.permanently = nextFlag();
    options.toHardDrive = nextFlag();
    resources_.cacheDLL(name, options);
}

void RResourceCommands::deactivateAllDLLs() { resources_.deactivateAllDLLs(nextFlag()); }

void RResourceCommands::deactivateDLL() { resources_.deactivateDLL(arguments().next()); }

void RResourceCommands::uncacheAllDLLs() { resources_.uncacheAllDLLs(nextFlag()); }

void RResourceCommands::uncacheDLL() { resources_.uncacheDLL(arguments().next()); }

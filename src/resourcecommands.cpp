#include "resourcecommands.h"

#include "omsarguments.h"
#include "resources.h"

namespace {

OMSArguments& arguments() { return OMSArguments::global(); }

/// An argument that is left out counts as 0.
bool nextFlag() { return arguments().nextInteger() != 0; }

} // namespace

constexpr RCommandRow<RResourceCommands> RResourceCommands::kRows[] = {
    {"ActivateDLL", &RResourceCommands::activateDLL},
    {"CacheDLL", &RResourceCommands::cacheDLL},
    {"DeactivateAllDLLs", &RResourceCommands::deactivateAllDLLs},
    {"DeactivateDLL", &RResourceCommands::deactivateDLL},
    {"UncacheAllDLLs", &RResourceCommands::uncacheAllDLLs},
    {"UncacheDLL", &RResourceCommands::uncacheDLL},
};

RResourceCommands::RResourceCommands(RResources& resources) : resources_(resources) {
    RRegisterCommands(*this, kRows);
}

void RResourceCommands::registerNames() { RRegisterCommandNames(kRows); }

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

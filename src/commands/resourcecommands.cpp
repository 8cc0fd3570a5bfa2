#include "commands/resourcecommands.h"

#include "resources/resources.h"

constexpr RCommandRow<RResourceCommands> RResourceCommands::kRows[] = {
    RCommand<&RResourceCommands::activateDLL>("ActivateDLL", "file [permanent]"),
    RCommand<&RResourceCommands::cacheDLL>("CacheDLL", "file [background] [permanent] [harddrive]"),
    RCommand<&RResourceCommands::deactivateAllDLLs>("DeactivateAllDLLs", "[force]"),
    RCommand<&RResourceCommands::deactivateDLL>("DeactivateDLL", "file"),
    RCommand<&RResourceCommands::uncacheAllDLLs>("UncacheAllDLLs", "[force]"),
    RCommand<&RResourceCommands::uncacheDLL>("UncacheDLL", "file"),
};

RResourceCommands::RResourceCommands(RResources& resources) : resources_(resources) {
    RRegisterCommands(*this, kRows);
}

std::vector<RCommandWords> RResourceCommands::words() { return RCommandWordsOf(kRows); }

void RResourceCommands::activateDLL(const std::string& name, bool permanently) {
    resources_.activateDLL(name, permanently);
}

void RResourceCommands::cacheDLL(const std::string& name, bool inBackground, bool permanently,
                                 bool toHardDrive) {
    resources_.cacheDLL(name, {inBackground, permanently, toHardDrive});
}

void RResourceCommands::deactivateAllDLLs(bool force) { resources_.deactivateAllDLLs(force); }

void RResourceCommands::deactivateDLL(const std::string& name) { resources_.deactivateDLL(name); }

void RResourceCommands::uncacheAllDLLs(bool force) { resources_.uncacheAllDLLs(force); }

void RResourceCommands::uncacheDLL(const std::string& name) { resources_.uncacheDLL(name); }

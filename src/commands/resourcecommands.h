// The global commands of the script language that activate, deactivate, cache and uncache resource
// files.
#pragma once

#include "commands/commandtable.h"

class RResources;

/// Registers the commands. They go when RCommands clears the registry, so this object must not go
/// before scripts have stopped.
class RResourceCommands {
  public:
    explicit RResourceCommands(RResources& resources);
    RResourceCommands(const RResourceCommands&) = delete;
    RResourceCommands& operator=(const RResourceCommands&) = delete;

    [[nodiscard]] static std::vector<RCommandWords> words();

  private:
    static const RCommandRow<RResourceCommands> kRows[];

    // A flag that is left out is off.
    void activateDLL(const std::string& name, bool permanently);
    void cacheDLL(const std::string& name, bool inBackground, bool permanently, bool toHardDrive);
    void deactivateAllDLLs(bool force);
    void deactivateDLL(const std::string& name);
    void uncacheAllDLLs(bool force);
    void uncacheDLL(const std::string& name);

    RResources& resources_;
};

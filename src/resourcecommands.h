// The global commands of the script language that activate, deactivate, cache and uncache resource
// files.
#pragma once

#include "commandtable.h"

class RResources;

/// Registers the commands. They go when RCommands clears the registry, so this object must not go
/// before scripts have stopped.
class RResourceCommands {
  public:
    explicit RResourceCommands(RResources& resources);
    RResourceCommands(const RResourceCommands&) = delete;
    RResourceCommands& operator=(const RResourceCommands&) = delete;

    /// Registers the names alone, for tools that compile scripts and run none.
    static void registerNames();

  private:
    static const RCommandRow<RResourceCommands> kRows[];

    void activateDLL();
    void cacheDLL();
    void deactivateAllDLLs();
    void deactivateDLL();
    void uncacheAllDLLs();
    void uncacheDLL();

    RResources& resources_;
};

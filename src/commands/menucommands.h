// What the commands of the menu do, and which keys are commands too.
#pragma once

#include "omlink.h"

#include <utility>

class EffectsWindow;
class OMApp;

/// Handles the application's commands while it lives. Application and window must outlive it.
class RMenuCommands {
  public:
    RMenuCommands(OMApp& app, EffectsWindow& window);
    ~RMenuCommands();
    RMenuCommands(const RMenuCommands&) = delete;
    RMenuCommands& operator=(const RMenuCommands&) = delete;

    /// Called when the exit screen opens: a movie that is current begins to collect.
    void setMovieCollector(OMLink link) { movieCollector_ = std::move(link); }

  private:
    bool handle(int command);
    void openExitScreen();
    void toggleFlash();

    OMApp& app_;
    EffectsWindow& window_;
    OMLink movieCollector_;
};

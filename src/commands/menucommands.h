// What the commands of the menu do, and which keys are commands too.
#pragma once

class EffectsWindow;
class OMApp;

/// Handles the application's commands. The window must outlive it, and it all passes of the
/// application's loop.
class RMenuCommands {
  public:
    RMenuCommands(OMApp& app, EffectsWindow& window);
    RMenuCommands& operator=(RMenuCommands&&) = delete;

  private:
    bool handle(int command);
    void openExitScreen();
    void toggleFlash();

    OMApp& app_;
    EffectsWindow& window_;
};

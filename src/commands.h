// The global commands of the script language that the game offers: scenes and transitions, boxes,
// random numbers, the output file, the log.
#pragma once

#include "commandtable.h"
#include "omlink.h"

#include "platform/files.h"

#include <memory>
#include <utility>

class EffectsWindow;

/// Registers the commands while it lives.
class RCommands {
  public:
    /// The window must outlive the commands.
    explicit RCommands(EffectsWindow& window);
    ~RCommands();
    RCommands(const RCommands&) = delete;
    RCommands& operator=(const RCommands&) = delete;

    /// Registers the names alone, with functions that do nothing, for whoever compiles scripts
    /// without running them.
    static void registerNames();

    /// Sets the palette again that a movie took the place of; called on screens of 8 bits only.
    void setPaletteRestorer(OMLink restorer) { paletteRestorer_ = std::move(restorer); }

  private:
    static const RCommandRow<RCommands> kRows[];

    // One function a command, in the order of their names.
    void closeFile();
    void displayScreen();
    void endTransition();
    void freezeScreen();
    void goToBlack();
    void intersectTest();
    void logMessage();
    void messageBox();
    void openFile();
    void randomNumber();
    void restorePalette();
    void scene();
    void setCorralTrinketNormalization();
    void setDebugLevel();
    void setDoubleClicksEnabled();
    void setUseEmbeddedAnimationCoordinates();
    void startTransition();
    void writeToFile();

    EffectsWindow& window_;
    OMLink paletteRestorer_;
    std::unique_ptr<platform::File> output_; ///< at most one output file
};

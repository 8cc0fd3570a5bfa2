// The global commands of the script language that the game offers: scenes and transitions, boxes,
// random numbers, the output file, the log, switches.
#pragma once

#include "commands/commandtable.h"
#include "commands/outputfile.h"
#include "omlink.h"

#include <optional>
#include <string>
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

    [[nodiscard]] static std::vector<RCommandWords> words();

    /// Sets the palette again that a movie took the place of; called on screens of 8 bits only.
    void setPaletteRestorer(OMLink restorer) { paletteRestorer_ = std::move(restorer); }

  private:
    static const RCommandRow<RCommands> kRows[];

    // One function a command, in the order of their names.
    void closeFile();
    void displayScreen();
    void endTransition(bool quickly);
    void freezeScreen();
    void goToBlack();
    void intersectTest(const std::string& first, const std::string& second);
    void logMessage(const std::string& text);
    void messageBox(const std::string& text);
    void openFile(const std::string& path);
    void randomNumber(int from, int to, std::optional<int> exclude);
    void restorePalette();
    void scene(int image, std::optional<int> palette);
    void setAnswerGoHomeSound(int id);
    void setAnswerPickUpSound(int id);
    void setAnswerSnapSound(int id);
    void setCorralTrinketNormalization(bool on);
    void setDebugLevel(int level);
    void setDoubleClicksEnabled(bool on);
    void setSpeechCaching(bool on);
    void setUseEmbeddedAnimationCoordinates(bool on);
    void startTransition();
    void writeToFile(std::string text, const std::string& newLine);

    EffectsWindow& window_;
    OMLink paletteRestorer_;
    ROutputFile output_;
};

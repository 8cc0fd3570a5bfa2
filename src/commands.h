// The global commands of the script language that the game offers: scenes and transitions, boxes,
// random numbers, the output file, the log.
#pragma once

#include "platform/files.h"

#include <memory>
#include <string>

class EffectsWindow;

/// Registers the commands while it lives.
class RCommands {
  public:
    /// The window must outlive the commands.
    explicit RCommands(EffectsWindow& window);
    ~RCommands();
    RCommands(const RCommands&) = delete;
    RCommands& operator=(const RCommands&) = delete;

  private:
    void scene();
    void endTransition();
    void openFile();
    void writeToFile();

    EffectsWindow& window_;
    std::unique_ptr<platform::File> output_; ///< at most one output file
};

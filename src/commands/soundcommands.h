// The global commands of the script language that play sounds.
#pragma once

#include "commands/commandtable.h"

class RGameSounds;

/// Registers the commands. They go when RCommands clears the registry, so this object must not go
/// before scripts have stopped.
class RSoundCommands {
  public:
    explicit RSoundCommands(RGameSounds& sounds);
    RSoundCommands(const RSoundCommands&) = delete;
    RSoundCommands& operator=(const RSoundCommands&) = delete;

    [[nodiscard]] static std::vector<RCommandWords> words();

  private:
    static const RCommandRow<RSoundCommands> kRows[];

    void killSound(int handle);
    void pauseSound(int handle);
    void playSound(int id, bool loop);
    void resumeSound(int handle);

    RGameSounds& sounds_;
};

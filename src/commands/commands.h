// The global commands of the script language that the game offers: scenes and transitions, boxes,
// sounds, resource files, random numbers, the output file, the log, switches.
#pragma once

#include "commands/outputfile.h"
#include "puzzles/ranswer.h"

#include <string_view>
#include <tuple>
#include <vector>

class EffectsWindow;
class RGameSounds;
class RGameTexts;
class RMovies;
class RResources;

/// What authors are told of a command.
struct RCommandWords {
    std::string_view name;
    std::string_view arguments;
};

/// All commands, registered while it lives. Those of components go with them.
class RCommands {
  public:
    /// What the commands work on.
    using Parts = std::tuple<EffectsWindow&, RResources&, RGameSounds&, RMovies&, ROutputFile&,
                             RDefaultAnswerSounds&, RGameTexts&>;

    /// The parts of the game must outlive the commands.
    RCommands(EffectsWindow& window, RResources& resources, RGameSounds& sounds, RMovies& movies,
              RGameTexts& texts);
    ~RCommands();
    RCommands& operator=(RCommands&&) = delete;

    [[nodiscard]] static std::vector<RCommandWords> words();

  private:
    ROutputFile output_;
    RDefaultAnswerSounds answerSounds_;
    Parts parts_;
};

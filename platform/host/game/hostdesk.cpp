#include "platform/host/game/hostdesk.h"

#include <utility>

namespace platform {

/// What a line brings about may want others to be run, which come in the next pass.
void HostDesk::runLines() {
    for (const std::string& line : std::exchange(lines_, {})) {
        lineRuns(line);
        lineHasRun(line, game_ ? game_->run(line) : "there is no game");
    }
}

} // namespace platform

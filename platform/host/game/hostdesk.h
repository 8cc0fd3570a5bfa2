// What the desk of an author has on every back end: the profile, which goes into a file, and the
// lines that are to be run in the game.
#pragma once

#include "platform/authordesk.h"

#include <fstream>
#include <string>
#include <vector>

namespace platform {

class HostDesk : public AuthorDesk {
  public:
    /// The file is opened at once, while the program may still write where it likes; empty: none.
    explicit HostDesk(const std::string& profile) {
        if (!profile.empty()) profile_.open(profile, std::ios::binary);
    }

    [[nodiscard]] bool wantsProfile() const override { return profile_.is_open(); }
    void giveProfile(std::string_view report) override { profile_ << report << std::flush; }
    void setInspection(Inspection* game) override { game_ = game; }

    /// Has the game carry out a line of the script language at the end of this pass, or of the
    /// next one. Latin-1.
    void runLater(std::string_view line) { lines_.emplace_back(line); }
    [[nodiscard]] bool hasLines() const { return !lines_.empty(); }
    /// Runs the lines that wait. To be called at the end of each pass, where no script is at work.
    void runLines();

  protected:
    /// Null while there is no game.
    [[nodiscard]] Inspection* game() const { return game_; }
    /// A line is about to run; then, what came of it.
    virtual void lineRuns(std::string_view /*line*/) {}
    virtual void lineHasRun(std::string_view /*line*/, std::string_view /*result*/) {}

  private:
    std::ofstream profile_;
    Inspection* game_ = nullptr;
    std::vector<std::string> lines_;
};

} // namespace platform

// One test of a game, and how it is played.
#pragma once

#include "gametest/gametests.h"

#include "platform/host/files/scratchfolder.h"
#include "platform/host/visit/timeline.h"

namespace gametest {

class GameTest {
  public:
    /// `input` is the test's file. Both must outlive the test.
    GameTest(const std::filesystem::path& input, const Options& options);

    [[nodiscard]] Result run();

  private:
    void play(const platform::Visit& visit);
    void readReport();
    void comparePictures(const platform::Visit& visit);
    void comparePicture(const std::string& name);
    void keepWhatIsLeft() const;
    [[nodiscard]] std::filesystem::path results() const { return options_.results / result_.name; }
    [[nodiscard]] std::filesystem::path place(const char* name) const {
        return folder_.path() / name;
    }
    void fail(std::string what) { result_.faults.push_back(std::move(what)); }

    const std::filesystem::path& input_;
    const Options& options_;
    platform::ScratchFolder folder_;
    Result result_;
};

} // namespace gametest

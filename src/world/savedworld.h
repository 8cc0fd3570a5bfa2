// The memory of the world with the data file that keeps it, in a home directory that one program
// has for itself at a time. Whenever what is played cannot be kept the player is told where and
// why, and what to do: once, and again only after something has been stored in between.
//
// Nothing is stored in a run that began while another program had the home directory and went on
// all the same, nor over a data file that is there and could not be read.
#pragma once

#include "startup/warnings.h"
#include "world/safefile.h"
#include "world/worldmemory.h"

#include "platform/files.h"

#include <optional>
#include <string>
#include <system_error>

class SavedWorld {
  public:
    static constexpr const char* kDataFile = "ZORBET.DAT"; ///< of the home directory

    /// Reads the globals. The directory ends in a backslash and is made when it is missing; if
    /// another program has it, the player is asked whether to try again.
    explicit SavedWorld(const std::string& homeDirectory);
    SavedWorld& operator=(SavedWorld&&) = delete;

    [[nodiscard]] RWarningSwitches switches();

    /// Saves the world; there is none afterwards.
    void shutDown() { memory_.shutDown(); }
    /// What the program does when it must end in the middle.
    void saveAtOnce();

  private:
    std::optional<std::string> read();
    void write(const std::string& bytes);

    [[nodiscard]] platform::FolderClaim claimHome();
    /// Whether the home directory is this program's, or nobody's.
    [[nodiscard]] bool mayStore();
    void tellOnce(const std::string& text);
    void tellNotKept(std::error_code why);

    std::string home_;
    bool told_ = false;
    bool withoutStoring_ = false; ///< another program has the home directory
    platform::FolderClaim claim_;
    RSafeFile file_;
    bool keptBeside_ = false; ///< a file that was read in part will not get lost
    world::WorldMemory memory_;
};

// Writes a visit into an input file while it takes place, so that what was written of a visit that
// ends in the middle is whole.
#pragma once

#include "platform/host/visit/timeline.h"

#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

class VisitWriter {
  public:
    /// Host path name.
    explicit VisitWriter(const std::string& file);
    ~VisitWriter() { writeTurns(); }
    VisitWriter& operator=(VisitWriter&&) = delete;

    /// Makes the file, while the program may still write where it likes. False, with errno, when
    /// that cannot be; a file that is there is not replaced.
    [[nodiscard]] bool open();
    /// Where pictures of the visit belong: the folder, and the file's name without its extension.
    [[nodiscard]] const std::string& folder() const { return folder_; }
    [[nodiscard]] const std::string& name() const { return name_; }

    /// What it begins with. An empty scene is the game's first one, an empty language its own;
    /// without data there is no data file.
    void begin(std::uint32_t seed, std::string_view scene, std::string_view language,
               std::string_view data);
    void write(std::uint32_t timeMs, const Happening& what);
    /// One turn of the main loop is over.
    void turn(std::uint32_t ms);

  private:
    void writeTurns();
    void line(const std::string& text);

    std::string path_;
    std::ofstream file_;
    bool hasFailed_ = false; ///< and that was told
    std::string folder_;
    std::string name_;
    std::vector<Turns> turns_; ///< not written yet
    std::uint64_t turnsMs_ = 0;
};

} // namespace platform

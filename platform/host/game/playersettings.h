// What the player chose of the machine for one game, such as a full screen, kept in a small file of
// lines "key=value" beside the saved games. Lines that are not understood stay.
#pragma once

#include "platform/files.h"

#include <string>
#include <string_view>
#include <vector>

namespace platform {

class PlayerSettings {
  public:
    /// `files` must outlive the settings.
    explicit PlayerSettings(Files& files) : files_(files) {}

    /// Reads what was kept in the file, which need not be there; from now on changes go there. The
    /// path is in the form of `Files`.
    void open(std::string_view path);

    /// Empty when nothing was chosen.
    [[nodiscard]] std::string value(std::string_view key) const;
    /// Keeps the value and replaces the file as a whole. False when it could not be written.
    bool set(std::string_view key, std::string_view value);

  private:
    struct Entry {
        std::string key; ///< empty for a line that is no entry
        std::string value;
    };

    Files& files_;
    std::string path_;
    std::vector<Entry> entries_;
};

} // namespace platform

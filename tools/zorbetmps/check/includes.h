// Where a script's includes are read from. The game reads them from its current directory, and
// from "scripts\" there; a script that is checked lies in that directory or in a folder of it. So a
// name is looked for in the script's folder, in "scripts" there, in the folder above, and in
// "scripts" there, by the naming rules of the game: "\" between folders, letter case ignored.
#pragma once

#include "platform/host/files/hostfiles.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mps {

class Includes {
  public:
    /// `script` is a host path.
    explicit Includes(const std::string& script);

    /// The host path of an included file, beginning as the script's own path does where it can;
    /// none when there is no such file.
    [[nodiscard]] std::optional<std::string> find(std::string_view name) const;
    /// The names of all scripts that would be found.
    [[nodiscard]] std::vector<std::string> scripts() const;

  private:
    struct Folder {
        std::string given; ///< as the script's path has it
        std::string real;  ///< absolute, without links
        std::unique_ptr<platform::HostFiles> files;
    };
    static Folder folder(const std::string& given);
    static std::string shownPath(const Folder& folder, const std::string& hostPath);

    std::vector<Folder> folders_; ///< in the order of the search
};

/// At most `limit` bytes and one more of a host file; none, and the reason in `why`, when it cannot
/// be read.
[[nodiscard]] std::optional<std::string> readHostFile(const std::string& path, std::size_t limit,
                                                      std::string& why);

} // namespace mps

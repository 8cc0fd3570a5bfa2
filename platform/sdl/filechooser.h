// Choosing a file with the desktop's own dialog, which a helper program (zenity or kdialog) shows:
// SDL has none.
#pragma once

#include <functional>
#include <string>
#include <variant>

namespace platform {

struct FileQuestion {
    std::string title;   ///< UTF-8
    std::string pattern; ///< "*.mps"; matched without regard to case
    std::string folder;  ///< host path where the dialog starts
};

struct NoFileChooser {}; ///< neither helper is installed

/// The chosen file's host path, empty when the person chose none. `stillWaiting` is called again
/// and again; its false ends the helper.
[[nodiscard]] std::variant<std::string, NoFileChooser>
chooseFile(const FileQuestion& question, const std::function<bool()>& stillWaiting);

} // namespace platform

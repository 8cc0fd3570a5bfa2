// Where the program finds itself: its configuration file, its home directory and the CD drive.
#pragma once

#include <string>

struct RConfiguration {
    std::string iniFile;       ///< full path of "ZORBET.INI" in the current directory
    std::string homeDirectory; ///< holds caches and the data file; ends in a backslash
    std::string cdDrive;       ///< root of the CD, "D:\" when the file does not name one
    bool useDirectDraw = false;
    bool displayFullScreen = false;

    /// Reads the file and logs what was found.
    [[nodiscard]] static RConfiguration read(std::string homeDirectory);
    /// The current directory when it holds a writable configuration file, else the directory that
    /// the machine keeps for programs.
    [[nodiscard]] static std::string findHomeDirectory();
};

// What a game's folder says of itself, in its file "game.ini", read before the program starts:
//
//     identifier=org.example.pond        names the folder of the player's saved games
//     title=The Pond                     of the window
//     version=1.2
//     icon=art/pond.png                  a PNG file in the game's folder
//     languages=pt,en                    of the program's own boxes; see chooseLanguage
//     author=Ana Silva <ana@example.org> who made it
//     about=Count what lives in a pond   in a line, for who chooses a game
//
//     [boxes en]                         texts of boxes in a language; see ProgramTexts
//     reallyLeave=Do you want to go home?
//
// Every entry may be missing, and so may the file. It is UTF-8; a text that is none is Latin-1.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A text of the program that the game replaces.
struct BoxText {
    std::string place; ///< file and line, for messages
    std::string language;
    std::string name;
    std::string text; ///< UTF-8
};

struct GameInfo {
    std::string identifier;               ///< 1 to 64 of A-Z a-z 0-9 "." "_" "-"; never empty
    std::string title;                    ///< UTF-8; the folder's name when the file gives none
    std::string version;                  ///< UTF-8
    std::string icon;                     ///< host path of a file in the game's folder; empty: none
    std::vector<std::string> languages{}; ///< tags such as "pt" or "pt-BR"
    std::string author{};                 ///< UTF-8, as is the next one
    std::string about{};
    std::vector<BoxText> boxTexts{};
    /// What of the file cannot be used, in sentences for people, each with its place. Such entries
    /// count as missing.
    std::vector<std::string> problems{};
};

/// `content` is a folder of the host. Without an identifier of its own a game is known by the real
/// path of its folder, so that one that is moved begins anew.
[[nodiscard]] GameInfo readGameInfo(const std::string& content);

/// Only what the file says: identifier and title are empty when it does not tell them.
[[nodiscard]] GameInfo readGameFile(const std::string& content);

/// Sixteen digits that tell folders apart, by the real path.
[[nodiscard]] std::string pathDigest(std::string_view path);

/// Whether `tag` is or belongs to `language`: "pt-BR" belongs to "pt". Case does not matter.
[[nodiscard]] bool belongsToLanguage(std::string_view tag, std::string_view language);

/// The first of `wanted` that is among the game's languages, else the game's first; empty when it
/// has none.
[[nodiscard]] std::string chooseLanguage(const GameInfo& game,
                                         const std::vector<std::string>& wanted);

/// What the person who uses this computer reads, best first, by the environment's LANGUAGE, LC_ALL,
/// LC_MESSAGES and LANG.
[[nodiscard]] std::vector<std::string> systemLanguages();

} // namespace platform

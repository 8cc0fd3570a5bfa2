#include "bundle/bundledgame.h"

#include "filesystem.h"
#include "text.h"

#include "formats/base/latin1.h"
#include "platform/host/game/gameinfo.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <string_view>

namespace rsc {

namespace {

namespace fs = std::filesystem;

constexpr int kMostIconSide = 1024; ///< pixels, as the window takes it

bool isDecimal(char c) { return c >= '0' && c <= '9'; }
bool isSmallOrDigit(char c) { return (c >= 'a' && c <= 'z') || isDecimal(c); }

/// As Debian's policy wants names of packages (5.6.1).
bool isName(std::string_view text) {
    constexpr std::size_t kMostName = 60;
    return text.size() >= 2 && text.size() <= kMostName && isSmallOrDigit(text.front()) &&
           std::ranges::all_of(
               text, [](char c) { return isSmallOrDigit(c) || c == '+' || c == '-' || c == '.'; });
}

/// As Debian's policy wants versions of packages that have no other makers (5.6.12).
bool isVersion(std::string_view text) {
    return !text.empty() && isDecimal(text.front()) && std::ranges::all_of(text, [](char c) {
        return isDecimal(c) || formats::isAsciiLetter(c) || c == '.' || c == '+' || c == '~';
    });
}

std::string nameOf(std::string_view identifier) {
    std::string name = formats::lowerAscii(identifier.substr(identifier.rfind('.') + 1));
    std::ranges::replace(name, '_', '-');
    return name;
}

/// What people see and what follows from it, checked entry by entry.
class GameFileReader {
  public:
    GameFileReader(const fs::path& folder, const std::string& name)
        : folder_(folder), info_(platform::readGameFile(folder.string())),
          name_(name.empty() ? nameOf(info_.identifier) : name) {}

    BundledGame read() {
        for (const std::string& problem : info_.problems) tell(problem);
        want(!info_.identifier.empty(),
             "says no identifier, by which the players' saved games are found; write one that "
             "nobody else has, such as identifier=org.example.pond");
        want(!info_.title.empty(), "says no title; write it as title=The Pond");
        want(!info_.version.empty(), "says no version; write version=1.0");
        want(info_.version.empty() || isVersion(info_.version),
             "the version " + inQuotes(info_.version) +
                 " is none that packages have; one begins with a digit and goes on with letters, "
                 "digits, \".\", \"+\" and \"~\", such as version=1.2, or 1.2~beta for what comes "
                 "before it");
        checkName();
        readIcon();
        if (!problems_.empty()) throw Refusal(problems_);
        return std::move(game_);
    }

  private:
    void checkName() {
        if (info_.identifier.empty()) return;
        constexpr std::array<std::string_view, 2> kTaken{"zorbet", "zorbet-sample"};
        want(std::ranges::find(kTaken, name_) == kTaken.end(),
             inQuotes(name_) + " is the name of the engine's own package; name the game by "
                               "--name, such as --name pond");
        want(isName(name_), inQuotes(name_) +
                                " is no name for a program; name the game by --name, with two or "
                                "more of a-z, digits, \"+\", \"-\" and \".\", the first a letter "
                                "or a digit, such as --name pond");
    }

    void readIcon() {
        if (info_.icon.empty()) {
            want(!info_.problems.empty(),
                 "says no icon for the menu; write icon=art/pond.png, a PNG file in the game's "
                 "folder");
            return;
        }
        game_ = {name_,
                 info_.identifier,
                 info_.title,
                 info_.version,
                 info_.author,
                 info_.about,
                 info_.languages,
                 fs::path(info_.icon).lexically_relative(fs::canonical(folder_)),
                 {}};
        try {
            game_.icon = Picture::fromPng(readWholeFile(info_.icon));
            want(game_.icon.width() <= kMostIconSide && game_.icon.height() <= kMostIconSide,
                 "the icon " + game_.iconFile.string() +
                     " has a side of more than 1024 pixels; make it smaller");
        } catch (const Refusal& refusal) {
            want(false, "the icon " + game_.iconFile.string() + " " + refusal.what() +
                            "; save it as a PNG file");
        }
    }

    void want(bool isRight, const std::string& problem) {
        if (!isRight) tell((folder_ / "game.ini").string() + ": " + problem);
    }

    void tell(const std::string& problem) {
        problems_ += (problems_.empty() ? "" : "\n") + problem;
    }

    fs::path folder_;
    platform::GameInfo info_;
    std::string name_;
    BundledGame game_;
    std::string problems_;
};

} // namespace

BundledGame readBundledGame(const fs::path& folder, const std::string& name, std::ostream& notes) {
    BundledGame game = GameFileReader(folder, name).read();
    const auto note = [&](const std::string& text) {
        notes << (folder / "game.ini").string() << ": warning: " << text << "\n";
    };
    if (std::ranges::count(game.identifier, '.') < 2)
        note("the identifier " + inQuotes(game.identifier) +
             " is not of the form that software centres want, such as org.example.pond");
    if (game.author.find('<') == std::string::npos)
        note("it says no author with an address, which packages tell; write author=Ana Silva "
             "<ana@example.org>");
    if (game.about.empty())
        note("it does not say in a line what the game is about; write about=Count what lives in a "
             "pond");
    return game;
}

} // namespace rsc

#include "bundle/bundletexts.h"

#include "bundle/texts/texts.h"

#include "platform/host/game/gameinfo.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace rsc {

namespace {

/// What is put in for words in large letters between "@"s; every other "@" stays.
using Values = std::vector<std::pair<std::string_view, std::string>>;

std::string filled(std::string_view text, const Values& values) {
    std::string result;
    for (;;) {
        const std::size_t begin = text.find('@');
        result += text.substr(0, begin);
        if (begin == std::string_view::npos) return result;
        text.remove_prefix(begin + 1);
        const std::string_view word = text.substr(0, text.find('@'));
        const auto found = std::ranges::find(values, word, &Values::value_type::first);
        if (found == values.end()) {
            result += '@';
        } else {
            result += found->second;
            text.remove_prefix(word.size() + 1);
        }
    }
}

/// With other words in place of some characters.
std::string replaced(std::string_view text,
                     const std::vector<std::pair<char, std::string_view>>& marks) {
    std::string result;
    for (const char c : text) {
        const auto found = std::ranges::find(marks, c, &std::pair<char, std::string_view>::first);
        result += found == marks.end() ? std::string(1, c) : std::string(found->second);
    }
    return result;
}

std::string inShell(std::string_view text) {
    return '\'' + replaced(text, {{'\'', "'\\''"}}) + '\'';
}
std::string inEntry(std::string_view text) { return replaced(text, {{'\\', "\\\\"}}); }
std::string inXml(std::string_view text) {
    return replaced(text, {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}});
}

std::string inManual(std::string_view text) {
    return replaced(text, {{'\\', "\\e"}, {'-', "\\-"}, {'"', "\\(dq"}});
}

/// The part of "NAME <ADDRESS>" that is a name.
std::string nameOfAuthor(const BundledGame& game) {
    std::string name = game.author.substr(0, game.author.find('<'));
    while (name.ends_with(' ')) name.pop_back();
    return name;
}

/// Rows of a shell's "case".
std::string packageCases(const Engine& engine) {
    std::string cases = "    linux-vdso*) ;;";
    for (const NeededLibrary& library : engine.needs)
        if (!library.package.empty())
            cases +=
                "\n    " + library.file + ") packages=\"$packages " + library.package + "\" ;;";
    return cases;
}

/// What a text for players is put together of.
struct ReadmeWords {
    const char* file;
    std::string_view text;
    const char* by;
    const char* orLater;
    const char* savesAtHome;   ///< the folder follows
    const char* savesStay;     ///< follows the folder
    const char* savesWithGame; ///< goes before what is told of the home folder
    const char* see;
};

constexpr ReadmeWords kEnglish{"README.txt",
                               kReadme,
                               "by ",
                               " or later",
                               "In your home folder, in .local/share/zorbet/",
                               ". They stay when the game is removed.",
                               "In the folder \"game\" here. Where nobody may write in that:\n  ",
                               "; see "};
constexpr ReadmeWords kPortuguese{"LEIAME.txt",
                                  kReadmeInPortuguese,
                                  "de ",
                                  " ou mais recente",
                                  "Na sua pasta pessoal, em .local/share/zorbet/",
                                  ". Ficam lá quando se apaga o jogo.",
                                  "Aqui na pasta \"game\". Se ninguém pode escrever nela:\n  ",
                                  "; veja "};

std::string libraryLines(const Engine& engine, const ReadmeWords& words) {
    constexpr std::size_t kWidth = 26; ///< of the names of files
    std::string lines;
    for (const NeededLibrary& library : engine.needs) {
        std::string line = "      " + library.file + " ";
        line.resize(std::max(line.size(), kWidth), ' ');
        line += library.package;
        if (!library.atLeast.empty()) line += ", " + library.atLeast + words.orLater;
        lines += line + "\n";
    }
    return lines;
}

std::string lineOrNothing(const std::string& before, const std::string& text,
                          const std::string& behind) {
    return text.empty() ? text : before + text + behind;
}

} // namespace

std::string folderStarter(const BundledGame& game, const Engine& engine) {
    return filled(kFolderStarter, {{"TITLE", inShell(game.title)},
                                   {"NAME", game.name},
                                   {"IDENTIFIER", game.identifier},
                                   {"ENGINE", kEngineFile},
                                   {"MACHINE", engine.machine},
                                   {"PACKAGES", packageCases(engine)},
                                   {"GAME", kGameFolder}});
}

std::string packageStarter(const std::string& engineFile, const std::string& gameFolder) {
    return filled(kPackageStarter, {{"ENGINE", engineFile}, {"GAME", gameFolder}});
}

std::string desktopEntry(const BundledGame& game, const std::string& start,
                         const std::string& icon) {
    return filled(kEntry, {{"TITLE", inEntry(game.title)},
                           {"COMMENT", lineOrNothing("Comment=", inEntry(game.about), "\n")},
                           {"START", start},
                           {"ICON", icon},
                           {"IDENTIFIER", game.identifier}});
}

std::string metainfo(const BundledGame& game) {
    std::string about = game.about.empty() ? "A game of pictures and sounds" : game.about;
    while (about.ends_with('.')) about.pop_back();
    std::string languages;
    for (const std::string& tag : game.languages) languages += "    <lang>" + tag + "</lang>\n";
    return filled(kMetainfo,
                  {{"IDENTIFIER", game.identifier},
                   {"TITLE", inXml(game.title)},
                   {"ABOUT", inXml(about)},
                   {"NAME", game.name},
                   {"AUTHOR", lineOrNothing("  <developer_name>", inXml(nameOfAuthor(game)),
                                            "</developer_name>\n")},
                   {"LANGUAGES", lineOrNothing("  <languages>\n", languages, "  </languages>\n")}});
}

std::string manual(const BundledGame& game) {
    return filled(kManual, {{"NAME", inManual(game.name)},
                            {"VERSION", inManual(game.version)},
                            {"ABOUT", inManual(game.about.empty() ? game.title : game.about)},
                            {"TITLE", inManual(game.title)},
                            {"IDENTIFIER", inManual(game.identifier)}});
}

std::vector<BundleFile> readmes(const BundledGame& game, const Engine& engine, bool keepsSaves,
                                const std::vector<BundleFile>& licences) {
    std::string names;
    for (const BundleFile& licence : licences) names += (names.empty() ? "" : ", ") + licence.name;
    const auto write = [&](const ReadmeWords& words) {
        const std::string saves = words.savesAtHome + game.identifier + words.savesStay;
        return BundleFile{
            words.file,
            asBytes(filled(words.text, {{"TITLE", game.title},
                                        {"VERSION", game.version},
                                        {"BY", lineOrNothing(words.by, nameOfAuthor(game), "\n")},
                                        {"NAME", game.name},
                                        {"IDENTIFIER", game.identifier},
                                        {"SAVES", keepsSaves ? words.savesWithGame + saves : saves},
                                        {"MACHINE", engine.machine},
                                        {"LIBRARIES", libraryLines(engine, words)},
                                        {"GAME", kGameFolder},
                                        {"LICENCE", lineOrNothing(words.see, names, "")},
                                        {"ENGINE", kEngineFile}}))};
    };
    std::vector<BundleFile> files{write(kEnglish)};
    if (std::ranges::any_of(game.languages, [](const std::string& tag) {
            return platform::belongsToLanguage(tag, "pt");
        }))
        files.push_back(write(kPortuguese));
    return files;
}

std::string engineNotices() { return std::string(kEngineLicence) + std::string(kLibraryNotices); }

} // namespace rsc

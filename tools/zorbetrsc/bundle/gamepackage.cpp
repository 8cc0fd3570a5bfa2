#include "bundle/gamepackage.h"

#include "bundle/bundletexts.h"
#include "bundle/icons.h"

#include <algorithm>
#include <ctime>
#include <iterator>
#include <set>

namespace rsc {

namespace {

/// "NAME <ADDRESS>", as control(5) wants it. An address under example.org reaches nobody.
std::string maintainerOf(const BundledGame& game) {
    constexpr std::string_view kNoNames = "<>(),\"";
    if (game.author.find('<') != std::string::npos && game.author.ends_with('>'))
        return game.author;
    std::string name = game.author.empty() ? "The makers of " + game.title : game.author;
    std::erase_if(name, [&](char c) { return kNoNames.find(c) != std::string_view::npos; });
    return name + " <nobody@example.org>";
}

std::string dependsOf(const Engine& engine) {
    std::set<std::string> packages; // in their order, each once
    for (const NeededLibrary& library : engine.needs)
        if (!library.package.empty())
            packages.insert(library.package +
                            (library.atLeast.empty() ? "" : " (>= " + library.atLeast + ")"));
    std::string list;
    for (const std::string& package : packages) list += (list.empty() ? "" : ", ") + package;
    return list;
}

/// In units of 1024 bytes, as Debian's policy counts them (5.6.20).
std::size_t installedSize(const std::vector<BundleFile>& files) {
    constexpr std::size_t kUnit = 1024;
    std::size_t size = 0;
    for (const BundleFile& file : files) size += (file.data.size() + kUnit - 1) / kUnit;
    return size;
}

std::string controlOf(const BundledGame& game, const Engine& engine,
                      const std::vector<BundleFile>& files) {
    return "Package: " + game.name + "\nVersion: " + game.version +
           "\nArchitecture: " + engine.architecture + "\nMaintainer: " + maintainerOf(game) +
           "\nInstalled-Size: " + std::to_string(installedSize(files)) +
           "\nDepends: " + dependsOf(engine) +
           "\nSuggests: zenity | kdialog\nSection: games\nPriority: optional\nDescription: " +
           (game.about.empty() ? "game with pictures and sounds" : game.about) + "\n " +
           game.title +
           "\n .\n It is played by Zorbet, an engine for games made of pictures, sounds and\n"
           " scripts, which comes with it.\n";
}

std::string changelogOf(const BundledGame& game, Stamp stamp) {
    const auto time = static_cast<std::time_t>(stamp);
    std::tm day{};
    ::gmtime_r(&time, &day);
    char text[64]; // the program's locale is that of C
    const std::size_t size = std::strftime(text, sizeof text, "%a, %d %b %Y %H:%M:%S +0000", &day);
    return game.name + " (" + game.version + ") unstable; urgency=medium\n\n  * Version " +
           game.version + " of the game.\n\n -- " + maintainerOf(game) + "  " +
           std::string(text, size) + "\n";
}

std::string copyrightOf(const BundledGame& game, const GameFiles& files) {
    std::string text = "This is the game \"" + game.title + "\"";
    if (!game.author.empty()) text += " by " + game.author;
    text += files.licences.empty()
                ? ".\nIt belongs to those who made it: Copyright, all rights reserved.\n"
                : ".\nIts licence:\n\n";
    for (const BundleFile& licence : files.licences)
        text.append(licence.data.begin(), licence.data.end()).append("\n");
    return text + "\nThe engine that plays it is Zorbet.\n\n" + engineNotices();
}

} // namespace

BundleFile makeGamePackage(const BundledGame& game, const GameFiles& files, const Engine& engine,
                           Stamp stamp) {
    const std::string engineFile = "usr/lib/games/" + game.name + "/zorbet";
    const std::string gameFolder = "usr/share/games/" + game.name;
    const std::string docs = "usr/share/doc/" + game.name + "/";
    const std::string starter = "usr/games/" + game.name;
    std::vector<BundleFile> all{
        {engineFile, engine.program, true},
        {starter, asBytes(packageStarter("/" + engineFile, "/" + gameFolder)), true},
        {"usr/share/applications/" + game.identifier + ".desktop",
         asBytes(desktopEntry(game, "/" + starter, game.identifier))},
        {"usr/share/metainfo/" + game.identifier + ".metainfo.xml", asBytes(metainfo(game))},
        {"usr/share/man/man6/" + game.name + ".6.gz", compressed(asBytes(manual(game)))},
        {docs + "changelog.gz", compressed(asBytes(changelogOf(game, stamp)))},
        {docs + "copyright", asBytes(copyrightOf(game, files))}};
    for (const int side : kIconSides) {
        const std::string number = std::to_string(side);
        all.push_back({"usr/share/icons/hicolor/" + number + "x" + number + "/apps/" +
                           game.identifier + ".png",
                       makeIcon(game.icon, side)});
    }
    for (const BundleFile& file : files.files)
        all.push_back({gameFolder + "/" + file.name, file.data});
    const std::string control = controlOf(game, engine, all);
    return {game.name + "_" + game.version + "_" + engine.architecture + ".deb",
            makePackage(control, std::move(all), stamp)};
}

} // namespace rsc

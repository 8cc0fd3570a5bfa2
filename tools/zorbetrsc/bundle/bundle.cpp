#include "bundle/bundle.h"

#include "bundle/bundletexts.h"
#include "bundle/gamepackage.h"
#include "bundle/icons.h"
#include "bundle/scriptsound.h"
#include "manifest/pack.h"
#include "text.h"

#include "formats/base/latin1.h"
#include "platform/host/files/userfolders.h"
#include "platform/host/machine/installation.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <ostream>
#include <set>

namespace rsc {

namespace {

namespace fs = std::filesystem;

constexpr const char* kManifest = "resources.manifest";
constexpr const char* kLibraries = "RSC/"; ///< where those of the manifest lie in a game

/// What reproducible builds take for "now", else the day of this version of the engine: the time of
/// the author's clock is in no file.
Stamp stampOf(const std::string& epoch) {
    Stamp stamp = ZORBET_RELEASED_SECONDS;
    if (epoch.empty()) return stamp;
    const auto [end, error] = std::from_chars(epoch.data(), epoch.data() + epoch.size(), stamp);
    if (error != std::errc() || end != epoch.data() + epoch.size() || stamp < 0)
        throw Refusal("SOURCE_DATE_EPOCH is " + inQuotes(epoch) +
                      ", which is no number of seconds since 1970; unset it, or write one");
    return stamp;
}

/// The folder in which the bundle is made. What was made is taken away unless it is kept.
class OutputFolder {
  public:
    OutputFolder(const fs::path& folder, const fs::path& game) : folder_(folder) {
        const fs::path real = fs::weakly_canonical(fs::absolute(folder));
        const fs::path inside = fs::canonical(game);
        if (std::ranges::mismatch(inside, real).in1 == inside.end())
            throw Refusal(inQuotes(folder.string()) +
                          " lies in the game's folder, which stays as it is; name another one");
        wasThere_ = fs::exists(fs::symlink_status(folder));
        if (!wasThere_) return;
        if (!fs::is_directory(folder))
            throw Refusal(inQuotes(folder.string()) +
                          " is there already and is no folder; name one that is not there yet");
        if (!fs::is_empty(folder))
            throw Refusal("the folder " + inQuotes(folder.string()) +
                          " is not empty, and nothing in it is replaced; name one that is not "
                          "there yet");
    }
    OutputFolder& operator=(OutputFolder&&) = delete;
    ~OutputFolder() {
        if (isKept_ || !isBegun_) return;
        std::error_code ignored;
        if (!wasThere_) {
            fs::remove_all(folder_, ignored);
            return;
        }
        for (fs::directory_iterator entry(folder_, ignored), end; entry != end;
             entry.increment(ignored))
            fs::remove_all(entry->path(), ignored);
    }

    void write(const std::vector<BundleFile>& files, Stamp stamp) {
        isBegun_ = true;
        std::vector<OutputFile> outputs;
        for (const BundleFile& file : files) outputs.push_back({file.name, file.data});
        writeFiles(folder_, outputs);
        std::set<fs::path, std::greater<>> folders; // what is in them comes first
        for (const BundleFile& file : files) {
            finish(folder_ / file.name, file.isProgram, stamp);
            for (fs::path above = fs::path(file.name).parent_path(); !above.empty();
                 above = above.parent_path())
                folders.insert(folder_ / above);
        }
        for (const fs::path& folder : folders) finish(folder, true, stamp);
        isKept_ = true;
    }

  private:
    /// The same for all, whatever this user's habits are.
    static void finish(const fs::path& path, bool isProgram, Stamp stamp) {
        using fs::perms;
        perms right =
            perms::owner_read | perms::owner_write | perms::group_read | perms::others_read;
        if (isProgram) right |= perms::owner_exec | perms::group_exec | perms::others_exec;
        fs::permissions(path, right);
        const std::chrono::sys_seconds moment{std::chrono::seconds(stamp)};
        fs::last_write_time(path, std::chrono::file_clock::from_sys(moment));
    }

    fs::path folder_;
    bool wasThere_ = false;
    bool isBegun_ = false;
    bool isKept_ = false;
};

/// As the folder of libraries is written in the game, with "/".
std::string librariesFolder(const GameFiles& files) {
    for (const BundleFile& file : files.files) {
        const std::string folder = file.name.substr(0, file.name.find('/') + 1);
        if (formats::lowerAscii(folder) == formats::lowerAscii(kLibraries)) return folder;
    }
    return kLibraries;
}

/// In place of older ones of the same names.
void addLibraries(std::vector<OutputFile> made, GameFiles& files) {
    const std::string folder = librariesFolder(files);
    for (OutputFile& library : made) {
        const std::string name = folder + library.name;
        std::erase_if(files.files, [&](const BundleFile& file) {
            return formats::lowerAscii(file.name) == formats::lowerAscii(name);
        });
        files.files.push_back({name, std::move(library.data)});
    }
}

Engine engineBeside() {
    const fs::path program = platform::programNamed("zorbet");
    try {
        return readEngine(readWholeFile(program));
    } catch (const Refusal& refusal) {
        throw Refusal(program.string() + ": " + refusal.what());
    }
}

std::vector<BundleFile> folderOf(const BundledGame& game, const GameFiles& files,
                                 const Engine& engine) {
    const std::string folder = game.folder() + "/";
    std::vector<BundleFile> all{
        {folder + game.name, asBytes(folderStarter(game, engine)), true},
        {folder + kEngineFile, engine.program, true},
        {folder + "engine/COPYING", asBytes(engineNotices())},
        {folder + game.name + ".png", makeIcon(game.icon, kIconSides.back())},
        {folder + game.identifier + ".desktop", asBytes(desktopEntry(game, game.name, game.name))}};
    for (const BundleFile& text : readmes(game, engine, files.keepsSaves, files.licences))
        all.push_back({folder + text.name, text.data});
    for (const BundleFile& licence : files.licences)
        all.push_back({folder + licence.name, licence.data});
    for (const BundleFile& file : files.files)
        all.push_back({folder + kGameFolder + "/" + file.name, file.data});
    return all;
}

void tellMade(const BundledGame& game, const GameFiles& files, const BundleFile* package,
              const fs::path& output, std::ostream& out) {
    out << (output / game.folder()).string() << ": the game \"" << game.title
        << "\", to be started by " << game.name << " in it\n";
    if (package)
        out << (output / package->name).string() << ": the same as a Debian package\n";
    else
        out << "No Debian package was made: zorbet-rsc was built without libarchive\n";
    if (files.leftOut.empty()) return;
    out << "Left out, as no part of what is played (--with takes one along):";
    const char* before = " ";
    for (const std::string& name : files.leftOut) {
        out << before << printable(name);
        before = ", ";
    }
    out << "\n";
}

/// The game finds these, too, but only its own folder goes along.
void warnOfNeighbours(const fs::path& game, std::ostream& errors) {
    for (const char* name : {"RSC", "scripts"})
        if (const fs::path beside = fs::canonical(game).parent_path() / name;
            fs::is_directory(beside))
            errors << "warning: " << beside.string()
                   << " lies beside the game's folder and does not go along; put into the game's "
                      "folder what the game needs of it\n";
}

void bundle(const BundleOptions& options, std::ostream& out, std::ostream& errors) {
    const Stamp stamp = stampOf(platform::environment("SOURCE_DATE_EPOCH"));
    OutputFolder output(options.output, options.game);
    const BundledGame game = readBundledGame(options.game, options.name, errors);
    GameFiles files = readGameFiles(options.game, game, options.also);
    warnOfNeighbours(options.game, errors);
    bool isSound = areScriptsSound(options.game, errors);
    if (const fs::path manifest = options.game / kManifest; fs::exists(manifest)) {
        auto made = packOrTell(manifest, errors);
        isSound = isSound && made;
        if (made) addLibraries(*std::move(made), files);
    }
    if (!isSound) throw Refusal("nothing was made; put right what is told above");
    const Engine engine = engineBeside();
    for (const NeededLibrary& library : engine.needs)
        if (library.package.empty())
            errors << "warning: the engine needs " << printable(library.file)
                   << ", of which it is not known in which Debian package it is; tell players\n";
    std::vector<BundleFile> all = folderOf(game, files, engine);
    if (canMakePackages()) all.push_back(makeGamePackage(game, files, engine, stamp));
    output.write(all, stamp);
    tellMade(game, files, canMakePackages() ? &all.back() : nullptr, options.output, out);
}

} // namespace

int runBundle(const BundleOptions& options, std::ostream& out, std::ostream& errors) {
    try {
        bundle(options, out, errors);
        return 0;
    } catch (const std::runtime_error& problem) { // also of the host's folders
        errors << problem.what() << "\n";
        return 1;
    }
}

} // namespace rsc

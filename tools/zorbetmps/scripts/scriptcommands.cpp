#include "zorbetmps/scripts/scriptcommands.h"

#include "formats/base/latin1.h"
#include "zorbetmps/check/report.h"
#include "zorbetmps/check/resources.h"
#include "zorbetmps/check/scriptcheck.h"
#include "zorbetmps/check/vocabulary.h"
#include "zorbetmps/scripts/files.h"
#include "zorbetmps/scripts/layout.h"
#include "zorbetmps/scripts/listing.h"

#include "omrandom.h"
#include "yprecompiled.h"

#include "platform/commandline/commandline.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <ostream>
#include <set>

namespace mps {

namespace {

namespace fs = std::filesystem;

constexpr const char* kCompiledExtension = ".mpc";

/// What a script is compiled against: nothing is asked about resources.
struct Known {
    const Vocabulary vocabulary;
    const GameResources resources{};
};

/// Tells the mistakes for which the game would refuse a script, or also names of commands that
/// nobody knows; whether there are none.
bool isSound(const ScriptCheck& script, bool withCommands, std::ostream& out) {
    std::vector<Finding> mistakes;
    for (const Finding& finding : script.findings())
        if (finding.rule == Rule::Syntax || (withCommands && finding.rule == Rule::UnknownCommand))
            mistakes.push_back(finding);
    report(mistakes, out);
    return mistakes.empty();
}

// ---------------------------------------------------------------------------- compile

std::vector<fs::path> targetsOf(const std::vector<std::string>& files, const std::string& to) {
    std::error_code error;
    const bool isFolder = files.size() > 1 || to.ends_with('/') || fs::is_directory(to, error);
    std::vector<fs::path> targets;
    for (const fs::path file : files) {
        if (to.empty())
            targets.push_back(fs::path(file).replace_extension(kCompiledExtension));
        else
            targets.push_back(isFolder ? fs::path(to) / file.filename() : fs::path(to));
    }
    std::set<std::string> taken;
    for (const std::string& file : files) taken.insert(realPath(file));
    const std::set<std::string> texts = taken;
    for (const fs::path& target : targets) {
        const std::string real = realPath(target.string());
        if (taken.insert(real).second) continue;
        throw commandline::Mistake(target.string() +
                                   (texts.contains(real)
                                        ? " would be written over a script's text; name "
                                          "another folder or file with -o"
                                        : " would be written twice"));
    }
    return targets;
}

/// The precompiled form of a script; none after it was told why.
std::optional<std::string> precompiledForm(const std::string& file, const Known& known,
                                           std::ostream& out) {
    ScriptCheck script(file, known.vocabulary, known.resources);
    const auto bytes = script.read();
    std::string form;
    std::string refusal;
    // What lists draw at random while a script is read, the game draws anew each time.
    OMSeedRandom(0);
    const std::uint32_t first = OMRandom();
    OMSeedRandom(0);
    const auto look = [&](const YScript& compiled, YHeap& heap) {
        auto written = YWritePrecompiled(compiled, heap);
        form = std::move(written.value);
        refusal = compiled.lines.empty() ? "is precompiled already"
                  : OMRandom() != first ? "cannot be precompiled: a list has a random digit, which "
                                          "would be the same in every game; store it with NAME=?"
                  : written.ok()        ? ""
                                        : "cannot be precompiled: " + written.refusal;
    };
    if (bytes) script.compile(*bytes, look);
    if (!isSound(script, true, out)) return std::nullopt;
    if (refusal.empty()) return form;
    out << file << ": " << refusal << '\n';
    return std::nullopt;
}

// ---------------------------------------------------------------------------- format

std::vector<std::string> scriptsOf(const std::vector<std::string>& paths) {
    std::vector<std::string> scripts;
    std::error_code error;
    for (const std::string& path : paths) {
        if (!fs::is_directory(path, error)) {
            scripts.push_back(path);
            continue;
        }
        const std::vector<std::string> inFolder = scriptsIn(path);
        scripts.insert(scripts.end(), inFolder.begin(), inFolder.end());
    }
    return scripts;
}

/// What these bytes compile to as the script of that name; none after its mistakes were told.
std::optional<std::string> meaningOf(ScriptCheck& script, const std::string& bytes,
                                     std::ostream& out) {
    std::string meaning;
    OMSeedRandom(0); // lists may draw while they are read
    script.compile(bytes, [&](const YScript& compiled, YHeap& heap) {
        meaning = listing(compiled, heap, SourceLines::Left);
    });
    if (!isSound(script, false, out)) return std::nullopt;
    return meaning;
}

struct Formatted {
    std::string text;
    bool isChanged = false;
};

/// None after it was told why there is none.
std::optional<Formatted> format(const std::string& file, const Known& known, std::ostream& out) {
    ScriptCheck script(file, known.vocabulary, known.resources);
    const auto bytes = script.read();
    if (!bytes) {
        (void)isSound(script, false, out);
        return std::nullopt;
    }
    if (YIsPrecompiled(*bytes)) {
        out << file << ": is precompiled, and has no text to format\n";
        return std::nullopt;
    }
    const auto before = meaningOf(script, *bytes, out);
    if (!before) return std::nullopt;
    Formatted formatted{laidOut(*bytes)};
    formatted.isChanged = formatted.text != *bytes;
    if (!formatted.isChanged) return formatted;
    ScriptCheck again(file, known.vocabulary, known.resources);
    const auto after = meaningOf(again, formatted.text, out);
    if (after == before) return formatted;
    out << file << ": stays as it is: formatted, it would be "
        << (after ? "another script; please tell who makes zorbet-mps" : "refused, as told above")
        << '\n';
    return std::nullopt;
}

} // namespace

bool compileScripts(const std::vector<std::string>& files, const std::string& to,
                    const Told& told) {
    const std::vector<fs::path> targets = targetsOf(files, to);
    const Known known;
    std::vector<WrittenFile> written;
    for (std::size_t i = 0; i < files.size(); ++i)
        if (auto form = precompiledForm(files[i], known, told.out))
            written.push_back({targets[i], *std::move(form)});
    if (written.size() < files.size()) return false;
    const std::string failed = writeFiles(written);
    if (!failed.empty()) told.errors << failed << '\n';
    return failed.empty();
}

bool listScripts(const std::vector<std::string>& files, bool withLines, const Told& told) {
    const Known known;
    bool isAll = true;
    for (const std::string& file : files) {
        ScriptCheck script(file, known.vocabulary, known.resources);
        std::string printed;
        OMSeedRandom(0); // so that lists that draw are the same each time
        if (const auto bytes = script.read())
            script.compile(*bytes, [&](const YScript& compiled, YHeap& heap) {
                printed =
                    listing(compiled, heap, withLines ? SourceLines::Shown : SourceLines::Left);
            });
        const bool isOne = isSound(script, false, told.out);
        isAll &= isOne;
        if (isOne && files.size() > 1) told.out << file << ":\n";
        if (isOne) told.out << printed;
    }
    return isAll;
}

bool formatScripts(const std::vector<std::string>& paths, Formatting what, const Told& told) {
    const bool isPrinted = what == Formatting::Print;
    std::error_code error;
    if (isPrinted && (paths.size() != 1 || fs::is_directory(paths.front(), error)))
        throw commandline::Mistake("one script is printed at a time; for several, and for folders, "
                                   "there are --check and --write");
    const Known known;
    bool isAll = true;
    for (const std::string& file : scriptsOf(paths)) {
        const auto formatted = format(file, known, isPrinted ? told.errors : told.out);
        isAll &= formatted.has_value();
        if (!formatted) continue;
        if (isPrinted) told.out << formatted->text;
        if (isPrinted || !formatted->isChanged) continue;
        if (what == Formatting::Check) {
            isAll = false;
        } else if (const std::string failed = writeFiles({{file, formatted->text}});
                   !failed.empty()) {
            told.errors << failed << '\n';
            isAll = false;
            continue;
        }
        told.out << file << '\n';
    }
    return isAll;
}

} // namespace mps

#include "zorbetmps/check/check.h"

#include "formats/base/latin1.h"
#include "zorbetmps/check/scriptcheck.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <tuple>

namespace mps {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kStartScript = "Startup.mps";
constexpr std::size_t kLargestText = std::size_t{1} << 20; ///< of maps and settings

bool hasExtension(const fs::path& path, std::string_view extension) {
    return formats::lowerAscii(path.extension().string()) == extension;
}

/// Scripts of a game, each checked once.
class GameCheck {
  public:
    enum class Depth { Folder, Tree };

    /// Those of a folder and of "scripts" in it, or of all folders in it. `given` are paths of the
    /// author's, by their real paths.
    GameCheck(const std::string& folder, Depth depth, std::map<std::string, std::string> given,
              const Vocabulary& vocabulary)
        : paths_(std::move(given)), resources_(folder) {
        const fs::path all(folder);
        if (depth == Depth::Tree) {
            add(fs::recursive_directory_iterator(all, fs::directory_options::skip_permission_denied,
                                                 error_));
        } else {
            add(fs::directory_iterator(all, error_));
            add(fs::directory_iterator(all / "scripts", error_));
        }
        for (const auto& [real, path] : paths_)
            checks_.try_emplace(real, path, vocabulary, resources_).first->second.run();
        for (const auto& [real, check] : checks_)
            for (const std::string& file : check.files())
                if (file != real) pieces_.insert(file);
        for (const auto& [real, check] : checks_)
            for (const std::string& script : check.mentions())
                if (!check.files().contains(script)) pieces_.erase(script);
        if (depth != Depth::Tree) return;
        findUnreached(folder);
        findTwins();
    }

    /// In all scripts. Of a file that several include, what all of them find in it.
    [[nodiscard]] std::vector<Finding> findings() const {
        std::map<std::string, int> readers;         // of a file
        std::vector<std::pair<Finding, int>> found; // and how many of them have found it
        for (const auto& [real, check] : checks_) {
            if (pieces_.contains(real) || unreached_.contains(real)) continue;
            for (const std::string& file : check.files()) ++readers[file];
            for (const Finding& finding : check.findings()) {
                const auto same =
                    std::ranges::find(found, finding, [](const auto& entry) -> const Finding& {
                        return entry.first;
                    });
                if (same != found.end())
                    ++same->second;
                else
                    found.emplace_back(finding, 1);
            }
        }
        std::vector<Finding> result;
        for (const auto& [finding, times] : found) {
            const std::string real = realPath(finding.file);
            if (times < readers[real]) continue;
            // Of a single includer nobody knows which of a piece's names it was to bring.
            const bool isLonely = times == 1 && pieces_.contains(real);
            if (!isLonely || !aboutRule(finding.rule).isOfNames) result.push_back(finding);
        }
        // They may be pieces of other games.
        for (const std::string& real : unreached_) {
            for (const Finding& finding : checks_.at(real).findings())
                if (realPath(finding.file) == real && !aboutRule(finding.rule).isOfNames)
                    result.push_back(finding);
            result.push_back({Rule::Unreached, paths_.at(real), 0, 0,
                              "no script that the game begins with leads here"});
        }
        result.insert(result.end(), twins_.begin(), twins_.end());
        if (!start_.empty())
            result.push_back(
                {Rule::UnknownScript, start_, 0, 0,
                 "there is no script " + std::string(kStartScript) + ", with which a game begins"});
        return result;
    }

    /// In one script and what it includes; in a piece of others only what is its own.
    [[nodiscard]] std::vector<Finding> findingsOf(const std::string& real) const {
        const std::vector<Finding> all = findings();
        const bool isPiece = pieces_.contains(real);
        std::vector<Finding> result;
        for (const Finding& finding : isPiece ? all : checks_.at(real).findings()) {
            const bool isHere = realPath(finding.file) == real;
            if (isHere || (!isPiece && std::ranges::find(all, finding) != all.end()))
                result.push_back(finding);
        }
        return result;
    }

  private:
    void findUnreached(const std::string& folder) {
        const Includes start((fs::path(folder) / kStartScript).string());
        const auto first = start.find(kStartScript);
        const bool isInside = first && realPath(*first).starts_with(realPath(folder) + '/');
        if (!isInside) {
            start_ = folder;
            return;
        }
        std::set<std::string> reached;
        std::vector<std::string> todo{realPath(*first)};
        for (const auto& [real, path] : paths_)
            if (otherTexts_.find(formats::lowerAscii(fs::path(real).filename().string())) !=
                std::string::npos)
                todo.push_back(real);
        while (!todo.empty()) {
            const std::string real = todo.back();
            todo.pop_back();
            const auto check = checks_.find(real);
            if (!reached.insert(real).second || check == checks_.end()) continue;
            for (const auto* more : {&check->second.files(), &check->second.mentions()})
                todo.insert(todo.end(), more->begin(), more->end());
        }
        for (const auto& [real, path] : paths_)
            if (!reached.contains(real)) unreached_.insert(real);
    }

    /// Files that the game, which ignores letter case, takes for the same.
    void findTwins() {
        std::ranges::sort(named_);
        std::map<std::string, fs::path> firsts;
        for (const fs::path& path : named_) {
            const std::string folded = formats::lowerAscii(path.filename().string());
            const auto [first, isNew] =
                firsts.try_emplace((path.parent_path() / folded).string(), path);
            if (!isNew)
                twins_.push_back({Rule::SameName, path.string(), 0, 0,
                                  "only letter case tells it from " +
                                      first->second.filename().string() +
                                      " beside it, and the game ignores that; rename one of them"});
        }
    }

    template <class Walk>
    void add(Walk walk) {
        for (; !error_ && walk != Walk(); walk.increment(error_)) {
            const fs::path& path = walk->path();
            std::error_code error;
            if (!walk->is_regular_file(error)) continue;
            if (hasExtension(path, kScriptExtension) || hasExtension(path, ".rsc"))
                named_.push_back(path.lexically_normal());
            if (hasExtension(path, kScriptExtension)) {
                paths_.try_emplace(realPath(path.string()), path.lexically_normal().string());
            } else if (hasExtension(path, ".map") || hasExtension(path, ".ini")) {
                std::string why;
                if (auto text = readHostFile(path.string(), kLargestText, why))
                    otherTexts_ += formats::lowerAscii(*text) + '\n';
            }
        }
        error_.clear();
    }

    std::map<std::string, std::string> paths_; ///< as they are shown, by real paths
    const GameResources resources_;
    std::map<std::string, ScriptCheck> checks_;
    std::set<std::string> pieces_; ///< scripts that others include and that none starts
    std::set<std::string> unreached_;
    std::vector<fs::path> named_; ///< scripts and libraries, in no order
    std::vector<Finding> twins_;
    std::string start_;      ///< the folder that lacks the first script
    std::string otherTexts_; ///< of the game's maps and settings, in small letters
    std::error_code error_;
};

/// The game's folder that a script lies in.
std::string gameFolderOf(const std::string& script) {
    fs::path folder = fs::path(script).parent_path();
    if (folder.empty()) folder = ".";
    const bool isInner =
        formats::lowerAscii(fs::path(realPath(folder.string())).filename().string()) == "scripts";
    return (isInner ? folder / ".." : folder).lexically_normal().string();
}

} // namespace

std::vector<Finding> check(const std::vector<std::string>& paths) {
    const Vocabulary vocabulary;
    std::map<std::string, std::map<std::string, std::string>> files; // given ones, by folder
    std::error_code error;
    for (const std::string& path : paths)
        if (!fs::is_directory(path, error)) files[gameFolderOf(path)].emplace(realPath(path), path);
    std::map<std::string, GameCheck> games;
    for (const auto& [folder, given] : files)
        games.try_emplace(folder, folder, GameCheck::Depth::Folder, given, vocabulary);

    std::vector<Finding> all;
    for (const std::string& path : paths) {
        std::vector<Finding> found;
        const bool isFolder = fs::is_directory(path, error);
        if (isFolder) {
            const GameCheck game(path, GameCheck::Depth::Tree, {}, vocabulary);
            found = game.findings();
            std::ranges::stable_sort(found, {}, &Finding::file);
        } else {
            found = games.at(gameFolderOf(path)).findingsOf(realPath(path));
            std::erase_if(found, [](const Finding& finding) {
                return aboutRule(finding.rule).severity == Severity::Note;
            });
        }
        // What the compiler tells keeps its order; the rest follows, the script itself first.
        std::map<std::string, std::size_t> rank{{path, 0}};
        for (const Finding& finding : found) rank.try_emplace(finding.file, rank.size());
        std::ranges::stable_sort(found, {}, [&](const Finding& finding) {
            const bool isFirst = !isFolder && isOfCompiler(finding);
            return isFirst ? std::tuple(false, std::size_t{0}, 0, 0)
                           : std::tuple(true, rank[finding.file], finding.line, finding.column);
        });
        for (Finding& finding : found)
            if (isOfCompiler(finding) || std::ranges::find(all, finding) == all.end())
                all.push_back(std::move(finding));
    }
    return all;
}

} // namespace mps

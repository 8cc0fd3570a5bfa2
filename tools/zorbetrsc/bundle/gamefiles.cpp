#include "bundle/gamefiles.h"

#include "text.h"

#include "formats/base/latin1.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <span>

namespace rsc {

namespace {

namespace fs = std::filesystem;

using Words = std::span<const std::string_view>;

constexpr std::array<std::string_view, 5> kKinds{".mps", ".smk", ".rsc", ".map", ".ini"};
constexpr std::array<std::string_view, 7> kLicences{"license", "licence", "copying", "copyright",
                                                    "notice",  "authors", "credits"};
/// What things are called aloud, in the game's folder only.
constexpr std::string_view kSpokenNames = "spoken.txt";
/// Of players, not of the game.
constexpr std::string_view kPlayersSettings = "settings.ini";
constexpr std::string_view kSettings = "zorbet.ini";
constexpr std::string_view kFirstScript = "startup.mps";
constexpr std::string_view kComponent = ".lrn";

bool isOneOf(Words words, std::string_view word) {
    return std::ranges::find(words, word) != words.end();
}

/// The game finds files whatever their letter case is.
fs::path inSmallLetters(const fs::path& path) { return formats::lowerAscii(path.string()); }

bool isBelow(const fs::path& path, const fs::path& folder) {
    return std::ranges::mismatch(folder, path).in1 == folder.end();
}

class FolderReader {
  public:
    FolderReader(const fs::path& folder, const BundledGame& game, const std::vector<fs::path>& also)
        : folder_(fs::canonical(folder)), shown_(folder), icon_(game.iconFile) {
        for (const fs::path& path : also) also_.push_back(checked(path));
    }

    GameFiles read() {
        for (fs::recursive_directory_iterator entry(folder_), end; entry != end; ++entry)
            if (look(*entry) == Look::Never) entry.disable_recursion_pending();
        std::ranges::sort(taken_);
        for (const fs::path& path : taken_) take(path);
        if (!hasStart_)
            throw Refusal(shown_.string() +
                          ": there is no Startup.mps, with which a game begins; name the game's "
                          "folder, or write that script");
        tellLeftOut();
        return std::move(files_);
    }

  private:
    enum class Look : std::uint8_t { Further, Never };

    /// A path of --with.
    [[nodiscard]] fs::path checked(const fs::path& path) const {
        std::error_code error;
        fs::path plain = path.lexically_normal();
        if (!plain.has_filename()) plain = plain.parent_path();
        const fs::path real = fs::canonical(folder_ / plain, error);
        if (error || plain.is_absolute() || !isBelow(real, folder_) || real == folder_)
            throw Refusal("--with " + path.string() + ": there is no such file or folder in " +
                          shown_.string() + "; write its name as seen from there");
        return plain;
    }

    Look look(const fs::directory_entry& entry) {
        const fs::path path = entry.path().lexically_relative(folder_);
        const std::string name = path.filename().string();
        const bool isAlso =
            std::ranges::any_of(also_, [&](const fs::path& with) { return isBelow(path, with); });
        const bool leadsToAlso =
            std::ranges::any_of(also_, [&](const fs::path& with) { return isBelow(with, path); });
        if (name.starts_with('.') && !isAlso && !leadsToAlso) return Look::Never;
        if (path.extension() == kComponent) refuseComponent(path);
        if (entry.is_directory()) {
            if (!entry.is_symlink()) return Look::Further;
            leftOut_.insert(path);
            return Look::Never;
        }
        if (isWanted(path, isAlso) && entry.is_regular_file() &&
            (isBelow(fs::canonical(entry.path()), folder_) || isLibrary(path)))
            taken_.push_back(path);
        else
            leftOut_.insert(path);
        return Look::Further;
    }

    [[nodiscard]] bool isWanted(const fs::path& path, bool isAlso) const {
        const fs::path small = inSmallLetters(path);
        const fs::path first = *small.begin();
        if (isAlso || path == icon_ || isLicence(path)) return true;
        if (first == "tests" || small == kPlayersSettings) return false;
        return isOneOf(kKinds, small.extension().string()) ||
               (first == "languages" && small.extension() == ".po") || small == kSpokenNames;
    }

    /// Games may share these by links: see the fence.
    [[nodiscard]] static bool isLibrary(const fs::path& path) {
        const fs::path small = inSmallLetters(path);
        return *small.begin() == "rsc" &&
               (small.extension() == ".rsc" || small.extension() == ".map");
    }

    /// LICENSE, COPYING.txt, LICENCE.fonts.
    [[nodiscard]] static bool isLicence(const fs::path& path) {
        const fs::path small = inSmallLetters(path);
        return !path.has_parent_path() && isOneOf(kLicences, small.stem().string());
    }

    void refuseComponent(const fs::path& path) const {
        throw Refusal((shown_ / path).string() +
                      ": the game brings native code, which is made for one kind of machine and "
                      "one version of the engine, and which a player has to allow; such a game "
                      "cannot be bundled. Take the file out, or give the folder itself to others");
    }

    void take(const fs::path& path) {
        const fs::path small = inSmallLetters(path);
        hasStart_ =
            hasStart_ || small == kFirstScript || small == fs::path("scripts") / kFirstScript;
        files_.keepsSaves = files_.keepsSaves || small == kSettings;
        try {
            auto& list = isLicence(path) ? files_.licences : files_.files;
            list.push_back({path.generic_string(), readWholeFile(folder_ / path)});
        } catch (const Refusal& refusal) {
            throw Refusal((shown_ / path).string() + ": " + refusal.what());
        }
        for (fs::path above = path.parent_path(); !above.empty(); above = above.parent_path())
            foldersTaken_.insert(above);
    }

    /// The highest folder of which nothing was taken stands for all that is in it; elsewhere many
    /// files are counted.
    void tellLeftOut() {
        constexpr std::size_t kFew = 3;
        std::map<std::string, std::set<std::string>> names; // by the folder in which they lie
        for (const fs::path& path : leftOut_) {
            fs::path shown;
            for (const fs::path& part : path) {
                shown /= part;
                if (!foldersTaken_.contains(shown)) break;
            }
            names[shown.parent_path().generic_string()].insert(shown.generic_string());
        }
        for (const auto& [folder, inIt] : names) {
            if (folder.empty() || inIt.size() <= kFew)
                files_.leftOut.insert(files_.leftOut.end(), inIt.begin(), inIt.end());
            else
                files_.leftOut.push_back(std::to_string(inIt.size()) + " files of " + folder);
        }
    }

    fs::path folder_;
    fs::path shown_; ///< as the author named it
    fs::path icon_;
    std::vector<fs::path> also_;
    std::vector<fs::path> taken_;
    std::set<fs::path> leftOut_;
    std::set<fs::path> foldersTaken_;
    bool hasStart_ = false;
    GameFiles files_;
};

} // namespace

GameFiles readGameFiles(const fs::path& folder, const BundledGame& game,
                        const std::vector<fs::path>& also) {
    return FolderReader(folder, game, also).read();
}

} // namespace rsc

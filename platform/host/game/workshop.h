// Where the author's work comes into the running game: what is saved in the game's folder is seen,
// pictures and sounds are packed, and the game is asked to load again.
//
// What counts: scripts, movies and catalogues of texts anywhere below the game's folder; the
// manifests right in it, and whatever these name, wherever that lies; scripts, libraries and maps
// in "scripts" and "RSC" of the game's folder, beside it and on the CD. A save in several steps is
// taken as one. Packing is done by the program zorbet-rsc, beside the game, which goes on
// meanwhile.
#pragma once

#include "platform/authordesk.h"
#include "platform/host/files/folderwatch.h"
#include "platform/host/machine/subprocess.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>

namespace platform {

struct WorkshopOptions {
    std::filesystem::path game;   ///< its folder
    std::filesystem::path cd;     ///< or empty
    std::filesystem::path packer; ///< the program zorbet-rsc, whether it is there or not
    bool atOnce = false; ///< what was saved is loaded by itself, not only when that is asked for
};

class Workshop {
  public:
    /// Tells the author something: lines in UTF-8. `failed` when nothing came of their work.
    using Tell = std::function<void(const std::string& text, bool failed)>;

    Workshop(const WorkshopOptions& options, Tell tell);
    Workshop& operator=(Workshop&&) = delete;

    /// As of AuthorDesk.
    void setReload(ReloadLink game) { game_ = std::move(game); }
    /// As soon as nothing is being saved or packed, also when nothing was saved.
    void askToLoad(bool keepsVariables);
    /// Called between turns of the game: goes on with what is to be done. Does not wait.
    void work();

  private:
    using Path = std::filesystem::path;
    using Clock = std::chrono::steady_clock;

    struct Manifest {
        std::set<Path> named; ///< what its words would be as files
        bool isDue = false;   ///< it, or what it names, has changed since it was packed
    };

    void watchPlayed(const Path& root);
    void readManifests();
    void readManifest(const Path& path);
    void watchNamed(Path folder);

    void look();
    [[nodiscard]] bool take(const Path& path);
    [[nodiscard]] bool takeNamed(const Path& path, Manifest& manifest);
    void takeAnything();
    [[nodiscard]] bool isQuiet() const;

    void pack(const Path& manifest);
    void endPacking();
    [[nodiscard]] std::string whyNot(const std::string& end) const;
    void load();

    Tell tell_;
    ReloadLink game_;
    Path folder_; ///< of the game; without links
    Path packer_;
    Path packed_; ///< the folder of its libraries; without links
    std::string packedName_;
    std::set<Path> searched_; ///< where the game looks for libraries and maps; without links
    bool atOnce_;
    FolderWatch watch_;
    std::map<Path, Manifest> manifests_;
    std::optional<Clock::time_point> lastChange_;
    bool resourcesAreDue_ = false;
    std::optional<bool> wish_; ///< to load, and whether variables are kept
    std::optional<ProgramBeside> packing_;
    Path packedManifest_; ///< the last one
    Clock::time_point packingBegan_;
};

} // namespace platform

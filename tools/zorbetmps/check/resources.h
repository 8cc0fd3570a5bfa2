// The resources of the game that scripts belong to: of the libraries in its RSC and in the one
// beside it, where the game looks, too. While no library is made yet, they are those that the
// game's manifest will make.
#pragma once

#include "formats/library/index.h"
#include "platform/files.h"

#include <bitset>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace mps {

/// A bitmap font and the codes of the letters that it has.
struct GameFont {
    int id = 0;
    std::bitset<256> letters;
};

class GameResources {
  public:
    /// Nothing is known.
    GameResources() = default;
    /// `folder` is the game's, a path of the host.
    explicit GameResources(const std::string& folder);

    /// False without libraries and manifest, and when one of them cannot be read to its end: then
    /// nothing can be said of what is missing.
    [[nodiscard]] bool areKnown() const { return known_ && !ids_.empty(); }
    [[nodiscard]] bool has(std::string_view type, int id) const;
    [[nodiscard]] std::vector<std::string_view> typesOf(int id) const;
    /// The number next to this one; none when there is no resource of the type.
    [[nodiscard]] std::optional<int> nearest(std::string_view type, int id) const;
    /// How many frames each sequence of an animation has, of several animations of that number the
    /// most; none when they cannot be read.
    [[nodiscard]] std::optional<std::vector<int>> framesOf(int animation) const;
    /// Those that can be read; of a manifest only the ones that are drawn in BDF files.
    [[nodiscard]] std::vector<GameFont> fonts() const;

  private:
    struct Stored {
        std::string library; ///< by the program's path
        formats::library::Index::Place place;
    };
    bool readLibraries(const std::string& folder);
    void readLibrary(const std::string& path);
    /// None when they cannot be read, or are more than `most`.
    [[nodiscard]] std::optional<formats::Bytes> bytesOf(const Stored& stored,
                                                        std::size_t most) const;
    void readMap(const std::string& folder, const std::set<std::string>& libraries);
    void readManifest(const std::string& folder);

    std::unique_ptr<platform::Files> files_;
    bool known_ = true;
    std::map<std::string, std::set<int>, std::less<>> ids_; ///< by types
    std::multimap<int, Stored> animations_;
    std::multimap<int, Stored> fonts_;
    std::multimap<int, std::vector<int>> planned_; ///< frames of the manifest's animations
    std::vector<GameFont> plannedFonts_;           ///< of the manifest
};

} // namespace mps

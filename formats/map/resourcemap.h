// The text "resource.map": says which resources each library of a folder holds, so that none of
// them has to be opened at the start.
//
//     MAINMAP            identifier of the map
//     3                  the largest number of resources of one file
//     sound1.rsc         a file, and its resources up to ENDFILE
//     WAVE 101
//     WAVE 102
//     ENDFILE
//
// Authors write maps too. Lines that hold only blanks are skipped; a line that makes no sense is
// told, with its number, and left out.
#pragma once

#include "formats/base/scanner.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace formats::map {

inline constexpr std::string_view kResourceMapName = "resource.map";
inline constexpr std::size_t kMaxIdentifier = 39; ///< characters
inline constexpr std::size_t kMaxFileName = 15;
inline constexpr std::size_t kTypeLength = 4;
inline constexpr std::size_t kLineLength = 79; ///< what is behind is not read
/// Most resources of one type, over all maps.
inline constexpr std::size_t kMostOfOneType = 8192;

struct Resource {
    std::string type;    ///< four characters
    std::int16_t id = 0; ///< above 0
};

/// One file of a map.
struct Library {
    std::string name; ///< lower case
    std::vector<Resource> resources;
};

/// Told what is wrong with a line; the first is 1.
using Problem = std::function<void(int line, const char* text)>;

/// Reads a map file by file. A file with a name that is too long or with more resources than the
/// map's second line announces is left out; a map with an identifier that is too long, which could
/// not be told from another, or without a number in its second line is not usable.
class ResourceMap {
  public:
    /// The text must outlive the reader.
    ResourceMap(std::string_view text, Problem problem);

    /// Empty when it was too long.
    [[nodiscard]] const std::string& identifier() const { return identifier_; }

    /// Whether its first two lines make sense; if not, it has no files and is as good as none.
    [[nodiscard]] bool isUsable() const { return usable_; }

    /// The next file that can be used; false at the end of the map.
    bool next(Library& library);

  private:
    std::string_view line() { return scanner_.line(kLineLength); }
    void readHeader();
    /// Leaves the whole map out.
    void reject(const char* problem);
    /// The name of a file; empty when it is no usable one.
    std::string fileName(std::string_view line);
    /// False when there were more than announced.
    bool readResources(std::vector<Resource>& resources);
    bool parseResource(std::string_view line, Resource& resource);
    void tell(const char* problem) { problem_(scanner_.lineNumber(), problem); }

    Problem problem_;
    TextScanner scanner_;
    std::string identifier_;
    std::size_t maxResources_ = 0;
    bool usable_ = true;
};

/// The text of a map. Identifier, names and types must fit.
[[nodiscard]] std::string writeResourceMap(std::string_view identifier,
                                           std::span<const Library> libraries);

} // namespace formats::map

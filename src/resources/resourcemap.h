// The two map files of the resource layer, text files written by authors.
//
// "resource.map" saves the program from opening every resource file at start-up:
//     MAINMAP            identifier of the map
//     3                  the largest number of resources of one file
//     sound1.rsc         a file, and its resources up to ENDFILE
//     WAVE 101
//     WAVE 102
//     ENDFILE
//
// "audio.map" says which sound belongs to which sequence of an animation object:
//     AO: 2001  Sequence: 3  Sound: 101
//
// Lines that hold only blanks are skipped. A line that makes no sense is logged with its number and
// left out; in a map full of them only the first are logged.
#pragma once

#include "formats/base/scanner.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct MapResource {
    std::string type; ///< four characters
    std::int16_t id;  ///< above 0
};

/// One file of a resource map.
struct MapFileBlock {
    std::string name; ///< lower case
    std::vector<MapResource> resources;
};

/// What the log is told of one map file: a text of another kind that bears a map's name would fill
/// the disk.
class MapProblems {
  public:
    static constexpr int kMaxLogged = 50;

    /// `path` names the map in the log.
    explicit MapProblems(std::string_view path) : path_(path) {}
    void log(int line, const char* problem);

  private:
    std::string path_;
    int count_ = 0;
};

/// Reads a resource map block by block. A block with a file name that is too long or with more
/// resources than the map's second line announces is left out; a map with an identifier that is too
/// long, which could not be told from another, or without a number in its second line is not
/// usable.
class ResourceMap {
  public:
    static constexpr std::size_t kMaxIdentifier = 39; ///< characters
    static constexpr std::size_t kMaxFileName = 15;

    /// `path` names the map in the log. The text must outlive the reader.
    ResourceMap(std::string_view path, std::string_view text);

    /// Empty when it was too long.
    [[nodiscard]] const std::string& identifier() const { return identifier_; }

    /// Whether its first two lines make sense; if not, it has no blocks and is as good as none.
    [[nodiscard]] bool isUsable() const { return usable_; }

    /// The next block that can be used; false at the end of the map.
    bool nextBlock(MapFileBlock& block);

  private:
    std::string_view line();
    void readHeader();
    /// Leaves the whole map out.
    void reject(const char* problem);
    /// The file name of a block; empty when it is no usable one.
    std::string fileName(std::string_view line);
    /// False when there were more than announced.
    bool readResources(std::vector<MapResource>& resources);
    bool parseResource(std::string_view line, MapResource& resource);
    void logLine(const char* problem);

    MapProblems problems_;
    formats::TextScanner scanner_;
    std::string identifier_;
    std::size_t maxResources_ = 0;
    bool usable_ = true;
};

/// What an animation object says in one of its sequences.
struct SequenceSoundRecord {
    std::int16_t animationObject;
    std::int16_t sequence;
    std::int32_t sound;
};

/// `path` names the map in the log.
[[nodiscard]] std::vector<SequenceSoundRecord> readAudioMap(const std::string& path,
                                                            std::string_view text);

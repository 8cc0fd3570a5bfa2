// Unpacks one library: its part of a manifest, and the files that the manifest names. What cannot
// be made again from pictures stays a file as it is; what a manifest cannot express is kept in a
// layout (nelayout.h).
#pragma once

#include "filesystem.h"
#include "library/maps.h"
#include "pictures/palettestock.h"
#include "safenames.h"

#include <map>
#include <set>

namespace rsc {

struct UnpackedLibrary {
    std::string lines; ///< of the manifest
    std::vector<OutputFile> files;
    std::vector<std::string> notes;  ///< what stays as it is, for the author
    std::vector<std::string> faults; ///< what is damaged
};

class LibraryUnpacker {
  public:
    /// `map` is the library's part of a resource map, if there is one: its order is kept. With
    /// `mapped`, the manifest will ask for a map. Library and palettes must outlive the unpacker.
    LibraryUnpacker(const GivenLibrary& given, const PaletteStock& palettes, const MapLibrary* map,
                    bool mapped)
        : given_(given), library_(given.library), palettes_(palettes), mapped_(mapped),
          order_(orderOf(library_, map)) {}

    /// Refused when its resources share more bytes than those of any sensible library.
    [[nodiscard]] UnpackedLibrary unpack();

  private:
    static std::vector<std::size_t> orderOf(const NeLibrary& library, const MapLibrary* map);
    void checkSharing() const;

    void unpackEntry(std::size_t index);
    /// Whether it became something that authors can change; otherwise it stays as it is.
    bool unpackMade(const ResourceEntry& entry);
    bool unpackColours(const ResourceEntry& entry);
    bool unpackAnimated(const ResourceEntry& entry);
    [[nodiscard]] bool comesBack(const ResourceEntry& entry,
                                 const std::optional<UnpackedResource>& unpacked);
    void addUnpacked(UnpackedResource unpacked);
    void addMade(Bytes packed);
    void keepFile(std::size_t index, bool isPart);
    [[nodiscard]] std::string fileLine(const ResourceEntry& entry, const std::string& file);
    [[nodiscard]] ByteSpan contentOf(const ResourceEntry& entry) const;
    std::string fileOf(const ResourceEntry& entry);
    std::string newFile(const ResourceEntry& entry);
    const std::string& nameOf(const ResourceEntry& entry);
    [[nodiscard]] std::size_t unit() const { return std::size_t{1} << library_.alignmentShift(); }
    [[nodiscard]] bool isExpressible(const ResourceEntry& entry);
    void usePalette(const GivenPalette& palette);
    void finish();
    [[nodiscard]] bool comesBackWithoutLayout() const;
    [[nodiscard]] bool comesBackWith(const Bytes& layout) const;
    void note(const ResourceEntry& entry, const std::string& text);

    /// What packing makes of an entry of the table.
    struct Packed {
        std::size_t index = 0;
        bool isPart = false;
        Bytes made;    ///< of what it was unpacked to
        ByteSpan data; ///< `made`, or bytes of the library
    };
    using Range = std::pair<std::size_t, std::size_t>; ///< offset and length

    const GivenLibrary& given_;
    const NeLibrary& library_;
    const PaletteStock& palettes_;
    bool mapped_;
    std::vector<std::size_t> order_; ///< entries of the table, in the manifest's order
    UnpackedLibrary result_;
    SafeNames safeNames_;
    std::map<const ResourceEntry*, std::string> names_; ///< with the folder, without extension
    std::string used_;                                  ///< palette of the last "use" line
    std::vector<Packed> packed_;
    std::set<std::pair<std::string, int>> keys_; ///< types and ids of the lines so far
    std::set<Range> made_;                       ///< what did not stay as it was
    std::map<Range, std::string> files_;         ///< what stayed as it is
};

} // namespace rsc

#include "library/extract.h"

#include "library/libraryunpacker.h"
#include "library/maps.h"
#include "manifest/givenfiles.h"
#include "manifest/pack.h"
#include "manifest/words.h"

#include <algorithm>
#include <map>
#include <ostream>

namespace rsc {

namespace {

namespace fs = std::filesystem;

/// Refuses a folder whose files would be mixed with what is unpacked, or no folder.
void checkFolder(const fs::path& folder, bool force) {
    std::error_code error;
    const fs::file_status status = fs::status(folder, error);
    if (!fs::exists(status)) return;
    if (!fs::is_directory(status)) throw Refusal(folder.string() + ": is no folder");
    const bool isEmpty = fs::is_empty(folder, error);
    if (error) throw Refusal(folder.string() + ": cannot be read: " + error.message());
    if (!isEmpty && !force)
        throw Refusal(folder.string() + ": is not empty: name another folder, or add --force");
}

class Extractor {
  public:
    Extractor(const ExtractOptions& options, std::ostream& out, std::ostream& errors)
        : options_(options), out_(out), errors_(errors) {}

    /// False when something is damaged.
    bool extract() {
        checkFolder(options_.folder, options_.force);
        read();
        const PaletteStock palettes(libraries_, options_.palette);
        if (palettes.palettes().empty() && hasAnimations())
            out_ << "no palette in these libraries: pictures are shown in greys\n";
        for (OutputFile& picture : palettes.pictures()) add(std::move(picture));
        std::string lines;
        for (const GivenLibrary& library : libraries_) lines += unpack(library, palettes);
        addManifest(palettes.lines() + lines);
        writeFiles(options_.folder, outputs_);
        return whole_;
    }

  private:
    void read() {
        files_ = readLibraryFiles(options_.files);
        if (const auto text = readBeside(files_, kResourceMapName)) readMap(*text);
        std::ranges::stable_sort(files_, {},
                                 [&](const LibraryFile& file) { return placeInMap(file.name); });
        SafeNames folders;
        for (const LibraryFile& file : files_) {
            const std::string folder = folders.take(file.name.substr(0, file.name.rfind('.')));
            onPath(file.path, [&] {
                libraries_.push_back({file.path, file.name, folder, NeLibrary(file.bytes)});
            });
        }
    }

    [[nodiscard]] bool hasAnimations() const {
        return std::ranges::any_of(libraries_, [](const GivenLibrary& library) {
            return std::ranges::find(library.library.entries(), "ASEQ", &ResourceEntry::type) !=
                   library.library.entries().end();
        });
    }

    void readMap(const std::string& text) {
        mapText_ = text;
        map_ = readResourceMap(text);
        try {
            checkMapIdentifier(map_.identifier);
            mapName_ = asName(map_.identifier);
        } catch (const Refusal&) { // no map of ours
        }
    }

    [[nodiscard]] std::size_t placeInMap(const std::string& library) const {
        const auto found = std::ranges::find(map_.libraries, library, &MapLibrary::name);
        return static_cast<std::size_t>(found - map_.libraries.begin());
    }

    std::string unpack(const GivenLibrary& library, const PaletteStock& palettes) {
        const std::size_t place = placeInMap(library.name);
        const MapLibrary* map = place < map_.libraries.size() ? &map_.libraries[place] : nullptr;
        UnpackedLibrary unpacked = onPath(library.path, [&] {
            return LibraryUnpacker(library, palettes, map, mapName_.has_value()).unpack();
        });
        for (OutputFile& file : unpacked.files) add(std::move(file));
        for (const std::string& text : unpacked.notes) note(library.path.string(), text);
        for (const std::string& text : unpacked.faults) {
            errors_ << library.path.string() << ": " << text << "\n";
            whole_ = false;
        }
        return unpacked.lines + "\n";
    }

    void addManifest(const std::string& lines) {
        std::string text = "# Unpacked by zorbet-rsc.\nmap " + mapName_.value_or("none") + "\n";
        const Manifest manifest = parseManifest(text + lines, {});
        checkMap(manifest);
        if (wantsAudioMap(manifest)) text += "audiomap\n";
        text += "\n" + lines;
        add({kExtractedManifest, Bytes(text.begin(), text.end())});
    }

    /// Whether the map would be the same again.
    void checkMap(const Manifest& manifest) {
        if (mapText_ && (!mapName_ || buildMap(manifest) != *mapText_))
            note(std::string(kResourceMapName), "would be packed to other bytes");
    }

    /// Whether there is an audio map and packing would give the same one.
    bool wantsAudioMap(const Manifest& manifest) {
        const auto text = readBeside(files_, kAudioMapName);
        if (!text) return false;
        AudioMap map;
        try {
            for (std::size_t i = 0; i < libraries_.size(); ++i)
                addSounds(manifest.libraries[i], libraries_[i].library, map);
        } catch (const Refusal&) { // damage, which was told before
            map = {};
        }
        const bool isSame = map.text() == *text;
        if (!isSame) note(std::string(kAudioMapName), "would be packed to other bytes");
        return isSame;
    }

    /// The animations in the order of the manifest, as packing meets them.
    static void addSounds(const LibraryPlan& plan, const NeLibrary& library, AudioMap& map) {
        std::map<int, ByteSpan> animations;
        for (const ResourceEntry& entry : library.entries())
            if (entry.type == "ASEQ" && entry.name.empty())
                animations.try_emplace(entry.id, library.data(entry));
        for (const ResourcePlan& resource : plan.resources)
            if (resource.type == "ASEQ") map.add(resource.id, animations.at(resource.id));
    }

    void note(const std::string& file, const std::string& text) {
        out_ << file << ": " << text << "\n";
    }

    void add(OutputFile file) {
        size_ += file.data.size();
        if (size_ > kLargestFile)
            throw Refusal("more than 1 GiB would be written: unpack the libraries one by one");
        outputs_.push_back(std::move(file));
    }

    const ExtractOptions& options_;
    std::ostream& out_;
    std::ostream& errors_;
    std::vector<LibraryFile> files_;
    std::vector<GivenLibrary> libraries_; ///< in the order of the map
    std::optional<std::string> mapText_;
    std::optional<std::string> mapName_; ///< none: no map is packed
    ResourceMapText map_;
    std::vector<OutputFile> outputs_;
    std::size_t size_ = 0; ///< of all outputs, in bytes
    bool whole_ = true;
};

} // namespace

int runExtract(const ExtractOptions& options, std::ostream& out, std::ostream& errors) {
    try {
        return Extractor(options, out, errors).extract() ? 0 : 1;
    } catch (const Refusal& refusal) {
        errors << refusal.what() << "\n";
        return 1;
    }
}

} // namespace rsc

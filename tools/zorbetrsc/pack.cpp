#include "pack.h"

#include "animationbuilder.h"
#include "nelibrary.h"
#include "palette.h"
#include "picture.h"
#include "resourcemap.h"

#include <optional>
#include <ostream>

namespace rsc {

namespace {

namespace fs = std::filesystem;

/// Runs `work` on a file that the manifest names; a refusal names the file and its line.
template <class Work>
auto onFile(const FileName& file, Work&& work) {
    return atLine(file.line, [&] {
        try {
            return work();
        } catch (const Refusal& refusal) {
            throw Refusal(file.path + ": " + refusal.what());
        }
    });
}

class Packer {
  public:
    Packer(Manifest manifest, fs::path base)
        : manifest_(std::move(manifest)), base_(std::move(base)) {}

    std::vector<OutputFile> build() {
        for (const PalettePlan& palette : manifest_.palettes)
            palettes_.push_back(atLine(palette.line, [&] { return makePalette(palette); }));
        std::vector<OutputFile> files;
        for (const LibraryPlan& library : manifest_.libraries)
            files.push_back(atLine(library.line, [&] { return makeLibrary(library); }));
        if (manifest_.mapIdentifier) files.push_back(makeMap());
        return files;
    }

  private:
    [[nodiscard]] Bytes read(const FileName& file) const {
        return onFile(file, [&] { return readWholeFile(base_ / file.path); });
    }

    [[nodiscard]] Picture readPicture(const FileName& file) const {
        const Bytes png = read(file);
        return onFile(file, [&] { return Picture::fromPng(png); });
    }

    [[nodiscard]] Palette makePalette(const PalettePlan& plan) const {
        if (plan.indexed) {
            const Picture picture = readPicture(*plan.indexed);
            return onFile(*plan.indexed, [&] { return Palette::fromIndexed(picture); });
        }
        PaletteMaker maker;
        for (const FileName& file : plan.pictures) maker.add(readPicture(file));
        return maker.make();
    }

    [[nodiscard]] Bytes content(const ColoursPlan& colours) const {
        return palettes_[colours.palette].resource();
    }

    [[nodiscard]] Bytes content(const PlainFilePlan& plain) const {
        Bytes data = read(plain.file);
        if (data.empty()) throw Refusal(plain.file.path + ": is empty");
        return data;
    }

    [[nodiscard]] Bytes content(const AnimationPlan& animation) const {
        const Palette* palette = animation.palette ? &palettes_[*animation.palette] : nullptr;
        return buildAnimation(animation, palette,
                              [&](const FileName& file) { return readPicture(file); });
    }

    [[nodiscard]] OutputFile makeLibrary(const LibraryPlan& library) const {
        std::vector<Resource> resources;
        for (const ResourcePlan& plan : library.resources) {
            Bytes data = atLine(plan.line, [&] {
                return std::visit([&](const auto& what) { return content(what); }, plan.content);
            });
            resources.push_back({plan.type, plan.id, std::move(data)});
        }
        return {library.name, buildNeLibrary(moduleNameOf(library.name), resources)};
    }

    /// Libraries whose types do not fit into a map are left out of it.
    [[nodiscard]] OutputFile makeMap() const {
        std::vector<MapLibrary> libraries;
        for (const LibraryPlan& library : manifest_.libraries) {
            MapLibrary entry{library.name, {}};
            for (const ResourcePlan& resource : library.resources)
                if (fitsMap(resource.type)) entry.resources.push_back({resource.type, resource.id});
            if (!entry.resources.empty()) libraries.push_back(std::move(entry));
        }
        const std::string text = atLine(manifest_.mapLine, [&] {
            return buildResourceMap(*manifest_.mapIdentifier, libraries);
        });
        return {std::string(kResourceMapName), Bytes(text.begin(), text.end())};
    }

    Manifest manifest_;
    fs::path base_; ///< paths of the manifest start here
    std::vector<Palette> palettes_;
};

} // namespace

std::vector<OutputFile> buildOutputs(const fs::path& manifest) {
    const Bytes bytes = readWholeFile(manifest);
    const std::string text(bytes.begin(), bytes.end());
    return Packer(parseManifest(text, manifest.stem().string()), manifest.parent_path()).build();
}

int runPack(const PackOptions& options, std::ostream& errors) {
    std::optional<std::vector<OutputFile>> outputs;
    try {
        outputs = buildOutputs(options.manifest);
    } catch (const Refusal& refusal) {
        errors << options.manifest.string() << ":";
        if (refusal.line() != Refusal::kNoLine) errors << refusal.line() << ":";
        errors << " " << refusal.what() << "\n";
        return 1;
    }
    try {
        writeFiles(options.folder, *outputs);
    } catch (const Refusal& refusal) {
        errors << refusal.what() << "\n";
        return 1;
    }
    return 0;
}

} // namespace rsc

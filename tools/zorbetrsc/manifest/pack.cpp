#include "manifest/pack.h"

#include "fonts/fontbuilder.h"
#include "library/maps.h"
#include "library/nelayout.h"
#include "manifest/words.h"
#include "pictures/animationbuilder.h"
#include "pictures/colourwarnings.h"
#include "pictures/cursor.h"
#include "pictures/palette.h"
#include "pictures/picture.h"
#include "sounds/gamesound.h"
#include "sounds/soundbuilder.h"

#include <deque>
#include <map>
#include <optional>
#include <ostream>
#include <utility>

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
    Packer(Manifest manifest, fs::path base, std::vector<Warning>& warnings)
        : manifest_(std::move(manifest)), base_(std::move(base)), warnings_(warnings),
          colours_(manifest_, warnings) {}

    std::vector<OutputFile> build() {
        for (const PalettePlan& palette : manifest_.palettes)
            palettes_.push_back(atLine(palette.line, [&] { return makePalette(palette); }));
        std::vector<OutputFile> files;
        for (const LibraryPlan& library : manifest_.libraries)
            files.push_back(atLine(library.line, [&] { return makeLibrary(library); }));
        if (manifest_.mapIdentifier)
            files.push_back(textFile(kResourceMapName, buildMap(manifest_)));
        if (manifest_.audioMapLine != 0) files.push_back(textFile(kAudioMapName, audioMap_.text()));
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

    [[nodiscard]] Palette makePalette(const PalettePlan& plan) {
        if (plan.indexed) {
            const Picture picture = readPicture(*plan.indexed);
            return onFile(*plan.indexed, [&] { return Palette::fromIndexed(picture); });
        }
        PaletteMaker all;
        for (const FileName& file : plan.pictures) all.add(readPicture(file));
        const std::size_t colours = all.count();
        if (colours > Palette::kGameColours && !plan.isReduced)
            colours_.warnOfPalette(plan, colours, mostColourful(plan));
        return all.make();
    }

    [[nodiscard]] ColourfulPicture mostColourful(const PalettePlan& plan) const {
        ColourfulPicture most;
        for (const FileName& file : plan.pictures) {
            PaletteMaker alone;
            alone.add(readPicture(file));
            if (alone.count() > most.colours) most = {file.path, alone.count()};
        }
        return most;
    }

    [[nodiscard]] Bytes content(const ColoursPlan& colours) const {
        return palettes_[colours.palette].resource();
    }

    [[nodiscard]] Bytes content(const PlainFilePlan& plain) const {
        Bytes data = read(plain.file);
        if (data.empty()) throw Refusal(plain.file.path + ": is empty");
        return data;
    }

    [[nodiscard]] Bytes content(const SoundPlan& sound) const {
        const Bytes file = read(sound.file);
        return onFile(sound.file, [&] { return buildSound(file, sound.rate); });
    }

    [[nodiscard]] Bytes content(const AnimationPlan& animation) {
        const auto load = [&](const FileName& file) { return readPicture(file); };
        const Palette* palette = animation.palette ? &palettes_[*animation.palette] : nullptr;
        return buildAnimation(animation, palette, load, colours_.watch(animation.palette));
    }

    [[nodiscard]] Bytes content(const FontPlan& font) const {
        const Bytes file = read(font.file);
        return onFile(font.file, [&] { return buildFont(font, file); });
    }

    [[nodiscard]] Bytes content(const CursorPlan& cursor) const {
        const Picture picture = readPicture(cursor.file);
        return onFile(cursor.file, [&] { return buildCursor(picture, cursor.hotSpot); });
    }

    [[nodiscard]] Bytes content(const PartPlan& part) const { return read(part.file); }

    OutputFile makeLibrary(const LibraryPlan& library) {
        if (library.layout) return {library.name, fillLayout(library)};
        std::vector<Resource> resources;
        for (const ResourcePlan& plan : library.resources) {
            resources.push_back({plan.type, plan.id, makeContent(plan)});
            atLine(plan.line, [&] { check(plan, resources.back().data); });
            addSounds(plan, resources.back().data);
        }
        return {library.name, buildNeLibrary(moduleNameOf(library.name), resources)};
    }

    [[nodiscard]] Bytes fillLayout(const LibraryPlan& library) {
        const Bytes layout = read(*library.layout);
        LayoutFiller filler = onFile(*library.layout, [&] { return LayoutFiller(layout); });
        std::deque<Bytes> contents;
        std::map<std::string, ByteSpan> files; // the contents of those that many lines may name
        for (const ResourcePlan& plan : library.resources) {
            const FileName* file = plainFile(plan);
            const auto known = file ? files.find(file->path) : files.end();
            const ByteSpan data =
                known != files.end() ? known->second : contents.emplace_back(makeContent(plan));
            if (file) files[file->path] = data;
            addSounds(plan, data);
            atLine(plan.line, [&] {
                check(plan, data);
                if (const auto* part = std::get_if<PartPlan>(&plan.content))
                    filler.addNumber(part->number, data);
                else
                    filler.add(plan.type, plan.id, data);
            });
        }
        return atLine(library.layout->line, [&] { return filler.build(); });
    }

    /// The file that a resource is, if it is one.
    static const FileName* plainFile(const ResourcePlan& plan) {
        if (const auto* part = std::get_if<PartPlan>(&plan.content)) return &part->file;
        const auto* plain = std::get_if<PlainFilePlan>(&plan.content);
        return plain ? &plain->file : nullptr;
    }

    [[nodiscard]] Bytes makeContent(const ResourcePlan& plan) {
        return atLine(plan.line, [&] {
            return std::visit([&](const auto& what) { return content(what); }, plan.content);
        });
    }

    /// What the game will make of a file that is added as it is.
    void check(const ResourcePlan& plan, ByteSpan data) {
        const auto* plain = std::get_if<PlainFilePlan>(&plan.content);
        if (plain && plan.type == kSoundType) checkSound(plan.id, *plain, data);
        if (plain && plan.type == "CURSOR") checkCursor(plain->file, data);
    }

    /// Refuses a sound that would be noise, or nothing, or the end of the game.
    void checkSound(int id, const PlainFilePlan& plain, ByteSpan data) {
        const SoundReport report = examineSound(data);
        if (const std::string cut = cutOffText(report.facts); !cut.empty()) warn(plain.file, cut);
        if (report.isReady()) return;
        const std::string line = "\"sound " + std::to_string(id) + " " +
                                 asName(plain.file.path).value_or(plain.file.path) + "\"";
        if (report.heard == Heard::WrongSpeed)
            return warn(plain.file, report.fault + "; " + line + " converts it");
        if (plain.isUnchecked) return warn(plain.file, report.fault);
        throw Refusal(plain.file.path + ": " + report.fault + "; " + line +
                      " converts what is a sound file of any kind");
    }

    void checkCursor(const FileName& file, ByteSpan data) {
        const std::string fault = whyArrow(data);
        if (!fault.empty())
            warn(file, "the game will show the arrow: " + fault +
                           "; make the cursor out of a PNG picture with a line \"cursor\"");
    }

    void warn(const FileName& file, const std::string& text) {
        warnings_.push_back({file.path + ": " + text, file.line});
    }

    void addSounds(const ResourcePlan& plan, ByteSpan data) {
        if (manifest_.audioMapLine == 0 || plan.type != "ASEQ") return;
        atLine(plan.line, [&] { audioMap_.add(plan.id, data); });
    }

    static OutputFile textFile(std::string_view name, const std::string& text) {
        return {std::string(name), Bytes(text.begin(), text.end())};
    }

    Manifest manifest_;
    fs::path base_; ///< paths of the manifest start here
    std::vector<Warning>& warnings_;
    ColourWarnings colours_;
    std::vector<Palette> palettes_;
    AudioMap audioMap_;
};

} // namespace

std::string buildMap(const Manifest& manifest) {
    std::vector<MapLibrary> libraries;
    for (const LibraryPlan& library : manifest.libraries) {
        MapLibrary entry{library.name, {}};
        for (const ResourcePlan& resource : library.resources)
            if (fitsMap(resource.type))
                entry.resources.push_back({resource.type, static_cast<std::int16_t>(resource.id)});
        if (!entry.resources.empty() && isMapped(library.name))
            libraries.push_back(std::move(entry));
    }
    return atLine(manifest.mapLine,
                  [&] { return buildResourceMap(*manifest.mapIdentifier, libraries); });
}

std::vector<OutputFile> buildOutputs(const fs::path& manifest, std::vector<Warning>& warnings) {
    const Bytes bytes = readWholeFile(manifest);
    const std::string text(bytes.begin(), bytes.end());
    return Packer(parseManifest(text, manifest.stem().string()), manifest.parent_path(), warnings)
        .build();
}

std::optional<std::vector<OutputFile>> packOrTell(const fs::path& manifest, std::ostream& errors) {
    std::vector<Warning> warnings;
    try {
        auto outputs = buildOutputs(manifest, warnings);
        for (const auto& [text, line] : warnings)
            errors << manifest.string() << ":" << line << ": warning: " << text << "\n";
        return outputs;
    } catch (const Refusal& refusal) {
        errors << manifest.string() << ":";
        if (refusal.line() != Refusal::kNoLine) errors << refusal.line() << ":";
        errors << " " << refusal.what() << "\n";
        return std::nullopt;
    }
}

int runPack(const PackOptions& options, std::ostream& errors) {
    const auto outputs = packOrTell(options.manifest, errors);
    if (!outputs) return 1;
    try {
        writeFiles(options.folder, *outputs);
    } catch (const Refusal& refusal) {
        errors << refusal.what() << "\n";
        return 1;
    }
    return 0;
}

} // namespace rsc

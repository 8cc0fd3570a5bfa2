#include "manifest/plans.h"

#include "library/maps.h"
#include "refusal.h"

namespace rsc {

namespace {

void checkSequence(const AnimationPlan& animation, const SequencePlan& sequence) {
    for (const formats::animation::Entry& entry : sequence.entries) {
        if (entry.code >= std::ssize(animation.frames)) {
            throw Refusal("the sequence shows frame " + std::to_string(entry.code + 1) +
                          ", but there are only " + std::to_string(animation.frames.size()));
        }
        if (entry.code >= 0 && entry.argument == 0 && !animation.rate)
            throw Refusal("frame " + std::to_string(entry.code + 1) +
                          " has no duration: give the animation a \"rate\", or write " +
                          std::to_string(entry.code + 1) + ":MS");
    }
}

void checkAnimation(const AnimationPlan& animation) {
    if (animation.frames.empty())
        throw Refusal("the animation has no frames: write \"frame PICTURE...\" below it");
    if (animation.frames.size() > 1 && animation.sequences.empty())
        throw Refusal(
            "the animation has several frames and no sequence: write one below it, such as "
            "\"sequence 1-" +
            std::to_string(animation.frames.size()) + " loop\"");
    for (const SequencePlan& sequence : animation.sequences)
        atLine(sequence.line, [&] { checkSequence(animation, sequence); });
}

void checkLibrary(const LibraryPlan& library, bool mapped) {
    if (library.resources.empty() && !library.layout)
        throw Refusal(
            "the library holds nothing: name below it what goes into it, or take the line "
            "away");
    for (const ResourcePlan& resource : library.resources) {
        atLine(resource.line, [&] {
            const bool isPart = std::holds_alternative<PartPlan>(resource.content);
            if (isPart && !library.layout)
                throw Refusal("\"part\" belongs into a library with a \"layout\" line");
            if (mapped && !isPart) checkMappable(library.name, resource.type);
            if (const auto* animation = std::get_if<AnimationPlan>(&resource.content))
                checkAnimation(*animation);
        });
    }
}

} // namespace

void checkManifest(const Manifest& manifest) {
    for (const PalettePlan& palette : manifest.palettes)
        if (palette.pictures.empty() && !palette.indexed)
            throw Refusal("the palette has no pictures: write \"from PICTURE...\" or \"indexed "
                          "PICTURE\" below it",
                          palette.line);
    if (manifest.libraries.empty())
        throw Refusal(
            "the manifest names no library: write \"library NAME.rsc\", and below it what "
            "goes into it");
    for (const LibraryPlan& library : manifest.libraries)
        atLine(library.line, [&] { checkLibrary(library, manifest.mapIdentifier.has_value()); });
    if (manifest.mapIdentifier && manifest.mapLine == 0)
        checkMapIdentifier(*manifest.mapIdentifier);
}

} // namespace rsc

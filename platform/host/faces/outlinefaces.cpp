#include "platform/host/faces/outlinefaces.h"

#include "formats/base/latin1.h"
#include "platform/host/faces/outlineface.h"
#include "platform/host/machine/handle.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <vector>

namespace platform {

namespace {

using Config = Handle<FcConfig, FcConfigDestroy>;
using Pattern = Handle<FcPattern, FcPatternDestroy>;
using Properties = Handle<FcObjectSet, FcObjectSetDestroy>;
using Fonts = Handle<FcFontSet, FcFontSetDestroy>;

const FcChar8* text(const std::string& utf8) {
    return reinterpret_cast<const FcChar8*>(utf8.c_str());
}

bool isOfFamily(const FcPattern& font, const std::string& family) {
    FcChar8* name = nullptr;
    for (int i = 0; FcPatternGetString(&font, FC_FAMILY, i, &name) == FcResultMatch; ++i)
        if (FcStrCmpIgnoreCase(name, text(family)) == 0) return true;
    return false;
}

int numberOf(const FcPattern& font, const char* property, int usual) {
    int value = usual;
    return FcPatternGetInteger(&font, property, 0, &value) == FcResultMatch ? value : usual;
}

/// How far a face is from the style that is wanted; the smallest is the best.
int distance(const FontFile& file, const TypefaceRequest& request) {
    constexpr int kWrongSlant = 1000;
    const int weight = request.bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR;
    return std::abs(file.weight - weight) + (file.italic == request.italic ? 0 : kWrongSlant);
}

std::optional<FontFile> fileOf(const FcPattern& font) {
    FcChar8* path = nullptr;
    if (FcPatternGetString(&font, FC_FILE, 0, &path) != FcResultMatch) return std::nullopt;
    FontFile file;
    file.path = reinterpret_cast<const char*>(path);
    file.face = numberOf(font, FC_INDEX, 0);
    file.weight = numberOf(font, FC_WEIGHT, FC_WEIGHT_REGULAR);
    file.italic = numberOf(font, FC_SLANT, FC_SLANT_ROMAN) != FC_SLANT_ROMAN;
    file.bold = file.weight >= FC_WEIGHT_DEMIBOLD;
    return file;
}

} // namespace

const bool OutlineFaces::kAvailable = true;

struct OutlineFaces::State {
    Config config{FcInitLoadConfigAndFonts()};
    std::vector<std::string> added; ///< files, as often as they were
    FontLibrary library = openFontLibrary();

    /// The faces of a family, in an order that does not depend on the machine's.
    [[nodiscard]] std::vector<FontFile> facesOf(std::string_view family) const {
        const std::string name = formats::utf8FromLatin1(family);
        const Pattern pattern(FcPatternCreate());
        FcPatternAddString(pattern.get(), FC_FAMILY, text(name));
        FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
        const Properties properties(FcObjectSetBuild(FC_FAMILY, FC_FILE, FC_INDEX, FC_WEIGHT,
                                                     FC_SLANT, static_cast<char*>(nullptr)));
        const Fonts fonts(FcFontList(config.get(), pattern.get(), properties.get()));
        std::vector<FontFile> files;
        for (int i = 0; fonts && i < fonts->nfont; ++i) {
            if (!isOfFamily(*fonts->fonts[i], name)) continue;
            if (auto file = fileOf(*fonts->fonts[i])) files.push_back(*std::move(file));
        }
        std::ranges::sort(files, [](const FontFile& a, const FontFile& b) {
            return a.path != b.path ? a.path < b.path : a.face < b.face;
        });
        return files;
    }
};

OutlineFaces::OutlineFaces() = default;
OutlineFaces::~OutlineFaces() = default;

bool OutlineFaces::hasFamily(std::string_view family) {
    if (!state_) state_ = std::make_unique<State>();
    return !state_->facesOf(family).empty();
}

std::unique_ptr<Typeface> OutlineFaces::open(const TypefaceRequest& request) {
    if (!state_) state_ = std::make_unique<State>();
    const std::vector<FontFile> files = state_->facesOf(request.family);
    const auto best = std::ranges::min_element(
        files, {}, [&](const FontFile& file) { return distance(file, request); });
    return best == files.end() ? nullptr : openOutlineFace(state_->library, *best, request);
}

bool OutlineFaces::addFile(const std::string& path) {
    if (!state_) state_ = std::make_unique<State>();
    if (!FcConfigAppFontAddFile(state_->config.get(), text(path))) return false;
    state_->added.push_back(path);
    return true;
}

void OutlineFaces::removeFile(const std::string& path) {
    if (!state_) return;
    const auto found = std::ranges::find(state_->added, path);
    if (found == state_->added.end()) return;
    state_->added.erase(found);
    // The library can only forget all of them.
    FcConfigAppFontClear(state_->config.get());
    for (const std::string& file : state_->added)
        FcConfigAppFontAddFile(state_->config.get(), text(file));
}

} // namespace platform

#include "omttfont.h"

#include "omdebug.h"
#include "ompath.h"
#include "omplatform.h"

namespace {

std::string pathIn(std::string_view folder, std::string_view file) {
    const std::string home = folder.empty() ? OMPlatform().files().homeDirectory() : std::string();
    return OMPathWithBackslash(folder.empty() ? home : folder).append(file);
}

} // namespace

OMTTFont::OMTTFont(std::string_view faceName, const File& file) : OMTypefaceFont(faceName) {
    const bool named = OMDebug::check(!faceName.empty(), "faceName == NULL",
                                      "OMTTFont::OMTTFont - facename cannot be NULL or empty!");
    if (named) {
        if (!file.name.empty()) registerFile(file);
        OMDebug::check(isInstalled(faceName), "!exists",
                       "OMTTFont::OMTTFont - missing TrueType Font!");
    }
    openFace();
}

OMTTFont::~OMTTFont() {
    if (!resource_.empty()) OMPlatform().typefaces().removeFontResource(resource_);
    if (resourceIsOwn_) OMPlatform().files().remove(resource_);
}

bool OMTTFont::isInstalled(std::string_view faceName) {
    return OMPlatform().typefaces().hasFamily(faceName);
}

/// A font resource that lies there already is used, and left there.
void OMTTFont::registerFile(const File& file) {
    const std::string name(file.name);
    const std::string font = pathIn(file.folder, name + ".ttf");
    const std::string resource = pathIn(file.resourceFolder, name + ".fot");
    platform::Typefaces& faces = OMPlatform().typefaces();
    resourceIsOwn_ = faces.createFontResource(resource, font);
    if (resourceIsOwn_ || OMPlatform().files().exists(resource)) resource_ = resource;
    if (!resource_.empty() && !faces.addFontResource(resource_) && !resourceIsOwn_)
        resource_.clear();
}

void OMTTFont::openFace() {
    platform::Typefaces& faces = OMPlatform().typefaces();
    std::unique_ptr<platform::Typeface> face =
        faces.open({.family = name(),
                    .size = size_,
                    .bold = (style_ & kBold) != 0,
                    .italic = (style_ & kItalic) != 0,
                    .underline = (style_ & kUnderline) != 0});
    setFace(face ? std::move(face) : faces.systemFont());
}

void OMTTFont::setSize(int pixels) {
    if (pixels == size_) return;
    size_ = pixels;
    openFace();
}

void OMTTFont::setStyle(int bits) {
    if (bits == style_) return;
    style_ = bits;
    openFace();
}

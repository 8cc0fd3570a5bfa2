#include "omfontsource.h"

#include "omfont.h"

OMTextFont::OMTextFont(const char* missing) : missing_(missing) {}

OMTextFont::OMTextFont(const OMTextFont& other) : missing_(other.missing_), use_(other.use_) {}

OMTextFont::~OMTextFont() = default;

OMFont& OMTextFont::font() const {
    if (OMFont* used = use_.font()) return *used;
    if (!system_) system_ = std::make_unique<OMSysFont>();
    return *system_;
}

OMFontSource* OMTextFont::source() const {
    return OMFontSource::require("fontURL == NULL", missing_);
}

bool OMTextFont::useNFNT(int id) {
    OMFontSource* fonts = source();
    if (fonts) use(OMFontUse(fonts->useNFNT(id)));
    return fonts != nullptr;
}

bool OMTextFont::useTrueType(std::string_view face, int style, int size) {
    OMFontSource* fonts = source();
    if (fonts) use(OMFontUse(fonts->useTrueType(face, style, size)));
    return fonts != nullptr;
}

#include "omfont.h"

#include "omplatform.h"

#include "platform/typefaces.h"

int OMFont::textWidth(std::string_view text) const {
    int width = 0;
    for (const char c : text) width += glyph(static_cast<unsigned char>(c)).advance;
    return width;
}

platform::Rect OMFont::textExtent(std::string_view text) const {
    platform::Rect extent{0, -ascent(), 0, descent()};
    if (text.empty()) return extent;
    const OMGlyph& last = glyph(static_cast<unsigned char>(text.back()));
    extent.left = glyph(static_cast<unsigned char>(text.front())).left;
    extent.right = textWidth(text) - last.advance + last.left + last.width;
    return extent;
}

OMTypefaceFont::~OMTypefaceFont() = default;

int OMTypefaceFont::ascent() const { return face_->metrics().ascent; }
int OMTypefaceFont::descent() const { return face_->metrics().descent; }
int OMTypefaceFont::leading() const { return face_->metrics().leading; }

const OMGlyph& OMTypefaceFont::glyph(unsigned char code) const {
    std::optional<OMGlyph>& glyph = glyphs_[code];
    if (glyph) return *glyph;
    const platform::GlyphPicture& picture = face_->glyph(code);
    return glyph.emplace(OMGlyph{.bits = picture.bits.data(),
                                 .stride = static_cast<std::size_t>((picture.width + 7) / 8),
                                 .left = picture.left,
                                 .top = picture.top,
                                 .width = picture.width,
                                 .height = picture.height,
                                 .advance = picture.advance});
}

void OMTypefaceFont::setFace(std::unique_ptr<platform::Typeface> face) {
    face_ = std::move(face);
    glyphs_.fill(std::nullopt);
    measureLine();
}

OMSysFont::OMSysFont() : OMTypefaceFont("System font") {
    setFace(OMPlatform().typefaces().systemFont());
}

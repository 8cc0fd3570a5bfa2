#include "fonts/facefont.h"

#include "platform/host/machine/handle.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_MODULE_H
#include FT_OUTLINE_H

#include <algorithm>
#include <climits>
#include <cstddef>
#include <memory>

namespace rsc {

namespace {

constexpr FT_Pos kPixel = 64; ///< the library's unit is 1/64 of a pixel
constexpr FT_Fixed kOne = 0x10000;
constexpr FT_Fixed kSlant = 0x3333; ///< a pixel to the right every five rows
/// Pixels of a side of an outline: emboldened and with whole pixels at its edges, it is still
/// within kLargestGlyph.
constexpr FT_Pos kLargestOutline = kLargestGlyph - 4;
/// The one that hints as designers of screen fonts expect.
constexpr FT_UInt kHinting = 35;

using Library = platform::Handle<FT_LibraryRec_, FT_Done_FreeType>;
using Face = platform::Handle<FT_FaceRec_, FT_Done_Face>;

void check(FT_Error error, const std::string& what) {
    if (error != FT_Err_Ok) throw Refusal(what + " (FreeType error " + std::to_string(error) + ")");
}

Library openLibrary() {
    FT_Library raw = nullptr;
    check(FT_Init_FreeType(&raw), "FreeType does not start");
    // whatever the environment asks for, so that a face always gives the same bytes; a library
    // that has only another way refuses and keeps that one
    (void)FT_Property_Set(raw, "truetype", "interpreter-version", &kHinting);
    return Library(raw);
}

/// `file` must outlive the face.
Face openFace(const Library& library, ByteSpan file, int size) {
    FT_Face raw = nullptr;
    check(
        FT_New_Memory_Face(library.get(), file.data(), static_cast<FT_Long>(file.size()), 0, &raw),
        "the face cannot be read");
    Face face(raw);
    if (!FT_IS_SCALABLE(raw)) throw Refusal("the face has no outlines");
    check(FT_Select_Charmap(raw, FT_ENCODING_UNICODE), "the face does not tell its characters");
    check(FT_Set_Pixel_Sizes(raw, 0, static_cast<FT_UInt>(size)), "the face has no such size");
    return face;
}

int roundedUp(FT_Pos value) { return static_cast<int>((value + kPixel - 1) / kPixel); }

class Renderer {
  public:
    Renderer(ByteSpan file, const FaceStyle& style)
        : style_(style), library_(openLibrary()), face_(openFace(library_, file, style.size)) {}

    BitmapFont render() {
        const FT_Size_Metrics& metrics = face_->size->metrics;
        BitmapFont font;
        font.ascent = roundedUp(std::max(FT_Pos{0}, metrics.ascender));
        font.descent = roundedUp(std::max(FT_Pos{0}, -metrics.descender));
        font.leading = std::max(0, roundedUp(metrics.height) - font.ascent - font.descent);
        for (int code = 0; code < kLatin1Codes; ++code) {
            const FT_UInt index = FT_Get_Char_Index(face_.get(), static_cast<FT_ULong>(code));
            if (index != 0) font.glyphs.emplace(code, renderGlyph(code, index));
        }
        return font;
    }

  private:
    Glyph renderGlyph(int code, FT_UInt index) {
        const std::string name = "character " + std::to_string(code);
        check(FT_Load_Glyph(face_.get(), index, FT_LOAD_TARGET_MONO | FT_LOAD_NO_BITMAP),
              name + " cannot be read");
        FT_GlyphSlot slot = face_->glyph;
        if (style_.italic) slant(slot->outline);
        checkSize(name, slot->outline);
        check(FT_Render_Glyph(slot, FT_RENDER_MODE_MONO), name + " cannot be drawn");
        Glyph glyph = copied(*slot);
        if (style_.bold) embolden(glyph);
        return glyph;
    }

    static void slant(FT_Outline& outline) {
        const FT_Matrix matrix{kOne, kSlant, 0, kOne};
        FT_Outline_Transform(&outline, &matrix);
    }

    /// Damaged outlines reach far.
    static void checkSize(const std::string& name, FT_Outline& outline) {
        FT_BBox box{};
        FT_Outline_Get_CBox(&outline, &box);
        const FT_Pos width = (box.xMax - box.xMin) / kPixel;
        const FT_Pos height = (box.yMax - box.yMin) / kPixel;
        if (width > kLargestOutline || height > kLargestOutline)
            throw Refusal(name + " has " + std::to_string(width) + "x" + std::to_string(height) +
                          " pixels, allowed are " + std::to_string(kLargestOutline));
    }

    static Glyph copied(const FT_GlyphSlotRec& slot) {
        const FT_Bitmap& bitmap = slot.bitmap;
        Glyph glyph;
        glyph.advance = static_cast<int>((slot.advance.x + kPixel / 2) / kPixel);
        if (bitmap.width == 0 || bitmap.rows == 0) return glyph;
        glyph.left = slot.bitmap_left;
        glyph.top = slot.bitmap_top;
        glyph.width = static_cast<int>(bitmap.width);
        glyph.height = static_cast<int>(bitmap.rows);
        for (int y = 0; y < glyph.height; ++y) {
            const unsigned char* row = bitmap.buffer + std::ptrdiff_t{bitmap.pitch} * y;
            for (int x = 0; x < glyph.width; ++x)
                glyph.ink.push_back((row[x / CHAR_BIT] & 0x80 >> x % CHAR_BIT) != 0);
        }
        return glyph;
    }

    const FaceStyle& style_;
    Library library_;
    Face face_;
};

} // namespace

bool canRenderFaces() { return true; }

BitmapFont renderFace(ByteSpan file, const FaceStyle& style) {
    return Renderer(file, style).render();
}

} // namespace rsc

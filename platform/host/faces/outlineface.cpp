#include "platform/host/faces/outlineface.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#include FT_TRUETYPE_TABLES_H

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>
#include <utility>

namespace platform {

namespace {

constexpr int kBoldParts = 24;        ///< a bold stroke is wider by this part of the size
constexpr FT_Fixed kSlant = 0x3333;   ///< 0.2, an angle of 11 degrees
constexpr FT_ULong kSymbols = 0xF000; ///< where fonts of symbols have their characters
constexpr int kMostEms = 4;           ///< of a length that is believed, in sizes of the face

int rounded(FT_Pos length) { return static_cast<int>((length + 32) >> 6); } // 26.6

bool bit(const GlyphPicture& picture, int x, int y) {
    const auto stride = static_cast<std::size_t>((picture.width + 7) / 8);
    return (picture.bits[static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x) / 8] >>
            (7 - x % 8)) &
           1;
}

void setBit(GlyphPicture& picture, int x, int y) {
    const auto stride = static_cast<std::size_t>((picture.width + 7) / 8);
    picture.bits[static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x) / 8] |=
        static_cast<std::uint8_t>(0x80 >> (x % 8));
}

/// Where the line below a text runs, in rows from the baseline down.
struct Underline {
    int top;
    int height;
};

GlyphPicture underlined(const GlyphPicture& glyph, const Underline& line) {
    GlyphPicture result;
    result.left = std::min(glyph.left, 0);
    result.width = std::max({glyph.advance, glyph.left + glyph.width, 0}) - result.left;
    result.top = std::max(glyph.top, -line.top);
    result.height = std::max(line.top + line.height, glyph.height - glyph.top) + result.top;
    result.advance = glyph.advance;
    const int stride = (result.width + 7) / 8;
    result.bits.resize(static_cast<std::size_t>(stride) * static_cast<std::size_t>(result.height) +
                       1);
    for (int y = 0; y < glyph.height; ++y)
        for (int x = 0; x < glyph.width; ++x)
            if (bit(glyph, x, y))
                setBit(result, x + glyph.left - result.left, y + result.top - glyph.top);
    for (int y = line.top; y < line.top + line.height; ++y)
        for (int x = 0; x < glyph.advance; ++x) setBit(result, x - result.left, y + result.top);
    return result;
}

class OutlineFace final : public Typeface {
  public:
    using Face = std::unique_ptr<FT_FaceRec, decltype(&FT_Done_Face)>;

    OutlineFace(FontLibrary library, Face face, const FontFile& file,
                const TypefaceRequest& request, int size)
        : library_(std::move(library)), face_(std::move(face)), size_(size),
          makeBold_(request.bold && !file.bold), makeItalic_(request.italic && !file.italic) {
        FT_Set_Pixel_Sizes(face_.get(), 0, static_cast<FT_UInt>(size_));
        FT_Select_Charmap(face_.get(), FT_ENCODING_UNICODE);
        measure();
        if (request.underline) underline_ = underlineOfFace();
    }

    [[nodiscard]] FaceMetrics metrics() const override { return metrics_; }

    [[nodiscard]] const GlyphPicture& glyph(unsigned char code) override {
        std::optional<GlyphPicture>& picture = glyphs_[code];
        if (!picture) {
            picture = draw(code);
            if (underline_) picture = underlined(*picture, *underline_);
        }
        return *picture;
    }

  private:
    [[nodiscard]] int scaled(FT_Pos units, bool up) const {
        const FT_Pos length = FT_MulFix(units, face_->size->metrics.y_scale);
        return static_cast<int>((length + (up ? 63 : 32)) >> 6);
    }

    /// The heights that text programs keep lines apart by.
    void measure() {
        const auto* heights =
            static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face_.get(), FT_SFNT_OS2));
        FT_Pos ascent = face_->ascender;
        FT_Pos descent = -face_->descender;
        if (heights && heights->usWinAscent > 0) {
            ascent = heights->usWinAscent;
            descent = heights->usWinDescent;
        }
        const int most = kMostEms * size_;
        metrics_.ascent = std::clamp(scaled(ascent, true), -most, most);
        metrics_.descent = std::clamp(scaled(descent, true), -most, most);
        metrics_.leading = std::clamp(scaled(face_->height - ascent - descent, false), 0, most);
    }

    [[nodiscard]] Underline underlineOfFace() const {
        // The position is that of the line's middle.
        const FT_Pos top = -face_->underline_position - face_->underline_thickness / 2;
        return {std::clamp(scaled(top, false), 1, size_),
                std::clamp(scaled(face_->underline_thickness, false), 1, size_)};
    }

    [[nodiscard]] FT_UInt indexOf(unsigned char code) const {
        const FT_UInt index = FT_Get_Char_Index(face_.get(), code);
        return index != 0 ? index : FT_Get_Char_Index(face_.get(), kSymbols + code);
    }

    [[nodiscard]] GlyphPicture draw(unsigned char code) const {
        constexpr FT_Int32 kLoad = FT_LOAD_TARGET_MONO | FT_LOAD_NO_BITMAP;
        GlyphPicture picture;
        if (FT_Load_Glyph(face_.get(), indexOf(code), kLoad) != 0) return picture;
        FT_GlyphSlot slot = face_->glyph;
        picture.advance = std::clamp(rounded(slot->advance.x), 0, kMostEms * size_);
        if (slot->format != FT_GLYPH_FORMAT_OUTLINE) return picture;
        const FT_Pos wider = std::max(64, size_ * 64 / kBoldParts);
        if (makeItalic_) {
            const FT_Matrix slant{0x10000, kSlant, 0, 0x10000};
            FT_Outline_Transform(&slot->outline, &slant);
        }
        if (makeBold_) {
            FT_Outline_EmboldenXY(&slot->outline, wider, 0);
            if (picture.advance > 0) picture.advance += rounded(wider);
        }
        if (FT_Render_Glyph(slot, FT_RENDER_MODE_MONO) == 0) copy(*slot, picture);
        return picture;
    }

    void copy(const FT_GlyphSlotRec& slot, GlyphPicture& picture) const {
        const FT_Bitmap& bitmap = slot.bitmap;
        const auto width = static_cast<int>(bitmap.width);
        const auto height = static_cast<int>(bitmap.rows);
        const int most = kMostEms * size_;
        if (bitmap.pixel_mode != FT_PIXEL_MODE_MONO || width > most || height > most ||
            std::abs(slot.bitmap_left) > most || std::abs(slot.bitmap_top) > most)
            return;
        picture.left = slot.bitmap_left;
        picture.top = slot.bitmap_top;
        picture.width = width;
        picture.height = height;
        const int stride = (width + 7) / 8;
        picture.bits.reserve(static_cast<std::size_t>(stride) * static_cast<std::size_t>(height) +
                             1);
        for (int y = 0; y < height; ++y) {
            const unsigned char* row = bitmap.buffer + std::ptrdiff_t{y} * bitmap.pitch;
            picture.bits.insert(picture.bits.end(), row, row + stride);
        }
        picture.bits.push_back(0);
    }

    FontLibrary library_; ///< outlives the face
    Face face_;
    int size_;
    bool makeBold_;
    bool makeItalic_;
    std::optional<Underline> underline_;
    FaceMetrics metrics_;
    std::array<std::optional<GlyphPicture>, 256> glyphs_;
};

} // namespace

FontLibrary openFontLibrary() {
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) != 0) return nullptr;
    return {library, [](FT_Library handle) { FT_Done_FreeType(handle); }};
}

std::unique_ptr<Typeface> openOutlineFace(const FontLibrary& library, const FontFile& file,
                                          const TypefaceRequest& request) {
    FT_Face handle = nullptr;
    if (!library || FT_New_Face(library.get(), file.path.c_str(), file.face, &handle) != 0)
        return nullptr;
    OutlineFace::Face face(handle, FT_Done_Face);
    if (!FT_IS_SCALABLE(handle)) return nullptr;
    const int size = std::clamp(request.size, Typefaces::kMinSize, Typefaces::kMaxSize);
    return std::make_unique<OutlineFace>(library, std::move(face), file, request, size);
}

} // namespace platform

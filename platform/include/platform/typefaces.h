// Type faces: outline fonts that are installed on the machine or registered by the program, and the
// stock bitmap font of the system, which is the same on every machine.
//
// A face is used at one size and style; its characters come as pictures of one bit a pixel, so that
// they suit screens of any depth.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// In rows; ascent and descent lie above and below the baseline, the leading between two lines.
struct FaceMetrics {
    int ascent = 0;
    int descent = 0;
    int leading = 0;
};

/// The picture of a character. All lengths in pixels.
struct GlyphPicture {
    int left = 0;    ///< from the pen to the first column
    int top = 0;     ///< of the first row above the baseline, on which the row 0 lies
    int width = 0;   ///< columns
    int height = 0;  ///< rows
    int advance = 0; ///< of the pen
    /// Rows from the top down, (width + 7) / 8 bytes each, the leftmost pixel in the highest bit;
    /// then one byte more.
    std::vector<std::uint8_t> bits;
};

/// A face at one size and style.
class Typeface {
  public:
    virtual ~Typeface() = default;
    [[nodiscard]] virtual FaceMetrics metrics() const = 0;
    /// A character of Latin-1; one that the face does not have looks as the face wants it. The
    /// picture lives as long as the face.
    [[nodiscard]] virtual const GlyphPicture& glyph(unsigned char code) = 0;
};

struct TypefaceRequest {
    std::string_view family; ///< Latin-1, upper and lower case alike
    int size = 16;           ///< pixels of the em square; kept between kMinSize and kMaxSize
    bool bold = false;
    bool italic = false;
    bool underline = false;
};

class Typefaces {
  public:
    static constexpr int kMinSize = 1;
    static constexpr int kMaxSize = 400;

    virtual ~Typefaces() = default;

    [[nodiscard]] virtual std::unique_ptr<Typeface> systemFont() = 0;

    /// Whether an installed or registered scalable face has this family name.
    [[nodiscard]] virtual bool hasFamily(std::string_view family) = 0;
    /// Null when there is no such family. A style that the family lacks is made from what it has.
    [[nodiscard]] virtual std::unique_ptr<Typeface> open(const TypefaceRequest& request) = 0;

    // Faces that lie beside the program. A font resource file stands for a font file; paths as in
    // `Files`.

    /// Makes a font resource file at `resourcePath` for the font file. False when there is no such
    /// font file, or another file at `resourcePath`.
    virtual bool createFontResource(std::string_view resourcePath, std::string_view fontPath) = 0;
    /// Installs the faces of a font resource file for this program, until they are removed as often
    /// as they were added. False when it is none.
    virtual bool addFontResource(std::string_view resourcePath) = 0;
    virtual void removeFontResource(std::string_view resourcePath) = 0;
};

} // namespace platform

// A font: what texts are measured and drawn with. Texts are Latin-1, one line each; their place is
// the pen on the baseline, which moves right by the advance of each character.
//
// A character is a picture of one bit a pixel, whatever the font is made of, so that canvases of
// all depths draw it in one way.
#pragma once

#include "platform/geometry.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {
class Typeface;
}

/// The picture of a character, in pixels. The bits belong to the font and live until it changes its
/// size or style.
struct OMGlyph {
    /// Of the first row; the leftmost pixel is the highest bit. One byte more than those of all
    /// rows may be read.
    const std::uint8_t* bits = nullptr;
    std::size_t stride = 0; ///< bytes from row to row
    int firstBit = 0;       ///< of each row; the picture begins there
    int left = 0;           ///< from the pen to the first column
    int top = 0;            ///< of the first row above the baseline
    int width = 0;          ///< columns
    int height = 0;         ///< rows
    int advance = 0;        ///< of the pen
};

class OMFont {
  public:
    enum class Kind : std::uint8_t { Typeface, NFNT };

    static constexpr std::size_t kCodes = 256;

    /// Bits of a style.
    static constexpr int kBold = 1;
    static constexpr int kItalic = 2;
    static constexpr int kUnderline = 4;

    explicit OMFont(std::string_view name) : name_(name) {}
    virtual ~OMFont() = default;
    OMFont& operator=(OMFont&&) = delete;

    [[nodiscard]] const std::string& name() const { return name_; }
    /// Ascent, descent and leading: from one baseline to the next.
    [[nodiscard]] int lineHeight() const { return lineHeight_; }
    [[nodiscard]] virtual int ascent() const = 0;
    [[nodiscard]] virtual int descent() const = 0;
    [[nodiscard]] virtual int leading() const = 0;
    [[nodiscard]] virtual Kind kind() const { return Kind::Typeface; }

    /// How far a text moves the pen.
    [[nodiscard]] int textWidth(std::string_view text) const;
    /// The box around a text whose pen begins at 0, 0: from the first column of the first character
    /// to the last one of the last. An empty text has no width.
    [[nodiscard]] platform::Rect textExtent(std::string_view text) const;

    /// Without effect on fonts that have only one.
    virtual void setSize(int /*pixels*/) {}
    virtual void setStyle(int /*bits*/) {}

    [[nodiscard]] virtual const OMGlyph& glyph(unsigned char code) const = 0;

  protected:
    /// To be called when ascent, descent and leading are known, or others than before.
    void measureLine() { lineHeight_ = ascent() + descent() + leading(); }

  private:
    std::string name_;
    int lineHeight_ = 0;
};

/// A font whose pictures come from the platform.
class OMTypefaceFont : public OMFont {
  public:
    ~OMTypefaceFont() override;

    [[nodiscard]] int ascent() const override;
    [[nodiscard]] int descent() const override;
    [[nodiscard]] int leading() const override;
    [[nodiscard]] const OMGlyph& glyph(unsigned char code) const override;

  protected:
    using OMFont::OMFont;
    void setFace(std::unique_ptr<platform::Typeface> face);

  private:
    std::unique_ptr<platform::Typeface> face_;
    mutable std::array<std::optional<OMGlyph>, kCodes> glyphs_; ///< made when they are needed
};

/// The system font: the bitmap font that the program carries, the same on every machine.
class OMSysFont final : public OMTypefaceFont {
  public:
    OMSysFont();
};

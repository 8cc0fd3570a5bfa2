// A bitmap font out of an `NFNT` resource (formats/font/nfnt.h).
#pragma once

#include "omfont.h"

#include <array>
#include <cstddef>
#include <span>
#include <vector>

class OMIStream;

class OMNFNTFont final : public OMFont {
  public:
    /// Reads the whole of `source`, which must be a whole stream. A font that cannot be read is
    /// empty: it has no height and its characters neither ink nor width. Fatal without an
    /// application.
    explicit OMNFNTFont(OMIStream& source);

    [[nodiscard]] bool isEmpty() const { return empty_; }

    [[nodiscard]] int ascent() const override { return ascent_; }
    [[nodiscard]] int descent() const override { return descent_; }
    [[nodiscard]] int leading() const override { return leading_; }
    [[nodiscard]] Kind kind() const override { return Kind::NFNT; }
    [[nodiscard]] const OMGlyph& glyph(unsigned char code) const override { return glyphs_[code]; }

  private:
    void read(std::span<const std::byte> record);

    bool empty_ = true;
    int ascent_ = 0;
    int descent_ = 0;
    int leading_ = 0;
    std::vector<std::uint8_t> strike_; ///< rows padded to 4 bytes, and a byte more
    std::array<OMGlyph, kCodes> glyphs_;
};

// The font of an object that shows text: one of the font source, or the system font while there is
// no other.
#pragma once

#include "omfontsource.h"

#include <memory>
#include <string_view>

class OMTextFont {
  public:
    /// `missing` is the message of the check that fails when there is no font source.
    explicit OMTextFont(const char* missing);
    /// Another use of the same font.
    OMTextFont(const OMTextFont& other);
    OMTextFont& operator=(const OMTextFont&) = delete;
    ~OMTextFont();

    [[nodiscard]] OMFont& font() const;

    /// For another object that shows text; empty for the system font.
    [[nodiscard]] const OMFontUse& use() const { return use_; }
    void use(OMFontUse font) { use_ = std::move(font); }
    // Without a font source a failed check: false, and the font stays.
    bool useNFNT(int id);
    bool useTrueType(std::string_view face, int style, int size);

  private:
    [[nodiscard]] OMFontSource* source() const;

    const char* missing_;
    OMFontUse use_;
    mutable std::unique_ptr<OMFont> system_; ///< made when it is needed
};

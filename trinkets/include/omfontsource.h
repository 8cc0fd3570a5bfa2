// Where objects that show text get their fonts: shared ones, whose uses are counted. The game's
// font factory is it.
#pragma once

#include "ominstalled.h"

#include <memory>
#include <string_view>
#include <utility>

class OMFont;

class OMFontSource : public OMInstalled<OMFontSource> {
  public:
    virtual ~OMFontSource() = default;

    // Each begins a use, to be ended with doneUsing, after which the font may be gone. A font that
    // cannot be had is replaced by the system font.
    [[nodiscard]] virtual OMFont& useNFNT(int id) = 0;
    [[nodiscard]] virtual OMFont& useTrueType(std::string_view face, int style, int size) = 0;
    /// One more use of a font that is used already.
    virtual OMFont& useFont(OMFont& font) = 0;
    virtual void doneUsing(OMFont& font) = 0;
};

/// One use of a font, ended by destruction. A copy is another use.
class OMFontUse {
  public:
    OMFontUse() = default;
    /// Takes over a use that was begun with the current source.
    explicit OMFontUse(OMFont& font) : source_(OMFontSource::current()), font_(&font) {}
    ~OMFontUse() { end(); }
    OMFontUse(const OMFontUse& other) : source_(other.source_), font_(other.font()) {
        if (font_) font_ = &source_->useFont(*font_);
    }
    OMFontUse(OMFontUse&& other) noexcept
        : source_(other.source_), font_(std::exchange(other.font_, nullptr)) {}
    OMFontUse& operator=(OMFontUse other) noexcept {
        std::swap(source_, other.source_);
        std::swap(font_, other.font_);
        return *this;
    }

    /// Null when there is no use, or its source is gone with all its fonts.
    [[nodiscard]] OMFont* font() const { return hasFont() ? font_ : nullptr; }

  private:
    [[nodiscard]] bool hasFont() const { return font_ && source_ == OMFontSource::current(); }
    void end() {
        if (hasFont()) source_->doneUsing(*font_);
    }

    OMFontSource* source_ = nullptr;
    OMFont* font_ = nullptr;
};

/// The font of an object that shows text: one of the font source, or the system font while there is
/// no other.
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

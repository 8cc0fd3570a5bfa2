// A text on the screen: a line, or lines in a box, in one font and colour.
//
//     t=RText x y width height [z]      a length of -1: as much as the text needs
//
// Lines begin at the left edge of the box, the first at its top. A fitting box is as wide as the
// ink of its lines, where that hangs over. What lies outside of the box is not drawn.
#pragma once

#include "omcolor.h"
#include "omtextfont.h"
#include "omtrinket.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

class RText final : public OMTrinket {
  public:
    static const OMSClass kClass;
    static constexpr int kFitting = -1; ///< as a length: as much as the text needs

    /// Lengths of the box below 0 are kFitting.
    RText(OMTrinketWindow& window, const platform::Rect& box);
    ~RText() override;

    [[nodiscard]] std::unique_ptr<OMScriptableObject> duplicate() override;

    /// Palette index; one that does not exist fails a check and changes nothing.
    [[nodiscard]] int colorIndex() const { return color_.index(); }
    void setColorIndex(int index) { changeColor(index); }
    [[nodiscard]] int fontAscent() const;
    [[nodiscard]] int fontDescent() const;
    [[nodiscard]] int fontLeading() const;
    [[nodiscard]] const std::string& text() const { return text_; }
    void setText(const std::string& text);
    /// Of the box, in pixels.
    [[nodiscard]] int textHeight() const { return boundingRectangle().height(); }
    void setTextHeight(int height);
    [[nodiscard]] int textWidth() const { return boundingRectangle().width(); }
    void setTextWidth(int width);
    [[nodiscard]] int userData() const { return userData_; }
    void setUserData(int value) { userData_ = value; }
    /// Whether lines are broken at the width of the box; a fitting width breaks none.
    [[nodiscard]] bool wrap() const { return wrap_; }
    void setWrap(bool wrap);

    /// A number alone is the id of an `NFNT` resource; else a TrueType face with its size and style
    /// bits. Without a font source a failed check, and nothing changes.
    void chooseFont(const std::string& font, std::optional<int> size, std::optional<int> style);
    void setFont(OMFontUse font);

    void paint(OMMemCanvas& canvas, const OMRegion& clip) override;

  private:
    RText(const RText& other);

    void changeColor(int index);
    /// Makes the lines anew and fits the box to them.
    void layOut();

    std::string text_;
    OMTextFont font_{"URL has to be installed in RText"};
    OMColor color_{0};
    int width_; ///< as asked for, or kFitting
    int height_;
    int inset_ = 0; ///< of the pen, so that a fitting box has all ink of its first characters
    bool wrap_ = false;
    int userData_ = 0;
    std::vector<std::string_view> lines_; ///< parts of text_
};

// A text on the screen: a line, or lines in a box, in one font and colour.
//
//     t=RText x y width height [z]      a length of -1: as much as the text needs
//
// Lines begin at the left edge of the box, the first at its top. A fitting box is as wide as the
// ink of its lines, where that hangs over. What lies outside of the box is not drawn.
#pragma once

#include "omtrinket.h"
#include "textblock.h"

#include <optional>
#include <string>

class RText final : public OMSCopied<RText, OMTrinket> {
  public:
    static const OMSClass kClass;
    static constexpr int kFitting = -1; ///< as a length: as much as the text needs

    /// Lengths of the box below 0 are kFitting.
    RText(OMTrinketWindow& window, const platform::Rect& box);
    RText(const RText& other);
    ~RText() override;

    /// Palette index; one that does not exist fails a check and changes nothing.
    [[nodiscard]] int colorIndex() const { return block_.colorIndex(); }
    void setColorIndex(int index);
    [[nodiscard]] int fontAscent() const;
    [[nodiscard]] int fontDescent() const;
    [[nodiscard]] int fontLeading() const;
    [[nodiscard]] const std::string& text() const { return block_.text(); }
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

    /// See TextBlock.
    void chooseFont(const std::string& font, std::optional<int> size, std::optional<int> style);
    void setFont(OMFontUse font);

    void paint(OMMemCanvas& canvas, const OMRegion& clip) override;

  private:
    /// Has the text laid out anew for its box, and fits that to it.
    void layOut();

    TextBlock block_{"URL has to be installed in RText"};
    int width_; ///< as asked for, or kFitting
    int height_;
    bool wrap_ = false;
    int userData_ = 0;
};

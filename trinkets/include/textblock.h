// A text laid out: its characters in one font and one colour, as lines. What objects that show text
// have in common; where it lies on the screen, and in what box, is theirs.
#pragma once

#include "omcolor.h"
#include "omfontsource.h"

#include "platform/geometry.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

class OMMemCanvas;
class OMRegion;

/// The lines of a text, from the top down; at least one. It is broken at its line breaks (LF, CR or
/// CR LF) and, with a width (pixels), between its words: a line goes on as long as its next word
/// fits, and the blanks where it is broken are left out. A word ends before a blank or behind a
/// hyphen; one that is wider than a line is broken between its characters, of which each line has
/// at least one. The parts are those of `text`.
[[nodiscard]] std::vector<std::string_view> OMLinesOf(std::string_view text, const OMFont& font,
                                                      std::optional<int> width);

class TextBlock {
  public:
    /// Without a text, black, in the system font. `missing` is the message of the check that fails
    /// when a font is wanted and there is no font source.
    explicit TextBlock(const char* missing);
    /// The same text in another use of its font.
    TextBlock(const TextBlock& other);
    TextBlock& operator=(const TextBlock&) = delete;
    ~TextBlock();

    [[nodiscard]] const std::string& text() const { return text_; }
    [[nodiscard]] OMFont& font() const { return font_.font(); }
    /// For another text; see OMTextFont.
    [[nodiscard]] const OMFontUse& fontUse() const { return font_.use(); }
    /// Palette index.
    [[nodiscard]] int colorIndex() const { return color_.index(); }
    /// What its lines need, seen from where the pen of the first one starts, at its top: `left` is
    /// 0 or less, where ink hangs over to the left. As wide as its lines or their ink, and at least
    /// one line high.
    [[nodiscard]] const platform::Rect& extent() const { return extent_; }

    // Lines and extent are up to date at once.

    void setFont(OMFontUse font);
    /// Lines are broken at that width (pixels), or only at the line breaks of the text.
    void setWidth(std::optional<int> width);

    // Each of these tells whether something changed.

    bool setText(const std::string& text);
    /// An index that does not exist fails a check and changes nothing.
    bool setColorIndex(int index);
    /// A number alone is the id of an `NFNT` resource; else a TrueType face with its size and style
    /// bits. Without a font source a failed check, and nothing changes.
    bool chooseFont(const std::string& font, std::optional<int> size, std::optional<int> style);

    /// Draws what of it lies in `box` and in `clip`; the pen of the first line starts at x =
    /// `left`, and the line's top is that of the box.
    void paint(OMMemCanvas& canvas, const OMRegion& clip, const platform::Rect& box,
               int left) const;

  private:
    void layOut();

    std::string text_;
    OMTextFont font_;
    OMColor color_{0};
    std::optional<int> width_;
    platform::Rect extent_;
    std::vector<std::string_view> lines_; ///< parts of text_
};

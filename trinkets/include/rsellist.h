// The list on the screen in which players pick their name or type a new one. A copy has the same
// names, font and colours.
//
//     l=RSelList x y width height [z]
#pragma once

#include "omcolor.h"
#include "omfontsource.h"
#include "omtrinket.h"
#include "selectionlist.h"

#include <memory>
#include <optional>
#include <string>

class RSelList final : public OMSCopied<RSelList, OMTrinket> {
  public:
    static const OMSClass kClass;

    /// Is not movable.
    RSelList(OMTrinketWindow& window, const platform::Rect& box);
    ~RSelList() override;

    /// The names. What is changed here is not drawn before `refresh`.
    [[nodiscard]] SelectionList& list() { return list_; }
    void refresh() { markWhole(); }

    void setFont(OMFontUse font);

    // For scripts.

    [[nodiscard]] bool canAddChar() const { return list_.canType(); }
    [[nodiscard]] bool canDeleteChar() const { return list_.canTakeBack(); }
    [[nodiscard]] bool canMoveHighlightDown() const { return list_.canMove(1); }
    [[nodiscard]] bool canMoveHighlightUp() const { return list_.canMove(-1); }
    [[nodiscard]] bool canScrollListDown() const { return list_.canScroll(1); }
    [[nodiscard]] bool canScrollListUp() const { return list_.canScroll(-1); }
    [[nodiscard]] std::string currentEntry() const { return list_.current(); }
    void setCurrentEntry(const std::string& beginning);
    [[nodiscard]] std::string deletedEntry() const { return list_.removedEntry(); }
    [[nodiscard]] bool entryIsNew() const { return list_.isNew(); }
    [[nodiscard]] bool entryIsValid() const { return list_.isValid(); }
    [[nodiscard]] bool listIsFull() const { return list_.isFull(); }
    [[nodiscard]] bool notifyDeleted() const { return list_.removedOldEntry(); }

    // Palette indices; one that does not exist fails a check and changes nothing.
    [[nodiscard]] int highlightedBackgroundColor() const { return highlightedBackground_.index(); }
    void setHighlightedBackgroundColor(int index) { setColor(highlightedBackground_, index); }
    [[nodiscard]] int listBackgroundColor() const { return listBackground_.index(); }
    void setListBackgroundColor(int index) { setColor(listBackground_, index); }
    [[nodiscard]] int matchedTextColor() const { return matchedText_.index(); }
    void setMatchedTextColor(int index) { setColor(matchedText_, index); }
    [[nodiscard]] int normalTextColor() const { return normalText_.index(); }
    void setNormalTextColor(int index) { setColor(normalText_, index); }
    [[nodiscard]] int selectedTextColor() const { return selectedText_.index(); }
    void setSelectedTextColor(int index) { setColor(selectedText_, index); }

    /// The TrueType face; empty while the font is none. Size and style wait for a face.
    [[nodiscard]] const std::string& textFont() const { return face_; }
    void setTextFont(const std::string& face);
    void setTextFontID(int id);
    [[nodiscard]] int textSize() const { return size_; }
    void setTextSize(int pixels);
    [[nodiscard]] int textStyle() const { return style_; }
    void setTextStyle(int bits);
    [[nodiscard]] int visibleLines() const { return list_.visibleLines(); }
    void setVisibleLines(int lines);

    /// RESULT gets the code (SelectionList::Typed).
    void addChar(const std::string& character);
    void addListEntry(const std::string& name);
    void deleteChar();
    void deleteEntry();
    void moveHighlightDown() { move(1); }
    void moveHighlightUp() { move(-1); }
    void scrollListLineDown() { scroll(1); }
    void scrollListLineUp() { scroll(-1); }
    void scrollListPageDown() { scroll(list_.visibleLines()); }
    void scrollListPageUp() { scroll(-list_.visibleLines()); }
    void startNewEntry();

    void paint(OMMemCanvas& canvas, const OMRegion& clip) override;
    [[nodiscard]] HandUse handUse() const override { return HandUse::Click; }
    /// The names that are seen.
    [[nodiscard]] std::vector<platform::Rect> clickPlaces() const override;
    void onMouseDown(platform::Point point) override;
    void onDoubleClick(platform::Point point) override;

  private:
    /// At least 1, whatever the font says.
    [[nodiscard]] int lineHeight() const;
    void chooseFace();
    void setColor(OMColor& color, int index);
    void move(int lines);
    void scroll(int lines);
    /// The name under a point; none where there is none.
    [[nodiscard]] std::optional<int> entryAt(platform::Point point) const;
    /// Highlights the name under a point while none is typed; false when there is none.
    bool pick(platform::Point point);
    void paintLine(OMMemCanvas& canvas, const OMRegion& clip, int line);

    OMColor highlightedBackground_{3};
    OMColor listBackground_{0};
    OMColor matchedText_{1};
    OMColor normalText_{3};
    OMColor selectedText_{4};
    OMTextFont font_{"URL has to be installed in RSelList"};
    std::string face_;
    int size_;
    int style_ = 0;
    SelectionList list_;
};

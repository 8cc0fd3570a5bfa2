// The names of a selection list and what is done with them: looking through them, finding one by
// typing its beginning, typing a new one. Knows nothing of the screen.
//
// What is typed is a name of the list at every moment: the first that begins so, or, as soon as
// none does, a new one that stands in the list already.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class SelectionList {
  public:
    static constexpr int kMaxEntries = 99;
    static constexpr std::size_t kMaxLength = 16; ///< of a name, in characters
    static constexpr int kDefaultLines = 3;

    enum class Mode : std::uint8_t {
        Browsing = 0, ///< a name is highlighted, nothing is typed
        Matching = 1, ///< the highlighted name begins with what is typed
        New = 2,      ///< the highlighted name is a new one, as it is typed
        Editing = 3,  ///< as New, and other names may begin with it; it need not be valid
    };
    enum class Typed : int {
        Taken = 0,
        TooLong = 1,
        LeadingSpace = 2,
        SecondSpace = 3, ///< in a row
        ListFull = 4,    ///< no name begins so, and there is no room for a new one
        NoCharacter = 5,
    };

    // Queries.

    [[nodiscard]] Mode mode() const { return mode_; }
    [[nodiscard]] int count() const { return static_cast<int>(entries_.size()); }
    [[nodiscard]] bool isFull() const { return count() >= kMaxEntries; }
    [[nodiscard]] const std::string& entry(int index) const {
        return entries_[static_cast<std::size_t>(index)];
    }
    /// Index of the highlighted name; 0 in an empty list.
    [[nodiscard]] int highlighted() const { return highlighted_; }
    /// The highlighted name; empty in an empty list.
    [[nodiscard]] std::string current() const;
    [[nodiscard]] const std::string& typed() const { return typed_; }
    /// Whether the current name may be used.
    [[nodiscard]] bool isValid() const { return valid_; }
    [[nodiscard]] bool isNew() const { return mode_ == Mode::New || mode_ == Mode::Editing; }
    [[nodiscard]] int firstVisible() const { return firstVisible_; }
    [[nodiscard]] int visibleLines() const { return visibleLines_; }
    /// The name that `remove` took out last, and whether that was an old one.
    [[nodiscard]] const std::string& removedEntry() const { return removed_; }
    [[nodiscard]] bool removedOldEntry() const { return removedOld_; }

    [[nodiscard]] bool canType() const { return typed_.size() < kMaxLength; }
    [[nodiscard]] bool canTakeBack() const { return !typed_.empty(); }
    [[nodiscard]] bool canMove(int lines) const;
    [[nodiscard]] bool canScroll(int lines) const;

    // Names.

    /// Puts a name in its place, cut to kMaxLength. False, and nothing changes, when the list is
    /// full or the name is empty.
    bool insert(std::string_view name);
    /// Takes out the highlighted name.
    void remove();

    // Typing.

    Typed type(char character);
    void takeBack();
    /// Makes what is typed a name of its own, even if others begin so. False when the list is full;
    /// nothing changes while a new name is typed already.
    bool startNew();

    // Looking through the names; without effect while a new name is typed. Ends typing.

    /// By one line, 1 down or -1 up.
    void move(int lines);
    /// By one line or one page.
    void scroll(int lines);
    /// The first name that begins with a text; false, and the first of all, when there is none.
    bool highlight(std::string_view beginning);
    void highlight(int index);

    void setVisibleLines(int lines);

  private:
    [[nodiscard]] bool isBrowsable() const { return !isNew(); }
    /// The first name, other than the one at `except`, that begins with a text; -1 for none.
    [[nodiscard]] int find(std::string_view beginning, int except = -1) const;
    [[nodiscard]] int placeOf(std::string_view name) const;
    [[nodiscard]] int lastFirstLine() const;
    void insertAt(int place, std::string_view name);
    void removeAt(int place);
    void browse();
    void centre();
    void setEntry(const std::string& name);
    Typed matchOrInsert();
    void takeBackNew();

    std::vector<std::string> entries_; ///< in ascending order of their bytes
    Mode mode_ = Mode::Browsing;
    bool valid_ = false;
    int highlighted_ = 0;
    int firstVisible_ = 0;
    int visibleLines_ = kDefaultLines;
    std::string typed_;
    std::string removed_;
    bool removedOld_ = false;
};

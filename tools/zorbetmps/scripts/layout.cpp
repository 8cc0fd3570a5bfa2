#include "zorbetmps/scripts/layout.h"

#include "zorbetmps/scripts/authorstext.h"

#include "rvar.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace mps {

namespace {

constexpr std::size_t kIndent = 4; ///< blanks
constexpr std::string_view kPlainBlanks = " \t";
constexpr std::string_view kBlanksOfEnds = " \t\n"; ///< behind a CR, LF is one

/// What the indents hang on.
enum class Piece { Open, Close, If, Else, WithBody, Statement, Comment };

bool isBlankToTheGame(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x21 || byte >= 0x7F;
}

Piece pieceOf(std::string_view keyword) {
    if (keyword == "if") return Piece::If;
    if (keyword == "else") return Piece::Else;
    return keyword == "for" || keyword == "procedure" ? Piece::WithBody : Piece::Statement;
}

/// One line taken apart as the compiler does it.
class LineReader {
  public:
    LineReader(const AuthorsText& text, std::size_t begin, std::size_t end)
        : text_(text), letters_(text.letters()), end_(end) {
        while (begin < end_ && kBlanksOfEnds.find(letters_[begin]) != kBlanksOfEnds.npos) ++begin;
        while (end_ > begin && kBlanksOfEnds.find(letters_[end_ - 1]) != kBlanksOfEnds.npos) --end_;
        at_ = before_ = begin;
        bool starts = true;
        while (skipBlanks()) starts = starts ? readStart() : readWord(wordEnd(false));
        laidOut_ += text_.bytes(before_, end_);
    }

    /// Without the indent; empty for a blank line.
    [[nodiscard]] const std::string& laidOut() const { return laidOut_; }
    /// In their order; none in a line of what counts as blanks.
    [[nodiscard]] const std::vector<Piece>& pieces() const { return pieces_; }

  private:
    bool skipBlanks() {
        while (at_ < end_ && isBlankToTheGame(letters_[at_])) ++at_;
        return at_ < end_;
    }

    /// Where a statement begins; whether another one does behind what was read.
    bool readStart() {
        const char c = letters_[at_];
        if (c == ';') return readPiece(Piece::Comment, end_);
        if (c == '[' || c == ']') {
            readPiece(c == '[' ? Piece::Open : Piece::Close, at_ + 1);
            return true;
        }
        const std::size_t stop = wordEnd(true);
        if (stop < end_ && letters_[stop] == '=') return readAssignment(stop + 1);
        const Piece piece = pieceOf(letters_.substr(at_, stop - at_));
        readPiece(piece, stop);
        return piece == Piece::Else;
    }

    bool readAssignment(std::size_t stop) {
        readPiece(Piece::Statement, stop);
        isGlued_ = true;
        if (!skipBlanks() || (letters_[at_] != '[' && letters_[at_] != '&')) return false;
        readWord(at_ + 1);
        isGlued_ = true;
        return false;
    }

    bool readPiece(Piece piece, std::size_t stop) {
        pieces_.push_back(piece);
        return readWord(stop);
    }

    bool readWord(std::size_t stop) {
        const std::string_view gap = letters_.substr(before_, at_ - before_);
        if (gap.find_first_not_of(kPlainBlanks) != gap.npos)
            laidOut_ += text_.bytes(before_, at_);
        else if (!laidOut_.empty() && !isGlued_)
            laidOut_ += ' ';
        laidOut_ += text_.bytes(at_, stop);
        before_ = at_ = stop;
        isGlued_ = false;
        return false;
    }

    [[nodiscard]] std::size_t wordEnd(bool stopsAtEquals) const {
        char quote = 0;
        for (std::size_t at = at_; at < end_; ++at) {
            const char c = letters_[at];
            if (quote) {
                if (c == quote) quote = 0;
            } else if (YVariable::isQuote(c)) {
                quote = c;
            } else if (isBlankToTheGame(c) || (stopsAtEquals && c == '=')) {
                return at;
            }
        }
        return end_;
    }

    const AuthorsText& text_;
    std::string_view letters_;
    std::size_t end_;
    std::size_t at_ = 0;
    std::size_t before_ = 0; ///< the end of the last word
    bool isGlued_ = false;   ///< the next word to the last one
    std::string laidOut_;
    std::vector<Piece> pieces_;
};

/// Which statements are under way, and with that the indents.
class Nest {
  public:
    /// The indent of a line with these pieces, of which there are some.
    int place(const std::vector<Piece>& pieces) {
        std::optional<int> indent;
        behindElse_.reset();
        for (const Piece piece : pieces) {
            const int own = enter(piece);
            if (!indent) indent = own;
        }
        return *indent;
    }

    /// Where a statement that follows would stand.
    int level() {
        settle();
        return frames_.empty() ? 0 : frames_.back().indent + 1;
    }

  private:
    enum class Kind { Block, IfBody, Body, IfDone };
    struct Frame {
        Kind kind;
        int indent; ///< of the statement, or of the bracket
    };

    int enter(Piece piece) {
        if (piece == Piece::Comment) return 0;
        const std::optional<int> sameLine = std::exchange(behindElse_, std::nullopt);
        if (piece == Piece::Else) return enterElse();
        if (piece == Piece::Close) return close();
        const int inner = level();
        const int indent = sameLine.value_or(inner);
        if (piece == Piece::Open) {
            const int bracket = isBody() ? frames_.back().indent : inner;
            frames_.push_back({Kind::Block, bracket});
            return bracket;
        }
        if (piece == Piece::If) frames_.push_back({Kind::IfBody, indent});
        if (piece == Piece::WithBody) frames_.push_back({Kind::Body, indent});
        if (piece == Piece::Statement) complete();
        return indent;
    }

    int enterElse() {
        // Without its "if", which an included file may have, it stands as a statement would.
        const bool hasIf = !frames_.empty() && frames_.back().kind == Kind::IfDone;
        const int indent = hasIf ? frames_.back().indent : level();
        if (hasIf) frames_.pop_back();
        frames_.push_back({Kind::Body, indent});
        behindElse_ = indent;
        return indent;
    }

    int close() {
        settle();
        while (isBody()) frames_.pop_back();
        if (frames_.empty()) return 0;
        const int indent = frames_.back().indent;
        frames_.pop_back();
        complete();
        return indent;
    }

    [[nodiscard]] bool isBody() const {
        return !frames_.empty() &&
               (frames_.back().kind == Kind::IfBody || frames_.back().kind == Kind::Body);
    }

    /// A statement is at its end, and so are those that it is the body of.
    void complete() {
        while (!frames_.empty() && frames_.back().kind == Kind::Body) frames_.pop_back();
        if (isBody()) frames_.back().kind = Kind::IfDone; // an "else" may follow
    }

    /// No "else" follows.
    void settle() {
        while (!frames_.empty() && frames_.back().kind == Kind::IfDone) {
            frames_.pop_back();
            complete();
        }
    }

    std::vector<Frame> frames_;
    std::optional<int> behindElse_; ///< the indent of an "else" in the same line
};

class Layout {
  public:
    explicit Layout(const std::string& bytes) : text_(bytes) {
        const std::string_view letters = text_.letters();
        const bool hasReturns = letters.find('\r') != letters.npos;
        int pairs = 0;
        int singles = 0;
        for (std::size_t begin = 0; begin < letters.size();) {
            const std::size_t end =
                std::min(letters.find(hasReturns ? '\r' : '\n', begin), letters.size());
            read(begin, end);
            begin = end + 1;
            if (end < letters.size()) ++(letters.substr(begin).starts_with('\n') ? pairs : singles);
        }
        lines_.emplace_back();
        placeWaiting(nest_.level());
        lineEnd_ = !hasReturns ? "\n" : pairs < singles ? "\r" : "\r\n";
    }

    [[nodiscard]] std::string print() const {
        std::string printed(text_.mark());
        bool isBlank = false; // before the line
        bool isFirst = true;
        for (const Line& line : lines_) {
            if (!line.text.empty()) {
                if (isBlank && !isFirst) printed += lineEnd_;
                printed.append(static_cast<std::size_t>(line.indent) * kIndent, ' ')
                    .append(line.text)
                    .append(lineEnd_);
                isFirst = false;
            }
            isBlank = line.text.empty();
        }
        return printed;
    }

  private:
    struct Line {
        std::string text;
        int indent = 0;
    };

    void read(std::size_t begin, std::size_t end) {
        const LineReader line(text_, begin, end);
        lines_.push_back({line.laidOut()});
        const std::vector<Piece>& pieces = line.pieces();
        if (pieces.empty() || pieces.front() == Piece::Comment) return;
        const int indent = nest_.place(pieces);
        lines_.back().indent = indent;
        placeWaiting(pieces.front() == Piece::Close ? indent + 1 : indent);
    }

    /// Comments before the last line, or before the end.
    void placeWaiting(int indent) {
        for (; placed_ + 1 < lines_.size(); ++placed_) lines_[placed_].indent = indent;
        placed_ = lines_.size();
    }

    AuthorsText text_;
    Nest nest_;
    std::vector<Line> lines_;
    std::size_t placed_ = 0; ///< lines that have their indents
    std::string lineEnd_;
};

} // namespace

std::string laidOut(const std::string& bytes) { return Layout(bytes).print(); }

} // namespace mps

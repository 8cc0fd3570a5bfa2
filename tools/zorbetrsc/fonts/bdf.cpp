#include "fonts/bdf.h"

#include "manifest/words.h"
#include "text.h"

#include <algorithm>
#include <climits>
#include <string_view>
#include <utility>

namespace rsc {

namespace {

constexpr int kBitsOfADigit = 4;
constexpr int kLargestCode = 0x10FFFF;
/// Of numbers that only have to be small enough to be added up.
constexpr int kFarthest = 100'000;
constexpr int kResolution = 72; ///< dots an inch at which a point is a pixel
constexpr int kScalableUnit = 1000;

/// The value of a hexadecimal digit, -1 when it is none.
int digitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

bool isHexDigit(char c) { return digitValue(c) >= 0; }

class BdfReader {
  public:
    explicit BdfReader(ByteSpan file)
        : rest_(reinterpret_cast<const char*>(file.data()), file.size()) {}

    BitmapFont read() {
        try {
            if (!nextLine() || keyword_ != "STARTFONT")
                throw Refusal("no BDF font: it does not begin with STARTFONT");
            readHead();
            readCharacters();
        } catch (const Refusal& refusal) {
            throw Refusal("line " + std::to_string(line_) + ": " + refusal.what());
        }
        return std::move(font_);
    }

  private:
    /// The size of a picture and where its lower left corner lies.
    struct Box {
        int width = 0;
        int height = 0;
        int x = 0;
        int y = 0;
    };

    /// Takes the next line that says something; false at the end of the file.
    bool nextLine() {
        while (!rest_.empty()) {
            ++line_;
            const auto end = std::min(rest_.find_first_of("\r\n"), rest_.size());
            text_ = rest_.substr(0, end);
            const bool isPair = rest_.substr(end, 2) == "\r\n";
            rest_.remove_prefix(std::min(end + (isPair ? 2 : 1), rest_.size()));
            keyword_ = takeWord();
            if (!keyword_.empty() && keyword_ != "COMMENT") return true;
        }
        return false;
    }

    void needLine(const char* keyword) {
        if (!nextLine()) throw Refusal("the file ends without " + std::string(keyword));
    }

    std::string_view takeWord() {
        constexpr std::string_view kBlanks = " \t\v\f";
        text_.remove_prefix(std::min(text_.find_first_not_of(kBlanks), text_.size()));
        const std::string_view word = text_.substr(0, text_.find_first_of(kBlanks));
        text_.remove_prefix(word.size());
        return word;
    }

    int takeNumber(int smallest, int largest) {
        const std::string what(printable(keyword_));
        const std::string_view word = takeWord();
        if (word.empty()) throw Refusal(what + ": a number is missing");
        return numberInRange(printable(word), what.c_str(), smallest, largest);
    }

    Box takeBox(int largest) {
        Box box;
        box.width = takeNumber(0, largest);
        box.height = takeNumber(0, largest);
        box.x = takeNumber(-kFarthest, kFarthest);
        box.y = takeNumber(-kFarthest, kFarthest);
        return box;
    }

    /// Everything in front of the characters.
    void readHead() {
        for (needLine("CHARS"); keyword_ != "CHARS"; needLine("CHARS")) {
            if (keyword_ == "FONTBOUNDINGBOX") {
                const Box box = takeBox(kFarthest);
                font_.ascent = box.height + box.y;
                font_.descent = -box.y;
            } else if (keyword_ == "STARTPROPERTIES") {
                (void)takeNumber(0, INT_MAX);
                readProperties();
            }
        }
        font_.ascent = ascent_.value_or(font_.ascent);
        font_.descent = descent_.value_or(font_.descent);
        count_ = takeNumber(0, INT_MAX);
    }

    void readProperties() {
        constexpr const char* kEnd = "ENDPROPERTIES";
        for (needLine(kEnd); keyword_ != kEnd; needLine(kEnd)) {
            if (keyword_ == "FONT_ASCENT") ascent_ = takeNumber(-kFarthest, kFarthest);
            if (keyword_ == "FONT_DESCENT") descent_ = takeNumber(-kFarthest, kFarthest);
            if (keyword_ == "DEFAULT_CHAR") font_.defaultCode = takeNumber(-1, kLargestCode);
        }
    }

    void readCharacters() {
        int count = 0;
        for (needLine("ENDFONT"); keyword_ != "ENDFONT"; needLine("ENDFONT")) {
            if (keyword_ != "STARTCHAR")
                throw Refusal(inQuotes(printable(keyword_)) + " where STARTCHAR is expected");
            readCharacter();
            ++count;
        }
        if (count != count_)
            throw Refusal("CHARS says " + std::to_string(count_) + ", but the characters are " +
                          std::to_string(count));
    }

    void readCharacter() {
        std::optional<int> code;
        std::optional<int> advance;
        std::optional<Box> box;
        for (needLine("BITMAP"); keyword_ != "BITMAP"; needLine("BITMAP")) {
            if (keyword_ == "STARTCHAR" || keyword_ == "ENDCHAR" || keyword_ == "ENDFONT")
                throw Refusal("the character has no BITMAP");
            if (keyword_ == "ENCODING") code = takeNumber(-1, kLargestCode);
            if (keyword_ == "DWIDTH") advance = takeNumber(-kFarthest, kFarthest);
            if (keyword_ == "BBX") box = takeBox(kLargestGlyph);
        }
        if (!code) throw Refusal("the character has no ENCODING");
        if (!advance) throw Refusal("the character has no DWIDTH");
        if (!box) throw Refusal("the character has no BBX");
        Glyph glyph{*advance, box->x, box->y + box->height, box->width, box->height, {}};
        if (glyph.width == 0) glyph.height = 0;
        for (int y = 0; y < glyph.height; ++y) {
            needLine("ENDCHAR");
            addRow(glyph);
        }
        needLine("ENDCHAR");
        while (glyph.width == 0 && digitValue(keyword_.front()) == 0) needLine("ENDCHAR");
        if (keyword_ != "ENDCHAR") throw Refusal("the character has more rows than its BBX says");
        add(*code, std::move(glyph));
    }

    /// The line's digits; those behind the width are padding.
    void addRow(Glyph& glyph) const {
        const auto width = static_cast<std::size_t>(glyph.width);
        if (keyword_.size() * kBitsOfADigit < width || !std::ranges::all_of(keyword_, isHexDigit))
            throw Refusal(inQuotes(printable(keyword_)) + " is no row of " +
                          std::to_string(glyph.width) + " pixels");
        for (int x = 0; x < glyph.width; ++x) {
            const int digit = digitValue(keyword_[static_cast<std::size_t>(x / kBitsOfADigit)]);
            glyph.ink.push_back((digit >> (kBitsOfADigit - 1 - x % kBitsOfADigit) & 1) != 0);
        }
    }

    void add(int code, Glyph glyph) {
        const bool isWanted = code >= 0 && (code < kLatin1Codes || code == font_.defaultCode);
        if (isWanted && !font_.glyphs.emplace(code, std::move(glyph)).second)
            throw Refusal("there are two characters of the code " + std::to_string(code));
    }

    std::string_view rest_;
    std::string_view text_; ///< what is left of the line
    std::string_view keyword_;
    int line_ = 0;
    int count_ = 0; ///< of characters, as the file says
    std::optional<int> ascent_;
    std::optional<int> descent_;
    BitmapFont font_;
};

std::string hexRow(const Glyph& glyph, int y) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const int paddedWidth = (glyph.width + CHAR_BIT - 1) / CHAR_BIT * CHAR_BIT;
    std::string row;
    for (int x = 0; x < paddedWidth; x += kBitsOfADigit) {
        std::size_t digit = 0;
        for (int bit = x; bit < x + kBitsOfADigit; ++bit)
            digit = digit * 2 + (bit < glyph.width && glyph.ink[glyph.at(bit, y)] ? 1 : 0);
        row += kDigits[digit];
    }
    return row;
}

class BdfWriter {
  public:
    explicit BdfWriter(const BitmapFont& font) : font_(font) {}

    std::string write(const std::string& name) {
        const auto extent = formats::font::horizontalExtent(font_.glyphs);
        line("STARTFONT 2.1");
        line("FONT " + name);
        line("SIZE " + numbers({size(), kResolution, kResolution}));
        line("FONTBOUNDINGBOX " +
             numbers({extent.right - extent.left, size(), extent.left, -font_.descent}));
        line("STARTPROPERTIES " + std::to_string(font_.defaultCode ? 5 : 4));
        line("FONT_ASCENT " + std::to_string(font_.ascent));
        line("FONT_DESCENT " + std::to_string(font_.descent));
        line("CHARSET_REGISTRY \"ISO10646\"");
        line("CHARSET_ENCODING \"1\"");
        if (font_.defaultCode) line("DEFAULT_CHAR " + std::to_string(*font_.defaultCode));
        line("ENDPROPERTIES");
        line("CHARS " + std::to_string(font_.glyphs.size()));
        for (const auto& [code, glyph] : font_.glyphs) writeCharacter(code, glyph);
        line("ENDFONT");
        return std::move(text_);
    }

  private:
    void line(const std::string& text) { text_ += text + "\n"; }

    [[nodiscard]] int size() const { return std::max(1, font_.ascent + font_.descent); }

    static std::string numbers(std::initializer_list<int> values) {
        std::string text;
        for (const int value : values) text += (text.empty() ? "" : " ") + std::to_string(value);
        return text;
    }

    void writeCharacter(int code, const Glyph& glyph) {
        const auto ink = inkBox(glyph);
        // a blank picture keeps a row, for its width
        const int first = ink ? ink->top : 0;
        const int end = ink ? ink->bottom : std::min(glyph.height, glyph.width == 0 ? 0 : 1);
        line("STARTCHAR char" + std::to_string(code));
        line("ENCODING " + std::to_string(code));
        line("SWIDTH " + numbers({glyph.advance * kScalableUnit / size(), 0}));
        line("DWIDTH " + numbers({glyph.advance, 0}));
        line("BBX " + numbers({glyph.width, end - first, glyph.left, glyph.top - end}));
        line("BITMAP");
        for (int y = first; y < end; ++y) line(hexRow(glyph, y));
        line("ENDCHAR");
    }

    const BitmapFont& font_;
    std::string text_;
};

} // namespace

BitmapFont readBdf(ByteSpan file) { return BdfReader(file).read(); }

std::string writeBdf(const BitmapFont& font, const std::string& name) {
    return BdfWriter(font).write(name);
}

} // namespace rsc

#include "textblock.h"

#include "ommemcanvas.h"
#include "omsarguments.h"
#include "omtrinket.h"
#include "omttfont.h"

#include <algorithm>
#include <cstdint>

using platform::Rect;

namespace {

constexpr char kBlank = ' ';
constexpr char kHyphen = '-';

/// Takes the text up to the next line break off `rest`, and the break with it.
std::string_view takeParagraph(std::string_view& rest) {
    const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
    const std::string_view paragraph = rest.substr(0, end);
    const bool two = rest.substr(end).starts_with("\r\n");
    rest.remove_prefix(std::min(end + (two ? 2 : 1), rest.size()));
    return paragraph;
}

/// How many characters of a paragraph fit into a line, broken where a word ends if there is such a
/// place.
std::size_t fitting(std::string_view text, const OMFont& font, int width) {
    std::size_t wordEnd = 0;
    int pen = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == kBlank && i > 0 && text[i - 1] != kBlank) wordEnd = i;
        pen += font.glyph(static_cast<unsigned char>(text[i])).advance;
        // Blanks at the end of a line may hang over.
        if (pen > width && text[i] != kBlank) {
            if (wordEnd > 0) return wordEnd;
            return std::max<std::size_t>(i, 1);
        }
        if (text[i] == kHyphen) wordEnd = i + 1;
    }
    return text.size();
}

void breakParagraph(std::string_view text, const OMFont& font, int width,
                    std::vector<std::string_view>& lines) {
    do {
        const std::size_t count = fitting(text, font, width);
        lines.push_back(text.substr(0, count));
        text.remove_prefix(count);
        text.remove_prefix(std::min(text.find_first_not_of(kBlank), text.size()));
    } while (!text.empty());
}

bool isNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

} // namespace

std::vector<std::string_view> OMLinesOf(std::string_view text, const OMFont& font,
                                        std::optional<int> width) {
    std::vector<std::string_view> lines;
    for (bool last = false; !last;) {
        last = text.find_first_of("\r\n") == std::string_view::npos;
        const std::string_view paragraph = takeParagraph(text);
        if (width)
            breakParagraph(paragraph, font, *width, lines);
        else
            lines.push_back(paragraph);
    }
    return lines;
}

TextBlock::TextBlock(const char* missing) : font_(missing) { layOut(); }

TextBlock::TextBlock(const TextBlock& other)
    : text_(other.text_), font_(other.font_), color_(other.color_), width_(other.width_) {
    layOut();
}

TextBlock::~TextBlock() = default;

bool TextBlock::setText(const std::string& text) {
    if (text == text_) return false;
    text_ = text;
    layOut();
    return true;
}

bool TextBlock::setColorIndex(int index) {
    const int before = color_.index();
    color_.set(index);
    return color_.index() != before;
}

void TextBlock::setWidth(std::optional<int> width) {
    if (width == width_) return;
    width_ = width;
    layOut();
}

void TextBlock::setFont(OMFontUse font) {
    font_.use(std::move(font));
    layOut();
}

bool TextBlock::chooseFont(const std::string& font, std::optional<int> size,
                           std::optional<int> style) {
    const bool chosen =
        isNumber(font) && !size
            ? font_.useNFNT(OMSToInteger(font))
            : font_.useTrueType(font, style.value_or(0), size.value_or(OMTTFont::kDefaultSize));
    if (chosen) layOut();
    return chosen;
}

void TextBlock::layOut() {
    const OMFont& drawn = font_.font();
    lines_ = OMLinesOf(text_, drawn, width_);
    extent_ = {};
    for (const std::string_view line : lines_) {
        const Rect ink = drawn.textExtent(line);
        extent_.left = std::min(extent_.left, ink.left);
        extent_.right = std::max({extent_.right, drawn.textWidth(line), ink.right});
    }
    const auto rows =
        static_cast<std::int64_t>(lines_.size()) * drawn.lineHeight() - drawn.leading();
    extent_.bottom = static_cast<int>(std::clamp<std::int64_t>(rows, 0, OMTrinket::kFarthest));
}

void TextBlock::paint(OMMemCanvas& canvas, const OMRegion& clip, const Rect& box, int left) const {
    OMRegion part = clip;
    part.intersect(box);
    if (part.isEmpty()) return;
    OMFont& drawn = font_.font();
    const OMTextScope scope(canvas, &drawn, std::move(part));
    canvas.setTextColor(color_);
    int baseline = box.top + drawn.ascent();
    for (const std::string_view line : lines_) {
        if (baseline - drawn.ascent() >= box.bottom) break;
        canvas.drawText(left, baseline, line);
        baseline += drawn.lineHeight();
    }
}

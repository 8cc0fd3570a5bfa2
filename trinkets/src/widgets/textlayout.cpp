#include "textlayout.h"

#include "omfont.h"

#include <algorithm>

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

} // namespace

std::vector<std::string_view> OMLinesOf(std::string_view text, const OMFont& font,
                                        std::optional<int> width) {
    std::vector<std::string_view> lines;
    do {
        const bool last = text.find_first_of("\r\n") == std::string_view::npos;
        const std::string_view paragraph = takeParagraph(text);
        if (width)
            breakParagraph(paragraph, font, *width, lines);
        else
            lines.push_back(paragraph);
        if (last) break;
    } while (true);
    return lines;
}

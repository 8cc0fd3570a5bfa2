#include "fonts/fontlines.h"

#include "formats/base/latin1.h"
#include "refusal.h"
#include "text.h"

namespace rsc {

namespace {

constexpr int kLargestSize = 255; ///< of a face, in pixels
constexpr std::string_view kHexMark = "0x";

int parseCode(std::string_view word) {
    if (!formats::lowerAscii(word).starts_with(kHexMark))
        return numberInRange(word, "the code", 0, kLatin1Codes - 1);
    const std::string_view digits = word.substr(kHexMark.size());
    unsigned value = 0;
    const char* end = digits.data() + digits.size();
    const auto [last, error] = std::from_chars(digits.data(), end, value, 16);
    if (error != std::errc() || last != end)
        throw Refusal("the code: " + inQuotes(word) + " is no number");
    if (value >= kLatin1Codes)
        throw Refusal("the code is " + std::string(word) + ", allowed is 0x00 to 0xFF");
    return static_cast<int>(value);
}

} // namespace

FontPlan parseFont(WordReader& words, int line) {
    FontPlan font;
    font.file = {words.text("the file's name"), line};
    if (formats::lowerAscii(font.file.path).ends_with(".bdf")) return font;
    FaceStyle& face = font.face.emplace();
    face.size = words.number("the size in pixels", 1, kLargestSize);
    face.bold = words.skip("bold");
    face.italic = words.skip("italic");
    return font;
}

void parseChars(WordReader& words, FontPlan& font) {
    if (!font.chars) font.chars.emplace();
    do {
        const std::string range = words.text("a range of codes");
        const auto dash = range.find('-');
        const int first = parseCode(std::string_view(range).substr(0, dash));
        const int last =
            dash == std::string::npos ? first : parseCode(std::string_view(range).substr(dash + 1));
        if (last < first) throw Refusal(inQuotes(range) + " is no range: it is written FIRST-LAST");
        for (int code = first; code <= last; ++code)
            font.chars->set(static_cast<std::size_t>(code));
    } while (!words.atEnd());
}

void parseLeading(WordReader& words, FontPlan& font) {
    font.leading = words.number("the leading", 0, kLargestInt16);
}

void parseByteOrder(WordReader& words, FontPlan& font) {
    font.bigEndian = words.skip("big");
    if (!font.bigEndian && !words.skip("little"))
        throw Refusal("\"bytes\" is followed by \"big\" or \"little\"");
}

} // namespace rsc

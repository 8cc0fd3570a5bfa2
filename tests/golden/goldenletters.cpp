#include "goldenletters.h"

#include "goldenwriter.h"

#include <algorithm>
#include <sstream>
#include <string_view>

namespace golden {

namespace {

constexpr int kAscent = 8;
constexpr int kDescent = 2;
constexpr int kRows = kAscent + kDescent;
constexpr char kStandIn = '}';
constexpr char kLast = '~';

/// Pictures side by side, with a blank between them.
struct Sheet {
    std::string_view codes;
    std::string_view rows[kRows];
};

constexpr Sheet kSheets[] = {
    // Nine columns each: one begins at bit 0, the next at bit 1, and so on.
    {"ABCDEFGH",
     {
         "....#.... ########. .######## ######... ######### ######### .#######. #.......#",
         "...#.#... #.......# #........ #.....#.. #........ #........ #.......# #.......#",
         "..#...#.. #.......# #........ #......#. #........ #........ #........ #.......#",
         "..#...#.. ########. #........ #.......# ######... ######... #........ #########",
         ".#######. #.......# #........ #.......# #........ #........ #....#### #.......#",
         ".#.....#. #.......# #........ #......#. #........ #........ #.......# #.......#",
         "#.......# #.......# #......## #.....#.. #........ #........ #.......# #.......#",
         "#.......# ########. .######.. ######... #######.# #........ .#######. #.......#",
         "......... ......... ......... ......... ......... ......... ......... ........#",
         "......... ......... ......... ......... ......... ......... ........# ........#",
     }},
    {"MW^_",
     {
         "##........## #........#........# ..#.. .....",
         "#.#......#.# #........#........# .#.#. .....",
         "#..#....#..# .#......#.#......#. #...# .....",
         "#...#..#...# .#......#.#......#. ..... .....",
         "#....##....# ..#....#...#....#.. ..... .....",
         "#..........# ..#....#...#....#.. ..... .....",
         "#..........# ...#..#.....#..#... ..... .....",
         "#..........# ....##.......##.... ..... .....",
         "............ ................... ..... .....",
         "............ ................... ..... #####",
     }},
    {"fgijy}~",
     {
         ".....#### ........ . .... ....... ###### .............",
         "....#.... ........ # ...# ....... #....# .............",
         "....#.... ........ . .... ....... #.##.# .............",
         ".######.. .#####.# # ...# #.....# #.##.# .###........#",
         "...#..... #.....## # ...# #.....# #....# #...#.....#..",
         "...#..... #......# # ...# .#...#. #.##.# .....#####...",
         "...#..... .#####.# # ...# ..#.#.. #....# .............",
         "...#..... .......# # ...# ...#... ###### .............",
         "..#...... #......# . #..# ..#.... ...... .............",
         "##....... .######. . .##. ##..... ...... .............",
     }},
};

/// Others begin at the pen, and the next one begins after a column. The accent stands on the letter
/// before; lines follow each other without a gap.
struct Place {
    char code;
    int left;
    int advance;
};
constexpr int kKern = -5;
constexpr Place kPlaces[] = {{'^', -5, 0}, {'f', -2, 5}, {'j', -3, 2}, {'_', 0, 5}, {'i', 1, 3}};

constexpr int kBlankAdvance = 4;

Character character(char code, std::vector<std::string> rows) {
    const auto place = std::ranges::find(kPlaces, code, &Place::code);
    if (place != std::end(kPlaces)) return {code, std::move(rows), place->left, place->advance};
    const int advance = static_cast<int>(rows.front().size()) + 1;
    return {code, std::move(rows), 0, advance};
}

void add(Letters& letters, const Sheet& sheet) {
    std::vector<std::vector<std::string>> pictures(sheet.codes.size());
    for (const std::string_view row : sheet.rows) {
        std::istringstream parts{std::string(row)};
        for (std::vector<std::string>& picture : pictures) parts >> picture.emplace_back();
    }
    for (std::size_t i = 0; i < pictures.size(); ++i)
        letters.characters.push_back(character(sheet.codes[i], std::move(pictures[i])));
}

int columns(const Character& character) {
    return character.rows.empty() ? 0 : static_cast<int>(character.rows.front().size());
}

/// The pictures side by side, in whole words: an odd number with all of them, an even one without
/// the stand-in.
Bytes strikeOf(const Letters& letters, int rowWords) {
    Writer out(true);
    for (std::size_t row = 0; row < kRows; ++row) {
        std::string ink;
        for (const Character& character : letters.characters)
            if (!character.rows.empty()) ink += character.rows[row];
        ink.resize(static_cast<std::size_t>(rowWords) * 16, '.');
        for (std::size_t at = 0; at < ink.size(); at += 8) {
            int bits = 0;
            for (const char pixel : ink.substr(at, 8)) bits = bits * 2 + (pixel == '#' ? 1 : 0);
            out.byte(bits);
        }
    }
    return out.bytes;
}

Letters withoutStandIn(Letters letters) {
    std::erase_if(letters.characters, [](const Character& c) { return c.code == kStandIn; });
    return letters;
}

} // namespace

Letters letters() {
    Letters letters{kAscent, kDescent, 3, kKern, kLast, {{' ', {}, 0, kBlankAdvance}}};
    for (const Sheet& sheet : kSheets) add(letters, sheet);
    std::ranges::sort(letters.characters, {}, &Character::code);
    return letters;
}

Bytes bitmapFont(const Letters& letters, bool bigEndian) {
    constexpr int kHeaderSize = 26;
    constexpr int kOffsetField = 16;
    constexpr int kMissing = 0xFF;
    const int entries = letters.lastChar + 3;
    int width = 0;
    Writer locations(bigEndian);
    Writer offsets(bigEndian);
    auto next = letters.characters.begin();
    for (int code = 0; code < entries; ++code) {
        const bool there = next != letters.characters.end() && next->code == code;
        locations.word(width);
        offsets.byte(there ? next->left - letters.kern : kMissing);
        offsets.byte(there ? next->advance : kMissing);
        if (there) width += columns(*next++);
    }
    const int rowWords = (width + 15) / 16;
    const Bytes strike = strikeOf(letters, rowWords);

    Writer out(bigEndian);
    out.words({0x9000, 0, letters.lastChar, 0, letters.kern, -letters.descent, 0, kRows});
    out.word((kHeaderSize - kOffsetField + static_cast<int>(strike.size()) + entries * 2) / 2);
    out.words({letters.ascent, letters.descent, letters.leading, rowWords});
    for (const Bytes& part : {strike, locations.bytes, offsets.bytes}) out.add(part);
    return out.bytes;
}

std::vector<Font> fonts() {
    return {
        {31, bitmapFont(letters(), true)}, // what stands for a face
        {300, bitmapFont(letters(), true)},
        {301, bitmapFont(letters(), false)},
        {302, bitmapFont(withoutStandIn(letters()), true)},
    };
}

} // namespace golden

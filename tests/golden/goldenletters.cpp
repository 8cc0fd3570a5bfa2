#include "goldenletters.h"

#include "formats/font/nfnt.h"

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

Letters withoutStandIn(Letters letters) {
    std::erase_if(letters.characters, [](const Character& c) { return c.code == kStandIn; });
    return letters;
}

} // namespace

Letters letters() {
    Letters letters{kAscent, kDescent, 3, kLast, {{' ', {}, 0, kBlankAdvance}}};
    for (const Sheet& sheet : kSheets) add(letters, sheet);
    std::ranges::sort(letters.characters, {}, &Character::code);
    return letters;
}

Bytes bitmapFont(const Letters& letters, bool bigEndian) {
    formats::font::Font font{bigEndian,       0, letters.lastChar, letters.ascent, letters.descent,
                             letters.leading, {}};
    for (const Character& character : letters.characters) {
        auto& glyph = font.glyphs[character.code];
        glyph = {character.advance,
                 character.left,
                 letters.ascent,
                 columns(character),
                 static_cast<int>(character.rows.size()),
                 {}};
        for (const std::string& row : character.rows)
            for (const char pixel : row) glyph.ink.push_back(pixel == '#');
    }
    const auto record = formats::font::write(font).value;
    const auto bytes = std::as_bytes(std::span(record));
    return {bytes.begin(), bytes.end()};
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

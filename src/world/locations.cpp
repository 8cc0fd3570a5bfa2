#include "locations.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace world {

namespace {

struct Location {
    int id;
    std::string_view name;
};
constexpr Location kLocations[] = {
    {1, "CWS1"},    {2, "CWS2"},    {3, "CWS3"},    {4, "CWS4"},     {5, "OWS1"},
    {6, "OWS2"},    {7, "OWS3"},    {8, "OWS4"},    {9, "PWS1"},     {10, "PWS2"},
    {12, "CBA1"},   {13, "CBA2"},   {15, "CHUB"},   {16, "OHUB"},    {18, "CMA"},
    {19, "OMA"},    {21, "CLOC01"}, {22, "CLOC02"}, {23, "CLOC03"},  {24, "CLOC04"},
    {25, "CLOC05"}, {26, "CLOC06"}, {27, "CLOC07"}, {28, "CLOC08a"}, {29, "CLOC08b"},
    {30, "CLOC09"}, {31, "CLOC11"}, {32, "CLOC13"}, {33, "CLOC14"},  {34, "OLOC02"},
    {35, "OLOC03"}, {36, "OLOC04"}, {37, "OLOC05"}, {38, "OLOC06"},  {39, "OLOC07"},
    {40, "OLOC08"}, {41, "OLOC09"}, {42, "PBA"},    {43, "PLOC2"},   {44, "PLOC3"},
    {46, "SIGNIN"},
};

constexpr std::array<std::string_view, kGemColors> kGemNames{"Blue Gem", "Green Gem", "Red Gem",
                                                             "Yellow Gem"};

std::string numbered(std::string_view name, int number) {
    return std::string(name) + " " + std::to_string(number);
}

} // namespace

int locationNamed(std::string_view name) {
    const auto* found = std::ranges::find(kLocations, name, &Location::name);
    return found == std::end(kLocations) ? kNowhere : found->id;
}

std::string_view locationName(int location) {
    const auto* found = std::ranges::find(kLocations, location, &Location::id);
    return found == std::end(kLocations) ? std::string_view() : found->name;
}

std::string itemName(int item) {
    if (item == 0) return "No Item";
    if (!isItem(item)) return "Unknown Object";
    if (item <= kGlyphs) return numbered("Glyph", item);
    const int gemNumber = item - kGlyphs - 1;
    return numbered(kGemNames[static_cast<std::size_t>(gemNumber / kGemsOfAColor)],
                    gemNumber % kGemsOfAColor + 1);
}

} // namespace world

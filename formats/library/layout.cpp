#include "formats/library/layout.h"

#include "formats/base/latin1.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace formats::library {

namespace {

constexpr std::size_t kNamedTypeLength = 4;

struct StandardType {
    std::uint16_t number;
    std::string_view name;
};
constexpr StandardType kStandardTypes[] = {
    {12, "CURSOR"}, {2, "BITMAP"},  {14, "ICON"}, {4, "MENU"},        {5, "DIALOG"},
    {6, "STRING"},  {7, "FONTDIR"}, {8, "FONT"},  {9, "ACCELERATOR"}, {10, "RCDATA"},
};

} // namespace

std::string_view standardTypeName(int number) {
    const auto* found = std::ranges::find(kStandardTypes, number, &StandardType::number);
    return found == std::end(kStandardTypes) ? std::string_view() : found->name;
}

std::optional<std::uint16_t> standardTypeNumber(std::string_view name) {
    const auto* found = std::ranges::find(kStandardTypes, name, &StandardType::name);
    return found == std::end(kStandardTypes) ? std::nullopt : std::optional(found->number);
}

std::optional<std::uint16_t> typeNumber(std::string_view type) {
    if (!type.starts_with('#')) return standardTypeNumber(type);
    int number = 0;
    const char* end = type.data() + type.size();
    const auto [last, error] = std::from_chars(type.data() + 1, end, number);
    if (error != std::errc() || last != end || number < 1 || number > kLargestId)
        return std::nullopt;
    return static_cast<std::uint16_t>(number);
}

bool isResourceType(std::string_view type) {
    if (typeNumber(type)) return true;
    const auto visible = [](char c) { return c > ' ' && c <= '~'; };
    return type.size() == kNamedTypeLength && type[0] != '#' && std::ranges::all_of(type, visible);
}

std::string moduleNameOf(std::string_view fileName) {
    std::string name(fileName.substr(0, fileName.rfind('.')));
    std::ranges::transform(name, name.begin(), upperLatin1);
    return name;
}

} // namespace formats::library

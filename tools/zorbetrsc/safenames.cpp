#include "safenames.h"

#include "formats/base/latin1.h"
#include "text.h"

#include <algorithm>

namespace rsc {

namespace {

constexpr std::size_t kLongestPart = 32;

bool isPlain(char c) { return formats::isAsciiLetter(c) || (c >= '0' && c <= '9'); }

std::string safe(std::string_view text) {
    std::string name(text.substr(0, kLongestPart));
    std::ranges::replace_if(
        name, [](char c) { return !isPlain(c); }, '_');
    return name.empty() ? "_" : name;
}

} // namespace

std::string SafeNames::take(const ResourceEntry& entry) {
    return unique(safe(entry.type) + "-" +
                  (entry.name.empty() ? std::to_string(entry.id) : safe(entry.name)));
}

std::string SafeNames::take(std::string_view text) { return unique(safe(text)); }

std::string SafeNames::unique(const std::string& name) {
    int& number = numbers_[formats::lowerAscii(name)];
    std::string result = ++number == 1 ? name : name + "_" + std::to_string(number);
    while (!taken_.insert(formats::lowerAscii(result)).second)
        result = name + "_" + std::to_string(++number);
    return result;
}

} // namespace rsc

#include "omtextfile.h"

#include <span>
#include <string>

namespace {

constexpr std::string_view kFull =
    "\n(This file is full. Take it away, and the next one begins.)\n";

} // namespace

bool OMAddText(platform::File& file, std::string_view text, std::uint64_t most) {
    const std::uint64_t size = file.size();
    if (size + text.size() + kFull.size() <= most)
        return file.write(std::as_bytes(std::span(text)));
    if (size + kFull.size() > most) return true;
    // Shorter texts do not get in behind it.
    std::string rest(static_cast<std::size_t>(most - kFull.size() - size), ' ');
    rest += kFull;
    return file.write(std::as_bytes(std::span(rest)));
}

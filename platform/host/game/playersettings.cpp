#include "platform/host/game/playersettings.h"

#include "platform/initext.h"

#include <algorithm>
#include <span>

namespace platform {

namespace {

constexpr std::size_t kMaxSettingsSize = 65536;
constexpr std::string_view kNewFile = ".new"; ///< behind the name while it is written

} // namespace

void PlayerSettings::open(std::string_view path) {
    path_ = path;
    entries_.clear();
    const std::string text = readFile(files_, path, kMaxSettingsSize).value_or("");
    for (const IniEntry& entry : readIniText(text))
        entries_.push_back({std::string(entry.key), std::string(entry.value)});
}

std::string PlayerSettings::value(std::string_view key) const {
    const auto found = std::ranges::find_if(
        entries_, [key](const Entry& entry) { return sameIniName(entry.key, key); });
    return found == entries_.end() ? std::string() : found->value;
}

bool PlayerSettings::set(std::string_view key, std::string_view value) {
    if (path_.empty()) return false;
    std::erase_if(entries_, [key](const Entry& entry) { return sameIniName(entry.key, key); });
    entries_.push_back({std::string(key), std::string(value)});
    std::string text;
    for (const Entry& entry : entries_) {
        if (!entry.key.empty()) text += entry.key + '=';
        text += entry.value + '\n';
    }
    const std::string fresh = path_ + std::string(kNewFile);
    auto file = files_.open(fresh, OpenMode::Write);
    if (!file || !file->write(std::as_bytes(std::span(text))) || !file->flush()) return false;
    file.reset();
    return files_.rename(fresh, path_);
}

} // namespace platform

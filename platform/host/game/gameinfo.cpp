#include "platform/host/game/gameinfo.h"

#include "formats/base/latin1.h"
#include "platform/host/files/hostfiles.h"
#include "platform/host/files/userfolders.h"
#include "platform/initext.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <optional>

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kFile = "game.ini";
constexpr std::size_t kMaxInfoSize = 65536;
constexpr std::size_t kMaxIdentifier = 64;
constexpr std::size_t kMaxText = 200; // bytes
constexpr std::size_t kMaxLine = 80;  // of what is told beside others
constexpr std::string_view kBoxes = "boxes";

bool isLetterOrDigit(char c) { return formats::isAsciiLetter(c) || (c >= '0' && c <= '9'); }

bool isIdentifierCharacter(char c) {
    return isLetterOrDigit(c) || c == '.' || c == '_' || c == '-';
}

bool isIdentifier(std::string_view text) {
    return !text.empty() && text.size() <= kMaxIdentifier && isLetterOrDigit(text.front()) &&
           std::ranges::all_of(text, isIdentifierCharacter);
}

/// "pt", "pt-BR": parts of letters and digits.
bool isLanguageTag(std::string_view text) {
    constexpr std::size_t kMaxTag = 35; // as long as real ones get
    return !text.empty() && text.size() <= kMaxTag && isLetterOrDigit(text.front()) &&
           isLetterOrDigit(text.back()) && text.find("--") == std::string_view::npos &&
           std::ranges::all_of(text, [](char c) { return isLetterOrDigit(c) || c == '-'; });
}

fs::path realFolder(const std::string& folder) {
    std::error_code error;
    fs::path real = fs::canonical(folder.empty() ? "." : folder, error);
    return error ? fs::absolute(folder) : real;
}

/// The folder's name for people, the digest to tell folders of equal names apart.
std::string identifierOf(const fs::path& folder) {
    constexpr std::size_t kMaxName = 40;
    std::string name;
    for (const char c : folder.filename().string().substr(0, kMaxName))
        name += isIdentifierCharacter(c) ? c : '_';
    if (name.empty() || !isLetterOrDigit(name.front())) name.insert(0, "game");
    return name + '-' + pathDigest(folder.string());
}

class Reader {
  public:
    Reader(const std::string& content, GameInfo& info)
        : folder_(realFolder(content)), files_({.content = content, .cd = {}, .home = {}}),
          info_(info) {}

    void read() {
        std::optional<std::string> bytes = readFile(files_, kFile, kMaxInfoSize);
        if (bytes) {
            const std::string text = formats::utf8FromAuthor(*std::move(bytes));
            for (const IniEntry& entry : readIniText(text)) readEntry(entry);
        } else if (files_.exists(kFile)) {
            info_.problems.push_back(
                (folder_ / kFile).string() +
                ": cannot be read, or has more than 65536 bytes; it is left out");
        }
    }

    /// What it does not say follows from where the folder lies.
    void complete() {
        if (info_.identifier.empty()) info_.identifier = identifierOf(folder_);
        if (info_.title.empty()) info_.title = folder_.filename().string();
    }

  private:
    void readEntry(const IniEntry& entry) {
        if (entry.key.empty()) {
            complain(entry, "is no entry; one looks like title=The Pond");
        } else if (sameIniName(entry.section.substr(0, kBoxes.size()), kBoxes)) {
            readBoxText(entry);
        } else if (!entry.section.empty()) {
            complain(entry, "stands in a section that is not known; take it out of there, or name "
                            "the section [boxes LANGUAGE]");
        } else if (sameIniName(entry.key, "identifier")) {
            readIdentifier(entry);
        } else if (sameIniName(entry.key, "title")) {
            readText(entry, kMaxText, info_.title);
        } else if (sameIniName(entry.key, "version")) {
            readText(entry, kMaxText, info_.version);
        } else if (sameIniName(entry.key, "author")) {
            readText(entry, kMaxText, info_.author);
        } else if (sameIniName(entry.key, "about")) {
            readText(entry, kMaxLine, info_.about);
        } else if (sameIniName(entry.key, "icon")) {
            readIcon(entry);
        } else if (sameIniName(entry.key, "languages") || sameIniName(entry.key, "language")) {
            readLanguages(entry);
        } else {
            complain(entry, "is not known; there are identifier, title, version, icon, languages, "
                            "author, about");
        }
    }

    void readIdentifier(const IniEntry& entry) {
        if (isIdentifier(entry.value))
            info_.identifier = entry.value;
        else
            complain(entry, "wants 1 to 64 letters A-Z, digits, \".\", \"_\" and \"-\", the first "
                            "a letter or a digit; the folder's path is taken instead");
    }

    void readText(const IniEntry& entry, std::size_t most, std::string& text) {
        if (!entry.value.empty() && entry.value.size() <= most)
            text = entry.value;
        else
            complain(entry, "wants a text of 1 to " + std::to_string(most) + " bytes");
    }

    void readIcon(const IniEntry& entry) {
        std::error_code error;
        const auto name = formats::latin1FromUtf8(entry.value);
        const auto found = name ? files_.hostPath(*name) : std::nullopt;
        const fs::path file = found ? fs::canonical(*found, error) : fs::path();
        const auto [inFolder, _] = std::ranges::mismatch(folder_, file);
        if (inFolder == folder_.end() && fs::is_regular_file(file, error))
            info_.icon = file.string();
        else
            complain(entry, "wants the name of a PNG file in the game's folder");
    }

    void readLanguages(const IniEntry& entry) {
        std::string_view rest = entry.value;
        std::vector<std::string> languages;
        while (!rest.empty()) {
            const auto end = std::min(rest.find(','), rest.size());
            std::string tag(rest.substr(0, end));
            std::erase(tag, ' ');
            rest.remove_prefix(std::min(end + 1, rest.size()));
            if (!isLanguageTag(tag)) return complain(entry, "wants languages such as pt,en");
            languages.push_back(std::move(tag));
        }
        if (languages.empty()) return complain(entry, "wants languages such as pt,en");
        info_.languages = std::move(languages);
    }

    void readBoxText(const IniEntry& entry) {
        const std::string_view language = entry.section.substr(kBoxes.size());
        const auto begin = std::min(language.find_first_not_of(' '), language.size());
        if (isLanguageTag(language.substr(begin)))
            info_.boxTexts.push_back({placeOf(entry), std::string(language.substr(begin)),
                                      std::string(entry.key), std::string(entry.value)});
        else
            complain(entry, "stands in a section without a language; write [boxes en]");
    }

    [[nodiscard]] std::string placeOf(const IniEntry& entry) const {
        return (folder_ / kFile).string() + ':' + std::to_string(entry.line);
    }

    void complain(const IniEntry& entry, std::string_view what) {
        const std::string_view name = entry.key.empty() ? entry.value : entry.key;
        info_.problems.push_back(placeOf(entry) + ": \"" + std::string(name) + "\" " +
                                 std::string(what));
    }

    fs::path folder_;
    HostFiles files_;
    GameInfo& info_;
};

/// "pt_PT.UTF-8@euro" → "pt-PT".
std::string tagOfLocale(std::string_view locale) {
    std::string tag(locale.substr(0, locale.find_first_of(".@")));
    std::ranges::replace(tag, '_', '-');
    return tag;
}

} // namespace

/// FNV-1a of 64 bits (draft-eastlake-fnv), as sixteen digits. Saved games are found by it: it
/// stays.
std::string pathDigest(std::string_view path) {
    std::uint64_t hash = 0xCBF2'9CE4'8422'2325;
    for (const char c : path) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100'0000'01B3;
    std::array<char, 17> digits{};
    std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(hash));
    return digits.data();
}

GameInfo readGameInfo(const std::string& content) {
    GameInfo info;
    Reader reader(content, info);
    reader.read();
    reader.complete();
    return info;
}

GameInfo readGameFile(const std::string& content) {
    GameInfo info;
    Reader(content, info).read();
    return info;
}

bool belongsToLanguage(std::string_view tag, std::string_view language) {
    return sameIniName(tag.substr(0, language.size()), language) &&
           (tag.size() == language.size() || tag[language.size()] == '-');
}

std::string chooseLanguage(const GameInfo& game, const std::vector<std::string>& wanted) {
    for (const std::string& tag : wanted) {
        const auto found = std::ranges::find_if(game.languages, [&](const std::string& language) {
            return belongsToLanguage(tag, language) || belongsToLanguage(language, tag);
        });
        if (found != game.languages.end()) return *found;
    }
    return game.languages.empty() ? std::string() : game.languages.front();
}

/// The rules are those of gettext ("The LANGUAGE variable").
std::vector<std::string> systemLanguages() {
    std::string locale;
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        locale = tagOfLocale(environment(name));
        if (!locale.empty()) break;
    }
    if (locale.empty() || locale == "C" || locale == "POSIX") return {};
    std::vector<std::string> tags;
    const std::string list = environment("LANGUAGE");
    for (std::string_view rest = list; !rest.empty();) {
        const auto end = std::min(rest.find(':'), rest.size());
        if (end > 0) tags.push_back(tagOfLocale(rest.substr(0, end)));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    tags.push_back(locale);
    return tags;
}

} // namespace platform

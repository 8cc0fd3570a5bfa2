#include "zorbetmps/texts/catalogues.h"

#include "formats/base/latin1.h"
#include "platform/host/game/gameinfo.h"
#include "zorbetmps/check/includes.h"
#include "zorbetmps/check/resources.h"
#include "zorbetmps/texts/renewal.h"

#include <algorithm>
#include <optional>
#include <set>

namespace mps {

namespace {

namespace fs = std::filesystem;
using formats::texts::Catalogue;
using formats::texts::Entry;

constexpr const char* kCataloguesFolder = "languages";
constexpr const char* kCatalogueExtension = ".po";
constexpr std::size_t kMostCatalogue = std::size_t{16} << 20; ///< bytes, as the game reads

std::string cataloguesName(const std::string& language) {
    return std::string(kCataloguesFolder) + '/' + language + kCatalogueExtension;
}

std::string inOneLine(const std::string& text) {
    std::string shown = text;
    std::ranges::replace_if(
        shown, [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
    return '"' + shown + '"';
}

bool isSameLanguage(const std::string& one, const std::string& other) {
    return formats::lowerAscii(one) == formats::lowerAscii(other);
}

/// The languages that there are catalogues for.
std::vector<std::string> cataloguesIn(const std::string& folder) {
    std::vector<std::string> languages;
    std::error_code error;
    for (fs::directory_iterator walk(fs::path(folder) / kCataloguesFolder, error);
         !error && walk != fs::directory_iterator(); walk.increment(error))
        if (formats::lowerAscii(walk->path().extension().string()) == kCatalogueExtension)
            languages.push_back(formats::utf8FromAuthor(walk->path().stem().string()));
    std::ranges::sort(languages);
    return languages;
}

/// Letters of a text, without blanks.
std::bitset<256> lettersIn(std::string_view latin1) {
    std::bitset<256> letters;
    for (const char c : latin1)
        if (static_cast<unsigned char>(c) > ' ') letters.set(static_cast<unsigned char>(c));
    return letters;
}

std::string lettersInQuotes(const std::bitset<256>& letters) {
    std::string list;
    for (std::size_t code = 0; code < letters.size(); ++code)
        if (letters.test(code))
            list += (list.empty() ? "\"" : " \"") +
                    formats::utf8FromLatin1(std::string(1, static_cast<char>(code))) + '"';
    return list;
}

class CatalogueCheck {
  public:
    CatalogueCheck(const DrawnTexts& texts, const std::vector<GameFont>& fonts,
                   CataloguesReport& report)
        : texts_(texts), fonts_(fonts), report_(report) {}

    void check(const std::string& language, const Catalogue& catalogue) {
        file_ = cataloguesName(language);
        std::set<const DrawnText*> has;
        std::size_t translated = 0, unused = 0;
        for (const Entry& entry : catalogue) {
            if (entry.text.empty() || entry.isObsolete) continue;
            const auto text = std::ranges::find_if(texts_.texts, [&](const DrawnText& one) {
                return one.text == entry.text && isOf(entry, one);
            });
            if (text == texts_.texts.end()) {
                ++unused;
                tell(entry, "is in no script any more; zorbet-mps texts --write takes it out");
                continue;
            }
            has.insert(&*text);
            translated += entry.isTranslated() && text->isTaken && entry.context.empty() ? 1 : 0;
            checkEntry(entry);
        }
        std::size_t wanted = 0;
        for (const DrawnText& text : texts_.texts) {
            if (!text.isTaken) continue;
            ++wanted;
            if (!has.contains(&text))
                report_.problems.push_back(file_ + ": lacks " + inOneLine(text.text) + " of " +
                                           text.places.begin()->shown() +
                                           "; zorbet-mps texts --write puts it in");
        }
        report_.counts.push_back(file_ + ": " + std::to_string(translated) + " of " +
                                 std::to_string(wanted) + " texts are translated" +
                                 (unused ? ", " + std::to_string(unused) + " not used" : ""));
    }

  private:
    void checkEntry(const Entry& entry) {
        if (entry.translation.empty()) return tell(entry, "has no translation");
        if (entry.isFuzzy)
            return tell(entry, "is fuzzy: look at its translation, and take the mark away");
        const auto translation = latin1Of(entry, entry.translation);
        const auto text = formats::latin1FromUtf8(entry.text);
        if (!translation || !text) return;
        checkEnds(entry);
        checkFonts(entry, *text, *translation);
    }

    /// None after it was told which letters there are not.
    std::optional<std::string> latin1Of(const Entry& entry, const std::string& utf8) {
        std::vector<formats::LackedLetter> lacked;
        std::string latin1 = formats::latin1FromAuthor(utf8, lacked);
        if (lacked.empty()) return latin1;
        std::set<std::string> letters;
        for (const auto& [line, letter] : lacked) letters.insert(letter);
        std::string list;
        for (const std::string& letter : letters) list += " \"" + letter + '"';
        tell(entry, "has letters in its translation that the game, whose letters are those of "
                    "Latin-1, has not:" +
                        list);
        return std::nullopt;
    }

    /// Blanks there part the text from what it is joined with.
    void checkEnds(const Entry& entry) {
        const auto isBlank = [](char c) { return c == ' '; };
        if (isBlank(entry.text.front()) != isBlank(entry.translation.front()))
            tell(entry, "and its translation do not both begin with a blank");
        if (isBlank(entry.text.back()) != isBlank(entry.translation.back()))
            tell(entry, "and its translation do not both end with a blank");
    }

    /// A font that lacks letters of the text itself does not show it.
    void checkFonts(const Entry& entry, std::string_view text, std::string_view translation) {
        const std::bitset<256> wanted = lettersIn(translation);
        std::bitset<256> lackedByAll;
        lackedByAll.set();
        bool isShown = false;
        std::vector<std::string> lacking;
        for (const GameFont& font : fonts_) {
            if ((lettersIn(text) & ~font.letters).any()) continue;
            const std::bitset<256> lacked = wanted & ~font.letters;
            isShown = true;
            lackedByAll &= lacked;
            if (lacked.any())
                lacking.push_back("font " + std::to_string(font.id) + " has no " +
                                  lettersInQuotes(lacked));
        }
        if (!isShown) return;
        for (const std::string& what : lacking) {
            const std::string line = file_ + ':' + std::to_string(entry.line) + ": " +
                                     inOneLine(entry.text) + " could be shown in it, but " + what +
                                     " of the translation";
            (lackedByAll.any() ? report_.problems : report_.remarks).push_back(line);
        }
    }

    void tell(const Entry& entry, const std::string& what) {
        report_.problems.push_back(file_ + ':' + std::to_string(entry.line) + ": " +
                                   inOneLine(entry.text) + ' ' + what);
    }

    const DrawnTexts& texts_;
    const std::vector<GameFont>& fonts_;
    CataloguesReport& report_;
    std::string file_; ///< of the catalogue that is checked
};

/// Of languages and catalogues that do not know each other.
void compareLanguages(const std::vector<std::string>& named, const std::vector<std::string>& there,
                      std::vector<std::string>& problems) {
    const auto has = [](const std::vector<std::string>& all, const std::string& language) {
        return std::ranges::any_of(all,
                                   [&](const auto& one) { return isSameLanguage(one, language); });
    };
    for (std::size_t i = 1; i < named.size(); ++i)
        if (!has(there, named[i]))
            problems.push_back("game.ini: names the language " + named[i] + ", but there is no " +
                               cataloguesName(named[i]) + "; zorbet-mps texts --write " + named[i] +
                               " makes it");
    for (const std::string& language : there) {
        if (!named.empty() && isSameLanguage(named.front(), language))
            problems.push_back(cataloguesName(language) +
                               ": is never read, as the scripts themselves are in the first "
                               "language of game.ini");
        else if (!has(named, language))
            problems.push_back(cataloguesName(language) +
                               ": game.ini does not name this language; write "
                               "languages=" +
                               (named.empty() ? "OWN" : named.front()) + ',' + language);
    }
}

} // namespace

fs::path cataloguePath(const std::string& folder, const std::string& language) {
    return fs::path(folder) / cataloguesName(language);
}

formats::Result<Catalogue> readCatalogueFile(const fs::path& path, const std::string& shown) {
    std::string why;
    const auto bytes = readHostFile(path.string(), kMostCatalogue, why);
    if (!bytes) return {{}, shown + ": " + why};
    if (bytes->size() > kMostCatalogue) return {{}, shown + ": is larger than the game reads"};
    auto read = formats::texts::readCatalogue(*bytes);
    if (!read.ok()) read.refusal = shown + ':' + read.refusal;
    return read;
}

CataloguesReport checkCatalogues(const std::string& folder, const DrawnTexts& texts) {
    CataloguesReport report;
    const platform::GameInfo game = platform::readGameInfo(folder);
    report.problems = game.problems;
    const std::vector<std::string> there = cataloguesIn(folder);
    compareLanguages(game.languages, there, report.problems);
    const std::vector<GameFont> fonts = GameResources(folder).fonts();
    for (const std::string& language : there) {
        if (!game.languages.empty() && isSameLanguage(game.languages.front(), language)) continue;
        const auto read =
            readCatalogueFile(cataloguePath(folder, language), cataloguesName(language));
        if (read.ok())
            CatalogueCheck(texts, fonts, report).check(language, read.value);
        else
            report.problems.push_back(read.refusal);
    }
    return report;
}

} // namespace mps

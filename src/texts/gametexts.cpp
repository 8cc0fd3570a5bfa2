#include "texts/gametexts.h"

#include "formats/base/latin1.h"
#include "formats/texts/catalogue.h"
#include "omlog.h"
#include "omplatform.h"
#include "omresourcelog.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t kMostCatalogue = std::size_t{16} << 20; ///< bytes
constexpr char kBehindScript = '\x04';                        ///< as in compiled catalogues

std::string catalogueOf(const std::string& language) { return "languages\\" + language + ".po"; }

/// Folders of a script do not count, nor does letter case.
std::string bareName(std::string_view script) {
    return formats::lowerLatin1(script.substr(script.find_last_of("\\/") + 1));
}

std::string latin1Of(const std::string& utf8, const std::string& place) {
    std::vector<formats::LackedLetter> lacked;
    std::string text = formats::latin1FromAuthor(utf8, lacked);
    for (const auto& [line, letter] : lacked)
        OMLog::write(OMLog::Kind::Warning,
                     place + ": Latin-1 has no letter \"" + letter + "\", it became \"?\"");
    return text;
}

} // namespace

RGameTexts::RGameTexts(std::string language) : language_(std::move(language)) { readAgain(); }

void RGameTexts::setLanguage(const std::string& language) {
    const bool isTag = !language.empty() && std::ranges::all_of(language, [](char c) {
        return formats::isAsciiLetter(c) || (c >= '0' && c <= '9') || c == '-';
    });
    if (!isTag) {
        OMLog::write(OMLog::Kind::Warning, "\"" + language +
                                               "\" is no language: write its tag, such as \"pt\" "
                                               "or \"en\"");
        return;
    }
    language_ = language;
    readAgain();
}

std::string RGameTexts::keyOf(std::string_view script, std::string_view text) {
    return (script.empty() ? std::string() : bareName(script) + kBehindScript).append(text);
}

void RGameTexts::readAgain() {
    meanings_.clear();
    const std::string file = catalogueOf(language_);
    if (language_.empty() || !OMPlatform().files().exists(file)) return;
    const auto bytes = platform::readFile(OMPlatform().files(), file, kMostCatalogue);
    if (!bytes) {
        OMLogUnreadable(file, "The game's texts are not translated");
        return;
    }
    const auto catalogue = formats::texts::readCatalogue(*bytes);
    if (!catalogue.ok())
        OMLog::write(OMLog::Kind::Error,
                     file + ":" + catalogue.refusal + ". The game's texts are not translated");
    for (const formats::texts::Entry& entry : catalogue.value) {
        if (entry.text.empty() || !entry.isTranslated()) continue;
        const std::string place = file + ":" + std::to_string(entry.line);
        meanings_[keyOf(latin1Of(entry.context, place), latin1Of(entry.text, place))] =
            latin1Of(entry.translation, place);
    }
}

const std::string* RGameTexts::meaningOf(std::string_view text, std::string_view script) const {
    if (meanings_.empty()) return nullptr;
    auto found = meanings_.find(keyOf(script, text));
    if (found == meanings_.end()) found = meanings_.find(text);
    return found == meanings_.end() ? nullptr : &found->second;
}

#include "zorbetmps/texts/textcommand.h"

#include "formats/base/latin1.h"
#include "platform/commandline/commandline.h"
#include "platform/host/game/gameinfo.h"
#include "zorbetmps/check/report.h"
#include "zorbetmps/scripts/files.h"
#include "zorbetmps/texts/catalogues.h"
#include "zorbetmps/texts/renewal.h"

#include <algorithm>
#include <ostream>

namespace mps {

namespace {

void printLines(const std::vector<std::string>& lines, std::ostream& out) {
    for (const std::string& line : lines) out << line << '\n';
}

std::string projectOf(const platform::GameInfo& game) {
    return game.version.empty() ? game.title : game.title + ' ' + game.version;
}

void refuseLanguages(const std::vector<std::string>& languages, const platform::GameInfo& game) {
    for (const std::string& language : languages) {
        const bool isTag = !language.empty() && std::ranges::all_of(language, [](char c) {
            return formats::isAsciiLetter(c) || (c >= '0' && c <= '9') || c == '-';
        });
        if (!isTag)
            throw commandline::Mistake("\"" + language +
                                       "\" is no language: write its tag, such as pt or en");
        if (!game.languages.empty() &&
            formats::lowerAscii(game.languages.front()) == formats::lowerAscii(language))
            throw commandline::Mistake("the scripts themselves are in " + language +
                                       ", the first language of game.ini; a catalogue is for "
                                       "another one");
    }
}

/// Whether all could be read and written.
bool writeCatalogues(const TextsWork& work, const DrawnTexts& texts, const std::string& project,
                     std::ostream& errors) {
    std::vector<WrittenFile> files;
    std::vector<std::string> told;
    for (const std::string& language : work.written) {
        const std::filesystem::path path = cataloguePath(work.game, language).lexically_normal();
        formats::Result<formats::texts::Catalogue> old;
        std::error_code error;
        if (std::filesystem::exists(path, error)) old = readCatalogueFile(path, path.string());
        if (!old.ok()) {
            errors << old.refusal << "; nothing is written\n";
            return false;
        }
        const RenewedCatalogue renewal = renewed(texts, old.value, project, language);
        files.push_back({path, formats::texts::writeCatalogue(renewal.catalogue)});
        told.push_back(path.string() + ": " + std::to_string(renewal.fresh) + " new, " +
                       std::to_string(renewal.fuzzy) + " of them fuzzy; " +
                       std::to_string(renewal.gone) + " not used any more");
    }
    const std::string failed = writeFiles(files);
    printLines(failed.empty() ? told : std::vector{failed}, errors);
    return failed.empty();
}

} // namespace

bool drawOutTexts(const TextsWork& work, const Told& told) {
    const platform::GameInfo game = platform::readGameInfo(work.game);
    refuseLanguages(work.written, game);
    const DrawnTexts texts = drawTexts(work.game);
    report(texts.mistakes, told.errors);
    if (!texts.mistakes.empty()) return false;
    for (const std::string& script : texts.withoutText)
        told.errors << script << ": is precompiled; its texts are drawn from its text only\n";
    const std::string project = projectOf(game);
    if (!work.written.empty() && !writeCatalogues(work, texts, project, told.errors)) return false;
    if (work.written.empty() && !work.isChecked)
        told.out << formats::texts::writeCatalogue(emptyCatalogue(texts, project, {}));
    const CataloguesReport lacks = checkCatalogues(work.game, texts);
    std::ostream& out = work.isChecked ? told.out : told.errors;
    if (work.isChecked) printLines(lacks.problems, out);
    printLines(lacks.remarks, out);
    printLines(texts.doubts, out);
    printLines(lacks.counts, out);
    if (!work.isChecked && !lacks.problems.empty())
        out << "zorbet-mps texts --check tells what is lacking: " << lacks.problems.size()
            << (lacks.problems.size() == 1 ? " thing\n" : " things\n");
    return !work.isChecked || lacks.problems.empty();
}

} // namespace mps

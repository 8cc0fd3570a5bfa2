#include "zorbetmps/texts/drawntexts.h"

#include "formats/base/latin1.h"
#include "zorbetmps/check/resources.h"
#include "zorbetmps/check/scriptcheck.h"
#include "zorbetmps/check/scriptlines.h"
#include "zorbetmps/scripts/files.h"
#include "zorbetmps/texts/textflow.h"

#include "access/spokennames.h"
#include "platform/initext.h"
#include "yprecompiled.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <sstream>

namespace mps {

namespace {

namespace fs = std::filesystem;

constexpr const char* kTestsFolder = "tests/";

/// What comments say of the statements in the next lines.
class TextMarks {
  public:
    explicit TextMarks(std::string_view source) {
        std::optional<bool> takes;
        for (const ScriptLine& line : linesOf(source)) {
            if (line.isComment()) {
                std::istringstream words{std::string(line.text.substr(1))};
                std::string about, what;
                if (!(words >> about >> what) || about != "texts") continue;
                if (what == "take" || what == "skip") takes = what == "take";
                continue;
            }
            if (takes) marks_[line.number] = *takes;
            takes.reset();
        }
    }

    /// None without a comment.
    [[nodiscard]] std::optional<bool> takes(int line) const {
        const auto mark = marks_.find(line);
        return mark == marks_.end() ? std::nullopt : std::optional(mark->second);
    }

  private:
    std::map<int, bool> marks_; ///< by lines
};

bool hasLetter(std::string_view latin1) {
    return std::ranges::any_of(latin1, [](char c) {
        return formats::isAsciiLetter(c) || static_cast<unsigned char>(c) >= 0xC0;
    });
}

/// Paths may be any bytes, catalogues may not.
std::string cataloguedPath(const fs::path& path) {
    return formats::utf8FromAuthor(path.generic_string());
}

/// What all scripts that read a file do with a text in it.
struct Standing {
    std::set<std::string> showers;
    std::string why;
    std::string whole;
    std::optional<bool> mark;
};

class Drawing {
  public:
    explicit Drawing(const std::string& folder) : folder_(folder) {
        std::vector<std::string> files = scriptsIn(folder);
        std::erase_if(files, [&](const std::string& file) {
            return shownPath(file).starts_with(kTestsFolder);
        });
        // What others include is drawn with them, where all its names are known.
        std::map<std::string, std::set<std::string>> readers;
        for (const std::string& file : files) {
            ScriptCheck script(file, vocabulary_, resources_);
            if (const auto bytes = script.read()) script.compile(*bytes, [](auto&, auto&) {});
            for (const std::string& read : script.files()) readers[read].insert(file);
        }
        for (const std::string& file : files)
            if (readers[realPath(file)].size() < 2) draw(file);
        drawNames();
    }

    DrawnTexts take() {
        std::vector<std::string_view> texts(standings_.size()); // as they were read
        for (const auto& [text, number] : order_) texts[number] = text;
        for (const std::string_view text : texts) addText(std::string(text));
        std::ranges::stable_sort(drawn_.texts, {}, [](const DrawnText& text) {
            return text.places.empty() ? TextPlace{} : *text.places.begin();
        });
        return std::move(drawn_);
    }

  private:
    void draw(const std::string& file) {
        ScriptCheck script(file, vocabulary_, resources_);
        const auto bytes = script.read();
        if (bytes && YIsPrecompiled(*bytes)) {
            drawn_.withoutText.push_back(shownPath(file));
            return;
        }
        const auto look = [&](const YScript& compiled, YHeap& heap) {
            const ScriptModel model(compiled, heap);
            const ScriptFacts facts(
                model, [this](std::string_view name) { return vocabulary_.classNamed(name); },
                [](std::string_view) { return false; });
            const std::string name = cataloguedPath(fs::path(file).filename());
            const auto isSkipped = [&](YSourceLine place) {
                return marksOf(script.pathOf(compiled.files[place.file])).takes(place.line) ==
                       false;
            };
            const TextFlow flow(model, facts, isSkipped);
            for (const TextUse& use : flow.uses()) {
                const bool isPlaced = use.place.line > 0;
                note(use, isPlaced ? script.pathOf(compiled.files[use.place.file]) : file, name);
            }
        };
        if (bytes) script.compile(*bytes, look);
        for (const Finding& finding : script.findings())
            if (finding.rule == Rule::Syntax) drawn_.mistakes.push_back(finding);
    }

    /// The table of what is spoken of things; the program itself tells what is wrong with it.
    void drawNames() {
        const std::string file = (fs::path(folder_) / SpokenNames::kTable).string();
        std::string why;
        auto bytes = readHostFile(file, SpokenNames::kMostTable, why);
        if (!bytes) return;
        std::vector<formats::LackedLetter> lacked;
        const std::string table = formats::latin1FromAuthor(*std::move(bytes), lacked);
        for (const platform::IniEntry& entry : platform::readIniText(table)) {
            if (entry.key.empty() || !hasLetter(entry.value)) continue;
            const std::string text(entry.value);
            Standing& standing = standings_[text][{SpokenNames::kTable, entry.line}];
            standing.showers.insert("spoken name of " + std::string(entry.key));
            standing.mark = true;
            order_.emplace(text, order_.size());
        }
    }

    void note(const TextUse& use, const std::string& file, const std::string& script) {
        Standing& standing = standings_[use.text][{shownPath(file), use.place.line}];
        standing.showers.insert(use.showers.begin(), use.showers.end());
        if (standing.why.empty()) standing.why = use.why;
        if (standing.whole.empty()) standing.whole = use.whole;
        standing.mark = marksOf(file).takes(use.place.line);
        scripts_[use.text].insert(script);
        order_.emplace(use.text, order_.size());
    }

    void addText(const std::string& latin1) {
        const std::map<TextPlace, Standing>& places = standings_.at(latin1);
        const auto isShown = [](const Standing& standing) {
            return standing.mark.value_or(!standing.showers.empty() && standing.why.empty());
        };
        const auto isTakenByHand = [](const auto& place) { return place.second.mark == true; };
        DrawnText text{formats::utf8FromLatin1(latin1), false, {}, {}, scripts_[latin1]};
        const bool isByHand = std::ranges::any_of(places, isTakenByHand);
        text.isTaken = isByHand || (hasLetter(latin1) && isSurelyShown(text.text, places));
        for (const auto& [place, standing] : places) {
            if (text.isTaken && !isShown(standing)) continue;
            if (place.line > 0) text.places.insert(place);
            for (const std::string& shower : standing.showers)
                text.remarks.insert(formats::utf8FromLatin1(shower));
            if (!standing.whole.empty())
                text.remarks.insert("joined: " + formats::utf8FromLatin1(standing.whole));
        }
        drawn_.texts.push_back(std::move(text));
    }

    /// Tells of a text that is shown somewhere and is not to be translated by itself.
    bool isSurelyShown(const std::string& text, const std::map<TextPlace, Standing>& places) {
        const TextPlace* shown = nullptr;
        const TextPlace* worked = nullptr;
        std::string why;
        for (const auto& [place, standing] : places) {
            const bool isSkipped = standing.mark == false;
            if (!isSkipped && !standing.showers.empty() && !shown) shown = &place;
            if ((isSkipped || !standing.why.empty()) && !worked) {
                worked = &place;
                why = isSkipped ? "skipped" : formats::utf8FromLatin1(standing.why);
            }
        }
        if (shown && worked)
            drawn_.doubts.push_back(
                shown->shown() + ": \"" + text + "\" is left out: it is shown, but also " + why +
                (shown == worked ? "" : " (" + worked->shown() + ")") +
                "; when it may be translated, write \"; texts take\" above its line, when not, "
                "\"; texts skip\"");
        return shown && !worked;
    }

    const TextMarks& marksOf(const std::string& file) {
        const auto known = marks_.find(file);
        if (known != marks_.end()) return known->second;
        std::string why;
        std::vector<formats::LackedLetter> lacked;
        auto bytes = readHostFile(file, YCompiler::kMaxTextSize * 4, why);
        return marks_
            .emplace(file,
                     TextMarks(formats::latin1FromAuthor(std::move(bytes).value_or(""), lacked)))
            .first->second;
    }

    [[nodiscard]] std::string shownPath(const std::string& file) const {
        return cataloguedPath(fs::path(realPath(file)).lexically_relative(realPath(folder_)));
    }

    const std::string folder_;
    const Vocabulary vocabulary_;
    const GameResources resources_; ///< of which nothing is asked
    DrawnTexts drawn_;
    std::map<std::string, TextMarks> marks_;                         ///< by files
    std::map<std::string, std::map<TextPlace, Standing>> standings_; ///< by texts, Latin-1
    std::map<std::string, std::set<std::string>> scripts_;           ///< the same
    std::map<std::string, std::size_t> order_;                       ///< the same
};

} // namespace

DrawnTexts drawTexts(const std::string& folder) { return Drawing(folder).take(); }

} // namespace mps

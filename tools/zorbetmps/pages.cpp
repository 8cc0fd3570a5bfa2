#include "zorbetmps/pages.h"

#include "formats/base/latin1.h"
#include "zorbetmps/includes.h"
#include "zorbetmps/words.h"

#include "commands/vocabulary.h"
#include "omsclass.h"
#include "world/computedproperties.h"
#include "world/player.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <ostream>
#include <set>
#include <sstream>
#include <vector>

namespace mps {

namespace {

namespace fs = std::filesystem;
using Kind = OMScriptableObjectProperty::Kind;
using Lines = std::vector<std::string>;
using Cells = std::vector<std::string>;

constexpr std::size_t kLargestPage = std::size_t{16} << 20;
constexpr std::string_view kMark = "<!-- words: ";
constexpr std::string_view kMarkEnd = " -->";
constexpr std::string_view kEnd = "<!-- end -->";
constexpr std::string_view kCommands = "commands";
constexpr std::string_view kHeading = "### `";

struct Form {
    Kind kind;
    std::string_view word; ///< the last one of a mark
    std::string_view head;
    std::string_view rule;
    std::vector<std::size_t> prose; ///< columns of the author
};
const Form kForms[] = {
    {Kind::Data, "properties", "| Name | Value | Access | Meaning |", "|---|---|---|---|", {1, 3}},
    {Kind::Method, "methods", "| Name | Arguments | Effect |", "|---|---|---|", {2}},
    {Kind::Event, "events", "| Name | When |", "|---|---|", {1}},
};

/// A heading or row of a page that is to be printed, without its author.
struct Word {
    Kind kind;
    std::string_view name;
    std::string_view access;
    std::string_view help;
};
using Tables = std::map<std::string, std::vector<Word>>; ///< by what a mark says

void add(Tables& tables, const std::string& owner, const Word& word) {
    const Form* form = std::ranges::find(kForms, word.kind, &Form::kind);
    tables[owner + ' ' + std::string(form->word)].push_back(word);
}

/// Of classes and what their objects have at times, and of `player`, whose properties are no
/// class's.
Tables allTables(const world::Player& player) {
    Tables tables;
    for (const OMSClass* known : allClasses()) {
        if (known->name.empty()) continue; // what all objects have is told by the guide
        const std::string name(known->name);
        for (const OMSEntry& row : known->vocabulary)
            add(tables, name, {row.kind, row.name, accessOf(row), row.help});
        for (const OMSEntry& row : known->passing)
            add(tables, name + ".passing", {row.kind, row.name, accessOf(row), row.help});
    }
    constexpr const char* kReadAndWritten = "read/write";
    for (const auto& property : player.stored())
        add(tables, "player.stored", {Kind::Data, property->name(), kReadAndWritten, {}});
    for (const world::ComputedProperty& row : world::computedProperties())
        add(tables, "player.computed",
            {Kind::Data, row.name, row.write ? kReadAndWritten : "read", {}});
    return tables;
}

Cells cellsOf(std::string_view line) {
    Cells cells;
    for (std::size_t end; (end = line.find('|', 1)) != line.npos; line.remove_prefix(end)) {
        const std::string_view cell = line.substr(1, end - 1);
        const std::size_t first = std::min(cell.find_first_not_of(' '), cell.size());
        cells.emplace_back(cell.substr(first, cell.find_last_not_of(' ') + 1 - first));
    }
    return cells;
}

std::string lineOf(const Cells& cells) {
    std::string line = "|";
    for (const std::string& cell : cells) line += cell.empty() ? " |" : ' ' + cell + " |";
    return line;
}

/// The rows of a word with no author yet: several for a method that takes its arguments in several
/// forms, "id | face size".
std::vector<Cells> rowsOf(const Word& word) {
    const std::string name = '`' + std::string(word.name) + '`';
    const std::string help(word.help);
    if (word.kind == Kind::Event) return {{name, help}};
    if (word.kind == Kind::Data) return {{name, "", std::string(word.access), help}};
    std::vector<Cells> rows;
    for (const std::string& arguments : cellsOf('|' + formats::upperAscii(help) + '|'))
        rows.push_back({rows.empty() ? name : "", arguments, ""});
    return rows;
}

class Renewal {
  public:
    explicit Renewal(std::ostream& out) : out_(out) {
        for (const RCommandWords& command : RGameCommands())
            commands_[std::string(command.name)] = formats::upperAscii(command.arguments);
    }

    /// The text of a page with all that stands between marks printed anew.
    std::string page(const std::string& name, const std::string& text) {
        page_ = name;
        std::istringstream lines(text);
        std::string printed;
        for (std::string line; std::getline(lines, line);) {
            printed += line + '\n';
            if (!line.starts_with(kMark) || !line.ends_with(kMarkEnd)) continue;
            line.resize(line.size() - kMarkEnd.size());
            const std::string mark = line.substr(kMark.size());
            Lines between;
            while (std::getline(lines, line) && line != kEnd) between.push_back(line);
            if (!lines)
                complain("there is no " + std::string(kEnd) + " for the words: " + mark);
            else
                between = mark == kCommands ? headings(between) : table(mark, between);
            for (const std::string& each : between) printed += each + '\n';
            if (lines) printed += line + '\n';
        }
        return printed;
    }

    /// Whether nothing was wrong; tells what no page had.
    bool isWhole(const std::string& folder) {
        page_ = folder;
        for (const auto& [mark, words] : tables_)
            if (!told_.contains(mark))
                complain("no page has " + std::string(kMark) + mark + std::string(kMarkEnd));
        for (const auto& [name, arguments] : commands_)
            complain("no page has a heading for " + name);
        return sound_;
    }

    void complain(const std::string& text) {
        sound_ = false;
        out_ << page_ << ": " << text << '\n';
    }

  private:
    /// The headings of the commands with their arguments, and what stands below them.
    Lines headings(Lines lines) {
        for (std::string& line : lines) {
            if (!line.starts_with(kHeading)) continue;
            const std::size_t end = line.find_first_of(" `", kHeading.size());
            const std::string name = line.substr(kHeading.size(), end - kHeading.size());
            if (const auto command = commands_.extract(name))
                line = std::string(kHeading) + name + (command.mapped().empty() ? "" : " ") +
                       command.mapped() + '`';
            else
                complain(name + " is no command, or has two headings");
        }
        return lines;
    }

    /// A table with the author's cells of the present one.
    Lines table(const std::string& mark, const Lines& present) {
        const std::size_t last = mark.rfind(' ') + 1;
        const auto* form = std::ranges::find(kForms, mark.substr(last), &Form::word);
        std::vector<Word> words;
        std::istringstream owners(mark.substr(0, last));
        for (std::string owner; owners >> owner;) {
            const auto found = tables_.find(owner + ' ' + mark.substr(last));
            if (found == tables_.end()) {
                complain("there are no words " + owner + ' ' + mark.substr(last));
                return present;
            }
            told_.insert(found->first);
            words.insert(words.end(), found->second.begin(), found->second.end());
        }
        if (form == std::end(kForms) || words.empty()) {
            complain("a mark names classes and properties, methods or events, not: " + mark);
            return present;
        }
        std::map<std::string, std::deque<Cells>> rows; // of a word, as they stand there
        std::string name;
        for (std::size_t i = 2; i < present.size(); ++i) { // behind head and rule
            Cells cells = cellsOf(present[i]);
            if (std::ssize(cells) != std::ranges::count(form->head, '|') - 1) {
                complain("a row has too many or too few cells: " + present[i]);
                return present;
            }
            if (!cells.front().empty()) name = cells.front();
            rows[name].push_back(std::move(cells));
        }
        Lines printed{std::string(form->head), std::string(form->rule)};
        for (const Word& word : words) {
            std::deque<Cells>& known = rows['`' + std::string(word.name) + '`'];
            for (Cells& row : rowsOf(word)) {
                if (!known.empty()) {
                    for (const std::size_t column : form->prose)
                        row[column] = known.front()[column];
                    known.pop_front();
                }
                printed.push_back(lineOf(row));
            }
        }
        for (const auto& [word, left] : rows)
            for (const Cells& row : left) complain(word + " is no word any more: " + lineOf(row));
        return printed;
    }

    std::ostream& out_;
    const world::Player player_;
    const Tables tables_ = allTables(player_);
    std::set<std::string> told_;
    std::map<std::string, std::string> commands_; ///< that have no heading yet, and their arguments
    std::string page_;
    bool sound_ = true;
};

} // namespace

bool renewPages(const std::string& folder, bool write, std::ostream& out) {
    Renewal renewal(out);
    std::vector<fs::path> pages;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.path().extension() == ".md") pages.push_back(entry.path());
    std::ranges::sort(pages);
    for (const fs::path& page : pages) {
        std::string why;
        const auto text = readHostFile(page.string(), kLargestPage, why);
        const std::string printed = renewal.page(page.string(), text.value_or(""));
        if (!text)
            renewal.complain(why);
        else if (printed != *text && !write)
            renewal.complain("out of date; zorbet-mps words --pages FOLDER --write renews it");
        else if (printed != *text && !(std::ofstream(page, std::ios::binary) << printed).flush())
            renewal.complain("cannot be written");
    }
    return renewal.isWhole(folder);
}

} // namespace mps

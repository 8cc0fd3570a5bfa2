#include "zorbetmps/pages.h"

#include "formats/base/latin1.h"
#include "zorbetmps/check/finding.h"
#include "zorbetmps/check/includes.h"
#include "zorbetmps/words.h"

#include "commands/commands.h"
#include "commands/vocabulary.h"
#include "omsclass.h"
#include "world/computedproperties.h"
#include "world/player.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <fstream>
#include <map>
#include <ostream>
#include <set>
#include <sstream>
#include <utility>
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
    std::string_view word; ///< the last one of a mark
    std::string_view head;
    std::string_view rule;
    std::vector<std::size_t> prose; ///< columns of the author
};
const Form kForms[] = {
    {"properties", "| Name | Value | Access | Meaning |", "|---|---|---|---|", {1, 3}},
    {"methods", "| Name | Arguments | Effect |", "|---|---|---|", {2}},
    {"events", "| Name | When |", "|---|---|", {1}},
    {"findings", "| Name | Weight | Meaning |", "|---|---|---|", {}},
};

/// Rows with no author yet, by what their mark says. Several forms of a method's arguments, "id |
/// face size", are a row each, of which only the first has the name.
using Tables = std::map<std::string, std::vector<Cells>>;

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

void add(Tables& tables, const std::string& owner, const OMSEntry& row) {
    const std::string name = '`' + std::string(row.name) + '`';
    const std::string help(row.help);
    if (row.kind == Kind::Event) tables[owner + " events"].push_back({name, help});
    if (row.kind == Kind::Data)
        tables[owner + " properties"].push_back({name, "", std::string(accessOf(row)), help});
    if (row.kind != Kind::Method) return;
    std::vector<Cells>& methods = tables[owner + " methods"];
    for (bool first = true;
         std::string & arguments : cellsOf('|' + formats::upperAscii(help) + '|'))
        methods.push_back({std::exchange(first, false) ? name : "", arguments, ""});
}

/// Of classes, of what their objects have at times, of players, whose properties are no class's,
/// and of what the check of scripts finds.
Tables allTables() {
    Tables tables;
    for (const OMSClass* known : allClasses()) {
        if (known->name.empty()) continue; // what all objects have is told by the guide
        const std::string name(known->name);
        for (const OMSEntry& row : known->vocabulary) add(tables, name, row);
        for (const OMSEntry& row : known->passing) add(tables, name + ".passing", row);
    }
    const auto addProperty = [&](const std::string& owner, std::string_view name, bool isWritten) {
        tables[owner + " properties"].push_back(
            {'`' + std::string(name) + '`', "", isWritten ? "read/write" : "read", ""});
    };
    const world::Player player;
    for (const auto& property : player.stored())
        addProperty("player.stored", property->name(), true);
    for (const world::ComputedProperty& row : world::computedProperties())
        addProperty("player.computed", row.name, row.write != nullptr);
    for (const RuleAbout& rule : allRules())
        tables["check findings"].push_back({'`' + std::string(rule.name) + '`',
                                            std::string(severityName(rule.severity)),
                                            std::string(rule.about)});
    return tables;
}

class Renewal {
  public:
    explicit Renewal(std::ostream& out) : out_(out) {
        for (const RCommandWords& command : RCommands::words())
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
        for (const auto& [mark, rows] : tables_)
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

    /// The rows of all that a mark names; none when it names something else.
    std::vector<Cells> rowsOf(const std::string& owners, const std::string& form) {
        std::vector<Cells> rows;
        std::istringstream names(owners);
        for (std::string name; names >> name;) {
            const auto found = tables_.find(name + ' ' + form);
            if (found == tables_.end()) return {};
            told_.insert(found->first);
            rows.insert(rows.end(), found->second.begin(), found->second.end());
        }
        return rows;
    }

    /// A table with the author's cells of the present one.
    Lines table(const std::string& mark, const Lines& present) {
        const std::size_t last = mark.rfind(' ') + 1;
        const auto* form = std::ranges::find(kForms, mark.substr(last), &Form::word);
        std::vector<Cells> rows = rowsOf(mark.substr(0, last), mark.substr(last));
        if (rows.empty()) {
            complain("there are no words " + mark);
            return present;
        }
        std::map<std::string, std::deque<Cells>> known; // of a word
        std::string word;
        for (std::size_t i = 2; i < present.size(); ++i) { // behind head and rule
            Cells cells = cellsOf(present[i]);
            if (cells.size() != rows.front().size()) {
                complain("a row has too many or too few cells: " + present[i]);
                return present;
            }
            if (!cells.front().empty()) word = cells.front();
            known[word].push_back(std::move(cells));
        }
        Lines printed{std::string(form->head), std::string(form->rule)};
        for (Cells& row : rows) {
            if (!row.front().empty()) word = row.front();
            if (std::deque<Cells>& old = known[word]; !old.empty()) {
                for (const std::size_t column : form->prose) row[column] = old.front()[column];
                old.pop_front();
            }
            printed.push_back(lineOf(row));
        }
        for (const auto& [gone, left] : known)
            for (const Cells& row : left) complain(gone + " is no word any more: " + lineOf(row));
        return printed;
    }

    std::ostream& out_;
    const Tables tables_ = allTables();
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

#include "formats/texts/catalogue.h"

#include "formats/base/latin1.h"
#include "formats/base/scanner.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace formats::texts {

namespace {

constexpr std::string_view kObsolete = "#~";
constexpr std::string_view kFuzzy = "fuzzy";
constexpr std::pair<char, char> kEscapes[] = {
    {'n', '\n'}, {'t', '\t'}, {'r', '\r'}, {'"', '"'}, {'\\', '\\'}};

/// The text in quotes that is all of it; none when it is no such text.
std::optional<std::string> unquoted(std::string_view quoted) {
    if (quoted.size() < 2 || quoted.front() != '"' || quoted.back() != '"') return std::nullopt;
    quoted = quoted.substr(1, quoted.size() - 2);
    std::string text;
    for (std::size_t i = 0; i < quoted.size(); ++i) {
        if (quoted[i] == '"') return std::nullopt;
        if (quoted[i] != '\\') {
            text += quoted[i];
            continue;
        }
        if (++i == quoted.size()) return std::nullopt;
        const auto* escape = std::ranges::find(kEscapes, quoted[i], &std::pair<char, char>::first);
        if (escape == std::end(kEscapes)) return std::nullopt;
        text += escape->second;
    }
    return text;
}

std::string quoted(std::string_view text) {
    std::string line = "\"";
    for (const char c : text) {
        const auto* escape = std::ranges::find(kEscapes, c, &std::pair<char, char>::second);
        if (escape == std::end(kEscapes))
            line += c;
        else
            line.append({'\\', escape->first});
    }
    return line + '"';
}

std::string_view trimmed(std::string_view line) {
    constexpr std::string_view kBlanks = " \t\r";
    const std::size_t first = line.find_first_not_of(kBlanks);
    if (first == line.npos) return {};
    return line.substr(first, line.find_last_not_of(kBlanks) - first + 1);
}

void addLine(std::string& lines, std::string_view line) {
    if (!lines.empty()) lines += '\n';
    lines += line;
}

/// Reads line by line. An entry is over when the next one's first line comes.
class CatalogueReader {
  public:
    Result<Catalogue> read(std::string_view utf8) {
        constexpr std::string_view kMark = "\xEF\xBB\xBF";
        if (utf8.starts_with(kMark)) utf8.remove_prefix(kMark.size());
        for (; !utf8.empty() && refusal_.empty(); ++line_) {
            const std::size_t end = std::min(utf8.find('\n'), utf8.size());
            const std::string_view line = trimmed(utf8.substr(0, end));
            utf8.remove_prefix(std::min(end + 1, utf8.size()));
            if (!decodeUtf8(line)) refuse("the text is not UTF-8");
            if (!line.empty()) readLine(line);
        }
        finish();
        if (!refusal_.empty()) return {{}, refusal_};
        return {std::move(catalogue_), {}};
    }

  private:
    void refuse(const std::string& why) {
        if (refusal_.empty()) refusal_ = std::to_string(line_) + ": " + why;
    }

    void readLine(std::string_view line) {
        const bool isObsolete = line.starts_with(kObsolete);
        if (isObsolete) line = trimmed(line.substr(kObsolete.size()));
        if (line.empty() || line.front() == '|') return; // what it was before
        if (line.front() == '#') return readComment(line);
        if (line.front() == '"') return goOn(line);
        const std::size_t end = std::min(line.find_first_of(" \t\""), line.size());
        const std::string_view word = line.substr(0, end);
        if (word == "msgstr") {
            if (state_ == State::Text)
                begin(State::Translation, line.substr(end), entry_.translation);
            else
                refuse("a msgid is missing before this msgstr");
            return;
        }
        if (word != "msgctxt" && word != "msgid")
            return refuse(inQuotes(word) + " is neither msgctxt, msgid nor msgstr; there are no "
                                           "plurals here");
        if (state_ == State::Translation) finish();
        if (state_ == State::Text || (word == "msgctxt" && state_ == State::Context))
            return refuse("a msgstr is missing before this " + std::string(word));
        entry_.isObsolete = isObsolete;
        entry_.line = line_;
        if (word == "msgctxt")
            begin(State::Context, line.substr(end), entry_.context);
        else
            begin(State::Text, line.substr(end), entry_.text);
    }

    void readComment(std::string_view line) {
        if (state_ == State::Translation) finish();
        const char kind = line.size() > 1 ? line[1] : ' ';
        const std::string_view text = trimmed(line.substr(std::min<std::size_t>(line.size(), 2)));
        if (kind == '.')
            addLine(entry_.remark, text);
        else if (kind == ',')
            entry_.isFuzzy = entry_.isFuzzy || text.find(kFuzzy) != text.npos;
        else if (kind == ':')
            readPlaces(text);
        else if (kind == ' ' || kind == '\t')
            addLine(entry_.notes, text);
    }

    void readPlaces(std::string_view text) {
        TextScanner scanner(text);
        for (std::string_view place = scanner.word(); !place.empty(); place = scanner.word())
            entry_.places.emplace_back(place);
    }

    enum class State { Before, Context, Text, Translation };

    void begin(State state, std::string_view line, std::string& place) {
        state_ = state;
        place_ = &place;
        goOn(trimmed(line));
    }

    void goOn(std::string_view line) {
        const auto text = unquoted(line);
        if (state_ == State::Before)
            refuse("this text belongs to no msgid");
        else if (text)
            *place_ += *text;
        else
            refuse("a text in quotes is wanted here, in which \\ stands before n, t, r, \" and \\ "
                   "only");
    }

    void finish() {
        if (state_ == State::Context || state_ == State::Text)
            refuse("the last entry has no msgstr");
        if (state_ == State::Translation) catalogue_.push_back(std::exchange(entry_, {}));
        state_ = State::Before;
    }

    Catalogue catalogue_;
    Entry entry_;
    State state_ = State::Before;
    std::string* place_ = nullptr; ///< of the entry, where texts go on
    int line_ = 1;
    std::string refusal_;
};

void writeLines(std::string& file, std::string_view mark, std::string_view lines) {
    while (!lines.empty()) {
        const std::size_t end = std::min(lines.find('\n'), lines.size());
        file.append(mark).append(lines.substr(0, end)) += '\n';
        lines.remove_prefix(std::min(end + 1, lines.size()));
    }
}

/// A text of several lines gets a line for each.
void writeText(std::string& file, std::string_view mark, std::string_view word,
               std::string_view text) {
    file.append(mark).append(word) += ' ';
    std::size_t end = text.find('\n');
    const bool isLong = end != text.npos && end + 1 < text.size();
    if (isLong) file.append("\"\"\n").append(mark);
    while (isLong && end != text.npos && end + 1 < text.size()) {
        file.append(quoted(text.substr(0, end + 1))).append("\n").append(mark);
        text.remove_prefix(end + 1);
        end = text.find('\n');
    }
    file.append(quoted(text)) += '\n';
}

} // namespace

Result<Catalogue> readCatalogue(std::string_view utf8) { return CatalogueReader().read(utf8); }

std::string writeCatalogue(const Catalogue& catalogue) {
    std::string file;
    for (const Entry& entry : catalogue) {
        if (!file.empty()) file += '\n';
        writeLines(file, "# ", entry.notes);
        writeLines(file, "#. ", entry.remark);
        for (const std::string& place : entry.places) file += "#: " + place + '\n';
        if (entry.isFuzzy) file += "#, fuzzy\n";
        const std::string_view mark = entry.isObsolete ? "#~ " : "";
        if (!entry.context.empty()) writeText(file, mark, "msgctxt", entry.context);
        writeText(file, mark, "msgid", entry.text);
        writeText(file, mark, "msgstr", entry.translation);
    }
    return file;
}

} // namespace formats::texts

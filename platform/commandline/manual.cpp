#include "platform/commandline/manual.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <string_view>

namespace commandline {

namespace {

constexpr const char* kGameSection = "Games Manual"; ///< what man(1) prints above
constexpr const char* kAuthorSection = "User Commands";
constexpr int kGames = 6;

bool isOfWord(char letter) {
    return std::isalnum(static_cast<unsigned char>(letter)) || letter == '-';
}

char upper(char letter) {
    return static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
}

std::string inUpperCase(std::string text) {
    std::ranges::transform(text, text.begin(), upper);
    return text;
}

/// As the formatter reads it: a "-" that is copied from the page is one again.
std::string escaped(std::string_view text) {
    std::string result;
    for (const char letter : text) {
        if (letter == '\\')
            result += "\\e";
        else if (letter == '-')
            result += "\\-";
        else
            result += letter;
    }
    return result;
}

/// A line of text is none of the formatter's commands.
std::string protectedLine(const std::string& line) {
    const bool isCommand = line.starts_with('.') || line.starts_with('\'');
    return (isCommand ? "\\&" : "") + line + "\n";
}

/// Lines of a width that checkers of manuals like, of a text that is escaped already.
std::string filled(std::string_view text) {
    constexpr std::size_t kWidth = 78;
    std::string lines;
    std::string line;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = text.find_first_of(" \n", at);
        while (end < text.size() && end > 0 && text[end - 1] == '\\')
            end = text.find_first_of(" \n", end + 1);
        const std::string_view word = text.substr(at, std::min(end, text.size()) - at);
        if (!line.empty() && line.size() + 1 + word.size() > kWidth) {
            lines += protectedLine(line);
            line.clear();
        }
        if (!word.empty()) line += (line.empty() ? "" : " ") + std::string(word);
        at += word.size() + 1;
    }
    return line.empty() ? lines : lines + protectedLine(line);
}

std::string asText(std::string_view text) { return filled(escaped(text)); }

/// Columns stay apart.
std::string inColumns(std::string_view text) {
    std::string result = escaped(text);
    for (std::size_t gap = result.find("  "); gap != result.npos; gap = result.find("  ", gap)) {
        for (; result[gap] == ' '; gap += 2) result.insert(gap, "\\");
    }
    return filled(result);
}

std::string bold(std::string_view text) { return "\\fB" + escaped(text) + "\\fR"; }
std::string italic(std::string_view text) { return "\\fI" + escaped(text) + "\\fR"; }

/// Options in bold, values in italics, and innermost brackets in one line.
std::string usageAsLine(std::string_view usage) {
    std::string line;
    for (std::size_t at = 0; at < usage.size();) {
        const auto* begin = usage.begin() + static_cast<std::ptrdiff_t>(at);
        const std::string_view word(begin, std::find_if_not(begin, usage.end(), isOfWord));
        if (!word.empty()) {
            line += word.starts_with('-') ? bold(word) : italic(word);
            at += word.size();
        } else if (usage[at] != ' ' && usage[at] != '\n') {
            line += usage[at++];
        } else {
            const std::string_view rest = usage.substr(at);
            const std::size_t bracket = rest.find_first_of("[]");
            const std::string_view before = usage.substr(0, at);
            const std::size_t open = before.find_last_of("[]");
            const bool isInside = bracket != rest.npos && rest[bracket] == ']' &&
                                  open != before.npos && before[open] == '[';
            line += isInside ? "\\ " : " ";
            at += std::min(rest.find_first_not_of(" \n"), rest.size());
        }
    }
    return line;
}

/// Texts of the help: paragraphs, and below these indented lines, which stay as they are, or are
/// items with two blanks or more behind their terms.
class Paragraphs {
  public:
    /// `isFirst`: a heading stands before them.
    explicit Paragraphs(std::string_view text, bool isFirst = false) : isFirst_(isFirst) {
        std::istringstream lines{std::string(text)};
        for (std::string line; std::getline(lines, line);) add(line);
        close();
    }
    [[nodiscard]] std::string result() const { return result_; }

  private:
    enum class Kind { None, Text, Item, Example };

    void add(const std::string& line) {
        const std::size_t indent = std::min(line.find_first_not_of(' '), line.size());
        const std::string_view words = std::string_view(line).substr(indent);
        const std::size_t gap = words.find("  ");
        if (words.empty()) {
            isApart_ = true;
        } else if (kind_ == Kind::Item && indent > kIndent) {
            result_ += asText(words);
        } else if (indent > 0 && gap != words.npos) {
            begin(Kind::Item);
            result_ += ".TP\n" + asText(words.substr(0, gap)) +
                       inColumns(words.substr(words.find_first_not_of(' ', gap)));
        } else if (indent > 0) {
            begin(Kind::Example);
            result_ += protectedLine(escaped(std::string_view(line).substr(kIndent)));
        } else {
            begin(Kind::Text);
            paragraph_ += (paragraph_.empty() ? "" : " ") + std::string(words);
        }
    }

    void begin(Kind kind) {
        if (kind != kind_ || (isApart_ && kind == Kind::Text)) {
            close();
            if (kind != Kind::Item && !isFirst_) result_ += ".PP\n";
            if (kind == Kind::Example) result_ += ".RS 4\n.EX\n";
        } else if (isApart_ && kind == Kind::Example) {
            result_ += "\n";
        }
        kind_ = kind;
        isApart_ = false;
        isFirst_ = false;
    }
    void close() {
        if (kind_ == Kind::Example) result_ += ".EE\n.RE\n";
        if (kind_ == Kind::Text) result_ += asText(paragraph_);
        paragraph_.clear();
        kind_ = Kind::None;
    }

    static constexpr std::size_t kIndent = 2;
    Kind kind_ = Kind::None;
    bool isFirst_;
    bool isApart_ = false; ///< an empty line came
    std::string paragraph_;
    std::string result_;
};

std::string termOf(const OptionText& option) {
    if (option.isArgument) return italic(option.value);
    std::string term;
    for (const std::string& name : option.names) term += (term.empty() ? "" : ", ") + bold(name);
    return term + (option.value.empty() ? "" : " " + italic(option.value));
}

/// `title` is the one that they stand below.
std::string itemsOf(const std::vector<OptionText>& options, std::string_view title) {
    std::string text;
    for (const OptionText& option : options)
        if (option.title == title || option.isArgument)
            text += ".TP\n" + termOf(option) + "\n" + asText(option.description);
    return text;
}

std::string optionsOf(const CommandText& command) {
    std::string text = itemsOf(command.options, {});
    std::vector<std::string> titles;
    for (const OptionText& option : command.options)
        if (!option.title.empty() && std::ranges::find(titles, option.title) == titles.end())
            titles.push_back(option.title);
    for (const std::string& title : titles)
        text += ".SS " + escaped(title) + "\n" + itemsOf(command.options, title);
    return text;
}

std::string formOf(const std::string& name, const std::string& usage) {
    return ".SY \"" + escaped(name) + "\"\n" + filled(usageAsLine(usage)) + ".YS\n";
}

std::string synopsisOf(const ProgramText& program) {
    std::string text = ".SH SYNOPSIS\n";
    if (program.isCommand) text += formOf(program.name, program.itself.usage);
    for (const CommandText& command : program.commands)
        text += formOf(program.name + " " + command.name, command.usage);
    return text;
}

std::string commandsOf(const ProgramText& program) {
    std::string text = ".SH COMMANDS\n";
    for (const CommandText& command : program.commands)
        text += ".SS " + escaped(program.name + " " + command.name) + "\n" +
                asText(command.description + ".") + optionsOf(command) +
                Paragraphs(command.more).result();
    return text;
}

std::string headOf(const ProgramText& program, const std::string& date) {
    const int section = program.manual.section;
    std::string summary = program.summary;
    summary[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(summary[0])));
    return ".TH " + escaped(inUpperCase(program.name)) + " " + std::to_string(section) + " " +
           date + " \"" + escaped(program.name) + " " + program.version + "\" \"" +
           (section == kGames ? kGameSection : kAuthorSection) + "\"\n.SH NAME\n" +
           escaped(program.name) + " \\- " + escaped(summary) + "\n";
}

std::string seeAlsoOf(const Manual& manual) {
    std::string text = ".SH SEE ALSO\n";
    for (const std::string& page : manual.seeAlso) {
        const std::size_t bracket = page.find('(');
        text += ".BR " + escaped(page.substr(0, bracket)) + " " + page.substr(bracket) +
                (page == manual.seeAlso.back() ? "\n" : ",\n");
    }
    return text;
}

} // namespace

std::string manualOf(const ProgramText& program, const std::string& date) {
    std::string text = headOf(program, date) + synopsisOf(program) + ".SH DESCRIPTION\n";
    text += Paragraphs(program.description, true).result();
    text += ".SH OPTIONS\n" + optionsOf(program.itself) + commandsOf(program);
    for (const Section& section : program.sections)
        text += ".SH " + escaped(inUpperCase(section.title)) + "\n" +
                Paragraphs(section.text, true).result();
    return text + seeAlsoOf(program.manual);
}

} // namespace commandline

#include "platform/commandline/optionspage.h"

#include <string_view>

namespace commandline {

namespace {

/// Markdown takes none of the letters for its own, and lines go on.
std::string inMarkdown(std::string_view text) {
    constexpr std::string_view kMarks = "\\`*_[]<>|";
    std::string result;
    for (const char letter : text) {
        if (kMarks.find(letter) != kMarks.npos) result += '\\';
        result += letter == '\n' ? ' ' : letter;
    }
    return result;
}

/// Lines that stay as they are; nothing of no text.
std::string block(std::string_view text) {
    if (text.empty()) return {};
    return "```text\n" + std::string(text) + (text.ends_with('\n') ? "" : "\n") + "```\n\n";
}

std::string usageBlock(const std::string& name, const std::string& usage) {
    return block(usage.empty() ? name : name + ' ' + usage);
}

std::string rowOf(const OptionText& option) {
    std::string names;
    for (const std::string& name : option.names)
        names += (names.empty() ? "" : ", ") + inMarkdown(name);
    if (!option.value.empty() && !option.isArgument) names += ' ' + inMarkdown(option.value);
    return "| " + names + " | " + inMarkdown(option.description) + " |\n";
}

/// A table for each title that options stand below, in the order of the help.
std::string optionTables(const std::vector<OptionText>& options) {
    std::string text;
    std::string title;
    bool isOpen = false;
    for (const OptionText& option : options) {
        if (!isOpen || option.title != title) {
            title = option.title;
            if (isOpen) text += '\n';
            if (!title.empty()) text += "**" + inMarkdown(title) + "**\n\n";
            text += "| Option | Meaning |\n|---|---|\n";
            isOpen = true;
        }
        text += rowOf(option);
    }
    return isOpen ? text + '\n' : text;
}

} // namespace

std::string optionsPageOf(const ProgramText& program) {
    std::string text = "# " + program.name + "\n\n" + inMarkdown(program.summary) + ".\n\n" +
                       inMarkdown(program.description) + "\n\n";
    if (program.isCommand) text += usageBlock(program.name, program.itself.usage);
    text += optionTables(program.itself.options);
    for (const CommandText& command : program.commands) {
        const std::string name = program.name + ' ' + command.name;
        text += "## " + name + "\n\n" + inMarkdown(command.description) + ".\n\n" +
                usageBlock(name, command.usage) + optionTables(command.options) +
                block(command.more);
    }
    for (const Section& section : program.sections)
        text += "## " + inMarkdown(section.title) + "\n\n" + block(section.text);
    return text;
}

} // namespace commandline

#include "platform/commandline/completion.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

namespace commandline {

namespace {

enum class Value { None, Word, Folder, File };

/// By what the help calls it.
Value valueOf(const OptionText& option) {
    const auto isCalled = [&](std::initializer_list<std::string_view> words) {
        return std::ranges::any_of(words, [&](std::string_view word) {
            return option.value.find(word) != std::string::npos;
        });
    };
    if (isCalled({"FILE", "PATH", "MANIFEST", "FRAME"})) return Value::File;
    if (isCalled({"DIR", "FOLDER"})) return Value::Folder;
    return option.value.empty() ? Value::None : Value::Word;
}

std::string inOneLine(std::string text) {
    std::ranges::replace(text, '\n', ' ');
    return text;
}

/// With `before` in front of each of these letters.
std::string shielded(const std::string& text, std::string_view letters, std::string_view before) {
    std::string result;
    for (const char letter : text) {
        if (letters.find(letter) != letters.npos) result += before;
        result += letter;
    }
    return result;
}

std::string listOf(const std::vector<std::string>& words, const std::string& between) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : between) + word;
    return text;
}

std::vector<std::string> namesOf(const std::vector<CommandText>& commands) {
    std::vector<std::string> names;
    for (const CommandText& command : commands) names.push_back(command.name);
    return names;
}

/// A word for functions of shells.
std::string functionFor(const ProgramText& program) {
    std::string name = "_" + program.name;
    std::ranges::replace(name, '-', '_');
    return name;
}

/// All but arguments.
std::vector<std::string> optionNames(const CommandText& command) {
    std::vector<std::string> names;
    for (const OptionText& option : command.options)
        if (!option.isArgument) names.insert(names.end(), option.names.begin(), option.names.end());
    return names;
}

std::vector<std::string> optionsWith(const CommandText& command, Value value) {
    std::vector<std::string> names;
    for (const OptionText& option : command.options)
        if (!option.isArgument && valueOf(option) == value)
            names.insert(names.end(), option.names.begin(), option.names.end());
    return names;
}

Value argumentOf(const CommandText& command) {
    const auto argument = std::ranges::find_if(command.options, &OptionText::isArgument);
    return argument == command.options.end() ? Value::Word : valueOf(*argument);
}

std::string_view bashWord(Value value) {
    return value == Value::Folder ? "folder" : value == Value::File ? "file" : "word";
}

/// What may stand there, by the word before it.
std::string bashCaseOf(const CommandText& command) {
    std::string text = "            options='" + listOf(optionNames(command), " ") +
                       "' kind=" + std::string(bashWord(argumentOf(command))) +
                       "\n            case $before in\n";
    for (const Value value : {Value::Word, Value::Folder, Value::File})
        if (const auto names = optionsWith(command, value); !names.empty())
            text += "                " + listOf(names, "|") +
                    ") options= names= kind=" + std::string(bashWord(value)) + " ;;\n";
    return text + "            esac ;;\n";
}

} // namespace

std::string bashCompletionOf(const ProgramText& program) {
    const std::string function = functionFor(program);
    std::string text =
        "# " + program.name + ": completion for bash.\n" + function +
        "() {\n"
        "    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]}\n"
        "    local command= options= names= kind=\n"
        "    if ((COMP_CWORD > 1)); then command=${COMP_WORDS[1]}; else names='" +
        listOf(namesOf(program.commands), " ") + "'; fi\n    case $command in\n";
    for (const CommandText& command : program.commands)
        text += "        " + command.name + ")\n" + bashCaseOf(command);
    text += "        *)\n" + bashCaseOf(program.itself) + "    esac\n";
    text += R"(    [[ $word != -* ]] || names=$options
    if [[ $word != -* && $kind == folder ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$word")
    elif [[ $word != -* && $kind == file ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -W "$names" -- "$word")
    fi
}
)";
    return text + "complete -F " + function + " " + program.name + "\n";
}

namespace {

std::string fishValue(Value value) {
    switch (value) {
    case Value::None: return {};
    case Value::Word: return " -x";
    case Value::Folder: return " -x -a '(__fish_complete_directories)'";
    case Value::File: return " -r -F";
    }
    return {};
}

std::string inFishQuotes(const std::string& text) {
    return "'" + shielded(inOneLine(text), "\\'", "\\") + "'";
}

/// `when` is a condition of the shell.
std::string fishLinesOf(const std::string& start, const std::string& when,
                        const CommandText& command) {
    std::string text;
    for (const OptionText& option : command.options) {
        text += start + " -n '" + when + "'";
        for (const std::string& name : option.names)
            if (!option.isArgument)
                text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
        const Value value = valueOf(option);
        if (!option.isArgument)
            text += fishValue(value) + " -d " + inFishQuotes(option.description);
        else if (value == Value::Folder)
            text += " -a '(__fish_complete_directories)'";
        else if (value == Value::File)
            text += " -F";
        text += "\n";
    }
    return text;
}

} // namespace

std::string fishCompletionOf(const ProgramText& program) {
    const std::string start = "complete -c " + program.name;
    const std::string names = listOf(namesOf(program.commands), " ");
    std::string text = "# " + program.name + ": completion for fish.\n" + start + " -f\n";
    for (const CommandText& command : program.commands)
        text += start + " -n __fish_use_subcommand -a " + command.name + " -d " +
                inFishQuotes(command.description) + "\n";
    text += fishLinesOf(start, "not __fish_seen_subcommand_from " + names, program.itself);
    for (const CommandText& command : program.commands)
        text += fishLinesOf(start, "__fish_seen_subcommand_from " + command.name, command);
    return text;
}

namespace {

std::string inZshQuotes(const std::string& text) { return "'" + shielded(text, "'", "'\\'") + "'"; }

std::string zshValue(const OptionText& option) {
    const Value value = valueOf(option);
    if (value == Value::None) return {};
    const char* action = value == Value::Folder ? "_files -/"
                         : value == Value::File ? "_files"
                                                : " ";
    return ":" + shielded(option.value, ":", "\\") + ":" + action;
}

std::string zshArgumentOf(const OptionText& option) {
    if (option.isArgument) return inZshQuotes((option.isVersatile ? "*" : "") + zshValue(option));
    const std::string description =
        "[" + shielded(inOneLine(option.description), "[]:", "\\") + "]" + zshValue(option);
    if (option.names.size() == 1)
        return inZshQuotes((option.isVersatile ? "*" : "") + option.names.front() + description);
    return "'(" + listOf(option.names, " ") + ")'{" + listOf(option.names, ",") + "}" +
           inZshQuotes(description);
}

std::string zshArgumentsOf(const CommandText& command) {
    std::string text = "_arguments";
    for (const OptionText& option : command.options)
        text += " \\\n            " + zshArgumentOf(option);
    return text + "\n";
}

} // namespace

std::string zshCompletionOf(const ProgramText& program) {
    std::string text = "#compdef " + program.name + "\n# " + program.name +
                       ": completion for zsh.\nlocal -a commands=(\n";
    for (const CommandText& command : program.commands)
        text += "    " + inZshQuotes(command.name + ":" + command.description) + "\n";
    text += ")\nif ((CURRENT == 2)) && [[ $PREFIX != -* ]]; then\n"
            "    _describe command commands\n    return\nfi\ncase $words[2] in\n";
    for (const CommandText& command : program.commands)
        text += "    " + command.name + ")\n        shift words\n        ((--CURRENT))\n        " +
                zshArgumentsOf(command) + "        ;;\n";
    return text + "    *)\n        " + zshArgumentsOf(program.itself) + "        ;;\nesac\n";
}

} // namespace commandline

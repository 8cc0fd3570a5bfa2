// What a program tells of its command line, in plain records: help is made of it by the library
// that parses, the manual and the completions of shells by us.
#pragma once

#include <string>
#include <vector>

namespace commandline {

/// A part with a title at the end of the program's help.
struct Section {
    std::string title;
    std::string text; ///< lines of up to 90 characters; empty ones between paragraphs
};

/// What only the manual says of a program.
struct Manual {
    int section = 1;                  ///< 1: programs for authors, 6: games
    std::vector<std::string> seeAlso; ///< "zorbet(6)"
};

struct OptionText {
    std::vector<std::string> names; ///< "-o", "--output"; of an argument the one in the usage
    std::string value;              ///< what its value is called; empty: it has none
    std::string description;
    std::string title; ///< that it stands below in the help; empty: with most
    bool isArgument = false;
    bool isVersatile = false; ///< may be given many times
};

struct CommandText {
    std::string name; ///< empty: the program by itself
    std::string description;
    std::string usage; ///< what follows the name
    std::string more;
    std::vector<OptionText> options; ///< arguments too
};

struct ProgramText {
    std::string name;
    std::string version;
    std::string summary;
    std::string description;
    Manual manual;
    bool isCommand = false; ///< does something when no command is named
    CommandText itself;
    std::vector<CommandText> commands;
    std::vector<Section> sections;
};

} // namespace commandline

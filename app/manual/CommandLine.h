#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace Keltrix::App {

/// An option or argument of a command, as manual pages and completions need it.
struct OptionText {
    std::vector<std::string> names; ///< "-o", "--output"; of an argument its word
    std::string value;              ///< its word, such as "FILE"; empty of a flag
    std::string range;              ///< what the value is limited to, in words; may be empty
    std::vector<std::string> choices;
    std::string meaning;
    std::string byDefault; ///< may be empty
    bool isArgument = false;
    bool isRequired = false;
    bool isRepeated = false;
};

struct CommandText {
    std::string name; ///< empty of the program itself
    std::string meaning;
    std::vector<OptionText> options; ///< help among them
};

/// The program and its commands, read from what parses the command line.
struct CommandLineText {
    CommandText program;
    std::vector<CommandText> commands;

    /// The command of that name, the program where it is empty, or null.
    const CommandText* Find(const std::string& name) const;
    /// "show, validate"
    std::string NamesOfCommands() const;
};

/// `codes` are the names that --code takes.
CommandLineText ReadCommandLine(const CLI::App& app, const std::vector<std::string>& codes);

} // namespace Keltrix::App

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
    bool isFileToo = false; ///< a file, where it is none of the choices
    std::string meaning;
    std::string byDefault; ///< may be empty
    bool isArgument = false;
    bool isRequired = false;
    bool isRepeated = false;
    std::string code; ///< the design code that has the option; empty of the program's own
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

/// The options that a design code has of its own.
struct CodeOptions {
    std::string code;
    std::vector<OptionText> options;
};

/// Words that are known of an option's value, whatever the parser says of it.
struct KnownWords {
    std::string option;
    std::vector<std::string> words;
    bool isFileToo = false;
};

/// The parser has the options of one design code, `present`; commands that take these are given the options of all.
CommandLineText ReadCommandLine(const CLI::App& app, const std::string& present, const std::vector<CodeOptions>& codes,
                                const std::vector<KnownWords>& known);
std::vector<OptionText> ReadOptions(const CLI::App& command);

} // namespace Keltrix::App

#include "manual/Manual.h"

#include <algorithm>

#include "manual/Topics.h"

namespace Keltrix::App {

namespace {

// A text in which nothing is a request: man(7) gives a meaning to backslashes, to points and apostrophes at the beginning of a line, and takes a
// plain hyphen for one between words.
std::string Escaped(const std::string& text)
{
    std::string escaped = !text.empty() && (text[0] == '.' || text[0] == '\'') ? "\\&" : "";
    for (const char c : text) {
        if (c == '\\')
            escaped += "\\e";
        else if (c == '-')
            escaped += "\\-";
        else
            escaped += c == '\n' ? ' ' : c;
    }
    return escaped;
}

std::string Capitals(std::string text)
{
    for (char& c : text)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return text;
}

std::string Sentence(std::string text)
{
    if (!text.empty() && text.back() != '.') text += '.';
    return text;
}

std::string ValueOf(const OptionText& option)
{
    if (option.choices.empty()) return "\\fI" + Escaped(option.value) + "\\fR";
    std::string words;
    for (const std::string& choice : option.choices)
        words += (words.empty() ? "" : "|") + Escaped(choice);
    if (option.isFileToo) words += "|FILE";
    return "\\fI" + words + "\\fR";
}

std::string Heading(const OptionText& option)
{
    std::string names;
    for (const std::string& name : option.names)
        names +=
            (names.empty() ? "" : ", ") + std::string(option.isArgument ? "\\fI" : "\\fB") + Escaped(name) + "\\fR";
    if (option.isArgument) return names + (option.isRepeated ? "..." : "");
    return option.value.empty() ? names : names + ' ' + ValueOf(option);
}

void AddOptions(std::string& page, const CommandText& command, bool areArguments)
{
    for (const OptionText& option : command.options) {
        if (option.isArgument != areArguments) continue;
        page += ".TP\n" + Heading(option) + '\n';
        if (!option.code.empty()) page += "With \\-\\-code " + Escaped(option.code) + ": ";
        page += Escaped(Sentence(option.meaning));
        if (!option.range.empty()) page += " Range: " + Escaped(option.range) + '.';
        if (!option.byDefault.empty()) page += " Without it: " + Escaped(option.byDefault) + '.';
        if (option.isRequired && !option.isArgument) page += " Required.";
        page += '\n';
    }
}

// As it stands, line by line.
std::string Literal(const std::string& text)
{
    std::string lines = ".nf\n";
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        lines += Escaped(text.substr(begin, end - begin)) + '\n';
        begin = end + 1;
    }
    return lines + ".fi\n";
}

void AddExamples(std::string& page, const CommandText& command)
{
    std::string examples;
    for (const Example& example : CommandExamples())
        if (command.name == example.command)
            examples += ".TP\n\\fB" + Escaped(example.line) + "\\fR\n" + Escaped(example.meaning) + '\n';
    if (!examples.empty()) page += ".SH EXAMPLES\n" + examples;
}

std::string Synopsis(const CommandText& command)
{
    std::string text = ".B ksteel" + (command.name.empty() ? "" : ' ' + Escaped(command.name)) + "\n[\\fIOPTIONS\\fR]";
    if (command.name.empty()) text += " \\fICOMMAND\\fR ...";
    for (const OptionText& option : command.options)
        if (option.isArgument)
            text += (option.isRequired ? " " : " [") + Heading(option) + (option.isRequired ? "" : "]");
    return text + '\n';
}

} // namespace

std::string PageName(const CommandText& command) { return "ksteel" + (command.name.empty() ? "" : '-' + command.name); }

std::string ManualPage(const CommandLineText& line, const CommandText& command, std::span<const ExitCodeText> exitCodes,
                       const std::string& version)
{
    const bool isProgram = command.name.empty();
    std::string page = ".TH " + Escaped(Capitals(PageName(command))) + " 1 \"\" \"ksteel " + Escaped(version) +
                       "\" \"Keltrix Steel\"\n";
    std::string about = command.meaning;
    while (!about.empty() && about.back() == '.')
        about.pop_back();
    page += ".SH NAME\n" + Escaped(PageName(command)) + " \\- " + Escaped(about) + '\n';
    page += ".SH SYNOPSIS\n" + Synopsis(command);
    page += ".SH DESCRIPTION\n" + Escaped(Sentence(command.meaning)) + '\n';
    if (isProgram) {
        page += "Each command has a page of its own, such as\n.BR ksteel\\-" + Escaped(line.commands.front().name) +
                " (1).\n";
        page += ".SH COMMANDS\n";
        for (const CommandText& one : line.commands)
            page += ".TP\n\\fB" + Escaped(one.name) + "\\fR\n" + Escaped(Sentence(one.meaning)) + '\n';
    } else {
        std::string arguments;
        AddOptions(arguments, command, true);
        if (!arguments.empty()) page += ".SH ARGUMENTS\n" + arguments;
    }
    page += ".SH OPTIONS\n";
    AddOptions(page, command, false);
    if (!isProgram) page += ".PP\nOptions of the program, in\n.BR ksteel (1),\nmay stand here as well.\n";
    page += ".SH EXIT STATUS\n";
    for (const ExitCodeText& code : exitCodes)
        page += ".TP\n" + std::to_string(code.code) + '\n' + Escaped(Sentence(code.meaning)) + '\n';
    if (isProgram) {
        for (const HelpTopic& topic : HelpTopics())
            page += ".SH " + Capitals(topic.name) + '\n' + Literal(topic.text);
    }
    AddExamples(page, command);
    page += ".SH SEE ALSO\n";
    if (!isProgram) return page + ".BR ksteel (1)\n";
    for (std::size_t i = 0; i < line.commands.size(); ++i)
        page +=
            ".BR ksteel\\-" + Escaped(line.commands[i].name) + (i + 1 < line.commands.size() ? " (1),\n" : " (1)\n");
    return page;
}

} // namespace Keltrix::App

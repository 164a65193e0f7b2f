#include "manual/CommandLine.h"

#include <algorithm>

#include <CLI/CLI.hpp>

namespace Keltrix::App {

namespace {

std::vector<std::string> Split(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t end = 0; end != std::string::npos; start = end + 1) {
        end = text.find(separator, start);
        parts.push_back(text.substr(start, end == std::string::npos ? end : end - start));
    }
    return parts;
}

bool IsLowerCase(const std::string& word)
{
    return !word.empty() && std::all_of(word.begin(), word.end(), [](char c) {
        return c == '-' || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
    });
}

// The parser describes a value as its type with what checks it: "TEXT:{json,table}", "FLOAT:0.1 to 1", "bolt|bolts".
void ReadValue(const std::string& described, OptionText& option)
{
    const std::size_t colon = described.find(':');
    const std::string check = colon == std::string::npos ? std::string() : described.substr(colon + 1);
    option.value = described.substr(0, colon);
    if (option.value == "FLOAT") option.value = "NUMBER";
    if (option.value == "INT" || option.value == "UINT") option.value = "N";
    const std::vector<std::string> words = Split(option.value, '|');
    if (std::all_of(words.begin(), words.end(), IsLowerCase)) option.choices = words;
    if (check.size() > 2 && check.front() == '{' && check.back() == '}')
        option.choices = Split(check.substr(1, check.size() - 2), ',');
    else if (check.find('(') == std::string::npos)
        option.range = check;
    if (const std::size_t in = option.range.find(" in ["); in != std::string::npos) {
        option.range = option.range.substr(in + 5, option.range.size() - in - 6);
        if (const std::size_t dash = option.range.find(" - "); dash != std::string::npos)
            option.range.replace(dash, 3, " to ");
    }
    std::sort(option.choices.begin(), option.choices.end());
}

OptionText TextOf(const CLI::Option& option)
{
    OptionText text;
    text.isArgument = option.get_positional();
    text.isRequired = option.get_required();
    text.isRepeated = option.get_expected_max() > 1;
    if (text.isArgument) text.names.push_back(option.get_name(true));
    for (const std::string& name : option.get_snames())
        text.names.push_back('-' + name);
    for (const std::string& name : option.get_lnames())
        text.names.push_back("--" + name);
    text.meaning = option.get_description();
    text.byDefault = option.get_default_str();
    if (option.get_items_expected_max() > 0) ReadValue(option.get_type_name(), text);
    return text;
}

void TakeOptionsOfAll(const std::string& present, const std::vector<CodeOptions>& codes,
                      std::vector<OptionText>& options)
{
    const auto at = std::find_if(codes.begin(), codes.end(), [&](const CodeOptions& c) { return c.code == present; });
    if (at == codes.end()) return;
    const auto isOfCode = [&](const OptionText& option) {
        return std::any_of(at->options.begin(), at->options.end(),
                           [&](const OptionText& other) { return other.names == option.names; });
    };
    const auto first = std::find_if(options.begin(), options.end(), isOfCode);
    if (first == options.end()) return;
    const auto place = first - options.begin();
    options.erase(std::remove_if(first, options.end(), isOfCode), options.end());
    std::vector<OptionText> all;
    for (const CodeOptions& code : codes) {
        all.insert(all.end(), code.options.begin(), code.options.end());
        for (std::size_t i = all.size() - code.options.size(); i < all.size(); ++i)
            all[i].code = code.code;
    }
    options.insert(options.begin() + place, all.begin(), all.end());
}

void TakeWords(const std::vector<KnownWords>& known, std::vector<OptionText>& options)
{
    for (OptionText& option : options)
        for (const KnownWords& one : known)
            if (option.names.back() == one.option) {
                option.choices = one.words;
                option.isFileToo = one.isFileToo;
            }
}

} // namespace

const CommandText* CommandLineText::Find(const std::string& name) const
{
    if (name.empty()) return &program;
    const auto at =
        std::find_if(commands.begin(), commands.end(), [&](const CommandText& c) { return c.name == name; });
    return at == commands.end() ? nullptr : &*at;
}

std::string CommandLineText::NamesOfCommands() const
{
    std::string names;
    for (const CommandText& command : commands)
        names += (names.empty() ? "" : ", ") + command.name;
    return names;
}

std::vector<OptionText> ReadOptions(const CLI::App& command)
{
    std::vector<OptionText> options;
    for (const CLI::Option* option : command.get_options())
        options.push_back(TextOf(*option));
    return options;
}

CommandLineText ReadCommandLine(const CLI::App& app, const std::string& present, const std::vector<CodeOptions>& codes,
                                const std::vector<KnownWords>& known)
{
    CommandLineText text;
    text.program = {{}, app.get_description(), ReadOptions(app)};
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        CommandText& one = text.commands.emplace_back(
            CommandText{command->get_name(), command->get_description(), ReadOptions(*command)});
        TakeOptionsOfAll(present, codes, one.options);
        TakeWords(known, one.options);
    }
    return text;
}

} // namespace Keltrix::App

#include "manual/Completion.h"

#include <algorithm>

namespace Keltrix::App {

namespace {

std::string Joined(const std::vector<std::string>& words, const char* between)
{
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : between) + word;
    return text;
}

// A word of a shell: what stands between apostrophes has no meaning. bash and zsh end the quotation for an apostrophe, fish escapes it.
std::string Quoted(const std::string& text, bool isFish = false)
{
    std::string quoted = "'";
    for (const char c : text) {
        if (c == '\'')
            quoted += isFish ? "\\'" : "'\\''";
        else if (c == '\\' && isFish)
            quoted += "\\\\";
        else
            quoted += c == '\n' ? ' ' : c;
    }
    return quoted + "'";
}

// One option in place of those of two design codes that have one name.
void Merge(const OptionText& other, OptionText& option)
{
    for (const std::string& choice : other.choices)
        if (std::find(option.choices.begin(), option.choices.end(), choice) == option.choices.end())
            option.choices.push_back(choice);
    if (option.value.empty()) option.value = other.value;
}

std::vector<OptionText> MergedOptions(const CommandText& command)
{
    std::vector<OptionText> options;
    for (const OptionText& option : command.options) {
        if (option.isArgument) continue;
        const auto same = std::find_if(options.begin(), options.end(),
                                       [&](const OptionText& other) { return other.names == option.names; });
        if (same == options.end())
            options.push_back(option);
        else
            Merge(option, *same);
    }
    return options;
}

// Options of a command, with those of the program, which may stand anywhere; help is in both.
std::vector<OptionText> OptionsOf(const CommandLineText& line, const CommandText& command)
{
    CommandText both = command;
    if (&command != &line.program)
        both.options.insert(both.options.end(), line.program.options.begin(), line.program.options.end());
    return MergedOptions(both);
}

// What completes a value, for which nothing is known of a number.
enum class Values { Words, Files, WordsAndFiles, Nothing };

Values ValuesOf(const OptionText& option)
{
    if (!option.choices.empty()) return option.isFileToo ? Values::WordsAndFiles : Values::Words;
    return option.value == "N" || option.value == "NUMBER" || option.value == "COLUMNS" ? Values::Nothing
                                                                                        : Values::Files;
}

std::string CompgenOf(const OptionText& option)
{
    const Values values = ValuesOf(option);
    std::string text;
    if (values == Values::Words || values == Values::WordsAndFiles)
        text += " -W " + Quoted(Joined(option.choices, " "));
    if (values == Values::Files || values == Values::WordsAndFiles) text += " -f";
    return text;
}

// The words of a command's argument, or none.
const OptionText* ArgumentWithWords(const CommandText& command)
{
    const auto at = std::find_if(command.options.begin(), command.options.end(),
                                 [](const OptionText& option) { return option.isArgument && !option.choices.empty(); });
    return at == command.options.end() ? nullptr : &*at;
}

std::string ForBash(const CommandLineText& line)
{
    std::string names;
    for (const CommandText& command : line.commands)
        names += (names.empty() ? "" : " ") + command.name;
    std::string text =
        "# Completion of ksteel for bash, made by \"ksteel completion bash\".\n"
        "_ksteel() {\n"
        "    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command= options= arguments= i\n"
        "    for ((i = 1; i < COMP_CWORD; ++i)); do\n"
        "        case ${COMP_WORDS[i]} in\n";
    std::vector<std::string> withValue;
    for (const OptionText& option : line.program.options)
        if (!option.value.empty()) withValue.insert(withValue.end(), option.names.begin(), option.names.end());
    std::string patterns = names;
    std::replace(patterns.begin(), patterns.end(), ' ', '|');
    text += "            " + Joined(withValue, "|") + ") ((++i)) ;;\n            " + patterns;
    text += ") command=${COMP_WORDS[i]}; break ;;\n"
            "        esac\n"
            "    done\n"
            "    COMPREPLY=()\n"
            "    # bash takes \"--option=word\" apart.\n"
            "    [[ $word == = ]] && word=\n"
            "    [[ $before == = ]] && before=${COMP_WORDS[COMP_CWORD-2]}\n"
            "    case $command:$before in\n";
    const auto add = [&](const CommandText& command) {
        for (const OptionText& option : OptionsOf(line, command)) {
            if (option.value.empty()) continue;
            std::string options;
            for (const std::string& name : option.names)
                options += (options.empty() ? "" : "|") + command.name + ':' + name;
            text += "        " + options + ")\n";
            if (const std::string words = CompgenOf(option); !words.empty())
                text += "            mapfile -t COMPREPLY < <(compgen" + words + " -- \"$word\")\n";
            text += "            return ;;\n";
        }
    };
    add(line.program);
    for (const CommandText& command : line.commands)
        add(command);
    text += "    esac\n    case $command in\n";
    const auto list = [&](const CommandText& command) {
        std::vector<std::string> words;
        for (const OptionText& option : OptionsOf(line, command))
            words.insert(words.end(), option.names.begin(), option.names.end());
        const OptionText* const argument = ArgumentWithWords(command);
        const std::string more = argument ? " arguments=" + Quoted(Joined(argument->choices, " ")) : std::string();
        text += "        " + (command.name.empty() ? "\"\"" : command.name) +
                ") options=" + Quoted(Joined(words, " ")) + more + " ;;\n";
    };
    list(line.program);
    for (const CommandText& command : line.commands)
        list(command);
    text += "    esac\n"
            "    if [[ $word == -* ]]; then\n"
            "        mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$word\")\n"
            "    elif [[ -z $command ]]; then\n"
            "        mapfile -t COMPREPLY < <(compgen -W " +
            Quoted(names) +
            " -- \"$word\")\n"
            "    elif [[ -n $arguments ]]; then\n"
            "        mapfile -t COMPREPLY < <(compgen -W \"$arguments\" -- \"$word\")\n"
            "    else\n"
            "        mapfile -t COMPREPLY < <(compgen -f -- \"$word\")\n"
            "    fi\n"
            "}\n"
            "complete -o filenames -F _ksteel ksteel\n";
    return text;
}

// A text within the brackets or between the colons of an argument of _arguments.
std::string ForArguments(const std::string& text)
{
    std::string escaped;
    for (const char c : text) {
        if (c == '[' || c == ']' || c == ':' || c == '\\') escaped += '\\';
        escaped += c;
    }
    return escaped;
}

// What _arguments is told of a value: its word and what completes it.
std::string ValueForArguments(const OptionText& option)
{
    const std::string words = '(' + Joined(option.choices, " ") + ')';
    std::string text = ':' + ForArguments(option.value) + ':';
    switch (ValuesOf(option)) {
    case Values::Words:
        return text + words;
    case Values::WordsAndFiles:
        return text + "_alternative \"words:word:" + words + "\" \"files:file:_files\"";
    case Values::Files:
        return text + "_files";
    case Values::Nothing:
        break;
    }
    return text;
}

std::string ForZsh(const CommandLineText& line)
{
    std::string text = "#compdef ksteel\n# Completion of ksteel for zsh, made by \"ksteel completion zsh\".\n"
                       "_ksteel() {\n    local curcontext=$curcontext state\n    local -a commands\n    commands=(\n";
    for (const CommandText& command : line.commands)
        text += "        " + Quoted(command.name + ':' + command.meaning) + '\n';
    text += "    )\n";
    const auto add = [&](const std::vector<OptionText>& options, const std::string& margin) {
        for (const OptionText& option : options)
            for (const std::string& name : option.names) {
                std::string argument = (option.isRepeated ? "*" : "") + name;
                if (!option.value.empty() && name.starts_with("--")) argument += '=';
                argument += '[' + ForArguments(option.meaning) + ']';
                if (!option.value.empty()) argument += ValueForArguments(option);
                text += margin + Quoted(argument) + " \\\n";
            }
    };
    text += "    _arguments -C \\\n";
    add(MergedOptions(line.program), "        ");
    text += "        '1:command:->command' \\\n        '*::argument:->argument'\n"
            "    [[ $state == command ]] && _describe command commands\n"
            "    [[ $state == argument ]] || return\n    case ${words[1]} in\n";
    for (const CommandText& command : line.commands) {
        text += "    " + command.name + ")\n        _arguments \\\n";
        add(OptionsOf(line, command), "            ");
        const OptionText* const argument = ArgumentWithWords(command);
        text += argument ? "            " + Quoted("1:" + ForArguments(argument->names.front()) + ":(" +
                                                   Joined(argument->choices, " ") + ')')
                         : std::string("            '*:file:_files'");
        text += " ;;\n";
    }
    text += "    esac\n}\n_ksteel \"$@\"\n";
    return text;
}

std::string ForFish(const CommandLineText& line)
{
    std::string text = "# Completion of ksteel for fish, made by \"ksteel completion fish\".\n";
    const auto add = [&](const CommandText& command, const std::string& condition) {
        for (const OptionText& option : MergedOptions(command)) {
            text += "complete -c ksteel" + condition;
            for (const std::string& name : option.names)
                text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
            if (!option.value.empty()) {
                const Values values = ValuesOf(option);
                text += values == Values::Words || values == Values::Nothing ? " -x" : " -r";
                if (!option.choices.empty()) text += " -a " + Quoted(Joined(option.choices, " "), true);
            }
            text += " -d " + Quoted(option.meaning, true) + '\n';
        }
    };
    for (const CommandText& command : line.commands)
        text += "complete -c ksteel -n __fish_use_subcommand -f -a " + command.name + " -d " +
                Quoted(command.meaning, true) + '\n';
    add(line.program, {});
    for (const CommandText& command : line.commands) {
        const std::string seen = " -n " + Quoted("__fish_seen_subcommand_from " + command.name, true);
        add(command, seen);
        if (const OptionText* const argument = ArgumentWithWords(command))
            text += "complete -c ksteel" + seen + " -f -a " + Quoted(Joined(argument->choices, " "), true) + '\n';
    }
    return text;
}

} // namespace

std::string CompletionScript(const CommandLineText& line, const std::string& shell)
{
    if (shell == "bash") return ForBash(line);
    if (shell == "zsh") return ForZsh(line);
    return shell == "fish" ? ForFish(line) : std::string();
}

} // namespace Keltrix::App

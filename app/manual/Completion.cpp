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

// Options of a command, with those of the program, which may stand anywhere; help is in both.
std::vector<OptionText> OptionsOf(const CommandLineText& line, const CommandText& command)
{
    std::vector<OptionText> options;
    const auto add = [&](const CommandText& one) {
        for (const OptionText& option : one.options) {
            const auto isSame = [&](const OptionText& other) { return other.names == option.names; };
            if (!option.isArgument && std::none_of(options.begin(), options.end(), isSame)) options.push_back(option);
        }
    };
    add(command);
    if (&command != &line.program) add(line.program);
    return options;
}

std::string ForBash(const CommandLineText& line)
{
    std::string names;
    for (const CommandText& command : line.commands)
        names += (names.empty() ? "" : " ") + command.name;
    std::string text =
        "# Completion of ksteel for bash, made by \"ksteel completion bash\".\n"
        "_ksteel() {\n"
        "    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command= options= i\n"
        "    for ((i = 1; i < COMP_CWORD; ++i)); do\n"
        "        case ${COMP_WORDS[i]} in\n"
        "            " +
        names;
    std::replace(text.end() - static_cast<std::ptrdiff_t>(names.size()), text.end(), ' ', '|');
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
            std::string patterns;
            for (const std::string& name : option.names)
                patterns += (patterns.empty() ? "" : "|") + command.name + ':' + name;
            text += "        " + patterns + ")\n            mapfile -t COMPREPLY < <(compgen " +
                    (option.choices.empty() ? std::string("-f") : "-W " + Quoted(Joined(option.choices, " "))) +
                    " -- \"$word\")\n            return ;;\n";
        }
    };
    add(line.program);
    for (const CommandText& command : line.commands)
        add(command);
    text += "    esac\n    case $command in\n";
    const auto list = [&](const CommandText& command, const std::string& more) {
        std::vector<std::string> words;
        for (const OptionText& option : OptionsOf(line, command))
            words.insert(words.end(), option.names.begin(), option.names.end());
        text += "        " + (command.name.empty() ? "\"\"" : command.name) +
                ") options=" + Quoted(Joined(words, " ") + more) + " ;;\n";
    };
    list(line.program, {});
    for (const CommandText& command : line.commands)
        list(command, {});
    text += "    esac\n"
            "    if [[ $word == -* ]]; then\n"
            "        mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$word\")\n"
            "    elif [[ -z $command ]]; then\n"
            "        mapfile -t COMPREPLY < <(compgen -W " +
            Quoted(names) +
            " -- \"$word\")\n"
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

std::string ForZsh(const CommandLineText& line)
{
    std::string text =
        "#compdef ksteel\n# Completion of ksteel for zsh, made by \"ksteel completion zsh\".\n"
        "_ksteel() {\n    local curcontext=$curcontext state line\n    local -a commands options\n    commands=(\n";
    for (const CommandText& command : line.commands)
        text += "        " + Quoted(command.name + ':' + command.meaning) + '\n';
    text += "    )\n    case ${words[2]} in\n";
    const auto add = [&](const CommandText& command) {
        for (const OptionText& option : OptionsOf(line, command)) {
            for (const std::string& name : option.names) {
                std::string argument = name;
                if (!option.value.empty() && name.starts_with("--")) argument += '=';
                argument += '[' + ForArguments(option.meaning) + ']';
                if (!option.value.empty())
                    argument +=
                        ':' + ForArguments(option.value) + ':' +
                        (option.choices.empty() ? std::string("_files") : '(' + Joined(option.choices, " ") + ')');
                text += "            " + Quoted((option.isRepeated ? "*" : "") + argument) + '\n';
            }
        }
    };
    for (const CommandText& command : line.commands) {
        text += "    " + command.name + ")\n        options=(\n";
        add(command);
        text += "            '*:file:_files'\n        )\n        shift words\n        (( CURRENT-- ))\n        "
                "_arguments -s $options ;;\n";
    }
    text += "    *)\n        options=(\n";
    add(line.program);
    text += "            '1:command:->command'\n        )\n        _arguments -s $options\n"
            "        [[ $state == command ]] && _describe command commands ;;\n"
            "    esac\n}\n_ksteel \"$@\"\n";
    return text;
}

std::string ForFish(const CommandLineText& line)
{
    std::string text = "# Completion of ksteel for fish, made by \"ksteel completion fish\".\n";
    const auto add = [&](const CommandText& command, const std::string& condition) {
        for (const OptionText& option : command.options) {
            if (option.isArgument) continue;
            text += "complete -c ksteel" + condition;
            for (const std::string& name : option.names)
                text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
            if (!option.choices.empty())
                text += " -x -a " + Quoted(Joined(option.choices, " "), true);
            else if (!option.value.empty())
                text += " -r";
            text += " -d " + Quoted(option.meaning, true) + '\n';
        }
    };
    for (const CommandText& command : line.commands)
        text += "complete -c ksteel -n __fish_use_subcommand -f -a " + command.name + " -d " +
                Quoted(command.meaning, true) + '\n';
    add(line.program, {});
    for (const CommandText& command : line.commands)
        add(command, " -n " + Quoted("__fish_seen_subcommand_from " + command.name, true));
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

// Commands that tell of the command line itself.

#include "commandline/Grammar.h"

#include <algorithm>
#include <array>

#include "check/DesignCodes.h"
#include "manual/Completion.h"
#include "manual/Manual.h"
#include "manual/Topics.h"
#include "sections/SectionCatalogue.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

constexpr std::array<ExitCodeText, 4> EXIT_CODES{{{EXIT_FINE, "fine"},
                                                  {EXIT_MEMBER_FAILS, "a member fails"},
                                                  {EXIT_BAD_INPUT, "bad input or output that cannot be written"},
                                                  {EXIT_BAD_USAGE, "bad usage"}}};

constexpr const char* EXIT_CODES_TOPIC = "exit-codes";

std::vector<std::string> NamesOf(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        names.push_back(command->get_name());
    return names;
}

std::vector<const char*> NamesOfTopics()
{
    std::vector<const char*> names;
    for (const HelpTopic& topic : HelpTopics())
        names.push_back(topic.name);
    names.push_back(EXIT_CODES_TOPIC);
    return names;
}

CommandLineText CommandLineOf(const CLI::App& app, const Design::DesignCode* present)
{
    std::vector<CodeOptions> codes;
    KnownWords ids{"--code", {}};
    KnownWords annexes{"--annex", {}, true};
    for (const Design::DesignCode* code : DesignCodes()) {
        const auto& description = code->Description();
        ids.words.push_back(Utf8(description.id));
        for (const auto& annex : description.annexes)
            if (const std::string id = Utf8(annex.name);
                std::find(annexes.words.begin(), annexes.words.end(), id) == annexes.words.end())
                annexes.words.push_back(id);
        CLI::App scratch;
        scratch.set_help_flag();
        std::vector<double> values(description.options.size());
        for (std::size_t i = 0; i < values.size(); ++i)
            AddCodeOption(scratch, description.options[i], values[i]);
        codes.push_back({ids.words.back(), ReadOptions(scratch)});
    }
    const KnownWords families{"--family", Families()};
    const KnownWords commands{"COMMAND", NamesOf(app)};
    KnownWords topics{"TOPIC", commands.words};
    for (const char* topic : NamesOfTopics())
        topics.words.emplace_back(topic);
    return ReadCommandLine(app, present ? Utf8(present->Description().id) : std::string(), codes,
                           {ids, annexes, families, commands, topics});
}

struct ManualOptions {
    std::string command; ///< empty: the program
    std::string folder;  ///< for all pages; empty: one page on standard output
};

void AddManual(CLI::App& app, Commands& commands, const Shared& shared)
{
    const auto options = std::make_shared<ManualOptions>();
    CLI::App* const command = app.add_subcommand("manual", "Manual pages of the program and its commands, for man(1)");
    CLI::Option* const name =
        command->add_option("COMMAND", options->command, "A command; without one the page of the program");
    command
        ->add_option("--directory", options->folder, "Folder that is there, into which every page is written as a file")
        ->type_name("FOLDER")
        ->excludes(name);
    commands[command] = [&app, &shared, options](const Console& console) {
        const CommandLineText line = CommandLineOf(app, shared.code);
        const auto page = [&](const CommandText& one) { return ManualPage(line, one, EXIT_CODES, KSTEEL_VERSION); };
        const auto put = [&](const CommandText& one) {
            WriteFile(options->folder + "/" + PageName(one) + ".1", page(one));
        };
        if (!options->folder.empty()) {
            put(line.program);
            for (const CommandText& one : line.commands)
                put(one);
            return EXIT_FINE;
        }
        const CommandText* const found = line.Find(options->command);
        if (!found)
            throw BadUsage("manual: got \"" + PrintableLine(options->command) + "\", expected one of " +
                           line.NamesOfCommands());
        console.out(page(*found));
        return EXIT_FINE;
    };
}

std::string ExitCodes()
{
    std::string lines;
    for (const ExitCodeText& one : EXIT_CODES)
        lines += "  " + std::to_string(one.code) + "  " + one.meaning + '\n';
    return lines + "\nOf several members or files the largest code counts.\n";
}

// What the parser itself would print is the help of the command that runs.
std::string HelpOf(const CLI::App& app, const std::string& prefix)
{
    return app.get_formatter()->make_help(&app, prefix, CLI::AppFormatMode::Normal);
}

std::string HelpAbout(const CLI::App& app, const std::string& topic)
{
    const std::vector<std::string> commands = NamesOf(app);
    if (topic.empty()) {
        std::string list = "\nTopics of \"ksteel help TOPIC\", which may be a command, too:\n";
        const auto add = [&](const std::string& name, const char* meaning) {
            list += "  " + name + std::string(name.size() < 28 ? 28 - name.size() : 1, ' ') + meaning + '\n';
        };
        for (const HelpTopic& one : HelpTopics())
            add(one.name, one.meaning);
        add(EXIT_CODES_TOPIC, "Exit codes");
        return HelpOf(app, app.get_name()) + list;
    }
    if (std::find(commands.begin(), commands.end(), topic) != commands.end())
        return HelpOf(*app.get_subcommand(topic), app.get_name() + ' ' + topic);
    if (topic == EXIT_CODES_TOPIC) return ExitCodes();
    for (const HelpTopic& one : HelpTopics())
        if (topic == one.name) return one.text;
    std::string known;
    for (const std::string& name : commands)
        known += name + ", ";
    for (const HelpTopic& one : HelpTopics())
        known += one.name + std::string(", ");
    known += EXIT_CODES_TOPIC;
    throw BadUsage("help: got \"" + PrintableLine(topic) + "\", expected one of " + known);
}

void AddHelp(CLI::App& app, Commands& commands)
{
    const auto topic = std::make_shared<std::string>();
    CLI::App* const command = app.add_subcommand("help", "Help about a command or a topic");
    command->add_option("TOPIC", *topic, "A command or a topic; without one what there is");
    commands[command] = [&app, topic](const Console& console) {
        console.out(HelpAbout(app, *topic));
        return EXIT_FINE;
    };
}

void AddCompletion(CLI::App& app, Commands& commands, const Shared& shared)
{
    const auto shell = std::make_shared<std::string>();
    CLI::App* const command = app.add_subcommand("completion", "What completes command lines of ksteel in a shell");
    command->add_option("SHELL", *shell, "bash, zsh or fish")
        ->required()
        ->check(CLI::IsMember({"bash", "zsh", "fish"}));
    commands[command] = [&app, &shared, shell](const Console& console) {
        console.out(CompletionScript(CommandLineOf(app, shared.code), *shell));
        return EXIT_FINE;
    };
}

} // namespace

std::string ExitCodeLine()
{
    std::string line = "Exit codes:";
    for (const ExitCodeText& one : EXIT_CODES)
        line += (one.code == EXIT_FINE ? " " : ", ") + std::to_string(one.code) + ' ' + one.meaning;
    return line + '.';
}

void AddManualCommands(CLI::App& app, Commands& commands, Shared& shared)
{
    AddHelp(app, commands);
    AddManual(app, commands, shared);
    AddCompletion(app, commands, shared);
}

} // namespace Keltrix::App

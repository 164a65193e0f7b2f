// The command line of ksteel: options in, one command run, its exit code out.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "check/DesignCodes.h"
#include "commandline/Grammar.h"
#include "io/CodeModule.h"
#include "io/Input.h"
#include "io/Output.h"
#include "io/TerminalWidth.h"
#include "sections/SectionCatalogue.h"
#include "text/Text.h"

namespace {

using namespace Keltrix::App;

/// Messages on standard error. One that is lost does not stop the work, but shows in the exit code.
class Messages {
public:
    void Put(std::string_view message)
    {
        try {
            WriteAll(stderr, "ksteel: " + Printable(message) + '\n');
        } catch (const ClosedPipe&) {
            throw;
        } catch (const BadOutput&) {
            m_isLost = true;
        }
    }
    /// The exit code of a run that would else end with `code`.
    ExitCode Outcome(ExitCode code) const { return m_isLost ? Worse(code, EXIT_BAD_INPUT) : code; }

private:
    bool m_isLost = false;
};

// Writes over the line that stands there.
void PutProgress(std::string_view text)
{
    const std::string line = "\r" + std::string(text) + "\x1b[K";
    std::fwrite(line.data(), 1, line.size(), stderr);
}

/// What is said where the options are no command to run: help and version, which were asked for, or the fault.
ExitCode AnswerUnparsed(const CLI::App& app, const CLI::ParseError& error, const std::string& firstWord)
{
    if (error.get_exit_code() == 0) {
        std::ostringstream text;
        app.exit(error, text, text);
        WriteAll(stdout, text.str());
        return EXIT_FINE;
    }
    std::string names;
    bool isKnown = firstWord.empty() || firstWord[0] == '-';
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        names += (names.empty() ? "" : ", ") + command->get_name();
        isKnown = isKnown || command->get_name() == firstWord;
    }
    if (isKnown) throw BadUsage(error.what());
#ifndef KELTRIX_HOST_WITH_STABILITY
    if (firstWord == "buckling") throw BadUsage("buckling: this ksteel was built without Eigen, which it needs");
#endif
#ifndef KELTRIX_HOST_WITH_STATICS
    if (firstWord == "loads" || firstWord == "new")
        throw BadUsage(firstWord + ": this ksteel was built without Eigen, which it needs");
#endif
    throw BadUsage("unknown command \"" + PrintableLine(firstWord) + "\", expected one of " + names);
}

// Finds the design code that is asked for. What is wrong with the arguments, reading all of them says.
CodeArguments ReadCodeArguments(int argc, char** argv)
{
    CodeArguments arguments;
    CLI::App app;
    app.set_help_flag();
    app.allow_extras();
    app.allow_windows_style_options(false);
    app.add_option("--code", arguments.code);
    app.add_option("--annex", arguments.annex);
    app.add_option("--module", arguments.modules)->allow_extra_args(false);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError&) {
    }
    return arguments;
}

// Where the one that is asked for is not there, that is said when a command runs that takes one.
const Keltrix::Design::DesignCode* CodeOfOptions(const CodeArguments& asked)
{
    if (DesignCodes().empty()) return nullptr;
    try {
        return asked.code.empty() ? DefaultCode().code : &DesignCodeNamed(asked.code);
    } catch (const BadInput&) {
        return DefaultCode().code;
    }
}

// Foreign code runs from here on, so that what it is and where it lies is told, links followed.
void AddCodeModule(const std::string& file, Messages& messages)
{
    const Keltrix::Design::DesignCode& code = LoadCodeModule(file);
    AddDesignCode(code, "--module: " + PrintableLine(file));
    messages.Put("--module: design code " + PrintableLine(Utf8(code.Description().id)) + ", " +
                 PrintableLine(Utf8(code.Description().title)) + ", from " +
                 PrintableLine(std::filesystem::canonical(file).string()));
}

ExitCode Run(int argc, char** argv, Messages& messages)
{
    CLI::App app("Checks, explains and lists steel members and sections.", "ksteel");
    app.footer(ExitCodeLine());
    app.set_version_flag("--version", "ksteel " KSTEEL_VERSION);
    app.require_subcommand(1);
    app.fallthrough();
    app.allow_windows_style_options(false); // "/dir/file" is a file

    Shared shared;
    shared.asked = ReadCodeArguments(argc, argv);
    for (const std::string& file : shared.asked.modules)
        AddCodeModule(file, messages);
    shared.code = CodeOfOptions(shared.asked);
    app.add_option("--catalogue", shared.catalogue, "Catalogue file of your own sections, added to the built-in ones");
    app.add_option("--module", shared.parsed.modules, "Shared library with a design code, added to the built-in ones")
        ->type_name("FILE")
        ->allow_extra_args(false);
    Commands commands;
    AddMemberCommands(app, commands, shared);
    AddBeamCommands(app, commands, shared);
    AddCodeCommands(app, commands, shared);
    AddManualCommands(app, commands, shared);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return AnswerUnparsed(app, error, argc > 1 ? argv[1] : "");
    }
    Console console{std::cin,
                    [](std::string_view text) { WriteAll(stdout, text); },
                    [&](std::string_view message) { messages.Put(message); },
                    {}};
    if (TerminalShowsProgress()) console.progress = PutProgress;
    if (!shared.catalogue.empty()) AddCatalogue(shared.catalogue, ReadBytes(shared.catalogue, std::cin));
    return commands.at(app.get_subcommands().front())(console);
}

/// The program with every failure reported.
ExitCode RunAndTell(int argc, char** argv, Messages& messages)
{
    try {
        return Run(argc, argv, messages);
    } catch (const ClosedPipe&) {
        throw;
    } catch (const BadUsage& failure) {
        messages.Put(failure.what() + std::string("; see ksteel --help"));
        return EXIT_BAD_USAGE;
    } catch (const std::bad_alloc&) {
        messages.Put("out of memory");
    } catch (const std::exception& failure) {
        messages.Put(failure.what());
    }
    return EXIT_BAD_INPUT;
}

} // namespace

int main(int argc, char** argv)
{
    OpenClosedStreams();
    LetWritesFail();
    PassBytesUnchanged();
    // Standard input has a buffer of its own then, which gives what is available without waiting for more.
    std::ios::sync_with_stdio(false);
    Messages messages;
    try {
        return messages.Outcome(RunAndTell(argc, argv, messages));
    } catch (const ClosedPipe&) {
        EndByClosedPipe();
    }
    return EXIT_BAD_INPUT;
}

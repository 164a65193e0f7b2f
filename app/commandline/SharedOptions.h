#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "commands/CodeCommands.h"
#include "commands/Commands.h"
#include "io/Console.h"
#include "io/FilePatterns.h"
#include "io/Output.h"
#include "io/TerminalWidth.h"

namespace Keltrix::App {

/// What chooses a design code. It is read before all else, because the options of some commands are those of the code.
struct CodeArguments {
    std::vector<std::string> modules;
    std::string code;
    std::string annex;
};

/// Options that more than one command has.
struct Shared {
    CodeArguments asked;  ///< as they were read beforehand
    CodeArguments parsed; ///< as they were read with all others
    /// The design code whose options the commands have; null without any.
    const Design::DesignCode* code = nullptr;
    std::map<const CLI::App*, std::function<void()>> choose; ///< sets the code of a command that takes one
    std::string catalogue;
    std::string colour = "auto";
    std::string format = "table";
    bool raw = false;
    std::optional<std::size_t> width;

    Rendering HowToRender() const
    {
        if (raw) return Rendering::Raw;
        const bool ansi = colour == "always" || (colour == "auto" && TerminalHasColour());
        return {ansi ? Rendering::Ansi : Rendering::Plain, width ? *width : TerminalWidth()};
    }
    Format HowToWrite() const
    {
        if (format == "jsonl") return Format::JSON_LINES;
        return format == "json" ? Format::JSON : Format::TABLE;
    }
};

using Command = std::function<ExitCode(const Console&)>;
using Commands = std::map<const CLI::App*, Command>;

/// Whether a command takes a design code always, only where --code or --annex is given, or wherever the program has one.
enum class CodeNeed { Always, WhenGiven, WhenThere };

/// --color, --raw and --width.
void AddColour(CLI::App& command, Shared& shared);
void AddFormat(CLI::App& command, Shared& shared, const std::vector<std::string>& formats);
void AddFiles(CLI::App& command, std::vector<std::string>& files);
/// One option of a design code; `value` is the place of its word, its length in m, or 1 of a flag that is given.
void AddCodeOption(CLI::App& command, const Design::CodeOption& option, double& value);
/// What the member file has no place for, as the design code asks for it.
void AddMemberOptions(CLI::App& command, const Shared& shared, CodeChoice& choice);
/// --code and --annex, which set `choice` before the command runs.
void AddCode(CLI::App& command, Shared& shared, CodeNeed need, CodeChoice& choice, const std::string& meaning);

/// How strictly the member files are read.
template <class Options>
void AddReading(CLI::App& command, Options& options)
{
    command.add_flag("--strict", options.reading.isStrict, "Every warning is an error (exit code 2)");
    command.add_flag("--allow-gaps", options.reading.allowGaps,
                     "Numbers need not start at 1, nor positions at 0; those of sub-spans may leave some out");
}

/// The files that a command reads, the catalogue among them.
template <class Options>
std::vector<std::string> InputsOf(const Options& options, const Shared& shared)
{
    std::vector<std::string> inputs;
    if constexpr (requires { options.files; }) inputs = options.files;
    if (!shared.catalogue.empty()) inputs.push_back(shared.catalogue);
    return inputs;
}

/// Adds the options that say how a command writes, as far as it has them, and what runs it, which keeps its options.
template <class Options>
void Finish(CLI::App* command, Commands& commands, Shared& shared, const std::shared_ptr<Options>& kept,
            ExitCode (*run)(const Options&, const Console&),
            const std::vector<std::string>& formats = {"table", "json"})
{
    Options& options = *kept;
    constexpr bool hasFormat = requires { options.format; };
    constexpr bool hasRendering = requires { options.rendering; };
    if constexpr (hasFormat) AddFormat(*command, shared, formats);
    if constexpr (hasRendering) AddColour(*command, shared);
    commands[command] = [&shared, &options, kept, command, run](const Console& console) {
        if (const auto choose = shared.choose.find(command); choose != shared.choose.end()) choose->second();
#if defined(_WIN32)
        // Its shell leaves patterns to programs.
        if constexpr (requires { options.files; }) options.files = ExpandPatterns(options.files);
#endif
        if constexpr (hasFormat) options.format = shared.HowToWrite();
        if constexpr (hasRendering) options.rendering = shared.HowToRender();
        if constexpr (requires { options.output; })
            RequireNoInput("--output", options.output, InputsOf(options, shared));
        if constexpr (requires { options.svgFile; })
            RequireNoInput("--svg", options.svgFile, InputsOf(options, shared));
        return run(options, console);
    };
}

} // namespace Keltrix::App

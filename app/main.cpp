// The command line of ksteel: options in, one command run, its exit code out.

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <functional>
#include <iostream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "check/DesignCodes.h"
#ifdef KELTRIX_HOST_WITH_STATICS
#include "beamfile/BeamFile.h"
#include "commands/BeamCommands.h"
#endif
#include "commands/CodeCommands.h"
#include "commands/Commands.h"
#include "io/AnnexArgument.h"
#include "io/CodeModule.h"
#include "io/FilePatterns.h"
#include "io/Input.h"
#include "io/Output.h"
#include "io/TerminalWidth.h"
#include "manual/Completion.h"
#include "manual/Manual.h"
#include "sections/SectionCatalogue.h"
#include "text/Text.h"

namespace {

using namespace Keltrix::App;

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
    const Keltrix::Design::DesignCode* code = nullptr;
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

/// A terminal wider than this is a slip of the finger.
constexpr std::size_t WIDEST_WIDTH = 100000;

void AddColour(CLI::App& command, Shared& shared)
{
    command.add_option("--color", shared.colour, "Colours: auto (on a terminal), always, never")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->capture_default_str();
    command.add_flag("--raw", shared.raw, "The report's mark-up as it is");
    command
        .add_option("--width", shared.width,
                    "Columns into which lines are broken, 40 or more; 0: not broken; without it the terminal's")
        ->check(CLI::IsMember(std::vector<int>{0}) | CLI::Range(NARROWEST_WIDTH, WIDEST_WIDTH))
        ->type_name("COLUMNS");
}

void AddFormat(CLI::App& command, Shared& shared, const std::vector<std::string>& formats = {"table", "json"})
{
    const std::string lines = formats.size() > 2 ? ", or jsonl: one line of JSON for each member" : "";
    command.add_option("--format", shared.format, "Output: table or json" + lines)
        ->check(CLI::IsMember(formats))
        ->capture_default_str();
}

void AddFiles(CLI::App& command, std::vector<std::string>& files)
{
    command.add_option("FILE", files, "Member files or beam files; - is standard input")->required();
}

/// How strictly the member files are read.
template <class Options>
void AddReading(CLI::App& command, Options& options)
{
    command.add_flag("--strict", options.reading.isStrict, "Every warning is an error (exit code 2)");
    command.add_flag("--allow-gaps", options.reading.allowGaps,
                     "Numbers need not start at 1, nor positions at 0; those of sub-spans may leave some out");
}

/// More workers than this are a slip of the finger.
constexpr int MOST_JOBS = 1024;

using Command = std::function<ExitCode(const Console&)>;
using Commands = std::map<const CLI::App*, Command>;

/// The files that a command reads, the catalogue among them.
template <class Options>
std::vector<std::string> InputsOf(const Options& options, const Shared& shared)
{
    std::vector<std::string> inputs;
    if constexpr (requires { options.files; }) inputs = options.files;
    if (!shared.catalogue.empty()) inputs.push_back(shared.catalogue);
    return inputs;
}

// A length in this range, which not-a-number is not.
CLI::Validator Between(double least, double most)
{
    const std::string range = Shortest(least) + " to " + Shortest(most);
    return {[=](const std::string& text) {
                double length = 0.0;
                const bool isInside = CLI::detail::lexical_cast(text, length) && length >= least && length <= most;
                return isInside ? std::string() : "got " + text + ", expected a length in m, " + range;
            },
            range};
}

CLI::Validator OneOf(const std::vector<Keltrix::Design::Term>& values)
{
    return {[&values](const std::string& text) {
                if (PlaceOf(values, text) > 0) return std::string();
                return "got \"" + PrintableLine(text) + "\", expected " + ListOf(values);
            },
            ""};
}

void AddCodeOption(CLI::App& command, const Keltrix::Design::CodeOption& option, double& value)
{
    using Keltrix::Design::OptionKind;
    const std::string name = "--" + Utf8(option.name);
    const std::string meaning = Utf8(option.meaning);
    if (option.kind == OptionKind::Flag) {
        command.add_flag_callback(
            name, [&value] { value = 1.0; }, meaning);
    } else if (option.kind == OptionKind::Length) {
        command.add_option(name, value, meaning)->check(Between(option.least, option.most));
    } else {
        std::string names;
        for (const Keltrix::Design::Term& term : option.values)
            names += (names.empty() ? "" : "|") + Utf8(term.name);
        command
            .add_option_function<std::string>(
                name, [&](const std::string& text) { value = static_cast<double>(PlaceOf(option.values, text)); },
                meaning)
            ->type_name(names)
            ->check(OneOf(option.values));
    }
}

// What the member file has no place for, as the design code asks for it.
void AddMemberOptions(CLI::App& command, const Shared& shared, CodeChoice& choice)
{
    if (!shared.code) return;
    const auto& options = shared.code->Description().options;
    choice.settings.options.assign(options.size(), 0.0);
    for (std::size_t i = 0; i < options.size(); ++i) {
        try {
            AddCodeOption(command, options[i], choice.settings.options[i]);
        } catch (const CLI::OptionAlreadyAdded&) {
            throw BadInput("design code " + Utf8(shared.code->Description().id) + ": the option --" +
                           Utf8(options[i].name) + " is there already");
        }
    }
}

/// Whether a command takes a design code always, only where --code or --annex is given, or wherever the program has one.
enum class CodeNeed { Always, WhenGiven, WhenThere };

// The code and the annex that are asked for.
void Choose(const Shared& shared, CodeNeed need, CodeChoice& choice)
{
    const CodeArguments& asked = shared.asked;
    if (asked.code != shared.parsed.code || asked.annex != shared.parsed.annex ||
        asked.modules != shared.parsed.modules)
        throw BadUsage("--code, --annex and --module cannot be the value of another option");
    if (need == CodeNeed::WhenGiven && asked.code.empty() && asked.annex.empty()) return;
    if (need == CodeNeed::WhenThere && asked.code.empty() && DesignCodes().empty()) return;
    if (asked.code.empty() && !asked.modules.empty())
        throw BadUsage("--module: say which design code to use: --code " + ListOfCodes());
    choice.code = asked.code.empty() ? DefaultCode().code : &DesignCodeNamed(asked.code);
    if (!asked.annex.empty()) ChooseAnnex(asked.annex, choice);
}

void AddCode(CLI::App& command, Shared& shared, CodeNeed need, CodeChoice& choice, const std::string& meaning)
{
    CLI::Option* const code = command.add_option("--code", shared.parsed.code, meaning + ": " + ListOfCodes());
    code->type_name("NAME");
    if (need != CodeNeed::WhenGiven && shared.code) code->default_str(Utf8(shared.code->Description().id));
    command
        .add_option("--annex", shared.parsed.annex,
                    "National annex of the design code, or a file of national choices (.toml)")
        ->type_name("NAME|FILE");
    shared.choose[&command] = [&shared, need, &choice] { Choose(shared, need, choice); };
}

/// Adds the options that say how a command writes, as far as it has them, and what runs it.
template <class Options>
void Finish(CLI::App* command, Commands& commands, Shared& shared, Options& options,
            ExitCode (*run)(const Options&, const Console&),
            const std::vector<std::string>& formats = {"table", "json"})
{
    constexpr bool hasFormat = requires { options.format; };
    constexpr bool hasRendering = requires { options.rendering; };
    if constexpr (hasFormat) AddFormat(*command, shared, formats);
    if constexpr (hasRendering) AddColour(*command, shared);
    commands[command] = [&, command, run](const Console& console) {
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

void AddShow(CLI::App& app, Commands& commands, Shared& shared, ShowOptions& options)
{
    CLI::App* const command = app.add_subcommand("show", "Input report of a member");
    AddFiles(*command, options.files);
    AddReading(*command, options);
    Finish(command, commands, shared, options, Show);
}

void AddValidate(CLI::App& app, Commands& commands, Shared& shared, ValidateOptions& options)
{
    CLI::App* const command = app.add_subcommand("validate", "Every defect of member files, with its place");
    AddFiles(*command, options.files);
    AddReading(*command, options);
    AddCode(*command, shared, CodeNeed::WhenGiven, options.code, "Also what this design code rejects");
    Finish(command, commands, shared, options, Validate);
}

void AddSection(CLI::App& app, Commands& commands, Shared& shared, SectionOptions& options)
{
    CLI::App* const command = app.add_subcommand("section", "Dimensions and properties of a section");
    command->add_option("NAME", options.name, "Designation or parametric description, \"UB 457x191x67\"")->required();
    command->add_option("--svg", options.svgFile,
                        "Draw the outline to scale into this SVG file (- is standard output)");
    Finish(command, commands, shared, options, ShowSection);
}

void AddSections(CLI::App& app, Commands& commands, Shared& shared, SectionsOptions& options)
{
    CLI::App* const command = app.add_subcommand("sections", "The section catalogue");
    command->add_option("--family", options.family, "Only this family (UB, UC, RHS, ...)");
    command->add_option("--min-Ixx", options.minIxx, "Only sections of at least this Ixx, cm^4");
    command->add_option("--sort", options.sort, "Ascending by name, mass, depth, A, Ixx, Iyy, Zxx, Sxx or ry");
    Finish(command, commands, shared, options, ListSections);
}

void AddSpans(CLI::App& app, Commands& commands, Shared& shared, SpansOptions& options)
{
    CLI::App* const command = app.add_subcommand("spans", "Spans between restrained points and what acts on them");
    AddFiles(*command, options.files);
    AddReading(*command, options);
    command
        ->add_option("--split", options.split, "What ends a span: minor (axis), lt (flange or torsion), major (axis)")
        ->check(CLI::IsMember({"minor", "lt", "major"}))
        ->capture_default_str();
    AddCode(*command, shared, CodeNeed::WhenThere, options.code, "Design code");
    command->add_option("--EI", options.EI, "Major-axis bending stiffness, N.m^2; without it that of the section");
    Finish(command, commands, shared, options, ShowSpans);
}

void AddImport(CLI::App& app, Commands& commands, Shared& shared, ImportOptions& options)
{
    CLI::App* const command = app.add_subcommand("import", "Members from tables of forces and of members");
    command->add_option("FORCES", options.forces, "Table of forces as CSV; - is standard input")->required();
    command->add_option("--members", options.members, "Table of members as CSV; - is standard input")
        ->type_name("FILE")
        ->required();
    command
        ->add_option("--map", options.map,
                     "Preset of signs; captions of columns (N=\"Axial force\", T=none); units that captions lack "
                     "(length=m, force=kN, moment=kNm)")
        ->type_name("PRESET [KEY=VALUE ...]")
        ->required();
    command->add_flag("--allow-repeats", options.allowRepeats, "Two rows of a station may be the same");
    command->add_flag("--strict", options.reading.isStrict, "Every warning is an error (exit code 2)");
    command->add_option("-o,--output", options.output, "The file; without it standard output")->type_name("FILE");
    Finish(command, commands, shared, options, ImportTables);
}

#ifdef KELTRIX_HOST_WITH_STABILITY
void AddBuckling(CLI::App& app, Commands& commands, Shared& shared, BucklingOptions& options)
{
    CLI::App* const command =
        app.add_subcommand("buckling", "Elastic critical loads of members as they are held and loaded");
    AddFiles(*command, options.files);
    AddReading(*command, options);
    command->add_flag("--continuity", options.continuity,
                      "The whole member at once, not each unit between held sections by itself");
    AddCode(*command, shared, CodeNeed::WhenThere, options.code, "Design code, which gives the moduli");
    command->add_option("--svg", options.svgFile,
                        "Draw the buckled shape of one member into this SVG file (- is standard output)");
    Finish(command, commands, shared, options, ShowBuckling, {"table", "json", "jsonl"});
}
#endif

#ifdef KELTRIX_HOST_WITH_STATICS
void AddLoads(CLI::App& app, Commands& commands, Shared& shared, LoadsOptions& options)
{
    CLI::App* const command = app.add_subcommand("loads", "Loads, reactions, envelopes and deflections of a beam");
    command->add_option("FILE", options.files, "Beam files; - is standard input")->required();
    command->add_flag("--strict", options.reading.isStrict, "Every warning is an error (exit code 2)");
    AddCode(*command, shared, CodeNeed::WhenThere, options.code,
            "Design code that gives the modulus and, where the file does not, the combinations");
    command->add_option("--svg", options.svgFile, "Draw loads and envelopes into this SVG file (- is standard output)");
    command
        ->add_option("-o,--output", options.folder,
                     "Write a member file for each ultimate combination into this folder")
        ->type_name("FOLDER");
    command->add_flag("--force", options.force, "Replace member files that are there");
    Finish(command, commands, shared, options, ShowLoads);
}

void AddNew(CLI::App& app, Commands& commands, Shared& shared, NewOptions& options)
{
    CLI::App* const command = app.add_subcommand("new", "A new beam file or member file with comments");
    command->add_option("KIND", options.kind, "beam or member")->required()->check(CLI::IsMember({"beam", "member"}));
    command->add_option("--title", options.title, "Title");
    command->add_option("--section", options.section, "Designation or parametric description")->capture_default_str();
    command->add_option("--grade", options.grade, "Steel grade")->capture_default_str();
    command->add_option("--span", options.spans, "Length of a span in m, 9 unless given; again for the next one")
        ->type_name("L")
        ->allow_extra_args(false);
    const auto list = [&](const char* name, std::vector<std::string>& values, const char* form, const char* meaning) {
        command->add_option(name, values, meaning)->type_name(form)->allow_extra_args(false);
    };
    list("--udl", options.uniform, "CASE=Q[@A:B]", "Uniform load in kN/m: dead=12, or from 0 to 4 m snow=3@0:4");
    list("--point", options.points, "CASE=P@A", "Point load in kN: imposed=45@3");
    list("--moment", options.moments, "CASE=M@A", "Moment in kNm, clockwise: wind=20@3");
    list("--restraint", options.restraints, "FLANGE@A[:B]",
         "Flange (top, bottom, both) held laterally at a place or along a length: top@0:6");
    command->add_option("--combinations", options.combinations, "Standard of the combinations")
        ->check(CLI::IsMember(CombinationNames()));
    AddCode(*command, shared, CodeNeed::WhenThere, options.code, "Design code that judges section and grade");
    command->add_option("-o,--output", options.output, "The file; without it standard output")->type_name("FILE");
    command->add_flag("--force", options.force, "Replace a file that is there");
    Finish(command, commands, shared, options, New);
}
#endif

void AddCheck(CLI::App& app, Commands& commands, Shared& shared, CheckOptions& options)
{
    CLI::App* const command = app.add_subcommand("check", "Check members to a design code");
    AddFiles(*command, options.files);
    AddCode(*command, shared, CodeNeed::Always, options.code, "Design code");
    AddReading(*command, options);
    command->add_option("--report", options.report, "brief, verbose, summary, or table: one line for each member")
        ->check(CLI::IsMember({"brief", "verbose", "summary", "table"}))
        ->capture_default_str();
    command->add_flag("--envelope", options.envelope, "The files are load cases of one member");
    command->add_flag("--combinations", options.combinations, "Each combination of a beam file as a member by itself");
    command->add_flag("--steps", options.steps, "JSON with the steps of each rule's calculation");
    AddMemberOptions(*command, shared, options.code);
    command->add_option("--jobs", options.jobs, "Worker processes that share the members; 0 is one for each processor")
        ->check(CLI::Range(0, MOST_JOBS))
        ->capture_default_str();
    Finish(command, commands, shared, options, Check, {"table", "json", "jsonl"});
}

void AddCompare(CLI::App& app, Commands& commands, Shared& shared, CompareOptions& options)
{
    CLI::App* const command = app.add_subcommand("compare", "What several design codes find for the same members");
    command->add_option("FILE", options.files, "Member files or beam files")->required();
    command
        ->add_option("--code", options.codes,
                     "Design code, with its national annex after a colon; again for the next one: " + ListOfCodes())
        ->type_name("NAME[:ANNEX]")
        ->allow_extra_args(false);
    AddReading(*command, options);
    Finish(command, commands, shared, options, Compare);
}

void AddReport(CLI::App& app, Commands& commands, Shared& shared, ReportOptions& options)
{
    CLI::App* const command = app.add_subcommand("report", "Calculation sheets of members as one HTML file");
    AddFiles(*command, options.files);
    AddCode(*command, shared, CodeNeed::Always, options.code, "Design code");
    AddReading(*command, options);
    command->add_option("-o,--output", options.output, "The HTML file; - is standard output")->required();
    command->add_flag("--envelope", options.envelope, "The files are load cases of one member");
    command->add_flag("--combinations", options.combinations, "Each combination of a beam file as a member by itself");
    command->add_flag("--brief", options.block.isBrief,
                      "Two pages for a member: the calculation of the governing position and span alone");
    const auto text = [&](const char* name, std::string& value, const char* meaning) {
        command->add_option(name, value, std::string("Title block: ") + meaning);
    };
    text("--client", options.block.client, "the client");
    text("--project", options.block.project, "the number of the project");
    text("--job", options.block.job, "the job");
    text("--revision", options.block.revision, "the revision");
    text("--member", options.block.member, "the mark of the member");
    text("--forces", options.block.forces, "where the forces and moments come from");
    text("--by", options.block.made.name, "who calculated");
    text("--date", options.block.made.date, "when");
    text("--checked-by", options.block.checked.name, "who checked");
    text("--checked-date", options.block.checked.date, "when");
    text("--approved-by", options.block.approved.name, "who approved");
    text("--approved-date", options.block.approved.date, "when");
    AddMemberOptions(*command, shared, options.code);
    options.block.version = KSTEEL_VERSION;
    Finish(command, commands, shared, options, Report);
}

void AddDesign(CLI::App& app, Commands& commands, Shared& shared, DesignOptions& options)
{
    CLI::App* const command = app.add_subcommand("design", "Lightest or shallowest section with which a member passes");
    AddFiles(*command, options.files);
    AddReading(*command, options);
    AddCode(*command, shared, CodeNeed::Always, options.code, "Design code");
    command->add_option("--family", options.families, "Family of the catalogue (UB, UC, SHS, ...), or several: UB,UC")
        ->allow_extra_args(false)
        ->delimiter(',')
        ->required();
    command->add_option("--by", options.by, "Which sections come first: those of least mass or of least depth")
        ->check(CLI::IsMember({"mass", "depth"}))
        ->capture_default_str();
    command
        ->add_option_function<double>(
            "--max-depth", [&options](double millimetres) { options.maxDepth = millimetres / 1e3; },
            "Only sections of at most this depth, mm")
        ->type_name("MM");
    command->add_flag("--envelope", options.envelope, "The files are load cases of one member");
    command->add_option("--count", options.count, "Passing sections to show")->capture_default_str();
    AddMemberOptions(*command, shared, options.code);
    Finish(command, commands, shared, options, Design);
}

// The grades that need no strengths of the user's own.
std::string GradesWithStrengths(const Keltrix::Design::DesignCode* code)
{
    if (!code) return "Steel grade";
    std::vector<Keltrix::Design::Term> grades = code->Description().grades;
    std::erase_if(grades, [&](const Keltrix::Design::Term& grade) {
        return code->IsUserGrade(Keltrix::CSteelGrade(grade.name, 0.0, 0.0, 0.0, 1.0));
    });
    return ListOf(grades);
}

void AddCapacity(CLI::App& app, Commands& commands, Shared& shared, CapacityOptions& options)
{
    CLI::App* const command = app.add_subcommand("capacity", "Capacity table of a section to a design code");
    command->add_option("NAME", options.name, "Designation or parametric description")->required();
    AddCode(*command, shared, CodeNeed::Always, options.code, "Design code");
    if (shared.code) options.grade = Utf8(shared.code->Description().grades.front().name);
    command->add_option("--grade", options.grade, GradesWithStrengths(shared.code))->capture_default_str();
    command->add_option("--LE", options.LE, "Effective lengths in m: 1:14, 1:14:0.5 or 2,4.5,6")->capture_default_str();
    command
        ->add_option("--type", options.type,
                     "How the section is made; without it as the catalogue has it, welded for a parametric description")
        ->check(CLI::IsMember({"rolled", "welded", "formed"}));
    if (shared.code && shared.code->Description().tablesTakeC1)
        command
            ->add_option("--C1", options.code.settings.C1,
                         "Shape of the moments: critical moment over that under uniform moment, 1 to 5")
            ->check(CLI::Range(1.0, 5.0))
            ->capture_default_str();
    Finish(command, commands, shared, options, Capacity);
}

void AddCodes(CLI::App& app, Commands& commands, Shared& shared, CodesOptions& options)
{
    CLI::App* const command = app.add_subcommand("codes", "The design codes, their options and what they cover");
    Finish(command, commands, shared, options, ListCodes);
}

constexpr std::array<ExitCodeText, 4> EXIT_CODES{{{EXIT_FINE, "fine"},
                                                  {EXIT_MEMBER_FAILS, "a member fails"},
                                                  {EXIT_BAD_INPUT, "bad input or output that cannot be written"},
                                                  {EXIT_BAD_USAGE, "bad usage"}}};

std::string ExitCodeLine()
{
    std::string line = "Exit codes:";
    for (const ExitCodeText& one : EXIT_CODES)
        line += (one.code == EXIT_FINE ? " " : ", ") + std::to_string(one.code) + ' ' + one.meaning;
    return line + '.';
}

CommandLineText CommandLineOf(const CLI::App& app, const Keltrix::Design::DesignCode* present)
{
    std::vector<CodeOptions> codes;
    KnownWords ids{"--code", {}};
    KnownWords annexes{"--annex", {}, true};
    for (const Keltrix::Design::DesignCode* code : DesignCodes()) {
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
    KnownWords commands{"COMMAND", {}};
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        commands.words.push_back(command->get_name());
    return ReadCommandLine(app, present ? Utf8(present->Description().id) : std::string(), codes,
                           {ids, annexes, families, commands});
}

struct ManualOptions {
    std::string command; ///< empty: the program
    std::string folder;  ///< for all pages; empty: one page on standard output
};

void AddManual(CLI::App& app, Commands& commands, const Shared& shared, ManualOptions& options)
{
    CLI::App* const command = app.add_subcommand("manual", "Manual pages of the program and its commands, for man(1)");
    CLI::Option* const name =
        command->add_option("COMMAND", options.command, "A command; without one the page of the program");
    command
        ->add_option("--directory", options.folder, "Folder that is there, into which every page is written as a file")
        ->type_name("FOLDER")
        ->excludes(name);
    commands[command] = [&app, &shared, &options](const Console& console) {
        const CommandLineText line = CommandLineOf(app, shared.code);
        const auto page = [&](const CommandText& one) { return ManualPage(line, one, EXIT_CODES, KSTEEL_VERSION); };
        const auto put = [&](const CommandText& one) {
            WriteFile(options.folder + "/" + PageName(one) + ".1", page(one));
        };
        if (!options.folder.empty()) {
            put(line.program);
            for (const CommandText& one : line.commands)
                put(one);
            return EXIT_FINE;
        }
        const CommandText* const found = line.Find(options.command);
        if (!found)
            throw BadUsage("manual: got \"" + PrintableLine(options.command) + "\", expected one of " +
                           line.NamesOfCommands());
        console.out(page(*found));
        return EXIT_FINE;
    };
}

void AddCompletion(CLI::App& app, Commands& commands, const Shared& shared, std::string& shell)
{
    CLI::App* const command = app.add_subcommand("completion", "What completes command lines of ksteel in a shell");
    command->add_option("SHELL", shell, "bash, zsh or fish")->required()->check(CLI::IsMember({"bash", "zsh", "fish"}));
    commands[command] = [&app, &shared, &shell](const Console& console) {
        console.out(CompletionScript(CommandLineOf(app, shared.code), shell));
        return EXIT_FINE;
    };
}

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
    ShowOptions show;
    ValidateOptions validate;
    SectionOptions section;
    SectionsOptions sections;
    SpansOptions spans;
    AddShow(app, commands, shared, show);
    AddValidate(app, commands, shared, validate);
    AddSection(app, commands, shared, section);
    AddSections(app, commands, shared, sections);
    AddSpans(app, commands, shared, spans);
    ImportOptions import;
    AddImport(app, commands, shared, import);
#ifdef KELTRIX_HOST_WITH_STABILITY
    BucklingOptions buckling;
    AddBuckling(app, commands, shared, buckling);
#endif
#ifdef KELTRIX_HOST_WITH_STATICS
    LoadsOptions loads;
    NewOptions fresh;
    AddLoads(app, commands, shared, loads);
    AddNew(app, commands, shared, fresh);
#endif
    CheckOptions check;
    CompareOptions compare;
    ReportOptions report;
    DesignOptions design;
    CapacityOptions capacity;
    CodesOptions codes;
    AddCheck(app, commands, shared, check);
    AddCompare(app, commands, shared, compare);
    AddReport(app, commands, shared, report);
    AddDesign(app, commands, shared, design);
    AddCapacity(app, commands, shared, capacity);
    AddCodes(app, commands, shared, codes);
    ManualOptions manual;
    std::string shell;
    AddManual(app, commands, shared, manual);
    AddCompletion(app, commands, shared, shell);

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

// Commands that need no design code.

#include "commandline/Grammar.h"

#include "text/Text.h"

namespace Keltrix::App {

namespace {

void AddShow(CLI::App& app, Commands& commands, Shared& shared)
{
    const auto kept = std::make_shared<ShowOptions>();
    ShowOptions& options = *kept;
    CLI::App* const command = app.add_subcommand("show", "Input report of a member");
    AddFiles(*command, options.files);
    AddReading(*command, options);
    Finish(command, commands, shared, kept, Show);
}

void AddValidate(CLI::App& app, Commands& commands, Shared& shared)
{
    const auto kept = std::make_shared<ValidateOptions>();
    ValidateOptions& options = *kept;
    CLI::App* const command = app.add_subcommand("validate", "Every defect of member files, with its place");
    AddFiles(*command, options.files);
    AddReading(*command, options);
    AddCode(*command, shared, CodeNeed::WhenGiven, options.code, "Also what this design code rejects");
    Finish(command, commands, shared, kept, Validate);
}

void AddSection(CLI::App& app, Commands& commands, Shared& shared)
{
    const auto kept = std::make_shared<SectionOptions>();
    SectionOptions& options = *kept;
    CLI::App* const command = app.add_subcommand("section", "Dimensions and properties of a section");
    command->add_option("NAME", options.name, "Designation or parametric description, \"UB 457x191x67\"")->required();
    command->add_option("--svg", options.svgFile,
                        "Draw the outline to scale into this SVG file (- is standard output)");
    Finish(command, commands, shared, kept, ShowSection);
}

void AddSections(CLI::App& app, Commands& commands, Shared& shared)
{
    const auto kept = std::make_shared<SectionsOptions>();
    SectionsOptions& options = *kept;
    CLI::App* const command = app.add_subcommand("sections", "The section catalogue");
    command->add_option("--family", options.family, "Only this family (UB, UC, RHS, ...)");
    command->add_option("--min-Ixx", options.minIxx, "Only sections of at least this Ixx, cm^4");
    command->add_option("--sort", options.sort, "Ascending by name, mass, depth, A, Ixx, Iyy, Zxx, Sxx or ry");
    Finish(command, commands, shared, kept, ListSections);
}

void AddSpans(CLI::App& app, Commands& commands, Shared& shared)
{
    const auto kept = std::make_shared<SpansOptions>();
    SpansOptions& options = *kept;
    CLI::App* const command = app.add_subcommand("spans", "Spans between restrained points and what acts on them");
    AddFiles(*command, options.files);
    AddReading(*command, options);
    command
        ->add_option("--split", options.split, "What ends a span: minor (axis), lt (flange or torsion), major (axis)")
        ->check(CLI::IsMember({"minor", "lt", "major"}))
        ->capture_default_str();
    AddCode(*command, shared, CodeNeed::WhenThere, options.code, "Design code");
    command->add_option("--EI", options.EI, "Major-axis bending stiffness, N.m^2; without it that of the section");
    Finish(command, commands, shared, kept, ShowSpans);
}

void AddImport(CLI::App& app, Commands& commands, Shared& shared)
{
    const auto kept = std::make_shared<ImportOptions>();
    ImportOptions& options = *kept;
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
    Finish(command, commands, shared, kept, ImportTables);
}

} // namespace

void AddMemberCommands(CLI::App& app, Commands& commands, Shared& shared)
{
    AddShow(app, commands, shared);
    AddValidate(app, commands, shared);
    AddSection(app, commands, shared);
    AddSections(app, commands, shared);
    AddSpans(app, commands, shared);
    AddImport(app, commands, shared);
}

} // namespace Keltrix::App

// Commands of elastic critical loads and of beams from their loads, as far as the program has them.

#include "commandline/Grammar.h"

#ifdef KELTRIX_HOST_WITH_STATICS
#include "beamfile/BeamFile.h"
#include "commands/BeamCommands.h"
#endif

namespace Keltrix::App {

namespace {

#ifdef KELTRIX_HOST_WITH_STABILITY
void AddBuckling(CLI::App& app, Commands& commands, Shared& shared)
{
    const auto kept = std::make_shared<BucklingOptions>();
    BucklingOptions& options = *kept;
    CLI::App* const command =
        app.add_subcommand("buckling", "Elastic critical loads of members as they are held and loaded");
    AddFiles(*command, options.files);
    AddReading(*command, options);
    command->add_flag("--continuity", options.continuity,
                      "The whole member at once, not each unit between held sections by itself");
    AddCode(*command, shared, CodeNeed::WhenThere, options.code, "Design code, which gives the moduli");
    command->add_option("--svg", options.svgFile,
                        "Draw the buckled shape of one member into this SVG file (- is standard output)");
    Finish(command, commands, shared, kept, ShowBuckling, {"table", "json", "jsonl"});
}
#endif

#ifdef KELTRIX_HOST_WITH_STATICS
void AddLoads(CLI::App& app, Commands& commands, Shared& shared)
{
    const auto kept = std::make_shared<LoadsOptions>();
    LoadsOptions& options = *kept;
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
    Finish(command, commands, shared, kept, ShowLoads);
}

void AddNew(CLI::App& app, Commands& commands, Shared& shared)
{
    const auto kept = std::make_shared<NewOptions>();
    NewOptions& options = *kept;
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
    Finish(command, commands, shared, kept, New);
}
#endif

} // namespace

void AddBeamCommands(CLI::App& app, Commands& commands, Shared& shared)
{
#ifdef KELTRIX_HOST_WITH_STABILITY
    AddBuckling(app, commands, shared);
#endif
#ifdef KELTRIX_HOST_WITH_STATICS
    AddLoads(app, commands, shared);
    AddNew(app, commands, shared);
#endif
}

} // namespace Keltrix::App

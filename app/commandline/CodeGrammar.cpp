// Commands to a design code.

#include "commandline/Grammar.h"

#include "check/DesignCodes.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

/// More workers than this are a slip of the finger.
constexpr int MOST_JOBS = 1024;

void AddCheck(CLI::App& app, Commands& commands, Shared& shared)
{
    const auto kept = std::make_shared<CheckOptions>();
    CheckOptions& options = *kept;
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
    Finish(command, commands, shared, kept, Check, {"table", "json", "jsonl"});
}

void AddCompare(CLI::App& app, Commands& commands, Shared& shared)
{
    const auto kept = std::make_shared<CompareOptions>();
    CompareOptions& options = *kept;
    CLI::App* const command = app.add_subcommand("compare", "What several design codes find for the same members");
    command->add_option("FILE", options.files, "Member files or beam files")->required();
    command
        ->add_option("--code", options.codes,
                     "Design code, with its national annex after a colon; again for the next one: " + ListOfCodes())
        ->type_name("NAME[:ANNEX]")
        ->allow_extra_args(false);
    AddReading(*command, options);
    Finish(command, commands, shared, kept, Compare);
}

void AddReport(CLI::App& app, Commands& commands, Shared& shared)
{
    const auto kept = std::make_shared<ReportOptions>();
    ReportOptions& options = *kept;
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
    Finish(command, commands, shared, kept, Report);
}

void AddDesign(CLI::App& app, Commands& commands, Shared& shared)
{
    const auto kept = std::make_shared<DesignOptions>();
    DesignOptions& options = *kept;
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
    Finish(command, commands, shared, kept, Design);
}

// The grades that need no strengths of the user's own.
std::string GradesWithStrengths(const Design::DesignCode* code)
{
    if (!code) return "Steel grade";
    std::vector<Design::Term> grades = code->Description().grades;
    std::erase_if(grades, [&](const Design::Term& grade) {
        return code->IsUserGrade(Keltrix::CSteelGrade(grade.name, 0.0, 0.0, 0.0, 1.0));
    });
    return ListOf(grades);
}

void AddCapacity(CLI::App& app, Commands& commands, Shared& shared)
{
    const auto kept = std::make_shared<CapacityOptions>();
    CapacityOptions& options = *kept;
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
    Finish(command, commands, shared, kept, Capacity);
}

void AddCodes(CLI::App& app, Commands& commands, Shared& shared)
{
    CLI::App* const command = app.add_subcommand("codes", "The design codes, their options and what they cover");
    Finish(command, commands, shared, std::make_shared<CodesOptions>(), ListCodes);
}

} // namespace

void AddCodeCommands(CLI::App& app, Commands& commands, Shared& shared)
{
    AddCheck(app, commands, shared);
    AddCompare(app, commands, shared);
    AddReport(app, commands, shared);
    AddDesign(app, commands, shared);
    AddCapacity(app, commands, shared);
    AddCodes(app, commands, shared);
}

} // namespace Keltrix::App

#include <filesystem>

#include "beamfile/BeamMembers.h"
#include "commands/BeamCommands.h"
#include "io/Input.h"
#include "io/Output.h"
#include "memberfile/MemberText.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

void Require(const char* option, const std::string& fault)
{
    if (!fault.empty()) throw BadUsage(std::string(option) + ": " + fault);
}

// The combinations of the design code that judges section and grade.
std::string StandardOf(const CodeChoice& choice)
{
    std::string combinations =
        choice.code ? Utf8(Design::CombinationsOf(choice.code->Description(), choice.settings)) : std::string();
    if (combinations.empty()) throw BadUsage("--combinations is required, because the design code names none");
    return combinations;
}

NewBeam BeamOf(const NewOptions& options)
{
    NewBeam beam;
    if (!options.title.empty()) beam.title = options.title;
    beam.section = options.section;
    beam.grade = options.grade;
    beam.combinations = options.combinations.empty() ? StandardOf(options.code) : options.combinations;
    if (!options.spans.empty()) beam.spans = options.spans;
    for (const std::string& text : options.restraints)
        Require("--restraint", ReadNewRestraint(text, beam));
    for (const std::string& text : options.uniform)
        Require("--udl", ReadNewLoad(text, NewBeam::Shape::Uniform, beam));
    for (const std::string& text : options.points)
        Require("--point", ReadNewLoad(text, NewBeam::Shape::Point, beam));
    for (const std::string& text : options.moments)
        Require("--moment", ReadNewLoad(text, NewBeam::Shape::Moment, beam));
    const std::string fault = FaultOf(beam);
    if (!fault.empty()) throw BadUsage(fault);
    return beam;
}

// What a command that reads the file would say of it is said now: an unknown section or grade.
void Refuse(const std::vector<Defect>& defects)
{
    for (const Defect& defect : defects)
        if (defect.severity == Severity::Error) throw BadInput(defect.Statement());
}

// The member under the first combination of the beam.
std::string FirstMemberOf(const BeamFile& file, const CodeChoice& choice)
{
    const BeamMembers made = MembersOf(file, choice.code, choice.settings);
    Refuse(made.defects);
    if (made.members.empty()) throw BadInput("the beam has no ultimate combination, and so no member");
    return ExplainedMemberFile(made.members.front().text);
}

} // namespace

ExitCode New(const NewOptions& options, const Console& console)
{
    const std::string text = BeamFileText(BeamOf(options));
    const BeamFile file = ReadBeamFile("new beam", text, options.code.code);
    Refuse(file.defects);
    const std::string content = options.kind == "member" ? FirstMemberOf(file, options.code) : text;
    if (options.output.empty() || options.output == "-") {
        console.out(content);
        return EXIT_FINE;
    }
    std::error_code ignored;
    if (!options.force && std::filesystem::exists(std::filesystem::symlink_status(FilePath(options.output), ignored)))
        throw BadUsage("--output: " + PrintableLine(options.output) + " is there already; --force replaces it");
    WriteFile(options.output, content);
    return EXIT_FINE;
}

} // namespace Keltrix::App

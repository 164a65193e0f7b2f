#include <algorithm>
#include <cmath>

#ifdef KELTRIX_HOST_WITH_STATICS
#include "check/CheckedBeam.h"
#endif
#include "check/CheckedMember.h"
#include "commands/CodeCommands.h"
#include "sections/SectionCatalogue.h"
#include "stream/EachMember.h"
#include "text/Fields.h"
#include "text/Json.h"
#include "text/Markup.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

struct Candidate {
    const CSectDB::Entry* entry;
    std::string name;
    std::string status; ///< "pass", "fail" or "not checked"
    double utilisation; ///< not-a-number where the section could not be checked
    std::string governing;
};

std::vector<const CSectDB::Entry*> ByMass(const std::string& wanted)
{
    std::vector<const CSectDB::Entry*> entries;
    for (const CSectDB::Entry& entry : CSectDB::GetDatabase()->Entries()) {
        if (SameWord(entry.family, Wide(wanted))) entries.push_back(&entry);
    }
    if (entries.empty()) {
        std::string list;
        for (const std::string& family : Families())
            list += (list.empty() ? "" : ", ") + family;
        throw BadInput("unknown family " + Quote(Wide(wanted)) + "; the catalogue has " + list);
    }
    std::stable_sort(entries.begin(), entries.end(), [](const CSectDB::Entry* a, const CSectDB::Entry* b) {
        return a->massPerMetre < b->massPerMetre;
    });
    return entries;
}

// The member with another section in place of its own, which keeps the member's design ratios.
Candidate Try(Design::CodeMember& coded, const CSteelGrade& grade, const CSecComp& own, const CSectDB::Entry& entry)
{
    CSection section(entry.designation);
    CSecComp component = section.Component(0);
    component.SetNetGross(own.NetGross());
    component.SetBeta(own.Beta());
    component.SetPlasElas(own.PlasElas());
    section.SetComponent(0, component);

    Candidate candidate{&entry, Utf8(entry.designation), "not checked", std::nan(""),
                        "the design code does not cover it"};
    Steel::CSteelMemberGen& member = coded.Member();
    if (!member.SetKeltrixSec(section) || !member.SetGrade(grade)) return candidate;
    Steel::CMemberResult result;
    result.EnableText(false);
    member.SetResult(&result);
    const bool passed = member.Check();
    const Design::MemberFindings findings = coded.Findings();
    candidate.status =
        StatusText(passed && findings.status == Design::Status::Passed, result.HasFailed() || findings.HasFailed());
    candidate.utilisation = result.UtilOverAll();
    const Design::RuleFinding* const governing = findings.Governing();
    candidate.governing = governing ? DescribeEntry(*governing) : "nothing";
    return candidate;
}

// What no section of the family could mend. The thickness of the file's own section could be.
void RequireUsableFactors(const MemberFile& file, std::size_t i, Design::CodeMember& coded)
{
    Steel::CSteelMemberGen& member = coded.Member();
    Steel::CMemberResult result;
    result.EnableText(false);
    member.SetResult(&result);
    member.Check();
    const Design::MemberFindings findings = coded.Findings();
    const Design::Subject subject = findings.refusal.subject;
    if (subject != Design::Subject::Section && subject != Design::Subject::Grade) RequireAccepted(file, i, findings);
}

struct Choice {
    std::vector<Candidate> passing; ///< lightest first, as many as were asked for
    std::vector<Candidate> failing; ///< the heaviest ones that are lighter and fail, lightest first
};

// The candidates of a family, lightest first, as far as they are wanted.
template <class TryOne>
Choice ChooseBy(const DesignOptions& options, const TryOne& tryOne)
{
    constexpr std::size_t failingShown = 3;
    Choice choice;
    for (const CSectDB::Entry* entry : ByMass(options.family)) {
        if (choice.passing.size() >= static_cast<std::size_t>(options.count)) break;
        Candidate candidate = tryOne(*entry);
        if (candidate.status == "pass") {
            choice.passing.push_back(std::move(candidate));
        } else if (choice.passing.empty() && !std::isnan(candidate.utilisation)) {
            choice.failing.push_back(std::move(candidate));
            if (choice.failing.size() > failingShown) choice.failing.erase(choice.failing.begin());
        }
    }
    return choice;
}

Choice Choose(const MemberFile& file, std::size_t i, const DesignOptions& options)
{
    const std::unique_ptr<Design::CodeMember> coded = options.code.code->NewMember(options.code.settings);
    Steel::CSteelMemberGen& member = coded->Member();
    const CSteelGrade grade = file.ReadInto(i, member);
    SetGradeOf(file, i, *options.code.code, member, grade);
    RequireUsableFactors(file, i, *coded);
    const CSecComp own = member.GetKeltrixSec().Component(0);
    return ChooseBy(options, [&](const CSectDB::Entry& entry) { return Try(*coded, grade, own, entry); });
}

#ifdef KELTRIX_HOST_WITH_STATICS
// A beam with another section: its own weight, its own stiffness in springs and deflections.
Candidate Try(const Beam& own, const CSectDB::Entry& entry, const DesignOptions& options)
{
    Candidate candidate{&entry, Utf8(entry.designation), "not checked", std::nan(""),
                        "the design code does not cover it"};
    BeamFile file = own.file;
    file.type = "UNDEF"; // as the catalogue has it
    SetSectionOf(file, FindSection(candidate.name), options.code.code);
    try {
        const Beam beam = MakeBeam(std::move(file), options.reading, options.code.code);
        if (beam.members.empty()) return candidate;
        const CheckedMember checked = CheckBeam(beam, options.code, false);
        candidate.status = checked.Status();
        candidate.utilisation = checked.Utilisation();
        candidate.governing = checked.Governing();
        const std::string combination = checked.CombinationOf(checked.findings.Governing());
        if (!combination.empty()) candidate.governing += ", in " + combination;
    } catch (const BadInput&) {
        // the section's grade or plates
    }
    return candidate;
}

// A reaction outside a column's face stays where the file has it.
Choice Choose(const Beam& beam, const DesignOptions& options)
{
    return ChooseBy(options, [&](const CSectDB::Entry& entry) { return Try(beam, entry, options); });
}
#endif

std::string RowText(const Candidate& candidate)
{
    const std::string verdict = candidate.status == "pass" ? candidate.status : "<red>" + candidate.status + "</red>";
    return candidate.name + '\t' + Rounded(candidate.entry->massPerMetre, 4) + '\t' +
           Utf8(CDesFormat().Util(candidate.utilisation)) + '\t' + verdict + '\t' + candidate.governing + '\n';
}

std::string Markup(const std::string& title, const Choice& choice, const std::vector<MemberWarning>& warnings)
{
    std::string text = "<h4>" + AsText(title) + "</h4>\n" + WarningMarkup(warnings);
    text += choice.passing.empty()
                ? "<red>no section of the family passes</red>\n"
                : "<b>" + choice.passing.front().name + "</b> is the lightest section that passes" +
                      (warnings.empty() ? "" : ", <orange>" + CountText(warnings) + "</orange>") + "\n";
    text += "<table>Section\tkg/m\tUtilisation\tVerdict\tGoverning\n";
    for (const Candidate& candidate : choice.failing)
        text += RowText(candidate);
    for (const Candidate& candidate : choice.passing)
        text += RowText(candidate);
    return text + "</table>\n";
}

Json JsonOf(const Candidate& candidate)
{
    return {{"section", candidate.name},
            {"mass_per_metre", candidate.entry->massPerMetre},
            {"status", candidate.status},
            {"overall", candidate.utilisation},
            {"governing", candidate.governing}};
}

Json ListOf(const std::vector<Candidate>& candidates)
{
    Json list = Json::array();
    for (const Candidate& candidate : candidates)
        list.push_back(JsonOf(candidate));
    return list;
}

} // namespace

ExitCode Design(const DesignOptions& options, const Console& console)
{
    if (options.count < 1) throw BadUsage("--count: got " + std::to_string(options.count) + ", expected 1 or more");
    ByMass(options.family);
    Json members = Json::array();
    const auto show = [&](const Choice& choice, const std::string& file, LineNumber line, const std::string& title,
                          const std::vector<MemberWarning>& warnings) {
        if (options.format == Format::JSON)
            members.push_back({{"schema", JSON_SCHEMA},
                               {"file", file},
                               {"line", line},
                               {"title", title},
                               {"warnings", WarningsJson(warnings)},
                               {"chosen", choice.passing.empty() ? Json() : Json(choice.passing.front().name)},
                               {"passing", ListOf(choice.passing)},
                               {"lighter_failing", ListOf(choice.failing)}});
        else
            console.out(RenderMarkup(Markup(title, choice, warnings), options.rendering));
        return choice.passing.empty() ? EXIT_MEMBER_FAILS : EXIT_FINE;
    };
    BeamUse beams{options.code.code, {}, {}};
#ifdef KELTRIX_HOST_WITH_STATICS
    beams.use = [&](const Beam& beam) {
        return show(Choose(beam, options), beam.file.name, 1, beam.file.title, WarningsOf(beam));
    };
#endif
    const ExitCode code = ForEachMember(
        {options.file}, options.reading, console,
        [&](const MemberFile& file, std::size_t i) {
            return show(Choose(file, i, options), file.Name(), file.Member(i).firstLine, Utf8(file.Member(i).title),
                        file.WarningsOf(i));
        },
        beams);
    if (options.format == Format::JSON) console.out(JsonText(members));
    return code;
}

} // namespace Keltrix::App

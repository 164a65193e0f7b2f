#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#ifdef KELTRIX_HOST_WITH_STATICS
#include "check/CheckedBeam.h"
#endif
#include "check/CheckedMember.h"
#include "commands/CheckFindings.h"
#include "sections/SectionCatalogue.h"
#include "text/Fields.h"
#include "text/Json.h"
#include "text/Markup.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

struct Candidate {
    const CSectDB::Entry* entry;
    std::string name;
    std::string status;                       ///< "pass", "fail" or "not checked"
    double utilisation;                       ///< not-a-number where the section could not be checked
    std::string governing;                    ///< or why it could not be
    std::vector<MemberWarning> warnings = {}; ///< of a beam with this section
};

constexpr const char* NOT_COVERED = "the design code does not cover it";

Candidate CandidateOf(const CSectDB::Entry& entry)
{
    return {&entry, Utf8(entry.designation), "not checked", std::nan(""), NOT_COVERED};
}

// What keeps a member from being checked, behind what governs: the first rule that is open, and why.
std::string OpenRule(const std::string& status, const Design::MemberFindings& findings)
{
    if (status != "not checked") return {};
    for (const Design::RuleFinding& rule : findings.rules)
        if (rule.status == Design::CheckStatus::NotEvaluated)
            return "; not evaluated: " + DescribeEntry(rule) + (*rule.reason ? ": " + Utf8(rule.reason) : "");
    return {};
}

// A list as people write it may have blanks behind its commas.
bool IsFamily(const CString& family, std::string wanted)
{
    wanted.erase(0, wanted.find_first_not_of(' '));
    wanted.erase(wanted.find_last_not_of(' ') + 1);
    return SameWord(family, Wide(wanted));
}

void RequireFamily(const std::string& wanted)
{
    const std::vector<std::string> families = Families();
    const auto isIt = [&](const std::string& family) { return IsFamily(Wide(family), wanted); };
    if (std::any_of(families.begin(), families.end(), isIt)) return;
    std::string list;
    for (const std::string& family : families)
        list += (list.empty() ? "" : ", ") + family;
    throw BadInput("unknown family " + Quote(Wide(wanted)) + "; the catalogue has " + list);
}

// The sections of the families within the depth, the lightest or the shallowest first, of equal ones that which is lighter or shallower.
std::vector<const CSectDB::Entry*> SectionsOf(const DesignOptions& options)
{
    for (const std::string& family : options.families)
        RequireFamily(family);
    const double most = options.maxDepth.value_or(std::numeric_limits<double>::infinity());
    std::vector<const CSectDB::Entry*> entries;
    for (const CSectDB::Entry& entry : CSectDB::GetDatabase()->Entries()) {
        const bool isWanted = std::any_of(options.families.begin(), options.families.end(),
                                          [&](const auto& family) { return IsFamily(entry.family, family); });
        if (isWanted && entry.depth <= most * (1.0 + 1e-12)) entries.push_back(&entry);
    }
    const bool byDepth = options.by == "depth";
    std::stable_sort(entries.begin(), entries.end(), [&](const CSectDB::Entry* a, const CSectDB::Entry* b) {
        const auto order = [&](const CSectDB::Entry* one) {
            return byDepth ? std::pair(one->depth, one->massPerMetre) : std::pair(one->massPerMetre, one->depth);
        };
        return order(a) < order(b);
    });
    return entries;
}

// Whether a section is said to be made in a way that is less favourable than rolling: it is then said of every candidate, as a check of the
// file with that section has it.
bool IsKept(int type) { return type == SEC_WELDED || type == SEC_WELDED_2 || type == SEC_FORMED; }

// The member with another section in place of its own, which keeps the member's design ratios.
Candidate Try(Design::CodeMember& coded, const CSteelGrade& grade, const CSecComp& own, const CSectDB::Entry& entry)
{
    CSection section(entry.designation);
    CSecComp component = section.Component(0);
    component.SetNetGross(own.NetGross());
    component.SetBeta(own.Beta());
    component.SetPlasElas(own.PlasElas());
    if (IsKept(own.Type())) component.SetType(own.Type());
    section.SetComponent(0, component);

    Candidate candidate = CandidateOf(entry);
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
    candidate.governing += OpenRule(candidate.status, findings);
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
    std::vector<Candidate> passing;   ///< in order, as many as were asked for
    std::vector<Candidate> failing;   ///< the last ones in front of the first that passes, which fail
    std::vector<Candidate> unchecked; ///< could not be checked: in front of the last that passes
    bool isEmpty = false;             ///< no section is within the depth
};

// The candidates, the lightest or shallowest first, as far as they are wanted.
template <class TryOne>
Choice ChooseBy(const DesignOptions& options, const TryOne& tryOne)
{
    constexpr std::size_t failingShown = 3;
    Choice choice;
    const std::vector<const CSectDB::Entry*> entries = SectionsOf(options);
    choice.isEmpty = entries.empty();
    for (const CSectDB::Entry* entry : entries) {
        if (choice.passing.size() >= static_cast<std::size_t>(options.count)) break;
        Candidate candidate = tryOne(*entry);
        if (candidate.status == "pass") {
            choice.passing.push_back(std::move(candidate));
        } else if (std::isnan(candidate.utilisation)) {
            choice.unchecked.push_back(std::move(candidate));
        } else if (choice.passing.empty()) {
            choice.failing.push_back(std::move(candidate));
            if (choice.failing.size() > failingShown) choice.failing.erase(choice.failing.begin());
        }
    }
    return choice;
}

// --- Load cases of one member ---

bool IsWorse(const Candidate& a, const Candidate& b)
{
    const auto rank = [](const Candidate& one) { return one.status == "fail" ? 2 : one.status == "pass" ? 0 : 1; };
    if (std::isnan(a.utilisation) != std::isnan(b.utilisation)) return std::isnan(a.utilisation);
    return a.utilisation > b.utilisation || (!(a.utilisation < b.utilisation) && rank(a) > rank(b));
}

// The worst of all cases, with the worst status of any: fails where one fails.
Candidate Try(const std::vector<CheckedMember>& cases, const CSectDB::Entry& entry, const CSecComp& own)
{
    std::optional<Candidate> worst;
    bool fails = false;
    bool passes = true;
    for (const CheckedMember& one : cases) {
        Candidate candidate = Try(*one.coded, one.member->GetGrade(), own, entry);
        candidate.governing += ", in " + one.name;
        fails = fails || candidate.status == "fail";
        passes = passes && candidate.status == "pass";
        if (!worst || IsWorse(candidate, *worst)) worst = std::move(candidate);
    }
    worst->status = StatusText(passes, fails);
    return std::move(*worst);
}

Choice Choose(const std::vector<CheckedMember>& cases, const DesignOptions& options)
{
    const CSecComp own = cases.front().member->GetKeltrixSec().Component(0);
    return ChooseBy(options, [&](const CSectDB::Entry& entry) { return Try(cases, entry, own); });
}

// --- A member, and a beam ---

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
// Why a beam with another section has no members, as its first error says.
std::string ReasonOf(const Beam& beam)
{
    for (const Defect& defect : beam.made.defects)
        if (defect.severity == Severity::Error) return defect.Message();
    return NOT_COVERED;
}

// A beam with another section: its own weight, its own stiffness in springs and deflections.
Candidate Try(const Beam& own, const CSectDB::Entry& entry, const DesignOptions& options)
{
    Candidate candidate = CandidateOf(entry);
    BeamFile file = own.file;
    if (file.type == "ROLLED") file.type = "UNDEF"; // as the catalogue has it
    SetSectionOf(file, FindSection(candidate.name), options.code.code);
    try {
        const Beam beam = MakeBeam(std::move(file), options.reading, options.code);
        if (beam.members.empty()) {
            candidate.governing = ReasonOf(beam);
            return candidate;
        }
        const CheckedMember checked = CheckBeam(beam, options.code, false);
        candidate.status = checked.Status();
        candidate.utilisation = checked.Utilisation();
        candidate.governing = checked.Governing();
        const std::string combination = checked.CombinationOf(checked.findings.Governing());
        if (!combination.empty()) candidate.governing += ", in " + combination;
        candidate.governing += OpenRule(candidate.status, checked.findings);
        candidate.warnings = checked.warnings;
    } catch (const BadMember& refusal) {
        candidate.governing = refusal.defect.Message(); // the section's grade or plates
    } catch (const BadInput& refusal) {
        candidate.governing = refusal.what();
    }
    return candidate;
}

// A reaction outside a column's face stays where the file has it.
Choice Choose(const Beam& beam, const DesignOptions& options)
{
    return ChooseBy(options, [&](const CSectDB::Entry& entry) { return Try(beam, entry, options); });
}
#endif

bool ShowsDepth(const DesignOptions& options) { return options.by == "depth" || options.maxDepth; }

std::string RowText(const Candidate& candidate, const DesignOptions& options)
{
    const std::string verdict = candidate.status == "pass" ? candidate.status : "<red>" + candidate.status + "</red>";
    return candidate.name + '\t' + Rounded(candidate.entry->massPerMetre, 4) + '\t' +
           (ShowsDepth(options) ? Rounded(candidate.entry->depth * 1e3, 4) + '\t' : "") +
           Utf8(CDesFormat().Util(candidate.utilisation)) + '\t' + verdict + '\t' + AsText(candidate.governing) + '\n';
}

std::string NothingText(const DesignOptions& options, const Choice& choice)
{
    const std::string of = options.families.size() > 1 ? "families" : "family";
    if (choice.isEmpty) return "no section of the " + of + " is within the depth";
    return "no section of the " + of + (options.maxDepth ? " within the depth passes" : " passes");
}

// Each reason once, with the first of its sections and their number.
std::string UncheckedText(const Choice& choice)
{
    std::vector<std::pair<std::string, std::vector<std::string>>> reasons;
    for (const Candidate& one : choice.unchecked) {
        auto at = std::find_if(reasons.begin(), reasons.end(),
                               [&](const auto& known) { return known.first == one.governing; });
        if (at == reasons.end()) at = reasons.insert(reasons.end(), {one.governing, {}});
        at->second.push_back(one.name);
    }
    std::string text;
    for (const auto& [reason, names] : reasons)
        text += "<orange>not checked: " + names.front() +
                (names.size() > 1 ? " and " + std::to_string(names.size() - 1) + " more" : "") + ": " + AsText(reason) +
                "</orange>\n";
    return text;
}

std::string Markup(const std::string& title, const Choice& choice, const std::vector<MemberWarning>& warnings,
                   const DesignOptions& options)
{
    std::string text = "<h4>" + AsText(title) + "</h4>\n" + WarningMarkup(warnings);
    text += choice.passing.empty()
                ? "<red>" + NothingText(options, choice) + "</red>\n"
                : "<b>" + choice.passing.front().name + "</b> is the " +
                      (options.by == "depth" ? "shallowest" : "lightest") + " section that passes" +
                      (warnings.empty() ? "" : ", <orange>" + CountText(warnings) + "</orange>") + "\n";
    text += UncheckedText(choice);
    if (choice.failing.empty() && choice.passing.empty()) return text;
    text += std::string("<table>Section\tkg/m\t") + (ShowsDepth(options) ? "mm\t" : "") +
            "Utilisation\tVerdict\tGoverning\n";
    for (const Candidate& candidate : choice.failing)
        text += RowText(candidate, options);
    for (const Candidate& candidate : choice.passing)
        text += RowText(candidate, options);
    return text + "</table>\n";
}

Json JsonOf(const Candidate& candidate)
{
    return {{"section", candidate.name},        {"mass_per_metre", candidate.entry->massPerMetre},
            {"depth", candidate.entry->depth},  {"status", candidate.status},
            {"overall", candidate.utilisation}, {"governing", candidate.governing}};
}

Json ListOf(const std::vector<Candidate>& candidates)
{
    Json list = Json::array();
    for (const Candidate& candidate : candidates)
        list.push_back(JsonOf(candidate));
    return list;
}

// What becomes of the members: shown one by one, or as load cases of one.
class DesignOutput {
public:
    DesignOutput(const DesignOptions& options, const Console& console) : m_options(options), m_console(console) {}

    ExitCode Show(const Choice& choice, const std::string& file, LineNumber line, const std::string& title,
                  const std::vector<MemberWarning>& warnings)
    {
        if (m_options.format == Format::JSON)
            m_members.push_back({{"schema", JSON_SCHEMA},
                                 {"file", file},
                                 {"line", line},
                                 {"title", title},
                                 {"warnings", WarningsJson(warnings)},
                                 {"chosen", choice.passing.empty() ? Json() : Json(choice.passing.front().name)},
                                 {"passing", ListOf(choice.passing)},
                                 {"order", m_options.by},
                                 {"lighter_failing", ListOf(choice.failing)},
                                 {"not_checked", ListOf(choice.unchecked)}});
        else
            m_console.out(RenderMarkup(Markup(title, choice, warnings, m_options), m_options.rendering));
        return choice.passing.empty() ? EXIT_MEMBER_FAILS : EXIT_FINE;
    }

    void Finish() const
    {
        if (m_options.format == Format::JSON) m_console.out(JsonText(m_members));
    }

private:
    const DesignOptions& m_options;
    const Console& m_console;
    Json m_members = Json::array();
};

ExitCode DesignOne(const StreamMember& member, const DesignOptions& options, DesignOutput& output)
{
#ifdef KELTRIX_HOST_WITH_STATICS
    if (member.beam) {
        // Its own weight, deflections and messages of the check are those of the section that is offered.
        const Beam& beam = *member.beam;
        const Choice choice = Choose(beam, options);
        return output.Show(choice, beam.file.name, 1, beam.file.title,
                           choice.passing.empty() ? WarningsOf(beam) : choice.passing.front().warnings);
    }
#endif
    const MemberFile& file = *member.file;
    const MemberText& text = file.Member(member.place);
    return output.Show(Choose(file, member.place, options), file.Name(), text.firstLine, Utf8(text.title),
                       file.WarningsOf(member.place));
}

ExitCode DesignEach(const DesignOptions& options, const Console& console, DesignOutput& output)
{
    MemberStream stream(options.files, options.reading, console, BeamReading::Whole, options.code);
    while (auto member = stream.Next())
        stream.Use(*member, [&] { return DesignOne(*member, options, output); });
    return stream.Worst();
}

ExitCode DesignEnvelope(const DesignOptions& options, const Console& console, DesignOutput& output)
{
    std::vector<CheckedMember> cases;
    std::vector<MemberWarning> warnings;
    MemberStream stream(options.files, options.reading, console, BeamReading::Whole, options.code);
    while (auto member = stream.Next()) {
        if (member->beam)
            throw BadUsage("--envelope: takes member files; a beam file has all combinations of its member already");
        stream.Use(*member, [&] {
            cases.push_back(CheckOne(*member, options.code, false));
            RequireLoadCase(cases.front(), cases.back());
            const std::vector<MemberWarning> more = member->file->WarningsOf(member->place);
            warnings.insert(warnings.end(), more.begin(), more.end());
            return EXIT_FINE;
        });
    }
    const ExitCode code = stream.Worst();
    // A case that is missing could be the one that governs.
    if (code == EXIT_BAD_INPUT || cases.empty()) return code;
    const CheckedMember& first = cases.front();
    return Worse(code, output.Show(Choose(cases, options), first.file, first.line, first.title, warnings));
}

} // namespace

ExitCode Design(const DesignOptions& options, const Console& console)
{
    if (options.count < 1) throw BadUsage("--count: got " + std::to_string(options.count) + ", expected 1 or more");
    if (options.maxDepth && !(*options.maxDepth > 0.0))
        throw BadUsage("--max-depth: got " + Shortest(*options.maxDepth * 1e3) + ", expected a depth in mm above 0");
    SectionsOf(options);
    DesignOutput output(options, console);
    const ExitCode code =
        options.envelope ? DesignEnvelope(options, console, output) : DesignEach(options, console, output);
    if (!options.envelope || code != EXIT_BAD_INPUT) output.Finish();
    return code;
}

} // namespace Keltrix::App

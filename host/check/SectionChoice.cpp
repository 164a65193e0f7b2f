#include "check/SectionChoice.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "sections/SectionCatalogue.h"
#include "text/Json.h"
#include "text/Text.h"

namespace Keltrix::Host {

std::vector<const CSectDB::Entry*> SectionsOf(const SectionSearch& search)
{
    std::vector<std::string> families;
    families.reserve(search.families.size());
    for (const std::string& family : search.families)
        families.push_back(FamilyNamed(family));
    const double most = search.maxDepth.value_or(std::numeric_limits<double>::infinity());
    std::vector<const CSectDB::Entry*> entries;
    for (const CSectDB::Entry& entry : CSectDB::GetDatabase()->Entries()) {
        const bool isWanted = std::find(families.begin(), families.end(), Utf8(entry.family)) != families.end();
        if (isWanted && entry.depth <= most * (1.0 + 1e-12)) entries.push_back(&entry);
    }
    const bool byDepth = search.by == "depth";
    std::stable_sort(entries.begin(), entries.end(), [&](const CSectDB::Entry* a, const CSectDB::Entry* b) {
        const auto order = [&](const CSectDB::Entry* one) {
            return byDepth ? std::pair(one->depth, one->massPerMetre) : std::pair(one->massPerMetre, one->depth);
        };
        return order(a) < order(b);
    });
    return entries;
}

namespace {

constexpr const char* NOT_COVERED = "the design code does not cover it";

Candidate CandidateOf(const CSectDB::Entry& entry)
{
    return {&entry, Utf8(entry.designation), "not checked", std::nan(""), NOT_COVERED};
}

// What keeps a member from being checked, behind what governs: the first rule that is open, and why.
std::string OpenRule(const std::string& status, const Design::MemberFindings& findings)
{
    const std::string open = status == "not checked" ? DescribeOpenRule(findings) : std::string();
    return open.empty() ? open : "; " + open;
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

// The candidates, the lightest or shallowest first, as far as they are wanted.
template <class TryOne>
SectionChoice ChooseBy(const SectionSearch& search, const TryOne& tryOne)
{
    constexpr std::size_t failingShown = 3;
    SectionChoice choice;
    const std::vector<const CSectDB::Entry*> entries = SectionsOf(search);
    choice.isEmpty = entries.empty();
    for (const CSectDB::Entry* entry : entries) {
        if (choice.passing.size() >= static_cast<std::size_t>(search.count)) break;
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

bool IsWorse(const Candidate& a, const Candidate& b)
{
    const auto rank = [](const Candidate& one) { return one.status == "fail" ? 2 : one.status == "pass" ? 0 : 1; };
    if (Design::IsWorse(a.utilisation, b.utilisation)) return true;
    return !Design::IsWorse(b.utilisation, a.utilisation) && rank(a) > rank(b);
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

} // namespace

SectionChoice ChooseSection(const std::vector<CheckedMember>& cases, const SectionSearch& search)
{
    const CSecComp own = cases.front().member->GetKeltrixSec().Component(0);
    return ChooseBy(search, [&](const CSectDB::Entry& entry) { return Try(cases, entry, own); });
}

SectionChoice ChooseSection(const MemberFile& file, std::size_t i, const SectionSearch& search)
{
    const std::unique_ptr<Design::CodeMember> coded = search.code.code->NewMember(search.code.settings);
    Steel::CSteelMemberGen& member = coded->Member();
    const CSteelGrade grade = file.ReadInto(i, member);
    SetGradeOf(file, i, *search.code.code, member, grade);
    RequireUsableFactors(file, i, *coded);
    const CSecComp own = member.GetKeltrixSec().Component(0);
    return ChooseBy(search, [&](const CSectDB::Entry& entry) { return Try(*coded, grade, own, entry); });
}

#ifdef KELTRIX_HOST_WITH_STATICS
namespace {

// Why a beam with another section has no members, as its first error says.
std::string ReasonOf(const Beam& beam)
{
    for (const Defect& defect : beam.made.defects)
        if (defect.severity == Severity::Error) return defect.Message();
    return NOT_COVERED;
}

// A beam with another section: its own weight, its own stiffness in springs and deflections.
Candidate Try(const Beam& own, const CSectDB::Entry& entry, const SectionSearch& search)
{
    Candidate candidate = CandidateOf(entry);
    BeamFile file = own.file;
    if (file.type == "ROLLED") file.type = "UNDEF"; // as the catalogue has it
    SetSectionOf(file, FindSection(candidate.name), search.code.code);
    try {
        const Beam beam = MakeBeam(std::move(file), search.reading, search.code);
        if (beam.members.empty()) {
            candidate.governing = ReasonOf(beam);
            return candidate;
        }
        const CheckedMember checked = CheckBeam(beam, search.code, false);
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

} // namespace

SectionChoice ChooseSection(const Beam& beam, const SectionSearch& search)
{
    return ChooseBy(search, [&](const CSectDB::Entry& entry) { return Try(beam, entry, search); });
}
#endif

namespace {

Json CandidateJson(const Candidate& candidate)
{
    return {{"section", candidate.name},        {"mass_per_metre", candidate.entry->massPerMetre},
            {"depth", candidate.entry->depth},  {"status", candidate.status},
            {"overall", candidate.utilisation}, {"governing", candidate.governing}};
}

Json CandidatesJson(const std::vector<Candidate>& candidates)
{
    Json list = Json::array();
    for (const Candidate& candidate : candidates)
        list.push_back(CandidateJson(candidate));
    return list;
}

} // namespace

Json JsonOf(const SectionChoice& choice, const std::string& by, const ChoiceHead& head)
{
    return {{"schema", JSON_SCHEMA},
            {"file", head.file},
            {"line", head.line},
            {"title", head.title},
            {"warnings", WarningsJson(head.warnings)},
            {"chosen", choice.passing.empty() ? Json() : Json(choice.passing.front().name)},
            {"passing", CandidatesJson(choice.passing)},
            {"order", by},
            {"lighter_failing", CandidatesJson(choice.failing)},
            {"not_checked", CandidatesJson(choice.unchecked)}};
}

} // namespace Keltrix::Host

#include "check/CheckedMember.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <limits>
#include <map>
#include <tuple>
#include <utility>

#include "keltrix/design/MomentDiagram.h"
#include "text/BadInput.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Design::LocalFinding;
using Design::RuleFinding;
using Steel::CMemberResult;

struct FlagWord {
    int flag;
    const char* word;
};

// In the order and the words of the summary report.
constexpr FlagWord FLAG_WORDS[] = {
    {CMemberResult::NOTIFY, "NOTIFY"},
    {CMemberResult::WARNING, "WARNING"},
    {CMemberResult::FAIL, "FAIL"},
    {CMemberResult::NOT_CHECKED, "NOT CHECKED"},
    {CMemberResult::FAIL_LOCAL, "FAIL LOCAL"},
    {CMemberResult::FAIL_BUCKLE, "FAIL BUCKLE"},
    {CMemberResult::FAIL_BUCKLE_LAT_TORS, "FAIL BUCKLE LAT_TORS"},
    {CMemberResult::FAIL_BUCKLE_AXIAL_MAJOR, "FAIL BUCKLE AXIAL MAJOR"},
    {CMemberResult::FAIL_BUCKLE_AXIAL_MINOR, "FAIL BUCKLE AXIAL MINOR"},
    {CMemberResult::FAIL_BUCKLE_AXIAL_TORSION, "FAIL BUCKLE AXIAL TORSION"},
    {CMemberResult::FAIL_BUCKLE_AXIAL_FLEXURAL_TORSION, "FAIL BUCKLE AXIAL FLEXURAL TORSION"},
    {CMemberResult::FAIL_LOCAL_AXIAL, "FAIL LOCAL AXIAL"},
    {CMemberResult::FAIL_LOCAL_BENDING_MAJOR, "FAIL LOCAL BENDING MAJOR"},
    {CMemberResult::FAIL_LOCAL_BENDING_MINOR, "FAIL LOCAL BENDING MINOR"},
    {CMemberResult::FAIL_LOCAL_SHEAR_MAJOR, "FAIL LOCAL SHEAR MAJOR"},
    {CMemberResult::FAIL_LOCAL_SHEAR_MINOR, "FAIL LOCAL SHEAR MINOR"},
    {CMemberResult::FAIL_LOCAL_TORSION, "FAIL LOCAL TORSION"},
    {CMemberResult::INFO_LOCAL_SLENDER, "INFO LOCAL SLENDER"},
    {CMemberResult::INFO_LOCAL_SLENDER_WEB, "INFO LOCAL SLENDER WEB"},
    {CMemberResult::INFO_LOCAL_SLENDER_FLANGE, "INFO LOCAL SLENDER FLANGE"},
    {CMemberResult::INFO_MEMBER_SLENDER, "INFO MEMBER SLENDER"},
};

} // namespace

const char* QuantityWord(Design::Quantity quantity)
{
    switch (quantity) {
    case Design::Quantity::Force:
        return "force";
    case Design::Quantity::Moment:
        return "moment";
    case Design::Quantity::Stress:
        return "stress";
    case Design::Quantity::Length:
        return "length";
    case Design::Quantity::Distance:
        return "distance";
    case Design::Quantity::Area:
        return "area";
    case Design::Quantity::Modulus:
        return "modulus";
    default:
        return "";
    }
}

std::string CheckedMember::Section() const { return Utf8(member->GetKeltrixSec().Component(0).Description(true)); }

std::string CheckedMember::Grade() const { return Utf8(member->GetGrade().Name()); }

double CheckedMember::Utilisation() const
{
    const double strength = result->UtilOverAll();
    return std::isnan(strength) || serviceability <= strength ? strength : serviceability;
}

std::string CheckedMember::CombinationOf(const RuleFinding* entry) const
{
    if (!entry || sources.empty()) return {};
    return sources[static_cast<std::size_t>(entry - findings.rules.data())].combination;
}

std::string CheckedMember::InformationCombination() const
{
    if (sources.empty()) return {};
    return caseName.empty() ? name : caseName;
}

std::string StatusText(bool passed, bool failed)
{
    if (failed) return "fail";
    return passed ? "pass" : "not checked";
}

std::string CheckedMember::Status() const { return StatusText(passed, failed); }

std::vector<MemberWarning> CheckedMember::CheckWarnings() const
{
    return {warnings.begin() + static_cast<std::ptrdiff_t>(fileWarnings), warnings.end()};
}

std::string CheckedMember::Governing() const
{
    const RuleFinding* const entry = findings.Governing();
    return entry ? DescribeEntry(*entry) : "nothing";
}

namespace {

Design::Extremes MomentsOf(Steel::CSteelMemberGen& member, Design::Bending bending)
{
    const std::vector<Steel::CMemberPoint> points = member.GetMemberPointVec();
    const Design::MomentDiagram diagram(points, member.GetSubSpanVec(), bending);
    return diagram.Between(points.front().GetPos(), points.back().GetPos());
}

void NoteLargeUtilisation(CheckedMember& checked)
{
    constexpr double most = 100.0;
    const double overall = checked.result->UtilOverAll();
    if (!(overall > most) || std::isinf(overall)) return; // infinite where a table has no row
    checked.warnings.push_back({"large-utilisation", Severity::Note, checked.file, checked.line,
                                "utilisation " + Rounded(overall, 4) + ": are positions in mm, or moments in N·mm?"});
}

// What the design code warns of. Forces that do not balance are warnings of the file already. Throws BadMember where every warning
// is an error.
void TakeWarnings(const MemberFile& file, std::size_t i, CheckedMember& checked)
{
    for (const Design::Warning& warning : checked.findings.warnings) {
        const char* code = "other-method";
        if (warning.kind == Design::WarningKind::UnbalancedForces) continue;
        if (warning.kind == Design::WarningKind::LowMomentFactor) code = "low-moment-factor";
        if (warning.kind == Design::WarningKind::CurveFactor) code = "curve-factor";
        if (warning.kind == Design::WarningKind::HeldAlong) code = "held-along";
        if (file.IsStrict()) throw file.Refusal(i, "TITLE", code, Utf8(warning.text), {});
        checked.warnings.push_back({code, Severity::Warning, checked.file, checked.line, Utf8(warning.text),
                                    warning.start, warning.end, warning.utilisation});
    }
}

} // namespace

void SetGradeOf(const MemberFile& file, std::size_t i, const Design::DesignCode& code, Steel::CSteelMemberGen& member,
                const CSteelGrade& grade)
{
    if (member.SetGrade(grade)) return;
    if (!code.HasGrade(grade.Name()))
        throw file.Refusal(i, "GRADE", "code-grade", Quote(grade.Name().View()), ListOf(code.Description().grades));
    throw file.Refusal(i, "GRADE", "code-grade", Utf8(code.GradeRefusal(grade)), {});
}

namespace {

// The keyword of the line that a refusal is about.
const char* KeywordOf(Design::Subject subject)
{
    switch (subject) {
    case Design::Subject::Section:
        return "SECTION";
    case Design::Subject::Grade:
        return "GRADE";
    case Design::Subject::NetToGross:
        return "NET_TO_GROSS";
    case Design::Subject::PlasticToElastic:
        return "ALLOWABLE_PLASTIC/ELASTIC_RATIO";
    case Design::Subject::MomentFactor:
        return "EQUIVALENT_UNIFORM_MOMENT_FACTOR";
    default:
        return "TITLE";
    }
}

// A section that the code does not take is refused in the code's own words.
CSteelGrade ReadMember(const MemberFile& file, std::size_t i, const Design::DesignCode& code,
                       Steel::CSteelMemberGen& member)
{
    try {
        return file.ReadInto(i, member);
    } catch (const BadMember& refusal) {
        if (refusal.defect.code != "code-section") throw;
        const std::wstring_view section = file.FieldOf(i, LineKind::Section);
        const CString reason = code.SectionRefusal(CSection(CString(section)));
        if (reason.IsEmpty()) throw;
        throw file.Refusal(i, "SECTION", "code-section", Quote(section) + ": " + Utf8(reason), {});
    }
}

} // namespace

void RequireAccepted(const MemberFile& file, std::size_t i, const Design::MemberFindings& findings)
{
    const Design::Refusal& refusal = findings.refusal;
    if (refusal.subject == Design::Subject::None) return;
    throw file.Refusal(i, KeywordOf(refusal.subject), "code", Utf8(refusal.reason), {});
}

CheckedMember ReadToCheck(const MemberFile& file, std::size_t i, const CodeChoice& choice)
{
    CheckedMember checked;
    checked.file = file.Name();
    checked.line = file.Member(i).firstLine;
    checked.name = file.NameOf(i);
    checked.code = choice.code ? choice.code : DefaultCode().code;
    checked.annex = AnnexOf({checked.code, choice.settings});
    checked.coded = checked.code->NewMember(choice.settings);
    checked.member = &checked.coded->Member();
    checked.result = std::make_unique<CMemberResult>();
    const CSteelGrade grade = ReadMember(file, i, *checked.code, *checked.member);
    checked.title = Utf8(checked.member->GetTitle());
    SetGradeOf(file, i, *checked.code, *checked.member, grade);
    return checked;
}

void RunCheck(const MemberFile& file, std::size_t i, CheckedMember& checked)
{
    const bool passed = checked.member->Check();
    checked.findings = checked.coded->Findings();
    RequireAccepted(file, i, checked.findings);
    // What the check returns and what it found have to agree before a member passes.
    checked.passed = passed && checked.findings.status == Design::Status::Passed;
    checked.failed = checked.result->HasFailed() || checked.findings.HasFailed();
    checked.momentMajor = MomentsOf(*checked.member, Design::Bending::Major);
    checked.momentMinor = MomentsOf(*checked.member, Design::Bending::Minor);
    TakeWarnings(file, i, checked);
    NoteLargeUtilisation(checked);
}

CheckedMember CheckMember(const MemberFile& file, std::size_t i, const CodeChoice& choice, bool withText)
{
    CheckedMember checked = ReadToCheck(file, i, choice);
    if (!withText) checked.result->EnableText(false);
    checked.member->SetResult(checked.result.get());
    checked.warnings = file.WarningsOf(i);
    checked.fileWarnings = checked.warnings.size();
    RunCheck(file, i, checked);
    return checked;
}

namespace {

// What makes a member, without its load case, part by part in words.
class Identity {
public:
    explicit Identity(const CheckedMember& checked)
    {
        Steel::CSteelMemberGen& member = *checked.member;
        const CSection section = member.GetKeltrixSec();
        const CSecComp& component = section.Component(0);
        Add("section", checked.Section());
        Add("section type", Utf8(SecTypeString(component.Type())));
        Add("grade", GradeText(*checked.code, member.GetGrade()));
        Add("net to gross ratio", Shortest(component.NetGross()));
        Add("allowable plastic to elastic ratio", Shortest(component.PlasElas()));
        Add("shear lag factor", Shortest(component.Beta()));
        Add("effective lengths", OverrideText(member));
        Add("equivalent uniform moment factor",
            checked.findings.momentFactor ? Shortest(*checked.findings.momentFactor) : "as computed");
        const auto& points = member.GetMemberPointVec();
        const auto& subSpans = member.GetSubSpanVec();
        Add("number of points", std::to_string(points.size()));
        for (std::size_t i = 0; i < points.size(); ++i) {
            const std::string point = "point " + std::to_string(i + 1);
            Add(point + " at", Shortest(points[i].GetPos()) + " m");
            Add("restraint of " + point, RestraintText(points[i].GetRestraint()));
        }
        for (std::size_t k = 0; k < subSpans.size(); ++k)
            Add("restraint of sub-span " + std::to_string(k + 1), RestraintText(subSpans[k].GetRestraint()));
    }

    std::string DifferenceTo(const Identity& other) const
    {
        for (std::size_t i = 0; i < std::min(m_parts.size(), other.m_parts.size()); ++i) {
            const auto& [name, value] = m_parts[i];
            if (value != other.m_parts[i].second) return name + ' ' + other.m_parts[i].second + ", not " + value;
        }
        return {};
    }

private:
    void Add(std::string name, std::string value) { m_parts.emplace_back(std::move(name), std::move(value)); }

    static std::string GradeText(const Design::DesignCode& code, const CSteelGrade& grade)
    {
        std::string text = Utf8(grade.Name());
        if (!code.IsUserGrade(grade)) return text;
        for (const double value : {grade.GetUserPy(), grade.GetUserPu(), grade.GetUserE(), grade.GetMatFactor()})
            text += ' ' + Shortest(value);
        return text;
    }

    static std::string OverrideText(const Steel::CSteelMemberGen& member)
    {
        if (!member.LengthOverride()) return "by the restraints";
        return Shortest(member.Lyy()) + " m, " + Shortest(member.Lzz()) + " m and " + Shortest(member.Llt()) + " m";
    }

    // The load height is the load's.
    static std::string RestraintText(Steel::CRestraint restraint)
    {
        restraint.SetLoadHeight(0.0);
        return Utf8(restraint.UserDescription());
    }

    std::vector<std::pair<std::string, std::string>> m_parts;
};

// The position of a finding among those of a member; a new one where it has none yet.
LocalFinding& Placed(std::vector<LocalFinding>& list, const LocalFinding& finding)
{
    const auto order = [](const LocalFinding& f) { return std::make_tuple(f.subSpan, f.x, static_cast<int>(f.place)); };
    const auto at = std::lower_bound(list.begin(), list.end(), finding,
                                     [&](const auto& a, const auto& b) { return order(a) < order(b); });
    if (at != list.end() && order(*at) == order(finding)) return *at;
    return *list.insert(at, finding);
}

void Merge(std::vector<LocalFinding>& list, const std::vector<LocalFinding>& others)
{
    for (const LocalFinding& other : others) {
        LocalFinding& here = Placed(list, other);
        for (double LocalFinding::*value :
             {&LocalFinding::combined, &LocalFinding::axial, &LocalFinding::momentMajor, &LocalFinding::momentMinor,
              &LocalFinding::shearMajor, &LocalFinding::shearMinor}) {
            if (Design::IsWorse(other.*value, here.*value)) here.*value = other.*value;
        }
        here.hasTorsion = here.hasTorsion || other.hasTorsion;
    }
}

void Merge(Design::Extremes& extremes, const Design::Extremes& other, bool isFirst)
{
    // An unknown moment stays.
    if (isFirst || (!std::isnan(extremes.greatest) && !(other.greatest <= extremes.greatest))) {
        extremes.greatest = other.greatest;
        extremes.greatestAt = other.greatestAt;
    }
    if (isFirst || (!std::isnan(extremes.least) && !(other.least >= extremes.least))) {
        extremes.least = other.least;
        extremes.leastAt = other.leastAt;
    }
}

// The rules of several cases, each at each place with the case in which it is worst.
class RuleMerger {
public:
    void Add(const std::vector<RuleFinding>& rules, const std::string& name)
    {
        for (const RuleFinding& rule : rules) {
            const auto [at, isNew] = m_places.emplace(KeyOf(rule, rules), m_merged.size());
            if (isNew)
                m_merged.push_back({rule, {name, std::numeric_limits<double>::quiet_NaN()}});
            else if (IsWorseThan(rule, m_merged[at->second].rule))
                m_merged[at->second] = {rule, {name, std::numeric_limits<double>::quiet_NaN()}};
            if (rule.governing && (m_governing == NONE || Design::IsWorse(rule.utilisation, m_most))) {
                m_governing = at->second;
                m_most = rule.utilisation;
            }
        }
    }

    void Finish(CheckedMember& envelope)
    {
        for (std::size_t i = 0; i < m_merged.size(); ++i)
            m_merged[i].rule.governing = i == m_governing;
        const auto isNeedless = [&](const Merged& one) {
            return one.rule.status == Design::CheckStatus::NotApplicable && Applies(one.rule.rule);
        };
        std::vector<Merged> kept;
        std::copy_if(m_merged.begin(), m_merged.end(), std::back_inserter(kept), std::not_fn(isNeedless));
        std::stable_sort(kept.begin(), kept.end(),
                         [](const Merged& a, const Merged& b) { return a.rule.rule < b.rule.rule; });
        envelope.findings.rules.clear();
        envelope.sources.clear();
        for (const Merged& one : kept) {
            envelope.findings.rules.push_back(one.rule);
            envelope.sources.push_back(one.source);
        }
    }

private:
    struct Merged {
        RuleFinding rule;
        RuleSource source;
    };
    using Key = std::tuple<int, std::wstring, double, double, int, std::wstring>;
    static constexpr std::size_t NONE = static_cast<std::size_t>(-1);

    // A rule that is listed at its worst place alone, as those of cross-sections are, is one rule of the member: the place differs from
    // case to case.
    static Key KeyOf(const RuleFinding& rule, const std::vector<RuleFinding>& rules)
    {
        const bool isOfPosition =
            rule.start == rule.end && std::count_if(rules.begin(), rules.end(), [&](const RuleFinding& other) {
                                          return other.rule == rule.rule && other.WasEvaluated() == rule.WasEvaluated();
                                      }) == 1;
        const auto place = [&](double x) {
            return isOfPosition || std::isnan(x) ? std::numeric_limits<double>::lowest() : x;
        };
        const int group = rule.WasEvaluated() ? -1 : static_cast<int>(rule.status);
        // What was not evaluated for two reasons has two.
        const bool isOpen = rule.status == Design::CheckStatus::NotEvaluated;
        return {rule.rule, rule.clause, place(rule.start), place(rule.end), group, isOpen ? rule.reason : L""};
    }

    static bool IsWorseThan(const RuleFinding& a, const RuleFinding& b)
    {
        const bool fails = a.status == Design::CheckStatus::Failed;
        if (fails != (b.status == Design::CheckStatus::Failed)) return fails;
        return Design::IsWorse(a.utilisation, b.utilisation);
    }

    // Whether a rule applies in one of the cases at least.
    bool Applies(int rule) const
    {
        return std::any_of(m_merged.begin(), m_merged.end(), [&](const Merged& one) {
            return one.rule.rule == rule && one.rule.status != Design::CheckStatus::NotApplicable;
        });
    }

    std::map<Key, std::size_t> m_places;
    std::vector<Merged> m_merged;
    std::size_t m_governing = NONE;
    double m_most = 0.0;
};

void Merge(std::vector<Design::Assumption>& list, const std::vector<Design::Assumption>& others)
{
    const auto same = [](double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); };
    for (const Design::Assumption& other : others) {
        const bool isKnown = std::any_of(list.begin(), list.end(), [&](const Design::Assumption& one) {
            return CString(one.name) == CString(other.name) && CString(one.text) == CString(other.text) &&
                   same(one.value, other.value) && same(one.start, other.start) && same(one.end, other.end);
        });
        if (!isKnown) list.push_back(other);
    }
}

} // namespace

std::string DifferenceOf(const CheckedMember& member, const CheckedMember& other)
{
    return Identity(member).DifferenceTo(Identity(other));
}

CheckedMember Envelope(std::vector<CheckedMember> cases)
{
    const auto worst = std::max_element(cases.begin(), cases.end(), [](const CheckedMember& a, const CheckedMember& b) {
        return Design::IsWorse(b.result->UtilOverAll(), a.result->UtilOverAll());
    });
    CMemberResult merged = *cases.front().result;
    CheckedMember all;
    RuleMerger rules;
    all.passed = true;
    for (std::size_t i = 0; i < cases.size(); ++i) {
        if (i > 0) merged += *cases[i].result;
        all.passed = all.passed && cases[i].passed;
        all.failed = all.failed || cases[i].failed;
        all.warnings.insert(all.warnings.end(), cases[i].warnings.begin(), cases[i].warnings.end());
        rules.Add(cases[i].findings.rules, cases[i].caseName.empty() ? cases[i].name : cases[i].caseName);
        Merge(all.findings.assumptions, cases[i].findings.assumptions);
        Merge(all.findings.positions, cases[i].findings.positions);
        Merge(all.momentMajor, cases[i].momentMajor, i == 0);
        Merge(all.momentMinor, cases[i].momentMinor, i == 0);
    }
    CheckedMember envelope = std::move(*worst);
    *envelope.result = std::move(merged);
    envelope.passed = all.passed;
    envelope.failed = all.failed || envelope.result->HasFailed();
    envelope.warnings = std::move(all.warnings);
    envelope.findings.positions = std::move(all.findings.positions);
    envelope.findings.assumptions = std::move(all.findings.assumptions);
    rules.Finish(envelope);
    envelope.momentMajor = all.momentMajor;
    envelope.momentMinor = all.momentMinor;
    return envelope;
}

std::vector<std::string> FlagWords(int flags)
{
    std::vector<std::string> words;
    for (const FlagWord& known : FLAG_WORDS) {
        if (flags & known.flag) words.emplace_back(known.word);
    }
    return words;
}

std::string DescribeRule(const RuleFinding& entry) { return Utf8(entry.name) + " (" + Utf8(entry.clause) + ")"; }

std::string DescribePlace(const RuleFinding& entry)
{
    if (std::isnan(entry.start)) return {};
    if (entry.start == entry.end) return "at " + Rounded(entry.start, 5) + " m";
    return Rounded(entry.start, 5) + " m to " + Rounded(entry.end, 5) + " m";
}

std::string DescribeEntry(const RuleFinding& entry)
{
    const std::string place = DescribePlace(entry);
    if (place.empty()) return DescribeRule(entry);
    return DescribeRule(entry) + (entry.start == entry.end ? " " : ", ") + place;
}

std::string DescribeOpenRule(const Design::MemberFindings& findings)
{
    for (const RuleFinding& rule : findings.rules)
        if (rule.status == Design::CheckStatus::NotEvaluated)
            return "not evaluated: " + DescribeEntry(rule) + (*rule.reason ? ": " + Utf8(rule.reason) : "");
    return {};
}

} // namespace Keltrix::Host

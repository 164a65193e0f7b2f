#include "check/CheckedBeam.h"

#include <algorithm>
#include <cmath>

#include "memberfile/CodelessMember.h"
#include "text/BadInput.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Design::CheckStatus;
using Design::RuleFinding;

// A rejection of what the members have from the beam file is one of the beam file.
BadMember Translated(const Beam& beam, const BadMember& refusal)
{
    Defect defect = refusal.defect;
    defect.field.clear();
    defect.line = 1;
    if (defect.keyword == "SECTION") {
        defect.keyword = "section";
        defect.line = beam.file.sectionLine;
    } else if (defect.keyword == "GRADE") {
        defect.keyword = "grade";
        defect.line = beam.file.gradeLine;
    }
    return {beam.file.name, std::move(defect)};
}

CheckedMember CheckCase(const Beam& beam, std::size_t i, const CodeChoice& choice, bool withText)
{
    try {
        CheckedMember checked = CheckMember(beam.members[i], 0, choice, withText);
        checked.caseName = beam.made.members[i].name;
        return checked;
    } catch (const BadMember& refusal) {
        throw Translated(beam, refusal);
    }
}

// Whether a warning asks for the couple that the beam has: its members are in equilibrium by construction.
bool IsOfCouple(const Beam& beam, const MemberWarning& warning)
{
    const auto& loads = beam.file.beam.loads;
    return warning.code == "moment-jump" && std::any_of(loads.begin(), loads.end(), [](const Statics::Load& load) {
               return load.shape == Statics::LoadShape::Moment;
           });
}

// A warning that several combinations have, in the one that shows it best.
struct SharedWarning {
    MemberWarning warning;
    std::string shown; ///< combination
    std::string last;
    std::size_t combinations = 1;

    bool HasUtilisation() const { return !std::isnan(warning.utilisation); }
    bool IsThatOf(const MemberWarning& other) const
    {
        if (warning.code != other.code) return false;
        return warning.text == other.text ||
               (HasUtilisation() && warning.start == other.start && warning.end == other.end);
    }
    void Add(const MemberWarning& other, const std::string& combination)
    {
        combinations += last != combination;
        last = combination;
        if (!(other.utilisation > warning.utilisation)) return;
        warning = other;
        shown = combination;
    }
    std::string Combinations() const
    {
        if (combinations == 1) return " (in " + shown + ')';
        if (HasUtilisation()) return " (in " + shown + ", the worst of " + std::to_string(combinations) + ')';
        return " (in " + shown + " and " + std::to_string(combinations - 1) + " more)";
    }
};

// Each text once, and each place once where the warnings have a utilisation, with the combinations that have it.
std::vector<MemberWarning> Gathered(const Beam& beam, const std::vector<CheckedMember>& cases)
{
    std::vector<SharedWarning> found;
    for (const CheckedMember& one : cases) {
        for (const MemberWarning& warning : one.warnings) {
            if (IsOfTheBeam(warning.code) || warning.code == "small-forces") continue; // the file has kN
            if (IsOfCouple(beam, warning)) continue;
            const auto at = std::find_if(found.begin(), found.end(),
                                         [&](const SharedWarning& known) { return known.IsThatOf(warning); });
            if (at == found.end())
                found.push_back({warning, one.caseName, one.caseName});
            else
                at->Add(warning, one.caseName);
        }
    }
    std::vector<MemberWarning> warnings;
    warnings.reserve(found.size());
    for (SharedWarning& one : found) {
        one.warning.file = beam.file.name;
        one.warning.line = 1;
        one.warning.text += one.Combinations();
        warnings.push_back(std::move(one.warning));
    }
    return warnings;
}

// --- Deflections as findings ---

std::string Millimetres(double metres) { return Rounded(metres * 1e3, 4) + " mm"; }

RuleFinding FindingOf(const Beam& beam, const Statics::DeflectionCheck& check, int rule, CheckedMember& checked)
{
    const auto kept = [&](const CString& text) { return checked.texts.emplace_back(text).GetString(); };
    const Statics::DeflectionLimit& limit = beam.made.limits[check.limit];
    const Statics::Span& span = beam.made.analysis->Spans()[check.span];
    RuleFinding finding;
    finding.rule = rule;
    finding.topic = Design::Topic::Deflection;
    finding.name = kept(L"deflection, " + limit.name);
    finding.clause = kept(limit.clause);
    finding.start = span.from;
    finding.end = span.to;
    finding.symbol = L"limit";
    finding.quantity = Design::Quantity::Length;
    finding.resistance = check.allowed;
    if (!check.IsEvaluated()) {
        finding.reason = kept(check.reason);
        return finding;
    }
    finding.utilisation = check.utilisation;
    finding.status = check.IsPassed() ? CheckStatus::Passed : CheckStatus::Failed;
    const double ratio = span.IsOverhang() ? limit.overhangRatio : limit.spanRatio;
    finding.reason =
        kept(Wide(Millimetres(std::abs(check.deflection)) + (check.deflection < 0.0 ? " upwards" : "") + " at " +
                  Rounded(check.at, 5) + " m, at most " + Millimetres(check.allowed) + ", L/" + Rounded(ratio, 6)));
    return finding;
}

void AddDeflection(const Beam& beam, const Statics::DeflectionCheck& check, int rule, CheckedMember& checked)
{
    // Limits that nobody asked for are a warning where they cannot be checked.
    if (!check.IsEvaluated() && !beam.file.deflection.isAsked) return;
    RuleSource source;
    if (check.IsEvaluated()) {
        const auto place = static_cast<std::size_t>(check.combination);
        source.combination = PrintableLine(Utf8(beam.made.combinations.list[place].name));
        source.demand = std::abs(check.deflection);
    }
    checked.findings.rules.push_back(FindingOf(beam, check, rule, checked));
    checked.sources.push_back(std::move(source));
    const RuleFinding& finding = checked.findings.rules.back();
    checked.passed = checked.passed && finding.status == CheckStatus::Passed;
    checked.failed = checked.failed || finding.status == CheckStatus::Failed;
    if (finding.WasEvaluated() && Design::IsWorse(finding.utilisation, checked.serviceability))
        checked.serviceability = finding.utilisation;
}

// What a design code says of deflection, that a member file has no loads for it, is not true of a beam.
void DropOutside(CheckedMember& checked)
{
    std::vector<RuleFinding>& rules = checked.findings.rules;
    for (std::size_t i = rules.size(); i-- > 0;) {
        if (rules[i].status != CheckStatus::OutOfScope || rules[i].topic != Design::Topic::Deflection) continue;
        rules.erase(rules.begin() + static_cast<std::ptrdiff_t>(i));
        checked.sources.erase(checked.sources.begin() + static_cast<std::ptrdiff_t>(i));
    }
}

bool IsCompressed(const Beam& beam)
{
    const std::vector<Statics::Combination>& list = beam.made.combinations.list;
    return std::any_of(beam.made.members.begin(), beam.made.members.end(), [&](const BeamMember& member) {
        const Statics::Response response = beam.made.analysis->Of(list[member.combination].terms);
        return std::any_of(response.axial.begin(), response.axial.end(), [](const Statics::AxialPiece& piece) {
            return piece.left < 0.0 || piece.right < 0.0 || piece.At(0.5) < 0.0;
        });
    });
}

// A rule of no design code that is not evaluated: the member does not pass.
void AddOpenRule(const wchar_t* name, const wchar_t* reason, CheckedMember& checked)
{
    RuleFinding finding;
    for (const RuleFinding& known : checked.findings.rules)
        finding.rule = std::max(finding.rule, known.rule + 1);
    finding.name = name;
    finding.clause = L"none";
    finding.reason = reason;
    checked.findings.rules.push_back(finding);
    checked.sources.emplace_back();
    checked.passed = false;
}

// Checks of members know neither springs nor hinges: their points hold rigidly what the restraints say, and the member goes on at a hinge.
// Where that would decide on buckling, nothing is known of it.
void AddUnseenBuckling(const Beam& beam, CheckedMember& checked)
{
    const Statics::Beam& given = beam.file.beam;
    const auto isLateral = [](const Statics::Support& one) { return one.lateral > 0.0 || one.lateralRotation > 0.0; };
    const auto isSprung = [&](const Statics::Support& one) {
        return isLateral(one) || one.vertical > 0.0 || one.rotation > 0.0;
    };
    const bool hasLateral = std::any_of(given.supports.begin(), given.supports.end(), isLateral);
    const bool hasSpring = std::any_of(given.supports.begin(), given.supports.end(), isSprung);
    const bool hasHinge = !given.hinges.empty();
    if (!hasLateral && !((hasSpring || hasHinge) && IsCompressed(beam))) return;
    AddOpenRule(L"buckling of a member with springs or hinges",
                hasHinge && !hasSpring
                    ? L"the checks take the member as continuous at its hinges, which is not safe under compression"
                    : L"the checks take springs as rigid and the member as continuous at hinges, which is not safe for "
                      L"buckling",
                checked);
}

bool IsIdle(const MemberFile& file)
{
    CodelessMember member;
    file.ReadInto(0, member);
    const auto isNothing = [](const Vec3<double>& v) { return v.x == 0.0 && v.y == 0.0 && v.z == 0.0; };
    return std::all_of(member.SubSpans().begin(), member.SubSpans().end(), [&](const Steel::CSubSpan& s) {
        return isNothing(s.GetForcesLeft()) && isNothing(s.GetForcesRight()) && isNothing(s.GetMomentsLeft()) &&
               isNothing(s.GetMomentsRight());
    });
}

// Nobody wants to know whether a beam carries nothing: a load was forgotten.
void AddMissingLoads(const Beam& beam, CheckedMember& checked)
{
    if (checked.Utilisation() != 0.0 || !std::all_of(beam.members.begin(), beam.members.end(), IsIdle)) return;
    AddOpenRule(L"loads", L"no load acts on the beam in any combination, so that nothing was checked", checked);
}

void AddDeflections(const Beam& beam, CheckedMember& checked)
{
    if (beam.made.deflections.empty()) return;
    DropOutside(checked);
    std::vector<RuleFinding>& rules = checked.findings.rules;
    int rule = 0;
    for (const RuleFinding& known : rules)
        rule = std::max(rule, known.rule + 1);
    const double strength = checked.result->UtilOverAll();
    for (const Statics::DeflectionCheck& check : beam.made.deflections)
        AddDeflection(beam, check, rule + static_cast<int>(check.limit), checked);
    if (std::isnan(strength) || !(checked.serviceability > strength)) return;
    for (RuleFinding& finding : rules)
        finding.governing = false;
    const auto worst = std::find_if(rules.begin(), rules.end(), [&](const RuleFinding& finding) {
        return finding.rule >= rule && finding.utilisation == checked.serviceability;
    });
    if (worst != rules.end()) worst->governing = true;
}

} // namespace

bool IsOfTheBeam(const std::string& code) { return code == "beam" || code == "beam-file"; }

Beam ReadBeam(const std::string& name, std::string_view bytes, const ReadingOptions& reading, const CodeChoice& choice)
{
    return MakeBeam(ReadBeamFile(name, bytes, choice.code), reading, choice);
}

// What every member of the beam has to say by itself, too, where it is looked at alone: the warnings of the beam, and deflections that are
// not kept.
static std::vector<Defect> DefectsOfEach(const Beam& beam)
{
    std::vector<Defect> defects;
    for (Defect defect : beam.made.defects) {
        if (defect.severity == Severity::Error) continue;
        defect.member = 0;
        defect.line = 1;
        defects.push_back(std::move(defect));
    }
    const auto& checks = beam.made.deflections;
    if (std::all_of(checks.begin(), checks.end(), [](const auto& check) { return check.IsPassed(); })) return defects;
    Defect defect;
    defect.severity = Severity::Warning;
    defect.line = 1;
    defect.member = 0;
    defect.code = "beam";
    defect.keyword = "deflection";
    defect.advice = "of the beam, in none of its members: fails, or is not evaluated";
    defects.push_back(std::move(defect));
    return defects;
}

Beam MakeBeam(BeamFile file, const ReadingOptions& reading, const CodeChoice& choice)
{
    Beam beam{std::move(file), {}, {}};
    beam.made = MembersOf(beam.file, choice.code, choice.settings);
    if (reading.isStrict)
        for (Defect& defect : beam.made.defects)
            if (defect.severity == Severity::Warning) defect.severity = Severity::Error;
    if (beam.made.HasErrors()) return beam;
    const std::vector<Defect> known = DefectsOfEach(beam);
    for (const BeamMember& member : beam.made.members) {
        MemberFile& added = beam.members.emplace_back(
            SourceText{beam.file.name + " (" + member.name + ')', Wide(member.text)}, reading);
        for (const Defect& defect : known)
            added.Add(defect);
    }
    return beam;
}

std::vector<MemberWarning> WarningsOf(const Beam& beam)
{
    std::vector<MemberWarning> warnings;
    for (const Defect& defect : beam.made.defects)
        if (defect.severity != Severity::Error) warnings.push_back(WarningOf(defect, beam.file.name));
    return warnings;
}

CheckedMember CheckBeam(const Beam& beam, const CodeChoice& choice, bool withText, bool withSteps)
{
    std::vector<CheckedMember> cases;
    for (std::size_t i = 0; i < beam.members.size(); ++i) {
        const std::vector<std::string> errors = beam.members[i].ErrorsOf(0);
        if (!errors.empty()) throw BadInput(errors.front());
        cases.push_back(CheckCase(beam, i, choice, withSteps));
    }
    std::vector<MemberWarning> warnings = WarningsOf(beam);
    const std::vector<MemberWarning> ofMembers = Gathered(beam, cases);
    warnings.insert(warnings.end(), ofMembers.begin(), ofMembers.end());

    CheckedMember checked = Envelope(std::move(cases));
    checked.shownCombination = checked.caseName;
    if (withText) {
        const auto& members = beam.made.members;
        const auto shown = std::find_if(members.begin(), members.end(),
                                        [&](const BeamMember& one) { return one.name == checked.caseName; });
        CheckedMember again = CheckCase(beam, static_cast<std::size_t>(shown - members.begin()), choice, true);
        checked.shown = std::move(again.result);
        checked.findings.parts = std::move(again.findings.parts);
        checked.findings.warnings = std::move(again.findings.warnings);
    }
    checked.file = checked.name = beam.file.name;
    checked.line = 1;
    checked.title = beam.file.title;
    checked.warnings = std::move(warnings);
    checked.fileWarnings = beam.made.defects.size();
    AddUnseenBuckling(beam, checked);
    AddDeflections(beam, checked);
    AddMissingLoads(beam, checked);
    checked.findings.status = checked.failed   ? Design::Status::Failed
                              : checked.passed ? Design::Status::Passed
                                               : Design::Status::NotChecked;
    return checked;
}

} // namespace Keltrix::Host

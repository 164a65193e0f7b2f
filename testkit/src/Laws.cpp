#include "keltrix/testkit/Laws.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <stdexcept>

namespace Keltrix::TestKit {

namespace {

using Design::CheckStatus;
using Design::MemberFindings;
using Design::RuleFinding;
using Design::Status;
using Steel::CMemberResult;

std::string Narrow(const CString& text) { return text.ToUtf8().value_or("?"); }

// What a check came to.
struct Outcome {
    bool passed = false;
    int flags = 0;
    double overall = 0.0; // of the result
    MemberFindings findings;
};

std::string Words(const TestMember& m)
{
    std::ostringstream text;
    text.precision(17);
    for (std::size_t i = 0; i < m.points.size(); ++i) {
        text << "\npoint " << m.points[i].GetPos() << ' ' << Narrow(m.points[i].GetRestraint().UserDescription());
        if (i == m.subSpans.size()) break;
        const CSubSpan& s = m.subSpans[i];
        text << "\n  sub-span " << Narrow(s.GetRestraint().UserDescription());
        for (const Vec3<double>& v : {s.GetForcesLeft(), s.GetForcesRight(), s.GetMomentsLeft(), s.GetMomentsRight()})
            text << ' ' << v.x << ',' << v.y << ',' << v.z;
    }
    return text.str();
}

// By rule, ascending; those of figures beside a rule by themselves.
std::map<std::pair<int, bool>, std::vector<double>> Utilisations(const MemberFindings& findings)
{
    std::map<std::pair<int, bool>, std::vector<double>> all;
    for (const RuleFinding& rule : findings.rules)
        all[{rule.rule, rule.status == CheckStatus::Information}].push_back(rule.utilisation);
    for (auto& [key, list] : all)
        std::sort(list.begin(), list.end());
    return all;
}

std::string NameOf(const MemberFindings& findings, int rule)
{
    for (const RuleFinding& finding : findings.rules)
        if (finding.rule == rule) return Narrow(finding.name);
    return "rule " + std::to_string(rule);
}

bool AreEqual(double a, double b, double tolerance)
{
    if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
    return a == b || std::abs(a - b) <= tolerance * std::max(1.0, std::abs(a));
}

// How two checks of what is one member differ; empty where they do not.
std::string Difference(const Outcome& a, const Outcome& b, double tolerance, double informationTolerance)
{
    std::ostringstream text;
    text.precision(15);
    const auto these = Utilisations(a.findings);
    const auto those = Utilisations(b.findings);
    for (const auto& [key, list] : these) {
        const auto other = those.find(key);
        const std::string name = NameOf(a.findings, key.first) + (key.second ? ", figure beside the rule" : "");
        if (other == those.end()) return name + " is missing";
        if (other->second.size() != list.size())
            return name + ": " + std::to_string(list.size()) + " entries and " + std::to_string(other->second.size());
        for (std::size_t i = 0; i < list.size(); ++i) {
            if (AreEqual(list[i], other->second[i], key.second ? informationTolerance : tolerance)) continue;
            text << name << ": " << list[i] << " and " << other->second[i];
            return text.str();
        }
    }
    if (these.size() != those.size()) return "rules that the other has not";
    // At the limit rounding decides.
    const bool isAtLimit = std::any_of(a.findings.rules.begin(), a.findings.rules.end(), [&](const RuleFinding& rule) {
        return AreEqual(rule.utilisation, 1.0, tolerance);
    });
    if (a.findings.status != b.findings.status && !isAtLimit) return "another status";
    return {};
}

bool IsOfBuckling(const RuleFinding& rule)
{
    const bool isBuckling = rule.topic == Design::Topic::BucklingMajor || rule.topic == Design::Topic::BucklingMinor ||
                            rule.topic == Design::Topic::LateralTorsional;
    return isBuckling && rule.WasEvaluated() && std::isfinite(rule.resistance) && rule.start < rule.end;
}

// Least resistance of a topic among the stretches that were checked at a place.
double ResistanceAt(const MemberFindings& findings, Design::Topic topic, double x)
{
    double least = std::numeric_limits<double>::infinity();
    for (const RuleFinding& rule : findings.rules)
        if (rule.topic == topic && IsOfBuckling(rule) && x > rule.start && x < rule.end)
            least = std::min(least, rule.resistance);
    return least;
}

double Largest(const MemberFindings& findings)
{
    double largest = 0.0;
    for (const RuleFinding& rule : findings.rules)
        if (rule.WasEvaluated() && !(rule.utilisation <= largest)) largest = rule.utilisation;
    return largest;
}

class Trial {
public:
    Trial(Law law, const LawSubject& subject, const LawOptions& options) :
        m_law(law), m_subject(subject), m_options(options), m_random(options.seed), m_section(subject.section)
    {
        CSecComp component = m_section.Component(0);
        component.SetType(subject.type);
        m_section.SetComponent(0, component);
    }

    LawReport Run()
    {
        LawReport report;
        for (; report.tried < m_options.members && report.breach.empty(); ++report.tried) {
            m_member = m_options.make ? m_options.make(m_random) : Loaded();
            m_manner = m_options.manner ? m_options.manner(m_random) : LawManner();
            m_changed.reset();
            const std::string breach = Breach();
            if (breach.empty()) continue;
            report.breach = std::string(LawName(m_law)) + ": " + breach + "\nseed " + std::to_string(m_options.seed) +
                            ", member " + std::to_string(report.tried) + Words(m_member);
            if (m_changed) report.breach += "\nand" + Words(*m_changed);
        }
        return report;
    }

private:
    // Actions of the size that the section can carry, more or less.
    TestMember Loaded()
    {
        constexpr double largestOfRandom = 6e5;
        const double share = std::uniform_real_distribution<double>(0.1, 1.5)(m_random);
        return Scaled(RandomMember(m_random), share * m_subject.momentScale / largestOfRandom);
    }

    std::unique_ptr<Design::CodeMember> NewMember(const TestMember& m) const
    {
        auto coded = m_subject.code->NewMember(m_manner.settings);
        Steel::CSteelMemberGen& member = coded->Member();
        if (!member.SetKeltrixSec(m_section) || !member.SetGrade(m_subject.grade))
            throw std::invalid_argument("the design code does not take the section or the grade");
        member.SetMemberPointVec(m.points);
        member.SetSubSpanVec(m.subSpans);
        if (m_manner.prepare) m_manner.prepare(member);
        return coded;
    }

    Outcome Check(const TestMember& m) const
    {
        CMemberResult result;
        result.EnableText(false);
        return Check(m, &result);
    }
    Outcome Check(const TestMember& m, CMemberResult* result) const
    {
        const auto coded = NewMember(m);
        coded->Member().SetResult(result);
        Outcome outcome;
        outcome.passed = coded->Member().Check();
        outcome.findings = coded->Findings();
        const std::vector<RuleFinding> beside = coded->Information();
        outcome.findings.rules.insert(outcome.findings.rules.end(), beside.begin(), beside.end());
        if (result) outcome.flags = result->GetFlags();
        if (result) outcome.overall = result->UtilOverAll();
        return outcome;
    }

    std::string Breach()
    {
        switch (m_law) {
        case Law::Division:
            return Same(DividedThrice());
        case Law::Mirroring:
            return Same(Mirrored(m_member));
        case Law::MoreLoad:
            return MoreLoad();
        case Law::Units:
            return Units();
        case Law::RestraintAdded:
            return RestraintAdded();
        case Law::LedgerComplete:
            return LedgerComplete();
        case Law::NoPassWithOpenRule:
            return OpenRule(Check(m_member));
        default:
            return NotANumber();
        }
    }

    std::string Same(TestMember other)
    {
        m_changed = std::move(other);
        return Difference(Check(m_member), Check(*m_changed), m_options.tolerance, m_options.informationTolerance);
    }

    TestMember DividedThrice()
    {
        std::uniform_real_distribution<double> share(0.0, 1.0);
        TestMember divided = m_member;
        for (int cuts = 0; cuts < 3; ++cuts) {
            const auto k = static_cast<std::size_t>(share(m_random) * static_cast<double>(divided.subSpans.size()));
            divided = Divided(divided, k, 0.01 + 0.98 * share(m_random));
        }
        return divided;
    }

    // Twice the load: with less, a section that another ratio of forces puts into a better class could gain more than the load.
    std::string MoreLoad()
    {
        m_changed = Scaled(m_member, 2.0);
        const Outcome before = Check(m_member);
        const Outcome after = Check(*m_changed);
        if (after.findings.status == Status::Passed && before.findings.status == Status::Failed)
            return "fails, and passes under twice the load";
        const double u = Largest(before.findings);
        const double v = Largest(after.findings);
        if (std::isnan(v) || v >= u * (1.0 - m_options.tolerance)) return {};
        return "utilisation " + std::to_string(u) + ", and " + std::to_string(v) + " under twice the load";
    }

    std::string Units()
    {
        const Outcome plain = Check(m_member);
        std::string difference = Difference(plain, Check(m_member, nullptr), 0.0, 0.0);
        if (!difference.empty()) return "without a result: " + difference;
        CMemberResult written;
        difference = Difference(plain, Check(m_member, &written), 0.0, 0.0);
        if (!difference.empty()) return "with text: " + difference;
        CUnit other;
        other.SetLength(L"mm", 1e3);
        other.SetForce(L"MN", 1e-6);
        other.SetMoment(L"Nm", 1.0);
        other.SetStress(L"Pa", 1.0);
        CMemberResult inOthers;
        inOthers.SetDesFormat(CDesFormat(other));
        difference = Difference(plain, Check(m_member, &inOthers), 0.0, 0.0);
        return difference.empty() ? difference : "with text in other units: " + difference;
    }

    std::string RestraintAdded()
    {
        constexpr int places = 40;
        m_member = PlainlyHeld(m_random, Divided(m_member, 0, 0.5));
        m_changed = WithOneMore(m_random, m_member);
        const MemberFindings before = Check(m_member).findings;
        const MemberFindings after = Check(*m_changed).findings;
        for (const RuleFinding& rule : before.rules) {
            for (int j = 0; j < places && IsOfBuckling(rule); ++j) {
                const double x = m_member.points.front().GetPos() + (j + 0.517) / places * m_member.Length();
                const double least = ResistanceAt(before, rule.topic, x);
                const double then = ResistanceAt(after, rule.topic, x);
                if (std::isinf(least) || then >= least * (1.0 - m_options.tolerance)) continue;
                return Narrow(rule.name) + " at " + std::to_string(x) + " m has a resistance of " +
                       std::to_string(least) + ", and " + std::to_string(then) + " with a restraint more";
            }
        }
        return {};
    }

    // The first member says which rules there are; one that has another says that the first lacked it.
    std::string LedgerComplete()
    {
        const MemberFindings findings = Check(m_member).findings;
        std::set<int> rules;
        for (const RuleFinding& rule : findings.rules)
            rules.insert(rule.rule);
        if (rules.empty()) return "a check without any finding";
        if (m_rules.empty()) m_rules = rules;
        if (rules == m_rules) return {};
        std::vector<int> lost;
        std::set_symmetric_difference(rules.begin(), rules.end(), m_rules.begin(), m_rules.end(),
                                      std::back_inserter(lost));
        return "rule " + std::to_string(lost.front()) + " (" + NameOf(findings, lost.front()) +
               ") is among the findings of some members and not of others";
    }

    static std::string OpenRule(const Outcome& outcome)
    {
        const MemberFindings& findings = outcome.findings;
        const bool passes = findings.status == Status::Passed;
        bool isOpen = false;
        bool fails = false;
        for (const RuleFinding& rule : findings.rules) {
            isOpen = isOpen || rule.status == CheckStatus::NotEvaluated;
            fails = fails || rule.status == CheckStatus::Failed;
            if (rule.status == CheckStatus::Passed && !(rule.utilisation <= 1.0))
                return Narrow(rule.name) + " passes with a utilisation of " + std::to_string(rule.utilisation);
        }
        const bool isFlagged = (outcome.flags & CMemberResult::NOT_CHECKED) != 0;
        if (passes && isOpen) return "passes with a rule that was not evaluated";
        if (passes && fails) return "passes with a rule that failed";
        if (!fails && findings.status == Status::Failed) return "fails without a rule that failed";
        if (fails && findings.status != Status::Failed) return "a rule failed and the status is another";
        if (passes != outcome.passed) return "the check and the status of the findings do not agree";
        if (isOpen && !isFlagged) return "a rule was not evaluated and the result has no flag NOT_CHECKED";
        if (passes && isFlagged) return "passes with the flag NOT_CHECKED";
        return Governing(findings);
    }

    static std::string Governing(const MemberFindings& findings)
    {
        const auto count = std::count_if(findings.rules.begin(), findings.rules.end(),
                                         [](const RuleFinding& rule) { return rule.governing; });
        const double largest = Largest(findings);
        if (count > 1) return "several findings govern";
        if (count == 0) return largest > 0.0 ? "no finding governs" : "";
        const double governing = findings.Governing()->utilisation;
        return governing >= largest || std::isnan(governing) ? "" : "another utilisation than the largest governs";
    }

    std::string NotANumber()
    {
        static constexpr double values[] = {std::numeric_limits<double>::quiet_NaN(),
                                            std::numeric_limits<double>::infinity(),
                                            -std::numeric_limits<double>::infinity()};
        const auto any = [&](std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(m_random); };
        m_changed = m_member;
        CSubSpan& subSpan = m_changed->subSpans[any(m_changed->subSpans.size())];
        Vec3<double> forces = subSpan.GetForcesLeft();
        Vec3<double> moments = subSpan.GetMomentsRight();
        double* const places[] = {&forces.x, &forces.y, &forces.z, &moments.x, &moments.y, &moments.z};
        *places[any(std::size(places))] = values[any(std::size(values))];
        subSpan.SetForcesAll(forces, subSpan.GetForcesRight());
        subSpan.SetMomentsAll(subSpan.GetMomentsLeft(), moments);
        const Outcome outcome = Check(*m_changed);
        return outcome.passed || outcome.findings.status == Status::Passed ? "passes" : "";
    }

    const Law m_law;
    const LawSubject& m_subject;
    const LawOptions& m_options;
    std::mt19937 m_random;
    CSection m_section;
    TestMember m_member;
    std::optional<TestMember> m_changed;
    LawManner m_manner;
    std::set<int> m_rules; // of the first member
};

} // namespace

const char* LawName(Law law)
{
    static constexpr const char* names[] = {"division of a sub-span",
                                            "mirroring",
                                            "more load",
                                            "units and text",
                                            "a restraint added",
                                            "completeness of the findings",
                                            "no pass with an open rule",
                                            "not-a-number"};
    static_assert(std::size(names) == static_cast<std::size_t>(Law::COUNT));
    return names[static_cast<std::size_t>(law)];
}

std::vector<Law> UsualLaws()
{
    std::vector<Law> laws;
    laws.reserve(static_cast<std::size_t>(Law::COUNT));
    for (int i = 0; i < static_cast<int>(Law::COUNT); ++i)
        if (static_cast<Law>(i) != Law::RestraintAdded) laws.push_back(static_cast<Law>(i));
    return laws;
}

LawReport Try(Law law, const LawSubject& subject, const LawOptions& options)
{
    return Trial(law, subject, options).Run();
}

} // namespace Keltrix::TestKit

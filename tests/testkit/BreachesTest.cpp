// That the test kit finds what breaks its laws: codes that are wrong in one way each.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "keltrix/testkit/Laws.h"

using namespace Keltrix;
using TestKit::Law;

extern "C" const Design::CodeModule* keltrix_design_code();

namespace {

using Spoil = std::function<void(Design::MemberFindings&, Steel::CSteelMemberGen&)>;

// The sample's member with findings that are spoiled after each check.
class SpoiledMember : public Steel::CSteelMemberGen, public Design::CodeMember {
public:
    SpoiledMember(std::unique_ptr<Design::CodeMember> own, const Spoil& spoil) : m_own(std::move(own)), m_spoil(spoil)
    {}
    SpoiledMember* Clone() const override { return nullptr; }
    CString DesOptName(int) override { return L"spoiled"; }
    void PrepareInput() override { Clear(); }
    bool SetKeltrixSec(const CSection& section) override { return m_own->Member().SetKeltrixSec(section); }
    CSection GetKeltrixSec() const override { return m_own->Member().GetKeltrixSec(); }
    bool SetGrade(const CSteelGrade& grade) override { return m_own->Member().SetGrade(grade); }
    CSteelGrade GetGrade() const override { return m_own->Member().GetGrade(); }
    bool CheckLocal(bool) override { return Check(); }
    bool CheckBuckling() override { return true; }
    bool Check() override
    {
        m_own->Member().SetMemberPointVec(MemberPoints());
        m_own->Member().SetSubSpanVec(SubSpans());
        m_own->Member().SetResult(Result());
        m_own->Member().Check();
        m_findings = m_own->Findings();
        m_spoil(m_findings, *this);
        return m_findings.status == Design::Status::Passed;
    }
    Steel::SubspanEffectiveLengthData GetEffectiveLengths() const override { return {{}, {}, {}}; }
    CString GetSectionText(const CDesFormat&) const override { return {}; }
    int SectionClass() const override { return 1; }

    CSteelMemberGen& Member() override { return *this; }
    Design::MemberFindings Findings() const override { return m_findings; }

    using CSteelMemberGen::MemberPoints;
    using CSteelMemberGen::Result;
    using CSteelMemberGen::SubSpans;

private:
    std::unique_ptr<Design::CodeMember> m_own;
    const Spoil& m_spoil;
    Design::MemberFindings m_findings;
};

class SpoiledCode : public Design::DesignCode {
public:
    explicit SpoiledCode(Spoil spoil) : m_spoil(std::move(spoil)) {}
    const Design::CodeDescription& Description() const override { return Own().Description(); }
    std::unique_ptr<Design::CodeMember> NewMember(const Design::CodeSettings& settings) const override
    {
        return std::make_unique<SpoiledMember>(Own().NewMember(settings), m_spoil);
    }
    bool HasGrade(const CString& name) const override { return Own().HasGrade(name); }
    bool IsUserGrade(const CSteelGrade& grade) const override { return Own().IsUserGrade(grade); }
    CString GradeRefusal(const CSteelGrade& grade) const override { return Own().GradeRefusal(grade); }
    CString SectionRefusal(const CSection& section) const override { return Own().SectionRefusal(section); }
    double ElasticModulus(const CSteelGrade& grade) const override { return Own().ElasticModulus(grade); }
    double ShearModulus(const CSteelGrade& grade) const override { return Own().ShearModulus(grade); }
    Design::CapacityTable Capacities(const CSection& section, const CSteelGrade& grade,
                                     const std::vector<double>& lengths,
                                     const Design::CodeSettings& settings) const override
    {
        return Own().Capacities(section, grade, lengths, settings);
    }

private:
    static const DesignCode& Own() { return *keltrix_design_code()->code; }
    const Spoil m_spoil;
};

// Tension alone in two sub-spans, less at the right end.
TestKit::TestMember Tie(std::mt19937& random)
{
    const double force = std::uniform_real_distribution<double>(1e4, 9e4)(random);
    TestKit::TestMember m;
    TestKit::AddPoint(m, 0.0, L"Pinned");
    TestKit::AddPoint(m, 2.0, L"Free");
    TestKit::AddPoint(m, 3.0, L"Pinned");
    for (int k = 0; k < 2; ++k) {
        TestKit::AddSubSpan(m, 0.0, 0.0, 0.0, 0.0);
        m.subSpans.back().SetForcesAll({force - k * 100.0, 0.0, 0.0}, {force - (k + 1) * 100.0, 0.0, 0.0});
    }
    return m;
}

TestKit::LawReport TrySpoiled(Law law, const Spoil& spoil)
{
    const SpoiledCode code(spoil);
    TestKit::LawSubject subject;
    subject.code = &code;
    subject.section = L"CHS 88.9x5";
    subject.grade = CSteelGrade(L"S235", 0.0, 0.0, 0.0, 1.0);
    TestKit::LawOptions options;
    options.make = Tie;
    return TestKit::Try(law, subject, options);
}

void ExpectBreach(Law law, const std::string& words, const Spoil& spoil)
{
    const TestKit::LawReport report = TrySpoiled(law, spoil);
    EXPECT_FALSE(report.Holds()) << TestKit::LawName(law);
    EXPECT_THAT(report.breach, ::testing::HasSubstr(words)) << TestKit::LawName(law);
    EXPECT_THAT(report.breach, ::testing::HasSubstr("seed 1, member")) << TestKit::LawName(law);
}

using Findings = Design::MemberFindings;
using Member = Steel::CSteelMemberGen;

TEST(Breaches, AnUnspoiledCodeHasNone)
{
    for (const Law law : TestKit::UsualLaws()) {
        const TestKit::LawReport report = TrySpoiled(law, [](Findings&, Member&) {});
        EXPECT_TRUE(report.Holds()) << report.breach;
    }
}

TEST(Breaches, ACodeThatCountsSubSpans)
{
    ExpectBreach(Law::Division, "tension: ", [](Findings& f, Member& m) {
        f.rules[0].utilisation *= static_cast<double>(m.GetSubSpanVec().size());
    });
}

TEST(Breaches, ACodeThatLooksAtOneEndAlone)
{
    ExpectBreach(Law::Mirroring, "tension: ", [](Findings& f, Member& m) {
        f.rules[0].utilisation = m.GetSubSpanVec().front().GetForcesLeft().x / 1e6;
    });
}

TEST(Breaches, ACodeInWhichLoadHelps)
{
    ExpectBreach(Law::MoreLoad, "under twice the load",
                 [](Findings& f, Member&) { f.rules[0].utilisation = 0.01 / f.rules[0].utilisation; });
}

TEST(Breaches, ACodeThatReadsItsText)
{
    ExpectBreach(Law::Units, "without a result: ", [](Findings& f, Member& m) {
        if (!static_cast<SpoiledMember&>(m).Result()) f.rules[0].utilisation += 1e-6;
    });
    ExpectBreach(Law::Units, "with text in other units: ", [](Findings& f, Member& m) {
        const auto* const result = static_cast<SpoiledMember&>(m).Result();
        if (result && result->DesFormat() != CDesFormat()) f.rules[0].utilisation *= 1000.0;
    });
}

TEST(Breaches, ACodeThatListsRulesThatApplyAlone)
{
    ExpectBreach(Law::LedgerComplete, "bending, shear and torsion", [](Findings& f, Member&) {
        if (f.rules[0].utilisation > 0.1) f.rules.pop_back();
    });
}

TEST(Breaches, ACodeThatPassesWithAnOpenRule)
{
    ExpectBreach(Law::NoPassWithOpenRule, "passes with a rule that was not evaluated",
                 [](Findings& f, Member&) { f.rules[1].status = Design::CheckStatus::NotEvaluated; });
    ExpectBreach(Law::NoPassWithOpenRule, "passes with a utilisation of",
                 [](Findings& f, Member&) { f.rules[0].utilisation = 1.01; });
    ExpectBreach(Law::NoPassWithOpenRule, "no finding governs",
                 [](Findings& f, Member&) { f.rules[0].governing = false; });
    ExpectBreach(Law::NoPassWithOpenRule, "has no flag NOT_CHECKED", [](Findings& f, Member&) {
        f.rules[1].status = Design::CheckStatus::NotEvaluated;
        f.status = Design::Status::NotChecked;
    });
}

TEST(Breaches, ACodeThatPassesWhatIsNoNumber)
{
    ExpectBreach(Law::NotANumber, "passes", [](Findings& f, Member&) { f.status = Design::Status::Passed; });
}

// A stretch whose resistance depends on how often the member is held.
TEST(Breaches, ACodeInWhichARestraintHarms)
{
    ExpectBreach(Law::RestraintAdded, "with a restraint more", [](Findings& f, Member& m) {
        int held = 0;
        for (const Steel::CMemberPoint& point : m.GetMemberPointVec())
            held += point.GetRestraint().IsRestrained(Steel::CRestraint::FLANGE1_LATERAL, true) ? 1 : 0;
        Design::RuleFinding rule;
        rule.name = L"lateral-torsional buckling";
        rule.topic = Design::Topic::LateralTorsional;
        rule.status = Design::CheckStatus::Passed;
        rule.start = 0.0;
        rule.end = 3.0;
        rule.resistance = 1e5 / (1.0 + held);
        f.rules.push_back(rule);
    });
}

} // namespace

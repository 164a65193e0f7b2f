// The list of national choices, and what stands for what a member cannot say.

#include <gtest/gtest.h>

#include <set>

#include "CheckedMember.h"

using namespace EC3Test;

// Each choice of a description has a clause, a key of its own and a value in both annexes; the UK's are those of its annex.
TEST(NationalChoices, AreCompleteAndNamed)
{
    const auto& described = Code().Description().nationalChoices;
    std::set<std::wstring> keys;
    for (const Design::NationalChoice& choice : described) {
        EXPECT_TRUE(keys.insert(choice.key).second);
        EXPECT_NE(*choice.clause, 0);
        EXPECT_TRUE(!choice.values.empty() || choice.least < choice.most);
    }
    for (const Annex* annex : {&UkAnnex(), &RecommendedAnnex()}) {
        const auto choices = NationalChoices(*annex);
        ASSERT_EQ(choices.size(), described.size());
        for (std::size_t i = 0; i < choices.size(); ++i) {
            if (described[i].values.empty()) {
                EXPECT_GE(choices[i].value, described[i].least) << i;
                EXPECT_LE(choices[i].value, described[i].most) << i;
            } else {
                EXPECT_FALSE(choices[i].word.IsEmpty());
            }
        }
    }
}

// A choice of a file is taken by the member that it is for, and told.
TEST(NationalChoices, OfAFileAreTaken)
{
    const auto& described = Code().Description().nationalChoices;
    Design::CodeSettings settings;
    settings.annexTitle = L"another country";
    settings.nationalChoices.assign(described.size(), std::nan(""));
    for (std::size_t i = 0; i < described.size(); ++i) {
        if (described[i].key == std::wstring(L"rolled-lambda0")) settings.nationalChoices[i] = 0.2;
        if (described[i].key == std::wstring(L"correction")) settings.nationalChoices[i] = 1.0; // no
    }
    const auto beam = Beam(6.0, 20e3, 0.0);
    const auto check = [&](const Design::CodeSettings& with) {
        auto member = Code().NewMember(with);
        EXPECT_TRUE(member->Member().SetKeltrixSec(CSection(L"UB 457x191x67")));
        EXPECT_TRUE(member->Member().SetGrade(CSteelGrade(L"S275", 0.0, 0.0, 0.0, 1.0)));
        member->Member().SetMemberPointVec(beam.points);
        member->Member().SetSubSpanVec(beam.subSpans);
        member->Member().Check();
        return member->Findings();
    };
    const auto value = [](const Design::MemberFindings& findings, const std::wstring& symbol) {
        for (const Design::SpanFinding& s : findings.spans)
            if (s.resistance.symbol == symbol) return s.resistance.value;
        return std::nan("");
    };
    const Design::MemberFindings changed = check(settings);
    const double lambda = value(changed, L"lambdaLT");
    LateralRule rule;
    rule.curve = Curve::C;
    rule.lambda0 = 0.2;
    rule.beta = 0.75;
    EXPECT_NEAR(value(changed, L"chiLT"), ReduceLateral(rule, lambda, 1.0).chi, 1e-12);
    EXPECT_NE(value(check({}), L"chiLT"), value(changed, L"chiLT"));
    int told = 0;
    for (const Design::Assumption& a : changed.assumptions)
        told += a.name == std::wstring(L"national choice of the file");
    EXPECT_EQ(told, 2);
}

// A restraint along the member that holds it in the direction of its web is one that few things can give.
TEST(Member, HeldAlongInTheDirectionOfItsWebIsWarnedOf)
{
    DesignTest::Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddPoint(m, 12.0, L"Pinned");
    AddSubSpan(m, 0.0, 0.0, 20e3, 20e3, L"Pinned");
    m.subSpans[0].SetForcesAll({-2500e3, 0.0, 0.0}, {-2500e3, 0.0, 0.0});
    const Checked c(m, L"UC 254x254x89", L"S355");
    int warned = 0;
    for (const Design::Warning& w : c.findings.warnings)
        warned += w.kind == Design::WarningKind::HeldAlong;
    EXPECT_EQ(warned, 1);
    const Checked free(Column(4.0, 500e3, 20e3, 0.0), L"UC 254x254x89", L"S355");
    for (const Design::Warning& w : free.findings.warnings)
        EXPECT_NE(w.kind, Design::WarningKind::HeldAlong);
}

// UB 406x140x39 in S355 under 655 kN: class 4 alone, class 3 with 1 N·m of My, which is told.
TEST(Member, ATraceOfMomentThatBettersTheClassIsTold)
{
    const auto told = [](const Checked& c) {
        for (const Design::Assumption& a : c.findings.assumptions)
            if (a.name == std::wstring(L"class of the web")) return a.value;
        return 0.0;
    };
    EXPECT_EQ(told(Checked(Column(3.0, 655e3, 1e3, 0.0), L"UB 406x140x39", L"S355")), 4.0);
    EXPECT_EQ(told(Checked(Column(3.0, 655e3, 0.0, 0.0), L"UB 406x140x39", L"S355")), 0.0);
}

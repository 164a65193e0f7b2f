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

// Each word and number that a file may give is what the member's annex says then, and stands in its list.
TEST(NationalChoices, EachCanBeGiven)
{
    const auto& described = Code().Description().nationalChoices;
    const auto given = [&](std::size_t place, double value, std::size_t annex) {
        Design::CodeSettings settings;
        settings.annex = annex;
        settings.nationalChoices.assign(described.size(), std::nan(""));
        settings.nationalChoices[place] = value;
        auto member = Code().NewMember(settings);
        const Annex& taken = dynamic_cast<CSteelMemberEC3&>(member->Member()).NationalAnnex();
        EXPECT_EQ(taken.given, std::vector<std::size_t>{place});
        return NationalChoices(taken).at(place);
    };
    for (const std::size_t annex : {0u, 1u})
        for (std::size_t i = 0; i < described.size(); ++i) {
            const Design::NationalChoice& choice = described[i];
            for (std::size_t word = 0; word < choice.values.size(); ++word)
                EXPECT_EQ(given(i, static_cast<double>(word + 1), annex).word, CString(choice.values[word].name));
            if (choice.values.empty()) {
                EXPECT_EQ(given(i, choice.least, annex).value, choice.least);
                EXPECT_TRUE(given(i, choice.least, annex).word.IsEmpty());
                EXPECT_EQ(given(i, choice.most, annex).value, choice.most);
            }
        }
    // A ratio without a bound reads "any".
    for (const NationalChoice& choice : NationalChoices(RecommendedAnnex())) {
        if (choice.name == std::wstring(L"rolled sections: h/b up to which the second curve holds")) {
            EXPECT_EQ(choice.word, CString(L"any"));
        }
    }
}

// The settings of a program become the options of the member.
TEST(DesignCode, SettingsBecomeOptions)
{
    const auto options = [](std::vector<double> values) {
        Design::CodeSettings settings;
        settings.options = std::move(values);
        auto member = Code().NewMember(settings);
        return dynamic_cast<CSteelMemberEC3&>(member->Member()).Options();
    };
    const DesignOptions none = options({});
    EXPECT_EQ(none.mcr, CriticalMoment::Elastic);
    EXPECT_EQ(none.stiffBearing, 0.0);
    EXPECT_EQ(none.interaction, InteractionMethod::AnnexB);
    EXPECT_EQ(none.lateral, LateralMethod::Curves);
    EXPECT_FALSE(none.simpleColumn);
    const DesignOptions all = options({2.0, 0.05, 2.0, 2.0, 1.0});
    EXPECT_EQ(all.mcr, CriticalMoment::C1);
    EXPECT_EQ(all.stiffBearing, 0.05);
    EXPECT_EQ(all.interaction, InteractionMethod::AnnexA);
    EXPECT_EQ(all.lateral, LateralMethod::Simplified);
    EXPECT_TRUE(all.simpleColumn);
    EXPECT_EQ(options({1.0, 0.0, 3.0, 1.0, 0.0}).interaction, InteractionMethod::General);
}

TEST(DesignCode, RefusesSectionsAndGradesWithTheReason)
{
    CSection formed(L"C 200x80x3x3x0x0");
    CSecComp component = formed.Component(0);
    component.SetType(SEC_FORMED);
    formed.SetComponent(0, component);
    EXPECT_EQ(Code().SectionRefusal(formed), CString(SectionRefusal(formed)));
    EXPECT_TRUE(Code().SectionRefusal(CSection(L"UB 457x191x67")).IsEmpty());
    const auto grade = [](const wchar_t* name, double fy, double E) {
        return CSteelGrade(CString(name), fy, 0.0, E, 1.0);
    };
    EXPECT_TRUE(Code().GradeRefusal(grade(L"S355", 0.0, 0.0)).IsEmpty());
    EXPECT_GE(Code().GradeRefusal(grade(L"User_defined", 500e6, 0.0)).Find(L"above 460 N/mm²"), 0);
    EXPECT_TRUE(Code().HasGrade(L"S420") && !Code().HasGrade(L"S999"));
    EXPECT_TRUE(Code().IsUserGrade(grade(L"User_defined", 300e6, 0.0)) && !Code().IsUserGrade(grade(L"S355", 0, 0)));
    // 3.2.6; with a modulus of its own G follows in the same ratio.
    EXPECT_EQ(Code().ElasticModulus(grade(L"S355", 0.0, 0.0)), 210e9);
    EXPECT_EQ(Code().ElasticModulus(grade(L"User_defined", 300e6, 200e9)), 200e9);
    EXPECT_NEAR(Code().ShearModulus(grade(L"User_defined", 300e6, 200e9)), 81e9 * 200.0 / 210.0, 1.0);
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

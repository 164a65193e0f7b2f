// The standard as a host sees it: through Design::DesignCode alone.

#include <gtest/gtest.h>

#include <set>

#include "Members.h"

using namespace BS5950Test;
using Design::CodeOption;
using Design::CodeSettings;
using Design::OptionKind;
using Design::Subject;

namespace {

const Design::CodeDescription& Description() { return Code().Description(); }

std::size_t OptionNamed(const std::wstring& name)
{
    for (std::size_t i = 0; i < Description().options.size(); ++i)
        if (name == Description().options[i].name) return i;
    throw std::runtime_error("no such option");
}

CodeSettings With(const std::wstring& option, double value)
{
    CodeSettings settings;
    settings.options.assign(Description().options.size(), 0.0);
    settings.options[OptionNamed(option)] = value;
    return settings;
}

// UB 457x191x67, 6 m, 20 kN/m.
const wchar_t* const BEAM = L"TITLE,Beam\n"
                            L"SECTION,UB 457x191x67,ROLLED\n"
                            L"GRADE,S275\n"
                            L"NET_TO_GROSS,1\n"
                            L"ALLOWABLE_PLASTIC/ELASTIC_RATIO,1.2\n"
                            L"SHEAR_LAG_FACTOR,0.7\n"
                            L"EFFECTIVE_LENGTH_OVERRIDES,NO\n"
                            L"HEADINGS\n"
                            L"MEMBERPOINT,1,0,Pinned,0\n"
                            L"MEMBERPOINT,2,6,Pinned,0\n"
                            L"SUBSPAN,1,0,0,-60000,0,0,60000,0,0,0,0,0,0,Free,0\n"
                            L"END\n";

struct Checked {
    std::unique_ptr<Design::CodeMember> member;
    CMemberResult result;
    bool passed = false;
};

std::unique_ptr<Checked> Check(CString text, const CodeSettings& settings = {})
{
    auto checked = std::make_unique<Checked>();
    checked->member = Code().NewMember(settings);
    Steel::CSteelMemberGen& member = checked->member->Member();
    member.SetResult(&checked->result);
    CSteelGrade grade;
    EXPECT_TRUE(member.CSVInputData(text, grade));
    member.SetGrade(grade);
    checked->passed = member.Check();
    return checked;
}

Subject RefusedSubject(const wchar_t* from, const wchar_t* to)
{
    CString text = BEAM;
    EXPECT_GT(text.Replace(from, to), 0) << *CString(from).ToUtf8();
    return Check(text)->member->Findings().refusal.subject;
}

} // namespace

TEST(DesignCode, SaysWhatItIs)
{
    EXPECT_EQ(std::wstring(Description().id), L"bs5950");
    EXPECT_EQ(std::wstring(Description().title), L"BS 5950-1:2000");
    EXPECT_EQ(&Code(), &Code());
    EXPECT_TRUE(Description().annexes.empty()) << "a British Standard has no national annexes";
    std::set<std::wstring> names;
    for (const CodeOption& option : Description().options) {
        EXPECT_TRUE(names.insert(option.name).second) << "twice: " << *CString(option.name).ToUtf8();
        EXPECT_NE(std::wstring(option.meaning), L"");
        EXPECT_EQ(option.kind == OptionKind::Choice, !option.values.empty());
        EXPECT_EQ(option.kind == OptionKind::Length, option.least < option.most);
    }
    for (const Design::Term& grade : Description().grades)
        EXPECT_TRUE(Code().HasGrade(grade.name)) << *CString(grade.name).ToUtf8();
}

TEST(DesignCode, GradesAndSectionsItTakesAreThoseOfItsMembers)
{
    const CSteelGrade user(L"User_defined", 300e6, 430e6, 210e9, 1.0);
    EXPECT_TRUE(Code().HasGrade(L"S355J2H"));
    EXPECT_FALSE(Code().HasGrade(L"S235"));
    EXPECT_TRUE(Code().IsUserGrade(user));
    EXPECT_FALSE(Code().IsUserGrade(GradeNamed(L"S275")));
    EXPECT_EQ(Code().GradeRefusal(user), CString());
    EXPECT_EQ(Code().GradeRefusal(GradeNamed(L"S460")), CString());
    EXPECT_NE(Code().GradeRefusal(GradeNamed(L"S235")), CString());
    EXPECT_NE(Code().GradeRefusal(CSteelGrade(L"User_defined", 0.0, 0.0, 0.0, 1.0)), CString());
    EXPECT_EQ(Code().SectionRefusal(CSection(L"UB 457x191x67")), CString());
    EXPECT_NE(Code().SectionRefusal(CSection(L"nothing")), CString());
    // Clause 3.1.3: 205 kN/mm² and 205/(2 * 1.3) = 78.846 kN/mm².
    EXPECT_EQ(Code().ElasticModulus(GradeNamed(L"S275")), 205e9);
    EXPECT_EQ(Code().ElasticModulus(user), 210e9);
    EXPECT_EQ(Code().ElasticModulus(GradeNamed(L"unheard of")), 205e9);
    EXPECT_NEAR(Code().ShearModulus(GradeNamed(L"S275")), 78.846e9, 1e6);
}

// The findings that every code has against those of the standard's own member.
TEST(DesignCode, FindingsAreThoseOfTheLedger)
{
    const auto checked = Check(BEAM);
    const auto& member = dynamic_cast<const CSteelMemberBS5950&>(*checked->member);
    const Design::MemberFindings findings = member.Findings();
    EXPECT_EQ(findings.status, member.Status());
    EXPECT_EQ(findings.refusal.subject, Subject::None);
    EXPECT_EQ(findings.designStrength.value, 275e6);
    EXPECT_FALSE(findings.momentFactor);
    ASSERT_EQ(findings.rules.size(), member.Checks().Entries().size());
    for (std::size_t i = 0; i < findings.rules.size(); ++i) {
        const Design::RuleFinding& f = findings.rules[i];
        const LedgerEntry& e = member.Checks().Entries()[i];
        EXPECT_EQ(f.rule, static_cast<int>(e.rule));
        EXPECT_EQ(f.name, RuleName(e.rule));
        EXPECT_EQ(f.clause, e.clause);
        EXPECT_EQ(f.status, e.status);
        EXPECT_EQ(f.reason, e.reason);
        EXPECT_EQ(std::isnan(f.start), std::isnan(e.start));
        EXPECT_EQ(std::isnan(f.resistance), std::isnan(e.resistance));
        EXPECT_EQ(f.utilisation, e.utilisation);
        EXPECT_EQ(f.symbol, e.symbol);
        EXPECT_EQ(f.quantity, e.quantity);
        EXPECT_EQ(f.governing, e.governing);
    }
    ASSERT_TRUE(findings.Governing());
    EXPECT_EQ(findings.Governing()->utilisation, checked->result.UtilOverAll());
    EXPECT_EQ(findings.Governing()->resistance, member.Checks().Governing()->resistance);
    EXPECT_EQ(findings.positions.size(), member.Positions().size());
    EXPECT_EQ(findings.assumptions.size(), member.Assumptions().size());
    EXPECT_EQ(findings.spans.size(), member.Spans().size() + member.Interactions().size());
    EXPECT_EQ(findings.resistances.size(), 6u);
}

TEST(DesignCode, ARefusalNamesItsSubject)
{
    EXPECT_EQ(RefusedSubject(L"S275", L"S999"), Subject::Grade);
    EXPECT_EQ(RefusedSubject(L"UB 457x191x67,ROLLED", L"I 500x300x20x160,WELDED"), Subject::Section);
    EXPECT_EQ(RefusedSubject(L"NET_TO_GROSS,1", L"NET_TO_GROSS,0"), Subject::NetToGross);
    EXPECT_EQ(RefusedSubject(L"RATIO,1.2", L"RATIO,0.5"), Subject::PlasticToElastic);
    EXPECT_EQ(RefusedSubject(L"HEADINGS", L"EQUIVALENT_UNIFORM_MOMENT_FACTOR,-1\nHEADINGS"), Subject::MomentFactor);
    EXPECT_EQ(RefusedSubject(L"-60000", L"INF"), Subject::Member);
    EXPECT_EQ(Code().NewMember({})->Findings().refusal.subject, Subject::None) << "nothing was checked";
}

// Each option against the standard's own setter.
TEST(DesignCode, OptionsReachTheMember)
{
    const auto options = [](const std::wstring& name, double value) {
        return dynamic_cast<const CSteelMemberBS5950&>(*Code().NewMember(With(name, value))).Options();
    };
    const auto range = [](const std::wstring& name) {
        const Design::CodeOption& option = Description().options[OptionNamed(name)];
        return std::make_pair(option.least, option.most);
    };
    EXPECT_EQ(options(L"connection", 0.0).connection, Connection::NotGiven);
    EXPECT_EQ(options(L"connection", 1.0).connection, Connection::OneBolt);
    EXPECT_EQ(options(L"connection", 2.0).connection, Connection::TwoBoltsMore);
    EXPECT_EQ(options(L"ltb", 0.0).lateral, LateralMethod::Tables);
    EXPECT_EQ(options(L"ltb", 1.0).lateral, LateralMethod::Tables);
    EXPECT_EQ(options(L"ltb", 2.0).lateral, LateralMethod::Elastic);
    EXPECT_EQ(std::wstring(Description().options[OptionNamed(L"connection")].values[0].name), L"bolt");
    EXPECT_TRUE(options(L"moments-hold-eccentricity", 1.0).momentsHoldEccentricity);
    EXPECT_TRUE(options(L"simple-column", 1.0).simpleColumn);
    EXPECT_FALSE(options(L"exact", 1.0).simpleColumn);
    EXPECT_EQ(options(L"bearing", 0.05).stiffBearing, 0.05);
    // Lengths in m: what would be mm is out of range.
    EXPECT_EQ(range(L"bearing"), std::make_pair(0.001, 1.0));
    EXPECT_EQ(range(L"stiffeners"), std::make_pair(0.01, 100.0));
    EXPECT_EQ(options(L"stiffeners", 1.5).stiffenerSpacing, 1.5);
    EXPECT_EQ(Code().NewMember(With(L"exact", 1.0))->Member().DesOpt(), CSteelMemberBS5950::MORE_EXACT);
    EXPECT_EQ(Code().NewMember({})->Member().DesOpt(), CSteelMemberBS5950::SIMPLIFIED);
}

TEST(DesignCode, TheCapacityTableIsThatOfSectionCapacity)
{
    const CSection section(L"UB 457x191x67");
    const SectionCapacity c(section, GradeNamed(L"S275"));
    const Design::CapacityTable table = Code().Capacities(section, GradeNamed(L"S275"), {2.0, 5.0}, {});
    EXPECT_EQ(table.refusal, CString());
    ASSERT_EQ(table.crossSection.size(), 6u);
    EXPECT_EQ(table.crossSection[4].resistance.value, c.Mcx());
    ASSERT_EQ(table.reduced.size(), 2u);
    EXPECT_EQ(table.reduced[1].values[3], c.Mry(0.3));
    EXPECT_EQ(table.reduced[0].values.size(), table.shares.size());
    ASSERT_EQ(table.buckling.size(), 3u);
    EXPECT_EQ(table.buckling[2].values[1], c.Mb(5.0));
    EXPECT_NE(Code().Capacities(section, GradeNamed(L"S235"), {2.0}, {}).refusal, CString());
}

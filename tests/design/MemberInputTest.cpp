#include "keltrix/design/MemberInput.h"

#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "design/RandomMember.h"

namespace {

using namespace DesignTest;
using Design::Bending;
using Design::MomentDiagram;
using Design::Subject;

constexpr double NAN_VALUE = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();

Member SimpleBeam()
{
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddPoint(m, 3.0, L"Free");
    AddPoint(m, 6.0, L"Pinned");
    AddSubSpan(m, -60e3, 0.0, 0.0, -90e3);
    AddSubSpan(m, 0.0, 60e3, -90e3, 0.0);
    return m;
}

MomentDiagram Diagram(const Member& m, Bending bending) { return {m.points, m.subSpans, bending}; }

TEST(MemberInput, GradesLoseTheirQuality)
{
    for (const wchar_t* name :
         {L"S355", L"s355", L" S355 J2", L"S355jr", L"S 355 K2H", L"S355NL", L"S355QL1", L"S355H"})
        EXPECT_EQ(Design::GradeWithoutQuality(name), CString(L"S355"));
    EXPECT_EQ(Design::GradeWithoutQuality(L"User_defined"), CString(L"USER_DEFINED"));
    for (const wchar_t* name : {L"S355X", L"S3550", L"S355J", L"S355JRJR"})
        EXPECT_TRUE(Design::GradeWithoutQuality(name).IsEmpty());
}

TEST(MemberInput, AUserDefinedGradeIsRefusedForTheValueThatCannotBeUsed)
{
    const auto refusal = [](double py, double pu, double E, double factor) {
        const wchar_t* const text = Design::UserGradeRefusal(CSteelGrade(L"User_defined", py, pu, E, factor));
        return std::wstring(text ? text : L"");
    };
    EXPECT_EQ(refusal(300e6, 0.0, 0.0, 1.0), L"");
    EXPECT_EQ(refusal(300e6, 450e6, 200e9, 1.1), L"");
    for (const double py : {0.0, -1.0, NAN_VALUE, INFINITE})
        EXPECT_EQ(refusal(py, 0.0, 0.0, 1.0), L"the user-defined grade gives no yield strength above zero");
    for (const double wrong : {-1.0, NAN_VALUE, INFINITE}) {
        EXPECT_EQ(refusal(300e6, wrong, 0.0, 1.0),
                  L"the user-defined grade's tensile strength must be finite and not below 0");
        EXPECT_EQ(refusal(300e6, 0.0, wrong, 1.0), L"the user-defined grade's modulus must be finite and not below 0");
        EXPECT_EQ(refusal(300e6, 0.0, 0.0, wrong),
                  L"the user-defined grade's material factor must be finite and above 0");
    }
    EXPECT_EQ(refusal(300e6, 0.0, 0.0, 0.0), L"the user-defined grade's material factor must be finite and above 0");
}

TEST(MemberInput, NumbersThatAreNotFiniteAreRefused)
{
    const auto refusal = [](const Member& m, std::optional<double> factor = std::nullopt) {
        const Design::Refusal r = Design::NumbersRefusal(m.points, m.subSpans, factor);
        return std::pair(r.subject, std::wstring(r.reason));
    };
    const Member sound = SimpleBeam();
    EXPECT_EQ(refusal(sound, 0.9).first, Subject::None);
    for (const double wrong : {NAN_VALUE, INFINITE, -INFINITE}) {
        Member m = sound;
        m.points[1].SetPos(wrong);
        EXPECT_EQ(refusal(m).second, L"the position of a member point is not a finite number");
        m = sound;
        m.subSpans[1].SetMomentsAll({0.0, -90e3, 0.0}, {0.0, 0.0, wrong});
        EXPECT_EQ(refusal(m).second, L"a force or a moment is not a finite number");
        m = sound;
        m.subSpans[0].SetForcesAll({0.0, 0.0, -60e3}, {wrong, 0.0, 0.0});
        EXPECT_EQ(refusal(m).second, L"a force or a moment is not a finite number");
        m = sound;
        CRestraint held = m.subSpans[0].GetRestraint();
        held.SetLoadHeight(wrong);
        m.subSpans[0].SetRestraint(held);
        EXPECT_EQ(refusal(m).second, L"a load height is not a finite number");
    }
    for (const double wrong : {0.0, -1.0, NAN_VALUE, INFINITE})
        EXPECT_EQ(refusal(sound, wrong).first, Subject::MomentFactor) << wrong;
}

// 20 kN/m over two sub-spans is one load; a load that differs by a hundredth is another one.
TEST(MemberInput, NeighboursOfTheSameLoadAreAssumedTogether)
{
    Member m = SimpleBeam();
    std::vector<Design::Assumption> loads;
    Design::AssumeUniformLoads(Diagram(m, Bending::Major), Diagram(m, Bending::Minor), loads);
    ASSERT_EQ(loads.size(), 1U);
    EXPECT_EQ(std::wstring(loads[0].name), L"uniform load, major axis");
    EXPECT_NEAR(loads[0].value, 20e3, 1e-9);
    EXPECT_EQ(loads[0].start, 0.0);
    EXPECT_EQ(loads[0].end, 6.0);
    EXPECT_TRUE(loads[0].isLoad);

    m.subSpans[1].SetForcesAll({0.0, -300.0, 0.0}, {0.0, 300.0, 60.6e3});
    loads.clear();
    Design::AssumeUniformLoads(Diagram(m, Bending::Major), Diagram(m, Bending::Minor), loads);
    ASSERT_EQ(loads.size(), 3U);
    EXPECT_EQ(loads[0].end, 3.0);
    EXPECT_NEAR(loads[1].value, 20.2e3, 1e-9);
    EXPECT_EQ(std::wstring(loads[2].name), L"uniform load, minor axis");
    EXPECT_NEAR(loads[2].value, 200.0, 1e-9);
    EXPECT_EQ(loads[2].start, 3.0);
}

// A point load between two points in one place is no load along a length.
TEST(MemberInput, ASubSpanOfNoLengthHasNoUniformLoad)
{
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddPoint(m, 3.0, L"Free");
    AddPoint(m, 3.0, L"Free");
    AddPoint(m, 6.0, L"Pinned");
    AddSubSpan(m, -50e3, -50e3, 0.0, -150e3);
    AddSubSpan(m, -50e3, 50e3, -150e3, -150e3);
    AddSubSpan(m, 50e3, 50e3, -150e3, 0.0);
    std::vector<Design::Assumption> loads;
    Design::AssumeUniformLoads(Diagram(m, Bending::Major), Diagram(m, Bending::Minor), loads);
    EXPECT_TRUE(loads.empty());
}

TEST(MemberInput, EachUnbalancedSubSpanIsWarnedOfOnceForEachAxis)
{
    Member m = SimpleBeam();
    std::vector<Design::Warning> warnings;
    const auto warn = [&] {
        warnings.clear();
        Design::WarnOfUnbalancedForces(Diagram(m, Bending::Major), Diagram(m, Bending::Minor), CDesFormat(), warnings);
    };
    warn();
    EXPECT_TRUE(warnings.empty());
    m.subSpans[1].SetMomentsAll({0.0, -90e3, 0.0}, {0.0, 50e3, 40e3});
    warn();
    ASSERT_EQ(warnings.size(), 2U);
    for (const Design::Warning& w : warnings) {
        EXPECT_EQ(w.kind, Design::WarningKind::UnbalancedForces);
        EXPECT_EQ(w.subSpan, 1);
        EXPECT_EQ(w.start, 3.0);
        EXPECT_EQ(w.end, 6.0);
    }
    EXPECT_NE(warnings[0].text, warnings[1].text);
}

} // namespace

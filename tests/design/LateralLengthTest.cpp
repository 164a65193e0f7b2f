#include "keltrix/design/LateralLength.h"

#include <cmath>
#include <stdexcept>

#include <gtest/gtest.h>

#include "design/RandomMember.h"

namespace {

using namespace DesignTest;
using Design::Bending;
using Design::Flange;
using Design::LateralLength;
using Design::LateralTable;
using Design::MomentDiagram;
using Design::Stretch;

// The length of the last stretch of a flange, for a section 0.4534 m deep.
LateralLength Last(const Member& m, Flange flange)
{
    const MomentDiagram diagram(m.points, m.subSpans, Bending::Major);
    const std::vector<Stretch> stretches = Design::FindStretches(m.points, m.subSpans, diagram);
    const auto found = std::find_if(stretches.rbegin(), stretches.rend(),
                                    [flange](const Stretch& s) { return s.Has(flange) && !s.held; });
    if (found == stretches.rend()) throw std::runtime_error("the flange has no stretch");
    Steel::CMemberResult result;
    const Steel::CCodeShare rules(&result);
    const bool destabilising = Design::IsDestabilised(*found, m.points, m.subSpans);
    return Design::FindLateralLength(*found, flange, m.points, diagram, 0.4534, destabilising, rules);
}

// 6 m under 20 kN/m.
Member Beam(const wchar_t* end)
{
    Member m;
    AddPoint(m, 0.0, end);
    AddPoint(m, 6.0, end);
    AddSubSpan(m, -60e3, 60e3, 0.0, 0.0);
    return m;
}

// 4 m with 75 kN at the tip, which compresses flange 2, and a moment there.
Member Cantilever(const wchar_t* middle, const wchar_t* tip, double tipMoment = 0.0)
{
    Member m;
    AddPoint(m, 0.0, L"Fixed");
    AddPoint(m, 2.0, middle);
    AddPoint(m, 4.0, tip);
    AddSubSpan(m, -75e3, -75e3, 300e3 + tipMoment, 150e3 + tipMoment);
    AddSubSpan(m, -75e3, -75e3, 150e3 + tipMoment, tipMoment);
    return m;
}

// Table 13, both flanges held against rotation in plan not at all: 1.0 L; destabilising 1.2 L.
TEST(LateralLength, OfABeamIsByTable13)
{
    const LateralLength normal = Last(Beam(L"Pinned"), Flange::First);
    EXPECT_DOUBLE_EQ(normal.LE, 6.0);
    EXPECT_EQ(normal.table, LateralTable::Table13);
    Member above = Beam(L"Pinned");
    Steel::CRestraint restraint = Restraint(L"Pinned");
    restraint.SetLoadHeight(0.1);
    above.points.front().SetRestraint(restraint);
    EXPECT_DOUBLE_EQ(Last(above, Flange::First).LE, 7.2);
}

// Table 13: destabilising where a load turns the section further. Gravity does it from above the shear centre, uplift from below; a support's
// reaction does not, from wherever it acts.
TEST(LateralLength, UpliftFromBelowDestabilises)
{
    const auto lengthAt = [](double load, double height, Flange compressed) {
        Member m = Beam(L"Pinned");
        m.subSpans.clear();
        AddSubSpan(m, -3.0 * load, 3.0 * load, 0.0, 0.0);
        Steel::CRestraint along = m.subSpans.front().GetRestraint();
        along.SetLoadHeight(height);
        m.subSpans.front().SetRestraint(along);
        return Last(m, compressed).LE;
    };
    EXPECT_DOUBLE_EQ(lengthAt(20e3, 0.2, Flange::First), 7.2);
    EXPECT_DOUBLE_EQ(lengthAt(20e3, -0.2, Flange::First), 6.0);
    EXPECT_DOUBLE_EQ(lengthAt(-20e3, -0.2, Flange::Second), 7.2);
    EXPECT_DOUBLE_EQ(lengthAt(-20e3, 0.0, Flange::Second), 6.0);

    Member held = Beam(L"Pinned");
    Steel::CRestraint below = Restraint(L"Pinned");
    below.SetLoadHeight(-0.2);
    held.points.front().SetRestraint(below);
    EXPECT_DOUBLE_EQ(Last(held, Flange::First).LE, 6.0);
}

// 4.3.5.2: a support that holds a flange and is known to hold no torsion has no row.
TEST(LateralLength, OfABeamWithoutTorsionalRestraintIsInfinite)
{
    const LateralLength length = Last(Beam(L"MAJV F1L"), Flange::First);
    EXPECT_TRUE(std::isinf(length.LE));
    EXPECT_TRUE(length.nominalRefused[0] && length.nominalRefused[1]);
}

// Table 14, built in and free: 0.8 L; with a moment at the tip the larger of 1.3 LE = 4.16 m and LE + 0.3 L = 4.4 m (4.3.5.4).
TEST(LateralLength, OfACantileverIsByTable14)
{
    const LateralLength plain = Last(Cantilever(L"Free", L"Free"), Flange::Second);
    EXPECT_DOUBLE_EQ(plain.LE, 3.2);
    EXPECT_EQ(plain.table, LateralTable::Table14);
    EXPECT_EQ(plain.tipMoment, 0.0);
    const LateralLength moment = Last(Cantilever(L"Free", L"Free", 10e3), Flange::Second);
    EXPECT_DOUBLE_EQ(moment.LE, 4.4);
    EXPECT_DOUBLE_EQ(moment.tipMoment, 10e3);
}

// Outer 2 m between sections that hold the flange. The inner one holds both flanges: Table 13 has 1.0*2 = 2 m, Table 14 0.7*2 = 1.4 m.
TEST(LateralLength, BesideATipHeldInTheFourthWayIsTheLongerOfBothTables)
{
    const wchar_t* const both = L"Top and Bottom flange lateral";
    const LateralLength length = Last(Cantilever(both, both, 10e3), Flange::Second);
    EXPECT_DOUBLE_EQ(length.LE, 2.0);
    EXPECT_EQ(length.table, LateralTable::LongerOfBoth);
    EXPECT_EQ(length.tipMoment, 0.0) << "Table 13 does not know it";
}

// Held vertically in the middle only, both ends are tips, and Table 14 has no row: no support holds the other end of either.
TEST(LateralLength, BetweenTwoTipsIsInfinite)
{
    for (const wchar_t* right : {L"Free", L"TR"}) {
        Member m;
        AddPoint(m, 0.0, L"Free");
        AddPoint(m, 2.0, L"MAJV");
        AddPoint(m, 4.0, right);
        AddSubSpan(m, 50e3, 50e3, 0.0, 100e3);
        AddSubSpan(m, -50e3, -50e3, 100e3, 0.0);
        EXPECT_TRUE(std::isinf(Last(m, Flange::First).LE));
        EXPECT_TRUE(std::isinf(Last(Mirrored(m), Flange::First).LE));
    }
}

// Hosts may ask while points and sub-spans do not match: what is there counts.
TEST(LateralLength, DestabilisingLoadsAreSoughtInWhatThereIs)
{
    Member m = Beam(L"Pinned");
    const MomentDiagram diagram(m.points, m.subSpans, Bending::Major);
    const Stretch whole = Design::FindStretches(m.points, m.subSpans, diagram).front();
    Member fewSubSpans = m;
    Steel::CRestraint below = Restraint(L"Free");
    below.SetLoadHeight(-0.2);
    for (const double x : {3.0, 5.0}) {
        AddPoint(fewSubSpans, x, L"Free");
        fewSubSpans.points.back().SetRestraint(below);
    }
    EXPECT_FALSE(Design::IsDestabilised(whole, fewSubSpans.points, fewSubSpans.subSpans));
    Member manySubSpans = m;
    AddSubSpan(manySubSpans, -60e3, 60e3, 0.0, 0.0);
    manySubSpans.subSpans.push_back(manySubSpans.subSpans.front());
    Steel::CRestraint above = Restraint(L"Free");
    above.SetLoadHeight(0.2);
    manySubSpans.subSpans[1].SetRestraint(above);
    EXPECT_FALSE(Design::IsDestabilised(whole, manySubSpans.points, manySubSpans.subSpans));
    manySubSpans.subSpans[0].SetRestraint(above);
    EXPECT_TRUE(Design::IsDestabilised(whole, manySubSpans.points, manySubSpans.subSpans));
}

} // namespace

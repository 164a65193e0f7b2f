// Laws over random members, and members that are anything but ordinary.

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <functional>
#include <limits>
#include <utility>

#include "keltrix/stability/AcrossWeb.h"
#include "stability/RandomBuckling.h"

namespace StabilityTest {

namespace {

constexpr unsigned LAW_SEED = 4711;

// The two factors of the whole member; infinite where nothing buckles, 0 where it is not held.
struct Factors {
    double positive = std::numeric_limits<double>::infinity();
    double negative = std::numeric_limits<double>::infinity();
    double error = 0.0;
};

Factors FactorsOf(const Member& m, const SectionConstants& s, bool continuity = true)
{
    const CriticalLoads loads = Analyse(m, s, continuity);
    EXPECT_TRUE(loads.IsAnswered()) << loads.reason.GetString();
    Factors factors;
    for (const Unit& unit : loads.units) {
        if (unit.outcome == Outcome::NotHeld) return {0.0, 0.0, 0.0};
        if (unit.positive && unit.positive->lambda < factors.positive) factors.positive = unit.positive->lambda;
        if (unit.negative && -unit.negative->lambda < factors.negative) factors.negative = -unit.negative->lambda;
        for (const auto* load : {&unit.positive, &unit.negative})
            if (*load) factors.error = std::max(factors.error, (*load)->error);
    }
    return factors;
}

// Reciprocals are compared, beside the larger of both signs: a factor ten thousand times that of the other sign counts as none.
void ExpectSame(const Factors& a, const Factors& b, double factor = 1.0)
{
    const double rounding = 1.1e-4 * std::max(1.0 / b.positive, 1.0 / b.negative);
    const auto expect = [&](double x, double y) {
        if (y == 0.0)
            EXPECT_EQ(x, 0.0);
        else
            EXPECT_NEAR(1.0 / (factor * x), 1.0 / y, (1e-6 + a.error + b.error) / y + rounding);
    };
    expect(a.positive, b.positive);
    expect(a.negative, b.negative);
}

void ExpectNotLower(const Factors& changed, const Factors& before)
{
    if (before.positive == 0.0) return; // was not held
    ASSERT_GT(changed.positive, 0.0);
    const double rounding = 1.1e-4 * std::max(1.0 / before.positive, 1.0 / before.negative);
    const double tolerance = 1.0 + before.error + changed.error + 1e-6;
    EXPECT_LE(1.0 / changed.positive, tolerance / before.positive + rounding);
    EXPECT_LE(1.0 / changed.negative, tolerance / before.negative + rounding);
}

// Calls `check` with random members.
template <class Check>
void ForRandomMembers(Check check)
{
    Generator generator(LAW_SEED);
    std::mt19937 random(LAW_SEED);
    for (int i = 0; i < NumberOfMembers(200); ++i) {
        const Pair pair = generator.Make();
        SCOPED_TRACE("seed " + std::to_string(LAW_SEED) + ", member " + std::to_string(i) + ": " + pair.text);
        check(pair, random);
    }
}

void AddBits(Member& m, std::size_t point, int bits)
{
    auto r = m.points[point].GetRestraint();
    r.Add(bits);
    m.points[point].SetRestraint(r);
}

// Upside down: heights, flanges and moments change their signs.
Member UpsideDown(const Member& m)
{
    const auto turned = [](const Steel::CRestraint& r) {
        using R = Steel::CRestraint;
        Steel::CRestraint t;
        const auto move = [&](unsigned from, unsigned to) {
            if (r.IsRestrained(from, false)) t.Add(static_cast<int>(to));
        };
        move(R::FLANGE1_LATERAL, R::FLANGE2_LATERAL);
        move(R::FLANGE2_LATERAL, R::FLANGE1_LATERAL);
        move(R::FLANGE1_WARPING, R::FLANGE2_WARPING);
        move(R::FLANGE2_WARPING, R::FLANGE1_WARPING);
        for (const unsigned bit : {R::TORSION, R::MINOR_SHEAR, R::MINOR_ROTATION})
            move(bit, bit);
        t.SetLoadHeight(-r.LoadHeight());
        return t;
    };
    Member u = m;
    for (auto& p : u.points)
        p.SetRestraint(turned(p.GetRestraint()));
    for (auto& s : u.subSpans) {
        s.SetRestraint(turned(s.GetRestraint()));
        const auto flip = [](Vec3<double> v) { return Vec3<double>(v.x, v.y, -v.z); };
        const auto moment = [](Vec3<double> v) { return Vec3<double>(v.x, -v.y, v.z); };
        s.SetForcesAll(flip(s.GetForcesLeft()), flip(s.GetForcesRight()));
        s.SetMomentsAll(moment(s.GetMomentsLeft()), moment(s.GetMomentsRight()));
    }
    return u;
}

} // namespace

TEST(RandomLaws, ARestraintNeverLowersTheFactor)
{
    ForRandomMembers([](const Pair& pair, std::mt19937& random) {
        using R = Steel::CRestraint;
        const Factors before = FactorsOf(pair.member, pair.second.section);
        for (const unsigned bit : {R::FLANGE1_LATERAL, R::FLANGE2_LATERAL, R::TORSION, R::MINOR_SHEAR,
                                   R::MINOR_ROTATION, R::FLANGE1_WARPING}) {
            Member m = pair.member;
            AddBits(m, random() % m.points.size(), static_cast<int>(bit));
            ExpectNotLower(FactorsOf(m, pair.second.section), before);
        }
    });
}

TEST(RandomLaws, StifferIsNeverLower)
{
    ForRandomMembers([](const Pair& pair, std::mt19937&) {
        const Factors before = FactorsOf(pair.member, pair.second.section);
        for (int which = 0; which < 3; ++which) {
            SectionConstants s = pair.second.section;
            // The polar radius, which is of the loads, stays.
            if (which == 0) s.Iy -= 0.2 * s.Iz;
            (which == 0 ? s.Iz : which == 1 ? s.Iw : s.It) *= 1.2;
            ExpectNotLower(FactorsOf(pair.member, s), before);
        }
    });
}

TEST(RandomLaws, MirroredMembersAndMembersUpsideDown)
{
    ForRandomMembers([](const Pair& pair, std::mt19937&) {
        SectionConstants s = pair.second.section;
        const Factors before = FactorsOf(pair.member, s);
        ExpectSame(FactorsOf(DesignTest::Mirrored(pair.member), s), before);
        ExpectSame(FactorsOf(DesignTest::Mirrored(pair.member), s, false), FactorsOf(pair.member, s, false));
        s.flange = {-s.flange[1], -s.flange[0]};
        s.zc = -s.zc;
        s.betaZ = -s.betaZ;
        ExpectSame(FactorsOf(UpsideDown(pair.member), s), before);
    });
}

TEST(RandomLaws, DivisionChangesNothing)
{
    ForRandomMembers([](const Pair& pair, std::mt19937& random) {
        const double share = std::uniform_real_distribution<double>(0.05, 0.95)(random);
        const Member m = DesignTest::Divided(pair.member, random() % pair.member.subSpans.size(), share);
        ExpectSame(FactorsOf(m, pair.second.section), FactorsOf(pair.member, pair.second.section));
        ExpectSame(FactorsOf(m, pair.second.section, false), FactorsOf(pair.member, pair.second.section, false));
    });
}

// A millimetre from an end of a sub-span, too: a division alone is no place for a node, and its short elements would take digits.
TEST(RandomLaws, DivisionCloseToAnEndChangesNothing)
{
    ForRandomMembers([](const Pair& pair, std::mt19937& random) {
        const double share = std::pow(10.0, std::uniform_real_distribution<double>(-5.0, -2.0)(random));
        Member m = DesignTest::Divided(pair.member, random() % pair.member.subSpans.size(), share);
        m = DesignTest::Divided(m, random() % m.subSpans.size(), 1.0 - share);
        const Factors divided = FactorsOf(m, pair.second.section);
        const Factors before = FactorsOf(pair.member, pair.second.section);
        EXPECT_NEAR(divided.error, before.error, 1e-6 + 0.01 * before.error);
        ExpectSame(divided, before);
        ExpectSame(FactorsOf(m, pair.second.section, false), FactorsOf(pair.member, pair.second.section, false));
    });
}

// An overhang of a deep section that turns about its held flange: 1.2 mm in front of its tip and 1.4 mm more.
TEST(Units, ATipDividedWithinMillimetres)
{
    const auto factor = [](const std::vector<double>& places) {
        Member m;
        for (const double x : places)
            AddPoint(m, x, x == places.back() ? L"Pinned" : L"Free");
        for (std::size_t i = 0; i + 1 < places.size(); ++i) {
            Steel::CSubSpan sub;
            sub.Set1Index(static_cast<int>(i) + 1);
            const auto force = [&](double x) { return -1.5e6 - 0.4e6 * x; };
            sub.SetForcesAll({force(places[i]), 0.0, 0.0}, {force(places[i + 1]), 0.0, 0.0});
            sub.SetRestraint(DesignTest::Restraint(i + 2 == places.size() ? L"Pinned" : L"F1L"));
            m.subSpans.push_back(sub);
        }
        return FactorsOf(
            m, *Stability::MakeSectionConstants(CSection(L"I 1200x400x10x25"), 205e9, 205e9 / 2.6, nullptr), false);
    };
    const Factors whole = factor({0.0, 0.9, 4.0});
    EXPECT_LT(whole.error, 1e-4);
    ExpectSame(factor({0.0, 0.0012, 0.0026, 0.23, 0.9, 4.0}), whole);
    ExpectSame(factor({0.0, 0.0012, 0.9, 4.0}), whole);
}

TEST(RandomLaws, ScalingTheForcesScalesTheFactor)
{
    ForRandomMembers([](const Pair& pair, std::mt19937&) {
        const Factors before = FactorsOf(pair.member, pair.second.section);
        ExpectSame(FactorsOf(Scaled(pair.member, 1e-3), pair.second.section), before, 1e-3);
        const Factors turned = FactorsOf(Scaled(pair.member, -1.0), pair.second.section);
        ExpectSame({turned.negative, turned.positive, turned.error}, before);
    });
}

// Each unit is what its own length is by itself.
TEST(Units, AreAnalysedByThemselves)
{
    const SectionConstants s = ConstantsOf(Steel::Test::HostI(0.4, 0.18, 0.0086, 0.0135, 0.021));
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddSpan(m, 5.0, 0.0, 2.0, 0.0, L"Free", L"F12L TR");
    AddSpan(m, 4.0, 2.0, 1.0, 0.0, L"Free", L"Pinned");
    const CriticalLoads loads = Analyse(m, s);
    ASSERT_EQ(loads.units.size(), 2u);
    EXPECT_EQ(loads.units[0].end, 5.0);
    EXPECT_NEAR(loads.units[0].positive->lambda, FactorsOf(Beam(5.0, 0.0, 2.0), s).positive, 1e-9);
    EXPECT_NEAR(loads.units[1].positive->lambda, FactorsOf(Beam(4.0, 2.0, 1.0), s).positive, 1e-9);
    EXPECT_EQ(loads.governing, 0);
    EXPECT_FALSE(loads.units[0].continuous);
    const CriticalLoads whole = Analyse(m, s, true);
    ASSERT_EQ(whole.units.size(), 1u);
    EXPECT_TRUE(whole.units[0].continuous && whole.continuity);
}

// An overhang is held by the span behind it; a fixed root holds it by itself.
TEST(Units, Overhangs)
{
    const SectionConstants s = ConstantsOf(Steel::Test::HostI(0.4, 0.18, 0.0086, 0.0135, 0.021));
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddSpan(m, 6.0, 0.0, -1.0, 0.0, L"Free", L"Pinned");
    AddSpan(m, 2.0, -1.0, 0.0);
    CriticalLoads loads = Analyse(m, s);
    ASSERT_EQ(loads.units.size(), 1u);
    EXPECT_TRUE(loads.units[0].continuous);
    EXPECT_EQ(loads.units[0].outcome, Outcome::Buckles);
    AddBits(m, 1, static_cast<int>(Steel::CRestraint::MINOR_ROTATION));
    loads = Analyse(m, s);
    ASSERT_EQ(loads.units.size(), 2u);
    EXPECT_EQ(loads.units[1].start, 6.0);
    EXPECT_EQ(loads.units[1].outcome, Outcome::Buckles);
}

// A unit from a section that is held on plan alone to a fork: a column that is guided at its end and free to move sideways there, pinned at
// the other: Pz = π² E Iz/(4 L²) (Timoshenko and Gere, 2.2). Without the guide nothing keeps it in its place.
TEST(Units, AnEndHeldOnPlanAlone)
{
    const SectionConstants s = ConstantsOf(Steel::Test::HostI(0.26, 0.256, 0.0103, 0.0173, 0.0127));
    const double L = 6.0;
    const auto column = [&](const wchar_t* end) {
        Member m;
        AddPoint(m, 0.0, end);
        AddSpan(m, L, 0.0, 0.0, 0.0, L"Free", L"Pinned");
        return Compress(m, 1.0);
    };
    const double exact = PI * PI * s.E * s.Iz / (4.0 * L * L);
    ASSERT_LT(exact, 0.5 * s.G * s.It / s.PolarRadius2()) << "flexure, not torsion";
    const CriticalLoads guided = Analyse(column(L"MINR"), s);
    ASSERT_EQ(guided.units.size(), 1u);
    ASSERT_TRUE(guided.units[0].positive);
    EXPECT_NEAR(guided.units[0].positive->lambda, exact, 1e-5 * exact);
    EXPECT_EQ(Analyse(column(L"Free"), s).units[0].outcome, Outcome::NotHeld);
    // Both ends on plan alone and a fork at mid-length: each half by itself is the column above.
    Member both;
    AddPoint(both, 0.0, L"MINR");
    AddSpan(both, L, 0.0, 0.0, 0.0, L"Free", L"Pinned");
    AddSpan(both, L, 0.0, 0.0, 0.0, L"Free", L"MINR");
    const CriticalLoads halves = Analyse(Compress(both, 1.0), s);
    ASSERT_EQ(halves.units.size(), 2u);
    for (const Unit& unit : halves.units)
        EXPECT_NEAR(unit.positive->lambda, exact, 1e-5 * exact);
    // Under moments: both ends on plan alone and no fork at all, and the twist is free.
    Member bent;
    AddPoint(bent, 0.0, L"MINR");
    AddSpan(bent, L, 1.0, 1.0, 0.0, L"Free", L"MINR");
    EXPECT_EQ(Analyse(bent, s).units[0].outcome, Outcome::NotHeld);
}

// Tees have a warping that dies away within a reach of (E Iw/(G It))^0.5, a few centimetres. Held against twist along a part, they twist
// sharply at its edges. Whatever the reach beside the elements, the factor is within its error of that with many more nodes.
TEST(RandomLaws, TeesHeldAgainstTwistAlongAPart)
{
    const SectionConstants s = ConstantsOf(Steel::Test::HostT(0.229, 0.191, 0.0105, 0.0177, 0.0102));
    const double reach = std::sqrt(s.E * s.Iw / (s.G * s.It));
    const auto make = [](double L, double a, double b, int parts, const wchar_t* along) {
        Member m;
        AddPoint(m, 0.0, L"Pinned");
        const double places[] = {0.0, a * L, b * L, L};
        for (int p = 0; p < 3; ++p)
            for (int i = 0; i < parts && places[p + 1] > places[p]; ++i) {
                const double part = (places[p + 1] - places[p]) / parts;
                const bool last = p == 2 && i + 1 == parts;
                AddSpan(m, part, 1.0, 1.0, 0.0, p == 1 ? along : L"Free", last ? L"Pinned" : L"Free");
            }
        return m;
    };
    double worst = 0.0;
    for (const wchar_t* const along : {L"TR", L"F1L"})
        for (const double a : {0.0, 0.3, 0.45})
            for (double share = 0.03; share < 1.2; share *= 1.17) { // of the reach in an eighth of the length
                const double L = 8.0 * reach / share;
                const CriticalLoads coarse = Analyse(make(L, a, 0.6, 1, along), s, true);
                const CriticalLoads fine = Analyse(make(L, a, 0.6, 30, along), s, true);
                for (const auto load : {&Unit::positive, &Unit::negative}) {
                    const auto& c = coarse.units[0].*load;
                    const auto& f = fine.units[0].*load;
                    ASSERT_EQ(c.has_value(), f.has_value());
                    if (!c) continue;
                    // Beyond what rounding leaves of a hundred short elements.
                    const double difference = std::max(0.0, std::abs(c->lambda / f->lambda - 1.0) - 1e-5);
                    EXPECT_LE(difference, c->error + f->error) << share << " " << a;
                    worst = std::max(worst, difference / (c->error + f->error));
                }
            }
    RecordProperty("worst", std::to_string(worst));
}

// The flange that is compressed is held all along: on both sides of the contraflexure nothing is left to buckle but by twist.
TEST(Units, CompressionFlangeHeldAlong)
{
    const SectionConstants s = ConstantsOf(Steel::Test::HostI(0.4, 0.18, 0.0086, 0.0135, 0.021));
    const auto along = [&](const wchar_t* held) {
        Member m;
        AddPoint(m, 0.0, L"Pinned");
        AddSpan(m, 8.0, 1.0, -1.0, 0.0, held, L"Pinned");
        return Analyse(m, s);
    };
    const CriticalLoads compression = along(L"FCL");
    ASSERT_EQ(compression.units.size(), 2u);
    EXPECT_NEAR(compression.units[0].end, 4.0, 1e-9);
    for (const Unit& unit : compression.units)
        EXPECT_FALSE(unit.positive);
    EXPECT_EQ(compression.governing, -1);
    const CriticalLoads tension = along(L"FTL");
    ASSERT_NE(tension.governing, -1);
    EXPECT_TRUE(tension.Governing()->positive);
}

TEST(Unusual, NothingLoaded)
{
    const SectionConstants s = ConstantsOf(Steel::Test::HostI(0.4, 0.18, 0.0086, 0.0135, 0.021));
    const CriticalLoads loads = Analyse(Beam(6.0, 0.0, 0.0), s);
    ASSERT_EQ(loads.units.size(), 1u);
    EXPECT_EQ(loads.units[0].outcome, Outcome::NothingBuckles);
    EXPECT_FALSE(loads.units[0].positive || loads.units[0].negative);
    EXPECT_EQ(loads.Governing(), nullptr);
    Member tied = Beam(6.0, 0.0, 0.0);
    EXPECT_EQ(Analyse(Compress(tied, -1e6), s).units[0].outcome, Outcome::NothingBuckles);
}

TEST(Unusual, NotHeld)
{
    const SectionConstants s = ConstantsOf(Steel::Test::HostI(0.4, 0.18, 0.0086, 0.0135, 0.021));
    struct Case {
        const wchar_t* left;
        const wchar_t* right;
        bool held;
    };
    for (const Case& c : {Case{L"Free", L"Free", false}, Case{L"Pinned", L"Free", false}, Case{L"MINV", L"MINV", false},
                          Case{L"TR MINR", L"TR", false}, Case{L"F1L", L"F2L", false}, Case{L"MINRV TR", L"Free", true},
                          Case{L"Pinned", L"F1L", true}}) {
        Member m;
        AddPoint(m, 0.0, c.left);
        AddSpan(m, 5.0, 1.0, 1.0, 0.0, L"Free", c.right);
        const CriticalLoads loads = Analyse(m, s, true);
        ASSERT_EQ(loads.units.size(), 1u);
        const Unit& unit = loads.units[0];
        EXPECT_EQ(unit.outcome != Outcome::NotHeld, c.held) << c.left << " " << c.right;
        EXPECT_EQ(unit.freeMotion.size(), c.held ? 0u : 2u);
        if (!c.held) {
            EXPECT_EQ(loads.governing, 0);
            EXPECT_FALSE(unit.positive);
        }
    }
    Member swings;
    AddPoint(swings, 0.0, L"Pinned");
    AddSpan(swings, 5.0, 1.0, 1.0);
    const Unit unit = Analyse(swings, s).units[0];
    EXPECT_NEAR(unit.freeMotion[0].v, 0.0, 1e-9);
    EXPECT_NEAR(unit.freeMotion[1].v, 1.0, 1e-9);
    EXPECT_NEAR(unit.freeMotion[1].phi, 0.0, 1e-9);
}

TEST(Unusual, NumbersThatAreNone)
{
    const double nan = std::nan("");
    const double infinite = std::numeric_limits<double>::infinity();
    const SectionConstants s = ConstantsOf(Steel::Test::HostI(0.4, 0.18, 0.0086, 0.0135, 0.021));
    for (const double bad : {nan, infinite, -infinite, 1e308, -1e31}) {
        Member m = Beam(6.0, 1.0, 1.0);
        m.points[1].SetPos(bad);
        EXPECT_FALSE(Analyse(m, s).IsAnswered());
        EXPECT_FALSE(Analyse(Beam(6.0, bad, 1.0), s).IsAnswered());
        EXPECT_FALSE(Analyse(CentrallyLoaded(6.0, bad), s).IsAnswered());
        m = Beam(6.0, 1.0, 1.0);
        EXPECT_FALSE(Analyse(Compress(m, bad), s).IsAnswered());
        SectionConstants t = s;
        t.betaZ = bad;
        EXPECT_EQ(Analyse(Beam(6.0, 1.0, 1.0), t).IsAnswered(), std::isfinite(bad));
    }
    EXPECT_FALSE(Analyse(Member(), s).IsAnswered());
    EXPECT_FALSE(Analyse(Beam(0.0, 1.0, 1.0), s).IsAnswered());
    SectionConstants huge = s;
    huge.E = huge.Iz = 1e300;
    EXPECT_EQ(Analyse(Beam(6.0, 1.0, 1.0), huge).units[0].outcome, Outcome::NotHeld) << "not a number is no answer";
    // Large, small and short, but numbers.
    const double exact = UniformMoment(s, 6.0);
    EXPECT_NEAR(FactorsOf(Beam(6.0, 1e25, 1e25), s).positive, exact / 1e25, 1e-6 * exact / 1e25);
    EXPECT_NEAR(FactorsOf(Beam(6.0, 1e-25, 1e-25), s).positive, exact * 1e25, 1e-6 * exact * 1e25);
    EXPECT_GT(FactorsOf(Beam(1e-6, 1.0, 1.0), s).positive, 1e6);
    Member reference = Beam(6.0, 1.0, 1.0);
    auto r = reference.points[1].GetRestraint();
    r.SetRefLoadHeight(static_cast<Data::LoadPos>(7));
    reference.points[1].SetRestraint(r);
    EXPECT_FALSE(Analyse(reference, s).IsAnswered());
}

// A height from a flange is that from the shear centre, at a point as along a sub-span. A load below the shear centre steadies the beam.
TEST(Units, LoadHeightsAreMeasuredFromWhatTheySay)
{
    const SectionConstants doubly = ConstantsOf(Steel::Test::HostI(0.4, 0.18, 0.0086, 0.0135, 0.021));
    const SectionConstants singly = ConstantsOf(CSection(CString(L"GI 600x300x200x12x20x15")));
    for (const SectionConstants& s : {doubly, singly}) {
        for (const bool atPoint : {false, true}) {
            const auto factor = [&](Data::LoadPos reference, double height) {
                Member m = atPoint ? CentrallyLoaded(6.0) : UniformlyLoaded(6.0);
                auto restraint = atPoint ? m.points[1].GetRestraint() : m.subSpans[0].GetRestraint();
                restraint.SetRefLoadHeight(reference);
                restraint.SetLoadHeight(height);
                if (atPoint)
                    m.points[1].SetRestraint(restraint);
                else
                    m.subSpans[0].SetRestraint(restraint);
                return FactorsOf(m, s).positive;
            };
            const double top = factor(Data::TOP_FLANGE, 0.03);
            const double bottom = factor(Data::BOT_FLANGE, -0.02);
            EXPECT_NEAR(top, factor(Data::SHR_CENTRE, s.flange[0] + 0.03), 1e-9 * top);
            EXPECT_NEAR(bottom, factor(Data::SHR_CENTRE, s.flange[1] - 0.02), 1e-9 * bottom);
            EXPECT_GT(bottom, factor(Data::SHR_CENTRE, 0.0));
            EXPECT_LT(top, factor(Data::SHR_CENTRE, 0.0));
        }
    }
}

// Each input that is no member, with what is said of it.
TEST(Unusual, WhatIsNoMemberIsRefusedWithItsReason)
{
    using Keltrix::Steel::CSubSpan;
    const SectionConstants sound = ConstantsOf(Steel::Test::HostI(0.4, 0.18, 0.0086, 0.0135, 0.021));
    const auto reason = [](const Member& m, const SectionConstants& s) {
        const CriticalLoads loads = Analyse(m, s);
        EXPECT_TRUE(loads.units.empty());
        EXPECT_EQ(loads.governing, -1);
        return loads.reason;
    };
    const Member beam = Beam(6.0, 1.0, 1.0);
    for (double SectionConstants::*const value :
         {&SectionConstants::E, &SectionConstants::G, &SectionConstants::A, &SectionConstants::Iy,
          &SectionConstants::Iz, &SectionConstants::It}) {
        for (const double bad : {0.0, -1.0, std::numeric_limits<double>::infinity()}) {
            SectionConstants s = sound;
            s.*value = bad;
            EXPECT_EQ(reason(beam, s),
                      CString(L"moduli, area and second moments of the section must be finite and above zero"));
        }
    }
    SectionConstants s = sound;
    s.Iw = -1e-9;
    EXPECT_EQ(reason(beam, s), CString(L"the warping constant is below zero"));
    s = sound;
    std::swap(s.flange[0], s.flange[1]);
    EXPECT_EQ(reason(beam, s), CString(L"flange 1 must lie above flange 2"));

    const auto spoilt = [&](const std::function<void(CSubSpan&)>& spoil) {
        Member m = beam;
        spoil(m.subSpans[0]);
        return reason(m, sound);
    };
    const CString force = L"a force or moment of sub-span 1 is not a number below 1e30";
    EXPECT_EQ(spoilt([](CSubSpan& sub) { sub.SetForcesAll({0.0, 1e31, 0.0}, {0.0, 0.0, 0.0}); }), force);
    EXPECT_EQ(spoilt([](CSubSpan& sub) { sub.SetForcesAll({0.0, 0.0, 0.0}, {1e31, 0.0, 0.0}); }), force);
    EXPECT_EQ(spoilt([](CSubSpan& sub) { sub.SetMomentsAll({0.0, 0.0, 1e31}, {0.0, 0.0, 0.0}); }), force);
    EXPECT_EQ(spoilt([](CSubSpan& sub) { sub.SetMomentsAll({0.0, 0.0, 0.0}, {1e31, 0.0, 0.0}); }), force);
    EXPECT_EQ(spoilt([](CSubSpan& sub) {
                  auto restraint = sub.GetRestraint();
                  restraint.SetLoadHeight(std::nan(""));
                  sub.SetRestraint(restraint);
              }),
              CString(L"the load height of sub-span 1 is not a number below 1e30"));
    EXPECT_EQ(spoilt([](CSubSpan& sub) {
                  auto restraint = sub.GetRestraint();
                  restraint.SetRefLoadHeight(static_cast<Data::LoadPos>(7));
                  sub.SetRestraint(restraint);
              }),
              CString(L"what the load height of sub-span 1 is measured from is not known"));

    Member turned = beam;
    turned.points[0].SetPos(7.0);
    EXPECT_EQ(reason(turned, sound), CString(L"the position of point 2 lies before that of the point before it"));
    Member dot = beam;
    dot.points[1].SetPos(dot.points[0].GetPos());
    EXPECT_EQ(reason(dot, sound), CString(L"the member has no length"));
    Member more = beam;
    more.subSpans.push_back(more.subSpans.front());
    const CString needs = L"a member needs two points or more, and a sub-span between each two neighbouring ones";
    EXPECT_EQ(reason(more, sound), needs);
    EXPECT_EQ(FindCriticalLoadsAcross(more.points, more.subSpans, sound, 0.18).reason, needs);
    EXPECT_EQ(FindCriticalLoadsAcross({}, {}, sound, 0.18).reason, needs);
    EXPECT_EQ(FindCriticalLoads(beam.points, beam.subSpans, Design::MomentDiagram(), sound).reason,
              CString(L"the moment diagram is not that of the member"));
}

TEST(Unusual, ChannelsUnderAxialForceAreRefused)
{
    const SectionConstants s = ConstantsOf(Steel::Test::HostChannel(0.3, 0.1, 0.009, 0.0165, 0.015));
    Member m = Beam(4.0, 1e4, 1e4);
    EXPECT_TRUE(Analyse(m, s).IsAnswered());
    EXPECT_FALSE(Analyse(Compress(m, 1e4), s).IsAnswered());
}

// A step of the shear over a sub-span without length is a point load at the height of that sub-span.
TEST(Unusual, ShearSteps)
{
    const SectionConstants s = ConstantsOf(Steel::Test::HostI(0.4, 0.18, 0.0086, 0.0135, 0.021));
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddSpan(m, 3.0, 0.0, 1.0);
    const double shear = m.subSpans[0].GetForcesRight().z;
    AddSubSpan(m, shear, -shear, -1.0, -1.0);
    AddPoint(m, 3.0, L"Free");
    AddSpan(m, 3.0, 1.0, 0.0, 0.0, L"Free", L"Pinned");
    SetHeightAlong(m, 1, 0.2);
    ExpectSame(FactorsOf(m, s), FactorsOf(CentrallyLoaded(6.0, 0.2), s));
    // Shorter than a billionth of the length it has none, either.
    for (std::size_t i : {2u, 3u})
        m.points[i].SetPos(m.points[i].GetPos() + 1e-9);
    ExpectSame(FactorsOf(m, s), FactorsOf(CentrallyLoaded(6.0, 0.2), s));
}

// Points that lie close together, down to a hundred-millionth of the length, do not spoil the digits.
TEST(Unusual, PointsCloseTogether)
{
    const SectionConstants s = ConstantsOf(Steel::Test::HostI(0.4, 0.18, 0.0086, 0.0135, 0.021));
    const double exact = UniformMoment(s, 6.0);
    for (const double gap : {1e-8, 1e-6, 1e-4, 1e-3, 1e-2}) {
        for (const double share : {0.3, 1.0}) {
            Member m = DesignTest::Divided(Beam(6.0, 1.0, 1.0), 0, share - gap);
            if (share < 1.0) m = DesignTest::Divided(m, 1, gap / (1.0 - share + gap));
            EXPECT_NEAR(FactorsOf(m, s).positive, exact, 2e-6 * exact) << gap << " " << share;
            // A second restraint beside the end one can only help.
            AddBits(m, 1, static_cast<int>(Steel::CRestraint::MINOR_SHEAR));
            EXPECT_GT(FactorsOf(m, s).positive, exact * (1.0 - 2e-6)) << gap << " " << share;
        }
    }
}

// Forces that do not balance: every reading of the moments counts, the worst of them is told.
TEST(Unusual, UnbalancedMoments)
{
    const SectionConstants s = ConstantsOf(Steel::Test::HostI(0.4, 0.18, 0.0086, 0.0135, 0.021));
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddSubSpan(m, 0.0, 0.0, -1e3, -2e3);
    AddPoint(m, 6.0, L"Pinned");
    const CriticalLoads loads = Analyse(m, s);
    ASSERT_EQ(loads.units.size(), 1u);
    EXPECT_FALSE(loads.units[0].balanced);
    const double worst = UniformMoment(s, 6.0) / 2e3;
    EXPECT_NEAR(loads.units[0].positive->lambda, worst, 1e-6 * worst);
}

// A member of 20,000 sub-spans is answered, and is what it is in one piece.
TEST(Hostile, TwentyThousandSubSpans)
{
    const SectionConstants s = ConstantsOf(Steel::Test::HostI(0.4, 0.18, 0.0086, 0.0135, 0.021));
    constexpr int COUNT = 20000;
    const auto build = [&](auto held) {
        Member m;
        AddPoint(m, 0.0, L"Pinned");
        for (int i = 0; i < COUNT; ++i) {
            const double a = 8.0 * i / COUNT;
            const double b = 8.0 * (i + 1) / COUNT;
            const auto [along, point] = held(i);
            AddSpan(m, b - a, a * (8.0 - a), b * (8.0 - b), 2.0, along, i + 1 == COUNT ? L"Pinned" : point);
        }
        return m;
    };
    using Texts = std::pair<const wchar_t*, const wchar_t*>;
    const auto start = std::chrono::steady_clock::now();
    const Factors plain = FactorsOf(build([](int) { return Texts{L"Free", L"Free"}; }), s);
    const Factors one = FactorsOf(UniformlyLoaded(8.0), s);
    EXPECT_NEAR(plain.positive * 16.0, one.positive, 1e-4 * one.positive);
    const auto none = std::numeric_limits<double>::infinity();
    const auto ask = [&](auto held) {
        const CriticalLoads loads = Analyse(build(held), s, true);
        EXPECT_TRUE(loads.IsAnswered());
        const Unit* const unit = loads.Governing();
        return unit && unit->positive ? unit->positive->lambda : none;
    };
    EXPECT_EQ(ask([](int) { return Texts{L"F1L", L"Free"}; }), none);
    EXPECT_GT(ask([](int) { return Texts{L"Free", L"F1L"}; }), plain.positive);
    EXPECT_GE(ask([](int i) { return Texts{i % 2 ? L"F1W" : L"F2W", L"Free"}; }), plain.positive * 0.999);
    EXPECT_GE(ask([](int i) { return Texts{L"F1W", i % 3 ? L"Free" : L"MINR"}; }), plain.positive * 0.999);
    EXPECT_GE(ask([](int i) { return Texts{i % 2 ? L"F1L" : L"Free", L"TR"}; }), plain.positive * 0.999);
    (void)Analyse(build([](int) { return Texts{L"Free", L"Pinned"}; }), s);
    std::printf("seven members of 20,000 sub-spans: %.2f s\n",
                std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
}

} // namespace StabilityTest

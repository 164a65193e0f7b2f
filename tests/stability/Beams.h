#pragma once

// Members for the tests of critical loads. Moments are given sagging above zero, as textbooks have them; the library's
// major-axis moment is below zero where a beam sags.

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numbers>
#include <vector>

#include "design/RandomMember.h"
#include "keltrix/stability/CriticalLoad.h"
#include "keltrix/steel/SectionShapes.h"
#include "support/ConcreteSections.h"

namespace StabilityTest {

using namespace Keltrix;
using DesignTest::AddPoint;
using DesignTest::AddSubSpan;
using DesignTest::Member;
using DesignTest::Restraint;
using Stability::CriticalLoads;
using Stability::Options;
using Stability::Outcome;
using Stability::SectionConstants;
using Stability::Unit;

inline constexpr double PI = std::numbers::pi;

inline Design::MomentDiagram MajorOf(const Member& m) { return {m.points, m.subSpans, Design::Bending::Major}; }

inline CriticalLoads Analyse(const Member& m, const SectionConstants& s, bool continuity = false)
{
    Options options;
    options.continuity = continuity;
    return FindCriticalLoads(m.points, m.subSpans, MajorOf(m), s, options);
}

/// Adds a sub-span by its sagging end moments and a uniform load downwards, N/m; the shears are those of equilibrium.
inline void AddSpan(Member& m, double length, double left, double right, double load = 0.0,
                    const wchar_t* along = L"Free", const wchar_t* end = L"Free")
{
    // Myy = -M and dMyy/dx = Fz.
    const double mean = -(right - left) / length;
    AddSubSpan(m, mean - 0.5 * load * length, mean + 0.5 * load * length, -left, -right, along);
    AddPoint(m, m.points.back().GetPos() + length, end);
}

/// Constant compression (above zero) in every sub-span.
inline Member& Compress(Member& m, double force)
{
    for (auto& s : m.subSpans) {
        auto left = s.GetForcesLeft();
        auto right = s.GetForcesRight();
        left.x = right.x = -force;
        s.SetForcesAll(left, right);
    }
    return m;
}

/// Load height of a point, m above the shear centre.
inline void SetHeight(Member& m, std::size_t point, double height)
{
    auto r = m.points[point].GetRestraint();
    r.SetLoadHeight(height);
    m.points[point].SetRestraint(r);
}
inline void SetHeightAlong(Member& m, std::size_t subSpan, double height)
{
    auto r = m.subSpans[subSpan].GetRestraint();
    r.SetLoadHeight(height);
    m.subSpans[subSpan].SetRestraint(r);
}

/// One span between forks, bent by end moments.
inline Member Beam(double length, double left, double right, const wchar_t* ends = L"Pinned")
{
    Member m;
    AddPoint(m, 0.0, ends);
    AddSpan(m, length, left, right, 0.0, L"Free", ends);
    return m;
}

/// One span between forks with a uniform load that makes the moment 1 N·m at mid-span.
inline Member UniformlyLoaded(double length, double height = 0.0, const wchar_t* ends = L"Pinned",
                              const wchar_t* along = L"Free")
{
    Member m;
    AddPoint(m, 0.0, ends);
    AddSpan(m, length, 0.0, 0.0, 8.0 / (length * length), along, ends);
    SetHeightAlong(m, 0, height);
    return m;
}

/// One span between forks with a load at the middle that makes the moment 1 N·m there.
inline Member CentrallyLoaded(double length, double height = 0.0, const wchar_t* ends = L"Pinned")
{
    Member m;
    AddPoint(m, 0.0, ends);
    AddSpan(m, 0.5 * length, 0.0, 1.0);
    AddSpan(m, 0.5 * length, 1.0, 0.0, 0.0, L"Free", ends);
    SetHeight(m, 1, height);
    return m;
}

inline SectionConstants ConstantsOf(const CSection& section, double E = 210e9, double G = 210e9 / 2.6)
{
    CString reason;
    return Stability::MakeSectionConstants(section, E, G, &reason).value();
}

/// I sections of both symmetries, a tee, a channel and a box.
inline std::vector<CSection> SectionsOfEveryKind()
{
    return {Steel::Test::HostI(0.4, 0.18, 0.0086, 0.0135, 0.021),
            Steel::Test::HostI(0.26, 0.256, 0.0103, 0.0173, 0.0127),
            Steel::Test::HostGeneralI(0.6, 0.3, 0.2, 0.01, 0.02, 0.015, 0.0),
            Steel::Test::HostGeneralI(0.5, 0.12, 0.28, 0.008, 0.012, 0.02, 0.0),
            Steel::Test::HostT(0.229, 0.191, 0.0105, 0.0177, 0.0102),
            Steel::Test::HostChannel(0.3, 0.1, 0.009, 0.0165, 0.015),
            Steel::Test::HostSection(CSecGeom::SHAPE_RHS, SEC_ROLLED,
                                     {{CSecGeom::DEPTH, 0.3},
                                      {CSecGeom::WIDTH, 0.1},
                                      {CSecGeom::WEB_THICKNESS, 0.008},
                                      {CSecGeom::FLANGE_THICKNESS, 0.008}})};
}

/// UB 457x191x82 with rounded constants, for calculations by hand.
inline SectionConstants RoundedUB()
{
    SectionConstants s;
    s.E = 210e9;
    s.G = 81e9;
    s.A = 10400e-6;
    s.Iy = 371e-6;
    s.Iz = 18.7e-6;
    s.It = 692e-9;
    s.Iw = 0.922e-6;
    s.flange = {0.222, -0.222};
    return s;
}

/// Two spans of 9.75 m, 10 kN at the middle of each: support moment 3 P L/16, span moment 5 P L/32.
inline Member TwoSpans()
{
    const double PL = 10e3 * 9.75;
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddSpan(m, 4.875, 0.0, 5.0 / 32.0 * PL);
    AddSpan(m, 4.875, 5.0 / 32.0 * PL, -3.0 / 16.0 * PL, 0.0, L"Free", L"Pinned");
    AddSpan(m, 4.875, -3.0 / 16.0 * PL, 5.0 / 32.0 * PL);
    AddSpan(m, 4.875, 5.0 / 32.0 * PL, 0.0, 0.0, L"Free", L"Pinned");
    return m;
}

/// 18 m between forks, 3 kN/m at the shear centre, something held at a share of the length.
inline Member HeldAt(double share, const wchar_t* held)
{
    const double L = 18.0;
    const double q = 3e3;
    const double a = share * L;
    const double moment = 0.5 * q * a * (L - a);
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddSpan(m, a, 0.0, moment, q, L"Free", held);
    AddSpan(m, L - a, moment, 0.0, q, L"Free", L"Pinned");
    return m;
}

/// Mcr of a span between forks under uniform moment that sags (sign 1) or hogs (sign -1): Trahair, Flexural-Torsional Buckling
/// of Structures (1993), chapter 7.
inline double UniformMoment(const SectionConstants& s, double length, double sign = 1.0)
{
    const double Pz = PI * PI * s.E * s.Iz / (length * length);
    const double torsion = s.G * s.It + PI * PI * s.E * s.Iw / (length * length);
    const double shift = -sign * s.betaZ * Pz / 2.0;
    return shift + std::sqrt(shift * shift + Pz * torsion);
}

/// The least factor of the loads as they act. There is one.
inline double Factor(const Member& m, const SectionConstants& s, bool continuity)
{
    const CriticalLoads loads = Analyse(m, s, continuity);
    EXPECT_TRUE(loads.IsAnswered() && loads.Governing() && loads.Governing()->positive);
    return loads.Governing()->positive->lambda;
}

} // namespace StabilityTest

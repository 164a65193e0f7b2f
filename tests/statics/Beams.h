#pragma once

// Beams for the tests of statics.

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "keltrix/statics/Analysis.h"

namespace StaticsTest {

using namespace Keltrix;
using namespace Keltrix::Statics;
using Steel::CRestraint;

inline constexpr double EI = 210e9 * 1e-4;

/// A beam with EI = 21 MN·m², one case (index 0) and no self weight.
inline Beam Plain(double length)
{
    Beam beam;
    beam.length = length;
    beam.section.E = 210e9;
    beam.section.Iy = 1e-4;
    beam.section.Iz = 1e-5;
    beam.section.mass = 0.0;
    beam.selfWeight = false;
    beam.cases.resize(1);
    beam.cases[0].name = L"Loads";
    return beam;
}

inline Beam Continuous(const std::vector<double>& spans)
{
    Beam beam = Plain(1.0);
    SetSpans(beam, spans);
    return beam;
}

inline Support Held(double at, unsigned int bits)
{
    Support s;
    s.at = at;
    s.holds = CRestraint(static_cast<int>(bits), Steel::SHR_CENTRE, 0.0);
    return s;
}
inline constexpr unsigned int ENCASTRE = CRestraint::ENCASTRE;
inline constexpr unsigned int PINNED = CRestraint::PINNED;

/// One span with its ends held as given; a free end is held by 0.
inline Beam Single(double length, unsigned int left, unsigned int right)
{
    Beam beam = Plain(length);
    if (left) beam.supports.push_back(Held(0.0, left));
    if (right) beam.supports.push_back(Held(length, right));
    return beam;
}

inline Response Solved(const Beam& beam, std::size_t caseIndex = 0)
{
    const Analysis analysis(beam);
    EXPECT_TRUE(analysis.IsAnswered()) << *analysis.Reason().ToUtf8();
    return analysis.IsAnswered() ? analysis.OfCase(caseIndex) : Response();
}

/// Within a share of the expected value (of 1 where that is 0).
inline void ExpectClose(double actual, double expected, double relative = 1e-12, const char* what = "")
{
    EXPECT_NEAR(actual, expected, relative * (expected == 0.0 ? 1.0 : std::abs(expected))) << what;
}

} // namespace StaticsTest

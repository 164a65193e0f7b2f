// Which flange is in compression over a span, beside the reversal that the span's own restraint reports: the same
// tolerance, compared strictly here and inclusively there.

#include "support/ConcreteMember.h"
#include "support/ResultRecord.h"

#include <gtest/gtest.h>

using namespace Keltrix;
using namespace Keltrix::Steel;
using namespace Keltrix::Steel::Test;

namespace {

/// A member with the given major-axis moments (left, right) of its sub-spans, and the span over some of them.
class Moments {
public:
    explicit Moments(const std::vector<std::pair<double, double>>& moments)
    {
        for (std::size_t i = 0; i < moments.size(); ++i)
            m_subSpans.push_back(SubSpan(static_cast<int>(i) + 1, moments[i].first, moments[i].second));
        for (std::size_t i = 0; i <= moments.size(); ++i)
            m_points.push_back(Point(static_cast<int>(i) + 1, static_cast<double>(i)));
    }
    CSpan Whole() const { return Part(0, static_cast<int>(m_subSpans.size())); }
    CSpan Part(int left, int right) const { return CSpan(&m_points, &m_subSpans, left, right); }

private:
    std::vector<CMemberPoint> m_points;
    std::vector<CSubSpan> m_subSpans;
};

int Sense(const CSpan& span) { return ConcreteMember().BucklingSenseLT(span); }
int Sense(double left, double right) { return Sense(Moments({{left, right}}).Whole()); }

/// Whether the span's own restraint finds that the moment reverses.
bool Reverses(double left, double right)
{
    const Moments moments({{left, right}});
    Vec3<double> force;
    Vec3<double> moment;
    bool useMomentSign = true;
    moments.Whole().ContinuousRestraint().GetForcesAndMoments(force, moment, useMomentSign);
    return !useMomentSign;
}

} // namespace

TEST(BucklingSense, TheEnumeratorsHaveTheirValues)
{
    EXPECT_EQ(static_cast<int>(CCodeShare::LT_COMP_FLANGE1), 0);
    EXPECT_EQ(static_cast<int>(CCodeShare::LT_COMP_FLANGE2), 1);
    EXPECT_EQ(static_cast<int>(CCodeShare::LT_COMP_BOTH), 2);
    EXPECT_EQ(static_cast<int>(CCodeShare::LT_COMP_NONE), 3);
}

TEST(BucklingSense, NegativeMomentCompressesFlangeOnePositiveFlangeTwo)
{
    EXPECT_EQ(Sense(-50.0, -20.0), 0);
    EXPECT_EQ(Sense(-50.0, 0.0), 0);
    EXPECT_EQ(Sense(50.0, 20.0), 1);
    EXPECT_EQ(Sense(0.0, 20.0), 1);
    EXPECT_EQ(Sense(50.0, -50.0), 2);
    EXPECT_EQ(Sense(-50.0, 50.0), 2);
    EXPECT_EQ(Sense(0.0, 0.0), 3);
}

TEST(BucklingSense, SmallMomentsAreNoMoment)
{
    EXPECT_EQ(Sense(0.9, -0.9), 3);
    EXPECT_EQ(Sense(-0.9, 0.9), 3);
    EXPECT_EQ(Sense(1.1, -0.9), 1);
    EXPECT_EQ(Sense(0.9, -1.1), 0);
    EXPECT_EQ(Sense(1.1, -1.1), 2);
}

TEST(BucklingSense, OnePercentOfTheLargerExtremeIsTheTolerance)
{
    EXPECT_EQ(Sense(300.0, -2.5), 1);
    EXPECT_EQ(Sense(300.0, -3.5), 2);
    EXPECT_EQ(Sense(-300.0, 2.5), 0);
    EXPECT_EQ(Sense(-300.0, 3.5), 2);
    // Up to 100 the floor of 1 governs, beyond it one percent.
    EXPECT_EQ(Sense(100.0, -1.001), 2);
    EXPECT_EQ(Sense(101.0, -1.005), 1);
}

TEST(BucklingSense, AMomentOfExactlyTheToleranceDoesNotCountHereButReversesThere)
{
    EXPECT_EQ(Sense(1.0, -1.0), 3);
    EXPECT_TRUE(Reverses(1.0, -1.0));
    EXPECT_EQ(Sense(1.0, 0.0), 3);
    EXPECT_EQ(Sense(0.0, -1.0), 3);
    EXPECT_EQ(Sense(300.0, -3.0), 1);
    EXPECT_TRUE(Reverses(300.0, -3.0));
    EXPECT_EQ(Sense(-300.0, 3.0), 0);
    EXPECT_TRUE(Reverses(-300.0, 3.0));
    // On either side of the tie they agree.
    EXPECT_EQ(Sense(300.0, std::nextafter(-3.0, -4.0)), 2);
    EXPECT_TRUE(Reverses(300.0, std::nextafter(-3.0, -4.0)));
    EXPECT_EQ(Sense(300.0, std::nextafter(-3.0, 0.0)), 1);
    EXPECT_FALSE(Reverses(300.0, std::nextafter(-3.0, 0.0)));
    EXPECT_EQ(Sense(std::nextafter(1.0, 2.0), std::nextafter(-1.0, -2.0)), 2);
    EXPECT_FALSE(Reverses(1.0, std::nextafter(-1.0, 0.0)));
}

TEST(BucklingSense, TheExtremesAreThoseOfAllSubSpansOfTheSpanAtBothEnds)
{
    EXPECT_EQ(Sense(Moments({{0.0, 40.0}, {40.0, -20.0}, {-20.0, 0.0}}).Whole()), 2);
    EXPECT_EQ(Sense(Moments({{-20.0, 0.0}, {0.0, 0.0}, {0.0, 40.0}}).Whole()), 2);
    EXPECT_EQ(Sense(Moments({{0.0, 0.0}, {0.0, 0.0}, {-30.0, 0.0}}).Whole()), 0);
    EXPECT_EQ(Sense(Moments({{0.0, 0.0}, {0.0, 30.0}, {0.0, 0.0}}).Whole()), 1);
}

TEST(BucklingSense, SubSpansOutsideTheSpanDoNotCount)
{
    const Moments moments({{50.0, 0.0}, {0.0, -30.0}, {90.0, 0.0}});
    EXPECT_EQ(Sense(moments.Part(1, 2)), 0);
    EXPECT_EQ(Sense(moments.Part(0, 1)), 1);
    EXPECT_EQ(Sense(moments.Part(0, 2)), 2);
}

TEST(BucklingSense, OnlyTheMajorAxisMomentCounts)
{
    std::vector<CMemberPoint> points = {Point(1, 0.0), Point(2, 1.0)};
    CSubSpan subSpan = SubSpan(1);
    subSpan.SetMomentsAll({500.0, 0.5, -500.0}, {-500.0, -0.5, 500.0});
    subSpan.SetForcesAll({1e6, 1e6, 1e6}, {-1e6, -1e6, -1e6});
    const std::vector<CSubSpan> subSpans = {subSpan};
    EXPECT_EQ(Sense(CSpan(&points, &subSpans, 0, 1)), 3);
}

TEST(BucklingSense, WhereAnEndIsNotANumberTheLeftOneIsTaken)
{
    EXPECT_EQ(Sense(50.0, notANumber), 1);
    EXPECT_EQ(Sense(-50.0, notANumber), 0);
    EXPECT_EQ(Sense(notANumber, 50.0), 3);
    EXPECT_EQ(Sense(notANumber, -50.0), 3);
    EXPECT_EQ(Sense(notANumber, notANumber), 3);
}

TEST(BucklingSense, InfiniteMomentsAreNotBeyondAnInfiniteTolerance)
{
    EXPECT_EQ(Sense(infinity, 0.0), 3);
    EXPECT_EQ(Sense(infinity, -infinity), 3);
}

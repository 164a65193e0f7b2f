// Places along a sub-span where a check can be at its worst, by hand.

#include "keltrix/design/Places.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace Keltrix;
using namespace Keltrix::Design;

// 20 kN/m over 6 m: M = -w x (6 - x)/2, -90 kNm at mid-span; curvature w h²/2 = 360 kNm.
constexpr Parabola SPAN{0.0, 0.0, 360e3};

TEST(Places, ValuesAtEqualEndsAreExact)
{
    EXPECT_EQ(Between(0.1, 0.1, 0.3), 0.1);
    EXPECT_EQ(Between(1.0, 3.0, 0.25), 1.5);
    const Vec3<double> middle = Between(Vec3<double>(0, 2, 4), Vec3<double>(2, 2, 0), 0.5);
    EXPECT_EQ(middle.x, 1.0);
    EXPECT_EQ(middle.y, 2.0);
    EXPECT_EQ(middle.z, 2.0);
}

TEST(Places, TheLargestMagnitudeIsThatOfTheExtremeOrOfAnEnd)
{
    EXPECT_EQ(LargestMagnitude(SPAN), 90e3);
    EXPECT_EQ(LargestMagnitude({-120e3, 30e3, 0.0}), 120e3);
}

// Equal end moments of 40 kNm: -50 kNm at mid-span.
TEST(Places, ExtremesAreGivenOnceAndBeyondRounding)
{
    const Parabola held{40e3, 40e3, 360e3};
    EXPECT_NEAR(Sum(SPAN, 1.0, held, 2.0).At(0.5), -90e3 - 2 * 50e3, 1e-6);
    const auto same = ExtremePlaces(SPAN, held);
    EXPECT_EQ(same[0], 0.5);
    EXPECT_TRUE(std::isnan(same[1]));
    // M = 10 s² - 4 s: its extreme lies at 0.2.
    const auto two = ExtremePlaces(SPAN, {0.0, 6.0, 10.0});
    EXPECT_EQ(two[0], 0.5);
    EXPECT_NEAR(two[1], 0.2, 1e-15);
    const auto none = ExtremePlaces({1.0, 2.0, 0.0}, {1.0, 1.0, 1e-12});
    EXPECT_TRUE(std::isnan(none[0]) && std::isnan(none[1]));
}

// 360 s (1 - s) = 80 has the roots 1/3 and 2/3.
TEST(Places, LevelsAreReachedStrictlyInside)
{
    std::vector<double> places{0.0};
    AddPlacesAtLevel(SPAN, -80e3, places);
    ASSERT_EQ(places.size(), 3u);
    EXPECT_NEAR(places[1], 1.0 / 3.0, 1e-12);
    EXPECT_NEAR(places[2], 2.0 / 3.0, 1e-12);
    AddPlacesAtLevel(SPAN, -100e3, places);
    AddPlacesAtLevel({0.0, 1.0, 0.0}, 1.0, places);
    EXPECT_EQ(places.size(), 3u);
}

// A level that the curve has at an end only is at no place between the ends.
TEST(Places, ALevelAtAnEndIsNoPlace)
{
    std::vector<double> places;
    AddPlacesAtLevel({0.0, 2.0, 0.0}, 2.0, places);
    AddPlacesAtLevel({0.0, 2.0, 0.0}, 0.0, places);
    EXPECT_TRUE(places.empty());
    AddPlacesAtLevel({0.0, 2.0, 0.0}, 0.5, places);
    EXPECT_EQ(places, std::vector<double>{0.25});
}

} // namespace

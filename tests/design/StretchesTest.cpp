#include "keltrix/design/Stretches.h"

#include <cmath>
#include <sstream>

#include <gtest/gtest.h>

#include "design/RandomMember.h"

namespace {

using namespace DesignTest;
using Design::Bending;
using Design::EndKind;
using Design::Flange;
using Design::MomentDiagram;
using Design::Stretch;

std::vector<Stretch> Stretches(const Member& m)
{
    return Design::FindStretches(m.points, m.subSpans, MomentDiagram(m.points, m.subSpans, Bending::Major));
}

// "1: 0..3 held; 12: 3..9": flanges, start, end.
std::string Words(const std::vector<Stretch>& stretches)
{
    std::ostringstream text;
    for (const Stretch& s : stretches) {
        if (text.tellp() > 0) text << "; ";
        text << (s.Has(Flange::First) ? "1" : "") << (s.Has(Flange::Second) ? "2" : "") << ": " << s.left.x << ".."
             << s.right.x << (s.held ? " held" : "") << (s.cantilever ? " cantilever" : "");
    }
    return text.str();
}

// 12 m with two points that hold the top flange, under a moment that changes sign.
Member WithPurlins(const wchar_t* purlin, const wchar_t* along = L"Free")
{
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddPoint(m, 3.0, purlin);
    AddPoint(m, 9.0, purlin);
    AddPoint(m, 12.0, L"Pinned");
    AddSubSpan(m, -50e3 / 3, -50e3 / 3, 0.0, -50e3, along);
    AddSubSpan(m, 150e3, -150e3, -50e3, -50e3, along); // uplift: 450/2 - 50 = 175 kNm above zero in the middle
    AddSubSpan(m, 50e3 / 3, 50e3 / 3, -50e3, 0.0, along);
    return m;
}

TEST(Stretches, BelongToAFlange)
{
    EXPECT_EQ(Words(Stretches(WithPurlins(L"Top flange lateral"))), "1: 0..3; 2: 0..12; 1: 3..9; 1: 9..12");
    EXPECT_EQ(Words(Stretches(WithPurlins(L"Pinned"))), "12: 0..3; 12: 3..9; 12: 9..12");
    EXPECT_EQ(Words(Stretches(WithPurlins(L"Free"))), "12: 0..12");
    // At the purlins the top flange is compressed.
    EXPECT_EQ(Words(Stretches(WithPurlins(L"FCL"))), "1: 0..3; 2: 0..12; 1: 3..9; 1: 9..12");
    EXPECT_EQ(Words(Stretches(WithPurlins(L"FTL"))), "2: 0..3; 1: 0..12; 2: 3..9; 2: 9..12");
    EXPECT_EQ(Words(Stretches(WithPurlins(L"TR"))), "12: 0..12");
    EXPECT_EQ(Words(Stretches(WithPurlins(L"TR F2L"))), "12: 0..3; 12: 3..9; 12: 9..12");
}

TEST(Stretches, TellTheMomentsThatCompressEachFlange)
{
    const std::vector<Stretch> s = Stretches(WithPurlins(L"Top flange lateral"));
    EXPECT_DOUBLE_EQ(s[1].Compressing(Flange::Second), 175e3);
    EXPECT_DOUBLE_EQ(s[1].Compressing(Flange::First), 50e3);
    EXPECT_DOUBLE_EQ(s[0].Compressing(Flange::Second), 0.0);
    EXPECT_DOUBLE_EQ(s[2].Compressing(Flange::First), 50e3);
    EXPECT_EQ(s[0].left.kind, EndKind::HeldPoint);
    EXPECT_EQ(s[0].right.point, 1);
}

TEST(Stretches, ARestraintAlongTheMemberHoldsItsFlangeAndBoundsTheNeighbours)
{
    Member m = WithPurlins(L"Free");
    m.subSpans[1].SetRestraint(Restraint(L"Top flange lateral"));
    const std::vector<Stretch> s = Stretches(m);
    EXPECT_EQ(Words(s), "1: 0..3; 2: 0..12; 1: 3..9 held; 1: 9..12");
    EXPECT_EQ(s[0].right.kind, EndKind::ContinuousEdge);
    EXPECT_TRUE(s[0].right.restraint.IsRestrained(CRestraint::FLANGE1_LATERAL, false));
    EXPECT_EQ(Words(Stretches(WithPurlins(L"Free", L"Top and Bottom flange lateral"))), "12: 0..12 held");
}

// Along the middle sub-span 150 x - 25 x² - 50 changes sign at x = 0.354 and 5.646 from its left end.
TEST(Stretches, CompressionFlangeBitsAlongASubSpanAreDividedAtContraflexures)
{
    Member m = WithPurlins(L"Free");
    m.subSpans[1].SetRestraint(Restraint(L"FCL"));
    const std::vector<Stretch> s = Stretches(m);
    const double a = 3.0 + 3.0 - std::sqrt(7.0);
    const double b = 3.0 + 3.0 + std::sqrt(7.0);
    ASSERT_EQ(s.size(), 8U) << Words(s);
    EXPECT_NEAR(s[2].right.x, a, 1e-12); // flange 1 held from 3 m to the contraflexure
    EXPECT_TRUE(s[2].held);
    EXPECT_EQ(s[2].right.point, -1);
    double held2 = 0.0;
    for (const Stretch& stretch : s)
        if (stretch.held && stretch.Has(Flange::Second)) held2 += stretch.Length();
    EXPECT_NEAR(held2, b - a, 1e-12);
}

TEST(Stretches, ABitOfTheCompressionFlangeMeansNothingWithoutAMomentOrBetweenSigns)
{
    Member m;
    AddPoint(m, 0.0, L"FCL");
    AddPoint(m, 2.0, L"FCL");
    AddPoint(m, 4.0, L"Pinned");
    AddSubSpan(m, 10e3, 10e3, 0.0, 20e3);
    AddSubSpan(m, 10e3, 10e3, -20e3, 0.0);
    const std::vector<Stretch> s = Stretches(m);
    EXPECT_EQ(Words(s), "12: 0..4");
    EXPECT_EQ(s[0].left.kind, EndKind::MemberEnd);
}

Member HeldCantilever(const wchar_t* middle, const wchar_t* tip, const wchar_t* along = L"Free")
{
    Member m;
    AddPoint(m, 0.0, L"Fixed");
    AddPoint(m, 2.0, middle);
    AddPoint(m, 4.0, tip);
    AddSubSpan(m, -75e3, -75e3, 300e3, 150e3, along);
    AddSubSpan(m, -75e3, -75e3, 150e3, 0.0, along);
    return m;
}

TEST(Stretches, IntermediateRestraintsOfACantileverCountOnlyWithATipHeldInTheFourthWay)
{
    EXPECT_EQ(Words(Stretches(HeldCantilever(L"Top and Bottom flange lateral", L"Free"))), "12: 0..4 cantilever");
    EXPECT_EQ(Words(Stretches(HeldCantilever(L"Top and Bottom flange lateral", L"F1L"))), "12: 0..4 cantilever");
    EXPECT_EQ(Words(Stretches(HeldCantilever(L"Top and Bottom flange lateral", L"TR F1L"))),
              "12: 0..2; 12: 2..4 cantilever");
    EXPECT_EQ(Words(Stretches(HeldCantilever(L"Free", L"Free", L"Bottom flange lateral"))),
              "1: 0..4 cantilever; 2: 0..4 held cantilever");
    Member half = HeldCantilever(L"Free", L"Free");
    half.subSpans[0].SetRestraint(Restraint(L"Bottom flange lateral"));
    EXPECT_EQ(Words(Stretches(half)), "12: 0..4 cantilever");
}

TEST(Stretches, AnOverhangRunsToTheFirstSectionThatHoldsTheFlange)
{
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddPoint(m, 3.0, L"F2L");
    AddPoint(m, 6.0, L"MAJV F1L");
    AddPoint(m, 7.0, L"Pinned");
    m.points.back().SetRestraint(Restraint(L"F2L"));
    AddPoint(m, 8.0, L"Free");
    AddSubSpan(m, 10e3, 10e3, 0.0, 30e3);
    AddSubSpan(m, 10e3, 10e3, 30e3, 60e3);
    AddSubSpan(m, -30e3, -30e3, 60e3, 30e3);
    AddSubSpan(m, -30e3, -30e3, 30e3, 0.0);
    EXPECT_TRUE(Design::IsTip(m.points, 4));
    EXPECT_FALSE(Design::IsTip(m.points, 0));
    EXPECT_EQ(Words(Stretches(m)), "2: 0..3; 1: 0..6; 2: 3..8 cantilever; 1: 6..8 cantilever");
}

// Whichever flange is compressed, and where none is: both are held.
TEST(Stretches, CompressionAndTensionFlangeHeldTogetherAreBothFlanges)
{
    EXPECT_EQ(Words(Stretches(WithPurlins(L"FCL FTL"))), "12: 0..3; 12: 3..9; 12: 9..12");
    Member unloaded = WithPurlins(L"FCL FTL");
    for (CSubSpan& s : unloaded.subSpans) {
        s.SetForcesAll({0.0, 0.0, 0.0}, {0.0, 0.0, 0.0});
        s.SetMomentsAll({0.0, 0.0, 0.0}, {0.0, 0.0, 0.0});
    }
    EXPECT_EQ(Words(Stretches(unloaded)), "12: 0..3; 12: 3..9; 12: 9..12");
}

// A point that holds the top flange, and a deck on the bottom flange beyond it: the stretches of both flanges end there.
// The deck counts for the bottom flange alone.
TEST(Stretches, ARestraintAlongTheMemberCountsForItsOwnFlangeAtTheEnd)
{
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddPoint(m, 3.0, L"F1L");
    AddPoint(m, 6.0, L"Pinned");
    AddSubSpan(m, -30e3, 0.0, 0.0, -45e3);
    AddSubSpan(m, 0.0, 30e3, -45e3, 0.0, L"F2L");
    const std::vector<Stretch> stretches = Stretches(m);
    ASSERT_EQ(Words(stretches), "12: 0..3; 1: 3..6; 2: 3..6 held");
    const Design::StretchEnd& end = stretches.front().right;
    EXPECT_FALSE(end.ofFlange[0].IsRestrained(CRestraint::FLANGE2_LATERAL, false));
    EXPECT_TRUE(end.ofFlange[0].IsRestrained(CRestraint::FLANGE1_LATERAL, false));
    EXPECT_TRUE(end.ofFlange[1].IsRestrained(CRestraint::FLANGE2_LATERAL, false));
}

// Forces written with a few digits leave -2e-5 N·m where there is nothing: M = 30 kNm s² - 2e-5 N·m vanishes at s = 2.6e-5.
TEST(Stretches, AContraflexureBesideWhichThereIsNoMomentDividesNothing)
{
    Member m;
    AddPoint(m, 0.0, L"Free");
    AddPoint(m, 3.0, L"Fixed");
    AddSubSpan(m, 0.0, 20e3, -2e-5, 30e3, L"FCL");
    EXPECT_EQ(Words(Stretches(m)), "1: 0..3 cantilever; 2: 0..3 held cantilever");
}

TEST(Stretches, AnEndWithoutSupportIsNoTipWhereNothingCarriesIt)
{
    Member m = WithPurlins(L"Free");
    m.points.back().SetRestraint(Restraint(L"F12L"));
    EXPECT_FALSE(Design::IsTip(m.points, 3)); // one pinned support alone
    m.points.front().SetRestraint(Restraint(L"Fixed"));
    EXPECT_TRUE(Design::IsTip(m.points, 3));
    m.points.front().SetRestraint(Restraint(L"Partial rotational"));
    EXPECT_TRUE(Design::IsTip(m.points, 3));
    EXPECT_FALSE(Design::IsTip(m.points, 1));
}

// For each flange the stretches cover the member without gap or overlap, and dividing or mirroring changes none.
TEST(Stretches, CoverTheMemberOnceForEachFlangeAndDoNotDependOnDivision)
{
    const unsigned seed = 20260303;
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> share(0.0, 1.0);
    for (int i = 0; i < 5000; ++i) {
        const Member m = RandomMember(random);
        const std::vector<Stretch> whole = Stretches(m);
        for (const Flange f : Design::FLANGES) {
            double covered = 0.0;
            double end = 0.0;
            for (const Stretch& s : whole) {
                if (!s.Has(f)) continue;
                ASSERT_EQ(s.left.x, end) << "seed " << seed << ", member " << i;
                end = s.right.x;
                covered += s.Length();
            }
            ASSERT_NEAR(covered, m.Length(), 1e-12 * m.Length());
        }
        const auto k = static_cast<std::size_t>(share(random) * static_cast<double>(m.subSpans.size()));
        const std::vector<Stretch> divided = Stretches(Divided(m, k, 0.01 + 0.98 * share(random)));
        const std::vector<Stretch> mirrored = Stretches(Mirrored(m));
        ASSERT_EQ(divided.size(), whole.size())
            << "seed " << seed << ", member " << i << ": " << Words(whole) << " and " << Words(divided);
        ASSERT_EQ(mirrored.size(), whole.size())
            << "seed " << seed << ", member " << i << ": " << Words(whole) << " and " << Words(mirrored);
        double sum = 0.0;
        double mirroredSum = 0.0;
        for (std::size_t j = 0; j < whole.size(); ++j) {
            const Stretch& a = whole[j];
            const Stretch& b = divided[j];
            ASSERT_NEAR(a.left.x, b.left.x, 1e-9) << "seed " << seed << ", member " << i;
            ASSERT_NEAR(a.right.x, b.right.x, 1e-9);
            ASSERT_EQ(a.flange, b.flange);
            ASSERT_EQ(a.held, b.held);
            ASSERT_EQ(a.left.restraint.RestFlag(), b.left.restraint.RestFlag());
            ASSERT_EQ(a.right.restraint.RestFlag(), b.right.restraint.RestFlag());
            ASSERT_NEAR(a.moments.least, b.moments.least, 1e-9 * std::max(1.0, a.moments.Magnitude()));
            sum += a.moments.greatest * a.Length();
            mirroredSum += mirrored[j].moments.greatest * mirrored[j].Length();
        }
        ASSERT_NEAR(sum, mirroredSum, 1e-9 * std::max(1.0, std::abs(sum)));
    }
}

TEST(Stretches, ThereAreNoneWithoutALength)
{
    Member m;
    EXPECT_TRUE(Stretches(m).empty());
    AddPoint(m, 0.0, L"Pinned");
    EXPECT_TRUE(Stretches(m).empty());
    AddPoint(m, 6.0, L"Pinned");
    EXPECT_TRUE(Stretches(m).empty()) << "no sub-span";
}

// Three points in one place that hold both flanges.
TEST(Stretches, OfNoLengthAreNotMixedUp)
{
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    for (int i = 0; i < 3; ++i)
        AddPoint(m, 3.0, L"Top and Bottom flange lateral");
    AddPoint(m, 6.0, L"Pinned");
    AddSubSpan(m, -50e3, -50e3, 0.0, -150e3);
    AddSubSpan(m, -50e3, 0.0, -150e3, -150e3);
    AddSubSpan(m, 0.0, 50e3, -150e3, -150e3);
    AddSubSpan(m, 50e3, 50e3, -150e3, 0.0);
    const std::vector<Stretch> found = Stretches(m);
    ASSERT_GE(found.size(), 3U);
    EXPECT_EQ(found.front().right.x, 3.0);
    EXPECT_EQ(found.back().left.x, 3.0);
    for (const Stretch& s : found)
        EXPECT_TRUE(s.right.x == s.left.x || (s.Has(Flange::First) && s.Has(Flange::Second)));
}

// Below a thousand millionth of the member's largest moment there is none: a zero in front of so little is no contraflexure.
TEST(Stretches, NoMomentAfterAZeroIsNoContraflexure)
{
    const auto words = [](double endMoment) {
        Member m;
        AddPoint(m, 0.0, L"Pinned");
        AddPoint(m, 3.0, L"Pinned");
        AddPoint(m, 6.0, L"Pinned");
        AddSubSpan(m, -1e9 / 3.0, -1e9 / 3.0, 1e9, 10.0);
        AddSubSpan(m, (endMoment - 10.0) / 3.0, (endMoment - 10.0) / 3.0, 10.0, endMoment, L"FCL");
        return Words(Stretches(m));
    };
    EXPECT_EQ(words(-0.5), words(0.0));
    EXPECT_NE(words(-5.0), words(0.0));
}

} // namespace

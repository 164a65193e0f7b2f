// Laws that every check obeys, whatever the numbers.

#include <gtest/gtest.h>

#include <random>

#include "Members.h"

using namespace BS5950Test;

namespace {

constexpr unsigned SEED = 5950;

struct Utilisations {
    double local, buckling, overall;
};

Utilisations Of(const Case& given)
{
    Checked c(given);
    c.Check();
    return {c.result.MaxUtilLocalCombined(nullptr), c.result.UtilBucklingCombined(), c.result.UtilOverAll()};
}

std::vector<Case> Members()
{
    std::vector<Case> cases;
    for (const wchar_t* section : {L"UB 457x191x67", L"UC 254x254x89", L"PFC 300x90x41", L"RHS 200x100x6.3",
                                   L"CHS 168.3x5", L"T 254x343x63", L"L 150x150x15"}) {
        Case given;
        given.section = section;
        given.points = {{0.0, L"Pinned"}, {2.0, L"F1L"}, {6.0, L"Pinned"}};
        cases.push_back(given);
    }
    return cases;
}

} // namespace

// Classes and the stress ratios they come from change with the load, so the law is tried where they do not: actions of one
// kind at a time, in sections that are not slender.
TEST(Laws, UtilisationScalesWithTheLoad)
{
    for (Case given : Members()) {
        for (const int kind : {0, 1, 2}) {
            if (kind == 0) Uniform(given, 6.0, 1e3);
            if (kind == 1) EndMoments(given, 6.0, 0.0, 0.0, 20e3);
            if (kind == 2) EndMoments(given, 6.0, 0.0, 0.0, -5e3);
            given.scale = 1.0;
            const Utilisations one = Of(given);
            given.scale = 1.7;
            const Utilisations more = Of(given);
            EXPECT_NEAR(more.local, 1.7 * one.local, 1e-9 + 1e-6 * one.local) << *CString(given.section).ToUtf8();
            EXPECT_NEAR(more.buckling, 1.7 * one.buckling, 1e-9 + 1e-6 * one.buckling)
                << *CString(given.section).ToUtf8() << " kind " << kind;
        }
    }
}

TEST(Laws, MoreLoadNeverUsesLessOfAMember)
{
    std::mt19937 random(SEED);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    for (Case given : Members())
        for (int trial = 0; trial < 20; ++trial) {
            const double F = -300e3 * unit(random), M = 60e3 * unit(random) - 30e3, My = 8e3 * unit(random);
            EndMoments(given, 6.0, M, 0.5 * M, F, My, 0.0);
            double before = 0.0;
            for (const double scale : {0.2, 0.5, 1.0, 2.0, 4.0}) {
                given.scale = scale;
                const double now = Of(given).overall;
                EXPECT_GE(now, before) << *CString(given.section).ToUtf8() << " F " << F << " M " << M << " My " << My
                                       << " scale " << scale << " seed " << SEED;
                before = now;
            }
        }
}

TEST(Laws, DoublingALengthNeverRaisesABucklingResistance)
{
    for (Case given : Members())
        for (const double L : {1.0, 2.0, 4.0, 8.0}) {
            const auto resistances = [&](double length) {
                given.points = {{0.0, L"Pinned"}, {length, L"Pinned"}};
                EndMoments(given, length, 5e3, 5e3, -20e3);
                Checked c(given);
                c.Check();
                std::vector<double> r;
                for (const SpanResult& s : c.member.Spans())
                    r.push_back(s.resistance);
                return r;
            };
            const std::vector<double> shorter = resistances(L);
            const std::vector<double> longer = resistances(2.0 * L);
            ASSERT_EQ(shorter.size(), 3u);
            for (std::size_t i = 0; i < 3; ++i)
                EXPECT_LE(longer[i], shorter[i] * (1.0 + 1e-12)) << *CString(given.section).ToUtf8() << " L " << L;
        }
}

// Turned end for end: positions and forces reversed. Shear changes sign with the direction of x.
TEST(Laws, AMemberTurnedEndForEndGivesTheSameAnswers)
{
    for (Case given : Members()) {
        EndMoments(given, 6.0, -20e3, 8e3, -60e3, 3e3, -1e3);
        const Utilisations a = Of(given);
        Case turned = given;
        turned.points = {{0.0, L"Pinned"}, {4.0, L"F1L"}, {6.0, L"Pinned"}};
        EndMoments(turned, 6.0, 8e3, -20e3, -60e3, -1e3, 3e3);
        const Utilisations b = Of(turned);
        EXPECT_NEAR(a.local, b.local, 1e-6) << *CString(given.section).ToUtf8();
        EXPECT_NEAR(a.buckling, b.buckling, 1e-6) << *CString(given.section).ToUtf8();
    }
}

// Turned upside down: flange restraints change places and the major moment its sign; sections symmetric about x-x.
TEST(Laws, AMemberTurnedUpsideDownGivesTheSameAnswers)
{
    for (Case given : Members()) {
        const Shape shape = PropertiesOf(given.section).shape;
        if (shape == Shape::Tee || shape == Shape::Angle) continue;
        EndMoments(given, 6.0, -20e3, -8e3, -60e3, 3e3, -1e3);
        const Utilisations a = Of(given);
        given.points = {{0.0, L"Pinned"}, {2.0, L"F2L"}, {6.0, L"Pinned"}};
        EndMoments(given, 6.0, 20e3, 8e3, -60e3, 3e3, -1e3);
        const Utilisations b = Of(given);
        EXPECT_NEAR(a.local, b.local, 1e-9) << *CString(given.section).ToUtf8();
        EXPECT_NEAR(a.buckling, b.buckling, 1e-9) << *CString(given.section).ToUtf8();
    }
}

// A restraint added shortens spans. It can raise one thing by a rule: the factor m of a shorter span, whose moment is
// more uniform; so the resistances are compared, and the utilisation where the moment is uniform anyway.
TEST(Laws, ARestraintAddedNeverLowersAResistanceNorRaisesAUtilisation)
{
    for (Case given : Members())
        for (const wchar_t* added : {L"F1L", L"F12L", L"Pinned"}) {
            EndMoments(given, 6.0, -10e3, -10e3, -50e3);
            given.points = {{0.0, L"Pinned"}, {3.0, L"Free"}, {6.0, L"Pinned"}};
            Checked before(given);
            before.Check();
            given.points[1].second = added;
            Checked after(given);
            after.Check();
            for (const SpanResult& s : after.member.Spans())
                for (const SpanResult& old : before.member.Spans())
                    if (s.mode == old.mode && s.start >= old.start && s.end <= old.end && s.resistance > 0.0) {
                        EXPECT_GE(s.resistance, old.resistance * (1.0 - 1e-12))
                            << *CString(given.section).ToUtf8() << " " << *CString(added).ToUtf8();
                    }
            EXPECT_LE(after.result.UtilBucklingCombined(), before.result.UtilBucklingCombined() * (1.0 + 1e-9))
                << *CString(given.section).ToUtf8() << " " << *CString(added).ToUtf8();
        }
}

// Cutting a member into more sub-spans changes nothing that is found, because the moment within a sub-span is known
// from its shears.
TEST(Laws, MoreSubSpansGiveTheSameAnswer)
{
    Case given;
    Uniform(given, 6.0, 20e3, -200e3);
    const Utilisations coarse = Of(given);
    given.points.clear();
    for (int i = 0; i <= 12; ++i)
        given.points.emplace_back(0.5 * i, i % 12 == 0 ? L"Pinned" : L"Free");
    const Utilisations fine = Of(given);
    EXPECT_NEAR(coarse.local, fine.local, 1e-6);
    EXPECT_NEAR(coarse.buckling, fine.buckling, 1e-6);
}

TEST(Laws, AStrongerGradeNeverUsesMoreOfASectionThatIsNotSlender)
{
    Case given;
    Uniform(given, 6.0, 10e3, -100e3);
    given.grade = L"S275";
    const double weak = Of(given).overall;
    given.grade = L"S355";
    EXPECT_LE(Of(given).overall, weak);
}

TEST(Laws, CheckingTwiceGivesTheSameFindings)
{
    Case given;
    Uniform(given, 6.0, 20e3, -200e3);
    Checked c(given);
    const bool first = c.Check();
    const std::size_t entries = c.member.Checks().Entries().size();
    const double overall = c.result.UtilOverAll();
    EXPECT_EQ(c.Check(), first);
    EXPECT_EQ(c.member.Checks().Entries().size(), entries);
    EXPECT_EQ(c.result.UtilOverAll(), overall);
    EXPECT_EQ(c.member.CheckLocal(true) && c.member.CheckBuckling(), first);
    EXPECT_EQ(c.member.Checks().Entries().size(), entries);
}

TEST(Laws, ACloneChecksToTheSameAnswer)
{
    Case given;
    Uniform(given, 6.0, 20e3, -200e3);
    Checked c(given);
    c.Check();
    const std::unique_ptr<CSteelMemberBS5950> copy(c.member.Clone());
    CMemberResult result;
    copy->SetResult(&result);
    copy->Check();
    EXPECT_EQ(result.UtilOverAll(), c.result.UtilOverAll());
}

// GI 649x205x296x6x9x15 under compression and a moment that changes its sign in the middle, where there is compression alone: a point
// without restraint there changes nothing.
TEST(Consistency, APointWhereTheMomentOfUnequalFlangesVanishesChangesNothing)
{
    Case given;
    given.section = L"GI 649x205x296x6x9x15";
    given.type = SEC_WELDED;
    given.points = {{0.0, L"Pinned"}, {6.0, L"Pinned"}};
    given.force = [](double) { return Vector(-300e3, 0, -100e3 / 3.0); };
    given.moment = [](double x) { return Vector(0, 100e3 - 100e3 * x / 3.0, 0); };
    Case divided = given;
    divided.points.insert(divided.points.begin() + 1, {3.0, L"Free"});
    Checked whole(given);
    Checked parts(divided);
    whole.Check();
    parts.Check();
    for (const Rule rule : {Rule::BucklingMajor, Rule::BucklingMinor, Rule::BucklingInteraction}) {
        EXPECT_NEAR(whole.Entry(rule).utilisation / parts.Entry(rule).utilisation, 1.0, 1e-6) << RuleName(rule);
        EXPECT_GT(whole.Entry(rule).utilisation, 0.0);
    }
    // d/t = 625/6 = 104.2 is beyond 120ε/(1 + 2 r2), r2 = 300/(A py): class 4 there.
    EXPECT_EQ(whole.Spans(BucklingMode::Major).at(0).cls, 4);
}

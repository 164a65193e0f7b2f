// Every equation of a report follows from the numbers that are printed in it.

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "Arithmetic.h"
#include "Members.h"
#include "RandomActions.h"
#include "support/RandomCases.h"

using Keltrix::TestSupport::RandomCases;

using namespace BS5950Test;

// The reader of equations itself: what it must accept and what it must find.
TEST(Arithmetic, TheReaderOfEquationsFindsWhatIsWrong)
{
    const auto fault = [](const std::string& line) {
        std::string faults;
        for (const Equation& e : EquationsOf(line + "\n"))
            faults += FaultOf(e);
        return faults;
    };
    EXPECT_EQ(fault("Shear <i>cl. 4.2.3</i>: Pvy = 0.6 py Av = 0.6 * 275 N/mm² * 38.54 cm² = 635.9 kN"), "");
    EXPECT_NE(fault("Pvy = 0.6 py Av = 0.6 * 275 N/mm² * 38.54 cm² = 636.2 kN"), "");
    EXPECT_NE(fault("Pvy = 0.6 py Av = 0.7 * 275 N/mm² * 38.54 cm² = 635.9 kN"), "");
    EXPECT_NE(fault("Pvy = 0.6 py Av = 635.9 kN"), "") << "numbers are missing";
    EXPECT_EQ(fault("\tFvy/Pvy = 119.5 kN/635.9 kN = <b>0.188</b> OK"), "");
    EXPECT_NE(fault("\tFvy/Pvy = 119.5 kN/635.9 kN = <red><b>1.188</b> FAIL</red>"), "");
    EXPECT_EQ(fault("ρ = (2 Fv/Pv - 1)² = (2 * 572.31 kN/635.9 kN - 1)² = 0.64"), "");
    EXPECT_EQ(fault("Mcx = min(py Sx, 1.2 py Zx) = min(275 N/mm² * 1471 cm³, 1.2 * 275 N/mm² * 1296 cm³) = 404.53 kNm"),
              "");
    EXPECT_NE(fault("Mcx = min(py Sx, 1.2 py Zx) = min(275 N/mm² * 1471 cm³, 1.2 * 275 N/mm² * 1296 cm³) = 427.7 kNm"),
              "");
    EXPECT_EQ(fault("λLT = u v λ βW^0.5 = 0.872 * 0.9 * 145.6 * 1^0.5 = 114.3"), "");
    EXPECT_EQ(fault("Mu = |c Mx + s My| = |0.5 * 2 kNm + 0.1 * -30 kNm| = 2 kNm"), "");
    EXPECT_EQ(fault("Pt = 100 kN, LE = inf"), "");
    EXPECT_EQ(fault("Fx\tFy\tM = 1 = 2"), "") << "rows of tables are no equations";
}

namespace {

// Everything that a report can have beside the forces: options, given factors and lengths, holes, load heights, and forces that do
// not balance.
DesignTest::Member InEveryManner(std::mt19937& random, CSteelMemberBS5950& member, DesignTest::Member m)
{
    const auto one = [&](int n) { return std::uniform_int_distribution<int>(0, n - 1)(random) == 0; };
    DesignOptions options;
    options.connection = one(3) ? Connection::OneBolt : one(2) ? Connection::TwoBoltsMore : Connection::NotGiven;
    options.momentsHoldEccentricity = one(4);
    options.simpleColumn = one(5);
    if (one(3)) options.stiffBearing = 0.075;
    if (one(4)) options.stiffenerSpacing = 0.9;
    if (one(3)) options.lateral = LateralMethod::Elastic;
    member.SetOptions(options);
    if (one(6)) member.SetEquivalentUniformMomentFactor(0.35 + 0.1 * static_cast<double>(random() % 7));
    member.SetLengthOverride(one(8));
    member.SetLyy(-1.0);
    member.SetLzz(one(2) ? 7.5 : -0.7);
    member.SetLlt(one(4) ? 0.0 : -0.9);
    CSection section = member.GetKeltrixSec();
    CSecComp component = section.Component(0);
    component.SetNetGross(one(3) ? 0.83 : 1.0);
    section.SetComponent(0, component);
    member.SetKeltrixSec(section);
    if (one(4)) { // the moment at the last end, and with it a tip's
        Vector moment = m.subSpans.back().GetMomentsRight();
        m.subSpans.back().SetMomentsRight({moment.x, 1.7 * moment.y + 1e4, moment.z});
    }
    if (one(4)) {
        CRestraint end = RestraintNamed(L"Free");
        end.SetLoadHeight(one(2) ? 0.2 : 0.0);
        m.points.back().SetRestraint(end);
        m.points.front().SetRestraint(RestraintNamed(L"Fixed"));
    }
    return m;
}

} // namespace

TEST(Arithmetic, OfEveryEquationInAThousandReports)
{
    constexpr unsigned SEED = 20260419;
    std::mt19937 random(SEED);
    std::map<std::string, int> faults;
    int equations = 0;
    for (int i = 0; i < RandomCases(1000); ++i) {
        const SectionRow& row = SECTIONS[static_cast<std::size_t>(i) % std::size(SECTIONS)];
        Subject subject(row, i / 2 % 2 + 1);
        const DesignTest::Member m = InEveryManner(
            random, subject.member, RandomActions(random, subject.member.Properties(), subject.member.Steel()));
        CMemberResult result;
        subject.member.SetResult(&result);
        subject.member.SetMemberPointVec(m.points);
        subject.member.SetSubSpanVec(m.subSpans);
        subject.member.Check();
        for (const Equation& e : EquationsOf(*result.GetVerbose().ToUtf8())) {
            ++equations;
            const std::string fault = FaultOf(e);
            if (!fault.empty() && ++faults[e.sides.front().text] <= 3)
                ADD_FAILURE() << "seed " << SEED << ", member " << i << ", " << *CString(row.name).ToUtf8() << ": "
                              << e.text << "\n  " << fault;
        }
        subject.member.SetResult(nullptr);
    }
    for (const auto& [name, count] : faults)
        ADD_FAILURE() << count << " of " << name;
    EXPECT_GT(equations, RandomCases(50000));
}

#include <numbers>

#include "section/Properties.h"

namespace Keltrix::Steel::Test {
namespace {

const std::vector<Property<RhsSection>> RHS_PROPERTIES = {
    {"Area", &RhsSection::Area}, {"Ixx", &RhsSection::Ixx}, {"Iyy", &RhsSection::Iyy}, {"Sxx", &RhsSection::Sxx},
    {"Syy", &RhsSection::Syy},   {"Zxx", &RhsSection::Zxx}, {"Zyy", &RhsSection::Zyy}, {"J", &RhsSection::J}};

struct HollowRow {
    const char* what;
    double D, B, Tf, Tw;
    int type;
    std::array<double, 8> expected; // in the order of RHS_PROPERTIES
};

// Worked term by term from the walls and the corner spandrels, in double precision.
const HollowRow RHS_ROWS[] = {
    {"hot finished",
     20,
     10,
     1,
     1,
     SEC_ROLLED,
     {54.926990816987235, 2664.076580948099, 868.5825019942492, 340.8668849378531, 206.2319308529169, 266.4076580948099,
      173.71650039884986, 2155.8870328571006}},
    {"cold formed",
     20,
     10,
     1,
     1,
     SEC_FORMED,
     {52.56637061435917, 2442.939041451373, 816.2871774000814, 318.08111294102713, 195.24925986923125,
      244.29390414513733, 163.25743548001628, 2154.134427770421}},
    {"welded, two thicknesses", 20, 10, 2, 1, SEC_WELDED, {72.0, 3936.0, 984.0, 488.0, 244.0, 393.6, 196.8, 2332.8}},
    {"second welded kind",
     20,
     10,
     1,
     1,
     SEC_WELDED_2,
     {56.0, 2778.6666666666665, 898.6666666666666, 352.0, 212.0, 277.8666666666667, 179.73333333333332,
      2088.6428571428573}},
    {"other kind",
     20,
     10,
     1,
     1,
     SEC_OTHER,
     {56.0, 2778.6666666666665, 898.6666666666666, 352.0, 212.0, 277.8666666666667, 179.73333333333332,
      2107.309523809524}}};

TEST(Rhs, PropertiesAreTheSumsOverTheParts)
{
    for (const HollowRow& row : RHS_ROWS) {
        const auto section = Make<RhsSection>(HostRhs(row.D, row.B, row.Tw, row.Tf, row.type));
        for (std::size_t i = 0; i < RHS_PROPERTIES.size(); ++i)
            EXPECT_TRUE(Within((section.*RHS_PROPERTIES[i].get)(), row.expected[i], 10.0 * ROUNDING))
                << row.what << ": " << RHS_PROPERTIES[i].name;
        EXPECT_EQ(section.Ybar(), 0.0);
        EXPECT_EQ(section.Xbar(), 0.0);
        EXPECT_EQ(section.Ixy(), 0.0);
    }
}

TEST(Rhs, WeldedSectionKeepsTwoThicknesses)
{
    RhsSection section;
    CMemberResult result;
    EXPECT_TRUE(section.SetKeltrixSec(HostRhs(0.2, 0.1, 0.008, 0.01, SEC_WELDED), &result));
    EXPECT_EQ(
        section.SectGeomString(CDesFormat()),
        L"Welded RHS section dimensions:\n\tD  = 0.2\n\tB  = 0.1\n\tTf = 0.01\n\tTw = 0.008\n\tRo = 0\n\tRi = 0\n");
    EXPECT_EQ(result.GetFlags(), 0);
    EXPECT_LT(result.GetVerbose().Find(L"Warning"), 0);
}

const wchar_t* const WARNING =
    L"<orange><b>Warning:</b> hot rolled and cold formed sections cannot have different flange and web thicknesses\n"
    L"\tthe smaller thickness has been selected: (T=0.008)</orange>\n";

TEST(Rhs, EveryOtherKindTakesTheSmallerThicknessWithAWarning)
{
    for (const int type : {SEC_ROLLED, SEC_FORMED, SEC_WELDED_2, SEC_OTHER, SecType(6)}) {
        RhsSection section;
        CMemberResult result;
        EXPECT_TRUE(section.SetKeltrixSec(HostRhs(0.2, 0.1, 0.008, 0.01, type), &result)) << type;
        EXPECT_EQ(result.GetFlags(), 3) << type;
        EXPECT_GE(result.GetVerbose().Find(WARNING), 0) << type;
        EXPECT_GE(section.SectGeomString(CDesFormat()).Find(L"\tTf = 0.008\n\tTw = 0.008\n"), 0) << type;
    }
    RhsSection section;
    CMemberResult silent;
    silent.EnableText(false);
    EXPECT_TRUE(section.SetKeltrixSec(HostRhs(0.2, 0.1, 0.01, 0.008), &silent));
    EXPECT_EQ(silent.GetFlags(), 3);
    EXPECT_LT(silent.GetVerbose().Find(L"Warning"), 0);
    EXPECT_TRUE(section.SetKeltrixSec(HostRhs(0.2, 0.1, 0.01, 0.008), nullptr));
    EXPECT_EQ(section.RadiusInner(), 0.008);
    EXPECT_EQ(section.RadiusOuter(), 1.5 * 0.008);
}

TEST(Rhs, AnotherShapeKeepsTheDimensionsButTheThicknessRuleRuns)
{
    auto section = Make<RhsSection>(HostRhs(0.2, 0.1, 0.008, 0.01, SEC_WELDED));
    CMemberResult result;
    EXPECT_TRUE(section.SetKeltrixSec(HostSection(CSecGeom::SHAPE_I, SEC_ROLLED, {{CSecGeom::DEPTH, 9.0}}), &result));
    EXPECT_EQ(section.SectGeomString(CDesFormat()),
              L"Hot rolled RHS section dimensions:\n\tD  = 0.2\n\tB  = 0.1\n\tTf = 0.008\n\tTw = 0.008\n\tRo = 0.012\n"
              L"\tRi = 0.008\n");
    EXPECT_EQ(result.GetFlags(), 3);
    EXPECT_GE(result.GetVerbose().Find(WARNING), 0);
}

TEST(Rhs, CornerRadiiFollowFromFabricationAndThickness)
{
    const auto hot = Make<RhsSection>(HostRhs(0.2, 0.1, 0.01, 0.01, SEC_ROLLED));
    EXPECT_EQ(hot.RadiusInner(), 0.01);
    EXPECT_EQ(hot.RadiusOuter(), 1.5 * 0.01);
    const auto cold = Make<RhsSection>(HostRhs(0.2, 0.1, 0.01, 0.01, SEC_FORMED));
    EXPECT_EQ(cold.RadiusInner(), 1.5 * 0.01);
    EXPECT_EQ(cold.RadiusOuter(), 2.5 * 0.01);
    for (const int type : {SEC_WELDED, SEC_WELDED_2, SEC_OTHER, SecType(9)}) {
        const auto section = Make<RhsSection>(HostRhs(0.2, 0.1, 0.01, 0.01, type));
        EXPECT_EQ(section.RadiusInner(), 0.0) << type;
        EXPECT_EQ(section.RadiusOuter(), 0.0) << type;
    }
}

TEST(Rhs, TurningExchangesTheAxes)
{
    const auto section = Make<RhsSection>(HostRhs(0.2, 0.1, 0.008, 0.01, SEC_WELDED));
    auto turned = section;
    turned.Rotate90Clockwise();
    EXPECT_EQ(section.Iyy(), turned.Ixx());
    EXPECT_EQ(section.Syy(), turned.Sxx());
    EXPECT_EQ(section.Zyy(), turned.Zxx());
    EXPECT_EQ(section.Iyy(), Make<RhsSection>(HostRhs(0.1, 0.2, 0.01, 0.008, SEC_WELDED)).Ixx());
    turned.Rotate90Clockwise();
    EXPECT_EQ(section.Ixx(), turned.Ixx());
}

TEST(Rhs, ThinSquareTubeHasTheTorsionConstantOfItsMidLine)
{
    // Bredt, 4 A² t/p = t b³ of the mid-line; the open strip adds t³ 4b/3 to the kind that is not welded.
    const double t = 0.001, b = 0.1 - t;
    EXPECT_TRUE(Within(Make<RhsSection>(HostRhs(0.1, 0.1, t, t, SEC_WELDED)).J(), t * b * b * b, 1e-11));
    EXPECT_TRUE(
        Within(Make<RhsSection>(HostRhs(0.1, 0.1, t, t, SEC_OTHER)).J(), t * b * b * b + t * t * t * 4 * b / 3, 1e-11));
}

TEST(Rhs, AgreesWithIntegrationUpToTheOwnTermsOfTheCorners)
{
    // Departures of the second moments, least and largest, by fabrication and B/t of the shorter side.
    const struct {
        int type;
        double slenderness;
        double low, high;
    } rows[] = {{SEC_WELDED, 10, 0.0, 0.0},
                {SEC_WELDED, 40, 0.0, 0.0},
                {SEC_ROLLED, 10, -0.00038, -0.00008},
                {SEC_ROLLED, 20, -0.000039, -0.000008},
                {SEC_ROLLED, 40, -0.0000044, -0.000001},
                {SEC_FORMED, 10, -0.0035, -0.0007},
                {SEC_FORMED, 20, -0.00034, -0.00007},
                {SEC_FORMED, 40, -0.000038, -0.000007}};
    for (const auto& row : rows) {
        Departure secondMoment;
        for (const double B : {0.05, 0.2})
            for (const double aspect : {1.0, 1.5, 2.0}) {
                const double D = B * aspect, T = B / row.slenderness;
                SCOPED_TRACE(Inputs("type D B T", row.type, D, B, T));
                const auto section = Make<RhsSection>(HostRhs(D, B, T, T, row.type));
                const auto exact = Integrate(OutlineOfRhs(D, B, T, T, section.RadiusInner(), section.RadiusOuter()));
                EXPECT_TRUE(Within(section.Area(), exact.area, CHORD_ERROR));
                EXPECT_TRUE(Within(section.Sxx(), exact.Sxx, CHORD_ERROR));
                EXPECT_TRUE(Within(section.Syy(), exact.Syy, CHORD_ERROR));
                EXPECT_TRUE(Within(section.Zxx(), section.Ixx() / (D / 2.0), ROUNDING));
                EXPECT_TRUE(Within(section.Zyy(), section.Iyy() / (B / 2.0), ROUNDING));
                secondMoment.Add(section.Ixx(), exact.Ixx);
                secondMoment.Add(section.Iyy(), exact.Iyy);
            }
        EXPECT_TRUE(secondMoment.Spans(row.low, row.high)) << Inputs("type B/t", row.type, row.slenderness);
    }
}

TEST(Rhs, WeldedBoxOfTwoThicknessesAgreesWithIntegration)
{
    for (const double Tf : {0.005, 0.02})
        for (const double Tw : {0.004, 0.015}) {
            SCOPED_TRACE(Inputs("Tf Tw", Tf, Tw));
            const auto section = Make<RhsSection>(HostRhs(0.3, 0.2, Tw, Tf, SEC_WELDED));
            const auto exact = Integrate(OutlineOfRhs(0.3, 0.2, Tw, Tf, 0.0, 0.0));
            EXPECT_TRUE(Within(section.Area(), exact.area, CHORD_ERROR));
            EXPECT_TRUE(Within(section.Ixx(), exact.Ixx, CHORD_ERROR));
            EXPECT_TRUE(Within(section.Iyy(), exact.Iyy, CHORD_ERROR));
            EXPECT_TRUE(Within(section.Sxx(), exact.Sxx, CHORD_ERROR));
            EXPECT_TRUE(Within(section.Syy(), exact.Syy, CHORD_ERROR));
        }
}

TEST(Chs, TextListsDiameterAndThickness)
{
    auto section = Make<ChsSection>(HostChs(0.1683, 0.005));
    EXPECT_EQ(section.SectGeomString(CDesFormat()),
              L"Hot rolled CHS section dimensions:\n\tD  = 0.1683\n\tt = 0.005\n");
}

TEST(Chs, AnotherShapeIsAcceptedAndKeepsTheDimensions)
{
    auto section = Make<ChsSection>(HostChs(0.1683, 0.005));
    CMemberResult result;
    EXPECT_TRUE(section.SetKeltrixSec(HostSection(CSecGeom::SHAPE_I, SEC_FORMED, {{CSecGeom::DEPTH, 9.0}}), &result));
    EXPECT_EQ(section.SectGeomString(CDesFormat()),
              L"Cold formed CHS section dimensions:\n\tD  = 0.1683\n\tt = 0.005\n");
    EXPECT_EQ(result.GetFlags(), 0);
}

TEST(Chs, SolidBarIsACircle)
{
    const auto bar = Make<ChsSection>(HostChs(0.2, 0.1));
    EXPECT_TRUE(Within(bar.Area(), std::numbers::pi * 0.04 / 4.0, ROUNDING));
    EXPECT_TRUE(Within(bar.Ixx(), std::numbers::pi * 0.0016 / 64.0, ROUNDING));
    EXPECT_TRUE(Within(bar.Sxx(), 0.008 / 6.0, ROUNDING));
    EXPECT_TRUE(Within(bar.Zxx(), std::numbers::pi * 0.008 / 32.0, ROUNDING));
}

TEST(Chs, AboutYEverythingIsAsAboutXAndTorsionIsTwiceThat)
{
    const auto tube = Make<ChsSection>(HostChs(0.1683, 0.005));
    EXPECT_EQ(tube.Iyy(), tube.Ixx());
    EXPECT_EQ(tube.Syy(), tube.Sxx());
    EXPECT_EQ(tube.Zyy(), tube.Zxx());
    EXPECT_EQ(tube.J(), 2.0 * tube.Ixx());
    EXPECT_EQ(tube.Ybar(), 0.0);
    EXPECT_EQ(tube.Xbar(), 0.0);
    EXPECT_EQ(tube.Ixy(), 0.0);
}

TEST(Chs, AgreesWithIntegration)
{
    for (const double slenderness : {2.0, 5.0, 20.0, 80.0}) {
        SCOPED_TRACE(Inputs("D/t", slenderness));
        const auto tube = Make<ChsSection>(HostChs(0.3, 0.3 / slenderness));
        const auto exact = Integrate(OutlineOfChs(0.3, 0.3 / slenderness));
        EXPECT_TRUE(Within(tube.Area(), exact.area, CHORD_ERROR));
        EXPECT_TRUE(Within(tube.Ixx(), exact.Ixx, CHORD_ERROR));
        EXPECT_TRUE(Within(tube.Sxx(), exact.Sxx, CHORD_ERROR));
        EXPECT_TRUE(Within(tube.Zxx(), exact.Zxx, CHORD_ERROR));
    }
}

} // namespace
} // namespace Keltrix::Steel::Test

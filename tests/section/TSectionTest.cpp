#include "section/Properties.h"

namespace Keltrix::Steel::Test {
namespace {

const std::vector<Property<TSection>> PROPERTIES = {{"Area", &TSection::Area},
                                                    {"Ybar", &TSection::Ybar},
                                                    {"Ixx", &TSection::Ixx},
                                                    {"Iyy", &TSection::Iyy},
                                                    {"Sxx", &TSection::Sxx},
                                                    {"Syy", &TSection::Syy},
                                                    {"Zxx", &TSection::Zxx},
                                                    {"Zyy", &TSection::Zyy},
                                                    {"J", &TSection::J},
                                                    {"Iw", &TSection::Iw},
                                                    {"MonoSymBeta", &TSection::MonoSymBeta},
                                                    {"YbarPlastic", &TSection::YbarPlastic}};

struct Row {
    const char* what;
    double D, B, t, T, R, Rt;
    std::array<double, 12> expected; // in the order of PROPERTIES
};

// Worked term by term from the sums over flange, stem, root fillets and toes, in double precision.
const Row ROWS[] = {
    {"plates only",
     10,
     8,
     1,
     2,
     0,
     0,
     {24.0, 7.333333333333333, 181.33333333333331, 86.0, 46.0, 34.0, 24.727272727272727, 21.5, 24.0, 48.69444444444444,
      -2.9963235294117645, 8.5}},
    {"axis in the flange",
     10,
     8,
     1,
     2,
     1.5,
     1,
     {24.53650459150638, 7.330816144748556, 181.16068060304804, 80.61299331393226, 46.67869012092008, 34.49594435294865,
      24.712211713674314, 20.153248328483066, 27.86554112, 48.69444444444444, -2.994471075192669, 8.466468463030852}},
    {"axis in the stem",
     20,
     8,
     2,
     2,
     1.5,
     1,
     {52.53650459150638, 12.129426098385666, 2098.882560660156, 92.99417024286643, 292.3015024057221,
      50.764196648701834, 173.04054978656418, 23.248542560716608, 80.20828118489582, 1552.6666666666665,
      -7.793622054425749, 7.058736280057956}}};

TEST(TSection, PropertiesAreTheSumsOverTheParts)
{
    for (const Row& row : ROWS) {
        const auto section = Make<TSection>(HostT(row.D, row.B, row.t, row.T, row.R, row.Rt));
        for (std::size_t i = 0; i < PROPERTIES.size(); ++i)
            EXPECT_TRUE(Within((section.*PROPERTIES[i].get)(), row.expected[i], 10.0 * ROUNDING))
                << row.what << ": " << PROPERTIES[i].name;
        EXPECT_EQ(section.Xbar(), 0.0);
        EXPECT_EQ(section.Ixy(), 0.0);
    }
}

TEST(TSection, TextListsTheDimensionsWithoutTheToeRadius)
{
    auto section = Make<TSection>(HostT(0.3179, 0.3114, 0.0184, 0.0314, 0.0165, 0.002));
    EXPECT_EQ(section.SectGeomString(CDesFormat()),
              L"Hot rolled T section dimensions:\n\tD  = 0.3179\n\tB  = 0.3114\n\tTf = 0.0314\n\tTw = 0.0184\n"
              L"\tRr  = 0.0165\n");
}

TEST(TSection, AnotherShapeIsRefusedAndTouchesNothing)
{
    for (const int shape : {0, 1, 3, 5, 7, 9, 11, 0x1004}) {
        auto section = Make<TSection>(HostT(0.3, 0.2, 0.01, 0.02, 0.01));
        const CString before = section.SectGeomString(CDesFormat());
        CMemberResult result;
        EXPECT_FALSE(section.SetKeltrixSec(HostSection(shape, SEC_FORMED, {{CSecGeom::DEPTH, 9.0}}), &result)) << shape;
        EXPECT_EQ(section.SectGeomString(CDesFormat()), before) << shape;
        EXPECT_EQ(section.FabType(), 1) << shape;
        EXPECT_EQ(result.GetFlags(), 0) << shape;
    }
}

TEST(TSection, PlasticAxisIsMeasuredFromTheStemTipInTheFlangeAndFromTheTopInTheStem)
{
    // Flange 8x2 = 16 of 24: 24/16 below the top.
    EXPECT_TRUE(Within(Make<TSection>(HostT(10, 8, 1, 2, 0)).YbarPlastic(), 8.5, ROUNDING));
    // Flange 8x2 = 16 of 52 with a stem of 2: 2 + 10/2 below the top.
    EXPECT_TRUE(Within(Make<TSection>(HostT(20, 8, 2, 2, 0)).YbarPlastic(), 7.0, ROUNDING));
    // Exactly half: the flange's lower face, measured from the stem's tip.
    EXPECT_EQ(Make<TSection>(HostT(10, 4, 1, 2, 0)).YbarPlastic(), 8.0);
}

TEST(TSection, TorsionConstantWithoutFilletsIsThatOfThinPlates)
{
    EXPECT_TRUE(Within(Make<TSection>(HostT(10, 8, 1, 2, 0)).J(), (8.0 + 64.0) / 3.0, ROUNDING));
    EXPECT_TRUE(Within(Make<TSection>(HostT(10, 8, 1, 2, 0.9e-10)).J(), (8.0 + 64.0) / 3.0, ROUNDING));
    EXPECT_LT(Make<TSection>(HostT(10, 8, 1, 2, 1e-10)).J(), 23.0);
}

TEST(TSection, WarpingConstantIsThatOfPlatesMeetingInAPoint)
{
    EXPECT_TRUE(Within(Make<TSection>(HostT(10, 8, 1, 2, 1.5)).Iw(), 729.0 / 36.0 + 4096.0 / 144.0, ROUNDING));
}

TEST(TSection, PlasticModulusAboutYTakesTheToesBesideTheStem)
{
    const auto sharp = Make<TSection>(HostT(10, 8, 1, 2, 1.5, 0.0));
    const auto round = Make<TSection>(HostT(10, 8, 1, 2, 1.5, 1.0));
    EXPECT_TRUE(Within(sharp.Syy() - round.Syy(), 0.42920367320510344 * (0.22336793894575216 + 0.5), 1e-11));
}

TEST(TSection, MonosymmetryOfPlatesIsTheIntegralOverThem)
{
    // ∫ y (x² + y²) dA / (2 Ixx), less the flange's distance from the centroid, for 8x2 over 1x8: y = 22/3, Ixx = 544/3.
    const double y = 22.0 / 3.0, dw = 4.0 - y, df = 9.0 - y;
    const double stem = dw * (8.0 / 12.0 + 8.0 * dw * dw + 3.0 * 512.0 / 12.0);
    const double flange = df * (2.0 * 512.0 / 12.0 + 16.0 * df * df + 3.0 * 8.0 * 8.0 / 12.0);
    EXPECT_TRUE(
        Within(Make<TSection>(HostT(10, 8, 1, 2, 0)).MonoSymBeta(), (stem + flange) / (2.0 * 544.0 / 3.0) - df, 1e-11));
}

TEST(TSection, MonosymmetryAddsTheToesWithTheRootsDistanceInTheirAreaTerm)
{
    const double D = 10, B = 8, t = 1, T = 2, R = 1.5, Rt = 1;
    const auto section = Make<TSection>(HostT(D, B, t, T, R, Rt));
    const double y = section.Ybar(), hs = D - T, kC = 0.22336793894575216, pair = 0.42920367320510344;
    const double dw = hs / 2 - y, df = D - T / 2 - y, dr = hs - kC * R - y, dt = kC * Rt + hs - y;
    const double plates = (t * t * t * hs / 12 + hs * t * dw * dw + 3 * hs * hs * hs * t / 12) * dw +
                          (B * B * B * T / 12 + B * T * df * df + 3 * T * T * T * B / 12) * df;
    const double roots = (4 * 0.007545115641596548 * std::pow(R, 4) + pair * R * R * dr * dr) * 2 * dr;
    const double toes = (4 * 0.007545115641596548 * std::pow(Rt, 4) + pair * Rt * Rt * dr * dt) * 2 * dt;
    EXPECT_TRUE(Within(section.MonoSymBeta(), (plates + roots + toes) / (2 * section.Ixx()) - std::abs(df), 1e-11));
    EXPECT_NE(toes, 0.0);
}

TEST(TSection, FreshObjectGivesNoGuardedValues)
{
    const TSection section;
    EXPECT_EQ(section.FabType(), 5);
    EXPECT_EQ(section.Area(), 0.0);
    EXPECT_TRUE(std::isnan(section.Ybar()));
    EXPECT_TRUE(std::isnan(section.MonoSymBeta()));
}

struct Seen {
    Departure SxxInFlange, SxxInStem, Syy, axisInFlange, axisInStem;
};

Seen SweepToeRadius(double toeOfThickness)
{
    Seen seen;
    for (const double D : {0.1, 0.4})
        for (const double width : {0.3, 0.6, 1.2})
            for (const double thickness : {0.02, 0.05, 0.1})
                for (const double ratio : {1.0, 1.6})
                    for (const double radius : {0.0, 0.5, 1.0}) {
                        const double B = D * width, T = D * thickness, t = T / ratio, r = t * radius;
                        const double rt = T * toeOfThickness;
                        if (t / 2.0 + r + rt > B / 2.0) continue;
                        SCOPED_TRACE(Inputs("D B t T r rt", D, B, t, T, r, rt));
                        const auto section = Make<TSection>(HostT(D, B, t, T, r, rt));
                        const auto exact = Integrate(OutlineOfT(D, B, t, T, r, rt));
                        EXPECT_TRUE(Within(section.Area(), exact.area, CHORD_ERROR));
                        EXPECT_TRUE(Within(section.Ybar(), exact.ybar, CHORD_ERROR));
                        EXPECT_TRUE(Within(section.Ixx(), exact.Ixx, CHORD_ERROR));
                        EXPECT_TRUE(Within(section.Iyy(), exact.Iyy, CHORD_ERROR));
                        EXPECT_TRUE(Within(section.Zxx(), exact.Zxx, CHORD_ERROR));
                        EXPECT_TRUE(Within(section.Zyy(), exact.Zyy, CHORD_ERROR));
                        seen.Syy.Add(section.Syy(), exact.Syy);
                        const bool inFlange = B * T >= section.Area() / 2.0;
                        (inFlange ? seen.SxxInFlange : seen.SxxInStem).Add(section.Sxx(), exact.Sxx);
                        const double axis = inFlange ? section.YbarPlastic() : D - section.YbarPlastic();
                        (inFlange ? seen.axisInFlange : seen.axisInStem).Add(axis, exact.plasticY);
                    }
    return seen;
}

TEST(TSection, WithoutToeRadiusEveryPropertyAgreesWithIntegrationButForThePlasticAxisInTheStem)
{
    const Seen seen = SweepToeRadius(0.0);
    EXPECT_TRUE(seen.Syy.Spans(0.0, 0.0));
    EXPECT_TRUE(seen.SxxInFlange.Spans(0.0, 0.0));
    EXPECT_TRUE(seen.axisInFlange.Spans(0.0, 0.0));
    // In the stem the fillets count as spread over its height.
    EXPECT_TRUE(seen.SxxInStem.Spans(-0.0003, 0.00295));
    EXPECT_TRUE(seen.axisInStem.Spans(-0.0455, 0.0));
}

TEST(TSection, WithAToeRadiusOfHalfTheThicknessTheDeparturesAreAsStated)
{
    const Seen seen = SweepToeRadius(0.5);
    EXPECT_TRUE(seen.Syy.Spans(0.0035, 0.0347));
    EXPECT_TRUE(seen.SxxInFlange.Spans(0.0, 0.00018));
    EXPECT_TRUE(seen.SxxInStem.Spans(0.0, 0.0017));
}

TEST(TSection, MonosymmetryOfRolledProportionsIsWithinAThousandthOfTheIntegral)
{
    // Tees cut from universal beams and columns: D B t T r, mm.
    const double tees[][5] = {{317.9, 311.4, 18.4, 31.4, 16.5},
                              {226.6, 189.9, 8.5, 12.7, 10.2},
                              {266.5, 209.3, 10.1, 15.6, 12.7},
                              {130.1, 256.3, 10.3, 17.3, 12.7},
                              {76.1, 152.2, 5.8, 6.8, 7.6}};
    for (const auto& [D, B, t, T, r] : tees) {
        SCOPED_TRACE(Inputs("D B t T r", D, B, t, T, r));
        const auto section = Make<TSection>(HostT(D, B, t, T, r));
        const auto exact = Integrate(OutlineOfT(D, B, t, T, r, 0.0));
        EXPECT_TRUE(Within(section.MonoSymBeta(), exact.monosymmetry - std::abs(D - T / 2.0 - exact.ybar), 0.001));
    }
}

TEST(TSection, MonosymmetryDepartsFromTheIntegralWhereFilletsAreLarge)
{
    Departure departure;
    for (const double width : {0.3, 0.6, 1.2})
        for (const double thickness : {0.02, 0.05, 0.1})
            for (const double radius : {0.5, 1.0}) {
                const double B = width, T = thickness, t = T / 1.6, r = t * radius;
                if (t / 2.0 + r > B / 2.0) continue;
                const auto section = Make<TSection>(HostT(1.0, B, t, T, r));
                const auto exact = Integrate(OutlineOfT(1.0, B, t, T, r, 0.0));
                departure.Add(section.MonoSymBeta(), exact.monosymmetry - std::abs(1.0 - T / 2.0 - exact.ybar));
            }
    EXPECT_TRUE(departure.Spans(-0.004, 0.0));
}

} // namespace
} // namespace Keltrix::Steel::Test

#include "section/Properties.h"

namespace Keltrix::Steel::Test {
namespace {

const std::vector<Property<ISection>> I_PROPERTIES = {{"Area", &ISection::Area},
                                                      {"Ybar", &ISection::Ybar},
                                                      {"Ixx", &ISection::Ixx},
                                                      {"Iyy", &ISection::Iyy},
                                                      {"Sxx", &ISection::Sxx},
                                                      {"Syy", &ISection::Syy},
                                                      {"Zxx", &ISection::Zxx},
                                                      {"Zyy", &ISection::Zyy},
                                                      {"J", &ISection::J},
                                                      {"Gamma", &ISection::Gamma},
                                                      {"YbarPlastic", &ISection::YbarPlastic}};

struct IRow {
    const char* what;
    double D, Tw, T1, T2, B1, B2, R;
    std::array<double, 11> expected; // in the order of I_PROPERTIES
};

// Worked term by term from the sums over flanges, web and fillets, in double precision.
const IRow I_ROWS[] = {
    {"plates only, axis in the web",
     12,
     1,
     2,
     1,
     6,
     4,
     0,
     {25.0, 7.34, 443.4433333333333, 42.083333333333336, 90.25, 24.25, 60.414623069936425, 14.027777777777779,
      20.333333333333332, 512.1290322580644, 2.5}},
    {"axis in the web",
     12,
     1,
     2,
     1,
     6,
     4,
     1,
     {25.858407346410207, 7.278918530587149, 461.98317275645206, 42.56268503269219, 94.04240146101786,
      24.870944352948644, 63.468655517317146, 14.187561677564062, 21.333333333333332, 512.1290322580644,
      2.848294533283932}},
    {"axis in flange 1",
     12,
     1,
     2,
     1,
     20,
     4,
     1,
     {53.8584073464102, 9.213440665143072, 657.45862546818, 1339.8960183660254, 113.82054722801819, 206.87094435294864,
      71.35864324340017, 133.98960183660253, 58.666666666666664, 585.6573705179283, 10.653539816339745}},
    {"axis in flange 2",
     12,
     1,
     1,
     2,
     4,
     20,
     1,
     {53.8584073464102, 2.786559334856929, 657.45862546818, 1339.8960183660254, 113.82054722801817, 206.87094435294864,
      71.35864324340017, 133.98960183660253, 58.666666666666664, 585.6573705179283, 1.346460183660255}},
    {"equal flanges",
     12,
     1,
     2,
     2,
     6,
     6,
     1,
     {32.8584073464102, 6.0, 662.9402679542943, 73.14601836602553, 139.24188870589728, 38.62094435294864,
      110.49004465904903, 24.38200612200851, 36.24251042277018, 1800.0, 6.0}}};

TEST(ISection, PropertiesAreTheSumsOverTheParts)
{
    for (const IRow& row : I_ROWS) {
        const auto section = Make<ISection>(HostGeneralI(row.D, row.B1, row.B2, row.Tw, row.T1, row.T2, row.R));
        for (std::size_t i = 0; i < I_PROPERTIES.size(); ++i)
            EXPECT_TRUE(Within((section.*I_PROPERTIES[i].get)(), row.expected[i], ROUNDING))
                << row.what << ": " << I_PROPERTIES[i].name;
        EXPECT_EQ(section.Xbar(), 0.0);
        EXPECT_EQ(section.Ixy(), 0.0);
    }
}

TEST(ISection, EqualFlangeShapeTakesBothFlangesFromTheSameDimensions)
{
    auto section = Make<ISection>(HostI(0.4, 0.2, 0.01, 0.02, 0.015));
    EXPECT_TRUE(section.IsXXSymmetric());
    EXPECT_EQ(section.FabType(), 1);
    EXPECT_EQ(section.SectGeomString(CDesFormat()),
              L"Hot rolled I section dimensions:\n\tD  = 0.4\n\tB1 = 0.2\n\tB2 = 0.2\n\tT1 = 0.02\n\tT2 = 0.02\n"
              L"\tTw = 0.01\n\tR  = 0.015\n");
}

TEST(ISection, GeneralShapeTakesEachFlangeFromItsOwnDimensions)
{
    auto section = Make<ISection>(HostGeneralI(0.5, 0.25, 0.3, 0.01, 0.02, 0.03, 0.004));
    EXPECT_EQ(section.SectGeomString(CDesFormat()),
              L"Welded I section dimensions:\n\tD  = 0.5\n\tB1 = 0.25\n\tB2 = 0.3\n\tT1 = 0.02\n\tT2 = 0.03\n"
              L"\tTw = 0.01\n\tR  = 0.004\n");
    EXPECT_FALSE(section.IsXXSymmetric());
}

TEST(ISection, AnotherShapeIsRefusedAndTouchesNothing)
{
    CMemberResult result;
    for (const int shape : {0, 3, 4, 5, 7, 9, 0x1001, 0x401}) {
        auto section = Make<ISection>(HostI(0.4, 0.2, 0.01, 0.02, 0.015));
        const CString before = section.SectGeomString(CDesFormat());
        CSection other = HostSection(shape, SEC_FORMED, {{CSecGeom::DEPTH, 9.0}, {CSecGeom::WIDTH, 9.0}});
        EXPECT_FALSE(section.SetKeltrixSec(other, &result)) << shape;
        EXPECT_EQ(section.SectGeomString(CDesFormat()), before) << shape;
        EXPECT_EQ(section.FabType(), 1) << shape;
        EXPECT_EQ(section.PlateTypeCode(), 0) << shape;
    }
    EXPECT_EQ(result.GetFlags(), 0);
    EXPECT_TRUE(result.GetVerbose().Find(L"Warning") < 0);
}

TEST(ISection, ShapeWordIsMaskedBeforeItIsCompared)
{
    ISection section;
    EXPECT_TRUE(section.SetKeltrixSec(HostSection(0x1f1, SEC_UNDEF, {{CSecGeom::DEPTH, 1.0}}), nullptr));
    EXPECT_EQ(section.FabType(), 0);
}

TEST(ISection, MirroringTwiceRestoresAndOnceTurnsTheCentroidOver)
{
    const auto original = Make<ISection>(HostGeneralI(12, 6, 4, 1, 2, 1, 1));
    auto mirrored = original;
    mirrored.MirrorXX();
    EXPECT_TRUE(Within(mirrored.Ybar(), 12.0 - original.Ybar(), ROUNDING));
    EXPECT_TRUE(Within(mirrored.Ixx(), original.Ixx(), ROUNDING));
    EXPECT_TRUE(Within(mirrored.Area(), original.Area(), ROUNDING));
    mirrored.MirrorXX();
    for (const auto& property : I_PROPERTIES)
        EXPECT_EQ((mirrored.*property.get)(), (original.*property.get)()) << property.name;
}

TEST(ISection, FlangesAreComparedExactly)
{
    const double T = 0.02;
    EXPECT_TRUE(Make<ISection>(HostGeneralI(0.4, 0.2, 0.2, 0.01, T, T, 0.0)).IsXXSymmetric());
    EXPECT_FALSE(Make<ISection>(HostGeneralI(0.4, 0.2, 0.2, 0.01, T, std::nextafter(T, 1.0), 0.0)).IsXXSymmetric());
    EXPECT_FALSE(Make<ISection>(HostGeneralI(0.4, std::nextafter(0.2, 1.0), 0.2, 0.01, T, T, 0.0)).IsXXSymmetric());
}

TEST(ISection, PlasticAxisInTheWebIsMeasuredFromTheTop)
{
    // Plates 6x2 over 9x1 over 4x1, 25 in all: half the area is the top flange and 0.5 of web, 2.5 below the top.
    EXPECT_TRUE(Within(Make<ISection>(HostGeneralI(12, 6, 4, 1, 2, 1, 0)).YbarPlastic(), 2.5, ROUNDING));
    // Upside down: the web's part is 8.5 below flange 1, now of thickness 1.
    EXPECT_TRUE(Within(Make<ISection>(HostGeneralI(12, 4, 6, 1, 1, 2, 0)).YbarPlastic(), 9.5, ROUNDING));
}

TEST(ISection, PlasticAxisInAFlangeIsMeasuredFromTheBottom)
{
    // Top flange 20x2 = 40 of 53: the axis is 53/40 below the top, 10.675 above the bottom.
    EXPECT_TRUE(Within(Make<ISection>(HostGeneralI(12, 20, 4, 1, 2, 1, 0)).YbarPlastic(), 10.675, ROUNDING));
    EXPECT_TRUE(Within(Make<ISection>(HostGeneralI(12, 4, 20, 1, 1, 2, 0)).YbarPlastic(), 1.325, ROUNDING));
    // Exactly half the area in flange 1 (12 of 24) counts as in the flange: its lower face.
    EXPECT_EQ(Make<ISection>(HostGeneralI(12, 6, 3, 1, 2, 1, 0)).YbarPlastic(), 10.0);
}

TEST(ISection, TorsionConstantChangesItsFormulaWithTheFillets)
{
    // No fillets: thin plates over the clear height, (6·2³ + 4·1³ + 9·1³)/3.
    EXPECT_TRUE(Within(Make<ISection>(HostGeneralI(12, 6, 4, 1, 2, 1, 0)).J(), 61.0 / 3.0, ROUNDING));
    EXPECT_TRUE(Within(Make<ISection>(HostGeneralI(12, 6, 4, 1, 2, 1, 0.9e-10)).J(), 61.0 / 3.0, ROUNDING));
    // Fillets and unequal flanges: the web counts over the full depth, (48 + 4 + 12)/3.
    EXPECT_TRUE(Within(Make<ISection>(HostGeneralI(12, 6, 4, 1, 2, 1, 1)).J(), 64.0 / 3.0, ROUNDING));
    EXPECT_TRUE(Within(Make<ISection>(HostGeneralI(12, 6, 4, 1, 2, 1, 1e-10)).J(), 64.0 / 3.0, ROUNDING));
}

TEST(ISection, TorsionConstantDropsWhereTheFlangesDifferByATenthOfAMillimetre)
{
    const double equal = Make<ISection>(HostGeneralI(0.4534, 0.1899, 0.1899, 0.0085, 0.0127, 0.0127, 0.0102)).J();
    const double unequal = Make<ISection>(HostGeneralI(0.4534, 0.1899, 0.1899, 0.0085, 0.0127, 0.0128, 0.0102)).J();
    EXPECT_NEAR(unequal / equal, 0.957, 0.001); // though there is more material
}

TEST(ISection, WarpingConstantOfEqualFlangesIsThatOfTheFlangesAtQuarterDepthSquared)
{
    const auto section = Make<ISection>(HostI(0.4534, 0.1899, 0.0085, 0.0127, 0.0));
    const double flangesIyy = 2.0 * 0.0127 * std::pow(0.1899, 3) / 12.0;
    EXPECT_TRUE(Within(section.Gamma(), flangesIyy * std::pow(0.4534 - 0.0127, 2) / 4.0, ROUNDING));
}

TEST(ISection, FreshObjectGivesNoGuardedValues)
{
    const ISection section;
    EXPECT_EQ(section.FabType(), 5);
    EXPECT_EQ(section.Area(), 0.0);
    EXPECT_TRUE(std::isnan(section.Ybar()));
    EXPECT_TRUE(std::isnan(section.Ixx()));
    EXPECT_EQ(section.Iyy(), 0.0);
    EXPECT_TRUE(std::isnan(section.Zyy()));
    EXPECT_TRUE(std::isnan(section.Gamma()));
    EXPECT_EQ(section.J(), 0.0);
}

struct Proportions {
    double D, B, t, T, r;
};

std::vector<Proportions> Grid()
{
    std::vector<Proportions> grid;
    for (const double D : {0.1, 0.4, 1.0})
        for (const double width : {0.2, 0.5, 1.0})
            for (const double thickness : {0.01, 0.04, 0.08})
                for (const double ratio : {1.0, 1.6})
                    for (const double radius : {0.0, 0.5, 1.5}) {
                        const Proportions p{D, D * width, D * thickness / ratio, D * thickness,
                                            radius * D * thickness / ratio};
                        if (p.t + 2.0 * p.r <= p.B && 2.0 * (p.T + p.r) <= D) grid.push_back(p);
                    }
    return grid;
}

TEST(ISection, EqualFlangesAgreeWithIntegrationOverTheOutline)
{
    for (const auto& p : Grid()) {
        SCOPED_TRACE(Inputs("D B t T r", p.D, p.B, p.t, p.T, p.r));
        const auto section = Make<ISection>(HostI(p.D, p.B, p.t, p.T, p.r));
        const auto exact = Integrate(OutlineOfI(p.D, p.B, p.B, p.t, p.T, p.T, p.r));
        EXPECT_TRUE(Within(section.Area(), exact.area, CHORD_ERROR));
        EXPECT_TRUE(Within(section.Ybar(), exact.ybar, CHORD_ERROR));
        EXPECT_TRUE(Within(section.Ixx(), exact.Ixx, CHORD_ERROR));
        EXPECT_TRUE(Within(section.Iyy(), exact.Iyy, CHORD_ERROR));
        EXPECT_TRUE(Within(section.Zxx(), exact.Zxx, CHORD_ERROR));
        EXPECT_TRUE(Within(section.Zyy(), exact.Zyy, CHORD_ERROR));
        EXPECT_TRUE(Within(section.Sxx(), exact.Sxx, CHORD_ERROR));
        EXPECT_TRUE(Within(section.Syy(), exact.Syy, CHORD_ERROR));
        EXPECT_TRUE(Within(section.YbarPlastic(), exact.plasticY, CHORD_ERROR));
    }
}

TEST(ISection, UnequalFlangesAgreeWithIntegrationButForThePlasticAxisInTheWeb)
{
    Departure Sxx, axis;
    for (const auto& p : Grid())
        for (const double share : {0.3, 0.7, 2.0}) {
            const double B2 = p.B * share;
            const double T2 = share < 1.0 ? p.T : 0.7 * p.T;
            if (p.t + 2.0 * p.r > B2) continue;
            SCOPED_TRACE(Inputs("D B1 B2 t T1 T2 r", p.D, p.B, B2, p.t, p.T, T2, p.r));
            const auto section = Make<ISection>(HostGeneralI(p.D, p.B, B2, p.t, p.T, T2, p.r));
            const auto exact = Integrate(OutlineOfI(p.D, p.B, B2, p.t, p.T, T2, p.r));
            EXPECT_TRUE(Within(section.Area(), exact.area, CHORD_ERROR));
            EXPECT_TRUE(Within(section.Ybar(), exact.ybar, CHORD_ERROR));
            EXPECT_TRUE(Within(section.Ixx(), exact.Ixx, CHORD_ERROR));
            EXPECT_TRUE(Within(section.Iyy(), exact.Iyy, CHORD_ERROR));
            EXPECT_TRUE(Within(section.Zxx(), exact.Zxx, CHORD_ERROR));
            EXPECT_TRUE(Within(section.Zyy(), exact.Zyy, CHORD_ERROR));
            EXPECT_TRUE(Within(section.Syy(), exact.Syy, CHORD_ERROR));
            const double half = section.Area() / 2.0;
            if (p.B * p.T >= half || B2 * T2 >= half) {
                EXPECT_TRUE(Within(section.Sxx(), exact.Sxx, CHORD_ERROR));
                EXPECT_TRUE(Within(section.YbarPlastic(), exact.plasticY, CHORD_ERROR));
            } else if (p.r == 0.0) { // no fillets to be spread over the web
                EXPECT_TRUE(Within(section.Sxx(), exact.Sxx, CHORD_ERROR));
                EXPECT_TRUE(Within(p.D - section.YbarPlastic(), exact.plasticY, CHORD_ERROR));
            } else {
                Sxx.Add(section.Sxx(), exact.Sxx);
                axis.Add(p.D - section.YbarPlastic(), exact.plasticY);
            }
        }
    EXPECT_TRUE(Sxx.Spans(0.0, 0.001));
    EXPECT_TRUE(axis.Spans(-0.036, 0.19));
}

} // namespace
} // namespace Keltrix::Steel::Test

#include "section/Properties.h"

namespace Keltrix::Steel::Test {
namespace {

const std::vector<Property<ChannelSection>> CHANNEL_PROPERTIES = {{"Area", &ChannelSection::Area},
                                                                  {"Ybar", &ChannelSection::Ybar},
                                                                  {"Xbar", &ChannelSection::Xbar},
                                                                  {"Ixx", &ChannelSection::Ixx},
                                                                  {"Iyy", &ChannelSection::Iyy},
                                                                  {"Sxx", &ChannelSection::Sxx},
                                                                  {"Syy", &ChannelSection::Syy},
                                                                  {"Zxx", &ChannelSection::Zxx},
                                                                  {"Zyy", &ChannelSection::Zyy},
                                                                  {"J", &ChannelSection::J},
                                                                  {"YbarPlastic", &ChannelSection::YbarPlastic},
                                                                  {"XbarPlastic", &ChannelSection::XbarPlastic},
                                                                  {"Iw", &ChannelSection::Iw}};

struct ChannelRow {
    const char* what;
    double D, B, t, T, R, Rt;
    std::array<double, 13> expected; // in the order of CHANNEL_PROPERTIES
};

// Worked term by term from the sums over flanges, web, root fillets and toes, in double precision.
const ChannelRow CHANNEL_ROWS[] = {
    {"plates only",
     20,
     8,
     1,
     2,
     0,
     0,
     {48.0, 10.0, 2.8333333333333335, 2944.0, 302.6666666666667, 352.0, 104.0, 294.4, 58.580645161290334, 48.0, 10.0,
      2.0, 17728.434782608696}},
    {"plastic axis in the flanges",
     20,
     8,
     1,
     2,
     1.5,
     1,
     {48.53650459150638, 10.0, 2.764702067831921, 2971.773669968379, 296.3954326335355, 362.9316034461372,
      102.04118296112651, 297.1773669968379, 56.61481666828274, 46.21288837134257, 10.0, 1.8256360077604263,
      17496.428286726343}},
    {"plastic axis in the web",
     20,
     7,
     4,
     2,
     1.5,
     1,
     {92.53650459150637, 10.0, 2.4586546042683968, 3670.4403366350457, 240.87147421641743, 518.9316034461372,
      120.24028155817568, 367.0440336635046, 53.03967287817654, 395.09796439404374, 10.0, 2.3134126147876595,
      17867.410802011214}},
    {"thick flanges",
     20,
     15,
     2,
     4,
     1.5,
     1,
     {144.53650459150637, 10.0, 6.3662135718744866, 8142.429272353957, 3092.6240377785875, 1040.1417795703042,
      587.711502339225, 814.2429272353957, 358.20020144394846, 596.754267948509, 10.0, 5.912818003880213,
      161683.38539524417}}};

TEST(Channel, PropertiesAreTheSumsOverTheParts)
{
    for (const ChannelRow& row : CHANNEL_ROWS) {
        const auto section = Make<ChannelSection>(HostChannel(row.D, row.B, row.t, row.T, row.R, row.Rt));
        for (std::size_t i = 0; i < CHANNEL_PROPERTIES.size(); ++i)
            EXPECT_TRUE(Within((section.*CHANNEL_PROPERTIES[i].get)(), row.expected[i], ROUNDING))
                << row.what << ": " << CHANNEL_PROPERTIES[i].name;
        EXPECT_EQ(section.Ixy(), 0.0);
    }
}

TEST(Channel, TextListsTheDimensionsWithoutTheToeRadius)
{
    auto section = Make<ChannelSection>(HostChannel(0.2, 0.09, 0.007, 0.014, 0.012, 0.003));
    EXPECT_EQ(section.SectGeomString(CDesFormat()),
              L"Hot rolled Channel section dimensions:\n\tD  = 0.2\n\tB1 = 0.09\n\tB2 = 0.09\n\tT1 = 0.014\n"
              L"\tT2 = 0.014\n\tTw = 0.007\n\tRr  = 0.012\n");
}

TEST(Channel, AnotherShapeIsRefusedAndTouchesNothing)
{
    for (const int shape : {0, 1, 4, 5, 7, 9, 11, 0x403}) {
        auto section = Make<ChannelSection>(HostChannel(0.2, 0.09, 0.007, 0.014, 0.012, 0.003));
        const CString before = section.SectGeomString(CDesFormat());
        CMemberResult result;
        EXPECT_FALSE(section.SetKeltrixSec(HostSection(shape, SEC_FORMED, {{CSecGeom::DEPTH, 9.0}}), &result)) << shape;
        EXPECT_EQ(section.SectGeomString(CDesFormat()), before) << shape;
        EXPECT_EQ(section.FabType(), 1) << shape;
        EXPECT_EQ(result.GetFlags(), 0) << shape;
    }
}

TEST(Channel, PlasticAxisParallelToTheWebEntersItAtHalfTheArea)
{
    // Web 2x20 = 40; flanges beyond it (B - 2)·2·T: with B = 7, T = 4 they hold 40, too: exactly half, axis at the face.
    EXPECT_EQ(Make<ChannelSection>(HostChannel(20, 7, 2, 4, 0)).XbarPlastic(), 2.0);
    // A little wider and the axis lies in the flanges: 7.5 - (84/2)/8.
    EXPECT_TRUE(Within(Make<ChannelSection>(HostChannel(20, 7.5, 2, 4, 0)).XbarPlastic(), 2.25, ROUNDING));
    // A little narrower and it lies in the web: A/(2 D) with A = 76.
    EXPECT_TRUE(Within(Make<ChannelSection>(HostChannel(20, 6.5, 2, 4, 0)).XbarPlastic(), 1.9, ROUNDING));
}

TEST(Channel, WithoutRadiiTheTorsionConstantIsThatOfThinPlates)
{
    EXPECT_TRUE(
        Within(Make<ChannelSection>(HostChannel(20, 8, 1, 2, 0)).J(), (2.0 * 8.0 * 8.0 + 16.0) / 3.0, ROUNDING));
    EXPECT_TRUE(
        Within(Make<ChannelSection>(HostChannel(20, 8, 1, 2, 0.9e-10)).J(), (2.0 * 8.0 * 8.0 + 16.0) / 3.0, ROUNDING));
    EXPECT_LT(Make<ChannelSection>(HostChannel(20, 8, 1, 2, 1e-10)).J(), 47.9);
}

TEST(Channel, PlasticModulusGrowsWithTheToeRadiusWhileAreaAndSecondMomentFall)
{
    const auto sharp = Make<ChannelSection>(HostChannel(20, 8, 1, 2, 1.5, 0.0));
    const auto round = Make<ChannelSection>(HostChannel(20, 8, 1, 2, 1.5, 1.0));
    // One pair of toes of area 0.42920367320510344 at 8 + 0.22336793894575216 from the axis.
    EXPECT_TRUE(Within(round.Sxx() - sharp.Sxx(), 0.42920367320510344 * 8.22336793894575216, 1e-11));
    EXPECT_TRUE(Within(sharp.Area() - round.Area(), 0.42920367320510344, 1e-11));
    EXPECT_LT(round.Ixx(), sharp.Ixx());
}

TEST(Channel, WarpingConstantTendsToThatOfThreeThinPlates)
{
    // Mid-line dimensions b, h: Iw = t b³ h²/12 (3 b tf + 2 h tw)/(6 b tf + h tw), Timoshenko and Gere. What is left at
    // a thickness of a ten-thousandth of the depth is of its order.
    const double h = 0.3, b = 0.1, T = 3e-5, t = 2e-5;
    const double thin = T * b * b * b * h * h / 12.0 * (3.0 * b * T + 2.0 * h * t) / (6.0 * b * T + h * t);
    EXPECT_TRUE(Within(Make<ChannelSection>(HostChannel(h + T, b + t / 2.0, t, T, 0)).Iw(), thin, 1e-3));
}

TEST(Channel, FreshObjectGivesNoGuardedValues)
{
    const ChannelSection section;
    EXPECT_EQ(section.FabType(), 5);
    EXPECT_EQ(section.Area(), 0.0);
    EXPECT_EQ(section.Ybar(), 0.0);
    EXPECT_TRUE(std::isnan(section.Xbar()));
    EXPECT_TRUE(std::isnan(section.Zxx()));
}

struct Seen {
    Departure Xbar, Iyy, Zyy, Sxx;
    Departure Syy, axis; ///< of axes in the breadth of the root fillets
    Departure SyyElsewhere, axisElsewhere;
};

/// Holds the exact properties against integration and collects the departures of the others.
Seen SweepToeRadius(double toeOfThickness)
{
    Seen seen;
    for (const double D : {0.1, 0.4})
        for (const double width : {0.2, 0.35, 0.5})
            for (const double thickness : {0.02, 0.04, 0.08})
                for (const double ratio : {1.0, 1.6})
                    for (const double radius : {0.0, 0.5, 1.5}) {
                        const double B = D * width, T = D * thickness, t = T / ratio, r = t * radius;
                        const double rt = T * toeOfThickness;
                        if (t + r + rt > B) continue;
                        SCOPED_TRACE(Inputs("D B t T r rt", D, B, t, T, r, rt));
                        const auto section = Make<ChannelSection>(HostChannel(D, B, t, T, r, rt));
                        const auto exact = Integrate(OutlineOfChannel(D, B, t, T, r, rt));
                        EXPECT_TRUE(Within(section.Area(), exact.area, CHORD_ERROR));
                        EXPECT_TRUE(Within(section.Ybar(), exact.ybar, CHORD_ERROR));
                        EXPECT_TRUE(Within(section.Ixx(), exact.Ixx, CHORD_ERROR));
                        EXPECT_TRUE(Within(section.Zxx(), exact.Zxx, CHORD_ERROR));
                        EXPECT_TRUE(Within(section.YbarPlastic(), exact.plasticY, CHORD_ERROR));
                        seen.Xbar.Add(section.Xbar(), exact.xbar);
                        seen.Iyy.Add(section.Iyy(), exact.Iyy);
                        seen.Zyy.Add(section.Zyy(), exact.Zyy);
                        seen.Sxx.Add(section.Sxx(), exact.Sxx);
                        const bool inFillets = t * D < section.Area() / 2.0 && exact.plasticX < t + r;
                        (inFillets ? seen.Syy : seen.SyyElsewhere).Add(section.Syy(), exact.Syy);
                        (inFillets ? seen.axis : seen.axisElsewhere).Add(section.XbarPlastic(), exact.plasticX);
                    }
    return seen;
}

TEST(Channel, WithoutToeRadiusEveryPropertyAgreesWithIntegration)
{
    const Seen seen = SweepToeRadius(0.0);
    EXPECT_TRUE(seen.Xbar.Spans(0.0, 0.0));
    EXPECT_TRUE(seen.Iyy.Spans(0.0, 0.0));
    EXPECT_TRUE(seen.Zyy.Spans(0.0, 0.0));
    EXPECT_TRUE(seen.Sxx.Spans(0.0, 0.0));
    // An axis through the root fillets is put where it would lie with the fillets wholly on the web's side.
    EXPECT_TRUE(seen.SyyElsewhere.Spans(0.0, 0.0));
    EXPECT_TRUE(seen.axisElsewhere.Spans(0.0, 0.0));
    EXPECT_TRUE(seen.Syy.Spans(-0.0013, 0.023));
    EXPECT_TRUE(seen.axis.Spans(-0.29, 0.0));
}

TEST(Channel, WithAToeRadiusOfAQuarterThicknessTheDeparturesAreAsStated)
{
    const Seen seen = SweepToeRadius(0.25);
    EXPECT_TRUE(seen.Xbar.Spans(0.0, 0.00045));
    EXPECT_TRUE(seen.Iyy.Spans(0.0, 0.00236));
    EXPECT_TRUE(seen.Zyy.Spans(0.0, 0.00254));
    EXPECT_TRUE(seen.Sxx.Spans(0.0007, 0.0062));
    EXPECT_TRUE(seen.Syy.Spans(-0.0013, 0.025));
}

TEST(Channel, WithAToeRadiusOfHalfTheThicknessTheDeparturesAreAsStated)
{
    const Seen seen = SweepToeRadius(0.5);
    EXPECT_TRUE(seen.Xbar.Spans(0.00005, 0.0037));
    EXPECT_TRUE(seen.Iyy.Spans(0.0002, 0.0183));
    EXPECT_TRUE(seen.Zyy.Spans(0.0002, 0.0198));
    EXPECT_TRUE(seen.Sxx.Spans(0.0028, 0.0253));
    EXPECT_TRUE(seen.Syy.Spans(-0.00144, -9e-6));
}

} // namespace
} // namespace Keltrix::Steel::Test

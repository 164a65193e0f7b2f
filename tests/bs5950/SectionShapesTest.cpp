// Properties and rules of shapes whose proportions leave the common formulas: boxes with walls of two thicknesses, welded
// channels, fillets that are cut by the plastic axis, tubes bent about two axes.

#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>

#include "Members.h"

using namespace BS5950Test;

namespace {

/// A section by its strips, a fraction of a millimetre thick, in mm.
struct Strips {
    double A = 0.0, Q = 0.0;
    std::vector<std::pair<double, double>> areas; ///< height and area

    void Add(double y, double area)
    {
        A += area;
        Q += area * y;
        areas.emplace_back(y, area);
    }
    /// Equal areas on both sides, first moments added.
    double PlasticModulus()
    {
        std::sort(areas.begin(), areas.end());
        double below = 0.0, axis = 0.0;
        for (const auto& [y, area] : areas) {
            below += area;
            axis = y;
            if (below >= 0.5 * A) break;
        }
        double S = 0.0;
        for (const auto& [y, area] : areas)
            S += area * std::abs(y - axis);
        return S;
    }
};

/// Width of one root fillet of radius r at a distance from the face that it touches.
double FilletWidth(double r, double distance)
{
    return distance >= r ? 0.0 : r - std::sqrt(r * r - (r - distance) * (r - distance));
}

} // namespace

// BOX 470x625x8x37 is wider than deep, but its flanges make it stiffer about x-x: Ix = (625 · 470³ - 609 · 396³)/12 = 225592 cm⁴, Iy =
// (470 · 625³ - 396 · 609³)/12 = 210858 cm⁴. BOX 423x387x15x7 is deeper than wide: Ix = (387 · 423³ - 357 · 409³)/12 = 40547 cm⁴ below
// Iy = (423 · 387³ - 409 · 357³)/12 = 49234 cm⁴.
TEST(SectionShapes, ABoxBucklesLaterallyWhereItsSecondMomentsSayIt)
{
    const SectionProperties wide = PropertiesOf(L"BOX 470x625x8x37", SEC_WELDED);
    EXPECT_NEAR(wide.Ix * 1e8, 225592, 1);
    EXPECT_NEAR(wide.Iy * 1e8, 210858, 1);
    EXPECT_TRUE(CanBuckleLaterally(wide));
    const SectionProperties deep = PropertiesOf(L"BOX 423x387x15x7", SEC_WELDED);
    EXPECT_NEAR(deep.Ix * 1e8, 40547, 1);
    EXPECT_NEAR(deep.Iy * 1e8, 49234, 1);
    EXPECT_FALSE(CanBuckleLaterally(deep));
}

// Table 15 is for hollow sections of one wall thickness. BOX 600x300x6x60 (py 255): A = 41760 mm², Ix = 274579, Iy = 39449 cm⁴, Sx =
// 10411 cm³, J = 53119 cm⁴, γb = 0.8563 · 0.9256 = 0.7926, φb = (10411² · 0.7926/(417.6 · 53119))^0.5 = 1.968, ry = 97.19 mm. At λ = 300,
// within 340 · 275/255 = 367 of D/B = 2, λLT = 2.25 (1.968 · 300)^0.5 = 54.67 is beyond λL0 = 35.63.
TEST(SectionShapes, WeldedBoxesHaveNoTable15)
{
    const SectionProperties box = PropertiesOf(L"BOX 600x300x6x60", SEC_WELDED);
    const Material m = SteelOf(L"S275", box);
    const double LE = 300.0 * box.ry;
    EXPECT_LT(300.0, Table15(2.0, m.py));
    EXPECT_FALSE(IsWithinTable15(box, m, 300.0));
    Classification c;
    c.Wx = box.Sx;
    c.pyMomentX = m.py;
    EXPECT_NEAR(LateralTorsionalSlenderness(box, LE, 1.0, true).lambdaLT, 54.67, 0.02);
    EXPECT_NEAR(BucklingResistanceMoment(box, m, c, LE, true) / box.Sx, 186.4e6, 0.2e6);
    EXPECT_TRUE(IsWithinTable15(PropertiesOf(L"RHS 200x100x6.3"), m, 300.0));
}

// Clause 4.2.5.3: Sv is that of the shear area, the webs between the flanges. BOX 484x546x12x22: 2 · 12 · 440²/4 = 1161.6 cm³ and 2 · 22 ·
// 522²/4 = 2997.3 cm³. C 299x131x5x11: 5 · 277²/4 = 95.91 cm³, of a rolled one 5 · 299²/4 = 111.75 cm³.
TEST(SectionShapes, ShearModulusOfWeldedSectionsIsThatOfTheirShearArea)
{
    const SectionProperties box = PropertiesOf(L"BOX 484x546x12x22", SEC_WELDED);
    EXPECT_NEAR(box.Svx * 1e6, 1161.6, 0.01);
    EXPECT_NEAR(box.Svy * 1e6, 2997.3, 0.1);
    EXPECT_NEAR(PropertiesOf(L"C 299x131x5x11", SEC_WELDED).Svx * 1e6, 95.91, 0.01);
    EXPECT_NEAR(PropertiesOf(L"C 299x131x5x11", SEC_ROLLED).Svx * 1e6, 111.75, 0.01);
}

// Figure 5: the web of a welded channel reaches from flange to flange: 362 - 2 · 10 = 342 mm, of a rolled one 342 - 2 · 8 = 326 mm.
TEST(SectionShapes, WebOfAWeldedChannelReachesFromFlangeToFlange)
{
    EXPECT_NEAR(PropertiesOf(L"C 362x132x8x10x8x0", SEC_WELDED).d, 0.342, 1e-9);
    EXPECT_NEAR(PropertiesOf(L"C 362x132x8x10x8x0", SEC_ROLLED).d, 0.326, 1e-9);
}

// Table 23 goes by the maximum thickness, that of the webs too. BOX 550x341x45x15 S355, py = 335 - 20: between 40 and 50 mm the mean of
// curves b and c, at λ = 96.28 157.2 and 140.6: 148.9 N/mm².
TEST(SectionShapes, StrutCurveOfABoxWithThickWebs)
{
    const SectionProperties box = PropertiesOf(L"BOX 550x341x45x15", SEC_WELDED);
    const Material m = SteelOf(L"S355", box);
    Classification c;
    c.Aeff = box.A;
    c.pyCompression = m.py;
    EXPECT_NEAR(CompressiveStrength(box, m, c, Axis::X, 96.283), 148.9e6, 0.1e6);
}

// TUBE 513x7 S355 under 1452.4 kN of tension, 130.5 N/mm²: moments of 129.3 and 87.9 kNm have the resultant 156.3 kNm, 112.6 N/mm², and
// compress nothing, though both by themselves would add up to 156.4 N/mm².
TEST(SectionShapes, MomentsOfATubeHaveOneResultant)
{
    const SectionProperties s = PropertiesOf(L"TUBE 513x7");
    Actions a;
    a.F = 1452413.65;
    a.Mx = 129260.609;
    a.My = 87935.2112;
    EXPECT_EQ(Classify(s, SteelOf(L"S355", s), a).cls, 1);
    a.F = 1240e3; // 111.4 N/mm²
    EXPECT_EQ(Classify(s, SteelOf(L"S355", s), a).cls, 3);
}

// The equal-area axis of T 162x93x6x6, r = 19, lies in its fillets: half of the area, 824.5 mm², is more than 6 · 137 = 822 mm² of stem
// below them. Strips of 0.01 mm.
TEST(SectionShapes, PlasticModulusOfATeeWhoseAxisCutsTheFillets)
{
    Strips strips;
    const double h = 0.01;
    for (double y = 0.5 * h; y < 162.0; y += h)
        strips.Add(y, h * (y > 156.0 ? 93.0 : 6.0 + 2.0 * FilletWidth(19.0, 156.0 - y)));
    const SectionProperties tee = PropertiesOf(L"TEE 162x93x6x6x19x0");
    EXPECT_NEAR(strips.A * 1e-6 / tee.A, 1.0, 1e-4);
    EXPECT_NEAR(strips.PlasticModulus() * 1e-9 / tee.Sx, 1.0, 2e-4);
    EXPECT_NEAR(tee.Sx * 1e6, 71.95, 0.02);
}

// TEE 109x59x4x4, r = 13: half of the area, 364.3 mm², is the flange's 236 mm², the fillets' 72.5 mm² and 55.7 mm² of stem: the axis is
// 13.9 mm below the flange, beyond the fillets. Strips of 0.005 mm.
TEST(SectionShapes, PlasticModulusOfATeeWhoseAxisLiesBelowItsFillets)
{
    Strips strips;
    const int n = 21800;
    for (int i = 0; i < n; ++i) {
        const double h = 109.0 / n;
        const double y = (i + 0.5) * h;
        strips.Add(y, h * (y > 105.0 ? 59.0 : y > 92.0 ? 4.0 + 2.0 * FilletWidth(13.0, 105.0 - y) : 4.0));
    }
    const SectionProperties tee = PropertiesOf(L"TEE 109x59x4x4x13x0");
    EXPECT_NEAR(strips.A * 1e-6 / tee.A, 1.0, 1e-5);
    EXPECT_NEAR(strips.PlasticModulus() * 1e-9 / tee.Sx, 1.0, 1e-4);
    EXPECT_NEAR(tee.Sx * 1e6, 21.535, 0.005);
}

// The same about y-y of C 141x40x3x5, r = 12: 141 · 3 = 423 mm² of the web, half of the area is 427.4 mm².
TEST(SectionShapes, PlasticModulusOfAChannelWhoseAxisCutsTheFillets)
{
    Strips strips;
    const double h = 0.002;
    for (double x = 0.5 * h; x < 40.0; x += h)
        strips.Add(x, h * (x < 3.0 ? 141.0 : 10.0 + 2.0 * FilletWidth(12.0, x - 3.0)));
    const SectionProperties channel = PropertiesOf(L"C 141x40x3x5x12x0");
    EXPECT_NEAR(strips.A * 1e-6 / channel.A, 1.0, 1e-4);
    EXPECT_NEAR(strips.PlasticModulus() * 1e-9 / channel.Sy, 1.0, 5e-4);
    EXPECT_NEAR(channel.Sy * 1e6, 7.645, 0.01);
}

// ANGLE 76x76x6, r = 19, rt = 3 by squares of 0.05 mm: the fillet and the toes count with their own second moments.
TEST(SectionShapes, PrincipalPropertiesOfAnAngleWithALargeFillet)
{
    const double h = 0.05, B = 76.0, t = 6.0, r = 19.0, rt = 3.0;
    const auto inside = [&](double x, double y) {
        if (x < y) std::swap(x, y); // symmetrical: the horizontal leg's side
        if (y < t) return x < B - rt || y < t - rt || std::hypot(x - B + rt, y - t + rt) < rt;
        return x < t || (x < t + r && y < t + r && std::hypot(x - t - r, y - t - r) > r);
    };
    double A = 0.0, Q = 0.0, I = 0.0, P = 0.0;
    for (double x = 0.5 * h; x < B; x += h)
        for (double y = 0.5 * h; y < B; y += h)
            if (inside(x, y)) A += h * h, Q += h * h * x, I += h * h * x * x, P += h * h * x * y;
    const double c = Q / A;
    const double Ix = I - A * c * c, Ixy = P - A * c * c;
    const SectionProperties s = PropertiesOf(L"ANGLE 76x76x6x19x3");
    EXPECT_NEAR(s.A / (A * 1e-6), 1.0, 5e-4);
    EXPECT_NEAR(s.Ix / (Ix * 1e-12), 1.0, 5e-4);
    EXPECT_NEAR(s.Iu / ((Ix - Ixy) * 1e-12), 1.0, 5e-4);
    EXPECT_NEAR(s.Iv / ((Ix + Ixy) * 1e-12), 1.0, 5e-4);
    // About u-u the backs of the tips are farthest, about v-v the heel.
    EXPECT_NEAR(s.Zu / ((Ix - Ixy) * 1e-12 / (0.5 * std::numbers::sqrt2 * 0.076)), 1.0, 5e-4);
    EXPECT_NEAR(s.Zv / ((Ix + Ixy) * 1e-12 / (std::numbers::sqrt2 * c * 1e-3)), 1.0, 5e-4);
}

// BOX 114x144x3x3 hot finished S275, 2.34 m pinned, under 109 kN and a moment about y-y that vanishes at one end, where there is
// compression alone: the wall 135/3 = 45 beyond 40ε loses 2 · 15 · 3 = 90 of 1502.3 mm². λ = 50.24 (1412.3/1502.3)^0.5 = 48.71, curve a:
// pc = 252.4 N/mm², Pcx = 356.4 kN.
TEST(SectionShapes, AHollowSectionIsClassedWhereItsMomentAboutYVanishes)
{
    Case given;
    given.section = L"BOX 114x144x3x3";
    given.points = {{0.0, L"Pinned"}, {2.34, L"Pinned"}};
    given.force = [](double) { return Vector(-109e3, -4698.25, 0); };
    given.moment = [](double x) { return Vector(0, 0, -10993.9 * (1.0 - x / 2.34)); };
    Checked checked(given);
    checked.Check();
    EXPECT_NEAR(checked.Entry(Rule::BucklingMajor).resistance, 356.4e3, 0.3e3);
}

// BOX 491x383x12x12 S355 under tension and moments of which the one about x-x is largest where the one about y-y vanishes. Under the
// moments alone (4.8.2.1) a wall across of 467/12 = 38.9 is beyond 40ε = 35.2 right beside the place: class 4, Mcx = 355 Zx = 1043 kNm.
// At the place the walls across are the 359/12 = 29.9 of the other pair.
TEST(SectionShapes, AHollowTieIsClassedBesideThePlaceWhereItsMomentAboutYVanishes)
{
    Case given;
    given.section = L"BOX 491x383x12x12";
    given.grade = L"S355";
    given.points = {{0.0, L"Pinned"}, {1.0, L"Pinned"}};
    given.option = CSteelMemberBS5950::MORE_EXACT;
    given.force = [](double) { return Vector(2669e3, 160.9e3, -135e3); };
    given.moment = [](double x) { return Vector(0, -135e3 * x, -160.9e3 * (1.0 - x)); };
    Checked checked(given);
    checked.Check();
    const SpanResult span = checked.Spans(BucklingMode::Major).at(0);
    EXPECT_NEAR(span.Mx / span.flexural.major, 355e6 * 0.0029386, 355.0);
}

// ANGLE 100x65x8 bent about y-y alone with one flange held within the span. How the angle is turned is not known, and with it which
// flange the moment compresses: the sign of the moment changes nothing.
TEST(SectionShapes, TheSignOfAMomentAboutYOfAnAngleChangesNothing)
{
    Case given;
    given.section = L"L 100x65x8";
    given.points = {{0.0, L"Pinned"}, {1.0, L"Top flange lateral"}, {3.0, L"Pinned"}};
    double utilisation[2] = {0.0, 0.0};
    for (const int i : {0, 1}) {
        const double M = i == 0 ? 400.0 : -400.0;
        given.force = [M](double) { return Vector(0, M / 3.0, 0); };
        given.moment = [M](double x) { return Vector(0, 0, M * (1.0 - x / 3.0)); };
        Checked checked(given);
        checked.Check();
        for (const LedgerEntry& e : checked.member.Checks().Entries())
            if (e.rule == Rule::LateralTorsional) utilisation[i] = std::max(utilisation[i], e.utilisation);
    }
    EXPECT_GT(utilisation[0], 0.0);
    EXPECT_DOUBLE_EQ(utilisation[0], utilisation[1]);
}

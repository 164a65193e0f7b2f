// What EN 1993-1-1 takes of a section: widths of Table 5.2, shear areas of 6.2.6(3), axes.

#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>

#include "Sections.h"

using namespace EC3Test;

namespace {} // namespace

TEST(Section, HasItsAxesByTheStandardsNames)
{
    const Section s = SectionOf(L"UB 457x191x67");
    EXPECT_EQ(s.Iy, s.basis.Ix);
    EXPECT_EQ(s.Iz, s.basis.Iy);
    EXPECT_GT(s.Iy, 15.0 * s.Iz);
    EXPECT_EQ(s.Wply, s.basis.Sx);
    EXPECT_EQ(s.Welz, s.basis.Zy);
    EXPECT_DOUBLE_EQ(s.i0, std::sqrt((s.Iy + s.Iz) / s.A));
}

// UB 457x191x67: h 453.4, b 189.9, tw 8.5, tf 12.7, r 10.2 mm: c of the web 453.4 - 2·12.7 - 2·10.2 = 407.6, of the flange
// (189.9 - 8.5 - 2·10.2)/2 = 80.5.
TEST(Section, HasTheWidthsOfTable52)
{
    const Section s = SectionOf(L"UB 457x191x67", SEC_ROLLED);
    ASSERT_EQ(s.plateCount, 3);
    EXPECT_NEAR(s.Find(PlatePlace::Web)->c, 407.6 * MM, 1e-9);
    EXPECT_NEAR(s.Find(PlatePlace::Flange1)->c, 80.5 * MM, 1e-9);
    EXPECT_NEAR(s.Find(PlatePlace::Flange2)->c, 80.5 * MM, 1e-9);
    EXPECT_NEAR(s.hw, 428.0 * MM, 1e-9);
    EXPECT_EQ(s.Find(PlatePlace::Tube), nullptr);

    const Section channel = SectionOf(L"C 300x100x9x16.5x15x0", SEC_ROLLED);
    EXPECT_NEAR(channel.Find(PlatePlace::Web)->c, (300 - 33 - 30) * MM, 1e-9);
    EXPECT_NEAR(channel.Find(PlatePlace::Flange1)->c, (100 - 9 - 15) * MM, 1e-9);

    const Section box = SectionOf(L"BOX 300x200x8x12", SEC_WELDED);
    EXPECT_NEAR(box.Find(PlatePlace::Web)->c, (300 - 24) * MM, 1e-9);
    EXPECT_NEAR(box.Find(PlatePlace::Flange1)->c, (200 - 16) * MM, 1e-9);

    const Section tube = SectionOf(L"RHS 200x100x6.3");
    EXPECT_NEAR(tube.Find(PlatePlace::Web)->c, (200 - 18.9) * MM, 1e-9);
    EXPECT_NEAR(tube.Find(PlatePlace::Flange1)->c, (100 - 18.9) * MM, 1e-9);
}

// 6.2.6(3), by hand from the dimensions in mm; A of rounded shapes from the section.
TEST(Section, HasTheShearAreasOfEachShape)
{
    const Section rolled = SectionOf(L"I 400x180x8.6x13.5x21", SEC_ROLLED);
    const double fillets = (4.0 - std::numbers::pi) * 21.0 * 21.0;
    const double A = 2 * 180 * 13.5 + 373 * 8.6 + fillets;
    EXPECT_NEAR(rolled.A / MM2, A, 0.01);
    EXPECT_NEAR(ShearAreaZ(rolled, 1.0) / MM2, A - 2 * 180 * 13.5 + (8.6 + 42.0) * 13.5, 0.01);
    EXPECT_NEAR(ShearAreaY(rolled) / MM2, A - 373 * 8.6, 0.01);

    const Section welded = SectionOf(L"I 1200x300x10x20", SEC_WELDED);
    EXPECT_NEAR(ShearAreaZ(welded, 1.0) / MM2, 11600.0, 0.01);
    EXPECT_NEAR(ShearAreaZ(welded, 1.2) / MM2, 13920.0, 0.01);
    EXPECT_NEAR(ShearAreaY(welded) / MM2, 12000.0, 0.01);

    const Section channel = SectionOf(L"C 300x100x9x16.5x15x0", SEC_ROLLED);
    EXPECT_NEAR((ShearAreaZ(channel, 1.0) - channel.A) / MM2, -2 * 100 * 16.5 + 24 * 16.5, 0.01);

    const Section tee = SectionOf(L"TEE 200x180x8x14x10x0", SEC_ROLLED);
    EXPECT_NEAR((ShearAreaZ(tee, 1.0) - tee.A) / MM2, -180 * 14 + 28 * 7, 0.01);
    EXPECT_NEAR(ShearAreaY(tee) / MM2, 180.0 * 14 / 1.5, 0.01);
    const Section weldedTee = SectionOf(L"TEE 200x180x8x14x0x0", SEC_WELDED);
    EXPECT_NEAR(ShearAreaZ(weldedTee, 1.0) / MM2, 8.0 * (200 - 7), 0.01);

    const Section box = SectionOf(L"BOX 300x200x8x12", SEC_WELDED);
    EXPECT_NEAR(ShearAreaZ(box, 1.0) / MM2, 2 * 276 * 8, 0.01);
    EXPECT_NEAR(ShearAreaY(box) / MM2, 2 * 200 * 12, 0.01);

    const Section tube = SectionOf(L"RHS 200x100x6.3");
    EXPECT_NEAR(ShearAreaZ(tube, 1.0), tube.A * 2 / 3, 1e-9);
    EXPECT_NEAR(ShearAreaY(tube), tube.A / 3, 1e-9);
    const Section round = SectionOf(L"CHS 168.3x5");
    EXPECT_NEAR(ShearAreaZ(round, 1.0), 0.63662 * round.A, 1e-6 * round.A);
}

// A force along a leg, through the shear centre: the shear flow of the thin legs, bent about oblique axes, is at most 1.5 times the
// force over the leg, whatever the ratio of the legs. (6.20) so has 2/3 of the leg at least.
TEST(Section, HasTwoThirdsOfALegForShear)
{
    const Section angle = SectionOf(L"ANGLE 150x75x12x11x5.5", SEC_ROLLED);
    EXPECT_NEAR(ShearAreaZ(angle, 1.0) / MM2, 150.0 * 12 / 1.5, 1e-6);
    EXPECT_NEAR(ShearAreaY(angle) / MM2, 75.0 * 12 / 1.5, 1e-6);
    double highest = 0.0;
    for (double b = 0.1; b < 10.0; b *= 1.15) { // legs 1 and b, thickness 1
        const double A = 1.0 + b, x0 = 0.5 * b * b / A, y0 = 0.5 / A;
        const double Ix = 1.0 / 3.0 - A * y0 * y0, Iy = b * b * b / 3.0 - A * x0 * x0, Ixy = -A * x0 * y0;
        constexpr int STEPS = 2000;
        double flow = 0.0, force = 0.0, most = 0.0;
        for (int i = 0; i < STEPS; ++i) { // from the tip to the heel
            const double y = 1.0 - (i + 0.5) / STEPS - y0;
            flow += (Iy * y + Ixy * x0) / (Ix * Iy - Ixy * Ixy) / STEPS;
            force += flow / STEPS;
            most = std::max(most, flow);
        }
        EXPECT_NEAR(force, 1.0, 1e-3) << b;
        highest = std::max(highest, most);
    }
    EXPECT_LT(highest, 1.501);
    EXPECT_GT(highest, 1.3);
}

// The thin-walled formulas for centre lines hold to 2 %: 3 b² tf/(6 b tf + h tw) outside the web, b² tf/(A) inside.
TEST(Section, HasTheShearCentreOfAThinChannel)
{
    const Section s = SectionOf(L"C 200x80x3x3x0x0", SEC_ROLLED);
    const double b = 80 - 1.5, h = 200 - 3;
    const double outside = 3 * b * b * 3 / (6 * b * 3 + h * 3);
    const double inside = 2 * b * 3 * b / 2 / ((2 * b + h) * 3);
    EXPECT_NEAR(-s.y0 / MM, outside + inside, 0.02 * (outside + inside));
    EXPECT_EQ(s.z0, 0.0);
}

TEST(Section, IsRefusedWhereColdFormedAndOpen)
{
    CSection s(L"C 200x80x3x3x0x0");
    CSecComp c = s.Component(0);
    c.SetType(SEC_FORMED);
    s.SetComponent(0, c);
    EXPECT_FALSE(MakeSection(s, nullptr));
}

// Section properties that belong to no design code, against sums over fibres.

#include "keltrix/design/SectionProperties.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

namespace {

using namespace Keltrix;
using namespace Keltrix::Design;

constexpr double MM = 1e-3;

SectionProperties PropertiesOf(const wchar_t* description, int type = SEC_WELDED)
{
    CSection s{CString(description)};
    CSecComp c = s.Component(0);
    c.SetType(type);
    s.SetComponent(0, c);
    return MakeProperties(s, nullptr).value();
}

// ∫ z (y² + z²) dA about a height, of a rectangle, by strips; mm.
double ThirdMoment(double b, double bottom, double top, double centroid)
{
    constexpr int STRIPS = 4000;
    double sum = 0.0;
    const double dz = (top - bottom) / STRIPS;
    for (int i = 0; i < STRIPS; ++i) {
        const double z = bottom + (i + 0.5) * dz - centroid;
        sum += z * (b * b * b / 12.0 + b * z * z) * dz;
    }
    return sum;
}

} // namespace

// GI 600x300x200x12x20x15: I1 = 20·300³, I2 = 15·200³, 82 to 18: the shear centre at (540·590 + 120·7.5)/660 = 484.09 mm above the bottom.
TEST(SectionProperties, HaveTheShearCentreAndMonosymmetryOfUnequalFlanges)
{
    const SectionProperties s = PropertiesOf(L"GI 600x300x200x12x20x15");
    EXPECT_NEAR((s.cy + s.y0) / MM, 484.09, 0.01);
    EXPECT_EQ(s.x0, 0.0);
    EXPECT_NEAR(s.cx / MM, 150.0, 1e-9);
    const double c = s.cy / MM;
    const double integral = ThirdMoment(300, 580, 600, c) + ThirdMoment(200, 0, 15, c) + ThirdMoment(12, 15, 580, c);
    EXPECT_NEAR(s.monosymmetry / MM, 2.0 * s.y0 / MM - integral / (s.Ix / 1e-12), 0.02);
    // Upside down its sign turns, and equal flanges have none.
    EXPECT_NEAR(PropertiesOf(L"GI 600x200x300x12x15x20").monosymmetry, -s.monosymmetry, 1e-9);
    EXPECT_EQ(PropertiesOf(L"I 600x300x12x20").monosymmetry, 0.0);
    EXPECT_EQ(PropertiesOf(L"I 600x300x12x20").y0, 0.0);
}

TEST(SectionProperties, HaveTheShearCentreWhereThePlatesMeet)
{
    const SectionProperties tee = PropertiesOf(L"TEE 200x150x10x15");
    EXPECT_NEAR((tee.cy + tee.y0) / MM, 192.5, 1e-9);
    const double c = tee.cy / MM;
    const double integral = ThirdMoment(150, 185, 200, c) + ThirdMoment(10, 0, 185, c);
    EXPECT_NEAR(tee.monosymmetry / MM, 2.0 * tee.y0 / MM - integral / (tee.Ix / 1e-12), 0.02);
    const SectionProperties angle = PropertiesOf(L"ANGLE 150x75x12x0x0", SEC_ROLLED);
    EXPECT_NEAR((angle.cx + angle.x0) / MM, 6.0, 1e-9);
    EXPECT_NEAR((angle.cy + angle.y0) / MM, 6.0, 1e-9);
    // 12·150·6 + 63·12·43.5 = 43686 over 2556.
    EXPECT_NEAR(angle.cx / MM, 43686.0 / 2556.0, 1e-6);
}

// Each pair fits into its outline and by a hair does not.
TEST(SectionProperties, AreThereOnlyWhereThePartsFitIntoTheOutline)
{
    const std::pair<const wchar_t*, const wchar_t*> pairs[] = {
        {L"C 100x50x6x8x10x8", L"C 100x50x6x8x10x9"}, // the toe takes no more than the flange
        {L"C 100x24x6x8x10x8", L"C 100x23x6x8x10x8"}, // web, fillet and toe beside each other
        {L"C 37x50x6x8x10x4", L"C 36x50x6x8x10x4"},   // a web between the fillets
        {L"TEE 200x150x10x15x8x15", L"TEE 200x150x10x15x8x16"},
        {L"ANGLE 60x60x6x8x6", L"ANGLE 60x60x6x8x7"}, // toe and thickness
        {L"ANGLE 60x15x6x8x0", L"ANGLE 60x14x6x8x0"}, // a leg beside the fillet
        {L"TUBE 50x24.9", L"TUBE 50x25"},
        {L"BOX 50x30x14.9x12", L"BOX 50x30x15x12"},
    };
    for (const auto& [fits, doesNot] : pairs) {
        EXPECT_NE(MakeGeometry(CSection(CString(fits))), nullptr) << CString(fits).ToUtf8().value();
        EXPECT_EQ(MakeGeometry(CSection(CString(doesNot))), nullptr) << CString(doesNot).ToUtf8().value();
        EXPECT_FALSE(MakeProperties(CSection(CString(doesNot)), nullptr));
    }
}

// A host can set any number.
TEST(SectionProperties, AreNotThereForDimensionsThatAreNone)
{
    constexpr double unbounded = std::numeric_limits<double>::infinity();
    const auto has = [](const wchar_t* description, CSecGeom::Prop prop, double value) {
        CSection s{CString(description)};
        CSecComp c = s.Component(0);
        c.SetDimension(prop, value);
        s.SetComponent(0, c);
        return MakeGeometry(s) != nullptr;
    };
    const wchar_t* const section = L"GI 600x300x200x12x20x15";
    EXPECT_TRUE(has(section, CSecGeom::DEPTH, 0.5));
    for (const CSecGeom::Prop prop :
         {CSecGeom::DEPTH, CSecGeom::WIDTH, CSecGeom::WEB_THICKNESS, CSecGeom::FLANGE_THICKNESS,
          CSecGeom::BOTTOM_FLANGE_WIDTH, CSecGeom::BOTTOM_FLANGE_THICKNESS})
        for (const double value : {0.0, -0.01, unbounded, std::nan("")})
            EXPECT_FALSE(has(section, prop, value)) << prop << ", " << value;
    for (const CSecGeom::Prop prop : {CSecGeom::ROOT_RADIUS, CSecGeom::TOE_RADIUS})
        for (const double value : {-0.001, std::nan("")})
            EXPECT_FALSE(has(L"C 100x50x6x8x10x4", prop, value)) << prop << ", " << value;
}

// Cold-formed channels are sections too: what a code does not cover it refuses itself.
TEST(SectionProperties, AreThereForColdFormedOpenSections)
{
    const SectionProperties s = PropertiesOf(L"C 200x80x3x3x0x0", SEC_FORMED);
    EXPECT_EQ(s.fabrication, Fabrication::Formed);
    EXPECT_GT(s.A, 0.0);
    CSection none{CString(L"nothing")};
    EXPECT_FALSE(MakeProperties(none, nullptr));
    EXPECT_EQ(MakeGeometry(none, nullptr), nullptr);
}

// Properties of catalogue sections by the section geometry classes, against published figures.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <numbers>
#include <sstream>
#include <stdexcept>

#include "catalogue/Validation.h"
#include "support/ConcreteSections.h"
#include "support/Outline.h"

namespace Keltrix::Steel::Test {
namespace {

const CatalogueRow& RowNamed(const std::string& name)
{
    const auto row = std::find_if(Catalogue().begin(), Catalogue().end(),
                                  [&](const CatalogueRow& candidate) { return candidate.name == name; });
    if (row == Catalogue().end()) throw std::runtime_error(name + " is not in the catalogue");
    return *row;
}

double ThirdFigure(double value) { return 0.5 * std::pow(10.0, std::floor(std::log10(value)) - 2.0); }

struct PropertySpot {
    const char* name;
    double Ixx, Iyy, Zxx, Zyy; // cm⁴, cm³
    double Sxx, Syy;           // cm³; 0: not tabulated
    double J;                  // cm⁴
    double H;                  // dm⁶, of tees cm⁶; 0: not tabulated or not held to three figures, see below
};

// Figures of the tables of dimensions and properties to BS 4-1, EN 10056-1, EN 10210-2 and EN 10219-2 (SCI P363) and of
// EN 10365, accurately calculated and rounded to three figures.
constexpr PropertySpot PROPERTY_SPOTS[] = {
    // Universal beams, columns and bearing piles
    {"UB 127x76x13", 473, 55.7, 74.6, 14.7, 84.2, 22.6, 2.85, 0},
    {"UB 254x146x43", 6540, 677, 504, 92.0, 566, 141, 23.9, 0.103},
    {"UB 457x191x67", 29400, 1450, 1300, 153, 1470, 237, 37.1, 0},
    {"UB 610x229x140", 112000, 4510, 3620, 391, 4140, 611, 216, 0},
    {"UC 203x203x46", 4570, 1550, 450, 152, 497, 231, 22.2, 0.143},
    {"UC 254x254x73", 11400, 3910, 898, 307, 992, 465, 57.6, 0.562},
    {"UC 305x305x97", 22200, 7310, 1450, 479, 1590, 726, 91.2, 1.56},
    {"UBP 203x203x45", 4100, 1380, 410, 134, 459, 206, 19.2, 0.126},
    {"UBP 305x305x88", 18400, 5980, 1220, 389, 1360, 595, 64.2, 1.25},
    // Parallel flange channels
    {"PFC 150x75x18", 861, 131, 115, 26.6, 132, 47.2, 6.10, 0.00467},
    {"PFC 200x90x30", 2520, 314, 252, 53.4, 291, 94.5, 18.3, 0.0197},
    {"PFC 430x100x64", 21900, 722, 1020, 97.9, 1220, 176, 63.0, 0.219},
    // Structural tees: Zxx at the toe
    {"T 102x133x13", 131, 154, 16.2, 23.1, 28.7, 35.5, 2.97, 12.6},
    {"T 229x191x34", 2030, 726, 118, 76.5, 209, 119, 18.5, 280},
    {"T 102x203x23", 177, 774, 20.9, 76.0, 39.0, 115, 11.0, 87.2},
    // Angles
    {"L 75x75x8", 59.1, 59.1, 11.0, 11.0, 0, 0, 2.65, 0},
    {"L 100x100x10", 177, 177, 24.6, 24.6, 0, 0, 6.97, 0},
    {"L 200x200x20", 2850, 2850, 199, 199, 0, 0, 107, 0},
    {"L 100x75x10", 162, 77.6, 23.8, 14.0, 0, 0, 5.95, 0},
    {"L 125x75x8", 247, 67.6, 29.6, 11.6, 0, 0, 3.62, 0},
    {"L 150x75x12", 588, 99.6, 61.3, 17.1, 0, 0, 13.2, 0},
    // Hollow sections, hot finished
    {"SHS 60x60x4", 45.4, 45.4, 15.1, 15.1, 18.3, 18.3, 72.5, 0},
    {"SHS 100x100x5", 279, 279, 55.9, 55.9, 66.4, 66.4, 439, 0},
    {"SHS 200x200x10", 4470, 4470, 447, 447, 531, 531, 7030, 0},
    {"RHS 120x80x5", 365, 193, 60.9, 48.2, 74.6, 56.1, 401, 0},
    {"RHS 300x200x10", 11800, 6280, 788, 628, 956, 721, 12900, 0},
    {"CHS 48.3x4", 13.8, 13.8, 5.70, 5.70, 7.87, 7.87, 27.5, 0},
    {"CHS 168.3x5", 856, 856, 102, 102, 133, 133, 1710, 0},
    {"CHS 273x10", 7150, 7150, 524, 524, 692, 692, 14300, 0},
    // Hollow sections, cold formed, of walls whose tabulated corner radii are the library's
    {"CFSHS 150x150x8", 1410, 1410, 188, 188, 226, 226, 2360, 0},
    {"CFSHS 200x200x8", 3570, 3570, 357, 357, 421, 421, 5820, 0},
    {"CFRHS 200x100x8", 2090, 705, 209, 141, 267, 165, 1810, 0},
    {"CFRHS 300x200x10", 11300, 6060, 754, 606, 921, 698, 13000, 0},
    {"CFCHS 88.9x3.5", 85.7, 85.7, 19.3, 19.3, 25.5, 25.5, 171, 0},
    {"CFCHS 168.3x6", 1010, 1010, 120, 120, 158, 158, 2020, 0},
    // European sections
    {"HEA 200", 3692, 1336, 388.6, 133.6, 429.5, 203.8, 0, 0},
    {"HEB 300", 25170, 8563, 1678, 570.9, 1869, 870.1, 0, 0},
    {"IPE 300", 8356, 603.8, 557.1, 80.5, 628.4, 125.2, 0, 0},
    {"UPE 300", 7820, 538, 522, 75.6, 613, 137, 31.5, 0},
};

TEST(SectionProperties, AreThePublishedOnesToThreeFigures)
{
    for (const PropertySpot& spot : PROPERTY_SPOTS) {
        const CatalogueRow& row = RowNamed(spot.name);
        const Properties computed = Computed(row);
        const auto expect = [&](const char* symbol, double published, double scale) {
            if (published == 0.0) return;
            EXPECT_NEAR(computed.at(symbol) * scale, published, ThirdFigure(published)) << spot.name << ' ' << symbol;
        };
        expect("Ixx", spot.Ixx, 1e8);
        expect("Iyy", spot.Iyy, 1e8);
        expect("Zxx", spot.Zxx, 1e6);
        expect("Zyy", spot.Zyy, 1e6);
        expect("Sxx", spot.Sxx, 1e6);
        expect("Syy", spot.Syy, 1e6);
        expect("J", spot.J, 1e8);
        expect("H", spot.H, row.shape == CSecGeom::SHAPE_T ? 1e12 : 1e6);
    }
}

// Tables take H of an I section as Iyy (D - T)²/4; the library counts the flanges alone.
TEST(SectionProperties, HaveAWarpingConstantOfFlangesAloneJustBelowThatOfTheWholeISection)
{
    int sections = 0;
    for (const CatalogueRow& row : Catalogue()) {
        if (row.shape != CSecGeom::SHAPE_I) continue;
        ++sections;
        const Properties p = Computed(row);
        const double whole = p.at("Iyy") * std::pow((row.D - row.T) / 1e3, 2) / 4.0;
        EXPECT_LT(p.at("H"), whole) << row.name;
        EXPECT_GT(p.at("H"), 0.987 * whole) << row.name << ": " << p.at("H") << " of " << whole;
    }
    EXPECT_EQ(sections, 107 + 46 + 17 + 18 + 3 * 24);
}

struct PrincipalAxis {
    const char* name;
    double tanAlpha;
};

// EN 10056-1:2017, unequal leg angles: tan α.
constexpr PrincipalAxis PRINCIPAL_AXES[] = {{"L 30x20x3", 0.427},   {"L 40x20x4", 0.252},   {"L 50x30x5", 0.352},
                                            {"L 60x30x5", 0.257},   {"L 80x60x7", 0.546},   {"L 100x75x8", 0.547},
                                            {"L 150x75x10", 0.261}, {"L 200x100x10", 0.263}};

CSection HostAngleOf(const CatalogueRow& row)
{
    return HostAngle(row.D / 1e3, row.B / 1e3, row.t / 1e3, row.r / 1e3, row.rt / 1e3);
}

TEST(AnglePrincipalAxes, LieAtThePublishedSlopeWithARuleRelativeToTheSecondMoments)
{
    for (const PrincipalAxis& axis : PRINCIPAL_AXES) {
        const auto angle = Make<RelativeAlphaAngle>(HostAngleOf(RowNamed(axis.name)));
        EXPECT_NEAR(std::tan(angle.Alpha()), axis.tanAlpha, 0.0005) << axis.name;
    }
}

TEST(AnglePrincipalAxes, LieAt45DegreesForEqualLegs)
{
    int angles = 0;
    for (const CatalogueRow& row : Catalogue()) {
        if (Family(row) != "L equal") continue;
        ++angles;
        EXPECT_EQ(Make<RelativeAlphaAngle>(HostAngleOf(row)).Alpha(), std::numbers::pi / 4.0) << row.name;
        EXPECT_EQ(Make<AngleSection>(HostAngleOf(row)).Alpha(), std::numbers::pi / 4.0) << row.name;
    }
    EXPECT_EQ(angles, 42);
}

// The rule of the exported base compares a difference of second moments with 1e-6 of the host's unit: with metres that is
// 100 cm⁴. Kept for compatibility; whoever makes a concrete angle has to override it, and this is why.
TEST(AnglePrincipalAxes, AreLostByTheBaseInMetresForEverySmallUnequalAngle)
{
    int lost = 0;
    double largestDepth = 0.0;
    for (const CatalogueRow& row : Catalogue()) {
        if (Family(row) != "L unequal") continue;
        const auto base = Make<AngleSection>(HostAngleOf(row));
        const auto relative = Make<RelativeAlphaAngle>(HostAngleOf(row));
        if (base.Ixx() - base.Iyy() < 1e-6) {
            ++lost;
            EXPECT_EQ(base.Alpha(), std::numbers::pi / 4.0) << row.name;
            EXPECT_LT(relative.Alpha(), 0.55) << row.name;
            largestDepth = std::max(largestDepth, row.D);
        } else {
            EXPECT_NEAR(base.Alpha(), relative.Alpha(), 1e-12) << row.name;
        }
    }
    EXPECT_EQ(lost, 23);
    EXPECT_EQ(largestDepth, 100.0);

    // L 60x30x5: α = 14.4° becomes 45°, and the modulus about the major principal axis comes out on the unsafe side.
    const CatalogueRow& row = RowNamed("L 60x30x5");
    const auto base = Make<AngleSection>(HostAngleOf(row));
    const auto relative = Make<RelativeAlphaAngle>(HostAngleOf(row));
    const ExactProperties exact = Integrate(OutlineOfAngle(0.060, 0.030, 0.005, 0.005, 0.0025));
    EXPECT_NEAR(relative.Alpha(), exact.alpha, 0.0005);
    EXPECT_NEAR(relative.Zuu() / exact.Zuu, 1.0, 0.003);
    EXPECT_NEAR(base.Zuu() / exact.Zuu, 1.22, 0.005);
}

class PropertiesAgainstPublishedTables : public testing::Test {
protected:
    void SetUp() override
    {
        if (ReferenceFolder().empty())
            GTEST_SKIP() << "Left out: needs a folder of published tables (cmake -DKELTRIX_REFERENCE_DIR=FOLDER)";
        published = ReadPublishedTables(ReferenceFolder());
    }

    PublishedTables published;
};

TEST_F(PropertiesAgainstPublishedTables, EveryUnequalAngleHasThePublishedSlopeOfItsPrincipalAxes)
{
    // The slope of the exact outline is the one computed: the tables' own slips.
    struct Slip {
        const char* name;
        double published;
        double exact;
    };
    const Slip slips[] = {{"L 45x30x4", 0.436, 0.43265},
                          {"L 60x40x5", 0.434, 0.43350},
                          {"L 70x50x6", 0.500, 0.49556},
                          {"L 200x150x18", 0.549, 0.54816}};
    int angles = 0;
    for (const CatalogueRow& row : Catalogue()) {
        if (Family(row) != "L unequal") continue;
        ++angles;
        const double tanAlpha = std::tan(Make<RelativeAlphaAngle>(HostAngleOf(row)).Alpha());
        const double table = published.at(row.name).Number("tan_alpha");
        const auto slip = std::find_if(std::begin(slips), std::end(slips),
                                       [&](const Slip& candidate) { return candidate.name == row.name; });
        if (slip == std::end(slips)) {
            EXPECT_NEAR(tanAlpha, table, 0.0005) << row.name;
        } else {
            EXPECT_EQ(table, slip->published) << row.name;
            EXPECT_NEAR(Exact(row).at("tan α"), slip->exact, 0.00001) << row.name;
            EXPECT_NEAR(tanAlpha, slip->exact, 0.00001) << row.name;
        }
    }
    EXPECT_EQ(angles, 39);
}

struct FamilyCount {
    const char* family;
    int rows, figures, agreeing;
    int formula, roundedTwice, table, approximation;
};

constexpr FamilyCount FAMILY_COUNTS[] = {
    {"UB", 107, 1177, 1078, 69, 8, 21, 1},   {"UC", 46, 506, 486, 12, 6, 2, 0},
    {"UBP", 17, 187, 178, 9, 0, 0, 0},       {"PFC", 16, 176, 170, 1, 0, 5, 0},
    {"L equal", 42, 588, 481, 28, 4, 72, 3}, {"L unequal", 39, 585, 535, 17, 2, 30, 1},
    {"T", 90, 1080, 1057, 1, 14, 8, 0},      {"SHS", 178, 1780, 1766, 0, 14, 0, 0},
    {"RHS", 312, 3120, 3081, 0, 39, 0, 0},   {"CHS", 168, 1680, 1667, 0, 13, 0, 0},
    {"CFSHS", 96, 960, 949, 0, 11, 0, 0},    {"CFRHS", 137, 1370, 1361, 0, 9, 0, 0},
    {"CFCHS", 106, 1060, 1055, 0, 5, 0, 0},  {"IPE", 18, 198, 167, 0, 0, 18, 13},
    {"HEA", 24, 216, 216, 0, 0, 0, 0},       {"HEB", 24, 216, 216, 0, 0, 0, 0},
    {"HEM", 24, 264, 232, 0, 0, 24, 8},      {"UPE", 14, 154, 120, 0, 1, 19, 14},
};

TEST_F(PropertiesAgainstPublishedTables, AgreeFamilyByFamilyAsDocsValidationSays)
{
    const std::vector<FamilyResult> results = Validate(published);
    ASSERT_EQ(results.size(), std::size(FAMILY_COUNTS));
    for (std::size_t i = 0; i < results.size(); ++i) {
        const FamilyResult& result = results[i];
        const FamilyCount& expected = FAMILY_COUNTS[i];
        SCOPED_TRACE(expected.family);
        const auto count = [&](Reason reason) {
            return static_cast<int>(std::count_if(result.figures.begin(), result.figures.end(),
                                                  [&](const Figure& figure) { return figure.reason == reason; }));
        };
        EXPECT_EQ(result.family, expected.family);
        EXPECT_EQ(result.rows, expected.rows);
        EXPECT_EQ(static_cast<int>(result.figures.size()), expected.figures);
        EXPECT_EQ(result.Agreeing(), expected.agreeing);
        EXPECT_EQ(count(Reason::Formula), expected.formula);
        EXPECT_EQ(count(Reason::RoundedTwice), expected.roundedTwice);
        EXPECT_EQ(count(Reason::Table), expected.table);
        EXPECT_EQ(count(Reason::Approximation), expected.approximation);
        for (const Figure& figure : result.figures) {
            // Where the library is what departs, it departs by little.
            if (figure.reason != Reason::Formula) continue;
            const double largest = figure.property == "H" ? 0.013 : 0.0045;
            EXPECT_NEAR(figure.computed / figure.exact, 1.0, largest) << figure.section << ' ' << figure.property;
        }
    }

    std::ifstream file(KELTRIX_VALIDATION_PAGE, std::ios::binary);
    std::stringstream page;
    page << file.rdbuf();
    EXPECT_TRUE(page.str() == ValidationReport(results))
        << "docs/validation.md is not what is computed now; cmake --build build --target validation writes it anew";
}

} // namespace
} // namespace Keltrix::Steel::Test

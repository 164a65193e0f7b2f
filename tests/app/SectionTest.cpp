#include <cmath>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"
#include "io/Failure.h"
#include "memberfile/MemberCheck.h"
#include "sections/SectionCatalogue.h"
#include "sections/SectionOutline.h"
#include "sections/SectionShapes.h"
#include "sections/SectionSvg.h"
#include "sections/SectionValues.h"
#include "text/Text.h"

namespace Keltrix::App {
namespace {

using ::testing::HasSubstr;

std::map<std::string, double> ValuesOf(const std::string& name)
{
    std::map<std::string, double> values;
    for (const SectionValue& value : SectionPropertyValues(FindSection(name).section))
        values[value.symbol] = value.si * value.factor;
    return values;
}

std::string RefusalOf(const std::string& name)
{
    try {
        FindSection(name);
        return "no refusal";
    } catch (const BadInput& failure) {
        return failure.what();
    }
}

// SCI P363, Steel Building Design: Design Data, section property tables.
TEST(Section, PropertiesAgreeWithTheDesignTables)
{
    const auto ub = ValuesOf("UB 457x191x67");
    EXPECT_NEAR(ub.at("A"), 85.5, 0.05);
    EXPECT_NEAR(ub.at("Ixx"), 29400, 50);
    EXPECT_NEAR(ub.at("Iyy"), 1450, 5);
    EXPECT_NEAR(ub.at("Sxx"), 1470, 5);
    EXPECT_NEAR(ub.at("Zxx"), 1300, 5);
    EXPECT_NEAR(ub.at("ry"), 4.12, 0.005);
    EXPECT_NEAR(ub.at("J"), 37.1, 0.05);
    EXPECT_NEAR(ub.at("Iw"), 0.705, 0.005);
    const auto chs = ValuesOf("CHS 168.3x5");
    EXPECT_NEAR(chs.at("Ixx"), 856, 0.5);
    EXPECT_NEAR(chs.at("J"), 1710, 5);
}

struct TanAlphaRow {
    const char* name;
    double tanAlpha;
};

// SCI P363, unequal angles.
TEST(Section, TheInclinationOfSmallAnglesIsThePublishedOne)
{
    static constexpr TanAlphaRow rows[] = {
        {"L 200x100x10", 0.263}, {"L 150x75x10", 0.261}, {"L 100x75x8", 0.547}, {"L 60x30x5", 0.257}};
    for (const TanAlphaRow& row : rows) {
        const auto geometry = MakeGeometry(FindSection(row.name).section);
        const auto& angle = dynamic_cast<const AngleShape&>(*geometry);
        EXPECT_NEAR(std::tan(angle.Alpha()), row.tanAlpha, 0.0006) << row.name;
    }
}

TEST(Section, AnglesWithTheLongLegLyingTurnBeyondFortyFiveDegrees)
{
    const auto upright = MakeGeometry(FindSection("ANGLE 60x30x5x5x2.5").section);
    const auto lying = MakeGeometry(FindSection("ANGLE 30x60x5x5x2.5").section);
    const double alpha = dynamic_cast<const AngleShape&>(*upright).Alpha();
    EXPECT_NEAR(dynamic_cast<const AngleShape&>(*lying).Alpha(), std::acos(0.0) - alpha, 1e-12);
    const auto equal = MakeGeometry(FindSection("L 20x20x3").section);
    EXPECT_NEAR(dynamic_cast<const AngleShape&>(*equal).Alpha(), std::atan(1.0), 1e-12);
}

TEST(Section, TinyAnglesKeepTheirPrincipalMoments)
{
    const auto geometry = MakeGeometry(FindSection("ANGLE 8x8x1").section);
    const auto& angle = dynamic_cast<const AngleShape&>(*geometry);
    EXPECT_NEAR(angle.Iuu() / (angle.Ixx() - angle.Ixy()), 1.0, 1e-9); // equal legs: the axes lie at 45°
}

// The drawing against the closed formulas: both describe the same figure.
TEST(Section, EveryCatalogueSectionIsDrawnWithTheAreaOfItsFormula)
{
    for (const CSectDB::Entry& entry : CSectDB::GetDatabase()->Entries()) {
        const CSection section(entry.designation);
        const auto geometry = MakeGeometry(section);
        ASSERT_TRUE(geometry) << Utf8(entry.designation);
        const SectionOutline outline = MakeOutline(section);
        EXPECT_NEAR(outline.Area() / geometry->Area(), 1.0, 2e-3) << Utf8(entry.designation);
        EXPECT_GT(outline.HalvingHeight(), 0.0);
        EXPECT_LT(outline.HalvingHeight(), outline.top);
    }
}

TEST(Section, AxesOfEqualAreasAreWhereTheyMustBe)
{
    const SectionOutline beam = MakeOutline(FindSection("UB 457x191x67").section);
    EXPECT_NEAR(beam.HalvingHeight(), 0.4534 / 2, 1e-9);
    EXPECT_NEAR(beam.HalvingX(), 0.0, 1e-9);
    // Top flange 200x20 = 4000 mm², web 300x10 = 3000 mm²: half of 7000 mm² lies 17.5 mm below the top.
    const SectionOutline tee = MakeOutline(FindSection("TEE 320x200x10x20").section);
    EXPECT_NEAR(tee.HalvingHeight(), 0.320 - 0.0175, 1e-9);
    // Web at the left 200x10 = 2000 mm², flanges 2 of 90x10 = 1800 mm²: 1900/200 = 9.5 mm from the back.
    const SectionOutline channel = MakeOutline(FindSection("C 200x100x10x10").section);
    EXPECT_NEAR(channel.HalvingX(), 0.0095, 1e-9);
}

// EN 10219-2: corners of 3t and 2t above 10 mm, 2t and 1t up to 6 mm. A box of plates has none: 2 · 200 · 12 + 2 · 276 · 8 mm².
TEST(Section, HollowSectionsHaveTheCornersOfTheirProduct)
{
    const auto thick = ValuesOf("CFRHS 250x150x12.5");
    EXPECT_NEAR(thick.at("A"), 87.0, 0.05);
    EXPECT_NEAR(thick.at("Ixx"), 6630, 5);
    EXPECT_NEAR(thick.at("Sxx"), 678, 0.5);
    const auto thin = ValuesOf("CFRHS 250x150x6");
    EXPECT_NEAR(thin.at("A"), 45.6, 0.05);
    EXPECT_NEAR(thin.at("Ixx"), 3890, 5);
    EXPECT_NEAR(ValuesOf("BOX 300x200x8x12").at("A"), 92.16, 1e-9);
}

TEST(Section, CentroidsOfHollowSectionsAreAtTheirMiddle)
{
    const auto box = ValuesOf("BOX 200x100x5x8");
    EXPECT_DOUBLE_EQ(box.at("Xbar"), 50.0);
    EXPECT_DOUBLE_EQ(box.at("Ybar"), 100.0);
    EXPECT_NEAR(box.at("Yp"), 100.0, 1e-9);
}

TEST(Section, UnknownNamesGetTheNearestOnes)
{
    EXPECT_THAT(RefusalOf("UB 457x191x68"), HasSubstr("unknown section \"UB 457x191x68\"; nearest: UB 457x191x67, "));
    EXPECT_THAT(RefusalOf(""), HasSubstr("unknown section \"\""));
    EXPECT_THAT(RefusalOf("\xFF<b>"), HasSubstr("unknown section"));
}

TEST(Section, OtherSpellingsShowTheCataloguesName)
{
    for (const auto& [text, name] : {std::pair{"UKB 457x191x67", "UB 457x191x67"},
                                     {"HE 200 B", "HEB 200"},
                                     {"SHS 100x5.0", "SHS 100x100x5"},
                                     {"RHS 200*100*6.3", "RHS 200x100x6.3"}}) {
        const NamedSection section = FindSection(text);
        EXPECT_EQ(section.name, name);
        ASSERT_TRUE(section.entry) << text;
        EXPECT_EQ(MassPerMetre(section), MassPerMetre(FindSection(name)));
    }
}

TEST(Section, DimensionsThatAreNoSectionAreRefused)
{
    for (const char* name : {"I 10x100x5x6", "TUBE 10x5", "BOX 10x10x5x5", "ANGLE 10x10x5x5x5", "TEE 10x10x2x11x1x0",
                             "C 100x10x5x5x10x0", "GI 100x50x50x5x60x60"})
        EXPECT_THAT(RefusalOf(name), HasSubstr("these dimensions do not fit together to a section")) << name;
}

// One rule of what is a section, for the section commands and for member files.
TEST(Section, RandomDimensionsAreASectionForMemberFilesExactlyWhereTheyAreOneByThemselves)
{
    constexpr unsigned seed = 20250311;
    std::mt19937 dice(seed);
    const auto size = [&] { return std::to_string(std::uniform_int_distribution<int>(0, 40)(dice)); };
    struct Kind {
        const char* word;
        int dimensions;
    };
    int fitting = 0;
    int refused = 0;
    for (int i = 0; i < 3000; ++i) {
        static constexpr Kind kinds[] = {{"I", 5},     {"GI", 7},  {"C", 6},   {"TEE", 6},
                                         {"ANGLE", 5}, {"BOX", 4}, {"TUBE", 2}};
        const Kind& kind = kinds[static_cast<std::size_t>(i) % std::size(kinds)];
        std::string name = std::string(kind.word) + ' ' + std::to_string(100 + i % 50) + "x" + size();
        for (int k = 2; k < kind.dimensions; ++k)
            name += 'x' + size();
        std::string text = Trial::GOOD_MEMBER;
        const std::size_t at = text.find("SECTION,") + 8;
        text.replace(at, text.find(',', at) - at, name);
        const bool isSection = RefusalOf(name) == "no refusal";
        (isSection ? fitting : refused)++;
        const CString wide = Wide(text);
        EXPECT_EQ(CheckMemberFile(wide).Errors() == 0, isSection) << name << ", seed " << seed;
    }
    EXPECT_GT(fitting, 300);
    EXPECT_GT(refused, 300);
}

TEST(Section, TheDrawingIsToScaleWithItsAxes)
{
    const std::string svg = SectionSvg(FindSection("UB 457x191x67").section, "UB <1> & \"2\"");
    EXPECT_THAT(svg, HasSubstr("<title>UB &lt;1&gt; &amp; &quot;2&quot;</title>"));
    // Bottom right corner of the bottom flange, in mm from the top left one.
    EXPECT_THAT(svg, HasSubstr("d=\"M189.9000,453.4000 L189.9000,440.7000"));
    EXPECT_THAT(svg, HasSubstr(" A10.20000,10.20000 0 0 1 ")); // root fillets turn inwards
    EXPECT_THAT(svg, HasSubstr("class=\"plastic\""));
    EXPECT_THAT(svg, HasSubstr(">x</text>"));
    EXPECT_THAT(svg, ::testing::Not(HasSubstr(">u</text>")));
    EXPECT_THAT(SectionSvg(FindSection("L 60x30x5").section, "L"), HasSubstr(">u</text>"));
}

TEST(Section, EveryShapeHasADrawing)
{
    for (const char* name : {"UB 457x191x67", "GI 500x200x150x10x15x12x8", "PFC 200x90x30", "T 229x191x34",
                             "L 150x75x10", "RHS 200x100x6.3", "CFRHS 200x100x6", "CHS 168.3x5", "BOX 200x100x5x5"}) {
        const std::string svg = SectionSvg(FindSection(name).section, name);
        EXPECT_THAT(svg, HasSubstr("</svg>")) << name;
        for (const char* noNumber : {"nan,", "nan\"", "inf"})
            EXPECT_THAT(svg, ::testing::Not(HasSubstr(noNumber))) << name;
    }
}

} // namespace
} // namespace Keltrix::App

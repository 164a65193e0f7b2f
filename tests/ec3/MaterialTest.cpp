// Strengths of the product standards and of Table 3.1.

#include <cmath>

#include <gtest/gtest.h>

#include "keltrix/ec3/Material.h"

using namespace Keltrix;
using namespace Keltrix::EC3;
using Design::Fabrication;

namespace {

CSteelGrade GradeNamed(const wchar_t* name) { return {CString(name), 0.0, 0.0, 0.0, 1.0}; }

struct Figure {
    const wchar_t* grade;
    double mm;
    bool hollow;
    Fabrication fabrication;
    double fy; // N/mm²; 0: refused
    double fu;
};

void Expect(const std::vector<Figure>& figures, const Annex& annex)
{
    for (const Figure& f : figures) {
        SCOPED_TRACE(testing::Message() << CString(f.grade).ToUtf8().value_or("") << " " << f.mm << " mm");
        const Material m = MakeMaterial(GradeNamed(f.grade), f.mm / 1000.0, f.hollow, f.fabrication, annex);
        EXPECT_EQ(m.IsValid(), f.fy > 0.0);
        EXPECT_DOUBLE_EQ(m.fy / 1e6, f.fy);
        EXPECT_DOUBLE_EQ(m.fu / 1e6, f.fu);
    }
}

} // namespace

// BS EN 10025-2:2004, Table 7; EN 10210-1, Table A.3; EN 10219-1, Table A.3.
TEST(Material, HasTheStrengthsOfTheProductStandardsInTheUk)
{
    constexpr auto ROLLED = Fabrication::Rolled;
    Expect({{L"S235", 16, false, ROLLED, 235, 360},
            {L"S235JR", 16.1, false, ROLLED, 225, 360},
            {L"S275", 16, false, ROLLED, 275, 410},
            {L"S275", 40, false, ROLLED, 265, 410},
            {L"S275J0", 63, false, ROLLED, 255, 410},
            {L"S275", 140, false, ROLLED, 225, 400},
            {L"S355", 20.7, false, ROLLED, 345, 470},
            {L"S355", 63.1, false, ROLLED, 325, 470},
            {L"S355", 151, false, ROLLED, 0, 0},
            {L"S460M", 40, false, ROLLED, 440, 540},
            {L"S460", 101, false, ROLLED, 0, 0},
            {L"S420N", 12, false, ROLLED, 420, 520},
            {L"S355J2H", 17, true, ROLLED, 345, 470},
            {L"S355J2H", 41, true, Fabrication::Formed, 0, 0},
            {L"S355", 41, true, Fabrication::Welded, 335, 470}},
           UkAnnex());
}

// EN 1993-1-1:2005, Table 3.1.
TEST(Material, HasTheStrengthsOfTable31WhereTheyAreRecommended)
{
    constexpr auto ROLLED = Fabrication::Rolled;
    Expect({{L"S235", 40, false, ROLLED, 235, 360},
            {L"S275", 17, false, ROLLED, 275, 430},
            {L"S355", 40, false, ROLLED, 355, 490},
            {L"S355", 41, false, ROLLED, 335, 470},
            {L"S355", 81, false, ROLLED, 0, 0},
            {L"S460", 41, false, ROLLED, 430, 530},
            // Hollow sections, EN 10210-1 and the lower qualities of EN 10219-1.
            {L"S235", 40, true, ROLLED, 235, 360},
            {L"S235", 41, true, ROLLED, 215, 340},
            {L"S420", 10, true, Fabrication::Formed, 420, 500},
            {L"S420", 10, false, ROLLED, 420, 520},
            {L"S460", 10, true, Fabrication::Formed, 460, 530}},
           RecommendedAnnex());
}

// EN 10025-3 and -4, tensile strength of S275N 370 (350 above 100 mm) and of S275M 370, 360, 350, 350, 340 up to 40, 63, 80, 100 and 120 mm; of
// S355M 470, 450, 440, 440, 430: the lower ones of N and M, where the name says fine grain. S275NH 370 (EN 10210-1, to 65 mm), S275MH 360 (EN 10219-1).
// Table 3.1: S275N 390 and 370, S275M 370 and 360; S355N 490 and 470, S355M 470 and 450; S275NH 390 and 370, cold formed S275MH 360, S355NH 470.
TEST(Material, OfFineGrainSteelsHasItsOwnTensileStrength)
{
    constexpr auto ROLLED = Fabrication::Rolled;
    Expect({{L"S275N", 16, false, ROLLED, 275, 370},
            {L"S275ML", 41, false, ROLLED, 255, 360},
            {L"s275 nl", 64, false, ROLLED, 245, 350},
            {L"S275N", 120, false, ROLLED, 225, 340},
            {L"S355N", 40, false, ROLLED, 345, 470},
            {L"S355M", 41, false, ROLLED, 335, 450},
            {L"S355M", 64, false, ROLLED, 325, 440},
            {L"S355NL", 101, false, ROLLED, 295, 430},
            {L"S275NH", 16, true, ROLLED, 275, 370},
            {L"S275NH", 66, true, ROLLED, 0, 0},
            {L"S275MH", 16, true, Fabrication::Formed, 275, 360},
            {L"S355NLH", 20, true, ROLLED, 345, 470},
            {L"S275JR", 16, false, ROLLED, 275, 410}},
           UkAnnex());
    Expect({{L"S275N", 40, false, ROLLED, 275, 370},
            {L"S275M", 41, false, ROLLED, 255, 360},
            {L"S355N", 40, false, ROLLED, 355, 470},
            {L"S355M", 41, false, ROLLED, 335, 450},
            {L"S275NH", 40, true, ROLLED, 275, 390},
            {L"S275MH", 10, true, Fabrication::Formed, 275, 360},
            {L"S355NH", 41, true, ROLLED, 335, 470},
            {L"S355MH", 10, true, Fabrication::Formed, 355, 470},
            {L"S355J2", 40, false, ROLLED, 355, 490}},
           RecommendedAnnex());
    const auto source = [](const wchar_t* grade, bool hollow) {
        return std::wstring(MakeMaterial(GradeNamed(grade), 0.01, hollow, Fabrication::Rolled, UkAnnex()).source);
    };
    EXPECT_EQ(source(L"S275N", false), L"EN 10025-3 and EN 10025-4");
    EXPECT_EQ(source(L"S275", false), L"EN 10025-2");
    EXPECT_EQ(source(L"S275NH", true), L"EN 10210-1");
}

TEST(Material, TakesAUsersGradeWithinTheStandard)
{
    const auto make = [](double fy, double fu, double modulus, double factor) {
        return MakeMaterial(CSteelGrade(L"User_defined", fy, fu, modulus, factor), 0.02, false, Fabrication::Rolled,
                            UkAnnex());
    };
    const Material m = make(300e6, 400e6, 205e9, 1.25);
    EXPECT_DOUBLE_EQ(m.fy, 240e6);
    EXPECT_DOUBLE_EQ(m.fu, 320e6);
    EXPECT_DOUBLE_EQ(m.G, 81e9 * 205.0 / 210.0);
    EXPECT_TRUE(make(300e6, 0.0, 0.0, 1.0).fuAssumed);
    EXPECT_DOUBLE_EQ(make(300e6, 0.0, 0.0, 1.0).fu, 300e6);
    EXPECT_TRUE(make(460e6, 0.0, 0.0, 1.0).IsValid());
    EXPECT_FALSE(make(461e6, 0.0, 0.0, 1.0).IsValid()) << "beyond EN 1993-1-1";
    EXPECT_FALSE(make(300e6, 299e6, 0.0, 1.0).IsValid());
    EXPECT_FALSE(make(0.0, 0.0, 0.0, 1.0).IsValid());
    EXPECT_FALSE(make(300e6, 0.0, 0.0, 0.0).IsValid());
}

TEST(Material, KnowsGradesByTheirNames)
{
    EXPECT_EQ(GradeFromName(L"s355 j2h"), Grade::S355);
    EXPECT_EQ(GradeFromName(L"S460NL"), Grade::S460);
    EXPECT_EQ(GradeFromName(L"user_defined"), Grade::User);
    EXPECT_EQ(GradeFromName(L"S450"), Grade::None);
    EXPECT_EQ(GradeFromName(L"S355X"), Grade::None);
}

// EN 10210-1, the lower of fine grain qualities of hollow sections; Table 3.1 of hollow sections; beyond the tables, and for no thickness, none.
TEST(Material, OfHollowSectionsHasTheLowerFigures)
{
    const auto made = [](const wchar_t* grade, double mm, Fabrication fabrication, const Annex& annex) {
        return MakeMaterial(CSteelGrade(CString(grade), 0.0, 0.0, 0.0, 1.0), mm / 1000.0, true, fabrication, annex);
    };
    EXPECT_DOUBLE_EQ(made(L"S420", 50.0, Fabrication::Rolled, UkAnnex()).fy, 390e6);
    EXPECT_DOUBLE_EQ(made(L"S420", 50.0, Fabrication::Rolled, UkAnnex()).fu, 500e6);
    EXPECT_DOUBLE_EQ(made(L"S460", 40.0, Fabrication::Rolled, UkAnnex()).fy, 440e6);
    EXPECT_DOUBLE_EQ(made(L"S460", 40.0, Fabrication::Rolled, UkAnnex()).fu, 530e6);
    EXPECT_FALSE(made(L"S460", 66.0, Fabrication::Rolled, UkAnnex()).IsValid());
    EXPECT_DOUBLE_EQ(made(L"S235", 50.0, Fabrication::Rolled, RecommendedAnnex()).fu, 340e6);
    EXPECT_DOUBLE_EQ(made(L"S420", 20.0, Fabrication::Rolled, RecommendedAnnex()).fu, 520e6);
    EXPECT_DOUBLE_EQ(made(L"S460", 20.0, Fabrication::Formed, RecommendedAnnex()).fu, 530e6);
    for (const double thickness : {0.0, -10.0, std::nan("")})
        EXPECT_FALSE(made(L"S355", thickness, Fabrication::Rolled, UkAnnex()).IsValid());
}

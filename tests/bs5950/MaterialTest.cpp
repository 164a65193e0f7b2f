#include <gtest/gtest.h>

#include "Members.h"

using namespace BS5950Test;

namespace {

struct StrengthRow {
    Grade grade;
    double thickness; // mm
    double py;        // N/mm², 0 outside the table
};

// BS 5950-1:2000, Table 9.
constexpr StrengthRow TABLE_9[] = {
    {Grade::S275, 3, 275},   {Grade::S275, 16, 275},  {Grade::S275, 16.1, 265}, {Grade::S275, 40, 265},
    {Grade::S275, 63, 255},  {Grade::S275, 80, 245},  {Grade::S275, 100, 235},  {Grade::S275, 150, 225},
    {Grade::S275, 150.1, 0}, {Grade::S355, 16, 355},  {Grade::S355, 40, 345},   {Grade::S355, 63, 335},
    {Grade::S355, 80, 325},  {Grade::S355, 100, 315}, {Grade::S355, 150, 295},  {Grade::S355, 151, 0},
    {Grade::S460, 16, 460},  {Grade::S460, 40, 440},  {Grade::S460, 63, 430},   {Grade::S460, 80, 410},
    {Grade::S460, 100, 400}, {Grade::S460, 100.1, 0}, {Grade::S275, 0, 0},      {Grade::S275, -1, 0},
};

} // namespace

TEST(Table9, GivesTheDesignStrengthOfEveryRowAndNothingOutsideIt)
{
    for (const StrengthRow& row : TABLE_9)
        EXPECT_DOUBLE_EQ(DesignStrengthTable9(row.grade, row.thickness / 1000.0), row.py * 1e6)
            << "grade " << static_cast<int>(row.grade) << ", thickness " << row.thickness << " mm";
    EXPECT_EQ(DesignStrengthTable9(Grade::S275, std::nan("")), 0.0);
}

TEST(GradeNames, AreThoseOfTheStandardWithOrWithoutAQuality)
{
    EXPECT_EQ(GradeFromName(L"S275"), Grade::S275);
    EXPECT_EQ(GradeFromName(L" s 355 j2h"), Grade::S355);
    EXPECT_EQ(GradeFromName(L"S460NL"), Grade::S460);
    EXPECT_EQ(GradeFromName(L"User_defined"), Grade::User);
    for (const wchar_t* name : {L"", L"S235", L"S2755", L"S355XYZ", L"275", L"User"})
        EXPECT_EQ(GradeFromName(name), Grade::None) << CString(name).ToUtf8()->c_str();
}

TEST(UserDefinedGrades, TakeTheGivenStrengthsAndRefuseWhatIsNone)
{
    const auto make = [](double py, double pu, double e, double factor) {
        return MakeMaterial(CSteelGrade(L"User_defined", py, pu, e, factor), 0.2);
    };
    EXPECT_DOUBLE_EQ(make(300e6, 0, 0, 1).py, 300e6);
    EXPECT_TRUE(make(300e6, 0, 0, 1).keAssumed);
    EXPECT_DOUBLE_EQ(make(300e6, 0, 0, 1).E, 205e9);
    // 3.1.1: not above Us/1.2 = 250.
    EXPECT_DOUBLE_EQ(make(300e6, 300e6, 0, 1).py, 250e6);
    EXPECT_TRUE(make(300e6, 300e6, 0, 1).limitedByUs);
    // 3.4.3: Ke = (Us/1.2)/py = (480/1.2)/320 = 1.25.
    EXPECT_DOUBLE_EQ(make(320e6, 480e6, 0, 1).Ke, 1.25);
    EXPECT_DOUBLE_EQ(make(300e6, 0, 200e9, 1).E, 200e9);
    EXPECT_DOUBLE_EQ(make(300e6, 0, 0, 1.25).py, 240e6);
    for (const Material& m : {make(0, 0, 0, 1), make(-1, 0, 0, 1), make(std::nan(""), 0, 0, 1), make(300e6, -1, 0, 1),
                              make(300e6, 0, 0, 0), make(300e6, 0, -1, 1)}) {
        EXPECT_FALSE(m.IsValid());
        EXPECT_EQ(m.py, 0.0);
    }
}

TEST(NetAreaCoefficient, IsThatOfTheGrade)
{
    EXPECT_EQ(MakeMaterial(GradeNamed(L"S275"), 0.01).Ke, 1.2);
    EXPECT_EQ(MakeMaterial(GradeNamed(L"S355"), 0.01).Ke, 1.1);
    EXPECT_EQ(MakeMaterial(GradeNamed(L"S460"), 0.01).Ke, 1.0);
}

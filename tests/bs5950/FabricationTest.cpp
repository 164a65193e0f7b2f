// How a section is made, and the properties that follow from it.

#include <gtest/gtest.h>

#include "Members.h"

using namespace BS5950Test;

namespace {

struct MakeRow {
    const wchar_t* section;
    int type;
    Fabrication made;
    bool assumed;
    bool contradicted;
};

} // namespace

// The catalogue's row says how its section is made where the type does not; of two that differ the less favourable counts; a
// parametric section is made as its type says, welded where it says nothing.
TEST(FabricationRule, AsksTheTypeAndTheCatalogue)
{
    using enum Fabrication;
    constexpr MakeRow ROWS[] = {
        {L"UB 457x191x67", SEC_ROLLED, Rolled, false, false},    {L"UB 457x191x67", SEC_UNDEF, Rolled, true, false},
        {L"UB 457x191x67", SEC_WELDED, Welded, false, true},     {L"RHS 200x100x6.3", SEC_UNDEF, Rolled, true, false},
        {L"RHS 200x100x6.3", SEC_FORMED, Formed, false, true},   {L"RHS 200x100x6.3", SEC_WELDED, Welded, false, true},
        {L"CFRHS 200x100x5", SEC_FORMED, Formed, false, false},  {L"CFRHS 200x100x5", SEC_UNDEF, Formed, true, false},
        {L"CFRHS 200x100x5", SEC_ROLLED, Formed, false, true},   {L"CFRHS 200x100x5", SEC_WELDED, Formed, false, true},
        {L"CFCHS 168.3x5", SEC_UNDEF, Formed, true, false},      {L"CFCHS 168.3x5", SEC_OTHER, Formed, true, false},
        {L"I 800x350x8x14", SEC_UNDEF, Welded, true, false},     {L"I 800x350x8x14", SEC_OTHER, Welded, true, false},
        {L"I 800x350x8x14", SEC_ROLLED, Rolled, false, false},   {L"I 800x350x8x14", SEC_WELDED, Welded, false, false},
        {L"I 800x350x8x14", SEC_WELDED_2, Welded, false, false}, {L"BOX 300x200x8x12", SEC_UNDEF, Welded, true, false},
        {L"TUBE 300x8", SEC_UNDEF, Welded, true, false},         {L"TUBE 300x8", SEC_FORMED, Formed, false, false},
    };
    for (const MakeRow& row : ROWS) {
        const SectionProperties s = PropertiesOf(row.section, row.type);
        const std::string name = *CString(row.section).ToUtf8() + " type " + std::to_string(row.type);
        EXPECT_EQ(s.fabrication, row.made) << name;
        EXPECT_EQ(s.fabricationAssumed, row.assumed) << name;
        EXPECT_EQ(s.fabricationContradicted, row.contradicted) << name;
        EXPECT_EQ(FabricationNote(s) != nullptr, row.assumed || row.contradicted) << name;
    }
}

// CFRHS 200x100x5 S275 without a type, strut of 4 m under 480 kN: Table 23 curve c, not a. A = 28.4 cm², ry = 4.19 cm (EN
// 10219-2): λ = 95.5, λ0 = 17.16, η = 5.5 · 78.3/1000 = 0.431, pE = 221.8, φ = (275 + 1.431 · 221.8)/2 = 296.2, pc = 60995/(296.2
// + 163.5) = 132.7, Pcy = 376.8 kN: 1.274 with the three figures that the table prints.
TEST(FabricationRule, ReachesTheCheckAndIsAnAssumption)
{
    Case given;
    given.section = L"CFRHS 200x100x5";
    given.points = {{0.0, L"Pinned"}, {4.0, L"Pinned"}};
    given.force = [](double) { return Vector(-480e3, 0, 0); };
    double utilisation = 0.0;
    for (const int type : {SEC_FORMED, SEC_UNDEF, SEC_ROLLED}) {
        given.type = type;
        Checked c(given);
        EXPECT_FALSE(c.Check()) << type;
        EXPECT_EQ(c.Assumes(L"fabrication"), type != SEC_FORMED) << type;
        const double found = c.Entry(Rule::BucklingMinor).utilisation;
        if (type == SEC_FORMED)
            utilisation = found;
        else
            EXPECT_EQ(found, utilisation) << type;
    }
    EXPECT_NEAR(utilisation, 1.274, 0.003);
}

// Plate girder I 800x350x8x14 S275, 5 m, uniform moment: without a type it is welded (Annex B.2.2).
TEST(FabricationRule, PlateGirdersAreWelded)
{
    Case given;
    given.section = L"I 800x350x8x14";
    given.points = {{0.0, L"Pinned"}, {5.0, L"Pinned"}};
    EndMoments(given, 5.0, -1050e3, -1050e3);
    given.type = SEC_UNDEF;
    Checked assumed(given);
    assumed.Check();
    given.type = SEC_WELDED;
    Checked welded(given);
    welded.Check();
    EXPECT_EQ(assumed.Entry(Rule::LateralTorsional).utilisation, welded.Entry(Rule::LateralTorsional).utilisation);
    EXPECT_NEAR(welded.Entry(Rule::LateralTorsional).utilisation, 1.123, 0.001);
    EXPECT_TRUE(assumed.Assumes(L"fabrication"));
    EXPECT_FALSE(welded.Assumes(L"fabrication"));
}

namespace {

struct ColdFormedRow {
    const wchar_t* section;
    double A, Ix, Iy, Zx, Zy, Sx, Sy, J; // cm², cm⁴, cm³
};

} // namespace

// EN 10219-2: corner radii 2t/1t up to 6 mm, 2.5t/1.5t up to 10 mm, 3t/2t above. Published to three figures.
TEST(ColdFormedHollowSections, HaveTheCornersOfTheirThickness)
{
    constexpr ColdFormedRow ROWS[] = {
        {L"CFRHS 250x150x6", 45.6, 3890, 1770, 311, 236, 378, 266, 3890},
        {L"CFRHS 300x200x6", 57.6, 7370, 3960, 491, 396, 588, 446, 8120},
        {L"CFRHS 400x200x12", 132, 26200, 8980, 1310, 898, 1660, 1030, 22800},
        {L"CFRHS 500x300x12.5", 187, 62700, 28700, 2510, 1910, 3070, 2170, 65000},
    };
    const auto agrees = [](double value, double published) {
        return std::abs(value - published) <= 0.5 * std::pow(10.0, std::floor(std::log10(published)) - 2.0) * 1.0001;
    };
    for (const ColdFormedRow& row : ROWS) {
        const SectionProperties s = PropertiesOf(row.section);
        const std::string name = *CString(row.section).ToUtf8();
        EXPECT_TRUE(agrees(s.A * 1e4, row.A)) << name << " A " << s.A * 1e4;
        EXPECT_TRUE(agrees(s.Ix * 1e8, row.Ix)) << name << " Ix " << s.Ix * 1e8;
        EXPECT_TRUE(agrees(s.Iy * 1e8, row.Iy)) << name << " Iy " << s.Iy * 1e8;
        EXPECT_TRUE(agrees(s.Zx * 1e6, row.Zx)) << name << " Zx " << s.Zx * 1e6;
        EXPECT_TRUE(agrees(s.Zy * 1e6, row.Zy)) << name << " Zy " << s.Zy * 1e6;
        EXPECT_TRUE(agrees(s.Sx * 1e6, row.Sx)) << name << " Sx " << s.Sx * 1e6;
        EXPECT_TRUE(agrees(s.Sy * 1e6, row.Sy)) << name << " Sy " << s.Sy * 1e6;
        EXPECT_TRUE(agrees(s.J * 1e8, row.J)) << name << " J " << s.J * 1e8;
    }
}

// The capacity table, held against published tables.

#include "keltrix/ec3/Capacity.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "PublishedRows.h"
#include "keltrix/ec3/Critical.h"
#include "keltrix/ec3/DesignCode.h"
#include "keltrix/ec3/SteelMemberEC3.h"

using namespace Keltrix;
using namespace Keltrix::EC3;
using EC3Test::PublishedRows;

namespace EC3Test {

class PublishedCapacity : public testing::Test {
protected:
    const SectionCapacity& Of(const std::string& family, const std::string& grade, const std::string& section)
    {
        const std::string name = family + " " + section;
        const auto [it, isNew] = m_known.try_emplace(name + grade);
        if (isNew)
            it->second.emplace(CSection(CString::FromUtf8(name).value()),
                               CSteelGrade(CString::FromUtf8(grade).value(), 0.0, 0.0, 0.0, 1.0), UkAnnex());
        return *it->second;
    }

private:
    std::map<std::string, std::optional<SectionCapacity>> m_known;
};

} // namespace EC3Test

using EC3Test::PublishedCapacity;

// Every row, with the sections whose webs can be class 4.
TEST_F(PublishedCapacity, CompressionOfEverySection)
{
    int count = 0;
    const auto rows = PublishedRows("ukna_compression.csv");
    SKIP_WITHOUT(rows);
    for (const auto& row : rows) {
        const SectionCapacity& c = Of(row.at("family"), row.at("grade"), row.at("section"));
        const double L = std::stod(row.at("L_m"));
        const std::optional<double> N = row.at("axis") == "y"   ? c.NbyRd(L)
                                        : row.at("axis") == "z" ? c.NbzRd(L)
                                                                : c.NbTRd(L);
        ASSERT_TRUE(N);
        const double published = std::stod(row.at("Nb_Rd_kN"));
        EXPECT_NEAR(*N / 1000.0, published, 0.015 * published) << row.at("family") << " " << row.at("section") << " "
                                                               << row.at("grade") << " " << row.at("axis") << " " << L;
        ++count;
    }
    EXPECT_GT(count, 7000);
}

TEST_F(PublishedCapacity, ClassAndBendingOfEverySection)
{
    int third = 0, count = 0;
    const auto rows = PublishedRows("ukna_bending.csv");
    SKIP_WITHOUT(rows);
    for (const auto& row : rows) {
        const SectionCapacity& c = Of(row.at("family"), row.at("grade"), row.at("section"));
        EXPECT_EQ(c.MajorBending().cls, std::stoi(row.at("class_bending_y")))
            << row.at("section") << " " << row.at("grade");
        EXPECT_NEAR(c.McyRd().value() / 1000.0, std::stod(row.at("Mc_y_Rd_kNm")),
                    0.015 * std::stod(row.at("Mc_y_Rd_kNm")))
            << row.at("section");
        EXPECT_NEAR(c.MczRd().value() / 1000.0, std::stod(row.at("Mc_z_Rd_kNm")),
                    0.015 * std::stod(row.at("Mc_z_Rd_kNm")))
            << row.at("section");
        const double published = std::stod(row.at("Mb_Rd_kNm"));
        const double Mb = c.MbRd(std::stod(row.at("L_m")), std::stod(row.at("C1"))).value() / 1000.0;
        EXPECT_NEAR(Mb, published, 0.015 * published) << row.at("section") << " " << row.at("grade");
        third += std::abs(Mb - published) <= 0.5001 * std::pow(10.0, std::floor(std::log10(published)) - 2.0);
        ++count;
    }
    EXPECT_GT(third, 0.6 * count);
}

// Published tables, UK National Annex: UB 457x191x67 in S275, C1 = 1.00.
TEST(Capacity, HasTheFiguresOfAPublishedTable)
{
    const SectionCapacity c(CSection(L"UB 457x191x67"), CSteelGrade(L"S275", 0.0, 0.0, 0.0, 1.0), UkAnnex());
    EXPECT_NEAR(c.McyRd().value() / 1e3, 404.0, 1.5);
    EXPECT_NEAR(c.MbRd(4.0, 1.0).value() / 1e3, 278.0, 1.0);
    EXPECT_GT(c.MbRd(4.0, 1.77).value(), c.MbRd(4.0, 1.0).value());
    EXPECT_FALSE(c.MNyRd(0.9)) << "the web is class 4 then";
    EXPECT_EQ(c.MNyRd(0.0), c.McyRd());
}

// No force leaves the moment, the whole force leaves none; in between it falls.
TEST(Capacity, ReducedMomentsFallFromTheFullOneToNothing)
{
    const SectionCapacity c(CSection(L"UC 254x254x89"), CSteelGrade(L"S275", 0.0, 0.0, 0.0, 1.0), UkAnnex());
    double y = c.McyRd().value(), z = c.MczRd().value();
    EXPECT_DOUBLE_EQ(c.MNyRd(0.0).value(), y);
    EXPECT_DOUBLE_EQ(c.MNzRd(0.0).value(), z);
    for (int i = 1; i <= 10; ++i) {
        EXPECT_LE(c.MNyRd(i / 10.0).value(), y);
        EXPECT_LE(c.MNzRd(i / 10.0).value(), z);
        y = c.MNyRd(i / 10.0).value();
        z = c.MNzRd(i / 10.0).value();
    }
    EXPECT_NEAR(y, 0.0, 1e-6);
    EXPECT_NEAR(z, 0.0, 1e-6);
}

TEST(Capacity, TheTableTakesTheShapeOfTheMoment)
{
    Design::CodeSettings settings;
    const CSection section(L"UB 457x191x67");
    const CSteelGrade grade(L"S275", 0.0, 0.0, 0.0, 1.0);
    const auto uniform = Code().Capacities(section, grade, {4.0}, settings);
    settings.C1 = 1.77;
    const auto shaped = Code().Capacities(section, grade, {4.0}, settings);
    ASSERT_EQ(uniform.buckling.size(), 4u);
    EXPECT_STREQ(uniform.buckling[3].symbol, L"MbRd");
    EXPECT_GT(*shaped.buckling[3].values[0], *uniform.buckling[3].values[0]);
    EXPECT_EQ(shaped.buckling[0].values, uniform.buckling[0].values);
    EXPECT_FALSE(
        Code().Capacities(section, CSteelGrade(L"S999", 0.0, 0.0, 0.0, 1.0), {4.0}, settings).refusal.IsEmpty());
}

// A cold-formed channel is for EN 1993-1-3, a grade of no list has no strength: neither has a resistance, not even one of 0.
TEST(Capacity, HasNothingOfWhatIsRefused)
{
    CSection formed(L"C 200x80x3x3x0x0");
    CSecComp component = formed.Component(0);
    component.SetType(SEC_FORMED);
    formed.SetComponent(0, component);
    const CSteelGrade s275(L"S275", 0.0, 0.0, 0.0, 1.0);
    ASSERT_TRUE(SectionRefusal(formed));
    const SectionCapacity noSection(formed, s275, UkAnnex());
    const SectionCapacity noGrade(CSection(L"UB 457x191x67"), CSteelGrade(L"S999", 0.0, 0.0, 0.0, 1.0), UkAnnex());
    for (const SectionCapacity* c : {&noSection, &noGrade}) {
        EXPECT_FALSE(c->IsValid());
        ASSERT_TRUE(c->Refusal());
        for (const auto& value : {c->NplRd(), c->McyRd(), c->MczRd(), c->VczRd(), c->VcyRd(), c->VbwRd(), c->VbwyRd(),
                                  c->FRd(0.1, true), c->FRd(0.1, false), c->MNyRd(0.0), c->MNyRd(0.5), c->MNzRd(0.5),
                                  c->NbyRd(4.0), c->NbzRd(4.0), c->NbTRd(4.0), c->MbRd(4.0, 1.0)})
            EXPECT_EQ(value, std::nullopt);
    }
    const auto table = Code().Capacities(formed, s275, {4.0}, {});
    EXPECT_EQ(table.refusal, CString(SectionRefusal(formed)));
    EXPECT_TRUE(table.crossSection.empty());
    EXPECT_TRUE(table.buckling.empty());
}

// Without a length nothing buckles: A fy and Wpl fy. UB 457x191x67 in S275: 85.51 cm² and 1471 cm³.
TEST(Capacity, OfNoLengthIsThatOfTheCrossSection)
{
    const SectionCapacity c(CSection(L"UB 457x191x67"), CSteelGrade(L"S275", 0.0, 0.0, 0.0, 1.0), UkAnnex());
    EXPECT_NEAR(c.MbRd(0.0, 1.0).value() / 1e3, 404.5, 0.5);
    const SectionCapacity column(CSection(L"UC 254x254x89"), CSteelGrade(L"S275", 0.0, 0.0, 0.0, 1.0), UkAnnex());
    for (const std::optional<double>& N : {column.NbyRd(0.0), column.NbzRd(0.0), column.NbTRd(0.0)})
        EXPECT_NEAR(N.value() / 1e3, 113.3 * 26.5, 3.0);
}

// A tube of class 4 (323.9/5 = 64.8 above 90 ε² = 59.6) is for EN 1993-1-6; tension and shear have their resistances all the same. Tubes do not buckle laterally
// or by twist.
TEST(Capacity, OfSlenderTubesIsThatOfTensionAndShear)
{
    const CSteelGrade s275(L"S275", 0.0, 0.0, 0.0, 1.0);
    const SectionCapacity slender(CSection(L"CHS 323.9x5"), CSteelGrade(L"S355", 0.0, 0.0, 0.0, 1.0), UkAnnex());
    ASSERT_TRUE(slender.IsValid());
    EXPECT_EQ(slender.Compression().cls, 4);
    const double A = 3.14159265358979 * 318.9 * 5.0; // mm²
    EXPECT_NEAR(slender.NplRd().value(), A * 355.0, 1e-3 * A * 355.0);
    EXPECT_NEAR(slender.VczRd().value(), 2.0 * A / 3.14159265358979 * 355.0 / std::sqrt(3.0), 1e-3 * A * 355.0);
    for (const auto& value : {slender.McyRd(), slender.MczRd(), slender.NbyRd(3.0), slender.NbzRd(3.0),
                              slender.NbTRd(3.0), slender.MbRd(3.0, 1.0), slender.VbwRd(), slender.VbwyRd()})
        EXPECT_EQ(value, std::nullopt);
    const SectionCapacity stocky(CSection(L"CHS 168.3x10"), s275, UkAnnex());
    EXPECT_EQ(stocky.MbRd(10.0, 1.0), stocky.McyRd());
    EXPECT_EQ(stocky.NbTRd(3.0), std::nullopt);
    // An unequal angle of class 4 (20 above 15 ε = 12.2) has no moment, and so none to buckle under.
    const SectionCapacity angle(CSection(L"L 200x100x10"), CSteelGrade(L"S355", 0.0, 0.0, 0.0, 1.0), UkAnnex());
    ASSERT_EQ(angle.MajorBending().cls, 4);
    EXPECT_EQ(angle.McyRd(), std::nullopt);
    EXPECT_EQ(angle.MbRd(3.0, 1.0), std::nullopt);
}

// With either flange compressed the smaller critical moment counts, and no factor of the tables: a tee's stem in compression.
TEST(Capacity, OfSectionsWithoutSymmetryTakesTheWeakerFlange)
{
    const SectionCapacity tee(CSection(L"T 229x191x49"), CSteelGrade(L"S275", 0.0, 0.0, 0.0, 1.0), UkAnnex());
    const Section& s = tee.Section();
    const double Mcr = std::min(UniformMcr(s, 210e9, 81e9, 6.0, true), UniformMcr(s, 210e9, 81e9, 6.0, false));
    const double MRk = tee.McyRd().value();
    // 6.3.2.2, curve d.
    const double l = std::sqrt(MRk / Mcr), phi = 0.5 * (1.0 + 0.76 * (l - 0.2) + l * l);
    EXPECT_NEAR(tee.MbRd(6.0, 1.0).value(), std::min(1.0, 1.0 / (phi + std::sqrt(phi * phi - l * l))) * MRk,
                1e-6 * MRk);
    EXPECT_EQ(tee.MbRd(6.0, 1.5), std::nullopt);
}

// Walls b = 1200 of 10 mm across, hw 1160: λ̄w = 116/(86.4*0.8253) = 1.627 (fy 345), χw 0.510: 2357 kN, beside Vpl; and along, h 600 of 20 mm, none.
TEST(Capacity, TellsOfWallsThatBuckleInShear)
{
    const auto table =
        Code().Capacities(CSection(L"BOX 600x1200x20x10"), CSteelGrade(L"S355", 0.0, 0.0, 0.0, 1.0), {4.0}, {});
    const auto value = [&](const std::wstring& symbol) {
        for (const auto& entry : table.crossSection)
            if (entry.resistance.symbol == symbol) return entry.resistance.value;
        return 0.0;
    };
    EXPECT_NEAR(value(L"VbwyRd") / 1e3, 2357.0, 5.0);
    EXPECT_EQ(value(L"VbwRd"), 0.0);
    ASSERT_EQ(table.notes.size(), 1u);
    EXPECT_GE(CString(table.notes[0]).Find(L"VcyRd is not reached"), 0);
    EXPECT_TRUE(table.bearing.empty()) << "EN 1993-1-5 6 is for webs of I and H sections";
}

// Which curves stand in where Table 6.2 has none.
TEST(Capacity, TellsOfCurvesThatTable62DoesNotHave)
{
    const auto notes = [](const wchar_t* section) {
        return Code().Capacities(CSection(section), CSteelGrade(L"S355", 0.0, 0.0, 0.0, 1.0), {4.0}, {}).notes;
    };
    ASSERT_EQ(notes(L"UC 356x406x1299").size(), 1u);
    EXPECT_EQ(CString(notes(L"UC 356x406x1299")[0]).Find(L"Buckling curves: those of flanges of 40 to 100 mm"), 0);
    EXPECT_TRUE(notes(L"UC 356x406x634").empty());
}

// An angle has its own axes, and no moments reduced by an axial force.
TEST(Capacity, NamesTheAxesOfAngles)
{
    const auto table =
        Code().Capacities(CSection(L"L 100x100x10"), CSteelGrade(L"S275", 0.0, 0.0, 0.0, 1.0), {2.0}, {});
    ASSERT_EQ(table.classes.size(), 3u);
    EXPECT_EQ(CString(table.classes[0].state), L"in bending about u-u");
    EXPECT_EQ(CString(table.classes[1].state), L"about v-v");
    ASSERT_EQ(table.buckling.size(), 4u);
    EXPECT_STREQ(table.buckling[0].symbol, L"NbuRd");
    EXPECT_STREQ(table.buckling[1].symbol, L"NbvRd");
    EXPECT_TRUE(table.reduced.empty());
}

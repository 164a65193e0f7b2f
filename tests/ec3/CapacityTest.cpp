// The capacity table, held against published tables.

#include "keltrix/ec3/Capacity.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "PublishedRows.h"
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

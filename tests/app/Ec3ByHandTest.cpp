// Members to EN 1993-1-1 that would pass though they should not, each by hand.

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"
#include "text/Json.h"

namespace Keltrix::App {
namespace {

using ::testing::HasSubstr;
using Trial::RunKsteel;
using Trial::TestDirectory;

struct PartByHand {
    double length;
    double Fy, Fz;          // N
    double MyLeft, MyRight; // N·m
    double MzLeft, MzRight;
};

// A member file; the points inside have the restraint `inside`.
std::string MemberByHand(const std::string& section, const std::string& grade, double N,
                         const std::vector<PartByHand>& parts, const std::string& inside = "Pinned",
                         const std::string& ends = "Pinned", const std::string& lengths = "NO",
                         const std::string& along = "Free")
{
    std::ostringstream text;
    text << "TITLE,by hand\nSECTION," << section << "\nGRADE," << grade
         << "\nNET_TO_GROSS,1\nALLOWABLE_PLASTIC/ELASTIC_RATIO,1.2\nSHEAR_LAG_FACTOR,0.7\n"
         << "HEADINGS\nEFFECTIVE_LENGTH_OVERRIDES," << lengths << "\nHEADINGS\nMEMBERPOINT,1,0," << ends << ",0\n";
    double x = 0.0;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        x += parts[i].length;
        text << "MEMBERPOINT," << i + 2 << ',' << x << ',' << (i + 1 < parts.size() ? inside : ends) << ",0\n";
    }
    text << "HEADINGS\n";
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const PartByHand& p = parts[i];
        text << "SUBSPAN," << i + 1 << ',' << N << ',' << p.Fy << ',' << p.Fz << ',' << N << ',' << p.Fy << ',' << p.Fz
             << ",0," << p.MyLeft << ',' << p.MzLeft << ",0," << p.MyRight << ',' << p.MzRight << ',' << along
             << ",0\n";
    }
    return text.str() + "END\n";
}

Json CheckedTo(const std::string& text)
{
    const TestDirectory directory;
    const auto result = RunKsteel("check --code ec3 --format json '" + directory.Write("member.csv", text) + "'");
    const Json list = Json::parse(result.out, nullptr, false);
    EXPECT_TRUE(list.is_array() && list.size() == 1) << result;
    return list.is_array() && !list.empty() ? list[0] : Json();
}

// The entry of the largest utilisation of a clause.
Json EntryOf(const Json& member, const std::string& clause)
{
    Json worst;
    for (const Json& entry : member["checks"])
        if (entry["clause"] == clause && (worst.is_null() || entry["utilisation"] > worst["utilisation"]))
            worst = entry;
    return worst;
}

// Three storeys of 4 m, UC 203x203x60, 900 kN, Mz 5, 40, -40, -5 kNm: Nb,z = 1453 kN, kzz = 1.214 with Cmz = 0.6 + 0.4*5/40 = 0.65:
// 0.6193 + 1.214*40/108.39 = 1.067.
const std::vector<PartByHand> STOREYS = {{4.0, -8750.0, 0.0, 0.0, 0.0, 5e3, 40e3},
                                         {4.0, 20e3, 0.0, 0.0, 0.0, 40e3, -40e3},
                                         {4.0, -8750.0, 0.0, 0.0, 0.0, -40e3, -5e3}};

// The same lengths, given: where they lie is not known, Cmz = 1.0: 0.6193 + 1.214/0.65*40/108.39 = 1.309.
TEST(Ec3ByHand, GivenLengthsDoNotTakeTheMomentsOfTheWholeMember)
{
    const std::string section = "UC 203x203x60,ROLLED";
    EXPECT_NEAR(CheckedTo(MemberByHand(section, "S355", -900e3, STOREYS))["overall"].get<double>(), 1.067, 0.001);
    const Json given = CheckedTo(MemberByHand(section, "S355", -900e3, STOREYS, "Pinned", "Pinned", "YES,4,4,4"));
    EXPECT_NEAR(given["overall"].get<double>(), 1.309, 0.002);
    EXPECT_EQ(given["status"], "fail");
}

// Lateral supports without twist at the thirds: Table B.3 reads Cmz between them, whether a trace of My acts or not.
TEST(Ec3ByHand, ATraceOfMajorMomentDoesNotLowerTheMinorFactor)
{
    std::vector<PartByHand> parts = STOREYS;
    const double without =
        CheckedTo(MemberByHand("UC 203x203x60,ROLLED", "S355", -900e3, parts, "MINV MAJV"))["overall"].get<double>();
    for (PartByHand& p : parts)
        p.MyLeft = p.MyRight = 500.0;
    const double with =
        CheckedTo(MemberByHand("UC 203x203x60,ROLLED", "S355", -900e3, parts, "MINV MAJV"))["overall"].get<double>();
    EXPECT_NEAR(without, 1.067, 0.001);
    EXPECT_GT(with, without);
}

// UC 254x254x89 of 8 m, 800 kN, 60 kNm at the quarter points and none in the middle: kzz = 1.985 for Cmz = 1, 0.703 + 1.985*60/198.8 = 1.303.
// With 1 kNm at the ends too Cmz = 0.90 + 0.10/60 = 0.9017: 1.243.
TEST(Ec3ByHand, MomentsBetweenEndsAndMiddleCount)
{
    const auto overall = [](double end) {
        const double rise = (60e3 - end) / 2.0;
        return CheckedTo(MemberByHand("UC 254x254x89,ROLLED", "S355", -800e3,
                                      {{2.0, -rise, 0.0, 0.0, 0.0, end, 60e3},
                                       {2.0, 30e3, 0.0, 0.0, 0.0, 60e3, 0.0},
                                       {2.0, -30e3, 0.0, 0.0, 0.0, 0.0, 60e3},
                                       {2.0, rise, 0.0, 0.0, 0.0, 60e3, end}},
                                      "Free"))["overall"]
            .get<double>();
    };
    EXPECT_NEAR(overall(0.0), 1.303, 0.002);
    EXPECT_NEAR(overall(1e3), 1.243, 0.003);
}

// I 400x300x12x15, class 3, 1500 kN along the flanges: ρ = (2*0.8132 - 1)² = 0.392, Wel,z (1 - ρ) fy = 159.9*0.608 = 97.2 kNm against 150: 1.54.
TEST(Ec3ByHand, ElasticModuliLoseStrengthUnderHighShear)
{
    const Json member =
        CheckedTo(MemberByHand("I 400x300x12x15,WELDED", "S355", 0.0, {{0.2, -1500e3, 0.0, 0.0, 0.0, -150e3, 150e3}}));
    EXPECT_EQ(member["class"], 3);
    const Json entry = EntryOf(member, "6.2.8");
    EXPECT_EQ(entry["symbol"], "MzVRd");
    EXPECT_NEAR(entry["resistance"].get<double>(), 97.2e3, 0.2e3);
    EXPECT_NEAR(entry["utilisation"].get<double>(), 1.54, 0.01);
    EXPECT_EQ(member["status"], "fail");
}

// Box 300x1200x20x10 with 3000 kN across: (1200 - 40)/10 = 116 is above 72 ε = 59.4; λw = 116/(86.4*0.825) = 1.627, χw = 0.83/1.627 = 0.510,
// 0.510*2*1160*10*345/3^0.5 = 2357 kN.
TEST(Ec3ByHand, WallsThatCarryAShearAcrossTheWebAreNotPassedOver)
{
    const Json member = CheckedTo(
        MemberByHand("BOX 300x1200x20x10,WELDED", "S355", 0.0, {{1.2, -3000e3, 0.0, 0.0, 0.0, -1800e3, 1800e3}}));
    EXPECT_EQ(member["status"], "fail");
    const Json entry = EntryOf(member, "EN 1993-1-5 5");
    EXPECT_EQ(entry["symbol"], "VbwyRd");
    EXPECT_NEAR(entry["resistance"].get<double>(), 2357e3, 2e3);
    EXPECT_NEAR(entry["utilisation"].get<double>(), 1.273, 0.002);
}

// EN 1993-1-5 (8.1): hw/tw = 2440/5 = 488; 0.55*210000/345*(12200/15000)^0.5 = 301.9: 1.616.
TEST(Ec3ByHand, AFlangeIsNotHeldByAWebThatIsTooThin)
{
    const Json member =
        CheckedTo(MemberByHand("I 2500x500x5x30,WELDED", "S355", 0.0, {{10.0, 0.0, 20e3, 1000e3, 1200e3, 0.0, 0.0}},
                               "Pinned", "Pinned", "NO", "Top and Bottom flange lateral"));
    EXPECT_NEAR(EntryOf(member, "EN 1993-1-5 8")["utilisation"].get<double>(), 1.616, 0.002);
    EXPECT_EQ(member["status"], "fail");
}

// UB 457x191x67 of 4 m with a force at the tip.
Json CantileverByHand(double N, double M)
{
    std::string member =
        MemberByHand("UB 457x191x67,ROLLED", "S355", N, {{4.0, 0.0, -M / 4.0, M, 0.0, 0.0, 0.0}}, "Free", "Fixed");
    member.replace(member.find("MEMBERPOINT,2,4,Fixed"), 21, "MEMBERPOINT,2,4,Free");
    return CheckedTo(member);
}

// C1 = 4.98, λLT = 0.815; curve c alone 0.767, Mb,Rd = 400 kNm: 450 kNm use 1.124 of it.
TEST(Ec3ByHand, ACurveFactorBeyondTheTableIsToldWithWhatItIsWorth)
{
    const Json checked = CantileverByHand(0.0, 450e3);
    ASSERT_EQ(checked["warnings"].size(), 1u) << checked["warnings"].dump();
    EXPECT_EQ(checked["warnings"][0]["code"], "curve-factor");
    const std::string words = checked["warnings"][0]["text"];
    EXPECT_THAT(words, HasSubstr("C1 = 4.98"));
    EXPECT_THAT(words, HasSubstr("without it the utilisation is 1.1"));
    EXPECT_NEAR(EntryOf(checked, "6.3.2")["utilisation"].get<double>(), 450.0 / 522.0, 0.003);
}

// 300 kNm use 0.749 without the factor. With a force along the member the resistance is in (6.61) and (6.62), too.
TEST(Ec3ByHand, ACurveFactorThatDecidesNothingIsNoWarning)
{
    EXPECT_EQ(CantileverByHand(0.0, 300e3)["warnings"].size(), 0u);
    const Json warnings = CantileverByHand(-20e3, 300e3)["warnings"];
    EXPECT_EQ(std::count_if(warnings.begin(), warnings.end(),
                            [](const Json& warning) { return warning["code"] == "curve-factor"; }),
              1)
        << warnings.dump();
}

} // namespace
} // namespace Keltrix::App

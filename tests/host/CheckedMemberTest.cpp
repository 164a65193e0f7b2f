// What leaves the program of a checked member against the check itself, over random members.

#include <cmath>

#include <gtest/gtest.h>

#include "check/CheckedMember.h"
#include "check/FindingsJson.h"
#include "design/RandomMember.h"
#include "keltrix/bs5950/SteelMemberBS5950.h"
#include "support/RandomCases.h"
#include "text/Json.h"
#include "text/Text.h"

namespace Keltrix::Host {
namespace {

struct MemberCase {
    std::string text;
    std::string how; // to do it again
};

// As the library writes it: its section, grade and forces, torsion in some.
MemberCase RandomCase(unsigned seed)
{
    static const wchar_t* const SECTIONS[] = {L"UB 457x191x67", L"UC 254x254x89", L"RHS 200x100x6.3", L"CHS 168.3x5",
                                              L"CFRHS 60x40x5", L"L 100x100x10",  L"PFC 200x90x30",   L"T 229x191x34"};
    std::mt19937 random(seed);
    const auto share = [&] { return std::uniform_real_distribution<double>(0.0, 1.0)(random); };
    DesignTest::Member layout = DesignTest::RandomMember(random);
    if (share() < 0.3) {
        for (Steel::CSubSpan& s : layout.subSpans) {
            Vec3<double> moment = s.GetMomentsLeft();
            moment.x = 500.0;
            s.SetMomentsLeft(moment);
        }
    }
    // Forces that do not balance.
    if (share() < 0.3) {
        Vec3<double> moment = layout.subSpans.front().GetMomentsRight();
        moment.y += 5e3;
        layout.subSpans.front().SetMomentsRight(moment);
    }
    BS5950::CSteelMemberBS5950 member;
    const wchar_t* const section = SECTIONS[random() % std::size(SECTIONS)];
    CSteelGrade grade(L"S275", 0, 0, 0, 1);
    EXPECT_TRUE(member.SetKeltrixSec(CSection(CString(section))));
    EXPECT_TRUE(member.SetGrade(grade));
    EXPECT_TRUE(member.SetMemberPointVec(layout.points));
    EXPECT_TRUE(member.SetSubSpanVec(layout.subSpans));
    member.SetTitle(L"random");
    return {Utf8(member.CSVInputData(grade)), "seed " + std::to_string(seed) + ", " + Utf8(std::wstring_view(section))};
}

MemberFile FileOf(const std::string& text)
{
    MemberPiece piece;
    piece.bytes = text;
    return MemberFile("random.csv", piece);
}

const char* NameOf(BS5950::Place place)
{
    return place == BS5950::Place::LeftEnd ? "left end" : place == BS5950::Place::RightEnd ? "right end" : "inside";
}

// A utilisation of a resistance of none is infinite, which JSON does not have.
Json InJson(double value) { return std::isfinite(value) ? Json(value) : Json(); }

TEST(CheckedMember, EveryRowOfTheJsonIsItsPosition)
{
    int inside = 0;
    int twisted = 0;
    for (int seed = 1; seed <= TestSupport::RandomCases(2000); ++seed) {
        const MemberCase random = RandomCase(static_cast<unsigned>(seed));
        const MemberFile file = FileOf(random.text);
        ASSERT_EQ(file.Check().Errors(), 0u) << random.how << "\n" << random.text;
        const CheckedMember checked = CheckMember(file, 0, DefaultCode(), false);
        const auto& positions = dynamic_cast<const BS5950::CSteelMemberBS5950&>(*checked.coded).Positions();
        const Json rows = JsonOf(checked)["utilisation"]["local"];
        ASSERT_EQ(rows.size(), positions.size()) << random.how;
        for (std::size_t i = 0; i < positions.size(); ++i) {
            const BS5950::PositionResult& p = positions[i];
            const Json& row = rows[i];
            ASSERT_EQ(row["position"], p.x) << random.how;
            ASSERT_EQ(row["sub_span"], p.subSpan + 1) << random.how;
            ASSERT_EQ(row["place"], NameOf(p.place)) << random.how;
            ASSERT_EQ(row["combined"], InJson(p.combined)) << random.how;
            ASSERT_EQ(row["axial"], InJson(p.axial)) << random.how;
            ASSERT_EQ(row["moment_major"], InJson(p.major)) << random.how;
            ASSERT_EQ(row["moment_minor"], InJson(p.minor)) << random.how;
            ASSERT_EQ(row["shear_major"], InJson(std::fmax(p.shearMajor, p.shearBuckling))) << random.how;
            ASSERT_EQ(row["shear_minor"], InJson(p.shearMinor)) << random.how;
            ASSERT_EQ(row["torsion"].is_null(), p.actions.Mt != 0.0) << random.how;
            inside += p.place == BS5950::Place::Inside ? 1 : 0;
            twisted += p.actions.Mt != 0.0 ? 1 : 0;
        }
    }
    EXPECT_GT(inside, TestSupport::RandomCases(500)) << "positions between points are what the rows were wrong of";
    EXPECT_GT(twisted, TestSupport::RandomCases(500));
}

// No part is above the overall utilisation, and what passes is not above 1.
TEST(CheckedMember, TheWholeAgreesWithItsParts)
{
    for (int seed = 1; seed <= TestSupport::RandomCases(2000); ++seed) {
        const MemberCase random = RandomCase(static_cast<unsigned>(seed));
        const CheckedMember checked = CheckMember(FileOf(random.text), 0, DefaultCode(), false);
        double largest = std::fmax(checked.result->UtilBucklingCombined(), checked.result->UtilBucklingLT());
        for (const Design::LocalFinding& f : checked.findings.positions)
            largest = std::fmax(
                largest, std::fmax(std::fmax(f.combined, f.axial), std::fmax(std::fmax(f.momentMajor, f.momentMinor),
                                                                             std::fmax(f.shearMajor, f.shearMinor))));
        ASSERT_GE(checked.result->UtilOverAll(), largest * (1.0 - 1e-12)) << random.how;
        if (checked.Status() == "pass") {
            ASSERT_LE(checked.result->UtilOverAll(), 1.0) << random.how;
        }
    }
}

} // namespace
} // namespace Keltrix::Host

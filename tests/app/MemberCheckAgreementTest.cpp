// The checker against the library's reader and validation: it refuses exactly what they refuse. Over every
// small change of a good file, and over many random ones.

#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "AppSupport.h"
#include "memberfile/CodelessMember.h"
#include "memberfile/MemberCheck.h"
#include "support/RandomCases.h"
#include "text/Text.h"

namespace Keltrix::App {
namespace {

using Trial::GOOD_MEMBER;
using Trial::LinesOf;

bool IsAccepted(const CString& text)
{
    CodelessMember member;
    CSteelGrade grade;
    try {
        if (!member.CSVInputData(text, grade)) return false;
    } catch (const Steel::unsupported_design_code_error&) {
        return false;
    }
    return Steel::CSteelMemberGen::ValidateMPVandSSV(&member.MemberPoints(), &member.SubSpans(), nullptr);
}

// Answers whether the first member is taken, so that a test can count.
bool ExpectAgreement(const std::string& text, const std::string& how)
{
    const CString wide = Wide(text);
    const FileCheck check = CheckMemberFile(wide);
    const bool accepted = IsAccepted(wide);
    EXPECT_EQ(accepted, !check.members.at(0).isRefused) << how << ":\n" << text;
    std::size_t bad = 0;
    for (const MemberText& member : check.members) {
        EXPECT_EQ(IsAccepted(CString(member.text)), !member.isRefused)
            << how << ", member in line " << member.firstLine;
        EXPECT_TRUE(member.hasErrors || !member.isRefused) << how;
        bad += member.hasErrors ? 1 : 0;
    }
    EXPECT_EQ(bad == 0, check.Errors() == 0) << how;
    return accepted;
}

std::string Joined(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line + '\n';
    return text;
}

const std::vector<std::string> STRAY_LINES = {"",
                                              " \t",
                                              ",",
                                              "HEADINGS",
                                              "headings,x",
                                              "TITLE,another",
                                              "SECTION,UC 203x203x46,ROLLED",
                                              "GRADE,S355",
                                              "NET_TO_GROSS,0.9",
                                              "ALLOWABLE_PLASTIC/ELASTIC_RATIO,1.5",
                                              "SHEAR_LAG_FACTOR,0.6",
                                              "EFFECTIVE_LENGTH_OVERRIDES,YES,1,2,3",
                                              "EQUIVALENT_UNIFORM_MOMENT_FACTOR,0.5",
                                              "MOMENT_AMPLIFICATION_FACTOR_STRONG_AXIS,1.1",
                                              "MOMENT_AMPLIFICATION_FACTOR_WEAK_AXIS,1.1",
                                              "MEMBERPOINT,4,9,Free,0",
                                              "SUBSPAN,3,0,0,0,0,0,0,0,0,0,0,0,0,Free,0",
                                              "END",
                                              "end,x",
                                              "END\r",
                                              "NONSENSE,1,2",
                                              "\xEF\xBB\xBFTITLE,x"};

const std::vector<std::string> STRAY_FIELDS = {"",
                                               "0",
                                               "1",
                                               "2",
                                               "3",
                                               "-1",
                                               "x",
                                               "nan",
                                               "inf",
                                               "-inf",
                                               "1e999",
                                               "1e39",
                                               "6",
                                               "2.5m",
                                               "0.123456789",
                                               "99999999999",
                                               "Pinned",
                                               "Free",
                                               "YES",
                                               "no",
                                               "User_defined",
                                               "UB 457x191x67",
                                               " 3 ",
                                               "3\t",
                                               "1,2",
                                               "\"3\""};

TEST(MemberCheckAgreement, EveryLineLeftOutDoubledOrExchangedWithTheNext)
{
    const std::vector<std::string> good = LinesOf(GOOD_MEMBER);
    ASSERT_TRUE(ExpectAgreement(GOOD_MEMBER, "as it is"));
    for (std::size_t i = 0; i < good.size(); ++i) {
        std::vector<std::string> lines = good;
        lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(i));
        ExpectAgreement(Joined(lines), "without line " + std::to_string(i + 1));
        lines = good;
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(i), good[i]);
        ExpectAgreement(Joined(lines), "line twice: " + std::to_string(i + 1));
        if (i + 1 == good.size()) continue;
        lines = good;
        std::swap(lines[i], lines[i + 1]);
        ExpectAgreement(Joined(lines), "exchanged: " + std::to_string(i + 1));
    }
}

TEST(MemberCheckAgreement, EveryStrayLineInEveryPlace)
{
    const std::vector<std::string> good = LinesOf(GOOD_MEMBER);
    for (const std::string& stray : STRAY_LINES) {
        for (std::size_t i = 0; i <= good.size(); ++i) {
            std::vector<std::string> lines = good;
            lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(i), stray);
            ExpectAgreement(Joined(lines), "before line " + std::to_string(i + 1) + ": " + stray);
            if (i == good.size()) continue;
            lines = good;
            lines[i] = stray;
            ExpectAgreement(Joined(lines), "for line " + std::to_string(i + 1) + ": " + stray);
        }
    }
}

TEST(MemberCheckAgreement, EveryFieldReplacedByEveryStrayField)
{
    const std::vector<std::string> good = LinesOf(GOOD_MEMBER);
    for (std::size_t i = 0; i < good.size(); ++i) {
        for (std::size_t start = 0; start != std::string::npos;) {
            const std::size_t comma = good[i].find(',', start);
            for (const std::string& stray : STRAY_FIELDS) {
                std::vector<std::string> lines = good;
                const std::size_t length = comma == std::string::npos ? std::string::npos : comma - start;
                lines[i].replace(start, length, stray);
                ExpectAgreement(Joined(lines), "line " + std::to_string(i + 1) + ": " + lines[i]);
            }
            start = comma == std::string::npos ? comma : comma + 1;
        }
    }
}

TEST(MemberCheckAgreement, TheTextCutAtEveryCharacter)
{
    for (std::size_t length = 0; length < GOOD_MEMBER.size(); ++length)
        ExpectAgreement(GOOD_MEMBER.substr(0, length), "cut at " + std::to_string(length));
}

TEST(MemberCheckAgreement, RandomChangesByTheThousand)
{
    constexpr unsigned seed = 90210;
    std::mt19937 random(seed);
    const std::vector<std::string> good = LinesOf(GOOD_MEMBER);
    int accepted = 0;
    const int runs = TestSupport::RandomCases(20000);
    for (int run = 0; run < runs && !::testing::Test::HasFailure(); ++run) {
        std::vector<std::string> lines = good;
        for (unsigned n = 1 + random() % 3; n > 0 && !lines.empty(); --n) {
            const auto at = static_cast<std::ptrdiff_t>(random() % lines.size());
            std::string& line = lines[static_cast<std::size_t>(at)];
            switch (random() % 5) {
            case 0:
                lines.erase(lines.begin() + at);
                break;
            case 1:
                lines.insert(lines.begin() + at, STRAY_LINES[random() % STRAY_LINES.size()]);
                break;
            case 2:
                std::swap(line, lines[random() % lines.size()]);
                break;
            case 3:
                if (!line.empty()) line[random() % line.size()] = "0,.\n\rxE- "[random() % 9];
                break;
            default:
                line.insert(random() % (line.size() + 1), STRAY_FIELDS[random() % STRAY_FIELDS.size()]);
            }
        }
        accepted += ExpectAgreement(Joined(lines), "seed " + std::to_string(seed) + ", run " + std::to_string(run));
    }
    // Both results must have come often, or the comparison says little.
    EXPECT_GT(accepted, runs / 10);
    EXPECT_LT(accepted, runs * 9 / 10);
}

} // namespace
} // namespace Keltrix::App

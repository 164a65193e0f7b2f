// Member files whose numbers change: what comes of them is what comes of the file with these numbers.

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "check/CheckedForm.h"
#include "check/FindingsJson.h"
#include "design/RandomMember.h"
#include "memberfile/MemberText.h"
#include "support/RandomCases.h"
#include "text/Text.h"

namespace Keltrix::Host {
namespace {

std::vector<CodeChoice> Codes()
{
    std::vector<CodeChoice> codes{ChooseCode("bs5950", {}, {})};
#ifdef KELTRIX_HOST_WITH_EC3
    codes.push_back(ChooseCode("ec3", "uk", {}));
#endif
    return codes;
}

MemberFile FileOf(const MemberContent& content)
{
    return MemberFile(SourceText{"random.csv", Wide(MemberFileText(content))});
}

MemberContent RandomContent(std::mt19937& random)
{
    static const char* const SECTIONS[] = {"UB 457x191x67", "UC 254x254x89", "RHS 200x100x6.3", "CHS 168.3x5",
                                           "PFC 200x90x30", "L 100x100x10",  "T 229x191x34"};
    const auto share = [&] { return std::uniform_real_distribution<double>(0.0, 1.0)(random); };
    const DesignTest::Member layout = DesignTest::RandomMember(random);
    MemberContent content;
    content.title = "random";
    content.section = SECTIONS[random() % std::size(SECTIONS)];
    content.type = "ROLLED";
    content.grade = share() < 0.5 ? "S275" : "S355";
    content.points = layout.points;
    content.subSpans = layout.subSpans;
    if (share() < 0.3) content.effectiveLengths = {3.0 + share(), -0.85, 4.0};
    if (share() < 0.2) content.momentFactor = 0.5 + share();
    return content;
}

// The same member under other forces, now and then of another length and with numbers that nobody means.
MemberNumbers OtherNumbers(const MemberContent& content, std::mt19937& random)
{
    const auto share = [&] { return std::uniform_real_distribution<double>(0.0, 1.0)(random); };
    constexpr double odd[] = {
        0.0, -0.0, 1e-320, 1e300, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()};
    MemberNumbers numbers{content.points, content.subSpans, content.effectiveLengths};
    const double factor = 2.0 * share() - 0.5;
    for (Steel::CSubSpan& s : numbers.subSpans) {
        const auto scaled = [factor](const Vec3<double>& v) {
            return Vec3<double>(factor * v.x, factor * v.y, factor * v.z);
        };
        s.SetForcesAll(scaled(s.GetForcesLeft()), scaled(s.GetForcesRight()));
        s.SetMomentsAll(scaled(s.GetMomentsLeft()), scaled(s.GetMomentsRight()));
    }
    if (share() < 0.2) {
        Vec3<double> force = numbers.subSpans.front().GetForcesLeft();
        force.x = odd[random() % std::size(odd)];
        numbers.subSpans.front().SetForcesLeft(force);
    }
    if (share() < 0.2) numbers.points.back().SetPos(share() < 0.5 ? odd[random() % std::size(odd)] : 150.0 * share());
    if (numbers.effectiveLengths && share() < 0.3) (*numbers.effectiveLengths)[0] = odd[random() % std::size(odd)];
    return numbers;
}

MemberContent With(MemberContent content, const MemberNumbers& numbers)
{
    content.points = numbers.points;
    content.subSpans = numbers.subSpans;
    content.effectiveLengths = numbers.effectiveLengths;
    return content;
}

// Of the file with these numbers; empty where anything is found in reading it, or it is refused.
std::string ByText(const MemberContent& content, const CodeChoice& choice)
{
    const MemberFile file = FileOf(content);
    if (!file.Check().defects.empty()) return {};
    try {
        return FindingsLine(CheckMember(file, 0, choice, false));
    } catch (const BadMember&) {
        return {};
    }
}

TEST(CheckedForm, FindsWhatTheFileWithTheseNumbersFinds)
{
    int taken = 0;
    int left = 0;
    const int members = TestSupport::RandomCases(400);
    for (int seed = 1; seed <= members; ++seed) {
        std::mt19937 random(static_cast<unsigned>(seed));
        const MemberContent content = RandomContent(random);
        for (const CodeChoice& choice : Codes()) {
            CheckedForm form(FileOf(content), choice);
            for (int i = 0; i < 3; ++i) {
                const MemberNumbers numbers = OtherNumbers(content, random);
                const CheckedMember* const checked = form.Check(numbers);
                const std::string wanted = ByText(With(content, numbers), choice);
                ASSERT_EQ(checked ? FindingsLine(*checked) : std::string(), wanted)
                    << "seed " << seed << ", numbers " << i;
                ++(checked ? taken : left);
            }
        }
    }
    EXPECT_GT(taken, members / 4);
    EXPECT_GT(left, members / 20);
}

TEST(CheckedForm, AfterAMemberThatWasRefusedTheNextIsAsEver)
{
    std::mt19937 random(7);
    MemberContent content = RandomContent(random);
    content.grade = "S275";
    for (const CodeChoice& choice : Codes()) {
        CheckedForm form(FileOf(content), choice);
        MemberNumbers bad{content.points, content.subSpans, content.effectiveLengths};
        bad.points.back().SetPos(-1.0);
        const MemberNumbers good{content.points, content.subSpans, content.effectiveLengths};
        EXPECT_FALSE(form.Check(bad));
        const CheckedMember* const checked = form.Check(good);
        EXPECT_EQ(checked ? FindingsLine(*checked) : std::string(), ByText(content, choice));
    }
}

TEST(CheckedForm, NumbersOfAnotherShapeOrNoneAreLeftToTheFile)
{
    // Simply supported under 20 kN/m, without a word that needs a message.
    MemberContent content;
    content.title = "Beam";
    content.section = "UB 457x191x67";
    content.type = "ROLLED";
    content.grade = "S275";
    TestKit::TestMember member;
    TestKit::AddPoint(member, 0.0, L"Pinned");
    TestKit::AddPoint(member, 3.0, L"Free");
    TestKit::AddPoint(member, 6.0, L"Pinned");
    TestKit::AddSubSpan(member, -60e3, 0.0, 0.0, -90e3);
    TestKit::AddSubSpan(member, 0.0, 60e3, -90e3, 0.0);
    content.points = member.points;
    content.subSpans = member.subSpans;
    const MemberNumbers good{content.points, content.subSpans, content.effectiveLengths};
    CheckedForm form(FileOf(content), Codes().front());
    ASSERT_TRUE(form.Check(good));
    MemberNumbers other = good;
    other.points.push_back(other.points.back());
    EXPECT_FALSE(form.Check(other));
    other = good;
    other.subSpans.pop_back();
    EXPECT_FALSE(form.Check(other));
    other = good;
    other.effectiveLengths = {1.0, 1.0, 1.0};
    EXPECT_FALSE(form.Check(other));
    constexpr double infinite = std::numeric_limits<double>::infinity();
    for (int place = 0; place < 12; ++place) {
        Vec3<double> of[4] = {good.subSpans[0].GetForcesLeft(), good.subSpans[0].GetForcesRight(),
                              good.subSpans[0].GetMomentsLeft(), good.subSpans[0].GetMomentsRight()};
        (place % 3 == 0 ? of[place / 3].x : place % 3 == 1 ? of[place / 3].y : of[place / 3].z) = infinite;
        other = good;
        other.subSpans[0].SetForcesAll(of[0], of[1]);
        other.subSpans[0].SetMomentsAll(of[2], of[3]);
        EXPECT_FALSE(form.Check(other)) << place;
    }
    other = good;
    other.points.front().SetPos(std::nan(""));
    EXPECT_FALSE(form.Check(other));
    const CheckedMember* const checked = form.Check(good);
    EXPECT_EQ(checked ? FindingsLine(*checked) : std::string(), ByText(content, Codes().front()));
}

TEST(CheckedForm, WordsWithADefectAreLeftToTheFile)
{
    std::mt19937 random(3);
    const MemberContent good = RandomContent(random);
    const MemberNumbers numbers{good.points, good.subSpans, good.effectiveLengths};
    const auto isTaken = [&](const MemberContent& content) {
        return CheckedForm(FileOf(content), Codes().front()).Check(numbers) != nullptr;
    };
    MemberContent type = good;
    type.type = "rolled";
    EXPECT_FALSE(isTaken(type)) << "read as UNDEF, with a warning";
    MemberContent section = good;
    section.section = "UB 1";
    EXPECT_FALSE(isTaken(section));
    MemberContent grade = good;
    grade.grade = "S1";
    EXPECT_FALSE(isTaken(grade));
    MemberContent ratio = good;
    ratio.plasticToElastic = 1.7;
    EXPECT_FALSE(isTaken(ratio)) << "a note";
    MemberContent factor = good;
    factor.momentFactor = 0.1;
    EXPECT_FALSE(isTaken(factor)) << "a note";
    MemberContent shorter = good;
    shorter.points.pop_back();
    EXPECT_FALSE(isTaken(shorter));
}

} // namespace
} // namespace Keltrix::Host

// The generic member as an object: defaults, setters, copies, the attached result; and the validation of its lists.

#include "support/ConcreteMember.h"
#include "support/ResultRecord.h"
#include "support/Text.h"

#include <climits>
#include <memory>
#include <stdexcept>
#include <type_traits>

#include <gtest/gtest.h>

using namespace Keltrix;
using namespace Keltrix::Steel;
using namespace Keltrix::Steel::Test;

using MemberAccess = CSteelMemberGenTestAccess;

static_assert(!std::is_copy_assignable_v<CSteelMember> && !std::is_move_assignable_v<CSteelMember>);
static_assert(!std::is_copy_assignable_v<CSteelMemberGen> && !std::is_move_assignable_v<CSteelMemberGen>);
static_assert(!std::is_copy_assignable_v<ConcreteMember> && !std::is_move_assignable_v<ConcreteMember>);
static_assert(std::is_abstract_v<CSteelMember> && std::is_abstract_v<CSteelMemberGen>);
static_assert(std::is_base_of_v<CDesign, CSteelMember> && std::is_base_of_v<CCloneable, CDesign>);
static_assert(std::is_base_of_v<std::logic_error, unsupported_design_code_error>);

namespace {

const std::string noPoints = "There are no MemberPoints\n";
const std::string pointOrder = "MemberPoint list order by Index conflicts with order by Position\n";
const std::string samePosition = "MemberPoint has at least two points with same Position\n";
const std::string sameIndices = "MemberPoint list has at least two points with same Indices\n";
const std::string gaps = "MemberPoint list has gaps in Indices\n";
const std::string sizes = "MemberPoint and SubSpan lists sizes are incompatible\n";
const std::string noSubSpans = "There are no SubSpans\n";
const std::string subSpanOrder = "SubSpan list was not in order\n";
const std::string sameSubSpanIndices = "SubSpan list has at least two points with same Indices\n";

using Points = std::vector<CMemberPoint>;
using SubSpanList = std::vector<CSubSpan>;

/// The message of a validator, empty where it passes; both ways of calling agree.
std::string PointsMessage(const Points& points)
{
    CString err;
    const bool valid = CSteelMemberGen::ValidateMPV(&points, &err);
    EXPECT_EQ(valid, err.IsEmpty());
    EXPECT_EQ(CSteelMemberGen::ValidateMPV(&points, nullptr), valid);
    return Utf8(err);
}
std::string SubSpansMessage(const SubSpanList& subSpans)
{
    CString err;
    const bool valid = CSteelMemberGen::ValidateSSV(&subSpans, &err);
    EXPECT_EQ(valid, err.IsEmpty());
    EXPECT_EQ(CSteelMemberGen::ValidateSSV(&subSpans, nullptr), valid);
    return Utf8(err);
}
std::string BothMessage(const Points& points, const SubSpanList& subSpans)
{
    CString err;
    const bool valid = CSteelMemberGen::ValidateMPVandSSV(&points, &subSpans, &err);
    EXPECT_EQ(valid, err.IsEmpty());
    EXPECT_EQ(CSteelMemberGen::ValidateMPVandSSV(&points, &subSpans, nullptr), valid);
    return Utf8(err);
}

CSubSpan WithNotANumber(int index)
{
    CSubSpan subSpan = SubSpan(index);
    subSpan.SetForcesLeft({notANumber, 0.0, 0.0});
    return subSpan;
}

std::vector<int> Indices(const Points& points)
{
    std::vector<int> indices;
    for (const CMemberPoint& point : points)
        indices.push_back(point.Get1Index());
    return indices;
}

} // namespace

TEST(SteelMember, StartsWithItsDefaults)
{
    ConcreteMember member;
    EXPECT_EQ(member.DesOpt(), 1);
    EXPECT_EQ(Utf8(member.GetTitle()), "");
    EXPECT_TRUE(member.GetMemberPointVec().empty());
    EXPECT_TRUE(member.GetSubSpanVec().empty());
    EXPECT_EQ(member.Result(), nullptr);
    EXPECT_FALSE(member.QuickCheckMode());
    EXPECT_FALSE(member.LengthOverride());
    EXPECT_EQ(member.Lyy(), 0.0);
    EXPECT_EQ(member.Lzz(), 0.0);
    EXPECT_EQ(member.Llt(), 0.0);
    EXPECT_EQ(member.NumSubSpansUser(), 1);
    EXPECT_FALSE(member.EquivalentUniformMomentFactor().has_value());
    EXPECT_FALSE(member.MomentAmplificationFactorStrongAxis().has_value());
    EXPECT_FALSE(member.MomentAmplificationFactorWeakAxis().has_value());
    EXPECT_EQ(member.Length(), 0.0);
}

TEST(SteelMember, KeepsWhatItsSettersAreGivenEachInItsOwnPlace)
{
    ConcreteMember member;
    member.SetTitle(L"Title");
    member.SetLengthOverride(true);
    member.SetLyy(-0.85);
    member.SetLzz(2.0);
    member.SetLlt(3.0);
    member.SetNumSubSpansUser(7);
    member.SetEquivalentUniformMomentFactor(0.9);
    member.SetQuickCheckMode();
    EXPECT_EQ(Utf8(member.GetTitle()), "Title");
    EXPECT_TRUE(member.LengthOverride());
    EXPECT_EQ(member.Lyy(), -0.85);
    EXPECT_EQ(member.Lzz(), 2.0);
    EXPECT_EQ(member.Llt(), 3.0);
    EXPECT_EQ(member.NumSubSpansUser(), 7);
    EXPECT_EQ(member.EquivalentUniformMomentFactor(), 0.9);
    EXPECT_TRUE(member.QuickCheckMode());
    member.SetLengthOverride(false);
    EXPECT_FALSE(member.LengthOverride());
    EXPECT_EQ(member.Lyy(), -0.85);
}

TEST(SteelMember, CountsItsInstances)
{
    const int before = MemberAccess::Instances();
    {
        const ConcreteMember first;
        EXPECT_EQ(MemberAccess::Instances(), before + 1);
        const ConcreteMember second(first);
        EXPECT_EQ(MemberAccess::Instances(), before + 2);
        const std::unique_ptr<CCloneable> third(first.Clone());
        EXPECT_EQ(MemberAccess::Instances(), before + 3);
    }
    EXPECT_EQ(MemberAccess::Instances(), before);
}

TEST(SteelMember, ACopyLeavesResultQuickCheckModeAndFactorsBehind)
{
    CMemberResult result;
    AmplifiedMember member;
    member.SetDesOpt(3);
    member.SetMemberPointVec({Point(1, 0.0), Point(2, 5.0, 0x43)});
    member.SetSubSpanVec({SubSpan(1, 10.0, 20.0)});
    member.SetTitle(L"Title");
    member.SetQuickCheckMode();
    member.SetLengthOverride(true);
    member.SetLyy(1.0);
    member.SetLzz(2.0);
    member.SetLlt(3.0);
    member.SetNumSubSpansUser(4);
    member.SetEquivalentUniformMomentFactor(0.9);
    member.SetMomentAmplificationFactorStrongAxis(1.1);
    member.SetMomentAmplificationFactorWeakAxis(1.2);
    ASSERT_TRUE(member.SetResult(&result));

    AmplifiedMember copy(member);
    EXPECT_EQ(copy.Result(), nullptr);
    EXPECT_FALSE(copy.QuickCheckMode());
    EXPECT_FALSE(copy.EquivalentUniformMomentFactor().has_value());
    EXPECT_FALSE(copy.MomentAmplificationFactorStrongAxis().has_value());
    EXPECT_FALSE(copy.MomentAmplificationFactorWeakAxis().has_value());
    EXPECT_EQ(copy.DesOpt(), 3);
    EXPECT_EQ(copy.GetMemberPointVec(), member.GetMemberPointVec());
    EXPECT_EQ(copy.GetMemberPointVec().at(1).GetRestraint().RestFlag(), 0x43);
    EXPECT_EQ(copy.GetSubSpanVec(), member.GetSubSpanVec());
    EXPECT_EQ(Utf8(copy.GetTitle()), "Title");
    EXPECT_TRUE(copy.LengthOverride());
    EXPECT_EQ(copy.Lyy(), 1.0);
    EXPECT_EQ(copy.Lzz(), 2.0);
    EXPECT_EQ(copy.Llt(), 3.0);
    EXPECT_EQ(copy.NumSubSpansUser(), 4);

    // The original is untouched.
    EXPECT_EQ(member.Result(), &result);
    EXPECT_TRUE(member.QuickCheckMode());
    EXPECT_EQ(member.EquivalentUniformMomentFactor(), 0.9);
}

TEST(SteelMember, MovingIsCopying)
{
    CMemberResult result;
    ConcreteMember member;
    member.SetTitle(L"Title");
    member.SetMemberPointVec({Point(1, 0.0), Point(2, 5.0)});
    member.SetResult(&result);
    const ConcreteMember& source = member;
    ConcreteMember moved(static_cast<ConcreteMember&&>(member));
    EXPECT_EQ(moved.Result(), nullptr);
    EXPECT_EQ(moved.Length(), 5.0);
    EXPECT_EQ(Utf8(moved.GetTitle()), "Title");
    EXPECT_EQ(source.Result(), &result);
    EXPECT_EQ(source.Length(), 5.0);
}

TEST(SteelMember, MomentAmplificationFactorsAreRefused)
{
    ConcreteMember member;
    try {
        member.SetMomentAmplificationFactorStrongAxis(1.1);
        ADD_FAILURE() << "the strong-axis factor was accepted";
    } catch (const unsupported_design_code_error& error) {
        EXPECT_STREQ(error.what(), "Moment amplification factor (strong axis) not supported in this design code");
    }
    try {
        member.SetMomentAmplificationFactorWeakAxis(1.1);
        ADD_FAILURE() << "the weak-axis factor was accepted";
    } catch (const std::logic_error& error) {
        EXPECT_STREQ(error.what(), "Moment amplification factor (weak axis) not supported in this design code");
    }
    EXPECT_FALSE(member.MomentAmplificationFactorStrongAxis().has_value());
    EXPECT_FALSE(member.MomentAmplificationFactorWeakAxis().has_value());
}

TEST(SteelMemberResult, AttachingWritesTheNameOfTheDesignCode)
{
    CMemberResult result;
    ConcreteMember member;
    EXPECT_TRUE(member.SetResult(&result));
    EXPECT_EQ(member.Result(), &result);
    EXPECT_EQ(Texts(result).at(0), "<h4>Design Code:</h4>\n\tPlain code 1\n");
    member.SetDesOpt(2);
    EXPECT_TRUE(member.SetResult(&result));
    EXPECT_EQ(Texts(result).at(0), "<h4>Design Code:</h4>\n\tPlain code 1\n<h4>Design Code:</h4>\n\tPlain code 2\n");
}

TEST(SteelMemberResult, TheNameGoesToTheCurrentPositionWithItsIndentation)
{
    CMemberResult result;
    result.IniDynaArray(2);
    result.SetCurSubSpan(1);
    const CResultIndent indent(&result);
    ConcreteMember member;
    member.SetResult(&result);
    EXPECT_EQ(Texts(result), (std::vector<std::string>{"", "\t<h4>Design Code:</h4>\n\t\tPlain code 1\n"}));
}

TEST(SteelMemberResult, WithTextDisabledItIsAttachedSilently)
{
    CMemberResult result;
    result.EnableText(false);
    const Record before(result);
    ConcreteMember member;
    EXPECT_TRUE(member.SetResult(&result));
    EXPECT_EQ(member.Result(), &result);
    EXPECT_EQ(Record(result), before);
}

TEST(SteelMemberResult, NullIsRefusedAndTheAttachmentStays)
{
    CMemberResult result;
    ConcreteMember member;
    EXPECT_FALSE(member.SetResult(nullptr));
    EXPECT_EQ(member.Result(), nullptr);
    member.SetResult(&result);
    EXPECT_FALSE(member.SetResult(nullptr));
    EXPECT_EQ(member.Result(), &result);
}

TEST(SteelMemberResult, ItIsBorrowedOnly)
{
    CMemberResult result;
    {
        ConcreteMember member;
        member.SetResult(&result);
    }
    result.AddOutputString(L"still here");
    EXPECT_EQ(Texts(result).at(0), "<h4>Design Code:</h4>\n\tPlain code 1\nstill here");
}

TEST(SteelMember, ClearingEmptiesListsTitleAndResultAndKeepsTheRest)
{
    CMemberResult result;
    AmplifiedMember member;
    member.SetMemberPointVec({Point(1, 0.0), Point(2, 5.0)});
    member.SetSubSpanVec({SubSpan(1)});
    member.SetTitle(L"Title");
    member.SetQuickCheckMode();
    member.SetLengthOverride(true);
    member.SetLyy(1.0);
    member.SetLzz(2.0);
    member.SetLlt(3.0);
    member.SetNumSubSpansUser(4);
    member.SetEquivalentUniformMomentFactor(0.9);
    member.SetMomentAmplificationFactorStrongAxis(1.1);
    member.SetMomentAmplificationFactorWeakAxis(1.2);
    member.SetResult(&result);
    result.SetUtilLocalAxial(2.0);
    result.SetLoadFlags(1);

    member.Clear();
    EXPECT_TRUE(member.GetMemberPointVec().empty());
    EXPECT_TRUE(member.GetSubSpanVec().empty());
    EXPECT_EQ(Utf8(member.GetTitle()), "");
    EXPECT_EQ(Record(result), Record());
    EXPECT_EQ(member.Result(), &result);
    EXPECT_TRUE(member.QuickCheckMode());
    EXPECT_TRUE(member.LengthOverride());
    EXPECT_EQ(member.Lyy(), 1.0);
    EXPECT_EQ(member.Lzz(), 2.0);
    EXPECT_EQ(member.Llt(), 3.0);
    EXPECT_EQ(member.NumSubSpansUser(), 4);
    EXPECT_EQ(member.EquivalentUniformMomentFactor(), 0.9);
    EXPECT_EQ(member.MomentAmplificationFactorStrongAxis(), 1.1);
    EXPECT_EQ(member.MomentAmplificationFactorWeakAxis(), 1.2);

    ConcreteMember unattached;
    unattached.SetTitle(L"x");
    unattached.Clear();
    EXPECT_EQ(Utf8(unattached.GetTitle()), "");
}

TEST(SteelMember, LengthIsFromTheFirstToTheLastPoint)
{
    ConcreteMember member;
    EXPECT_EQ(member.Length(), 0.0);
    member.SetMemberPointVec({Point(1, 2.5)});
    EXPECT_EQ(member.Length(), 0.0);
    member.SetMemberPointVec({Point(3, 9.0), Point(1, 2.5), Point(2, 4.0)});
    EXPECT_EQ(member.Length(), 6.5);
    // In the order of the numbers, which here goes backwards.
    member.SetMemberPointVec({Point(2, 0.0), Point(1, 5.0)});
    EXPECT_EQ(member.Length(), -5.0);
}

TEST(MemberPointList, IsKeptSortedByNumber)
{
    ConcreteMember member;
    EXPECT_TRUE(member.SetMemberPointVec({Point(3, 4.0), Point(1, 0.0), Point(2, 2.0)}));
    EXPECT_EQ(Indices(member.MemberPoints()), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(member.GetMemberPointVec(), member.MemberPoints());
}

TEST(MemberPointList, IsKeptSortedEvenWhereItIsRefused)
{
    ConcreteMember member;
    EXPECT_FALSE(member.SetMemberPointVec({Point(2, 0.0), Point(1, 5.0)}));
    EXPECT_EQ(Indices(member.MemberPoints()), (std::vector<int>{1, 2}));
    EXPECT_EQ(member.MemberPoints().at(0).GetPos(), 5.0);
    EXPECT_EQ(PointsMessage(member.GetMemberPointVec()), pointOrder);
    EXPECT_FALSE(member.SetMemberPointVec({}));
    EXPECT_TRUE(member.MemberPoints().empty());
}

TEST(MemberPointList, EachFaultOfAPairRefusesIt)
{
    ConcreteMember member;
    EXPECT_TRUE(member.SetMemberPointVec({Point(5, 1.0)}));
    EXPECT_TRUE(member.SetMemberPointVec({Point(5, 1.0), Point(6, 2.0)}));
    EXPECT_FALSE(member.SetMemberPointVec({Point(1, 2.0), Point(2, 1.0)}));
    EXPECT_FALSE(member.SetMemberPointVec({Point(1, 1.0), Point(2, 1.0)}));
    EXPECT_FALSE(member.SetMemberPointVec({Point(1, 1.0), Point(1, 2.0)}));
    EXPECT_FALSE(member.SetMemberPointVec({Point(1, 1.0), Point(3, 2.0)}));
    EXPECT_FALSE(member.SetMemberPointVec({Point(1, 1.0), Point(2, 2.0), Point(3, 2.0)}));
    EXPECT_FALSE(member.SetMemberPointVec({Point(INT_MAX, 1.0), Point(INT_MIN, 0.0)}));
    EXPECT_TRUE(member.SetMemberPointVec({Point(INT_MAX, 1.0), Point(INT_MAX - 1, 0.0)}));
    EXPECT_TRUE(member.SetMemberPointVec({Point(INT_MIN, 0.0), Point(INT_MIN + 1, 1.0)}));
}

TEST(MemberPointList, CanBeGivenBackToTheMemberItself)
{
    ConcreteMember member;
    member.SetMemberPointVec({Point(2, 3.0), Point(1, 0.0)});
    EXPECT_TRUE(member.SetMemberPointVec(member.MemberPoints()));
    EXPECT_EQ(Indices(member.MemberPoints()), (std::vector<int>{1, 2}));
    member.SetSubSpanVec({SubSpan(2), SubSpan(1)});
    EXPECT_TRUE(member.SetSubSpanVec(member.SubSpans()));
    EXPECT_EQ(member.SubSpans().size(), 2u);
}

TEST(SubSpanListOfAMember, IsSortedByNumberAndThenValidated)
{
    ConcreteMember member;
    EXPECT_TRUE(member.SetSubSpanVec({SubSpan(3, 1.0), SubSpan(1, 2.0)}));
    EXPECT_EQ(member.SubSpans().at(0).Get1Index(), 1);
    EXPECT_EQ(member.SubSpans().at(1).Get1Index(), 3);
    EXPECT_EQ(member.GetSubSpanVec(), member.SubSpans());
    EXPECT_FALSE(member.SetSubSpanVec({SubSpan(1), SubSpan(1)}));
    EXPECT_EQ(member.SubSpans().size(), 2u);
    EXPECT_FALSE(member.SetSubSpanVec({WithNotANumber(1)}));
    EXPECT_EQ(member.SubSpans().size(), 1u);
    EXPECT_FALSE(member.SetSubSpanVec({}));
    EXPECT_TRUE(member.SubSpans().empty());
}

TEST(MemberPointValidation, MessagesOfTheFaults)
{
    EXPECT_EQ(PointsMessage({}), noPoints);
    EXPECT_EQ(PointsMessage({Point(-3, 7.0)}), "");
    EXPECT_EQ(PointsMessage({Point(1, 0.0), Point(2, 1.0), Point(3, 2.0)}), "");
    EXPECT_EQ(PointsMessage({Point(4, 0.0), Point(5, 1.0)}), "");
    EXPECT_EQ(PointsMessage({Point(1, 1.0), Point(2, 0.0)}), pointOrder);
    EXPECT_EQ(PointsMessage({Point(1, 1.0), Point(2, 1.0)}), samePosition);
    EXPECT_EQ(PointsMessage({Point(1, 0.0), Point(1, 1.0)}), sameIndices);
    EXPECT_EQ(PointsMessage({Point(1, 0.0), Point(2, 1.0), Point(4, 2.0)}), gaps);
    EXPECT_EQ(PointsMessage({Point(2, 0.0), Point(1, 1.0)}), gaps);
}

TEST(MemberPointValidation, TakesTheListAsItStands)
{
    EXPECT_EQ(PointsMessage({Point(2, 0.0), Point(1, 5.0)}), gaps);
    EXPECT_EQ(PointsMessage({Point(1, 5.0), Point(2, 0.0)}), pointOrder);
}

TEST(MemberPointValidation, OfAPairTheChecksComeInTheirOrder)
{
    // Order of positions before indices, equal positions before equal indices.
    EXPECT_EQ(PointsMessage({Point(1, 1.0), Point(1, 0.0)}), pointOrder);
    EXPECT_EQ(PointsMessage({Point(1, 1.0), Point(7, 0.0)}), pointOrder);
    EXPECT_EQ(PointsMessage({Point(1, 1.0), Point(1, 1.0)}), samePosition);
    EXPECT_EQ(PointsMessage({Point(1, 1.0), Point(7, 1.0)}), samePosition);
}

TEST(MemberPointValidation, TheFirstFaultyPairDecides)
{
    EXPECT_EQ(PointsMessage({Point(1, 0.0), Point(3, 1.0), Point(4, 0.5)}), gaps);
    EXPECT_EQ(PointsMessage({Point(1, 0.0), Point(2, 0.0), Point(4, -1.0)}), samePosition);
}

TEST(MemberPointValidation, PositionsAreComparedExactly)
{
    EXPECT_EQ(PointsMessage({Point(1, 1.0), Point(2, std::nextafter(1.0, 2.0))}), "");
    EXPECT_EQ(PointsMessage({Point(1, 0.0), Point(2, -0.0)}), samePosition);
    // A position that is not a number is neither greater nor equal.
    EXPECT_EQ(PointsMessage({Point(1, notANumber), Point(2, 0.0)}), "");
}

TEST(MemberPointValidation, IndicesAtTheLimitsOfTheTypeDoNotOverflow)
{
    EXPECT_EQ(PointsMessage({Point(INT_MAX, 0.0), Point(INT_MIN, 1.0)}), gaps);
    EXPECT_EQ(PointsMessage({Point(INT_MAX - 1, 0.0), Point(INT_MAX, 1.0)}), "");
    EXPECT_EQ(PointsMessage({Point(INT_MIN, 0.0), Point(INT_MIN + 1, 1.0)}), "");
    EXPECT_EQ(PointsMessage({Point(INT_MIN, 0.0), Point(INT_MAX, 1.0)}), gaps);
    EXPECT_EQ(PointsMessage({Point(INT_MAX, 0.0), Point(INT_MAX, 1.0)}), sameIndices);
}

TEST(SubSpanValidation, MessagesOfTheFaults)
{
    EXPECT_EQ(SubSpansMessage({}), noSubSpans);
    EXPECT_EQ(SubSpansMessage({SubSpan(9)}), "");
    EXPECT_EQ(SubSpansMessage({SubSpan(1), SubSpan(2)}), "");
    EXPECT_EQ(SubSpansMessage({SubSpan(2), SubSpan(1)}), subSpanOrder);
    EXPECT_EQ(SubSpansMessage({SubSpan(1), SubSpan(1)}), sameSubSpanIndices);
    EXPECT_EQ(SubSpansMessage({SubSpan(INT_MIN), SubSpan(INT_MAX)}), "");
}

TEST(SubSpanValidation, GapsInTheNumbersAreNoFault)
{
    EXPECT_EQ(SubSpansMessage({SubSpan(1), SubSpan(3)}), "");
    EXPECT_EQ(SubSpansMessage({SubSpan(-5), SubSpan(3), SubSpan(100)}), "");
}

TEST(SubSpanValidation, OrderIsCheckedBeforeEqualNumbers)
{
    EXPECT_EQ(SubSpansMessage({SubSpan(2), SubSpan(2), SubSpan(1)}), subSpanOrder);
}

TEST(SubSpanValidation, ASubSpanThatDoesNotEqualItselfIsOutOfOrder)
{
    EXPECT_EQ(SubSpansMessage({WithNotANumber(1)}), subSpanOrder);
    EXPECT_EQ(SubSpansMessage({SubSpan(1), WithNotANumber(2)}), subSpanOrder);
}

TEST(SubSpanValidation, TheListIsNotChanged)
{
    const SubSpanList subSpans = {SubSpan(2, 5.0), SubSpan(1, 6.0)};
    const SubSpanList before = subSpans;
    CSteelMemberGen::ValidateSSV(&subSpans, nullptr);
    EXPECT_EQ(subSpans, before);
}

TEST(LayoutValidation, SizesComeFirst)
{
    EXPECT_EQ(BothMessage({Point(1, 0.0), Point(2, 1.0), Point(3, 2.0)}, {SubSpan(1), SubSpan(2), SubSpan(3)}), sizes);
    EXPECT_EQ(BothMessage({Point(1, 0.0), Point(2, 1.0)}, {}), sizes);
    EXPECT_EQ(BothMessage({Point(1, 1.0), Point(2, 0.0)}, {SubSpan(2), SubSpan(1)}), sizes);
    // Without any point there is no number of sub-spans that fits.
    EXPECT_EQ(BothMessage({}, {}), sizes);
    EXPECT_EQ(BothMessage({}, {SubSpan(1)}), sizes);
}

TEST(LayoutValidation, ThenThePointsThenTheSubSpans)
{
    EXPECT_EQ(BothMessage({Point(1, 0.0), Point(2, 1.0), Point(3, 2.0)}, {SubSpan(1), SubSpan(2)}), "");
    EXPECT_EQ(BothMessage({Point(1, 0.0), Point(2, 1.0), Point(3, 2.0)}, {SubSpan(4), SubSpan(9)}), "");
    EXPECT_EQ(BothMessage({Point(1, 1.0), Point(2, 0.0), Point(3, 2.0)}, {SubSpan(2), SubSpan(1)}), pointOrder);
    EXPECT_EQ(BothMessage({Point(1, 1.0), Point(2, 1.0)}, {SubSpan(1)}), samePosition);
    EXPECT_EQ(BothMessage({Point(1, 0.0), Point(1, 1.0)}, {SubSpan(1)}), sameIndices);
    EXPECT_EQ(BothMessage({Point(1, 0.0), Point(3, 1.0)}, {SubSpan(1)}), gaps);
    EXPECT_EQ(BothMessage({Point(1, 0.0), Point(2, 1.0), Point(3, 2.0)}, {SubSpan(2), SubSpan(1)}), subSpanOrder);
    EXPECT_EQ(BothMessage({Point(1, 0.0), Point(2, 1.0), Point(3, 2.0)}, {SubSpan(1), SubSpan(1)}), sameSubSpanIndices);
    EXPECT_EQ(BothMessage({Point(1, 0.0), Point(2, 1.0)}, {WithNotANumber(1)}), subSpanOrder);
    EXPECT_EQ(BothMessage({Point(1, 0.0)}, {}), noSubSpans);
}

TEST(LayoutValidation, AMessageIsAppendedToWhatTheSinkHolds)
{
    CString err = L"before\n";
    const Points points = {Point(1, 0.0), Point(3, 1.0), Point(5, 2.0)};
    EXPECT_FALSE(CSteelMemberGen::ValidateMPV(&points, &err));
    EXPECT_EQ(Utf8(err), "before\n" + gaps);
    const SubSpanList none;
    EXPECT_FALSE(CSteelMemberGen::ValidateSSV(&none, &err));
    EXPECT_EQ(Utf8(err), "before\n" + gaps + noSubSpans);
    EXPECT_FALSE(CSteelMemberGen::ValidateMPVandSSV(&points, &none, &err));
    EXPECT_EQ(Utf8(err), "before\n" + gaps + noSubSpans + sizes);
}

TEST(LayoutValidation, SortingByPositionAscends)
{
    Points points = {Point(1, 3.0), Point(2, -1.0), Point(3, 2.0), Point(4, 2.5)};
    CSteelMemberGen::SortMPVByPos(&points);
    EXPECT_EQ(Indices(points), (std::vector<int>{2, 3, 4, 1}));
    Points none;
    CSteelMemberGen::SortMPVByPos(&none);
    EXPECT_TRUE(none.empty());
}

namespace {

void GiveGap(ConcreteMember& member)
{
    member.SetMemberPointVec({Point(1, 0.0), Point(2, 1.0), Point(4, 2.0)});
    member.SetSubSpanVec({SubSpan(1), SubSpan(2)});
}

} // namespace

TEST(InputValidation, ValidInputWritesNothing)
{
    CMemberResult result;
    ConcreteMember member;
    member.SetMemberPointVec({Point(1, 0.0), Point(2, 1.0)});
    member.SetSubSpanVec({SubSpan(1)});
    EXPECT_TRUE(member.ValidateInputData());
    member.SetResult(&result);
    const Record before(result);
    EXPECT_TRUE(member.ValidateInputData());
    EXPECT_EQ(Record(result), before);
}

TEST(InputValidation, TheReasonGoesIntoTheResultsTextIndented)
{
    CMemberResult result;
    ConcreteMember member;
    GiveGap(member);
    EXPECT_FALSE(member.ValidateInputData());
    member.SetResult(&result);
    result.ClearStrings();
    EXPECT_FALSE(member.ValidateInputData());
    EXPECT_EQ(Texts(result).at(0), "Error in input data:\n\tMemberPoint list has gaps in Indices\n");
    EXPECT_EQ(result.GetFlags(), 0);
    result.ClearStrings();
    const CResultIndent indent(&result);
    EXPECT_FALSE(member.ValidateInputData());
    EXPECT_EQ(Texts(result).at(0), "\tError in input data:\n\t\tMemberPoint list has gaps in Indices\n");
}

TEST(InputValidation, OfAnEmptyMemberTheSizesAreNamed)
{
    CMemberResult result;
    ConcreteMember member;
    member.SetResult(&result);
    result.ClearStrings();
    EXPECT_FALSE(member.ValidateInputData());
    EXPECT_EQ(Texts(result).at(0), "Error in input data:\n\tMemberPoint and SubSpan lists sizes are incompatible\n");
}

TEST(InputValidation, WithTextDisabledItOnlyAnswers)
{
    CMemberResult result;
    ConcreteMember member;
    GiveGap(member);
    member.SetResult(&result);
    result.EnableText(false);
    const Record before(result);
    EXPECT_FALSE(member.ValidateInputData());
    EXPECT_EQ(Record(result), before);
}

TEST(InputValidation, InQuickCheckModeNoTextIsWrittenAtAll)
{
    CMemberResult result;
    ConcreteMember member;
    GiveGap(member);
    member.SetResult(&result);
    member.SetQuickCheckMode();
    const Record before(result);
    EXPECT_FALSE(member.ValidateInputData());
    EXPECT_EQ(Record(result), before);
}

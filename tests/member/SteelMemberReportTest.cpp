// The input report of the generic member.

#include "support/ConcreteMember.h"
#include "support/ResultRecord.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace Keltrix;
using namespace Keltrix::Steel;
using namespace Keltrix::Steel::Test;

using MemberAccess = CSteelMemberGenTestAccess;

namespace {

const CDesFormat fmt;

std::string Length(double value) { return Utf8(fmt.Length(value)); }
std::string Force(double value) { return Utf8(fmt.Force(value)); }
std::string Moment(double value) { return Utf8(fmt.Moment(value)); }
std::string NoDim(double value) { return Utf8(fmt.NoDim(value)); }

std::string Override(const wchar_t* axis, double value, double memberLength)
{
    return Utf8(ConcreteMember::EffectiveLengthOverrideString(fmt, axis, value, memberLength));
}

/// Two points and the sub-span between them, with twelve different forces and moments.
void Fill(ConcreteMember& member)
{
    member.SetMemberPointVec({Point(1, 0.0, CRestraint::PINNED), Point(2, 6.0, 0x41)});
    CSubSpan subSpan = SubSpan(1, 0.0, 0.0, CRestraint::TOP_FLANGE_LATERAL);
    subSpan.SetForcesAll({1000.0, 2000.0, 3000.0}, {4000.0, 5000.0, 6000.0});
    subSpan.SetMomentsAll({7000.0, 8000.0, 9000.0}, {-10000.0, -11000.0, -12000.0});
    member.SetSubSpanVec({subSpan});
}

const std::string pointCaption = "<h6>MemberPoints</h6>\n<table><align left>Ref\tPos\tRestraint\n";
const std::string pointEnd = "</align></table>\n";
const std::string subSpanCaption =
    "<h6>SubSpans</h6>\n<table>Ref\tFx\tFy\tFz\tMxx\tMyy\tMzz\tRestraint\n"
    "<tablewrap><i>axial\tshear (min)\tshear (maj)\ttorsion\tmom (maj)\tmom (min)\t</i></tablewrap>\n";
const std::string subSpanEnd =
    "<tablebreak><blue><b>Note:</b> <i>forces and moments in ZMD Axes</i></blue></tablebreak></table>\n";

/// A text with tabs put in front of each of its lines.
std::string Indented(const std::string& text, int levels)
{
    std::string out;
    bool lineStart = true;
    for (const char character : text) {
        if (lineStart) out.append(static_cast<std::size_t>(levels), '\t');
        out += character;
        lineStart = character == '\n';
    }
    return out;
}

} // namespace

TEST(InputReportTables, AnEmptyMemberGivesHeadingsAndColumnLinesWithoutRows)
{
    const ConcreteMember member;
    EXPECT_EQ(Utf8(member.GetStringForcesMomentsAndRestraints(fmt)),
              pointCaption + pointEnd + subSpanCaption + subSpanEnd);
}

TEST(InputReportTables, RowsOfPointsAndSubSpans)
{
    ConcreteMember member;
    Fill(member);
    EXPECT_EQ(Utf8(member.GetStringForcesMomentsAndRestraints(fmt)),
              pointCaption + "1\t" + Length(0.0) + "\tPinned\n" + "2\t" + Length(6.0) + "\t" +
                  Utf8(CRestraint(0x41, SHR_CENTRE, 0.0).Description(true)) + "\n" + pointEnd + subSpanCaption +
                  "<b>0</b>-1L\t" + Force(1000.0) + "\t" + Force(2000.0) + "\t" + Force(3000.0) + "\t" +
                  Moment(7000.0) + "\t" + Moment(8000.0) + "\t" + Moment(9000.0) + "\tTop flange lateral\n" +
                  "0-<b>1</b>R\t" + Force(4000.0) + "\t" + Force(5000.0) + "\t" + Force(6000.0) + "\t" +
                  Moment(-10000.0) + "\t" + Moment(-11000.0) + "\t" + Moment(-12000.0) + "\tTop flange lateral\n" +
                  subSpanEnd);
}

TEST(InputReportTables, PointsAreNumberedFromOneAndTheEndsOfSubSpansFromZero)
{
    // The sub-span's own number less one and that number: kept, although the point table counts from 1.
    ConcreteMember member;
    member.SetSubSpanVec({SubSpan(7)});
    member.SetMemberPointVec({Point(7, 1.0)});
    const std::string text = Utf8(member.GetStringForcesMomentsAndRestraints(fmt));
    EXPECT_NE(text.find("Restraint\n7\t" + Length(1.0) + "\tFree\n</align>"), std::string::npos) << text;
    EXPECT_NE(text.find("\n<b>6</b>-7L\t"), std::string::npos) << text;
    EXPECT_NE(text.find("\n6-<b>7</b>R\t"), std::string::npos) << text;
}

TEST(InputReportTables, RestraintsAreShownByTheirClosure)
{
    ConcreteMember member;
    member.SetMemberPointVec({Point(1, 0.0, 0x3)});
    CSubSpan subSpan = SubSpan(1, 0.0, 0.0, 0x4 | 0x8);
    member.SetSubSpanVec({subSpan});
    const std::string text = Utf8(member.GetStringForcesMomentsAndRestraints(fmt));
    EXPECT_NE(text.find("\tTop and Bottom flange lateral\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\tF12W\n"), std::string::npos) << text;
}

TEST(InputReportOverride, ALengthFromZeroUpIsAbsolute)
{
    EXPECT_EQ(Override(L"xx", 3.5, 6.0), "Lxx = " + Length(3.5));
    EXPECT_EQ(Override(L"lt", 0.0, 6.0), "Llt = " + Length(0.0));
    EXPECT_EQ(Override(L"lt", -0.0, 6.0), "Llt = " + Length(0.0));
    EXPECT_EQ(Override(L"", 1.0, 6.0), "L = " + Length(1.0));
}

TEST(InputReportOverride, AValueBelowZeroIsAFactorOfTheMembersLength)
{
    EXPECT_EQ(Override(L"xx", -0.85, 6.0), "Lxx = (" + NoDim(0.85) + " * " + Length(6.0) + ") = " + Length(0.85 * 6.0));
    EXPECT_EQ(Override(L"xx", -0.85, 6.0), "Lxx = (0.85 * 6 m) = 5.1 m");
    EXPECT_EQ(Override(L"yy", -1.0, 0.0), "Lyy = (" + NoDim(1.0) + " * " + Length(0.0) + ") = " + Length(0.0));
}

TEST(InputReportLengths, WithoutOverrideTheyAreToBeCalculated)
{
    ConcreteMember member;
    member.SetLyy(3.0);
    EXPECT_EQ(Utf8(member.GetStringEffectiveLengthsInput(fmt)),
              "<h6>Effective Lengths</h6>\n<i>to be calculated from restraints</i>\n");
}

TEST(InputReportLengths, OverridesCarryTheSectionsAxisNames)
{
    // The member's major axis yy is the section's xx, its minor axis zz the section's yy.
    ConcreteMember member;
    Fill(member);
    member.SetLengthOverride(true);
    member.SetLyy(-0.85);
    member.SetLzz(2.5);
    member.SetLlt(0.0);
    EXPECT_EQ(Utf8(member.GetStringEffectiveLengthsInput(fmt)),
              "<h6>Effective Lengths</h6>\n"
              "\t<i><blue>manually overridden...</blue></i>\n"
              "\tLxx = (" +
                  NoDim(0.85) + " * " + Length(6.0) + ") = " + Length(0.85 * 6.0) + "\n\tLyy = " + Length(2.5) +
                  "\n\tLlt = " + Length(0.0) + "\n");
}

TEST(InputReportFactors, NoneGivesNoTextAtAll)
{
    const ConcreteMember member;
    EXPECT_EQ(Utf8(member.GetStringOverridesInput(fmt)), "");
}

TEST(InputReportFactors, OneLineEachInTheirOrder)
{
    const std::string heading = "<h6>Calculation Overrides</h6>\n";
    const std::string uniform =
        "Equivalent Uniform Moment Factor has been overridden with a value of " + NoDim(0.95) + "\n";
    const std::string strong = "Moment Amplification Factor (strong axis) has been overridden with a value of " +
                               NoDim(1.1) + " (only applies when the member is in compression)\n";
    const std::string weak = "Moment Amplification Factor (weak axis) has been overridden with a value of " +
                             NoDim(1.25) + " (only applies when the member is in compression)\n";
    for (int set = 1; set < 8; ++set) {
        AmplifiedMember member;
        std::string expected = heading;
        if ((set & 1) != 0) {
            member.SetEquivalentUniformMomentFactor(0.95);
            expected += uniform;
        }
        if ((set & 2) != 0) {
            member.SetMomentAmplificationFactorStrongAxis(1.1);
            expected += strong;
        }
        if ((set & 4) != 0) {
            member.SetMomentAmplificationFactorWeakAxis(1.25);
            expected += weak;
        }
        EXPECT_EQ(Utf8(member.GetStringOverridesInput(fmt)), expected) << set;
    }
}

TEST(InputReport, TheWholeReport)
{
    AmplifiedMember member;
    Fill(member);
    member.SetEquivalentUniformMomentFactor(0.95);
    const std::string restraint = Utf8(CRestraint(0x41, SHR_CENTRE, 0.0).Description(true));
    const std::string expected =
        "<h4>Input Data:</h4>\n"
        "\t<h5>Section Data:</h5>\n"
        "\t\tUB 457x191x67\n"
        "\t\tsecond line\n"
        "\t<h5>Forces, Moments, Restraints, Effective Lengths and Calculation Overrides:</h5>\n"
        "\t\t<h6>MemberPoints</h6>\n"
        "\t\t<table><align left>Ref\tPos\tRestraint\n"
        "\t\t1\t" +
        Length(0.0) +
        "\tPinned\n"
        "\t\t2\t" +
        Length(6.0) + "\t" + restraint +
        "\n"
        "\t\t</align></table>\n"
        "\t\t<h6>SubSpans</h6>\n"
        "\t\t<table>Ref\tFx\tFy\tFz\tMxx\tMyy\tMzz\tRestraint\n"
        "\t\t<tablewrap><i>axial\tshear (min)\tshear (maj)\ttorsion\tmom (maj)\tmom (min)\t</i></tablewrap>\n"
        "\t\t<b>0</b>-1L\t" +
        Force(1000.0) + "\t" + Force(2000.0) + "\t" + Force(3000.0) + "\t" + Moment(7000.0) + "\t" + Moment(8000.0) +
        "\t" + Moment(9000.0) +
        "\tTop flange lateral\n"
        "\t\t0-<b>1</b>R\t" +
        Force(4000.0) + "\t" + Force(5000.0) + "\t" + Force(6000.0) + "\t" + Moment(-10000.0) + "\t" +
        Moment(-11000.0) + "\t" + Moment(-12000.0) +
        "\tTop flange lateral\n"
        "\t\t<tablebreak><blue><b>Note:</b> <i>forces and moments in ZMD Axes</i></blue></tablebreak></table>\n"
        "\t\t<h6>Effective Lengths</h6>\n"
        "\t\t<i>to be calculated from restraints</i>\n"
        "\t\t<h6>Calculation Overrides</h6>\n"
        "\t\tEquivalent Uniform Moment Factor has been overridden with a value of " +
        NoDim(0.95) + "\n";
    EXPECT_EQ(Utf8(MemberAccess::GetStringInput(member, L"UB 457x191x67\nsecond line\n", fmt)), expected);

    CMemberResult result;
    member.SetResult(&result);
    result.ClearStrings();
    MemberAccess::AddStringInput(member, L"UB 457x191x67\nsecond line\n");
    EXPECT_EQ(Texts(result).at(0), expected);
    result.ClearStrings();
    member.ReportInput(L"UB 457x191x67\nsecond line\n");
    EXPECT_EQ(Texts(result).at(0), expected);
}

TEST(InputReport, WithOverriddenLengthsAndWithoutFactorsItEndsWithTheLengths)
{
    ConcreteMember member;
    member.SetLengthOverride(true);
    EXPECT_EQ(Utf8(MemberAccess::GetStringInput(member, L"S\n", fmt)),
              "<h4>Input Data:</h4>\n\t<h5>Section Data:</h5>\n\t\tS\n"
              "\t<h5>Forces, Moments, Restraints, Effective Lengths and Calculation Overrides:</h5>\n" +
                  Indented(pointCaption + pointEnd + subSpanCaption + subSpanEnd +
                               "<h6>Effective Lengths</h6>\n\t<i><blue>manually overridden...</blue></i>\n\tLxx = " +
                               Length(0.0) + "\n\tLyy = " + Length(0.0) + "\n\tLlt = " + Length(0.0) + "\n",
                           2));
}

TEST(InputReport, ASectionTextThatIsEmptyOrHasNoLineBreakRunsOn)
{
    const ConcreteMember member;
    const std::string open = Utf8(MemberAccess::GetStringInput(member, L"S", fmt));
    EXPECT_TRUE(open.starts_with("<h4>Input Data:</h4>\n\t<h5>Section Data:</h5>\n\t\tS<h5>Forces, Moments,")) << open;
    const std::string empty = Utf8(MemberAccess::GetStringInput(member, L"", fmt));
    EXPECT_TRUE(empty.starts_with("<h4>Input Data:</h4>\n\t<h5>Section Data:</h5>\n\t\t<h5>Forces, Moments,")) << empty;
}

TEST(InputReport, NumbersGoThroughTheResultsFormatAndTextThroughItsIndentation)
{
    CUnit unit;
    unit.SetLength(L"mm", 1000.0);
    unit.SetForce(L"N", 1.0);
    ConcreteMember member;
    Fill(member);
    CMemberResult result;
    result.IniDynaArray(2);
    result.SetDesFormat(CDesFormat(unit));
    member.SetResult(&result);
    result.ClearStrings();
    result.SetCurSubSpan(1);
    const CResultIndent indent(&result);
    member.ReportInput(L"S\n");
    EXPECT_EQ(Texts(result).at(0), "");
    const std::string text = Texts(result).at(1);
    EXPECT_EQ(text, Indented(Utf8(MemberAccess::GetStringInput(member, L"S\n", CDesFormat(unit))), 1));
    EXPECT_NE(text.find("\t2\t6000 mm\t"), std::string::npos) << text;
    EXPECT_NE(text.find("\t3000 N\t"), std::string::npos) << text;
}

TEST(InputReport, WithoutAResultOrWithTextDisabledNothingIsAdded)
{
    ConcreteMember member;
    Fill(member);
    member.ReportInput(L"S\n");
    CMemberResult result;
    member.SetResult(&result);
    result.EnableText(false);
    const Record before(result);
    member.ReportInput(L"S\n");
    MemberAccess::AddStringInput(member, L"S\n");
    EXPECT_EQ(Record(result), before);
}

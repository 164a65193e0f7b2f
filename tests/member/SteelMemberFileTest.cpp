// The member input file: what is written, and what reading makes of texts that keep to the format.

#include "support/ConcreteMember.h"
#include "support/MemberFileText.h"
#include "support/ResultRecord.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace Keltrix;
using namespace Keltrix::Steel;
using namespace Keltrix::Steel::Test;

using MemberAccess = CSteelMemberGenTestAccess;

namespace {

CSection Section(const wchar_t* description, int type = 1)
{
    CSection section(description);
    CSecComp component = section.Component(0);
    component.SetType(type);
    section.SetComponent(0, component);
    return section;
}

} // namespace

TEST(MemberFileWriting, AMemberWithEverythingSet)
{
    AmplifiedMember member;
    CSection section = Section(L"UB 457x191x67");
    CSecComp component = section.Component(0);
    component.SetNetGross(0.9);
    component.SetPlasElas(1.5);
    component.SetBeta(0.65432);
    section.SetComponent(0, component);
    member.SetKeltrixSec(section);
    member.SetTitle(L"Beam B1");
    member.SetLengthOverride(true);
    member.SetLyy(-0.85);
    member.SetLzz(2.0);
    member.SetLlt(3.00005);
    member.SetEquivalentUniformMomentFactor(0.9);
    member.SetMomentAmplificationFactorStrongAxis(1.1);
    member.SetMomentAmplificationFactorWeakAxis(1.25);
    member.SetMemberPointVec(
        {Point(1, 0.0, CRestraint::PINNED), Point(2, 2.3456789, 0x1 | 0x8), Point(3, 12000000.0, 0x3f01ff, -0.25)});
    CSubSpan first = SubSpan(1, 0.0, 0.0, CRestraint::TOP_FLANGE_LATERAL);
    first.SetForcesAll({1.0, -2.5, 123456.7}, {0.0001, 0.00001, 4.0});
    first.SetMomentsAll({5.0, 6.0, 7.0}, {8.0, 9e9, -1e-7});
    CSubSpan second = SubSpan(2);
    CRestraint restraint = second.GetRestraint();
    restraint.SetLoadHeight(0.1);
    second.SetRestraint(restraint);
    member.SetSubSpanVec({first, second});

    CSteelGrade grade(L"User_defined", 275e6, 430e6, 205e9, 1.1);
    const std::string expected =
        "TITLE,Beam B1\n"
        "HEADINGS,Keltrix description,Rolled/Welded\n"
        "SECTION,UB 457x191x67,ROLLED\n"
        "GRADE,User_defined,2.75E+08,4.3E+08,2.05E+11,1.1\n"
        "NET_TO_GROSS,0.9000\n"
        "ALLOWABLE_PLASTIC/ELASTIC_RATIO,1.5000\n"
        "SHEAR_LAG_FACTOR,0.6543\n"
        "HEADINGS,YES/NO,Leff Maj, Leff Min, Leff LT\n"
        "EFFECTIVE_LENGTH_OVERRIDES,YES,-0.8500,2.0000,3.0000\n"
        "EQUIVALENT_UNIFORM_MOMENT_FACTOR,0.9000\n"
        "MOMENT_AMPLIFICATION_FACTOR_STRONG_AXIS,1.1000\n"
        "MOMENT_AMPLIFICATION_FACTOR_WEAK_AXIS,1.2500\n"
        "HEADINGS,Index,Position,Restraint int, Load height\n"
        "MEMBERPOINT,1,0,Pinned,0\n"
        "MEMBERPOINT,2,2.34568,F1L F2W,0\n"
        "MEMBERPOINT,3,1.2E+07,Fixed,-0.25\n"
        "HEADINGS,Index,Fx-L,Fy-L,Fz-L,Fx-R,Fy-R,Fz-R,Mx-L,My-L,Mz-L,Mx-R,My-R,Mz-R,Restraint,Load height\n"
        "SUBSPAN,1,1,-2.5,123457,0.0001,1E-05,4,5,6,7,8,9E+09,-1E-07,Top flange lateral,0\n"
        "SUBSPAN,2,0,0,0,0,0,0,0,0,0,0,0,0,Free,0.1\n"
        "END\n";
    // The closure of "F1L F2W" adds part warping of flange 2 only, so the written form stays as it is.
    EXPECT_EQ(Utf8(member.CSVInputData(grade)), expected);
    CSteelMember& base = member;
    EXPECT_EQ(Utf8(base.CSVInputData(grade)), expected);
}

TEST(MemberFileWriting, AMemberWithNothingSet)
{
    ConcreteMember member;
    member.SetKeltrixSec(Section(L"UC 254x254x89", 2));
    member.SetLyy(5.0);
    CSteelGrade grade(L"S355", 1.0, 2.0, 3.0, 4.0);
    EXPECT_EQ(Utf8(member.CSVInputData(grade)),
              "TITLE,\n"
              "HEADINGS,Keltrix description,Rolled/Welded\n"
              "SECTION,UC 254x254x89,WELDED\n"
              "GRADE,S355\n"
              "NET_TO_GROSS,1.0000\n"
              "ALLOWABLE_PLASTIC/ELASTIC_RATIO,1.2000\n"
              "SHEAR_LAG_FACTOR,0.7000\n"
              "HEADINGS,YES/NO,Leff Maj, Leff Min, Leff LT\n"
              "EFFECTIVE_LENGTH_OVERRIDES,NO\n"
              "HEADINGS,Index,Position,Restraint int, Load height\n"
              "HEADINGS,Index,Fx-L,Fy-L,Fz-L,Fx-R,Fy-R,Fz-R,Mx-L,My-L,Mz-L,Mx-R,My-R,Mz-R,Restraint,Load height\n"
              "END\n");
}

TEST(MemberFileWriting, TheThreeFactorsAreWrittenEachOnItsOwn)
{
    AmplifiedMember member;
    member.SetMomentAmplificationFactorWeakAxis(2.0);
    CSteelGrade grade(L"S275", 0.0, 0.0, 0.0, 1.0);
    std::string text = Utf8(member.CSVInputData(grade));
    EXPECT_NE(text.find("EFFECTIVE_LENGTH_OVERRIDES,NO\nMOMENT_AMPLIFICATION_FACTOR_WEAK_AXIS,2.0000\nHEADINGS,Index"),
              std::string::npos)
        << text;
    AmplifiedMember strong;
    strong.SetMomentAmplificationFactorStrongAxis(0.0);
    text = Utf8(strong.CSVInputData(grade));
    EXPECT_NE(
        text.find("EFFECTIVE_LENGTH_OVERRIDES,NO\nMOMENT_AMPLIFICATION_FACTOR_STRONG_AXIS,0.0000\nHEADINGS,Index"),
        std::string::npos)
        << text;
}

TEST(MemberFileWriting, TheSectionTypeIsInTheHostsWords)
{
    CSteelGrade grade(L"S275", 0.0, 0.0, 0.0, 1.0);
    const std::pair<int, const char*> rows[] = {
        {0, "UNDEF"}, {1, "ROLLED"}, {2, "WELDED"}, {3, "FORMED"}, {4, "UNDEF"}};
    for (const auto& [type, word] : rows) {
        ConcreteMember member;
        member.SetKeltrixSec(Section(L"UB 457x191x67", type));
        const std::string text = Utf8(member.CSVInputData(grade));
        EXPECT_NE(text.find(std::string("SECTION,UB 457x191x67,") + word + "\nGRADE,"), std::string::npos) << text;
    }
}

TEST(MemberFileWriting, AUserDefinedGradeIsRecognisedInAnyCaseAndKeepsItsName)
{
    ConcreteMember member;
    CSteelGrade grade(L"USER_DEFINED", 1234567.0, 0.0, 2e11, 1.0);
    std::string text = Utf8(member.CSVInputData(grade));
    EXPECT_NE(text.find("\nGRADE,USER_DEFINED,1.23457E+06,0,2E+11,1\n"), std::string::npos) << text;
    grade = CSteelGrade(L"User defined", 1.0, 2.0, 3.0, 4.0);
    text = Utf8(member.CSVInputData(grade));
    EXPECT_NE(text.find("\nGRADE,User defined\n"), std::string::npos) << text;
}

TEST(MemberFileWriting, WritingChangesNeitherMemberNorGrade)
{
    ConcreteMember member;
    member.SetKeltrixSec(Section(L"UB 457x191x67"));
    const int offered = member.sectionsOffered;
    CSteelGrade grade(L"S275", 1.0, 2.0, 3.0, 4.0);
    member.CSVInputData(grade);
    EXPECT_TRUE(grade == CSteelGrade(L"S275", 1.0, 2.0, 3.0, 4.0));
    EXPECT_EQ(member.sectionsOffered, offered);
    EXPECT_EQ(member.preparations, 0);
}

TEST(SectionHelpers, TheShortFormOfADescription)
{
    EXPECT_EQ(Utf8(MemberAccess::SecUserDescShort(L"UB 457x191x67")), "UB 457x191x67");
    CSecDB geometry(L"", CSectDB::GetDatabase());
    geometry.SetUpFromDesc(L"ub457X191x67");
    EXPECT_EQ(MemberAccess::SecUserDescShort(L"ub457X191x67"), geometry.UserDesc());
}

TEST(SectionHelpers, ASectionFromAUserDescriptionHasNoNameAndNoCatalogue)
{
    const CSection parametric = MemberAccess::KXSectFromUserDesc(L"I 400x200x10x15");
    EXPECT_EQ(Utf8(parametric.GetName()), "");
    EXPECT_EQ(parametric.Component(0).Shape() & CSecGeom::SHAPE_MASK, CSecGeom::SHAPE_I);
    EXPECT_DOUBLE_EQ(parametric.Component(0).Dimension(0.0, CSecGeom::DEPTH), 0.4);
    EXPECT_DOUBLE_EQ(parametric.Component(0).Dimension(0.0, CSecGeom::FLANGE_THICKNESS), 0.015);
    const CSection catalogue = MemberAccess::KXSectFromUserDesc(L"UB 457x191x67");
    EXPECT_EQ(catalogue.Component(0).Shape(), 0);
}

TEST(MemberFileReading, AWholeFile)
{
    AmplifiedMember member;
    CSteelGrade grade;
    ASSERT_TRUE(member.CSVInputData(Wide(FileText().Text()), grade));
    EXPECT_EQ(member.preparations, 1);
    EXPECT_EQ(member.sectionsOffered, 2);
    EXPECT_EQ(Utf8(member.GetTitle()), "Beam B1");
    const CSection section = member.GetKeltrixSec();
    EXPECT_EQ(Utf8(section.GetName()), "");
    const CSecComp& component = section.Component(0);
    EXPECT_EQ(Utf8(component.Description(true)), "UB 457x191x67");
    EXPECT_EQ(component.Type(), SEC_ROLLED);
    EXPECT_EQ(component.MaterialType(), 1);
    EXPECT_EQ(component.MaterialAnalysis(), 0);
    EXPECT_EQ(component.NetGross(), 0.9);
    EXPECT_EQ(component.PlasElas(), 1.5);
    EXPECT_EQ(component.Beta(), 0.65);
    EXPECT_TRUE(grade == CSteelGrade(L"S275", 0.0, 0.0, 0.0, 1.0));
    EXPECT_TRUE(member.LengthOverride());
    EXPECT_EQ(member.Lyy(), -0.85);
    EXPECT_EQ(member.Lzz(), 2.0);
    EXPECT_EQ(member.Llt(), 3.0);
    EXPECT_EQ(member.EquivalentUniformMomentFactor(), 0.95);
    EXPECT_EQ(member.MomentAmplificationFactorStrongAxis(), 1.1);
    EXPECT_EQ(member.MomentAmplificationFactorWeakAxis(), 1.2);
    ASSERT_EQ(member.MemberPoints().size(), 2u);
    EXPECT_EQ(member.MemberPoints()[0].Get1Index(), 1);
    EXPECT_EQ(member.MemberPoints()[0].GetRestraint().RestFlag(), CRestraint::PINNED);
    EXPECT_EQ(member.MemberPoints()[1].GetPos(), 5.5);
    EXPECT_EQ(member.MemberPoints()[1].GetRestraint().RestFlag(), 0x41);
    EXPECT_EQ(member.MemberPoints()[1].GetRestraint().RefLoadHeight(), SHR_CENTRE);
    // Load heights are read in single precision: kept for compatibility.
    EXPECT_EQ(member.MemberPoints()[1].GetRestraint().LoadHeight(), static_cast<double>(0.1f));
    ASSERT_EQ(member.SubSpans().size(), 1u);
    const CSubSpan& subSpan = member.SubSpans()[0];
    EXPECT_EQ(subSpan.Get1Index(), 1);
    EXPECT_EQ(subSpan.GetForcesLeft(), Vec3<double>(1.0, 2.0, 3.0));
    EXPECT_EQ(subSpan.GetForcesRight(), Vec3<double>(4.0, 5.0, 6.0));
    EXPECT_EQ(subSpan.GetMomentsLeft(), Vec3<double>(7.0, 8.0, 9.0));
    EXPECT_EQ(subSpan.GetMomentsRight(), Vec3<double>(10.0, 11.0, 12.5));
    EXPECT_EQ(subSpan.GetRestraint().RestFlag(), 0);
    EXPECT_EQ(subSpan.GetRestraint().LoadHeight(), static_cast<double>(-0.3f));
}

TEST(MemberFileReading, AMemberPointsRestraintHoldsNoForces)
{
    AmplifiedMember member;
    CSteelGrade grade;
    ASSERT_TRUE(member.CSVInputData(Wide(FileText().Text()), grade));
    for (const CMemberPoint& point : member.MemberPoints()) {
        Vec3<double> force;
        Vec3<double> moment;
        bool use = false;
        EXPECT_FALSE(point.GetRestraint().GetForcesAndMoments(force, moment, use));
        EXPECT_TRUE(use);
        EXPECT_EQ(force, Vec3<double>(0.0, 0.0, 0.0));
        EXPECT_EQ(moment, Vec3<double>(0.0, 0.0, 0.0));
    }
}

TEST(MemberFileReading, KeywordsAreTakenInAnyCase)
{
    FileText file;
    for (std::string& line : file.lines) {
        const std::size_t comma = line.find(',');
        const std::size_t end = comma == std::string::npos ? line.size() : comma;
        for (std::size_t i = 0; i < end; ++i)
            if (i % 2 == 0) line[i] = static_cast<char>(std::tolower(static_cast<unsigned char>(line[i])));
    }
    AmplifiedMember mixed;
    AmplifiedMember upper;
    CSteelGrade grade;
    ASSERT_TRUE(mixed.CSVInputData(Wide(file.Text()), grade)) << file.Text();
    ASSERT_TRUE(upper.CSVInputData(Wide(FileText().Text()), grade));
    EXPECT_EQ(mixed.CSVInputData(grade), upper.CSVInputData(grade));
}

TEST(MemberFileReading, LinesMayEndInCarriageReturnAndLineFeed)
{
    AmplifiedMember dos;
    AmplifiedMember plain;
    CSteelGrade grade;
    ASSERT_TRUE(dos.CSVInputData(Wide(FileText().Text("\r\n")), grade));
    ASSERT_TRUE(plain.CSVInputData(Wide(FileText().Text()), grade));
    EXPECT_EQ(dos.CSVInputData(grade), plain.CSVInputData(grade));
    EXPECT_EQ(Utf8(dos.GetTitle()), "Beam B1");
}

TEST(MemberFileReading, FieldsBeyondThoseOfALineAreIgnored)
{
    FileText file;
    for (std::string& line : file.lines)
        line += ",extra,fields";
    AmplifiedMember member;
    AmplifiedMember plain;
    CSteelGrade grade;
    ASSERT_TRUE(member.CSVInputData(Wide(file.Text()), grade));
    ASSERT_TRUE(plain.CSVInputData(Wide(FileText().Text()), grade));
    EXPECT_EQ(member.CSVInputData(grade), plain.CSVInputData(grade));
}

TEST(MemberFileReading, WhatFollowsEndIsNotRead)
{
    AmplifiedMember member;
    CSteelGrade grade;
    EXPECT_TRUE(member.CSVInputData(Wide(FileText().Text() + "MEMBERPOINT,9,9,Free,0\nnonsense\n"), grade));
    EXPECT_EQ(member.MemberPoints().size(), 2u);
    std::string withoutLastBreak = FileText().Text();
    withoutLastBreak.pop_back();
    EXPECT_TRUE(member.CSVInputData(Wide(withoutLastBreak), grade));
}

TEST(MemberFileReading, ATitleEndsAtItsFirstComma)
{
    FileText file;
    file.Line("TITLE") = "TITLE,Beam, left bay";
    AmplifiedMember member;
    CSteelGrade grade;
    EXPECT_TRUE(member.CSVInputData(Wide(file.Text()), grade));
    EXPECT_EQ(Utf8(member.GetTitle()), "Beam");
}

// Keywords are read in any letter case, the words after them as they are written.
TEST(MemberFileReading, SectionTypeWordsInCapitalsAndUndefinedForAllOthers)
{
    const std::pair<const char*, int> rows[] = {{"ROLLED", 1}, {"WELDED", 2},  {"FORMED", 3},   {"UNDEF", 0},
                                                {"", 0},       {"riveted", 0}, {"ROLLED2", 0},  {"rolled", 0},
                                                {"Welded", 0}, {"formed", 0},  {" ROLLED\t", 1}};
    for (const auto& [word, type] : rows) {
        FileText file;
        file.Line("SECTION") = std::string("SECTION,UB 457x191x67,") + word;
        AmplifiedMember member;
        CSteelGrade grade;
        EXPECT_TRUE(member.CSVInputData(Wide(file.Text()), grade)) << word;
        EXPECT_EQ(static_cast<int>(member.GetKeltrixSec().Component(0).Type()), type) << word;
    }
}

TEST(MemberFileReading, AnUnknownSectionIsOfferedToTheMemberWithShapeZero)
{
    FileText file;
    file.Line("SECTION") = "SECTION,XYZ 1x2x3,ROLLED";
    AmplifiedMember member;
    CSteelGrade grade;
    EXPECT_TRUE(member.CSVInputData(Wide(file.Text()), grade));
    EXPECT_EQ(member.GetKeltrixSec().Component(0).Shape(), 0);
    EXPECT_EQ(static_cast<int>(member.GetKeltrixSec().Component(0).Type()), 1);
}

TEST(MemberFileReading, AUserDefinedGradeHasItsFourNumbersInTheOrderWritten)
{
    for (const char* name : {"User_defined", "USER_DEFINED", "user_defined"}) {
        FileText file;
        file.Line("GRADE") = std::string("GRADE,") + name + ",2.75E+08,4.3E+08,2.05E+11,1.1";
        AmplifiedMember member;
        CSteelGrade grade;
        EXPECT_TRUE(member.CSVInputData(Wide(file.Text()), grade));
        EXPECT_TRUE(grade == CSteelGrade(Wide(name), 2.75e8, 4.3e8, 2.05e11, 1.1)) << name;
    }
}

TEST(MemberFileReading, NumbersOfAnyOtherGradeAreNotRead)
{
    FileText file;
    file.Line("GRADE") = "GRADE,S355,2.75E+08,4.3E+08,2.05E+11,1.1";
    AmplifiedMember member;
    CSteelGrade grade;
    EXPECT_TRUE(member.CSVInputData(Wide(file.Text()), grade));
    EXPECT_TRUE(grade == CSteelGrade(L"S355", 0.0, 0.0, 0.0, 1.0));
}

TEST(MemberFileReading, TheOverrideIsOnForYesInCapitalsAndOffForAnythingElse)
{
    for (const char* word : {"YES", " YES\t"}) {
        FileText file;
        file.Line("EFFECTIVE_LENGTH_OVERRIDES") = std::string("EFFECTIVE_LENGTH_OVERRIDES,") + word + ",1,2,3";
        AmplifiedMember member;
        CSteelGrade grade;
        EXPECT_TRUE(member.CSVInputData(Wide(file.Text()), grade));
        EXPECT_TRUE(member.LengthOverride()) << word;
        EXPECT_EQ(member.Lyy(), 1.0);
        EXPECT_EQ(member.Lzz(), 2.0);
        EXPECT_EQ(member.Llt(), 3.0);
    }
    for (const char* word : {"NO", "Y", "1", "", "TRUE", "YES!", "yes", "Yes"}) {
        FileText file;
        file.Line("EFFECTIVE_LENGTH_OVERRIDES") = std::string("EFFECTIVE_LENGTH_OVERRIDES,") + word + ",1,2,3";
        AmplifiedMember member;
        member.SetLengthOverride(true);
        member.SetLyy(7.0);
        member.SetLzz(8.0);
        member.SetLlt(9.0);
        CSteelGrade grade;
        EXPECT_TRUE(member.CSVInputData(Wide(file.Text()), grade));
        EXPECT_FALSE(member.LengthOverride()) << word;
        // The lengths stay as they were.
        EXPECT_EQ(member.Lyy(), 7.0);
        EXPECT_EQ(member.Lzz(), 8.0);
        EXPECT_EQ(member.Llt(), 9.0);
    }
}

TEST(MemberFileReading, ARestraintIsADescriptionOrElseANumberOfBits)
{
    const std::pair<const char*, int> rows[] = {{"3", 3},
                                                {"67", 67},
                                                {"1", 1},
                                                {"12", 12},
                                                {"21", 21},
                                                {"0", 0},
                                                {"Pinned", 0x300043},
                                                {"pin", 0x300043},
                                                {"Top flange lateral", 0x1},
                                                {"f1l f2l tr", 0x43},
                                                {"", 0},
                                                {"Free", 0},
                                                {"none", 0},
                                                {"Q", 0},
                                                {"3x", 0},
                                                {"F1", 0},
                                                {" 5 ", 5},
                                                {"-1", -1}};
    for (const auto& [field, bits] : rows) {
        FileText file;
        file.Line("MEMBERPOINT,2") = std::string("MEMBERPOINT,2,5.5,") + field + ",0.5";
        AmplifiedMember member;
        CSteelGrade grade;
        ASSERT_TRUE(member.CSVInputData(Wide(file.Text()), grade));
        EXPECT_EQ(member.MemberPoints().at(1).GetRestraint().RestFlag(), bits) << "field \"" << field << '"';
        EXPECT_EQ(member.MemberPoints().at(1).GetRestraint().LoadHeight(), 0.5) << "field \"" << field << '"';
    }
}

TEST(MemberFileReading, PointsAndSubSpansAreSortedAndTheirFaultsNotLookedAt)
{
    FileText file;
    file.lines = {"TITLE,T",
                  "SECTION,UB 457x191x67,ROLLED",
                  "GRADE,S275",
                  "NET_TO_GROSS,1",
                  "ALLOWABLE_PLASTIC/ELASTIC_RATIO,1",
                  "SHEAR_LAG_FACTOR,1",
                  "EFFECTIVE_LENGTH_OVERRIDES,NO",
                  "HEADINGS",
                  "SUBSPAN,2,0,0,0,0,0,0,0,0,0,0,0,0,Free,0",
                  "MEMBERPOINT,7,1,Free,0",
                  "SUBSPAN,2,0,0,0,0,0,0,0,0,0,0,0,0,Free,0",
                  "MEMBERPOINT,3,2,Free,0",
                  "END"};
    ConcreteMember member;
    CSteelGrade grade;
    EXPECT_TRUE(member.CSVInputData(Wide(file.Text()), grade));
    EXPECT_EQ(member.MemberPoints().at(0).Get1Index(), 3);
    EXPECT_EQ(member.MemberPoints().at(1).Get1Index(), 7);
    EXPECT_EQ(member.SubSpans().size(), 2u);
}

TEST(MemberFileReading, AFileWithoutPointsEmptiesTheLists)
{
    FileText file;
    file.Remove("MEMBERPOINT,1");
    file.Remove("MEMBERPOINT,2");
    file.Remove("SUBSPAN");
    AmplifiedMember member;
    member.SetMemberPointVec({Point(1, 0.0), Point(2, 3.0)});
    member.SetSubSpanVec({SubSpan(1)});
    CSteelGrade grade;
    EXPECT_TRUE(member.CSVInputData(Wide(file.Text()), grade));
    EXPECT_TRUE(member.MemberPoints().empty());
    EXPECT_TRUE(member.SubSpans().empty());
}

TEST(MemberFileReading, TheReaderLooksAtItsOwnTextOnly)
{
    // Reading inside another reading's text: the scanner's place belongs to the text read last.
    const CString other = L"TITLE,other\nSECTION,other\n";
    GetLine(&other);
    AmplifiedMember member;
    CSteelGrade grade;
    EXPECT_TRUE(member.CSVInputData(Wide(FileText().Text()), grade));
    EXPECT_EQ(Utf8(member.GetTitle()), "Beam B1");
}

TEST(MemberFileProperty, WriteReadWriteIsTheIdentity)
{
    const unsigned int seed = 42;
    Random random(seed);
    // Restraints that their written form names completely.
    static const std::array<const wchar_t*, 14> codes = {L"Free",
                                                         L"Pinned",
                                                         L"Fixed",
                                                         L"Full rotational",
                                                         L"Top flange lateral",
                                                         L"Bottom flange lateral",
                                                         L"Partial rotational",
                                                         L"F1L F2W TR",
                                                         L"F1LP",
                                                         L"F2LW TP",
                                                         L"TF MAJRV",
                                                         L"MAJV MINPV",
                                                         L"CAB",
                                                         L"F1W F2P MINV"};
    static const std::array<const wchar_t*, 5> sections = {L"UB 457x191x67", L"UC 254x254x89", L"I 400x200x10x15",
                                                           L"CHS 168.3x5", L"BOX 300x200x10x12"};
    const auto number = [&](double scale) {
        return Pick(random, 0, 3) == 0 ? 0.0 : std::uniform_real_distribution<double>(-scale, scale)(random);
    };
    const auto restraint = [&] {
        CRestraint r;
        EXPECT_TRUE(r.SetDescription(codes[static_cast<std::size_t>(Pick(random, 0, 13))]));
        r.SetLoadHeight(number(0.5));
        return r;
    };
    // Braces, so that every compiler draws the components in this order.
    const auto vector = [&] { return Vec3<double>{number(1e6), number(1e-3), number(50.0)}; };
    for (int run = 0; run < 150; ++run) {
        AmplifiedMember member;
        member.SetTitle(run % 2 == 0 ? L"Beam" : L"Säule 3 – Achse B");
        CSection section = Section(sections[static_cast<std::size_t>(Pick(random, 0, 4))], Pick(random, 0, 3));
        CSecComp component = section.Component(0);
        component.SetNetGross(std::abs(number(1.0)));
        component.SetBeta(number(2.0));
        component.SetPlasElas(number(2.0));
        section.SetComponent(0, component);
        member.SetKeltrixSec(section);
        if (Pick(random, 0, 1) == 0) {
            member.SetLengthOverride(true);
            member.SetLyy(number(20.0));
            member.SetLzz(number(20.0));
            member.SetLlt(number(20.0));
        }
        if (Pick(random, 0, 1) == 0) member.SetEquivalentUniformMomentFactor(number(1.0));
        if (Pick(random, 0, 1) == 0) member.SetMomentAmplificationFactorStrongAxis(number(2.0));
        if (Pick(random, 0, 1) == 0) member.SetMomentAmplificationFactorWeakAxis(number(2.0));
        std::vector<CMemberPoint> points;
        std::vector<CSubSpan> subSpans;
        for (int i = Pick(random, 0, 4), k = 1; i > 0; --i, ++k) {
            CMemberPoint point = Point(k, number(100.0));
            point.SetRestraint(restraint());
            points.push_back(point);
            CSubSpan subSpan;
            subSpan.Set1Index(k);
            subSpan.SetForcesLeft(vector());
            subSpan.SetForcesRight(vector());
            subSpan.SetMomentsLeft(vector());
            subSpan.SetMomentsRight(vector());
            subSpan.SetRestraint(restraint());
            subSpans.push_back(subSpan);
        }
        member.SetMemberPointVec(points);
        member.SetSubSpanVec(subSpans);
        CSteelGrade grade = Pick(random, 0, 1) == 0 ? CSteelGrade(L"S275", 0.0, 0.0, 0.0, 1.0)
                                                    : CSteelGrade(L"User_Defined", 3e8, number(1e9), 2e11, 1.05);
        const CString written = member.CSVInputData(grade);

        AmplifiedMember read;
        CSteelGrade readGrade;
        ASSERT_TRUE(read.CSVInputData(written, readGrade)) << "seed " << seed << " run " << run << '\n'
                                                           << Utf8(written);
        EXPECT_EQ(Utf8(read.CSVInputData(readGrade)), Utf8(written)) << "seed " << seed << " run " << run;
    }
}

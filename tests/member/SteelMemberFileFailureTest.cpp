// The member input file where the text departs from the format: which step refuses it and what stays set, which lines
// are passed over, and which are lost without a word.

#include "support/ConcreteMember.h"
#include "support/MemberFileText.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace Keltrix;
using namespace Keltrix::Steel;
using namespace Keltrix::Steel::Test;

namespace {

/// A member with a state of its own before the reading, and everything that a reading may change.
template <class Member>
class Reading {
public:
    explicit Reading(const FileText& file, int refusedSection = 0) : Reading(file.Text(), refusedSection) {}
    explicit Reading(const std::string& text, int refusedSection = 0)
    {
        member.SetTitle(L"old");
        member.SetLyy(7.0);
        member.SetLzz(8.0);
        member.SetLlt(9.0);
        member.SetMemberPointVec({Point(1, 0.0), Point(2, 99.0)});
        member.SetSubSpanVec({SubSpan(1), SubSpan(2), SubSpan(3)});
        member.refusedSection = refusedSection;
        done = member.CSVInputData(Wide(text), grade);
    }
    bool ListsAreOld() const
    {
        return member.MemberPoints().size() == 2 && member.Length() == 99.0 && member.SubSpans().size() == 3;
    }

    Member member;
    CSteelGrade grade{L"old", 1.0, 2.0, 3.0, 4.0};
    bool done = false;
};
using AmplifiedReading = Reading<AmplifiedMember>;
using PlainReading = Reading<ConcreteMember>;

bool IsOld(const CSteelGrade& grade) { return grade == CSteelGrade(L"old", 1.0, 2.0, 3.0, 4.0); }

FileText Renamed(const std::string& start)
{
    FileText file;
    file.Line(start) = "X" + file.Line(start);
    return file;
}

/// What a reading up to and including the given step has set. Steps as they follow one another in the file.
enum Step { nothing, title, sectionOnce, gradeRead, lengths, uniformMoment, strongAxis, weakAxis, sectionTwice };

void ExpectSetUpTo(AmplifiedReading& reading, Step step, const std::string& what)
{
    EXPECT_FALSE(reading.done) << what;
    EXPECT_EQ(reading.member.preparations, 1) << what;
    EXPECT_EQ(Utf8(reading.member.GetTitle()), step >= title ? "Beam B1" : "old") << what;
    EXPECT_EQ(reading.member.sectionsOffered, step >= sectionTwice ? 2 : step >= sectionOnce ? 1 : 0) << what;
    EXPECT_EQ(IsOld(reading.grade), step < gradeRead) << what;
    EXPECT_EQ(reading.member.LengthOverride(), step >= lengths) << what;
    EXPECT_EQ(reading.member.Lyy(), step >= lengths ? -0.85 : 7.0) << what;
    EXPECT_EQ(reading.member.Llt(), step >= lengths ? 3.0 : 9.0) << what;
    EXPECT_EQ(reading.member.EquivalentUniformMomentFactor().has_value(), step >= uniformMoment) << what;
    EXPECT_EQ(reading.member.MomentAmplificationFactorStrongAxis().has_value(), step >= strongAxis) << what;
    EXPECT_EQ(reading.member.MomentAmplificationFactorWeakAxis().has_value(), step >= weakAxis) << what;
    EXPECT_TRUE(reading.ListsAreOld()) << what;
}

} // namespace

TEST(MemberFileFailure, AMissingKeywordStopsTheReadingAndWhatWasSetStays)
{
    const std::pair<const char*, Step> rows[] = {{"TITLE", nothing},
                                                 {"SECTION", title},
                                                 {"GRADE", sectionOnce},
                                                 {"NET_TO_GROSS", gradeRead},
                                                 {"ALLOWABLE_PLASTIC/ELASTIC_RATIO", gradeRead},
                                                 {"EFFECTIVE_LENGTH_OVERRIDES", gradeRead},
                                                 {"MEMBERPOINT,1", sectionTwice},
                                                 {"SUBSPAN", sectionTwice},
                                                 {"END", sectionTwice}};
    for (const auto& [keyword, step] : rows) {
        AmplifiedReading reading(Renamed(keyword));
        ExpectSetUpTo(reading, step, keyword);
    }
}

TEST(MemberFileFailure, ATextThatStopsBeforeALineIsRefusedThere)
{
    const std::pair<const char*, Step> rows[] = {{"TITLE", nothing},
                                                 {"HEADINGS,Keltrix", title},
                                                 {"SECTION", title},
                                                 {"GRADE", sectionOnce},
                                                 {"NET_TO_GROSS", gradeRead},
                                                 {"ALLOWABLE_PLASTIC/ELASTIC_RATIO", gradeRead},
                                                 {"SHEAR_LAG_FACTOR", gradeRead},
                                                 {"HEADINGS,YES/NO", gradeRead},
                                                 {"EFFECTIVE_LENGTH_OVERRIDES", gradeRead},
                                                 // From here on every further line may be missing but the last.
                                                 {"MEMBERPOINT,1", sectionTwice},
                                                 {"MEMBERPOINT,2", sectionTwice},
                                                 {"HEADINGS,Index,Fx-L", sectionTwice},
                                                 {"SUBSPAN", sectionTwice},
                                                 {"END", sectionTwice}};
    for (const auto& [keyword, step] : rows) {
        FileText file;
        file.CutBefore(keyword);
        AmplifiedReading reading(file);
        ExpectSetUpTo(reading, step, keyword);
    }
}

TEST(MemberFileFailure, AnEmptyTextSetsNothingButIsPreparedFor)
{
    AmplifiedReading reading(std::string{});
    ExpectSetUpTo(reading, nothing, "empty");
    AmplifiedReading blank(std::string("\n") + FileText().Text());
    ExpectSetUpTo(blank, nothing, "blank first line");
}

TEST(MemberFileFailure, ThePreparationComesBeforeAnythingIsRead)
{
    class ClearedByPreparation : public AmplifiedMember {
    public:
        void PrepareInput() override
        {
            AmplifiedMember::PrepareInput();
            titleThen = Utf8(GetTitle());
            SetTitle(L"prepared");
        }
        std::string titleThen;
    };
    Reading<ClearedByPreparation> refused(std::string("nonsense"));
    EXPECT_FALSE(refused.done);
    EXPECT_EQ(refused.member.titleThen, "old");
    EXPECT_EQ(Utf8(refused.member.GetTitle()), "prepared");
    Reading<ClearedByPreparation> read{FileText()};
    EXPECT_TRUE(read.done);
    EXPECT_EQ(read.member.preparations, 1);
    EXPECT_EQ(Utf8(read.member.GetTitle()), "Beam B1");
}

TEST(MemberFileFailure, ASectionRefusedAtTheFirstOfferStopsBeforeTheGrade)
{
    AmplifiedReading reading(FileText(), 1);
    ExpectSetUpTo(reading, sectionOnce, "first offer");
}

TEST(MemberFileFailure, ASectionRefusedAtTheSecondOfferStopsBeforeThePoints)
{
    AmplifiedReading reading(FileText(), 2);
    ExpectSetUpTo(reading, sectionTwice, "second offer");
    // The member still holds the section of the first offer, without the factors.
    EXPECT_EQ(reading.member.GetKeltrixSec().Component(0).NetGross(), 1.0);
    EXPECT_EQ(Utf8(reading.member.GetKeltrixSec().Component(0).Description(true)), "UB 457x191x67");
}

TEST(MemberFileFailure, TheFactorsGoToTheSectionThatTheMemberGivesBack)
{
    class Renaming : public AmplifiedMember {
    public:
        CSection GetKeltrixSec() const override
        {
            CSection section = AmplifiedMember::GetKeltrixSec();
            section.SetName(L"by the member");
            return section;
        }
        bool SetKeltrixSec(const CSection& section) override
        {
            names.push_back(Utf8(section.GetName()));
            betas.push_back(section.Component(0).Beta());
            return AmplifiedMember::SetKeltrixSec(section);
        }
        std::vector<std::string> names;
        std::vector<double> betas;
    };
    Reading<Renaming> reading{FileText()};
    EXPECT_TRUE(reading.done);
    EXPECT_EQ(reading.member.names, (std::vector<std::string>{"", "by the member"}));
    EXPECT_EQ(reading.member.betas, (std::vector<double>{0.7, 0.65}));
}

TEST(MemberFileFailure, AnEmptyLineAmongThePointsIsRefused)
{
    FileText file;
    file.InsertBefore("MEMBERPOINT,2", "");
    AmplifiedReading reading(file);
    ExpectSetUpTo(reading, sectionTwice, "empty line");
    FileText unknown;
    unknown.InsertBefore("SUBSPAN", "MEMBERPOINTS,3,9,Free,0");
    AmplifiedReading other(unknown);
    ExpectSetUpTo(other, sectionTwice, "unknown keyword");
}

TEST(MemberFileHeadings, BeforeTheSectionAtMostOneCaptionIsSkipped)
{
    FileText none;
    none.Remove("HEADINGS,Keltrix");
    EXPECT_TRUE(AmplifiedReading(none).done);
    FileText two;
    two.InsertBefore("SECTION", "HEADINGS,again");
    AmplifiedReading reading(two);
    ExpectSetUpTo(reading, title, "two captions");
}

TEST(MemberFileHeadings, BeforeTheEffectiveLengthsAtMostOneCaptionIsSkipped)
{
    FileText none;
    none.Remove("HEADINGS,YES/NO");
    EXPECT_TRUE(AmplifiedReading(none).done);
    FileText two;
    two.InsertBefore("EFFECTIVE_LENGTH_OVERRIDES", "HEADINGS,again");
    AmplifiedReading reading(two);
    ExpectSetUpTo(reading, gradeRead, "two captions");
}

TEST(MemberFileHeadings, ElsewhereAmongTheSingleLinesACaptionIsRefused)
{
    const std::pair<const char*, Step> rows[] = {{"TITLE", nothing},
                                                 {"GRADE", sectionOnce},
                                                 {"NET_TO_GROSS", gradeRead},
                                                 {"ALLOWABLE_PLASTIC/ELASTIC_RATIO", gradeRead}};
    for (const auto& [keyword, step] : rows) {
        FileText file;
        file.InsertBefore(keyword, "HEADINGS,extra");
        AmplifiedReading reading(file);
        ExpectSetUpTo(reading, step, keyword);
    }
}

TEST(MemberFileHeadings, AmongPointsAndSubSpansEveryCaptionIsSkipped)
{
    FileText file;
    for (const char* keyword : {"MEMBERPOINT,1", "MEMBERPOINT,2", "SUBSPAN", "END"}) {
        file.InsertBefore(keyword, "HEADINGS,one");
        file.InsertBefore(keyword, "headings");
        file.InsertBefore(keyword, "HEADINGS,three");
    }
    AmplifiedReading reading(file);
    EXPECT_TRUE(reading.done);
    EXPECT_EQ(reading.member.MemberPoints().size(), 2u);
    EXPECT_EQ(reading.member.SubSpans().size(), 1u);
}

TEST(MemberFileShearLag, WithoutItsLineTheCaptionInItsPlaceIsConsumed)
{
    FileText file;
    file.Remove("SHEAR_LAG_FACTOR");
    AmplifiedReading reading(file);
    EXPECT_TRUE(reading.done);
    EXPECT_EQ(reading.member.GetKeltrixSec().Component(0).Beta(), 0.7);
    EXPECT_EQ(reading.member.GetKeltrixSec().Component(0).NetGross(), 0.9);
    EXPECT_TRUE(reading.member.LengthOverride());
}

TEST(MemberFileShearLag, WhateverLineStandsInItsPlaceIsLost)
{
    FileText nonsense;
    nonsense.Line("SHEAR_LAG_FACTOR") = "nonsense,0.3";
    AmplifiedReading reading(nonsense);
    EXPECT_TRUE(reading.done);
    EXPECT_EQ(reading.member.GetKeltrixSec().Component(0).Beta(), 0.7);

    // With the caption gone as well the overrides' line is lost, and the reading fails at the next one.
    FileText lost;
    lost.Remove("SHEAR_LAG_FACTOR");
    lost.Remove("HEADINGS,YES/NO");
    AmplifiedReading refused(lost);
    ExpectSetUpTo(refused, gradeRead, "overrides lost");

    // Where another line of overrides follows, the first one is lost without a word.
    lost.InsertBefore("EQUIVALENT_UNIFORM_MOMENT_FACTOR", "EFFECTIVE_LENGTH_OVERRIDES,NO");
    AmplifiedReading second(lost);
    EXPECT_TRUE(second.done);
    EXPECT_FALSE(second.member.LengthOverride());
    EXPECT_EQ(second.member.Lyy(), 7.0);

    // The lost line may be a caption, and one more is skipped after it.
    FileText twoCaptions;
    twoCaptions.Line("SHEAR_LAG_FACTOR") = "HEADINGS,first";
    EXPECT_TRUE(AmplifiedReading(twoCaptions).done);
}

TEST(MemberFileFactors, EachMayBeMissing)
{
    const char* const keywords[] = {"EQUIVALENT_UNIFORM_MOMENT_FACTOR", "MOMENT_AMPLIFICATION_FACTOR_STRONG_AXIS",
                                    "MOMENT_AMPLIFICATION_FACTOR_WEAK_AXIS"};
    for (int missing = 0; missing < 8; ++missing) {
        FileText file;
        for (int i = 0; i < 3; ++i)
            if ((missing >> i & 1) != 0) file.Remove(keywords[i]);
        AmplifiedReading reading(file);
        EXPECT_TRUE(reading.done) << missing;
        EXPECT_EQ(reading.member.EquivalentUniformMomentFactor().has_value(), (missing & 1) == 0) << missing;
        EXPECT_EQ(reading.member.MomentAmplificationFactorStrongAxis().has_value(), (missing & 2) == 0) << missing;
        EXPECT_EQ(reading.member.MomentAmplificationFactorWeakAxis().has_value(), (missing & 4) == 0) << missing;
        EXPECT_EQ(reading.member.MemberPoints().size(), 2u) << missing;
    }
}

TEST(MemberFileFactors, TheLineLeftOverBehindThemIsNeverLookedAtAgain)
{
    // Without the weak-axis factor one line is taken and lost: the caption, or else the first point.
    FileText point;
    point.Remove("MOMENT_AMPLIFICATION_FACTOR_WEAK_AXIS");
    point.Remove("HEADINGS,Index,Position");
    AmplifiedReading lostPoint(point);
    EXPECT_TRUE(lostPoint.done);
    ASSERT_EQ(lostPoint.member.MemberPoints().size(), 1u);
    EXPECT_EQ(lostPoint.member.MemberPoints()[0].Get1Index(), 2);

    FileText nonsense;
    nonsense.Remove("MOMENT_AMPLIFICATION_FACTOR_WEAK_AXIS");
    nonsense.Line("HEADINGS,Index,Position") = "nonsense";
    AmplifiedReading lostNonsense(nonsense);
    EXPECT_TRUE(lostNonsense.done);
    EXPECT_EQ(lostNonsense.member.MemberPoints().size(), 2u);

    // Behind the weak-axis factor no line is taken, so nothing is lost.
    FileText behindWeak;
    behindWeak.Remove("HEADINGS,Index,Position");
    AmplifiedReading complete(behindWeak);
    EXPECT_TRUE(complete.done);
    EXPECT_EQ(complete.member.MemberPoints().size(), 2u);
    FileText nonsenseBehindWeak;
    nonsenseBehindWeak.Line("HEADINGS,Index,Position") = "nonsense";
    EXPECT_FALSE(AmplifiedReading(nonsenseBehindWeak).done);
}

TEST(MemberFileFactors, EvenAnEndLeftOverBehindThemIsLost)
{
    FileText file;
    file.WithoutAmplification();
    file.Remove("EQUIVALENT_UNIFORM_MOMENT_FACTOR");
    file.CutBefore("HEADINGS,Index,Position");
    file.lines.emplace_back("END");
    AmplifiedReading once(file);
    EXPECT_FALSE(once.done);
    file.lines.emplace_back("END");
    AmplifiedReading twice(file);
    EXPECT_TRUE(twice.done);
    EXPECT_TRUE(twice.member.MemberPoints().empty());
}

TEST(MemberFileFactors, OutOfTheirOrderOneIsLostWithoutAWord)
{
    FileText file;
    std::swap(file.Line("EQUIVALENT_UNIFORM_MOMENT_FACTOR"), file.Line("MOMENT_AMPLIFICATION_FACTOR_STRONG_AXIS"));
    file.Remove("MOMENT_AMPLIFICATION_FACTOR_WEAK_AXIS");
    AmplifiedReading reading(file);
    EXPECT_TRUE(reading.done);
    EXPECT_EQ(reading.member.MomentAmplificationFactorStrongAxis(), 1.1);
    EXPECT_FALSE(reading.member.EquivalentUniformMomentFactor().has_value());
    EXPECT_EQ(reading.member.MemberPoints().size(), 2u);
}

TEST(MemberFileFactors, AMemberThatRefusesAmplificationLetsTheExceptionOut)
{
    struct Row {
        const char* removed;
        const char* message;
    };
    const Row rows[] = {
        {"MOMENT_AMPLIFICATION_FACTOR_WEAK_AXIS",
         "Moment amplification factor (strong axis) not supported in this design code"},
        {"MOMENT_AMPLIFICATION_FACTOR_STRONG_AXIS",
         "Moment amplification factor (weak axis) not supported in this design code"},
    };
    for (const Row& row : rows) {
        FileText file;
        file.Remove(row.removed);
        ConcreteMember member;
        member.SetMemberPointVec({Point(1, 0.0), Point(2, 99.0)});
        CSteelGrade grade;
        try {
            member.CSVInputData(Wide(file.Text()), grade);
            ADD_FAILURE() << "no exception: " << row.message;
        } catch (const unsupported_design_code_error& error) {
            EXPECT_STREQ(error.what(), row.message);
        }
        // What was set before stays; the section with its factors is not offered any more.
        EXPECT_EQ(Utf8(member.GetTitle()), "Beam B1");
        EXPECT_EQ(Utf8(grade.Name()), "S275");
        EXPECT_TRUE(member.LengthOverride());
        EXPECT_EQ(member.Llt(), 3.0);
        EXPECT_EQ(member.EquivalentUniformMomentFactor(), 0.95);
        EXPECT_EQ(member.sectionsOffered, 1);
        EXPECT_EQ(member.GetKeltrixSec().Component(0).NetGross(), 1.0);
        EXPECT_EQ(member.Length(), 99.0);
    }
}

TEST(MemberFileFactors, AMemberThatRefusesAmplificationReadsAFileWithoutIt)
{
    PlainReading reading(FileText().WithoutAmplification());
    EXPECT_TRUE(reading.done);
    EXPECT_EQ(reading.member.EquivalentUniformMomentFactor(), 0.95);
    EXPECT_EQ(reading.member.MemberPoints().size(), 2u);
}

TEST(MemberFileFactors, AFactorThatTheFileDoesNotNameStaysAsItWas)
{
    FileText file;
    file.Remove("EQUIVALENT_UNIFORM_MOMENT_FACTOR");
    file.WithoutAmplification();
    ConcreteMember member;
    member.SetEquivalentUniformMomentFactor(0.4);
    CSteelGrade grade;
    EXPECT_TRUE(member.CSVInputData(Wide(file.Text()), grade));
    EXPECT_EQ(member.EquivalentUniformMomentFactor(), 0.4);
}

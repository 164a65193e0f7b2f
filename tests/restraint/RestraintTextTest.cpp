// The texts of restraints, literally: the report's list, the short code, and what is read back from text.

#include "restraint/RestraintOracle.h"

#include <limits>

#include <gtest/gtest.h>

using namespace Keltrix;
using namespace Keltrix::Data;
using RestraintOracle::Bits;
using RestraintOracle::Hex;
using RestraintOracle::Identical;
using RestraintOracle::Make;
using RestraintOracle::Moment;
using RestraintOracle::Utf8;
using RestraintOracle::Wide;

namespace {

std::string Report(const CRestraint& restraint, bool consistent = false)
{
    return Utf8(restraint.GetString(CDesFormat(), consistent));
}

std::string Code(unsigned int bits) { return Utf8(Make(bits).Description()); }

/// The code of bits whose load height keeps them from being a preset.
std::string CodeWithHeight(unsigned int bits)
{
    return Utf8(CRestraint(static_cast<int>(bits), SHR_CENTRE, 0.5).Description());
}

/// Reads a text into a restraint that has something in every field.
struct Reading {
    explicit Reading(std::string_view text)
    {
        restraint = CRestraint(static_cast<int>(0x98008010U), BOT_FLANGE, 0.3);
        restraint.SetForcesAndMoments({1.0, 2.0, 3.0}, {4.0, -5.0, 6.0}, false);
        before = restraint;
        accepted = restraint.SetDescription(Wide(text));
    }
    CRestraint before;
    CRestraint restraint;
    bool accepted = false;
};

void ExpectRead(std::string_view text, unsigned int bits)
{
    const Reading reading(text);
    EXPECT_TRUE(reading.accepted) << '"' << text << '"';
    EXPECT_EQ(Hex(Bits(reading.restraint)), Hex(bits)) << '"' << text << '"';
    EXPECT_TRUE(Identical(reading.restraint, Make(bits)))
        << '"' << text << "\": load reference, height, forces and other bits are back to default";
}

void ExpectRefused(std::string_view text)
{
    const Reading reading(text);
    EXPECT_FALSE(reading.accepted) << '"' << text << '"';
    EXPECT_TRUE(Identical(reading.restraint, reading.before)) << '"' << text << "\": nothing changed";
}

bool ReadWord(CRestraint& restraint, std::wstring_view word)
{
    return CRestraintTestAccess::SetDescriptionFragment(restraint, word);
}

} // namespace

// The report's list

TEST(RestraintReport, FreeRestraintListsNone)
{
    EXPECT_EQ(Report(CRestraint()), "Restraints set:\n\tnone\n");
    EXPECT_EQ(Report(Make(0x8000)), "Restraints set:\n\tnone\n") << "bits that are no restraints";
    EXPECT_EQ(Report(Make(0xfcc08000), true), "Restraints set:\n\tnone\n");
}

TEST(RestraintReport, FreeRestraintWithNegativeHeightHasTheStabilisingLine)
{
    const CDesFormat fmt;
    EXPECT_EQ(Report(CRestraint(0, SHR_CENTRE, -0.1)),
              "Restraints set:\n\tnone\nload is stabilizing: (by " + Utf8(fmt.LengthSmall(0.1)) + "m)\n");
    EXPECT_EQ(Utf8(fmt.LengthSmall(0.1)), "0.1") << "so that the whole line reads (by 0.1m)";
}

TEST(RestraintReport, LoadHeightIsWrittenInTheUsersSmallUnitFollowedByM)
{
    CUnit unit;
    unit.SetLengthSmall(L"mm", 1000.0);
    const CDesFormat fmt(unit);
    // The letter m after the number stays whatever the unit is: required as it stands.
    EXPECT_EQ(Utf8(CRestraint(0x200000, TOP_FLANGE, 0.2).GetString(fmt)),
              "Restraints set:\n\tmajor axis shear <i>(section Y direction)</i>\nload is destabilizing: (by " +
                  Utf8(fmt.LengthSmall(0.2)) + "m)\n");
    EXPECT_EQ(Utf8(CRestraint(0x3f01ff, TOP_FLANGE, -1.25).GetString(fmt)),
              "Restraints set:\n\tfully encastre\nload is stabilizing: (by " + Utf8(fmt.LengthSmall(1.25)) + "m)\n");
}

TEST(RestraintReport, HeightThatIsNoNumberHasNoLine)
{
    EXPECT_EQ(Report(CRestraint(0, SHR_CENTRE, std::numeric_limits<double>::quiet_NaN())), "Restraints set:\n\tnone\n");
}

TEST(RestraintReport, PinnedListsItsClosure)
{
    // 0x300043 closes to 0x3007c3.
    const std::string expected = "Restraints set:\n"
                                 "\tminor axis shear <i>(section X direction)</i>\n"
                                 "\tmajor axis shear <i>(section Y direction)</i>\n"
                                 "\tflange 1 lateral\n"
                                 "\tflange 2 lateral\n"
                                 "\tcompression flange lateral\n"
                                 "\ttension flange lateral\n"
                                 "\ttorsion\n";
    EXPECT_EQ(Report(Make(0x300043)), expected);
    EXPECT_EQ(Report(Make(0x300043), true), expected) << "the list is the closure's either way";
}

TEST(RestraintReport, FullRotationalPresetListsItsClosure)
{
    // Compression and tension flange warping are in the closure but have no line: required.
    EXPECT_EQ(Report(Make(0x31004d)), "Restraints set:\n"
                                      "\tmajor axis rotation full <i>(section XX axis)</i>\n"
                                      "\tminor axis shear <i>(section X direction)</i>\n"
                                      "\tmajor axis shear <i>(section Y direction)</i>\n"
                                      "\tflange 1 lateral\n"
                                      "\tflange 2 lateral\n"
                                      "\tcompression flange lateral\n"
                                      "\ttension flange lateral\n"
                                      "\tflange 1 warping\n"
                                      "\tflange 2 warping\n"
                                      "\ttorsion\n");
}

TEST(RestraintReport, PartialRotationalPresetListsItsClosure)
{
    EXPECT_EQ(Report(Make(0x320071)), "Restraints set:\n"
                                      "\tmajor axis rotation part <i>(section XX axis)</i>\n"
                                      "\tminor axis shear <i>(section X direction)</i>\n"
                                      "\tmajor axis shear <i>(section Y direction)</i>\n"
                                      "\tflange 1 lateral\n"
                                      "\tflange 2 lateral\n"
                                      "\tcompression flange lateral\n"
                                      "\ttension flange lateral\n"
                                      "\tflange 1 warping part\n"
                                      "\tflange 2 warping part\n"
                                      "\ttorsion\n");
}

TEST(RestraintReport, EachBitHasItsLine)
{
    struct Row {
        unsigned int bits;
        const char* line;
    };
    const std::vector<Row> rows{
        {0x10000, "\tmajor axis rotation full <i>(section XX axis)</i>\n"},
        {0x20000, "\tmajor axis rotation part <i>(section XX axis)</i>\n"},
        {0x40000, "\tminor axis rotation full <i>(section YY axis)</i>\n"},
        {0x80000, "\tminor axis rotation part <i>(section YY axis)</i>\n"},
        {0x100000, "\tminor axis shear <i>(section X direction)</i>\n"},
        {0x200000, "\tmajor axis shear <i>(section Y direction)</i>\n"},
        {0x1, "\tflange 1 lateral\n"},
        {0x2, "\tflange 2 lateral\n"},
        {0x200, "\tcompression flange lateral\n"},
        {0x400, "\ttension flange lateral\n"},
        {0x4, "\tflange 1 warping\n"},
        {0x8, "\tflange 2 warping\n"},
        {0x10, "\tflange 1 warping part\n"},
        {0x20, "\tflange 2 warping part\n"},
        {0x40, "\ttorsion\n"},
        {0x80, "\ttorsion part\n"},
        {0x100, "\ttorsion by friction/bearing\n"},
        {0x180, "\ttorsion part\n"},
        {0x1000000, "\tpart A connected\n"},
        {0x2000000, "\tpart B connected\n"},
        {0x3000000, "\tparts A and B connected\n"},
        {0x800, ""},
        {0x1000, ""},
        {0x2000, ""},
        {0x4000, ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Report(Make(row.bits)), std::string("Restraints set:\n") + row.line) << Hex(row.bits);
}

TEST(RestraintReport, CompressionFlangeFollowsFromTheMoment)
{
    EXPECT_EQ(Report(Make(0x1, Moment::Negative)),
              "Restraints set:\n\tflange 1 lateral\n\tcompression flange lateral\n");
    EXPECT_EQ(Report(Make(0x1, Moment::Positive)), "Restraints set:\n\tflange 1 lateral\n\ttension flange lateral\n");
    EXPECT_EQ(Report(Make(0x2000, Moment::Positive)), "Restraints set:\n\tflange 2 warping part\n");
}

TEST(RestraintReport, EncastreIsFoundInTheClosure)
{
    EXPECT_EQ(Report(Make(0x25000f)), "Restraints set:\n\tfully encastre\n");
    EXPECT_EQ(Report(Make(0x3f01ff | 0x1000000)), "Restraints set:\n\tfully encastre\n")
        << "part connections are not listed then";
}

// The short code

TEST(RestraintCode, PresetNames)
{
    EXPECT_EQ(Code(0), "Free");
    EXPECT_EQ(Code(0x300043), "Pinned");
    EXPECT_EQ(Code(0x31004d), "Full rotational");
    EXPECT_EQ(Code(0x320071), "Partial rotational");
    EXPECT_EQ(Code(0x1), "Top flange lateral");
    EXPECT_EQ(Code(0x2), "Bottom flange lateral");
    EXPECT_EQ(Code(0x100643), "Top and Bottom flange lateral");
    EXPECT_EQ(Code(0x3f01ff), "Fixed");
}

TEST(RestraintCode, NamesAreFoundByClosure)
{
    EXPECT_EQ(Code(0x3), "Top and Bottom flange lateral");
    EXPECT_EQ(Code(0x600), "Top and Bottom flange lateral");
    EXPECT_EQ(Code(0x100040), "Top and Bottom flange lateral");
    EXPECT_EQ(Code(0x200003), "Pinned");
    EXPECT_EQ(Code(0x25000f), "Fixed");
    EXPECT_EQ(Code(0x8000), "Free") << "bits that are no restraints";
    EXPECT_EQ(Code(0x8001), "F1L") << "such bits keep a set from being a preset";
}

TEST(RestraintCode, EncastreIsFixedWhateverTheHeightAndForces)
{
    EXPECT_EQ(CodeWithHeight(0x3f01ff), "Fixed");
    EXPECT_EQ(Utf8(Make(0x3f01ff, Moment::Positive).Description()), "Fixed");
}

TEST(RestraintCode, HeightReferenceAndForcesPreventPresetNames)
{
    EXPECT_EQ(CodeWithHeight(0x1), "F1L");
    EXPECT_EQ(Utf8(CRestraint(0x1, TOP_FLANGE, 0.0).Description()), "F1L");
    EXPECT_EQ(Utf8(Make(0x1, Moment::Zero).Description()), "F1L");
    EXPECT_EQ(CodeWithHeight(0), "Free");
    EXPECT_EQ(Utf8(CRestraint(0x1, SHR_CENTRE, 0.99e-10).Description()), "Top flange lateral") << "no height at all";
    EXPECT_EQ(Utf8(CRestraint(0x1, SHR_CENTRE, -0.99e-10).Description()), "Top flange lateral");
    EXPECT_EQ(Utf8(CRestraint(0x1, SHR_CENTRE, 1e-10).Description()), "F1L");
    // 0x300043: both flanges lateral and no compression or tension bit, so 1 xor 1 xor 0 is 0.
    EXPECT_EQ(CodeWithHeight(0x300043), "F12L TR MAJV MINV");
    EXPECT_EQ(CodeWithHeight(0x31004d), "F1LW F2W TR MAJRV MINV");
    EXPECT_EQ(CodeWithHeight(0x320071), "F1LP F2P TR MAJPV MINV");
    EXPECT_EQ(CodeWithHeight(0x100643), "F12L TR MINV") << "compression and tension are not written";
}

TEST(RestraintCode, GroupsOfLetters)
{
    EXPECT_EQ(Code(0x9), "F1L F2W");
    EXPECT_EQ(Code(0x50000), "MAJR MINR");
    EXPECT_EQ(Code(0x4), "F1W");
    EXPECT_EQ(Code(0x10), "F1P");
    EXPECT_EQ(Code(0x14), "F1W") << "full warping hides part warping";
    EXPECT_EQ(Code(0x5), "F1LW");
    EXPECT_EQ(Code(0x11), "F1LP");
    EXPECT_EQ(Code(0xc), "F12W");
    EXPECT_EQ(Code(0x30), "F12P");
    EXPECT_EQ(Code(0x200), "FCL");
    EXPECT_EQ(Code(0x400), "FTL");
    EXPECT_EQ(Code(0x800), "FCW");
    EXPECT_EQ(Code(0x1000), "FTW");
    EXPECT_EQ(Code(0x2000), "FCP");
    EXPECT_EQ(Code(0x4000), "FTP");
    EXPECT_EQ(Code(0x1201), "F1L FCL FTW") << "groups in the order 1, 2, C, T";
    EXPECT_EQ(Code(0x40), "TR");
    EXPECT_EQ(Code(0x80), "TP");
    EXPECT_EQ(Code(0x100), "TF");
    EXPECT_EQ(Code(0x1c0), "TR");
    EXPECT_EQ(Code(0x10000), "MAJR");
    EXPECT_EQ(Code(0x20000), "MAJP");
    EXPECT_EQ(Code(0x200000), "MAJV");
    EXPECT_EQ(Code(0x230000), "MAJRV");
    EXPECT_EQ(Code(0x220000), "MAJPV");
    EXPECT_EQ(Code(0x40000), "MINR");
    EXPECT_EQ(Code(0x80000), "MINP");
    EXPECT_EQ(Code(0x100000), "MINV");
    EXPECT_EQ(Code(0x1c0000), "MINRV");
    EXPECT_EQ(Code(0x180000), "MINPV");
    EXPECT_EQ(Code(0x1000000), "CA");
    EXPECT_EQ(Code(0x2000000), "CB");
    EXPECT_EQ(Code(0x3000000), "CAB");
    EXPECT_EQ(Code(0x3030080), "TP MAJR CAB");
}

TEST(RestraintCode, TheTestForWritingFlangesTogetherIsAnExclusiveOr)
{
    // Required as it stands: the marks of flange 1, flange 2 and compression flange, exclusive-or, against the tension
    // flange. One flange with the tension flange, or with the compression flange, passes for "all alike".
    EXPECT_EQ(Code(0x401), "F12L") << "1 ^ 0 ^ 0 = 1 = tension: flange 1's marks stand for both";
    EXPECT_EQ(Code(0x201), "F12L") << "1 ^ 0 ^ 1 = 0 = tension";
    EXPECT_EQ(Code(0x402), "") << "0 ^ 1 ^ 0 = 1 = tension: flange 1 has no mark, so no flange is written";
    EXPECT_EQ(Code(0x202), "") << "0 ^ 1 ^ 1 = 0 = tension";
    EXPECT_EQ(Code(0x1800), "") << "compression and tension flange alike, flange 1 bare";
    EXPECT_EQ(CodeWithHeight(0x600), "");
    EXPECT_EQ(Code(0x402 | 0x40000), "MINR") << "the other groups are still written";
    // The lateral marks pass, the warping marks (1 ^ 0 ^ 0 against 0) do not: groups are written one by one.
    EXPECT_EQ(Code(0x405), "F1LW FTL");
    // Full warping of flange 1 with part warping of flange 2: 1 ^ 0 against 0 fails.
    EXPECT_EQ(Code(0x24), "F1W F2P");
}

TEST(RestraintCode, OfAMomentsClosureMixesUpTheFlanges)
{
    // Closing 0x1 with a moment adds the tension (0x401) or compression (0x201) flange; both read as both flanges, and
    // 0x2 becomes an empty code. It follows from the exclusive-or above.
    EXPECT_EQ(Utf8(Make(0x1, Moment::Positive).Description(true)), "F12L");
    EXPECT_EQ(Utf8(Make(0x1, Moment::Negative).Description(true)), "F12L");
    EXPECT_EQ(Utf8(Make(0x2, Moment::Positive).Description(true)), "");
    EXPECT_EQ(Utf8(Make(0x2, Moment::Negative).Description(true)), "");
}

TEST(RestraintCode, OfTheClosure)
{
    // 0x300043 closes to 0x3007c3; with a height it has no name.
    EXPECT_EQ(Utf8(CRestraint(0x300043, SHR_CENTRE, 0.5).Description(true)), "F12L TR MAJV MINV");
    EXPECT_EQ(Utf8(CRestraint(0x41, SHR_CENTRE, 0.5).Description(true)), "F12L TR MINV");
    EXPECT_EQ(Utf8(CRestraint(0x41, SHR_CENTRE, 0.5).Description(false)), "F1L TR");
    EXPECT_EQ(Utf8(Make(0x41).Description(false)), "Top and Bottom flange lateral");
    const CRestraint restraint(0x41, SHR_CENTRE, 0.5);
    (void)restraint.Description(true);
    EXPECT_EQ(restraint.RestFlag(), 0x41) << "writing changes nothing";
}

TEST(RestraintCode, ForUsersHasTheSameWordsWithoutUnderscores)
{
    for (const unsigned int bits : RestraintOracle::SmallSets())
        for (const bool consistent : {false, true}) {
            const std::string user = Utf8(Make(bits).UserDescription(consistent));
            EXPECT_EQ(user.find('_'), std::string::npos) << Hex(bits);
            EXPECT_EQ(user, Utf8(Make(bits).Description(consistent))) << Hex(bits);
        }
}

// Reading

TEST(RestraintReading, CodesInAnyCase)
{
    ExpectRead("f1l f2l tr", 0x43);
    ExpectRead("F1L F2W TR MAJRV", 0x210049);
    ExpectRead("  F1L\t", 0x1);
    ExpectRead("\r\nTr\n", 0x40);
}

TEST(RestraintReading, Names)
{
    for (const char* text : {"free", "NONE", "None", " Free "})
        ExpectRead(text, 0);
    for (const char* text : {"Pinned", "PIN", "pin"})
        ExpectRead(text, 0x300043);
    for (const char* text : {"Fixed", "fix", "ENC", "Encastre"})
        ExpectRead(text, 0x3f01ff);
    ExpectRead("Top flange lateral", 0x1);
    ExpectRead("bottom FLANGE lateral", 0x2);
    ExpectRead("Top and Bottom flange lateral", 0x100643);
    ExpectRead("Partial rotational", 0x320071);
    ExpectRead("Partial rotational restraint", 0x320071);
    ExpectRead("Full rotational", 0x31004d);
    ExpectRead(" full rotational restraint ", 0x31004d);
}

TEST(RestraintReading, ClearsReferenceHeightAndForces)
{
    CRestraint restraint(0, TOP_FLANGE, 0.3);
    restraint.SetForcesAndMoments({1.0, 1.0, 1.0}, {1.0, 1.0, 1.0}, false);
    EXPECT_TRUE(restraint.SetDescription(L"Pinned"));
    EXPECT_EQ(restraint.LoadHeight(), 0.0);
    EXPECT_TRUE(Identical(restraint, Make(0x300043)));
}

TEST(RestraintReading, UnderscoresAreRefused)
{
    for (const char* text : {"Top_flange_lateral", "Bottom_flange_lateral", "Top_and_bottom_flange_lateral",
                             "Partial_rotational", "Full_rotational", "_", "TR_"})
        ExpectRefused(text);
}

TEST(RestraintReading, SpacedNamesAreTranslatedOnlyAsTheWholeText)
{
    // G and D are no letters of the codes, so the refusal comes at once; "Partial rotational" has only allowed letters
    // and fails word by word.
    for (const char* text :
         {"Top flange lateral TR", "TR Top flange lateral", "Top  flange lateral", "Top flange lateral,",
          "*Top flange lateral", "Top flange", "Full rotational TR", "Partial rotational TR", "Partial  rotational",
          "Full rotational restraints", "Top and Bottom flange lateral restraint"})
        ExpectRefused(text);
}

TEST(RestraintReading, NamesWithLettersOfNoCodeAreUnderstoodOnlyAsTheWholeText)
{
    ExpectRefused("Pinned TR"); // D
    ExpectRefused("Fixed, TR"); // X and D
    ExpectRefused("Fix TR");    // X
    ExpectRefused("Pinned,");
    ExpectRefused("*Fixed*");
    ExpectRead("Pin TR", 0x300043);
    ExpectRead("Pin, CA", 0x1300043);
    ExpectRead("enc cb", 0x23f01ff);
    ExpectRead("Encastre MAJR", 0x3f01ff);
    ExpectRead("*Pin*", 0x300043);
}

TEST(RestraintReading, ANameReplacesTheWordsBeforeIt)
{
    ExpectRead("CA TR PIN", 0x300043);
    ExpectRead("PIN CA", 0x1300043);
    ExpectRead("F1L FREE", 0);
    ExpectRead("F1L NONE TR", 0x40);
    ExpectRead("ENC PIN", 0x300043);
}

TEST(RestraintReading, CommasAsterisksAndBlanks)
{
    ExpectRead("F1L,F2L,TR", 0x43);
    ExpectRead("F1L, F2L ,  ,,TR,", 0x43);
    ExpectRead(",TR", 0x40);
    ExpectRead("F1L*", 0x1);
    ExpectRead("F*1*L T*R", 0x41);
    ExpectRead("F1L     TR", 0x41);
    ExpectRead("", 0);
    ExpectRead("   ", 0);
    ExpectRead("*", 0);
    ExpectRead(",", 0);
    ExpectRead("* , *", 0);
    ExpectRefused("F1L\tTR");
    ExpectRefused("F1L\nTR");
}

TEST(RestraintReading, CharactersOfNoCodeAreRefused)
{
    constexpr std::string_view allowed = "12ABCEFHIJLMNOPRSTVW*, ";
    for (char c = '!'; c < 0x7f; ++c) {
        const char upper = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
        if (allowed.find(upper) != std::string_view::npos) continue;
        ExpectRefused(std::string(1, c));
        ExpectRefused("F1L " + std::string(1, c) + " TR");
    }
    ExpectRefused("x");
    ExpectRefused("67");
    ExpectRefused("-1");
    ExpectRefused("F1L \xc3\xa9");
}

TEST(RestraintReading, FlangeWords)
{
    ExpectRead("F1L", 0x1);
    ExpectRead("F1W", 0x4);
    ExpectRead("F1P", 0x10);
    ExpectRead("F2L", 0x2);
    ExpectRead("F2W", 0x8);
    ExpectRead("F2P", 0x20);
    ExpectRead("FCL", 0x200);
    ExpectRead("FCW", 0x800);
    ExpectRead("FCP", 0x2000);
    ExpectRead("FTL", 0x400);
    ExpectRead("FTW", 0x1000);
    ExpectRead("FTP", 0x4000);
    ExpectRead("F1LWP", 0x15); // letters do not exclude one another
    ExpectRead("F12L", 0x3);
    ExpectRead("F12CTLWP", 0x7e3f);
    // Letters are looked for in the whole word and so hold for every flange that it names: required.
    ExpectRead("F1L2W", 0xf);
    ExpectRead("FL1", 0x1);
    ExpectRead("FTCL", 0x600);
    ExpectRead("F", 0); // no flange is named, so no letter is missing
    ExpectRead("FLW", 0);
    ExpectRead("FREE", 0);
    for (const char* text : {"F1", "F2", "F12", "FC", "FT", "F1C", "F1 L", "TR F1"})
        ExpectRefused(text);
}

TEST(RestraintReading, TorsionWords)
{
    ExpectRead("TR", 0x40);
    ExpectRead("TP", 0x80);
    ExpectRead("TF", 0x100);
    ExpectRead("TRP", 0x40); // the second letter decides
    ExpectRead("TFR", 0x100);
    ExpectRead("TR TP TF", 0x1c0);
    for (const char* text : {"T", "TO", "T1", "TTR", "TOP"})
        ExpectRefused(text);
}

TEST(RestraintReading, AxisWords)
{
    ExpectRead("MAJR", 0x10000);
    ExpectRead("MAJP", 0x20000);
    ExpectRead("MAJV", 0x200000);
    ExpectRead("MAJRV", 0x210000);
    ExpectRead("MAJPV", 0x220000);
    ExpectRead("MAJVR", 0x210000);
    ExpectRead("MAJRP", 0x10000); // full hides part
    ExpectRead("MAJER", 0x10000);
    ExpectRead("MINR", 0x40000);
    ExpectRead("MINP", 0x80000);
    ExpectRead("MINV", 0x100000);
    ExpectRead("MINRV", 0x140000);
    ExpectRead("MINPV", 0x180000);
    ExpectRead("MINRP", 0x40000);
    // A minor-axis word needs no letter, a major-axis word does: required.
    ExpectRead("MIN", 0);
    ExpectRead("MINE", 0);
    for (const char* text : {"MAJ", "MAJE", "M", "MA", "MI", "MR", "MV", "MJA", "MNI"})
        ExpectRefused(text);
}

TEST(RestraintReading, PartConnectionWords)
{
    ExpectRead("CA", 0x1000000);
    ExpectRead("CB", 0x2000000);
    ExpectRead("CAB", 0x3000000);
    ExpectRead("CBA", 0x3000000);
    ExpectRead("C", 0);
    ExpectRead("COMP", 0);
    ExpectRead("CTRA", 0x1000000);
}

TEST(RestraintReading, OtherWordsAreRefused)
{
    for (const char* text : {"1", "2", "12", "A", "B", "E",  "H",    "I",  "J",    "L",    "L1",      "N",  "O",
                             "P", "R", "S",  "V", "W", "NO", "ENCA", "PI", "TR A", "A TR", "LATERAL", "RIP"})
        ExpectRefused(text);
}

TEST(RestraintReading, OneBadWordRestoresEverything)
{
    ExpectRefused("F1L F2L TR MAJRV MAJ");
    ExpectRefused("PIN F1");
    ExpectRefused("MAJ F1L");
}

TEST(RestraintReading, OfF1FailsAndOfMinSucceeds)
{
    ExpectRefused("F1");
    ExpectRead("MIN", 0);
}

// One word at a time

TEST(RestraintWord, NamesReplaceRestraintsKeepOtherBitsAndForgiveCase)
{
    struct Row {
        const wchar_t* word;
        unsigned int bits;
    };
    const std::vector<Row> rows{{L"Free", 0},
                                {L"none", 0},
                                {L"Top_flange_lateral", 0x1},
                                {L"BOTTOM_FLANGE_LATERAL", 0x2},
                                {L"Top_And_Bottom_flange_lateral", 0x100643},
                                {L"Pinned", 0x300043},
                                {L"pin", 0x300043},
                                {L"Partial_rotational", 0x320071},
                                {L"full_rotational", 0x31004d},
                                {L"Fixed", 0x3f01ff},
                                {L"fix", 0x3f01ff},
                                {L"Encastre", 0x3f01ff},
                                {L"enc", 0x3f01ff}};
    for (const Row& row : rows) {
        CRestraint restraint = Make(0x1008001);
        EXPECT_TRUE(ReadWord(restraint, row.word)) << Utf8(row.word);
        EXPECT_EQ(Hex(Bits(restraint)), Hex(0x8000 | row.bits)) << Utf8(row.word);
    }
}

TEST(RestraintWord, CodesAddBitsInUpperCaseOnly)
{
    CRestraint restraint = Make(0x8010);
    EXPECT_TRUE(ReadWord(restraint, L"F1L2W"));
    EXPECT_EQ(Hex(Bits(restraint)), Hex(0x801f));
    EXPECT_TRUE(ReadWord(restraint, L""));
    EXPECT_EQ(Hex(Bits(restraint)), Hex(0x801f));
    for (const wchar_t* word : {L"f1l", L"tr", L"majr", L"minr", L"ca", L"Tr", L"F1l", L"Majr"})
        EXPECT_FALSE(ReadWord(restraint, word)) << Utf8(word);
    for (const wchar_t* word : {L"TR", L"MAJR", L"MINR"}) // what follows a word is not read
        EXPECT_FALSE(ReadWord(restraint, std::wstring_view(word).substr(0, 1))) << Utf8(word);
    EXPECT_EQ(Hex(Bits(restraint)), Hex(0x801f)) << "none of them set a bit";
}

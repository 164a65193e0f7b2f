// What tables say, and every message about what is wrong with them.

#include <algorithm>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "import/ImportSupport.h"

namespace Keltrix::ImportTest {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

const std::string HEAD = "member,case,station [m],N [kN],Vy [kN],Vz [kN],T [kNm],My [kNm],Mz [kNm]\n";
const std::string MEMBERS = "member,section,grade,length [m],start,end\nB1,UB 457x191x67,S275,6,Pinned,Pinned\n";
// 20 kN/m on 6 m: 60 kN at the ends, 90 kNm in the middle.
const std::string UNIFORM = "B1,LC1,0,0,0,60,0,0,0\n"
                            "B1,LC1,3,0,0,0,0,90,0\n"
                            "B1,LC1,6,0,0,-60,0,0,0\n";

std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
}

std::string FaultOf(const std::string& forces, const std::string& members = MEMBERS,
                    const std::vector<std::string>& map = {"sagging"})
{
    const Import import = Imported(forces, members, map);
    EXPECT_TRUE(import.HasErrors()) << forces << members << import.text;
    EXPECT_EQ(import.text, "");
    return Messages(import);
}

TEST(Import, AMemberForEachCase)
{
    const std::string second = Replaced(Replaced(Replaced(UNIFORM, "LC1", "LC2"), "LC1", "LC2"), "LC1", "LC2");
    const Import import = Imported(HEAD + UNIFORM + second, MEMBERS, {"sagging"});
    ASSERT_FALSE(import.HasErrors()) << Messages(import);
    EXPECT_EQ(import.members, 1u);
    EXPECT_EQ(import.cases, 2u);
    const ReadBack read(import);
    ASSERT_EQ(read.Count(), 2u);
    EXPECT_EQ(read.Title(0), "B1: LC1");
    EXPECT_EQ(read.Title(1), "B1: LC2");
    EXPECT_EQ(import.text.substr(0, import.text.find("END\n") + 4),
              "TITLE,B1: LC1\nSECTION,UB 457x191x67,UNDEF\nGRADE,S275\nNET_TO_GROSS,1\n"
              "ALLOWABLE_PLASTIC/ELASTIC_RATIO,1.2\nSHEAR_LAG_FACTOR,0.7\n"
              "HEADINGS,YES/NO,Leff Maj,Leff Min,Leff LT\nEFFECTIVE_LENGTH_OVERRIDES,NO\n"
              "HEADINGS,Index,Position,Restraint,Load height\n"
              "MEMBERPOINT,1,0,Pinned,0\nMEMBERPOINT,2,3,Free,0\nMEMBERPOINT,3,6,Pinned,0\n"
              "HEADINGS,Index,Fx-L,Fy-L,Fz-L,Fx-R,Fy-R,Fz-R,Mx-L,My-L,Mz-L,Mx-R,My-R,Mz-R,Restraint,Load height\n"
              "SUBSPAN,1,0,0,-60000,0,0,0,0,0,0,0,-90000,0,Free,0\n"
              "SUBSPAN,2,0,0,0,0,0,60000,0,-90000,0,0,0,0,Free,0\nEND\n");
}

// Semicolons, quotes, units in a line of their own, columns in another order, captions of one's own, a byte order mark and line ends of
// another system: the same members.
TEST(Import, TheFormOfTheTableDoesNotMatter)
{
    const std::string plain = Imported(HEAD + UNIFORM, MEMBERS, {"sagging"}).text;
    ASSERT_NE(plain, "");
    const std::string units =
        "\xEF\xBB\xBF# from the frame\r\nCase;Bar;x;Nx;Vy;Vz;Mxx;My;Mz\r\n"
        ";;mm;kN;kN;kN;kN.m;kN·m;kNm\r\n"
        "LC1;\"B1\";0;0;0;+60;0;0;0\r\nLC1;B1;3000;0;0;0;0;90;0\r\n\r\nLC1;B1;6e3;0;0;-60;0;0;0\r\n";
    EXPECT_EQ(Imported(units, MEMBERS, {"sagging"}).text, plain);
    const std::string own = "member,case,station,axial force,Vy,V up,My\nB1,LC1,0,0,0,60,0\nB1,LC1,3,0,0,0,90\n"
                            "B1,LC1,6,0,0,-60,0\n";
    EXPECT_EQ(
        Imported(own, MEMBERS,
                 {"sagging", "N=axial force", "vz=V up", "T=none", "Mz=none", "length=m", "force=kN", "moment=kNm"})
            .text,
        plain);
    const std::string newton = Replaced(HEAD, "station [m]", "station (cm)") +
                               "B1,LC1,0,0,0,60,0,0,0\nB1,LC1,300,0,0,0,0,90,0\nB1,LC1,600,0,0,-60,0,0,0\n";
    EXPECT_EQ(Imported(newton, MEMBERS, {"SAGGING"}).text, plain);
}

// Points where something holds the member: moments there are those of the parabola. At 1 m 60 - 20 = 40 kN and 60*1 - 10 = 50 kNm; at 4.5 m
// -30 kN and 60*4.5 - 10*4.5^2 = 67.5 kNm.
TEST(Import, RestraintsBetweenStationsArePoints)
{
    const std::string members = "member,section,grade,length [m],start,end,restraints,load height [m]\n"
                                "B1,UB 457x191x67,S275,6,Pinned,F1L TR MAJV,"
                                "Top flange lateral@1 | Bottom flange lateral@3|Top flange lateral@4.5:6,0.25\n";
    const Import import = Imported(HEAD + UNIFORM, members, {"sagging"});
    ASSERT_FALSE(import.HasErrors()) << Messages(import);
    const ReadBack read(import);
    const auto& points = read.Member(0).MemberPoints();
    const auto& subSpans = read.Member(0).SubSpans();
    ASSERT_EQ(points.size(), 5u);
    EXPECT_EQ(points[1].GetPos(), 1.0);
    EXPECT_EQ(points[3].GetPos(), 4.5);
    EXPECT_TRUE(points[1].GetRestraint().IsRestrained(Steel::CRestraint::FLANGE1_LATERAL, true));
    EXPECT_TRUE(points[2].GetRestraint().IsRestrained(Steel::CRestraint::FLANGE2_LATERAL, true));
    EXPECT_EQ(points[3].GetRestraint().RestFlag(), 0);
    EXPECT_EQ(points[1].GetRestraint().LoadHeight(), 0.25);
    EXPECT_EQ(subSpans[0].GetRestraint().RestFlag(), 0);
    EXPECT_TRUE(subSpans[3].GetRestraint().IsRestrained(Steel::CRestraint::FLANGE1_LATERAL, true));
    EXPECT_NEAR(subSpans[0].GetForcesRight().z, -40e3, 1e-6);
    EXPECT_NEAR(subSpans[0].GetMomentsRight().y, -50e3, 1e-6);
    EXPECT_NEAR(subSpans[1].GetMomentsLeft().y, -50e3, 1e-6);
    EXPECT_NEAR(subSpans[3].GetForcesLeft().z, 30e3, 1e-6);
    EXPECT_NEAR(subSpans[3].GetMomentsLeft().y, -67.5e3, 1e-6);
}

TEST(Import, MembersByNameInTheOrderOfTheirTable)
{
    const std::string members = MEMBERS + "B0,UC 203x203x46,S355,4,Fixed,Free\n";
    const std::string forces = HEAD + "B0,LC1,0,-100,0,10,0,-40,0\nB0,LC1,4,-100,0,10,0,0,0\n" + UNIFORM;
    const Import import = Imported(forces, members, {"sagging"});
    ASSERT_FALSE(import.HasErrors()) << Messages(import);
    const ReadBack read(import);
    ASSERT_EQ(read.Count(), 2u);
    EXPECT_EQ(read.Title(0), "B1: LC1");
    EXPECT_EQ(read.Title(1), "B0: LC1");
    EXPECT_EQ(read.Member(1).SubSpans()[0].GetForcesLeft().x, -100e3);
    EXPECT_EQ(read.Member(1).SubSpans()[0].GetMomentsLeft().y, 40e3);
}

// Rows that came through unread would be loads that nobody checks.
TEST(Import, StationsThatAreNotThereOrTwice)
{
    const std::string second = "B1,LC2,0,0,0,60,0,0,0\nB1,LC2,6,0,0,60,0,360,0\n";
    EXPECT_THAT(
        FaultOf(HEAD + UNIFORM + second),
        HasSubstr("forces.csv:5: station [m]: got no row of member \"B1\" in case \"LC2\" at 3 m, expected the same "
                  "stations in all cases of a member"));
    EXPECT_THAT(FaultOf(HEAD + "B1,LC1,0,0,0,60,0,0,0\nB1,LC1,3,0,0,0,0,90,0\n"),
                HasSubstr("forces.csv:2: station: got the last station of member \"B1\" at 3 m, expected a row at its "
                          "length, 6 m"));
    EXPECT_THAT(FaultOf(HEAD + "B1,LC1,3,0,0,0,0,90,0\nB1,LC1,6,0,0,-60,0,0,0\n"),
                HasSubstr("the first station of member \"B1\" at 3 m, expected a row at 0, its start"));
    EXPECT_THAT(
        FaultOf(HEAD + UNIFORM + "B1,LC1,3,0,0,0,0,90,0\n"),
        HasSubstr("forces.csv:5: station [m]: got a row at 3 m below one at 6 m, expected stations of a member and "
                  "case that ascend"));
    EXPECT_THAT(
        FaultOf(HEAD + UNIFORM + "B1,LC1,6,0,0,-60,0,0,0\n"),
        HasSubstr("forces.csv:5: station [m]: got the same row at 6 m after line 4, expected one row, or two where "
                  "actions jump"));
    const std::string middle = "B1,LC1,3,0,0,0,0,90,0\n";
    EXPECT_THAT(FaultOf(Replaced(HEAD + UNIFORM, middle, middle + middle)), HasSubstr("got the same row at 3 m"));
    EXPECT_FALSE(Imported(Replaced(HEAD + UNIFORM, middle, middle + middle), MEMBERS, {"sagging"}, true).HasErrors());
    EXPECT_THAT(FaultOf(Replaced(HEAD + UNIFORM, middle, middle + "B1,LC1,3,1,0,0,0,90,0\n" + middle)),
                HasSubstr("forces.csv:5: station [m]: got a third row at 3 m after line 3"));
    EXPECT_THAT(FaultOf(HEAD + UNIFORM + "B1,LC1,6,1,0,-60,0,0,0\n"), HasSubstr("two rows at the end at 6 m"));
    EXPECT_THAT(FaultOf(HEAD + "B1,LC1,0,0,0,60,0,0,0\n"), HasSubstr("one station of member \"B1\""));
}

TEST(Import, MembersAndCasesThatAreNotThere)
{
    EXPECT_THAT(FaultOf(Replaced(HEAD + UNIFORM, "B1,LC1,0", "B2,LC1,0")),
                HasSubstr("forces.csv:2: member: got unknown member \"B2\", expected a member of members.csv"));
    EXPECT_THAT(FaultOf(HEAD + UNIFORM, MEMBERS + "B7,UB 457x191x67,S275,6,Pinned,Pinned\n"),
                HasSubstr("members.csv:3: member: got \"B7\" without a row in forces.csv"));
    EXPECT_THAT(FaultOf(HEAD + UNIFORM, MEMBERS + "B1,UB 457x191x74,S275,6,Pinned,Pinned\n"),
                HasSubstr("members.csv:3: member: got \"B1\" once more"));
    const std::string two = MEMBERS + "B2,UB 457x191x67,S275,6,Pinned,Pinned\n";
    const std::string both = UNIFORM + Replaced(Replaced(Replaced(UNIFORM, "B1", "B2"), "B1", "B2"), "B1", "B2");
    EXPECT_THAT(FaultOf(HEAD + both + "B2,LC2,0,0,0,0,0,0,0\nB2,LC2,3,0,0,0,0,0,0\nB2,LC2,6,0,0,0,0,0,0\n", two),
                HasSubstr("forces.csv:2: case: got no row of member \"B1\" in case \"LC2\""));
    EXPECT_THAT(FaultOf(HEAD), HasSubstr("forces.csv:1: got no row"));
    EXPECT_THAT(FaultOf(Replaced(HEAD + UNIFORM, "B1,LC1,3", ",LC1,3")),
                HasSubstr("forces.csv:3: member: got nothing"));
}

TEST(Import, NumbersAndUnits)
{
    EXPECT_THAT(FaultOf(Replaced(HEAD + UNIFORM, ",90,", ",nan,")),
                HasSubstr("forces.csv:3: My [kNm]: got \"nan\", expected a number in kNm"));
    for (const char* bad : {"inf", "", "x", "9 0", "0x5a", "1e999"})
        EXPECT_THAT(FaultOf(Replaced(HEAD + UNIFORM, ",90,", std::string(",") + bad + ",")),
                    HasSubstr("forces.csv:3: My [kNm]: got "))
            << bad;
    EXPECT_THAT(FaultOf(Replaced(HEAD + UNIFORM, ",90,", ",90 kNm,")),
                HasSubstr("got \"90 kNm\", expected a number in kNm; units stand in the header"));
    EXPECT_THAT(FaultOf(Replaced(HEAD + UNIFORM, ",90,", ",90,5,")),
                HasSubstr("forces.csv:3: got 10 fields, expected 9, one for each caption; a decimal comma?"));
    std::string semicolons = HEAD + Replaced(UNIFORM, ",90,", ";90,5;");
    std::replace(semicolons.begin(), semicolons.end(), ',', ';');
    EXPECT_THAT(FaultOf(Replaced(semicolons, "90;5", "90,5")),
                HasSubstr("got \"90,5\", expected a number in kNm; write a decimal point"));
    EXPECT_THAT(
        FaultOf(Replaced(HEAD + UNIFORM, "Vz [kN]", "Vz [N]")),
        HasSubstr("forces.csv:1: Vz [N]: got mixed units, N here and kN in \"N [kN]\", expected the same unit in "
                  "both"));
    EXPECT_THAT(
        FaultOf(Replaced(HEAD + UNIFORM, "Vz [kN]", "Vz")),
        HasSubstr("forces.csv:1: Vz: got no unit, expected N, kN or MN; write it behind the caption, as in \"Vz "
                  "[kN]\", or give --map force=UNIT"));
    EXPECT_THAT(FaultOf(Replaced(HEAD + UNIFORM, "My [kNm]", "My [kN]")),
                HasSubstr("My [kN]: got \"kN\", expected Nm, kNm"));
    EXPECT_THAT(FaultOf(HEAD + UNIFORM, MEMBERS, {"sagging", "force=N"}),
                HasSubstr("N [kN]: got \"kN\", expected N, as --map says"));
}

TEST(Import, ColumnsThatAreNotThereTwiceOrUnknown)
{
    EXPECT_THAT(FaultOf(Replaced(HEAD + UNIFORM, "T [kNm]", "twist [kNm]")),
                HasSubstr("forces.csv:1: T: got no such column among member, case"));
    EXPECT_THAT(FaultOf(Replaced(HEAD + UNIFORM, "T [kNm]", "Fx [kN]")),
                HasSubstr("N: got two columns for it, \"N [kN]\" and \"Fx [kN]\""));
    EXPECT_THAT(FaultOf(HEAD + UNIFORM, Replaced(MEMBERS, "start", "strat")),
                HasSubstr("members.csv:1: got unknown column \"strat\", expected member, section"));
    const Import import = Imported(
        Replaced(HEAD, "\n", ",node\n") + "B1,LC1,0,0,0,60,0,0,0,7\nB1,LC1,6,0,0,-60,0,0,0,8\n", MEMBERS, {"sagging"});
    EXPECT_FALSE(import.HasErrors()) << Messages(import);
    EXPECT_THAT(Messages(import), HasSubstr("forces.csv:1: note: columns that are not used: node"));
    EXPECT_THAT(FaultOf(HEAD + "#1,LC1,0,0,0,60\n"), HasSubstr("forces.csv:2: got 6 fields"));
}

TEST(Import, AColumnThatThereIsNoneOfInAnyLetterCase)
{
    const std::string head = Replaced(HEAD, "T [kNm],", "");
    const std::string rows = "B1,LC1,0,0,0,60,0,0\nB1,LC1,3,0,0,0,90,0\nB1,LC1,6,0,0,-60,0,0\n";
    const Import import = Imported(head + rows, MEMBERS, {"sagging", "T=None"});
    EXPECT_FALSE(import.HasErrors()) << Messages(import);
}

TEST(Import, Members)
{
    const auto fault = [](const std::string& row) {
        return FaultOf(HEAD + UNIFORM, "member,section,grade,length [m],start,end,restraints\n" + row + '\n');
    };
    EXPECT_THAT(fault("B1,UB 457x191x68,S275,6,Pinned,Pinned,"),
                HasSubstr("members.csv:2: section: unknown section \"UB 457x191x68\"; nearest: UB 457x191x67"));
    EXPECT_THAT(fault("B1,UB 457x191x67,,6,Pinned,Pinned,"), HasSubstr("members.csv:2: grade: got nothing"));
    EXPECT_THAT(fault("B1,UB 457x191x67,User_defined,6,Pinned,Pinned,"),
                HasSubstr("members.csv:2: member \"B1\": GRADE"));
    EXPECT_THAT(fault("B1,UB 457x191x67,S275,6,Pinnd,Pinned,"), HasSubstr("members.csv:2: start: got \"Pinnd\""));
    EXPECT_THAT(fault("B1,UB 457x191x67,S275,6,Pinned,,"), HasSubstr("members.csv:2: end: got nothing"));
    EXPECT_THAT(fault("B1,UB 457x191x67,S275,-6,Pinned,Pinned,"), HasSubstr("expected a length above 0"));
    EXPECT_THAT(fault("B1,UB 457x191x67,S275,6,Pinned,Pinned,Top flange lateral"), HasSubstr("RESTRAINT@PLACE"));
    EXPECT_THAT(fault("B1,UB 457x191x67,S275,6,Pinned,Pinned,Top flange lateral@7"),
                HasSubstr("got a place at 7 m, expected places within the member, which ends at 6 m"));
    EXPECT_THAT(fault("B1,UB 457x191x67,S275,6,Pinned,Pinned,Top@3"), HasSubstr("restraints: got \"Top@3\""));
    EXPECT_THAT(
        FaultOf(HEAD + UNIFORM, "member,section,grade,length [m]\nB1,UB 457x191x67,S275,6\n"),
        AllOf(HasSubstr("start: got nothing, expected what holds the start, or Free"), HasSubstr("end: got nothing")));
    const Import import = Imported(
        HEAD + UNIFORM, "member,section,grade,restraints\nB1,UB 457x191x67,S275,Pinned@0|Pinned@6\n", {"sagging"});
    EXPECT_FALSE(import.HasErrors()) << Messages(import);
    EXPECT_THAT(Messages(import), HasSubstr("members.csv:1: warning: no column length"));
}

// Shears of the other sign: the table is that of another preset.
TEST(Import, ForcesThatDoNotBalanceNameThePresetsThatWould)
{
    const std::string said = FaultOf(HEAD + UNIFORM, MEMBERS, {"z-up-sagging"});
    EXPECT_THAT(said, HasSubstr("forces.csv:1: the forces do not balance as z-up-sagging; they would as member-file, "
                                "z-down, start-face, sagging, sagging-compression, y-up\n"));
    EXPECT_THAT(said, HasSubstr("forces.csv:3: My: got a change by 90 kNm from 0 m to 3 m of member \"B1\" in case "
                                "\"LC1\", expected -90 kNm by its shears, dMy/dx = -Vz"));
    // A load between two stations, or one sign that is wrong in one row.
    EXPECT_THAT(FaultOf(Replaced(HEAD + UNIFORM, "3,0,0,0,0,90", "3,0,0,0,0,80")),
                HasSubstr("no preset balances them: is there a load between two stations"));
    // Among hundreds of stations no piece by itself shows it.
    std::string fine = HEAD;
    for (int i = 0; i <= 1000; ++i) {
        const double x = 6.0 * i / 1000;
        fine +=
            "B1,LC1," + Shortest(x) + ",0,0," + Shortest(60 - 20 * x) + ",0," + Shortest(60 * x - 10 * x * x) + ",0\n";
    }
    EXPECT_FALSE(Imported(fine, MEMBERS, {"sagging"}).HasErrors());
    EXPECT_THAT(FaultOf(fine, MEMBERS, {"z-up-sagging"}), HasSubstr("they would as"));
}

// As spreadsheets and programs write them: all are the same table.
TEST(Import, OneTableInManyForms)
{
    const Import plain = Imported(HEAD + UNIFORM, MEMBERS, {"sagging"});
    ASSERT_FALSE(plain.HasErrors());
    const std::string bare = "Member,CASE,station,N,V_y,V.z,T,M-y,M\tz\n";
    const std::string quoted = "\"B1\", \"LC1\" ,\t0,+0,0,60,0,0,0\nB1,LC1,3,0,0,0,0,+9.0e+1,0\n"
                               "B1,LC1,6,0,0,-60,0,0,0\n";
    for (const std::string& table :
         {"\xEF\xBB\xBF# from an analysis\n" + HEAD + ",,,,,,,,\n" + UNIFORM + " ; ;\n",
          Replaced(Replaced(HEAD, "N [kN]", "N (kN)"), "My [kNm]", "My (kN*m)") + UNIFORM,
          bare + "-,,[m],(kN),kN,kN,kN m,kN.m,kN-m,,\n" + UNIFORM, bare + ",,m,kN,kN,kN,kN\xC2\xB7m,kNm,kNm\n" + quoted,
          HEAD + Replaced(UNIFORM, "B1,LC1,0,0,0,60,0,0,0\n", "B1,LC1,0,0,0,60,0,0,0,,\n"),
          Replaced(HEAD, "Mz [kNm]\n", "Mz [kNm],,\n") +
              "B1,LC1,0,0,0,60,0,0,0\nB1,LC1,3,0,0,0,0,90,0\nB1,LC1,6,0,0,-60,0,0,0,,\n"}) {
        const Import import = Imported(table, MEMBERS, {"sagging"});
        EXPECT_FALSE(import.HasErrors()) << table << Messages(import);
        EXPECT_EQ(import.text, plain.text) << table;
    }
    // A name with a separator and quotation marks.
    const std::string odd =
        Replaced(Replaced(Replaced(UNIFORM, "B1", "\"B \"\"1\"\"; x\""), "B1", "\"B \"\"1\"\"; x\""), "B1",
                 "\"B \"\"1\"\"; x\"");
    const Import named = Imported(HEAD + odd, Replaced(MEMBERS, "\nB1", "\n\"B \"\"1\"\"; x\""), {"sagging"});
    ASSERT_FALSE(named.HasErrors()) << Messages(named);
    EXPECT_EQ(ReadBack(named).Title(0), "B \"1\"; x: LC1");
}

TEST(Import, TablesThatCannotBeRead)
{
    EXPECT_THAT(FaultOf("member,case\rB1,LC1\r"), HasSubstr("lines that end in carriage returns alone"));
    EXPECT_THAT(FaultOf("member,\"case\n"), HasSubstr("a quotation mark without its end"));
    EXPECT_THAT(FaultOf(Replaced(HEAD, "station [m]", "station") + UNIFORM),
                HasSubstr("station: got no unit, expected m, cm or mm; write it behind the caption, as in \"station "
                          "[m]\", or give --map length=UNIT"));
    EXPECT_THAT(FaultOf(Replaced(HEAD, "My [kNm]", "My") + UNIFORM),
                HasSubstr("as in \"My [kNm]\", or give --map moment=UNIT"));
    EXPECT_THAT(FaultOf(Replaced(HEAD, "N [kN]", "N [kN") + UNIFORM), HasSubstr("no such column among"));
    EXPECT_THAT(FaultOf(HEAD + ",,m,N,kN,kN,kNm,kNm,kNm\n" + UNIFORM),
                HasSubstr("forces.csv:2: N [kN]: got \"N\", expected the unit of its caption"));
    EXPECT_THAT(FaultOf(HEAD + "-,-,-,-,-,-,-,-,-\n" + UNIFORM), HasSubstr("forces.csv:2: station [m]: got \"-\""));
    EXPECT_THAT(
        FaultOf(HEAD + UNIFORM, MEMBERS, {"sagging", "N=axial"}),
        HasSubstr("no such column among member, case, station [m], N [kN], Vy [kN], Vz [kN], T [kNm], My [kNm], "
                  "Mz [kNm], expected a column \"axial\""));
    EXPECT_THAT(FaultOf(Replaced(HEAD, "case,", "") + UNIFORM), HasSubstr("no such column among"));
    EXPECT_THAT(FaultOf(Replaced(HEAD + UNIFORM, ",90,", ",1e306,")), HasSubstr("My [kNm]: got \"1e306\""));
    EXPECT_THAT(FaultOf(Replaced(HEAD + UNIFORM, "B1,LC1,3", "B1,,3")), HasSubstr("forces.csv:3: case: got nothing"));
    EXPECT_THAT(
        FaultOf(Replaced(HEAD + UNIFORM, "B1,LC1,3", "B2,LC1,3"), MEMBERS + "B3,UB 457x191x67,S275,6,Pinned,Pinned\n"),
        HasSubstr("unknown member \"B2\""));
    // By the caption without its unit, and with it.
    for (const char* name : {"N=axial", "N=axial [kN]"})
        EXPECT_FALSE(
            Imported(Replaced(HEAD, "N [kN]", "axial [kN]") + UNIFORM, MEMBERS, {"sagging", name}).HasErrors());
    ImportSettings settings;
    EXPECT_THAT(ReadImportMap({"z-down", "force=kNm"}, settings), HasSubstr("force=kNm: expected N, kN or MN"));
}

TEST(Import, FieldsOfMembersThatCannotBe)
{
    const std::string head =
        "member,section,type,grade,length [m],start,end,restraints,net-to-gross,plastic-to-elastic,"
        "shear-lag,load-height [m]\n";
    const auto fault = [&](const std::string& row) { return FaultOf(HEAD + UNIFORM, head + row + '\n'); };
    const std::string sound = "B1,UB 457x191x67,rolled,S275,6,Pinned,None,Pinned@6,1,1.2,0.7,0.1";
    const Import import = Imported(HEAD + UNIFORM, head + sound + '\n', {"sagging"});
    EXPECT_FALSE(import.HasErrors()) << Messages(import);
    EXPECT_THAT(import.text, HasSubstr("SECTION,UB 457x191x67,ROLLED\n"));
    struct Row {
        const char* from;
        const char* to;
        const char* said;
    };
    for (const Row& row : {Row{"B1,", ",", "members.csv:2: member: got nothing"},
                           {"UB 457x191x67,", ",", "got nothing, expected a section"},
                           {"rolled", "cast", "type: got \"cast\", expected rolled, welded or formed"},
                           {"S275", "\"S275,S355\"", "the name of a grade, which has no comma"},
                           {",6,", ",six,", "length [m]: got \"six\""},
                           {"Pinned@6", "Pinned@-1", "restraints: got \"Pinned@-1\""},
                           {"Pinned@6", "Pinned@4:2", "restraints: got \"Pinned@4:2\""},
                           {"Pinned@6", "Pinned@2:2", "restraints: got \"Pinned@2:2\""},
                           {"Pinned@6", "Pinned@2:x", "restraints: got \"Pinned@2:x\""},
                           {"Pinned@6", "Pinned@2 3", "restraints: got \"Pinned@2 3\""},
                           {"Pinned@6", "Pinned@inf", "restraints: got \"Pinned@inf\""},
                           {",1,1.2", ",0,1.2", "net-to-gross: got 0, expected a ratio above 0, at most 1"},
                           {",1,1.2", ",1.01,1.2", "net-to-gross: got 1.01"},
                           {"1.2", "0.9", "plastic-to-elastic: got 0.9, expected a ratio from 1 to 1.5"},
                           {"1.2", "x", "plastic-to-elastic: got \"x\""},
                           {"0.7", "-0.1", "shear-lag: got -0.1, expected a factor from 0 to 1"},
                           {",0.1", ",high", "load-height [m]: got \"high\""}})
        EXPECT_THAT(fault(Replaced(sound, row.from, row.to)), HasSubstr(row.said)) << row.to;
    EXPECT_THAT(FaultOf(HEAD + UNIFORM, head), HasSubstr("members.csv:1: got no row, expected members below"));
    EXPECT_THAT(FaultOf(HEAD + UNIFORM, Replaced(head, "grade,", "grade,grad,") + sound + '\n'),
                HasSubstr("unknown column \"grad\""));
    EXPECT_THAT(FaultOf(HEAD + UNIFORM, "member,grade,length [m]\nB1,S275,6\n"),
                HasSubstr("section: got no such column"));
}

// A strict reading takes no warning.
TEST(Import, StrictlyEveryWarningIsAnError)
{
    const std::string members = "member,section,grade,start,end\nB1,UB 457x191x67,S275,Pinned,Pinned\n";
    ImportSettings settings;
    ASSERT_EQ(ReadImportMap({"sagging"}, settings), "");
    const std::string table = HEAD + UNIFORM;
    const ImportFile forces{"forces.csv", table};
    EXPECT_FALSE(ImportForces(forces, {"members.csv", members}, settings).HasErrors());
    settings.isStrict = true;
    const Import strict = ImportForces(forces, {"members.csv", members}, settings);
    EXPECT_TRUE(strict.HasErrors());
    EXPECT_EQ(strict.text, "");
    EXPECT_THAT(Messages(strict), HasSubstr("members.csv:1: no column length"));
}

// Three digits are enough, and a couple is told.
TEST(Import, RoundingIsNoGapAndACoupleIsAWarning)
{
    const std::string coarse = "B1,LC1,0,0,0,33.3,0,0,0\nB1,LC1,3,0,0,0.0,0,50.0,0\nB1,LC1,6,0,0,-33.3,0,0,0\n";
    EXPECT_FALSE(Imported(HEAD + coarse, MEMBERS, {"sagging"}).HasErrors());
    const std::string couple =
        "B1,LC1,0,0,0,10,0,0,0\nB1,LC1,3,0,0,10,0,30,0\nB1,LC1,3,0,0,10,0,-30,0\nB1,LC1,6,0,0,10,0,0,0\n";
    const Import import = Imported(HEAD + couple, MEMBERS, {"sagging"});
    EXPECT_FALSE(import.HasErrors()) << Messages(import);
    EXPECT_THAT(Messages(import),
                HasSubstr("forces.csv:4: warning: My of member \"B1\" in case \"LC1\" jumps by -60 kNm at "
                          "3 m: a couple, or is something lost?"));
    EXPECT_THAT(Messages(Imported(HEAD + UNIFORM, MEMBERS, {"sagging"})), Not(HasSubstr("jumps")));
}

TEST(Import, BytesThatAreNoTable)
{
    EXPECT_THROW(Imported("", MEMBERS, {"sagging"}), BadInput);
    EXPECT_THROW(Imported("a,b\n\xff\xff", MEMBERS, {"sagging"}), BadInput);
    EXPECT_THAT(FaultOf("\n\n"), HasSubstr("a line of captions"));
    EXPECT_THAT(FaultOf("nothing here\n"), HasSubstr("captions separated by commas or semicolons"));
    EXPECT_THAT(FaultOf(HEAD + "\"B1,LC1\n"), HasSubstr("forces.csv:2: got a quotation mark without its end"));
    EXPECT_THAT(FaultOf(HEAD + "\"B1\"x,LC1\n"), HasSubstr("behind a quotation"));
    std::string many = HEAD;
    for (int i = 0; i < 3000; ++i)
        many += "B1,LC1,x,0,0,0,0,0,0\n";
    EXPECT_THAT(FaultOf(many), HasSubstr("messages more are not shown"));
}

TEST(ImportMap, WhatItTakes)
{
    const auto fault = [](const std::vector<std::string>& items) {
        ImportSettings settings;
        return ReadImportMap(items, settings);
    };
    EXPECT_EQ(fault({"z-down", "N=P", "members.section=profile", "length=mm"}), "");
    EXPECT_THAT(fault({}), HasSubstr("names no preset of signs, expected member-file, z-down"));
    EXPECT_THAT(fault({"zdown"}), HasSubstr("unknown preset \"zdown\""));
    EXPECT_THAT(fault({"z-down", "y-up"}), HasSubstr("two presets"));
    EXPECT_THAT(fault({"z-down", "Q=P"}), HasSubstr("Q: expected one of member, case, station, N"));
    EXPECT_THAT(fault({"z-down", "N=P", "n=P"}), HasSubstr("given twice"));
    EXPECT_THAT(fault({"z-down", "force=lb"}), HasSubstr("force=lb: expected N, kN or MN"));
    EXPECT_THAT(fault({"z-down", "member=none"}), HasSubstr("there are no forces without it"));
    EXPECT_THAT(fault({"z-down", "N="}), HasSubstr("expected a caption"));
    EXPECT_THAT(fault({"z-down", "force=N", "force=kN"}), HasSubstr("force is given twice"));
    EXPECT_THAT(fault({"z-down", "length=m", "length=m"}), HasSubstr("length is given twice"));
    EXPECT_THAT(fault({"z-down", "members.section=none"}), HasSubstr("there are no members without it"));
    EXPECT_EQ(fault({"z-down", "T=None", "members.type=NONE"}), "");
}

// 200 kN in the middle of 6 m: 300 kNm, of which two stations at the ends show a uniform load's 150 kNm.
TEST(Import, WarnsOfWhatMayHideBetweenStations)
{
    const Import ends = Imported(HEAD + "B1,LC1,0,0,0,100,0,0,0\nB1,LC1,6,0,0,-100,0,0,0\n", MEMBERS, {"sagging"});
    EXPECT_FALSE(ends.HasErrors());
    EXPECT_THAT(
        Messages(ends),
        HasSubstr(
            "forces.csv:3: warning: the load between two stations of member \"B1\" in case \"LC1\", the second at 6 m, "
            "is read as uniform: a force at one place would add up to 150 kNm, 100 % of the largest moment; "
            "export a station at every force, or more stations"));
    // With a station under the force nothing is hidden.
    const Import known = Imported(
        HEAD + "B1,LC1,0,0,0,100,0,0,0\nB1,LC1,3,0,0,100,0,300,0\nB1,LC1,3,0,0,-100,0,300,0\nB1,LC1,6,0,0,-100,0,0,0\n",
        MEMBERS, {"sagging"});
    EXPECT_THAT(Messages(known), Not(HasSubstr("warning")));
}

// No design code takes other factors.
TEST(Import, FactorsBeyondTheirRange)
{
    const auto fault = [](const std::string& column, const std::string& value) {
        return FaultOf(HEAD + UNIFORM, "member,section,grade,length [m],start,end," + column +
                                           "\nB1,UB 457x191x67,S275,6,Pinned,Pinned," + value + '\n');
    };
    EXPECT_THAT(fault("net-to-gross", "2"),
                HasSubstr("members.csv:2: net-to-gross: got 2, expected a ratio above 0, at most 1"));
    EXPECT_THAT(fault("net-to-gross", "0"), HasSubstr("a ratio above 0, at most 1"));
    EXPECT_THAT(fault("plastic-to-elastic", "9"),
                HasSubstr("plastic-to-elastic: got 9, expected a ratio from 1 to 1.5"));
    EXPECT_THAT(fault("plastic-to-elastic", "0.9"), HasSubstr("expected a ratio from 1 to 1.5"));
    EXPECT_THAT(fault("shear-lag", "70"), HasSubstr("shear-lag: got 70, expected a factor from 0 to 1"));
    EXPECT_FALSE(Imported(HEAD + UNIFORM,
                          "member,section,grade,length [m],start,end,plastic-to-elastic,net-to-gross\n"
                          "B1,UB 457x191x67,S275,6,Pinned,Pinned,1.5,1\n",
                          {"sagging"})
                     .HasErrors());
}

// 0.1 and 0.2 in MN and MNm: half a digit of the shears over 4.5 m is as much as the moment.
TEST(Import, FiguresThatAreTooCoarseToCheckTheirSignsAreAWarning)
{
    std::string coarse = Replaced(HEAD, "T [kNm],My [kNm],Mz [kNm]", "T [MNm],My [MNm],Mz [MNm]");
    coarse = Replaced(coarse, "N [kN],Vy [kN],Vz [kN]", "N [MN],Vy [MN],Vz [MN]");
    const std::string rows = "B1,A,0,0,0,0.1,0,0,0\nB1,A,4.5,0,0,0,0,0.2,0\nB1,A,9,0,0,-0.1,0,0,0\n";
    const std::string members = Replaced(MEMBERS, ",6,", ",9,");
    for (const char* preset : {"sagging", "z-up-sagging"}) {
        const Import import = Imported(coarse + rows, members, {preset});
        EXPECT_FALSE(import.HasErrors()) << Messages(import);
        EXPECT_THAT(
            Messages(import),
            HasSubstr("forces.csv:1: warning: the signs of My are not checked: its figures balance with dMy/dx = "
                      "Vz and with dMy/dx = -Vz; export more digits, or more stations"));
    }
    EXPECT_THAT(Messages(Imported(HEAD + UNIFORM, MEMBERS, {"sagging"})), Not(HasSubstr("not checked: its figures")));
}

// What a row that could not be read would have said is not missed.
TEST(Import, ARowThatCannotBeReadIsOneMessage)
{
    const std::string said = FaultOf(Replaced(HEAD + UNIFORM, "0,0,0,60", "0,0,0,6o"));
    EXPECT_THAT(said, HasSubstr("forces.csv:2: Vz [kN]: got \"6o\", expected a number in kN\n"));
    EXPECT_EQ(said.find("forces.csv"), said.rfind("forces.csv")) << said;
    EXPECT_THAT(FaultOf(HEAD + "B1,LC1,0,0,0,60,0,0,x\n"), Not(HasSubstr("station")));
    EXPECT_THAT(FaultOf(HEAD + "B1,LC1,0,0,0,60,0,0,x\n"), Not(HasSubstr("without a row")));
}

TEST(Import, UnitsInAnyLetterCaseButForTheirPrefix)
{
    EXPECT_EQ(ImportUnitNamed("KNM"), ImportUnitNamed("kNm"));
    EXPECT_EQ(ImportUnitNamed("kNM"), ImportUnitNamed("kNm"));
    EXPECT_EQ(ImportUnitNamed("knm"), ImportUnitNamed("kNm"));
    EXPECT_EQ(ImportUnitNamed("NM"), ImportUnitNamed("Nm"));
    EXPECT_EQ(ImportUnitNamed("MNM"), ImportUnitNamed("MNm"));
    EXPECT_EQ(ImportUnitNamed("mNm"), nullptr);
    EXPECT_EQ(ImportUnitNamed("MM"), nullptr);
    EXPECT_EQ(ImportUnitNamed("M"), nullptr);
}

TEST(Import, UnitsBelowAnEmptyLineAreNamedByTheirOwnLine)
{
    EXPECT_THAT(FaultOf(HEAD + "\n\n,,m,N,kN,kN,kNm,kNm,kNm\n" + UNIFORM),
                HasSubstr("forces.csv:4: N [kN]: got \"N\", expected the unit of its caption"));
}

TEST(Import, LinesThatEndInCarriageReturnsAloneAreNamed)
{
    std::string text = HEAD + UNIFORM;
    std::replace(text.begin(), text.end(), '\n', '\r');
    EXPECT_THAT(FaultOf(text),
                HasSubstr("forces.csv:1: got lines that end in carriage returns alone, expected line feeds"));
}

TEST(Import, CasesThatBecomeOneTitleAreAWarning)
{
    std::string forces = HEAD;
    for (const char* name : {"\"A,b\"", "A;b"}) {
        std::string rows = UNIFORM;
        for (int i = 0; i < 3; ++i)
            rows = Replaced(rows, "LC1", name);
        forces += rows;
    }
    const Import import = Imported(forces, MEMBERS, {"sagging"});
    EXPECT_FALSE(import.HasErrors()) << Messages(import);
    EXPECT_THAT(Messages(import),
                HasSubstr("members.csv:2: warning: two members are called \"B1: A;b\" in the member file"));
}

// A millimetre makes no piece of its own.
TEST(Import, RestraintsBesideAStationOrEachOtherAreAtOnePlace)
{
    const std::string members = "member,section,grade,length [m],start,end,restraints\n"
                                "B1,UB 457x191x67,S275,6,Pinned,Pinned,"
                                "F1L@2.9999 | F2L@1.5 | F1L@1.500000000001\n";
    const Import import = Imported(HEAD + UNIFORM, members, {"sagging"});
    ASSERT_FALSE(import.HasErrors()) << Messages(import);
    const ReadBack read(import);
    const auto& points = read.Member(0).MemberPoints();
    ASSERT_EQ(points.size(), 4u);
    EXPECT_EQ(points[1].GetPos(), 1.5);
    EXPECT_TRUE(points[1].GetRestraint().IsRestrained(
        Steel::CRestraint::FLANGE1_LATERAL | Steel::CRestraint::FLANGE2_LATERAL, true));
    EXPECT_EQ(points[2].GetPos(), 3.0);
    EXPECT_TRUE(points[2].GetRestraint().IsRestrained(Steel::CRestraint::FLANGE1_LATERAL, true));
}

} // namespace
} // namespace Keltrix::ImportTest

// What is read from a beam file, and what is said of one that is wrong.

#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "beamfile/BeamDocument.h"
#include "beamfile/BeamSupport.h"
#include "beamfile/BeamText.h"
#include "text/BadInput.h"
#include "text/Json.h"

namespace Keltrix::BeamTest {
namespace {

using Statics::ActionKind;
using Statics::Direction;
using Statics::LoadShape;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

constexpr char HEAD[] = "section = \"UB 457x191x67\"\ngrade = \"S275\"\n";

Statics::Beam BeamOf(const std::string& text)
{
    const Beam beam = Read(HEAD + text);
    EXPECT_FALSE(beam.made.HasErrors()) << Messages(beam);
    return beam.file.beam;
}

TEST(BeamFile, TakesTheValuesOfItsKeys)
{
    const Beam beam = Read(FloorBeam("type = \"rolled\"\nplastic-to-elastic = 1.5\ncamber = 0.02\n"));
    const BeamFile& file = beam.file;
    EXPECT_EQ(file.title, "Floor beam B12");
    EXPECT_EQ(file.section, "UB 457x191x67");
    EXPECT_EQ(file.type, "ROLLED");
    EXPECT_EQ(file.plasticToElastic, 1.5);
    EXPECT_EQ(file.camber, std::vector<double>{0.02});
    EXPECT_EQ(file.beam.length, 9.0);
    EXPECT_EQ(file.beam.section.E, 205e9);
    EXPECT_NEAR(file.beam.section.Iy, 29380e-8, 20e-8);
    EXPECT_EQ(file.beam.section.mass, 67.1);
    EXPECT_NEAR(file.beam.section.topFlange, 0.2267, 1e-4);
    ASSERT_EQ(file.beam.supports.size(), 2u);
    ASSERT_EQ(file.beam.restraints.size(), 1u);
    EXPECT_EQ(file.beam.restraints[0].to, 6.0);
    ASSERT_EQ(file.beam.loads.size(), 2u);
    EXPECT_EQ(file.beam.loads[0].value, 12e3);
    EXPECT_TRUE(std::isinf(file.beam.loads[0].to));
    EXPECT_EQ(file.beam.loads[1].shape, LoadShape::Point);
    EXPECT_EQ(file.beam.loads[1].value, 45e3);
    EXPECT_EQ(file.beam.loads[1].from, 3.0);
}

TEST(BeamFile, LoadsOfAllShapes)
{
    const Statics::Beam beam =
        BeamOf("length = 8\n[[load]]\nkind = \"permanent\"\ntrapezoid = [2, 5]\nfrom = 1\nto = 4\n"
               "[[load]]\nkind = \"wind\"\nmajor = true\nudl = -2\n"
               "[[load]]\nkind = \"wind\"\nminor = true\npoint = 3\nat = 2\n"
               "[[load]]\nkind = \"imposed\"\nmoment = 7\nat = 8\n"
               "[[load]]\nkind = \"imposed\"\naxial = -40\nat = 8\n"
               "[[load]]\nkind = \"imposed\"\npoint = 9\nat = [2, 6]\nheight = \"top flange\"\n");
    ASSERT_EQ(beam.loads.size(), 7u);
    EXPECT_EQ(beam.loads[0].value, 2e3);
    EXPECT_EQ(beam.loads[0].valueTo, 5e3);
    EXPECT_EQ(beam.loads[0].to, 4.0);
    EXPECT_EQ(beam.loads[1].direction, Direction::Major);
    EXPECT_EQ(beam.loads[2].direction, Direction::Minor);
    EXPECT_EQ(beam.loads[3].shape, LoadShape::Moment);
    EXPECT_EQ(beam.loads[3].value, 7e3);
    EXPECT_EQ(beam.loads[4].direction, Direction::Axial);
    EXPECT_EQ(beam.loads[6].from, 6.0);
    EXPECT_EQ(beam.loads[6].reference, Steel::TOP_FLANGE);
    ASSERT_EQ(beam.cases.size(), 3u);
    EXPECT_EQ(beam.cases[1].kind, ActionKind::Wind);
    EXPECT_FALSE(beam.cases[1].bySpan);
    EXPECT_TRUE(beam.cases[2].bySpan);
}

// 150 kN at 100 mm from the face at 127 mm: 150 x 0.227 = 34.05 kNm; on the other side the other way.
TEST(BeamFile, ReactionsOfBeamsActOutsideTheFace)
{
    const Statics::Beam beam =
        BeamOf("length = 4.5\ncolumn = true\n"
               "[[load]]\nkind = \"permanent\"\nreaction = 150\nat = 4.5\nface = 0.127\n"
               "[[load]]\nkind = \"permanent\"\nreaction = 100\nat = 4.5\nface = -0.127\n"
               "[[load]]\nkind = \"permanent\"\nreaction = 10\nat = 4.5\neccentricity = 0.3\nminor = true\n");
    ASSERT_EQ(beam.loads.size(), 6u);
    EXPECT_EQ(beam.loads[0].direction, Direction::Gravity);
    EXPECT_EQ(beam.loads[0].value, 150e3);
    EXPECT_NEAR(beam.loads[1].value, 34.05e3, 1e-9);
    EXPECT_NEAR(beam.loads[3].value, -22.7e3, 1e-9);
    EXPECT_EQ(beam.loads[5].direction, Direction::Minor);
    EXPECT_EQ(beam.loads[5].value, 3e3);
    EXPECT_NEAR(beam.inclination, 1.5707963267948966, 1e-15);
}

TEST(BeamFile, SupportsOfAListTakeThePlaceOfThoseOfSpans)
{
    const Statics::Beam beam = BeamOf("spans = [8, 6]\nsupports = [{ at = 8, holds = \"Vertical\", vertical = 2000 }]\n"
                                      "[[load]]\nkind = \"permanent\"\nudl = 1\n");
    ASSERT_EQ(beam.supports.size(), 3u);
    EXPECT_EQ(beam.length, 14.0);
    EXPECT_EQ(beam.supports[1].at, 8.0);
    EXPECT_EQ(beam.supports[1].vertical, 2e6);
    EXPECT_EQ(beam.supports[1].holds.RestFlag(), static_cast<int>(Steel::CRestraint::MAJOR_SHEAR));
}

TEST(BeamFile, OwnCombinations)
{
    const Beam beam =
        Read(FloorBeam("pattern = false\n", "[[combination]]\nname = \"ULS\"\n"
                                            "factors = { Dead = [1.35, 1.0], imposed = 1.5 }\n"
                                            "[[combination]]\nname = \"SLS\"\nstate = \"characteristic\"\n"
                                            "factors = { Dead = 1, Imposed = 1 }\n"));
    ASSERT_FALSE(beam.made.HasErrors()) << Messages(beam);
    ASSERT_EQ(beam.made.members.size(), 2u);
    EXPECT_EQ(beam.made.members[0].name, "ULS: 1.35 Dead + 1.5 Imposed");
    EXPECT_EQ(beam.made.members[1].name, "ULS: 1 Dead + 1.5 Imposed");
    EXPECT_EQ(beam.made.combinations.list.back().state, Statics::LimitState::Characteristic);
}

TEST(BeamFile, SelfWeightHasACaseWithoutPermanentLoads)
{
    const Beam beam =
        Read(std::string(HEAD) + "length = 6\n[[load]]\nkind = \"imposed\"\nudl = 5\n"
                                 "[[combination]]\nname = \"A\"\nfactors = { \"Self weight\" = 1.4, imposed = 1.6 }\n");
    ASSERT_FALSE(beam.made.HasErrors()) << Messages(beam);
    EXPECT_THAT(Messages(beam), HasSubstr("self weight of 67.1 kg/m"));
    EXPECT_EQ(beam.made.members[0].name, "A: 1.4 Self weight + 1.6 imposed");
    // Left out of all combinations it is told as a warning.
    EXPECT_THAT(Messages(std::string(HEAD) + "length = 6\n[[load]]\nkind = \"imposed\"\nudl = 5\n"
                                             "[[combination]]\nname = \"A\"\nfactors = { imposed = 1.6 }\n"),
                HasSubstr("warning: combinations: the loads of the case Self weight act in no ultimate combination"));
}

TEST(BeamFile, TitleOfAMemberHasNoComma)
{
    const Beam beam = Read("title = \"B1, level 2\"\n" + std::string(HEAD) +
                           "spans = [6, 6, 6]\n[[load]]\nkind = \"imposed\"\nudl = 5\n");
    bool found = false;
    for (const BeamMember& member : beam.made.members) {
        EXPECT_EQ(member.text.rfind("TITLE,B1; level 2: ", 0), 0u) << member.text;
        found = found || member.text.find("on spans 1; 3\n") != std::string::npos;
    }
    EXPECT_TRUE(found);
}

TEST(BeamFile, SaysAllThatIsWrongInOnePass)
{
    const std::string text = "titel = \"x\"\nsection = \"UB 457x191x68\"\ngrade = \"S27\"\nlenght = 9\n"
                             "[[restraint]]\nfrom = 7\nto = 6\nholds = \"Top flang lateral\"\n"
                             "[[load]]\nkind = \"permament\"\nudl = \"12\"\n"
                             "[[load]]\nkind = \"imposed\"\npoint = 45.0\nat = -3\n";
    const std::string messages = Messages(text);
    EXPECT_THAT(messages, HasSubstr("beam.toml:1: error: got unknown key \"titel\", expected title, "));
    EXPECT_THAT(messages,
                HasSubstr("beam.toml:2: error: section: unknown section \"UB 457x191x68\"; nearest: UB 457x191x67"));
    EXPECT_THAT(messages, HasSubstr("beam.toml:3: error: grade: got \"S27\", expected one of S275, S355, S460"));
    EXPECT_THAT(messages, HasSubstr("beam.toml:4: error: got unknown key \"lenght\""));
    EXPECT_THAT(messages, HasSubstr("; did you mean length\n"));
    EXPECT_THAT(messages, HasSubstr("beam.toml:8: error: restraint.holds: got \"Top flang lateral\""));
    EXPECT_THAT(messages, HasSubstr("beam.toml:10: error: load.kind: got \"permament\", expected permanent, dead, "));
    EXPECT_THAT(messages, HasSubstr("did you mean permanent"));
    EXPECT_THAT(messages, HasSubstr("beam.toml:11: error: load.udl: got \"12\", expected a load in kN/m"));
    EXPECT_THAT(messages, HasSubstr("beam.toml:15: error: load.at: got -3, expected a place in m"));
}

TEST(BeamFile, FaultsOfTheBeamStandInTheirLines)
{
    EXPECT_THAT(Messages(std::string(HEAD) + "length = 6\nhinges = [6]\n"
                                             "[[load]]\nkind = \"permanent\"\nudl = 1\nto = 9\n"
                                             "[[restraint]]\nfrom = 3\nto = 7\nholds = \"Top flange lateral\"\n"
                                             "[[load]]\nkind = \"permanent\"\npoint = 1\nat = 8\n"),
                AllOf(HasSubstr("beam.toml:4: error: hinges: hinge at 6 m"),
                      HasSubstr("beam.toml:5: error: load: load to 9 m"),
                      HasSubstr("beam.toml:9: error: restraint: restraint to 7 m"),
                      HasSubstr("beam.toml:13: error: load: load at 8 m")));
    // What nothing holds.
    EXPECT_THAT(
        Messages(std::string(HEAD) + "length = 6\nsupports = [{ at = 0 }]\n[[load]]\nkind = \"permanent\"\nudl = 1\n"),
        HasSubstr("beam.toml:4: error: supports: "));
}

TEST(BeamFile, ARestraintThatCarriesLoadsIsASupport)
{
    EXPECT_THAT(Messages(FloorBeam({}, "[[restraint]]\nat = 4\nholds = \"Pinned\"\n")),
                HasSubstr("error: restraint.holds: got a hold that carries loads"));
}

TEST(BeamFile, ContradictionsAreErrors)
{
    EXPECT_THAT(Messages(FloorBeam("spans = [9]\n")), HasSubstr("length: got length and spans, expected one of both"));
    EXPECT_THAT(Messages(FloorBeam("inclination = 5\ncolumn = true\n")), HasSubstr("column and inclination"));
    EXPECT_THAT(Messages(FloorBeam({}, "[[load]]\ncase = \"Dead\"\nkind = \"wind\"\nudl = 1\n")),
                HasSubstr("load.kind: got another kind than the case has so far, expected permanent"));
    EXPECT_THAT(Messages(FloorBeam({}, "[[load]]\ncase = \"Dead\"\nudl = 1\npoint = 2\nat = 3\n")),
                HasSubstr("load: got 2 loads, expected one of udl"));
    EXPECT_THAT(Messages(FloorBeam({}, "[[load]]\ncase = \"Dead\"\n")), HasSubstr("load: got no load"));
    EXPECT_THAT(Messages(FloorBeam({}, "[[load]]\ncase = \"Dead\"\npoint = 1\n")), HasSubstr("load.at: got nothing"));
    EXPECT_THAT(Messages(FloorBeam({}, "[[load]]\ncase = \"other\"\nudl = 1\n")),
                HasSubstr("the case \"other\" is not known yet"));
    EXPECT_THAT(Messages(FloorBeam({}, "[[load]]\ncase = \"Dead\"\ncategory = \"B\"\nudl = 1\n")),
                HasSubstr("load.category: got another category"));
    EXPECT_THAT(Messages(FloorBeam({}, "[[load]]\ncase = \"Dead\"\nreaction = 1\nat = 1\n")),
                HasSubstr("load.reaction: got no eccentricity"));
    EXPECT_THAT(Messages(FloorBeam({}, "[[combination]]\nname = \"A\"\nfactors = { Ded = 1.4 }\n")),
                HasSubstr("combination.factors: got the case \"Ded\", expected one of Dead, Imposed"));
    EXPECT_THAT(Messages(FloorBeam("camber = [0.01, 0.02]\n")),
                HasSubstr("camber: 2 of them, and the beam has 1 spans"));
}

// Each wrong part by itself, among sound ones, with what is said of it.
TEST(BeamFile, EachWrongPartIsNamed)
{
    struct Part {
        const char* keys;
        const char* tables;
        const char* said;
    };
    const Part parts[] = {
        {"", "[[combination]]\nname = \"A\"\nstate = \"ultimate\"\n", "factors: got nothing, expected { Dead"},
        {"", "[[combination]]\nname = \"A\"\nstate = \"ultimate\"\nfactors = 3\n", "factors: got 3, expected { Dead"},
        {"", "[[combination]]\nname = \"A\"\nstate = \"ultimate\"\nfactors = {}\n", "got no factor"},
        {"", "[[combination]]\nname = \"A\"\nstate = \"ultimate\"\nfactors = { Dead = 1.4, DEAD = 1.0 }\n",
         "got a second factor of the case, expected one"},
        {"", "[[combination]]\nname = \"A\"\nstate = \"ultimate\"\nfactors = { Dead = [1.4] }\n", "got a list of 1"},
        {"", "[[combination]]\nname = \"A\"\nstate = \"ultimate\"\nfactors = { Dead = [1.0, 1.4] }\n",
         "got the larger factor second"},
        {"", "[[combination]]\nname = \"A\"\nstate = \"ultimate\"\nfactors = { Snow = 1.4 }\n",
         "got the case \"Snow\", expected one of Dead, Imposed"},
        {"", "[[case]]\nkind = \"wind\"\n", "case.name: got nothing"},
        {"", "[[case]]\nname = \"Crowd\"\n", "kind: got nothing, expected permanent, imposed, snow"},
        {"", "[[case]]\nname = \"Wind\"\nkind = \"storm\"\n", "kind: got \"storm\""},
        {"", "[[case]]\nname = \"Wind\"\n[[case]]\nname = \"WIND\"\n", "got a second case \"WIND\""},
        {"", "[[case]]\nname = \"Wind\"\ncategory = \"B\"\n", "got a category of other loads than imposed ones"},
        {"", "[[load]]\ncase = 5\nudl = 1\n", "case: got 5"},
        {"", "[[load]]\ncase = \"Imposed\"\ncategory = \"B\"\nudl = 1\n",
         "got another category than the case has so far"},
        {"", "[[load]]\ncase = \"Dead\"\nminor = true\nmajor = true\nudl = 1\n", "got minor and major"},
        {"", "[[load]]\ncase = \"Dead\"\ntrapezoid = 3\n", "trapezoid: got one number, expected two loads"},
        {"", "[[load]]\ncase = \"Dead\"\ntrapezoid = [3]\n", "trapezoid: got a list of one"},
        {"", "[[load]]\ncase = \"Dead\"\ntrapezoid = []\n", "got a list of 0"},
        {"", "[[load]]\ncase = \"Dead\"\naxial = 3\nat = 1\nminor = true\n", "got axial with minor or major"},
        {"", "[[load]]\ncase = \"Dead\"\nreaction = 3\nat = 1\nface = 0.1\neccentricity = 0.2\n",
         "got face and eccentricity"},
        {"", "[[load]]\ncase = \"Dead\"\nreaction = 3\nat = 1\n", "got no eccentricity"},
        {"", "[[load]]\ncase = \"Dead\"\npoint = 3\nat = 1\nheight = \"roof\"\n", "height: got \"roof\""},
        {"", "[[load]]\ncase = \"Dead\"\nmoment = 3\nat = 1\nheight = 0.1\n", "got the height of a moment"},
        {"", "[[load]]\ncase = \"Dead\"\npoint = 3\n", "at: got nothing"},
        {"", "[[restraint]]\nat = 2\nto = 3\nholds = \"Top flange lateral\"\n", "got at with from or to"},
        {"", "[[restraint]]\nholds = \"Top flange lateral\"\n", "got no place, expected at, or from and to"},
        {"", "[[restraint]]\nat = \"x\"\nholds = \"Top flange lateral\"\n", "at: got \"x\""},
        {"", "[[restraint]]\nat = 2\nholds = \"Topflange\"\n", "holds: got \"Topflange\""},
        {"", "[[restraint]]\nat = 2\nholds = \"  \"\n", "in one line of 1 to 200 bytes"},
        {"", "[[restraint]]\nat = 2\nholds = \"Top\\nflange\"\n", "in one line of 1 to 200 bytes"},
        {"deflection = 3\n", "", "deflection: got 3, expected { imposed"},
        {"deflection = true\n", "", "deflection: got true, expected { imposed"},
        {"deflection = {}\n", "", "got no limit"},
        {"self-weight = \"no\"\n", "", "self-weight: got \"no\""},
        {"camber = []\n", "", "camber: got a list of 0"},
        {"hinges = [3.0, 3.0]\n", "", "a second hinge at 3 m"},
    };
    for (const Part& part : parts) {
        const Beam beam = Read(FloorBeam(part.keys, part.tables));
        EXPECT_TRUE(beam.made.HasErrors()) << part.said;
        EXPECT_THAT(Messages(beam), HasSubstr(part.said)) << part.keys << part.tables;
    }
    const auto said = [](std::string from, std::string to) {
        std::string text = FloorBeam();
        const std::size_t at = text.find(from);
        EXPECT_NE(at, std::string::npos) << from;
        return Messages(text.replace(at, from.size(), to));
    };
    EXPECT_THAT(said("\"S275\"", "\"S275, S355\""), HasSubstr("expected a grade without a comma"));
    EXPECT_THAT(said("\"S275\"", "275"), HasSubstr("grade: got 275"));
    EXPECT_THAT(said("UB 457x191x67", "UB 457, x"), HasSubstr("expected a section without a comma"));
    EXPECT_THAT(said("UB 457x191x67", std::string(201, 'x')), HasSubstr("in one line of 1 to 200 bytes"));
    EXPECT_THAT(said("length = 9.0", "length = 1e-7"), HasSubstr("length"));
}

// Words of the same meaning, and numbers instead of lists.
TEST(BeamFile, TakesEachFormOfAKey)
{
    const Statics::Beam beam = BeamOf("length = 8\nsupports = \"pinned\"\nself-weight = false\n"
                                      "[[restraint]]\nat = [2, 3]\nholds = \"Free\"\n"
                                      "[[restraint]]\nfrom = 4\nholds = \"None\"\n"
                                      "[[case]]\nname = \"Wind\"\n"
                                      "[[load]]\nkind = \"snow-above-1000m\"\nudl = 1\nheight = \"shear centre\"\n"
                                      "[[load]]\ncase = \"wind\"\nudl = 1\nheight = \"bottom flange\"\n");
    ASSERT_EQ(beam.cases.size(), 2u);
    EXPECT_EQ(beam.cases[0].kind, ActionKind::Wind);
    EXPECT_EQ(beam.cases[1].kind, ActionKind::SnowAbove1000m);
    ASSERT_EQ(beam.loads.size(), 2u);
    EXPECT_EQ(beam.loads[0].reference, Steel::SHR_CENTRE);
    EXPECT_EQ(beam.loads[1].reference, Steel::BOT_FLANGE);
    ASSERT_EQ(beam.restraints.size(), 1u);
    EXPECT_EQ(beam.restraints[0].to, 8.0);
    const Beam bare = Read(std::string(HEAD) + "length = 8\nsupports = \"pinned\"\nself-weight = false\n");
    EXPECT_TRUE(bare.made.HasErrors());
    EXPECT_THAT(Messages(bare), HasSubstr("no loads"));
}

TEST(BeamFile, IsKnownByItsContentOrItsName)
{
    EXPECT_TRUE(IsBeamText("standard input", "# a beam\n\n  title = \"x\"\n"));
    EXPECT_TRUE(IsBeamText("standard input", "[[load]]\n"));
    EXPECT_TRUE(IsBeamText("standard input", "\xEF\xBB\xBF\"title\" = 1\r\n"));
    EXPECT_TRUE(IsBeamText("x.toml", "TITLE,x\n"));
    EXPECT_FALSE(IsBeamText("standard input", "TITLE,a = b\n"));
    EXPECT_FALSE(IsBeamText("standard input", "# only = this\n"));
    EXPECT_FALSE(IsBeamText("x.csv", "SECTION UB = x\n"));
    EXPECT_FALSE(IsBeamText("x.csv", ""));
    for (const char* key : {"'self-weight' ", "a_1.B-2 ", "Z9\t", "\"a b\" "})
        EXPECT_TRUE(IsBeamText("x.csv", std::string(key) + "= 1\n")) << key;
    for (const char* line : {"a/b = 1", "{ = 1", "~ = 1", "@ = 1", "a: 1", "= 1", "a\n= 1", "'open = 1"})
        EXPECT_FALSE(IsBeamText("x.csv", line)) << line;
    EXPECT_THAT(Messages(std::string("TITLE,x\nSECTION,UB 457x191x67,ROLLED\n")),
                HasSubstr("beam.toml:1: error: this is a member file"));
}

// As an editor of another system writes it.
TEST(BeamFile, LinesMayEndWithACarriageReturn)
{
    std::string ended;
    for (const char c : FloorBeam())
        ended += c == '\n' ? std::string("\r\n") : std::string(1, c);
    const Beam beam = Read(ended);
    const Beam known = Read(FloorBeam());
    EXPECT_EQ(Messages(beam), Messages(known));
    ASSERT_EQ(beam.members.size(), known.members.size());
    ASSERT_FALSE(beam.members.empty());
    for (std::size_t i = 0; i < known.members.size(); ++i)
        EXPECT_EQ(beam.made.members[i].text, known.made.members[i].text);
    EXPECT_EQ(CheckBeam(beam, DefaultCode(), false).Utilisation(),
              CheckBeam(known, DefaultCode(), false).Utilisation());
    EXPECT_THAT(Messages(ended + "udl = 3 \r more\r\n"), HasSubstr("a control character"));
}

TEST(BeamFile, SyntaxHasLineAndColumn)
{
    EXPECT_THAT(Messages(std::string(HEAD) + "length = 9,0\n"), HasSubstr("beam.toml:3: error: column "));
    EXPECT_THAT(Messages(std::string(HEAD) + "length = 9\nlength = 8\n"), HasSubstr("beam.toml:4: error: column "));
}

TEST(BeamDocument, IsWhatStandsInTheFile)
{
    const Json document = BeamDocument("beam.toml", "title = \"B\\u00e4r\"\nlength = 9\nfactor = 1.5\nflag = true\n"
                                                    "limits = [inf, -inf, nan, 2.5]\nday = 2026-11-24\n"
                                                    "hour = 10:20:30\n[[load]]\nudl = 3\n[[load]]\nat = [1, 2]\n");
    EXPECT_EQ(nlohmann::json(document),
              nlohmann::json::parse(R"({"title": "Bär", "length": 9, "factor": 1.5, "flag": true,
        "limits": ["inf", "-inf", "nan", 2.5], "day": "2026-11-24", "hour": "10:20:30",
        "load": [{"udl": 3}, {"at": [1, 2]}]})"));
    for (const auto& [bytes, said] : {std::pair{"length = \n", "beam.toml:1"}, {"a = 1\na = 2\n", "beam.toml:2"}}) {
        try {
            BeamDocument("beam.toml", bytes);
            ADD_FAILURE() << bytes;
        } catch (const BadInput& fault) {
            EXPECT_THAT(fault.what(), HasSubstr(said));
        }
    }
    EXPECT_THROW(BeamDocument("beam.toml", "\xFF\xFE\xFF"), BadInput);
}

TEST(BeamFile, NotesOfDefaultsAreTold)
{
    const std::string messages = Messages(std::string(HEAD) + "length = 6\n[[load]]\nkind = \"imposed\"\nudl = 5\n");
    EXPECT_THAT(messages, AllOf(HasSubstr("note: supports: not given: pinned"),
                                HasSubstr("note: combinations: not given: those of BS 5950-1"),
                                HasSubstr("note: deflection: not given: span/360"), Not(HasSubstr("warning"))));
}

} // namespace
} // namespace Keltrix::BeamTest

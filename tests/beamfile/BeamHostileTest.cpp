// Files that nobody means well: an error each, in short time, and no crash.

#include <chrono>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "beamfile/BeamSupport.h"
#include "text/BadInput.h"

namespace Keltrix::BeamTest {
namespace {

using testing::HasSubstr;

std::string Repeated(const std::string& text, std::size_t times)
{
    std::string all;
    all.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i)
        all += text;
    return all;
}

// The first error, of whatever kind; fails where there is none or it takes long.
std::string Refused(const std::string& text)
{
    const auto start = std::chrono::steady_clock::now();
    std::string message;
    try {
        const Beam beam = Read(text);
        for (const Defect& defect : beam.made.defects)
            if (defect.severity == Severity::Error && message.empty()) message = BeamMessage(defect, "beam.toml");
        EXPECT_TRUE(beam.members.empty());
    } catch (const BadInput& failure) {
        message = failure.what();
    }
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    EXPECT_LT(took.count(), 10.0) << text.substr(0, 80);
    EXPECT_FALSE(message.empty()) << text.substr(0, 200);
    return message;
}

TEST(BeamHostile, NumbersThatAreNone)
{
    for (const char* number : {"nan", "inf", "-inf", "1e308", "-1e308", "1e400", "-5", "0", "true", "\"9\"", "[]", "{}",
                               "1979-05-27", "0xFFFFFFFFFFFFFFF", "1e-320"})
        Refused("section = \"UB 457x191x67\"\ngrade = \"S275\"\nlength = " + std::string(number) + "\n");
    for (const char* number : {"nan", "inf", "-inf", "1e308", "true", "[true]", "\"x\"", "[[]]", "{ a = 1 }"}) {
        Refused(FloorBeam({}, "[[load]]\ncase = \"Dead\"\nudl = " + std::string(number) + "\n"));
        Refused(FloorBeam({}, "[[load]]\ncase = \"Dead\"\npoint = 1\nat = " + std::string(number) + "\n"));
        Refused(FloorBeam("camber = " + std::string(number) + "\n"));
    }
}

// No design code takes another limit of the plastic modulus.
TEST(BeamHostile, PlasticRatiosBeyondTheirRange)
{
    for (const char* ratio : {"9", "1.51", "0.99", "0", "-1.2"})
        EXPECT_THAT(Refused(FloorBeam("plastic-to-elastic = " + std::string(ratio) + "\n")),
                    HasSubstr("expected a ratio from 1 to 1.5"));
}

TEST(BeamHostile, WrongTypesOfEveryKey)
{
    const char* const keys[] = {
        "type",    "net-to-gross", "plastic-to-elastic", "shear-lag", "moment-factor", "effective-lengths",
        "spans",   "hinges",       "inclination",        "column",    "self-weight",   "axially-held-at",
        "pattern", "combinations", "combination",        "brittle",   "camber",        "deflection",
        "case"};
    for (const char* key : keys)
        for (const char* value : {"[[1]]", "[{ x = 1 }]", "1979-05-27T07:32:00Z", "nan", "{ nobody = 1 }"})
            Refused(FloorBeam(std::string(key) + " = " + value + "\n"));
}

TEST(BeamHostile, ManyParts)
{
    Refused(FloorBeam({}, Repeated("[[load]]\ncase = \"Dead\"\nudl = 1\n", 10000)));
    Refused(FloorBeam({}, Repeated("[[restraint]]\nat = 1\nholds = \"Free\"\n", 10000)));
    Refused("section = \"UB 457x191x67\"\ngrade = \"S275\"\nspans = [" + Repeated("8,", 10000) + "8]\n");
    EXPECT_THAT(Refused(Repeated("# a comment\n", 1000000)), HasSubstr("larger than 1024 KiB"));
    Refused(Repeated("\n", 1000000));
    std::string cases;
    for (int i = 0; i < 40; ++i)
        cases += "[[load]]\ncase = \"c" + std::to_string(i) + "\"\nkind = \"imposed\"\nudl = 1\n";
    EXPECT_THAT(Refused(FloorBeam({}, cases)), HasSubstr("expected at most 30"));
}

TEST(BeamHostile, ManyCombinationsAreRefusedOrMade)
{
    for (const int spans : {4, 10, 30, 50}) {
        std::string text = "section = \"UB 457x191x67\"\ngrade = \"S275\"\nspans = [" +
                           Repeated("8,", static_cast<std::size_t>(spans)) + "]\n";
        for (const char* category : {"A", "B", "C", "D", "E"})
            text += "[[load]]\ncase = \"" + std::string(category) + "\"\nkind = \"imposed\"\ncategory = \"" + category +
                    "\"\nudl = 5\n";
        const auto start = std::chrono::steady_clock::now();
        const Beam beam = Read(text);
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        EXPECT_LT(took.count(), 20.0) << spans << " spans";
        EXPECT_LE(beam.members.size(), MOST_COMBINATIONS);
        EXPECT_EQ(beam.members.empty(), beam.made.HasErrors()) << Messages(beam);
    }
}

TEST(BeamHostile, DeepNesting)
{
    for (const std::size_t depth : {20u, 300u, 100000u}) {
        Refused("a = " + Repeated("[", depth) + Repeated("]", depth) + "\n");
        Refused("a = " + Repeated("{ a = ", depth) + "1" + Repeated(" }", depth) + "\n");
        Refused(Repeated("a.", depth) + "a = 1\n");
        Refused("[" + Repeated("a.", depth) + "a]\n");
        Refused("[" + Repeated("\"a\".", depth) + "a]\n");
        Refused("x = [\"\"\"\n\"\"\", { " + Repeated("a.", depth) + "a = 1 }]\n");
    }
}

TEST(BeamHostile, Bytes)
{
    Refused("");
    Refused("\n");
    Refused("# nothing\n");
    Refused(std::string("title = \"a\0b\"\n", 14));
    Refused("title = \"\xFF\xFE\"\n");
    Refused("title = \"\xED\xA0\x80\"\n");
    Refused("\xFF\xFEt\0i\0");
    for (const char* header : {"[", "[[", "[ ", "[\n", "[=]\n", "[[,]]\n", "[ [ #\n", "[.]\n", "[\b[load]]\n",
                               "\f[=]\n", "\xEF\xBB\xBF[=]\n", "[]\n", "[[]]\n", "[[\xC3\xA9]]\n"}) {
        Refused(header);
        Refused(FloorBeam({}, header));
    }
    EXPECT_THAT(Refused(FloorBeam("\xC7\x87 = 1\n")), HasSubstr("beyond ASCII outside of quotes"));
    EXPECT_THAT(Refused(FloorBeam("type = \"\"\"rolled\"\"\"\n")), HasSubstr("a text in three quotes"));
    EXPECT_THAT(Refused(FloorBeam("type = \'\'\'rolled\'\'\'\n")), HasSubstr("a text in three quotes"));
    for (const char* header : {"[-]", "[_x]", "['x']", "[[\"x\"]]", "[9]", "[~]", "[{]"})
        Refused(FloorBeam({}, std::string(header) + "\nudl = 1\n"));
    for (const char* value : {"[}", "[ }]", "[1,}", "[{},}]", "{ a = [\t} }", "[ # {\n\n }]", "['a', # b\r\n }"}) {
        const std::string text = std::string("camber = ") + value + "\n";
        EXPECT_THAT(Refused(text), HasSubstr("a closing brace where a value is expected")) << value;
        Refused(FloorBeam(text));
    }
    for (const char* value : {"}", "{}}", "{,}", "[1 }]", "{ a = }", "[{}", "{ a = '[', }"})
        Refused(std::string("camber = ") + value + "\n");
    EXPECT_FALSE(Read(FloorBeam("camber = [0.01] # [}\n")).made.HasErrors());
    EXPECT_FALSE(
        Read(FloorBeam("# \xC7\x87\n", "[[load]]\ncase = \"\xC7\x87\"\nkind = \"wind\"\nudl = 1\n")).made.HasErrors());
    Refused(FloorBeam("title = \"again\"\n"));
    Refused("title = \"open\n");
    // What would move a terminal's cursor does not get there.
    EXPECT_EQ(Refused("\"\\u001b[2J\" = 1\n").find('\x1b'), std::string::npos);
}

// One byte changed, taken out or put in: read, or refused; nothing else.
TEST(BeamHostile, DamagedByOneByte)
{
    const std::string sound = FloorBeam("deflection = { imposed = 360, total = 250 }\n");
    std::mt19937 random(7);
    for (int i = 0; i < 1500; ++i) {
        std::string text = sound;
        const std::size_t at = random() % text.size();
        const char byte = static_cast<char>(random() % 256);
        if (i % 3 == 0) text[at] = byte;
        if (i % 3 == 1) text.erase(at, 1);
        if (i % 3 == 2) text.insert(at, 1, byte);
        try {
            const Beam beam = Read(text);
            EXPECT_EQ(beam.members.empty(), beam.made.HasErrors()) << text;
        } catch (const BadInput&) {
        }
    }
}

} // namespace
} // namespace Keltrix::BeamTest

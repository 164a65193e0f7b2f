// Files of national choices.

#include <cmath>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "check/AnnexFile.h"
#include "check/CheckedMember.h"
#include "memberfile/MemberFile.h"
#include "text/BadInput.h"
#include "text/SourceText.h"
#include "text/Text.h"

namespace Keltrix::Host {
namespace {

using ::testing::HasSubstr;

constexpr char HEAD[] = "title = \"Annex of a test\"\nbase = \"recommended\"\n";

bool HasEC3() { return DesignCodes().size() > 1; }

CodeChoice Read(const std::string& text)
{
    CodeChoice choice;
    choice.code = &DesignCodeNamed("ec3");
    ReadAnnexFile("my.toml", text, choice);
    return choice;
}

std::string Fault(const std::string& text)
{
    try {
        Read(text);
    } catch (const BadInput& fault) {
        return fault.what();
    }
    return {};
}

double Choice(const CodeChoice& choice, const std::wstring& key)
{
    const auto& choices = choice.code->Description().nationalChoices;
    for (std::size_t i = 0; i < choices.size(); ++i)
        if (choices[i].key == key) return choice.settings.National(i);
    throw std::runtime_error("no such key");
}

} // namespace

TEST(AnnexFile, GivesWhatItSaysAndLeavesTheRestToItsBase)
{
    if (!HasEC3()) GTEST_SKIP() << "Left out: KELTRIX_BUILD_EC3=ON has national choices";
    const CodeChoice choice =
        Read(std::string(HEAD) + "combinations = \"en1990\"\ngamma-M1 = 1.10\nrolled-last-curve = \"d\"\n"
                                 "rolled-second-ratio = 3.1\nstrengths = \"product-standards\"\n");
    EXPECT_EQ(choice.settings.annex, 1u);
    EXPECT_EQ(Utf8(choice.settings.annexTitle), "Annex of a test");
    EXPECT_EQ(Choice(choice, L"gamma-M1"), 1.10);
    EXPECT_EQ(Choice(choice, L"rolled-last-curve"), 4.0);
    EXPECT_EQ(Choice(choice, L"strengths"), 1.0);
    EXPECT_TRUE(std::isnan(Choice(choice, L"gamma-M0")));
    EXPECT_EQ(AnnexOf(choice), "Annex of a test");
    EXPECT_EQ(Utf8(Design::CombinationsOf(choice.code->Description(), choice.settings)), "en1990");
}

TEST(AnnexFile, IsRefusedWithEveryFaultAndItsLine)
{
    if (!HasEC3()) GTEST_SKIP() << "Left out: KELTRIX_BUILD_EC3=ON has national choices";
    const std::string fault =
        Fault(std::string(HEAD) + "gama-M0 = 1.0\neta = 2\nrolled-first-curve = \"e\"\ncombinations = \"en1991\"\n");
    EXPECT_THAT(fault, HasSubstr("my.toml:3"));
    EXPECT_THAT(fault, HasSubstr("gamma-M0"));
    EXPECT_THAT(fault, HasSubstr("my.toml:4"));
    EXPECT_THAT(fault, HasSubstr("(6.2.6(3)), 1 to 1.2"));
    EXPECT_THAT(fault, HasSubstr("my.toml:5"));
    EXPECT_THAT(fault, HasSubstr("a, b, c or d"));
    EXPECT_THAT(fault, HasSubstr("my.toml:6"));
    EXPECT_THAT(Fault("title = \"x\"\n"), HasSubstr("base"));
    EXPECT_THAT(Fault("base = \"uk\"\n"), HasSubstr("title"));
    EXPECT_THAT(Fault("title = [\n"), HasSubstr("no TOML"));
    EXPECT_THAT(Fault(std::string(HEAD) + "gamma-M0 = 0.5\n"), HasSubstr("1 to 1.5"));
    CodeChoice other = DefaultCode();
    EXPECT_THROW(ReadAnnexFile("my.toml", HEAD, other), BadInput);
}

// Partial factors divide: NplRd of γM0 = 1.05 is that of 1.0 over 1.05; what the file says stands among the assumptions.
// The same guards as for beam files.
TEST(AnnexFile, HostileBytesAreRefused)
{
    if (!HasEC3()) GTEST_SKIP() << "Left out: KELTRIX_BUILD_EC3=ON has national choices";
    EXPECT_THAT(Fault("[\n"), HasSubstr("my.toml:1: expected the name of a table"));
    EXPECT_THAT(Fault("title = [}\n"), HasSubstr("my.toml:1: no TOML: a closing brace where a value is expected"));
    EXPECT_THAT(Fault("title = \"x\"\ntitle = \"y\"\n"), HasSubstr("my.toml:2: column 9: no TOML"));
    std::string deep = "a";
    for (int i = 0; i < 40000; ++i)
        deep += ".a";
    EXPECT_THAT(Fault(deep + " = 1\n"), HasSubstr("my.toml:1: a key of more than 16 parts"));
    EXPECT_THAT(Fault("\xC7\x87 = 1\n"), HasSubstr("a character beyond ASCII outside of quotes"));
    EXPECT_THAT(Fault(std::string(100001, '#')), HasSubstr("larger than 100 kB"));
}

TEST(AnnexFile, ReachesTheCheckAndIsTold)
{
    if (!HasEC3()) GTEST_SKIP() << "Left out: KELTRIX_BUILD_EC3=ON has national choices";
    const CSection section(L"UC 254x254x89");
    const CSteelGrade grade(L"S355", 0.0, 0.0, 0.0, 1.0);
    const CodeChoice plain = Read(HEAD);
    const CodeChoice divided = Read(std::string(HEAD) + "gamma-M0 = 1.05\ngamma-M1 = 1.25\n");
    const auto value = [&](const CodeChoice& choice, const std::wstring& symbol) {
        const auto table = choice.code->Capacities(section, grade, {4.0}, choice.settings);
        for (const Design::Capacity& c : table.crossSection)
            if (c.resistance.symbol == symbol) return c.resistance.value;
        return *table.buckling.front().values.front();
    };
    EXPECT_NEAR(value(divided, L"NplRd"), value(plain, L"NplRd") / 1.05, 1.0);
    EXPECT_NEAR(value(divided, L"Nby"), value(plain, L"Nby") / 1.25, 1.0);
    const auto member = divided.code->NewMember(divided.settings);
    EXPECT_THAT(Utf8(member->Member().DesOptName(0)), HasSubstr("Annex of a test"));
}

} // namespace Keltrix::Host

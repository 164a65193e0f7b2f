// Which design code a command takes, and what the code asks beyond the member file.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"
#include "check/DesignCodes.h"
#include "io/Failure.h"
#include "text/Json.h"

namespace Keltrix::App {
namespace {

using ::testing::HasSubstr;
using Trial::RunKsteel;

// Every command that takes a design code, on something that it is fine with.
const std::vector<std::string>& Commands()
{
    static const std::vector<std::string> commands{"check examples/floor_beam.csv",
                                                   "report examples/floor_beam.csv -o -",
                                                   "design examples/floor_beam.csv --family UB",
                                                   "capacity 'UB 457x191x67'",
                                                   "validate examples/floor_beam.csv",
                                                   "spans examples/floor_beam.csv"};
    return commands;
}

TEST(CodeOption, TheDefaultIsTheFirstOneThatIsBuiltIn)
{
    for (const std::string& command : Commands()) {
        const auto plain = RunKsteel(command);
        EXPECT_EQ(plain.code, 0) << command << "\n" << plain;
        for (const char* name : {"bs5950", "BS5950"}) {
            const auto named = RunKsteel(command + " --code " + name);
            EXPECT_EQ(named.code, 0) << command;
            EXPECT_EQ(named.out, plain.out) << command;
        }
    }
}

TEST(CodeOption, AnUnknownNameIsBadInputWithTheNamesThatThereAre)
{
    for (const std::string& command : Commands()) {
        for (const char* option : {" --code rope", " --code=rope"}) {
            const auto result = RunKsteel(command + option);
            EXPECT_EQ(result.code, 2) << command << "\n" << result;
            EXPECT_EQ(result.err, "ksteel: --code: got \"rope\", expected bs5950 or ec3\n") << command;
            EXPECT_EQ(result.out, "") << command;
        }
    }
    EXPECT_EQ(RunKsteel("show examples/floor_beam.csv --code bs5950").code, 3) << "show takes none";
}

TEST(CodeOption, AnAnnexThatTheCodeDoesNotHaveIsBadInput)
{
    for (const std::string& command : Commands()) {
        const auto result = RunKsteel(command + " --annex uk");
        EXPECT_EQ(result.code, 2) << command << "\n" << result;
        EXPECT_EQ(result.err, "ksteel: --annex: got \"uk\", expected none: BS 5950-1:2000 has no national annexes\n")
            << command;
    }
}

// The code is read before all other options; what looks like it there and is something else must not choose it.
TEST(CodeOption, CannotBeTheValueOfAnotherOption)
{
    const auto result = RunKsteel("report examples/floor_beam.csv -o - --client=--code --job=x");
    EXPECT_EQ(result.code, 0) << result;
    EXPECT_THAT(result.out, HasSubstr("--code"));
    EXPECT_NE(RunKsteel("report examples/floor_beam.csv -o - --client --code rope").code, 0);
}

TEST(CodeOption, AChoiceSaysWhatItGotAndWhatItExpected)
{
    for (const char* command :
         {"check examples/tie.csv", "report examples/tie.csv -o -", "design examples/tie.csv --family L"}) {
        for (const char* value : {"glue", "1", "Bolt", "''"}) {
            const auto result = RunKsteel(std::string(command) + " --connection " + value);
            EXPECT_EQ(result.code, 3) << command << "\n" << result;
            const std::string got = std::string(value) == "''" ? "" : value;
            EXPECT_EQ(result.err,
                      "ksteel: --connection: got \"" + got + "\", expected bolt or bolts; see ksteel --help\n")
                << command;
        }
    }
}

TEST(CodeOption, ReportAndDesignTakeTheOptionsOfTheCode)
{
    const auto sheet = [](const std::string& options) {
        return RunKsteel("report examples/column.csv -o - " + options).out;
    };
    EXPECT_THAT(sheet("--simple-column"), HasSubstr("4.7.7</td><td>0"));
    EXPECT_THAT(sheet(""), ::testing::Not(HasSubstr("4.7.7</td><td>0")));
    const auto design = [](const std::string& options) {
        const auto result = RunKsteel("design examples/column.csv --family UC --format json " + options);
        EXPECT_EQ(result.code, 0) << result;
        return Json::parse(result.out)[0]["passing"].dump();
    };
    EXPECT_THAT(design("--simple-column"), HasSubstr("(4.7.7)"));
    EXPECT_THAT(design(""), ::testing::Not(HasSubstr("(4.7.7)")));
}

TEST(CodesCommand, SaysWhatEachCodeIs)
{
    const auto text = RunKsteel("codes");
    EXPECT_EQ(text.code, 0) << text;
    EXPECT_THAT(text.out, HasSubstr("bs5950: BS 5950-1:2000, with its 2001 corrigendum (default)"));
    const Json codes = Json::parse(RunKsteel("codes --format json").out);
    ASSERT_EQ(codes.size(), 2u);
    EXPECT_EQ(codes[1]["id"], "ec3");
    EXPECT_EQ(codes[1]["default"], false);
    EXPECT_EQ(codes[1]["annexes"].size(), 2u);
    const Json& code = codes[0];
    EXPECT_EQ(code["id"], "bs5950");
    EXPECT_EQ(code["default"], true);
    EXPECT_TRUE(code["annexes"].empty());
    ASSERT_EQ(code["options"].size(), 7u);
    // Each option is one of check, and each is in the table.
    const std::string help = RunKsteel("check --help").out;
    for (const Json& option : code["options"]) {
        const std::string name = "--" + option["name"].get<std::string>();
        EXPECT_THAT(help, HasSubstr(name));
        EXPECT_THAT(text.out, HasSubstr(name));
        EXPECT_EQ(option["kind"] == "choice", !option["values"].empty()) << name;
        EXPECT_EQ(option["kind"] == "length", option["least"].is_number()) << name;
    }
}

// E = 210 GPa in the grade, 205 GPa by clause 3.1.3 without.
TEST(SpansCommand, DeflectsWithTheModulusOfTheGrade)
{
    const auto stiffness = [](const std::string& grade) {
        const Trial::TestDirectory directory;
        std::string text = Trial::GOOD_MEMBER;
        text.replace(text.find("GRADE,S275"), 10, "GRADE," + grade);
        const auto result = RunKsteel("spans --format json '" + directory.Write("a.csv", text) + "'");
        EXPECT_EQ(result.code, 0) << result;
        return Json::parse(result.out)[0]["spans"][0]["deflection_major"]["EI"].get<double>();
    };
    EXPECT_NEAR(stiffness("User_defined,275e6,0,210e9,1") / stiffness("S275"), 210.0 / 205.0, 1e-12);
    EXPECT_EQ(stiffness("User_defined,275e6,0,0,1"), stiffness("S275"));
}

// What a module brings is looked at before it is used.
class BadCode : public Design::DesignCode {
public:
    explicit BadCode(Design::CodeDescription description) : m_description(std::move(description)) {}
    const Design::CodeDescription& Description() const override { return m_description; }
    std::unique_ptr<Design::CodeMember> NewMember(const Design::CodeSettings&) const override { return nullptr; }
    bool HasGrade(const CString&) const override { return false; }
    bool IsUserGrade(const CSteelGrade&) const override { return false; }
    CString GradeRefusal(const CSteelGrade&) const override { return {}; }
    CString SectionRefusal(const CSection&) const override { return {}; }
    double ElasticModulus(const CSteelGrade&) const override { return 0.0; }
    double ShearModulus(const CSteelGrade&) const override { return 0.0; }
    Design::CapacityTable Capacities(const CSection&, const CSteelGrade&, const std::vector<double>&,
                                     const Design::CodeSettings&) const override
    {
        return {};
    }

private:
    Design::CodeDescription m_description;
};

std::string FaultOf(const Design::CodeDescription& description)
{
    const BadCode code(description);
    try {
        AddDesignCode(code, "rope.so");
    } catch (const BadInput& fault) {
        return fault.what();
    }
    return {};
}

TEST(DesignCodes, AreRefusedWhereTheyCannotBeUsed)
{
    Design::CodeDescription good;
    good.id = L"rope";
    good.title = L"Ropes";
    good.grades = {{L"hemp", L""}};
    const auto with = [&](auto change) {
        Design::CodeDescription d = good;
        change(d);
        return FaultOf(d);
    };
    const auto taken = with([](auto& d) { d.id = L"bs5950"; });
    EXPECT_EQ(taken, "rope.so: there is a design code bs5950 already");
    EXPECT_THAT(with([](auto& d) { d.id = L""; }), HasSubstr("its id is no word"));
    EXPECT_THAT(with([](auto& d) { d.id = L"two words"; }), HasSubstr("its id is no word"));
    EXPECT_THAT(with([](auto& d) { d.title = L""; }), HasSubstr("it has no title"));
    EXPECT_THAT(with([](auto& d) { d.grades.clear(); }), HasSubstr("it has no grades"));
    using Design::OptionKind;
    EXPECT_THAT(with([](auto& d) {
                    d.options = {{OptionKind::Choice, L"knot", L"Knot", {}}};
                }),
                HasSubstr("no values"));
    EXPECT_THAT(with([](auto& d) {
                    d.options = {{OptionKind::Length, L"slack", L"Slack", {}, 1.0, 1.0}};
                }),
                HasSubstr("no range"));
    EXPECT_THAT(with([](auto& d) {
                    d.options = {{OptionKind::Flag, L"--wet", L"Wet", {}}};
                }),
                HasSubstr("an option's name"));
    EXPECT_EQ(DesignCodes().size(), 2u) << "none of them was added";
}

} // namespace
} // namespace Keltrix::App

// What leaves the program of a checked member against the check itself, over random members.

#include <cmath>

#include <gtest/gtest.h>

#include "check/CheckedMember.h"
#include "check/FindingsJson.h"
#include "check/SectionChoice.h"
#include "check/TopicSummary.h"
#include "design/RandomMember.h"
#include "keltrix/bs5950/SteelMemberBS5950.h"
#include "support/RandomCases.h"
#include "text/Json.h"
#include "text/Text.h"

namespace Keltrix::Host {
namespace {

struct MemberCase {
    std::string text;
    std::string how; // to do it again
};

// As the library writes it: its section, grade and forces, torsion in some.
MemberCase RandomCase(unsigned seed)
{
    static const wchar_t* const SECTIONS[] = {L"UB 457x191x67", L"UC 254x254x89", L"RHS 200x100x6.3", L"CHS 168.3x5",
                                              L"CFRHS 60x40x5", L"L 100x100x10",  L"PFC 200x90x30",   L"T 229x191x34"};
    std::mt19937 random(seed);
    const auto share = [&] { return std::uniform_real_distribution<double>(0.0, 1.0)(random); };
    DesignTest::Member layout = DesignTest::RandomMember(random);
    if (share() < 0.3) {
        for (Steel::CSubSpan& s : layout.subSpans) {
            Vec3<double> moment = s.GetMomentsLeft();
            moment.x = 500.0;
            s.SetMomentsLeft(moment);
        }
    }
    // Forces that do not balance.
    if (share() < 0.3) {
        Vec3<double> moment = layout.subSpans.front().GetMomentsRight();
        moment.y += 5e3;
        layout.subSpans.front().SetMomentsRight(moment);
    }
    BS5950::CSteelMemberBS5950 member;
    const wchar_t* const section = SECTIONS[random() % std::size(SECTIONS)];
    CSteelGrade grade(L"S275", 0, 0, 0, 1);
    EXPECT_TRUE(member.SetKeltrixSec(CSection(CString(section))));
    EXPECT_TRUE(member.SetGrade(grade));
    EXPECT_TRUE(member.SetMemberPointVec(layout.points));
    EXPECT_TRUE(member.SetSubSpanVec(layout.subSpans));
    member.SetTitle(L"random");
    return {Utf8(member.CSVInputData(grade)), "seed " + std::to_string(seed) + ", " + Utf8(std::wstring_view(section))};
}

MemberFile FileOf(const std::string& text)
{
    MemberPiece piece;
    piece.bytes = text;
    return MemberFile("random.csv", piece);
}

const char* NameOf(BS5950::Place place)
{
    return place == BS5950::Place::LeftEnd ? "left end" : place == BS5950::Place::RightEnd ? "right end" : "inside";
}

// A utilisation of a resistance of none is infinite, which JSON does not have.
Json InJson(double value) { return std::isfinite(value) ? Json(value) : Json(); }

TEST(CheckedMember, EveryRowOfTheJsonIsItsPosition)
{
    int inside = 0;
    int twisted = 0;
    for (int seed = 1; seed <= TestSupport::RandomCases(2000); ++seed) {
        const MemberCase random = RandomCase(static_cast<unsigned>(seed));
        const MemberFile file = FileOf(random.text);
        ASSERT_EQ(file.Check().Errors(), 0u) << random.how << "\n" << random.text;
        const CheckedMember checked = CheckMember(file, 0, DefaultCode(), false);
        const auto& positions = dynamic_cast<const BS5950::CSteelMemberBS5950&>(*checked.coded).Positions();
        const Json rows = JsonOf(checked)["utilisation"]["local"];
        ASSERT_EQ(rows.size(), positions.size()) << random.how;
        for (std::size_t i = 0; i < positions.size(); ++i) {
            const BS5950::PositionResult& p = positions[i];
            const Json& row = rows[i];
            ASSERT_EQ(row["position"], p.x) << random.how;
            ASSERT_EQ(row["sub_span"], p.subSpan + 1) << random.how;
            ASSERT_EQ(row["place"], NameOf(p.place)) << random.how;
            ASSERT_EQ(row["combined"], InJson(p.combined)) << random.how;
            ASSERT_EQ(row["axial"], InJson(p.axial)) << random.how;
            ASSERT_EQ(row["moment_major"], InJson(p.major)) << random.how;
            ASSERT_EQ(row["moment_minor"], InJson(p.minor)) << random.how;
            ASSERT_EQ(row["shear_major"], InJson(std::fmax(p.shearMajor, p.shearBuckling))) << random.how;
            ASSERT_EQ(row["shear_minor"], InJson(p.shearMinor)) << random.how;
            ASSERT_EQ(row["torsion"].is_null(), p.actions.Mt != 0.0) << random.how;
            inside += p.place == BS5950::Place::Inside ? 1 : 0;
            twisted += p.actions.Mt != 0.0 ? 1 : 0;
        }
    }
    EXPECT_GT(inside, TestSupport::RandomCases(500)) << "positions between points are what the rows were wrong of";
    EXPECT_GT(twisted, TestSupport::RandomCases(500));
}

// No part is above the overall utilisation, and what passes is not above 1.
TEST(CheckedMember, TheWholeAgreesWithItsParts)
{
    for (int seed = 1; seed <= TestSupport::RandomCases(2000); ++seed) {
        const MemberCase random = RandomCase(static_cast<unsigned>(seed));
        const CheckedMember checked = CheckMember(FileOf(random.text), 0, DefaultCode(), false);
        double largest = std::fmax(checked.result->UtilBucklingCombined(), checked.result->UtilBucklingLT());
        for (const Design::LocalFinding& f : checked.findings.positions)
            largest = std::fmax(
                largest, std::fmax(std::fmax(f.combined, f.axial), std::fmax(std::fmax(f.momentMajor, f.momentMinor),
                                                                             std::fmax(f.shearMajor, f.shearMinor))));
        ASSERT_GE(checked.result->UtilOverAll(), largest * (1.0 - 1e-12)) << random.how;
        if (checked.Status() == "pass") {
            ASSERT_LE(checked.result->UtilOverAll(), 1.0) << random.how;
        }
    }
}

// A beam of 6 m under a uniform load in kN/m, free along it, with a torsional moment in N·m.
std::string BeamText(double load, double torsion = 0.0, const wchar_t* section = L"UB 457x191x67", int type = SEC_UNDEF)
{
    DesignTest::Member layout;
    DesignTest::AddPoint(layout, 0.0, L"Pinned");
    DesignTest::AddPoint(layout, 3.0, L"F1L F2L TR");
    DesignTest::AddPoint(layout, 6.0, L"Pinned");
    const double V = 3e3 * load;
    const double M = 4.5e3 * load;
    DesignTest::AddSubSpan(layout, -V, 0.0, 0.0, -M);
    DesignTest::AddSubSpan(layout, 0.0, V, -M, 0.0);
    for (Steel::CSubSpan& s : layout.subSpans) {
        Vec3<double> left = s.GetMomentsLeft(), right = s.GetMomentsRight();
        left.x = right.x = torsion;
        s.SetMomentsAll(left, right);
    }
    BS5950::CSteelMemberBS5950 member;
    CSection made{CString(section)};
    CSecComp component = made.Component(0);
    component.SetType(type);
    made.SetComponent(0, component);
    CSteelGrade grade(L"S275", 0, 0, 0, 1);
    EXPECT_TRUE(member.SetKeltrixSec(made));
    EXPECT_TRUE(member.SetGrade(grade));
    EXPECT_TRUE(member.SetMemberPointVec(layout.points));
    EXPECT_TRUE(member.SetSubSpanVec(layout.subSpans));
    member.SetTitle(L"beam");
    return Utf8(member.CSVInputData(grade));
}

CheckedMember CheckText(const std::string& text) { return CheckMember(FileOf(text), 0, DefaultCode(), false); }

// What is not known in one load case is not known of the member, in whichever order the cases come.
TEST(CheckedMember, AnUnknownFigureStaysTheWorstInAnyOrderOfTheCases)
{
    const double unknown = std::nan("");
    for (const int unknownCase : {0, 1, 2}) {
        std::vector<CheckedMember> cases;
        for (int i = 0; i < 3; ++i) {
            cases.push_back(CheckText(BeamText(10.0 + i)));
            if (i != unknownCase) continue;
            cases.back().findings.positions.front().momentMajor = unknown;
            cases.back().momentMajor = {unknown, unknown, 1.0, 1.0};
        }
        const CheckedMember envelope = Envelope(std::move(cases));
        EXPECT_TRUE(std::isnan(envelope.findings.positions.front().momentMajor)) << unknownCase;
        EXPECT_FALSE(std::isnan(envelope.findings.positions.front().shearMajor)) << unknownCase;
        EXPECT_TRUE(std::isnan(envelope.momentMajor.greatest)) << unknownCase;
        EXPECT_TRUE(std::isnan(envelope.momentMajor.least)) << unknownCase;
    }
    CheckedMember checked = CheckText(BeamText(10.0));
    for (const std::size_t place : {0u, 1u, 2u}) {
        std::vector<Design::RuleFinding> rules(3);
        for (Design::RuleFinding& rule : rules) {
            rule.status = Design::CheckStatus::Failed;
            rule.topic = Design::Topic::Other;
            rule.utilisation = 0.5;
        }
        rules[place].utilisation = unknown;
        checked.findings.rules = rules;
        EXPECT_EQ(SummaryOf(checked, Design::Topic::Other).worst, &checked.findings.rules[place]);
        EXPECT_EQ(checked.findings.Worst(0), &checked.findings.rules[place]);
    }
}

// Torsion in one of the cases is torsion of the member at the same places; what one case failed, all did.
TEST(CheckedMember, AnEnvelopeKeepsTorsionAndFailureOfAnyCase)
{
    for (const std::size_t odd : {0u, 1u}) {
        std::vector<CheckedMember> cases;
        for (std::size_t i = 0; i < 2; ++i)
            cases.push_back(CheckText(i == odd ? BeamText(400.0, 500.0) : BeamText(10.0)));
        EXPECT_EQ(cases[1 - odd].Status(), "pass");
        const CheckedMember envelope = Envelope(std::move(cases));
        EXPECT_EQ(envelope.Status(), "fail");
        EXPECT_FALSE(envelope.passed);
        EXPECT_GT(envelope.Utilisation(), 1.0);
        for (const Design::LocalFinding& f : envelope.findings.positions)
            EXPECT_TRUE(f.hasTorsion) << f.x;
    }
}

// The status of a section is the worst of its cases: a section of which one case has an open rule does not pass, and where one fails it fails.
TEST(SectionChoice, EachSectionHasTheWorstOfItsCases)
{
    SectionSearch search;
    search.families = {"UB"};
    search.code = DefaultCode();
    const auto choose = [&](double first, double second, double torsion, const wchar_t* section, int type) {
        std::vector<CheckedMember> cases;
        cases.push_back(CheckText(BeamText(first, 0.0, section, type)));
        cases.push_back(CheckText(BeamText(second, torsion, section, type)));
        cases[0].name = "one";
        cases[1].name = "two";
        return ChooseSection(cases, search);
    };
    const auto lightest = [](const SectionChoice& choice) {
        return choice.passing.empty() ? "none" : choice.passing.front().name + " " + choice.passing.front().status;
    };
    const SectionChoice light = choose(5.0, 20.0, 0.0, L"UB 457x191x67", SEC_UNDEF);
    const SectionChoice same = choose(20.0, 20.0, 0.0, L"UB 457x191x67", SEC_UNDEF);
    const SectionChoice turned = choose(20.0, 5.0, 0.0, L"UB 457x191x67", SEC_UNDEF);
    ASSERT_FALSE(light.passing.empty());
    EXPECT_EQ(light.passing.size(), 6u);
    EXPECT_EQ(lightest(light), lightest(same));
    EXPECT_EQ(lightest(light), lightest(turned));
    EXPECT_EQ(light.passing.front().utilisation, turned.passing.front().utilisation);
    EXPECT_NE(light.passing.front().governing.find(", in two"), std::string::npos);
    EXPECT_NE(turned.passing.front().governing.find(", in one"), std::string::npos);
    for (const Candidate& one : light.failing) {
        EXPECT_EQ(one.status, "fail");
        EXPECT_GT(one.utilisation, 1.0);
    }
    // Torsion is not evaluated: nothing passes, in whichever case it is.
    EXPECT_EQ(lightest(choose(5.0, 20.0, 200.0, L"UB 457x191x67", SEC_UNDEF)), "none");
    EXPECT_EQ(lightest(choose(20.0, 20.0, 200.0, L"UB 457x191x67", SEC_UNDEF)), "none");
    EXPECT_EQ(lightest(choose(20.0, 5.0, 200.0, L"UB 457x191x67", SEC_UNDEF)), "none");
    // A section that is said to be welded is offered as welded, which is never more.
    const SectionChoice welded = choose(5.0, 20.0, 0.0, L"UB 457x191x67", SEC_WELDED);
    ASSERT_FALSE(welded.passing.empty());
    EXPECT_GE(welded.passing.front().entry->massPerMetre, light.passing.front().entry->massPerMetre);
}

// Each kind of option of each code takes what it says, and nothing else.
TEST(CodeOptions, TakeTheirValuesAlone)
{
    int flags = 0, choices = 0, lengths = 0;
    for (const Design::DesignCode* code : DesignCodes()) {
        for (const Design::CodeOption& option : code->Description().options) {
            const std::string name = Utf8(option.name);
            const auto take = [&](const std::string& value) {
                Design::CodeSettings settings;
                SetOption(*code, name, value, settings);
            };
            switch (option.kind) {
            case Design::OptionKind::Flag:
                ++flags;
                EXPECT_NO_THROW(take("")) << name;
                EXPECT_THROW(take("1"), BadInput) << name;
                break;
            case Design::OptionKind::Choice:
                ++choices;
                for (const Design::Term& value : option.values)
                    EXPECT_NO_THROW(take(Utf8(value.name))) << name;
                EXPECT_THROW(take("neither"), BadInput) << name;
                break;
            case Design::OptionKind::Length:
                ++lengths;
                EXPECT_NO_THROW(take(Shortest(option.most))) << name;
                for (const std::string& bad : {Shortest(option.most * 1.001), std::string("nan"), std::string("1 m"),
                                               std::string(), std::string("-1")})
                    EXPECT_THROW(take(bad), BadInput) << name << ' ' << bad;
                break;
            }
        }
        Design::CodeSettings settings;
        EXPECT_THROW(SetOption(*code, "none-such", "", settings), BadInput);
    }
    EXPECT_GT(flags, 0);
    EXPECT_GT(choices, 0);
    EXPECT_GT(lengths, 0);
}

TEST(CheckedMember, EveryQuantityHasItsWord)
{
    std::string words;
    for (const Design::Quantity one :
         {Design::Quantity::Force, Design::Quantity::Moment, Design::Quantity::Stress, Design::Quantity::Length,
          Design::Quantity::Distance, Design::Quantity::Area, Design::Quantity::Modulus, Design::Quantity::None})
        words += std::string(QuantityWord(one)) + ';';
    EXPECT_EQ(words, "force;moment;stress;length;distance;area;modulus;;");
}

// Load cases of one member have one grade: of user grades the figures count, not the name alone.
TEST(CheckedMember, MembersOfOneNameOfUserGradeDifferByItsFigures)
{
    const std::string text = BeamText(10.0);
    const std::size_t line = text.find("GRADE");
    ASSERT_NE(line, std::string::npos) << text;
    const std::size_t end = text.find('\n', line);
    const auto withGrade = [&](const std::string& grade) {
        return CheckText(text.substr(0, line) + grade + text.substr(end));
    };
    const CheckedMember one = withGrade("GRADE,User_defined,300000000,400000000,205000000000,1");
    const CheckedMember other = withGrade("GRADE,User_defined,310000000,400000000,205000000000,1");
    EXPECT_EQ(DifferenceOf(one, one), "");
    EXPECT_NE(DifferenceOf(one, other).find("grade"), std::string::npos) << DifferenceOf(one, other);
}

} // namespace
} // namespace Keltrix::Host

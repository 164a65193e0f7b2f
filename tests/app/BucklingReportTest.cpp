#include "check/BucklingReport.h"

#include <cmath>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"
#include "BucklingSupport.h"
#include "check/DesignCodes.h"
#include "support/RandomCases.h"
#include "text/Json.h"
#include "text/Text.h"

namespace Keltrix::App {
namespace {

using DesignTest::AddPoint;
using DesignTest::Member;
using Stability::ShapeSample;
using StabilityTest::AddSpan;
using StabilityTest::Beam;
using StabilityTest::Compress;
using StabilityTest::ConstantsOf;
using StabilityTest::PI;
using StabilityTest::UniformMoment;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Trial::ReportOf;

constexpr const wchar_t* UB = L"UB 457x191x82";

TEST(BucklingReport, AForkBeamUnderUniformMomentHasTheMomentOfTheHandCalculation)
{
    // Published: Iz = 1870 cm⁴, It = 69.2 cm⁴, Iw = 0.922 dm⁶. L = 6 m, E = 205, G = 78.85 kN/mm².
    // Pz = π² 205e9 1870e-8/36 = 1050.97 kN; G It + π² E Iw/L² = 54.56 + 51.82 = 106.38 kN·m².
    // Mcr = √(1050.97 106.38) = 334.4 kN·m.
    const BucklingReport report = ReportOf(Beam(6.0, 100e3, 100e3), UB);
    ASSERT_TRUE(report.Critical());
    EXPECT_NEAR(report.Critical()->Mcr, 334.4e3, 0.4e3) << "three printed figures";
    EXPECT_NEAR(report.Critical()->lambda, 3.344, 0.004);
    EXPECT_NEAR(report.Critical()->Mcr, UniformMoment(ConstantsOf(CSection(UB), 205e9, 205e9 / 2.6), 6.0), 0.334)
        << "the closed form with the library's own constants";
    ASSERT_EQ(report.units.size(), 1u);
    EXPECT_DOUBLE_EQ(report.units[0].moment, -100e3) << "sagging is below zero";
    EXPECT_EQ(report.units[0].Ncr, 0.0);
    EXPECT_TRUE(report.IsStable());
    EXPECT_THAT(VerdictSentence(report), HasSubstr("buckles from 0 m to 6 m"));
    EXPECT_THAT(report.remarks, IsEmpty());
}

TEST(BucklingReport, ACoupleInsideAUnitIsToldAndNotKnownToBeStable)
{
    Member m = Beam(10.0, 0.0, 0.0);
    m.points.insert(m.points.begin() + 1, m.points[0]);
    m.points[1].SetPos(5.0);
    m.points[1].SetRestraint(Steel::CRestraint());
    m.points[1].Set1Index(2);
    m.points[2].Set1Index(3);
    m.subSpans.assign(2, m.subSpans[0]);
    m.subSpans[1].Set1Index(2);
    const Vec3<double> none(0, 0, 0), shear(0, 0, -52e2);
    for (Steel::CSubSpan& s : m.subSpans)
        s.SetForcesAll(shear, shear);
    m.subSpans[0].SetMomentsAll(none, {0, -26e3, 0});
    m.subSpans[1].SetMomentsAll({0, 26e3, 0}, none);
    const BucklingReport report = ReportOf(m, UB);
    ASSERT_EQ(report.units.size(), 1u);
    EXPECT_DOUBLE_EQ(report.units[0].found.largestJump, 52e3);
    EXPECT_DOUBLE_EQ(report.units[0].found.largestJumpAt, 5.0);
    ASSERT_TRUE(report.Critical());
    EXPECT_GT(report.Critical()->lambda, 10.0);
    EXPECT_FALSE(report.IsStable());
    ASSERT_EQ(report.remarks.size(), 1u);
    EXPECT_THAT(report.remarks[0], HasSubstr("The moment jumps"));
    EXPECT_EQ(VerdictSentence(report).find("under the forces given"), std::string::npos);
}

TEST(BucklingReport, AStrutHasTheForceOfEuler)
{
    // A UC 203x203x46 buckles by flexure first: Ncr = π² 205e9 1550e-8/25 = 1254 kN with the published Iz = 1550 cm⁴.
    Member m = Beam(5.0, 0.0, 0.0);
    Compress(m, 200e3);
    const BucklingReport report = ReportOf(m, L"UC 203x203x46");
    ASSERT_TRUE(report.Critical());
    EXPECT_NEAR(report.Governing()->Ncr, 1254e3, 3e3);
    EXPECT_NEAR(report.Governing()->Ncr, PI * PI * 205e9 * ConstantsOf(CSection(L"UC 203x203x46")).Iz / 25.0,
                1254e3 * 1e-5);
    EXPECT_EQ(report.Critical()->Mcr, 0.0);
    EXPECT_THAT(VerdictSentence(report), Not(HasSubstr("Mcr")));
    EXPECT_THAT(report.remarks, ElementsAre("Flexural buckling in the plane of the web is not part of this factor."));
    EXPECT_EQ(report.CriticalReversed(), nullptr) << "in tension nothing buckles";
}

// The largest compression by walking along the unit; a unit can begin or end at a contraflexure inside a sub-span.
double CompressionOf(const Member& m, double start, double end)
{
    constexpr int steps = 64;
    double largest = 0.0;
    for (std::size_t s = 0; s < m.subSpans.size(); ++s) {
        const double a = m.points[s].GetPos();
        const double h = m.points[s + 1].GetPos() - a;
        const double from = std::max(a, start);
        const double to = std::min(a + h, end);
        if (to - from < 1e-9) continue;
        for (int i = 0; i <= steps; ++i) {
            const double share = (from + (to - from) * i / steps - a) / h;
            largest = std::max(largest, -m.subSpans[s].GetForcesLeft().x * (1.0 - share) -
                                            m.subSpans[s].GetForcesRight().x * share);
        }
    }
    return largest;
}

TEST(BucklingReport, TellsWhatTheLibraryFindsOfRandomMembers)
{
    const unsigned int seed = 20261;
    std::mt19937 random(seed);
    int answered = 0;
    for (int i = 0; i < TestSupport::RandomCases(1000); ++i) {
        const Member m = DesignTest::RandomMember(random);
        const bool continuity = i % 2 == 1;
        const BucklingReport report = ReportOf(m, UB, continuity);
        const auto loads = StabilityTest::Analyse(m, ConstantsOf(CSection(UB), 205e9, 205e9 / 2.6), continuity);
        SCOPED_TRACE("seed " + std::to_string(seed) + ", member " + std::to_string(i));
        ASSERT_EQ(report.refusal, Utf8(loads.reason));
        ASSERT_EQ(report.units.size(), loads.units.size());
        ASSERT_EQ(report.governing, loads.governing) << "no two units of a random member have the same factor";
        answered += report.Critical() ? 1 : 0;
        for (std::size_t k = 0; k < report.units.size(); ++k) {
            const BucklingUnit& unit = report.units[k];
            const Stability::Unit& found = loads.units[k];
            ASSERT_EQ(unit.found.start, found.start);
            ASSERT_NEAR(std::fabs(unit.moment), found.largestMoment, 1e-9 * found.largestMoment);
            ASSERT_EQ(unit.freeMotion.empty(), found.outcome != Stability::Outcome::NotHeld);
            const double compression = CompressionOf(m, found.start, found.end);
            ASSERT_NEAR(unit.compression, compression, 1e-9 * (1.0 + compression));
            if (!found.positive) continue;
            ASSERT_EQ(unit.found.positive->lambda, found.positive->lambda);
            ASSERT_NEAR(unit.Ncr, found.positive->lambda * compression, 1e-9 * (1.0 + unit.Ncr));
        }
    }
    EXPECT_GT(answered, TestSupport::RandomCases(300));
}

// --- Not held ---

Member Propped(const wchar_t* left, const wchar_t* right)
{
    Member m;
    AddPoint(m, 0.0, left);
    AddSpan(m, 6.0, 0.0, 0.0, 10e3, L"Free", right);
    return m;
}

TEST(BucklingReport, AFreeMotionIsToldByTheFlangesThatMove)
{
    const auto motion = [](const wchar_t* left, const wchar_t* right) {
        const BucklingReport report = ReportOf(Propped(left, right), UB);
        EXPECT_FALSE(report.IsHeld());
        EXPECT_FALSE(report.IsStable());
        EXPECT_EQ(report.Critical(), nullptr);
        EXPECT_EQ(report.CriticalReversed(), nullptr);
        return report.Governing() ? report.Governing()->freeMotion : std::string();
    };
    const std::string both = "flange 1 (top) and flange 2 (bottom) ";
    EXPECT_EQ(motion(L"Pinned", L"Free"), both + "turn on plan about 0 m together");
    EXPECT_EQ(motion(L"Free", L"Pinned"), both + "turn on plan about 6 m together");
    EXPECT_EQ(motion(L"F1L", L"F1L"), "flange 1 (top) stays, flange 2 (bottom) shifts sideways");
    EXPECT_EQ(motion(L"F2L", L"F2L"), "flange 1 (top) shifts sideways, flange 2 (bottom) stays");
    EXPECT_EQ(motion(L"TR", L"TR"), both + "shift sideways together");
    EXPECT_EQ(motion(L"MINV", L"MINV"), both + "shift sideways to opposite sides");
    const BucklingReport report = ReportOf(Propped(L"F1L", L"F1L"), UB);
    EXPECT_EQ(VerdictSentence(report),
              "Not held from 0 m to 6 m: flange 1 (top) stays, flange 2 (bottom) shifts sideways");
    EXPECT_EQ(MakeUnitTable(report).rows.at(0).at(2), "not held");
}

TEST(BucklingReport, AFreeMotionOfTheLibraryIsTheOneInTheWords)
{
    const BucklingReport report = ReportOf(Propped(L"F1L", L"F1L"), UB);
    for (const ShapeSample& sample : ShownShape(report.Governing()->found)) {
        EXPECT_NEAR(sample.flange[0], 0.0, 1e-9);
        EXPECT_NEAR(std::fabs(sample.flange[1]), 1.0, 1e-9);
    }
}

// --- Nothing buckles, refused ---

TEST(BucklingReport, ATieDoesNotBuckleAndIsStable)
{
    Member m = Beam(6.0, 0.0, 0.0);
    Compress(m, -100e3);
    const BucklingReport report = ReportOf(m, UB);
    EXPECT_TRUE(report.IsHeld());
    EXPECT_TRUE(report.IsStable());
    EXPECT_EQ(report.Governing(), nullptr);
    EXPECT_THAT(VerdictSentence(report), HasSubstr("Nothing buckles"));
    EXPECT_EQ(MakeUnitTable(report).rows.at(0).at(2), "none");
    EXPECT_TRUE(report.CriticalReversed());
}

TEST(BucklingReport, WhatCannotBeAnalysedHasAReasonAndIsNotStable)
{
    const BucklingReport angle = ReportOf(Beam(3.0, 1e3, 1e3), L"L 100x100x10");
    EXPECT_THAT(angle.refusal, HasSubstr("angle"));
    EXPECT_FALSE(angle.IsStable());
    EXPECT_THAT(VerdictSentence(angle), HasSubstr("Not analysed: "));
    Member m = Beam(3.0, 1e3, 1e3);
    EXPECT_EQ(ReportOf(m, L"PFC 200x90x30").refusal, "");
    EXPECT_THAT(ReportOf(m, L"PFC 200x90x30").remarks,
                ElementsAre("The loads are taken to act in the plane of the shear centre, which lies off the web."));
    Compress(m, 10e3);
    EXPECT_THAT(ReportOf(m, L"PFC 200x90x30").refusal, HasSubstr("shear centre"));
    EXPECT_FALSE(ReportOf(m, L"PFC 200x90x30").IsStable());
    EXPECT_NE(ReportOf(m, L"no such section").refusal, "");
}

TEST(BucklingReport, IsStableOnlyWithTheEstimatedErrorTakenOff)
{
    const Member m = Beam(6.0, 100e3, 100e3);
    const double lambda = ReportOf(m, UB).Critical()->lambda;
    const auto at = [&](double share) {
        const double moment = 100e3 * lambda * share;
        return ReportOf(Beam(6.0, moment, moment), UB);
    };
    const double error = ReportOf(m, UB).Critical()->error;
    EXPECT_FALSE(at(1.0).IsStable());
    EXPECT_FALSE(at(1.0 - 0.5 * error).IsStable());
    EXPECT_TRUE(at(1.0 - 2.0 * error).IsStable());
    EXPECT_THAT(VerdictSentence(at(1.2)), HasSubstr("buckles under the forces given or less"));
}

TEST(BucklingReport, WhatTakesNoPartIsTold)
{
    Member m = Beam(6.0, 100e3, 100e3);
    m.subSpans[0].SetMomentsAll({50.0, -100e3, 2e3}, {50.0, -100e3, 2e3});
    m.points[0].SetRestraint(DesignTest::Restraint(L"F12L TR F1P"));
    EXPECT_THAT(ReportOf(m, UB).remarks,
                ElementsAre("The moments about the minor axis take no part.", "The torsion takes no part.",
                            "Partial restraints and restraint by friction hold nothing here."));
    auto whole = m.points[0].GetRestraint();
    whole.Add(static_cast<int>(Steel::CRestraint::FLANGE1_WARPING));
    m.points[0].SetRestraint(whole);
    EXPECT_EQ(ReportOf(m, UB).remarks.size(), 2u) << "what is held wholly as well";
    Member unbalanced = Beam(6.0, 100e3, 100e3);
    unbalanced.subSpans[0].SetMomentsRight({0.0, -50e3, 0.0});
    EXPECT_THAT(ReportOf(unbalanced, UB).remarks, ElementsAre(HasSubstr("do not balance")));
}

TEST(BucklingReport, ReversedIsTheFactorOfAllForcesTurned)
{
    // A load 0.3 m above the shear centre; turned it pulls upwards there, and steadies the beam.
    const Member down = StabilityTest::CentrallyLoaded(8.0, 0.3);
    const Member up = [&] {
        Member m = down;
        for (auto& s : m.subSpans) {
            s.SetForcesAll({0, 0, -s.GetForcesLeft().z}, {0, 0, -s.GetForcesRight().z});
            s.SetMomentsAll({0, -s.GetMomentsLeft().y, 0}, {0, -s.GetMomentsRight().y, 0});
        }
        return m;
    }();
    const BucklingReport a = ReportOf(down, UB);
    const BucklingReport b = ReportOf(up, UB);
    EXPECT_NEAR(-a.CriticalReversed()->lambda / b.Critical()->lambda, 1.0, 1e-6);
    EXPECT_NEAR(-b.CriticalReversed()->lambda / a.Critical()->lambda, 1.0, 1e-6);
    EXPECT_GT(b.Critical()->lambda, 1.5 * a.Critical()->lambda);
}

TEST(BucklingReport, OfUnitsThatMirrorEachOtherTheFirstGoverns)
{
    const BucklingReport report = ReportOf(StabilityTest::TwoSpans(), UB);
    EXPECT_EQ(report.governing, 0);
    EXPECT_NEAR(report.units[0].found.positive->lambda, report.units[1].found.positive->lambda,
                1e-9 * report.units[0].found.positive->lambda);
}

TEST(BucklingReport, AnErrorIsRoundedUpToOneFigure)
{
    EXPECT_EQ(ErrorText(2.1e-5), "0.003 %");
    EXPECT_EQ(ErrorText(2e-5), "0.002 %");
    EXPECT_EQ(ErrorText(1.3e-4), "0.02 %");
    EXPECT_EQ(ErrorText(1e-4), "0.01 %");
    EXPECT_EQ(ErrorText(9.5e-4), "0.1 %");
    EXPECT_EQ(ErrorText(1e-9), "0.001 %");
    EXPECT_EQ(ErrorText(0.25), "30 %");
}

TEST(BucklingReport, ContinuityIsHandedOn)
{
    const BucklingReport apart = ReportOf(StabilityTest::TwoSpans(), UB);
    const BucklingReport together = ReportOf(StabilityTest::TwoSpans(), UB, true);
    EXPECT_EQ(apart.units.size(), 2u);
    ASSERT_EQ(together.units.size(), 1u);
    EXPECT_TRUE(together.continuity);
    EXPECT_TRUE(together.units[0].found.continuous);
}

// --- Moduli ---

TEST(BucklingReport, ModuliAreThoseOfTheCodeOrOfTheGradeOrOfSteel)
{
    const CSteelGrade user(L"User_defined", 275e6, 430e6, 200e9, 1.0);
    const CSteelGrade S275(L"S275", 0.0, 0.0, 0.0, 1.0);
    EXPECT_EQ(ModuliOf(nullptr, S275).E, 205e9);
    EXPECT_DOUBLE_EQ(ModuliOf(nullptr, S275).G, 205e9 / 2.6);
    EXPECT_EQ(ModuliOf(nullptr, S275).source, "steel");
    EXPECT_EQ(ModuliOf(nullptr, user).E, 200e9);
    EXPECT_EQ(ModuliOf(nullptr, user).source, "the grade");
    EXPECT_EQ(ModuliOf(nullptr, CSteelGrade(L"User_defined", 275e6, 430e6, 0.0, 1.0)).E, 205e9);
    if (DesignCodes().empty()) return;
    const Moduli code = ModuliOf(DefaultCode().code, S275);
    EXPECT_EQ(code.E, DefaultCode().code->ElasticModulus(S275));
    EXPECT_EQ(code.G, DefaultCode().code->ShearModulus(S275));
    EXPECT_EQ(code.source, Utf8(std::wstring_view(DefaultCode().code->Description().title)));
}

// --- Shape ---

TEST(BucklingShape, GoesThroughItsSamplesAndFollowsParabolas)
{
    const auto sample = [](double x) { return ShapeSample{x, x * x, 1.0 - x, {2.0 * x * x - x, 3.0}}; };
    const std::vector<ShapeSample> shape{sample(0.0), sample(0.5), sample(0.7), sample(2.0), sample(2.1)};
    for (double x = 0.0; x <= 2.1; x += 0.013) {
        const ShapeSample at = ShapeAt(shape, x);
        EXPECT_NEAR(at.v, x * x, 1e-12) << x;
        EXPECT_NEAR(at.phi, 1.0 - x, 1e-12) << x;
        EXPECT_NEAR(at.flange[0], 2.0 * x * x - x, 1e-12) << x;
        EXPECT_NEAR(at.flange[1], 3.0, 1e-12) << x;
    }
    for (const ShapeSample& s : shape)
        EXPECT_NEAR(ShapeAt(shape, s.x).v, s.v, 1e-12);
    EXPECT_EQ(ShapeAt(shape, -1.0).v, 0.0) << "before the start that of the start";
    EXPECT_EQ(ShapeAt(shape, 5.0).v, 2.1 * 2.1);
    const std::vector<ShapeSample> line{sample(0.0), sample(2.0)};
    EXPECT_NEAR(ShapeAt(line, 1.0).v, 2.0, 1e-12) << "two samples: a straight line";
}

TEST(BucklingShape, OfAForkBeamIsASine)
{
    const BucklingReport report = ReportOf(Beam(6.0, 100e3, 100e3), UB);
    for (double x = 0.0; x <= 6.0; x += 0.1)
        EXPECT_NEAR(ShapeAt(ShownShape(report.Governing()->found), x).flange[0], std::sin(PI * x / 6.0), 1e-3) << x;
}

// --- The command ---

std::string FileOf(const std::string& section, const std::string& left, const std::string& right, double axial = 0.0,
                   double load = 10e3)
{
    const double V = 3.0 * load;
    const auto number = [](double value) { return Shortest(value); };
    std::string text = Trial::GOOD_MEMBER.substr(0, Trial::GOOD_MEMBER.find("MEMBERPOINT"));
    text.replace(text.find("UB 457x191x67"), 13, section);
    return text + "MEMBERPOINT,1,0," + left + ",0\nMEMBERPOINT,2,6," + right +
           ",0\nHEADINGS,Index,Fx-L,Fy-L,Fz-L\nSUBSPAN,1," + number(axial) + ",0," + number(-V) + ',' + number(axial) +
           ",0," + number(V) + ",0,0,0,0,0,0,Free,0\nEND\n";
}

TEST(BucklingCommand, ExitCodesTellStableFromNotHeldUnstableAndNotAnalysed)
{
    const Trial::TestDirectory directory;
    const auto code = [&](const std::string& text) {
        return Trial::RunKsteel("buckling " + directory.Write("member.csv", text)).code;
    };
    EXPECT_EQ(code(FileOf("UB 457x191x67", "Pinned", "Pinned")), 0);
    EXPECT_EQ(code(FileOf("UB 457x191x67", "Pinned", "Pinned", 1e5, 0.0)), 0) << "nothing buckles";
    EXPECT_EQ(code(FileOf("UB 457x191x67", "Pinned", "Free")), 1) << "not held";
    EXPECT_EQ(code(FileOf("UB 457x191x67", "Pinned", "Pinned", 0.0, 100e3)), 1) << "buckles under less";
    EXPECT_EQ(code(FileOf("L 100x100x10", "Pinned", "Pinned")), 1) << "not analysed";
    EXPECT_EQ(code(FileOf("PFC 200x90x30", "Pinned", "Pinned", -1e3)), 1) << "not analysed";
    EXPECT_EQ(code(FileOf("UB 9x9x9", "Pinned", "Pinned")), 2) << "no section";
    EXPECT_EQ(code(FileOf("UB 457x191x67", "Pinned", "Pinned", std::nan(""))), 2);
    EXPECT_EQ(code("nothing"), 2);
    EXPECT_EQ(Trial::RunKsteel("buckling none.csv").code, 2);
    EXPECT_EQ(Trial::RunKsteel("buckling").code, 3);
    EXPECT_EQ(Trial::RunKsteel("buckling examples/floor_beam.csv --split lt").code, 3);
}

TEST(BucklingCommand, JsonHoldsWhatTheReportHolds)
{
    const auto result = Trial::RunKsteel("buckling --format json examples/floor_beam.csv examples/angle_brace.csv");
    ASSERT_EQ(result.code, 1) << result;
    const Json members = Json::parse(result.out);
    ASSERT_EQ(members.size(), 2u);
    const Json& beam = members[0];
    EXPECT_EQ(beam["held"], true);
    EXPECT_EQ(beam["governing"], 0);
    EXPECT_EQ(beam["lambda_cr"], beam["units"][0]["lambda_cr"]);
    EXPECT_DOUBLE_EQ(beam["Mcr"], beam["lambda_cr"].get<double>() * 355.125e3);
    EXPECT_LT(beam["lambda_negative"], 0.0);
    EXPECT_TRUE(beam["Ncr"].is_null());
    const Json& shape = beam["units"][0]["shape"];
    EXPECT_EQ(shape.front()["x"], 0.0);
    EXPECT_EQ(shape.back()["x"], 9.0);
    for (const Json& sample : shape) {
        if (sample["x"] > 6.0) break;
        EXPECT_NEAR(sample["flange_1"], 0.0, 1e-9) << "held along by the deck";
    }
    EXPECT_TRUE(members[1]["held"].is_null());
    EXPECT_TRUE(members[1]["lambda_cr"].is_null());
    EXPECT_TRUE(members[1]["units"].empty());
    EXPECT_THAT(members[1]["refusal"].get<std::string>(), HasSubstr("angle"));
}

// A line for each member, the same as in the array, and one for what is refused.
TEST(BucklingCommand, JsonLinesAreTheEntriesOfTheArray)
{
    const auto array = Trial::RunKsteel("buckling --format json examples/column.csv examples/floor_beam.csv");
    const auto lines =
        Trial::RunKsteel("buckling --format jsonl examples/column.csv missing.csv examples/floor_beam.csv");
    EXPECT_EQ(array.code, 0) << array;
    EXPECT_EQ(lines.code, 2) << lines;
    const Json members = Json::parse(array.out);
    std::istringstream stream(lines.out);
    std::vector<Json> found;
    for (std::string line; std::getline(stream, line);)
        found.push_back(Json::parse(line));
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(found[0], members[0]);
    EXPECT_EQ(found[1]["status"], "refused");
    EXPECT_EQ(found[1]["file"], "missing.csv");
    EXPECT_EQ(found[2], members[1]);
}

TEST(BucklingCommand, TheDrawingIsOfOneMemberAndNeverTakesTheInputsPlace)
{
    const Trial::TestDirectory directory;
    const std::string svg = directory.Path("shape.svg");
    const auto alone = Trial::RunKsteel("buckling examples/floor_beam.csv --svg -");
    EXPECT_EQ(alone.code, 0);
    EXPECT_EQ(alone.out.rfind("<?xml", 0), 0u) << "the drawing alone";
    EXPECT_EQ(alone.out.find("Units"), std::string::npos);
    const auto both = Trial::RunKsteel("buckling examples/floor_beam.csv --svg " + svg);
    EXPECT_EQ(both.code, 0);
    EXPECT_THAT(both.out, HasSubstr("Units"));
    EXPECT_EQ(Trial::ReadWhole(svg), alone.out);
    std::filesystem::remove(svg);
    EXPECT_EQ(Trial::RunKsteel("buckling examples/floor_beam.csv examples/column.csv --svg " + svg).code, 3);
    EXPECT_FALSE(std::filesystem::exists(svg));
    const auto angle = Trial::RunKsteel("buckling examples/tie.csv --svg " + svg);
    EXPECT_EQ(angle.code, 1);
    EXPECT_THAT(angle.err, HasSubstr("no drawing"));
    EXPECT_FALSE(std::filesystem::exists(svg));
    const std::string input = directory.Write("member.csv", Trial::GOOD_MEMBER);
    EXPECT_EQ(Trial::RunKsteel("buckling " + input + " --svg " + input).code, 3);
    EXPECT_EQ(Trial::ReadWhole(input), Trial::GOOD_MEMBER);
}

TEST(BucklingCommand, KeepsTheWidthOfTheTerminal)
{
    for (const std::size_t width : {40u, 80u, 120u}) {
        const auto result = Trial::RunKsteel("buckling examples/column.csv examples/continuous_beam.csv --width " +
                                             std::to_string(width));
        ASSERT_EQ(result.code, 0);
        for (const std::string& line : Trial::LinesOf(result.out))
            EXPECT_LE(DisplayWidth(line), width) << line;
        for (const char* word : {"3.952", "9.696", "4742.5", "Ncr"})
            EXPECT_THAT(result.out, HasSubstr(word)) << width;
    }
}

TEST(BucklingCommand, TwentyThousandSubSpansAreAnsweredAndDrawn)
{
    const int count = 20000;
    const double L = 20.0;
    const double w = 1e3;
    std::string text = Trial::GOOD_MEMBER.substr(0, Trial::GOOD_MEMBER.find("MEMBERPOINT"));
    const auto x = [&](int i) { return L * i / count; };
    const auto V = [&](int i) { return Shortest(-w * (L / 2.0 - x(i))); };
    const auto M = [&](int i) { return Shortest(-w * x(i) * (L - x(i)) / 2.0); };
    for (int i = 0; i <= count; ++i)
        text += "MEMBERPOINT," + std::to_string(i + 1) + ',' + Shortest(x(i)) +
                (i % count == 0 ? ",Pinned,0\n" : ",Free,0\n");
    text += "HEADINGS,Index,Fx-L,Fy-L,Fz-L\n";
    for (int i = 0; i < count; ++i)
        text += "SUBSPAN," + std::to_string(i + 1) + ",0,0," + V(i) + ",0,0," + V(i + 1) + ",0," + M(i) + ",0,0," +
                M(i + 1) + ",0,Free,0\n";
    const Trial::TestDirectory directory;
    const std::string svg = directory.Path("shape.svg");
    const auto result =
        Trial::RunKsteel("buckling --format json " + directory.Write("long.csv", text + "END\n") + " --svg " + svg);
    ASSERT_EQ(result.code, 0) << result.err;
    // The same beam in one sub-span.
    const BucklingReport one = ReportOf(StabilityTest::UniformlyLoaded(L), L"UB 457x191x67");
    const double Mcr = Json::parse(result.out)[0]["Mcr"];
    EXPECT_NEAR(Mcr, one.Critical()->Mcr, 1e-3 * Mcr);
    EXPECT_LT(std::filesystem::file_size(svg), 200000u) << "marks that would run together are left out";
}

} // namespace
} // namespace Keltrix::App

// Lateral-torsional buckling by elastic critical moments (option ltb) against the tables' way, closed forms and laws.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <numbers>
#include <optional>
#include <random>

#include "Members.h"
#include "RandomActions.h"
#include "keltrix/stability/CriticalLoad.h"
#include "keltrix/stability/SectionConstants.h"
#include "support/RandomCases.h"

using Keltrix::TestSupport::RandomCases;

using namespace BS5950Test;

namespace {

constexpr double PI = std::numbers::pi;
constexpr double E = 205e9;
constexpr double G = 205e9 / 2.6;

DesignOptions Elastic()
{
    DesignOptions options;
    options.lateral = LateralMethod::Elastic;
    return options;
}

/// The lateral-torsional spans of a member that is checked in one way.
std::vector<SpanResult> LateralSpans(const Case& given, const DesignOptions& options)
{
    Checked c(given, false);
    c.member.SetOptions(options);
    c.Check();
    return c.Spans(BucklingMode::LateralTorsional);
}

SpanResult OneSpan(const Case& given, const DesignOptions& options)
{
    const std::vector<SpanResult> spans = LateralSpans(given, options);
    EXPECT_EQ(spans.size(), 1u);
    return spans.at(0);
}

std::vector<LedgerEntry> InformationOf(const CSteelMemberBS5950& member, Rule rule)
{
    std::vector<LedgerEntry> entries;
    for (const LedgerEntry& e : member.InformationEntries())
        if (e.rule == rule) entries.push_back(e);
    return entries;
}

} // namespace

// The slenderness of the tables holds γ = 1 - Iy/Ix, which is what the deflection before buckling adds; the elastic one does not. Beside
// that u, v and x are roundings of the same closed form: 0.05 (λ/x)² stands for 4 G J L²/(π² E Iy hs²) with hs² A/J = (x/0.566)².
TEST(ElasticLateral, UniformMomentBetweenForksIsThatOfTheTables)
{
    constexpr unsigned SEED = 59501;
    std::mt19937 random(SEED);
    const auto real = [&](double a, double b) { return std::uniform_real_distribution<double>(a, b)(random); };
    double nearest = 0.0;
    double lost = 0.0;
    for (int i = 0; i < 1000; ++i) {
        const int depth = static_cast<int>(real(150, 900));
        const int width = static_cast<int>(depth * real(0.35, 1.0));
        const double web = depth * real(0.012, 0.03);
        wchar_t name[80];
        std::swprintf(name, 80, L"I %dx%dx%.1fx%.1f", depth, width, web, web * real(1.2, 1.9));
        const double L = 1e-3 * depth * real(4, 40);
        Case given;
        given.section = name;
        given.points = {{0.0, L"Pinned"}, {L, L"Pinned"}};
        const double M = (i % 2 ? 1.0 : -1.0) * 1e4;
        EndMoments(given, L, M, M);
        const SpanResult tables = OneSpan(given, DesignOptions());
        const SpanResult elastic = OneSpan(given, Elastic());
        ASSERT_TRUE(elastic.lateral.elastic) << SEED << " " << i;
        EXPECT_EQ(elastic.m, 1.0);
        EXPECT_EQ(elastic.lateral.modulus, tables.lateral.modulus);
        const SectionProperties s = PropertiesOf(name, SEC_ROLLED);
        const double gamma = 1.0 - s.Iy / s.Ix;
        nearest = std::max(
            nearest, std::abs(elastic.lateral.lt.lambdaLT * std::pow(gamma, 0.25) / tables.lateral.lt.lambdaLT - 1.0));
        EXPECT_LE(elastic.resistance, tables.resistance * 1.0005) << SEED << " " << i;
        lost = std::max(lost, 1.0 - elastic.resistance / tables.resistance);
    }
    EXPECT_LT(nearest, 0.001) << "λLT but for γ";
    EXPECT_GT(nearest, 1e-5) << "two ways";
    // What γ is worth: 12.9 % of Mb at most, of sections as wide as deep.
    EXPECT_LT(lost, 0.135);
    RecordProperty("nearest", std::to_string(nearest));
    RecordProperty("lost", std::to_string(lost));
}

// UB 457x191x67, S275, 6 m between forks, uniform moment, by hand.
TEST(ElasticLateral, ByHand)
{
    Case given;
    EndMoments(given, 6.0, -100e3, -100e3);
    const SpanResult span = OneSpan(given, Elastic());
    const SectionProperties s = PropertiesOf(L"UB 457x191x67", SEC_ROLLED);
    const double Pz = PI * PI * E * s.Iy / 36.0;
    const double Mcr = std::sqrt(Pz * (G * s.J + PI * PI * E * s.H / 36.0));
    EXPECT_NEAR(span.lateral.elastic->Mcr, Mcr, 1e-4 * Mcr);
    const double lambda = std::sqrt(PI * PI * E * s.Sx / Mcr);
    EXPECT_NEAR(span.lateral.lt.lambdaLT, lambda, 1e-4 * lambda);
    // Annex B.2: η = 0.007 (λLT - λL0), φ = (py + (1 + η) pE)/2, pb = pE py/(φ + (φ² - pE py)^0.5).
    const double py = 275e6;
    const double pE = PI * PI * E / (lambda * lambda);
    const double eta = 0.007 * (lambda - 0.4 * std::sqrt(PI * PI * E / py));
    const double phi = 0.5 * (py + (1.0 + eta) * pE);
    const double pb = pE * py / (phi + std::sqrt(phi * phi - pE * py));
    EXPECT_NEAR(span.resistance, pb * s.Sx, 2e-4 * pb * s.Sx);
    EXPECT_NEAR(span.utilisation, 100e3 / (pb * s.Sx), 1e-4);
}

// Table 18 against the shape of the moments in Mcr: the ratio of mLT/Mb by the tables to 1/Mb elastically, with γ taken off, so that only
// the factor of the shape remains. Above 1: the tables are on the safe side.
TEST(ElasticLateral, Table18AgainstTheShapeInMcr)
{
    double least = 1e9, greatest = 0.0;
    const auto compare = [&](const Case& given) {
        const SpanResult tables = OneSpan(given, DesignOptions());
        const SpanResult elastic = OneSpan(given, Elastic());
        const SectionProperties s = PropertiesOf(given.section, SEC_ROLLED);
        // The critical moments, which the factor stands for: C1 of the analysis times mLT, squared slendernesses apart from γ.
        const double gamma = std::sqrt(1.0 - s.Iy / s.Ix);
        const double uniform = PI * PI * E * tables.lateral.modulus / std::pow(tables.lateral.lt.lambdaLT, 2.0) * gamma;
        const double share = elastic.lateral.elastic->Mcr / uniform * tables.m;
        least = std::min(least, share);
        greatest = std::max(greatest, share);
    };
    for (const double L : {4.0, 8.0, 12.0}) {
        Case given;
        given.points = {{0.0, L"Pinned"}, {L, L"Pinned"}};
        for (const double psi : {1.0, 0.5, 0.0, -0.5, -1.0}) {
            EndMoments(given, L, -50e3, -50e3 * psi);
            compare(given);
        }
        Uniform(given, L, 5e3);
        compare(given);
    }
    // 1/mLT is nowhere more than 0.1 % above the C1 of the analysis, and up to 20.3 % below it.
    EXPECT_GT(least, 0.999);
    EXPECT_LT(greatest, 1.21);
    RecordProperty("least", std::to_string(least));
    RecordProperty("greatest", std::to_string(greatest));
}

// Rows of Table 13 under uniform moment, 8 m. Ends that are fixed on plan at both flanges halve the buckling length in theory; the table
// has 0.7 L. Torsion held by friction alone holds nothing in the analysis: where the table has 1.2 L + 2D and passes, the elastic way fails.
TEST(ElasticLateral, RowsOfTable13)
{
    const SectionProperties s = PropertiesOf(L"UB 457x191x67", SEC_ROLLED);
    Case given;
    EndMoments(given, 8.0, -50e3, -50e3);
    const auto with = [&](const wchar_t* ends, const DesignOptions& options) {
        given.points = {{0.0, ends}, {8.0, ends}};
        return OneSpan(given, options);
    };
    const SpanResult pinned = with(L"Pinned", DesignOptions());
    EXPECT_NEAR(pinned.LE, 8.0, 1e-9);
    EXPECT_NEAR(with(L"Pinned", Elastic()).utilisation / pinned.utilisation, 1.02, 0.02);
    const SpanResult fixed = with(L"Fixed", DesignOptions());
    EXPECT_NEAR(fixed.LE, 0.7 * 8.0, 1e-9);
    const SpanResult exact = with(L"Fixed", Elastic());
    EXPECT_LT(exact.utilisation, fixed.utilisation);
    const double k2 = std::pow(2.0 * PI / 8.0, 2.0);
    const double Mcr = std::sqrt(k2 * E * s.Iy * (G * s.J + k2 * E * s.H));
    EXPECT_NEAR(exact.lateral.elastic->Mcr, Mcr, 1e-3 * Mcr);
    const SpanResult friction = with(L"F1L TF MAJV", DesignOptions());
    EXPECT_NEAR(friction.LE, 1.2 * 8.0 + 2.0 * s.D, 1e-9);
    EXPECT_LT(friction.utilisation, 1.0);
    const SpanResult free = with(L"F1L TF MAJV", Elastic());
    EXPECT_EQ(free.lateral.elastic->outcome, Stability::Outcome::NotHeld);
    EXPECT_TRUE(std::isinf(free.utilisation));
}

// A load on the top flange: Table 13 adds 0.2 L and takes mLT = 1; the analysis has the height. The height counts once.
TEST(ElasticLateral, LoadOnTheTopFlange)
{
    const SectionProperties s = PropertiesOf(L"UB 457x191x67", SEC_ROLLED);
    for (const double L : {4.0, 8.0, 12.0}) {
        Case given;
        given.points = {{0.0, L"Pinned"}, {0.5 * L, L"Free"}, {L, L"Pinned"}};
        const double P = 1e4;
        given.force = [=](double x) { return Vector(0, 0, x < 0.5 * L ? -0.5 * P : 0.5 * P); };
        given.moment = [=](double x) { return Vector(0, -0.5 * P * std::min(x, L - x), 0); };
        const double low = OneSpan(given, Elastic()).lateral.elastic->Mcr;
        given.loadHeight = 0.5 * s.D;
        const SpanResult high = OneSpan(given, Elastic());
        EXPECT_TRUE(high.lateral.destabilising);
        EXPECT_EQ(high.m, 1.0);
        // Independent of the module: the analysis itself with the same height.
        DesignTest::Member m;
        DesignTest::AddPoint(m, 0.0, L"Pinned");
        DesignTest::AddSubSpan(m, -0.5 * P, -0.5 * P, 0.0, -0.25 * P * L);
        DesignTest::AddPoint(m, 0.5 * L, L"Free");
        DesignTest::AddSubSpan(m, 0.5 * P, 0.5 * P, -0.25 * P * L, 0.0);
        DesignTest::AddPoint(m, L, L"Pinned");
        CRestraint loaded = RestraintNamed(L"Free");
        loaded.SetLoadHeight(0.5 * s.D);
        m.points[1].SetRestraint(loaded);
        CString reason;
        const auto constants = Stability::MakeSectionConstants(CSection(CString(given.section)), E, G, &reason).value();
        const Design::MomentDiagram major(m.points, m.subSpans, Design::Bending::Major);
        const auto loads = Stability::FindCriticalLoads(m.points, m.subSpans, major, constants);
        const Stability::CriticalLoad& load = *loads.Governing()->positive;
        EXPECT_NEAR(high.lateral.elastic->Mcr, load.Mcr / (1.0 + load.error), 1e-9 * load.Mcr);
        EXPECT_LT(high.lateral.elastic->Mcr, 0.85 * low);
        // The tables are on the safe side for a single load at mid-span.
        const SpanResult tables = OneSpan(given, DesignOptions());
        EXPECT_GT(tables.utilisation, high.utilisation) << L;
    }
}

// The top flange held along a span that hogs. Closed form: Mcr = (G J + (E H + E Iy hs²/4) π²/L²)/hs; Annex G.2.4.1 with a = hs/2, uniform
// moment: λTB = u vt λ, vt = (4a/hs/(1 + (2a/hs)² + 0.05 (λ/x)²))^0.5.
TEST(ElasticLateral, TensionFlangeHeldAlong)
{
    for (const double L : {3.0, 6.0, 12.0}) {
        Case given;
        given.points = {{0.0, L"Pinned"}, {L, L"Pinned"}};
        given.along = L"F1L";
        EndMoments(given, L, 50e3, 50e3);
        const SpanResult span = OneSpan(given, Elastic());
        const SectionProperties s = PropertiesOf(given.section, SEC_ROLLED);
        const double k2 = PI * PI / (L * L);
        const double Mcr = (G * s.J + (E * s.H + E * s.Iy * s.hs * s.hs / 4.0) * k2) / s.hs;
        EXPECT_NEAR(span.lateral.elastic->Mcr, Mcr, 1e-3 * Mcr) << L;
        const double lambda = L / s.ry;
        const double annexG = s.u * std::sqrt(2.0 / (2.0 + 0.05 * std::pow(lambda / s.x, 2.0))) * lambda;
        const double gamma = std::pow(1.0 - s.Iy / s.Ix, 0.25);
        EXPECT_NEAR(span.lateral.lt.lambdaLT * gamma, annexG, 2e-3 * annexG) << L;
        // By the tables the bottom flange is free from support to support; the elastic figure stands beside it.
        Checked tables(given, false);
        tables.Check();
        const std::vector<LedgerEntry> offered = InformationOf(tables.member, Rule::LateralTorsional);
        ASSERT_EQ(offered.size(), 1u) << L;
        EXPECT_EQ(offered[0].utilisation, span.utilisation);
        EXPECT_EQ(offered[0].slenderness, span.lateral.lt.lambdaLT);
        EXPECT_EQ(offered[0].resistance, span.resistance);
        // Without γ a short span has nothing to win.
        if (L >= 6.0) {
            EXPECT_LT(offered[0].utilisation, tables.Entry(Rule::LateralTorsional).utilisation) << L;
        }
        // Beside the findings, and never governing.
        for (const Design::RuleFinding& f : tables.member.Findings().rules)
            EXPECT_NE(f.status, CheckStatus::Information);
        const std::vector<Design::RuleFinding> information = tables.member.Information();
        ASSERT_EQ(information.size(), 1U);
        EXPECT_EQ(information[0].status, CheckStatus::Information);
        EXPECT_EQ(information[0].utilisation, offered[0].utilisation);
        EXPECT_FALSE(information[0].governing);
    }
}

// A cantilever that is held as no row of Table 14 has it: no effective length, a failure; beside it the elastic figure.
TEST(ElasticLateral, CantileverOutsideTheTables)
{
    Case given;
    given.points = {{0.0, L"F2L MAJV MAJR"}, {1.5, L"Free"}, {3.0, L"Free"}};
    const double P = 10e3;
    given.force = [=](double) { return Vector(0, 0, -P); };
    given.moment = [=](double x) { return Vector(0, P * (3.0 - x), 0); };
    Checked tables(given);
    EXPECT_FALSE(tables.Check());
    const LedgerEntry& failed = tables.Entry(Rule::LateralTorsional);
    EXPECT_EQ(failed.status, CheckStatus::Failed);
    EXPECT_TRUE(std::isinf(failed.utilisation));
    // Held at one flange alone at its root it can twist: not held, and told.
    std::vector<LedgerEntry> offered = InformationOf(tables.member, Rule::LateralTorsional);
    ASSERT_EQ(offered.size(), 1u);
    EXPECT_TRUE(std::isinf(offered[0].utilisation));
    EXPECT_NE(std::wstring(offered[0].reason).find(L"not held"), std::wstring::npos);
    Checked elastic(given);
    elastic.member.SetOptions(Elastic());
    EXPECT_FALSE(elastic.Check());
    EXPECT_EQ(elastic.Entry(Rule::LateralTorsional).status, CheckStatus::Failed);
    EXPECT_EQ(elastic.Entry(Rule::LateralTorsional).resistance, 0.0);

    // Encastre: the elastic figure is that of the elastic way.
    given.points[0].second = L"Fixed";
    Checked fixed(given);
    fixed.Check();
    offered = InformationOf(fixed.member, Rule::LateralTorsional);
    ASSERT_EQ(offered.size(), 1u);
    const SpanResult span = OneSpan(given, Elastic());
    EXPECT_EQ(offered[0].utilisation, span.utilisation);
    // Mcr of a cantilever with a tip load is above that of uniform moment over twice its length (Timoshenko: 4.01 for a strip
    // against π/2, more with warping held).
    const SectionProperties s = PropertiesOf(given.section, SEC_ROLLED);
    const double k2 = std::pow(PI / 6.0, 2.0);
    EXPECT_GT(span.lateral.elastic->Mcr, std::sqrt(k2 * E * s.Iy * (G * s.J + k2 * E * s.H)));
    EXPECT_NE(fixed.Verbose().find("For information, lateral-torsional buckling by the elastic critical moment"),
              std::string::npos);
}

// Of the calculation's parts those are marked in which something fails or was not checked: a length that is not held, and no other.
TEST(ElasticLateral, MarksTheLengthsThatAreNotHeld)
{
    const auto marks = [](const wchar_t* right) {
        Case given;
        given.points = {{0.0, L"Pinned"}, {6.0, right}};
        EndMoments(given, 6.0, -50e3, -50e3);
        Checked c(given);
        c.member.SetOptions(Elastic());
        c.Check();
        int marked = 0;
        for (const Design::CalculationPart& part : c.member.Findings().parts)
            marked += part.start < part.end && part.isMarked ? 1 : 0;
        return marked;
    };
    EXPECT_EQ(marks(L"Pinned"), 0);
    EXPECT_EQ(marks(L"MAJV"), 1);
}

// Where the elastic way is asked for and cannot be gone, the tables serve and a warning says so.
TEST(ElasticLateral, WarnsWhereTheTablesServeInstead)
{
    const auto expectTables = [](Checked& tables, Checked& elastic, const wchar_t* why) {
        elastic.member.SetOptions(Elastic());
        tables.Check();
        elastic.Check();
        EXPECT_EQ(tables.Entry(Rule::LateralTorsional).utilisation, elastic.Entry(Rule::LateralTorsional).utilisation);
        EXPECT_GT(tables.Entry(Rule::LateralTorsional).utilisation, 0.0);
        ASSERT_FALSE(elastic.member.Warnings().empty());
        const Design::Warning& warning = elastic.member.Warnings().back();
        EXPECT_EQ(warning.kind, Design::WarningKind::OtherMethod);
        EXPECT_NE(std::wstring(warning.text).find(why), std::wstring::npos) << *warning.text.ToUtf8();
        EXPECT_NE(elastic.Verbose().find("not by the elastic critical moment"), std::string::npos);
        EXPECT_TRUE(elastic.result.GetFlags() & CMemberResult::WARNING);
    };
    Case angle;
    angle.section = L"L 150x150x15";
    EndMoments(angle, 6.0, -2e3, -2e3);
    Checked a(angle), b(angle);
    expectTables(a, b, L"principal axes");

    Case unbalanced;
    Uniform(unbalanced, 6.0, 10e3);
    unbalanced.moment = [](double x) { return Vector(0, -5e3 * x * (6.0 - x) - 30e3 * x / 6.0, 0); };
    Checked c(unbalanced), d(unbalanced);
    expectTables(c, d, L"do not balance");

    Case given;
    EndMoments(given, 6.0, -50e3, -50e3);
    Checked e(given), f(given);
    for (Checked* each : {&e, &f}) {
        each->member.SetLengthOverride(true);
        each->member.SetLyy(-1.0);
        each->member.SetLzz(-1.0);
        each->member.SetLlt(-0.8);
    }
    expectTables(e, f, L"effective length is given");
}

// A couple of 520 kNm at mid-span of a beam that is free to twist there. As two flange forces that keep their directions it gives Mcr =
// 538 kNm and 0.994; as two vertical forces close together it gives Mcr = 154 kNm (the limit of loads 0.02 m apart), far beyond 1.
TEST(ElasticLateral, ACoupleInsideALengthIsNotTrusted)
{
    const auto withCouple = [](const wchar_t* middle) {
        Case given;
        given.points = {{0.0, L"Pinned"}, {5.0, middle}, {10.0, L"Pinned"}};
        auto c = std::make_unique<Checked>(given);
        std::vector<CSubSpan> subSpans = c->member.GetSubSpanVec();
        const Vector none(0, 0, 0), shear(0, 0, -52e3);
        for (CSubSpan& s : subSpans)
            s.SetForcesAll(shear, shear);
        subSpans[0].SetMomentsAll(none, Vector(0, -260e3, 0));
        subSpans[1].SetMomentsAll(Vector(0, 260e3, 0), none);
        EXPECT_TRUE(c->member.SetSubSpanVec(subSpans));
        c->member.SetOptions(Elastic());
        c->Check();
        return c;
    };
    for (const wchar_t* middle : {L"Free", L"Top flange lateral"}) {
        const auto c = withCouple(middle);
        EXPECT_EQ(c->member.Status(), Design::Status::Failed);
        EXPECT_GT(c->Entry(Rule::LateralTorsional).utilisation, 1.0);
        ASSERT_EQ(c->member.Warnings().size(), 1u);
        EXPECT_NE(std::wstring(c->member.Warnings()[0].text).find(L"the moment jumps"), std::wstring::npos);
    }
    const auto fork = withCouple(L"Pinned");
    EXPECT_TRUE(fork->member.Warnings().empty()) << "no twist, no work of the couple";
}

// The tables do not look at sections that are stiffer about y-y nor at hollow ones; where such a member is not held, or its load stands
// far above it, it buckles all the same.
TEST(ElasticLateral, SectionsThatTheTablesExempt)
{
    for (const wchar_t* section : {L"CHS 168.3x5", L"SHS 200x200x8", L"I 200x400x8x12"}) {
        Case given;
        given.section = section;
        given.type = SEC_ROLLED;
        given.points = {{0.0, L"MAJV"}, {5.0, L"MAJV"}};
        EndMoments(given, 5.0, -5e3, -5e3);
        Checked free(given);
        free.member.SetOptions(Elastic());
        free.Check();
        EXPECT_EQ(free.member.Status(), Design::Status::Failed);
        EXPECT_NE(std::wstring(free.Entry(Rule::LateralTorsional).reason).find(L"not held"), std::wstring::npos);
        given.points = {{0.0, L"Pinned"}, {5.0, L"Pinned"}};
        Checked held(given);
        held.member.SetOptions(Elastic());
        held.Check();
        EXPECT_EQ(held.member.Status(), Design::Status::Passed);
        const SectionProperties s = PropertiesOf(section, SEC_ROLLED);
        const double Mcr = std::sqrt(PI * PI * E * s.Iy / 25.0 * (G * s.J + PI * PI * E * s.H / 25.0));
        const SpanResult span = held.Spans(BucklingMode::LateralTorsional).at(0);
        ASSERT_TRUE(span.lateral.elastic);
        EXPECT_NEAR(span.lateral.elastic->Mcr, Mcr, 2e-3 * Mcr);
    }
}

namespace {

/// The entry of moments about the stiffer y-y axis.
LedgerEntry AcrossEntry(const Checked& c, Rule rule = Rule::LateralTorsional)
{
    for (const LedgerEntry& e : c.member.Checks().Entries())
        if (e.rule == rule && std::wstring(e.reason).find(L"y-y, the stiffer axis") != std::wstring::npos) return e;
    return {};
}

} // namespace

// A box that lies flat under moments about y-y is the same box upright under moments about x-x, loads at its upper edge.
TEST(ElasticLateral, ABoxLyingFlatIsTheBoxUpright)
{
    constexpr unsigned SEED = 5950281;
    std::mt19937 random(SEED);
    const auto real = [&](double a, double b) { return std::uniform_real_distribution<double>(a, b)(random); };
    const int cases = RandomCases(300);
    int reduced = 0;
    Case box;
    box.type = SEC_WELDED;
    for (int i = 0; i < cases; ++i) {
        const int deep = static_cast<int>(real(200, 600));
        const int wide = static_cast<int>(deep * real(0.15, 0.8));
        const double t = real(4.0, 16.0);
        wchar_t upright[80], flat[80];
        std::swprintf(upright, 80, L"BOX %dx%dx%.1fx%.1f", deep, wide, t, t);
        std::swprintf(flat, 80, L"BOX %dx%dx%.1fx%.1f", wide, deep, t, t);
        const double L = real(2.0, 40.0);
        const double left = real(-60e3, 60e3);
        const double right = real(-60e3, 60e3);
        const double w = i % 3 == 0 ? 0.0 : real(-3e3, 3e3);
        const auto shear = [=](double x) { return (right - left) / L + w * (x - 0.5 * L); };
        const auto moment = [=](double x) { return left + (right - left) * x / L - 0.5 * w * x * (L - x); };
        Case standing = box;
        Case lying = box;
        standing.section = upright;
        lying.section = flat;
        standing.points.back().first = L;
        lying.points.back().first = L;
        standing.force = [=](double x) { return Vector(0.0, 0.0, shear(x)); };
        standing.moment = [=](double x) { return Vector(0.0, moment(x), 0.0); };
        lying.force = [=](double x) { return Vector(0.0, -shear(x), 0.0); };
        lying.moment = [=](double x) { return Vector(0.0, 0.0, moment(x)); };
        Checked x(standing, false);
        Checked y(lying, false);
        std::vector<CSubSpan> loaded = x.member.GetSubSpanVec();
        CRestraint along = loaded[0].GetRestraint();
        along.SetLoadHeight(std::copysign(0.5e-3 * deep, w));
        loaded[0].SetRestraint(along);
        x.member.SetSubSpanVec(loaded);
        x.member.SetOptions(Elastic());
        x.Check();
        y.Check();
        const LedgerEntry& a = x.Entry(Rule::LateralTorsional);
        const LedgerEntry b = AcrossEntry(y);
        ASSERT_GT(b.resistance, 0.0) << i << " seed " << SEED;
        EXPECT_NEAR(b.resistance, a.resistance, 2e-3 * a.resistance)
            << i << " seed " << SEED << " " << deep << "x" << wide << "x" << t << " L " << L << " w " << w;
        EXPECT_NEAR(b.utilisation, a.utilisation, 2e-3 * a.utilisation);
        reduced += b.resistance < 0.95 * y.member.Results().Resistances().Mcy;
    }
    EXPECT_GT(reduced, cases / 10);
}

// B.2.8 b: a wide T, Mcr = π/L (E Ix G J)^0.5 with the warping constant of the T. Hand: T 152x305x49 of 8 m has λLT by λLT² = π² E Wy/Mcr.
TEST(ElasticLateral, WideTeesBucklingAlongTheirStem)
{
    Case given;
    given.section = L"T 152x305x49";
    given.grade = L"S355";
    given.points = {{0.0, L"Pinned"}, {8.0, L"Pinned"}};
    EndMoments(given, 8.0, 0.0, 0.0, 0.0, 40e3, 40e3);
    Checked c(given);
    c.Check();
    const LedgerEntry e = AcrossEntry(c);
    EXPECT_EQ(std::wstring(e.clause), L"B.2.8 b, elastic Mcr");
    const SectionProperties s = PropertiesOf(L"T 152x305x49", SEC_ROLLED);
    const double Mcr = PI / 8.0 * std::sqrt(E * s.Ix * (G * s.J + PI * PI * E * s.H / 64.0));
    ASSERT_EQ(c.member.Results().across.size(), 1u);
    const AcrossResult across = c.member.Results().across[0];
    EXPECT_NEAR(across.elastic.Mcr, Mcr, 1e-3 * Mcr);
    EXPECT_NEAR(e.slenderness, PI * std::sqrt(E * across.modulus / Mcr), 1e-3 * e.slenderness);
    EXPECT_EQ(c.result.UtilBucklingLT(), e.utilisation);
    EXPECT_NE(c.Verbose().find("y-y, the stiffer axis"), std::string::npos);
    EXPECT_EQ(c.member.Status(), e.utilisation > 1.0 ? Design::Status::Failed : Design::Status::Passed);
    // Beside other actions: 4.8.3.3.1 with all three terms.
    EndMoments(given, 8.0, -5e3, -5e3, -50e3, 20e3, 20e3);
    Checked both(given);
    both.Check();
    const AcrossResult with = both.member.Results().across.at(0);
    const double struts =
        std::max(both.Entry(Rule::BucklingMajor).utilisation, both.Entry(Rule::BucklingMinor).utilisation);
    EXPECT_GT(struts, 0.0);
    const SpanResult mx = both.Spans(BucklingMode::Major).at(0);
    EXPECT_NEAR(with.combined, struts + mx.m * 5e3 / mx.flexural.pyZx + 20e3 / with.Mb, 1e-9);
    EXPECT_EQ(AcrossEntry(both, Rule::BucklingInteraction).utilisation, with.combined);
    EXPECT_EQ(both.result.UtilBucklingCombined(), with.combined);
    // A length that nothing holds along the web.
    given.points = {{0.0, L"MINV"}, {8.0, L"MINV"}};
    EndMoments(given, 8.0, 0.0, 0.0, 0.0, 1e3, 1e3);
    Checked loose(given);
    loose.Check();
    EXPECT_EQ(loose.member.Status(), Design::Status::Failed);
    EXPECT_EQ(AcrossEntry(loose).status, CheckStatus::Failed);
    // A given effective length is that of a uniform moment.
    given.points = {{0.0, L"Pinned"}, {8.0, L"Pinned"}};
    EndMoments(given, 8.0, 0.0, 0.0, 0.0, 40e3, 40e3);
    Checked overridden(given);
    overridden.member.SetLengthOverride(true);
    overridden.member.SetLyy(8.0);
    overridden.member.SetLzz(8.0);
    overridden.member.SetLlt(8.0);
    overridden.Check();
    EXPECT_NEAR(AcrossEntry(overridden).resistance, e.resistance, 1e-3 * e.resistance);
    // The section moves along its web: a short length of the flange does not hold it.
    overridden.member.SetLlt(0.0);
    overridden.Check();
    EXPECT_NEAR(AcrossEntry(overridden).resistance, e.resistance, 1e-3 * e.resistance);
}

// A factor that the user gives does not lower what Mcr holds already; a larger one counts.
TEST(ElasticLateral, AGivenFactorBelowOneIsNotUsed)
{
    Case given;
    EndMoments(given, 6.0, -100e3, 0.0);
    Checked plain(given, false), low(given, false), high(given, false);
    for (Checked* c : {&plain, &low, &high})
        c->member.SetOptions(Elastic());
    low.member.SetEquivalentUniformMomentFactor(0.5);
    high.member.SetEquivalentUniformMomentFactor(1.2);
    plain.Check();
    low.Check();
    high.Check();
    const double utilisation = plain.Entry(Rule::LateralTorsional).utilisation;
    EXPECT_EQ(low.Entry(Rule::LateralTorsional).utilisation, utilisation);
    EXPECT_TRUE(low.Assumes(L"mLT beside an elastic critical moment"));
    EXPECT_NEAR(high.Entry(Rule::LateralTorsional).utilisation, 1.2 * utilisation, 1e-12);
}

// In the elastic way the ledger shows the tables' figure of every length beside the check.
TEST(ElasticLateral, TheTablesStandBesideIt)
{
    Case given;
    given.points = {{0.0, L"Pinned"}, {3.0, L"Top flange lateral"}, {6.0, L"Pinned"}};
    Uniform(given, 6.0, 20e3);
    Checked tables(given);
    tables.Check();
    Checked elastic(given);
    elastic.member.SetOptions(Elastic());
    elastic.Check();
    EXPECT_TRUE(elastic.Assumes(L"lateral-torsional buckling"));
    const std::vector<LedgerEntry> beside = InformationOf(elastic.member, Rule::LateralTorsional);
    ASSERT_EQ(beside.size(), 1u);
    EXPECT_EQ(beside[0].utilisation, tables.Entry(Rule::LateralTorsional).utilisation);
    EXPECT_EQ(beside[0].resistance, tables.Entry(Rule::LateralTorsional).resistance);
    const std::vector<SpanResult> spans = elastic.Spans(BucklingMode::LateralTorsional);
    ASSERT_EQ(spans.size(), 1u) << "one length from fork to fork";
    EXPECT_EQ(elastic.Entry(Rule::LateralTorsional).slenderness, spans[0].lateral.lt.lambdaLT);
    EXPECT_NE(elastic.Verbose().find("beside it, by Tables 13, 14 and 18"), std::string::npos);
}

namespace {

struct Outcome {
    double lateral = 0.0; ///< largest utilisation by lateral-torsional buckling
    bool passed = false;
    bool elastic = true; ///< no length was left to the tables
    std::vector<SpanResult> spans;
    std::vector<double> combined;
};

Outcome CheckElastically(Subject& subject, const DesignTest::Member& m)
{
    subject.member.SetOptions(Elastic());
    subject.member.SetMemberPointVec(m.points);
    subject.member.SetSubSpanVec(m.subSpans);
    Outcome o;
    o.passed = subject.member.Check();
    for (const SpanResult& s : subject.member.Spans()) {
        if (s.mode != BucklingMode::LateralTorsional) continue;
        o.spans.push_back(s);
        if (!s.applied) continue;
        o.elastic = o.elastic && s.lateral.elastic.has_value();
        o.lateral = std::max(o.lateral, CMemberResult::InfinitiseNANs(s.utilisation));
    }
    for (const InteractionResult& i : subject.member.Interactions())
        o.combined.push_back(i.utilisation);
    return o;
}

bool Near(double a, double b, double share) { return a == b || std::abs(a - b) <= share * std::max(a, b); }

constexpr SectionRow OPEN_SECTIONS[] = {
    {L"UB 457x191x67", SEC_ROLLED, L"S275"},   {L"UC 254x254x89", SEC_ROLLED, L"S355"},
    {L"PFC 300x90x41", SEC_ROLLED, L"S275"},   {L"RHS 200x100x6.3", SEC_ROLLED, L"S355"},
    {L"T 254x343x63", SEC_ROLLED, L"S275"},    {L"GI 600x300x200x8x20x15", SEC_WELDED, L"S355"},
    {L"I 1200x300x6x20", SEC_WELDED, L"S355"},
};

} // namespace

TEST(RandomLaws, ElasticChecksOfMirroredAndDividedMembers)
{
    constexpr unsigned SEED = 1234;
    std::mt19937 random(SEED);
    int finite = 0;
    for (int i = 0; i < RandomCases(700); ++i) {
        const SectionRow& row = OPEN_SECTIONS[static_cast<std::size_t>(i) % std::size(OPEN_SECTIONS)];
        Subject subject(row, 1);
        const DesignTest::Member m = RandomActions(random, subject.member.Properties(), subject.member.Steel());
        const Outcome whole = CheckElastically(subject, m);
        const Outcome mirrored = CheckElastically(subject, DesignTest::Mirrored(m));
        const std::size_t k = random() % m.subSpans.size();
        const Outcome divided = CheckElastically(subject, DesignTest::Divided(m, k, 0.37));
        if (!whole.elastic) continue;
        finite += whole.lateral > 0.0 && std::isfinite(whole.lateral);
        // Meshes differ: λLT goes with the square root of the factor, whose estimated error is up to 0.1 %.
        EXPECT_TRUE(Near(whole.lateral, mirrored.lateral, 2e-3))
            << SEED << " " << i << " " << *CString(row.name).ToUtf8();
        EXPECT_TRUE(Near(whole.lateral, divided.lateral, 2e-3))
            << SEED << " " << i << " " << *CString(row.name).ToUtf8() << " " << whole.lateral << " " << divided.lateral;
    }
    EXPECT_GT(finite, RandomCases(200));
}

// A restraint taken off inside a unit, so that the unit stays, never lowers the utilisation; and a member is never passed in which a
// length that is bent is not held.
TEST(RandomLaws, ElasticChecksAndRestraints)
{
    constexpr unsigned SEED = 4321;
    std::mt19937 random(SEED);
    int compared = 0, notHeld = 0;
    for (int i = 0; i < RandomCases(1400); ++i) {
        const SectionRow& row = OPEN_SECTIONS[static_cast<std::size_t>(i) % std::size(OPEN_SECTIONS)];
        Subject subject(row, 1);
        DesignTest::Member m = RandomActions(random, subject.member.Properties(), subject.member.Steel());
        const Outcome before = CheckElastically(subject, m);
        for (const SpanResult& s : before.spans) {
            if (!s.lateral.elastic || s.lateral.elastic->outcome != Stability::Outcome::NotHeld || !s.applied) continue;
            ++notHeld;
            EXPECT_FALSE(before.passed) << SEED << " " << i;
            EXPECT_TRUE(std::isinf(s.utilisation)) << SEED << " " << i;
        }
        const std::size_t k = random() % m.points.size();
        const bool alongToo = random() % 2;
        if (alongToo)
            m.subSpans[k % m.subSpans.size()].SetRestraint(RestraintNamed(L"Free"));
        else
            m.points[k].SetRestraint(RestraintNamed(L"Free"));
        const Outcome after = CheckElastically(subject, m);
        bool same = before.elastic && after.elastic && before.spans.size() == after.spans.size();
        for (std::size_t j = 0; same && j < before.spans.size(); ++j)
            same = before.spans[j].start == after.spans[j].start && before.spans[j].end == after.spans[j].end &&
                   before.spans[j].lateral.elastic.has_value() == after.spans[j].lateral.elastic.has_value();
        if (!same) continue;
        ++compared;
        EXPECT_GE(after.lateral, before.lateral * (1.0 - 2e-3))
            << SEED << " " << i << " " << *CString(row.name).ToUtf8();
    }
    EXPECT_GT(compared, RandomCases(300));
    EXPECT_GT(notHeld, RandomCases(10));
}

// Every place of an elastically checked length is within Mb: the analysis without the module, with axial forces left out.
TEST(RandomLaws, ElasticChecksAgainstTheAnalysis)
{
    constexpr unsigned SEED = 777;
    std::mt19937 random(SEED);
    int checked = 0;
    for (int i = 0; i < RandomCases(700); ++i) {
        const SectionRow& row = OPEN_SECTIONS[static_cast<std::size_t>(i) % std::size(OPEN_SECTIONS)];
        Subject subject(row, 1);
        const DesignTest::Member m = RandomActions(random, subject.member.Properties(), subject.member.Steel());
        const Outcome o = CheckElastically(subject, m);
        std::vector<CSubSpan> bent = m.subSpans;
        for (CSubSpan& s : bent)
            s.SetForcesAll({0, 0, s.GetForcesLeft().z}, {0, 0, s.GetForcesRight().z});
        CString reason;
        const auto constants = Stability::MakeSectionConstants(subject.member.GetKeltrixSec(), E, G, &reason).value();
        const Design::MomentDiagram major(m.points, m.subSpans, Design::Bending::Major);
        const auto loads = Stability::FindCriticalLoads(m.points, bent, major, constants);
        for (const SpanResult& s : o.spans) {
            if (!s.lateral.elastic || !s.applied || s.lateral.elastic->outcome != Stability::Outcome::Buckles) continue;
            const auto unit = std::find_if(loads.units.begin(), loads.units.end(),
                                           [&](const auto& u) { return u.start == s.start && u.end == s.end; });
            ASSERT_NE(unit, loads.units.end()) << SEED << " " << i;
            ++checked;
            const double lambda = unit->positive->lambda / (1.0 + unit->positive->error);
            for (int p = 0; p <= 20; ++p) {
                const double x = s.start + (s.end - s.start) * p / 20.0;
                for (const double M : {major.RightOf(x).least, major.LeftOf(x).least})
                    if (x > s.start && x < s.end) {
                        EXPECT_LE(std::abs(M) / s.resistance, s.utilisation * (1.0 + 1e-9)) << SEED << " " << i;
                    }
            }
            // By elements here, often by a series there; both take their error off.
            const double errors = unit->positive->error + s.lateral.elastic->error;
            EXPECT_NEAR(s.lateral.elastic->Mcr, lambda * s.effect, (1e-6 + 2.0 * errors) * s.lateral.elastic->Mcr)
                << SEED << " " << i;
            EXPECT_LE(s.resistance, s.lateral.elastic->Mcr) << "buckling is never above the elastic load";
        }
    }
    EXPECT_GT(checked, RandomCases(300));
}

// --- Struts ---

namespace {

std::vector<LedgerEntry> StrutInformation(const Case& given)
{
    Checked c(given, false);
    c.Check();
    return InformationOf(c.member, Rule::TorsionalBuckling);
}

} // namespace

// Held laterally at mid-height at its shear centre and not against twist, a column with wide flanges twists over its whole height:
// Pt = (G J + π² E H/L²)/i0² (Timoshenko and Gere, 5.6).
TEST(StrutInformation, TorsionalBuckling)
{
    Case given;
    given.section = L"I 200x200x4x5";
    given.points = {{0.0, L"Pinned"}, {2.0, L"MINV"}, {4.0, L"Pinned"}};
    given.force = [](double) { return Vector(-50e3, 0, 0); };
    const std::vector<LedgerEntry> found = StrutInformation(given);
    ASSERT_EQ(found.size(), 1u);
    const SectionProperties s = PropertiesOf(given.section, SEC_ROLLED);
    const double k2 = PI * PI / 16.0;
    const double Pt = (G * s.J + k2 * E * s.H) * s.A / (s.Ix + s.Iy);
    const double Py = PI * PI * E * s.Iy / 4.0;
    ASSERT_LT(Pt, 0.9 * Py);
    EXPECT_NEAR(found[0].resistance, Pt, 1e-3 * Pt);
    EXPECT_NEAR(found[0].utilisation, 50e3 / Pt, 1e-3);
    EXPECT_NEAR(found[0].slenderness, PI * std::sqrt(E * s.A / Pt), 0.1);
    EXPECT_EQ(std::wstring(found[0].reason).substr(0, 5), L"BELOW");
}

// A tee between forks: (Py - N)(Pt - N) i0² = N² y0².
TEST(StrutInformation, FlexuralTorsionalBucklingOfATee)
{
    Case given;
    given.section = L"T 254x343x63";
    given.points = {{0.0, L"Pinned"}, {3.0, L"Pinned"}};
    given.force = [](double) { return Vector(-50e3, 0, 0); };
    const std::vector<LedgerEntry> found = StrutInformation(given);
    ASSERT_EQ(found.size(), 1u);
    const SectionProperties s = PropertiesOf(given.section, SEC_ROLLED);
    const double y0 = s.D - 0.5 * s.T - s.cy;
    const double i2 = (s.Ix + s.Iy) / s.A + y0 * y0;
    const double Py = PI * PI * E * s.Iy / 9.0;
    const double Pt = (G * s.J + PI * PI * E * s.H / 9.0) / i2;
    const double b = Py + Pt;
    const double c = 1.0 - y0 * y0 / i2;
    const double N = (b - std::sqrt(b * b - 4.0 * c * Py * Pt)) / (2.0 * c);
    EXPECT_NEAR(found[0].resistance, N, 5e-3 * N);
    EXPECT_EQ(std::wstring(found[0].reason).substr(0, 5), L"BELOW");
}

// Between forks a compact column buckles by minor-axis flexure, as the code checks it.
TEST(StrutInformation, FlexureGoverns)
{
    Case given;
    given.section = L"UC 254x254x89";
    given.points = {{0.0, L"Pinned"}, {8.0, L"Pinned"}};
    given.force = [](double) { return Vector(-500e3, 0, 0); };
    const std::vector<LedgerEntry> found = StrutInformation(given);
    ASSERT_EQ(found.size(), 1u);
    const SectionProperties s = PropertiesOf(given.section, SEC_ROLLED);
    const double Py = PI * PI * E * s.Iy / 64.0;
    EXPECT_NEAR(found[0].resistance, Py, 1e-4 * Py);
    EXPECT_EQ(std::wstring(found[0].reason).substr(0, 9), L"not below");
    given.force = [](double) { return Vector(500e3, 0, 0); };
    EXPECT_TRUE(StrutInformation(given).empty()) << "no strut";
}

// Flexure about the symmetry axis and twist of a thin channel: the smaller root of β N² - (Px + Pt) N + Px Pt = 0, β = 1 - x0²/i0². Held laterally
// in between, but not against twist, it passes every rule of the standard beyond that load.
TEST(StrutInformation, FlexuralTorsionalBucklingOfAChannel)
{
    Case given;
    given.section = L"C 100x100x4x4x0x0";
    given.points = {{0.0, L"Pinned"}, {1.0, L"MINV"}, {2.0, L"MINV"}, {3.0, L"MINV"}, {4.0, L"Pinned"}};
    const SectionProperties s = PropertiesOf(given.section, SEC_ROLLED);
    ASSERT_GT(s.x0 * s.x0, 1e-3);
    const double i2 = (s.Ix + s.Iy) / s.A + s.x0 * s.x0;
    const double Px = PI * PI * E * s.Ix / 16.0;
    const double Pt = (G * s.J + PI * PI * E * s.H / 16.0) / i2;
    const double beta = 1.0 - s.x0 * s.x0 / i2;
    const double N = (Px + Pt - std::sqrt((Px + Pt) * (Px + Pt) - 4.0 * beta * Px * Pt)) / (2.0 * beta);
    ASSERT_LT(N, 0.95 * Pt);
    for (const double share : {0.98, 1.02}) {
        given.force = [=](double) { return Vector(-share * N, 0, 0); };
        const std::vector<LedgerEntry> found = StrutInformation(given);
        ASSERT_EQ(found.size(), 1u);
        EXPECT_NEAR(found[0].resistance, N, 1e-6 * N);
        EXPECT_NEAR(found[0].utilisation, share, 1e-6);
        EXPECT_EQ(std::wstring(found[0].reason).substr(0, 5), L"BELOW");
        Checked c(given);
        c.Check();
        EXPECT_LT(c.result.UtilOverAll(), 1.0) << "what the rules say";
        EXPECT_EQ(c.member.Status(), share < 1.0 ? Design::Status::Passed : Design::Status::NotChecked);
    }
    given.points.front().second = L"MINV MAJV";
    EXPECT_TRUE(StrutInformation(given).empty()) << "an end free to twist: the closed form does not reach";
}

// A tube has no warping, so that its twist bends sharply where one side is held, and no mesh follows that within 1 %: no figure is given.
TEST(StrutInformation, GivesNoFigureThatIsNotExact)
{
    Case given;
    given.section = L"TUBE 700x6";
    given.points = {{0.0, L"Pinned"}, {0.956, L"F1L F2L"}, {1.232, L"F2L"}, {2.577, L"Pinned"}};
    given.force = [](double x) {
        const double N = x < 0.956   ? -110e3 + 1254e3 * x / 0.956
                         : x < 1.232 ? 1144e3 - 1171e3 * (x - 0.956) / 0.276
                                     : -27e3 + 1652e3 * (x - 1.232) / 1.345;
        return Vector(N, 0, 0);
    };
    const std::vector<LedgerEntry> found = StrutInformation(given);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].start, 0.0);
    EXPECT_GT(found[0].resistance, 0.0);
}

// No rule of the standard has these members, and they do not pass: a column that is held laterally alone under more than its torsional
// critical load, and one that is free to twist.
TEST(StrutInformation, AStrutAtItsCriticalLoadDoesNotPass)
{
    Case given;
    given.points.clear();
    for (int i = 0; i <= 10; ++i)
        given.points.emplace_back(i, i % 10 == 0 ? L"Pinned" : L"MINV");
    const SectionProperties s = PropertiesOf(given.section, SEC_ROLLED);
    const double Pt = (G * s.J + PI * PI * E * s.H / 100.0) * s.A / (s.Ix + s.Iy);
    for (const double share : {0.98, 1.02}) {
        given.force = [=](double) { return Vector(-share * Pt, 0, 0); };
        Checked c(given);
        c.Check();
        const LedgerEntry entry = c.Entry(Rule::TorsionalBuckling);
        EXPECT_LT(c.result.UtilOverAll(), 1.0) << "what the rules say";
        EXPECT_EQ(entry.status, share < 1.0 ? CheckStatus::NotApplicable : CheckStatus::NotEvaluated);
        EXPECT_EQ(c.member.Status(), share < 1.0 ? Design::Status::Passed : Design::Status::NotChecked);
        EXPECT_EQ(!(c.result.GetFlags() & CMemberResult::NOT_CHECKED), share < 1.0);
    }
    given.points = {{0.0, L"MINV MAJV"}, {6.0, L"MINV MAJV"}};
    given.force = [](double) { return Vector(-100e3, 0, 0); };
    Checked free(given);
    free.Check();
    EXPECT_EQ(free.member.Status(), Design::Status::NotChecked);
    EXPECT_NE(std::wstring(free.Entry(Rule::TorsionalBuckling).reason).find(L"free to move"), std::wstring::npos);
}

// What passes is held, and under less than its critical load, whether the analysis or a closed form said so.
TEST(RandomLaws, WhatPassesIsBelowItsCriticalLoad)
{
    constexpr unsigned SEED = 20261122;
    std::mt19937 random(SEED);
    int passed = 0;
    int struts = 0;
    for (int i = 0; i < RandomCases(400); ++i) {
        const SectionRow& row = SECTIONS[static_cast<std::size_t>(i) % std::size(SECTIONS)];
        Subject subject(row, 1);
        const DesignTest::Member full = RandomActions(random, subject.member.Properties(), subject.member.Steel());
        const DesignTest::Member m = Scaled(full, 1.0, 0.4, 0.1, 0.1);
        subject.member.SetMemberPointVec(m.points);
        subject.member.SetSubSpanVec(m.subSpans);
        if (!subject.member.Check()) continue;
        ++passed;
        for (const LedgerEntry& e : InformationOf(subject.member, Rule::TorsionalBuckling)) {
            ++struts;
            EXPECT_LT(e.utilisation, 1.0) << "seed " << SEED << ", member " << i;
        }
    }
    EXPECT_GT(passed, RandomCases(40)) << "seed " << SEED;
    EXPECT_GT(struts, RandomCases(5)) << "seed " << SEED;
}

// Clauses 6.3.1 to 6.3.3 on plain data: worked examples, published tables and limits.

#include "keltrix/ec3/Buckling.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numbers>

#include "PublishedRows.h"

using namespace Keltrix;
using namespace Keltrix::EC3;
using Design::Fabrication;
using Design::SectionProperties;
using Design::Shape;
using EC3Test::PublishedRows;

namespace {

SectionProperties PropertiesOf(const std::string& designation)
{
    return Design::MakeProperties(CSection(CString::FromUtf8(designation).value()), nullptr).value();
}

Material SteelOf(const wchar_t* grade, const SectionProperties& s, const Annex& annex = UkAnnex())
{
    return MakeMaterial(CSteelGrade(CString(grade), 0.0, 0.0, 0.0, 1.0), s, annex);
}

} // namespace

// Every row of sections that are not class 4; figures are rounded to three digits and made from rounded properties.
TEST(PublishedBuckling, CompressionResistancesAreThoseOfTheTables)
{
    std::map<std::string, SectionProperties> known;
    int count = 0;
    const auto rows = PublishedRows("ukna_compression.csv");
    SKIP_WITHOUT(rows);
    for (const auto& row : rows) {
        if (row.at("flag").find('*') != std::string::npos || row.at("italic_class4") == "1") continue;
        const std::string name = row.at("family") + " " + row.at("section");
        if (!known.count(name)) known[name] = PropertiesOf(name);
        const SectionProperties& s = known[name];
        const Material m = SteelOf(CString::FromUtf8(row.at("grade")).value().GetString(), s);
        const double L = std::stod(row.at("L_m"));
        const AxisCurves curves = CompressionCurves(s, m.grade);
        const bool major = row.at("axis") == "y";
        const double Ncr = row.at("axis") == "T" ? std::min(TorsionalNcr(s, m.E, m.G, L), 1e30)
                                                 : FlexuralNcr(m.E, major ? s.Ix : s.Iy, L);
        const double N = BuckleStrut(Ncr, s.A, m.fy, 1.0, major ? curves.y : curves.z).NbRd / 1000.0;
        EXPECT_NEAR(N, std::stod(row.at("Nb_Rd_kN")), 0.015 * std::stod(row.at("Nb_Rd_kN")))
            << name << " " << row.at("grade") << " " << row.at("axis") << " " << L;
        ++count;
    }
    EXPECT_GT(count, 5000);
}

// Wpl or Wel by the class that the table prints; Mcr with the C1 that it was made with.
TEST(PublishedBuckling, BendingResistancesAreThoseOfTheTables)
{
    std::map<std::string, SectionProperties> known;
    int count = 0, third = 0;
    const auto rows = PublishedRows("ukna_bending.csv");
    SKIP_WITHOUT(rows);
    for (const auto& row : rows) {
        const std::string name = row.at("family") + " " + row.at("section");
        if (!known.count(name)) known[name] = PropertiesOf(name);
        const SectionProperties& s = known[name];
        const Material m = SteelOf(CString::FromUtf8(row.at("grade")).value().GetString(), s);
        const double W = std::stoi(row.at("class_bending_y")) <= 2 ? s.Sx : s.Zx;
        const double C1 = std::stod(row.at("C1"));
        const double Mcr = ElasticMoment(s, m.E, m.G, std::stod(row.at("L_m")), C1);
        const LateralReduction r = ReduceLateral(LateralRuleOf(s, UkAnnex()).value(), std::sqrt(W * m.fy / Mcr), C1);
        const double Mb = r.chiMod * W * m.fy / 1000.0;
        const double published = std::stod(row.at("Mb_Rd_kNm"));
        EXPECT_NEAR(Mb, published, 0.015 * published)
            << name << " " << row.at("grade") << " C1 " << C1 << " L " << row.at("L_m");
        ++count;
        const double digit = std::pow(10.0, std::floor(std::log10(published)) - 2.0);
        third += std::abs(Mb - published) <= 0.5001 * digit;
    }
    EXPECT_GT(count, 15000);
    EXPECT_GT(third, 0.6 * count);
}

// SCI P364 (2009), example 3: UB 457x191x67 in S275, Mcr 355.7 kNm with C1 = 2.65: λLT 1.07, φ 1.09, χLT 0.60, f 0.83, χLT,mod 0.72, Mb,Rd 291 kNm.
TEST(Buckling, WorkedExampleOfABeamWithEndMoments)
{
    const SectionProperties s = PropertiesOf("UB 457x191x67");
    const Material m = SteelOf(L"S275", s);
    const LateralRule rule = LateralRuleOf(s, UkAnnex()).value();
    EXPECT_EQ(rule.curve, Curve::C);
    const LateralReduction r = ReduceLateral(rule, std::sqrt(s.Sx * m.fy / 355.7e3), 2.65);
    EXPECT_NEAR(r.slenderness, 1.07, 0.005);
    EXPECT_NEAR(r.phi, 1.09, 0.006);
    EXPECT_NEAR(r.chi, 0.60, 0.006);
    EXPECT_NEAR(r.f, 0.83, 0.006);
    EXPECT_NEAR(r.chiMod, 0.72, 0.006);
    EXPECT_NEAR(r.chiMod * s.Sx * m.fy / 1000.0, 291.0, 3.0);
}

// Access Steel MSB04, appendix A, example 1 (recommended values): IPE 330 in S235, Wpl 804.3 cm³, Mcr 113.9 kNm: λLT 1.288, curve c, φ 1.34, χLT 0.48,
// kc 0.94, f 0.984, χLT,mod 0.488, Mb,Rd 92.24 kNm.
TEST(Buckling, WorkedExampleOfABeamWithALoadOnTheTopFlange)
{
    SectionProperties s;
    s.D = 0.330, s.B = s.B2 = 0.160, s.t = 0.0075, s.T = s.T2 = 0.0115;
    const LateralRule rule = LateralRuleOf(s, RecommendedAnnex()).value();
    EXPECT_EQ(rule.curve, Curve::C);
    const LateralReduction r = ReduceLateral(rule, std::sqrt(804.3e-6 * 235e6 / 113.9e3), 1.127);
    EXPECT_NEAR(r.slenderness, 1.288, 0.001);
    EXPECT_NEAR(r.phi, 1.34, 0.005);
    EXPECT_NEAR(r.chi, 0.48, 0.005);
    EXPECT_NEAR(r.kc, 0.94, 0.003);
    EXPECT_NEAR(r.f, 0.984, 0.001);
    EXPECT_NEAR(r.chiMod, 0.488, 0.002);
    EXPECT_NEAR(r.chiMod * 804.3e-6 * 235e6 / 1000.0, 92.24, 0.3);
}

// SCI P364, example 9: UC 356x368x129 in S355, L 6 m: λz 0.82, curve c, χz 0.65, Nb,z,Rd 3678 kN.
TEST(Buckling, WorkedExampleOfAColumn)
{
    const SectionProperties s = PropertiesOf("UC 356x368x129");
    const Material m = SteelOf(L"S355", s);
    const AxisCurves curves = CompressionCurves(s, m.grade);
    EXPECT_EQ(curves.z, Curve::C);
    const StrutResistance r = BuckleStrut(FlexuralNcr(m.E, s.Iy, 6.0), s.A, m.fy, 1.0, curves.z);
    EXPECT_NEAR(r.slenderness, 0.82, 0.005);
    EXPECT_NEAR(r.reduction.chi, 0.65, 0.005);
    EXPECT_NEAR(r.NbRd / 1000.0, 3678.0, 15.0);
}

// Designers' Guide to EN 1993-1-1, example 6.7: hot-finished CHS 244.5x10 in S355, L 4 m: Ncr 6571.7 kN, λ 0.63, χ 0.88, Nb,Rd 2297 kN.
TEST(Buckling, WorkedExampleOfATube)
{
    const double A = std::numbers::pi / 4.0 * (0.2445 * 0.2445 - 0.2245 * 0.2245);
    const double I = std::numbers::pi / 64.0 * (std::pow(0.2445, 4) - std::pow(0.2245, 4));
    const StrutResistance r = BuckleStrut(FlexuralNcr(210e9, I, 4.0), A, 355e6, 1.0, Curve::A);
    EXPECT_NEAR(r.Ncr / 1000.0, 6571.7, 0.002 * 6571.7);
    EXPECT_NEAR(r.slenderness, 0.63, 0.005);
    EXPECT_NEAR(r.reduction.chi, 0.88, 0.005);
    EXPECT_NEAR(r.NbRd / 1000.0, 2297.0, 10.0);
}

TEST(Buckling, ReductionFactorsHaveTheirLimits)
{
    for (const Curve curve : {Curve::A0, Curve::A, Curve::B, Curve::C, Curve::D}) {
        const double alpha = ImperfectionFactor(curve);
        EXPECT_EQ(CompressionReduction(0.0, alpha).chi, 1.0);
        EXPECT_EQ(CompressionReduction(0.2, alpha).chi, 1.0);
        double before = 1.0;
        for (double slenderness = 0.21; slenderness < 20.0; slenderness *= 1.05) {
            const double chi = CompressionReduction(slenderness, alpha).chi;
            EXPECT_LT(chi, before);
            EXPECT_LT(chi, 1.0 / (slenderness * slenderness)) << "below the elastic critical force";
            before = chi;
        }
        EXPECT_NEAR(before * 400.0 * (19.0 / 20.0) * (19.0 / 20.0), 1.0, 0.2) << "towards the elastic critical force";
    }
    EXPECT_EQ(CompressionReduction(std::numeric_limits<double>::infinity(), 0.21).chi, 0.0);
    EXPECT_EQ(CompressionReduction(std::nan(""), 0.21).chi, 0.0);
}

TEST(Buckling, LateralReductionHasItsLimits)
{
    const LateralRule rule = LateralRuleOf(PropertiesOf("UB 457x191x67"), UkAnnex()).value();
    EXPECT_EQ(ReduceLateral(rule, 0.0, 1.0).chiMod, 1.0);
    EXPECT_EQ(ReduceLateral(rule, rule.lambda0, 2.0).chiMod, 1.0);
    EXPECT_EQ(ReduceLateral(rule, std::numeric_limits<double>::infinity(), 1.0).chiMod, 0.0);
    for (double slenderness = 0.41; slenderness < 10.0; slenderness *= 1.1) {
        const LateralReduction uniform = ReduceLateral(rule, slenderness, 1.0);
        EXPECT_EQ(uniform.f, 1.0) << "uniform moment";
        EXPECT_EQ(uniform.chi, uniform.chiMod);
        const LateralReduction shaped = ReduceLateral(rule, slenderness, 2.0);
        EXPECT_GE(shaped.chiMod, uniform.chiMod);
        EXPECT_LE(shaped.chiMod, std::min(1.0, 1.0 / (slenderness * slenderness)) * (1.0 + 1e-15));
        EXPECT_EQ(ReduceLateral(rule, slenderness, 0.5).f, 1.0) << "worse than a uniform moment: no benefit";
    }
}

// Settled by the annex: curves b, c, d up to h/b of 2, 3.1 and beyond; welded c, d and then the general case.
TEST(Buckling, LateralCurvesFollowTheDepthToWidthRatio)
{
    SectionProperties s;
    const auto rule = [&](double ratio, Fabrication fabrication, const Annex& annex) {
        s.fabrication = fabrication;
        s.B = s.B2 = 0.2, s.D = 0.2 * ratio;
        return LateralRuleOf(s, annex).value();
    };
    EXPECT_EQ(rule(2.0, Fabrication::Rolled, UkAnnex()).curve, Curve::B);
    EXPECT_EQ(rule(2.1, Fabrication::Rolled, UkAnnex()).curve, Curve::C);
    EXPECT_EQ(rule(3.2, Fabrication::Rolled, UkAnnex()).curve, Curve::D);
    EXPECT_EQ(rule(3.2, Fabrication::Rolled, RecommendedAnnex()).curve, Curve::C);
    EXPECT_EQ(rule(1.5, Fabrication::Welded, UkAnnex()).curve, Curve::C);
    EXPECT_EQ(rule(1.5, Fabrication::Welded, UkAnnex()).lambda0, 0.2);
    EXPECT_EQ(rule(1.5, Fabrication::Welded, RecommendedAnnex()).lambda0, 0.4);
    EXPECT_EQ(rule(2.5, Fabrication::Welded, UkAnnex()).curve, Curve::D);
    EXPECT_STREQ(rule(3.2, Fabrication::Welded, UkAnnex()).clause, L"6.3.2.2");
    s.shape = Shape::RHS;
    EXPECT_FALSE(LateralRuleOf(
        [&] {
            s.D = s.B;
            return s;
        }(),
        UkAnnex()));
    s.D = 2.0 * s.B;
    s.fabrication = Fabrication::Formed;
    EXPECT_STREQ(LateralRuleOf(s, UkAnnex()).value().clause, L"6.3.2.2");
    EXPECT_EQ(LateralRuleOf(s, UkAnnex()).value().curve, Curve::D);
    s.shape = Shape::CHS;
    EXPECT_FALSE(LateralRuleOf(s, UkAnnex()));
}

// Table 6.2, each row in both columns of grades.
TEST(Buckling, CompressionCurvesOfTable62)
{
    SectionProperties s;
    const auto curves = [&](Grade grade) {
        const AxisCurves c = CompressionCurves(s, grade);
        return std::wstring(CurveName(c.y)) + L" " + CurveName(c.z);
    };
    const auto rolled = [&](double h, double b, double tf, Grade grade) {
        s.shape = Shape::I;
        s.fabrication = Fabrication::Rolled;
        s.D = h, s.B = s.B2 = b, s.T = s.T2 = tf;
        return curves(grade);
    };
    EXPECT_EQ(rolled(0.450, 0.190, 0.040, Grade::S355), L"a b");
    EXPECT_EQ(rolled(0.450, 0.190, 0.040, Grade::S460), L"a0 a0");
    EXPECT_EQ(rolled(0.450, 0.190, 0.041, Grade::S420), L"b c");
    EXPECT_EQ(rolled(0.450, 0.190, 0.041, Grade::S460), L"a a");
    EXPECT_EQ(rolled(0.360, 0.300, 0.100, Grade::S235), L"b c") << "h/b of 1.2";
    EXPECT_EQ(rolled(0.360, 0.300, 0.100, Grade::S460), L"a a");
    EXPECT_EQ(rolled(0.360, 0.300, 0.101, Grade::S275), L"d d");
    EXPECT_EQ(rolled(0.360, 0.300, 0.101, Grade::S460), L"c c");
    const auto made = [&](Shape shape, Fabrication fabrication, double h, double b, double t, Grade grade) {
        s.shape = shape;
        s.fabrication = fabrication;
        s.D = h, s.B = s.B2 = b, s.T = s.T2 = t, s.t = 0.010;
        return curves(grade);
    };
    EXPECT_EQ(made(Shape::I, Fabrication::Welded, 0.4, 0.3, 0.040, Grade::S460), L"b c");
    EXPECT_EQ(made(Shape::UnequalI, Fabrication::Welded, 0.4, 0.3, 0.041, Grade::S355), L"c d");
    EXPECT_EQ(made(Shape::RHS, Fabrication::Rolled, 0.4, 0.3, 0.010, Grade::S355), L"a a");
    EXPECT_EQ(made(Shape::CHS, Fabrication::Rolled, 0.4, 0.4, 0.010, Grade::S460), L"a0 a0");
    EXPECT_EQ(made(Shape::RHS, Fabrication::Formed, 0.4, 0.3, 0.010, Grade::S460), L"c c");
    EXPECT_EQ(made(Shape::CHS, Fabrication::Welded, 0.4, 0.4, 0.010, Grade::S355), L"c c");
    // Welded boxes: thick welds of walls below 30 t cannot be excluded.
    EXPECT_EQ(made(Shape::RHS, Fabrication::Welded, 0.4, 0.4, 0.010, Grade::S355), L"b b");
    EXPECT_EQ(made(Shape::RHS, Fabrication::Welded, 0.4, 0.29, 0.010, Grade::S355), L"c c");
    EXPECT_EQ(made(Shape::RHS, Fabrication::Welded, 0.29, 0.4, 0.010, Grade::S355), L"c c");
    for (const Grade grade : {Grade::S275, Grade::S460}) {
        EXPECT_EQ(made(Shape::Angle, Fabrication::Rolled, 0.1, 0.1, 0.010, grade), L"b b");
        EXPECT_EQ(made(Shape::Channel, Fabrication::Rolled, 0.2, 0.1, 0.010, grade), L"c c");
        EXPECT_EQ(made(Shape::Tee, Fabrication::Welded, 0.2, 0.1, 0.010, grade), L"c c");
    }
}

// Tables 6.3 and 6.4 where 6.3.2.3 does not hold: rolled I sections curve a up to h/b of 2 and b beyond, welded ones c and d, others d. A choice of a
// country may have any curve, and 6.3.2.2 beyond its second ratio.
TEST(Buckling, LateralCurvesOfTheGeneralCase)
{
    Annex annex = UkAnnex();
    annex.rolled.firstRatio = 1.0;
    annex.rolled.firstCurve = L'a';
    annex.rolled.secondRatio = 1.5;
    annex.rolled.lastCurve = 0;
    SectionProperties s;
    const auto rule = [&](double ratio, Fabrication fabrication, const Annex& with) {
        s.fabrication = fabrication;
        s.B = s.B2 = 0.2, s.D = 0.2 * ratio;
        return LateralRuleOf(s, with).value();
    };
    EXPECT_EQ(rule(1.0, Fabrication::Rolled, annex).curve, Curve::A);
    EXPECT_STREQ(rule(1.0, Fabrication::Rolled, annex).clause, L"6.3.2.3");
    const LateralRule stocky = rule(2.0, Fabrication::Rolled, annex);
    EXPECT_STREQ(stocky.clause, L"6.3.2.2");
    EXPECT_EQ(stocky.curve, Curve::A);
    EXPECT_EQ(stocky.lambda0, 0.2);
    EXPECT_EQ(stocky.beta, 1.0);
    EXPECT_FALSE(stocky.isModified);
    EXPECT_EQ(rule(2.1, Fabrication::Rolled, annex).curve, Curve::B);
    EXPECT_EQ(rule(3.2, Fabrication::Welded, annex).curve, Curve::D);
    s.shape = Shape::UnequalI;
    EXPECT_EQ(rule(2.0, Fabrication::Welded, annex).curve, Curve::C);
    EXPECT_EQ(rule(2.0, Fabrication::Rolled, annex).curve, Curve::A);
    s.shape = Shape::Channel;
    EXPECT_STREQ(rule(2.0, Fabrication::Rolled, UkAnnex()).clause, L"6.3.2.3");
    EXPECT_EQ(rule(2.0, Fabrication::Rolled, UkAnnex()).curve, Curve::D);
    EXPECT_STREQ(rule(2.0, Fabrication::Rolled, RecommendedAnnex()).clause, L"6.3.2.2");
    EXPECT_EQ(rule(2.0, Fabrication::Rolled, RecommendedAnnex()).curve, Curve::D);
    s.shape = Shape::RHS;
    EXPECT_STREQ(rule(2.0, Fabrication::Rolled, UkAnnex()).clause, L"6.3.2.3");
    EXPECT_STREQ(rule(2.0, Fabrication::Rolled, RecommendedAnnex()).clause, L"6.3.2.2");
    // A box no higher than wide that thick flanges make stiffer about y-y.
    s.Ix = 2e-4, s.Iy = 1e-4;
    EXPECT_STREQ(rule(1.0, Fabrication::Welded, UkAnnex()).clause, L"6.3.2.2");
    s.Ix = 1e-4;
    s.D = s.B;
    EXPECT_FALSE(LateralRuleOf(s, UkAnnex()));
}

// y0 = 0: flexure and torsion by themselves, the smaller one; otherwise below both, and a root of the characteristic equation
// β N² - (Ny + NT) N + Ny NT = 0.
TEST(Buckling, TorsionalFlexuralForceSolvesItsEquation)
{
    EXPECT_DOUBLE_EQ(TorsionalFlexuralNcr(3.0, 2.0, 0.0, 1.0), 2.0);
    EXPECT_DOUBLE_EQ(TorsionalFlexuralNcr(2.0, 3.0, 0.0, 1.0), 2.0);
    for (const double y0 : {0.1, 0.5, 0.9})
        for (const double NT : {0.2, 1.0, 5.0}) {
            const double Ny = 1.3;
            const double N = TorsionalFlexuralNcr(Ny, NT, y0, 1.0);
            EXPECT_LT(N, std::min(Ny, NT));
            EXPECT_NEAR((1.0 - y0 * y0) * N * N - (Ny + NT) * N + Ny * NT, 0.0, 1e-12);
        }
}

// Table B.3.
TEST(Buckling, EquivalentMomentFactorsOfTableB3)
{
    const auto linear = [](double psi) { return EquivalentMomentFactor({1.0, 0.5 * (1.0 + psi), psi, true}); };
    EXPECT_DOUBLE_EQ(linear(1.0), 1.0);
    EXPECT_DOUBLE_EQ(linear(0.0), 0.6);
    EXPECT_DOUBLE_EQ(linear(-0.5), 0.4);
    EXPECT_DOUBLE_EQ(linear(-1.0), 0.4);
    const auto uniform = [](double left, double middle, double right) {
        return EquivalentMomentFactor({left, middle, right, false, true, false});
    };
    const auto point = [](double left, double middle, double right) {
        return EquivalentMomentFactor({left, middle, right, false, false, true});
    };
    EXPECT_DOUBLE_EQ(uniform(0.0, 1.0, 0.0), 0.95) << "simply supported";
    EXPECT_DOUBLE_EQ(point(0.0, 1.0, 0.0), 0.90);
    // Fixed ends, uniform load: Mh = -2 Ms; αs = -0.5, ψ = 1: 0.1 + 0.4.
    EXPECT_DOUBLE_EQ(uniform(-2.0, 1.0, -2.0), 0.5);
    // Fixed ends, force in the middle: αs = -1: 0.8.
    EXPECT_DOUBLE_EQ(point(-1.0, 1.0, -1.0), 0.8);
    // Propped, uniform load: Mh = -1/8, Ms = 1/16: αs = -0.5, ψ = 0.
    EXPECT_DOUBLE_EQ(uniform(-2.0, 1.0, 0.0), 0.5);
    EXPECT_DOUBLE_EQ(uniform(1.0, 0.5, 0.0), 0.6) << "0.2 + 0.8 αs";
    EXPECT_DOUBLE_EQ(uniform(0.5, 1.0, 0.5), 0.975);
    EXPECT_DOUBLE_EQ(uniform(-0.5, 1.0, 0.5), 0.95 + 0.05 * -0.5 * -1.0);
    // Both ends alike: it does not matter which comes first.
    for (const double a : {-1.5, -0.7, 0.3, 1.2})
        for (const double b : {-1.1, -0.2, 0.8}) {
            EXPECT_DOUBLE_EQ(uniform(a, 1.0, b), uniform(b, 1.0, a));
            EXPECT_DOUBLE_EQ(uniform(a, 1.0, b), uniform(-a, -1.0, -b));
        }
    // Continuous where one row of the table meets the next.
    for (const double psi : {-1.0, -0.6, -0.2, 0.0, 0.5, 1.0}) {
        EXPECT_NEAR(uniform(1.0, 1e-9, psi), uniform(1.0, -1e-9, psi), 1e-8);
        EXPECT_NEAR(uniform(1e-9, 1.0, 1e-9 * psi), uniform(-1e-9, 1.0, -1e-9 * psi), 1e-8);
        EXPECT_LE(uniform(1.0, 1.0, psi), 1.0);
        EXPECT_NEAR(uniform(1.0 + 1e-9, 1.0, psi), uniform(1.0 - 1e-9, 1.0, psi), 1e-8);
        EXPECT_NEAR(point(1.0 + 1e-9, 1.0, psi), point(1.0 - 1e-9, 1.0, psi), 1e-8);
    }
}

// Tables B.1 and B.2 without axial force, beyond their limits of slenderness, and by hand.
TEST(Buckling, InteractionFactorsHaveTheirLimits)
{
    AnnexBInput i;
    i.Cmy = 0.7, i.Cmz = 0.8, i.CmLT = 0.6;
    i.lambdaY = 0.6, i.lambdaZ = 1.2;
    for (const bool hollow : {false, true})
        for (const bool plastic : {true, false}) {
            i.isHollow = hollow;
            i.isPlastic = plastic;
            i.ny = i.nz = 0.0;
            const InteractionFactors none = AnnexB(i);
            EXPECT_DOUBLE_EQ(none.kyy, i.Cmy) << "no force";
            EXPECT_DOUBLE_EQ(none.kzz, i.Cmz);
            EXPECT_DOUBLE_EQ(none.kyz, plastic ? 0.6 * i.Cmz : i.Cmz);
            EXPECT_DOUBLE_EQ(none.kzy, hollow ? (plastic ? 0.6 : 0.8) * i.Cmy : 1.0);
            i.ny = i.nz = 0.5;
            const InteractionFactors some = AnnexB(i);
            EXPECT_GT(some.kyy, none.kyy);
            EXPECT_GT(some.kzz, none.kzz);
            // Beyond a slenderness of 1 no factor grows any more.
            AnnexBInput slender = i;
            slender.lambdaY = slender.lambdaZ = 5.0;
            AnnexBInput one = i;
            one.lambdaY = one.lambdaZ = 1.0;
            EXPECT_DOUBLE_EQ(AnnexB(slender).kyy, AnnexB(one).kyy);
            EXPECT_DOUBLE_EQ(AnnexB(slender).kzz, AnnexB(one).kzz);
            EXPECT_DOUBLE_EQ(AnnexB(slender).kzy, AnnexB(one).kzy);
        }
    // By hand: class 1, Cmy 0.7, λy 0.6, ny 0.5: 0.7 (1 + 0.4 * 0.5) = 0.84; λz 1.2, nz 0.5: kzz = 0.8 (1 + 1.4 * 0.5) = 1.36, limited;
    // kzy = 1 - 0.1 * 0.5/0.35 = 0.857.
    i.isHollow = false, i.isPlastic = true;
    EXPECT_NEAR(AnnexB(i).kyy, 0.84, 1e-12);
    EXPECT_NEAR(AnnexB(i).kzz, 1.36, 1e-12);
    EXPECT_NEAR(AnnexB(i).kyz, 0.816, 1e-12);
    EXPECT_NEAR(AnnexB(i).kzy, 1.0 - 0.05 / 0.35, 1e-12);
    i.lambdaZ = 0.3;
    EXPECT_NEAR(AnnexB(i).kzy, 0.9, 1e-12) << "0.6 + λz";
}

// A moment between an end and the middle, larger than both, is no moment that Table B.3 leaves out: 60 kNm at the quarter points of a column
// whose ends have 1 kNm, and none in the middle.
TEST(Buckling, AMomentBetweenEndAndMiddleCounts)
{
    MomentPattern p;
    p.left = p.right = 1e3;
    p.middle = 0.0;
    p.linear = p.uniform = false;
    p.point = true;
    p.largest = 60e3;
    EXPECT_NEAR(EquivalentMomentFactor(p), 0.90 + 0.10 / 60.0, 1e-12);
    // Where the end is the largest, the table alone: αs = 0.
    p.left = p.right = p.largest = 60e3;
    EXPECT_NEAR(EquivalentMomentFactor(p), 0.4, 1e-12);
}

// Table B.3 where nothing stands in its rows: no moment at all, and moments that vanish at both ends and in the middle. There the larger of both
// readings counts, 1.0, whatever the moments between.
TEST(Buckling, EquivalentMomentFactorsWithoutMomentsAtTheEnds)
{
    EXPECT_DOUBLE_EQ(EquivalentMomentFactor({0.0, 0.0, 0.0, true}), 1.0);
    EXPECT_DOUBLE_EQ(EquivalentMomentFactor({0.0, 0.0, 0.0, false, true, false, 1.0}), 1.0);
    EXPECT_DOUBLE_EQ(EquivalentMomentFactor({0.0, 0.0, 0.0, false, false, true, -1.0}), 1.0);
}

// Elastic critical forces and moments of sections with one axis of symmetry or none, a second time: by the work of every fibre's stress on
// the displacements of the buckle, and by the elastic analysis of members.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include <Eigen/Dense>

#include "CheckedMember.h"
#include "Sections.h"
#include "keltrix/ec3/Critical.h"
#include "keltrix/stability/CriticalLoad.h"

using namespace EC3Test;

namespace {

constexpr double E = 210e9, G = 81e9;
constexpr double PI2 = std::numbers::pi * std::numbers::pi;
constexpr double INF = std::numeric_limits<double>::infinity();

// A section of rectangles without radii, by points of Gauss, in the axes of its legs: y across from the back, z up. The quadrature is exact for
// what is summed here.
class Plates {
public:
    void Rectangle(double y1, double y2, double z1, double z2)
    {
        const double g = std::sqrt(0.6);
        const double at[] = {-g, 0.0, g}, weight[] = {5.0 / 18, 8.0 / 18, 5.0 / 18};
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j)
                m_points.push_back({0.5 * (y1 + y2) + 0.5 * at[i] * (y2 - y1),
                                    0.5 * (z1 + z2) + 0.5 * at[j] * (z2 - z1),
                                    (y2 - y1) * (z2 - z1) * weight[i] * weight[j]});
    }
    template <class Value>
    double Sum(Value value) const
    {
        double sum = 0.0;
        for (const auto& p : m_points)
            sum += p[2] * value(p[0] - m_y, p[1] - m_z);
        return sum;
    }
    void Centre()
    {
        const double A = Sum([](double, double) { return 1.0; });
        const double y = Sum([](double py, double) { return py; }) / A;
        m_z = Sum([](double, double pz) { return pz; }) / A;
        m_y = y;
    }
    // Bending stiffness in both directions, twist; and the work of stresses on the slopes of a half wave. A point moves by v - (z - zs) φ across
    // and w + (y - ys) φ up.
    Eigen::Matrix3d Stiffness(double It, double Iw, double L) const
    {
        const double k = PI2 * E / (L * L);
        Eigen::Matrix3d K = Eigen::Matrix3d::Zero();
        K(0, 0) = k * Sum([](double y, double) { return y * y; });
        K(1, 1) = k * Sum([](double, double z) { return z * z; });
        K(0, 1) = K(1, 0) = k * Sum([](double y, double z) { return y * z; });
        K(2, 2) = G * It + k * Iw;
        return K;
    }
    template <class Stress>
    Eigen::Matrix3d Work(double ys, double zs, Stress stress) const
    {
        Eigen::Matrix3d W = Eigen::Matrix3d::Zero();
        for (const auto& p : m_points) {
            const double y = p[0] - m_y, z = p[1] - m_z;
            const Eigen::Vector3d v(1.0, 0.0, zs - z), w(0.0, 1.0, y - ys);
            W += p[2] * stress(y, z) * (v * v.transpose() + w * w.transpose());
        }
        return W;
    }

private:
    std::vector<std::array<double, 3>> m_points;
    double m_y = 0.0, m_z = 0.0;
};

Plates PlatesOf(const Section& s)
{
    Plates p;
    switch (s.shape) {
    case Shape::Angle:
        p.Rectangle(0, s.tw, 0, s.h);
        p.Rectangle(s.tw, s.b, 0, s.tw);
        break;
    case Shape::Channel:
        p.Rectangle(0, s.tw, s.tf, s.h - s.tf);
        p.Rectangle(0, s.b, 0, s.tf);
        p.Rectangle(0, s.b, s.h - s.tf, s.h);
        break;
    default:
        p.Rectangle(-0.5 * s.b, 0.5 * s.b, s.h - s.tf, s.h);
        p.Rectangle(-0.5 * s.tw, 0.5 * s.tw, s.shape == Shape::Tee ? 0.0 : s.tf2, s.h - s.tf);
        if (s.shape != Shape::Tee) p.Rectangle(-0.5 * s.b2, 0.5 * s.b2, 0, s.tf2);
        break;
    }
    p.Centre();
    return p;
}

Section RandomSection(std::mt19937& random, int i)
{
    const auto mm = [&](double a, double b) {
        return std::to_wstring(static_cast<int>(std::uniform_real_distribution<double>(a, b)(random)));
    };
    const std::wstring x = L"x";
    std::wstring text;
    switch (i % 4) {
    case 0:
        text =
            L"GI " + mm(200, 900) + x + mm(100, 300) + x + mm(100, 300) + x + mm(6, 15) + x + mm(8, 30) + x + mm(8, 30);
        break;
    case 1:
        text = L"C " + mm(100, 400) + x + mm(50, 120) + x + mm(5, 12) + x + mm(6, 18);
        break;
    case 2:
        text = L"TEE " + mm(80, 300) + x + mm(80, 300) + x + mm(5, 15) + x + mm(8, 25);
        break;
    default:
        text = L"ANGLE " + mm(60, 200) + x + mm(60, 200) + x + mm(5, 18);
        break;
    }
    return SectionOf(CString(text.c_str()));
}

ModeForces ForcesOf(const Section& s, double major, double minor, double twist)
{
    return {FlexuralNcr(E, MajorSecondMoment(s), major), FlexuralNcr(E, MinorSecondMoment(s), minor),
            TorsionalNcr(s.basis, E, G, twist)};
}

// Inverse of the factors of the generalised problem K = λ W.
Eigen::Vector3d Factors(const Eigen::Matrix3d& K, const Eigen::Matrix3d& W)
{
    return Eigen::GeneralizedSelfAdjointEigenSolver<Eigen::Matrix3d>(W, K).eigenvalues();
}

} // namespace

// Flexure about both axes and twist, of sections without radii: the smallest of the coupled forces is the smallest of all three roots or flexure in
// the plane of symmetry.
TEST(Critical, CoupledForcesAreThoseOfTheFibres)
{
    std::mt19937 random(31);
    for (int i = 0; i < 2000; ++i) {
        const Section s = RandomSection(random, i);
        const double L = std::uniform_real_distribution<double>(0.5, 10.0)(random);
        const Plates p = PlatesOf(s);
        const Eigen::Matrix3d K = p.Stiffness(s.It, s.Iw, L);
        const Eigen::Matrix3d W = p.Work(s.y0, s.z0, [&](double, double) { return 1.0 / s.A; });
        const double least = 1.0 / Factors(K, W).maxCoeff();
        const ModeForces forces = ForcesOf(s, L, L, L);
        const double found = std::min({CoupledNcr(s, forces), forces.major, forces.minor});
        EXPECT_NEAR(found / least, 1.0, 2e-6) << "seed 31, section " << i;
    }
}

// One coupled flexure: the closed form of 6.3.1.4. A mode that is held leaves the others.
TEST(Critical, CoupledForcesHaveTheClosedFormAndItsLimits)
{
    const Section channel = SectionOf(L"PFC 200x90x30");
    const ModeForces f = ForcesOf(channel, 4.0, 4.0, 4.0);
    EXPECT_NEAR(CoupledNcr(channel, f) / TorsionalFlexuralNcr(f.major, f.twist, channel.y0, channel.i0), 1.0, 1e-12);
    EXPECT_NEAR(CoupledNcr(channel, {INF, f.minor, f.twist}) / f.twist, 1.0, 1e-12);
    EXPECT_TRUE(std::isinf(CoupledNcr(channel, {f.major, f.minor, INF})));
    const Section tee = SectionOf(L"T 229x191x49");
    const ModeForces t = ForcesOf(tee, 3.0, 3.0, 3.0);
    EXPECT_NEAR(CoupledNcr(tee, t) / TorsionalFlexuralNcr(t.minor, t.twist, tee.z0, tee.i0), 1.0, 1e-12);
    const Section equal = SectionOf(L"L 100x100x10");
    EXPECT_EQ(ShearCentreOf(equal).alongMinor, 0.0) << "u-u is the axis of symmetry";
    const ModeForces a = ForcesOf(equal, 2.0, 2.0, 2.0);
    EXPECT_NEAR(CoupledNcr(equal, a) /
                    TorsionalFlexuralNcr(a.major, a.twist, ShearCentreOf(equal).alongMajor, equal.i0),
                1.0, 1e-12);
    const Section both = SectionOf(L"UB 457x191x67");
    const ModeForces b = ForcesOf(both, 3.0, 3.0, 3.0);
    EXPECT_EQ(CoupledNcr(both, b), b.twist);
}

// Columns between forks by the elastic analysis of members.
TEST(Critical, CoupledForcesAreThoseOfColumns)
{
    for (const wchar_t* name : {L"T 229x191x49", L"T 102x133x13", L"GI 400x200x120x8x15x12", L"GI 400x120x200x8x12x15"})
        for (const double L : {1.5, 4.0, 9.0}) {
            const Section s = SectionOf(CString(name));
            const DesignTest::Member m = Column(L, 1000.0, 0.0, 0.0);
            const auto constants = Stability::MakeSectionConstants(CSection(CString(name)), E, G, nullptr);
            const auto loads = Stability::FindCriticalLoads(
                m.points, m.subSpans, Design::MomentDiagram(m.points, m.subSpans, Design::Bending::Major), *constants);
            ASSERT_TRUE(loads.Governing());
            const ModeForces f = ForcesOf(s, L, L, L);
            EXPECT_NEAR(CoupledNcr(s, f) / (1000.0 * loads.Governing()->positive->lambda), 1.0, 2e-4) << L;
        }
}

// Different lengths: a fork at mid-height of a column whose lateral support is at its ends alone can only raise the force, and the closed
// form stays below the exact value.
TEST(Critical, CoupledForcesOfDifferentLengthsAreSafe)
{
    for (const wchar_t* name : {L"T 229x191x49", L"GI 400x200x120x8x15x12"})
        for (const wchar_t* inside : {L"TR", L"MINV"}) {
            const double L = 6.0;
            DesignTest::Member m;
            AddPoint(m, 0.0, L"Pinned");
            AddPoint(m, 0.5 * L, inside);
            AddPoint(m, L, L"Pinned");
            AddSubSpan(m, 0.0, 0.0, 0.0, 0.0);
            AddSubSpan(m, 0.0, 0.0, 0.0, 0.0);
            for (Steel::CSubSpan& sub : m.subSpans)
                sub.SetForcesAll({-1000.0, 0.0, 0.0}, {-1000.0, 0.0, 0.0});
            const auto constants = Stability::MakeSectionConstants(CSection(CString(name)), E, G, nullptr);
            const auto loads = Stability::FindCriticalLoads(
                m.points, m.subSpans, Design::MomentDiagram(m.points, m.subSpans, Design::Bending::Major), *constants);
            ASSERT_TRUE(loads.Governing());
            const Section s = SectionOf(CString(name));
            const bool twistHeld = inside[0] == L'T';
            const double found = CoupledNcr(s, ForcesOf(s, L, twistHeld ? L : 0.5 * L, twistHeld ? 0.5 * L : L));
            const double exact = 1000.0 * loads.Governing()->positive->lambda;
            EXPECT_LE(found, exact * 1.0002);
            EXPECT_GT(found, 0.6 * exact);
        }
}

// Uniform moments of both senses, of sections without radii, by the fibres' stresses: an unequal angle about its own u-u, with the sense that is worse.
TEST(Critical, UniformMomentsAreThoseOfTheFibres)
{
    std::mt19937 random(32);
    for (int i = 0; i < 2000; ++i) {
        const Section s = RandomSection(random, i);
        const double L = std::uniform_real_distribution<double>(0.5, 10.0)(random);
        const Plates p = PlatesOf(s);
        Eigen::Matrix2d inertia;
        inertia << p.Sum([](double y, double) { return y * y; }), p.Sum([](double y, double z) { return y * z; }),
            p.Sum([](double y, double z) { return y * z; }), p.Sum([](double, double z) { return z * z; });
        // Distance from the axis of the moment: z, of an angle across u-u, which is along the direction in which it is spread most.
        Eigen::Vector2d across(0.0, 1.0);
        double I = inertia(1, 1);
        if (s.shape == Shape::Angle) {
            const Eigen::SelfAdjointEigenSolver<Eigen::Matrix2d> principal(inertia);
            across = principal.eigenvectors().col(1);
            I = principal.eigenvalues()(1);
        }
        const Eigen::Matrix3d K = p.Stiffness(s.It, s.Iw, L);
        // 1 N·m that compresses the side of large z: compression above zero, as the work of an axial force has it.
        const Eigen::Matrix3d W =
            p.Work(s.y0, s.z0, [&](double y, double z) { return (across(0) * y + across(1) * z) / I; });
        const Eigen::Vector3d inverse = Factors(K, W);
        const double top = 1.0 / inverse.maxCoeff(), bottom = -1.0 / inverse.minCoeff();
        if (s.shape == Shape::Angle) {
            EXPECT_NEAR(UniformMcr(s, E, G, L, true) / std::min(top, bottom), 1.0, 2e-5) << "seed 32, section " << i;
            continue;
        }
        EXPECT_NEAR(UniformMcr(s, E, G, L, true) / top, 1.0, 2e-5) << "seed 32, section " << i;
        EXPECT_NEAR(UniformMcr(s, E, G, L, false) / bottom, 1.0, 2e-5) << "seed 32, section " << i;
    }
}

// Equal angles: Timoshenko's narrow section, π/L (E Iv G It)^0.5.
TEST(Critical, EqualAnglesHaveNoMonosymmetry)
{
    const Section s = SectionOf(L"L 100x100x10");
    EXPECT_NEAR(UniformMcr(s, E, G, 3.0, true), std::numbers::pi / 3.0 * std::sqrt(E * s.Iv * G * s.It), 1e-6);
}

// About u-u and v-v, both ways of turning the angle.
TEST(Critical, MomentsOfAnglesAreTheLargestOfBothWays)
{
    std::mt19937 random(33);
    const auto real = [&] { return std::uniform_real_distribution<double>(-1.0, 1.0)(random); };
    const Section s = SectionOf(L"L 150x75x12");
    const double a = s.basis.alpha;
    for (int i = 0; i < 100; ++i) {
        const double My = real(), Mz = i % 3 == 0 ? 0.0 : real();
        double u = 0.0, v = 0.0;
        for (const double side : {-1.0, 1.0}) {
            u = std::max(u, std::abs(std::cos(a) * My + side * std::sin(a) * Mz));
            v = std::max(v, std::abs(-std::sin(a) * My + side * std::cos(a) * Mz));
        }
        const AxisMoments found = LargestAxisMoments(s, My, Mz);
        EXPECT_NEAR(found.major, u, 1e-12);
        EXPECT_NEAR(found.minor, v, 1e-12);
    }
    EXPECT_EQ(LargestAxisMoments(SectionOf(L"PFC 200x90x30"), -2.0, 3.0).major, 2.0);
}

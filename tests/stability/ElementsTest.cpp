// Order of convergence of the elements, and the finder of factors with and without the factors of a coarser mesh.

#include <gtest/gtest.h>

#include "stability/Beams.h"
#include "stability/src/Eigenvalues.h"
#include "stability/src/Layout.h"

namespace StabilityTest {

namespace {

using Stability::Eigenpairs;
using Stability::Mesh;

/// Factors of a member on a mesh that is halved again and again, each found from scratch.
std::vector<Eigenpairs> OnHalvedMeshes(const Member& m, const SectionConstants& s, int meshes)
{
    const Design::MomentDiagram major = MajorOf(m);
    const Stability::Layout layout = Stability::MakeLayout({m.points, m.subSpans, major, s}, 0);
    const bool warpingFree = Stability::IsWarpingFree(s, m.Length());
    std::vector<Eigenpairs> found;
    Mesh mesh = Stability::MakeMesh(layout, s);
    for (int i = 0; i < meshes; ++i) {
        if (i > 0) mesh = Stability::Halved(mesh, layout);
        const Stability::Freedoms freedoms(mesh, s, warpingFree);
        found.push_back(Stability::FindEigenpairs(Stability::Assemble(mesh, layout, s, warpingFree, freedoms), {}));
    }
    return found;
}

} // namespace

// Cubic elements: the error of a factor falls with the fourth power of their size, from above.
TEST(Elements, FactorsConvergeWithTheFourthPower)
{
    for (const CSection& section : {Steel::Test::HostI(0.4, 0.18, 0.0086, 0.0135, 0.021),
                                    Steel::Test::HostGeneralI(0.6, 0.3, 0.2, 0.01, 0.02, 0.015, 0.0)}) {
        const SectionConstants s = ConstantsOf(section);
        const double exact = UniformMoment(s, 6.0);
        const std::vector<Eigenpairs> found = OnHalvedMeshes(Beam(6.0, 1.0, 1.0), s, 4);
        for (std::size_t i = 0; i < found.size(); ++i) {
            ASSERT_TRUE(found[i].positive);
            EXPECT_GT(found[i].positive->lambda, exact * (1.0 - 1e-10));
            if (i == 0) continue;
            const double ratio =
                (found[i - 1].positive->lambda / exact - 1.0) / (found[i].positive->lambda / exact - 1.0);
            EXPECT_NEAR(std::log2(ratio), 4.0, 0.1) << i;
        }
    }
    // Loads above the shear centre, restraints of one flange in between: no closed form, differences of differences.
    const SectionConstants s = ConstantsOf(Steel::Test::HostI(0.4, 0.18, 0.0086, 0.0135, 0.021));
    Member loaded = CentrallyLoaded(6.0, 0.2);
    auto held = Restraint(L"F1L");
    held.SetLoadHeight(0.2);
    loaded.points[1].SetRestraint(held);
    const std::vector<Eigenpairs> found = OnHalvedMeshes(loaded, s, 4);
    for (std::size_t i = 2; i < found.size(); ++i) {
        const double ratio = (found[i - 2].positive->lambda - found[i - 1].positive->lambda) /
                             (found[i - 1].positive->lambda - found[i].positive->lambda);
        EXPECT_NEAR(std::log2(ratio), 4.0, 0.25) << i;
    }
}

// A guess that is wrong in vector, factor or sign changes nothing.
TEST(Elements, GuessesDoNotMislead)
{
    const SectionConstants s = ConstantsOf(Steel::Test::HostGeneralI(0.6, 0.3, 0.2, 0.01, 0.02, 0.015, 0.0));
    const Member m = UniformlyLoaded(6.0, 0.3);
    const Design::MomentDiagram major = MajorOf(m);
    const Stability::Layout layout = Stability::MakeLayout({m.points, m.subSpans, major, s}, 0);
    const Mesh mesh = Stability::MakeMesh(layout, s);
    const Stability::Freedoms freedoms(mesh, s, false);
    const Stability::Pencil pencil = Stability::Assemble(mesh, layout, s, false, freedoms);
    const Eigenpairs right = Stability::FindEigenpairs(pencil, {});
    ASSERT_TRUE(right.positive && right.negative);
    const auto expectRight = [&](const Eigenpairs& guess, const char* what) {
        const Eigenpairs found = Stability::FindEigenpairs(pencil, guess);
        ASSERT_TRUE(found.positive && found.negative) << what;
        EXPECT_NEAR(found.positive->lambda, right.positive->lambda, 1e-7 * right.positive->lambda) << what;
        EXPECT_NEAR(found.negative->lambda, right.negative->lambda, -1e-7 * right.negative->lambda) << what;
    };
    expectRight(right, "itself");
    for (const double factor : {0.5, 0.999, 1.001, 1.5, 30.0}) {
        Eigenpairs guess = right;
        guess.positive->lambda *= factor;
        expectRight(guess, "another factor");
        guess.positive->vector = Stability::Vector::Ones(guess.positive->vector.size());
        expectRight(guess, "another vector");
        guess.negative.reset();
        expectRight(guess, "one sign");
    }
    Eigenpairs other = right;
    other.positive->vector.setZero();
    expectRight(other, "no vector");
    other.positive->vector.setConstant(std::nan(""));
    expectRight(other, "no numbers");
}

} // namespace StabilityTest

#pragma once

// Buckling factors kσ of long plates under linearly varying compression, by the energy method: one half-wave sin(πx/a) along, a series
// across, the least over a. ν = 0.3. σ = σ1 (1 - (1 - ψ) η), η from the more compressed edge; kσ refers to σ1 and π² E t²/(12 (1 - ν²) b²).

#include <Eigen/Eigenvalues>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace EC3Test {

enum class PlateEdges { Internal, TipCompressed, RootCompressed };

/// kσ for a half-wave a = length times the width.
inline double PlateBucklingFactor(PlateEdges edges, double psi, double length)
{
    constexpr int N = 9;
    constexpr int POINTS = 160;
    constexpr double nu = 0.3;
    constexpr double pi = std::numbers::pi;
    const double p2 = pi * pi / (length * length);
    const bool internal = edges == PlateEdges::Internal;
    using Matrix = Eigen::Matrix<double, N, N>;
    Matrix K = Matrix::Zero();
    Matrix G = Matrix::Zero();
    for (int i = 0; i < POINTS; ++i) {
        const double s = (i + 0.5) / POINTS; // from the supported edge of an outstand
        const double eta = edges == PlateEdges::TipCompressed ? 1.0 - s : s;
        Eigen::Matrix<double, N, 1> f, f1, f2;
        for (int n = 1; n <= N; ++n) {
            f(n - 1) = internal ? std::sin(n * pi * s) : std::pow(s, n);
            f1(n - 1) = internal ? n * pi * std::cos(n * pi * s) : n * std::pow(s, n - 1);
            f2(n - 1) = internal ? -n * n * pi * pi * std::sin(n * pi * s)
                        : n > 1  ? n * (n - 1) * std::pow(s, n - 2)
                                 : 0.0;
        }
        K += (f2 * f2.transpose() + p2 * p2 * f * f.transpose() - nu * p2 * (f * f2.transpose() + f2 * f.transpose()) +
              2.0 * (1.0 - nu) * p2 * f1 * f1.transpose()) /
             POINTS;
        G += pi * pi * p2 * (1.0 - (1.0 - psi) * eta) * f * f.transpose() / POINTS;
    }
    const Eigen::GeneralizedSelfAdjointEigenSolver<Matrix> solver(G, K, Eigen::EigenvaluesOnly);
    return 1.0 / solver.eigenvalues().maxCoeff();
}

/// The least kσ over the half-wave length, up to a very long one.
inline double PlateBucklingFactor(PlateEdges edges, double psi)
{
    double least = 1e30;
    for (double length = 0.2; length < 40.0; length *= 1.05)
        least = std::min(least, PlateBucklingFactor(edges, psi, length));
    return least;
}

} // namespace EC3Test

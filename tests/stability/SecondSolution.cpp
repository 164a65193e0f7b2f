#include "stability/SecondSolution.h"

#include <Eigen/Dense>
#include <cmath>

namespace StabilityTest {

namespace {

using Eigen::MatrixXd;
using Eigen::RowVectorXd;
using Eigen::VectorXd;

// Legendre polynomials on -1 to 1 with first and second derivative, by their recurrence.
struct Series {
    RowVectorXd value, first, second;
};
Series LegendreAt(double t, int degree)
{
    Series s{RowVectorXd::Zero(degree + 1), RowVectorXd::Zero(degree + 1), RowVectorXd::Zero(degree + 1)};
    s.value[0] = 1.0;
    s.value[1] = t;
    s.first[1] = 1.0;
    for (int n = 1; n < degree; ++n) {
        s.value[n + 1] = ((2 * n + 1) * t * s.value[n] - n * s.value[n - 1]) / (n + 1);
        s.first[n + 1] = s.first[n - 1] + (2 * n + 1) * s.value[n];
        s.second[n + 1] = s.second[n - 1] + (2 * n + 1) * s.first[n];
    }
    return s;
}

// Points and weights of Gauss's rule: Newton's method on the polynomial itself.
std::vector<std::pair<double, double>> GaussRule(int count)
{
    std::vector<std::pair<double, double>> rule;
    for (int i = 0; i < count; ++i) {
        double t = std::cos(3.14159265358979324 * (i + 0.75) / (count + 0.5));
        for (int step = 0; step < 50; ++step) {
            const Series s = LegendreAt(t, count);
            t -= s.value[count] / s.first[count];
        }
        const double slope = LegendreAt(t, count).first[count];
        rule.push_back({t, 2.0 / ((1.0 - t * t) * slope * slope)});
    }
    return rule;
}

class Ritz {
public:
    Ritz(const SecondMember& member, int degree) : m(member), p(degree), n(degree + 1)
    {
        size = 2 * n * static_cast<int>(m.subSpans.size());
        K = MatrixXd::Zero(size, size);
        S = MatrixXd::Zero(size, size);
    }

    SecondResult Solve()
    {
        for (int k = 0; k < Count(); ++k)
            Integrate(k);
        for (int i = 0; i <= Count(); ++i)
            AtPoint(i);
        for (int k = 0; k < Count(); ++k)
            for (const SecondCondition& c : Sub(k).along)
                Along(k, c);
        return Reduce();
    }

private:
    int Count() const { return static_cast<int>(m.subSpans.size()); }
    const SecondSubSpan& Sub(int k) const { return m.subSpans[static_cast<std::size_t>(k)]; }
    const SecondPoint& Point(int i) const { return m.points[static_cast<std::size_t>(i)]; }
    double Length(int k) const { return Point(k + 1).x - Point(k).x; }
    // Twist times a tenth of the length is of the size of a displacement.
    double Scale() const { return 10.0 / (Point(Count()).x - Point(0).x); }

    RowVectorXd V(int k, const RowVectorXd& values) const
    {
        RowVectorXd row = RowVectorXd::Zero(size);
        row.segment(2 * n * k, n) = values;
        return row;
    }
    RowVectorXd Phi(int k, const RowVectorXd& values) const
    {
        RowVectorXd row = RowVectorXd::Zero(size);
        row.segment(2 * n * k + n, n) = values * Scale();
        return row;
    }

    void Integrate(int k)
    {
        const auto& s = m.section;
        const double h = Length(k);
        const double d = 2.0 / h; // dt/dx
        const double i0 = (s.Iy + s.Iz) / s.A + s.zc * s.zc;
        const int at = 2 * n * k;
        auto Kvv = K.block(at, at, n, n);
        auto Kpp = K.block(at + n, at + n, n, n);
        auto Svv = S.block(at, at, n, n);
        auto Svp = S.block(at, at + n, n, n);
        auto Spp = S.block(at + n, at + n, n, n);
        const auto rule = GaussRule(p + 6);
        for (const auto& [t, weight] : rule) {
            const Series f = LegendreAt(t, p);
            const double w = weight * h / 2.0;
            const double x = 0.5 * h * (1.0 + t);
            const VectorXd v1 = d * f.first.transpose();
            const VectorXd v2 = d * d * f.second.transpose();
            const VectorXd q0 = f.value.transpose() * Scale();
            const VectorXd q1 = v1 * Scale();
            const VectorXd q2 = v2 * Scale();
            const auto& sub = Sub(k);
            // Sagging moment of a uniform load between given end moments.
            const double M = sub.momentLeft + (sub.momentRight - sub.momentLeft) * x / h + sub.load * x * (h - x) / 2.0;
            const double dM = (sub.momentRight - sub.momentLeft) / h + sub.load * (h / 2.0 - x);
            const double N = sub.compressionLeft + (sub.compressionRight - sub.compressionLeft) * x / h;
            Kvv += w * s.E * s.Iz * v2 * v2.transpose();
            Kpp += w * (s.E * s.Iw * q2 * q2.transpose() + s.G * s.It * q1 * q1.transpose());
            Svv += w * N * v1 * v1.transpose();
            Svp += w * v1 * (dM * q0 + M * q1 + N * s.zc * q1).transpose();
            Spp += w * ((s.betaZ * M + N * i0) * q1 * q1.transpose() + sub.load * sub.height * q0 * q0.transpose());
        }
    }

    void AtPoint(int i)
    {
        const int left = i - 1;
        const Series end = LegendreAt(1.0, p);
        const Series start = LegendreAt(-1.0, p);
        const bool warps = m.section.Iw == 0.0;
        if (i > 0 && i < Count()) {
            const double a = 2.0 / Length(left);
            const double b = 2.0 / Length(i);
            rows.push_back(V(left, end.value) - V(i, start.value));
            rows.push_back(V(left, a * end.first) - V(i, b * start.first));
            rows.push_back(Phi(left, end.value) - Phi(i, start.value));
            if (!warps) rows.push_back(Phi(left, a * end.first) - Phi(i, b * start.first));
        }
        const int k = i < Count() ? i : left;
        const Series& here = i < Count() ? start : end;
        const double d = 2.0 / Length(k);
        for (const SecondCondition& c : Point(i).conditions)
            rows.push_back(c.slope ? V(k, c.v * d * here.first) + Phi(k, c.phi * d * here.first)
                                   : V(k, c.v * here.value) + Phi(k, c.phi * here.value));
        const RowVectorXd twist = Phi(k, here.value);
        S += Point(i).load * Point(i).height * twist.transpose() * twist;
    }

    // A series that is zero, or constant, all along.
    void Along(int k, const SecondCondition& c)
    {
        for (int j = c.slope ? 1 : 0; j < n; ++j) {
            const RowVectorXd unit = RowVectorXd::Unit(n, j);
            rows.push_back(V(k, c.v * unit) + Phi(k, c.phi * unit));
        }
    }

    SecondResult Reduce()
    {
        MatrixXd basis = MatrixXd::Identity(size, size);
        if (!rows.empty()) {
            MatrixXd C(static_cast<int>(rows.size()), size);
            for (int i = 0; i < C.rows(); ++i)
                C.row(i) = rows[static_cast<std::size_t>(i)] / rows[static_cast<std::size_t>(i)].norm();
            Eigen::ColPivHouseholderQR<MatrixXd> qr(C.transpose());
            qr.setThreshold(1e-9);
            const int rank = static_cast<int>(qr.rank());
            const MatrixXd Q = qr.householderQ();
            basis = Q.rightCols(size - rank);
        }
        SecondResult result;
        if (basis.cols() == 0) {
            result.held = true;
            return result;
        }
        const MatrixXd full = S.selfadjointView<Eigen::Upper>();
        MatrixXd k = basis.transpose() * K * basis;
        MatrixXd s = basis.transpose() * full * basis;
        const VectorXd scale = k.diagonal().cwiseSqrt().cwiseInverse();
        if (!scale.allFinite()) return result;
        k = scale.asDiagonal() * k * scale.asDiagonal();
        s = scale.asDiagonal() * s * scale.asDiagonal();
        const Eigen::LLT<MatrixXd> llt(k);
        if (llt.info() != Eigen::Success) return result;
        // The smallest eigenvalue of a mechanism is rounding.
        if (llt.matrixLLT().diagonal().minCoeff() < 1e-3 &&
            Eigen::SelfAdjointEigenSolver<MatrixXd>(k, Eigen::EigenvaluesOnly).eigenvalues()[0] < 1e-11)
            return result;
        result.held = true;
        MatrixXd a = llt.matrixL().solve(s);
        a = llt.matrixL().solve(a.transpose().eval());
        const VectorXd values =
            Eigen::SelfAdjointEigenSolver<MatrixXd>(0.5 * (a + a.transpose()), Eigen::EigenvaluesOnly).eigenvalues();
        const double least = values[0];
        const double greatest = values[values.size() - 1];
        const double none = 1e-4 * std::max(std::abs(least), std::abs(greatest));
        if (greatest > none) result.positive = 1.0 / greatest;
        if (least < -none) result.negative = 1.0 / least;
        return result;
    }

    const SecondMember& m;
    int p;
    int n;
    int size = 0;
    MatrixXd K, S;
    std::vector<RowVectorXd> rows;
};

} // namespace

SecondResult SolveAgain(const SecondMember& member, int degree) { return Ritz(member, degree).Solve(); }

} // namespace StabilityTest

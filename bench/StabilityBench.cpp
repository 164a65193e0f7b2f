// Elastic critical loads of a single span and of a member of 20 sub-spans. Floor: one factorisation of a banded matrix of the size that the
// finer mesh has, without anything around it.

#include "Bench.h"

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "stability/Beams.h"

namespace Keltrix::Bench {

namespace {

using StabilityTest::AddPoint;
using StabilityTest::AddSpan;
using StabilityTest::Member;

/// Cholesky factor of a symmetric matrix with eight entries on each side of the diagonal.
double FactoriseBanded(int size)
{
    constexpr int BAND = 8;
    std::vector<double> rows(static_cast<std::size_t>(size) * BAND, -0.05);
    const auto at = [&](int i, int j) -> double& {
        return rows[static_cast<std::size_t>(i) * BAND + static_cast<std::size_t>(i - j)];
    };
    for (int i = 0; i < size; ++i) {
        const int first = std::max(0, i - BAND + 1);
        at(i, i) = 2.0;
        for (int j = first; j <= i; ++j) {
            double sum = at(i, j);
            for (int k = std::max(first, j - BAND + 1); k < j; ++k)
                sum -= at(i, k) * at(j, k);
            at(i, j) = i == j ? std::sqrt(sum) : sum / at(j, j);
        }
    }
    return rows.back();
}

/// A beam in sub-spans of which each point holds `held`, under a uniform load, or under equal loads at the points.
Member Divided(int count, const wchar_t* held, bool isUniform = true)
{
    const double load = isUniform ? 2.0 : 0.0;
    const double length = 6.0;
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    for (int i = 0; i < count; ++i) {
        const double a = length * i / count;
        const double b = length * (i + 1) / count;
        AddSpan(m, b - a, a * (length - a), b * (length - b), load, L"Free", i + 1 == count ? L"Pinned" : held);
    }
    return m;
}

void MeasureMember(const std::string& name, const Member& member)
{
    struct Input {
        Member member;
        Design::MomentDiagram major;
        Stability::SectionConstants section;
        Stability::Options options;
    };
    const auto in = std::make_shared<Input>();
    in->member = member;
    in->major = StabilityTest::MajorOf(in->member);
    in->section = StabilityTest::ConstantsOf(Steel::Test::HostI(0.4, 0.18, 0.0086, 0.0135, 0.021));
    in->options.continuity = true;
    const auto solve = [in] {
        return FindCriticalLoads(in->member.points, in->member.subSpans, in->major, in->section, in->options);
    };
    const int nodes = static_cast<int>(solve().Governing()->positive->shape.size());
    const std::string floor = "one factorisation, " + name;
    Measure(floor, [nodes] { return FactoriseBanded(4 * nodes); });
    Measure(name, [solve] { return solve().Governing()->positive->lambda; });
    Compare({name, floor});
}

} // namespace

void RegisterStability()
{
    MeasureMember("critical load, one span", Divided(1, L"Free"));
    MeasureMember("critical load, 20 sub-spans", Divided(20, L"Free"));
    MeasureMember("critical load, 20 sub-spans with loads between them", Divided(20, L"Free", false));
    MeasureMember("critical load, 20 restraints", Divided(20, L"TR"));
}

} // namespace Keltrix::Bench

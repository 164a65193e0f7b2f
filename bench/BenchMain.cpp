// Runs the benchmarks and prints the table of ratios in place of the usual list of times.

#include "Bench.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <stdexcept>
#include <vector>

namespace Keltrix::Bench {

namespace {

std::vector<Comparison>& Comparisons()
{
    static std::vector<Comparison> comparisons;
    return comparisons;
}

std::map<std::string, Work>& Works()
{
    static std::map<std::string, Work> works;
    return works;
}

/// Keeps one time for each benchmark: the shortest of its repetitions, which others on the machine disturbed least.
class RatioReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& context) override
    {
        PrintBasicContext(&GetErrorStream(), context);
        return true;
    }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Aggregate) continue;
            const std::string& name = run.run_name.function_name;
            const Work& work = Works().at(name);
            const double time = work.wallClock ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
            const double each = time / work.items;
            const auto known = m_nanoseconds.emplace(name, each).first;
            known->second = std::min(known->second, each);
        }
    }

    void Finalize() override
    {
        std::printf("| Figure | ns | Beside | ns | Ratio | Target | |\n|---|--:|---|--:|--:|--:|---|\n");
        for (const Comparison& comparison : Comparisons())
            PrintRow(comparison);
    }

private:
    void PrintRow(const Comparison& c) const
    {
        const auto figure = m_nanoseconds.find(c.figure);
        const auto reference = m_nanoseconds.find(c.reference);
        if (figure == m_nanoseconds.end() || reference == m_nanoseconds.end()) return; // filtered out
        const std::string& name = c.reference;
        const bool ownFloor = name == c.figure + ", floor";
        const double ratio = figure->second / reference->second;
        std::printf("| %s | %.4g | %s | %.4g | %.2f |", c.figure.c_str(), figure->second,
                    ownFloor ? "floor" : name.c_str(), reference->second, ratio);
        if (c.target > 0.0)
            std::printf(" %.2f | %s |\n", c.target, ratio <= c.target ? "met" : "**missed**");
        else
            std::printf(" | |\n");
    }

    std::map<std::string, double> m_nanoseconds;
};

} // namespace

void Compare(Comparison comparison) { Comparisons().push_back(std::move(comparison)); }

void SetWork(const std::string& name, const Work& work)
{
    if (!Works().emplace(name, work).second) throw std::logic_error("two benchmarks are called " + name);
}

} // namespace Keltrix::Bench

int main(int argc, char** argv)
{
    using namespace Keltrix::Bench;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return EXIT_FAILURE;
    try {
        RegisterMemberFiles();
        RegisterRestraints();
        RegisterEffectiveLengths();
        RegisterSections();
        RegisterSpans();
        RegisterResults();
#ifdef KELTRIX_BENCH_STABILITY
        RegisterStability();
#endif
#ifdef KELTRIX_BENCH_STATICS
        RegisterStatics();
#endif
#ifdef KELTRIX_BENCH_BEAMS
        RegisterBeams();
#endif
#ifdef KELTRIX_BENCH_EXAMPLES
        RegisterChecks();
#endif
#ifdef KELTRIX_BENCH_KSTEEL
        RegisterBatches();
#endif
        RatioReporter reporter;
        if (benchmark::RunSpecifiedBenchmarks(&reporter) == 0) return EXIT_FAILURE;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return EXIT_FAILURE;
    }
    benchmark::Shutdown();
    return EXIT_SUCCESS;
}

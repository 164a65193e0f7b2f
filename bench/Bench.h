#pragma once

#include <functional>
#include <string>
#include <utility>

#include <benchmark/benchmark.h>

/// Benchmarks as figures that stand beside something measured in the same run: a floor, which is the least work that the
/// task can be done with, or another figure. Only ratios of one run mean anything on a machine that others use too.
namespace Keltrix::Bench {

/// A row of the report: the time of a figure over that of a reference, and the most that this ratio may be.
struct Comparison {
    std::string figure;
    std::string reference;
    double target = 0.0; ///< 0: shown without judgement
};

/// Adds a row to the report.
void Compare(Comparison comparison);

/// Times are divided by `items`. Where every call makes something longer, the number of calls is limited, and `prepare`
/// starts that anew before the clock runs.
struct Work {
    double items = 1.0;
    long iterations = 0;
    std::function<void()> prepare = nullptr;
    bool wallClock = false; ///< for work of other processes, of which this one's processor time knows nothing
};
void SetWork(const std::string& name, const Work& work);

/// Registers a benchmark. `operation` is called once in every iteration and returns what must not be optimised away.
template <class Operation>
void Measure(const std::string& name, Operation operation, Work work = {})
{
    auto* registered = benchmark::RegisterBenchmark(name.c_str(), [operation, work](benchmark::State& state) mutable {
        if (work.prepare) work.prepare();
        for ([[maybe_unused]] auto iteration : state)
            benchmark::DoNotOptimize(operation());
    });
    if (work.iterations > 0) registered->Iterations(work.iterations);
    if (work.wallClock) registered->UseRealTime();
    SetWork(name, work);
}

/// A figure beside its own floor.
template <class Operation, class Floor>
void MeasureWithFloor(const std::string& name, Operation operation, Floor floor, double target = 0.0, Work work = {})
{
    const std::string floorName = name + ", floor";
    Measure(name, std::move(operation), work);
    Measure(floorName, std::move(floor), work);
    Compare({name, floorName, target});
}

void RegisterMemberFiles();
void RegisterRestraints();
void RegisterEffectiveLengths();
void RegisterSections();
void RegisterSpans();
void RegisterResults();
void RegisterStability();
void RegisterStatics();
void RegisterBeams();
void RegisterChecks();
void RegisterBatches();

} // namespace Keltrix::Bench

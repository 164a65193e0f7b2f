// Closing, asking, describing and reading restraints. Floor: one pass of the closure's bit tests.

#include "Bench.h"

#include <stdexcept>
#include <vector>

#include "keltrix/steel/Restraint.h"

namespace Keltrix::Bench {

namespace {

using Data::CRestraint;

/// Restraints that turn up in models: free, presets, codes of flange and torsional bits, with and without a moment.
std::vector<CRestraint> Samples()
{
    std::vector<CRestraint> samples;
    for (const wchar_t* code : {L"Free", L"Pinned", L"Fixed", L"Full rotational", L"Partial rotational",
                                L"Top flange lateral", L"F12L", L"FCL TP", L"F1L TF MAJRV", L"F2LW TR MINV", L"FTP"}) {
        for (const double moment : {0.0, 1.0, -1.0}) {
            CRestraint restraint;
            if (!restraint.SetDescription(code)) throw std::logic_error("a sample restraint is not understood");
            if (moment != 0.0) restraint.SetForcesAndMoments({0.0, 0.0, 0.0}, {0.0, moment, 0.0}, true);
            samples.push_back(restraint);
        }
    }
    return samples;
}

/// Sums over all samples of what `ask` returns.
template <class Ask>
auto OverAll(Ask ask)
{
    return [samples = Samples(), ask]() mutable {
        unsigned int sum = 0;
        for (CRestraint& restraint : samples)
            sum += static_cast<unsigned int>(ask(restraint));
        return sum;
    };
}

/// One pass of bit tests: where all of `given` is set, `implied` follows.
template <std::size_t N>
unsigned int Pass(unsigned int flag, const unsigned int (&rules)[N][2])
{
    for (const auto& [given, implied] : rules)
        if ((flag & given) == given) flag |= implied;
    return flag;
}

constexpr unsigned int FLANGE1_COMPRESSED[12][2] = {{0x1, 0x200},   {0x2, 0x400},   {0x4, 0x800},   {0x8, 0x1000},
                                                    {0x10, 0x2000}, {0x20, 0x4000}, {0x200, 0x1},   {0x400, 0x2},
                                                    {0x800, 0x4},   {0x1000, 0x8},  {0x2000, 0x10}, {0x4000, 0x20}};
constexpr unsigned int FLANGE2_COMPRESSED[12][2] = {{0x2, 0x200},   {0x1, 0x400},   {0x8, 0x800},   {0x4, 0x1000},
                                                    {0x20, 0x2000}, {0x10, 0x4000}, {0x200, 0x2},   {0x400, 0x1},
                                                    {0x800, 0x8},   {0x1000, 0x4},  {0x2000, 0x20}, {0x4000, 0x10}};
constexpr unsigned int ALWAYS[15][2] = {{0x4, 0x10},       {0x8, 0x20},        {0x800, 0x2000},    {0x1000, 0x4000},
                                        {0x40, 0x180},     {0x10000, 0x20000}, {0x40000, 0x80000}, {0x3, 0x100640},
                                        {0x600, 0x100043}, {0x3, 0x600},       {0x600, 0x3},       {0xC, 0x1800},
                                        {0x1800, 0xC},     {0x30, 0x6000},     {0x6000, 0x30}};

/// The closure's bit tests, each once.
unsigned int FloorPass(const CRestraint& restraint)
{
    Vec3<double> force;
    Vec3<double> moment;
    bool use = true;
    unsigned int flag = static_cast<unsigned int>(restraint.RestFlag());
    if (restraint.GetForcesAndMoments(force, moment, use) && use) {
        if (moment.y > 0.0)
            flag = Pass(flag, FLANGE2_COMPRESSED);
        else if (moment.y < 0.0)
            flag = Pass(flag, FLANGE1_COMPRESSED);
    }
    flag = Pass(flag, ALWAYS);
    if ((flag & 0x40) && (flag & 0x100603)) flag |= 0x100603;
    return flag;
}

} // namespace

void RegisterRestraints()
{
    const Work perRestraint{static_cast<double>(Samples().size())};
    const auto pair = [&](const std::string& name, auto ask, double target) {
        MeasureWithFloor(name, OverAll(ask), OverAll(FloorPass), target, perRestraint);
    };
    pair(
        "close a restraint",
        [](CRestraint r) {
            r.MakeConsistent();
            return r.RestFlag();
        },
        3.0);
    pair(
        "IsRestrained", [](const CRestraint& r) { return r.IsRestrained(CRestraint::TORSION, true); }, 3.0);
    pair(
        "IsFree", [](const CRestraint& r) { return r.IsFree(CRestraint::COMP_FLANGE_LATERAL, true); }, 3.0);
    pair(
        "IsEnc", [](const CRestraint& r) { return r.IsEnc(true); }, 3.0);
    pair(
        "IsPreset", [](const CRestraint& r) { return r.IsPreset(CRestraint::PINNED); }, 3.0);
    pair(
        "compare two restraints", [](const CRestraint& r) { return r == CRestraint(0x3, Data::SHR_CENTRE, 0.0); }, 3.0);
    pair(
        "Description", [](const CRestraint& r) { return r.Description(true).GetLength(); }, 0.0);
    pair(
        "SetDescription",
        [code = CString(L"F1L F2W TR MAJRV")](CRestraint& r) {
            CRestraint c = r;
            return c.SetDescription(code);
        },
        0.0);
}

} // namespace Keltrix::Bench

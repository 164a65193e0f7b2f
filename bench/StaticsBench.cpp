// From a beam to its members: three spans with dead load, imposed load by span and wind, ultimate combinations of BS 5950-1 and EN 1990. Floor: putting together
// as many members from responses that are at hand.

#include "Bench.h"

#include <memory>

#include "keltrix/statics/GeneratedMember.h"

namespace Keltrix::Bench {

namespace {

using namespace Statics;

Beam ThreeSpans()
{
    Beam beam;
    SetSpans(beam, {7.0, 9.0, 7.0});
    beam.section.E = 205e9;
    beam.section.Iy = 294e-6;
    beam.section.mass = 67.1;
    beam.cases = {{L"Dead", ActionKind::Permanent, Category::None, false},
                  {L"Imposed", ActionKind::Imposed, Category::B, true},
                  {L"Wind", ActionKind::Wind, Category::None, false}};
    beam.loads = {UniformLoad(0, 8e3), UniformLoad(1, 12e3), PointLoad(1, 40e3, 3.0), PointLoad(1, 40e3, 12.0),
                  UniformLoad(2, -5e3)};
    beam.restraints = {{0.0, 16.0, Steel::CRestraint(Steel::CRestraint::TOP_FLANGE_LATERAL, Steel::SHR_CENTRE, 0.0)}};
    return beam;
}

// The first twenty combinations, so that each beam has as many.
std::vector<Combination> Twenty(const Analysis& analysis)
{
    std::vector<Combination> list = Expand(analysis, MakeRules(analysis, {Basis::EN1990UK, Expression::E610ab})).list;
    if (list.size() < 20) throw std::logic_error("the benchmark's beam has fewer than 20 combinations");
    list.resize(20);
    return list;
}

} // namespace

void RegisterStatics()
{
    const Beam beam = ThreeSpans();
    const std::string whole = "a beam with 20 combinations, from loads to members";
    const std::string floor = whole + ", floor";
    Measure(whole, [beam] {
        const Analysis analysis(beam);
        return MakeMembers(analysis, Twenty(analysis)).size();
    });
    // Points and sub-spans of twenty members, copied from those that are ready.
    const Analysis analysis(beam);
    const auto ready = std::make_shared<std::vector<GeneratedMember>>(MakeMembers(analysis, Twenty(analysis)));
    Measure(floor, [ready] { return std::vector<GeneratedMember>(*ready).size(); });
    Compare({whole, floor});
    Measure("statics of a beam", [beam] { return Analysis(beam).Units().size(); });
    Compare({"statics of a beam", floor});
    const auto kept = std::make_shared<Analysis>(beam);
    Measure("combinations of a beam", [kept] { return Twenty(*kept).size(); });
    Compare({"combinations of a beam", floor});
}

} // namespace Keltrix::Bench

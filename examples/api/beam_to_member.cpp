// From loads to a verdict with the libraries alone: statics, design, stability, and both design codes.

#include <iostream>
#include <memory>
#include <vector>

#include "keltrix/design/DesignCode.h"
#include "keltrix/design/Findings.h"
#include "keltrix/design/LateralLength.h"
#include "keltrix/design/MemberInput.h"
#include "keltrix/design/MomentDiagram.h"
#include "keltrix/design/Places.h"
#include "keltrix/design/PointLoads.h"
#include "keltrix/design/SectionProperties.h"
#include "keltrix/design/Segments.h"
#include "keltrix/design/Stretches.h"
#include "keltrix/ec3/SteelMemberEC3.h"
#include "keltrix/stability/AcrossWeb.h"
#include "keltrix/stability/CoupledBuckling.h"
#include "keltrix/stability/CriticalLoad.h"
#include "keltrix/stability/Refusal.h"
#include "keltrix/stability/SectionConstants.h"
#include "keltrix/statics/Analysis.h"
#include "keltrix/statics/Beam.h"
#include "keltrix/statics/Combinations.h"
#include "keltrix/statics/Deflections.h"
#include "keltrix/statics/GeneratedMember.h"
#include "keltrix/statics/Line.h"
#include "keltrix/steel/Steel.h"

using namespace Keltrix;

int main()
{
    const CSection name(L"UB 457x191x67");
    const std::optional<Design::SectionProperties> section = Design::MakeProperties(name, nullptr);
    if (!section) return 1;

    // Beam.h: 6 m, held at both ends, 10 kN/m permanent and 40 kN imposed in the middle.
    Statics::Beam beam;
    beam.length = 6.0;
    beam.section.E = 210e9;
    beam.section.Iy = section->Ix;
    beam.section.Iz = section->Iy;
    beam.selfWeight = false;
    beam.supports.resize(2);
    beam.supports[1].at = 6.0;
    beam.cases = {{L"Dead", Statics::ActionKind::Permanent, Statics::Category::None, false},
                  {L"Imposed", Statics::ActionKind::Imposed, Statics::Category::B, false}};
    beam.loads = {Statics::UniformLoad(0, 10e3), Statics::PointLoad(1, 40e3, 3.0)};

    // Analysis.h, Line.h: exact moments and deflections of each case.
    const Statics::Analysis analysis(beam);
    if (!analysis.IsAnswered()) return 1;
    const Statics::Line line = analysis.OfCase(1).major;
    std::cout << "imposed: " << line.Moments(0.0, 6.0).Worst().value / 1e3 << " kNm, "
              << line.Deflections(0.0, 6.0).Worst().value * 1e3 << " mm\n";

    // Combinations.h, Deflections.h
    const Statics::RuleOptions standard{Statics::Basis::EN1990UK, Statics::Expression::E610};
    const Statics::Combinations all = Statics::Expand(analysis, Statics::MakeRules(analysis, standard));
    std::cout << all.list.size() << " combinations, the first is " << all.list.front().name.ToUtf8().value() << '\n';
    const auto limits = Statics::DeflectionLimitsOf(standard.basis, false);
    for (const Statics::DeflectionCheck& check : Statics::CheckDeflections(analysis, all.list, limits))
        std::cout << "deflection " << check.deflection * 1e3 << " mm, at most " << check.allowed * 1e3 << " mm\n";

    // GeneratedMember.h: points and sub-spans of a member for each combination.
    const Statics::GeneratedMember member = Statics::MakeMembers(analysis, all.list).front();

    // MomentDiagram.h, Places.h: moments between the points. A beam that sags has moments below zero.
    const Design::MomentDiagram major(member.points, member.subSpans, Design::Bending::Major);
    std::cout << "largest moment " << major.Largest() / 1e3 << " kNm, in the first sub-span "
              << Design::LargestMagnitude(major.Curves(0).front()) / 1e3 << " kNm\n";

    // Stretches.h, LateralLength.h: what is held, and effective lengths by Tables 13 and 14 of BS 5950-1.
    for (const Design::Stretch& stretch : Design::FindStretches(member.points, member.subSpans, major)) {
        const Design::LateralLength length = Design::FindLateralLength(
            stretch, Design::Flange::First, member.points, major, section->D, false, Steel::CCodeShare(nullptr));
        std::cout << "held at " << stretch.left.x << " m and " << stretch.right.x << " m, LE = " << length.LE << " m\n";
    }

    // PointLoads.h: concentrated loads and reactions on the web. Segments.h: lengths between points of which something holds.
    const Design::LoadSpacing spacing{.stiffBearing = 0.1, .loaded = 0.2, .patch = section->D, .group = section->D};
    const auto loads = Design::FindPointLoads(member.points, member.subSpans, major, spacing);
    const auto segments = Design::Segments(
        static_cast<int>(member.points.size()), [](int) { return false; }, [](int) { return false; });
    std::cout << loads.size() << " forces on the web, " << segments.size() << " length between supports\n";

    // SectionConstants.h, CriticalLoad.h, Refusal.h: the elastic critical moment of the member as it is held and loaded.
    CString reason;
    const auto constants = Stability::MakeSectionConstants(name, 210e9, 81e9, &reason);
    if (!constants) return 1;
    const auto critical = Stability::FindCriticalLoads(member.points, member.subSpans, major, *constants);
    const Stability::Unit* const unit = critical.Governing();
    if (!unit || Stability::DesignRefusal(*unit)) return 1;
    std::cout << "Mcr = " << unit->positive->Mcr / 1e3 << " kNm\n";
    // CoupledBuckling.h: the strut between forks in closed form. AcrossWeb.h: moments about the minor axis do not buckle this section.
    const auto across = Stability::FindCriticalLoadsAcross(member.points, member.subSpans, *constants, section->B);
    std::cout << "Ncr = " << Stability::StrutForceBetweenForks(*constants, 6.0) / 1e3 << " kN, across the web "
              << (across.Governing() ? "it buckles" : "nothing buckles") << '\n';

    // SteelMemberEC3.h, DesignCode.h, MemberInput.h, Findings.h: the check, and what it found as data.
    EC3::CSteelMemberEC3 checked;
    const CSteelGrade grade(L"S275 JR", 0.0, 0.0, 0.0, 1.0);
    checked.SetKeltrixSec(name);
    checked.SetGrade(CSteelGrade(Design::GradeWithoutQuality(grade.Name()), 0.0, 0.0, 0.0, 1.0));
    checked.SetMemberPointVec(member.points);
    checked.SetSubSpanVec(member.subSpans);
    checked.Check();
    const Design::MemberFindings findings = checked.Findings();
    for (const Design::RuleFinding& rule : findings.rules)
        if (rule.governing)
            std::cout << CString(rule.name).ToUtf8().value() << " (" << CString(rule.clause).ToUtf8().value()
                      << "): " << rule.utilisation << '\n';
    return 0;
}

// Text, numbers, units, the catalogue, shapes of sections, restraints and the result record: what everything else stands on.

#include <array>
#include <iostream>
#include <memory>

#include "keltrix/platform/CString.h"
#include "keltrix/platform/KxData.h"
#include "keltrix/platform/KxUtil.h"
#include "keltrix/platform/NumberText.h"
#include "keltrix/platform/Vec3.h"
#include "keltrix/steel/CodeShare.h"
#include "keltrix/steel/MemberLayout.h"
#include "keltrix/steel/MemberResult.h"
#include "keltrix/steel/Restraint.h"
#include "keltrix/steel/SectionGeometry.h"
#include "keltrix/steel/SectionShapes.h"
#include "keltrix/steel/SteelMember.h"

using namespace Keltrix;
using namespace Keltrix::Steel;

int main()
{
    // CString.h: text as a host has it, formatted and as UTF-8.
    CString text;
    text.Format(L"%s has %d sections", L"a frame", 12);
    std::cout << text.ToUtf8().value() << '\n';

    // NumberText.h: the shortest digits that give the number back. Vec3.h: forces and moments.
    std::array<char, 32> digits{};
    const auto end = WriteNumber(digits.data(), digits.data() + digits.size(), 0.1);
    const Vec3<double> force(0.0, 0.0, -12e3);
    std::cout << std::string(digits.data(), end.ptr) << ", Fz = " << force.z / 1e3 << " kN\n";

    // KxUtil.h: numbers in the user's units, and the catalogue. KxData.h: a section by name.
    const CDesFormat format;
    const CSection section(L"UC 254x254x89");
    const CSectDB::Entry* const entry = CSectDB::GetDatabase()->Find(L"UC 254x254x89");
    if (!entry) return 1;
    std::cout << format.Moment(326.5e3).ToUtf8().value() << ", depth " << entry->depth * 1e3 << " mm\n";

    // SectionShapes.h, SectionGeometry.h: properties in closed form.
    const std::unique_ptr<CDesSectGeom> shape = MakeSectionShape(section, nullptr);
    if (!shape) return 1;
    std::cout << "Sxx = " << shape->Sxx() * 1e6 << " cm3\n";

    // Restraint.h: what a restraint implies. Two flanges held laterally hold the torsion.
    const CRestraint restraint(CRestraint::TOP_FLANGE_LATERAL, SHR_CENTRE, 0.0);
    std::cout << restraint.Description().ToUtf8().value() << '\n';

    // CodeShare.h, MemberResult.h: an effective length, and the record that tells how it came about.
    CMemberResult result;
    const CRestraint pinned(CRestraint::PINNED, SHR_CENTRE, 0.0);
    const double LE = CCodeShare(&result).BS5950_1_2000_Table13(6.0, 0.4, CCodeShare::LT_COMP_FLANGE1, pinned, pinned,
                                                                false, false, false);
    std::cout << "LE = " << LE << " m\n" << result.GetVerbose().ToUtf8().value();

    // MemberLayout.h, SteelMember.h: points of a member, which every design code takes; no code is here to take them.
    CMemberPoint point;
    point.SetPos(3.0);
    point.SetRestraint(pinned);
    const std::unique_ptr<CSteelMemberGen> member;
    std::cout << "a point at " << point.GetPos() << " m, " << (member ? "a" : "no") << " member\n";
    return 0;
}

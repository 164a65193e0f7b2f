#include "import/SignConvention.h"

#include "text/Fields.h"
#include "text/Text.h"

namespace Keltrix::Host {

// The member file: stress resultants on the face that looks along x, in right-handed axes with z along the web upwards, so that y is on the
// left of who looks along x. dMy/dx = Vz, dMz/dx = -Vy; tension above zero; My above zero has its tension at the top, Mz on the right.
const std::vector<SignConvention>& SignConventions()
{
    static const std::vector<SignConvention> conventions{
        {"member-file", "tension above zero, My sags below zero, dMy/dx = Vz, dMz/dx = -Vy; z up the web", true, 1, 1,
         1, 1, 1, 1},
        {"z-down", "tension above zero, My sags above zero, dMy/dx = Vz, dMz/dx = -Vy; z down the web", true, 1, 1, -1,
         -1, -1, -1},
        {"start-face",
         "compression above zero, My sags above zero, dMy/dx = Vz, dMz/dx = -Vy; z up the web, forces on the left face "
         "of a cut",
         true, -1, -1, -1, -1, -1, -1},
        {"sagging", "tension above zero, My sags above zero, dMy/dx = Vz, dMz/dx = Vy; z is the direction of the web",
         true, 1, 1, -1, -1, -1, 1},
        {"sagging-compression",
         "compression above zero, My sags above zero, dMy/dx = Vz, dMz/dx = Vy; z is the direction of the web", true,
         -1, 1, -1, -1, -1, 1},
        {"z-up-sagging", "tension above zero, My sags above zero, dMy/dx = -Vz, dMz/dx = -Vy; z up the web", true, 1, 1,
         1, -1, 1, 1},
        {"y-up", "tension above zero, Mz sags above zero, dMz/dx = -Vy, dMy/dx = Vz; y up the web", false, 1, 1, 1, -1,
         -1, 1},
        {"y-up-start-shear", "tension above zero, Mz sags above zero, dMz/dx = Vy, dMy/dx = -Vz; y up the web", false,
         1, 1, -1, -1, 1, 1},
    };
    return conventions;
}

int SignConvention::LawOf(TablePlane plane) const
{
    const bool isMajor = (plane == TablePlane::XZ) == isWebAlongZ;
    return isMajor ? majorShear * majorMoment : -minorShear * minorMoment;
}

std::array<double, IMPORTED_ACTIONS>
SignConvention::InMemberFile(const std::array<double, IMPORTED_ACTIONS>& table) const
{
    const ImportedAction shearOfWeb = isWebAlongZ ? ACTION_VZ : ACTION_VY;
    const ImportedAction shearAcross = isWebAlongZ ? ACTION_VY : ACTION_VZ;
    const ImportedAction momentOfWeb = isWebAlongZ ? ACTION_MY : ACTION_MZ;
    const ImportedAction momentAcross = isWebAlongZ ? ACTION_MZ : ACTION_MY;
    return {axial * table[ACTION_N],   minorShear * table[shearAcross],  majorShear * table[shearOfWeb],
            torsion * table[ACTION_T], majorMoment * table[momentOfWeb], minorMoment * table[momentAcross]};
}

const SignConvention* SignConventionNamed(const std::string& name)
{
    for (const SignConvention& one : SignConventions())
        if (SameWord(Wide(one.name).View(), Wide(name).View())) return &one;
    return nullptr;
}

std::string SignConventionNames()
{
    std::string names;
    for (const SignConvention& one : SignConventions())
        names += (names.empty() ? "" : &one == &SignConventions().back() ? " or " : ", ") + std::string(one.name);
    return names;
}

} // namespace Keltrix::Host

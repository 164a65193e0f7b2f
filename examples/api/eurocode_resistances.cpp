// The formulas of EN 1993-1-1 as functions on plain data: one section, its resistances, and how they depend on length.

#include <cmath>
#include <iostream>

#include "keltrix/ec3/Annex.h"
#include "keltrix/ec3/AnnexA.h"
#include "keltrix/ec3/Buckling.h"
#include "keltrix/ec3/Capacity.h"
#include "keltrix/ec3/ClassActions.h"
#include "keltrix/ec3/Classification.h"
#include "keltrix/ec3/Critical.h"
#include "keltrix/ec3/CrossSection.h"
#include "keltrix/ec3/DesignCode.h"
#include "keltrix/ec3/Effective.h"
#include "keltrix/ec3/GeneralMethod.h"
#include "keltrix/ec3/Material.h"
#include "keltrix/ec3/Section.h"
#include "keltrix/ec3/Web.h"

using namespace Keltrix;
using namespace Keltrix::EC3;

int main()
{
    const CSection name(L"UB 457x191x67");
    const CSteelGrade grade(L"S355", 0.0, 0.0, 0.0, 1.0);

    // Annex.h, Section.h, Material.h: what everything else starts from. An annex is data; copy one to change a value.
    const Annex& uk = UkAnnex();
    const std::optional<Section> section = MakeSection(name, nullptr);
    if (!section) return 1;
    const Material material = MakeMaterial(grade, section->basis, uk);
    const Strength strength = MakeStrength(material, uk);
    std::cout << "fy = " << strength.fy / 1e6 << " N/mm2, Av,z = " << ShearAreaZ(*section, uk.eta) * 1e4 << " cm2\n";

    // ClassActions.h, Classification.h, Effective.h: bending is in class 1, compression of 500 kN alone in class 4.
    const Classification bent = Classify(*section, strength, ClassActions::Major());
    const Classification strut = Classify(*section, strength, ClassActions::Compression(500e3));
    const EffectiveSection effective = MakeEffective(*section, strength);
    std::cout << "class " << bent.cls << " in bending, " << strut.cls
              << " in compression: Aeff = " << effective.Aeff * 1e4 << " cm2\n";

    // CrossSection.h: each resistance has its clause, or the reason why there is none.
    const Resistance moment = McyRd(*section, strength, bent);
    const Resistance reduced = MNyRd(*section, strength, bent, -500e3);
    std::cout << "Mc,y,Rd = " << *moment.value / 1e3 << " kNm, MN,y,Rd = " << *reduced.value / 1e3 << " kNm\n";

    // Web.h: the web is stocky in shear; a force of 100 mm length at an end.
    WebForce force;
    force.ss = 0.1;
    force.atEnd = true;
    std::cout << "shear buckling: " << (NeedsShearBuckling(*section, strength) ? "yes" : "no")
              << ", FRd = " << *FRd(*section, strength, force).value / 1e3 << " kN\n";

    // Buckling.h, Critical.h: a strut and a beam of 4 m between forks.
    const double L = 4.0;
    const AxisCurves curves = CompressionCurves(section->basis, material.grade);
    const double Ncr = FlexuralNcr(material.E, section->Iz, L);
    const StrutResistance Nb = BuckleStrut(Ncr, effective.Aeff, strength.fy, uk.gammaM1, curves.z);
    const double Mcr = UniformMcr(*section, material.E, material.G, L, true);
    const LateralRule rule = *LateralRuleOf(section->basis, uk);
    const LateralReduction lateral = ReduceLateral(rule, std::sqrt(*moment.value / Mcr), 1.0);
    std::cout << "Nb,z,Rd = " << Nb.NbRd / 1e3 << " kN, Mb,Rd = " << lateral.chiMod * *moment.value / 1e3 << " kNm\n";

    // Buckling.h: the factors of Annex B for 300 kN of compression under a uniform moment.
    AnnexBInput input;
    input.lambdaY = 0.3;
    input.lambdaZ = Nb.slenderness;
    input.ny = 300e3 / (section->A * strength.fy);
    input.nz = 300e3 / Nb.NbRd;
    const InteractionFactors k = AnnexB(input);
    std::cout << "kyy = " << k.kyy << ", kzy = " << k.kzy << '\n';

    // AnnexA.h: the factor of a moment by Table A.2, here uniform with a tenth of the critical force.
    std::cout << "Cm,0 = " << MomentFactorA2({true, 1.0, 1.0}, 0.1) << '\n';

    // GeneralMethod.h: by how much all actions may grow in the plane of the web.
    std::cout << "alpha_ult,k = " << InPlaneAmplifier({input, input.ny, 0.5}) << '\n';

    // Capacity.h: the same resistances of a section at once. DesignCode.h: the code as a host sees it.
    const SectionCapacity capacity(name, grade, uk);
    std::cout << "MbRd of the capacity table: " << *capacity.MbRd(L, 1.0) / 1e3 << " kNm\n";
    std::cout << CString(Code().Description().title).ToUtf8().value() << '\n';
    return 0;
}

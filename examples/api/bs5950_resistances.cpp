// The formulas of BS 5950-1:2000 as functions on plain data, and a member that is checked with them.

#include <iostream>
#include <memory>

#include "keltrix/bs5950/BS5950.h"
#include "keltrix/bs5950/Capacity.h"
#include "keltrix/bs5950/Classification.h"
#include "keltrix/bs5950/DesignCode.h"
#include "keltrix/bs5950/DesignOptions.h"
#include "keltrix/bs5950/Ledger.h"
#include "keltrix/bs5950/Material.h"
#include "keltrix/bs5950/Resistance.h"
#include "keltrix/bs5950/Results.h"
#include "keltrix/bs5950/SectionBS5950.h"
#include "keltrix/bs5950/SectionProperties.h"
#include "keltrix/bs5950/SteelMemberBS5950.h"

using namespace Keltrix;
using namespace Keltrix::BS5950;

int main()
{
    const CSection name(L"UB 457x191x67");
    const CSteelGrade grade(L"S275", 0.0, 0.0, 0.0, 1.0);

    // SectionProperties.h, Material.h, Classification.h
    const std::optional<SectionProperties> section = MakeProperties(name, nullptr);
    if (!section) return 1;
    const Material material = MakeMaterial(grade, section->thickest);
    Actions actions;
    actions.Mx = 100e3;
    const Classification cls = Classify(*section, material, actions);
    std::cout << "py = " << material.py / 1e6 << " N/mm2, class " << cls.cls << ", epsilon " << cls.epsilon << '\n';

    // Resistance.h: one function for each rule.
    const double Pv = ShearCapacity(*section, material, Axis::Y);
    const double Mc = MomentCapacity(*section, material, cls, {}, Axis::X, 0.0);
    const double Pc = CompressionResistance(*section, material, cls, Axis::Y, 4.0 / section->ry);
    const double Mb = BucklingResistanceMoment(*section, material, cls, 4.0, true);
    std::cout << "Pv = " << Pv / 1e3 << " kN, Mc = " << Mc / 1e3 << " kNm, Pcy = " << Pc / 1e3
              << " kN, Mb = " << Mb / 1e3 << " kNm at 4 m\n";

    // Capacity.h: the same at once. DesignCode.h: the code as a host sees it.
    const SectionCapacity capacity(name, grade);
    std::cout << "Mb of the capacity table: " << capacity.Mb(4.0) / 1e3 << " kNm\n";
    std::cout << CString(Code().Description().title).ToUtf8().value() << '\n';

    // SteelMemberBS5950.h, DesignOptions.h: a member from its file, with an option of the code. SectionBS5950.h is its geometry.
    CSteelMemberBS5950 member;
    DesignOptions options;
    options.lateral = LateralMethod::Elastic;
    member.SetOptions(options);
    CSteelGrade read;
    const CString text(
        L"TITLE,Beam\nSECTION,UB 457x191x67,ROLLED\nGRADE,S275\nNET_TO_GROSS,1\nALLOWABLE_PLASTIC/ELASTIC_RATIO,1.2\n"
        L"SHEAR_LAG_FACTOR,0.7\nEFFECTIVE_LENGTH_OVERRIDES,NO\nHEADINGS\nMEMBERPOINT,1,0,Pinned,0\n"
        L"MEMBERPOINT,2,4,Pinned,0\nSUBSPAN,1,0,0,0,0,0,0,0,-200E3,0,0,-200E3,0,Free,0\nEND\n");
    if (!member.CSVInputData(text, read) || !member.SetGrade(read)) return 1;
    Steel::CMemberResult result;
    member.SetResult(&result);
    member.Check();

    // Ledger.h: every rule with its status. Results.h: what was found for each length.
    const LedgerEntry* const governing = member.Checks().Governing();
    std::cout << CString(RuleName(governing->rule)).ToUtf8().value() << ' '
              << CString(governing->clause).ToUtf8().value() << ": " << governing->utilisation << '\n';
    for (const SpanResult& span : member.Spans())
        if (span.mode == BucklingMode::LateralTorsional && span.applied)
            std::cout << "Mb = " << span.resistance / 1e3 << " kNm by elastic critical moments\n";
    return 0;
}

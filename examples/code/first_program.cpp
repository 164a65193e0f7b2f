// A first program: a section of the catalogue and its properties.

#include <iostream>
#include <memory>

#include "keltrix/steel/Steel.h"

using namespace Keltrix;        // text, units, sections and grades
using namespace Keltrix::Steel; // members, restraints, results, geometry

int main()
{
    const std::unique_ptr<CDesSectGeom> beam = MakeSectionShape(CSection(L"UB 457x191x67"), nullptr);
    if (!beam) return 1;
    std::cout << "A   = " << beam->Area() * 1e4 << " cm2\n"; // SI throughout: m2
    std::cout << "Ixx = " << beam->Ixx() * 1e8 << " cm4\n";
    return 0;
}

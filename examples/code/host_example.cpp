// A host that uses the library without a design-code module: a beam laid out by hand, its span and effective length.

#include <iostream>
#include <vector>

#include "keltrix/steel/Steel.h"

using namespace Keltrix;
using namespace Keltrix::Steel;

int main()
{
    // A 6 m beam under a point load of 20 kN at mid-span: supports, and a brace of the top flange under the load.
    std::vector<CMemberPoint> points(3);
    const CRestraint::Presets restraints[] = {CRestraint::PINNED, CRestraint::TOP_FLANGE_LATERAL, CRestraint::PINNED};
    for (int i = 0; i < 3; ++i) {
        CMemberPoint& point = points[static_cast<std::size_t>(i)];
        point.Set1Index(i + 1);
        point.SetPos(3.0 * i);
        point.SetRestraint(CRestraint(restraints[i], SHR_CENTRE, 0.0));
    }

    // 10 kN of shear, 30 kNm at mid-span: the beam sags, so the major-axis moment is below zero.
    std::vector<CSubSpan> subSpans(2);
    const Vec3<double> none(0.0, 0.0, 0.0);
    const Vec3<double> shear(0.0, 0.0, -10e3);
    const Vec3<double> midMoment(0.0, -30e3, 0.0);
    subSpans[0].SetForcesAll(shear, shear);
    subSpans[0].SetMomentsAll(none, midMoment);
    subSpans[1].Set1Index(2);
    subSpans[1].SetForcesAll({0.0, 0.0, 10e3}, {0.0, 0.0, 10e3});
    subSpans[1].SetMomentsAll(midMoment, none);

    const CSpan half(&points, &subSpans, 0, 1);
    CMemberResult result;
    const double length =
        CCodeShare(&result).BS5950_1_2000_Table13(half.Length(), 0.4, CCodeShare::LT_COMP_FLANGE1, half.RestraintEndL(),
                                                  half.RestraintEndR(), false, false, false);

    const CDesFormat& fmt = result.DesFormat();
    const CSpan beam(&points, &subSpans, 0, 2);
    std::cout << "span: " << half.GetString(fmt).ToUtf8().value() << '\n';
    std::cout << "centre point load on the beam: " << (beam.IsLoadedWithCentrePointLoad() ? "yes" : "no") << '\n';
    std::cout << "effective length: " << fmt.Length(length).ToUtf8().value() << '\n';
    std::cout << result.GetVerbose().ToUtf8().value();
}

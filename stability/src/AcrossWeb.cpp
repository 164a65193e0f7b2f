#include "keltrix/stability/AcrossWeb.h"

#include <cmath>

#include "keltrix/design/Stretches.h"

namespace Keltrix::Stability {

using Data::CRestraint;
using Steel::CMemberPoint;
using Steel::CSubSpan;

namespace {

// Bending about the axis of symmetry leaves no term of Wagner's effect (∫ y (y² + ζ²) dA = 0), and axial forces take no part.
SectionConstants Turned(const SectionConstants& section, double width)
{
    SectionConstants turned = section;
    turned.Iy = section.Iz;
    turned.Iz = section.Iy;
    turned.betaZ = turned.zc = 0.0;
    turned.flange = {0.5 * width, -0.5 * width};
    return turned;
}

// A load above zero presses downwards in the turned section.
CRestraint Turned(const CRestraint& restraint, double load, double width)
{
    const CRestraint resolved = Design::Resolved(restraint, 0);
    unsigned int bits = 0;
    if (resolved.IsRestrained(CRestraint::MAJOR_SHEAR, false)) bits |= CRestraint::MINOR_SHEAR;
    if (resolved.IsRestrained(CRestraint::MAJOR_ROTATION, false)) bits |= CRestraint::MINOR_ROTATION;
    if (resolved.IsRestrained(CRestraint::TORSION, false)) bits |= CRestraint::TORSION;
    return CRestraint(static_cast<int>(bits), Data::SHR_CENTRE, std::copysign(0.5 * width, load));
}

} // namespace

CriticalLoads FindCriticalLoadsAcross(const std::vector<CMemberPoint>& points, const std::vector<CSubSpan>& subSpans,
                                      const SectionConstants& section, double width, const Options& options)
{
    CriticalLoads refused;
    refused.continuity = options.continuity;
    if (section.offWebPlane) {
        refused.reason =
            L"the shear centre lies off the plane of the web: moments about the minor axis are not those of a plane of "
            L"symmetry";
        return refused;
    }
    if (points.size() < 2 || subSpans.size() != points.size() - 1) {
        refused.reason = L"a member needs two points or more, and a sub-span between each two neighbouring ones";
        return refused;
    }
    std::vector<CMemberPoint> turnedPoints = points;
    std::vector<CSubSpan> turnedSubSpans = subSpans;
    for (std::size_t k = 0; k < subSpans.size(); ++k) {
        const Vec3<double> left(0.0, 0.0, -subSpans[k].GetForcesLeft().y);
        const Vec3<double> right(0.0, 0.0, -subSpans[k].GetForcesRight().y);
        CSubSpan& turned = turnedSubSpans[k];
        turned.SetForcesAll(left, right);
        turned.SetMomentsAll(Vec3<double>(0.0, subSpans[k].GetMomentsLeft().z, 0.0),
                             Vec3<double>(0.0, subSpans[k].GetMomentsRight().z, 0.0));
        turned.SetRestraint(Turned(subSpans[k].GetRestraint(), right.z - left.z, width));
    }
    double before = 0.0;
    for (std::size_t k = 0; k < points.size(); ++k) {
        const double after = k < subSpans.size() ? turnedSubSpans[k].GetForcesLeft().z : 0.0;
        turnedPoints[k].SetRestraint(Turned(points[k].GetRestraint(), after - before, width));
        if (k < subSpans.size()) before = turnedSubSpans[k].GetForcesRight().z;
    }
    const Design::MomentDiagram moments(turnedPoints, turnedSubSpans, Design::Bending::Major);
    return FindCriticalLoads(turnedPoints, turnedSubSpans, moments, Turned(section, width), options);
}

} // namespace Keltrix::Stability

#include "MemberModel.h"

#include <algorithm>
#include <cmath>

#include "keltrix/design/Segments.h"

namespace Keltrix::BS5950 {

using Design::MomentDiagram;
using Steel::CRestraint;

MemberModel::MemberModel(const MemberInput& input) :
    MemberInput(input), major(points, subSpans, Design::Bending::Major), minor(points, subSpans, Design::Bending::Minor)
{
    const SectionProperties& s = Properties();
    if (s.shape == Shape::Angle) {
        const double c = std::cos(s.alpha);
        const double n = std::sin(s.alpha);
        for (const double sign : {1.0, -1.0}) {
            principal.emplace_back(major, c, minor, sign * n);
            principal.emplace_back(major, -n, minor, sign * c);
        }
    }
    if (!options.simpleColumn) return;
    for (int i = 0; i <= LastPoint(); ++i)
        if (PointHeld(BucklingMode::Major, i) && PointHeld(BucklingMode::Minor, i)) levels.push_back(PointAt(i));
}

CSection MemberModel::KeltrixSection() const
{
    return const_cast<CSectionBS5950&>(section).GetKeltrixSec(); // the base's getter is not const and changes nothing
}

const MomentDiagram& MemberModel::MomentsX(bool turned) const
{
    return principal.empty() ? major : principal[turned ? 2 : 0];
}

const MomentDiagram& MemberModel::MomentsY(bool turned) const
{
    return principal.empty() ? minor : principal[turned ? 3 : 1];
}

double MemberModel::LeastMomentX() const
{
    const SectionProperties& s = Properties();
    return 1e-6 * Steel().py * (s.shape == Shape::Angle ? s.Zu : s.Zx);
}

double MemberModel::LeastMomentY() const
{
    const SectionProperties& s = Properties();
    return 1e-6 * Steel().py * (s.shape == Shape::Angle ? s.Zv : s.Zy);
}

// A moment about y-y says different things of an angle turned one way or the other: by itself it compresses the other flange then,
// which may be held elsewhere.
bool MemberModel::HasTwoWays() const
{
    const SectionProperties& s = Properties();
    const double py = Steel().py;
    return s.shape == Shape::Angle && minor.Largest() > 1e-6 * py * s.Zy;
}

double MemberModel::Factor(double computed, double least) const
{
    return std::max(momentFactor.value_or(computed), least);
}

namespace {

bool HoldsInPosition(const CRestraint& restraint, BucklingMode mode)
{
    return mode == BucklingMode::Major ? restraint.IsRestrained(CRestraint::MAJOR_SHEAR, false)
                                       : restraint.IsRestrained(CRestraint::MINOR_SHEAR, true);
}

} // namespace

bool MemberModel::PointHeld(BucklingMode mode, int point) const { return HoldsInPosition(PointRestraint(point), mode); }

bool MemberModel::SubSpanHeld(BucklingMode mode, int subSpan) const
{
    return HoldsInPosition(subSpans[static_cast<std::size_t>(subSpan)].GetRestraint(), mode);
}

double MemberModel::LongestUnheld(BucklingMode mode) const
{
    double longest = 0.0;
    for (const auto& [left, right] : Design::Segments(
             LastPoint() + 1, [&](int i) { return PointHeld(mode, i); }, [&](int k) { return SubSpanHeld(mode, k); }))
        if (!SubSpanHeld(mode, left)) longest = std::max(longest, PointAt(right) - PointAt(left));
    return longest;
}

double MemberModel::StiffenerSpacing(Axis direction) const
{
    return direction == Axis::Y && options.stiffenerSpacing > 0.0 ? options.stiffenerSpacing : UNSTIFFENED;
}

bool MemberModel::MayHaveEccentricConnection() const
{
    const Shape shape = Properties().shape;
    return shape == Shape::Angle || shape == Shape::Channel || shape == Shape::Tee;
}

bool MemberModel::IsEccentricStrut() const { return MayHaveEccentricConnection() && !options.momentsHoldEccentricity; }

} // namespace Keltrix::BS5950

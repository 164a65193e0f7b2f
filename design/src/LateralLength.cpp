#include "keltrix/design/LateralLength.h"

#include <algorithm>
#include <cmath>

#include "VerticalSupport.h"

namespace Keltrix::Design {

using Data::CRestraint;
using Steel::CCodeShare;
using Steel::CMemberPoint;

namespace {

CCodeShare::LT_BuckleDirection DirectionOf(Flange flange)
{
    return flange == Flange::First ? CCodeShare::LT_COMP_FLANGE1 : CCodeShare::LT_COMP_FLANGE2;
}

const CRestraint& OfFlange(const StretchEnd& end, Flange flange)
{
    return end.ofFlange[static_cast<std::size_t>(flange)];
}

bool IsNominalRowRefused(const std::vector<CMemberPoint>& points, const StretchEnd& end, Flange flange)
{
    if (end.point < 0) return false;
    const int last = static_cast<int>(points.size()) - 1;
    const bool support =
        end.point == 0 || end.point == last || IsVerticalSupport(points[static_cast<std::size_t>(end.point)]);
    return support && OfFlange(end, flange)
                          .IsFree(CRestraint::TORSION | CRestraint::TORSION_PART | CRestraint::TORSION_FRICTION, true);
}

bool ReachesVerticalSupport(const std::vector<CMemberPoint>& points, const Stretch& stretch)
{
    const auto from = std::lower_bound(points.begin(), points.end(), stretch.left.x,
                                       [](const CMemberPoint& point, double x) { return point.GetPos() < x; });
    for (auto point = from; point != points.end() && point->GetPos() <= stretch.right.x; ++point)
        if (IsVerticalSupport(*point)) return true;
    return false;
}

void TakeTable14(const Stretch& stretch, Flange flange, const MomentDiagram& diagram, bool destabilising,
                 const CCodeShare& rules, LateralLength& length)
{
    for (const bool left : {true, false}) {
        const StretchEnd& end = left ? stretch.left : stretch.right;
        if (end.kind != EndKind::Tip) continue;
        const double moment = (left ? diagram.RightOf(end.x) : diagram.LeftOf(end.x)).Worst();
        CRestraint tip = OfFlange(end, flange);
        tip.SetForcesAndMoments({0.0, 0.0, 0.0}, {0.0, moment, 0.0}, true);
        const double LE =
            rules.BS5950_1_2000_Table14(stretch.Length(), DirectionOf(flange),
                                        OfFlange(left ? stretch.right : stretch.left, flange), tip, destabilising);
        if (LE < length.LE) continue;
        length.LE = LE;
        length.tipMoment = moment;
    }
}

} // namespace

namespace {

double LargestShear(const std::vector<Steel::CSubSpan>& subSpans)
{
    double largest = 0.0;
    for (const Steel::CSubSpan& s : subSpans)
        largest = std::max({largest, std::abs(s.GetForcesLeft().z), std::abs(s.GetForcesRight().z)});
    return largest;
}

// A load upwards below the shear centre turns the section further, as one downwards above it does. The load at a point is the jump of the
// shear there, that along a sub-span its slope.
class UpliftFromBelow {
public:
    explicit UpliftFromBelow(const std::vector<Steel::CSubSpan>& subSpans) :
        m_subSpans(subSpans), m_least(1e-9 * LargestShear(subSpans))
    {}

    bool At(const CMemberPoint& point, std::size_t i) const
    {
        if (!(point.GetRestraint().LoadHeight() < 0.0) || IsVerticalSupport(point)) return false;
        const double before = i > 0 && i <= m_subSpans.size() ? m_subSpans[i - 1].GetForcesRight().z : 0.0;
        const double after = i < m_subSpans.size() ? m_subSpans[i].GetForcesLeft().z : 0.0;
        return before - after > m_least;
    }

    bool Along(std::size_t i) const
    {
        const Steel::CSubSpan& s = m_subSpans[i];
        return s.GetRestraint().LoadHeight() < 0.0 && s.GetForcesLeft().z - s.GetForcesRight().z > m_least;
    }

private:
    const std::vector<Steel::CSubSpan>& m_subSpans;
    double m_least;
};

} // namespace

const wchar_t* TextOf(LateralTable table)
{
    switch (table) {
    case LateralTable::Table13:
        return L"Table 13";
    case LateralTable::Table14:
        return L"Table 14";
    case LateralTable::LongerOfBoth:
        break;
    }
    return L"the longer of Tables 13 and 14";
}

bool IsDestabilised(const Stretch& stretch, const std::vector<CMemberPoint>& points,
                    const std::vector<Steel::CSubSpan>& subSpans)
{
    const UpliftFromBelow uplift(subSpans);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double x = points[i].GetPos();
        if (x > stretch.right.x) break;
        if (x >= stretch.left.x && (points[i].GetRestraint().IsDestabilized() || uplift.At(points[i], i))) return true;
        const bool covers = i < subSpans.size() && i + 1 < points.size() && x < stretch.right.x &&
                            points[i + 1].GetPos() > stretch.left.x;
        if (covers && (subSpans[i].GetRestraint().IsDestabilized() || uplift.Along(i))) return true;
    }
    return false;
}

LateralLength FindLateralLength(const Stretch& stretch, Flange flange, const std::vector<CMemberPoint>& points,
                                const MomentDiagram& diagram, double depth, bool destabilising, const CCodeShare& rules)
{
    LateralLength length;
    if (stretch.cantilever) {
        TakeTable14(stretch, flange, diagram, destabilising, rules, length);
        length.table = LateralTable::Table14;
        if (ReachesVerticalSupport(points, stretch)) return length;
        length.table = LateralTable::LongerOfBoth;
    }
    length.nominalRefused = {IsNominalRowRefused(points, stretch.left, flange),
                             IsNominalRowRefused(points, stretch.right, flange)};
    const double LE = rules.BS5950_1_2000_Table13(stretch.Length(), depth, DirectionOf(flange),
                                                  OfFlange(stretch.left, flange), OfFlange(stretch.right, flange),
                                                  destabilising, length.nominalRefused[0], length.nominalRefused[1]);
    if (LE >= length.LE) length.tipMoment = 0.0;
    length.LE = std::max(length.LE, LE);
    return length;
}

} // namespace Keltrix::Design

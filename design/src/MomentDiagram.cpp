#include "keltrix/design/MomentDiagram.h"

#include <limits>

namespace Keltrix::Design {

using Steel::CMemberPoint;
using Steel::CSubSpan;

namespace {

constexpr double NAN_VALUE = std::numeric_limits<double>::quiet_NaN();
// Share of the scale by which the two changes of moment of a sub-span may differ.
constexpr double BALANCE_TOLERANCE = 0.01;
// What rounding may leave of a balance, as a share of the largest scale of the member.
constexpr double ROUNDING = 1e-9;

bool IsInside(double s) { return s > 0.0 && s < 1.0; }

// Not-a-number wins and stays, so that an unknown moment is never lost in a comparison.
void Widen(double value, MomentRange& range)
{
    if (value < range.least || std::isnan(value)) range.least = value;
    if (value > range.greatest || std::isnan(value)) range.greatest = value;
}

Parabola Sum(const Parabola& a, double ka, const Parabola& b, double kb)
{
    return {ka * a.left + kb * b.left, ka * a.right + kb * b.right, ka * a.curvature + kb * b.curvature};
}

} // namespace

double Parabola::Extreme() const
{
    const double change = right - left;
    if (!(std::abs(change) < std::abs(curvature))) return NAN_VALUE;
    const double s = 0.5 * (1.0 - change / curvature);
    return IsInside(s) ? s : NAN_VALUE;
}

// left + b s + curvature s² with b = right - left - curvature. The roots come from the larger one, so that neither suffers
// from cancellation.
std::array<double, 2> Parabola::Zeros() const
{
    const double b = right - left - curvature;
    std::array<double, 2> roots{NAN_VALUE, NAN_VALUE};
    if (curvature == 0.0) {
        roots[0] = -left / b;
    } else {
        const double discriminant = b * b - 4.0 * curvature * left;
        if (!(discriminant > 0.0)) return roots;
        const double q = -0.5 * (b + std::copysign(std::sqrt(discriminant), b));
        roots = {q / curvature, left / q};
        if (roots[1] < roots[0]) std::swap(roots[0], roots[1]);
    }
    if (!IsInside(roots[1])) roots[1] = NAN_VALUE;
    if (!IsInside(roots[0])) roots = {roots[1], NAN_VALUE};
    return roots;
}

MomentDiagram::MomentDiagram(const std::vector<CMemberPoint>& points, const std::vector<CSubSpan>& subSpans,
                             Bending bending)
{
    Make(points, subSpans, bending);
    FindLargest();
}

MomentDiagram::MomentDiagram(const std::vector<CMemberPoint>& points, const std::vector<CSubSpan>& subSpans,
                             double major, double minor) :
    MomentDiagram(MomentDiagram(points, subSpans, Bending::Major), major,
                  MomentDiagram(points, subSpans, Bending::Minor), minor)
{}

MomentDiagram::MomentDiagram(const MomentDiagram& a, double major, const MomentDiagram& b, double minor)
{
    m_pieces = a.m_pieces;
    m_curves.reserve(m_pieces.size());
    for (std::size_t k = 0; k < m_pieces.size(); ++k) {
        Piece& piece = m_pieces[k];
        const Piece& pa = a.m_pieces[k];
        const Piece& pb = b.m_pieces[k];
        piece.shearLeft = major * pa.shearLeft + minor * pb.shearLeft;
        piece.shearRight = major * pa.shearRight + minor * pb.shearRight;
        piece.balance.byShears = major * pa.balance.byShears + minor * pb.balance.byShears;
        piece.balance.byMoments = major * pa.balance.byMoments + minor * pb.balance.byMoments;
        piece.balance.scale = std::abs(major) * pa.balance.scale + std::abs(minor) * pb.balance.scale;
        piece.balance.balanced = (pa.balance.balanced || major == 0.0) && (pb.balance.balanced || minor == 0.0);
        piece.firstCurve = m_curves.size();
        for (const Parabola& ca : a.CurvesOf(pa))
            for (const Parabola& cb : b.CurvesOf(pb))
                m_curves.push_back(Sum(ca, major, cb, minor));
        piece.curves = m_curves.size() - piece.firstCurve;
    }
    FindLargest();
}

void MomentDiagram::Make(const std::vector<CMemberPoint>& points, const std::vector<CSubSpan>& subSpans,
                         Bending bending)
{
    if (points.empty()) return;
    const bool major = bending == Bending::Major;
    const auto shear = [major](const Vec3<double>& f) { return major ? f.z : -f.y; };
    const auto moment = [major](const Vec3<double>& m) { return major ? m.y : m.z; };
    const std::size_t count = std::min(subSpans.size(), points.size() - 1);
    m_pieces.resize(count);
    m_curves.reserve(count);
    double largestScale = 0.0;
    for (std::size_t k = 0; k < count; ++k) {
        Piece& piece = m_pieces[k];
        piece.start = points[k].GetPos();
        piece.length = points[k + 1].GetPos() - piece.start;
        piece.shearLeft = shear(subSpans[k].GetForcesLeft());
        piece.shearRight = shear(subSpans[k].GetForcesRight());
        const double h = piece.length;
        const double left = moment(subSpans[k].GetMomentsLeft());
        const double right = moment(subSpans[k].GetMomentsRight());
        Balance& balance = piece.balance;
        balance.byShears = 0.5 * (piece.shearLeft + piece.shearRight) * h;
        balance.byMoments = right - left;
        balance.scale = std::max(
            {std::abs(left), std::abs(right), (std::abs(piece.shearLeft) + std::abs(piece.shearRight)) * h / 8.0});
        largestScale = std::max(largestScale, balance.scale);
    }
    for (std::size_t k = 0; k < count; ++k) {
        Piece& piece = m_pieces[k];
        Balance& balance = piece.balance;
        const double left = moment(subSpans[k].GetMomentsLeft());
        const double right = moment(subSpans[k].GetMomentsRight());
        const double curvature = 0.5 * (piece.shearRight - piece.shearLeft) * piece.length;
        const double residual = std::abs(balance.byMoments - balance.byShears);
        balance.balanced =
            piece.length == 0.0 || residual <= std::max(BALANCE_TOLERANCE * balance.scale, ROUNDING * largestScale);
        piece.firstCurve = m_curves.size();
        if (balance.balanced)
            m_curves.push_back({left, right, curvature});
        else {
            m_curves.push_back({left, left + balance.byShears, curvature});
            m_curves.push_back({right - balance.byShears, right, curvature});
            m_curves.push_back({left, right, 0.0});
        }
        piece.curves = m_curves.size() - piece.firstCurve;
    }
}

void MomentDiagram::FindLargest()
{
    m_largest = m_pieces.empty() ? 0.0 : Between(m_pieces.front().start, m_pieces.back().End()).Magnitude();
}

double MomentDiagram::Tolerance() const
{
    return m_pieces.empty() ? 0.0 : 1e-9 * (m_pieces.back().End() - m_pieces.front().start);
}

std::size_t MomentDiagram::FirstEndingAfter(double x) const
{
    const auto it = std::upper_bound(m_pieces.begin(), m_pieces.end(), x,
                                     [](double position, const Piece& piece) { return position < piece.End(); });
    return static_cast<std::size_t>(it - m_pieces.begin());
}

MomentDiagram::Range MomentDiagram::Covering(double from, double to) const
{
    const double tolerance = Tolerance();
    const std::size_t first = FirstEndingAfter(from + tolerance);
    std::size_t last = first;
    while (last < m_pieces.size() && m_pieces[last].start < to - tolerance)
        ++last;
    return {static_cast<int>(first), static_cast<int>(last)};
}

bool MomentDiagram::IsBalanced(double from, double to) const
{
    const Range range = Covering(from, to);
    for (int k = range.first; k < range.last; ++k)
        if (!IsBalanced(k)) return false;
    return true;
}

MomentRange MomentDiagram::InSubSpan(int subSpan, double s) const
{
    const std::span<const Parabola> curves = Curves(subSpan);
    const double first = curves.front().At(s);
    MomentRange range{first, first};
    for (const Parabola& curve : curves.subspan(1))
        Widen(curve.At(s), range);
    return range;
}

MomentRange MomentDiagram::Beside(double x, bool left) const
{
    if (m_pieces.empty()) return {};
    const double tolerance = Tolerance();
    // Left of x: the first sub-span that ends at x or later. Right of x: the first that ends beyond it.
    std::size_t k = FirstEndingAfter(left ? x - tolerance : x + tolerance);
    if (left && k < m_pieces.size() && k > 0 && m_pieces[k].start >= x - tolerance) --k;
    k = std::min(k, m_pieces.size() - 1);
    const Piece& piece = m_pieces[k];
    double s = piece.length > 0.0 ? (x - piece.start) / piece.length : left ? 1.0 : 0.0;
    if (std::abs(x - piece.start) <= tolerance) s = piece.length > 0.0 ? 0.0 : s;
    if (piece.length > 0.0 && std::abs(x - piece.End()) <= tolerance) s = 1.0;
    return InSubSpan(static_cast<int>(k), std::clamp(s, 0.0, 1.0));
}

Extremes MomentDiagram::Between(double from, double to) const
{
    Extremes extremes;
    bool any = false;
    const auto take = [&](double moment, double x) {
        if (!any) extremes = {moment, moment, x, x};
        any = true;
        if (moment < extremes.least || std::isnan(moment)) {
            extremes.least = moment;
            extremes.leastAt = x;
        }
        if (moment > extremes.greatest || std::isnan(moment)) {
            extremes.greatest = moment;
            extremes.greatestAt = x;
        }
    };
    const double tolerance = Tolerance();
    for (std::size_t k = FirstEndingAfter(from - tolerance); k < m_pieces.size(); ++k) {
        const Piece& piece = m_pieces[k];
        if (piece.start > to + tolerance) break;
        // A sub-span that only touches the stretch has its value on the other side of the end.
        const bool touches = piece.End() <= from + tolerance || piece.start >= to - tolerance;
        if (touches && to - from > tolerance && piece.length > tolerance) continue;
        const auto share = [&](double x) {
            return piece.length > tolerance ? std::clamp((x - piece.start) / piece.length, 0.0, 1.0) : 0.0;
        };
        const double s0 = from > piece.start + tolerance ? share(from) : 0.0;
        const double s1 = to < piece.End() - tolerance ? share(to) : 1.0;
        for (const Parabola& curve : CurvesOf(piece)) {
            take(curve.At(s0), piece.Position(s0));
            take(curve.At(s1), piece.Position(s1));
            const double s = curve.Extreme();
            if (s > s0 && s < s1) take(curve.At(s), piece.Position(s));
        }
    }
    return extremes;
}

CString UnbalancedText(int subSpan, Bending bending, const MomentDiagram::Piece& piece, const CDesFormat& fmt)
{
    const bool major = bending == Bending::Major;
    CString text;
    text.Format(
        L"forces do not balance in sub-span %i (%s to %s), %s: by the shears the moment changes by %s, by the end "
        L"moments by %s. The moment in between is not known; the worst of three readings is checked. A load "
        L"inside the sub-span? Divide there. A sign? %s",
        subSpan, fmt.Length(piece.start), fmt.Length(piece.End()), major ? L"Myy" : L"Mzz",
        fmt.Moment(piece.balance.byShears), fmt.Moment(piece.balance.byMoments),
        major ? L"dMyy/dx = Fz" : L"dMzz/dx = -Fy");
    return text;
}

} // namespace Keltrix::Design

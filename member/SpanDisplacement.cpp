// Deflection of a span from its chord by the moment-area method, with the bending moment linear along each sub-span.
//
// Symbols: m1, m2 moments at the ends of a sub-span; x0 position of its left end; h its length; EI stiffness;
// A area of a piece of the M/EI diagram, c distance of the piece's centroid from the sub-span's left end;
// a distance of a candidate point from the span's left end; delta its deflection.
//
// With S = sum of (Len - x0 - c) A over the span and Sa = sum of (a - x0 - c) A over the sub-spans up to the candidate,
// delta = S / Len * a - Sa. Sums are taken in this form and order, so that they round as a calculation by hand does, and
// a point of no deflection gets exactly 0; only the largest deflection of a long span carries Sa along from point to
// point, as a * (sum of A) - (sum of (x0 + c) A), to cost time linear in the number of sub-spans.
//
// The lever arms use x0 as measured from the member's start and not from the span's left end: kept for compatibility, and
// the reason why the results are those of mechanics only for spans that start at position 0.

#include <cmath>

#include "keltrix/steel/MemberLayout.h"
#include "member/SamePoint.h"

namespace Keltrix::Steel {

namespace {

constexpr int LONG_SPAN = 16; // sub-spans, beyond which sums are carried along

/// One piece of the M/EI diagram of a sub-span.
struct DiagramPiece {
    double area = 0.0;
    double c = 0.0;
};

/// The M/EI diagram of one sub-span: one trapezoid, or two triangles where the moment changes sign or is zero at an end.
struct SubSpanDiagram {
    double x0;
    DiagramPiece pieces[2];

    SubSpanDiagram(double m1, double m2, double leftEnd, double h, double EI) : x0(leftEnd)
    {
        if ((m1 > 0.0 && m2 > 0.0) || (m1 < 0.0 && m2 < 0.0)) {
            pieces[0] = {(m1 + m2) * 0.5 * h / EI, (2.0 * m2 + m1) / (m1 + m2) * h / 3.0};
            return;
        }
        const double d = std::fabs(m1) / (std::fabs(m2) + std::fabs(m1)) * h; // to the zero of the moment
        const double e = h - d;
        // The second triangle's centroid by the length of the first: kept for compatibility.
        pieces[0] = {e * m2 * 0.5 / EI, 2.0 * d / 3.0 + d};
        pieces[1] = {m1 * 0.5 * d / EI, d / 3.0};
    }

    /// First moment of the area about the point at distance `reach`.
    double FirstMomentAbout(double reach) const
    {
        return (reach - x0 - pieces[0].c) * pieces[0].area + (reach - x0 - pieces[1].c) * pieces[1].area;
    }
};

/// A moment component that a span bends by, and a straight line that is taken off it.
struct BendingMoment {
    double Vec3<double>::*component;
    double atStart = 0.0; // taken off at position 0
    double slope = 0.0;   // and so much more for every metre

    double At(const Vec3<double>& moment, double x) const { return moment.*component - atStart - slope * x; }
};

/// The deflections of a span's points.
class Deflections {
public:
    Deflections(const CSpan& span, const std::vector<CMemberPoint>& points, const std::vector<CSubSpan>& subSpans,
                const BendingMoment& moment, double EI) :
        m_points(points),
        m_subSpans(subSpans), m_moment(moment), m_EI(EI), m_first(span.GetCSSIndexLeft()), m_next(m_first),
        m_left(span.PosLeft()), m_length(span.Length())
    {
        for (int i = m_first; i < span.GetCMPIndexRight(); ++i)
            m_sum += Diagram(i).FirstMomentAbout(m_length);
    }

    /// S: not finite where a moment diagram is not, or the stiffness is zero.
    double Sum() const { return m_sum; }

    /// Of the point after sub-span k.
    double After(int k) const
    {
        const double a = Reach(k);
        double partial = 0.0;
        for (int i = m_first; i <= k; ++i)
            partial += Diagram(i).FirstMomentAbout(a);
        return m_sum / m_length * a - partial;
    }

    /// The same for sub-span after sub-span from the first on, with the sum carried along.
    double Next()
    {
        const SubSpanDiagram diagram = Diagram(m_next);
        for (const DiagramPiece& piece : diagram.pieces) {
            m_area += piece.area;
            m_firstMoment += (diagram.x0 + piece.c) * piece.area;
        }
        const double a = Reach(m_next);
        ++m_next;
        return m_sum / m_length * a - (a * m_area - m_firstMoment);
    }

private:
    SubSpanDiagram Diagram(int i) const
    {
        const auto k = static_cast<std::size_t>(i);
        const double x0 = m_points[k].GetPos();
        const double x1 = m_points[k + 1].GetPos();
        return {m_moment.At(m_subSpans[k].GetMomentsLeft(), x0), m_moment.At(m_subSpans[k].GetMomentsRight(), x1), x0,
                x1 - x0, m_EI};
    }

    // From the span's left end to the point after sub-span k.
    double Reach(int k) const { return m_points[static_cast<std::size_t>(k) + 1].GetPos() - m_left; }

    const std::vector<CMemberPoint>& m_points;
    const std::vector<CSubSpan>& m_subSpans;
    BendingMoment m_moment;
    double m_EI;
    int m_first;
    int m_next;
    double m_left;
    double m_length;
    double m_sum = 0.0;
    double m_area = 0.0;
    double m_firstMoment = 0.0;
};

double MaxDisp(const CSpan& span, const std::vector<CMemberPoint>& points, const std::vector<CSubSpan>& subSpans,
               double Vec3<double>::*component, double EI)
{
    if (span.NumSubSpans() <= 1) return 0.0;
    Deflections deflections(span, points, subSpans, {component}, EI);
    const int left = span.GetCMPIndexLeft();
    const int right = span.GetCMPIndexRight();
    // Then every deflection is infinite or NaN; return that of the last point, as the loop below would.
    if (!std::isfinite(deflections.Sum())) return std::fabs(deflections.After(right - 1));
    const bool isLong = right - left > LONG_SPAN;
    double largest = 0.0;
    for (int k = left; k < right; ++k) {
        const double deflection = std::fabs(isLong ? deflections.Next() : deflections.After(k));
        // The newer value wins unless the old one is larger, not-a-number included on either side.
        largest = largest > deflection ? largest : deflection;
    }
    return largest;
}

double DispAt(const CSpan& span, const std::vector<CMemberPoint>& points, const std::vector<CSubSpan>& subSpans,
              double Vec3<double>::*component, double pos, double EI, bool leftEnd, bool rightEnd)
{
    if (span.NumSubSpans() <= 1) return 0.0;
    // Both ends read the moment of the left end: kept for compatibility.
    const double endMoment = subSpans[static_cast<std::size_t>(span.GetCSSIndexLeft())].GetMomentsLeft().*component;
    const double ma = leftEnd ? endMoment : 0.0;
    const double mb = rightEnd ? endMoment : 0.0;
    const Deflections deflections(span, points, subSpans, {component, ma, (mb - ma) / span.Length()}, EI);
    const auto position = [&](int i) { return points[static_cast<std::size_t>(i)].GetPos(); };
    const int left = span.GetCMPIndexLeft();
    for (int k = left; k < span.GetCMPIndexRight(); ++k) {
        const double next = position(k + 1);
        if (!(next >= pos || std::fabs(next - pos) < SAME_POINT)) continue;
        const double before = k > left ? deflections.After(k - 1) : 0.0;
        return before + (deflections.After(k) - before) / (next - position(k)) * (pos - position(k));
    }
    return 0.0;
}

} // namespace

double CSpan::MaxDispXX(double modulus, double inertia) const
{
    return MaxDisp(*this, *m_pPoints, *m_pSubSpans, &Vec3<double>::z, modulus * inertia);
}

double CSpan::MaxDispYY(double modulus, double inertia) const
{
    return MaxDisp(*this, *m_pPoints, *m_pSubSpans, &Vec3<double>::y, modulus * inertia);
}

double CSpan::DispXX(double pos, double modulus, double inertia, bool leftEnd, bool rightEnd) const
{
    return DispAt(*this, *m_pPoints, *m_pSubSpans, &Vec3<double>::z, pos, modulus * inertia, leftEnd, rightEnd);
}

double CSpan::DispYY(double pos, double modulus, double inertia, bool leftEnd, bool rightEnd) const
{
    return DispAt(*this, *m_pPoints, *m_pSubSpans, &Vec3<double>::y, pos, modulus * inertia, leftEnd, rightEnd);
}

} // namespace Keltrix::Steel

#include "SpanClass.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "keltrix/design/Places.h"

namespace Keltrix::BS5950 {

using Design::Between;
using Design::MomentDiagram;
using Design::Parabola;
using Design::Sum;

namespace {

// Share of the member's largest moment below which there is none.
constexpr double NO_MOMENT = 1e-9;
// Share of a sub-span within which a place is its end.
constexpr double NO_LENGTH = 1e-12;

// Sections whose class depends on how large the moment is beside the axial force.
bool DependsOnMagnitude(Shape shape) { return shape == Shape::UnequalI || shape == Shape::Tee; }

} // namespace

class SpanClass::Collector {
public:
    Collector(const SpanClass& of, Part part) :
        m_of(of), m_part(part), m_exact(DependsOnMagnitude(of.m_section.shape)),
        m_noMajor(std::max(NO_MOMENT * of.m_major.Largest(), Nominal(of.m_section.Zx))),
        m_noMinor(std::max(NO_MOMENT * of.m_minor.Largest(), Nominal(of.m_section.Zy)))
    {}

    // The part of one sub-span between two shares of it, for one reading of its moments.
    void Take(const Steel::CSubSpan& sub, const Parabola& major, const Parabola& minor, double from, double to)
    {
        m_axial = {sub.GetForcesLeft().x, sub.GetForcesRight().x, 0.0};
        m_majorCurve = major;
        m_minorCurve = minor;
        std::array<double, 5> cuts{from, to, to, to, to};
        std::size_t count = 1;
        for (const double zero : major.Zeros())
            if (zero > from && zero < to) cuts[count++] = zero;
        const double vanishes = m_axial.Zeros()[0];
        if (vanishes > from && vanishes < to) cuts[count++] = vanishes;
        std::sort(cuts.begin(), cuts.end());
        for (std::size_t i = 0; i < count; ++i)
            TakeInterval(cuts[i], cuts[i + 1]);
    }

    WorstClass Result()
    {
        for (std::size_t sign = 0; sign < 3; ++sign)
            for (std::size_t bent = 0; bent < 2; ++bent) {
                const Range& range = m_ranges[sign][bent];
                if (!range.any) continue;
                const double Mx = (static_cast<double>(sign) - 1.0) * Nominal(m_of.m_section.Zx);
                const double My = bent ? Nominal(m_of.m_section.Zy) : 0.0;
                Accumulate({range.least, Mx, My, 0.0, 0.0, 0.0});
                if (range.greatest != range.least) Accumulate({range.greatest, Mx, My, 0.0, 0.0, 0.0});
            }
        return m_worst;
    }

private:
    struct Range {
        bool any = false;
        double least = 0.0, greatest = 0.0; // axial force
    };

    double Nominal(double Z) const { return 1e-6 * m_of.m_steel.py * Z; }

    // Between two neighbouring cuts neither the moment nor the axial force changes its sign.
    void TakeInterval(double from, double to)
    {
        const double middle = 0.5 * (from + to);
        const int sign = SignBetween(from, to);
        const bool compressed = m_axial.At(middle) < 0.0;
        const bool bentY = std::max({std::abs(m_minorCurve.At(from)), std::abs(m_minorCurve.At(middle)),
                                     std::abs(m_minorCurve.At(to))}) > m_noMinor;
        if (!Counts(sign, compressed, bentY)) return;
        if (m_exact) return TakeExactly(from, to, sign, compressed, bentY);
        for (const double s : {from, to})
            Extend(sign, bentY, AxialAt(s, compressed));
        // Which walls of a hollow section are flanges depends on the axis of bending: where the moment about y-y passes through
        // zero there is compression alone.
        if (m_of.m_section.shape != Shape::RHS || sign != 0 || !compressed || !bentY) return;
        for (const double s : {from, to})
            if (std::abs(m_minorCurve.At(s)) <= m_noMinor) Extend(0, false, AxialAt(s, true));
        for (const double s : m_minorCurve.Zeros())
            if (s > from && s < to) Extend(0, false, AxialAt(s, true));
    }

    void Extend(int sign, bool bentY, double F)
    {
        Range& range = m_ranges[static_cast<std::size_t>(sign) + 1][bentY];
        if (!range.any) range = {true, F, F};
        range.least = std::min(range.least, F);
        range.greatest = std::max(range.greatest, F);
    }

    // Of the largest moment there; none where all of it counts as zero.
    int SignBetween(double from, double to) const
    {
        const double extreme = m_majorCurve.Extreme();
        int sign = 0;
        for (const double s : {from, 0.5 * (from + to), to, extreme}) {
            if (!(s >= from && s <= to)) continue;
            const double M = m_majorCurve.At(s);
            if (std::abs(M) > m_noMajor) sign = M < 0.0 ? -1 : 1;
        }
        return sign;
    }

    bool Counts(int sign, bool compressed, bool bentY) const
    {
        switch (m_part) {
        case Part::Compressed:
            return compressed;
        case Part::Acted:
            return compressed || sign != 0 || bentY;
        case Part::Flange1:
            return sign < 0;
        default:
            return sign > 0;
        }
    }

    double AxialAt(double s, bool compressed) const
    {
        return compressed ? std::min(0.0, Between(m_axial.left, m_axial.right, s)) : 0.0;
    }

    // An element counts where it is compressed: at the ends of the interval, or where the stress at an edge is largest. Flanges are
    // compressed by the moment about y-y too, the stem of a T is not.
    void TakeExactly(double from, double to, int sign, bool compressed, bool bentY)
    {
        const SectionProperties& section = m_of.m_section;
        const auto at = [&](double s) {
            const double M = m_majorCurve.At(s);
            const double least = Nominal(section.Zx);
            const double side = bentY ? std::max(std::abs(m_minorCurve.At(s)), Nominal(section.Zy)) : 0.0;
            const double Mx = sign == 0 ? 0.0 : M * sign < least ? sign * least : M;
            Accumulate({AxialAt(s, compressed), Mx, side, 0.0, 0.0, 0.0});
            const bool ofMember = m_part == Part::Compressed || m_part == Part::Acted;
            // The limits of a web between unequal flanges differ between compression alone and bending, however small.
            if (section.shape == Shape::UnequalI && ofMember && compressed && std::abs(M) <= m_noMajor)
                Accumulate({AxialAt(s, compressed), 0.0, side, 0.0, 0.0, 0.0});
        };
        at(from);
        at(to);
        const Parabola axial = compressed ? Sum({}, 1.0, m_axial, -1.0 / section.A) : Parabola{};
        const double tips = 0.5 / section.Iy; // of both flanges; the stem of a T has none
        const std::array<std::array<double, 2>, 2> edges{
            {{-(section.D - section.cy) / section.Ix, section.B * tips},
             {section.cy / section.Ix, section.shape == Shape::Tee ? 0.0 : section.B2 * tips}}};
        for (const auto& [edge, tip] : edges)
            for (const double side : {-tip, 0.0, tip}) {
                if (!bentY && side != 0.0) continue;
                const double s = Sum(Sum(axial, 1.0, m_majorCurve, edge), 1.0, m_minorCurve, side).Extreme();
                if (s > from && s < to) at(s);
            }
    }

    void Accumulate(const Actions& actions)
    {
        const SectionProperties& s = m_of.m_section;
        const double py = m_of.m_steel.py;
        const bool angle = s.shape == Shape::Angle;
        const Classification c = Classify(s, m_of.m_steel, actions);
        const bool slender = c.cls == 4;
        const double pyZx = slender ? c.pyMomentX * c.Wx : py * (angle ? s.Zu : s.Zx);
        const double pyZy = slender ? c.pyMomentY * c.Wy : py * (angle ? s.Zv : s.Zy);
        if (m_worst.cls == 0) m_worst = {c.cls, c.Aeff, c.pyCompression, pyZx, pyZy, c, c};
        m_worst.cls = std::max(m_worst.cls, c.cls);
        m_worst.Aeff = std::min(m_worst.Aeff, c.Aeff);
        m_worst.pyCompression = std::min(m_worst.pyCompression, c.pyCompression);
        m_worst.pyZx = std::min(m_worst.pyZx, pyZx);
        m_worst.pyZy = std::min(m_worst.pyZy, pyZy);
        if (c.pyMomentX * c.Wx < m_worst.bending.pyMomentX * m_worst.bending.Wx) m_worst.bending = c;
        if (c.pyMomentY * c.Wy < m_worst.bendingY.pyMomentY * m_worst.bendingY.Wy) m_worst.bendingY = c;
    }

    const SpanClass& m_of;
    Part m_part;
    bool m_exact;
    double m_noMajor, m_noMinor;
    Parabola m_axial, m_majorCurve, m_minorCurve;   // of the sub-span at hand
    std::array<std::array<Range, 2>, 3> m_ranges{}; // by the sign of the major moment, and whether there is a minor one
    WorstClass m_worst;
};

SpanClass::SpanClass(const SectionProperties& section, const Material& steel,
                     const std::vector<Steel::CSubSpan>& subSpans, const MomentDiagram& major,
                     const MomentDiagram& minor) :
    m_section(section),
    m_steel(steel), m_subSpans(subSpans), m_major(major), m_minor(minor)
{}

WorstClass SpanClass::Worst(double from, double to, Part part) const
{
    Collector collector(*this, part);
    const MomentDiagram::Range covered = m_major.Covering(from, to);
    for (int k = covered.first; k < covered.last; ++k) {
        const MomentDiagram::Piece& piece = m_major.At(k);
        const auto share = [&](double x, double atPoint) {
            const double s = (x - piece.start) / piece.length;
            return s > NO_LENGTH && s < 1.0 - NO_LENGTH ? s : atPoint;
        };
        const double s0 = from > piece.start ? share(from, 0.0) : 0.0;
        const double s1 = to < piece.End() ? share(to, 1.0) : 1.0;
        for (const Parabola& major : m_major.Curves(k))
            for (const Parabola& minor : m_minor.Curves(k))
                collector.Take(m_subSpans[static_cast<std::size_t>(k)], major, minor, s0, s1);
    }
    return collector.Result();
}

} // namespace Keltrix::BS5950

#include "keltrix/design/Stretches.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "VerticalSupport.h"

namespace Keltrix::Design {

using Data::CRestraint;
using Steel::CMemberPoint;
using Steel::CSubSpan;

namespace {

constexpr unsigned int BY_MOMENT = CRestraint::COMP_FLANGE_LATERAL | CRestraint::TENS_FLANGE_LATERAL |
                                   CRestraint::COMP_FLANGE_WARPING | CRestraint::TENS_FLANGE_WARPING |
                                   CRestraint::COMP_FLANGE_WARPING_PART | CRestraint::TENS_FLANGE_WARPING_PART;
// Compression and tension flange, and both flanges by their numbers.
constexpr std::array<std::pair<unsigned int, unsigned int>, 3> PAIRS{
    {{CRestraint::COMP_FLANGE_LATERAL | CRestraint::TENS_FLANGE_LATERAL,
      CRestraint::FLANGE1_LATERAL | CRestraint::FLANGE2_LATERAL},
     {CRestraint::COMP_FLANGE_WARPING | CRestraint::TENS_FLANGE_WARPING,
      CRestraint::FLANGE1_WARPING | CRestraint::FLANGE2_WARPING},
     {CRestraint::COMP_FLANGE_WARPING_PART | CRestraint::TENS_FLANGE_WARPING_PART,
      CRestraint::FLANGE1_WARPING_PART | CRestraint::FLANGE2_WARPING_PART}}};
// Share of the member's largest moment below which the sign of a moment means nothing.
constexpr double NO_MOMENT = 1e-9;
// Share of a sub-span within which a contraflexure counts as its end.
constexpr double END_TOLERANCE = 1e-9;

bool HoldsFlange(const CRestraint& resolved, std::size_t flange)
{
    return resolved.IsRestrained(flange == 0 ? CRestraint::FLANGE1_LATERAL : CRestraint::FLANGE2_LATERAL, false);
}

int SignOf(const MomentRange& range, double tolerance)
{
    if (range.greatest < -tolerance) return -1;
    return range.least > tolerance ? 1 : 0;
}

// A place where a stretch can end, and the piece of the member that follows it.
struct Place {
    double x = 0.0;
    int point = -1;
    CRestraint restraint; // resolved
    CRestraint along;     // resolved, of the piece to the right
    std::array<bool, 2> holds{};
    std::array<bool, 2> heldAlong{};
};

class Finder {
public:
    Finder(const std::vector<CMemberPoint>& points, const std::vector<CSubSpan>& subSpans,
           const MomentDiagram& diagram) :
        m_points(points),
        m_subSpans(subSpans), m_diagram(diagram), m_tolerance(NO_MOMENT * diagram.Largest())
    {}

    std::vector<Stretch> Find()
    {
        if (m_points.size() < 2 || m_subSpans.empty()) return {};
        MakePlaces();
        const int last = static_cast<int>(m_points.size()) - 1;
        m_leftTip = IsTip(m_points, 0);
        m_rightTip = IsTip(m_points, last);
        if (m_leftTip) ReleaseCantilever(true);
        if (m_rightTip) ReleaseCantilever(false);
        for (std::size_t f = 0; f < FLANGES.size(); ++f)
            AddStretches(f);
        return Merged();
    }

private:
    void MakePlaces()
    {
        const std::size_t count = std::min(m_subSpans.size(), m_points.size() - 1);
        m_places.reserve(m_points.size());
        for (std::size_t k = 0; k <= count; ++k) {
            AddPoint(k, count);
            if (k < count) AddPieces(k);
        }
    }

    void AddPoint(std::size_t k, std::size_t count)
    {
        const int left = k > 0 ? SignOf(m_diagram.InSubSpan(static_cast<int>(k) - 1, 1.0), m_tolerance) : 0;
        const int right = k < count ? SignOf(m_diagram.InSubSpan(static_cast<int>(k), 0.0), m_tolerance) : 0;
        const int sign = k == 0 ? right : k == count ? left : left == right ? left : 0;
        Place place;
        place.x = m_points[k].GetPos();
        place.point = static_cast<int>(k);
        place.restraint = Resolved(m_points[k].GetRestraint(), sign);
        for (std::size_t f = 0; f < 2; ++f)
            place.holds[f] = HoldsFlange(place.restraint, f);
        m_places.push_back(place);
    }

    // The pieces of a sub-span: one, or several where what is held along it changes with the sign of the moment.
    void AddPieces(std::size_t k)
    {
        const CRestraint along = m_subSpans[k].GetRestraint();
        const int subSpan = static_cast<int>(k);
        const std::span<const Parabola> curves = m_diagram.Curves(subSpan);
        if (along.IsFree(BY_MOMENT, false)) return SetAlong(along, 0);
        const auto signAt = [&](double s) { return SignOf(m_diagram.InSubSpan(subSpan, s), m_tolerance); };
        if (curves.size() > 1) return SetAlong(along, SignThroughout(subSpan));
        double before = 0.0;
        const std::array<double, 2> zeros = curves.front().Zeros();
        for (std::size_t i = 0; i < zeros.size(); ++i) {
            const double zero = zeros[i];
            // A root that rounding moves off an end of the sub-span is no contraflexure between them, nor is one beyond
            // which there is no moment.
            if (!(zero > before + END_TOLERANCE && zero < 1.0 - END_TOLERANCE)) continue;
            const double after = i == 0 && zeros[1] < 1.0 ? zeros[1] : 1.0;
            if (!HasMoment(curves.front(), before, zero) || !HasMoment(curves.front(), zero, after)) continue;
            SetAlong(along, signAt(0.5 * (before + zero)));
            Place place;
            place.x = m_diagram.At(subSpan).Position(zero);
            m_places.push_back(place);
            before = zero;
        }
        SetAlong(along, signAt(0.5 * (before + 1.0)));
    }

    // Whether the moment is anywhere beyond the tolerance between a zero and the next one or an end.
    bool HasMoment(const Parabola& curve, double from, double to) const
    {
        return std::max({std::abs(curve.At(from)), std::abs(curve.At(0.5 * (from + to))), std::abs(curve.At(to))}) >
               m_tolerance;
    }

    // Sign that all readings of an unbalanced sub-span share all along it; 0 where they do not.
    int SignThroughout(int subSpan) const
    {
        const MomentDiagram::Piece& piece = m_diagram.At(subSpan);
        const Extremes e = m_diagram.Between(piece.start, piece.End());
        return SignOf({e.least, e.greatest}, m_tolerance);
    }

    void SetAlong(const CRestraint& along, int sign)
    {
        Place& place = m_places.back();
        place.along = Resolved(along, sign);
        for (std::size_t f = 0; f < 2; ++f)
            place.heldAlong[f] = HoldsFlange(place.along, f);
    }

    // Takes off what holds between the tip and the first vertical support, except a restraint along all of it.
    void ReleaseCantilever(bool atLeft)
    {
        const std::size_t last = m_places.size() - 1;
        const Place& tip = m_places[atLeft ? 0 : last];
        if (tip.restraint.IsRestrained(CRestraint::TORSION | CRestraint::FLANGE1_LATERAL, false)) return;
        std::size_t first = 0;
        std::size_t end = last;
        const auto supports = [this](const Place& place) {
            return place.point >= 0 && IsVerticalSupport(m_points[static_cast<std::size_t>(place.point)]);
        };
        if (atLeft)
            for (end = 1; end < last && !supports(m_places[end]);)
                ++end;
        else
            for (first = last - 1; first > 0 && !supports(m_places[first]);)
                --first;
        for (std::size_t f = 0; f < 2; ++f) {
            bool all = true;
            for (std::size_t i = first; i < end; ++i)
                all = all && m_places[i].heldAlong[f];
            if (all) continue;
            for (std::size_t i = first; i < end; ++i)
                m_places[i].heldAlong[f] = false;
            for (std::size_t i = first + 1; i < end; ++i)
                m_places[i].holds[f] = false;
        }
    }

    void AddStretches(std::size_t f)
    {
        const std::size_t last = m_places.size() - 1;
        for (std::size_t i = 0; i < last;) {
            const bool held = m_places[i].heldAlong[f];
            std::size_t j = i + 1;
            while (j < last && m_places[j].heldAlong[f] == held && (held || !m_places[j].holds[f]))
                ++j;
            Stretch stretch;
            stretch.flange[f] = true;
            stretch.held = held;
            stretch.left = EndAt(i, f, true);
            stretch.right = EndAt(j, f, false);
            stretch.cantilever = stretch.left.kind == EndKind::Tip || stretch.right.kind == EndKind::Tip;
            stretch.moments = m_diagram.Between(stretch.left.x, stretch.right.x);
            m_stretches.push_back(stretch);
            i = j;
        }
    }

    StretchEnd EndAt(std::size_t i, std::size_t f, bool isLeft) const
    {
        const std::size_t last = m_places.size() - 1;
        const Place& place = m_places[i];
        StretchEnd end;
        end.x = place.x;
        end.point = place.point;
        end.restraint = place.restraint;
        const Place* outside = isLeft ? (i > 0 ? &m_places[i - 1] : nullptr) : (i < last ? &place : nullptr);
        const bool edge = outside && outside->heldAlong[f];
        if (edge) end.restraint = Resolved(Together(end.restraint, outside->along), 0);
        end.ofFlange[f] = end.restraint;
        if (i == 0 ? m_leftTip : i == last && m_rightTip)
            end.kind = EndKind::Tip;
        else if (place.holds[f])
            end.kind = EndKind::HeldPoint;
        else
            end.kind = edge ? EndKind::ContinuousEdge : EndKind::MemberEnd;
        return end;
    }

    static CRestraint Together(CRestraint a, const CRestraint& b)
    {
        a.Add(b.RestFlag());
        return a;
    }

    std::vector<Stretch> Merged()
    {
        std::stable_sort(m_stretches.begin(), m_stretches.end(), [](const Stretch& a, const Stretch& b) {
            return a.left.x != b.left.x ? a.left.x < b.left.x : a.right.x < b.right.x;
        });
        std::vector<Stretch> merged;
        for (const Stretch& s : m_stretches) {
            Stretch* const before = merged.empty() ? nullptr : &merged.back();
            const bool same = before && before->left.x == s.left.x && before->right.x == s.right.x &&
                              before->held == s.held && before->flange != s.flange;
            if (!same) {
                merged.push_back(s);
                continue;
            }
            // The sorting keeps those of the first flange in front.
            before->flange = {true, true};
            before->left.ofFlange[1] = s.left.ofFlange[1];
            before->right.ofFlange[1] = s.right.ofFlange[1];
            before->left.restraint = Resolved(Together(before->left.restraint, s.left.restraint), 0);
            before->right.restraint = Resolved(Together(before->right.restraint, s.right.restraint), 0);
        }
        return merged;
    }

    const std::vector<CMemberPoint>& m_points;
    const std::vector<CSubSpan>& m_subSpans;
    const MomentDiagram& m_diagram;
    double m_tolerance;
    bool m_leftTip = false;
    bool m_rightTip = false;
    std::vector<Place> m_places;
    std::vector<Stretch> m_stretches;
};

} // namespace

const wchar_t* EndKindText(EndKind kind)
{
    switch (kind) {
    case EndKind::HeldPoint:
        return L"flange held laterally at the point";
    case EndKind::ContinuousEdge:
        return L"edge of a restraint along the member";
    case EndKind::Tip:
        return L"free tip of a cantilever";
    case EndKind::MemberEnd:
        break;
    }
    return L"end of the member, not held";
}

bool IsTip(const std::vector<CMemberPoint>& points, int point)
{
    const int last = static_cast<int>(points.size()) - 1;
    if ((point != 0 && point != last) || IsVerticalSupport(points[static_cast<std::size_t>(point)])) return false;
    int supports = 0;
    for (const CMemberPoint& p : points) {
        if (!IsVerticalSupport(p)) continue;
        const CRestraint restraint = p.GetRestraint();
        const bool holdsRotation =
            !restraint.IsFree(CRestraint::MAJOR_ROTATION | CRestraint::MAJOR_ROTATION_PART, true);
        supports += holdsRotation ? 2 : 1;
    }
    return supports >= 2;
}

CRestraint Resolved(const CRestraint& restraint, int momentSign)
{
    CRestraint resolved = restraint;
    resolved.ClearForcesAndMoments();
    // Whichever flange is compressed, both are held.
    for (const auto& [byMoment, flanges] : PAIRS)
        if (resolved.IsRestrained(byMoment, false)) resolved.Add(flanges);
    if (momentSign != 0)
        resolved.SetForcesAndMoments({0.0, 0.0, 0.0}, {0.0, static_cast<double>(momentSign), 0.0}, true);
    resolved.MakeConsistent();
    resolved.Remove(static_cast<int>(BY_MOMENT));
    resolved.ClearForcesAndMoments();
    return resolved;
}

std::vector<Stretch> FindStretches(const std::vector<CMemberPoint>& points, const std::vector<CSubSpan>& subSpans,
                                   const MomentDiagram& diagram)
{
    return Finder(points, subSpans, diagram).Find();
}

} // namespace Keltrix::Design

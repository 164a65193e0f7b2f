// Flexural buckling of struts: spans between points held in position, Table 22, 4.7.4, 4.7.10.

#include "CompressionChecks.h"

#include <algorithm>
#include <cmath>

#include "BucklingEntry.h"
#include "CrossSection.h"
#include "MomentShape.h"
#include "SpanClass.h"
#include "keltrix/design/Segments.h"

namespace Keltrix::BS5950 {

using Design::EndKind;
using Design::MomentDiagram;
using Steel::CMemberResult;
using Steel::CRestraint;

namespace {

// 0 free, 1 partial, 2 full, about the axis of the buckling mode.
int Rotation(const CRestraint& restraint, BucklingMode mode)
{
    const bool major = mode == BucklingMode::Major;
    const unsigned int full = major ? CRestraint::MAJOR_ROTATION : CRestraint::MINOR_ROTATION;
    const unsigned int part = major ? CRestraint::MAJOR_ROTATION_PART : CRestraint::MINOR_ROTATION_PART;
    if (restraint.IsRestrained(full, true)) return 2;
    return restraint.IsRestrained(part, true) ? 1 : 0;
}

const wchar_t* HeldReason(BucklingMode mode)
{
    return mode == BucklingMode::Major ? L"held in position against bending about x-x (major axis shear restraint)"
                                       : L"held in position against bending about y-y (minor axis shear restraint)";
}

} // namespace

template <class Value>
double CompressionChecks::LargestOver(const SpanResult& span, Value value) const
{
    const std::vector<PositionResult>& positions = m_found.positions;
    const auto first = std::lower_bound(positions.begin(), positions.end(), span.left,
                                        [](const PositionResult& p, int k) { return p.subSpan < k; });
    double largest = 0.0;
    for (auto p = first; p != positions.end() && p->subSpan < span.right; ++p)
        largest = std::max(largest, value(*p));
    return largest;
}

// The moments and the ends of a span between two member points.
SpanResult CompressionChecks::MakeSpan(BucklingMode mode, int left, int right, bool turned) const
{
    const SectionProperties& s = m_model.Properties();
    SpanResult span;
    span.mode = mode;
    span.left = left;
    span.right = right;
    span.turned = turned;
    span.start = m_model.points[static_cast<std::size_t>(left)].GetPos();
    span.end = m_model.points[static_cast<std::size_t>(right)].GetPos();
    span.from.x = span.start;
    span.from.point = left;
    span.from.restraint = m_model.PointRestraint(left);
    span.to.x = span.end;
    span.to.point = right;
    span.to.restraint = m_model.PointRestraint(right);
    span.radius = mode == BucklingMode::Major ? s.rx : s.MinorRadius();
    span.momentX = ShapeOf(m_model.MomentsX(turned), span.start, span.end, FactorTable::Table26);
    span.flexural.momentY = ShapeOf(m_model.MomentsY(turned), span.start, span.end, FactorTable::Table26);
    span.Mx = span.momentX.Mmax <= m_model.LeastMomentX() ? 0.0 : span.momentX.Mmax;
    span.flexural.My = span.flexural.momentY.Mmax <= m_model.LeastMomentY() ? 0.0 : span.flexural.momentY.Mmax;
    SetCapacityRatios(span);
    return span;
}

// The moment's utilisation of a cross-section with the shear there, 4.8.3.3.2. Where the member is in tension the capacity is that
// under the moments alone (4.8.2.1), because tension can hide that an element is compressed. Where the other moment vanishes just
// there, the section can have a better class than it has right beside the place, which then counts.
double CompressionChecks::MomentUtilisation(const PositionResult& p, Axis axis, bool turned) const
{
    const bool major = axis == Axis::X;
    PositionResult alone = p;
    alone.actions.F = std::min(0.0, p.actions.F);
    const auto evaluated = [&] {
        CrossSection(m_model.section, false, false, m_model.StiffenerSpacing(Axis::Y)).Evaluate(alone);
        return major ? alone.major : alone.minor;
    };
    double utilisation = p.actions.F > 0.0 ? evaluated() : major ? p.major : p.minor;
    const MomentDiagram& other = major ? m_model.MomentsY(turned) : m_model.MomentsX(turned);
    const double least = major ? m_model.LeastMomentY() : m_model.LeastMomentX();
    double& vanishing = major ? alone.actions.My : alone.actions.Mx;
    if (std::abs(vanishing) > least) return utilisation;
    const MomentDiagram::Piece& piece = other.At(p.subSpan);
    const Design::Extremes beside = other.Between(piece.start, piece.End());
    for (const double extreme : {beside.least, beside.greatest}) {
        if (std::abs(extreme) <= least) continue;
        vanishing = std::copysign(2.0 * least, extreme);
        utilisation = std::max(utilisation, evaluated());
    }
    return utilisation;
}

// Largest moment of the span over the capacity at its place.
void CompressionChecks::SetCapacityRatios(SpanResult& span) const
{
    const auto ratio = [&](double PositionResult::*moment, Axis axis) {
        const double largest = LargestOver(span, [=](const PositionResult& p) { return p.*moment; });
        return LargestOver(span, [&](const PositionResult& p) {
            const double share = p.found == Found::LargestUtilisation ? 1.0 - 1e-4 : 1.0 - 1e-9;
            const bool counts = p.*moment > 0.0 && p.*moment >= largest * share;
            return counts ? MomentUtilisation(p, axis, span.turned) * largest / p.*moment : 0.0;
        });
    };
    span.flexural.major = ratio(&PositionResult::momentMajor, Axis::X);
    span.flexural.minor = ratio(&PositionResult::momentMinor, Axis::Y);
}

void CompressionChecks::SetReasons(SpanResult& span) const
{
    const int last = static_cast<int>(m_model.points.size()) - 1;
    // A span that ends at an inner point without restraint ends where a restraint along the member begins.
    const auto kind = [&](int point) {
        if (m_model.PointHeld(span.mode, point)) return EndKind::HeldPoint;
        return point > 0 && point < last ? EndKind::ContinuousEdge : EndKind::MemberEnd;
    };
    span.from.kind = kind(span.left);
    span.to.kind = kind(span.right);
    const auto reason = [&](EndKind end) {
        return end == EndKind::HeldPoint ? HeldReason(span.mode) : Design::EndKindText(end);
    };
    span.startReason = reason(span.from.kind);
    span.endReason = reason(span.to.kind);
}

void SetOverride(SpanResult& span, double value, double memberLength)
{
    span.overridden = true;
    span.startReason = span.endReason = L"end of the member; the effective length is given for the whole of it";
    span.LE = value >= 0.0 ? value : -value * memberLength;
    span.lengthRule = L"given by the user";
    // More than the member's length means that its ends move against each other.
    span.flexural.sway =
        span.mode != BucklingMode::LateralTorsional && span.LE > (span.end - span.start) * (1.0 + 1e-9);
}

void CompressionChecks::FindSpans(BucklingMode mode, bool turned)
{
    const int points = static_cast<int>(m_model.points.size());
    if (m_model.lengthOverride) {
        m_found.spans.push_back(MakeSpan(mode, 0, points - 1, turned));
        SetOverride(m_found.spans.back(), mode == BucklingMode::Major ? m_model.Lyy : m_model.Lzz, m_model.Length());
        return;
    }
    for (const auto& [left, right] : Design::Segments(
             points, [&](int i) { return m_model.PointHeld(mode, i); },
             [&](int k) { return m_model.SubSpanHeld(mode, k); })) {
        SpanResult span = MakeSpan(mode, left, right, turned);
        SetReasons(span);
        span.continuous = m_model.SubSpanHeld(mode, left);
        m_found.spans.push_back(span);
    }
}

// Table 22 between two points that are held in position, or its sway rows.
void CompressionChecks::SetLength(SpanResult& span)
{
    if (span.overridden) return;
    if (span.continuous) {
        span.lengthRule = L"held along its length";
        return;
    }
    const bool heldLeft = span.from.kind != EndKind::MemberEnd;
    const bool heldRight = span.to.kind != EndKind::MemberEnd;
    const int rotationLeft = Rotation(span.from.restraint, span.mode);
    const int rotationRight = Rotation(span.to.restraint, span.mode);
    span.flexural.sway = heldLeft != heldRight;
    span.flexural.lengthFactor = Table22(heldLeft, rotationLeft, heldRight, rotationRight);
    span.LE = span.flexural.lengthFactor * (span.end - span.start);
    span.lengthRule =
        span.flexural.lengthFactor < INF
            ? (span.flexural.sway ? L"Table 22 b, one end not held in position" : L"Table 22 a, both ends held")
            : L"no row of Table 22: an end that is not held in position needs one opposite that is held "
              L"in position and in direction";
    if (span.applied && !(heldLeft && heldRight))
        m_found.Assume(L"missing restraint",
                       L"an end of a strut without restraint in position is free to sway: the sway rows of Table 22",
                       std::nan(""));
    const int last = static_cast<int>(m_model.points.size()) - 1;
    const bool inner = (span.left > 0 && rotationLeft == 0) || (span.right < last && rotationRight == 0);
    if (span.applied && inner)
        m_found.Assume(L"continuity at inner points", L"not counted as a directional restraint of a strut (Table 22)",
                       std::nan(""));
}

// Slenderness LE/r. The clauses of 4.7.10 have least values of their own for struts that are connected eccentrically, whatever
// the fixity of the ends; L is the length between the points that hold the strut. With two or more bolts they let
// 0.85 L/r stand for L/r of pinned ends.
void CompressionChecks::SetSlenderness(SpanResult& span) const
{
    const SectionProperties& s = m_model.Properties();
    span.slenderness = span.LE / span.radius;
    if (span.continuous || !m_model.IsEccentricStrut()) return;
    const bool oneBolt = m_model.options.connection == Connection::OneBolt;
    const bool twoBolts = m_model.options.connection == Connection::TwoBoltsMore;
    if (oneBolt) span.flexural.connectionFactor = 0.8;
    const double L = span.overridden ? m_model.LongestUnheld(span.mode) : span.end - span.start;
    span.flexural.fullLength = L;
    const auto least = [L](double factor, double radius, double more) {
        return std::max(factor * L / radius, 0.7 * L / radius + more);
    };
    const double factor = oneBolt ? 1.0 : 0.85;
    const bool major = span.mode == BucklingMode::Major;
    // In the plane of the gusset the connection holds, across it there is no gain (Table 25).
    bool hasReduction = !major;
    switch (s.shape) {
    case Shape::Angle: // 4.7.10.2: axes a-a and b-b, v-v
        span.flexural.leastSlenderness =
            major ? least(1.0, s.rx, 30.0) : std::max(least(factor, s.rv, 15.0), least(1.0, s.ry, 30.0));
        break;
    case Shape::Channel: // 4.7.10.4, by its web
        span.flexural.leastSlenderness = major ? least(factor, s.rx, 0.0) : least(1.0, s.ry, 30.0);
        hasReduction = major;
        break;
    default: // 4.7.10.5, by its flange
        span.flexural.leastSlenderness = major ? least(1.0, s.rx, 30.0) : least(factor, s.ry, 0.0);
        break;
    }
    if (twoBolts && hasReduction && span.flexural.lengthFactor == 1.0) span.slenderness = 0.85 * L / span.radius;
    span.slenderness = std::max(span.slenderness, span.flexural.leastSlenderness);
}

void CompressionChecks::SetResistance(SpanResult& span) const
{
    const SectionProperties& s = m_model.Properties();
    const Material& m = m_model.Steel();
    const SpanClass classes(s, m, m_model.subSpans, m_model.MomentsX(span.turned), m_model.MomentsY(span.turned));
    const WorstClass acted = classes.Worst(span.start, span.end, SpanClass::Part::Acted);
    const WorstClass compressed = classes.Worst(span.start, span.end, SpanClass::Part::Compressed);
    const bool angle = s.shape == Shape::Angle;
    span.cls = std::max(1, acted.cls);
    span.flexural.pyZx = acted.cls > 0 ? acted.pyZx : m.py * (angle ? s.Zu : s.Zx);
    span.flexural.pyZy = acted.cls > 0 ? acted.pyZy : m.py * (angle ? s.Zv : s.Zy);
    Classification c;
    c.Aeff = compressed.cls > 0 ? compressed.Aeff : s.A;
    c.pyCompression = compressed.cls > 0 ? compressed.pyCompression : m.py;
    span.flexural.Aeff = c.Aeff;
    span.py = c.pyCompression;
    span.strength =
        CompressiveStrength(s, m, c, span.mode == BucklingMode::Major ? Axis::X : Axis::Y, span.slenderness);
    span.resistance = span.flexural.connectionFactor * span.flexural.Aeff * span.strength;
}

void CompressionChecks::Check(SpanResult& span)
{
    span.effect = LargestOver(span, [](const PositionResult& p) { return p.actions.Compression(); });
    span.applied = span.effect > 0.0;
    SetLength(span);
    SetSlenderness(span);
    SetResistance(span);
    span.utilisation = Ratio(span.effect, span.resistance);
    const auto factor = [&](const MomentShape& shape) {
        // 4.8.3.3.4: at least 0.85 in sway mode
        return m_model.Factor(shape.factor, !shape.balanced ? 1.0 : span.flexural.sway ? 0.85 : 0.0);
    };
    span.m = factor(span.mode == BucklingMode::Major ? span.momentX : span.flexural.momentY);
    span.flexural.myx = factor(span.flexural.momentY);
    if (!span.turned) Record(span);
}

void CompressionChecks::Record(const SpanResult& span)
{
    LedgerEntry e = SpanEntry(span.mode == BucklingMode::Major ? Rule::BucklingMajor : Rule::BucklingMinor, span);
    e.resistance = span.resistance;
    e.symbol = span.mode == BucklingMode::Major ? L"Pcx" : L"Pcy";
    e.quantity = Quantity::Force;
    if (!span.applied) {
        e.status = CheckStatus::NotApplicable;
        e.reason = L"no compression";
    } else {
        e.utilisation = CMemberResult::InfinitiseNANs(span.utilisation);
        // The result record counts exactly 1.0 as a failure of axial buckling.
        e.status = e.utilisation < 1.0 ? CheckStatus::Passed : CheckStatus::Failed;
        if (!(span.LE < INF)) e.reason = L"no effective length: no row of Table 22 applies";
    }
    m_found.ledger.Add(e);
}

void CompressionChecks::RecordConnections()
{
    LedgerEntry e;
    e.rule = Rule::StrutConnections;
    e.clause = RuleClause(e.rule);
    e.status = CheckStatus::NotApplicable;
    const Shape shape = m_model.Properties().shape;
    const bool single = shape == Shape::Angle || shape == Shape::Channel || shape == Shape::Tee;
    const bool compressed = std::any_of(m_found.spans.begin(), m_found.spans.end(), [](const SpanResult& span) {
        return span.mode != BucklingMode::LateralTorsional && span.applied && !span.continuous;
    });
    if (!single || !compressed)
        e.reason = L"no angle, channel or T in compression";
    else if (!m_model.IsEccentricStrut()) {
        e.reason = L"the given moments hold the eccentricity of the end connections, as the options say";
        m_found.Assume(L"eccentricity of the end connections",
                       L"part of the given moments, as the options say: 4.6.3.1 and 4.7.10 are not applied",
                       std::nan(""));
    } else {
        e.status = CheckStatus::Passed;
        e.reason = L"slenderness kept at or above that of the clause";
        const wchar_t* const name = L"end connections of the strut";
        switch (m_model.options.connection) {
        case Connection::OneBolt:
            m_found.Assume(name, L"one bolt, as the options say: 80 % of the resistance (4.7.10)", 0.8);
            break;
        case Connection::TwoBoltsMore:
            m_found.Assume(name, L"two or more bolts in line along the member, or welds, as the options say (4.7.10)",
                           std::nan(""));
            break;
        default:
            m_found.Assume(
                name,
                L"two or more fasteners in line along the member, or welds (4.7.10); their eccentricity is not part "
                L"of the given moments",
                std::nan(""));
            break;
        }
    }
    m_found.ledger.Add(e);
}

} // namespace Keltrix::BS5950

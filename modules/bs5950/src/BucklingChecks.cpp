#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "MemberText.h"
#include "MomentShape.h"
#include "keltrix/bs5950/SteelMemberBS5950.h"

namespace Keltrix::BS5950 {

using Steel::CCodeShare;
using Steel::CMemberResult;
using Steel::CRestraint;
using Steel::CSpan;

namespace {

constexpr double INF = std::numeric_limits<double>::infinity();

LedgerEntry SpanEntry(Rule rule, const SpanResult& span)
{
    LedgerEntry e;
    e.rule = rule;
    e.clause = RuleClause(rule);
    e.start = span.start;
    e.end = span.end;
    return e;
}

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
    switch (mode) {
    case BucklingMode::Major:
        return L"held in position against bending about x-x (major axis shear restraint)";
    case BucklingMode::Minor:
        return L"held in position against bending about y-y (minor axis shear restraint)";
    case BucklingMode::LateralTorsional:
        break;
    }
    return L"compression flange held laterally";
}

double Ratio(double effect, double resistance) { return effect == 0.0 ? 0.0 : effect / resistance; }

} // namespace

template <class Value>
double CSteelMemberBS5950::LargestOver(const SpanResult& span, Value value) const
{
    const auto first = std::lower_bound(m_positions.begin(), m_positions.end(), span.left,
                                        [](const PositionResult& p, int k) { return p.subSpan < k; });
    double largest = 0.0;
    for (auto p = first; p != m_positions.end() && p->subSpan < span.right; ++p)
        largest = std::max(largest, value(*p));
    return largest;
}

CRestraint CSteelMemberBS5950::PointRestraint(int point) const
{
    return MemberPoints()[static_cast<std::size_t>(point)].GetRestraint();
}

// Which flange is in compression over sub-spans left to right-1. The library's sense looks at the ends of the sub-spans;
// the moments inside them, where the shear passes through zero, can add a sign.
int CSteelMemberBS5950::BucklingSense(int left, int right) const
{
    const CSpan view(&MemberPoints(), &SubSpans(), left, right);
    const int ends = BucklingSenseLT(view);
    bool negative = ends == CCodeShare::LT_COMP_FLANGE1 || ends == CCodeShare::LT_COMP_BOTH;
    bool positive = ends == CCodeShare::LT_COMP_FLANGE2 || ends == CCodeShare::LT_COMP_BOTH;
    SpanResult span;
    span.left = left;
    span.right = right;
    const double largest = LargestOver(span, [](const PositionResult& p) { return std::abs(p.actions.Mx); });
    const double tolerance = std::max(1.0, 0.01 * largest);
    LargestOver(span, [&](const PositionResult& p) {
        if (p.place != Place::Inside) return 0.0;
        negative = negative || p.actions.Mx < -tolerance;
        positive = positive || p.actions.Mx > tolerance;
        return 0.0;
    });
    if (negative && positive) return CCodeShare::LT_COMP_BOTH;
    if (negative) return CCodeShare::LT_COMP_FLANGE1;
    return positive ? CCodeShare::LT_COMP_FLANGE2 : CCodeShare::LT_COMP_NONE;
}

// Whether a restraint holds the flange that the moment compresses. Without a moment at the place, the moment at the
// middle of the sub-span says which flange that is; where there is none either, any flange will do.
bool CSteelMemberBS5950::CompressionFlangeHeld(CRestraint restraint, int subSpan, const Vec3<double>& moment) const
{
    const double middle = m_major.InSubSpan(subSpan, 0.5).Worst();
    const double left = m_major.InSubSpan(subSpan, 0.0).Worst();
    const double right = m_major.InSubSpan(subSpan, 1.0).Worst();
    const double tolerance = std::max(1.0, 0.01 * std::max({std::abs(left), std::abs(right), std::abs(middle)}));
    const double y = std::abs(moment.y) > tolerance ? moment.y : middle;
    if (std::abs(y) <= tolerance)
        return restraint.IsRestrained(CRestraint::FLANGE1_LATERAL, true) ||
               restraint.IsRestrained(CRestraint::FLANGE2_LATERAL, true);
    restraint.SetForcesAndMoments({0.0, 0.0, 0.0}, {0.0, y, 0.0}, true);
    return restraint.IsRestrained(CRestraint::COMP_FLANGE_LATERAL, true);
}

bool CSteelMemberBS5950::PointHeld(BucklingMode mode, int point) const
{
    const CRestraint restraint = PointRestraint(point);
    if (mode == BucklingMode::Major) return restraint.IsRestrained(CRestraint::MAJOR_SHEAR, false);
    if (mode == BucklingMode::Minor) return restraint.IsRestrained(CRestraint::MINOR_SHEAR, true);
    const int last = static_cast<int>(MemberPoints().size()) - 1;
    const auto& subs = SubSpans();
    if (point > 0 &&
        !CompressionFlangeHeld(restraint, point - 1, subs[static_cast<std::size_t>(point) - 1].GetMomentsRight()))
        return false;
    return point == last ||
           CompressionFlangeHeld(restraint, point, subs[static_cast<std::size_t>(point)].GetMomentsLeft());
}

bool CSteelMemberBS5950::SubSpanHeld(BucklingMode mode, int subSpan) const
{
    const Steel::CSubSpan& sub = SubSpans()[static_cast<std::size_t>(subSpan)];
    const CRestraint restraint = sub.GetRestraint();
    if (mode == BucklingMode::Major) return restraint.IsRestrained(CRestraint::MAJOR_SHEAR, false);
    if (mode == BucklingMode::Minor) return restraint.IsRestrained(CRestraint::MINOR_SHEAR, true);
    if (restraint.IsFree(CRestraint::RESTRAINT_MASK, false)) return false;
    switch (BucklingSense(subSpan, subSpan + 1)) {
    case CCodeShare::LT_COMP_BOTH:
        return restraint.IsRestrained(CRestraint::FLANGE1_LATERAL | CRestraint::FLANGE2_LATERAL, true);
    case CCodeShare::LT_COMP_FLANGE1:
        return CompressionFlangeHeld(restraint, subSpan, {0.0, -INF, 0.0});
    case CCodeShare::LT_COMP_FLANGE2:
        return CompressionFlangeHeld(restraint, subSpan, {0.0, INF, 0.0});
    default:
        return CompressionFlangeHeld(restraint, subSpan, {0.0, 0.0, 0.0});
    }
}

// A member's end without vertical support is the tip of a cantilever where the rest of the member can carry it: from two
// supports, or from one that holds its rotation.
bool CSteelMemberBS5950::IsTip(int point) const
{
    const int last = static_cast<int>(MemberPoints().size()) - 1;
    if (point != 0 && point != last) return false;
    if (PointRestraint(point).IsRestrained(CRestraint::MAJOR_SHEAR, false)) return false;
    int supports = 0;
    for (int i = 0; i <= last && supports < 2; ++i) {
        const CRestraint restraint = PointRestraint(i);
        if (i == point || !restraint.IsRestrained(CRestraint::MAJOR_SHEAR, false)) continue;
        supports += Rotation(restraint, BucklingMode::Major) > 0 ? 2 : 1;
    }
    return supports >= 2;
}

SpanResult CSteelMemberBS5950::MakeSpan(BucklingMode mode, int left, int right) const
{
    SpanResult span;
    span.mode = mode;
    span.left = left;
    span.right = right;
    span.start = MemberPoints()[static_cast<std::size_t>(left)].GetPos();
    span.end = MemberPoints()[static_cast<std::size_t>(right)].GetPos();
    const SectionProperties& s = m_section.Properties();
    span.radius = mode == BucklingMode::Major ? s.rx : s.MinorRadius();
    const bool angle = s.shape == Shape::Angle;
    span.Zx = angle ? s.Zu : s.Zx;
    span.Zy = angle ? s.Zv : s.Zy;
    LargestOver(span, [&](const PositionResult& p) {
        span.Mx = std::max(span.Mx, p.momentMajor);
        span.My = std::max(span.My, p.momentMinor);
        span.major = std::max(span.major, p.major);
        span.minor = std::max(span.minor, p.minor);
        if (p.cls.cls == 4) { // so that py Zx is pyr Zx
            span.Zx = std::min(span.Zx, p.cls.Wx * p.cls.pyMomentX / m_section.Steel().py);
            span.Zy = std::min(span.Zy, p.cls.Wy * p.cls.pyMomentY / m_section.Steel().py);
        }
        return 0.0;
    });
    const FactorTable table = mode == BucklingMode::LateralTorsional ? FactorTable::Table18 : FactorTable::Table26;
    span.momentX = ShapeOf(m_major, span.start, span.end, table);
    span.momentY = ShapeOf(m_minor, span.start, span.end, table);
    return span;
}

void CSteelMemberBS5950::SetReasons(SpanResult& span) const
{
    const int last = static_cast<int>(MemberPoints().size()) - 1;
    const auto reason = [&](int point) -> const wchar_t* {
        if (PointHeld(span.mode, point)) return HeldReason(span.mode);
        if (IsTip(point) && span.mode == BucklingMode::LateralTorsional) return L"free tip of a cantilever";
        if (point == 0 || point == last) return L"end of the member, not held";
        return L"edge of a continuous restraint";
    };
    span.startReason = reason(span.left);
    span.endReason = reason(span.right);
}

// A given effective length belongs to the whole member; below zero it is a factor of the member's length.
void CSteelMemberBS5950::SetOverride(SpanResult& span, double value) const
{
    span.overridden = true;
    span.startReason = span.endReason = L"end of the member; the effective length is given for the whole of it";
    span.LE = value >= 0.0 ? value : -value * Length();
    span.lengthRule = L"given by the user";
}

namespace {

// Where spans begin and end: at held points, and where a continuous restraint begins and ends. A run of sub-spans that
// are held along their length is one span.
template <class Point, class Sub>
std::vector<std::pair<int, int>> Segments(int points, Point pointHeld, Sub subHeld)
{
    std::vector<std::pair<int, int>> segments;
    int start = 0;
    bool before = subHeld(0);
    for (int i = 1; i < points; ++i) {
        const bool end = i == points - 1;
        const bool after = end ? before : subHeld(i);
        if (!end && before == after && (before || !pointHeld(i))) continue;
        segments.emplace_back(start, i);
        start = i;
        before = after;
    }
    return segments;
}

} // namespace

void CSteelMemberBS5950::FindFlexuralSpans(BucklingMode mode)
{
    const int points = static_cast<int>(MemberPoints().size());
    if (LengthOverride()) {
        m_spans.push_back(MakeSpan(mode, 0, points - 1));
        SetOverride(m_spans.back(), mode == BucklingMode::Major ? Lyy() : Lzz());
        return;
    }
    for (const auto& [left, right] : Segments(
             points, [&](int i) { return PointHeld(mode, i); }, [&](int k) { return SubSpanHeld(mode, k); })) {
        SpanResult span = MakeSpan(mode, left, right);
        SetReasons(span);
        span.continuous = SubSpanHeld(mode, left);
        m_spans.push_back(span);
    }
}

void CSteelMemberBS5950::FindLateralSpans()
{
    constexpr BucklingMode LT = BucklingMode::LateralTorsional;
    const int points = static_cast<int>(MemberPoints().size());
    if (LengthOverride()) {
        m_spans.push_back(MakeSpan(LT, 0, points - 1));
        SetOverride(m_spans.back(), Llt());
    } else
        for (const auto& [left, right] : Segments(
                 points, [&](int i) { return PointHeld(LT, i); }, [&](int k) { return SubSpanHeld(LT, k); })) {
            SpanResult span = MakeSpan(LT, left, right);
            SetReasons(span);
            span.continuous = SubSpanHeld(LT, left);
            m_spans.push_back(span);
        }
    for (SpanResult& span : m_spans) {
        if (span.mode != LT) continue;
        const CSpan view(&MemberPoints(), &SubSpans(), span.left, span.right);
        span.sense = BucklingSense(span.left, span.right);
        span.destabilising = view.IsDestabilized();
        span.cantilever = IsTip(span.left) || IsTip(span.right);
    }
}

// Table 22 between two points that are held in position, or its sway rows.
void CSteelMemberBS5950::SetFlexuralLength(SpanResult& span)
{
    if (span.overridden) return;
    if (span.continuous) {
        span.lengthRule = L"held along its length";
        return;
    }
    const auto held = [&](int point, int inside) {
        const int outside = inside == point ? point - 1 : point;
        const bool edge =
            outside >= 0 && outside < static_cast<int>(SubSpans().size()) && SubSpanHeld(span.mode, outside);
        return PointHeld(span.mode, point) || edge;
    };
    const bool heldLeft = held(span.left, span.left);
    const bool heldRight = held(span.right, span.right - 1);
    const int rotationLeft = Rotation(PointRestraint(span.left), span.mode);
    const int rotationRight = Rotation(PointRestraint(span.right), span.mode);
    span.sway = heldLeft != heldRight;
    span.lengthFactor = Table22(heldLeft, rotationLeft, heldRight, rotationRight);
    span.LE = span.lengthFactor * (span.end - span.start);
    span.lengthRule = span.lengthFactor < INF
                          ? (span.sway ? L"Table 22 b, one end not held in position" : L"Table 22 a, both ends held")
                          : L"no row of Table 22: an end that is not held in position needs one opposite that is held "
                            L"in position and in direction";
    if (span.applied && !(heldLeft && heldRight))
        Assume(L"missing restraint",
               L"an end of a strut without restraint in position is free to sway: the sway rows of Table 22",
               std::nan(""));
    const int last = static_cast<int>(MemberPoints().size()) - 1;
    const bool inner = (span.left > 0 && rotationLeft == 0) || (span.right < last && rotationRight == 0);
    if (span.applied && inner)
        Assume(L"continuity at inner points", L"not counted as a directional restraint of a strut (Table 22)",
               std::nan(""));
}

// A single angle, channel or T strut without moments: what clause 4.7.10 is for.
bool CSteelMemberBS5950::IsUnbentStrut(const SpanResult& span) const
{
    const Shape shape = m_section.Properties().shape;
    if (shape != Shape::Angle && shape != Shape::Channel && shape != Shape::Tee) return false;
    return span.Mx + span.My == 0.0;
}

// Slenderness LE/r, for struts of clause 4.7.10 not below that of their eccentric connection.
void CSteelMemberBS5950::SetStrutSlenderness(SpanResult& span) const
{
    const SectionProperties& s = m_section.Properties();
    span.slenderness = span.LE / span.radius;
    if (span.continuous || !IsUnbentStrut(span)) return;
    const double L = span.end - span.start;
    double least = 0.0;
    switch (s.shape) {
    case Shape::Angle: // 4.7.10.2: axes a-a and b-b, v-v
        least = span.mode == BucklingMode::Major ? 0.7 * L / s.rx + 30.0
                                                 : std::max(0.7 * L / s.rv + 15.0, 0.7 * L / s.ry + 30.0);
        break;
    case Shape::Channel: // 4.7.10.4
        if (span.mode == BucklingMode::Minor) least = 0.7 * L / s.ry + 30.0;
        break;
    default: // 4.7.10.5
        if (span.mode == BucklingMode::Major) least = 0.7 * L / s.rx + 30.0;
        break;
    }
    span.slenderness = std::max(span.slenderness, least);
}

void CSteelMemberBS5950::CheckFlexural(SpanResult& span)
{
    const SectionProperties& s = m_section.Properties();
    const Material& m = m_section.Steel();
    const Axis axis = span.mode == BucklingMode::Major ? Axis::X : Axis::Y;
    span.effect = LargestOver(span, [](const PositionResult& p) { return p.actions.Compression(); });
    span.applied = span.effect > 0.0;
    span.cls =
        static_cast<int>(LargestOver(span, [](const PositionResult& p) { return static_cast<double>(p.cls.cls); }));
    SetFlexuralLength(span);
    SetStrutSlenderness(span);
    span.Aeff = s.A - LargestOver(span, [&](const PositionResult& p) { return s.A - p.cls.Aeff; });
    Classification worst;
    worst.Aeff = span.Aeff;
    worst.pyCompression = m.py - LargestOver(span, [&](const PositionResult& p) { return m.py - p.cls.pyCompression; });
    span.py = worst.pyCompression;
    span.strength = CompressiveStrength(s, m, worst, axis, span.slenderness);
    span.resistance = span.Aeff * span.strength;
    span.utilisation = Ratio(span.effect, span.resistance);

    const MomentShape& own = axis == Axis::X ? span.momentX : span.momentY;
    const auto factor = [&](const MomentShape& shape) {
        return UserFactor(span.sway ? std::max(shape.factor, 0.85)
                                    : shape.factor); // 4.8.3.3.4: at least 0.85 in sway mode
    };
    span.m = factor(own);
    span.myx = factor(span.momentY);
    RecordFlexural(span);
    if (Result() && Result()->TextEnabled()) Text(*this).Flexural(span);
}

void CSteelMemberBS5950::RecordFlexural(const SpanResult& span)
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
    m_ledger.Add(e);
}

void CSteelMemberBS5950::RecordStrutConnections()
{
    LedgerEntry e;
    e.rule = Rule::StrutConnections;
    e.clause = RuleClause(e.rule);
    e.status = CheckStatus::NotApplicable;
    e.reason = L"no angle, channel or T in compression without moments";
    for (const SpanResult& span : m_spans) {
        if (span.mode == BucklingMode::LateralTorsional || !span.applied || !IsUnbentStrut(span)) continue;
        e.status = CheckStatus::Passed;
        e.reason = L"slenderness kept at or above that of the clause";
        Assume(L"end connections of the strut", L"two or more fasteners in line along the member, or welds (4.7.10)",
               std::nan(""));
    }
    m_ledger.Add(e);
    e.rule = Rule::TorsionalBuckling;
    e.clause = RuleClause(e.rule);
    e.status = CheckStatus::NotApplicable;
    e.reason = L"the standard has no separate rule; Table 11 and clause 4.7.10 limit what torsion can take away";
    m_ledger.Add(e);
}

// The restraint at an end of a span, with the moment there and what a continuous restraint that ends there holds.
CRestraint CSteelMemberBS5950::EndRestraint(const SpanResult& span, bool atLeft) const
{
    const CSpan view(&MemberPoints(), &SubSpans(), span.left, span.right);
    CRestraint restraint = atLeft ? view.RestraintEndL() : view.RestraintEndR();
    const int outside = atLeft ? span.left - 1 : span.right;
    if (outside >= 0 && outside < static_cast<int>(SubSpans().size()) &&
        SubSpanHeld(BucklingMode::LateralTorsional, outside))
        restraint.Add(SubSpans()[static_cast<std::size_t>(outside)].GetRestraint().RestFlag());
    return restraint;
}

void CSteelMemberBS5950::SetLateralLength(SpanResult& span)
{
    if (span.overridden) return;
    if (span.continuous) {
        span.lengthRule = L"compression flange held along its length (4.2.2)";
        return;
    }
    const double L = span.end - span.start;
    const auto sense = static_cast<CCodeShare::LT_BuckleDirection>(span.sense);
    const CRestraint left = EndRestraint(span, true);
    const CRestraint right = EndRestraint(span, false);
    const CCodeShare rules(Result());
    if (span.cantilever) {
        const bool tipLeft = IsTip(span.left);
        span.lengthRule = L"Table 14, cantilever";
        span.LE = tipLeft ? rules.BS5950_1_2000_Table14(L, sense, right, left, span.destabilising)
                          : rules.BS5950_1_2000_Table14(L, sense, left, right, span.destabilising);
        return;
    }
    if (IsUnsupportedEnd(span.left) || IsUnsupportedEnd(span.right))
        Assume(L"vertical support", L"an end without major axis shear restraint is taken as supported, not as a tip",
               std::nan(""));
    span.lengthRule = L"Table 13";
    span.LE = rules.BS5950_1_2000_Table13(L, m_section.Properties().D, sense, left, right, span.destabilising,
                                          IsNominalRowRefused(span.left), IsNominalRowRefused(span.right));
}

bool CSteelMemberBS5950::IsUnsupportedEnd(int point) const
{
    const int last = static_cast<int>(MemberPoints().size()) - 1;
    return (point == 0 || point == last) && !PointRestraint(point).IsRestrained(CRestraint::MAJOR_SHEAR, false);
}

// Clause 4.3.5.2: the row with nominal torsional restraint is for a beam that goes on past the restraint or whose
// support holds it against rotation by itself (4.2.2). A support of which no torsional restraint of any kind is known
// gives no such row.
bool CSteelMemberBS5950::IsNominalRowRefused(int point) const
{
    const int last = static_cast<int>(MemberPoints().size()) - 1;
    const CRestraint restraint = PointRestraint(point);
    const bool support = point == 0 || point == last || restraint.IsRestrained(CRestraint::MAJOR_SHEAR, false);
    return support &&
           restraint.IsFree(CRestraint::TORSION | CRestraint::TORSION_PART | CRestraint::TORSION_FRICTION, true);
}

void CSteelMemberBS5950::SetBendingResistance(SpanResult& span) const
{
    const SectionProperties& s = m_section.Properties();
    const Material& m = m_section.Steel();
    // The smallest modulus of the positions under moment, which belongs to the worst class.
    span.modulus = INF;
    span.cls = static_cast<int>(LargestOver(span, [&](const PositionResult& p) {
        if (p.momentMajor != 0.0) span.modulus = std::min(span.modulus, p.cls.Wx);
        return static_cast<double>(p.cls.cls);
    }));
    if (!(span.modulus < INF)) span.modulus = s.shape == Shape::Angle ? s.Zu : s.Zx;
    Classification c;
    c.Wx = span.modulus;
    c.pyMomentX = m.py - LargestOver(span, [&](const PositionResult& p) { return m.py - p.cls.pyMomentX; });
    span.py = c.pyMomentX;
    const double LE = span.continuous ? 0.0 : span.LE;
    const auto resistance = [&](bool flange1) {
        span.lt = LateralTorsionalSlenderness(s, LE, BetaW(s, c), flange1);
        return BucklingResistanceMoment(s, m, c, LE, flange1);
    };
    if (span.sense == CCodeShare::LT_COMP_FLANGE2)
        span.resistance = resistance(false);
    else if (span.sense == CCodeShare::LT_COMP_FLANGE1)
        span.resistance = resistance(true);
    else {
        const double flange1 = resistance(true);
        const double flange2 = resistance(false);
        span.resistance = std::min(flange1, flange2);
        if (flange1 < flange2) resistance(true);
    }
    span.strength = span.resistance / span.modulus;
}

void CSteelMemberBS5950::CheckLateral(SpanResult& span)
{
    const SectionProperties& s = m_section.Properties();
    const bool text = Result() && Result()->TextEnabled();
    span.effect = span.Mx;
    // Below the tolerance of the compression flange's sense there is no moment to buckle under.
    const bool moment = span.effect > 0.0 && span.sense != CCodeShare::LT_COMP_NONE;
    span.applied = moment && !span.continuous && CanBuckleLaterally(s) && !(span.overridden && span.LE == 0.0);
    if (text) Text(*this).LateralTitle(span);
    if (span.applied) {
        const Steel::CResultIndent indent(Result());
        SetLateralLength(span);
    } else if (span.continuous)
        span.lengthRule = L"compression flange held along its length (4.2.2)";
    span.slenderness = span.LE / span.radius;
    SetBendingResistance(span);

    const MomentShape& shape = span.momentX;
    // 4.3.6.6: mLT is 1.0 for destabilising loads and cantilevers.
    const bool uniform = span.destabilising || span.cantilever;
    if (span.applied && uniform && !EquivalentUniformMomentFactor())
        Assume(L"mLT", L"1.0 for a destabilising load or a cantilever (4.3.6.6)", 1.0);
    span.m = UserFactor(uniform ? 1.0 : shape.factor);

    // 4.3.8.3 is for equal legs within the limit of class 3 in bending.
    const bool equalAngle = s.shape == Shape::Angle && s.D == s.B && s.b / s.t <= 15.0 * Epsilon(m_section.Steel().py);
    if (span.applied && equalAngle && span.momentY.Mmax == 0.0 && span.LE < INF) {
        span.effect = shape.Mmax;
        span.resistance = AngleMbSimplified(s, m_section.Steel(), span.LE, span.sense == CCodeShare::LT_COMP_FLANGE2);
        span.strength = span.resistance / s.Zx;
        span.lt.source = L"4.3.8.3";
    }
    if (span.applied) span.utilisation = Ratio(span.m * span.effect, span.resistance);
    RecordLateral(span);
    if (text) Text(*this).Lateral(span);
}

void CSteelMemberBS5950::RecordLateral(const SpanResult& span)
{
    const SectionProperties& s = m_section.Properties();
    LedgerEntry e = SpanEntry(Rule::LateralTorsional, span);
    e.clause = s.shape == Shape::Angle ? L"4.3.8" : L"4.3.6";
    e.resistance = span.resistance;
    e.symbol = L"Mb";
    e.quantity = Quantity::Moment;
    if (span.applied) {
        e.utilisation = CMemberResult::InfinitiseNANs(span.utilisation);
        e.status = e.utilisation > 1.0 ? CheckStatus::Failed : CheckStatus::Passed;
        if (!(span.LE < INF)) e.reason = L"no effective length: no row of Table 13 or 14 applies to an end of the span";
    } else {
        e.status = CheckStatus::NotApplicable;
        e.reason = span.continuous          ? L"the compression flange is held along the span (4.2.2)"
                   : !CanBuckleLaterally(s) ? L"the section does not buckle laterally about x-x (4.3.6.1)"
                   : span.effect == 0.0     ? L"no moment about the major axis"
                   : span.overridden        ? L"the effective length given is zero"
                                            : L"no moment beyond the tolerance of 1 N·m or 1 %";
    }
    m_ledger.Add(e);
    // Sections stiffer about y-y, such as wide tees (B.2.8 b) and hollow sections laid flat, buckle laterally under moment
    // about y-y.
    if (s.Iy > s.Ix * (1.0 + 1e-9) && s.shape != Shape::Angle && span.momentY.Mmax > 0.0) {
        e.status = CheckStatus::NotEvaluated;
        e.reason = L"lateral-torsional buckling under moment about y-y, the stiffer axis, is not covered";
        e.utilisation = 0.0;
        m_ledger.Add(e);
        if (Result()) Result()->AddFlags(CMemberResult::NOT_CHECKED);
    }
}

// Clause 4.8.3.3.1: moments over py Z; Fc/Pc is the worse of the two axes.
void CSteelMemberBS5950::SimplifiedInteraction(InteractionResult& r) const
{
    const double py = m_section.Steel().py;
    const SpanResult& x = m_spans[static_cast<std::size_t>(r.major)];
    const SpanResult& y = m_spans[static_cast<std::size_t>(r.minor)];
    const SpanResult& lt = m_spans[static_cast<std::size_t>(r.lateral)];
    r.clause = L"4.8.3.3.1";
    r.MxTerm = x.m * x.Mx / (py * x.Zx);
    r.MyTerm = y.m * y.My / (py * y.Zy);
    r.MLTTerm = Ratio(lt.m * lt.effect, lt.resistance);
    r.first = std::max(x.utilisation, y.utilisation) + r.MxTerm + r.MyTerm;
    r.second = y.utilisation + r.MLTTerm + r.MyTerm;
}

// Clause 4.8.3.3.2 for I and H sections with equal flanges, 4.8.3.3.3 for hollow sections; they differ in the
// coefficient of the minor axis.
void CSteelMemberBS5950::ExactInteraction(InteractionResult& r) const
{
    const SectionProperties& s = m_section.Properties();
    const SpanResult& x = m_spans[static_cast<std::size_t>(r.major)];
    const SpanResult& y = m_spans[static_cast<std::size_t>(r.minor)];
    const SpanResult& lt = m_spans[static_cast<std::size_t>(r.lateral)];
    const double k = s.IsHollow() ? 0.5 : 1.0;
    const double fx = x.utilisation;
    const double fy = y.utilisation;
    const double mx = x.m * x.major;
    const double my = y.m * y.minor;
    const double myx = x.myx * x.minor;
    r.clause = s.IsHollow() ? L"4.8.3.3.3" : L"4.8.3.3.2";
    r.MxTerm = mx * (1.0 + 0.5 * fx);
    r.MyTerm = my * (1.0 + k * fy);
    r.MLTTerm = Ratio(lt.m * lt.effect, lt.resistance);
    r.first = fx + r.MxTerm + 0.5 * myx;
    r.second = fy + r.MLTTerm + r.MyTerm;
    const auto amplified = [](double term, double f) { return term == 0.0 ? 0.0 : f < 1.0 ? term / (1.0 - f) : INF; };
    r.third = amplified(r.MxTerm, fx) + amplified(r.MyTerm, fy);
}

InteractionResult CSteelMemberBS5950::Interact(int major, int minor, int lateral) const
{
    InteractionResult r;
    r.major = major;
    r.minor = minor;
    r.lateral = lateral;
    const SpanResult& x = m_spans[static_cast<std::size_t>(major)];
    const SpanResult& y = m_spans[static_cast<std::size_t>(minor)];
    const SpanResult& lt = m_spans[static_cast<std::size_t>(lateral)];
    r.start = std::max({x.start, y.start, lt.start});
    r.end = std::min({x.end, y.end, lt.end});
    r.Fc = std::max(x.effect, y.effect);
    const Shape shape = m_section.Properties().shape;
    if (DesOpt() == MORE_EXACT && (shape == Shape::I || shape == Shape::RHS || shape == Shape::CHS))
        ExactInteraction(r);
    else
        SimplifiedInteraction(r);
    r.utilisation = CMemberResult::InfinitiseNANs(std::max({r.first, r.second, r.third}));
    return r;
}

void CSteelMemberBS5950::CheckInteraction(int major, int minor, int lateral)
{
    const SpanResult& x = m_spans[static_cast<std::size_t>(major)];
    const SpanResult& y = m_spans[static_cast<std::size_t>(minor)];
    const bool compressed = x.applied || y.applied;
    const bool bentX = x.Mx > 0.0;
    const bool bentY = y.My > 0.0;
    if (!(compressed && (bentX || bentY)) && !(bentX && bentY)) return;
    const InteractionResult r = Interact(major, minor, lateral);
    LedgerEntry e;
    e.rule = Rule::BucklingInteraction;
    e.clause = r.clause;
    e.start = r.start;
    e.end = r.end;
    e.utilisation = r.utilisation;
    e.status = e.utilisation > 1.0 ? CheckStatus::Failed : CheckStatus::Passed;
    m_ledger.Add(e);
    m_interactions.push_back(r);
    if (Result() && Result()->TextEnabled()) Text(*this).Interaction(r);
}

// Clause 4.8.3.3, and 4.9 for moments about both axes without compression: every combination of spans that have a
// stretch in common, from left to right.
void CSteelMemberBS5950::CheckInteractions()
{
    std::array<std::vector<int>, 3> spans; // places by mode
    for (std::size_t i = 0; i < m_spans.size(); ++i)
        spans[static_cast<std::size_t>(m_spans[i].mode)].push_back(static_cast<int>(i));

    const auto rightOf = [this](int place) { return m_spans[static_cast<std::size_t>(place)].right; };
    std::array<std::size_t, 3> next{};
    while (next[0] < spans[0].size() && next[1] < spans[1].size() && next[2] < spans[2].size()) {
        const std::array<int, 3> place{spans[0][next[0]], spans[1][next[1]], spans[2][next[2]]};
        CheckInteraction(place[0], place[1], place[2]);
        const int right = std::min({rightOf(place[0]), rightOf(place[1]), rightOf(place[2])});
        for (std::size_t mode = 0; mode < 3; ++mode)
            if (rightOf(place[mode]) == right) ++next[mode];
    }
    if (!m_interactions.empty()) return;
    LedgerEntry e;
    e.rule = Rule::BucklingInteraction;
    e.clause = RuleClause(e.rule);
    e.status = CheckStatus::NotApplicable;
    e.reason = L"no compression together with a moment, and no moments about both axes";
    m_ledger.Add(e);
}

void CSteelMemberBS5950::WriteBucklingUtilisations()
{
    CMemberResult& r = *Result();
    for (const SpanResult& span : m_spans) {
        if (!span.applied) continue;
        switch (span.mode) {
        case BucklingMode::Major:
            r.SetUtilBucklingAxialMajor(span.utilisation);
            break;
        case BucklingMode::Minor:
            r.SetUtilBucklingAxialMinor(span.utilisation);
            break;
        case BucklingMode::LateralTorsional:
            r.SetUtilBucklingLT(span.utilisation);
            break;
        }
        if (span.mode != BucklingMode::LateralTorsional && span.slenderness > 180.0)
            r.AddFlags(CMemberResult::INFO_MEMBER_SLENDER);
    }
    for (const InteractionResult& i : m_interactions)
        r.SetUtilBucklingCombined(i.utilisation);
}

void CSteelMemberBS5950::RunBuckling()
{
    m_ledger.Drop(Stage::Buckling);
    m_spans.clear();
    m_interactions.clear();
    const bool text = Result() && Result()->TextEnabled();
    if (Result()) Result()->SetCurSubSpan(2 * static_cast<int>(SubSpans().size()) + 1);
    if (text) Text(*this).BucklingTitle();
    if (EquivalentUniformMomentFactor())
        Assume(L"equivalent uniform moment factor", L"given by the user in place of m and mLT",
               *EquivalentUniformMomentFactor());

    FindFlexuralSpans(BucklingMode::Major);
    FindFlexuralSpans(BucklingMode::Minor);
    FindLateralSpans();
    for (SpanResult& span : m_spans)
        if (span.mode == BucklingMode::LateralTorsional)
            CheckLateral(span);
        else
            CheckFlexural(span);
    RecordStrutConnections();
    CheckInteractions();
    m_ledger.MarkGoverning();
    if (!Result()) return;
    WriteBucklingUtilisations();
    if (text) Text(*this).Summary();
}

bool CSteelMemberBS5950::CheckBuckling()
{
    if (!Prepare()) return false;
    RunBuckling();
    return !m_ledger.HasFailed(Stage::Buckling) && !m_ledger.IsOpen(Stage::Buckling);
}

} // namespace Keltrix::BS5950

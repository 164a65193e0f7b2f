#include "Layout.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "keltrix/design/Stretches.h"

namespace Keltrix::Stability {

using Data::CRestraint;
using Design::MomentRange;
using Design::Parabola;
using Steel::CSubSpan;

namespace {

constexpr unsigned int BY_MOMENT = CRestraint::COMP_FLANGE_LATERAL | CRestraint::TENS_FLANGE_LATERAL |
                                   CRestraint::COMP_FLANGE_WARPING | CRestraint::TENS_FLANGE_WARPING;
// Share of the member's largest moment below which the sign of a moment means nothing.
constexpr double NO_MOMENT = 1e-9;
// Share of the member's length below which a length is none.
constexpr double NO_LENGTH = 1e-9;
// Share of a sub-span within which a contraflexure counts as its end.
constexpr double END_TOLERANCE = 1e-9;
// Share of E A below which an axial force is none.
constexpr double NO_FORCE = 1e-9;

Holds HoldsOf(const CRestraint& resolved)
{
    static constexpr std::array<std::pair<unsigned, unsigned>, 4> VALUES{{{CRestraint::FLANGE1_LATERAL, FLANGE1},
                                                                          {CRestraint::FLANGE2_LATERAL, FLANGE2},
                                                                          {CRestraint::MINOR_SHEAR, SHEAR_CENTRE},
                                                                          {CRestraint::TORSION, TWIST}}};
    static constexpr std::array<std::pair<unsigned, unsigned>, 3> SLOPES{{{CRestraint::FLANGE1_WARPING, FLANGE1},
                                                                          {CRestraint::FLANGE2_WARPING, FLANGE2},
                                                                          {CRestraint::MINOR_ROTATION, SHEAR_CENTRE}}};
    Holds holds;
    for (const auto& [bit, condition] : VALUES)
        if (resolved.IsRestrained(bit, false)) holds.value |= condition;
    for (const auto& [bit, condition] : SLOPES)
        if (resolved.IsRestrained(bit, false)) holds.slope |= condition;
    return holds;
}

int SignOf(const MomentRange& range, double tolerance)
{
    if (range.greatest < -tolerance) return -1;
    return range.least > tolerance ? 1 : 0;
}

bool IsReference(const CRestraint& restraint)
{
    const auto reference = restraint.RefLoadHeight();
    return reference == Data::SHR_CENTRE || reference == Data::TOP_FLANGE || reference == Data::BOT_FLANGE;
}

// Largest force (N), moment (N·m), length (m): products of such numbers stay finite.
constexpr double LARGEST_NUMBER = 1e30;

bool IsUsable(double value) { return std::abs(value) <= LARGEST_NUMBER; }
bool IsUsable(const Vec3<double>& v) { return IsUsable(v.x) && IsUsable(v.y) && IsUsable(v.z); }

CString At(const wchar_t* what, std::size_t index, const wchar_t* where)
{
    CString text;
    text.Format(L"%s of %s %i", what, where, static_cast<int>(index) + 1);
    return text;
}

class Maker {
public:
    Maker(const MemberInput& input, int reading) :
        m_in(input), m_reading(reading), m_noMoment(NO_MOMENT * input.major.Largest()),
        m_noLength(NO_LENGTH * (input.points.back().GetPos() - input.points.front().GetPos()))
    {}

    Layout Make()
    {
        const std::size_t count = m_in.subSpans.size();
        m_layout.stations.reserve(count + 1);
        m_layout.pieces.reserve(count);
        m_layout.stations.push_back(StationAt(m_in.points.front().GetPos()));
        for (std::size_t k = 0; k <= count; ++k) {
            AddPoint(k);
            if (k == count) break;
            if (m_in.points[k + 1].GetPos() - m_layout.stations.back().x > m_noLength)
                AddPieces(k);
            else
                AddToStation(k);
        }
        return std::move(m_layout);
    }

private:
    static Station StationAt(double x)
    {
        Station station;
        station.x = x;
        return station;
    }

    // Height of a load above the shear centre.
    double HeightOf(const CRestraint& restraint) const
    {
        const auto reference = restraint.RefLoadHeight();
        const double z = reference == Data::TOP_FLANGE   ? m_in.section.flange[0]
                         : reference == Data::BOT_FLANGE ? m_in.section.flange[1]
                                                         : 0.0;
        return z + restraint.LoadHeight();
    }

    void AddPoint(std::size_t k)
    {
        const std::size_t count = m_in.subSpans.size();
        const int index = static_cast<int>(k);
        const MomentRange before = k > 0 ? m_in.major.InSubSpan(index - 1, 1.0) : MomentRange{};
        const MomentRange after = k < count ? m_in.major.InSubSpan(index, 0.0) : MomentRange{};
        const int left = SignOf(before, m_noMoment);
        const int right = SignOf(after, m_noMoment);
        const int sign = k == 0 ? right : k == count ? left : left == right ? left : 0;
        const CRestraint restraint = m_in.points[k].GetRestraint();
        Station& station = m_layout.stations.back();
        station.holds.Add(HoldsOf(Design::Resolved(restraint, sign)));
        const double forceLeft = k > 0 ? m_in.subSpans[k - 1].GetForcesRight().z : 0.0;
        const double forceRight = k < count ? m_in.subSpans[k].GetForcesLeft().z : 0.0;
        station.torque += (forceRight - forceLeft) * HeightOf(restraint);
        station.jump = station.jump || (k > 0 && k < count && std::abs(after.least - before.least) > m_noMoment);
    }

    // A sub-span without length: its load is concentrated, and what holds it holds a section.
    void AddToStation(std::size_t k)
    {
        const CSubSpan& subSpan = m_in.subSpans[k];
        Station& station = m_layout.stations.back();
        station.holds.Add(HoldsOf(Design::Resolved(subSpan.GetRestraint(), SignThroughout(k))));
        station.torque += (subSpan.GetForcesRight().z - subSpan.GetForcesLeft().z) * HeightOf(subSpan.GetRestraint());
        station.jump = true;
    }

    // The pieces of a sub-span: one, or several where what is held along it changes with the sign of the moment.
    void AddPieces(std::size_t k)
    {
        const CRestraint along = m_in.subSpans[k].GetRestraint();
        const int subSpan = static_cast<int>(k);
        if (along.IsFree(BY_MOMENT, false)) return AddPiece(k, 0.0, 1.0, 0);
        const auto curves = m_in.major.Curves(subSpan);
        if (curves.size() > 1) return AddPiece(k, 0.0, 1.0, SignThroughout(k));
        double from = 0.0;
        for (const double zero : curves.front().Zeros()) {
            if (!(zero > from + END_TOLERANCE && zero < 1.0 - END_TOLERANCE)) continue;
            AddPiece(k, from, zero, SignAt(subSpan, 0.5 * (from + zero)));
            from = zero;
        }
        AddPiece(k, from, 1.0, SignAt(subSpan, 0.5 * (from + 1.0)));
    }

    int SignAt(int subSpan, double s) const { return SignOf(m_in.major.InSubSpan(subSpan, s), m_noMoment); }

    // Sign that all readings of a sub-span share all along it; 0 where they do not.
    int SignThroughout(std::size_t k) const
    {
        const auto& piece = m_in.major.At(static_cast<int>(k));
        MomentRange range = m_in.major.InSubSpan(static_cast<int>(k), 0.0);
        for (const Parabola& curve : m_in.major.Curves(static_cast<int>(k))) {
            for (const double s : {0.0, curve.Extreme(), 1.0}) {
                if (std::isnan(s)) continue;
                range.least = std::min(range.least, curve.At(s));
                range.greatest = std::max(range.greatest, curve.At(s));
            }
        }
        return piece.curves == 0 ? 0 : SignOf(range, m_noMoment);
    }

    void AddPiece(std::size_t k, double from, double to, int sign)
    {
        const CSubSpan& subSpan = m_in.subSpans[k];
        const double left = m_in.points[k].GetPos();
        const double length = m_in.points[k + 1].GetPos() - left;
        const double forceLeft = -subSpan.GetForcesLeft().x;
        const double forceRight = -subSpan.GetForcesRight().x;
        const Parabola moment = MomentOf(k);
        Piece piece;
        piece.moment = {-moment.At(from), -moment.At(to), -moment.curvature * (to - from) * (to - from)};
        piece.axialLeft = (1.0 - from) * forceLeft + from * forceRight;
        piece.axialRight = (1.0 - to) * forceLeft + to * forceRight;
        piece.torque =
            (subSpan.GetForcesRight().z - subSpan.GetForcesLeft().z) / length * HeightOf(subSpan.GetRestraint());
        piece.along = HoldsOf(Design::Resolved(subSpan.GetRestraint(), sign));
        piece.balanced = m_in.major.IsBalanced(static_cast<int>(k));
        m_layout.pieces.push_back(piece);
        m_layout.stations.push_back(StationAt(to < 1.0 ? left + to * length : m_in.points[k + 1].GetPos()));
    }

    Parabola MomentOf(std::size_t k) const
    {
        const int subSpan = static_cast<int>(k);
        const auto curves = m_in.major.Curves(subSpan);
        if (curves.size() == 1) return curves.front();
        if (m_reading > 0) return curves[static_cast<std::size_t>(m_reading) - 1];
        return {m_in.subSpans[k].GetMomentsLeft().y, m_in.subSpans[k].GetMomentsRight().y, curves.front().curvature};
    }

    MemberInput m_in;
    int m_reading;
    double m_noMoment;
    double m_noLength;
    Layout m_layout;
};

CString ReasonAgainstSection(const SectionConstants& s)
{
    for (const double value : {s.E, s.G, s.A, s.Iy, s.Iz, s.It})
        if (!(std::isfinite(value) && value > 0.0))
            return L"moduli, area and second moments of the section must be finite and above zero";
    for (const double value : {s.betaZ, s.zc, s.flange[0], s.flange[1], s.Iw})
        if (!std::isfinite(value)) return L"the section's constants must be finite";
    if (s.Iw < 0.0) return L"the warping constant is below zero";
    if (!(s.flange[0] > s.flange[1])) return L"flange 1 must lie above flange 2";
    return {};
}

CString ReasonAgainstNumbers(const MemberInput& in)
{
    for (std::size_t k = 0; k < in.points.size(); ++k) {
        const CRestraint restraint = in.points[k].GetRestraint();
        if (!IsUsable(in.points[k].GetPos())) return At(L"the position", k, L"point") + L" is not a number below 1e30";
        if (!IsUsable(restraint.LoadHeight()))
            return At(L"the load height", k, L"point") + L" is not a number below 1e30";
        if (!IsReference(restraint))
            return At(L"what the load height", k, L"point") + L" is measured from is not known";
        if (k > 0 && in.points[k].GetPos() < in.points[k - 1].GetPos())
            return At(L"the position", k, L"point") + L" lies before that of the point before it";
    }
    for (std::size_t k = 0; k < in.subSpans.size(); ++k) {
        const CSubSpan& s = in.subSpans[k];
        if (!IsUsable(s.GetForcesLeft()) || !IsUsable(s.GetForcesRight()) || !IsUsable(s.GetMomentsLeft()) ||
            !IsUsable(s.GetMomentsRight()))
            return At(L"a force or moment", k, L"sub-span") + L" is not a number below 1e30";
        if (!IsUsable(s.GetRestraint().LoadHeight()))
            return At(L"the load height", k, L"sub-span") + L" is not a number below 1e30";
        if (!IsReference(s.GetRestraint()))
            return At(L"what the load height", k, L"sub-span") + L" is measured from is not known";
    }
    return {};
}

} // namespace

Coefficients CoefficientsOf(Condition condition, const SectionConstants& section)
{
    switch (condition) {
    case SHEAR_CENTRE:
        return {1.0, 0.0};
    case TWIST:
        return {0.0, 1.0};
    case FLANGE1:
        return {1.0, section.flange[0]};
    case FLANGE2:
        break;
    }
    return {1.0, section.flange[1]};
}

int Rank(unsigned conditions, const SectionConstants& section)
{
    const double depth = std::max(std::abs(section.flange[0]), std::abs(section.flange[1]));
    bool any = false;
    Coefficients first;
    for (const Condition condition : CONDITIONS) {
        if (!(conditions & condition)) continue;
        Coefficients c = CoefficientsOf(condition, section);
        if (condition != TWIST) c.phi /= depth;
        if (any && std::abs(first.v * c.phi - first.phi * c.v) > 1e-6) return 2;
        first = c;
        any = true;
    }
    return any ? 1 : 0;
}

CString ReasonAgainst(const MemberInput& in)
{
    if (CString reason = ReasonAgainstSection(in.section); !reason.IsEmpty()) return reason;
    if (in.points.size() < 2 || in.subSpans.size() != in.points.size() - 1)
        return L"a member needs two points or more, and a sub-span between each two neighbouring ones";
    if (CString reason = ReasonAgainstNumbers(in); !reason.IsEmpty()) return reason;
    if (in.major.Pieces().size() != in.subSpans.size()) return L"the moment diagram is not that of the member";
    const double length = in.points.back().GetPos() - in.points.front().GetPos();
    if (!(std::isfinite(length) && length > 0.0)) return L"the member has no length";
    if (!std::isfinite(in.major.Largest())) return L"the moments are too large for a number";
    if (!in.section.offWebPlane) return {};
    for (std::size_t k = 0; k < in.subSpans.size(); ++k) {
        const double none = NO_FORCE * in.section.E * in.section.A;
        const CSubSpan& s = in.subSpans[k];
        if (std::max(std::abs(s.GetForcesLeft().x), std::abs(s.GetForcesRight().x)) > none)
            return At(L"the axial force", k, L"sub-span") +
                   L" acts on a section whose shear centre lies off the plane of its web: it bends and twists from the "
                   L"start, and has no critical load of this kind";
    }
    return {};
}

Layout MakeLayout(const MemberInput& input, int reading) { return Maker(input, reading).Make(); }

} // namespace Keltrix::Stability

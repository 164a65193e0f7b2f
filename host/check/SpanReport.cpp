#include "check/SpanReport.h"

#include <algorithm>
#include <cmath>

#include "keltrix/design/LateralLength.h"
#include "keltrix/design/Stretches.h"
#include "sections/SectionShapes.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Data::CRestraint;
using Design::Flange;
using Design::MomentDiagram;
using Design::Parabola;
using Design::Stretch;
using Steel::CCodeShare;
using Steel::CMemberPoint;
using Steel::CSpan;
using Steel::CSubSpan;

struct HoldRule {
    unsigned int bit;
    const char* name;
};

constexpr HoldRule LATERAL_RULES[] = {{CRestraint::MINOR_SHEAR, "minor shear"},
                                      {CRestraint::FLANGE1_LATERAL, "flange 1 lateral"},
                                      {CRestraint::FLANGE2_LATERAL, "flange 2 lateral"},
                                      {CRestraint::COMP_FLANGE_LATERAL, "compression flange lateral"},
                                      {CRestraint::TENS_FLANGE_LATERAL, "tension flange lateral"},
                                      {CRestraint::TORSION, "torsion"},
                                      {CRestraint::TORSION_PART, "torsion part"},
                                      {CRestraint::TORSION_FRICTION, "torsion by friction"}};

// By which of the split's rules a point is held.
std::vector<std::string> HeldBy(const CRestraint& restraint, Split split)
{
    if (split == Split::Major)
        return restraint.IsRestrained(CRestraint::MAJOR_SHEAR, true) ? std::vector<std::string>{"major shear"}
                                                                     : std::vector<std::string>{};
    std::vector<std::string> rules;
    const bool torsion = restraint.IsRestrained(CRestraint::TORSION, true);
    for (const HoldRule& rule : LATERAL_RULES) {
        if (split == Split::Minor && rule.bit != CRestraint::MINOR_SHEAR) break;
        // Full torsional restraint includes the weaker kinds.
        if (torsion && (rule.bit == CRestraint::TORSION_PART || rule.bit == CRestraint::TORSION_FRICTION)) continue;
        if (restraint.IsRestrained(rule.bit, true)) rules.emplace_back(rule.name);
    }
    return rules;
}

// One axis of a span by itself, moved to the start of a member: bending about the major axis (Fz, Myy), or the minor
// axis in its place (Fy, Mzz). The tests of load patterns look at all forces together and take positions from the
// member's start, so that only such a copy tells of one axis and of any span.
class OneAxis {
public:
    OneAxis(const std::vector<CMemberPoint>& points, const std::vector<CSubSpan>& subSpans, int left, int right,
            const MomentDiagram& diagram, bool major) :
        m_diagram(diagram),
        m_left(left), m_right(right), m_isMajor(major)
    {
        const auto first = static_cast<std::size_t>(left);
        const auto last = static_cast<std::size_t>(right);
        for (std::size_t i = first; i <= last; ++i) {
            m_points.push_back(points[i]);
            m_points.back().SetPos(points[i].GetPos() - points[first].GetPos());
        }
        const auto force = [major](const Vec3<double>& f) { return Vec3<double>(0.0, 0.0, major ? f.z : f.y); };
        const auto moment = [major](const Vec3<double>& m) { return Vec3<double>(0.0, major ? m.y : m.z, 0.0); };
        for (std::size_t i = first; i < last; ++i) {
            const CSubSpan& s = subSpans[i];
            CSubSpan& copy = m_subSpans.emplace_back();
            copy.SetForcesAll(force(s.GetForcesLeft()), force(s.GetForcesRight()));
            copy.SetMomentsAll(moment(s.GetMomentsLeft()), moment(s.GetMomentsRight()));
        }
    }

    LoadPatternReport Pattern() const
    {
        const CSpan span = Span();
        LoadPatternReport report;
        // Of the two tests of one force component, this is the one that looks at Fz.
        report.loaded = span.IsMinorAxisLoaded();
        report.pointLoad = span.IsLoadedWithPointLoad();
        report.leftEndPointLoadOnly = span.IsLeftEndPtLoadOnly();
        report.rightEndPointLoadOnly = span.IsRightEndPtLoadOnly();
        report.leftEndMomentOnly = span.IsLeftEndMomentLoadOnly();
        report.rightEndMomentOnly = span.IsRightEndMomentLoadOnly();
        report.centrePointLoad = span.IsLoadedWithCentrePointLoad();
        report.uniformLoad = span.IsLoadedWithUDL();
        report.pattern = InWords(report);
        return report;
    }

    Deflection LargestDeflection(double EI) const
    {
        Deflection deflection;
        deflection.EI = EI;
        const bool single = m_subSpans.size() < 2;
        deflection.atPoints = single ? std::nan("") : Span().MaxDispYY(EI, 1.0);
        deflection.hasLoadBetweenPoints = HasLoadBetweenPoints();
        std::size_t readings = 1;
        for (int k = m_left; k < m_right; ++k)
            readings = std::max(readings, m_diagram.Curves(k).size());
        deflection.isKnown = readings == 1;
        for (std::size_t reading = 0; reading < readings; ++reading)
            Integrate(deflection, reading);
        return deflection;
    }

private:
    CSpan Span() const { return CSpan(&m_points, &m_subSpans, 0, static_cast<int>(m_subSpans.size())); }

    bool HasMoment() const
    {
        return std::any_of(m_subSpans.begin(), m_subSpans.end(), [](const CSubSpan& s) {
            return std::abs(s.GetMomentsLeft().y) > 1.0 || std::abs(s.GetMomentsRight().y) > 1.0;
        });
    }

    bool HasLoadBetweenPoints() const
    {
        for (int k = m_left; k < m_right; ++k) {
            for (const Parabola& curve : m_diagram.Curves(k))
                if (std::abs(curve.curvature) > 1e-6 * m_diagram.Largest()) return true;
        }
        return false;
    }

    std::string InWords(const LoadPatternReport& report) const
    {
        for (int k = m_left; k < m_right; ++k)
            if (!m_diagram.IsBalanced(k)) return "not known: the forces do not balance";
        const bool single = m_subSpans.size() == 1;
        if (HasLoadBetweenPoints() && (single || !report.loaded))
            return single ? "uniform load within one sub-span, which CSpan does not see"
                          : "load between the points, which CSpan does not see";
        if (!report.loaded || single) return HasMoment() ? "end moments" : "none";
        if (report.uniformLoad) return "uniform load";
        if (report.pointLoad && report.centrePointLoad) return "point load at mid-span";
        return report.pointLoad ? "point loads" : "varying load";
    }

    // One sub-span of the deflected shape: EI v'' = M with the parabola of the moment, slope and deflection at its left end
    // given. Over s = x/h, 0 to 1.
    struct Bent {
        double start = 0.0; // from the span's left end
        double h = 0.0;
        Parabola moment;
        double slope = 0.0;
        double v = 0.0;

        double Slope(double EI, double s) const
        {
            const double M = moment.left * (s - s * s / 2.0) + moment.right * s * s / 2.0 -
                             moment.curvature * (s * s / 2.0 - s * s * s / 3.0);
            return slope + h * M / EI;
        }
        double At(double EI, double s) const
        {
            const double M = moment.left * (s * s / 2.0 - s * s * s / 6.0) + moment.right * s * s * s / 6.0 -
                             moment.curvature * (s * s * s / 6.0 - s * s * s * s / 12.0);
            return v + slope * h * s + h * h * M / EI;
        }
    };

    std::vector<Bent> BentShape(double EI, std::size_t reading) const
    {
        std::vector<Bent> shape;
        Bent bent;
        for (int k = m_left; k < m_right; ++k) {
            const auto curves = m_diagram.Curves(k);
            bent.h = m_diagram.At(k).length;
            bent.moment = curves[std::min(reading, curves.size() - 1)];
            shape.push_back(bent);
            bent.v = shape.back().At(EI, 1.0);
            bent.slope = shape.back().Slope(EI, 1.0);
            bent.start += bent.h;
        }
        return shape;
    }

    // The largest distance from the chord: where the deflected shape runs parallel to it, which a search between 32 places of
    // each sub-span finds, or at an end of a sub-span. Moments below zero bend downwards.
    void Integrate(Deflection& deflection, std::size_t reading) const
    {
        const double EI = deflection.EI;
        const std::vector<Bent> shape = BentShape(EI, reading);
        const Bent& last = shape.back();
        const double chord = last.At(EI, 1.0) / (last.start + last.h);
        const auto take = [&](const Bent& bent, double s) {
            const double x = bent.start + bent.h * s;
            const double fromChord = bent.At(EI, s) - chord * x;
            if (!(std::abs(fromChord) > deflection.integrated)) return;
            deflection.integrated = std::abs(fromChord);
            deflection.integratedAt = x;
            deflection.isUpwards = m_isMajor && fromChord < 0.0;
        };
        constexpr int places = 32;
        for (const Bent& bent : shape) {
            for (int i = 0; i < places; ++i) {
                const double from = static_cast<double>(i) / places;
                const double to = static_cast<double>(i + 1) / places;
                take(bent, to);
                const double slopes = (bent.Slope(EI, from) - chord) * (bent.Slope(EI, to) - chord);
                if (slopes < 0.0) take(bent, ParallelTo(chord, bent, EI, from, to));
            }
        }
    }

    static double ParallelTo(double chord, const Bent& bent, double EI, double from, double to)
    {
        const bool risesAtStart = bent.Slope(EI, from) > chord;
        for (int i = 0; i < 60; ++i) {
            const double middle = 0.5 * (from + to);
            ((bent.Slope(EI, middle) > chord) == risesAtStart ? from : to) = middle;
        }
        return 0.5 * (from + to);
    }

    const MomentDiagram& m_diagram;
    int m_left;
    int m_right;
    bool m_isMajor;
    std::vector<CMemberPoint> m_points;
    std::vector<CSubSpan> m_subSpans;
};

// "1.0L(normal)" out of the texts that the table rules write, one for each end where the two differ.
std::string RowsOf(const Steel::CMemberResult& result)
{
    const std::string text = Utf8(result.GetVerbose());
    static constexpr std::string_view mark = "condition: ";
    std::string rows;
    for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at)) {
        at += mark.size();
        rows += (rows.empty() ? "" : " and ") + text.substr(at, text.find('\n', at) - at);
    }
    if (text.find("due to tip moment") != std::string::npos) rows += ", increased for the tip moment";
    return rows;
}

class Reporter {
public:
    Reporter(CodelessMember& member, Split split, std::optional<double> EI, double E) :
        m_member(member), m_points(member.MemberPoints()), m_subSpans(member.SubSpans()), m_split(split),
        m_major(m_points, m_subSpans, Design::Bending::Major), m_minor(m_points, m_subSpans, Design::Bending::Minor),
        m_stretches(Design::FindStretches(m_points, m_subSpans, m_major))
    {
        const CSection section = member.GetKeltrixSec();
        m_isAngle = (section.Component(0).Shape() & CSecGeom::SHAPE_MASK) == CSecGeom::SHAPE_ANGLE;
        m_depth = section.Component(0).Dimension(0.0, CSecGeom::DEPTH);
        if (const auto geometry = MakeGeometry(section)) {
            m_EImajor = E * geometry->Ixx();
            m_EIminor = E * geometry->Iyy();
        }
        if (EI) {
            m_EImajor = *EI;
            m_EIminor.reset();
        }
    }

    std::vector<SpanReport> Make()
    {
        std::vector<SpanReport> reports;
        const int last = static_cast<int>(m_points.size()) - 1;
        int left = 0;
        for (int right = 1; right <= last; ++right) {
            if (right < last && HeldBy(RestraintAt(right), m_split).empty()) continue;
            reports.push_back(MakeReport(left, right));
            left = right;
        }
        return reports;
    }

private:
    // The point's restraint with the moment there, which tells the compression flange.
    CRestraint RestraintAt(int point) const
    {
        const int last = static_cast<int>(m_points.size()) - 1;
        return point < last ? CSpan(&m_points, &m_subSpans, point, point + 1).RestraintEndL()
                            : CSpan(&m_points, &m_subSpans, point - 1, point).RestraintEndR();
    }

    SpanEnd EndAt(int point, const CRestraint& restraint) const
    {
        const CMemberPoint& place = m_points[static_cast<std::size_t>(point)];
        SpanEnd end{place.Get1Index(), place.GetPos(), Utf8(place.GetRestraint().UserDescription()),
                    HeldBy(restraint, m_split)};
        if (end.heldBy.empty()) end.heldBy.emplace_back("member end");
        return end;
    }

    SpanReport MakeReport(int left, int right) const
    {
        const CSpan span(&m_points, &m_subSpans, left, right);
        SpanReport report;
        report.left = EndAt(left, span.RestraintEndL());
        report.right = EndAt(right, span.RestraintEndR());
        report.length = span.Length();
        SetRestraints(report, span);
        SetForces(report, span);
        const OneAxis major(m_points, m_subSpans, left, right, m_major, true);
        const OneAxis minor(m_points, m_subSpans, left, right, m_minor, false);
        report.major = major.Pattern();
        report.minor = minor.Pattern();
        report.compressionFlange = m_member.BucklingSenseLT(span);
        report.isAngle = m_isAngle;
        if (!m_isAngle) report.lt = EffectiveLengths(span);
        const auto deflection = [&](const OneAxis& axis, double EI) {
            Deflection result = axis.LargestDeflection(EI);
            result.integratedAt += span.PosLeft();
            return result;
        };
        if (m_EImajor) report.deflectionMajor = deflection(major, *m_EImajor);
        if (m_EIminor) report.deflectionMinor = deflection(minor, *m_EIminor);
        return report;
    }

    void SetRestraints(SpanReport& report, const CSpan& span) const
    {
        const CRestraint continuous = span.ContinuousRestraint();
        Vec3<double> force, moment;
        bool useMomentSign = true;
        continuous.GetForcesAndMoments(force, moment, useMomentSign);
        report.momentReverses = !useMomentSign;
        report.loadHeight = continuous.LoadHeight();
        report.destabilising = span.IsDestabilized();
        // Forces and heights make no difference to the words.
        report.continuousRestraint = Utf8(CRestraint(continuous.RestFlag(), Data::SHR_CENTRE, 0.0).UserDescription());
    }

    void SetForces(SpanReport& report, const CSpan& span) const
    {
        const CSubSpan most = span.MaxForces();
        const CSubSpan least = span.MinForces();
        report.maxForce = CSubSpan::Max(most.GetForcesLeft(), most.GetForcesRight());
        report.minForce = CSubSpan::Min(least.GetForcesLeft(), least.GetForcesRight());
        report.maxMoment = CSubSpan::Max(most.GetMomentsLeft(), most.GetMomentsRight());
        report.minMoment = CSubSpan::Min(least.GetMomentsLeft(), least.GetMomentsRight());
        report.momentMajor = m_major.Between(span.PosLeft(), span.PosRight());
        report.momentMinor = m_minor.Between(span.PosLeft(), span.PosRight());
        report.maxMoment.y = report.momentMajor.greatest;
        report.minMoment.y = report.momentMajor.least;
        report.maxMoment.z = report.momentMinor.greatest;
        report.minMoment.z = report.momentMinor.least;
        for (const double t : {0.0, 0.25, 0.5, 0.75, 1.0}) {
            const double x = span.InterpolatePosition(t);
            Vec3<double> moment = span.InterpolateMoments(t);
            moment.y = (t == 1.0 ? m_major.LeftOf(x) : m_major.RightOf(x)).Worst();
            moment.z = (t == 1.0 ? m_minor.LeftOf(x) : m_minor.RightOf(x)).Worst();
            report.stations.push_back({t, x, span.InterpolateForces(t), moment});
        }
    }

    std::vector<EffectiveLengthLT> EffectiveLengths(const CSpan& span) const
    {
        if (m_member.LengthOverride()) return GivenLengths();
        constexpr double leastMoment = 1.0; // N·m
        constexpr double leastShare = 1e-5;
        const double least = std::max(leastMoment, leastShare * m_major.Largest());
        std::vector<EffectiveLengthLT> lengths;
        for (const Stretch& stretch : m_stretches) {
            if (stretch.held || stretch.left.x >= span.PosRight() || stretch.right.x <= span.PosLeft()) continue;
            for (const Flange flange : Design::FLANGES) {
                if (stretch.Has(flange) && stretch.Compressing(flange) > least)
                    lengths.push_back(LengthOf(stretch, flange));
            }
        }
        return lengths;
    }

    // The whole member; 0 leaves nothing to check.
    std::vector<EffectiveLengthLT> GivenLengths() const
    {
        const double given = m_member.Llt();
        if (given == 0.0) return {};
        EffectiveLengthLT lt;
        lt.start = m_points.front().GetPos();
        lt.end = m_points.back().GetPos();
        lt.row = "as given";
        lt.length = given < 0.0 ? -given * (lt.end - lt.start) : given;
        return {lt};
    }

    EffectiveLengthLT LengthOf(const Stretch& stretch, Flange flange) const
    {
        Steel::CMemberResult result;
        const CCodeShare rules(&result);
        EffectiveLengthLT lt;
        lt.flange = flange == Flange::First ? CCodeShare::LT_COMP_FLANGE1 : CCodeShare::LT_COMP_FLANGE2;
        lt.start = stretch.left.x;
        lt.end = stretch.right.x;
        lt.cantilever = stretch.cantilever;
        const Design::LateralLength found = Design::FindLateralLength(
            stretch, flange, m_points, m_major, m_depth, Design::IsDestabilised(stretch, m_points, m_subSpans), rules);
        lt.standard = Utf8(Design::LATERAL_TABLES_STANDARD);
        lt.table = Utf8(Design::TextOf(found.table));
        lt.length = found.LE;
        lt.nominalRejectedLeft = found.nominalRefused[0];
        lt.nominalRejectedRight = found.nominalRefused[1];
        lt.row = RowsOf(result);
        return lt;
    }

    CodelessMember& m_member;
    const std::vector<CMemberPoint>& m_points;
    const std::vector<CSubSpan>& m_subSpans;
    Split m_split;
    MomentDiagram m_major;
    MomentDiagram m_minor;
    std::vector<Stretch> m_stretches;
    bool m_isAngle = false;
    double m_depth = 0.0;
    std::optional<double> m_EImajor;
    std::optional<double> m_EIminor;
};

} // namespace

std::vector<SpanReport> MakeSpanReports(CodelessMember& member, Split split, std::optional<double> EI, double E)
{
    return Reporter(member, split, EI, E).Make();
}

std::string CompressionFlangeName(int direction)
{
    switch (direction) {
    case CCodeShare::LT_COMP_FLANGE1:
        return "flange 1 (top)";
    case CCodeShare::LT_COMP_FLANGE2:
        return "flange 2 (bottom)";
    case CCodeShare::LT_COMP_BOTH:
        return "both in turn";
    default:
        return "neither";
    }
}

} // namespace Keltrix::Host

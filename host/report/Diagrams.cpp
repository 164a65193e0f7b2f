#include "report/Diagrams.h"

#include <algorithm>
#include <cmath>

#include "keltrix/design/MomentDiagram.h"
#include "keltrix/platform/KxUtil.h"
#include "report/Join.h"
#include "report/Svg.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

class DiagramPicture {
public:
    DiagramPicture(const std::string& id, const ActionDiagram& diagram, const DrawnLayout& layout,
                   const MemberAxis& axis) :
        m_diagram(diagram),
        m_layout(layout), m_axis(axis), m_max(diagram.Largest()), m_min(diagram.Smallest())
    {
        for (const ActionDiagram::Piece& piece : diagram.pieces) {
            for (const std::vector<Station>& curve : piece.curves) {
                for (const Station& station : curve)
                    if (std::isfinite(station.value)) m_largest = std::max(m_largest, std::fabs(station.value));
            }
        }
        const double above = std::max(m_max.value, 0.0);
        const double below = std::max(-m_min.value, 0.0);
        const bool isFinite = std::isfinite(above) && std::isfinite(below) && m_largest > 0.0;
        m_up = isFinite ? ROOM * above / std::max(above + below, m_largest) : ROOM / 2.0;
        // Values above the line stand below the caption.
        m_base = (m_max.value > 0.0 ? 10.0 : 6.5) + m_up;
        m_height = m_base + (isFinite ? ROOM * below / std::max(above + below, m_largest) : ROOM / 2.0) + 6.0;
        m_unit = isFinite ? ROOM / (above + below) : 0.0;
        m_svg = Svg(id, diagram.symbol + ", " + diagram.name, Description());
    }

    std::string Draw()
    {
        m_svg.Path("fill", Areas());
        m_svg.Path("curve", KnownCurves());
        if (!m_diagram.IsKnown()) m_svg.Path("curve unsure", UnknownCurves());
        m_svg.Line("base", m_axis.Left() - 3.0, m_base, m_axis.Right() + 3.0, m_base);
        DrawStations();
        m_svg.Text("name", 0.5, 3.4, "start", m_diagram.symbol);
        m_svg.Text("note", 9.5, 3.4, "start", m_diagram.name);
        for (const Station& station : Labelled())
            DrawValue(station);
        return m_svg.Finish("diagram", MemberAxis::WIDTH, m_height);
    }

private:
    static constexpr double ROOM = 15.0; // mm of paper for the curve

    double Y(double value) const { return m_base - value * m_unit; }

    std::string Description() const
    {
        std::string text;
        for (const Station& station : Labelled())
            AddItem(text, "; ", LabelOf(station) + (IsAtPoint(station) ? PlaceOf(station) : ""));
        if (text.empty()) text = "zero along the member";
        return text +
               (m_diagram.IsKnown() ? "." : ". Not known along the whole member: broken lines show what it can be.");
    }

    static std::string PlaceOf(const Station& station) { return " at " + Rounded(station.position, 5) + " m"; }

    bool IsAtPoint(const Station& station) const
    {
        return std::any_of(m_layout.points.begin(), m_layout.points.end(), [&](const Steel::CMemberPoint& point) {
            return std::fabs(point.GetPos() - station.position) <= 1e-9 * m_layout.Length();
        });
    }

    // The drawing shows where the points are.
    std::string LabelOf(const Station& station) const
    {
        return m_diagram.NamedValue(station.value) + (IsAtPoint(station) ? "" : PlaceOf(station));
    }

    void AddCurve(PathData& path, const std::vector<Station>& curve) const
    {
        for (const Station& station : curve)
            path.LineTo(m_axis.X(station.position), Y(station.value));
    }

    PathData Areas() const
    {
        PathData path;
        for (const ActionDiagram::Piece& piece : m_diagram.pieces) {
            for (const std::vector<Station>& curve : piece.curves) {
                path.MoveTo(m_axis.X(curve.front().position), m_base);
                AddCurve(path, curve);
                path.LineTo(m_axis.X(curve.back().position), m_base).Close();
            }
        }
        return path;
    }

    // One line as far as the action is known, from the base line and back to it.
    PathData KnownCurves() const
    {
        PathData path;
        bool isDown = false;
        for (std::size_t k = 0; k < m_diagram.pieces.size(); ++k) {
            const ActionDiagram::Piece& piece = m_diagram.pieces[k];
            if (piece.IsKnown()) {
                const std::vector<Station>& curve = piece.curves.front();
                if (!isDown) path.MoveTo(m_axis.X(curve.front().position), m_base);
                AddCurve(path, curve);
                const bool isLast = k + 1 == m_diagram.pieces.size() || !m_diagram.pieces[k + 1].IsKnown();
                if (isLast) path.LineTo(m_axis.X(curve.back().position), m_base);
            }
            isDown = piece.IsKnown();
        }
        return path;
    }

    PathData UnknownCurves() const
    {
        PathData path;
        for (const ActionDiagram::Piece& piece : m_diagram.pieces) {
            if (piece.IsKnown()) continue;
            for (const std::vector<Station>& curve : piece.curves) {
                path.MoveTo(m_axis.X(curve.front().position), Y(curve.front().value));
                AddCurve(path, curve);
            }
        }
        return path;
    }

    void DrawStations()
    {
        double last = -1e9;
        for (std::size_t i = 0; i < m_layout.points.size(); ++i) {
            const double x = m_axis.X(m_layout.points[i].GetPos());
            if (x - last < 0.8) continue;
            last = x;
            m_svg.Line("station", x, m_base - 0.8, x, m_base + 0.8);
        }
    }

    // The extremes, then the ends where they say something else.
    std::vector<Station> Labelled() const
    {
        std::vector<Station> labelled;
        const auto add = [&](const Station& station) {
            if (std::fabs(station.value) <= 1e-6 * m_largest || station.value == 0.0) return;
            for (const Station& other : labelled) {
                const bool sameValue = std::fabs(other.value - station.value) <= 1e-3 * m_largest;
                const bool near = std::fabs(m_axis.X(other.position) - m_axis.X(station.position)) < 20.0 &&
                                  other.value * station.value > 0.0;
                if (sameValue || near) return;
            }
            labelled.push_back(station);
        };
        if (m_diagram.pieces.empty()) return labelled;
        if (m_max.value > 0.0) add(m_max);
        if (m_min.value < 0.0) add(m_min);
        add(m_diagram.pieces.front().curves.front().front());
        add(m_diagram.pieces.back().curves.front().back());
        return labelled;
    }

    void DrawValue(const Station& station)
    {
        const double x = m_axis.X(station.position);
        const double y = Y(station.value);
        const std::string text = LabelOf(station);
        const double half = 0.85 * static_cast<double>(DisplayWidth(text));
        const double at = std::clamp(x, half, MemberAxis::WIDTH - half);
        m_svg.Circle(IsAtPoint(station) ? "peak" : "peak between", x, y, 0.7);
        m_svg.Text("value", at, station.value > 0.0 ? y - 1.5 : y + 3.7, "middle", text);
    }

    const ActionDiagram& m_diagram;
    const DrawnLayout& m_layout;
    const MemberAxis& m_axis;
    Station m_max;
    Station m_min;
    double m_largest = 0.0;
    double m_unit = 0.0; // mm of paper for 1 N or 1 N·m
    double m_up = 0.0;
    double m_base = 0.0;
    double m_height = 0.0;
    Svg m_svg{"", "", ""};
};

std::vector<Station> LinearCurve(const DrawnLayout& layout, std::size_t k, double left, double right)
{
    return {{layout.points[k].GetPos(), left}, {layout.points[k + 1].GetPos(), right}};
}

ActionDiagram LinearDiagram(const DrawnLayout& layout, const char* symbol, const char* name, bool isMoment,
                            double Vec3<double>::*component)
{
    ActionDiagram diagram{symbol, name, isMoment, false, {}};
    for (std::size_t k = 0; k < layout.SubSpanCount(); ++k) {
        const Steel::CSubSpan& s = layout.subSpans[k];
        diagram.pieces.push_back(
            {{LinearCurve(layout, k, (isMoment ? s.GetMomentsLeft() : s.GetForcesLeft()).*component,
                          (isMoment ? s.GetMomentsRight() : s.GetForcesRight()).*component)}});
    }
    return diagram;
}

// A straight line by its ends; a parabola by enough of its points that its chords hide nothing, and by its extreme.
std::vector<Station> CurveStations(const Design::MomentDiagram::Piece& piece, const Design::Parabola& curve)
{
    std::vector<double> shares{0.0, 1.0};
    if (curve.curvature != 0.0) {
        constexpr std::size_t chords = 24;
        shares.resize(chords + 1);
        for (std::size_t i = 0; i <= chords; ++i)
            shares[i] = static_cast<double>(i) / chords;
        if (const double extreme = curve.Extreme(); extreme > 0.0 && extreme < 1.0) shares.push_back(extreme);
        std::sort(shares.begin(), shares.end());
    }
    std::vector<Station> stations;
    stations.reserve(shares.size());
    for (const double s : shares)
        stations.push_back({piece.Position(s), s == 0.0 ? curve.left : s == 1.0 ? curve.right : curve.At(s)});
    return stations;
}

ActionDiagram BendingDiagram(const DrawnLayout& layout, const char* symbol, const char* name, Design::Bending bending)
{
    ActionDiagram diagram{symbol, name, true, bending == Design::Bending::Major, {}};
    if (layout.SubSpanCount() == 0) return diagram;
    const Design::MomentDiagram moments(layout.points, layout.subSpans, bending);
    for (std::size_t k = 0; k < layout.SubSpanCount(); ++k) {
        const int subSpan = static_cast<int>(k);
        ActionDiagram::Piece& piece = diagram.pieces.emplace_back();
        for (const Design::Parabola& curve : moments.Curves(subSpan))
            piece.curves.push_back(CurveStations(moments.At(subSpan), curve));
    }
    return diagram;
}

template <class IsBetter>
Station Extreme(const ActionDiagram& diagram, IsBetter isBetter)
{
    const Station* best = nullptr;
    for (const ActionDiagram::Piece& piece : diagram.pieces) {
        for (const std::vector<Station>& curve : piece.curves) {
            for (const Station& station : curve) {
                if (best == nullptr || isBetter(station.value, best->value)) best = &station;
            }
        }
    }
    return best == nullptr ? Station() : *best;
}

} // namespace

bool ActionDiagram::IsZero() const { return Largest().value == 0.0 && Smallest().value == 0.0; }

bool ActionDiagram::IsKnown() const
{
    return std::all_of(pieces.begin(), pieces.end(), [](const Piece& piece) { return piece.IsKnown(); });
}

Station ActionDiagram::Largest() const
{
    return Extreme(*this, [](double a, double b) { return a > b || (std::isnan(b) && !std::isnan(a)); });
}

Station ActionDiagram::Smallest() const
{
    return Extreme(*this, [](double a, double b) { return a < b || (std::isnan(b) && !std::isnan(a)); });
}

std::string ActionDiagram::ValueText(double value) const
{
    const CDesFormat format;
    return Utf8(isMoment ? format.Moment(value) : format.Force(value));
}

std::string ActionDiagram::NamedValue(double value) const
{
    std::string text = ValueText(value);
    if (!sags || !(value < 0.0 || value > 0.0)) return text;
    return text + (value < 0.0 ? " sagging" : " hogging");
}

std::vector<ActionDiagram> ActionDiagrams(const DrawnLayout& layout)
{
    using V = Vec3<double>;
    using Design::Bending;
    return {LinearDiagram(layout, "Fx", "axial force, tension above zero", false, &V::x),
            LinearDiagram(layout, "Fz", "shear along the web (major axis bending)", false, &V::z),
            BendingDiagram(layout, "Myy", "moment about the major axis, drawn on the side in tension", Bending::Major),
            LinearDiagram(layout, "Fy", "shear along the flanges (minor axis bending)", false, &V::y),
            BendingDiagram(layout, "Mzz", "moment about the minor axis", Bending::Minor),
            LinearDiagram(layout, "Mxx", "torsion", true, &V::x)};
}

std::string DiagramSvg(const std::string& id, const ActionDiagram& diagram, const DrawnLayout& layout,
                       const MemberAxis& axis)
{
    return DiagramPicture(id, diagram, layout, axis).Draw();
}

} // namespace Keltrix::Host

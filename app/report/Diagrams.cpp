#include "report/Diagrams.h"

#include <algorithm>
#include <cmath>

#include "Text.h"
#include "keltrix/platform/KxUtil.h"
#include "report/Join.h"
#include "report/Svg.h"

namespace Keltrix::App {

namespace {

// One end of a sub-span.
struct Station {
    double position;
    double value;
};

class DiagramPicture {
public:
    DiagramPicture(const std::string& id, const ActionDiagram& diagram, const MemberLayout& layout,
                   const MemberAxis& axis) :
        m_diagram(diagram),
        m_axis(axis)
    {
        for (std::size_t k = 0; k < layout.SubSpanCount(); ++k) {
            m_stations.push_back({layout.points[k].GetPos(), diagram.left[k]});
            m_stations.push_back({layout.points[k + 1].GetPos(), diagram.right[k]});
        }
        for (const Station& station : m_stations) {
            if (station.value > m_max.value || m_max.position < 0.0) m_max = station;
            if (station.value < m_min.value || m_min.position < 0.0) m_min = station;
            if (std::isfinite(station.value)) m_largest = std::max(m_largest, std::fabs(station.value));
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
        m_svg.Path("fill", Outline());
        m_svg.Path("curve", Outline());
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
            AddItem(text, "; ", m_diagram.ValueText(station.value) + " at " + Rounded(station.position, 5) + " m");
        return text.empty() ? "zero along the member" : text + ". Linear along each sub-span.";
    }

    PathData Outline() const
    {
        PathData path;
        path.MoveTo(m_axis.X(m_stations.front().position), m_base);
        for (const Station& station : m_stations)
            path.LineTo(m_axis.X(station.position), Y(station.value));
        path.LineTo(m_axis.X(m_stations.back().position), m_base).Close();
        return path;
    }

    void DrawStations()
    {
        double last = -1e9;
        for (const Station& station : m_stations) {
            const double x = m_axis.X(station.position);
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
        if (m_stations.empty()) return labelled;
        if (m_max.value > 0.0) add(m_max);
        if (m_min.value < 0.0) add(m_min);
        add(m_stations.front());
        add(m_stations.back());
        return labelled;
    }

    void DrawValue(const Station& station)
    {
        const double x = m_axis.X(station.position);
        const double y = Y(station.value);
        const std::string text = m_diagram.ValueText(station.value);
        const double half = 0.85 * static_cast<double>(DisplayWidth(text));
        const double at = std::clamp(x, half, MemberAxis::WIDTH - half);
        m_svg.Circle("peak", x, y, 0.7);
        m_svg.Text("value", at, station.value > 0.0 ? y - 1.5 : y + 3.7, "middle", text);
    }

    const ActionDiagram& m_diagram;
    const MemberAxis& m_axis;
    std::vector<Station> m_stations;
    Station m_max{-1.0, 0.0};
    Station m_min{-1.0, 0.0};
    double m_largest = 0.0;
    double m_unit = 0.0; // mm of paper for 1 N or 1 N·m
    double m_up = 0.0;
    double m_base = 0.0;
    double m_height = 0.0;
    Svg m_svg{"", "", ""};
};

ActionDiagram Diagram(const MemberLayout& layout, const char* symbol, const char* name, bool isMoment,
                      double Vec3<double>::*component)
{
    ActionDiagram diagram{symbol, name, isMoment, {}, {}};
    for (std::size_t k = 0; k < layout.SubSpanCount(); ++k) {
        const Steel::CSubSpan& s = layout.subSpans[k];
        diagram.left.push_back((isMoment ? s.GetMomentsLeft() : s.GetForcesLeft()).*component);
        diagram.right.push_back((isMoment ? s.GetMomentsRight() : s.GetForcesRight()).*component);
    }
    return diagram;
}

} // namespace

bool ActionDiagram::IsZero() const
{
    const auto isZero = [](double value) { return value == 0.0; };
    return std::all_of(left.begin(), left.end(), isZero) && std::all_of(right.begin(), right.end(), isZero);
}

std::string ActionDiagram::ValueText(double value) const
{
    const CDesFormat format;
    return Utf8(isMoment ? format.Moment(value) : format.Force(value));
}

std::vector<ActionDiagram> ActionDiagrams(const MemberLayout& layout)
{
    using V = Vec3<double>;
    return {Diagram(layout, "Fx", "axial force, tension above zero", false, &V::x),
            Diagram(layout, "Fz", "shear along the web (major axis bending)", false, &V::z),
            Diagram(layout, "Myy", "moment about the major axis, drawn on the side in tension", true, &V::y),
            Diagram(layout, "Fy", "shear along the flanges (minor axis bending)", false, &V::y),
            Diagram(layout, "Mzz", "moment about the minor axis", true, &V::z),
            Diagram(layout, "Mxx", "torsion", true, &V::x)};
}

std::string DiagramSvg(const std::string& id, const ActionDiagram& diagram, const MemberLayout& layout,
                       const MemberAxis& axis)
{
    return DiagramPicture(id, diagram, layout, axis).Draw();
}

} // namespace Keltrix::App

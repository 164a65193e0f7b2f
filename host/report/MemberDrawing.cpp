#include "report/MemberDrawing.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "report/Join.h"
#include "report/Svg.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Steel::CRestraint;

// One way of being held: how the closure of a restraint tells it, and how it is drawn and called.
enum class Hold { Support, Fixed, PartlyFixed, Top, Bottom, TopWarping, BottomWarping, Torsion, PartTorsion };

constexpr Hold ALL_HOLDS[] = {Hold::Support,    Hold::Fixed,         Hold::PartlyFixed, Hold::Top,        Hold::Bottom,
                              Hold::TopWarping, Hold::BottomWarping, Hold::Torsion,     Hold::PartTorsion};

bool Has(const CRestraint& restraint, Hold hold)
{
    const auto is = [&](unsigned int bits) { return restraint.IsRestrained(bits, true); };
    switch (hold) {
    case Hold::Support:
        return is(CRestraint::MAJOR_SHEAR);
    case Hold::Fixed:
        return is(CRestraint::MAJOR_ROTATION);
    case Hold::PartlyFixed:
        return is(CRestraint::MAJOR_ROTATION_PART) && !is(CRestraint::MAJOR_ROTATION);
    case Hold::Top:
        return is(CRestraint::FLANGE1_LATERAL);
    case Hold::Bottom:
        return is(CRestraint::FLANGE2_LATERAL);
    case Hold::TopWarping:
        return is(CRestraint::FLANGE1_WARPING);
    case Hold::BottomWarping:
        return is(CRestraint::FLANGE2_WARPING);
    case Hold::Torsion:
        return is(CRestraint::TORSION);
    case Hold::PartTorsion:
        return (is(CRestraint::TORSION_PART) || is(CRestraint::TORSION_FRICTION)) && !is(CRestraint::TORSION);
    }
    return false;
}

const char* NameOf(Hold hold)
{
    switch (hold) {
    case Hold::Support:
        return "supported in the plane of the web";
    case Hold::Fixed:
        return "rotation about the major axis held";
    case Hold::PartlyFixed:
        return "rotation about the major axis held in part";
    case Hold::Top:
        return "flange 1 (top) held laterally";
    case Hold::Bottom:
        return "flange 2 (bottom) held laterally";
    case Hold::TopWarping:
        return "warping of flange 1 held";
    case Hold::BottomWarping:
        return "warping of flange 2 held";
    case Hold::Torsion:
        return "torsion held";
    case Hold::PartTorsion:
        return "torsion held in part";
    }
    return "";
}

// What would run into what stands there already, or into the last of its row, is left out.
class LabelRow {
public:
    /// Where the row's last label begins, which always stands.
    explicit LabelRow(double last) : m_last(last) {}

    bool Fits(double x, double width, bool isLast)
    {
        constexpr double gap = 0.8;
        if (!isLast && (x - width / 2.0 < m_end || x + width / 2.0 + gap > m_last)) return false;
        m_end = x + width / 2.0 + gap;
        return true;
    }

private:
    double m_last;
    double m_end = -1e9;
};

double TextWidth(const std::string& text) { return 1.55 * static_cast<double>(DisplayWidth(text)); }

class MemberPicture {
public:
    MemberPicture(const std::string& id, const DrawnLayout& layout, const MemberAxis& axis, const CSecComp& component) :
        m_layout(layout), m_axis(axis), m_component(component), m_svg(id, Title(), Description())
    {
        const double depth = axis.Paper(component.Dimension(0.0, CSecGeom::DEPTH));
        m_depth = std::isfinite(depth) ? depth : 0.0;
        m_top = 11.0 + LoadRoom();
        m_middle = m_top + m_depth / 2.0;
        // Marks of the two flanges stay apart however slender the member is.
        m_reach = std::max(m_depth / 2.0, 3.2);
    }

    std::string Draw()
    {
        DrawSteel();
        for (std::size_t k = 0; k < m_layout.SubSpanCount(); ++k)
            DrawAlong(k);
        for (std::size_t i = 0; i < m_layout.points.size(); ++i)
            DrawPoint(i);
        DrawNumbers();
        m_svg.Text("note", MemberAxis::WIDTH, 4.6, "end", "1:" + Rounded(m_axis.Scale(), 4));
        const double height = DrawLegend(DimensionY() + 9.0);
        return m_svg.Finish("member", MemberAxis::WIDTH, height);
    }

private:
    static constexpr double MARK = 1.25;
    static constexpr double TALLEST_LOAD = 30.0;

    std::string Title() const
    {
        return "Elevation of the member, " + LengthText(m_layout.Length()) + ", scale 1:" + Rounded(m_axis.Scale(), 4);
    }

    std::string Description() const
    {
        constexpr std::size_t most = 24;
        std::string text;
        for (std::size_t i = 0; i < m_layout.points.size(); ++i) {
            if (i == most) return text + " And so on: the table below has all points.";
            AddItem(text, " ",
                    "Point " + std::to_string(i + 1) + " at " + LengthText(m_layout.points[i].GetPos()) + ": " +
                        HoldWords(RestraintOfPoint(m_layout, i)) + ".");
        }
        return text;
    }

    double LoadRoom() const
    {
        double room = 0.0;
        for (const Steel::CMemberPoint& point : m_layout.points)
            room = std::max(room, m_axis.Paper(point.GetRestraint().LoadHeight()) - m_depth / 2.0 + 7.0);
        return room > 7.0 ? std::min(room, TALLEST_LOAD) : 0.0;
    }

    double BaseY() const { return m_middle + m_reach + MARK + 4.2; }
    double DimensionY() const { return BaseY() + 10.5; }

    void DrawSteel()
    {
        const double left = m_axis.Left();
        const double right = m_axis.Right();
        m_svg.Rect("steel", left, m_top, right - left, m_depth);
        const int shape = m_component.Shape() & CSecGeom::SHAPE_MASK;
        const bool hollow = shape == CSecGeom::SHAPE_CHS || shape == CSecGeom::SHAPE_RHS;
        const bool hasTop = shape != CSecGeom::SHAPE_ANGLE;
        const bool hasBottom = shape != CSecGeom::SHAPE_T;
        const bool tube = shape == CSecGeom::SHAPE_CHS;
        const double T1 =
            m_axis.Paper(m_component.Dimension(0.0, tube ? CSecGeom::WEB_THICKNESS : CSecGeom::FLANGE_THICKNESS));
        const double T2 = shape == CSecGeom::SHAPE_GENERAL_I
                              ? m_axis.Paper(m_component.Dimension(0.0, CSecGeom::BOTTOM_FLANGE_THICKNESS))
                              : T1;
        const char* const edge = hollow ? "hidden" : "edge";
        if (hasTop && T1 > 0.0) m_svg.Line(edge, left, m_top + T1, right, m_top + T1);
        if (hasBottom && T2 > 0.0) m_svg.Line(edge, left, m_top + m_depth - T2, right, m_top + m_depth - T2);
        m_svg.Line("axis", left - 3.0, m_middle, right + 3.0, m_middle);
    }

    void DrawAlong(std::size_t k)
    {
        const CRestraint restraint = RestraintOfSubSpan(m_layout.subSpans[k]);
        const double x1 = m_axis.X(m_layout.points[k].GetPos()) + 2.2;
        const double x2 = m_axis.X(m_layout.points[k + 1].GetPos()) - 2.2;
        if (x2 <= x1) return;
        if (Has(restraint, Hold::Top)) m_svg.Line("along", x1, TopY(), x2, TopY());
        if (Has(restraint, Hold::Bottom)) m_svg.Line("along", x1, BottomY(), x2, BottomY());
        if (Has(restraint, Hold::Torsion)) m_svg.Line("along", x1, m_middle, x2, m_middle);
        if (Has(restraint, Hold::Support)) m_svg.Line("ground", x1, BaseY(), x2, BaseY());
        m_hasAlong =
            m_hasAlong || Has(restraint, Hold::Top) || Has(restraint, Hold::Bottom) || Has(restraint, Hold::Torsion);
    }

    double TopY() const { return m_middle - m_reach; }
    double BottomY() const { return m_middle + m_reach; }

    void DrawPoint(std::size_t i)
    {
        const double x = m_axis.X(m_layout.points[i].GetPos());
        const CRestraint restraint = RestraintOfPoint(m_layout, i);
        const bool first = i == 0;
        const bool last = i + 1 == m_layout.points.size();
        if (!last && m_stations.Fits(x, 0.4, first) && !first) m_svg.Line("station", x, m_top, x, m_top + m_depth);
        for (const Hold hold : ALL_HOLDS) {
            // A wall at the member's end supports it too.
            const bool isWalled = hold == Hold::Support && (first || last) && Has(restraint, Hold::Fixed);
            if (!Has(restraint, hold) || isWalled) continue;
            DrawHold(hold, x, first ? -1.0 : last ? 1.0 : 0.0);
            m_present[static_cast<std::size_t>(hold)] = true;
        }
        DrawLoad(x, restraint.LoadHeight());
    }

    // `side`: the way out of the member, 0 inside of it.
    void DrawHold(Hold hold, double x, double side)
    {
        switch (hold) {
        case Hold::Support:
            return DrawSupport(x, BottomY() + MARK, BaseY());
        case Hold::Fixed:
        case Hold::PartlyFixed:
            return DrawWall(hold == Hold::Fixed ? "wall" : "wall part", x, side);
        case Hold::Top:
            return DrawLateral(x, TopY());
        case Hold::Bottom:
            return DrawLateral(x, BottomY());
        case Hold::TopWarping:
            return m_svg.Rect("warp", x - 0.9 - side * 2.6, TopY() - 0.9, 1.8, 1.8);
        case Hold::BottomWarping:
            return m_svg.Rect("warp", x - 0.9 - side * 2.6, BottomY() - 0.9, 1.8, 1.8);
        case Hold::Torsion:
            return m_svg.Circle("twist", x, m_middle, 1.6);
        case Hold::PartTorsion:
            return m_svg.Circle("twist part", x, m_middle, 1.6);
        }
    }

    void DrawSupport(double x, double apex, double base)
    {
        m_svg.Path("support", PathData().MoveTo(x, apex).LineTo(x - 2.3, base).LineTo(x + 2.3, base).Close());
    }

    void DrawWall(const char* cls, double x, double side)
    {
        const double half = m_reach + 2.5;
        if (side == 0.0) return m_svg.Rect(cls, x - 1.4, m_middle - half, 2.8, 2.0 * half);
        const double wall = x + side * 2.2;
        PathData path;
        path.MoveTo(wall, m_middle - half).LineTo(wall, m_middle + half);
        constexpr double PITCH = 1.8;
        const int hatches = static_cast<int>(std::ceil((2.0 * half - 1.0) / PITCH));
        for (int i = 0; i < hatches; ++i)
            path.MoveTo(wall, m_middle - half + i * PITCH).LineBy(side * PITCH, PITCH);
        m_svg.Path(cls, path);
    }

    void DrawLateral(double x, double y)
    {
        const double c = MARK * 0.707;
        m_svg.Circle("lateral", x, y, MARK);
        m_svg.Path("cross",
                   PathData().MoveTo(x - c, y - c).LineTo(x + c, y + c).MoveTo(x - c, y + c).LineTo(x + c, y - c));
    }

    void DrawLoad(double x, double height)
    {
        if (height == 0.0 || !std::isfinite(height)) return;
        DrawArrow(x, std::max(m_middle - m_axis.Paper(height), m_middle - m_depth / 2.0 - TALLEST_LOAD + 7.0), 5.0);
        m_hasLoad = true;
    }

    void DrawArrow(double x, double tip, double length)
    {
        m_svg.Path(
            "load",
            PathData().MoveTo(x, tip - length).LineTo(x, tip).MoveBy(-0.9, -1.8).LineBy(0.9, 1.8).LineBy(0.9, -1.8));
    }

    void DrawNumbers()
    {
        const std::size_t points = m_layout.points.size();
        const double y = DimensionY();
        m_svg.Line("dim", m_axis.Left(), y, m_axis.Right(), y);
        if (points == 0) return;
        const auto place = [&](std::size_t i) { return LengthText(m_layout.points[i].GetPos()); };
        const auto number = [](std::size_t i) { return std::to_string(i + 1); };
        const double end = m_axis.X(m_layout.points.back().GetPos());
        LabelRow numbers(end - 0.6 * TextWidth(number(points - 1)));
        LabelRow places(end - 0.5 * TextWidth(place(points - 1)));
        LabelRow ticks(end - 0.5);
        for (std::size_t i = 0; i < points; ++i) {
            const double x = m_axis.X(m_layout.points[i].GetPos());
            const bool isLast = i + 1 == points;
            if (numbers.Fits(x, 1.2 * TextWidth(number(i)), isLast)) m_svg.Text("point", x, 4.6, "middle", number(i));
            if (places.Fits(x, TextWidth(place(i)), isLast)) m_svg.Text("", x, y + 4.2, "middle", place(i));
            if (ticks.Fits(x, 1.0, isLast)) m_svg.Line("dim", x - 0.8, y + 0.8, x + 0.8, y - 0.8);
        }
        DrawSubSpanNumbers(y - 4.0);
    }

    void DrawSubSpanNumbers(double y)
    {
        const std::size_t count = m_layout.SubSpanCount();
        const auto middle = [&](std::size_t k) {
            return (m_axis.X(m_layout.points[k].GetPos()) + m_axis.X(m_layout.points[k + 1].GetPos())) / 2.0;
        };
        const auto radius = [](std::size_t k) { return std::max(2.1, TextWidth(std::to_string(k + 1)) / 2.0 + 0.7); };
        if (count == 0) return;
        LabelRow row(middle(count - 1) - radius(count - 1));
        for (std::size_t k = 0; k < count; ++k) {
            if (!row.Fits(middle(k), 2.0 * radius(k), k + 1 == count)) continue;
            m_svg.Circle("subspan", middle(k), y, radius(k));
            m_svg.Text("", middle(k), y + 1.0, "middle", std::to_string(k + 1));
        }
    }

    // The symbols that occur, each with its name. Returns the height of the drawing.
    double DrawLegend(double y)
    {
        double x = 2.0;
        const auto entry = [&](const std::string& name, const std::function<void(double, double)>& symbol) {
            const double width = 6.5 + TextWidth(name) + 3.0;
            if (x + width > MemberAxis::WIDTH && x > 2.0) {
                x = 2.0;
                y += 5.5;
            }
            symbol(x + 2.2, y);
            m_svg.Text("note", x + 5.8, y + 1.0, "start", name);
            x += width;
        };
        const auto present = [&](Hold hold) { return m_present[static_cast<std::size_t>(hold)]; };
        if (present(Hold::Support))
            entry("support in the plane of the web", [&](double a, double b) { DrawSupport(a, b - 1.8, b + 1.8); });
        if (present(Hold::Fixed))
            entry("rotation held", [&](double a, double b) { m_svg.Rect("wall", a - 1.0, b - 1.8, 2.0, 3.6); });
        if (present(Hold::PartlyFixed))
            entry("rotation held in part",
                  [&](double a, double b) { m_svg.Rect("wall part", a - 1.0, b - 1.8, 2.0, 3.6); });
        if (present(Hold::Top) || present(Hold::Bottom))
            entry("flange held laterally", [&](double a, double b) { DrawLateral(a, b); });
        if (present(Hold::TopWarping) || present(Hold::BottomWarping))
            entry("flange held against warping",
                  [&](double a, double b) { m_svg.Rect("warp", a - 0.9, b - 0.9, 1.8, 1.8); });
        if (present(Hold::Torsion))
            entry("torsion held", [&](double a, double b) { m_svg.Circle("twist", a, b, 1.6); });
        if (present(Hold::PartTorsion))
            entry("torsion held in part", [&](double a, double b) { m_svg.Circle("twist part", a, b, 1.6); });
        if (m_hasAlong)
            entry("held along the sub-span", [&](double a, double b) { m_svg.Line("along", a - 2.2, b, a + 2.2, b); });
        if (m_hasLoad) entry("height of load application", [&](double a, double b) { DrawArrow(a, b + 2.0, 4.0); });
        return y + 3.5;
    }

    const DrawnLayout& m_layout;
    const MemberAxis& m_axis;
    const CSecComp& m_component;
    Svg m_svg;
    double m_depth = 0.0; // on the paper, as all that follow
    double m_top = 0.0;
    double m_middle = 0.0;
    double m_reach = 0.0;
    bool m_present[std::size(ALL_HOLDS)] = {};
    LabelRow m_stations{1e9};
    bool m_hasAlong = false;
    bool m_hasLoad = false;
};

} // namespace

std::string HoldWords(const CRestraint& restraint)
{
    std::string text;
    for (const Hold hold : ALL_HOLDS) {
        if (Has(restraint, hold)) AddItem(text, ", ", NameOf(hold));
    }
    return text.empty() ? "free" : text;
}

CRestraint RestraintOfPoint(const DrawnLayout& layout, std::size_t point)
{
    CRestraint restraint = layout.points[point].GetRestraint();
    if (layout.SubSpanCount() == 0) return restraint;
    const bool atRight = point >= layout.SubSpanCount();
    const Steel::CSubSpan& subSpan = layout.subSpans[atRight ? layout.SubSpanCount() - 1 : point];
    restraint.SetForcesAndMoments(atRight ? subSpan.GetForcesRight() : subSpan.GetForcesLeft(),
                                  atRight ? subSpan.GetMomentsRight() : subSpan.GetMomentsLeft(), true);
    return restraint;
}

CRestraint RestraintOfSubSpan(const Steel::CSubSpan& subSpan)
{
    CRestraint restraint = subSpan.GetRestraint();
    const double left = subSpan.GetMomentsLeft().y;
    const double right = subSpan.GetMomentsRight().y;
    const bool oneSign = left * right >= 0.0;
    const bool leftCounts = std::fabs(left) >= std::fabs(right);
    restraint.SetForcesAndMoments(leftCounts ? subSpan.GetForcesLeft() : subSpan.GetForcesRight(),
                                  leftCounts ? subSpan.GetMomentsLeft() : subSpan.GetMomentsRight(), oneSign);
    return restraint;
}

std::string MemberSvg(const std::string& id, const DrawnLayout& layout, const MemberAxis& axis,
                      const CSecComp& component)
{
    return MemberPicture(id, layout, axis, component).Draw();
}

} // namespace Keltrix::Host

#include "report/BucklingDrawing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numbers>

#include "keltrix/design/MomentDiagram.h"
#include "report/Join.h"
#include "report/MemberDrawing.h"
#include "report/Style.h"
#include "report/Svg.h"
#include "sections/SectionOutline.h"
#include "sections/SectionShapes.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Stability::ShapeSample;
using Steel::CRestraint;

// The section on the paper, mm, about its shear centre, y downwards.
class DrawnSection {
public:
    explicit DrawnSection(const CSection& section) : m_outline(MakeOutline(section))
    {
        const double width = m_outline.right - m_outline.left;
        m_scale = std::min(TALLEST / m_outline.top, WIDEST / width);
        FindShearCentre(section);
    }

    double Scale() const { return m_scale; } ///< mm for 1 m
    double Above() const { return (m_outline.top - m_y) * m_scale; }
    double Below() const { return m_y * m_scale; }
    /// How far the middle of its width lies to the right of the shear centre.
    double Middle() const { return ((m_outline.left + m_outline.right) / 2.0 - m_x) * m_scale; }
    /// How far the flange's mark lies above the shear centre.
    double Flange(std::size_t k) const { return (k == 0 ? m_outline.top - m_y : -m_y) * m_scale; }

    std::string Path() const
    {
        std::string path;
        for (const OutlineLoop& loop : m_outline.loops) {
            path += 'M' + Point(loop.x, loop.y);
            for (const OutlineLoop::Piece& piece : loop.pieces) {
                const std::string r = Svg::Number(piece.radius * m_scale);
                // Anticlockwise with y upwards stays anticlockwise on the screen: sweep flag 0.
                path += piece.radius == 0.0 ? "L" : 'A' + r + ',' + r + (piece.anticlockwise ? " 0 0 0 " : " 0 0 1 ");
                path += Point(piece.x, piece.y);
            }
            path += 'Z';
        }
        return path;
    }

private:
    static constexpr double TALLEST = 20.0;
    static constexpr double WIDEST = 14.0;

    std::string Point(double x, double y) const
    {
        return Svg::Number((x - m_x) * m_scale) + ',' + Svg::Number((m_y - y) * m_scale);
    }

    // From the outline's own datum. The heights are those of Stability::SectionConstants; a channel's shear centre lies outside
    // of its web, h² A e/(4 Ixx) from the middle of it, with e from there to the centroid.
    void FindShearCentre(const CSection& section)
    {
        const CSecComp& component = section.Component(0);
        const double T = component.Dimension(0.0, CSecGeom::FLANGE_THICKNESS);
        const int shape = component.Shape() & CSecGeom::SHAPE_MASK;
        m_y = m_outline.top / 2.0;
        if (shape == CSecGeom::SHAPE_T) m_y = m_outline.top - T / 2.0;
        if (shape == CSecGeom::SHAPE_GENERAL_I) {
            const auto constants = Stability::MakeSectionConstants(section, 1.0, 1.0, nullptr);
            if (constants) m_y = m_outline.top - T / 2.0 - constants->flange[0];
        }
        if (shape != CSecGeom::SHAPE_CHANNEL) return;
        const auto geometry = MakeGeometry(section);
        if (!geometry) return;
        const double web = component.Dimension(0.0, CSecGeom::WEB_THICKNESS) / 2.0;
        const double h = m_outline.top - T;
        m_x = web - h * h * geometry->Area() * (geometry->Xbar() - web) / (4.0 * geometry->Ixx());
    }

    SectionOutline m_outline;
    double m_scale = 0.0;
    double m_x = 0.0;
    double m_y = 0.0;
};

// What holds against sideways movement, twist and warping.
struct Held {
    explicit Held(const CRestraint& restraint)
    {
        const auto is = [&](unsigned int bits) { return restraint.IsRestrained(bits, true); };
        lateral = {is(CRestraint::FLANGE1_LATERAL), is(CRestraint::FLANGE2_LATERAL)};
        warping = {is(CRestraint::FLANGE1_WARPING), is(CRestraint::FLANGE2_WARPING)};
        torsion = is(CRestraint::TORSION);
    }

    std::array<bool, 2> lateral{};
    std::array<bool, 2> warping{};
    bool torsion = false;
};

class BucklingPicture {
public:
    BucklingPicture(std::string id, const BucklingReport& report, const DrawnLayout& layout, const MemberAxis& axis,
                    const CSection& section) :
        m_report(report),
        m_layout(layout), m_axis(axis), m_unit(report.Governing()),
        m_moments(layout.points, layout.subSpans, Design::Bending::Major), m_section(section), m_id(std::move(id)),
        m_svg(m_id, Title(), Description())
    {
        FindReach();
    }

    // Above the drawing, and the style that a file of its own needs.
    void Head(const std::string& title, const std::string& style)
    {
        m_svg.Raw("<style>" + style + "</style>\n");
        m_svg.Text("name", 2.0, 5.0, "start", title);
        m_svg.Text("value", 2.0, 10.0, "start", VerdictSentence(m_report));
        m_top = 12.0;
    }

    std::string Draw()
    {
        m_base = m_top + 8.0 + m_up;
        m_svg.Text("note", 2.0, m_top + 3.4, "start",
                   "Plan, seen from above: " + std::string(!m_unit             ? "nothing buckles"
                                                           : m_report.IsHeld() ? "the buckled shape, exaggerated"
                                                                               : "the free motion, exaggerated"));
        if (m_unit) DrawUnit();
        m_svg.Line("axis", m_axis.Left() - 3.0, m_base, m_axis.Right() + 3.0, m_base);
        for (std::size_t k = 0; k < m_layout.SubSpanCount(); ++k)
            DrawAlong(k);
        for (std::size_t i = 0; i < m_layout.points.size(); ++i)
            DrawPoint(i);
        double y = m_base + m_down + 3.0;
        if (m_unit) y = DrawSections(y);
        return m_svg.Finish("buckling", MemberAxis::WIDTH, DrawLegend(y + 3.5));
    }

private:
    static constexpr int SECTIONS = 7;
    static constexpr double MARK = 2.4;         // height of a mark
    static constexpr double MOST_TWIST = 0.436; // radians: 25°

    // --- Words ---

    std::string Title() const
    {
        if (!m_unit) return "Plan of the member: nothing buckles";
        return (m_report.IsHeld() ? "Buckled shape from " : "Free motion from ") + LengthText(m_unit->found.start) +
               " to " + LengthText(m_unit->found.end);
    }

    double PlaceOf(int i) const
    {
        return m_unit->found.start + (m_unit->found.end - m_unit->found.start) * i / (SECTIONS - 1);
    }

    ShapeSample At(double x) const { return ShapeAt(ShownShape(m_unit->found), x); }

    std::string Description() const
    {
        std::string text = VerdictSentence(m_report) + ".";
        if (!m_unit) return text;
        text += " Sideways movement of flange 1 and flange 2, the largest as 1:";
        const auto number = [](double value) { return Rounded(std::round(value * 100.0) / 100.0 + 0.0, 3); };
        std::string places;
        for (int i = 0; i < SECTIONS; ++i) {
            const ShapeSample sample = At(PlaceOf(i));
            AddItem(places, "; ",
                    number(sample.flange[0]) + " and " + number(sample.flange[1]) + " at " + LengthText(sample.x));
        }
        return text + ' ' + places + '.';
    }

    // --- Plan ---

    // Room for the curves and for the marks on both sides of the line.
    void FindReach()
    {
        constexpr double tallest = 14.0;
        constexpr double room = 20.0;
        constexpr double least = 5.5;
        double most = 0.0;
        double fewest = 0.0;
        if (m_unit) {
            for (const ShapeSample& sample : ShownShape(m_unit->found)) {
                for (const double value : sample.flange) {
                    most = std::max(most, value);
                    fewest = std::min(fewest, value);
                }
                m_twist = std::max(m_twist, std::fabs(sample.phi));
            }
            m_sideways = std::min(tallest, room / std::max(most - fewest, 1.0));
        }
        m_up = std::max(m_sideways * most, least);
        m_down = std::max(-m_sideways * fewest, least);
    }

    using Side = std::function<double(const ShapeSample&)>;

    // As many as the shape has, so that no wave is lost, within what a drawing can show.
    std::vector<ShapeSample> Samples() const
    {
        const std::size_t chords = std::clamp<std::size_t>(ShownShape(m_unit->found).size(), 48, 400);
        std::vector<ShapeSample> samples;
        samples.reserve(chords + 1);
        for (std::size_t i = 0; i <= chords; ++i)
            samples.push_back(At(m_unit->found.start + (m_unit->found.end - m_unit->found.start) *
                                                           static_cast<double>(i) / static_cast<double>(chords)));
        return samples;
    }

    double PlanY(double displacement) const { return m_base - displacement * m_sideways; }

    PathData Curve(const std::vector<ShapeSample>& samples, const Side& side) const
    {
        PathData path;
        path.MoveTo(m_axis.X(samples.front().x), PlanY(side(samples.front())));
        for (std::size_t i = 1; i < samples.size(); ++i)
            path.LineTo(m_axis.X(samples[i].x), PlanY(side(samples[i])));
        return path;
    }

    void DrawUnit()
    {
        const std::vector<ShapeSample> samples = Samples();
        const auto flange = [](std::size_t k) { return [k](const ShapeSample& s) { return s.flange[k]; }; };
        PathData between = Curve(samples, flange(0));
        for (std::size_t i = samples.size(); i-- > 0;)
            between.LineTo(m_axis.X(samples[i].x), PlanY(samples[i].flange[1]));
        m_svg.Path("fill", between.Close());
        m_svg.Path("centre", Curve(samples, [](const ShapeSample& s) { return s.v; }));
        m_svg.Path("flange one", Curve(samples, flange(0)));
        // Broken, so that the other shows where both are together.
        m_svg.Path("flange two", Curve(samples, flange(1)));
    }

    // What holds at a share of a sub-span; the moment there tells the compression flange.
    Held HeldAlong(std::size_t k, double share) const
    {
        const Steel::CSubSpan& subSpan = m_layout.subSpans[k];
        const Design::MomentRange moment = m_moments.InSubSpan(static_cast<int>(k), share);
        CRestraint restraint = subSpan.GetRestraint();
        restraint.SetForcesAndMoments(subSpan.GetForcesLeft(), {0.0, moment.Worst(), 0.0},
                                      moment.least * moment.greatest > 0.0);
        return Held(restraint);
    }

    // In parts between contraflexures: what holds the compression flange changes sides there.
    void DrawAlong(std::size_t k)
    {
        std::vector<double> shares{0.0};
        for (const double zero : m_moments.Curves(static_cast<int>(k)).front().Zeros())
            if (m_moments.IsBalanced(static_cast<int>(k)) && zero > shares.back()) shares.push_back(zero);
        shares.push_back(1.0);
        for (std::size_t i = 0; i + 1 < shares.size(); ++i)
            DrawPart(k, shares[i], shares[i + 1]);
    }

    void DrawPart(std::size_t k, double from, double to)
    {
        const double start = m_axis.X(m_layout.points[k].GetPos());
        const double length = m_axis.X(m_layout.points[k + 1].GetPos()) - start;
        const double x1 = start + from * length + 2.0;
        const double x2 = start + to * length - 2.0;
        if (x2 <= x1) return;
        const Held held = HeldAlong(k, 0.5 * (from + to));
        for (std::size_t flange = 0; flange < 2; ++flange) {
            if (!held.lateral[flange]) continue;
            const double y = m_base + (flange == 0 ? -1.2 : 1.2);
            m_svg.Line(flange == 0 ? "along" : "along two", x1, y, x2, y);
            m_hasAlong = true;
        }
        if (held.torsion) m_svg.Line("along twisted", x1, m_base, x2, m_base);
    }

    void DrawPoint(std::size_t i)
    {
        const double x = m_axis.X(m_layout.points[i].GetPos());
        const bool isLast = i + 1 == m_layout.points.size();
        if (!isLast && i > 0 && x - m_lastMark < 0.5) return;
        m_lastMark = x;
        m_svg.Line("station", x, m_base - 0.8, x, m_base + 0.8);
        const Held held(RestraintOfPoint(m_layout, i));
        for (std::size_t flange = 0; flange < 2; ++flange) {
            const double away = flange == 0 ? -1.0 : 1.0;
            if (held.lateral[flange]) DrawBrace(flange, x, m_base, 0.0, away);
            if (held.warping[flange]) m_svg.Rect("warp", x - 0.8, m_base + away * (MARK + 1.5) - 0.8, 1.6, 1.6);
            m_hasBrace[flange] = m_hasBrace[flange] || held.lateral[flange];
            m_hasWarping = m_hasWarping || held.warping[flange];
        }
        if (held.torsion) m_svg.Circle("twist", x, m_base, 1.1);
        m_hasTorsion = m_hasTorsion || held.torsion;
    }

    // A triangle whose tip stands at the flange that it holds, and whose base lies in the direction given.
    void DrawBrace(std::size_t flange, double x, double y, double right, double down)
    {
        const double bx = x + MARK * right;
        const double by = y + MARK * down;
        const double half = 0.55 * MARK;
        m_svg.Path(flange == 0 ? "brace" : "brace two", PathData()
                                                            .MoveTo(x, y)
                                                            .LineTo(bx - half * down, by + half * right)
                                                            .LineTo(bx + half * down, by - half * right)
                                                            .Close());
    }

    // --- Sections ---

    // What holds a section of the unit, points and sub-spans together.
    Held HeldAt(double x) const
    {
        Held held{CRestraint()};
        const double near = 1e-6 * m_layout.Length();
        const auto add = [&](const Held& more) {
            for (std::size_t k = 0; k < 2; ++k)
                held.lateral[k] = held.lateral[k] || more.lateral[k];
            held.torsion = held.torsion || more.torsion;
        };
        for (std::size_t i = 0; i < m_layout.points.size(); ++i)
            if (std::fabs(m_layout.points[i].GetPos() - x) <= near) add(Held(RestraintOfPoint(m_layout, i)));
        for (std::size_t k = 0; k < m_layout.SubSpanCount(); ++k) {
            const double start = m_layout.points[k].GetPos();
            const double length = m_layout.points[k + 1].GetPos() - start;
            if (length > 0.0 && start - near <= x && x <= start + length + near)
                add(HeldAlong(k, std::clamp((x - start) / length, 0.0, 1.0)));
        }
        return held;
    }

    // Returns where they end.
    double DrawSections(double y)
    {
        m_svg.Raw("<defs><path id=\"" + m_id + "-o\" d=\"" + m_section.Path() + "\"/></defs>\n");
        // Twist and movement are exaggerated alike, so that the flanges of a section are where the plan has them.
        double sideways = 7.0;
        if (m_twist > 0.0) sideways = std::min(sideways, MOST_TWIST * m_section.Scale() / m_twist);
        // Below their places, where the unit is long enough on the paper.
        const bool isWide = m_axis.X(m_unit->found.end) - m_axis.X(m_unit->found.start) > 120.0;
        const double centre = y + 7.5 + m_section.Above();
        const double end = centre + m_section.Below() + 3.0;
        for (int i = 0; i < SECTIONS; ++i) {
            const ShapeSample sample = At(PlaceOf(i));
            const double x = isWide ? m_axis.X(sample.x) : 13.0 + (MemberAxis::WIDTH - 26.0) * i / (SECTIONS - 1);
            m_svg.Path("leader", PathData()
                                     .MoveTo(m_axis.X(sample.x), y)
                                     .LineTo(m_axis.X(sample.x), y + 1.0)
                                     .LineTo(x, y + 4.0)
                                     .LineTo(x, y + 5.0));
            DrawSection(x, centre, sample, sideways);
            m_svg.Text("", x, end + 3.0, "middle", LengthText(sample.x));
        }
        m_svg.Text("note", 2.0, end + 7.5, "start",
                   "Sections, seen along the member from its start: where they were (broken) and as they " +
                       std::string(m_report.IsHeld() ? "buckle" : "are free to move"));
        return end + 8.5;
    }

    // Seen along the member, what is above the line in plan lies to the left.
    void DrawSection(double x, double y, const ShapeSample& sample, double sideways)
    {
        const double twist = -sample.phi * sideways / m_section.Scale() * 180.0 / std::numbers::pi;
        const auto use = [&](const char* cls, double at, double turn) {
            m_svg.Raw("<use class=\"" + std::string(cls) + "\" href=\"#" + m_id + "-o\" transform=\"translate(" +
                      Svg::Number(at) + ' ' + Svg::Number(y) + ')' +
                      (turn == 0.0 ? std::string() : " rotate(" + Svg::Number(turn) + ')') + "\"/>\n");
        };
        const double centre = x - m_section.Middle();
        use("ghost", centre, 0.0);
        use("buckled", centre - sample.v * sideways, twist);
        const Held held = HeldAt(sample.x);
        for (std::size_t k = 0; k < 2; ++k)
            if (held.lateral[k]) DrawBrace(k, x, y - m_section.Flange(k), 0.0, k == 0 ? -1.0 : 1.0);
        if (held.torsion) m_svg.Circle("twist", centre, y, 1.1);
    }

    // --- Legend ---

    double DrawLegend(double y)
    {
        double x = 2.0;
        const auto entry = [&](const std::string& name, const std::function<void(double, double)>& symbol) {
            const double width = 6.5 + 1.5 * static_cast<double>(DisplayWidth(name)) + 3.0;
            if (x + width > MemberAxis::WIDTH && x > 2.0) {
                x = 2.0;
                y += 5.0;
            }
            symbol(x + 2.2, y);
            m_svg.Text("note", x + 5.8, y + 1.0, "start", name);
            x += width;
        };
        const auto line = [&](const char* cls) {
            return [&, cls](double a, double b) { m_svg.Path(cls, PathData().MoveTo(a - 2.6, b).LineTo(a + 2.6, b)); };
        };
        if (m_unit) {
            entry(FlangeName(0), line("flange one"));
            entry(FlangeName(1), line("flange two"));
            entry("shear centre", line("centre"));
        }
        for (std::size_t k = 0; k < 2; ++k) {
            const double down = k == 0 ? -1.0 : 1.0;
            if (m_hasBrace[k])
                entry("flange " + std::to_string(k + 1) + " held laterally",
                      [&](double a, double b) { DrawBrace(k, a, b - 0.5 * MARK * down, 0.0, down); });
        }
        if (m_hasTorsion) entry("torsion held", [&](double a, double b) { m_svg.Circle("twist", a, b, 1.1); });
        if (m_hasWarping)
            entry("flange held against warping",
                  [&](double a, double b) { m_svg.Rect("warp", a - 0.8, b - 0.8, 1.6, 1.6); });
        if (m_hasAlong)
            entry("held along the sub-span", [&](double a, double b) { m_svg.Line("along", a - 2.2, b, a + 2.2, b); });
        return y + 3.5;
    }

    const BucklingReport& m_report;
    const DrawnLayout& m_layout;
    const MemberAxis& m_axis;
    const BucklingUnit* const m_unit;
    const Design::MomentDiagram m_moments;
    const DrawnSection m_section;
    const std::string m_id;
    Svg m_svg;
    double m_sideways = 0.0; // mm for a displacement of 1, in plan
    double m_twist = 0.0;    // the largest, radians
    double m_top = 0.0;      // on the paper, as all that follow
    double m_up = 0.0;
    double m_down = 0.0;
    double m_base = 0.0;
    double m_lastMark = 0.0;
    std::array<bool, 2> m_hasBrace{};
    bool m_hasTorsion = false;
    bool m_hasWarping = false;
    bool m_hasAlong = false;
};

} // namespace

std::string BucklingSvg(const std::string& id, const BucklingReport& report, const DrawnLayout& layout,
                        const MemberAxis& axis, const CSection& section)
{
    return BucklingPicture(id, report, layout, axis, section).Draw();
}

std::string BucklingSvgFile(const BucklingReport& report, Steel::CSteelMemberGen& member, const std::string& title)
{
    const DrawnLayout layout{member.GetMemberPointVec(), member.GetSubSpanVec()};
    const CSection section = member.GetKeltrixSec();
    const MemberAxis axis(layout, section.Component(0).Dimension(0.0, CSecGeom::DEPTH));
    BucklingPicture picture("buckling", report, layout, axis, section);
    picture.Head(title, DrawingStyle());
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + picture.Draw();
}

} // namespace Keltrix::Host

#include "report/LoadDrawing.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>

#include "loads/LoadText.h"
#include "report/Join.h"
#include "report/MemberAxis.h"
#include "report/Style.h"
#include "report/Svg.h"
#include "text/Html.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using namespace Statics;
using Steel::CRestraint;

constexpr double WIDTH = MemberAxis::WIDTH;

double TextWidth(const std::string& text) { return 1.7 * static_cast<double>(DisplayWidth(text)); }

bool Is(const CRestraint& restraint, unsigned int bits) { return restraint.IsRestrained(bits, true); }

std::string Line(const CString& text) { return PrintableLine(Utf8(text)); }

// Rows of labels above each other, each as low as those before it allow.
class Lanes {
public:
    std::size_t Place(double from, double to)
    {
        constexpr double gap = 1.0;
        std::size_t lane = 0;
        while (lane < m_lanes.size() && std::any_of(m_lanes[lane].begin(), m_lanes[lane].end(), [&](const auto& taken) {
                   return from < taken.second + gap && taken.first < to + gap;
               }))
            ++lane;
        if (lane == m_lanes.size()) m_lanes.emplace_back();
        m_lanes[lane].emplace_back(from, to);
        return lane;
    }
    double Count() const { return static_cast<double>(m_lanes.size()); }

private:
    std::vector<std::vector<std::pair<double, double>>> m_lanes;
};

class LoadPicture {
public:
    LoadPicture(const std::string& id, const std::string& title, const std::string& description,
                const Statics::Beam& beam, const LoadReport& report) :
        m_beam(beam),
        m_report(report), m_svg(id, title, description), m_scale(DrawingScale(beam.length, 158.0))
    {}

    void Head()
    {
        m_svg.Raw("<style>" + DrawingStyle() + "</style>\n");
        m_svg.Text("name", 0.5, 4.6, "start", PrintableLine(m_report.title));
        std::string line = PrintableLine(m_report.section);
        if (!m_report.grade.empty()) line += " in " + PrintableLine(m_report.grade);
        m_svg.Text("note", 0.5, 8.8, "start", line);
        m_y = 11.0;
    }

    void Elevation()
    {
        m_svg.Text("note", WIDTH, m_y + 3.4, "end", "along the member 1:" + Rounded(m_scale, 4));
        if (!m_report.IsLevel())
            m_svg.Text("note", 0.5, m_y + 3.4, "start",
                       "Drawn lying: it stands at " + Rounded(m_report.inclination * 180.0 / std::numbers::pi, 4) +
                           "° to the horizontal, x upwards from its left end. Loads without a word act straight down.");
        const double base = m_y + 11.0;
        DrawMember(base);
        for (const Restraint& restraint : m_beam.restraints)
            DrawAlong(restraint, base);
        for (const Support& support : m_beam.supports)
            DrawFlangesHeld(support, base);
        DrawSpans(base + 13.5);
        m_y = DrawLegend(base + 22.0) + 3.0;
    }

    static constexpr std::size_t MOST_CASES = 12;

    static std::size_t CaseCount(const LoadReport& report) { return std::min(MOST_CASES, report.cases.size()); }

    void Cases() { Cases(0, CaseCount(m_report)); }
    void Cases(std::size_t first, std::size_t end)
    {
        for (std::size_t c = first; c < end; ++c)
            DrawCase(c);
        if (end == MOST_CASES && m_report.cases.size() > MOST_CASES)
            Note(std::to_string(m_report.cases.size() - MOST_CASES) + " more cases are in the tables alone.");
    }

    void Envelopes()
    {
        if (m_report.HasUltimate())
            Note("Greatest and least of the ultimate combinations. The number in brackets is that of the combination.");
        for (const ActionEnvelope& envelope : m_report.envelopes)
            if (!envelope.whole.IsZero()) DrawEnvelope(envelope);
    }

    void Shape()
    {
        if (m_report.shape.check >= 0) DrawShape();
    }

    std::string Finish() const { return m_svg.Finish("member", WIDTH, m_y + 1.0); }

private:
    static constexpr double DEPTH = 2.4; // of the member on the paper
    static constexpr double REACH = 3.0; // marks of flanges from the member's line
    static constexpr double ROOM = 20.0; // mm of paper for a curve
    static constexpr double BAND = 4.5;  // the largest distributed load
    static constexpr double ARROW = 7.0;
    static constexpr double LABEL = 3.6;
    static constexpr double LABEL_GAP = 1.0;

    double X(double at) const { return (WIDTH - m_beam.length * 1e3 / m_scale) / 2.0 + at * 1e3 / m_scale; }
    double Left() const { return X(0.0); }
    double Right() const { return X(m_beam.length); }

    void Note(const std::string& text)
    {
        m_svg.Text("note", 0.5, m_y + 3.0, "start", text);
        m_y += 5.5;
    }

    // --- The member and what holds it ---

    void DrawMember(double y)
    {
        m_svg.Rect("steel", Left(), y - DEPTH / 2.0, Right() - Left(), DEPTH);
        for (const Support& support : m_beam.supports)
            DrawSupport(support, y);
        for (const Hinge& hinge : m_beam.hinges) {
            m_svg.Circle("support hinge", X(hinge.at), y, 1.1);
            m_hasHinge = true;
        }
    }

    bool IsAxiallyHeld(const Support& support) const
    {
        double held = m_beam.axiallyHeldAt ? *m_beam.axiallyHeldAt : INFINITY;
        if (!m_beam.axiallyHeldAt)
            for (const Support& other : m_beam.supports)
                held = std::min(held, other.at);
        return std::fabs(support.at - held) <= 1e-9 * m_beam.length;
    }

    void DrawSupport(const Support& support, double y)
    {
        const double x = X(support.at);
        const bool isFixed = Is(support.holds, CRestraint::MAJOR_ROTATION) && !(support.rotation > 0.0);
        if (support.vertical > 0.0) {
            DrawSpring(x, y + DEPTH / 2.0);
        } else if (Is(support.holds, CRestraint::MAJOR_SHEAR)) {
            if (isFixed) {
                DrawWall(x, y, support.at <= 0.0 ? -1.0 : support.at >= m_beam.length ? 1.0 : 0.0);
            } else {
                DrawTriangle(x, y + DEPTH / 2.0, IsAxiallyHeld(support));
            }
        }
        if (support.rotation > 0.0) DrawTurn(x, y);
    }

    void DrawTriangle(double x, double apex, bool isPin)
    {
        const double base = apex + 4.0;
        m_svg.Path(isPin ? "support pin" : "support roller",
                   PathData().MoveTo(x, apex).LineTo(x - 2.2, base).LineTo(x + 2.2, base).Close());
        if (!isPin) m_svg.Line("base", x - 2.6, base + 1.0, x + 2.6, base + 1.0);
        (isPin ? m_hasPin : m_hasRoller) = true;
    }

    void DrawWall(double x, double y, double side)
    {
        constexpr double half = 4.5;
        constexpr double pitch = 1.8;
        m_hasWall = true;
        if (side == 0.0) return m_svg.Rect("wall", x - 1.2, y - half, 2.4, 2.0 * half);
        PathData path;
        path.MoveTo(x, y - half).LineTo(x, y + half);
        for (int i = 0; i < 5; ++i)
            path.MoveTo(x, y - half + i * pitch).LineBy(side * pitch, pitch);
        m_svg.Path("wall", path);
    }

    void DrawSpring(double x, double top)
    {
        PathData path;
        path.MoveTo(x, top).LineBy(0.0, 0.8);
        for (const double dx : {1.3, -2.6, 2.6, -2.6, 1.3})
            path.LineBy(dx, 0.6);
        path.LineBy(0.0, 0.6);
        m_svg.Path("wall spring", path);
        m_svg.Line("base", x - 2.2, top + 4.4, x + 2.2, top + 4.4);
        m_hasSpring = true;
    }

    // A spring against rotation.
    void DrawTurn(double x, double y)
    {
        PathData path;
        for (int i = 0; i <= 36; ++i) {
            const double angle = i * std::numbers::pi / 12.0;
            const double r = 0.4 + 2.2 * i / 36.0;
            if (i == 0)
                path.MoveTo(x + r, y);
            else
                path.LineTo(x + r * std::cos(angle), y + r * std::sin(angle));
        }
        m_svg.Path("wall turn", path);
        m_hasTurn = true;
    }

    void DrawAlong(const Restraint& restraint, double y)
    {
        const double x1 = X(restraint.from) + 0.8;
        const double x2 = X(std::min(restraint.to, m_beam.length)) - 0.8;
        if (x2 <= x1) return;
        const bool isTorsion = Is(restraint.holds, CRestraint::TORSION);
        if (isTorsion || Is(restraint.holds, CRestraint::FLANGE1_LATERAL)) {
            m_svg.Line("along", x1, y - REACH, x2, y - REACH);
            m_hasAlong = true;
        }
        if (isTorsion || Is(restraint.holds, CRestraint::FLANGE2_LATERAL)) {
            m_svg.Line("along", x1, y + REACH, x2, y + REACH);
            m_hasAlong = true;
        }
    }

    // What carries loads has its own symbol.
    void DrawFlangesHeld(const Support& support, double y)
    {
        if (support.vertical > 0.0 || Is(support.holds, CRestraint::MAJOR_SHEAR)) return;
        if (Is(support.holds, CRestraint::FLANGE1_LATERAL)) DrawLateral(X(support.at), y - REACH);
        if (Is(support.holds, CRestraint::FLANGE2_LATERAL)) DrawLateral(X(support.at), y + REACH);
    }

    void DrawLateral(double x, double y)
    {
        constexpr double r = 1.25;
        constexpr double c = r * 0.707;
        m_svg.Circle("lateral", x, y, r);
        m_svg.Path("cross",
                   PathData().MoveTo(x - c, y - c).LineTo(x + c, y + c).MoveTo(x - c, y + c).LineTo(x + c, y - c));
        m_hasLateral = true;
    }

    void DrawSpans(double y)
    {
        m_svg.Line("dim", Left(), y, Right(), y);
        Lanes lanes;
        const auto tick = [&](double at) { m_svg.Line("dim", X(at) - 0.8, y + 0.8, X(at) + 0.8, y - 0.8); };
        for (const Span& span : m_report.spans) {
            tick(span.from);
            tick(span.to);
            const std::string text = Metres(span.Length());
            const double x = X((span.from + span.to) / 2.0);
            // A second row takes what the first one has no room for.
            const auto row = static_cast<double>(lanes.Place(x - TextWidth(text) / 2.0, x + TextWidth(text) / 2.0));
            if (row < 3.0) m_svg.Text("value", x, y + 4.0 + 3.2 * row, "middle", text);
        }
    }

    // The symbols that occur, each with its name. Returns where the next part begins.
    double DrawLegend(double y)
    {
        double x = 2.0;
        bool isEmpty = true;
        const auto entry = [&](bool occurs, const std::string& name,
                               const std::function<void(double, double)>& symbol) {
            if (!occurs) return;
            const double width = 6.5 + 1.5 * static_cast<double>(DisplayWidth(name)) + 3.0;
            if (x + width > WIDTH && x > 2.0) {
                x = 2.0;
                y += 6.0;
            }
            symbol(x + 2.4, y);
            m_svg.Text("note", x + 6.2, y + 1.0, "start", name);
            x += width;
            isEmpty = false;
        };
        const bool pin = m_hasPin, roller = m_hasRoller, wall = m_hasWall, spring = m_hasSpring, turn = m_hasTurn;
        entry(pin, "support", [&](double a, double b) { DrawTriangle(a, b - 2.0, true); });
        entry(roller, "support that slides", [&](double a, double b) { DrawTriangle(a, b - 2.4, false); });
        entry(wall, "fixed", [&](double a, double b) { m_svg.Rect("wall", a - 1.0, b - 2.0, 2.0, 4.0); });
        entry(spring, "spring", [&](double a, double b) { DrawSpring(a, b - 2.2); });
        entry(turn, "spring against rotation", [&](double a, double b) { DrawTurn(a, b); });
        entry(m_hasHinge, "hinge", [&](double a, double b) { m_svg.Circle("support hinge", a, b, 1.1); });
        entry(m_hasLateral, "flange held laterally", [&](double a, double b) { DrawLateral(a, b); });
        entry(m_hasAlong, "flange held along the member",
              [&](double a, double b) { m_svg.Line("along", a - 2.2, b, a + 2.2, b); });
        return isEmpty ? y - 2.0 : y + 3.0;
    }

    // --- Loads of a case ---

    // The loads of a case with where their labels are: distributed ones in lanes next to the member, all others above them.
    struct PlacedLoad {
        const Load* load;
        std::string label;
        std::size_t lane = 0;
        double textX = 0.0; ///< middle of the label

        double Half() const { return TextWidth(label) / 2.0; }
    };

    // Labels of loads close to each other stand on the right of their arrows, on the left where the sheet ends, and higher than all labels beside them on
    // that side, so that no arrow crosses a label.
    void PlaceLabels(std::vector<PlacedLoad>& loads) const
    {
        std::vector<PlacedLoad*> order;
        order.reserve(loads.size());
        for (PlacedLoad& one : loads)
            order.push_back(&one);
        std::stable_sort(order.begin(), order.end(),
                         [](const PlacedLoad* a, const PlacedLoad* b) { return a->load->from < b->load->from; });
        for (std::size_t first = 0; first < order.size();) {
            std::size_t last = first;
            double reach = order[first]->textX + order[first]->Half();
            for (std::size_t next = first + 1; next < order.size(); ++next) {
                if (order[next]->textX - order[next]->Half() >= reach + LABEL_GAP) break;
                reach = std::max(reach, order[next]->textX + order[next]->Half());
                last = next;
            }
            if (last > first) PlaceGroup(order, first, last);
            first = last + 1;
        }
        RaiseLabels(order);
    }

    // Beside their arrows: on the left where one of them would leave the sheet on the right.
    void PlaceGroup(const std::vector<PlacedLoad*>& order, std::size_t first, std::size_t last) const
    {
        bool isLeft = false;
        for (std::size_t i = first; i <= last; ++i)
            isLeft = isLeft || X(order[i]->load->from) + 2.0 * order[i]->Half() > WIDTH;
        for (std::size_t i = first; i <= last; ++i) {
            const double half = order[i]->Half();
            const double beside = X(order[i]->load->from) + (isLeft ? -half - 0.8 : half + 0.8);
            order[i]->textX = std::clamp(beside, half, WIDTH - half);
        }
    }

    // Whether the arrow of another load would cross a label if it came from above.
    bool Covers(const PlacedLoad& label, const PlacedLoad& other) const
    {
        const bool isCentred = std::fabs(label.textX - X(label.load->from)) < 0.5;
        return !isCentred && std::fabs(X(other.load->from) - label.textX) < label.Half() + LABEL_GAP;
    }

    // A label that covers another load's arrow is above that load's label; of others side by side the later one is.
    void RaiseLabels(const std::vector<PlacedLoad*>& order) const
    {
        bool isRaised = true;
        for (std::size_t pass = 0; isRaised && pass < order.size(); ++pass) {
            isRaised = false;
            for (std::size_t i = 0; i < order.size(); ++i)
                for (std::size_t k = i + 1; k < order.size(); ++k) {
                    if (std::fabs(order[i]->textX - order[k]->textX) >= order[i]->Half() + order[k]->Half() + LABEL_GAP)
                        continue;
                    const bool isFirstAbove = Covers(*order[i], *order[k]) && !Covers(*order[k], *order[i]);
                    PlacedLoad& above = *order[isFirstAbove ? i : k];
                    const PlacedLoad& below = *order[isFirstAbove ? k : i];
                    if (above.lane > below.lane || below.lane + 1 >= order.size()) continue;
                    above.lane = below.lane + 1;
                    isRaised = true;
                }
        }
    }

    // On a member that is steep a load straight down runs along it.
    bool RunsAlong(const Load& load) const
    {
        return load.direction == Direction::Axial ||
               (load.shape != LoadShape::Moment && load.direction == Direction::Gravity &&
                std::fabs(std::cos(m_report.inclination)) < 0.3);
    }
    // Above zero where it acts along x.
    double Along(const Load& load) const
    {
        const double value = load.value != 0.0 ? load.value : load.valueTo;
        return load.direction == Direction::Gravity ? -value * std::sin(m_report.inclination) : value;
    }

    bool IsBand(const Load& load) const { return load.shape == LoadShape::Distributed && !RunsAlong(load); }

    void DrawCase(std::size_t index)
    {
        constexpr std::size_t most = 40;
        std::vector<PlacedLoad> bands;
        std::vector<PlacedLoad> others;
        Lanes bandLanes;
        double largest = 0.0;
        std::size_t count = 0;
        for (const Load& load : m_report.loads) {
            if (load.caseIndex != index || ++count > most) continue;
            PlacedLoad placed{&load, SizeOf(load, m_report.IsLevel())};
            if (const std::string height = HeightOf(load); !height.empty()) placed.label += ", " + height;
            const bool isBand = IsBand(load);
            const double half = TextWidth(placed.label) / 2.0;
            placed.textX = LabelX(load, half);
            if (isBand)
                placed.lane = bandLanes.Place(std::min(placed.textX - half, X(load.from)),
                                              std::max(placed.textX + half, X(load.to)));
            if (isBand) largest = std::max({largest, std::fabs(load.value), std::fabs(load.valueTo)});
            (isBand ? bands : others).push_back(placed);
        }
        PlaceLabels(others);
        std::size_t labelLanes = 0;
        for (const PlacedLoad& placed : others)
            labelLanes = std::max(labelLanes, placed.lane + 1);
        const Case& c = m_report.cases[index];
        const std::string kind = NameOf(c.kind);
        m_svg.Text("name", 0.5, m_y + 3.4, "start", Line(c.name));
        m_svg.Text("note", 0.5 + 2.1 * static_cast<double>(DisplayWidth(Line(c.name))) + 3.0, m_y + 3.4, "start",
                   kind + (c.bySpan && m_report.spans.size() > 1 ? ", on any spans" : ""));
        const double bandTop = bandLanes.Count() * (BAND + LABEL);
        const double over = others.empty() ? 0.0 : ARROW + static_cast<double>(labelLanes) * LABEL;
        const double base = m_y + 6.5 + bandTop + over + DEPTH / 2.0 + 1.0;
        DrawMember(base);
        const double top = base - DEPTH / 2.0 - 0.6;
        for (const PlacedLoad& placed : bands)
            DrawBand(placed, top - static_cast<double>(placed.lane) * (BAND + LABEL), largest);
        for (const PlacedLoad& placed : others)
            DrawSingle(placed, top, base, top - bandTop - ARROW - static_cast<double>(placed.lane) * LABEL);
        for (const LoadLabel& one : m_labels)
            m_svg.Text("value over", one.x, one.y, "middle", one.text);
        m_labels.clear();
        m_y = base + 9.0;
        if (count > most) Note(std::to_string(count - most) + " more loads of this case are in the table alone.");
    }

    // Drawn after all arrows, which it would else be crossed by.
    struct LoadLabel {
        double x, y;
        std::string text;
    };

    double LabelX(const Load& load, double half) const
    {
        const double at = load.shape == LoadShape::Distributed ? 0.5 * (load.from + load.to) : load.from;
        return std::clamp(X(at), half, WIDTH - half);
    }

    // How far an arrow straight down leans on a member that is drawn lying.
    double Lean(const Load& load) const
    {
        if (load.direction != Direction::Gravity) return 0.0;
        const double c = std::cos(m_report.inclination);
        const double s = std::sin(m_report.inclination);
        return std::clamp(s / c, -3.0, 3.0);
    }

    const char* ClassOf(const Load& load) const { return load.direction == Direction::Minor ? "load part" : "load"; }

    // An arrow from (x1, y1) to (x2, y2).
    void DrawArrow(const char* cls, double x1, double y1, double x2, double y2)
    {
        const double length = std::hypot(x2 - x1, y2 - y1);
        if (!(length > 0.1)) return;
        const double size = std::min(1.6, 0.7 * length);
        const double dx = (x2 - x1) / length * size;
        const double dy = (y2 - y1) / length * size;
        m_svg.Path(cls, PathData().MoveTo(x1, y1).LineTo(x2, y2));
        m_svg.Path("head", PathData()
                               .MoveTo(x2, y2)
                               .LineTo(x2 - dx - 0.45 * dy, y2 - dy + 0.45 * dx)
                               .LineTo(x2 - dx + 0.45 * dy, y2 - dy - 0.45 * dx)
                               .Close());
    }

    void DrawBand(const PlacedLoad& placed, double y, double largest)
    {
        const Load& load = *placed.load;
        const double x1 = X(load.from);
        const double x2 = X(load.to);
        const auto height = [&](double value) { return largest > 0.0 ? BAND * std::fabs(value) / largest : 0.0; };
        // Small loads are seen beside large ones.
        const double least = 1.4;
        const double h1 = load.value == 0.0 ? 0.0 : std::max(least, height(load.value));
        const double h2 = load.valueTo == 0.0 ? 0.0 : std::max(least, height(load.valueTo));
        const double lean = Lean(load);
        m_svg.Path("band", PathData()
                               .MoveTo(x1, y)
                               .LineTo(x1 + lean * h1, y - h1)
                               .LineTo(x2 + lean * h2, y - h2)
                               .LineTo(x2, y)
                               .Close());
        const int arrows = std::clamp(static_cast<int>((x2 - x1) / 6.0), 1, 40);
        for (int i = 0; i <= arrows; ++i) {
            const double share = static_cast<double>(i) / arrows;
            const double h = h1 + (h2 - h1) * share;
            const double value = load.value + (load.valueTo - load.value) * share;
            const double x = x1 + (x2 - x1) * share;
            if (value < 0.0)
                DrawArrow(ClassOf(load), x, y, x + lean * h, y - h);
            else
                DrawArrow(ClassOf(load), x + lean * h, y - h, x, y);
        }
        const double half = TextWidth(placed.label) / 2.0;
        m_labels.push_back({LabelX(load, half), y - BAND - 0.9, placed.label});
    }

    // `top`: of the member; `line`: its axis; `label`: where the label stands.
    void DrawSingle(const PlacedLoad& placed, double top, double line, double label)
    {
        const Load& load = *placed.load;
        const double x = X(load.from);
        const double textX = placed.textX;
        m_labels.push_back({textX, label - 0.8, placed.label});
        if (load.shape == LoadShape::Moment) {
            if (label < top - ARROW) m_svg.Line("leader", x, label, x, line - 4.2);
            return DrawMoment(load, x, line);
        }
        if (RunsAlong(load)) {
            if (load.shape == LoadShape::Distributed) return DrawAxialBand(load, top - 1.5);
            m_svg.Line("leader", x, label, x, line);
            return DrawAxial(load, x, line);
        }
        const double lean = std::clamp(Lean(load), -1.5, 1.5);
        const double rise = top - label;
        const double tail = x + lean * std::min(rise, ARROW);
        if (lean != 0.0) m_svg.Line("leader", textX, label, tail, top - std::min(rise, ARROW));
        const double tailY = lean != 0.0 ? top - std::min(rise, ARROW) : label;
        if (load.value < 0.0)
            DrawArrow(ClassOf(load), x, top, tail, tailY);
        else
            DrawArrow(ClassOf(load), tail, tailY, x, top);
    }

    // Clockwise over the top where it is above zero.
    void DrawMoment(const Load& load, double x, double y)
    {
        constexpr double r = 3.4;
        const double sense = load.value < 0.0 ? -1.0 : 1.0;
        PathData path;
        double endX = 0.0;
        double endY = 0.0;
        constexpr int steps = 20;
        for (int i = 0; i <= steps; ++i) {
            const double angle = std::numbers::pi * (1.15 - 1.3 * i / steps);
            endX = x + sense * r * std::cos(angle);
            endY = y - r * std::sin(angle);
            if (i == 0)
                path.MoveTo(endX, endY);
            else
                path.LineTo(endX, endY);
        }
        m_svg.Path(load.direction == Direction::Minor ? "load turn part" : "load turn", path);
        m_svg.Path("head", PathData()
                               .MoveTo(endX - sense * 0.3, endY + 1.0)
                               .LineTo(endX + sense * 0.75, endY - 0.7)
                               .LineTo(endX - sense * 0.75, endY - 0.5)
                               .Close());
    }

    // Outside of the member where it presses on an end.
    void DrawAxial(const Load& load, double x, double y)
    {
        const double way = Along(load) < 0.0 ? -1.0 : 1.0;
        const bool presses = way < 0.0 ? load.from >= m_beam.length : load.from <= 0.0;
        const double tail = presses ? x - way * 9.0 : x;
        DrawArrow("load", tail, y, tail + way * 9.0, y);
    }

    void DrawAxialBand(const Load& load, double y)
    {
        const double x1 = X(load.from);
        const double x2 = X(load.to);
        const int arrows = std::clamp(static_cast<int>((x2 - x1) / 9.0), 1, 20);
        for (int i = 0; i < arrows; ++i) {
            const double a = x1 + (x2 - x1) * i / arrows;
            const double b = x1 + (x2 - x1) * (i + 0.8) / arrows;
            const bool isAbove = Along(load) >= 0.0;
            DrawArrow("load", isAbove ? a : b, y, isAbove ? b : a, y);
        }
    }

    // --- Envelopes ---

    struct Label {
        double from, to, y;
    };

    static const char* UnitWords(Action action)
    {
        switch (action) {
        case Action::Moment:
            return "moment, drawn on the side in tension";
        case Action::Shear:
            return "shear";
        case Action::Axial:
            return "axial force, tension above zero";
        case Action::MinorMoment:
            return "moment about the minor axis";
        case Action::MinorShear:
            return "shear along y";
        }
        return "";
    }

    void DrawEnvelope(const ActionEnvelope& envelope)
    {
        // A moment that sags lies below the line.
        const double sense = envelope.action == Action::Moment ? 1.0 : -1.0;
        const double above = std::max(0.0, sense > 0.0 ? -envelope.whole.least.value : envelope.whole.greatest.value);
        const double below = std::max(0.0, sense > 0.0 ? envelope.whole.greatest.value : -envelope.whole.least.value);
        const double unit = ROOM / (above + below);
        m_svg.Text("name", 0.5, m_y + 3.4, "start", Capital(UnitWords(envelope.action)));
        const double base = m_y + 6.0 + (above > 0.0 ? 4.5 : 0.0) + above * unit;
        const auto y = [&](double value) { return base + sense * value * unit; };
        DrawCurves(envelope, y, base);
        m_svg.Line("base", Left() - 3.0, base, Right() + 3.0, base);
        for (const Support& support : m_beam.supports)
            m_svg.Line("station", X(support.at), base - 0.9, X(support.at), base + 0.9);
        std::vector<Label> labels;
        AddLabels(envelope.action, envelope.whole, y, base, labels);
        for (const GovernedRange& span : envelope.spans)
            AddLabels(envelope.action, span, y, base, labels);
        m_y = base + below * unit + 7.0;
    }

    static std::string Capital(std::string text)
    {
        if (!text.empty() && text[0] >= 'a' && text[0] <= 'z') text[0] = static_cast<char>(text[0] - 'a' + 'A');
        return text;
    }

    void DrawCurves(const ActionEnvelope& envelope, const std::function<double(double)>& y, double base)
    {
        PathData area;
        PathData greatest;
        PathData least;
        for (std::size_t i = 0; i < envelope.samples.size(); ++i) {
            const ActionEnvelope::Sample& sample = envelope.samples[i];
            const double x = X(sample.at);
            if (i == 0) {
                greatest.MoveTo(x, base);
                least.MoveTo(x, base);
                area.MoveTo(x, base);
            }
            greatest.LineTo(x, y(sample.greatest));
            least.LineTo(x, y(sample.least));
            area.LineTo(x, y(std::max(sample.greatest, 0.0)));
        }
        area.LineTo(Right(), base);
        for (std::size_t i = envelope.samples.size(); i-- > 0;)
            area.LineTo(X(envelope.samples[i].at), y(std::min(envelope.samples[i].least, 0.0)));
        m_svg.Path("fill", area.Close());
        m_svg.Path("curve greatest", greatest.LineTo(Right(), base));
        m_svg.Path("curve least", least.LineTo(Right(), base));
    }

    void AddLabels(Action action, const GovernedRange& range, const std::function<double(double)>& y, double base,
                   std::vector<Label>& labels)
    {
        for (const bool isGreatest : {true, false}) {
            const Governed& one = isGreatest ? range.greatest : range.least;
            // A greatest value below zero is not an extreme to design for.
            if (one.value == 0.0 || isGreatest == (one.value < 0.0)) continue;
            const std::string text = ValueText(action, one.value) + " at " + Metres(one.at) + " (" +
                                     std::to_string(one.combination + 1) + ")";
            AddLabel(text, X(one.at), y(one.value), base, labels);
        }
    }

    void AddLabel(const std::string& text, double x, double peak, double base, std::vector<Label>& labels)
    {
        const double half = TextWidth(text) / 2.0;
        const double at = std::clamp(x, half, WIDTH - half);
        const double y = peak < base ? peak - 1.4 : peak + 3.7;
        const bool isTaken = std::any_of(labels.begin(), labels.end(), [&](const Label& label) {
            return at - half < label.to && label.from < at + half && std::fabs(label.y - y) < 3.2;
        });
        if (isTaken) return;
        labels.push_back({at - half, at + half, y});
        m_svg.Circle("peak", x, peak, 0.6);
        m_svg.Text("value", at, y, "middle", text);
    }

    // --- Deflection ---

    void DrawShape()
    {
        const DeflectionCheck& check = m_report.checks[static_cast<std::size_t>(m_report.shape.check)];
        const DeflectionLimit& limit = m_report.limits[check.limit];
        double up = 0.0;
        double down = 0.0;
        for (const auto& [at, deflection] : m_report.shape.samples) {
            down = std::max(down, deflection);
            up = std::max(up, -deflection);
        }
        if (!(up + down > 0.0)) return;
        constexpr double room = 12.0;
        const double unit = room / (up + down);
        m_svg.Text("name", 0.5, m_y + 3.4, "start", "Deflection");
        m_svg.Text("note", 24.0, m_y + 3.4, "start",
                   Line(limit.name) + " (" + Line(limit.clause) + "), combination " +
                       std::to_string(check.combination + 1) + ", used most of all limits");
        const double base = m_y + 9.0 + up * unit;
        m_svg.Line("axis", Left(), base, Right(), base);
        for (const Support& support : m_beam.supports)
            m_svg.Line("station", X(support.at), base - 0.9, X(support.at), base + 0.9);
        PathData path;
        bool isFirst = true;
        double peak = base;
        for (const auto& [at, deflection] : m_report.shape.samples) {
            const double y = base + deflection * unit;
            if (at == check.at) peak = y;
            if (isFirst)
                path.MoveTo(X(at), y);
            else
                path.LineTo(X(at), y);
            isFirst = false;
        }
        m_svg.Path("curve shape", path);
        std::vector<Label> labels;
        AddLabel(MilliMetres(check.deflection) + " at " + Metres(check.at) + ", allowed " + MilliMetres(check.allowed),
                 X(check.at), peak, check.deflection < 0.0 ? peak + 1.0 : base - 1e-6, labels);
        m_y = base + down * unit + 7.0;
    }

    const Statics::Beam& m_beam;
    const LoadReport& m_report;
    Svg m_svg;
    double m_scale;
    std::vector<LoadLabel> m_labels;
    double m_y = 0.0; // where the next part begins
    bool m_hasPin = false, m_hasRoller = false, m_hasWall = false, m_hasSpring = false, m_hasTurn = false;
    bool m_hasHinge = false, m_hasLateral = false, m_hasAlong = false;
};

std::string LoadsDescription(const LoadReport& report)
{
    constexpr std::size_t most = 40;
    std::string text;
    for (std::size_t i = 0; i < report.loads.size(); ++i) {
        if (i == most) return text + " And so on: the table below has all loads.";
        const Load& load = report.loads[i];
        AddItem(text, " ",
                Line(report.cases[load.caseIndex].name) + ": " + SizeOf(load, report.IsLevel()) + ", " + PlaceOf(load) +
                    ".");
    }
    return text.empty() ? "No loads." : text;
}

std::string EnvelopeDescription(const LoadReport& report)
{
    std::string text;
    for (const ActionEnvelope& envelope : report.envelopes) {
        for (const Governed& one : {envelope.whole.greatest, envelope.whole.least}) {
            if (one.value == 0.0) continue;
            AddItem(text, "; ",
                    std::string(NameOf(envelope.action)) + ' ' + ValueText(envelope.action, one.value) + " at " +
                        Metres(one.at));
        }
    }
    return text.empty() ? "nothing" : text + ".";
}

} // namespace

std::string LoadsSvg(const std::string& id, const Statics::Beam& beam, const LoadReport& report)
{
    LoadPicture picture(id, "Supports and loads, " + Metres(report.length), LoadsDescription(report), beam, report);
    picture.Elevation();
    picture.Cases();
    return picture.Finish();
}

std::vector<std::string> LoadsSvgs(const std::string& id, const Statics::Beam& beam, const LoadReport& report)
{
    constexpr std::size_t casesOfPage = 3;
    const std::size_t count = LoadPicture::CaseCount(report);
    std::vector<std::string> drawings;
    for (std::size_t first = 0; first == 0 || first < count; first += casesOfPage) {
        const std::string number = std::to_string(drawings.size() + 1);
        LoadPicture picture(id + number, "Supports and loads, " + Metres(report.length) + ", part " + number,
                            first == 0 ? LoadsDescription(report) : "Further cases.", beam, report);
        if (first == 0) picture.Elevation();
        picture.Cases(first, std::min(count, first + casesOfPage));
        drawings.push_back(picture.Finish());
    }
    return drawings;
}

std::string EnvelopeSvg(const std::string& id, const Statics::Beam& beam, const LoadReport& report)
{
    const bool hasEnvelope = std::any_of(report.envelopes.begin(), report.envelopes.end(),
                                         [](const ActionEnvelope& envelope) { return !envelope.whole.IsZero(); });
    if (!hasEnvelope && report.shape.check < 0) return {};
    LoadPicture picture(id, "Envelopes of moments and forces, deflected shape", EnvelopeDescription(report), beam,
                        report);
    picture.Envelopes();
    picture.Shape();
    return picture.Finish();
}

std::string LoadSvgFile(const Statics::Beam& beam, const LoadReport& report)
{
    LoadPicture picture("loads", "Loads, envelopes and deflected shape of " + PrintableLine(report.title),
                        LoadsDescription(report) + " " + EnvelopeDescription(report), beam, report);
    picture.Head();
    picture.Elevation();
    picture.Cases();
    picture.Envelopes();
    picture.Shape();
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + picture.Finish();
}

} // namespace Keltrix::Host

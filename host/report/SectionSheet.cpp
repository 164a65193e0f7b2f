#include "report/SectionSheet.h"

#include <algorithm>
#include <optional>

#include "report/Join.h"
#include "report/MemberAxis.h"
#include "report/Svg.h"
#include "sections/SectionSvg.h"
#include "sections/SectionValues.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

// Draws on the paper what lies at mm of the section.
class SectionPicture {
public:
    SectionPicture(const std::string& id, const CSection& section, const std::string& name) :
        m_component(section.Component(0)), m_drawing(DrawSection(section)),
        m_scale(DrawingScale(m_drawing.Size() * 1e-3, 50.0)),
        m_svg(id, name + ", cross-section, scale 1:" + Rounded(m_scale, 4), Description(section))
    {}

    bool IsEmpty() const { return m_drawing.body.empty(); }

    std::string Draw()
    {
        m_svg.Raw("<g class=\"section\" transform=\"translate(" + Svg::Number(LEFT) + ' ' + Svg::Number(TOP) +
                  ") scale(" + Shortest(1.0 / m_scale) + ")\" font-size=\"" + Shortest(2.7 * m_scale) + "\">\n");
        m_svg.Raw(m_drawing.body);
        m_svg.Raw("</g>\n");
        const bool tube = Shape() == CSecGeom::SHAPE_CHS;
        DrawHeight(m_drawing.depth);
        if (!tube) DrawWidth(m_drawing.width);
        DrawThicknesses();
        m_svg.Text("note", X(m_drawing.width) + RIGHT, Y(m_drawing.depth) + 12.6, "end", "1:" + Rounded(m_scale, 4));
        return m_svg.Finish("section-drawing", X(m_drawing.width) + RIGHT, Y(m_drawing.depth) + 15.0);
    }

private:
    static constexpr double LEFT = 17.0;
    static constexpr double RIGHT = 20.0;
    static constexpr double TOP = 9.0;

    static std::string Description(const CSection& section)
    {
        std::string text;
        for (const SectionValue& value : SectionDimensionValues(section))
            AddItem(text, ", ", value.meaning + ' ' + Rounded(value.si * value.factor, 5) + ' ' + value.unit);
        return text;
    }

    int Shape() const { return m_component.Shape() & CSecGeom::SHAPE_MASK; }
    double Millimetres(CSecGeom::Prop prop) const { return m_component.Dimension(0.0, prop) * 1e3; }
    double X(double mm) const { return LEFT + mm / m_scale; }
    double Y(double mm) const { return TOP + mm / m_scale; }

    void DrawTick(double x, double y) { m_svg.Line("dim", x - 0.8, y + 0.8, x + 0.8, y - 0.8); }

    void DrawHeight(double depth)
    {
        const double x = LEFT - 8.0;
        m_svg.Line("dim", x, Y(0.0), x, Y(depth));
        for (const double y : {Y(0.0), Y(depth)}) {
            m_svg.Line("dim", x - 1.5, y, LEFT - 2.0, y);
            DrawTick(x, y);
        }
        m_svg.Text("", x - 1.2, (Y(0.0) + Y(depth)) / 2.0 + 1.0, "end", Rounded(depth, 4));
    }

    void DrawWidth(double width)
    {
        const double y = Y(m_drawing.depth) + 9.0;
        m_svg.Line("dim", X(0.0), y, X(width), y);
        for (const double x : {X(0.0), X(width)}) {
            m_svg.Line("dim", x, Y(m_drawing.depth) + 2.0, x, y + 1.5);
            DrawTick(x, y);
        }
        m_svg.Text("", (X(0.0) + X(width)) / 2.0, y + 3.6, "middle", Rounded(width, 4));
    }

    // A leader from a place of the section to a text at the right.
    void DrawLeader(double x, double y, const std::string& text)
    {
        const double end = X(m_drawing.width) + 5.0;
        m_svg.Line("dim", x, y, end, y);
        m_svg.Circle("dot", x, y, 0.5);
        m_svg.Text("", end + 0.8, y + 1.0, "start", text);
    }

    void DrawThicknesses()
    {
        const double t = Millimetres(CSecGeom::WEB_THICKNESS);
        const double T = Millimetres(CSecGeom::FLANGE_THICKNESS);
        const double W = m_drawing.width;
        const double D = m_drawing.depth;
        const std::string web = "t = " + Rounded(t, 4);
        switch (Shape()) {
        case CSecGeom::SHAPE_CHS:
            return DrawLeader(X(W - t / 2.0), Y(D / 2.0) - 4.0, web);
        case CSecGeom::SHAPE_RHS:
            DrawLeader(X(W - t / 2.0), Y(0.3 * D), web);
            return;
        case CSecGeom::SHAPE_ANGLE:
            return DrawLeader(X(t / 2.0), Y(0.3 * D), web);
        case CSecGeom::SHAPE_CHANNEL:
            DrawLeader(X(t / 2.0), Y(0.3 * D), web);
            break;
        default:
            DrawLeader(X(m_drawing.datum), Y(0.3 * D), web);
        }
        DrawLeader(X(std::min(W, 0.94 * W)), Y(T / 2.0), "T = " + Rounded(T, 4));
        if (Shape() == CSecGeom::SHAPE_GENERAL_I)
            DrawLeader(X(m_drawing.datum), Y(D - Millimetres(CSecGeom::BOTTOM_FLANGE_THICKNESS) / 2.0),
                       "T2 = " + Rounded(Millimetres(CSecGeom::BOTTOM_FLANGE_THICKNESS), 4));
    }

    const CSecComp& m_component;
    SectionDrawing m_drawing;
    double m_scale;
    Svg m_svg;
};

} // namespace

std::string SectionSheetSvg(const std::string& id, const CSection& section, const std::string& name)
{
    SectionPicture picture(id, section, name);
    return picture.IsEmpty() ? std::string() : picture.Draw();
}

} // namespace Keltrix::Host

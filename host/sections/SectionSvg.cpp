#include "sections/SectionSvg.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "sections/SectionOutline.h"
#include "sections/SectionShapes.h"
#include "text/Html.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

class Drawing {
public:
    explicit Drawing(const SectionOutline& outline) : m_outline(outline) {}

    // x and y of the drawing, in mm: y runs downwards there.
    std::string X(double x) const { return Figures((x - m_outline.left) * 1e3, 7); }
    std::string Y(double y) const { return Figures((m_outline.top - y) * 1e3, 7); }

    std::string Path() const
    {
        std::string d;
        for (const OutlineLoop& loop : m_outline.loops) {
            d += (d.empty() ? "M" : " M") + X(loop.x) + ',' + Y(loop.y);
            for (const OutlineLoop::Piece& piece : loop.pieces) {
                const std::string end = X(piece.x) + ',' + Y(piece.y);
                if (piece.radius == 0.0) {
                    d += " L" + end;
                    continue;
                }
                // Anticlockwise with y upwards stays anticlockwise on the screen: sweep flag 0.
                const std::string r = Figures(piece.radius * 1e3, 7);
                d += " A" + r + ',' + r + " 0 0 " + (piece.anticlockwise ? '0' : '1') + ' ' + end;
            }
            d += " Z";
        }
        return d;
    }

    // A line through (x, y) under an angle, to a length on both sides, with its name at the far end.
    std::string Axis(const char* kind, const char* name, double x, double y, double angle, double reach) const
    {
        const double dx = reach * std::cos(angle);
        const double dy = reach * std::sin(angle);
        std::string line = "  <line class=\"" + std::string(kind) + "\" x1=\"" + X(x - dx) + "\" y1=\"" + Y(y - dy) +
                           "\" x2=\"" + X(x + dx) + "\" y2=\"" + Y(y + dy) + "\"/>\n";
        if (name[0] != '\0')
            line += "  <text x=\"" + X(x + 1.04 * dx) + "\" y=\"" + Y(y + 1.04 * dy) + "\">" + name + "</text>\n";
        return line;
    }

private:
    const SectionOutline& m_outline;
};

std::string Style(double size)
{
    const auto mm = [](double value) { return Figures(value, 3); };
    return "  <style>\n"
           "    .steel { fill: #c9d3de; fill-rule: evenodd; stroke: #22303c; stroke-width: " +
           mm(0.004 * size) +
           "; }\n"
           "    .axis { stroke: #22303c; stroke-width: " +
           mm(0.002 * size) + "; stroke-dasharray: " + mm(0.04 * size) + ' ' + mm(0.01 * size) + ' ' +
           mm(0.005 * size) + ' ' + mm(0.01 * size) +
           "; }\n"
           "    .plastic { stroke: #b3541e; stroke-width: " +
           mm(0.002 * size) + "; stroke-dasharray: " + mm(0.015 * size) +
           "; }\n"
           "    .principal { stroke: #1f5fa8; stroke-width: " +
           mm(0.002 * size) +
           "; }\n"
           "    .centroid { fill: #22303c; }\n"
           "    text { font: " +
           mm(0.035 * size) + "px sans-serif; text-anchor: middle; dominant-baseline: middle; }\n  </style>\n";
}

} // namespace

SectionDrawing DrawSection(const CSection& section)
{
    const std::unique_ptr<Steel::CDesSectGeom> geometry = MakeGeometry(section);
    if (!geometry) return {};
    const SectionOutline outline = MakeOutline(section);
    const Drawing draw(outline);
    SectionDrawing drawing;
    drawing.width = (outline.right - outline.left) * 1e3;
    drawing.depth = outline.top * 1e3;
    drawing.datum = -outline.left * 1e3;
    const double size = drawing.Size();

    const bool hollow = geometry->Ybar() == 0.0;
    const double x = hollow ? 0.0 : geometry->Xbar();
    const double y = hollow ? outline.top / 2.0 : geometry->Ybar();
    const double reachX = (outline.right - outline.left) / 2.0 + 0.08e-3 * size;
    const double reachY = outline.top / 2.0 + 0.08e-3 * size;
    const double middleX = (outline.left + outline.right) / 2.0;
    const double middleY = outline.top / 2.0;
    const double upright = std::numbers::pi / 2.0;

    std::string& body = drawing.body;
    body = "  <path class=\"steel\" d=\"" + draw.Path() + "\"/>\n";
    body += draw.Axis("plastic", "", middleX, outline.HalvingHeight(), 0.0, reachX);
    body += draw.Axis("plastic", "", outline.HalvingX(), middleY, upright, reachY);
    body += draw.Axis("axis", "x", middleX, y, 0.0, reachX);
    body += draw.Axis("axis", "y", x, middleY, upright, reachY);
    if (const auto* angle = dynamic_cast<const AngleShape*>(geometry.get())) {
        const double reach = 0.6e-3 * size;
        body += draw.Axis("principal", "u", x, y, angle->Alpha(), reach);
        body += draw.Axis("principal", "v", x, y, angle->Alpha() + upright, reach);
    }
    body += "  <circle class=\"centroid\" cx=\"" + draw.X(x) + "\" cy=\"" + draw.Y(y) + "\" r=\"" +
            Figures(0.008 * size, 3) + "\"/>\n";
    return drawing;
}

std::string SectionSvg(const CSection& section, const std::string& title)
{
    const SectionDrawing drawing = DrawSection(section);
    if (drawing.body.empty()) return {};
    const double margin = 0.15 * drawing.Size();
    const std::string width = Figures(drawing.width + 2 * margin, 6);
    const std::string height = Figures(drawing.depth + 2 * margin, 6);
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + width +
           "mm\" height=\"" + height + "mm\" viewBox=\"" + Figures(-margin, 6) + ' ' + Figures(-margin, 6) + ' ' +
           width + ' ' + height + "\">\n  <title>" + EscapedHtml(title) + "</title>\n" + Style(drawing.Size()) +
           drawing.body + "</svg>\n";
}

} // namespace Keltrix::Host

#include "report/Svg.h"

#include <cmath>

#include "text/Html.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

std::string Attribute(const char* name, std::string_view value)
{
    return std::string(" ").append(name).append("=\"").append(value).append("\"");
}

} // namespace

PathData& PathData::Add(const char* command, double x, double y)
{
    m_text.append(command).append(Svg::Number(x)).append(",").append(Svg::Number(y));
    return *this;
}

PathData& PathData::Close()
{
    m_text += 'Z';
    return *this;
}

Svg::Svg(std::string id, std::string title, std::string description) :
    m_id(std::move(id)), m_title(std::move(title)), m_description(std::move(description))
{}

std::string Svg::Number(double mm)
{
    if (!std::isfinite(mm)) return "0";
    // A hundredth of a millimetre is finer than any printer.
    return Shortest(std::round(mm * 100.0) / 100.0);
}

void Svg::Line(const char* cls, double x1, double y1, double x2, double y2)
{
    m_body += "<line" + Attribute("class", cls) + Attribute("x1", Number(x1)) + Attribute("y1", Number(y1)) +
              Attribute("x2", Number(x2)) + Attribute("y2", Number(y2)) + "/>\n";
}

void Svg::Rect(const char* cls, double x, double y, double width, double height)
{
    m_body += "<rect" + Attribute("class", cls) + Attribute("x", Number(x)) + Attribute("y", Number(y)) +
              Attribute("width", Number(width)) + Attribute("height", Number(height)) + "/>\n";
}

void Svg::Circle(const char* cls, double x, double y, double r)
{
    m_body += "<circle" + Attribute("class", cls) + Attribute("cx", Number(x)) + Attribute("cy", Number(y)) +
              Attribute("r", Number(r)) + "/>\n";
}

void Svg::Path(const char* cls, const PathData& data)
{
    m_body += "<path" + Attribute("class", cls) + Attribute("d", data.Text()) + "/>\n";
}

void Svg::Text(const char* cls, double x, double y, const char* anchor, std::string_view text)
{
    m_body += "<text" + (*cls ? Attribute("class", cls) : std::string()) + Attribute("x", Number(x)) +
              Attribute("y", Number(y)) + Attribute("text-anchor", anchor) + '>' + EscapedHtml(text) + "</text>\n";
}

std::string Svg::Finish(const char* cls, double width, double height) const
{
    const std::string size = Number(width) + ' ' + Number(height);
    return "<svg xmlns=\"http://www.w3.org/2000/svg\"" + Attribute("class", cls) +
           Attribute("width", Number(width) + "mm") + Attribute("height", Number(height) + "mm") +
           Attribute("viewBox", "0 0 " + size) + " role=\"img\"" +
           Attribute("aria-labelledby", m_id + "-t " + m_id + "-d") + ">\n<title" + Attribute("id", m_id + "-t") + '>' +
           EscapedHtml(m_title) + "</title>\n<desc" + Attribute("id", m_id + "-d") + '>' + EscapedHtml(m_description) +
           "</desc>\n" + m_body + "</svg>\n";
}

} // namespace Keltrix::Host

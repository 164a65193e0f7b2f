#pragma once

#include <string>
#include <string_view>

namespace Keltrix::Host {

/// The data of a path, piece by piece; mm. Coordinates that are not finite count as 0.
class PathData {
public:
    PathData& MoveTo(double x, double y) { return Add("M", x, y); }
    PathData& LineTo(double x, double y) { return Add("L", x, y); }
    /// From the present point.
    PathData& MoveBy(double dx, double dy) { return Add("m", dx, dy); }
    PathData& LineBy(double dx, double dy) { return Add("l", dx, dy); }
    PathData& Close();
    const std::string& Text() const { return m_text; }

private:
    PathData& Add(const char* command, double x, double y);

    std::string m_text;
};

/// A drawing for the sheet: one user unit to the millimetre of paper, y downwards. Its look comes from the classes of the
/// sheet's style. It has a title and a description for readers who do not see it. Coordinates that are not finite count as 0.
class Svg {
public:
    /// `id` is unique in the document: title and description take theirs from it.
    Svg(std::string id, std::string title, std::string description);

    void Line(const char* cls, double x1, double y1, double x2, double y2);
    void Rect(const char* cls, double x, double y, double width, double height);
    void Circle(const char* cls, double x, double y, double r);
    void Path(const char* cls, const PathData& data);
    /// `anchor` is start, middle or end.
    void Text(const char* cls, double x, double y, const char* anchor, std::string_view text);
    /// Elements already written.
    void Raw(std::string_view elements) { m_body += elements; }

    /// The whole element, of the given size in mm.
    std::string Finish(const char* cls, double width, double height) const;

    /// A coordinate as it stands in an attribute.
    static std::string Number(double mm);

private:
    std::string m_id;
    std::string m_title;
    std::string m_description;
    std::string m_body;
};

} // namespace Keltrix::Host

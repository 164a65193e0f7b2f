#include "Mesh.h"

#include <algorithm>
#include <cmath>

namespace Keltrix::Stability {

namespace {

// Elements of a unit without intermediate restraints, and of the length between two restraints.
constexpr double PER_UNIT = 8.0;
constexpr double PER_BAY = 3.0;
// Most elements that the rules above ask for, most nodes at stations that must have one, and at others.
constexpr double MOST_ELEMENTS = 400.0;
constexpr double MOST_REQUIRED = 500.0;
constexpr double MOST_OTHERS = 200.0;
constexpr double WARPING_FREE = 1e-4;
// Share of the unit below which an element would spoil the digits of the others.
constexpr double SHORTEST = 5e-4;
// Share of the largest moment or force up to which two are the same.
constexpr double SAME = 1e-9;

// Whether the piece in front of a station goes on behind it as it is, so that the station divides nothing.
bool GoesOn(const Layout& unit, std::size_t i, double largestMoment, double largestForce)
{
    const Station& station = unit.stations[i];
    const Piece& before = unit.pieces[i - 1];
    const Piece& after = unit.pieces[i];
    if (station.holds.Any() || station.jump || station.torque != 0.0 || !(before.along == after.along) ||
        std::abs(before.torque - after.torque) > SAME * largestForce)
        return false;
    // The longer one as it would be over the other: that way round rounding grows least.
    const double h1 = station.x - unit.stations[i - 1].x;
    const double h2 = unit.stations[i + 1].x - station.x;
    const bool isFirst = h1 >= h2;
    const double ratio = isFirst ? h2 / h1 : h1 / h2;
    const Piece& longer = isFirst ? before : after;
    const Piece& shorter = isFirst ? after : before;
    for (const double share : {0.5, 1.0}) {
        const double there = isFirst ? 1.0 + share * ratio : -share * ratio;
        const double here = isFirst ? share : 1.0 - share;
        const double force = longer.axialLeft + there * (longer.axialRight - longer.axialLeft);
        const double given = shorter.axialLeft + here * (shorter.axialRight - shorter.axialLeft);
        if (std::abs(longer.moment.At(there) - shorter.moment.At(here)) > SAME * largestMoment) return false;
        if (std::abs(force - given) > SAME * largestForce) return false;
    }
    return true;
}

// Stations that get nodes: those where something is held, where what is held along the member changes, and the ends. Others are
// left out where they divide nothing, or come too thickly. Restraints that do so for themselves are left out, which lowers the critical load.
class Chooser {
public:
    Chooser(const Layout& unit, Mesh& mesh) : m_unit(unit), m_mesh(mesh)
    {
        m_length = unit.stations.back().x - unit.stations.front().x;
        for (const Piece& piece : unit.pieces) {
            for (const double s : {0.0, 0.5, 1.0})
                m_largestMoment = std::max(m_largestMoment, std::abs(piece.moment.At(s)));
            m_largestForce = std::max(
                {m_largestForce, std::abs(piece.axialLeft), std::abs(piece.axialRight), std::abs(piece.torque)});
        }
    }

    std::vector<std::size_t> Choose()
    {
        const std::size_t last = m_unit.stations.size() - 1;
        const bool crowded = static_cast<double>(last) > MOST_OTHERS;
        std::vector<std::size_t> chosen{0};
        for (std::size_t i = 1; i < last; ++i) {
            if (GoesOn(m_unit, i, m_largestMoment, m_largestForce)) continue;
            const bool required = IsRequired(i);
            const double least = m_length * (!required ? 1.0 / MOST_OTHERS : crowded ? 1.0 / MOST_REQUIRED : SHORTEST);
            const double x = m_unit.stations[i].x;
            const bool room = x - m_unit.stations[chosen.back()].x >= least && m_unit.stations[last].x - x >= least;
            if (room)
                chosen.push_back(i);
            else if (required)
                m_mesh.restraintsLeftOut = true;
        }
        chosen.push_back(last);
        return chosen;
    }

private:
    bool IsRequired(std::size_t i) const
    {
        return m_unit.stations[i].holds.Any() || !(m_unit.pieces[i - 1].along == m_unit.pieces[i].along);
    }

    const Layout& m_unit;
    Mesh& m_mesh;
    double m_length = 0.0;
    double m_largestMoment = 0.0;
    double m_largestForce = 0.0;
};

// What is held all along several pieces.
Holds AlongAll(const Layout& unit, std::size_t first, std::size_t last)
{
    Holds along = unit.pieces[first].along;
    for (std::size_t i = first + 1; i <= last; ++i) {
        along.value &= unit.pieces[i].along.value;
        along.slope &= unit.pieces[i].along.slope;
    }
    return along;
}

// Adds nodes from the last one to x, and the elements between them.
class Builder {
public:
    Builder(const Layout& unit, Mesh& mesh) : m_unit(unit), m_mesh(mesh) {}

    void AddNode(const Node& node, const Holds& along)
    {
        if (!m_mesh.nodes.empty()) {
            Element element;
            element.along = along;
            while (m_piece + 1 < m_unit.pieces.size() && m_unit.stations[m_piece + 1].x <= m_mesh.nodes.back().x)
                ++m_piece;
            element.firstPiece = m_piece;
            while (m_piece + 1 < m_unit.pieces.size() && m_unit.stations[m_piece + 1].x < node.x)
                ++m_piece;
            element.lastPiece = m_piece;
            m_mesh.elements.push_back(element);
        }
        m_mesh.nodes.push_back(node);
    }

private:
    const Layout& m_unit;
    Mesh& m_mesh;
    std::size_t m_piece = 0;
};

// Places between two nodes: even ones, and where warping dies away within less than they are apart, some that come closer and
// closer to a node at which something disturbs the twist, at one, three, nine ... reaches from it. They stay within the half of the step that is
// theirs, so that those from both ends do not cross. A reach above half a step gets no place of its own: the halved mesh has an
// element of one reach there, over which a cubic follows the exponential within 0.3 %, and the error estimate shows what is left.
std::vector<double> Between(double from, double to, double target, double reach, bool gradeLeft, bool gradeRight)
{
    const double h = to - from;
    const double step = h / std::max(1.0, std::ceil(h / target - 1e-6));
    std::vector<double> places;
    for (int i = 1; i * step < h * (1.0 - 1e-9); ++i)
        places.push_back(from + i * step);
    if (reach > 0.0) {
        double distance = reach;
        while (distance < 0.49 * step) {
            if (gradeLeft) places.push_back(from + distance);
            if (gradeRight) places.push_back(to - distance);
            distance *= 3.0;
        }
        std::sort(places.begin(), places.end());
        places.erase(std::unique(places.begin(), places.end()), places.end());
    }
    return places;
}

Node NodeAt(const Station& station)
{
    Node node;
    node.x = station.x;
    node.holds = station.holds;
    return node;
}

} // namespace

bool IsWarpingFree(const SectionConstants& section, double length)
{
    return section.E * section.Iw < WARPING_FREE * WARPING_FREE * section.G * section.It * length * length;
}

Mesh MakeMesh(const Layout& unit, const SectionConstants& section)
{
    Mesh mesh;
    const std::vector<std::size_t> chosen = Chooser(unit, mesh).Choose();
    const double length = unit.stations.back().x - unit.stations.front().x;
    const double reach =
        IsWarpingFree(section, length) ? 0.0 : std::sqrt(section.E * section.Iw / (section.G * section.It));
    const auto disturbs = [&](std::size_t i) {
        const Station& s = unit.stations[i];
        return s.torque != 0.0 || s.jump || s.holds.Any() || i == 0 || i + 1 == unit.stations.size() ||
               !(unit.pieces[i - 1].along == unit.pieces[i].along);
    };
    Builder builder(unit, mesh);
    builder.AddNode(NodeAt(unit.stations.front()), {});
    std::size_t bayEnd = 0;
    double target = 0.0;
    for (std::size_t j = 1; j < chosen.size(); ++j) {
        if (j > bayEnd) { // the next bay, up to a station that holds something
            const double from = unit.stations[chosen[j - 1]].x;
            bayEnd = j;
            while (bayEnd + 1 < chosen.size() && unit.stations[chosen[bayEnd]].holds.value == 0)
                ++bayEnd;
            const double bay = unit.stations[chosen[bayEnd]].x - from;
            target = std::max(std::min(length / PER_UNIT, bay / PER_BAY), length / MOST_ELEMENTS);
        }
        const std::size_t i = chosen[j - 1];
        const std::size_t k = chosen[j];
        const Holds along = AlongAll(unit, i, k - 1);
        for (const double x :
             Between(unit.stations[i].x, unit.stations[k].x, target, reach, disturbs(i), disturbs(k))) {
            Node node;
            node.x = x;
            builder.AddNode(node, along);
        }
        builder.AddNode(NodeAt(unit.stations[k]), along);
    }
    return mesh;
}

Mesh Halved(const Mesh& mesh, const Layout& unit)
{
    Mesh halved;
    halved.restraintsLeftOut = mesh.restraintsLeftOut;
    halved.nodes.reserve(2 * mesh.nodes.size());
    halved.elements.reserve(2 * mesh.elements.size());
    Builder builder(unit, halved);
    builder.AddNode(mesh.nodes.front(), {});
    for (std::size_t i = 0; i < mesh.elements.size(); ++i) {
        Node middle;
        middle.x = 0.5 * (mesh.nodes[i].x + mesh.nodes[i + 1].x);
        builder.AddNode(middle, mesh.elements[i].along);
        builder.AddNode(mesh.nodes[i + 1], mesh.elements[i].along);
    }
    return halved;
}

} // namespace Keltrix::Stability

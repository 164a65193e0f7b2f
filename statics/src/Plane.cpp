#include "Plane.h"

#include <Eigen/LU>
#include <algorithm>
#include <cmath>

namespace Keltrix::Statics {

// The length between two neighbouring nodes. Moments sag above zero; a node's displacement is with the load, its rotation is the
// slope of the displacement.
struct Plane::Element {
    std::size_t node = 0; ///< on its left
    double length = 0.0;
    // Of the length as if its ends were hinged: shear at the left end, sum of the loads.
    double shear = 0.0;
    double load = 0.0;
    // End moments: first those with both ends clamped, then those of the member.
    double momentLeft = 0.0;
    double momentRight = 0.0;
};

namespace {

// Places of a place among the unknowns of an element: displacement and rotation at its left end, at its right end.
using Places = std::array<int, 4>;

// Integrals over a piece: of the moment, and of the moment times the distance from the left end.
double MomentArea(const Piece& p)
{
    const double h = p.length;
    return h * (p.moment + h * (p.shear / 2.0 - h * (p.loadLeft / 8.0 + p.loadRight / 24.0)));
}
double MomentFirstMoment(const Piece& p)
{
    const double h = p.length;
    return h * h * (p.moment / 2.0 + h * (p.shear / 3.0 - h * (p.loadLeft * 11.0 + p.loadRight * 4.0) / 120.0));
}

// Leaves a piece at its right end: moment and shear there go on into the next one.
void Leave(const Piece& piece, double& moment, double& shear)
{
    moment = piece.MomentAt(piece.length);
    shear = piece.ShearAt(piece.length);
}

} // namespace

Plane::Plane(const std::vector<double>& breaks, std::vector<Node> nodes, double EI) :
    m_breaks(breaks), m_nodes(std::move(nodes)), m_EI(EI), m_length(breaks.back() - breaks.front())
{
    Number();
}

void Plane::Number()
{
    m_freedoms.resize(m_nodes.size());
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
        const Node& node = m_nodes[i];
        Freedom& f = m_freedoms[i];
        if (!node.held) f.displacement = m_unknowns++;
        if (node.rotationHeld) continue;
        f.left = f.right = m_unknowns++;
        if (node.hinge) f.right = m_unknowns++;
    }
}

// Lengths between hinges move as rigid bodies, each by a + b x/length. Supports and hinges are conditions on them.
std::vector<double> Plane::FreeMotion() const
{
    struct Condition {
        Eigen::Index body;
        double a;
        double b;
        bool tiesNext; ///< the next body moves alike
    };
    std::vector<Condition> rows;
    Eigen::Index body = 0;
    for (const Node& node : m_nodes) {
        const double x = m_breaks[node.place] / m_length;
        if (node.Supports()) rows.push_back({body, 1.0, x, false});
        if (node.HoldsRotation()) rows.push_back({body, 0.0, 1.0, false});
        if (node.hinge) rows.push_back({body++, 1.0, x, true});
    }
    Eigen::MatrixXd conditions =
        Eigen::MatrixXd::Zero(std::max<Eigen::Index>(static_cast<Eigen::Index>(rows.size()), 1), 2 * body + 2);
    Eigen::Index r = 0;
    for (const Condition& row : rows) {
        conditions(r, 2 * row.body) = row.a;
        conditions(r, 2 * row.body + 1) = row.b;
        if (row.tiesNext) {
            conditions(r, 2 * row.body + 2) = -row.a;
            conditions(r, 2 * row.body + 3) = -row.b;
        }
        ++r;
    }
    Eigen::FullPivLU<Eigen::MatrixXd> lu(conditions);
    lu.setThreshold(1e-9);
    if (lu.dimensionOfKernel() == 0) return {};
    const Eigen::VectorXd motion = lu.kernel().col(0);
    std::vector<double> displacements;
    Eigen::Index k = 0;
    for (const Node& node : m_nodes) {
        displacements.push_back(motion[2 * k] + motion[2 * k + 1] * m_breaks[node.place] / m_length);
        if (node.hinge) ++k;
    }
    const double largest = *std::max_element(displacements.begin(), displacements.end(),
                                             [](double a, double b) { return std::abs(a) < std::abs(b); });
    for (double& displacement : displacements)
        displacement /= largest;
    return displacements;
}

// In lengths of the member and EI = 1, so that the entries depend on proportions alone.
void Plane::Factorise()
{
    std::vector<Eigen::Triplet<Real>> entries;
    const auto add = [&](int i, int j, Real value) {
        if (i >= 0 && j >= 0 && i >= j) entries.emplace_back(i, j, value);
    };
    for (std::size_t i = 0; i + 1 < m_nodes.size(); ++i) {
        const Real h = (static_cast<Real>(At(i + 1)) - At(i)) / m_length;
        const Freedom& a = m_freedoms[i];
        const Freedom& b = m_freedoms[i + 1];
        const Places places{a.displacement, a.right, b.displacement, b.left};
        const Real k = 1.0L / (h * h * h);
        const std::array<std::array<Real, 4>, 4> stiffness{{{12.0L, 6.0L * h, -12.0L, 6.0L * h},
                                                            {6.0L * h, 4.0L * h * h, -6.0L * h, 2.0L * h * h},
                                                            {-12.0L, -6.0L * h, 12.0L, -6.0L * h},
                                                            {6.0L * h, 2.0L * h * h, -6.0L * h, 4.0L * h * h}}};
        for (std::size_t r = 0; r < 4; ++r)
            for (std::size_t c = 0; c < 4; ++c)
                add(places[r], places[c], k * stiffness[r][c]);
    }
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
        const Freedom& f = m_freedoms[i];
        const Real unit = static_cast<Real>(m_length) / m_EI;
        add(f.displacement, f.displacement, m_nodes[i].spring * unit * m_length * m_length);
        add(f.left, f.left, m_nodes[i].rotationSpring * unit);
    }
    Matrix matrix(m_unknowns, m_unknowns);
    matrix.setFromTriplets(entries.begin(), entries.end());
    if (m_unknowns > 0) m_factor.compute(matrix);
}

Plane::Element Plane::Between(std::size_t node, const PlaneLoads& loads) const
{
    Element e;
    e.node = node;
    const std::size_t first = m_nodes[node].place;
    const std::size_t last = m_nodes[node + 1].place;
    const double end = m_breaks[last];
    e.length = end - m_breaks[first];
    double about = 0.0; // moment of the loads about the right end
    for (std::size_t j = first; j < last; ++j) {
        const double h = m_breaks[j + 1] - m_breaks[j];
        const double beyond = end - m_breaks[j + 1];
        e.load += 0.5 * (loads.left[j] + loads.right[j]) * h;
        about += loads.left[j] * h * (beyond / 2.0 + h / 3.0) + loads.right[j] * h * (beyond / 2.0 + h / 6.0);
        if (j == first) continue;
        e.load += loads.force[j];
        about += loads.force[j] * (end - m_breaks[j]) - loads.moment[j];
    }
    e.shear = about / e.length;
    // Rotations of the hinged length's ends, times EI, are undone by the moments of clamps.
    double area = 0.0;
    double firstMoment = 0.0;
    double moment = 0.0;
    double shear = e.shear;
    for (std::size_t j = first; j < last; ++j) {
        if (j > first) {
            moment += loads.moment[j];
            shear -= loads.force[j];
        }
        const Piece piece{m_breaks[j],   m_breaks[j + 1] - m_breaks[j], 0.0, 0.0, moment, shear, loads.left[j],
                          loads.right[j]};
        const double part = MomentArea(piece);
        area += part;
        firstMoment += part * (piece.start - m_breaks[first]) + MomentFirstMoment(piece);
        Leave(piece, moment, shear);
    }
    const double right = -6.0 * firstMoment / (e.length * e.length);
    const double left = -6.0 * area / e.length - right;
    e.momentLeft = (2.0 * left - right) / 3.0;
    e.momentRight = (2.0 * right - left) / 3.0;
    return e;
}

Plane::Vector Plane::RightHandSide(const std::vector<Element>& elements, const PlaneLoads& loads) const
{
    Vector b = Vector::Zero(m_unknowns);
    const auto add = [&](int i, double value) {
        if (i >= 0) b[i] += value;
    };
    const Real unit = static_cast<Real>(m_length) / m_EI; // of moments; forces have the length once more
    for (const Element& e : elements) {
        const Freedom& left = m_freedoms[e.node];
        const Freedom& right = m_freedoms[e.node + 1];
        const double shear = e.shear + (e.momentRight - e.momentLeft) / e.length;
        add(left.displacement, shear * m_length);
        add(right.displacement, (e.load - shear) * m_length);
        add(left.right, -e.momentLeft);
        add(right.left, e.momentRight);
    }
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
        add(m_freedoms[i].displacement, loads.force[m_nodes[i].place] * m_length);
        add(m_freedoms[i].left, loads.moment[m_nodes[i].place]);
    }
    return b * unit;
}

void Plane::EndMoments(const Vector& u, const PlaneLoads& loads, std::vector<Element>& elements) const
{
    const auto at = [&](int i) { return i < 0 ? Real(0) : u[i]; };
    for (Element& e : elements) {
        const Freedom& a = m_freedoms[e.node];
        const Freedom& b = m_freedoms[e.node + 1];
        const Real h = static_cast<Real>(e.length) / m_length;
        const Real chord = (at(b.displacement) - at(a.displacement)) / h;
        const Real k = 2.0L * m_EI / e.length;
        e.momentLeft += static_cast<double>(k * (2.0L * at(a.right) + at(b.left) - 3.0L * chord));
        e.momentRight -= static_cast<double>(k * (at(a.right) + 2.0L * at(b.left) - 3.0L * chord));
        // What is known is not left to rounding.
        const Node& left = m_nodes[e.node];
        const Node& right = m_nodes[e.node + 1];
        if (left.hinge) e.momentLeft = 0.0;
        if (right.hinge) e.momentRight = 0.0;
        if (e.node == 0 && !left.HoldsRotation()) e.momentLeft = loads.moment[left.place];
        if (e.node + 2 == m_nodes.size() && !right.HoldsRotation()) e.momentRight = -loads.moment[right.place];
    }
}

void Plane::March(const Element& e, const Vector& u, const PlaneLoads& loads, std::vector<Piece>& pieces) const
{
    const std::size_t first = m_nodes[e.node].place;
    const std::size_t last = m_nodes[e.node + 1].place;
    const auto displacement = [&](std::size_t node) {
        const int i = m_freedoms[node].displacement;
        return i < 0 ? 0.0 : static_cast<double>(u[i] * m_length);
    };
    double moment = e.momentLeft;
    double shear = e.shear + (e.momentRight - e.momentLeft) / e.length;
    double bow = 0.0; // ∫ M (distance to the right end) dx
    const std::size_t begin = pieces.size();
    for (std::size_t j = first; j < last; ++j) {
        if (j > first) {
            moment += loads.moment[j];
            shear -= loads.force[j];
        }
        pieces.push_back(
            {m_breaks[j], m_breaks[j + 1] - m_breaks[j], 0.0, 0.0, moment, shear, loads.left[j], loads.right[j]});
        const Piece& piece = pieces.back();
        bow += MomentArea(piece) * (m_breaks[last] - piece.start) - MomentFirstMoment(piece);
        Leave(piece, moment, shear);
    }
    // The slope at the left end is the one with which the line ends at the right node.
    double deflection = displacement(e.node);
    double slope = (displacement(e.node + 1) - deflection) / e.length + bow / (m_EI * e.length);
    for (std::size_t i = begin; i < pieces.size(); ++i) {
        Piece& piece = pieces[i];
        piece.deflection = deflection;
        piece.slope = slope;
        deflection = piece.DeflectionAt(piece.length, m_EI);
        slope -= MomentArea(piece) / m_EI;
    }
}

std::vector<NodeReaction> Plane::Reactions(const std::vector<Piece>& pieces, const PlaneLoads& loads) const
{
    std::vector<NodeReaction> reactions(m_nodes.size());
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
        const Node& node = m_nodes[i];
        double moment = -loads.moment[node.place];
        double force = loads.force[node.place];
        if (node.place > 0) {
            double momentLeft = 0.0;
            double shearLeft = 0.0;
            Leave(pieces[node.place - 1], momentLeft, shearLeft);
            moment -= momentLeft;
            force -= shearLeft;
        }
        if (node.place < pieces.size()) {
            moment += pieces[node.place].moment;
            force += pieces[node.place].shear;
        }
        if (node.Supports()) reactions[i].force = force;
        if (node.HoldsRotation()) reactions[i].moment = moment;
    }
    return reactions;
}

PlaneResult Plane::Solve(const PlaneLoads& loads) const
{
    std::vector<Element> elements;
    elements.reserve(m_nodes.size() - 1);
    for (std::size_t i = 0; i + 1 < m_nodes.size(); ++i)
        elements.push_back(Between(i, loads));
    const Vector b = RightHandSide(elements, loads);
    const Vector u = m_unknowns > 0 ? Vector(m_factor.solve(b)) : b;
    EndMoments(u, loads, elements);
    std::vector<Piece> pieces;
    pieces.reserve(m_breaks.size() - 1);
    for (const Element& e : elements)
        March(e, u, loads, pieces);
    PlaneResult result;
    result.reactions = Reactions(pieces, loads);
    result.line = Line(std::move(pieces), m_EI);
    return result;
}

} // namespace Keltrix::Statics

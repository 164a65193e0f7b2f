#pragma once

#include <Eigen/SparseCholesky>
#include <array>
#include <cstddef>
#include <vector>

#include "keltrix/statics/Line.h"

namespace Keltrix::Statics {

/// A place of one plane that is held, hinged, or an end of the member.
struct Node {
    std::size_t place = 0; ///< of the breaks
    bool held = false;
    bool rotationHeld = false;
    bool hinge = false;
    double spring = 0.0;         ///< N/m
    double rotationSpring = 0.0; ///< N·m per radian

    bool Supports() const { return held || spring > 0.0; }
    bool HoldsRotation() const { return rotationHeld || rotationSpring > 0.0; }
};

/// Loads of one plane: linear along each length between breaks, and forces and moments at the breaks.
struct PlaneLoads {
    explicit PlaneLoads(std::size_t breaks) : left(breaks - 1), right(breaks - 1), force(breaks), moment(breaks) {}

    std::vector<double> left;
    std::vector<double> right;
    std::vector<double> force;
    std::vector<double> moment;
    bool any = false;
};

/// Force and moment that a node gives to the member, against the load and clockwise.
struct NodeReaction {
    double force = 0.0;
    double moment = 0.0;
};

struct PlaneResult {
    Line line;
    std::vector<NodeReaction> reactions; ///< of each node
};

/// The member in one plane: stiffness of the lengths between nodes.
class Plane {
public:
    /// `nodes` ascend; the first and the last are the ends of the member. The breaks must outlive the plane.
    Plane(const std::vector<double>& breaks, std::vector<Node> nodes, double EI);

    const std::vector<Node>& Nodes() const { return m_nodes; }
    /// A motion that strains nothing and that nothing holds: displacements of the nodes. Empty where there is none.
    std::vector<double> FreeMotion() const;
    /// Needs a plane without a free motion.
    void Factorise();
    PlaneResult Solve(const PlaneLoads& loads) const;

private:
    // Extended precision, because lengths of one member differ by up to 1e4, and its stiffness by the cube of that.
    using Real = long double;
    using Matrix = Eigen::SparseMatrix<Real>;
    using Vector = Eigen::Matrix<Real, Eigen::Dynamic, 1>;
    // Displacement, and rotation left and right of a node; places among the unknowns, -1 where held.
    struct Freedom {
        int displacement = -1;
        int left = -1;
        int right = -1;
    };
    struct Element;

    double At(std::size_t node) const { return m_breaks[m_nodes[node].place]; }
    void Number();
    Element Between(std::size_t node, const PlaneLoads& loads) const;
    Vector RightHandSide(const std::vector<Element>& elements, const PlaneLoads& loads) const;
    void EndMoments(const Vector& u, const PlaneLoads& loads, std::vector<Element>& elements) const;
    void March(const Element& element, const Vector& u, const PlaneLoads& loads, std::vector<Piece>& pieces) const;
    std::vector<NodeReaction> Reactions(const std::vector<Piece>& pieces, const PlaneLoads& loads) const;

    const std::vector<double>& m_breaks;
    std::vector<Node> m_nodes;
    double m_EI;
    double m_length;
    std::vector<Freedom> m_freedoms;
    int m_unknowns = 0;
    Eigen::SimplicialLDLT<Matrix, Eigen::Lower, Eigen::NaturalOrdering<int>> m_factor;
};

} // namespace Keltrix::Statics

#pragma once

#include <vector>

#include "Layout.h"

namespace Keltrix::Stability {

/// Node of a mesh, with what is held at the section.
struct Node {
    double x = 0.0;
    Holds holds;
};

/// Element between nodes i and i + 1. It can lie within one piece of the layout or go over several.
struct Element {
    std::size_t firstPiece = 0;
    std::size_t lastPiece = 0;
    Holds along;
};

struct Mesh {
    std::vector<Node> nodes;
    std::vector<Element> elements;
    /// Restraints were left out, because they follow each other more closely than nodes can.
    bool restraintsLeftOut = false;
};

/// The mesh with which a unit is analysed first. Nodes lie at its stations, as far as there is room for them.
Mesh MakeMesh(const Layout& unit, const SectionConstants& section);

/// The mesh with every element halved.
Mesh Halved(const Mesh& mesh, const Layout& unit);

/// Whether the section is analysed as one that does not resist warping: no warping constant, or one whose effect reaches
/// less than a ten-thousandth of the length. Leaving it out lowers the critical load.
bool IsWarpingFree(const SectionConstants& section, double length);

} // namespace Keltrix::Stability

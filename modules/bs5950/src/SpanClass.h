#pragma once

#include <vector>

#include "keltrix/bs5950/Classification.h"
#include "keltrix/bs5950/Material.h"
#include "keltrix/design/MomentDiagram.h"

namespace Keltrix::BS5950 {

/// Worst of the classes that the cross-section has along part of a member.
struct WorstClass {
    int cls = 0; ///< 0 where the part is empty
    // The smallest of each:
    double Aeff = 0.0;
    double pyCompression = 0.0;
    double pyZx = 0.0, pyZy = 0.0; ///< py Z (about u-u, v-v of an angle), with pyr or Zeff in class 4
    Classification bending;        ///< the class with the smallest pyMomentX Wx
    Classification bendingY;       ///< the class with the smallest pyMomentY Wy
};

/// Finds the worst class over a span. The class of a place follows from axial force and moments there; tension counts as none,
/// because members buckle under the moment alone then (4.8.2.1). Places without moment count with the sign of the moment beside
/// them. The answer does not depend on how the member is divided.
class SpanClass {
public:
    /// Which places of a span count.
    enum class Part {
        Compressed, ///< axial compression
        Acted,      ///< any axial compression or moment
        Flange1,    ///< major moment that compresses flange 1
        Flange2     ///< major moment that compresses flange 2
    };

    /// Diagrams about x-x and y-y, or about u-u and v-v of an angle. Everything is borrowed.
    SpanClass(const SectionProperties& section, const Material& steel, const std::vector<Steel::CSubSpan>& subSpans,
              const Design::MomentDiagram& major, const Design::MomentDiagram& minor);

    WorstClass Worst(double from, double to, Part part) const;

private:
    class Collector;

    const SectionProperties& m_section;
    const Material& m_steel;
    const std::vector<Steel::CSubSpan>& m_subSpans;
    const Design::MomentDiagram& m_major;
    const Design::MomentDiagram& m_minor;
};

} // namespace Keltrix::BS5950

#pragma once

#include "keltrix/bs5950/Results.h"

namespace Keltrix::BS5950 {

enum class FactorTable { Table18, Table26 };

/// The diagram over a span as a table of equivalent uniform moment factors reads it, with its factor. Where the moment jumps at a
/// quarter point, the side that gives the larger factor counts. The factor is 1.0 where the moment is not known all along.
MomentShape ShapeOf(const Design::MomentDiagram& diagram, double from, double to, FactorTable table);

} // namespace Keltrix::BS5950
